#include "tools/qvdiag/ServiceHost.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

#include "platform/hut/HUTEnv.h"
#include "platform/mvk/NativeObjectService.h"
#include "proto/system_diagram_server.pb.h"
#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"
#include "tools/qvdiag/RequestTypes.h"

namespace qvdiag {
namespace {

class ServiceHostTest : public ::testing::Test {
 protected:
  ServiceHost::Settings settings() const {
    ServiceHost::Settings made;
    made.libraryPath = QV_LIBRARY_PATH;
    return made;
  }

  // What the service says of a diagram it cannot write.
  std::string failedWriteReason() const {
    return "Could not open " + dir.file("no/such/dir/diagram.json") + " for writing.";
  }

  qvtest::TempDir dir;
};

TEST_F(ServiceHostTest, LoadsTheLibraryAndAppliesTheSettingsUntilDestroyed) {
  ServiceHost::Settings given = settings();
  given.platformPath = {"/a", "/b"};
  given.timestamp = "Mon Jan  5 10:00:00 2026";
  {
    ServiceHost host(given);
    EXPECT_NE(host.connections().findHandler("dispatch.system_diagram_server"), nullptr);
    EXPECT_EQ(mvk::platform::NativeObjectService::searchPath(),
              (std::vector<std::string>{"/a", "/b"}));
    std::string stamp;
    HUTEnv::getTimeStamp(stamp);
    EXPECT_EQ(stamp, "Mon Jan  5 10:00:00 2026");
  }
  EXPECT_TRUE(mvk::platform::NativeObjectService::searchPath().empty());
  std::string stamp;
  HUTEnv::getTimeStamp(stamp);
  EXPECT_NE(stamp, "Mon Jan  5 10:00:00 2026");
}

TEST_F(ServiceHostTest, TraceGoesToTheLogFileAtTheGivenLevel) {
  ServiceHost::Settings given = settings();
  given.logFile = dir.file("server.log");
  given.logLevel = dispatch::server::kLogEvent;
  {
    ServiceHost host(given);
    dispatch::Session session;
    session.set_uuid("s1");
    host.connections().createSession(session);
    dispatch::server::Logger::getLogger(dispatch::server::kLogEvent) << "event" << std::endl;
    dispatch::server::Logger::getLogger(dispatch::server::kLogDebug) << "debug" << std::endl;
  }
  EXPECT_EQ(qvtest::readFile(dir.file("server.log")),
            "SYSTEM_DIAGRAM: creating session with uuid: 's1' and name ''\nevent\n");
}

// A request that fails in the service: the reason goes to the trace only.
int sendFailingWrite(ServiceHost& host, std::string const& path) {
  dispatch::Session session;
  session.set_uuid("s1");
  host.connections().createSession(session);
  dispatch::system_diagram_server::WriteSystemDiagram write;
  write.set_path(path);
  dispatch::Response response;
  host.connections().dispatch(RequestTypes::request("s1", write), response);
  return response.status().code();
}

TEST_F(ServiceHostTest, FailedRequestIsInTheLogFileBeforeAnyOtherRequest) {
  ServiceHost::Settings given = settings();
  given.logFile = dir.file("server.log");
  ServiceHost host(given);
  EXPECT_EQ(sendFailingWrite(host, dir.file("no/such/dir/diagram.json")), 500);
  // Read while the server lives and has sent nothing else.
  EXPECT_EQ(qvtest::readFile(dir.file("server.log")),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: " + failedWriteReason() + ".\n");
}

TEST_F(ServiceHostTest, FailedRequestIsOnStandardErrorBeforeAnyOtherRequest) {
  // Standard error goes to a file for the length of the request.
  std::string const path = dir.file("stderr");
  std::fflush(stderr);
  int const saved = ::dup(2);
  int const file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
  ASSERT_GE(file, 0);
  ::dup2(file, 2);
  ::close(file);
  int code = 0;
  std::string seen;
  {
    ServiceHost host(settings());
    code = sendFailingWrite(host, dir.file("no/such/dir/diagram.json"));
    seen = qvtest::readFile(path);
  }
  ::dup2(saved, 2);
  ::close(saved);
  EXPECT_EQ(code, 500);
  EXPECT_EQ(seen, "SYSTEM_DIAGRAM_HANDLER: Caught exception: " + failedWriteReason() + ".\n");
}

TEST_F(ServiceHostTest, UnloadableLibraryIsNamed) {
  ServiceHost::Settings given = settings();
  given.libraryPath = dir.file("libmissing.so");
  try {
    ServiceHost host(given);
    FAIL() << "loaded";
  } catch (std::runtime_error const& error) {
    std::string const text = error.what();
    EXPECT_EQ(text.rfind("cannot load service library '" + dir.file("libmissing.so") + "': ", 0),
              0u)
        << text;
  }
}

TEST_F(ServiceHostTest, UnwritableLogFileIsNamed) {
  ServiceHost::Settings given = settings();
  given.logFile = dir.file("no/such/dir/server.log");
  try {
    ServiceHost host(given);
    FAIL() << "opened";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()), "cannot open the log file '" +
                                             dir.file("no/such/dir/server.log") +
                                             "' for writing: No such file or directory");
  }
}

}  // namespace
}  // namespace qvdiag
