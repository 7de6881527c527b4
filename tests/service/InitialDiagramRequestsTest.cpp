// MakeInitialSystemDiagram: a session's diagram made from a run-time data file and a platform,
// then brought up to date after an implementation run.
#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/mvk/NativeObjectService.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/Golden.h"
#include "tests/support/LoggerCapture.h"
#include "tests/support/MessageCapture.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"
#include "tests/support/WorkingDirectory.h"

namespace {

namespace wire = dispatch::system_diagram_server;
using qvtest::exampleFile;
using qvtest::LoggerCapture;
using qvtest::requestFor;

constexpr char kPlatformName[] = "qv_accel_h2_gen3x16";
constexpr char kDesign[] = "design/vector_pipeline.rtd.json";
constexpr char kDesignAfterImplementation[] = "design/vector_pipeline.post_impl.rtd.json";

class InitialDiagramRequestsTest : public ::testing::Test {
 protected:
  InitialDiagramRequestsTest() : handler(connections) {
    mvk::platform::NativeObjectService::setSearchPath({exampleFile("platforms")});
    dispatch::Session session;
    session.set_uuid("s1");
    connections.createSession(session);
  }
  ~InitialDiagramRequestsTest() override { mvk::platform::NativeObjectService::setSearchPath({}); }

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

  static wire::MakeInitialSystemDiagram make(std::string const& rtdFile) {
    wire::MakeInitialSystemDiagram message;
    message.set_rtdfile(rtdFile);
    message.set_platform(kPlatformName);
    message.set_generatedname("v++");
    message.set_generatedversion("2026.2");
    message.set_generatedchangelist("4711");
    message.set_generatedtimestamp("Sat Nov 21 10:00:00 2026");
    message.set_generateddetaila("linker");
    message.set_generateddetailb("hw");
    message.set_kernelsfile(exampleFile("design/kernels.txt"));
    message.set_binarylabel("vector_pipeline.xclbin");
    message.set_generatedflag(true);
    return message;
  }

  std::string writeFile(std::string const& name, std::string const& text) {
    std::string const path = dir.file(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

  // Makes the session's diagram from the example, then expects `message` to fail with 500 and
  // `logLine`, the diagram staying as it was.
  void expectRefusedKeepingTheDiagram(wire::MakeInitialSystemDiagram const& message,
                                      std::string const& logLine) {
    ASSERT_STATUS(send(make(exampleFile(kDesign))), 200);
    std::string const before = written();
    LoggerCapture log(dispatch::server::kLogException);
    EXPECT_STATUS(send(message), 500);
    EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM_HANDLER: Caught exception: " + logLine + ".\n");
    EXPECT_EQ(written(), before);
  }

  // The example's kernels file names its kernel directories relative to examples/design.
  qvtest::WorkingDirectory workingDirectory{exampleFile("design")};
  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler;
  qvtest::TempDir dir;
};

TEST_F(InitialDiagramRequestsTest, ExampleDesignGivesTheReviewedDiagram) {
  LoggerCapture log(dispatch::server::kLogDebug);
  qvtest::MessageCapture messages;
  EXPECT_STATUS(send(make(exampleFile(kDesign))), 200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleMakeInitialSystemDiagramRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleMakeInitialSystemDiagramRequest\n");
  // Every kernel has its report, description and clock: the only message says that the kernels
  // file was read.
  EXPECT_EQ(messages.lines(),
            std::vector<std::string>{"INFO: [mvk 60-839] Finished reading the kernels file " +
                                     exampleFile("design/kernels.txt") + "."});
  EXPECT_GOLDEN(written(), "initial_example.json");
}

TEST_F(InitialDiagramRequestsTest, UpdateAfterImplementationGivesTheReviewedDiagram) {
  ASSERT_STATUS(send(make(exampleFile(kDesign))), 200);
  wire::UpdateSystemDiagramAfterBrenloRuns update;
  update.set_rtdfile(exampleFile(kDesignAfterImplementation));
  EXPECT_STATUS(send(update), 200);
  EXPECT_GOLDEN(written(), "initial_example_after_implementation.json");
}

TEST_F(InitialDiagramRequestsTest, AfterRunningBrenloFileToFileLeavesTheSessionAlone) {
  ASSERT_STATUS(send(make(exampleFile(kDesign))), 200);
  std::string const initial = written();
  std::string const in = writeFile("initial.json", initial);
  std::string const out = dir.file("updated.json");
  wire::AfterRunningBrenlo afterRun;
  afterRun.set_diagraminfile(in);
  afterRun.set_rtdfile(exampleFile(kDesignAfterImplementation));
  afterRun.set_diagramoutfile(out);
  EXPECT_STATUS(send(afterRun), 200);
  EXPECT_GOLDEN(qvtest::readFile(out), "initial_example_after_implementation.json");
  EXPECT_EQ(written(), initial);
}

TEST_F(InitialDiagramRequestsTest, AnyOfTheTenStringsEmptyIsAnswered400) {
  using Setter = void (wire::MakeInitialSystemDiagram::*)(std::string const&);
  std::vector<Setter> const setters = {&wire::MakeInitialSystemDiagram::set_rtdfile,
                                       &wire::MakeInitialSystemDiagram::set_platform,
                                       &wire::MakeInitialSystemDiagram::set_generatedname,
                                       &wire::MakeInitialSystemDiagram::set_generatedversion,
                                       &wire::MakeInitialSystemDiagram::set_generatedchangelist,
                                       &wire::MakeInitialSystemDiagram::set_generatedtimestamp,
                                       &wire::MakeInitialSystemDiagram::set_generateddetaila,
                                       &wire::MakeInitialSystemDiagram::set_generateddetailb,
                                       &wire::MakeInitialSystemDiagram::set_kernelsfile,
                                       &wire::MakeInitialSystemDiagram::set_binarylabel};
  std::string const before = written();
  for (std::size_t i = 0; i < setters.size(); ++i) {
    wire::MakeInitialSystemDiagram message = make(exampleFile(kDesign));
    (message.*setters[i])("");
    EXPECT_STATUS(send(message), 400) << "string " << i;
    // Refused before the session is looked up.
    EXPECT_STATUS(send(message, "ghost"), 400) << "string " << i;
  }
  EXPECT_EQ(written(), before);
}

TEST_F(InitialDiagramRequestsTest, FalseGeneratedFlagIsAValidValue) {
  wire::MakeInitialSystemDiagram message = make(exampleFile(kDesign));
  message.set_generatedflag(false);
  EXPECT_STATUS(send(message), 200);
  EXPECT_NE(written().find("\"flag\": false"), std::string::npos);
}

TEST_F(InitialDiagramRequestsTest, SecondImportReplacesEverythingIncludingUpserts) {
  ASSERT_STATUS(send(make(exampleFile(kDesign))), 200);
  std::string const first = written();
  wire::UpsertQsaClock clock;
  clock.mutable_clock()->set_name("added_by_upsert");
  ASSERT_STATUS(send(clock), 200);
  wire::UpsertQrxBinGeneratedBy note;
  note.mutable_generatedby()->set_note("a note");
  ASSERT_STATUS(send(note), 200);
  ASSERT_NE(written(), first);
  EXPECT_STATUS(send(make(exampleFile(kDesign))), 200);
  EXPECT_EQ(written(), first);
}

TEST_F(InitialDiagramRequestsTest, ForUnknownSessionIsAnswered500) {
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(make(exampleFile(kDesign)), "ghost"), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no session with "
            "UUID 'ghost'.\n");
}

// ---- Bad input: 500, the reason in the log, the earlier diagram intact ----

TEST_F(InitialDiagramRequestsTest, MissingRtdFile) {
  std::string const missing = dir.file("missing.rtd.json");
  expectRefusedKeepingTheDiagram(make(missing), "Could not open " + missing + " for reading.");
}

TEST_F(InitialDiagramRequestsTest, RtdFileThatIsNotJson) {
  std::string const path = writeFile("broken.rtd.json", "{\"schema_version\": {\n  \"major\"");
  expectRefusedKeepingTheDiagram(make(path), "<unspecified file>(2): expected ':'");
}

TEST_F(InitialDiagramRequestsTest, RtdFileWithoutCount) {
  std::string const path =
      writeFile("no_count.rtd.json",
                R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},
          "mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "0"}, "connectivity": {}})");
  expectRefusedKeepingTheDiagram(make(path), "No such node (connectivity.m_count)");
}

TEST_F(InitialDiagramRequestsTest, RtdFileOfAnUnsupportedVersion) {
  std::string const path =
      writeFile("v2.rtd.json",
                R"({"schema_version": {"major": "1", "minor": "1", "patch": "0"},
          "mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "0"},
          "connectivity": {"m_count": "0"}})");
  expectRefusedKeepingTheDiagram(make(path),
                                 "Unsupported rtd file schema.  The supported schema is: 1.0.0.  "
                                 "The version found is 1.1.0.\n");
}

TEST_F(InitialDiagramRequestsTest, PlatformThatCannotBeFound) {
  wire::MakeInitialSystemDiagram message = make(exampleFile(kDesign));
  message.set_platform("qv_no_such_platform");
  expectRefusedKeepingTheDiagram(
      message,
      "Platform \"qv_no_such_platform\" not found: it is not a readable file, and no "
      "directory of the platform search path has a readable qv_no_such_platform.json or "
      "qv_no_such_platform/platform.json (tried " +
          exampleFile("platforms") + ").");
}

}  // namespace
