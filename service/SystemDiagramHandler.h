// The library's door to the compile server: the service "dispatch.system_diagram_server".
#ifndef SERVICE_SYSTEMDIAGRAMHANDLER_H_
#define SERVICE_SYSTEMDIAGRAMHANDLER_H_

#include <google/protobuf/any.pb.h>

#include <memory>
#include <string>

#include "diagram/SystemDiagram.h"
#include "platform/dispatch/ConnectionMgr.h"
#include "platform/dispatch/RequestHandler.h"
#include "proto/dispatch.pb.h"
#include "service/Export.h"
#include "service/TSessionMgr.h"

namespace IPA {

// Serves every request of the service: validates it, picks the request handler by the type name
// of the request's payload, and turns every exception into status 500 (the exception's text
// goes to the server's log at level 1, never to the client). Owns the session table, which it
// shares with the server's session manager; sessions are created, forked and removed by the
// server, never by a request.
//
// See docs/protocol.md for the requests and their answers.
class SystemDiagramHandler : public dispatch::server::RequestHandler {
 public:
  // Logs a handler's entry when made and its leaving when destroyed (service/ScopedDebugLog.h).
  class ScopedDebugLog;

  using SessionTable = dispatch::server::TSessionMgr<SystemDiagram>;

  // Registers the service with `connections`, makes the session table "SYSTEM_DIAGRAM", takes the
  // service's version from the protocol definition, and hands the table to the server's session
  // manager.
  explicit SystemDiagramHandler(dispatch::server::ConnectionMgr& connections);
  // Drops this handler's share of the session table; the diagrams live on while the server's
  // session manager holds its share.
  ~SystemDiagramHandler() override;

  // Never throws. A payload type that is not one of the service's requests, or an absent payload,
  // leaves `response` as it came.
  void handle_request(dispatch::Request const& request, dispatch::Response& response) override;

  // The diagram of the session; the reference stays good until that session is removed. Throws
  // std::runtime_error for an empty UUID and dispatch::server::HCSExceptionNoSessionFound for an
  // unknown one; never adds a session. Reads the table without its lock (see ConnectionMgr).
  SystemDiagram& getDiagramForSession(std::string const& sessionUuid);

  std::shared_ptr<SessionTable> const& getSessionTable() const { return sessions; }

 private:
  // Each takes the request's payload, the response and the session's UUID; each follows the same
  // shape: debug log, unpack, test the required fields (400), one call on the session's
  // diagram, 200.
  void handleReadSystemDiagramRequest(google::protobuf::Any const& payload,
                                      dispatch::Response& response, std::string const& sessionUuid);
  void handleWriteCurrentSystemDiagramRequest(google::protobuf::Any const& payload,
                                              dispatch::Response& response,
                                              std::string const& sessionUuid);
  void handleUpsertKernelRequest(google::protobuf::Any const& payload, dispatch::Response& response,
                                 std::string const& sessionUuid);
  void handleUpsertQrxBinRequest(google::protobuf::Any const& payload, dispatch::Response& response,
                                 std::string const& sessionUuid);
  void handleUpsertQrxBinGeneratedByRequest(google::protobuf::Any const& payload,
                                            dispatch::Response& response,
                                            std::string const& sessionUuid);
  void handleUpsertQsaClock(google::protobuf::Any const& payload, dispatch::Response& response,
                            std::string const& sessionUuid);
  // The one handler that answers with data: a qrxBinGeneratedBy in the response's payload.
  void handleGetQrxBinGeneratedByRequest(google::protobuf::Any const& payload,
                                         dispatch::Response& response,
                                         std::string const& sessionUuid);
  void handleUpdateComputeUnitRequest(google::protobuf::Any const& payload,
                                      dispatch::Response& response, std::string const& sessionUuid);
  void handleUpsertConnectivityRequest(google::protobuf::Any const& payload,
                                       dispatch::Response& response,
                                       std::string const& sessionUuid);
  void handleUpsertPlatform(google::protobuf::Any const& payload, dispatch::Response& response,
                            std::string const& sessionUuid);
  // Merges the resource reports of the files named, compute unit by compute unit, into the
  // session's kernel use and publishes them to its diagram.
  void handleUtilizationDuringBrenloRunRequest(google::protobuf::Any const& payload,
                                               dispatch::Response& response,
                                               std::string const& sessionUuid);
  // Merges one resource report into the session's kernel use and publishes it.
  void handleUpsertComputeUnitUseRequest(google::protobuf::Any const& payload,
                                         dispatch::Response& response,
                                         std::string const& sessionUuid);
  // True when `message` names its design state, has kernel uses, and names every kernel and
  // compute unit; otherwise answers 400 in `response` and returns false.
  static bool validateUpsertComputeUnitUseRequest(
      dispatch::system_diagram_server::UpsertKernelUse const& message,
      dispatch::Response& response);
  // Writes the session's flow report to a text file.
  void handleWriteFlowReportRequest(google::protobuf::Any const& payload,
                                    dispatch::Response& response, std::string const& sessionUuid);
  // Replaces the session's diagram by a new one made from a run-time data file; the old one
  // stays when the import fails.
  void handleMakeInitialSystemDiagramRequest(google::protobuf::Any const& payload,
                                             dispatch::Response& response,
                                             std::string const& sessionUuid);
  // Updates a stored diagram file into another after an implementation run.
  void handleAfterRunningBrenloRequest(google::protobuf::Any const& payload,
                                       dispatch::Response& response,
                                       std::string const& sessionUuid);
  // Updates the session's diagram after an implementation run.
  void handleUpdatingAfterRunningBrenloRequest(google::protobuf::Any const& payload,
                                               dispatch::Response& response,
                                               std::string const& sessionUuid);

  // The shape they share: debug log with `label`, unpack into a Message (a payload that does
  // not parse leaves it empty or partly filled), 400 unless `complete(message)`, then
  // `call(session's diagram, message)` and 200.
  template <class Message, class Complete, class Call>
  void serve(char const* label, google::protobuf::Any const& payload, dispatch::Response& response,
             std::string const& sessionUuid, Complete complete, Call call);

  std::shared_ptr<SessionTable> sessions;
};

}  // namespace IPA

// The factory the server finds by name: a new handler registered with `connections`. The caller
// owns it (the server hands it to ConnectionMgr::adoptHandler).
extern "C" QV_EXPORT dispatch::server::RequestHandler* makeHandler(
    dispatch::server::ConnectionMgr& connections);

#endif  // SERVICE_SYSTEMDIAGRAMHANDLER_H_
