// Sections 2, 3 and 4 of the flow report, compared byte for byte. Each test writes its diagram out
// in protobuf text form and compares the whole text of the three sections.
#include "report/ConnectionSections.h"

#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "tests/support/Messages.h"

namespace {

using qvtest::parse;

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Container = IPA::ProfileAnalyzerSystemDiagram::Container;

std::string const interfaceTitle =
    "2. Interface Connections\n"
    "========================\n"
    "\n";
std::string const clockTitle =
    "3. Clock Connections\n"
    "====================\n"
    "\n";
std::string const resetTitle =
    "4. Reset Connections\n"
    "====================\n"
    "\n";

class ConnectionSectionsTest : public ::testing::Test {
 protected:
  ConnectionSectionsTest() : container(std::make_shared<Container>()), diagram(container) {}

  // Replaces the diagram's tree with `text`, an outerContainer in text form.
  void load(std::string const& text) { *container = parse<Container>(text); }
  // Replaces the tree with one whose qrxbin is `qrxBinBody` and whose qsa is `qsaBody`.
  void load(std::string const& qrxBinBody, std::string const& qsaBody) {
    load("system_diagram_metadata { qsa { " + qsaBody + " } qrxbin { " + qrxBinBody + " } }");
  }

  // The three sections as writeFlowReport would write them for the loaded tree.
  std::string report() const {
    std::ostringstream out;
    IPA::writeConnectionSections(diagram, container->system_diagram_metadata().qrxbin(), out);
    return out.str();
  }

  std::shared_ptr<Container> container;
  IPA::ProfileAnalyzerSystemDiagram diagram;
};

// ---- Edge cases --------------------------------------------------------------------------------

TEST_F(ConnectionSectionsTest, WithoutConnectionsTheThreeTitlesFollowOneAnother) {
  load(R"(user_regions { compute_units { id: "0" name: "kernel_a_1" } })", "");
  EXPECT_EQ(report(),
            "2. Interface Connections\n"
            "========================\n"
            "\n"
            "3. Clock Connections\n"
            "====================\n"
            "\n"
            "4. Reset Connections\n"
            "====================\n"
            "\n");
}

TEST_F(ConnectionSectionsTest, WithoutQrxBinTheThreeTitlesFollowOneAnother) {
  load("");
  EXPECT_EQ(report(), interfaceTitle + clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, AGroupWithoutBlocksWritesNoTitle) {
  load(R"(user_regions {
    connectivity {
      source { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "out" }
      destination { type: "ip" instance: "ip_a" pin: "in" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle +
                          "Compute Unit to IP\n"
                          "------------------\n"
                          "Source Pin: kernel_a_1/out\n"
                          "Destination Pin: ip_a/in\n"
                          "\n" +
                          clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, SameComputeUnitLinkPrintsOnceButLikeIpToComputeUnitLinksPrintTwice) {
  load(R"(user_regions {
    connectivity {
      id: "0"
      source { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "out" }
      destination { type: "compute_unit" id: "1" instance: "kernel_b_1" pin: "in" }
    }
    connectivity {
      id: "1"
      source { type: "compute_unit" id: "7" instance: "kernel_a_1" pin: "out" arg_name: "x" }
      destination { type: "compute_unit" id: "8" instance: "kernel_b_1" pin: "in" }
    }
    connectivity {
      source { type: "ip" instance: "ip_a" pin: "out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "in" }
    }
    connectivity {
      source { type: "ip" instance: "ip_a" pin: "out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "in" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle +
                          "Compute Unit to Compute Unit\n"
                          "----------------------------\n"
                          "Source Pin: kernel_a_1/out\n"
                          "Destination Pin: kernel_b_1/in\n"
                          "\n"
                          "IP to Compute Unit\n"
                          "------------------\n"
                          "Source Pin: ip_a/out\n"
                          "Destination Pin: kernel_a_1/in\n"
                          "\n"
                          "Source Pin: ip_a/out\n"
                          "Destination Pin: kernel_a_1/in\n"
                          "\n" +
                          clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, ComputeUnitLinkWithAnEmptyPinAtOneEndPrintsNothing) {
  load(R"(user_regions {
    connectivity {
      source { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "out" }
      destination { type: "compute_unit" id: "1" instance: "kernel_b_1" }
    }
    connectivity {
      source { type: "compute_unit" id: "0" instance: "kernel_a_1" }
      destination { type: "compute_unit" id: "1" instance: "kernel_b_1" pin: "in" }
    }
    connectivity {
      source { type: "compute_unit" id: "0" pin: "out" }
      destination { type: "compute_unit" id: "1" instance: "kernel_b_1" pin: "in" }
    }
    connectivity {
      source { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "out" }
      destination { type: "compute_unit" id: "1" pin: "in" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle + clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, UnassignedClockIdShowsOnlyTheComputeUnitAndPinLines) {
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk" clock_id: "not_specified" requested_frequency: 300
                   achieved_frequency: 290 }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
  })", R"(clocks { id: 0 frequency: 300 })");
  EXPECT_EQ(report(), interfaceTitle + clockTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: kernel_a_1/clk\n"
                          "\n" +
                          resetTitle);
}

TEST_F(ConnectionSectionsTest, ComputeUnitUnknownByIdShowsOnlyTheComputeUnitAndPinLines) {
  // The instance names a known unit, but the lookup goes by id, and id 5 is nobody's.
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk" clock_id: "0" requested_frequency: 300 }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "5" instance: "kernel_a_1" pin: "clk" }
    }
  })", R"(clocks { id: 0 frequency: 300 })");
  EXPECT_EQ(report(), interfaceTitle + clockTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: kernel_a_1/clk\n"
                          "\n" +
                          resetTitle);
}

TEST_F(ConnectionSectionsTest, ResetWhoseComputeUnitHasNoClockWithAFrequencyHasNoAssociatedPin) {
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk" clock_id: "0" achieved_frequency: 290 }
      reset_pins: "rst_n"
    }
    connectivity {
      source { type: "ip_reset" instance: "reset_a" pin: "rst_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "rst_n" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle + clockTitle + resetTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Source Pin: reset_a/rst_out\n"
                          "Destination Pin: kernel_a_1/rst_n\n"
                          "\n");
}

TEST_F(ConnectionSectionsTest, ClockFrequencyOfZeroLetsThePlatformValueStepIn) {
  // The unit's requested frequency is 0 and its achieved one is set: the requested line takes
  // the platform's value and the achieved line keeps the unit's.
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk" clock_id: "2" requested_frequency: 0 achieved_frequency: 280 }
    }
    compute_units {
      id: "1" name: "kernel_b_1"
      clock_refs { name: "clk" clock_id: "2" requested_frequency: 250 achieved_frequency: 0 }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "1" instance: "kernel_b_1" pin: "clk" }
    }
  })", R"(clocks { id: 2 frequency: 300 requested_frequency: 299.5 achieved_frequency: 291.5 })");
  EXPECT_EQ(report(), interfaceTitle + clockTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Clock ID: 2\n"
                          "Platform Clock Frequency: 300.00 MHz\n"
                          "Requested Kernel Clock Frequency: 299.50 MHz\n"
                          "Achieved Kernel Clock Frequency: 280.00 MHz\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: kernel_a_1/clk\n"
                          "\n"
                          "Compute Unit: kernel_b_1\n"
                          "Clock ID: 2\n"
                          "Platform Clock Frequency: 300.00 MHz\n"
                          "Requested Kernel Clock Frequency: 250.00 MHz\n"
                          "Achieved Kernel Clock Frequency: 291.50 MHz\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: kernel_b_1/clk\n"
                          "\n" +
                          resetTitle);
}

// ---- The examples ------------------------------------------------------------------------------

TEST_F(ConnectionSectionsTest, InterfaceExampleWithTwoGroups) {
  load(R"(user_regions {
    compute_units { id: "0" name: "kernel_a_1" kernel_name: "kernel_a" }
    compute_units { id: "1" name: "kernel_b_1" kernel_name: "kernel_b" }
    connectivity {
      id: "0"
      source { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "out" }
      destination { type: "compute_unit" id: "1" instance: "kernel_b_1" pin: "in" }
    }
    connectivity {
      id: "1"
      source { type: "ip" instance: "ip_a" pin: "out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "in" }
    }
  })", "");
  EXPECT_EQ(report(),
            "2. Interface Connections\n"
            "========================\n"
            "\n"
            "Compute Unit to Compute Unit\n"
            "----------------------------\n"
            "Source Pin: kernel_a_1/out\n"
            "Destination Pin: kernel_b_1/in\n"
            "\n"
            "IP to Compute Unit\n"
            "------------------\n"
            "Source Pin: ip_a/out\n"
            "Destination Pin: kernel_a_1/in\n"
            "\n"
            "3. Clock Connections\n"
            "====================\n"
            "\n"
            "4. Reset Connections\n"
            "====================\n"
            "\n");
}

TEST_F(ConnectionSectionsTest, ClockExampleWithAComputeUnitAndAnIpClock) {
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1" kernel_name: "kernel_a"
      clock_refs { name: "clk" clock_id: "0" requested_frequency: 300 achieved_frequency: 291.5 }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
    connectivity {
      source { type: "bd_clock" instance: "board_clock" pin: "clk" }
      destination { type: "ip_clock" instance: "ip_a" pin: "clk" }
    }
  })", R"(clocks { name: "clk_kernel" id: 0 frequency: 300 })");
  EXPECT_EQ(report(),
            "2. Interface Connections\n"
            "========================\n"
            "\n"
            "3. Clock Connections\n"
            "====================\n"
            "\n"
            "Compute Unit: kernel_a_1\n"
            "Clock ID: 0\n"
            "Platform Clock Frequency: 300.00 MHz\n"
            "Requested Kernel Clock Frequency: 300.00 MHz\n"
            "Achieved Kernel Clock Frequency: 291.50 MHz\n"
            "Source Pin: ip_clock_a/clk_out\n"
            "Destination Pin: kernel_a_1/clk\n"
            "\n"
            "Clock Instance: ip_a\n"
            "Source Port: board_clock/clk\n"
            "Destination Pin: ip_a/clk\n"
            "\n"
            "4. Reset Connections\n"
            "====================\n"
            "\n");
}

// ---- Sorting -----------------------------------------------------------------------------------

TEST_F(ConnectionSectionsTest, MemoryAndUnknownConnectionsAreInvisible) {
  load(R"(user_regions {
    connectivity {
      source { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "m_axi" }
      destination { type: "memory" id: "0" instance: "HBM[0]" }
    }
    connectivity {
      source { type: "memory" instance: "HBM[0]" pin: "p" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "in" }
    }
    connectivity {
      source { type: "compute_unit" instance: "kernel_a_1" pin: "clk" }
      destination { type: "ip_clock" instance: "ip_a" pin: "clk" }
    }
    connectivity { destination { type: "compute_unit" instance: "kernel_a_1" pin: "in" } }
    connectivity { }
  })", "");
  EXPECT_EQ(report(), interfaceTitle + clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, IpToAnythingButAComputeUnitIsDropped) {
  load(R"(user_regions {
    connectivity {
      source { type: "ip" instance: "ip_a" pin: "out" }
      destination { type: "ip" instance: "ip_b" pin: "in" }
    }
    connectivity {
      source { type: "ip" instance: "ip_a" pin: "out" }
      destination { type: "memory" instance: "DDR[0]" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle + clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, GroupsAreWrittenInFixedOrderWhateverTheConnectionOrder) {
  load(R"(user_regions {
    connectivity {
      source { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "out" }
      destination { type: "ip" instance: "ip_b" pin: "in" }
    }
    connectivity {
      source { type: "ip" instance: "ip_a" pin: "out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "in" }
    }
  }
  user_regions {
    connectivity {
      source { type: "compute_unit" id: "0" instance: "kernel_c_1" pin: "out" }
      destination { type: "compute_unit" id: "1" instance: "kernel_d_1" pin: "in" }
    }
    connectivity {
      source { type: "compute_unit" id: "0" instance: "kernel_c_1" pin: "out2" }
      destination { type: "ip" instance: "ip_c" pin: "in" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle +
                          "Compute Unit to Compute Unit\n"
                          "----------------------------\n"
                          "Source Pin: kernel_c_1/out\n"
                          "Destination Pin: kernel_d_1/in\n"
                          "\n"
                          "IP to Compute Unit\n"
                          "------------------\n"
                          "Source Pin: ip_a/out\n"
                          "Destination Pin: kernel_a_1/in\n"
                          "\n"
                          "Compute Unit to IP\n"
                          "------------------\n"
                          "Source Pin: kernel_a_1/out\n"
                          "Destination Pin: ip_b/in\n"
                          "\n"
                          "Source Pin: kernel_c_1/out2\n"
                          "Destination Pin: ip_c/in\n"
                          "\n" +
                          clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, ComputeUnitToIpRepeatsAreNotRemoved) {
  load(R"(user_regions {
    connectivity {
      source { type: "compute_unit" instance: "kernel_a_1" pin: "out" }
      destination { type: "ip" instance: "ip_b" pin: "in" }
    }
  }
  user_regions {
    connectivity {
      source { type: "compute_unit" instance: "kernel_a_1" pin: "out" }
      destination { type: "ip" instance: "ip_b" pin: "in" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle +
                          "Compute Unit to IP\n"
                          "------------------\n"
                          "Source Pin: kernel_a_1/out\n"
                          "Destination Pin: ip_b/in\n"
                          "\n"
                          "Source Pin: kernel_a_1/out\n"
                          "Destination Pin: ip_b/in\n"
                          "\n" +
                          clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, ComputeUnitLinkRepeatedInAnotherRegionPrintsOnce) {
  std::string const link = R"(connectivity {
      source { type: "compute_unit" instance: "kernel_a_1" pin: "out" }
      destination { type: "compute_unit" instance: "kernel_b_1" pin: "in" }
    })";
  load("user_regions { " + link + " } user_regions { " + link + " }", "");
  EXPECT_EQ(report(), interfaceTitle +
                          "Compute Unit to Compute Unit\n"
                          "----------------------------\n"
                          "Source Pin: kernel_a_1/out\n"
                          "Destination Pin: kernel_b_1/in\n"
                          "\n" +
                          clockTitle + resetTitle);
}

TEST_F(ConnectionSectionsTest, ComputeUnitLinkKeyJoinsTheFourNamesWithSlashes) {
  // "a/b" + "c" and "a" + "b/c" give the same key, so the second link counts as a repeat.
  load(R"(user_regions {
    connectivity {
      source { type: "compute_unit" instance: "a/b" pin: "c" }
      destination { type: "compute_unit" instance: "d" pin: "e" }
    }
    connectivity {
      source { type: "compute_unit" instance: "a" pin: "b/c" }
      destination { type: "compute_unit" instance: "d" pin: "e" }
    }
    connectivity {
      source { type: "compute_unit" instance: "d" pin: "e" }
      destination { type: "compute_unit" instance: "a/b" pin: "c" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle +
                          "Compute Unit to Compute Unit\n"
                          "----------------------------\n"
                          "Source Pin: a/b/c\n"
                          "Destination Pin: d/e\n"
                          "\n"
                          "Source Pin: d/e\n"
                          "Destination Pin: a/b/c\n"
                          "\n" +
                          clockTitle + resetTitle);
}

// ---- Clock connections -------------------------------------------------------------------------

TEST_F(ConnectionSectionsTest, ClockToAnotherKindOfDestinationWritesOnlyThePinLines) {
  load(R"(user_regions {
    connectivity {
      source { type: "bd_clock" instance: "board_clock" pin: "clk" }
      destination { type: "ip" instance: "ip_a" pin: "aclk" }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { instance: "somewhere" pin: "clk" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle + clockTitle +
                          "Source Port: board_clock/clk\n"
                          "Destination Pin: ip_a/aclk\n"
                          "\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: somewhere/clk\n"
                          "\n" +
                          resetTitle);
}

TEST_F(ConnectionSectionsTest, ComputeUnitFrequenciesWinOverThePlatformClocks) {
  load(R"(user_regions {
    compute_units {
      id: "3" name: "kernel_a_1"
      clock_refs { name: "clk_other" clock_id: "9" requested_frequency: 100 }
      clock_refs { name: "clk" clock_id: "1" requested_frequency: 250 achieved_frequency: 240.5 }
    }
    connectivity {
      source { type: "bd_clock" instance: "board_clock" pin: "clk" }
      destination { type: "compute_unit" id: "3" instance: "kernel_a_1" pin: "clk" }
    }
  })", R"(clocks { id: 0 frequency: 100 }
          clocks { id: 1 frequency: 300 requested_frequency: 300 achieved_frequency: 299 })");
  EXPECT_EQ(report(), interfaceTitle + clockTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Clock ID: 1\n"
                          "Platform Clock Frequency: 300.00 MHz\n"
                          "Requested Kernel Clock Frequency: 250.00 MHz\n"
                          "Achieved Kernel Clock Frequency: 240.50 MHz\n"
                          "Source Port: board_clock/clk\n"
                          "Destination Pin: kernel_a_1/clk\n"
                          "\n" +
                          resetTitle);
}

TEST_F(ConnectionSectionsTest, ClockIdWithoutPlatformClockWritesOnlyTheUnitsOwnFrequencies) {
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk" clock_id: "4" achieved_frequency: 200 }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
  })", R"(clocks { id: 0 frequency: 300 requested_frequency: 300 })");
  EXPECT_EQ(report(), interfaceTitle + clockTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Clock ID: 4\n"
                          "Achieved Kernel Clock Frequency: 200.00 MHz\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: kernel_a_1/clk\n"
                          "\n" +
                          resetTitle);
}

TEST_F(ConnectionSectionsTest, LookupsStartAfreshForEachConnection) {
  // The second unit's clock is unknown: nothing of the first unit's clock may carry over.
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk" clock_id: "0" requested_frequency: 300 achieved_frequency: 290 }
    }
    compute_units { id: "1" name: "kernel_b_1" }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "1" instance: "kernel_b_1" pin: "clk" }
    }
  })", R"(clocks { id: 0 frequency: 300 })");
  EXPECT_EQ(report(), interfaceTitle + clockTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Clock ID: 0\n"
                          "Platform Clock Frequency: 300.00 MHz\n"
                          "Requested Kernel Clock Frequency: 300.00 MHz\n"
                          "Achieved Kernel Clock Frequency: 290.00 MHz\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: kernel_a_1/clk\n"
                          "\n"
                          "Compute Unit: kernel_b_1\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: kernel_b_1/clk\n"
                          "\n" +
                          resetTitle);
}

TEST_F(ConnectionSectionsTest, NonNumericClockIdThrowsStoiAfterTheComputeUnitLine) {
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk" clock_id: "clk_0" requested_frequency: 300 }
      reset_pins: "rst_n"
    }
    connectivity {
      source { type: "ip" instance: "ip_a" pin: "out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "in" }
    }
    connectivity {
      source { type: "bd_clock" instance: "board_clock" pin: "clk" }
      destination { type: "ip_clock" instance: "ip_a" pin: "clk" }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
    connectivity {
      source { type: "ip_reset" instance: "reset_a" pin: "rst_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "rst_n" }
    }
  })", R"(clocks { id: 0 frequency: 300 })");
  std::ostringstream out;
  try {
    IPA::writeConnectionSections(diagram, container->system_diagram_metadata().qrxbin(), out);
    FAIL() << "no exception; wrote:\n" << out.str();
  } catch (std::invalid_argument const& error) {
    EXPECT_STREQ(error.what(), "stoi");
  }
  EXPECT_EQ(out.str(), interfaceTitle +
                           "IP to Compute Unit\n"
                           "------------------\n"
                           "Source Pin: ip_a/out\n"
                           "Destination Pin: kernel_a_1/in\n"
                           "\n" +
                           clockTitle +
                           "Clock Instance: ip_a\n"
                           "Source Port: board_clock/clk\n"
                           "Destination Pin: ip_a/clk\n"
                           "\n"
                           "Compute Unit: kernel_a_1\n");
}

TEST_F(ConnectionSectionsTest, ClockIdOutOfRangeThrowsStoiOutOfRange) {
  load(R"(user_regions {
    compute_units { id: "0" name: "kernel_a_1" clock_refs { name: "clk" clock_id: "99999999999" } }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
  })", R"(clocks { id: 0 frequency: 300 })");
  std::ostringstream out;
  try {
    IPA::writeConnectionSections(diagram, container->system_diagram_metadata().qrxbin(), out);
    FAIL() << "no exception; wrote:\n" << out.str();
  } catch (std::out_of_range const& error) {
    EXPECT_STREQ(error.what(), "stoi");
  }
  EXPECT_EQ(out.str(), interfaceTitle + clockTitle + "Compute Unit: kernel_a_1\n");
}

TEST_F(ConnectionSectionsTest, NonNumericClockIdPassesWhenThePlatformHasNoClock) {
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk" clock_id: "clk_0" requested_frequency: 300 }
    }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle + clockTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Clock ID: clk_0\n"
                          "Requested Kernel Clock Frequency: 300.00 MHz\n"
                          "Source Pin: ip_clock_a/clk_out\n"
                          "Destination Pin: kernel_a_1/clk\n"
                          "\n" +
                          resetTitle);
}

// ---- Reset connections -------------------------------------------------------------------------

TEST_F(ConnectionSectionsTest, ResetNamesTheFirstClockPinWithARequestedFrequency) {
  load(R"(user_regions {
    compute_units {
      id: "0" name: "kernel_a_1"
      clock_refs { name: "clk_idle" clock_id: "0" }
      clock_refs { name: "ap_clk" clock_id: "0" requested_frequency: 300 }
      clock_refs { name: "ap_clk_2" clock_id: "1" requested_frequency: 500 }
      reset_pins: "ap_rst_n"
    }
    connectivity {
      source { type: "ip_reset" instance: "reset_a" pin: "rst_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "ap_rst_n" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle + clockTitle + resetTitle +
                          "Compute Unit: kernel_a_1\n"
                          "Source Pin: reset_a/rst_out\n"
                          "Destination Pin: kernel_a_1/ap_rst_n\n"
                          "Associated Clock Pin: kernel_a_1/ap_clk\n"
                          "\n");
}

TEST_F(ConnectionSectionsTest, ResetToAnyDestinationIsLabelledAsAComputeUnit) {
  load(R"(user_regions {
    connectivity {
      source { type: "ip_reset" instance: "reset_a" pin: "rst_out" }
      destination { type: "ip" instance: "ip_a" pin: "aresetn" }
    }
    connectivity {
      source { type: "ip_reset" instance: "reset_a" pin: "rst_out" }
    }
  })", "");
  EXPECT_EQ(report(), interfaceTitle + clockTitle + resetTitle +
                          "Compute Unit: ip_a\n"
                          "Source Pin: reset_a/rst_out\n"
                          "Destination Pin: ip_a/aresetn\n"
                          "\n"
                          "Compute Unit: \n"
                          "Source Pin: reset_a/rst_out\n"
                          "Destination Pin: /\n"
                          "\n");
}

TEST_F(ConnectionSectionsTest, ReportLeavesTheDiagramUnchanged) {
  std::string const tree = R"(system_diagram_metadata { qrxbin { user_regions {
    compute_units { id: "0" name: "kernel_a_1" clock_refs { name: "clk" clock_id: "0" } }
    connectivity {
      source { type: "ip_clock" instance: "ip_clock_a" pin: "clk_out" }
      destination { type: "compute_unit" id: "0" instance: "kernel_a_1" pin: "clk" }
    }
  } } })";
  load(tree);
  report();
  EXPECT_TRUE(qvtest::sameMessage(parse<Container>(tree), *container));
}

}  // namespace
