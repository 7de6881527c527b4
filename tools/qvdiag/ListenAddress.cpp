#include "tools/qvdiag/ListenAddress.h"

#include <unistd.h>

#include <algorithm>
#include <cctype>

#include "tools/qvdiag/UsageError.h"

namespace qvdiag {
namespace {

bool allDigits(std::string const& text) {
  return !text.empty() && std::all_of(text.begin(), text.end(),
                                      [](unsigned char c) { return std::isdigit(c) != 0; });
}

std::string checkedPort(std::string const& port, std::string const& text) {
  if (!allDigits(port) || port.size() > 5 || std::stoul(port) > 65535) {
    throw UsageError("'" + text + "' has no valid port: expected unix:PATH, tcp:PORT, PORT or " +
                     "HOST:PORT, with a port from 0 to 65535");
  }
  return std::to_string(std::stoul(port));
}

}  // namespace

ListenAddress ListenAddress::parse(std::string const& text) {
  ListenAddress address;
  if (text.rfind("unix:", 0) == 0) {
    address.socketPath_ = text.substr(5);
    if (address.socketPath_.empty()) {
      throw UsageError("'" + text + "' names no socket path: expected unix:PATH");
    }
    address.target_ = "unix:" + address.socketPath_;
    return address;
  }
  address.unix_ = false;
  std::string port;
  if (text.rfind("tcp:", 0) == 0 || allDigits(text)) {
    address.host_ = "127.0.0.1";
    port = text.rfind("tcp:", 0) == 0 ? text.substr(4) : text;
  } else {
    std::size_t const colon = text.rfind(':');
    if (colon == std::string::npos || colon == 0) {
      throw UsageError("'" + text + "' is not an address: expected unix:PATH, tcp:PORT, PORT " +
                       "or HOST:PORT");
    }
    address.host_ = text.substr(0, colon);
    port = text.substr(colon + 1);
  }
  address.target_ = address.host_ + ":" + checkedPort(port, text);
  return address;
}

ListenAddress ListenAddress::defaultAddress() {
  return parse("unix:/tmp/qvdiag-" + std::to_string(::getuid()) + ".sock");
}

bool ListenAddress::isLoopback() const {
  if (unix_) return true;
  return host_ == "localhost" || host_ == "[::1]" || host_.rfind("127.", 0) == 0;
}

}  // namespace qvdiag
