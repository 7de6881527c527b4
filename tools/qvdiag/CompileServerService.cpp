#include "tools/qvdiag/CompileServerService.h"

#include <cxxabi.h>

#include <cstring>
#include <exception>
#include <string>

#include "platform/dispatch/RequestHandler.h"
#include "proto/system_diagram_server.pb.h"

namespace qvdiag {
namespace {

// The session table's exceptions live in the loaded library, which this program does not link;
// they are told apart by the name of their type, which the library exports.
constexpr char const* kUuidInUse = "N8dispatch6server28HCSExceptionUuidAlreadyInUseE";
constexpr char const* kNoSession = "N8dispatch6server26HCSExceptionNoSessionFoundE";

// The gRPC status for the exception being handled; call only inside a catch block.
// Nothing is logged here: the session table logs its events and refusals itself.
grpc::Status statusOfCurrentException() {
  std::string text = "unknown error";
  try {
    throw;
  } catch (std::exception const& error) {
    text = error.what();
  } catch (...) {
  }
  std::type_info const* type = abi::__cxa_current_exception_type();
  char const* name = type != nullptr ? type->name() : "";
  if (std::strcmp(name, kUuidInUse) == 0) return {grpc::StatusCode::ALREADY_EXISTS, text};
  if (std::strcmp(name, kNoSession) == 0) return {grpc::StatusCode::NOT_FOUND, text};
  return {grpc::StatusCode::INVALID_ARGUMENT, text};
}

}  // namespace

CompileServerService::CompileServerService(dispatch::server::ConnectionMgr& connections)
    : connections_(connections) {}

grpc::Status CompileServerService::CreateSession(grpc::ServerContext*,
                                                 dispatch::Session const* request,
                                                 dispatch::Session* reply) {
  try {
    *reply = connections_.createSession(*request);
  } catch (...) {
    return statusOfCurrentException();
  }
  return grpc::Status::OK;
}

grpc::Status CompileServerService::ForkSession(grpc::ServerContext*,
                                               dispatch::ForkSessionRequest const* request,
                                               dispatch::Session* reply) {
  try {
    *reply = connections_.forkSession(request->source_uuid(), request->target());
  } catch (...) {
    return statusOfCurrentException();
  }
  return grpc::Status::OK;
}

grpc::Status CompileServerService::RemoveSession(grpc::ServerContext*,
                                                 dispatch::Session const* request,
                                                 dispatch::StatusResponse* reply) {
  try {
    connections_.removeSession(*request);
  } catch (...) {
    return statusOfCurrentException();
  }
  reply->set_code(dispatch::StatusResponse::OK);
  reply->set_message(dispatch::server::RequestHandler::stockText(dispatch::StatusResponse::OK));
  return grpc::Status::OK;
}

grpc::Status CompileServerService::Dispatch(grpc::ServerContext*, dispatch::Request const* request,
                                            dispatch::Response* reply) {
  std::unique_lock<std::mutex> importLock(importMutex_, std::defer_lock);
  if (request->payload().Is<dispatch::system_diagram_server::MakeInitialSystemDiagram>()) {
    importLock.lock();
  }
  try {
    connections_.dispatch(*request, *reply);
  } catch (std::exception const& error) {
    // The service answers its own failures; this is only reached when the host itself fails.
    return {grpc::StatusCode::INTERNAL, error.what()};
  }
  return grpc::Status::OK;
}

}  // namespace qvdiag
