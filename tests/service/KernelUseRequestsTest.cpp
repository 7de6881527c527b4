// Resource reports of implementation runs: UpsertKernelUse and UtilizationDuringBrenloRun, kept
// in the session's kernel use and published to its diagram.
#include <google/protobuf/util/json_util.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <string>
#include <vector>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/mvk/NativeObjectService.h"
#include "proto/system_diagram.pb.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/Golden.h"
#include "tests/support/LoggerCapture.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"

namespace {

namespace wire = dispatch::system_diagram_server;
namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using qvtest::exampleFile;
using qvtest::LoggerCapture;
using qvtest::requestFor;
// Compute unit name to "<design state>:<lut>" of each of its entries, sorted: the order of the
// entries is not part of what the diagram promises.
using Entries = std::map<std::string, std::vector<std::string>>;

class KernelUseRequestsTest : public ::testing::Test {
 protected:
  KernelUseRequestsTest() : handler(connections) {
    mvk::platform::NativeObjectService::setSearchPath({exampleFile("platforms")});
    createSession("s1");
  }
  ~KernelUseRequestsTest() override { mvk::platform::NativeObjectService::setSearchPath({}); }

  void createSession(std::string const& uuid) {
    dispatch::Session session;
    session.set_uuid(uuid);
    connections.createSession(session);
    ASSERT_STATUS(send(makeInitial(), uuid), 200);
  }

  dispatch::Response send(google::protobuf::Message const& message,
                          std::string const& uuid = "s1") {
    dispatch::Response response;
    connections.dispatch(requestFor(uuid, message), response);
    return response;
  }

  static wire::MakeInitialSystemDiagram makeInitial() {
    wire::MakeInitialSystemDiagram message;
    message.set_rtdfile(exampleFile("design/vector_pipeline.rtd.json"));
    message.set_platform("qv_accel_h2_gen3x16");
    message.set_generatedname("x");
    message.set_generatedversion("x");
    message.set_generatedchangelist("x");
    message.set_generatedtimestamp("x");
    message.set_generateddetaila("x");
    message.set_generateddetailb("x");
    message.set_kernelsfile("x");
    message.set_binarylabel("x");
    return message;
  }

  // One report: `kernel`/`computeUnit` with `lut` as its LUT count, in `state`.
  static wire::UpsertKernelUse report(std::string const& state, std::string const& kernel,
                                      std::string const& computeUnit, std::string const& lut) {
    wire::UpsertKernelUse message;
    message.set_designstate(state);
    auto* const kernelUse = message.add_kerneluses();
    kernelUse->set_kernelname(kernel);
    auto* const use = kernelUse->add_computeunituses();
    use->set_computeunitname(computeUnit);
    use->mutable_actualresources()->set_lut(lut);
    use->mutable_actualresources()->set_reg("2");
    use->mutable_actualresources()->set_bram("3");
    use->mutable_actualresources()->set_uram("4");
    use->mutable_actualresources()->set_dsp("5");
    return message;
  }

  static wire::UtilizationDuringBrenloRun files(std::vector<std::string> const& paths) {
    wire::UtilizationDuringBrenloRun message;
    for (auto const& path : paths) message.add_utilizationfiles(path);
    return message;
  }

  std::string writeFile(std::string const& name, std::string const& text) {
    std::string const path = dir.file(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

  pb::outerContainer diagram(std::string const& uuid = "s1") {
    wire::WriteSystemDiagram write;
    write.set_path(dir.file(uuid + "-written.json"));
    EXPECT_STATUS(send(write, uuid), 200);
    pb::outerContainer container;
    EXPECT_TRUE(
        google::protobuf::util::JsonStringToMessage(qvtest::readFile(write.path()), &container)
            .ok());
    return container;
  }

  // Every compute unit with at least one entry, and its entries as "<state>:<lut>".
  Entries entries(std::string const& uuid = "s1") {
    Entries result;
    pb::outerContainer const written = diagram(uuid);
    for (auto const& region : written.system_diagram_metadata().qrxbin().user_regions()) {
      for (auto const& unit : region.compute_units()) {
        for (auto const& entry : unit.actual_resources()) {
          result[unit.name()].push_back(pb::DesignState_Name(entry.design_state()) + ":" +
                                        entry.lut());
        }
        std::sort(result[unit.name()].begin(), result[unit.name()].end());
        if (result[unit.name()].empty()) result.erase(unit.name());
      }
    }
    return result;
  }

  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler;
  qvtest::TempDir dir;
};

// ---- UpsertKernelUse ----

TEST_F(KernelUseRequestsTest, SynthesizedThenRoutedLeaveTwoEntriesAndASecondRoutedStillTwo) {
  LoggerCapture log(dispatch::server::kLogDebug);
  EXPECT_STATUS(send(report("Synthesized", "vadd", "vadd_1", "100")), 200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleUpsertComputeUnitUseRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleUpsertComputeUnitUseRequest\n");
  EXPECT_STATUS(send(report("Routed", "vadd", "vadd_1", "120")), 200);
  EXPECT_EQ(entries(),
            (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:120", "DESIGN_STATE_SYNTHESIZED:100"}}}));
  EXPECT_STATUS(send(report("Routed", "vadd", "vadd_1", "130")), 200);
  EXPECT_EQ(entries(),
            (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:130", "DESIGN_STATE_SYNTHESIZED:100"}}}));
}

TEST_F(KernelUseRequestsTest, EntryHoldsEveryCountOfTheReport) {
  EXPECT_STATUS(send(report("Fully Placed", "mmult", "mmult_2", "7")), 200);
  pb::outerContainer const written = diagram();
  for (auto const& unit :
       written.system_diagram_metadata().qrxbin().user_regions(0).compute_units()) {
    if (unit.name() != "mmult_2") {
      EXPECT_EQ(unit.actual_resources_size(), 0) << unit.name();
      continue;
    }
    ASSERT_EQ(unit.actual_resources_size(), 1);
    pb::actualResources expected;
    expected.set_design_state(pb::DESIGN_STATE_FULLY_PLACED);
    expected.set_lut("7");
    expected.set_reg("2");
    expected.set_bram("3");
    expected.set_uram("4");
    expected.set_dsp("5");
    EXPECT_EQ(unit.actual_resources(0).SerializeAsString(), expected.SerializeAsString());
  }
}

TEST_F(KernelUseRequestsTest, UnknownStateWordIsKeptButStoredUnset) {
  EXPECT_STATUS(send(report("Implemented", "vadd", "vadd_2", "9")), 200);
  EXPECT_EQ(entries(), (Entries{{"vadd_2", {"DESIGN_STATE_UNSET:9"}}}));
}

TEST_F(KernelUseRequestsTest, EmptyDesignStateIsAnswered400) {
  EXPECT_STATUS(send(report("", "vadd", "vadd_1", "1")), 400);
  EXPECT_EQ(entries(), Entries{});
}

TEST_F(KernelUseRequestsTest, NoKernelUsesOrAnUnnamedKernelOrComputeUnitIsAnswered400) {
  wire::UpsertKernelUse noKernels;
  noKernels.set_designstate("Routed");
  EXPECT_STATUS(send(noKernels), 400);
  EXPECT_STATUS(send(report("Routed", "", "vadd_1", "1")), 400);
  EXPECT_STATUS(send(report("Routed", "vadd", "", "1")), 400);
  // The second kernel use is the unnamed one.
  wire::UpsertKernelUse second = report("Routed", "vadd", "vadd_1", "1");
  second.add_kerneluses()->set_kernelname("");
  EXPECT_STATUS(send(second), 400);
  // Refused before the session is looked up.
  EXPECT_STATUS(send(noKernels, "ghost"), 400);
  EXPECT_EQ(entries(), Entries{});
}

TEST_F(KernelUseRequestsTest, KernelWithoutComputeUnitUsesIsAllowed) {
  wire::UpsertKernelUse message = report("Routed", "vadd", "vadd_1", "1");
  message.add_kerneluses()->set_kernelname("mmult");
  EXPECT_STATUS(send(message), 200);
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:1"}}}));
}

TEST_F(KernelUseRequestsTest, ComputeUnitUseWithoutResourcesCountsAsEmpty) {
  wire::UpsertKernelUse message;
  message.set_designstate("Routed");
  auto* const kernelUse = message.add_kerneluses();
  kernelUse->set_kernelname("vadd");
  kernelUse->add_computeunituses()->set_computeunitname("vadd_1");
  EXPECT_STATUS(send(message), 200);
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:"}}}));
}

TEST_F(KernelUseRequestsTest, ForAnUnknownSessionIsAnswered500) {
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(report("Routed", "vadd", "vadd_1", "1"), "ghost"), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no session with "
            "UUID 'ghost'.\n");
}

// ---- The kernel use across the session ----

TEST_F(KernelUseRequestsTest, NextReportAfterANewInitialDiagramBringsBackEveryState) {
  ASSERT_STATUS(send(report("Synthesized", "vadd", "vadd_1", "100")), 200);
  ASSERT_STATUS(send(report("Routed", "mmult", "mmult_1", "200")), 200);
  ASSERT_STATUS(send(makeInitial()), 200);
  EXPECT_EQ(entries(), Entries{});
  ASSERT_STATUS(send(report("Fully Placed", "vadd", "vadd_2", "300")), 200);
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_SYNTHESIZED:100"}},
                                {"mmult_1", {"DESIGN_STATE_ROUTED:200"}},
                                {"vadd_2", {"DESIGN_STATE_FULLY_PLACED:300"}}}));
}

TEST_F(KernelUseRequestsTest, ReportForAComputeUnitNotInTheDiagramIsKeptForLater) {
  ASSERT_STATUS(send(makeInitial()), 200);
  wire::ReadSystemDiagram empty;
  empty.set_path(writeFile("empty.json", "{}"));
  ASSERT_STATUS(send(empty), 200);
  EXPECT_STATUS(send(report("Routed", "vadd", "vadd_1", "5")), 200);
  EXPECT_EQ(entries(), Entries{});
  ASSERT_STATUS(send(makeInitial()), 200);
  EXPECT_EQ(entries(), Entries{});
  EXPECT_STATUS(send(report("Routed", "mmult", "mmult_1", "6")), 200);
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:5"}},
                                {"mmult_1", {"DESIGN_STATE_ROUTED:6"}}}));
}

TEST_F(KernelUseRequestsTest, ForkCopiesTheDiagramButNotTheKernelUse) {
  ASSERT_STATUS(send(report("Synthesized", "vadd", "vadd_1", "100")), 200);
  dispatch::Session fork;
  fork.set_uuid("s2");
  connections.forkSession("s1", fork);
  EXPECT_EQ(entries("s2"), (Entries{{"vadd_1", {"DESIGN_STATE_SYNTHESIZED:100"}}}));
  // The fork's kernel use starts empty: publishing it rewrites vadd_1 with the new state only.
  ASSERT_STATUS(send(report("Routed", "vadd", "vadd_1", "110"), "s2"), 200);
  EXPECT_EQ(entries("s2"), (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:110"}}}));
  EXPECT_EQ(entries("s1"), (Entries{{"vadd_1", {"DESIGN_STATE_SYNTHESIZED:100"}}}));
}

// ---- UtilizationDuringBrenloRun ----

class UtilizationFilesTest : public KernelUseRequestsTest {
 protected:
  std::string reportFile(std::string const& name, std::string const& state,
                         std::string const& computeUnits) {
    return writeFile(name, R"({"design_state": ")" + state + R"(", "kernels": [{"name": "vadd",
        "compute_units": [)" + computeUnits +
                               "]}]}");
  }
  static std::string unit(std::string const& name, std::string const& lut) {
    return R"({"cu_name": ")" + name + R"(", "actual_resources": {"LUT": ")" + lut +
           R"(", "REG": "2", "BRAM": "3", "URAM": "4", "DSP": "5"}})";
  }
};

TEST_F(UtilizationFilesTest, ThreeStatesByFileAndByRequestAllShow) {
  LoggerCapture log(dispatch::server::kLogDebug);
  EXPECT_STATUS(send(files({exampleFile("design/vector_pipeline.synth.util.json"),
                            exampleFile("design/vector_pipeline.place.util.json")})),
                200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleUtilizationDuringBrenloRunRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleUtilizationDuringBrenloRunRequest\n");
  EXPECT_STATUS(send(report("Routed", "vadd", "vadd_1", "4242")), 200);
  Entries const all = entries();
  ASSERT_EQ(all.size(), 6u);
  for (auto const& unit : all) {
    ASSERT_EQ(unit.second.size(), unit.first == "vadd_1" ? 3u : 2u) << unit.first;
  }
  EXPECT_EQ(all.at("vadd_1")[1], "DESIGN_STATE_ROUTED:4242");
  // Replaced by a new initial diagram, then one more report: every state is back.
  ASSERT_STATUS(send(makeInitial()), 200);
  EXPECT_STATUS(send(files({exampleFile("design/vector_pipeline.route.util.json")})), 200);
  Entries const again = entries();
  ASSERT_EQ(again.size(), 6u);
  for (auto const& unit : again) EXPECT_EQ(unit.second.size(), 3u) << unit.first;
}

TEST_F(UtilizationFilesTest, EachComputeUnitOfAFileGetsItsEntry) {
  std::string const path =
      reportFile("one.json", "Routed", unit("vadd_1", "11") + "," + unit("vadd_2", "12"));
  EXPECT_STATUS(send(files({path})), 200);
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:11"}},
                                {"vadd_2", {"DESIGN_STATE_ROUTED:12"}}}));
}

TEST_F(UtilizationFilesTest, NoFileOrAnEmptyNameIsAnswered400BeforeAnyFileIsOpened) {
  EXPECT_STATUS(send(files({})), 400);
  std::string const good = reportFile("good.json", "Routed", unit("vadd_1", "1"));
  EXPECT_STATUS(send(files({good, ""})), 400);
  EXPECT_STATUS(send(files({good, ""}), "ghost"), 400);
  EXPECT_EQ(entries(), Entries{});
}

TEST_F(UtilizationFilesTest, FirstComputeUnitWithoutCuNameIsAnswered400WithNothingMerged) {
  std::string const path = reportFile(
      "unnamed.json", "Routed", R"({"actual_resources": {"LUT": "1"}}, )" + unit("vadd_1", "2"));
  EXPECT_STATUS(send(files({path})), 400);
  EXPECT_EQ(entries(), Entries{});
}

TEST_F(UtilizationFilesTest, RefusedEntryKeepsWhatCameBeforeAndReadsNothingAfter) {
  std::string const first = reportFile("first.json", "Synthesized", unit("vadd_1", "1"));
  std::string const second = writeFile("second.json", R"({"kernels": [{"name": "vadd",
      "compute_units": [{"cu_name": "vadd_2", "actual_resources": {"LUT": "2"}}]}]})");
  std::string const third = reportFile("third.json", "Routed", unit("vadd_1", "3"));
  // The second file has no design state: its first entry is refused.
  EXPECT_STATUS(send(files({first, second, third})), 400);
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_SYNTHESIZED:1"}}}));
}

TEST_F(UtilizationFilesTest, FileWithoutKernelsIsAnswered200WithNothingMerged) {
  std::string const path = writeFile("no_kernels.json", R"({"design_state": "Routed"})");
  EXPECT_STATUS(send(files({path})), 200);
  EXPECT_EQ(entries(), Entries{});
}

TEST_F(UtilizationFilesTest, LateCuNameLeavesTheReportUnderThePreviousName) {
  std::string const path = reportFile(
      "late.json", "Routed",
      unit("vadd_1", "1") + R"(, {"actual_resources": {"LUT": "2"}, "cu_name": "vadd_2"})");
  EXPECT_STATUS(send(files({path})), 200);
  // The second report went to vadd_1 (the name still current) and replaced its Routed entry.
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:2"}}}));
}

TEST_F(UtilizationFilesTest, DesignStateAfterKernelsIsRefusedAsEmpty) {
  std::string const path = writeFile("late_state.json", R"({"kernels": [{"name": "vadd",
      "compute_units": [{"cu_name": "vadd_1", "actual_resources": {"LUT": "1"}}]}],
      "design_state": "Routed"})");
  EXPECT_STATUS(send(files({path})), 400);
  EXPECT_EQ(entries(), Entries{});
}

TEST_F(UtilizationFilesTest, UnreadableFileIsAnswered500AndEarlierFilesStayMerged) {
  std::string const first = reportFile("first.json", "Synthesized", unit("vadd_1", "1"));
  std::string const missing = dir.file("missing.json");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(files({first, missing})), 500);
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM_HANDLER: Caught exception: Could not open " + missing +
                            " for reading..\n");
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_SYNTHESIZED:1"}}}));
}

TEST_F(UtilizationFilesTest, FileThatIsNotJsonIsAnswered500) {
  std::string const path = writeFile("broken.json", "{\"design_state\": ");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(files({path})), 500);
  EXPECT_EQ(
      log.text().rfind("SYSTEM_DIAGRAM_HANDLER: Caught exception: <unspecified file>(1): ", 0), 0u)
      << log.text();
  EXPECT_EQ(entries(), Entries{});
}

// A fuzzing finding: a file of 200,000 "[" overflowed the stack of the JSON parser and took the
// server down. It is bad JSON like any other.
TEST_F(UtilizationFilesTest, FileNestedTooDeepIsAnswered500) {
  std::string const path = writeFile("deep.json", std::string(200000, '['));
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(files({path})), 500);
  EXPECT_NE(log.text().find("nesting deeper than 100 levels"), std::string::npos) << log.text();
  EXPECT_EQ(entries(), Entries{});
}

TEST_F(UtilizationFilesTest, UnknownSessionIsAnswered500AfterTheFileWasRead) {
  std::string const broken = writeFile("broken.json", "not json");
  LoggerCapture log(dispatch::server::kLogException);
  // The file is parsed before the session is looked up: the parse error is the one reported.
  EXPECT_STATUS(send(files({broken}), "ghost"), 500);
  EXPECT_EQ(
      log.text().rfind("SYSTEM_DIAGRAM_HANDLER: Caught exception: <unspecified file>(1): ", 0), 0u)
      << log.text();
  log.clear();
  std::string const good = reportFile("good.json", "Routed", unit("vadd_1", "1"));
  EXPECT_STATUS(send(files({good}), "ghost"), 500);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: SYSTEM_DIAGRAM: ERROR, no session with "
            "UUID 'ghost'.\n");
}

TEST_F(UtilizationFilesTest, NoSchemaVersionIsNeeded) {
  // The request reads the document without validating its version.
  std::string const path =
      writeFile("v9.json", R"({"schema_version": {"major": "0", "minor": "9", "patch": "9"},
        "design_state": "Routed", "kernels": [{"name": "vadd", "compute_units": [)" +
                               unit("vadd_1", "1") + "]}]}");
  EXPECT_STATUS(send(files({path})), 200);
  EXPECT_EQ(entries(), (Entries{{"vadd_1", {"DESIGN_STATE_ROUTED:1"}}}));
}

}  // namespace
