#include "service/SystemDiagramHandler.h"

#include <exception>
#include <memory>
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
      handleAfterRunningBrenloRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::MakeInitialSystemDiagram>()) {
      handleMakeInitialSystemDiagramRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::ReadSystemDiagram>()) {
      handleReadSystemDiagramRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::WriteSystemDiagram>()) {
      handleWriteCurrentSystemDiagramRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpsertKernelUse>()) {
      notYetServed("dispatch.system_diagram_server.UpsertKernelUse");
    } else if (payload.Is<wire::UpsertKernel>()) {
      handleUpsertKernelRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpsertQrxBin>()) {
      handleUpsertQrxBinRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpsertQrxBinGeneratedBy>()) {
      handleUpsertQrxBinGeneratedByRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpsertQsaClock>()) {
      handleUpsertQsaClock(payload, response, sessionUuid);
    } else if (payload.Is<wire::GetQrxBinGeneratedBy>()) {
      handleGetQrxBinGeneratedByRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpdateSystemDiagramAfterBrenloRuns>()) {
      handleUpdatingAfterRunningBrenloRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpdateComputeUnit>()) {
      handleUpdateComputeUnitRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpsertConnectivity>()) {
      handleUpsertConnectivityRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::WriteFlowReport>()) {
      notYetServed("dispatch.system_diagram_server.WriteFlowReport");
    } else if (payload.Is<wire::UpsertPlatform>()) {
      handleUpsertPlatform(payload, response, sessionUuid);
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

template <class Message, class Complete, class Call>
void SystemDiagramHandler::serve(char const* label, google::protobuf::Any const& payload,
                                 dispatch::Response& response, std::string const& sessionUuid,
                                 Complete complete, Call call) {
  ScopedDebugLog debugLog(label);
  Message message;
  // The result is ignored on purpose: the field test below judges what came out.
  payload.UnpackTo(&message);
  if (!complete(message)) {
    stockResponse(StatusResponse::BAD_REQUEST, response);
    return;
  }
  call(getDiagramForSession(sessionUuid), message);
  stockResponse(StatusResponse::OK, response);
}

void SystemDiagramHandler::handleReadSystemDiagramRequest(google::protobuf::Any const& payload,
                                                          dispatch::Response& response,
                                                          std::string const& sessionUuid) {
  // This label and the one of handleUpsertKernelRequest begin with "Entering " themselves;
  // their debug lines read the word twice, and log readers match on that.
  serve<wire::ReadSystemDiagram>(
      "Entering handleReadSystemDiagramRequest", payload, response, sessionUuid,
      [](auto const& message) { return !message.path().empty(); },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.readSystemDiagram(message.path());
      });
}

void SystemDiagramHandler::handleWriteCurrentSystemDiagramRequest(
    google::protobuf::Any const& payload, dispatch::Response& response,
    std::string const& sessionUuid) {
  serve<wire::WriteSystemDiagram>(
      "handleWriteCurrentSystemDiagramRequest", payload, response, sessionUuid,
      [](auto const& message) { return !message.path().empty(); },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.serializeCurrentSystemDiagram(message.path());
      });
}

void SystemDiagramHandler::handleUpsertKernelRequest(google::protobuf::Any const& payload,
                                                     dispatch::Response& response,
                                                     std::string const& sessionUuid) {
  serve<wire::UpsertKernel>(
      "Entering handleUpsertKernelRequest", payload, response, sessionUuid,
      [](auto const& message) { return message.has_kernel(); },
      [](SystemDiagram& diagram, auto const& message) { diagram.upsertKernel(message.kernel()); });
}

void SystemDiagramHandler::handleUpsertQrxBinRequest(google::protobuf::Any const& payload,
                                                     dispatch::Response& response,
                                                     std::string const& sessionUuid) {
  serve<wire::UpsertQrxBin>(
      "handleUpsertQrxBinRequest", payload, response, sessionUuid,
      [](auto const& message) { return message.has_qrxbin(); },
      [](SystemDiagram& diagram, auto const& message) { diagram.upsertQrxBin(message.qrxbin()); });
}

void SystemDiagramHandler::handleUpsertQrxBinGeneratedByRequest(
    google::protobuf::Any const& payload, dispatch::Response& response,
    std::string const& sessionUuid) {
  serve<wire::UpsertQrxBinGeneratedBy>(
      "handleUpsertQrxBinGeneratedByRequest", payload, response, sessionUuid,
      [](auto const& message) { return message.has_generatedby(); },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.upsertQrxBinGeneratedBy(message.generatedby());
      });
}

void SystemDiagramHandler::handleUpsertQsaClock(google::protobuf::Any const& payload,
                                                dispatch::Response& response,
                                                std::string const& sessionUuid) {
  // No field test, unlike its fellows: without a clock the default Clock is merged, which hits
  // the clock of id 0 or makes one.
  serve<wire::UpsertQsaClock>(
      "handleUpsertQsaClock", payload, response, sessionUuid, [](auto const&) { return true; },
      [](SystemDiagram& diagram, auto const& message) { diagram.upsertQsaClock(message.clock()); });
}

void SystemDiagramHandler::handleGetQrxBinGeneratedByRequest(google::protobuf::Any const&,
                                                             dispatch::Response& response,
                                                             std::string const& sessionUuid) {
  ScopedDebugLog debugLog("handleGetQrxBinGeneratedByRequest");
  ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy generatedBy;
  getDiagramForSession(sessionUuid).getQrxBinGeneratedBy(generatedBy);
  auto answer = std::make_unique<google::protobuf::Any>();
  answer->PackFrom(generatedBy);
  // The response owns the new payload and releases any it held.
  response.set_allocated_payload(answer.release());
  stockResponse(StatusResponse::OK, response);
}

void SystemDiagramHandler::handleUpdateComputeUnitRequest(google::protobuf::Any const& payload,
                                                          dispatch::Response& response,
                                                          std::string const& sessionUuid) {
  serve<wire::UpdateComputeUnit>(
      "handleUpdateComputeUnitRequest", payload, response, sessionUuid,
      [](auto const& message) { return message.has_computeunit(); },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.updateComputeUnit(message.computeunit());
      });
}

void SystemDiagramHandler::handleUpsertConnectivityRequest(google::protobuf::Any const& payload,
                                                           dispatch::Response& response,
                                                           std::string const& sessionUuid) {
  serve<wire::UpsertConnectivity>(
      "handleUpsertConnectivityRequest", payload, response, sessionUuid,
      [](auto const& message) { return message.has_connectivity(); },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.upsertConnectivity(message.connectivity());
      });
}

void SystemDiagramHandler::handleUpsertPlatform(google::protobuf::Any const& payload,
                                                dispatch::Response& response,
                                                std::string const& sessionUuid) {
  serve<wire::UpsertPlatform>(
      "handleUpsertPlatform", payload, response, sessionUuid,
      [](auto const& message) { return message.has_platform(); },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.upsertPlatform(message.platform());
      });
}

void SystemDiagramHandler::handleMakeInitialSystemDiagramRequest(
    google::protobuf::Any const& payload, dispatch::Response& response,
    std::string const& sessionUuid) {
  serve<wire::MakeInitialSystemDiagram>(
      "handleMakeInitialSystemDiagramRequest", payload, response, sessionUuid,
      [](auto const& message) {
        // The flag is not tested: false is a valid value.
        return !message.rtdfile().empty() && !message.platform().empty() &&
               !message.generatedname().empty() && !message.generatedversion().empty() &&
               !message.generatedchangelist().empty() && !message.generatedtimestamp().empty() &&
               !message.generateddetaila().empty() && !message.generateddetailb().empty() &&
               !message.kernelsfile().empty() && !message.binarylabel().empty();
      },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.populateInitialSystemDiagram(
            message.rtdfile(), message.platform(), message.generatedname(),
            message.generatedversion(), message.generatedchangelist(), message.generatedtimestamp(),
            message.generateddetaila(), message.generateddetailb(), message.kernelsfile(),
            message.binarylabel(), message.generatedflag());
      });
}

void SystemDiagramHandler::handleAfterRunningBrenloRequest(google::protobuf::Any const& payload,
                                                           dispatch::Response& response,
                                                           std::string const& sessionUuid) {
  serve<wire::AfterRunningBrenlo>(
      "handleAfterRunningBrenloRequest", payload, response, sessionUuid,
      [](auto const& message) {
        return !message.diagraminfile().empty() && !message.rtdfile().empty() &&
               !message.diagramoutfile().empty();
      },
      [](SystemDiagram& diagram, auto const& message) {
        // The operation takes the run-time data file first, unlike the message.
        diagram.writeSystemDiagramAfterRunningBrenlo(message.rtdfile(), message.diagraminfile(),
                                                     message.diagramoutfile());
      });
}

void SystemDiagramHandler::handleUpdatingAfterRunningBrenloRequest(
    google::protobuf::Any const& payload, dispatch::Response& response,
    std::string const& sessionUuid) {
  serve<wire::UpdateSystemDiagramAfterBrenloRuns>(
      "handleUpdatingAfterRunningBrenloRequest", payload, response, sessionUuid,
      [](auto const& message) { return !message.rtdfile().empty(); },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.updateSystemDiagramAfterRunningBrenlo(message.rtdfile());
      });
}

}  // namespace IPA

dispatch::server::RequestHandler* makeHandler(dispatch::server::ConnectionMgr& connections) {
  return new IPA::SystemDiagramHandler(connections);  // owned by the caller
}
