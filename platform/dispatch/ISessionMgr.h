// A table of per-session state that the compile server keeps in step with its sessions.
#ifndef PLATFORM_DISPATCH_ISESSIONMGR_H_
#define PLATFORM_DISPATCH_ISESSIONMGR_H_

#include <string>

#include "proto/dispatch.pb.h"

namespace dispatch {
namespace server {

// Implemented by each service that keeps state per session, and registered with
// HCSDispatchSessionMgr::addHandler. The server calls these only while no request runs.
// Each reports failure by exception and must leave its table unchanged when it throws before
// adding or removing anything.
class ISessionMgr {
 public:
  virtual ~ISessionMgr() = default;
  // Adds the session `session.uuid()`.
  virtual void createSession(Session const& session) = 0;
  // Adds `targetUuid` with a copy of the state of `sourceUuid`.
  virtual void forkSession(std::string const& sourceUuid, std::string const& targetUuid) = 0;
  // Removes the session and destroys its state. What the flag means is up to each table.
  virtual void removeSession(Session const& session, bool flag) = 0;
};

}  // namespace server
}  // namespace dispatch

#endif  // PLATFORM_DISPATCH_ISESSIONMGR_H_
