#include "tools/qvdiag/FlowBuild.h"

#include <gtest/gtest.h>

#include <boost/filesystem.hpp>
#include <fstream>
#include <sstream>
#include <string>

#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"
#include "tools/qvdiag/DiagramSummary.h"
#include "tools/qvdiag/UsageError.h"

namespace qvdiag {
namespace {

class FlowBuildTest : public ::testing::Test {
 protected:
  static ServiceHost::Settings settings() {
    ServiceHost::Settings made;
    made.libraryPath = QV_LIBRARY_PATH;
    made.platformPath = {qvtest::exampleFile("platforms")};
    made.timestamp = "Mon Nov 23 09:00:00 2026";
    return made;
  }

  FlowBuild::Inputs exampleInputs() const {
    FlowBuild::Inputs inputs;
    inputs.rtdFile = qvtest::exampleFile("design/vector_pipeline.rtd.json");
    inputs.platform = "qv_accel_h2_gen3x16";
    inputs.outDir = dir.file("out");
    return inputs;
  }

  qvtest::TempDir dir;
  ServiceHost host{settings()};
  std::ostringstream progress;
  FlowBuild flow{host, progress};
};

TEST_F(FlowBuildTest, DefaultsComeFromTheToolTheRtdFileAndThePlatform) {
  FlowBuild::Inputs inputs;
  inputs.rtdFile = "designs/top.rtd.json";
  inputs.platform = "card";
  FlowBuild::Inputs const filled = FlowBuild::withDefaults(inputs);
  EXPECT_EQ(filled.kernelsFile, "designs/kernels.txt");
  EXPECT_EQ(filled.generatedName, "qvdiag");
  EXPECT_EQ(filled.generatedVersion, QV_VERSION);
  EXPECT_EQ(filled.generatedChangeList, "local");
  EXPECT_EQ(filled.generatedTimestamp, "Mon Nov 23 09:00:00 2026");
  EXPECT_EQ(filled.generatedDetailA, "top.rtd.json");
  EXPECT_EQ(filled.generatedDetailB, "card");
  EXPECT_EQ(filled.binaryLabel, "top");
  EXPECT_EQ(filled.outDir, ".");
}

TEST_F(FlowBuildTest, DefaultsLeaveGivenValuesAlone) {
  FlowBuild::Inputs inputs;
  inputs.rtdFile = "top.json";
  inputs.kernelsFile = "k.txt";
  inputs.binaryLabel = "mine";
  inputs.generatedChangeList = "cl42";
  FlowBuild::Inputs const filled = FlowBuild::withDefaults(inputs);
  EXPECT_EQ(filled.kernelsFile, "k.txt");
  EXPECT_EQ(filled.binaryLabel, "mine");
  EXPECT_EQ(filled.generatedChangeList, "cl42");
  EXPECT_EQ(FlowBuild::withDefaults(FlowBuild::Inputs{}).binaryLabel, "");
  inputs.binaryLabel.clear();
  EXPECT_EQ(FlowBuild::withDefaults(inputs).binaryLabel, "top");
}

TEST_F(FlowBuildTest, WholeFlowOnTheExampleWritesBothFilesAndTellsEachStep) {
  FlowBuild::Inputs inputs = exampleInputs();
  inputs.afterImplRtdFile = qvtest::exampleFile("design/vector_pipeline.post_impl.rtd.json");
  inputs.utilizationFiles = {qvtest::exampleFile("design/vector_pipeline.synth.util.json"),
                             qvtest::exampleFile("design/vector_pipeline.route.util.json")};
  FlowBuild::Result const result = flow.run(inputs);
  EXPECT_EQ(result.binaryLabel, "vector_pipeline");
  EXPECT_EQ(result.diagramFile, dir.file("out/system_diagram.json"));
  EXPECT_EQ(result.reportFile, dir.file("out/flow_report.txt"));

  DiagramSummary const summary = DiagramSummary::fromFile(result.diagramFile);
  EXPECT_EQ(summary.platform, "qv_accel_h2_gen3x16");
  EXPECT_EQ(summary.memories, 37u);
  EXPECT_EQ(summary.memoriesInUse, 12u);  // three reserved memories left unconnected
  EXPECT_EQ(summary.computeUnits, 6u);
  EXPECT_EQ(summary.connections, 15u);
  EXPECT_EQ(summary.statesReported, (std::vector<std::string>{"Synthesized", "Routed"}));
  EXPECT_EQ(qvtest::readFile(result.reportFile).rfind("=====", 0), 0u);

  std::string const text = progress.str();
  std::string const steps = text.substr(0, text.rfind("qvdiag build: "));
  EXPECT_EQ(steps,
            "[1/6] MakeInitialSystemDiagram from " + inputs.rtdFile + " on qv_accel_h2_gen3x16\n" +
                "[2/6] UpdateSystemDiagramAfterBrenloRuns from " + inputs.afterImplRtdFile + "\n" +
                "[3/6] UtilizationDuringBrenloRun from " + inputs.utilizationFiles[0] + "\n" +
                "[4/6] UtilizationDuringBrenloRun from " + inputs.utilizationFiles[1] + "\n" +
                "[5/6] WriteSystemDiagram to " + result.diagramFile + "\n" +
                "[6/6] WriteFlowReport to " + result.reportFile + "\n");
  EXPECT_EQ(text.substr(steps.size(), 35), "qvdiag build: 6 requests served in ");
}

TEST_F(FlowBuildTest, ImportWithoutUpdateLeavesBaseAddressesEmpty) {
  FlowBuild::Result const result = flow.run(exampleInputs());
  DiagramSummary const summary = DiagramSummary::fromFile(result.diagramFile);
  EXPECT_EQ(summary.memoriesInUse, 15u);
  EXPECT_TRUE(summary.statesReported.empty());
  // A compute unit without a base address has no such line in the report.
  std::string const report = qvtest::readFile(result.reportFile);
  EXPECT_NE(report.find("Compute Unit: vadd_1\nKernel: vadd\nClock Pin: ap_clk\n"),
            std::string::npos)
      << report;
}

TEST_F(FlowBuildTest, FailedImportNamesTheRequestAndTheServicesReason) {
  FlowBuild::Inputs inputs = exampleInputs();
  inputs.platform = "no_such_card";
  try {
    flow.run(inputs);
    FAIL() << "succeeded";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "MakeInitialSystemDiagram failed: 500 Internal Server Error: "
              "SYSTEM_DIAGRAM_HANDLER: Caught exception: Platform \"no_such_card\" not found: it "
              "is not a readable file, and no directory of the platform search path has a "
              "readable no_such_card.json or no_such_card/platform.json (tried " +
                  qvtest::exampleFile("platforms") + ")..");
  }
  EXPECT_FALSE(boost::filesystem::exists(dir.file("out/system_diagram.json")));
}

TEST_F(FlowBuildTest, FailedRequestIsInTheLogFileOnceAndAtOnce) {
  ServiceHost::Settings given = settings();
  given.logFile = dir.file("build.log");
  ServiceHost logged(given);
  std::ostringstream steps;
  FlowBuild loggedFlow(logged, steps);
  FlowBuild::Inputs inputs = exampleInputs();
  inputs.platform = "no_such_card";
  EXPECT_THROW(loggedFlow.run(inputs), std::runtime_error);
  // Read while the host still holds the file open: nothing waits for it to close.
  EXPECT_EQ(qvtest::readFile(dir.file("build.log")),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: Platform \"no_such_card\" not found: it "
            "is not a readable file, and no directory of the platform search path has a "
            "readable no_such_card.json or no_such_card/platform.json (tried " +
                qvtest::exampleFile("platforms") + ")..\n");
}

TEST_F(FlowBuildTest, FailedReportFileIsNamed) {
  FlowBuild::Inputs inputs = exampleInputs();
  boost::filesystem::create_directories(dir.file("out/flow_report.txt"));  // a directory
  try {
    flow.run(inputs);
    FAIL() << "succeeded";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "WriteFlowReport failed: 500 Internal Server Error: SYSTEM_DIAGRAM_HANDLER: Caught "
              "exception: Could not open " +
                  dir.file("out/flow_report.txt") + " for writing..");
  }
  // What was written before the failure stays.
  EXPECT_TRUE(boost::filesystem::exists(dir.file("out/system_diagram.json")));
}

TEST_F(FlowBuildTest, RequestFilesAreSentAfterTheImportInOrder) {
  FlowBuild::Inputs inputs = exampleInputs();
  std::ofstream(dir.file("a.json"))
      << R"([{"type": "UpsertQsaClock", "payload": {"clock": {"name": "clk_x", "id": 42}}}])";
  std::ofstream(dir.file("b.json"))
      << R"([{"type": "UpsertPlatform", "payload": {"platform": {"name": "renamed"}}}])";
  inputs.requestFiles = {dir.file("a.json"), dir.file("b.json")};
  FlowBuild::Result const result = flow.run(inputs);
  std::string const text = progress.str();
  EXPECT_NE(text.find("[2/5] UpsertQsaClock from " + dir.file("a.json") + " entry 1\n" +
                      "[3/5] UpsertPlatform from " + dir.file("b.json") + " entry 1\n" +
                      "[4/5] WriteSystemDiagram to "),
            std::string::npos)
      << text;
  DiagramSummary const summary = DiagramSummary::fromFile(result.diagramFile);
  EXPECT_EQ(summary.clocks, 6u);  // the platform's five and clk_x
}

TEST_F(FlowBuildTest, BadRequestFileStopsTheRunBeforeAnythingIsSent) {
  FlowBuild::Inputs inputs = exampleInputs();
  std::ofstream(dir.file("bad.json")) << R"([{"type": "UpsertEverything"}])";
  inputs.requestFiles = {dir.file("bad.json")};
  EXPECT_THROW(flow.run(inputs), UsageError);
  inputs.requestFiles = {dir.file("absent.json")};
  try {
    flow.run(inputs);
    FAIL() << "succeeded";
  } catch (UsageError const& error) {
    EXPECT_EQ(std::string(error.what()),
              "cannot read the request file '" + dir.file("absent.json") + "'");
  }
  EXPECT_EQ(progress.str(), "");
  EXPECT_FALSE(boost::filesystem::exists(dir.file("out")));
}

TEST_F(FlowBuildTest, UncreatableOutputDirectoryIsNamed) {
  FlowBuild::Inputs inputs = exampleInputs();
  std::ofstream(dir.file("file")) << "x";
  inputs.outDir = dir.file("file/out");
  try {
    flow.run(inputs);
    FAIL() << "succeeded";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "cannot create the output directory '" + dir.file("file/out") + "': Not a directory");
  }
}

}  // namespace
}  // namespace qvdiag
