// A client of a running compile server, for qvdiag call and qvdiag session.
#ifndef TOOLS_QVDIAG_REMOTECLIENT_H_
#define TOOLS_QVDIAG_REMOTECLIENT_H_

#include <grpcpp/grpcpp.h>

#include <memory>
#include <string>

#include "proto/dispatch.grpc.pb.h"
#include "tools/qvdiag/ListenAddress.h"

namespace qvdiag {

// Each call waits for its answer. A call that the server refuses, or a server that cannot be
// reached, throws std::runtime_error with the address, the gRPC status name and its text.
class RemoteClient {
 public:
  explicit RemoteClient(ListenAddress const& server);

  // The session as created; an empty uuid gets a fresh one from the server.
  dispatch::Session createSession(dispatch::Session const& session);
  dispatch::Session forkSession(std::string const& sourceUuid, dispatch::Session const& target);
  dispatch::StatusResponse removeSession(dispatch::Session const& session);
  dispatch::Response dispatch(dispatch::Request const& request);

  // "NOT_FOUND", "UNAVAILABLE", ... for a gRPC status code.
  static std::string codeName(grpc::StatusCode code);

 private:
  void check(grpc::Status const& status, char const* call) const;

  std::string target_;
  std::unique_ptr<dispatch::CompileServer::Stub> stub_;
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_REMOTECLIENT_H_
