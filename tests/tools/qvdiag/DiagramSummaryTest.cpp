#include "tools/qvdiag/DiagramSummary.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>

#include "proto/system_diagram.pb.h"
#include "tests/support/TempDir.h"

namespace qvdiag {
namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class DiagramSummaryTest : public ::testing::Test {
 protected:
  static std::string printed(DiagramSummary const& summary) {
    std::ostringstream out;
    summary.print(out);
    return out.str();
  }

  pb::outerContainer diagram;
  pb::systemDiagramMetaData& root = *diagram.mutable_system_diagram_metadata();
};

TEST_F(DiagramSummaryTest, EmptyDiagramSaysNone) {
  EXPECT_EQ(printed(DiagramSummary(diagram)),
            "  platform         (none) (0 clocks)\n"
            "  memories         0 (0 in use)\n"
            "  kernels          0\n"
            "  compute units    0\n"
            "  connections      0\n"
            "  states reported  none\n");
}

TEST_F(DiagramSummaryTest, CountsOverAllUserRegionsAndOrdersStatesAsARun) {
  root.mutable_qsa()->set_name("card");
  root.mutable_qsa()->add_clocks();
  for (char const* used : {"yes", "no", "yes", ""}) {
    root.mutable_qsa()->add_device_topology()->set_used(used);
  }
  for (int region = 0; region < 2; ++region) {
    pb::userRegion* user = root.mutable_qrxbin()->add_user_regions();
    user->add_kernels();
    user->add_connectivity();
    user->add_connectivity();
    pb::computeUnit* unit = user->add_compute_units();
    unit->add_actual_resources()->set_design_state(region == 0 ? pb::DESIGN_STATE_ROUTED
                                                               : pb::DESIGN_STATE_SYNTHESIZED);
  }
  DiagramSummary const summary(diagram);
  EXPECT_EQ(summary.memoriesInUse, 2u);
  EXPECT_EQ(printed(summary),
            "  platform         card (1 clocks)\n"
            "  memories         4 (2 in use)\n"
            "  kernels          2\n"
            "                   no clock; no estimate\n"
            "                   no clock; no estimate\n"
            "  compute units    2\n"
            "  connections      4\n"
            "  states reported  Synthesized, Routed\n");
}

TEST_F(DiagramSummaryTest, EachKernelWithItsCompileClocksAndEstimate) {
  pb::userRegion* user = root.mutable_qrxbin()->add_user_regions();
  pb::kernel* vadd = user->add_kernels();
  vadd->set_name("vadd");
  pb::clockRef* clock = vadd->add_clock_refs();
  clock->set_name("ap_clk");
  clock->set_requested_frequency(300.0);
  clock = vadd->add_clock_refs();
  clock->set_name("ap_clk_2");
  clock->set_requested_frequency(1000.0 / 3.0);
  pb::estimatedResources* estimate = vadd->mutable_estimated_resources();
  estimate->set_lut("2490");
  estimate->set_reg("3842");
  estimate->set_bram("2");
  estimate->set_dsp("0");
  user->add_kernels()->set_name("a_kernel_with_a_long_name");
  EXPECT_EQ(printed(DiagramSummary(diagram)),
            "  platform         (none) (0 clocks)\n"
            "  memories         0 (0 in use)\n"
            "  kernels          2\n"
            "    vadd           ap_clk 300.00 MHz, ap_clk_2 333.33 MHz; LUT 2490 REG 3842 BRAM 2 "
            "URAM - DSP 0\n"
            "    a_kernel_with_a_long_name no clock; no estimate\n"
            "  compute units    0\n"
            "  connections      0\n"
            "  states reported  none\n");
}

TEST_F(DiagramSummaryTest, PlatformFallsBackToTheBuildsPlatformRecord) {
  root.mutable_qrxbin()->mutable_platform()->set_name("from_build");
  EXPECT_EQ(DiagramSummary(diagram).platform, "from_build");
}

TEST_F(DiagramSummaryTest, ReadsTheStoredJson) {
  qvtest::TempDir dir;
  std::ofstream(dir.file("d.json"))
      << R"({"system_diagram_metadata": {"qsa": {"name": "p", "device_topology": [)"
      << R"({"used": "yes"}]}, "unknown_later_field": 1}})";
  DiagramSummary const summary = DiagramSummary::fromFile(dir.file("d.json"));
  EXPECT_EQ(summary.platform, "p");
  EXPECT_EQ(summary.memories, 1u);
}

TEST_F(DiagramSummaryTest, MissingOrBrokenFileNamesThePath) {
  qvtest::TempDir dir;
  try {
    DiagramSummary::fromFile(dir.file("absent.json"));
    FAIL() << "accepted";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "cannot read the diagram '" + dir.file("absent.json") + "'");
  }
  std::ofstream(dir.file("broken.json")) << "{";
  try {
    DiagramSummary::fromFile(dir.file("broken.json"));
    FAIL() << "accepted";
  } catch (std::runtime_error const& error) {
    std::string const text = error.what();
    EXPECT_EQ(text.rfind("'" + dir.file("broken.json") + "' is not a stored diagram: ", 0), 0u)
        << text;
  }
}

}  // namespace
}  // namespace qvdiag
