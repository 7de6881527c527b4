#include "service/SystemDiagramHandler.h"

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <exception>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "diagram/FStreamFinalizer.h"
#include "diagram/TextConversions.h"
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
      handleUtilizationDuringBrenloRunRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::AfterRunningBrenlo>()) {
      handleAfterRunningBrenloRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::MakeInitialSystemDiagram>()) {
      handleMakeInitialSystemDiagramRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::ReadSystemDiagram>()) {
      handleReadSystemDiagramRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::WriteSystemDiagram>()) {
      handleWriteCurrentSystemDiagramRequest(payload, response, sessionUuid);
    } else if (payload.Is<wire::UpsertKernelUse>()) {
      handleUpsertComputeUnitUseRequest(payload, response, sessionUuid);
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
      handleWriteFlowReportRequest(payload, response, sessionUuid);
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

bool SystemDiagramHandler::validateUpsertComputeUnitUseRequest(wire::UpsertKernelUse const& message,
                                                               dispatch::Response& response) {
  bool complete = !message.designstate().empty() && !message.kerneluses().empty();
  for (auto const& kernelUse : message.kerneluses()) {
    if (!complete) break;
    complete = !kernelUse.kernelname().empty();
    // A kernel without compute unit uses is allowed; their resources are not looked at, so a
    // use without them counts as all empty.
    for (auto const& computeUnitUse : kernelUse.computeunituses()) {
      if (computeUnitUse.computeunitname().empty()) complete = false;
    }
  }
  if (!complete) stockResponse(StatusResponse::BAD_REQUEST, response);
  return complete;
}

void SystemDiagramHandler::handleUpsertComputeUnitUseRequest(google::protobuf::Any const& payload,
                                                             dispatch::Response& response,
                                                             std::string const& sessionUuid) {
  serve<wire::UpsertKernelUse>(
      "handleUpsertComputeUnitUseRequest", payload, response, sessionUuid,
      [&response](auto const& message) {
        return validateUpsertComputeUnitUseRequest(message, response);
      },
      [](SystemDiagram& diagram, auto const& message) {
        diagram.upsertKernelUtilization(message);
      });
}

namespace {

// One compute unit's report as the message UpsertKernelUse carries it.
wire::UpsertKernelUse kernelUseMessage(std::string const& designState,
                                       std::string const& kernelName,
                                       std::string const& computeUnitName,
                                       boost::property_tree::ptree const& resources) {
  wire::UpsertKernelUse message;
  message.set_usekind(4);
  message.set_designstate(designState);
  wire::KernelResourceUse* const kernelUse = message.add_kerneluses();
  kernelUse->set_kernelname(kernelName);
  wire::ComputeUnitResourceUse* const computeUnitUse = kernelUse->add_computeunituses();
  computeUnitUse->set_computeunitname(computeUnitName);
  wire::ActualResources* const actual = computeUnitUse->mutable_actualresources();
  actual->set_lut(resources.get<std::string>("LUT", ""));
  actual->set_reg(resources.get<std::string>("REG", ""));
  actual->set_bram(resources.get<std::string>("BRAM", ""));
  actual->set_uram(resources.get<std::string>("URAM", ""));
  actual->set_dsp(resources.get<std::string>("DSP", ""));
  return message;
}

}  // namespace

void SystemDiagramHandler::handleUtilizationDuringBrenloRunRequest(
    google::protobuf::Any const& payload, dispatch::Response& response,
    std::string const& sessionUuid) {
  ScopedDebugLog debugLog("handleUtilizationDuringBrenloRunRequest");
  wire::UtilizationDuringBrenloRun message;
  payload.UnpackTo(&message);
  // Every name is tested before the first file is opened.
  bool complete = !message.utilizationfiles().empty();
  for (auto const& path : message.utilizationfiles()) complete = complete && !path.empty();
  if (!complete) {
    stockResponse(StatusResponse::BAD_REQUEST, response);
    return;
  }

  for (auto const& path : message.utilizationfiles()) {
    std::ifstream in(path, std::ios::in | std::ios::binary);
    FStreamFinalizer<std::ifstream> finalizer(in);
    if (!in.is_open()) throw std::runtime_error("Could not open " + path + " for reading.");
    boost::property_tree::ptree report;
    readJsonTree(in, report);
    SystemDiagram& diagram = getDiagramForSession(sessionUuid);

    // The walk keeps the last value of each name it passed, in file order, and never resets
    // them: a "cu_name" that comes after its "actual_resources" leaves the report under the
    // previous compute unit's name (or refused as unnamed), and so on for the other two.
    // Each compute unit's report is merged on its own: what came before a refused entry stays
    // merged, and nothing after it is read.
    std::vector<wire::UpsertKernelUse> uses;
    auto const walk = [&]() {
      std::string designState;
      std::string kernelName;
      std::string computeUnitName;
      for (auto const& top : report) {
        if (top.first == "design_state") {
          designState = top.second.data();
        } else if (top.first == "kernels") {
          for (auto const& kernel : top.second) {
            for (auto const& kernelMember : kernel.second) {
              if (kernelMember.first == "name") {
                kernelName = kernelMember.second.data();
              } else if (kernelMember.first == "compute_units") {
                for (auto const& computeUnit : kernelMember.second) {
                  for (auto const& member : computeUnit.second) {
                    if (member.first == "cu_name") {
                      computeUnitName = member.second.data();
                    } else if (member.first == "actual_resources") {
                      uses.push_back(kernelUseMessage(designState, kernelName, computeUnitName,
                                                      member.second));
                      if (!validateUpsertComputeUnitUseRequest(uses.back(), response)) {
                        uses.pop_back();
                        return false;
                      }
                    }
                  }
                }
              }
            }
          }
        }
      }
      return true;
    };
    // What was merged is published together, however the walk ends: the diagram is the one a
    // publication after each compute unit would leave, since every publication writes all that
    // was merged so far, and a file of N compute units costs one rewrite of them instead of N.
    bool accepted = false;
    try {
      accepted = walk();
    } catch (...) {
      diagram.upsertKernelUtilization(uses);
      throw;
    }
    diagram.upsertKernelUtilization(uses);
    if (!accepted) return;
    stockResponse(StatusResponse::OK, response);
  }
}

void SystemDiagramHandler::handleWriteFlowReportRequest(google::protobuf::Any const& payload,
                                                        dispatch::Response& response,
                                                        std::string const& sessionUuid) {
  serve<wire::WriteFlowReport>(
      "handleWriteFlowReportRequest", payload, response, sessionUuid,
      [](auto const& message) { return !message.path().empty(); },
      [](SystemDiagram& diagram, auto const& message) { diagram.writeFlowReport(message.path()); });
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
