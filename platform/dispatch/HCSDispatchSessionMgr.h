// The server's session manager: tells every registered session table of session events.
#ifndef PLATFORM_DISPATCH_HCSDISPATCHSESSIONMGR_H_
#define PLATFORM_DISPATCH_HCSDISPATCHSESSIONMGR_H_

#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "platform/dispatch/ISessionMgr.h"
#include "proto/dispatch.pb.h"

namespace dispatch {
namespace server {

// Keeps the session tables of all services and fans each session event out to them, in the
// order in which they were added. The tables are shared with the services that made them.
//
// A create or fork that one table refuses is undone in the tables that had already taken it, and
// the refusal is rethrown, so that all tables keep the same sessions. A remove goes to every
// table even when one refuses; the first refusal is rethrown at the end.
class HCSDispatchSessionMgr {
 public:
  HCSDispatchSessionMgr() = default;
  HCSDispatchSessionMgr(HCSDispatchSessionMgr const&) = delete;
  HCSDispatchSessionMgr& operator=(HCSDispatchSessionMgr const&) = delete;

  // Registers a table; it takes part in every later session event. A null pointer is ignored.
  void addHandler(std::shared_ptr<ISessionMgr> table);

  void createSession(Session const& session);
  void forkSession(std::string const& sourceUuid, std::string const& targetUuid);
  void removeSession(Session const& session, bool flag);

  std::size_t numHandlers() const;

 private:
  std::vector<std::shared_ptr<ISessionMgr>> snapshot() const;

  mutable std::mutex mutex_;  // guards tables_
  std::vector<std::shared_ptr<ISessionMgr>> tables_;
};

}  // namespace server
}  // namespace dispatch

#endif  // PLATFORM_DISPATCH_HCSDISPATCHSESSIONMGR_H_
