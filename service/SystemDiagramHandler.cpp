#include "service/SystemDiagramHandler.h"

#include <exception>
#include <stdexcept>

#include "platform/dispatch/Logger.h"
#include "proto/system_diagram_server.pb.h"
#include "service/ScopedDebugLog.h"

namespace IPA {

namespace wire = dispatch::system_diagram_server;
using dispatch::StatusResponse;
using dispatch::server::Logger;

SystemDiagramHandler::SystemDiagramHandler(dispatch::server::ConnectionMgr& connections)
    : RequestHandler("dispatch.system_diagram_server", connections),
      sessions(std::make_shared<SessionTable>("SYSTEM_DIAGRAM")) {
  // The protocol's version is part of the protocol definition itself.
  auto const& options = wire::Version::descriptor()->file()->options();
  setVersionFromString(options.GetExtension(wire::file_version));
  connections.getSessionMgr()->addHandler(sessions);
}

SystemDiagramHandler::~SystemDiagramHandler() { sessions.reset(); }

void SystemDiagramHandler::handle_request(dispatch::Request const& request,
                                          dispatch::Response& response) {
  try {
    if (!validateRequest(request, response)) return;
    google::protobuf::Any const& payload = request.payload();
    std::string const sessionUuid = sessionFromRequest(request);

    // A linear chain in a fixed order; the first match wins. Names are compared whole, so
    // UpsertKernelUse and UpsertKernel do not shadow each other.
    if (payload.Is<wire::UtilizationDuringBrenloRun>()) {
      notYetServed("dispatch.system_diagram_server.UtilizationDuringBrenloRun");
    } else if (payload.Is<wire::AfterRunningBrenlo>()) {
      notYetServed("dispatch.system_diagram_server.AfterRunningBrenlo");
    } else if (payload.Is<wire::MakeInitialSystemDiagram>()) {
      notYetServed("dispatch.system_diagram_server.MakeInitialSystemDiagram");
    } else if (payload.Is<wire::ReadSystemDiagram>()) {
      handleReadSystemDiagramRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::WriteSystemDiagram>()) {
      handleWriteCurrentSystemDiagramRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpsertKernelUse>()) {
      notYetServed("dispatch.system_diagram_server.UpsertKernelUse");
    } else if (payload.Is<wire::UpsertKernel>()) {
      notYetServed("dispatch.system_diagram_server.UpsertKernel");
    } else if (payload.Is<wire::UpsertQrxBin>()) {
      notYetServed("dispatch.system_diagram_server.UpsertQrxBin");
    } else if (payload.Is<wire::UpsertQrxBinGeneratedBy>()) {
      notYetServed("dispatch.system_diagram_server.UpsertQrxBinGeneratedBy");
    } else if (payload.Is<wire::UpsertQsaClock>()) {
      notYetServed("dispatch.system_diagram_server.UpsertQsaClock");
    } else if (payload.Is<wire::GetQrxBinGeneratedBy>()) {
      notYetServed("dispatch.system_diagram_server.GetQrxBinGeneratedBy");
    } else if (payload.Is<wire::UpdateSystemDiagramAfterBrenloRuns>()) {
      notYetServed("dispatch.system_diagram_server.UpdateSystemDiagramAfterBrenloRuns");
    } else if (payload.Is<wire::UpdateComputeUnit>()) {
      notYetServed("dispatch.system_diagram_server.UpdateComputeUnit");
    } else if (payload.Is<wire::UpsertConnectivity>()) {
      notYetServed("dispatch.system_diagram_server.UpsertConnectivity");
    } else if (payload.Is<wire::WriteFlowReport>()) {
      notYetServed("dispatch.system_diagram_server.WriteFlowReport");
    } else if (payload.Is<wire::UpsertPlatform>()) {
      notYetServed("dispatch.system_diagram_server.UpsertPlatform");
    }
    // Any other type name: no handler, no log line, no status.
  } catch (std::exception const& error) {
    Logger::getLogger(dispatch::server::kLogException)
        << "SYSTEM_DIAGRAM_HANDLER: Caught exception: " << error.what() << ".\n";
    stockResponse(StatusResponse::INTERNAL_SERVER_ERROR, response);
  } catch (...) {
    Logger::getLogger(dispatch::server::kLogException)
        << "SYSTEM_DIAGRAM_HANDLER: Caught exception of an unknown type\n";
    stockResponse(StatusResponse::INTERNAL_SERVER_ERROR, response);
  }
}

SystemDiagram& SystemDiagramHandler::getDiagramForSession(std::string const& sessionUuid) {
  if (sessionUuid.empty()) {
    throw std::runtime_error(sessions->name + ": ERROR, provided session doesn't have a UUID.");
  }
  if (sessions->sessions.find(sessionUuid) == sessions->sessions.end()) {
    throw dispatch::server::HCSExceptionNoSessionFound(
        sessions->name + ": ERROR, no session with UUID '" + sessionUuid + "'");
  }
  // Found above, so the index operation does not insert.
  return sessions->sessions[sessionUuid];
}

void SystemDiagramHandler::notYetServed(std::string const& typeName) {
  throw std::runtime_error("request type " + typeName + " is not yet served by this library");
}

void SystemDiagramHandler::handleReadSystemDiagramRequest(google::protobuf::Any const& payload,
                                                          dispatch::Response& response,
                                                          std::string const& sessionUuid) {
  ScopedDebugLog debugLog("Entering handleReadSystemDiagramRequest");
  wire::ReadSystemDiagram message;
  // A payload that does not parse leaves the message empty or partial; the test below decides.
  payload.UnpackTo(&message);
  if (message.path().empty()) {
    stockResponse(StatusResponse::BAD_REQUEST, response);
    return;
  }
  getDiagramForSession(sessionUuid).readSystemDiagram(message.path());
  stockResponse(StatusResponse::OK, response);
}

void SystemDiagramHandler::handleWriteCurrentSystemDiagramRequest(
    google::protobuf::Any const& payload, dispatch::Response& response,
    std::string const& sessionUuid) {
  ScopedDebugLog debugLog("handleWriteCurrentSystemDiagramRequest");
  wire::WriteSystemDiagram message;
  payload.UnpackTo(&message);
  if (message.path().empty()) {
    stockResponse(StatusResponse::BAD_REQUEST, response);
    return;
  }
  getDiagramForSession(sessionUuid).serializeCurrentSystemDiagram(message.path());
  stockResponse(StatusResponse::OK, response);
}

}  // namespace IPA

dispatch::server::RequestHandler* makeHandler(dispatch::server::ConnectionMgr& connections) {
  return new IPA::SystemDiagramHandler(connections);  // owned by the caller
}
