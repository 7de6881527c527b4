#include "tools/qvdiag/CompileServerHost.h"

#include <grpc/grpc.h>
#include <grpcpp/health_check_service_interface.h>
#include <netdb.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <cerrno>
#include <cstring>
#include <stdexcept>

namespace qvdiag {
namespace {

// Restores the process's file creation mask at scope end.
class ScopedUmask {
 public:
  explicit ScopedUmask(mode_t mask) : previous_(::umask(mask)) {}
  ~ScopedUmask() { ::umask(previous_); }
  ScopedUmask(ScopedUmask const&) = delete;
  ScopedUmask& operator=(ScopedUmask const&) = delete;

 private:
  mode_t previous_;
};

// Whether binding `host`:`port` fails because something else holds it. Asked after gRPC could
// not listen there, to tell a port in use from an address that is not this machine's; the
// socket is made as gRPC makes its own (SO_REUSEADDR on), so a port whose old connections still
// wait out TIME_WAIT does not count as taken.
bool tcpAddressInUse(std::string host, std::string const& port) {
  if (host.size() >= 2 && host.front() == '[' && host.back() == ']') {
    host = host.substr(1, host.size() - 2);
  }
  addrinfo hints{};
  hints.ai_family = AF_UNSPEC;
  hints.ai_socktype = SOCK_STREAM;
  hints.ai_flags = AI_PASSIVE;
  addrinfo* found = nullptr;
  if (::getaddrinfo(host.c_str(), port.c_str(), &hints, &found) != 0) return false;
  bool inUse = false;
  for (addrinfo* each = found; each != nullptr && !inUse; each = each->ai_next) {
    int const fd = ::socket(each->ai_family, each->ai_socktype | SOCK_CLOEXEC, each->ai_protocol);
    if (fd < 0) continue;
    int const on = 1;
    ::setsockopt(fd, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
    inUse = ::bind(fd, each->ai_addr, each->ai_addrlen) != 0 && errno == EADDRINUSE;
    ::close(fd);
  }
  ::freeaddrinfo(found);
  return inUse;
}

}  // namespace

bool CompileServerHost::socketAnswers(std::string const& path) {
  sockaddr_un address{};
  if (path.size() >= sizeof(address.sun_path)) return false;
  address.sun_family = AF_UNIX;
  std::memcpy(address.sun_path, path.c_str(), path.size() + 1);
  int const fd = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);
  if (fd < 0) return false;
  bool const answers =
      ::connect(fd, reinterpret_cast<sockaddr const*>(&address), sizeof(address)) == 0;
  ::close(fd);
  return answers;
}

void CompileServerHost::claimSocketPath(std::string const& path) {
  struct stat status {};
  if (::lstat(path.c_str(), &status) != 0) {
    if (errno == ENOENT) return;
    throw std::runtime_error("cannot examine the socket path '" + path +
                             "': " + std::strerror(errno));
  }
  if (!S_ISSOCK(status.st_mode)) {
    throw std::runtime_error("the socket path '" + path +
                             "' is taken by a file that is not a socket; choose another with "
                             "--listen unix:PATH");
  }
  if (socketAnswers(path)) {
    throw std::runtime_error("the socket path '" + path +
                             "' is in use by a running server; stop it or choose another with "
                             "--listen unix:PATH");
  }
  ::unlink(path.c_str());  // left behind by a server that is gone
}

CompileServerHost::CompileServerHost(dispatch::server::ConnectionMgr& connections,
                                     ListenAddress const& address)
    : address_(address), target_(address.target()), service_(connections) {
  if (address_.isUnix()) claimSocketPath(address_.socketPath());

  grpc::EnableDefaultHealthCheckService(true);
  grpc::ServerBuilder builder;
  // gRPC binds TCP ports with SO_REUSEPORT unless told otherwise. A second server would then
  // bind a port in use beside the first, and the kernel would share the connections out between
  // the two; and gRPC would clone the listening socket once per poller, with port 0 onto another
  // port than the one announced. Without it, a port is one server's alone, on one socket.
  builder.AddChannelArgument(GRPC_ARG_ALLOW_REUSEPORT, 0);
  int chosenPort = 0;
  builder.AddListeningPort(address_.target(), grpc::InsecureServerCredentials(),
                           address_.isUnix() ? nullptr : &chosenPort);
  builder.RegisterService(&service_);
  {
    // The socket is created inside BuildAndStart; a mask makes it 0600 from its first moment.
    ScopedUmask ownerOnly(0177);
    server_ = builder.BuildAndStart();
  }
  if (!server_ || (!address_.isUnix() && chosenPort == 0)) {
    server_.reset();
    std::string const& target = address_.target();
    std::size_t const colon = target.rfind(':');
    std::string const host = target.substr(0, colon);
    if (!address_.isUnix() && tcpAddressInUse(host, target.substr(colon + 1))) {
      throw std::runtime_error("the address " + target +
                               " is in use; stop what listens there or choose another port with "
                               "--listen " +
                               (host == "127.0.0.1" ? "tcp:PORT" : host + ":PORT") +
                               " (port 0 takes a free one)");
    }
    throw std::runtime_error("cannot listen on '" + target +
                             "': the address is in use or not one of this machine's");
  }
  if (address_.isUnix()) {
    std::string const& path = address_.socketPath();
    ::chmod(path.c_str(), 0600);
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0) {
      socketDevice_ = status.st_dev;
      socketInode_ = status.st_ino;
    }
  } else {
    target_ =
        address_.target().substr(0, address_.target().rfind(':') + 1) + std::to_string(chosenPort);
  }
  if (grpc::HealthCheckServiceInterface* health = server_->GetHealthCheckService()) {
    health->SetServingStatus(true);
    health->SetServingStatus("dispatch.CompileServer", true);
  }
}

CompileServerHost::~CompileServerHost() { shutdown(); }

void CompileServerHost::wait() {
  if (server_) server_->Wait();
}

void CompileServerHost::shutdown() {
  std::lock_guard<std::mutex> lock(shutdownMutex_);
  if (shutDown_ || !server_) return;
  shutDown_ = true;
  if (grpc::HealthCheckServiceInterface* health = server_->GetHealthCheckService()) {
    health->SetServingStatus(false);
  }
  // Without a deadline, Shutdown waits for the calls that are running to finish.
  server_->Shutdown();
  if (!address_.isUnix()) return;
  struct stat status {};
  std::string const& path = address_.socketPath();
  if (::lstat(path.c_str(), &status) == 0 && status.st_dev == socketDevice_ &&
      status.st_ino == socketInode_) {
    ::unlink(path.c_str());
  }
}

}  // namespace qvdiag
