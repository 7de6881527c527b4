// The CompileServer gRPC service: the wire in front of a ConnectionMgr.
#ifndef TOOLS_QVDIAG_COMPILESERVERSERVICE_H_
#define TOOLS_QVDIAG_COMPILESERVERSERVICE_H_

#include <grpcpp/grpcpp.h>

#include <mutex>

#include "platform/dispatch/ConnectionMgr.h"
#include "proto/dispatch.grpc.pb.h"

namespace qvdiag {

// Each call goes straight to the ConnectionMgr, which keeps the session guarantee: session
// events run alone, requests run side by side. Safe to call from gRPC's threads.
//
// Except for one thing: imports (a MakeInitialSystemDiagram payload, whatever its service) run
// one at a time. The library's import keeps a process-wide cache of platform texts that has no
// lock of its own, and two sessions importing at once would change that map together. Every
// other request still runs beside an import.
//
// A session table's refusal reaches the client as a gRPC status with the table's text:
// ALREADY_EXISTS for a UUID in use, NOT_FOUND for a session that is not there,
// INVALID_ARGUMENT for any other refusal (an empty UUID). Dispatch always answers OK at the
// gRPC level: the service's status travels in the Response.
class CompileServerService final : public dispatch::CompileServer::Service {
 public:
  // `connections` must outlive this object.
  explicit CompileServerService(dispatch::server::ConnectionMgr& connections);

  grpc::Status CreateSession(grpc::ServerContext* context, dispatch::Session const* request,
                             dispatch::Session* reply) override;
  grpc::Status ForkSession(grpc::ServerContext* context,
                           dispatch::ForkSessionRequest const* request,
                           dispatch::Session* reply) override;
  grpc::Status RemoveSession(grpc::ServerContext* context, dispatch::Session const* request,
                             dispatch::StatusResponse* reply) override;
  grpc::Status Dispatch(grpc::ServerContext* context, dispatch::Request const* request,
                        dispatch::Response* reply) override;

 private:
  dispatch::server::ConnectionMgr& connections_;
  std::mutex importMutex_;  // held for the whole of an import
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_COMPILESERVERSERVICE_H_
