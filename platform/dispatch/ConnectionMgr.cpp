#include "platform/dispatch/ConnectionMgr.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include <boost/uuid/random_generator.hpp>
#include <boost/uuid/uuid_io.hpp>

namespace dispatch {
namespace server {

ConnectionMgr::ConnectionMgr() : sessionMgr_(std::make_shared<HCSDispatchSessionMgr>()) {}

ConnectionMgr::~ConnectionMgr() {
  // Handlers unregister themselves while they are destroyed, so take them out first.
  std::vector<std::unique_ptr<RequestHandler>> owned;
  {
    std::lock_guard<std::mutex> lock(handlersMutex_);
    owned.swap(owned_);
  }
  while (!owned.empty()) owned.pop_back();  // newest first
}

void ConnectionMgr::registerHandler(RequestHandler& handler) {
  std::lock_guard<std::mutex> lock(handlersMutex_);
  if (!handlers_.emplace(handler.getName(), &handler).second) {
    throw std::invalid_argument("a handler for service '" + handler.getName() +
                                "' is already registered");
  }
}

void ConnectionMgr::unregisterHandler(RequestHandler& handler) {
  std::lock_guard<std::mutex> lock(handlersMutex_);
  auto const found = handlers_.find(handler.getName());
  if (found != handlers_.end() && found->second == &handler) handlers_.erase(found);
}

RequestHandler& ConnectionMgr::adoptHandler(std::unique_ptr<RequestHandler> handler) {
  if (!handler) throw std::invalid_argument("adoptHandler: no handler given");
  {
    std::lock_guard<std::mutex> lock(handlersMutex_);
    auto const found = handlers_.find(handler->getName());
    if (found != handlers_.end() && found->second == handler.get()) {
      owned_.push_back(std::move(handler));
      return *owned_.back();
    }
  }
  std::string const name = handler->getName();
  handler.reset();  // outside the lock: its destructor unregisters
  throw std::invalid_argument("adoptHandler: the handler for service '" + name +
                              "' is not registered with this connection manager");
}

RequestHandler* ConnectionMgr::findHandler(std::string const& service) const {
  std::lock_guard<std::mutex> lock(handlersMutex_);
  auto const found = handlers_.find(service);
  return found == handlers_.end() ? nullptr : found->second;
}

std::vector<std::string> ConnectionMgr::serviceNames() const {
  std::lock_guard<std::mutex> lock(handlersMutex_);
  std::vector<std::string> names;
  for (auto const& entry : handlers_) names.push_back(entry.first);
  return names;
}

void ConnectionMgr::dispatch(Request const& request, Response& response) const {
  std::shared_lock<std::shared_mutex> sessions(sessionsLock_);
  RequestHandler* handler = findHandler(request.service());
  if (handler == nullptr) {
    RequestHandler::stockResponse(StatusResponse::NOT_FOUND, response);
    return;
  }
  handler->handle_request(request, response);
}

std::string ConnectionMgr::freshUuid() {
  // One generator per thread: the generator is not safe to share.
  thread_local boost::uuids::random_generator generator;
  return boost::uuids::to_string(generator());
}

Session ConnectionMgr::createSession(Session session) {
  if (session.uuid().empty()) session.set_uuid(freshUuid());
  std::unique_lock<std::shared_mutex> sessions(sessionsLock_);
  sessionMgr_->createSession(session);
  return session;
}

Session ConnectionMgr::forkSession(std::string const& sourceUuid, Session target) {
  if (target.uuid().empty()) target.set_uuid(freshUuid());
  std::unique_lock<std::shared_mutex> sessions(sessionsLock_);
  sessionMgr_->forkSession(sourceUuid, target.uuid());
  return target;
}

void ConnectionMgr::removeSession(Session const& session, bool flag) {
  std::unique_lock<std::shared_mutex> sessions(sessionsLock_);
  sessionMgr_->removeSession(session, flag);
}

}  // namespace server
}  // namespace dispatch
