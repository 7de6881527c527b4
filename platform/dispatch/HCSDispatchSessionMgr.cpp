#include "platform/dispatch/HCSDispatchSessionMgr.h"

#include <exception>
#include <utility>

namespace dispatch {
namespace server {

void HCSDispatchSessionMgr::addHandler(std::shared_ptr<ISessionMgr> table) {
  if (!table) return;
  std::lock_guard<std::mutex> lock(mutex_);
  tables_.push_back(std::move(table));
}

std::size_t HCSDispatchSessionMgr::numHandlers() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return tables_.size();
}

std::vector<std::shared_ptr<ISessionMgr>> HCSDispatchSessionMgr::snapshot() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return tables_;
}

namespace {

// Removes `uuid` again from the first `count` tables after a later table refused it. The tables
// that took the session are expected to give it back; should one refuse, there is nothing better
// to do than to report the original failure.
void undo(std::vector<std::shared_ptr<ISessionMgr>> const& tables, std::size_t count,
          std::string const& uuid) {
  Session session;
  session.set_uuid(uuid);
  for (std::size_t i = 0; i < count; ++i) {
    try {
      tables[i]->removeSession(session, false);
    } catch (...) {
    }
  }
}

}  // namespace

void HCSDispatchSessionMgr::createSession(Session const& session) {
  auto const tables = snapshot();
  for (std::size_t i = 0; i < tables.size(); ++i) {
    try {
      tables[i]->createSession(session);
    } catch (...) {
      undo(tables, i, session.uuid());
      throw;
    }
  }
}

void HCSDispatchSessionMgr::forkSession(std::string const& sourceUuid,
                                        std::string const& targetUuid) {
  auto const tables = snapshot();
  for (std::size_t i = 0; i < tables.size(); ++i) {
    try {
      tables[i]->forkSession(sourceUuid, targetUuid);
    } catch (...) {
      undo(tables, i, targetUuid);
      throw;
    }
  }
}

void HCSDispatchSessionMgr::removeSession(Session const& session, bool flag) {
  std::exception_ptr first;
  for (auto const& table : snapshot()) {
    try {
      table->removeSession(session, flag);
    } catch (...) {
      if (!first) first = std::current_exception();
    }
  }
  if (first) std::rethrow_exception(first);
}

}  // namespace server
}  // namespace dispatch
