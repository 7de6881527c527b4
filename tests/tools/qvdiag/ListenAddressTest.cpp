#include "tools/qvdiag/ListenAddress.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <string>

#include "tools/qvdiag/UsageError.h"

namespace qvdiag {
namespace {

struct GoodAddress {
  char const* text;
  bool isUnix;
  char const* target;
  bool loopback;
};

GoodAddress const kGood[] = {
    {"unix:/tmp/a.sock", true, "unix:/tmp/a.sock", true},
    {"unix:relative.sock", true, "unix:relative.sock", true},
    {"tcp:50051", false, "127.0.0.1:50051", true},
    {"50051", false, "127.0.0.1:50051", true},
    {"0", false, "127.0.0.1:0", true},
    {"tcp:007", false, "127.0.0.1:7", true},
    {"localhost:8080", false, "localhost:8080", true},
    {"127.0.0.2:1", false, "127.0.0.2:1", true},
    {"[::1]:65535", false, "[::1]:65535", true},
    {"0.0.0.0:9000", false, "0.0.0.0:9000", false},
    {"build-host.example:9000", false, "build-host.example:9000", false},
};

TEST(ListenAddressTest, ParsesEveryForm) {
  for (GoodAddress const& row : kGood) {
    SCOPED_TRACE(row.text);
    ListenAddress const address = ListenAddress::parse(row.text);
    EXPECT_EQ(address.isUnix(), row.isUnix);
    EXPECT_EQ(address.target(), row.target);
    EXPECT_EQ(address.isLoopback(), row.loopback);
  }
}

TEST(ListenAddressTest, UnixAddressKeepsItsPath) {
  EXPECT_EQ(ListenAddress::parse("unix:/run/x/server.sock").socketPath(), "/run/x/server.sock");
}

TEST(ListenAddressTest, DefaultIsAUnixSocketOfTheUser) {
  ListenAddress const address = ListenAddress::defaultAddress();
  EXPECT_TRUE(address.isUnix());
  EXPECT_EQ(address.socketPath(), "/tmp/qvdiag-" + std::to_string(::getuid()) + ".sock");
}

struct BadAddress {
  char const* text;
  char const* message;
};

BadAddress const kBad[] = {
    {"unix:", "'unix:' names no socket path: expected unix:PATH"},
    {"tcp:",
     "'tcp:' has no valid port: expected unix:PATH, tcp:PORT, PORT or HOST:PORT, with a "
     "port from 0 to 65535"},
    {"65536",
     "'65536' has no valid port: expected unix:PATH, tcp:PORT, PORT or HOST:PORT, with "
     "a port from 0 to 65535"},
    {"host:port",
     "'host:port' has no valid port: expected unix:PATH, tcp:PORT, PORT or "
     "HOST:PORT, with a port from 0 to 65535"},
    {"localhost:123456",
     "'localhost:123456' has no valid port: expected unix:PATH, tcp:PORT, "
     "PORT or HOST:PORT, with a port from 0 to 65535"},
    {"server", "'server' is not an address: expected unix:PATH, tcp:PORT, PORT or HOST:PORT"},
    {":80", "':80' is not an address: expected unix:PATH, tcp:PORT, PORT or HOST:PORT"},
    {"", "'' is not an address: expected unix:PATH, tcp:PORT, PORT or HOST:PORT"},
};

TEST(ListenAddressTest, RefusesWhatIsNoAddress) {
  for (BadAddress const& row : kBad) {
    SCOPED_TRACE(row.text);
    try {
      ListenAddress::parse(row.text);
      ADD_FAILURE() << "accepted";
    } catch (UsageError const& error) {
      EXPECT_EQ(std::string(error.what()), row.message);
    }
  }
}

}  // namespace
}  // namespace qvdiag
