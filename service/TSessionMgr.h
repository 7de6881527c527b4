// The session table: one payload per compile session, kept under the session's UUID.
#ifndef SERVICE_TSESSIONMGR_H_
#define SERVICE_TSESSIONMGR_H_

#include <map>
#include <mutex>
#include <stdexcept>
#include <string>

#include "platform/dispatch/ISessionMgr.h"
#include "platform/dispatch/Logger.h"
#include "proto/dispatch.pb.h"
#include "service/HCSExceptionNoSessionFound.h"
#include "service/HCSExceptionUuidAlreadyInUse.h"

namespace dispatch {
namespace server {

// Keeps a T per session and follows the server's session events (ISessionMgr). T must be
// default-constructible and copy-assignable; a new session gets a default T, a fork assigns the
// source's T to the target's.
//
// Every failure is an exception whose text opens with `name`; the table is then unchanged, with
// one exception: a fork whose assignment throws leaves the target's default T in the table.
// Events and errors go to the server's Logger (errors at level 0, events at level 3).
template <class T>
class TSessionMgr : public ISessionMgr {
 public:
  explicit TSessionMgr(std::string const& tableName) : name(tableName) {}

  // Adds `session.uuid()` with a default T.
  void createSession(Session const& session) override {
    std::string const uuid = session.uuid();
    if (uuid.empty()) {
      Logger::getLogger(kLogError) << name << ": ERROR, UUID is empty in createSession"
                                   << std::endl;
      throw std::runtime_error(name + ": ERROR, UUID is empty in createSession");
    }
    std::lock_guard<std::mutex> lock(mutex);
    if (sessions.find(uuid) != sessions.end()) {
      throw HCSExceptionUuidAlreadyInUse(name + ": ERROR, a session already exists with UUID: '" +
                                         uuid + "'");
    }
    Logger::getLogger(kLogEvent) << name << ": creating session with uuid: '" << uuid
                                 << "' and name '" << session.name() << "'" << std::endl;
    sessions[uuid];
  }

  // Adds `targetUuid` with a copy of the T of `sourceUuid`. The target is tested before the
  // source, so forking onto a taken UUID reports the taken UUID whatever the source.
  void forkSession(std::string const& sourceUuid, std::string const& targetUuid) override {
    if (sourceUuid.empty() || targetUuid.empty()) {
      Logger::getLogger(kLogError) << name << ": ERROR, UUID is empty in forkSession"
                                   << std::endl;
      throw std::runtime_error(name + ": ERROR, UUID is empty in forkSession");
    }
    std::lock_guard<std::mutex> lock(mutex);
    if (sessions.find(targetUuid) != sessions.end()) {
      throw HCSExceptionUuidAlreadyInUse(name + ": ERROR, a session already exists with UUID: '" +
                                         targetUuid + "'");
    }
    if (sessions.find(sourceUuid) == sessions.end()) {
      throw HCSExceptionNoSessionFound(name + ": ERROR, no session with UUID '" + sourceUuid +
                                       "' found to fork from");
    }
    Logger::getLogger(kLogEvent) << name << ": Forking session from session with uuid: '"
                                 << sourceUuid << "'" << std::endl;
    T& source = sessions[sourceUuid];
    T& target = sessions[targetUuid];
    target = source;
  }

  // Removes the session and destroys its T. Both values of `flag` do the same.
  void removeSession(Session const& session, bool /*flag*/) override {
    std::string const uuid = session.uuid();
    if (uuid.empty()) {
      // Unlike create and fork, this refusal is not logged.
      throw std::runtime_error(
          name + ": ERROR while trying to close session, provided session doesn't have a UUID.");
    }
    std::lock_guard<std::mutex> lock(mutex);
    auto const found = sessions.find(uuid);
    if (found == sessions.end()) {
      throw HCSExceptionNoSessionFound(name + ": ERROR, no session with UUID '" + uuid +
                                       "' found to remove");
    }
    Logger::getLogger(kLogEvent) << name << ": closing session for UUID '" << uuid
                                 << "' with name '" << session.name() << "'" << std::endl;
    sessions.erase(found);
  }

  // Constant after construction; opens every message.
  const std::string name;

  // Held across each create, fork and remove.
  std::mutex mutex;
  // UUID to payload. Each payload lives in its map node: a reference to it stays good until that
  // entry is erased. Readers outside the three operations above take no lock; they rely on the
  // server never changing the set of sessions while a request runs.
  std::map<std::string, T> sessions;
};

}  // namespace server
}  // namespace dispatch

#endif  // SERVICE_TSESSIONMGR_H_
