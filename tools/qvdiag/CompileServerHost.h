// A running gRPC compile server: CompileServer and the standard health service on one address.
#ifndef TOOLS_QVDIAG_COMPILESERVERHOST_H_
#define TOOLS_QVDIAG_COMPILESERVERHOST_H_

#include <grpcpp/grpcpp.h>
#include <sys/types.h>

#include <memory>
#include <mutex>
#include <string>

#include "platform/dispatch/ConnectionMgr.h"
#include "tools/qvdiag/CompileServerService.h"
#include "tools/qvdiag/ListenAddress.h"

namespace qvdiag {

// Serves `connections` on `address` from construction until shutdown().
//
// A Unix socket is made with mode 0600, so only its owner can connect. A socket path that a
// live server answers on is refused, never taken over; a socket file left behind by a server
// that is gone is replaced. The socket file is removed again by shutdown().
//
// A TCP address is listened on with one socket, on the address named and no other, and without
// port reuse: a port that anything else listens on is refused, never shared.
class CompileServerHost {
 public:
  // Starts listening. Throws std::runtime_error naming the address when it is taken (a socket
  // path a server answers on, a TCP port something listens on) or cannot be bound.
  // `connections` must outlive this object.
  CompileServerHost(dispatch::server::ConnectionMgr& connections, ListenAddress const& address);
  ~CompileServerHost();
  CompileServerHost(CompileServerHost const&) = delete;
  CompileServerHost& operator=(CompileServerHost const&) = delete;

  // The address clients connect to; for TCP with port 0, with the port that was chosen.
  std::string const& target() const { return target_; }

  // Blocks until the server has shut down.
  void wait();
  // Stops taking new calls, lets running calls finish, then removes the socket file. Safe to call
  // from another thread than wait(), and more than once.
  void shutdown();

  // Whether something answers connections on the Unix socket at `path`.
  static bool socketAnswers(std::string const& path);

 private:
  // Refuses a socket path that is in use or is not a socket; removes a stale socket file.
  static void claimSocketPath(std::string const& path);

  ListenAddress address_;
  std::string target_;
  CompileServerService service_;
  std::unique_ptr<grpc::Server> server_;
  // The socket file made at start, so that shutdown removes that one and no other.
  dev_t socketDevice_ = 0;
  ino_t socketInode_ = 0;

  std::mutex shutdownMutex_;  // guards the member below
  bool shutDown_ = false;
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_COMPILESERVERHOST_H_
