// Where the compile server listens and where its clients connect.
#ifndef TOOLS_QVDIAG_LISTENADDRESS_H_
#define TOOLS_QVDIAG_LISTENADDRESS_H_

#include <string>

namespace qvdiag {

// An address as typed after --listen or --server:
//   unix:PATH        a Unix domain socket (the default kind)
//   tcp:PORT, PORT   TCP on the loopback address 127.0.0.1
//   HOST:PORT        TCP on exactly that address ("[::1]:PORT" for IPv6)
// A port is 0 to 65535; 0 asks the system for a free one when listening.
class ListenAddress {
 public:
  // Throws UsageError, quoting the text, for anything else.
  static ListenAddress parse(std::string const& text);
  // unix:/tmp/qvdiag-<uid>.sock, the address that serve and its clients use by default.
  static ListenAddress defaultAddress();

  bool isUnix() const { return unix_; }
  // The socket's path, for a Unix address.
  std::string const& socketPath() const { return socketPath_; }
  // Whether a TCP address is a loopback one (always true for a Unix address).
  bool isLoopback() const;
  // The address in gRPC's form: "unix:PATH" or "HOST:PORT".
  std::string const& target() const { return target_; }

 private:
  bool unix_ = true;
  std::string socketPath_;
  std::string host_;
  std::string target_;
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_LISTENADDRESS_H_
