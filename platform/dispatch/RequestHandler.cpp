#include "platform/dispatch/RequestHandler.h"

#include <cctype>
#include <limits>
#include <stdexcept>
#include <vector>

#include "platform/dispatch/ConnectionMgr.h"

namespace dispatch {
namespace server {

RequestHandler::RequestHandler(std::string const& name, ConnectionMgr& connections)
    : name_(name), connections_(connections) {
  connections_.registerHandler(*this);
}

RequestHandler::~RequestHandler() { connections_.unregisterHandler(*this); }

bool RequestHandler::validateRequest(Request const& request, Response& response) const {
  if (request.service() != name_) {
    stockResponse(StatusResponse::NOT_FOUND, response);
    return false;
  }
  if (request.has_version() && request.version().major() != version_.major()) {
    stockResponse(StatusResponse::BAD_REQUEST, response);
    return false;
  }
  return true;
}

std::string RequestHandler::sessionFromRequest(Request const& request) const {
  return request.session_uuid();
}

void RequestHandler::setVersionFromString(std::string const& text) {
  auto const bad = [&] {
    return std::invalid_argument("service '" + name_ + "': version text '" + text +
                                 "' is not of the form MAJOR.MINOR.PATCH");
  };
  std::vector<std::uint32_t> parts;
  std::size_t pos = 0;
  while (true) {
    std::size_t end = pos;
    std::uint64_t value = 0;
    while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end]))) {
      value = value * 10 + static_cast<std::uint64_t>(text[end] - '0');
      if (value > std::numeric_limits<std::uint32_t>::max()) throw bad();
      ++end;
    }
    if (end == pos) throw bad();
    parts.push_back(static_cast<std::uint32_t>(value));
    if (end == text.size()) break;
    if (text[end] != '.' || parts.size() == 3) throw bad();
    pos = end + 1;
  }
  parts.resize(3, 0);
  version_.set_major(parts[0]);
  version_.set_minor(parts[1]);
  version_.set_patch(parts[2]);
}

std::string RequestHandler::stockText(StatusResponse_Code code) {
  switch (code) {
    case StatusResponse::OK:
      return "OK";
    case StatusResponse::BAD_REQUEST:
      return "Bad Request";
    case StatusResponse::NOT_FOUND:
      return "Not Found";
    case StatusResponse::INTERNAL_SERVER_ERROR:
      return "Internal Server Error";
    default:
      return "Unknown Status";
  }
}

void RequestHandler::stockResponse(StatusResponse_Code code, Response& response) {
  StatusResponse* status = response.mutable_status();
  status->set_code(code);
  status->set_message(stockText(code));
}

}  // namespace server
}  // namespace dispatch
