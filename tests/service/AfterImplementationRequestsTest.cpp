// The two requests that bring a diagram up to date after an implementation run: in the session,
// and from one stored diagram file to another.
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "platform/dispatch/ConnectionMgr.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/Golden.h"
#include "tests/support/LoggerCapture.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"

namespace {

namespace wire = dispatch::system_diagram_server;
using qvtest::LoggerCapture;
using qvtest::requestFor;

class AfterImplementationRequestsTest : public ::testing::Test {
 protected:
  AfterImplementationRequestsTest() : handler(connections) {
    dispatch::Session session;
    session.set_uuid("s1");
    connections.createSession(session);
    wire::ReadSystemDiagram read;
    read.set_path(baseDiagram);
    EXPECT_STATUS(send(read), 200);
  }

  dispatch::Response send(google::protobuf::Message const& message,
                          std::string const& uuid = "s1") {
    dispatch::Response response;
    connections.dispatch(requestFor(uuid, message), response);
    return response;
  }

  std::string written() {
    wire::WriteSystemDiagram write;
    write.set_path(dir.file("session.json"));
    EXPECT_STATUS(send(write), 200);
    return qvtest::readFile(write.path());
  }

  static wire::UpdateSystemDiagramAfterBrenloRuns update(std::string const& rtd) {
    wire::UpdateSystemDiagramAfterBrenloRuns message;
    message.set_rtdfile(rtd);
    return message;
  }

  static wire::AfterRunningBrenlo afterRun(std::string const& in, std::string const& rtd,
                                           std::string const& out) {
    wire::AfterRunningBrenlo message;
    message.set_diagraminfile(in);
    message.set_rtdfile(rtd);
    message.set_diagramoutfile(out);
    return message;
  }

  std::string const baseDiagram = qvtest::dataFile("diagrams/base.json");
  std::string const rtdFile = qvtest::dataFile("rtd/after_implementation.json");
  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler;
  qvtest::TempDir dir;
};

TEST_F(AfterImplementationRequestsTest, UpdateBringsAddressesAndMemoryUseUpToDate) {
  LoggerCapture log(dispatch::server::kLogDebug);
  EXPECT_STATUS(send(update(rtdFile)), 200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleUpdatingAfterRunningBrenloRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleUpdatingAfterRunningBrenloRequest\n");
  EXPECT_GOLDEN(written(), "after_implementation.json");
}

TEST_F(AfterImplementationRequestsTest, UpdateWithoutRtdFileIsAnswered400) {
  std::string const before = written();
  EXPECT_STATUS(send(update("")), 400);
  EXPECT_STATUS(send(update(""), "ghost"), 400);
  EXPECT_EQ(written(), before);
}

TEST_F(AfterImplementationRequestsTest, UpdateForAnUnknownSessionIsAnswered500) {
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(update(rtdFile), "ghost"), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no session with "
            "UUID 'ghost'.\n");
}

TEST_F(AfterImplementationRequestsTest, UpdateFromAMissingFileIsAnswered500AndKeepsTheDiagram) {
  std::string const before = written();
  std::string const missing = dir.file("missing.json");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(update(missing)), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: Could not open " + missing +
                " for reading..\n");
  EXPECT_EQ(written(), before);
}

TEST_F(AfterImplementationRequestsTest, UpdateFromAFileWithoutCountIsAnswered500) {
  std::string const before = written();
  std::string const bad = dir.file("bad.json");
  std::ofstream(bad) << R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},
                          "mem_topology": {}, "ip_layout": {"m_count": "0"},
                          "connectivity": {"m_count": "0"}})";
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(update(bad)), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: No such node (mem_topology.m_count).\n");
  EXPECT_EQ(written(), before);
}

TEST_F(AfterImplementationRequestsTest, AfterRunningBrenloUpdatesFileToFileAndLeavesTheSession) {
  std::string const before = written();
  std::string const out = dir.file("out.json");
  LoggerCapture log(dispatch::server::kLogDebug);
  // The message names the diagram first; the operation takes the run-time data file first.
  EXPECT_STATUS(send(afterRun(baseDiagram, rtdFile, out)), 200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleAfterRunningBrenloRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleAfterRunningBrenloRequest\n");
  EXPECT_GOLDEN(qvtest::readFile(out), "after_implementation.json");
  EXPECT_EQ(written(), before);
}

TEST_F(AfterImplementationRequestsTest, AfterRunningBrenloNeedsAllThreeFiles) {
  std::string const out = dir.file("out.json");
  EXPECT_STATUS(send(afterRun("", rtdFile, out)), 400);
  EXPECT_STATUS(send(afterRun(baseDiagram, "", out)), 400);
  EXPECT_STATUS(send(afterRun(baseDiagram, rtdFile, "")), 400);
  std::ifstream probe(out);
  EXPECT_FALSE(probe.good());
}

TEST_F(AfterImplementationRequestsTest, OutputInAMissingDirectoryIsNamedBeforeAnyParsing) {
  std::string const notJson = dir.file("not.json");
  std::ofstream(notJson) << "this is not JSON";
  std::string const out = dir.file("no/such/dir/out.json");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(afterRun(baseDiagram, notJson, out)), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: Could not open " + out + " for writing..\n");
}

TEST_F(AfterImplementationRequestsTest, MissingInputDiagramIsNamed) {
  std::string const missing = dir.file("missing.json");
  std::string const out = dir.file("out.json");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(afterRun(missing, rtdFile, out)), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: Could not open " + missing +
                " for reading..\n");
}

TEST_F(AfterImplementationRequestsTest, SameInputAndOutputTruncatesBeforeReading) {
  std::string const path = dir.file("same.json");
  std::ofstream(path) << qvtest::readFile(baseDiagram);
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(afterRun(path, rtdFile, path)), 500);
  EXPECT_EQ(log.text().rfind("SYSTEM_DIAGRAM_HANDLER: Caught exception: Deserializing failed with "
                             "error: ",
                             0),
            0u)
      << log.text();
  EXPECT_EQ(qvtest::readFile(path), "");
}

}  // namespace
