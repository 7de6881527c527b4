// The compile server's hub: services by name, the session manager, and the lock that keeps
// the set of sessions still while requests run.
#ifndef PLATFORM_DISPATCH_CONNECTIONMGR_H_
#define PLATFORM_DISPATCH_CONNECTIONMGR_H_

#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <string>
#include <vector>

#include "platform/dispatch/HCSDispatchSessionMgr.h"
#include "platform/dispatch/RequestHandler.h"
#include "proto/dispatch.pb.h"

namespace dispatch {
namespace server {

// Routes requests to services and sessions events to session tables.
//
// The session guarantee: the set of sessions never changes while a request runs. Requests hold
// `sessionsLock_` shared for their whole length; createSession, forkSession and removeSession
// hold it alone. Services may therefore look sessions up without a lock of their own.
//
// Handlers register themselves (RequestHandler's constructor). Those handed over with
// adoptHandler are owned here and destroyed with this object, before the session manager.
class ConnectionMgr {
 public:
  ConnectionMgr();
  ~ConnectionMgr();
  ConnectionMgr(ConnectionMgr const&) = delete;
  ConnectionMgr& operator=(ConnectionMgr const&) = delete;

  std::shared_ptr<HCSDispatchSessionMgr> getSessionMgr() const { return sessionMgr_; }

  // Called by RequestHandler; throws std::invalid_argument if the name is taken.
  void registerHandler(RequestHandler& handler);
  void unregisterHandler(RequestHandler& handler);
  // Takes ownership of a handler that is registered here. Throws std::invalid_argument for a
  // null or unregistered handler (which is then destroyed).
  RequestHandler& adoptHandler(std::unique_ptr<RequestHandler> handler);

  // The handler registered under `service`, or nullptr.
  RequestHandler* findHandler(std::string const& service) const;
  std::vector<std::string> serviceNames() const;

  // Serves one request with the handler of its service; a request for a service that nobody
  // serves is answered 404 "Not Found". Runs concurrently with other requests.
  void dispatch(Request const& request, Response& response) const;

  // Session events, each run alone. createSession gives a session with an empty uuid a fresh
  // random one and returns the session as created; forkSession does the same for the target.
  // Exceptions of the session tables pass through unchanged.
  Session createSession(Session session);
  Session forkSession(std::string const& sourceUuid, Session target);
  void removeSession(Session const& session, bool flag = false);

  // A random version-4 UUID in its 36-character text form.
  static std::string freshUuid();

 private:
  std::shared_ptr<HCSDispatchSessionMgr> sessionMgr_;

  mutable std::shared_mutex sessionsLock_;  // shared by requests, alone by session events

  mutable std::mutex handlersMutex_;  // guards the two members below
  std::map<std::string, RequestHandler*> handlers_;
  std::vector<std::unique_ptr<RequestHandler>> owned_;
};

}  // namespace server
}  // namespace dispatch

#endif  // PLATFORM_DISPATCH_CONNECTIONMGR_H_
