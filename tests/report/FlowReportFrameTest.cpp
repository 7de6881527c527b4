// The heading, the section titles and section 1 of the flow report, compared byte for byte.
#include "report/FlowReportFrame.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "platform/hut/HUTEnv.h"
#include "tests/support/Messages.h"

namespace {

using qvtest::parse;

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class FlowReportFrameTest : public ::testing::Test {
 protected:
  void SetUp() override { HUTEnv::setFixedTimeStamp("Sat Nov 21 22:27:47 2026"); }
  void TearDown() override { HUTEnv::clearFixedTimeStamp(); }

  // The heading with this fixture's time stamp. The product and holder texts are the host's
  // own, compiled into it, so they are taken from it.
  static std::string expectedHeading() {
    std::string const product = HUTEnv::getFullProductStr();
    std::string const holder = HUTEnv::getCopyRight();
    std::string heading;
    heading += "====================================================================\n";
    heading += "Version:    " + product + "\n";
    heading += "Copyright:  " + holder + "\n";
    heading += "Created:    Sat Nov 21 22:27:47 2026\n";
    heading += "====================================================================\n";
    heading += "\n";
    return heading;
  }

  static std::string sectionOneOf(std::string const& qrxBinText) {
    std::ostringstream out;
    IPA::writeKernelAndComputeUnitSection(parse<pb::qrxBin>(qrxBinText), out);
    return out.str();
  }

  static std::string titleOf(std::string const& title) {
    std::ostringstream out;
    IPA::writeSectionTitle(out, title);
    return out.str();
  }
};

std::string const sectionOneTitle =
    "1. Kernel and compute unit information\n"
    "======================================\n"
    "\n";

// ---- Heading -----------------------------------------------------------------------------------

TEST_F(FlowReportFrameTest, HeadingIsFiveLinesAndAnEmptyLine) {
  std::ostringstream out;
  IPA::writeHeading(out);
  EXPECT_EQ(out.str(), expectedHeading());
}

TEST_F(FlowReportFrameTest, HeadingTakesTheTimeStampAsTheHostGivesIt) {
  HUTEnv::setFixedTimeStamp("");
  std::ostringstream out;
  IPA::writeHeading(out);
  EXPECT_NE(out.str().find("\nCreated:    \n"), std::string::npos) << out.str();
}

TEST_F(FlowReportFrameTest, HeadingBorderIsSixtyEightEqualSigns) {
  std::ostringstream out;
  IPA::writeHeading(out);
  std::string const text = out.str();
  std::string const border = text.substr(0, text.find('\n'));
  EXPECT_EQ(border, std::string(68, '='));
}

// ---- Section titles ----------------------------------------------------------------------------

TEST_F(FlowReportFrameTest, SectionTitleIsUnderlinedToItsLengthAndFollowedByAnEmptyLine) {
  struct Row {
    char const* title;
    char const* expected;
  };
  Row const rows[] = {
      {"1. Kernel and compute unit information",
       "1. Kernel and compute unit information\n======================================\n\n"},
      {"2. Interface Connections", "2. Interface Connections\n========================\n\n"},
      {"3. Clock Connections", "3. Clock Connections\n====================\n\n"},
      {"4. Reset Connections", "4. Reset Connections\n====================\n\n"},
      {"5. Clock Summary", "5. Clock Summary\n================\n\n"},
      {"6. SLR Utilization per Compute Unit",
       "6. SLR Utilization per Compute Unit\n===================================\n\n"},
      {"7. Compute Unit Utilization per SLR",
       "7. Compute Unit Utilization per SLR\n===================================\n\n"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.title);
    EXPECT_EQ(titleOf(row.title), row.expected);
  }
}

TEST_F(FlowReportFrameTest, SectionTitleUnderlineCountsBytes) {
  EXPECT_EQ(titleOf("\xc3\xa9t\xc3\xa9"), "\xc3\xa9t\xc3\xa9\n=====\n\n");
}

// ---- Section 1 ---------------------------------------------------------------------------------

TEST_F(FlowReportFrameTest, TopOfAReportWithTwoComputeUnits) {
  pb::qrxBin const binary = parse<pb::qrxBin>(R"(
    user_regions {
      kernels { name: "kernel_a" }
      kernels { name: "kernel_b" }
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a" base_address: "0x1000"
        clock_refs { name: "clk" requested_frequency: 300 }
        reset_pins: "rst_n"
      }
      compute_units {
        name: "kernel_b_1" kernel_name: "kernel_b"
        clock_refs { name: "clk" requested_frequency: 300 }
        clock_refs { name: "clk_2" requested_frequency: 500 }
        reset_pins: "rst_n"
        reset_pins: "rst_n_2"
      }
    })");
  std::ostringstream out;
  IPA::writeHeading(out);
  IPA::writeKernelAndComputeUnitSection(binary, out);
  IPA::writeSectionTitle(out, "2. Interface Connections");
  EXPECT_EQ(out.str(), expectedHeading() +
                           "1. Kernel and compute unit information\n"
                           "======================================\n"
                           "\n"
                           "Compute Unit: kernel_a_1\n"
                           "Kernel: kernel_a\n"
                           "Base Address: 0x1000\n"
                           "Clock Pin: clk\n"
                           "Reset Pin: rst_n\n"
                           "\n"
                           "Compute Unit: kernel_b_1\n"
                           "Kernel: kernel_b\n"
                           "Clock Pins: clk, clk_2\n"
                           "Reset Pins: rst_n, rst_n_2\n"
                           "\n"
                           "2. Interface Connections\n"
                           "========================\n"
                           "\n");
}

TEST_F(FlowReportFrameTest, EmptyQrxBinWritesTheTitleAlone) {
  EXPECT_EQ(sectionOneOf(""), sectionOneTitle);
}

TEST_F(FlowReportFrameTest, UserRegionsWithoutComputeUnitsWriteTheTitleAlone) {
  EXPECT_EQ(sectionOneOf(R"(
    user_regions { kernels { name: "kernel_a" } }
    user_regions { name: "second" })"),
            sectionOneTitle);
}

TEST_F(FlowReportFrameTest, ComputeUnitWithoutClockOrResetKeepsTheLabelsWithTheirBlank) {
  EXPECT_EQ(sectionOneOf(R"(
    user_regions { compute_units { name: "kernel_a_1" kernel_name: "kernel_a" } })"),
            sectionOneTitle +
                "Compute Unit: kernel_a_1\n"
                "Kernel: kernel_a\n"
                "Clock Pin: \n"
                "Reset Pin: \n"
                "\n");
}

TEST_F(FlowReportFrameTest, ComputeUnitWithoutAnyFieldStillWritesEveryLabel) {
  EXPECT_EQ(sectionOneOf("user_regions { compute_units { } }"), sectionOneTitle +
                                                                    "Compute Unit: \n"
                                                                    "Kernel: \n"
                                                                    "Clock Pin: \n"
                                                                    "Reset Pin: \n"
                                                                    "\n");
}

TEST_F(FlowReportFrameTest, ClockWithFrequencyZeroIsListedLikeAnyOther) {
  EXPECT_EQ(sectionOneOf(R"(
    user_regions {
      compute_units {
        name: "kernel_a_1" kernel_name: "kernel_a"
        clock_refs { name: "clk" }
        clock_refs { name: "clk_2" requested_frequency: 0 achieved_frequency: 0 }
        clock_refs { name: "clk_3" requested_frequency: 250 }
      }
    })"),
            sectionOneTitle +
                "Compute Unit: kernel_a_1\n"
                "Kernel: kernel_a\n"
                "Clock Pins: clk, clk_2, clk_3\n"
                "Reset Pin: \n"
                "\n");
}

TEST_F(FlowReportFrameTest, SingleEntryWithAnEmptyNameKeepsTheSingularLabel) {
  EXPECT_EQ(sectionOneOf(R"(
    user_regions {
      compute_units { name: "u" kernel_name: "k" clock_refs { name: "" } reset_pins: "" }
    })"),
            sectionOneTitle +
                "Compute Unit: u\n"
                "Kernel: k\n"
                "Clock Pin: \n"
                "Reset Pin: \n"
                "\n");
}

TEST_F(FlowReportFrameTest, EmptyNamesStillCountTowardsThePlural) {
  EXPECT_EQ(sectionOneOf(R"(
    user_regions {
      compute_units {
        name: "u" kernel_name: "k"
        clock_refs { name: "" } clock_refs { name: "" }
        reset_pins: "" reset_pins: "rst"
      }
    })"),
            sectionOneTitle +
                "Compute Unit: u\n"
                "Kernel: k\n"
                "Clock Pins: , \n"
                "Reset Pins: , rst\n"
                "\n");
}

TEST_F(FlowReportFrameTest, BaseAddressIsPrintedAsItStands) {
  EXPECT_EQ(sectionOneOf(R"(
    user_regions {
      compute_units { name: "a" kernel_name: "k" base_address: "4096" }
      compute_units { name: "b" kernel_name: "k" base_address: " 0x0000_1000 " }
    })"),
            sectionOneTitle +
                "Compute Unit: a\n"
                "Kernel: k\n"
                "Base Address: 4096\n"
                "Clock Pin: \n"
                "Reset Pin: \n"
                "\n"
                "Compute Unit: b\n"
                "Kernel: k\n"
                "Base Address:  0x0000_1000 \n"
                "Clock Pin: \n"
                "Reset Pin: \n"
                "\n");
}

TEST_F(FlowReportFrameTest, ComputeUnitsOfAllRegionsComeInOrder) {
  EXPECT_EQ(sectionOneOf(R"(
    user_regions {
      compute_units { name: "second_1" kernel_name: "second" reset_pins: "rst" }
      compute_units { name: "first_1" kernel_name: "first" }
    }
    user_regions { }
    user_regions {
      compute_units { name: "third_1" kernel_name: "third" clock_refs { name: "clk" } }
    })"),
            sectionOneTitle +
                "Compute Unit: second_1\n"
                "Kernel: second\n"
                "Clock Pin: \n"
                "Reset Pin: rst\n"
                "\n"
                "Compute Unit: first_1\n"
                "Kernel: first\n"
                "Clock Pin: \n"
                "Reset Pin: \n"
                "\n"
                "Compute Unit: third_1\n"
                "Kernel: third\n"
                "Clock Pin: clk\n"
                "Reset Pin: \n"
                "\n");
}

TEST_F(FlowReportFrameTest, KernelsAndConnectionsAreNotListed) {
  // Section 1 is about compute units: kernels without one and connections add nothing here.
  EXPECT_EQ(sectionOneOf(R"(
    user_regions {
      kernels { name: "unused" }
      connectivity { source { type: "ip" instance: "ip_a" pin: "out" } }
    })"),
            sectionOneTitle);
}

}  // namespace
