#include "tools/qvdiag/CompileServerHost.h"

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include <atomic>
#include <boost/filesystem.hpp>
#include <chrono>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "platform/dispatch/RequestHandler.h"
#include "proto/system_diagram_server.pb.h"
#include "tests/support/TempDir.h"
#include "tools/qvdiag/RemoteClient.h"
#include "tools/qvdiag/RequestTypes.h"
#include "tools/qvdiag/ServiceHost.h"

namespace qvdiag {
namespace {

namespace wire = dispatch::system_diagram_server;

// The listening TCP sockets of this process, one "address:port" each, in the order of
// /proc/self/net/tcp and then tcp6. An IPv4 address mapped into IPv6 (a dual-stack socket bound
// to ::ffff:127.0.0.1) shows as the IPv4 address it accepts.
std::vector<std::string> listeningTcpSockets() {
  std::set<std::string> ours;
  for (auto const& entry : boost::filesystem::directory_iterator("/proc/self/fd")) {
    char link[128] = {};
    if (::readlink(entry.path().c_str(), link, sizeof(link) - 1) < 0) continue;
    std::string const target = link;
    if (target.rfind("socket:[", 0) == 0) ours.insert(target.substr(8, target.size() - 9));
  }
  std::vector<std::string> found;
  for (char const* table : {"/proc/self/net/tcp", "/proc/self/net/tcp6"}) {
    std::ifstream lines(table);
    std::string line;
    std::getline(lines, line);  // the heading
    while (std::getline(lines, line)) {
      std::istringstream fields(line);
      std::string slot, local, remote, state, queues, timer, retransmits, uid, timeout, inode;
      fields >> slot >> local >> remote >> state >> queues >> timer >> retransmits >> uid >>
          timeout >> inode;
      if (state != "0A" || ours.count(inode) == 0) continue;  // 0A: LISTEN
      std::string const hex = local.substr(0, local.find(':'));
      int const port = std::stoi(local.substr(local.find(':') + 1), nullptr, 16);
      // The kernel prints each 32-bit word of the address as a number in host order.
      unsigned char bytes[16] = {};
      for (std::size_t word = 0; word * 8 < hex.size(); ++word) {
        auto const value =
            static_cast<std::uint32_t>(std::stoul(hex.substr(word * 8, 8), nullptr, 16));
        std::memcpy(bytes + word * 4, &value, 4);
      }
      char text[INET6_ADDRSTRLEN] = {};
      ::inet_ntop(hex.size() == 8 ? AF_INET : AF_INET6, bytes, text, sizeof(text));
      std::string address = text;
      if (address.rfind("::ffff:", 0) == 0 && address.find('.') != std::string::npos) {
        address = address.substr(7);
      }
      found.push_back(address + ":" + std::to_string(port));
    }
  }
  return found;
}

class CompileServerHostTest : public ::testing::Test {
 protected:
  static ServiceHost::Settings settings() {
    ServiceHost::Settings made;
    made.libraryPath = QV_LIBRARY_PATH;
    made.logLevel = -1;  // the refusals below are expected; keep the test's output clean
    return made;
  }

  static dispatch::Session session(std::string const& uuid, std::string const& name = "") {
    dispatch::Session made;
    made.set_uuid(uuid);
    made.set_name(name);
    return made;
  }

  // The gRPC failure text of `call`, or "" when it succeeds.
  template <class Call>
  static std::string failureOf(Call call) {
    try {
      call();
    } catch (std::runtime_error const& error) {
      return error.what();
    }
    return "";
  }

  qvtest::TempDir dir;
  std::string const socketPath = dir.file("server.sock");
  ListenAddress const address = ListenAddress::parse("unix:" + socketPath);
  ServiceHost host{settings()};
};

TEST_F(CompileServerHostTest, SocketIsTheOwnersAloneAndGoesAwayOnShutdown) {
  auto server = std::make_unique<CompileServerHost>(host.connections(), address);
  EXPECT_EQ(server->target(), "unix:" + socketPath);
  struct stat status {};
  ASSERT_EQ(::stat(socketPath.c_str(), &status), 0);
  EXPECT_TRUE(S_ISSOCK(status.st_mode));
  EXPECT_EQ(status.st_mode & 0777, 0600u);
  server->shutdown();
  EXPECT_FALSE(boost::filesystem::exists(socketPath));
  server->shutdown();  // twice is harmless
}

TEST_F(CompileServerHostTest, SessionsAndRequestsTravelOverTheSocket) {
  CompileServerHost server(host.connections(), address);
  RemoteClient client(address);
  dispatch::Session const created = client.createSession(session("", "first"));
  EXPECT_EQ(created.name(), "first");
  EXPECT_EQ(created.uuid().size(), 36u);

  wire::UpsertQrxBinGeneratedBy upsert;
  upsert.mutable_generatedby()->set_name("tool");
  dispatch::Response const upserted =
      client.dispatch(RequestTypes::request(created.uuid(), upsert));
  EXPECT_EQ(upserted.status().code(), 200);
  EXPECT_EQ(upserted.status().message(), "OK");

  dispatch::Session const forked = client.forkSession(created.uuid(), session("copy"));
  EXPECT_EQ(forked.uuid(), "copy");
  dispatch::Response const answered =
      client.dispatch(RequestTypes::request("copy", wire::GetQrxBinGeneratedBy()));
  EXPECT_EQ(answered.status().code(), 200);
  ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy generatedBy;
  ASSERT_TRUE(answered.payload().UnpackTo(&generatedBy));
  EXPECT_EQ(generatedBy.name(), "tool");

  dispatch::StatusResponse const removed = client.removeSession(session("copy"));
  EXPECT_EQ(removed.code(), 200);
  EXPECT_EQ(removed.message(), "OK");
  dispatch::Response const gone =
      client.dispatch(RequestTypes::request("copy", wire::GetQrxBinGeneratedBy()));
  EXPECT_EQ(gone.status().code(), 500);
}

TEST_F(CompileServerHostTest, SessionTableRefusalsBecomeGrpcStatusesWithTheirText) {
  CompileServerHost server(host.connections(), address);
  RemoteClient client(address);
  client.createSession(session("taken"));
  std::string const at = " at unix:" + socketPath + " failed with ";
  EXPECT_EQ(failureOf([&] { client.createSession(session("taken")); }),
            "CreateSession" + at +
                "ALREADY_EXISTS: SYSTEM_DIAGRAM: ERROR, a session already exists with UUID: "
                "'taken'");
  EXPECT_EQ(failureOf([&] { client.removeSession(session("absent")); }),
            "RemoveSession" + at +
                "NOT_FOUND: SYSTEM_DIAGRAM: ERROR, no session with UUID 'absent' found to "
                "remove");
  EXPECT_EQ(failureOf([&] { client.forkSession("absent", session("new")); }),
            "ForkSession" + at +
                "NOT_FOUND: SYSTEM_DIAGRAM: ERROR, no session with UUID 'absent' found to "
                "fork from");
  EXPECT_EQ(
      failureOf([&] { client.forkSession("", session("new")); }),
      "ForkSession" + at + "INVALID_ARGUMENT: SYSTEM_DIAGRAM: ERROR, UUID is empty in forkSession");
  // The server goes on serving.
  EXPECT_EQ(client.createSession(session("after")).uuid(), "after");
}

TEST_F(CompileServerHostTest, PathOfARunningServerIsRefusedAndThatServerKeepsServing) {
  CompileServerHost first(host.connections(), address);
  try {
    CompileServerHost second(host.connections(), address);
    FAIL() << "took the socket over";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "the socket path '" + socketPath +
                  "' is in use by a running server; stop it or choose another with --listen "
                  "unix:PATH");
  }
  RemoteClient client(address);
  EXPECT_EQ(client.createSession(session("still")).uuid(), "still");
}

TEST_F(CompileServerHostTest, PathOfAnOrdinaryFileIsRefusedAndKept) {
  std::ofstream(socketPath) << "precious";
  try {
    CompileServerHost server(host.connections(), address);
    FAIL() << "took the path over";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "the socket path '" + socketPath +
                  "' is taken by a file that is not a socket; choose another with --listen "
                  "unix:PATH");
  }
  std::ifstream kept(socketPath);
  std::string text;
  kept >> text;
  EXPECT_EQ(text, "precious");
}

TEST_F(CompileServerHostTest, StaleSocketOfAServerThatIsGoneIsReplaced) {
  // A socket file that nobody listens on any more, as a killed server leaves it.
  int const fd = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un name{};
  name.sun_family = AF_UNIX;
  std::copy(socketPath.begin(), socketPath.end(), name.sun_path);
  ASSERT_EQ(::bind(fd, reinterpret_cast<sockaddr*>(&name), sizeof(name)), 0);
  ::close(fd);
  EXPECT_FALSE(CompileServerHost::socketAnswers(socketPath));

  CompileServerHost server(host.connections(), address);
  EXPECT_TRUE(CompileServerHost::socketAnswers(socketPath));
  RemoteClient client(address);
  EXPECT_EQ(client.createSession(session("fresh")).uuid(), "fresh");
}

TEST_F(CompileServerHostTest, LoopbackTcpWithPortZeroGetsAPortOfItsOwn) {
  CompileServerHost server(host.connections(), ListenAddress::parse("tcp:0"));
  std::string const target = server.target();
  ASSERT_EQ(target.rfind("127.0.0.1:", 0), 0u) << target;
  EXPECT_NE(target, "127.0.0.1:0");
  RemoteClient client(ListenAddress::parse(target));
  EXPECT_EQ(client.createSession(session("tcp")).uuid(), "tcp");
}

TEST_F(CompileServerHostTest, TcpServerListensOnOneSocketOnTheAnnouncedPortAlone) {
  EXPECT_EQ(listeningTcpSockets(), std::vector<std::string>{});
  CompileServerHost server(host.connections(), ListenAddress::parse("tcp:0"));
  EXPECT_EQ(listeningTcpSockets(), std::vector<std::string>{server.target()});
  server.shutdown();
  EXPECT_EQ(listeningTcpSockets(), std::vector<std::string>{});
}

TEST_F(CompileServerHostTest, TcpPortInUseIsRefusedAndItsServerKeepsServing) {
  CompileServerHost first(host.connections(), ListenAddress::parse("tcp:0"));
  std::string const taken = first.target();
  std::string const port = taken.substr(taken.rfind(':') + 1);
  EXPECT_EQ(failureOf([&] { CompileServerHost(host.connections(), ListenAddress::parse(port)); }),
            "the address 127.0.0.1:" + port +
                " is in use; stop what listens there or choose another port with --listen "
                "tcp:PORT (port 0 takes a free one)");
  EXPECT_EQ(failureOf([&] {
              CompileServerHost(host.connections(), ListenAddress::parse("127.0.0.1:" + port));
            }),
            "the address 127.0.0.1:" + port +
                " is in use; stop what listens there or choose another port with --listen "
                "tcp:PORT (port 0 takes a free one)");
  RemoteClient client(ListenAddress::parse(taken));
  EXPECT_EQ(client.createSession(session("still")).uuid(), "still");
  EXPECT_EQ(listeningTcpSockets(), std::vector<std::string>{taken});
}

TEST_F(CompileServerHostTest, UnreachableServerIsNamedWithUnavailable) {
  RemoteClient client(address);
  std::string const text = failureOf([&] { client.createSession(session("x")); });
  EXPECT_EQ(text.rfind("CreateSession at unix:" + socketPath + " failed with UNAVAILABLE: ", 0), 0u)
      << text;
}

// A service whose requests take a while, so that one can be caught running.
class SlowHandler : public dispatch::server::RequestHandler {
 public:
  SlowHandler(dispatch::server::ConnectionMgr& connections, std::atomic<bool>& started)
      : RequestHandler("slow", connections), started_(started) {}
  void handle_request(dispatch::Request const&, dispatch::Response& response) override {
    started_ = true;
    std::this_thread::sleep_for(std::chrono::milliseconds(300));
    stockResponse(dispatch::StatusResponse::OK, response);
  }

 private:
  std::atomic<bool>& started_;
};

TEST_F(CompileServerHostTest, ShutdownLetsARunningRequestFinishAndTakesNoNewOnes) {
  dispatch::server::ConnectionMgr connections;
  std::atomic<bool> started{false};
  connections.adoptHandler(std::make_unique<SlowHandler>(connections, started));
  CompileServerHost server(connections, address);
  RemoteClient client(address);
  dispatch::Request request;
  request.set_service("slow");

  dispatch::Response answered;
  std::string failure;
  std::thread caller([&] {
    try {
      answered = client.dispatch(request);
    } catch (std::runtime_error const& error) {
      failure = error.what();
    }
  });
  while (!started) std::this_thread::sleep_for(std::chrono::milliseconds(1));
  server.shutdown();
  caller.join();
  EXPECT_EQ(failure, "");
  EXPECT_EQ(answered.status().code(), 200);
  EXPECT_EQ(answered.status().message(), "OK");

  std::string const refused = failureOf([&] { client.dispatch(request); });
  EXPECT_EQ(refused.rfind("Dispatch at unix:" + socketPath + " failed with UNAVAILABLE: ", 0), 0u)
      << refused;
}

TEST_F(CompileServerHostTest, ShutdownFromAnotherThreadEndsWait) {
  CompileServerHost server(host.connections(), address);
  std::thread stopper([&server] { server.shutdown(); });
  server.wait();
  stopper.join();
  EXPECT_FALSE(boost::filesystem::exists(socketPath));
}

}  // namespace
}  // namespace qvdiag
