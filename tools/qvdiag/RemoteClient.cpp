#include "tools/qvdiag/RemoteClient.h"

#include <stdexcept>

namespace qvdiag {

RemoteClient::RemoteClient(ListenAddress const& server)
    : target_(server.target()),
      stub_(dispatch::CompileServer::NewStub(
          grpc::CreateChannel(server.target(), grpc::InsecureChannelCredentials()))) {}

std::string RemoteClient::codeName(grpc::StatusCode code) {
  switch (code) {
    case grpc::StatusCode::OK:
      return "OK";
    case grpc::StatusCode::CANCELLED:
      return "CANCELLED";
    case grpc::StatusCode::UNKNOWN:
      return "UNKNOWN";
    case grpc::StatusCode::INVALID_ARGUMENT:
      return "INVALID_ARGUMENT";
    case grpc::StatusCode::DEADLINE_EXCEEDED:
      return "DEADLINE_EXCEEDED";
    case grpc::StatusCode::NOT_FOUND:
      return "NOT_FOUND";
    case grpc::StatusCode::ALREADY_EXISTS:
      return "ALREADY_EXISTS";
    case grpc::StatusCode::PERMISSION_DENIED:
      return "PERMISSION_DENIED";
    case grpc::StatusCode::RESOURCE_EXHAUSTED:
      return "RESOURCE_EXHAUSTED";
    case grpc::StatusCode::FAILED_PRECONDITION:
      return "FAILED_PRECONDITION";
    case grpc::StatusCode::ABORTED:
      return "ABORTED";
    case grpc::StatusCode::OUT_OF_RANGE:
      return "OUT_OF_RANGE";
    case grpc::StatusCode::UNIMPLEMENTED:
      return "UNIMPLEMENTED";
    case grpc::StatusCode::INTERNAL:
      return "INTERNAL";
    case grpc::StatusCode::UNAVAILABLE:
      return "UNAVAILABLE";
    case grpc::StatusCode::DATA_LOSS:
      return "DATA_LOSS";
    case grpc::StatusCode::UNAUTHENTICATED:
      return "UNAUTHENTICATED";
    default:
      return "code " + std::to_string(static_cast<int>(code));
  }
}

void RemoteClient::check(grpc::Status const& status, char const* call) const {
  if (status.ok()) return;
  throw std::runtime_error(std::string(call) + " at " + target_ + " failed with " +
                           codeName(status.error_code()) + ": " + status.error_message());
}

dispatch::Session RemoteClient::createSession(dispatch::Session const& session) {
  grpc::ClientContext context;
  dispatch::Session reply;
  check(stub_->CreateSession(&context, session, &reply), "CreateSession");
  return reply;
}

dispatch::Session RemoteClient::forkSession(std::string const& sourceUuid,
                                            dispatch::Session const& target) {
  grpc::ClientContext context;
  dispatch::ForkSessionRequest request;
  request.set_source_uuid(sourceUuid);
  *request.mutable_target() = target;
  dispatch::Session reply;
  check(stub_->ForkSession(&context, request, &reply), "ForkSession");
  return reply;
}

dispatch::StatusResponse RemoteClient::removeSession(dispatch::Session const& session) {
  grpc::ClientContext context;
  dispatch::StatusResponse reply;
  check(stub_->RemoveSession(&context, session, &reply), "RemoveSession");
  return reply;
}

dispatch::Response RemoteClient::dispatch(dispatch::Request const& request) {
  grpc::ClientContext context;
  dispatch::Response reply;
  check(stub_->Dispatch(&context, request, &reply), "Dispatch");
  return reply;
}

}  // namespace qvdiag
