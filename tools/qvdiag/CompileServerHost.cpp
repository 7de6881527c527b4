#include "tools/qvdiag/CompileServerHost.h"

#include <grpcpp/health_check_service_interface.h>
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
    throw std::runtime_error("cannot listen on '" + address_.target() +
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
