// The key, merge and scan rules of every operation of ProfileAnalyzerSystemDiagram
// (docs/diagram-operations.md). Each test writes its tree out in protobuf text form, runs one
// operation and compares the whole tree with the expected tree, also written out, so that a
// change anywhere else in the tree fails the test too.
#include "diagram/ProfileAnalyzerSystemDiagram.h"

#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>
#include "tests/support/Messages.h"
#include "tests/support/Calls.h"

namespace {

using qvtest::parse;
using qvtest::sameMessage;
using qvtest::runtimeErrorText;

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Container = IPA::ProfileAnalyzerSystemDiagram::Container;
using IPA::ProfileAnalyzerSystemDiagram;

std::string withQrxBin(std::string const& body) {
  return "system_diagram_metadata { qrxbin { " + body + " } }";
}

std::string withQsa(std::string const& body) {
  return "system_diagram_metadata { qsa { " + body + " } }";
}

class ProfileAnalyzerSystemDiagramOperationsTest : public ::testing::Test {
 protected:
  ProfileAnalyzerSystemDiagramOperationsTest()
      : container(std::make_shared<Container>()), diagram(container) {}

  // Replaces the shared tree, as the import would have filled it.
  void load(std::string const& text) { *container = parse<Container>(text); }

  // Whether the whole shared tree is `text`.
  ::testing::AssertionResult treeIs(std::string const& text) const {
    return sameMessage(parse<Container>(text), *container);
  }

  std::shared_ptr<Container> container;
  ProfileAnalyzerSystemDiagram diagram;
};

// Two compute units of one kernel in one region; most connectivity tests start here.
std::string const twoUnits = R"(
  user_regions {
    compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" }
    compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
  })";

// ---- Edge cases --------------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertKernelWithEmptyNameLeavesTheDiagramAsItWas) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      kernels { name: "vadd" ports { name: "in1" } }
      kernels { name: "" description: "nameless" }
    })");
  load(tree);
  diagram.upsertKernel(parse<pb::kernel>(R"(
    name: "" description: "changed" ports { name: "out" })"));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertQsaClockWithEmptyNameAndIdZeroMergesIntoTheFirstClockOfIdZeroWhateverItsName) {
  load(withQsa(R"(
    clocks { name: "clk_a" id: 1 frequency: 100 }
    clocks { name: "sys_clk" id: 0 frequency: 300 }
    clocks { name: "" id: 0 frequency: 50 })"));
  diagram.upsertQsaClock(parse<pb::Clock>(R"(
    id: 0 achieved_frequency: 290 status: CLOCK_FIXED)"));
  EXPECT_TRUE(treeIs(withQsa(R"(
    clocks { name: "clk_a" id: 1 frequency: 100 }
    clocks { name: "sys_clk" id: 0 frequency: 300 achieved_frequency: 290 status: CLOCK_FIXED }
    clocks { name: "" id: 0 frequency: 50 })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityOfAMemoryConnectionWithoutUserRegionDoesNothingAndReportsNothing) {
  std::string const tree = withQrxBin(R"(generated_by { name: "builder" })");
  load(tree);
  EXPECT_NO_THROW(diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "memory" id: "0" instance: "HBM[0]" }
    destination { type: "memory" id: "1" instance: "HBM[1]" })")));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityBetweenComputeUnitsWithAnUnknownSourceAddsNothing) {
  std::string const tree = withQrxBin(twoUnits);
  load(tree);
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "ghost_1" pin: "out" }
    destination { type: "compute_unit" instance: "vadd_2" pin: "in" })"));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityBetweenComputeUnitsWithAnUnknownDestinationAddsNothing) {
  std::string const tree = withQrxBin(twoUnits);
  load(tree);
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" pin: "out" }
    destination { type: "compute_unit" instance: "ghost_1" pin: "in" })"));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityFromAMemoryToAnUnknownComputeUnitAddsNothing) {
  std::string const tree = withQrxBin(twoUnits);
  load(tree);
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "memory" instance: "HBM[0]" }
    destination { type: "compute_unit" instance: "ghost_1" pin: "in" })"));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       OnARegionWithThreeConnectionsANewOneGetsIdThree) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      connectivity { id: "0" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "1" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "2" source { type: "memory" } destination { type: "memory" } }
    })"));
  // A refused upsert first: it must not use up a number.
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "ghost_1" }
    destination { type: "memory" instance: "HBM[0]" })"));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" pin: "m_axi_gmem" }
    destination { type: "memory" instance: "HBM[0]" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      connectivity { id: "0" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "1" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "2" source { type: "memory" } destination { type: "memory" } }
      connectivity {
        id: "3"
        source { type: "compute_unit" id: "0" instance: "vadd_1" pin: "m_axi_gmem" }
        destination { type: "memory" instance: "HBM[0]" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       SetDeviceTopologyUsedOnATagThatTwoMemoriesShareChangesBoth) {
  load(withQsa(R"(
    device_topology { id: "0" tag: "HBM[0]" used: "no" }
    device_topology { id: "1" tag: "DDR[0]" used: "no" }
    device_topology { id: "2" tag: "HBM[0]" used: "no" })"));
  diagram.setDeviceTopologyUsed("HBM[0]", "yes");
  EXPECT_TRUE(treeIs(withQsa(R"(
    device_topology { id: "0" tag: "HBM[0]" used: "yes" }
    device_topology { id: "1" tag: "DDR[0]" used: "no" }
    device_topology { id: "2" tag: "HBM[0]" used: "yes" })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpdateComputeUnitForAnUnknownNameChangesNothing) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" kernel_name: "vadd" name: "vadd_1"
        clock_refs { name: "ap_clk" clock_id: "0" requested_frequency: 300 }
      }
    })");
  load(tree);
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    name: "vadd_9"
    reset_pins: "ap_rst_n"
    slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "1" available: "2" } }
    clock_refs { name: "ap_clk" requested_frequency: 500 })"));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitClockInfoGivesAnEmptyTextForAFrequencyOfZero) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs { name: "ap_clk" clock_id: "3" requested_frequency: 0 achieved_frequency: 0 }
      }
      compute_units {
        id: "1" name: "vadd_2"
        clock_refs { name: "ap_clk" clock_id: "4" requested_frequency: 200 }
      }
    })"));
  std::string clockId = "old id";
  std::string requested = "old requested";
  std::string achieved = "old achieved";
  diagram.getComputeUnitClockInfo("0", "ap_clk", clockId, requested, achieved);
  EXPECT_EQ(clockId, "3");
  EXPECT_EQ(requested, "");
  EXPECT_EQ(achieved, "");

  achieved = "old achieved";
  diagram.getComputeUnitClockInfo("1", "ap_clk", clockId, requested, achieved);
  EXPECT_EQ(clockId, "4");
  EXPECT_EQ(requested, "200.00");
  EXPECT_EQ(achieved, "");
}

// ---- How sections come into being --------------------------------------------------------------

struct OnAnEmptyTree {
  char const* description;
  std::function<void(ProfileAnalyzerSystemDiagram&)> operation;
  char const* expectedTree;
};

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, ChangingOperationsCreateTheirSectionOnTheWay) {
  std::vector<OnAnEmptyTree> const rows = {
      {"upsertQrxBin", [](ProfileAnalyzerSystemDiagram& d) { d.upsertQrxBin(pb::qrxBin()); },
       "system_diagram_metadata { qrxbin { } }"},
      {"upsertPlatform", [](ProfileAnalyzerSystemDiagram& d) { d.upsertPlatform(pb::Platform()); },
       "system_diagram_metadata { qrxbin { platform { } } }"},
      {"upsertQrxBinGeneratedBy",
       [](ProfileAnalyzerSystemDiagram& d) { d.upsertQrxBinGeneratedBy(pb::qrxBinGeneratedBy()); },
       "system_diagram_metadata { qrxbin { generated_by { } } }"},
      {"upsertQsaClock",
       [](ProfileAnalyzerSystemDiagram& d) {
         d.upsertQsaClock(parse<pb::Clock>(R"(name: "sys_clk" id: 2 frequency: 300)"));
       },
       R"(system_diagram_metadata { qsa { clocks { name: "sys_clk" id: 2 frequency: 300 } } })"},
      {"setComputeUnitBaseAddress",
       [](ProfileAnalyzerSystemDiagram& d) {
         d.setComputeUnitBaseAddress("vadd", "vadd_1", "0x1000");
       },
       "system_diagram_metadata { qrxbin { } }"},
      {"setDeviceTopologyBaseAddress",
       [](ProfileAnalyzerSystemDiagram& d) { d.setDeviceTopologyBaseAddress("HBM[0]", "0x0"); },
       "system_diagram_metadata { qsa { } }"},
      {"setDeviceTopologySlr",
       [](ProfileAnalyzerSystemDiagram& d) { d.setDeviceTopologySlr("HBM[0]", "SLR0"); },
       "system_diagram_metadata { qsa { } }"},
      {"setDeviceTopologyUsed",
       [](ProfileAnalyzerSystemDiagram& d) { d.setDeviceTopologyUsed("HBM[0]", "yes"); },
       "system_diagram_metadata { qsa { } }"},
      {"setDeviceTopologySizeKB",
       [](ProfileAnalyzerSystemDiagram& d) { d.setDeviceTopologySizeKB("HBM[0]", "262144"); },
       "system_diagram_metadata { qsa { } }"},
      {"clearComputeUnitResourceUse",
       [](ProfileAnalyzerSystemDiagram& d) { d.clearComputeUnitResourceUse("vadd_1"); },
       "system_diagram_metadata { qrxbin { } }"},
      {"updateComputeUnit",
       [](ProfileAnalyzerSystemDiagram& d) {
         d.updateComputeUnit(parse<pb::computeUnit>(R"(name: "vadd_1" reset_pins: "ap_rst_n")"));
       },
       "system_diagram_metadata { qrxbin { } }"},
      {"upsertConnectivity",
       [](ProfileAnalyzerSystemDiagram& d) {
         d.upsertConnectivity(parse<pb::Connectivity>(
             R"(source { type: "memory" } destination { type: "memory" })"));
       },
       "system_diagram_metadata { qrxbin { } }"},
      {"getQrxBinGeneratedBy",
       [](ProfileAnalyzerSystemDiagram& d) {
         pb::qrxBinGeneratedBy out;
         d.getQrxBinGeneratedBy(out);
       },
       "system_diagram_metadata { qrxbin { generated_by { } } }"},
      // These three do nothing at all, so they reach no section.
      {"upsertKernel without a name",
       [](ProfileAnalyzerSystemDiagram& d) { d.upsertKernel(pb::kernel()); }, ""},
      {"clearComputeUnitResourceUse of an empty name",
       [](ProfileAnalyzerSystemDiagram& d) { d.clearComputeUnitResourceUse(""); }, ""},
      {"upsertKernelUtilization of an empty map",
       [](ProfileAnalyzerSystemDiagram& d) {
         d.upsertKernelUtilization(std::unordered_map<std::string, IPA::ActualResourceCollection>());
       },
       ""},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.description);
    auto const root = std::make_shared<Container>();
    ProfileAnalyzerSystemDiagram fresh(root);
    row.operation(fresh);
    EXPECT_TRUE(sameMessage(parse<Container>(row.expectedTree), *root));
  }
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, ReadingOperationsCreateNothing) {
  EXPECT_EQ(diagram.computeUnitNames(), std::vector<std::string>());
  EXPECT_EQ(diagram.getComputeUnitId("vadd_1"), "");
  EXPECT_EQ(diagram.getComputeUnitClockPortName("vadd_1"), "");
  std::string clockId = "id";
  std::string requested = "requested";
  std::string achieved = "achieved";
  diagram.getComputeUnitClockInfo("0", "ap_clk", clockId, requested, achieved);
  EXPECT_EQ(clockId, "id");
  EXPECT_EQ(requested, "requested");
  EXPECT_EQ(achieved, "achieved");
  std::string frequency = "frequency";
  diagram.getQsaClockFrequencies("0", frequency, requested, achieved);
  EXPECT_EQ(frequency, "frequency");
  EXPECT_EQ(requested, "requested");
  EXPECT_EQ(achieved, "achieved");
  EXPECT_EQ(diagram.kernelNameFromComputeUnitName("vadd_1"), "vadd");
  EXPECT_EQ(container->ByteSizeLong(), 0u);
  EXPECT_FALSE(container->has_system_diagram_metadata());
}

// ---- Section upserts ---------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertQrxBinOnAnEmptyTreeStoresTheSection) {
  diagram.upsertQrxBin(parse<pb::qrxBin>(R"(
    user_regions { name: "ulp" compute_units { id: "0" name: "vadd_1" } }
    generated_by { name: "v++" version: "2.1" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions { name: "ulp" compute_units { id: "0" name: "vadd_1" } }
    generated_by { name: "v++" version: "2.1" })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertQrxBinTwiceDoublesTheUserRegions) {
  pb::qrxBin const request = parse<pb::qrxBin>(R"(
    user_regions { name: "ulp" compute_units { id: "0" name: "vadd_1" } })");
  diagram.upsertQrxBin(request);
  diagram.upsertQrxBin(request);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions { name: "ulp" compute_units { id: "0" name: "vadd_1" } }
    user_regions { name: "ulp" compute_units { id: "0" name: "vadd_1" } })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertQrxBinOverwritesTheScalarsItSetsAndKeepsTheOthers) {
  load(R"(system_diagram_metadata {
    qsa { name: "platform" }
    qrxbin {
      user_regions { name: "ulp" }
      generated_by { name: "v++" version: "2.1" timestamp: "Mon" flag: true }
    }
  })");
  diagram.upsertQrxBin(parse<pb::qrxBin>(R"(
    generated_by { version: "2.2" note: "rebuilt" }
    platform { name: "u280" })"));
  EXPECT_TRUE(treeIs(R"(system_diagram_metadata {
    qsa { name: "platform" }
    qrxbin {
      user_regions { name: "ulp" }
      generated_by { name: "v++" version: "2.2" timestamp: "Mon" note: "rebuilt" flag: true }
      platform { name: "u280" }
    }
  })"));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertPlatformMergesIntoThePlatform) {
  load(withQrxBin(R"(
    user_regions { name: "ulp" }
    platform { name: "u250" vendor: "acme" properties: "a" })"));
  diagram.upsertPlatform(parse<pb::Platform>(R"(
    name: "u280" part: "xcu280" properties: "b")"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions { name: "ulp" }
    platform { name: "u280" vendor: "acme" part: "xcu280" properties: "a" properties: "b" })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertQrxBinGeneratedByMergesIntoGeneratedBy) {
  load(withQrxBin(R"(
    user_regions { name: "ulp" }
    generated_by { name: "v++" version: "2.1" label: "l1" flag: true })"));
  diagram.upsertQrxBinGeneratedBy(parse<pb::qrxBinGeneratedBy>(R"(
    version: "2.2" detail_a: "opt" label_copy: "l1")"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions { name: "ulp" }
    generated_by {
      name: "v++" version: "2.2" detail_a: "opt" label: "l1" label_copy: "l1" flag: true
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetQrxBinGeneratedByReplacesTheOutputWithAFullCopy) {
  std::string const tree = withQrxBin(R"(
    generated_by { name: "v++" version: "2.1" change_list: "42" flag: true })");
  load(tree);
  // What the output held before must be gone, not merged with.
  pb::qrxBinGeneratedBy out = parse<pb::qrxBinGeneratedBy>(R"(
    name: "stale" note: "stale note" label: "stale label")");
  diagram.getQrxBinGeneratedBy(out);
  EXPECT_TRUE(sameMessage(parse<pb::qrxBinGeneratedBy>(R"(
    name: "v++" version: "2.1" change_list: "42" flag: true)"), out));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetQrxBinGeneratedByOfATreeWithoutItGivesAnEmptyMessageAndCreatesTheSection) {
  load(R"(system_diagram_metadata { qsa { name: "platform" } })");
  pb::qrxBinGeneratedBy out = parse<pb::qrxBinGeneratedBy>(R"(name: "stale")");
  diagram.getQrxBinGeneratedBy(out);
  EXPECT_EQ(out.ByteSizeLong(), 0u);
  EXPECT_TRUE(treeIs(R"(system_diagram_metadata {
    qsa { name: "platform" }
    qrxbin { generated_by { } }
  })"));
}

// ---- upsertKernel ------------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertKernelMergesIntoTheFirstKernelOfThatNameInTheFirstRegion) {
  load(withQrxBin(R"(
    user_regions {
      kernels {
        name: "vadd" description: "old"
        ports { name: "in1" }
        estimated_resources { lut: "100" reg: "200" }
      }
      kernels { name: "mmult" }
      kernels { name: "vadd" description: "second" }
    })"));
  diagram.upsertKernel(parse<pb::kernel>(R"(
    name: "vadd" description: "new"
    ports { name: "out" }
    estimated_resources { lut: "150" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      kernels {
        name: "vadd" description: "new"
        ports { name: "in1" }
        ports { name: "out" }
        estimated_resources { lut: "150" reg: "200" }
      }
      kernels { name: "mmult" }
      kernels { name: "vadd" description: "second" }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertKernelAppendsAnUnknownKernel) {
  load(withQrxBin(R"(user_regions { name: "ulp" kernels { name: "mmult" } })"));
  diagram.upsertKernel(parse<pb::kernel>(R"(
    name: "vadd"
    arguments { id: "0" name: "in1" }
    clock_refs { name: "ap_clk" requested_frequency: 300 })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      name: "ulp"
      kernels { name: "mmult" }
      kernels {
        name: "vadd"
        arguments { id: "0" name: "in1" }
        clock_refs { name: "ap_clk" requested_frequency: 300 }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertKernelAddsThePortsAgainOnASecondUpsert) {
  load(withQrxBin(R"(user_regions { name: "ulp" })"));
  pb::kernel const request = parse<pb::kernel>(R"(
    name: "vadd" ports { name: "in1" mode: "read_only" })");
  diagram.upsertKernel(request);
  diagram.upsertKernel(request);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      name: "ulp"
      kernels {
        name: "vadd"
        ports { name: "in1" mode: "read_only" }
        ports { name: "in1" mode: "read_only" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertKernelLeavesAKernelOfThatNameInTheSecondRegionAlone) {
  load(withQrxBin(R"(
    user_regions { name: "first" }
    user_regions { name: "second" kernels { name: "vadd" description: "second region" } })"));
  diagram.upsertKernel(parse<pb::kernel>(R"(name: "vadd" description: "new")"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions { name: "first" kernels { name: "vadd" description: "new" } }
    user_regions { name: "second" kernels { name: "vadd" description: "second region" } })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertKernelOnAnEmptyTreeIsRefusedAndCreatesNothing) {
  EXPECT_EQ(runtimeErrorText([this] {
              diagram.upsertKernel(parse<pb::kernel>(R"(name: "vadd")"));
            }),
            "Cannot upsert kernel 'vadd': the system diagram has no user region.");
  EXPECT_EQ(container->ByteSizeLong(), 0u);
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertKernelWithoutUserRegionIsRefusedAndChangesNothing) {
  std::string const tree = withQrxBin(R"(generated_by { name: "v++" })");
  load(tree);
  EXPECT_EQ(runtimeErrorText([this] {
              diagram.upsertKernel(parse<pb::kernel>(R"(name: "mmult" ports { name: "a" })"));
            }),
            "Cannot upsert kernel 'mmult': the system diagram has no user region.");
  EXPECT_TRUE(treeIs(tree));
}

// ---- upsertQsaClock ----------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertQsaClockMergesIntoTheFirstClockOfThatName) {
  load(withQsa(R"(
    clocks { name: "clk_a" id: 0 frequency: 100 }
    clocks { name: "clk_b" id: 1 frequency: 200 }
    clocks { name: "clk_b" id: 2 frequency: 250 })"));
  diagram.upsertQsaClock(parse<pb::Clock>(R"(name: "clk_b" id: 5 requested_frequency: 300)"));
  EXPECT_TRUE(treeIs(withQsa(R"(
    clocks { name: "clk_a" id: 0 frequency: 100 }
    clocks { name: "clk_b" id: 5 frequency: 200 requested_frequency: 300 }
    clocks { name: "clk_b" id: 2 frequency: 250 })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertQsaClockWithANewNameAppendsEvenWhenItsIdIsTaken) {
  load(withQsa(R"(clocks { name: "clk_a" id: 1 frequency: 100 })"));
  diagram.upsertQsaClock(parse<pb::Clock>(R"(name: "clk_c" id: 1 frequency: 400)"));
  EXPECT_TRUE(treeIs(withQsa(R"(
    clocks { name: "clk_a" id: 1 frequency: 100 }
    clocks { name: "clk_c" id: 1 frequency: 400 })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertQsaClockWithEmptyNameMatchesTheFirstClockOfThatId) {
  load(withQsa(R"(
    clocks { name: "clk_a" id: 3 frequency: 100 }
    clocks { name: "clk_b" id: 7 frequency: 200 }
    clocks { name: "clk_c" id: 7 frequency: 300 })"));
  diagram.upsertQsaClock(parse<pb::Clock>(R"(id: 7 requested_frequency: 123)"));
  EXPECT_TRUE(treeIs(withQsa(R"(
    clocks { name: "clk_a" id: 3 frequency: 100 }
    clocks { name: "clk_b" id: 7 frequency: 200 requested_frequency: 123 }
    clocks { name: "clk_c" id: 7 frequency: 300 })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertQsaClockWithEmptyNameAppendsWhenNoClockHasThatId) {
  load(withQsa(R"(clocks { name: "clk_a" id: 3 frequency: 100 })"));
  diagram.upsertQsaClock(parse<pb::Clock>(R"(id: 9 frequency: 10)"));
  EXPECT_TRUE(treeIs(withQsa(R"(
    clocks { name: "clk_a" id: 3 frequency: 100 }
    clocks { id: 9 frequency: 10 })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertQsaClockKeepsWhatTheRequestDoesNotSet) {
  load(withQsa(R"(
    clocks {
      name: "clk_a" orig_name: "clk_out1" domain: "d" id: 3 frequency: 300 period: 3.333
      requested_frequency: 300 status: CLOCK_SCALABLE
    })"));
  // Only the achieved frequency is set: the id 0 and the zero frequencies are not values here.
  diagram.upsertQsaClock(parse<pb::Clock>(R"(name: "clk_a" achieved_frequency: 280.5)"));
  EXPECT_TRUE(treeIs(withQsa(R"(
    clocks {
      name: "clk_a" orig_name: "clk_out1" domain: "d" id: 3 frequency: 300 period: 3.333
      requested_frequency: 300 achieved_frequency: 280.5 status: CLOCK_SCALABLE
    })")));
}

// ---- setComputeUnitBaseAddress -----------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       SetComputeUnitBaseAddressSetsEveryMatchInEveryRegion) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" base_address: "0x0" }
      compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
      compute_units { id: "2" kernel_name: "vadd" name: "vadd_1" }
    }
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" }
    })"));
  diagram.setComputeUnitBaseAddress("vadd", "vadd_1", "0x1000");
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" base_address: "0x1000" }
      compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
      compute_units { id: "2" kernel_name: "vadd" name: "vadd_1" base_address: "0x1000" }
    }
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" base_address: "0x1000" }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       SetComputeUnitBaseAddressNeedsBothKernelNameAndNameToMatch) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_2" base_address: "0x0" }
      compute_units { id: "1" kernel_name: "mmult" name: "vadd_1" base_address: "0x0" }
    })");
  load(tree);
  diagram.setComputeUnitBaseAddress("vadd", "vadd_1", "0x1000");
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       SetComputeUnitBaseAddressComparesEmptyStringsLikeAnyOther) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "" name: "" }
      compute_units { id: "1" kernel_name: "vadd" name: "" }
      compute_units { id: "2" kernel_name: "" name: "vadd_1" }
    })"));
  diagram.setComputeUnitBaseAddress("", "", "0x20");
  diagram.setComputeUnitBaseAddress("vadd", "", "0x30");
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "" name: "" base_address: "0x20" }
      compute_units { id: "1" kernel_name: "vadd" name: "" base_address: "0x30" }
      compute_units { id: "2" kernel_name: "" name: "vadd_1" }
    })")));
}

// ---- The device topology setters ---------------------------------------------------------------

// Three memories, two of which share the tag "HBM[0]".
std::string const threeMemories = R"(
  device_topology {
    id: "0" tag: "HBM[0]" used: "no" size_kb: "1024" base_address: "0x0" slr: "SLR0"
  }
  device_topology {
    id: "1" tag: "DDR[0]" used: "no" size_kb: "2048" base_address: "0x100" slr: "SLR1"
  }
  device_topology {
    id: "2" tag: "HBM[0]" used: "no" size_kb: "1024" base_address: "0x0" slr: "SLR0"
  })";

struct TopologySetter {
  char const* description;
  std::function<void(ProfileAnalyzerSystemDiagram&, std::string const&, std::string const&)> set;
  char const* value;
  char const* expectedQsa;
};

std::vector<TopologySetter> const topologySetters = {
    {"setDeviceTopologyBaseAddress",
     [](ProfileAnalyzerSystemDiagram& d, std::string const& tag, std::string const& value) {
       d.setDeviceTopologyBaseAddress(tag, value);
     },
     "0x4000000000", R"(
       device_topology {
         id: "0" tag: "HBM[0]" used: "no" size_kb: "1024" base_address: "0x4000000000" slr: "SLR0"
       }
       device_topology {
         id: "1" tag: "DDR[0]" used: "no" size_kb: "2048" base_address: "0x100" slr: "SLR1"
       }
       device_topology {
         id: "2" tag: "HBM[0]" used: "no" size_kb: "1024" base_address: "0x4000000000" slr: "SLR0"
       })"},
    {"setDeviceTopologySlr",
     [](ProfileAnalyzerSystemDiagram& d, std::string const& tag, std::string const& value) {
       d.setDeviceTopologySlr(tag, value);
     },
     "SLR2", R"(
       device_topology {
         id: "0" tag: "HBM[0]" used: "no" size_kb: "1024" base_address: "0x0" slr: "SLR2"
       }
       device_topology {
         id: "1" tag: "DDR[0]" used: "no" size_kb: "2048" base_address: "0x100" slr: "SLR1"
       }
       device_topology {
         id: "2" tag: "HBM[0]" used: "no" size_kb: "1024" base_address: "0x0" slr: "SLR2"
       })"},
    {"setDeviceTopologyUsed",
     [](ProfileAnalyzerSystemDiagram& d, std::string const& tag, std::string const& value) {
       d.setDeviceTopologyUsed(tag, value);
     },
     "yes", R"(
       device_topology {
         id: "0" tag: "HBM[0]" used: "yes" size_kb: "1024" base_address: "0x0" slr: "SLR0"
       }
       device_topology {
         id: "1" tag: "DDR[0]" used: "no" size_kb: "2048" base_address: "0x100" slr: "SLR1"
       }
       device_topology {
         id: "2" tag: "HBM[0]" used: "yes" size_kb: "1024" base_address: "0x0" slr: "SLR0"
       })"},
    {"setDeviceTopologySizeKB",
     [](ProfileAnalyzerSystemDiagram& d, std::string const& tag, std::string const& value) {
       d.setDeviceTopologySizeKB(tag, value);
     },
     "262144", R"(
       device_topology {
         id: "0" tag: "HBM[0]" used: "no" size_kb: "262144" base_address: "0x0" slr: "SLR0"
       }
       device_topology {
         id: "1" tag: "DDR[0]" used: "no" size_kb: "2048" base_address: "0x100" slr: "SLR1"
       }
       device_topology {
         id: "2" tag: "HBM[0]" used: "no" size_kb: "262144" base_address: "0x0" slr: "SLR0"
       })"},
};

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       EachTopologySetterSetsOnlyItsOwnFieldOnEveryMemoryWithTheTag) {
  for (auto const& setter : topologySetters) {
    SCOPED_TRACE(setter.description);
    load(withQsa(threeMemories));
    setter.set(diagram, "HBM[0]", setter.value);
    EXPECT_TRUE(treeIs(withQsa(setter.expectedQsa)));
  }
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, TopologySettersOnAnUnknownTagChangeNothing) {
  for (auto const& setter : topologySetters) {
    SCOPED_TRACE(setter.description);
    load(withQsa(threeMemories));
    // Tags are compared exactly: another case is another tag.
    EXPECT_NO_THROW(setter.set(diagram, "PLRAM[0]", setter.value));
    EXPECT_NO_THROW(setter.set(diagram, "hbm[0]", setter.value));
    EXPECT_TRUE(treeIs(withQsa(threeMemories)));
  }
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       SetDeviceTopologyFieldCallsTheSetterOnEveryMemoryWithTheTagInOrder) {
  load(withQsa(threeMemories));
  std::vector<std::string> calls;
  diagram.setDeviceTopologyField(
      "HBM[0]", "value",
      [&calls](ProfileAnalyzerSystemDiagram::DeviceTopologyIterator memory,
               std::string const& value) {
        calls.push_back(memory->id() + "=" + value);
        memory->set_sp_tag("seen");
      });
  EXPECT_EQ(calls, (std::vector<std::string>{"0=value", "2=value"}));
  EXPECT_TRUE(treeIs(withQsa(R"(
    device_topology {
      id: "0" tag: "HBM[0]" used: "no" size_kb: "1024" base_address: "0x0" slr: "SLR0"
      sp_tag: "seen"
    }
    device_topology {
      id: "1" tag: "DDR[0]" used: "no" size_kb: "2048" base_address: "0x100" slr: "SLR1"
    }
    device_topology {
      id: "2" tag: "HBM[0]" used: "no" size_kb: "1024" base_address: "0x0" slr: "SLR0"
      sp_tag: "seen"
    })")));
}

// ---- updateComputeUnit -------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpdateComputeUnitChangesOnlyTheFirstUnitOfThatName) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "mmult_1" }
    }
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_1" }
    }
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
    })"));
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(name: "vadd_1" reset_pins: "ap_rst_n")"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "mmult_1" }
    }
    user_regions {
      compute_units { id: "0" name: "vadd_1" reset_pins: "ap_rst_n" }
      compute_units { id: "1" name: "vadd_1" }
    }
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpdateComputeUnitAppendsTheSlrResourcesBehindTheStoredOnes) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "10" available: "100" } }
      }
    })"));
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    name: "vadd_1"
    slr_resources {
      slr: "SLR0"
      utilization { resource: "LUT" used: "20" available: "100" }
      utilization { resource: "FF" used: "5" available: "200" }
    }
    slr_resources { slr: "SLR1" utilization { resource: "DSP" used: "1" available: "9" } })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "10" available: "100" } }
        slr_resources {
          slr: "SLR0"
          utilization { resource: "LUT" used: "20" available: "100" }
          utilization { resource: "FF" used: "5" available: "200" }
        }
        slr_resources { slr: "SLR1" utilization { resource: "DSP" used: "1" available: "9" } }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpdateComputeUnitTwiceWithTheSameSlrGivesASecondEntry) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  pb::computeUnit const request = parse<pb::computeUnit>(R"(
    name: "vadd_1"
    slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "20" available: "100" } })");
  diagram.updateComputeUnit(request);
  diagram.updateComputeUnit(request);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "20" available: "100" } }
        slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "20" available: "100" } }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpdateComputeUnitAppendsOnlyTheFirstResetPin) {
  load(withQrxBin(R"(
    user_regions { compute_units { id: "0" name: "vadd_1" reset_pins: "rst_old" } })"));
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    name: "vadd_1" reset_pins: "rst_a" reset_pins: "rst_b")"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" reset_pins: "rst_old" reset_pins: "rst_a" }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpdateComputeUnitCopiesTheFirstClockRefOntoEveryStoredClockRefOfThatName) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs { name: "ap_clk" clock_id: "0" requested_frequency: 300 }
        clock_refs { name: "ap_clk_2" clock_id: "1" requested_frequency: 500 }
        clock_refs { name: "ap_clk" clock_id: "2" }
      }
    })"));
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    name: "vadd_1"
    clock_refs {
      name: "ap_clk" clock_id: "9" requested_frequency: 400 achieved_frequency: 350
      plio: "plio_in" annotated_arg: "arg_in"
    }
    clock_refs { name: "ap_clk_2" requested_frequency: 100 plio: "ignored" })"));
  // The second clock reference of the request is ignored, and the clock id never comes over.
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs {
          name: "ap_clk" clock_id: "0" requested_frequency: 400 achieved_frequency: 350
          plio: "plio_in" annotated_arg: "arg_in"
        }
        clock_refs { name: "ap_clk_2" clock_id: "1" requested_frequency: 500 }
        clock_refs {
          name: "ap_clk" clock_id: "2" requested_frequency: 400 achieved_frequency: 350
          plio: "plio_in" annotated_arg: "arg_in"
        }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpdateComputeUnitKeepsStoredValuesForZeroFrequenciesAndEmptyTexts) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs {
          name: "ap_clk" clock_id: "0" requested_frequency: 300 achieved_frequency: 250
          plio: "plio_old" annotated_arg: "arg_old"
        }
      }
    })"));
  // Each update leaves two of the four values alone; the tree is checked after each of them.
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    name: "vadd_1"
    clock_refs { name: "ap_clk" requested_frequency: 0 achieved_frequency: 280 plio: ""
                 annotated_arg: "arg_new" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs {
          name: "ap_clk" clock_id: "0" requested_frequency: 300 achieved_frequency: 280
          plio: "plio_old" annotated_arg: "arg_new"
        }
      }
    })")));
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    name: "vadd_1"
    clock_refs { name: "ap_clk" requested_frequency: 320 achieved_frequency: 0 plio: "plio_new"
                 annotated_arg: "" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs {
          name: "ap_clk" clock_id: "0" requested_frequency: 320 achieved_frequency: 280
          plio: "plio_new" annotated_arg: "arg_new"
        }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpdateComputeUnitWithAnEmptyClockRefNameCopiesNothing) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs { name: "" clock_id: "0" requested_frequency: 100 }
      }
    })");
  load(tree);
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    name: "vadd_1"
    clock_refs { name: "" requested_frequency: 300 achieved_frequency: 200 plio: "p"
                 annotated_arg: "a" })"));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpdateComputeUnitDropsAClockRefThatHasNoStoredPartner) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" clock_refs { name: "ap_clk" clock_id: "0" } }
    })");
  load(tree);
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    name: "vadd_1" clock_refs { name: "ap_clk_9" requested_frequency: 300 })"));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpdateComputeUnitIgnoresIdBaseAddressAndTheOtherFieldsOfTheRequest) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" kernel_name: "vadd" name: "vadd_1" base_address: "0x10"
        actual_resources { lut: "5" }
      }
    })");
  load(tree);
  diagram.updateComputeUnit(parse<pb::computeUnit>(R"(
    id: "7" kernel_name: "other" name: "vadd_1" base_address: "0x99"
    actual_resources { lut: "1" design_state: DESIGN_STATE_ROUTED })"));
  EXPECT_TRUE(treeIs(tree));
}

// ---- upsertConnectivity ------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityMergesIntoTheConnectionWhoseIdsStandForTheSameComputeUnits) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" }
      compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" arg_index: "0" arg_name: "a" }
        destination { type: "compute_unit" id: "1" arg_index: "1" }
      }
    })"));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" pin: "out_r" arg_name: "b" mode: "write" }
    destination { type: "compute_unit" instance: "vadd_2" pin: "in_r" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" }
      compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
      connectivity {
        id: "0"
        source {
          type: "compute_unit" id: "0" arg_index: "0" arg_name: "b" mode: "write"
          instance: "vadd_1" pin: "out_r"
        }
        destination { type: "compute_unit" id: "1" arg_index: "1" instance: "vadd_2" pin: "in_r" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityInTheOtherDirectionIsANewConnection) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" }
        destination { type: "compute_unit" id: "1" }
      }
    })"));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_2" pin: "out" }
    destination { type: "compute_unit" instance: "vadd_1" pin: "in" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" }
        destination { type: "compute_unit" id: "1" }
      }
      connectivity {
        id: "1"
        source { type: "compute_unit" id: "1" instance: "vadd_2" pin: "out" }
        destination { type: "compute_unit" id: "0" instance: "vadd_1" pin: "in" }
      }
    })")));
}

// The stored ids of a connection stand for the compute units of its own region.
std::string const connectionInTheSecondRegion = R"(
  user_regions {
    compute_units { id: "0" name: "vadd_1" }
    compute_units { id: "1" name: "vadd_2" }
  }
  user_regions {
    compute_units { id: "0" name: "mmult_1" }
    compute_units { id: "1" name: "mmult_2" }
    connectivity {
      id: "0"
      source { type: "compute_unit" id: "0" }
      destination { type: "compute_unit" id: "1" }
    }
  })";

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityMatchesAConnectionOfTheSecondRegionByThatRegionsUnits) {
  load(withQrxBin(connectionInTheSecondRegion));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "mmult_1" pin: "out" }
    destination { type: "compute_unit" instance: "mmult_2" pin: "in" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
    }
    user_regions {
      compute_units { id: "0" name: "mmult_1" }
      compute_units { id: "1" name: "mmult_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" instance: "mmult_1" pin: "out" }
        destination { type: "compute_unit" id: "1" instance: "mmult_2" pin: "in" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityDoesNotMatchByUnitsOfAnotherRegionThatShareTheIds) {
  load(withQrxBin(connectionInTheSecondRegion));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" pin: "out" }
    destination { type: "compute_unit" instance: "vadd_2" pin: "in" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" instance: "vadd_1" pin: "out" }
        destination { type: "compute_unit" id: "1" instance: "vadd_2" pin: "in" }
      }
    }
    user_regions {
      compute_units { id: "0" name: "mmult_1" }
      compute_units { id: "1" name: "mmult_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" }
        destination { type: "compute_unit" id: "1" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityStoresAMemoryConnectionAgainOnEveryUpsert) {
  load(withQrxBin(twoUnits));
  pb::Connectivity const request = parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" pin: "m_axi_gmem" }
    destination { type: "memory" instance: "HBM[0]" })");
  diagram.upsertConnectivity(request);
  diagram.upsertConnectivity(request);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" }
      compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" instance: "vadd_1" pin: "m_axi_gmem" }
        destination { type: "memory" instance: "HBM[0]" }
      }
      connectivity {
        id: "1"
        source { type: "compute_unit" id: "0" instance: "vadd_1" pin: "m_axi_gmem" }
        destination { type: "memory" instance: "HBM[0]" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityNeverMatchesAStoredConnectionThatEndsAtAMemory) {
  // The stored destination id "1" is also the id of vadd_2, but a memory end is no compute unit.
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" }
        destination { type: "memory" id: "1" }
      }
    })"));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" pin: "out" }
    destination { type: "compute_unit" instance: "vadd_2" pin: "in" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "0" }
        destination { type: "memory" id: "1" }
      }
      connectivity {
        id: "1"
        source { type: "compute_unit" id: "0" instance: "vadd_1" pin: "out" }
        destination { type: "compute_unit" id: "1" instance: "vadd_2" pin: "in" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityNumbersByTheCountNotByTheStoredIds) {
  load(withQrxBin(R"(
    user_regions {
      connectivity { id: "7" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "8" source { type: "memory" } destination { type: "memory" } }
    })"));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "ip" instance: "axi_ic" } destination { type: "memory" instance: "DDR[0]" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      connectivity { id: "7" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "8" source { type: "memory" } destination { type: "memory" } }
      connectivity {
        id: "2"
        source { type: "ip" instance: "axi_ic" }
        destination { type: "memory" instance: "DDR[0]" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityCountsOnlyTheFirstRegionsConnections) {
  load(withQrxBin(R"(
    user_regions {
      connectivity { id: "0" source { type: "memory" } destination { type: "memory" } }
    }
    user_regions {
      connectivity { id: "0" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "1" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "2" source { type: "memory" } destination { type: "memory" } }
    })"));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "bd_clock" instance: "clk_wiz" pin: "clk_out1" }
    destination { type: "ip_clock" instance: "axi_ic" pin: "aclk" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      connectivity { id: "0" source { type: "memory" } destination { type: "memory" } }
      connectivity {
        id: "1"
        source { type: "bd_clock" instance: "clk_wiz" pin: "clk_out1" }
        destination { type: "ip_clock" instance: "axi_ic" pin: "aclk" }
      }
    }
    user_regions {
      connectivity { id: "0" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "1" source { type: "memory" } destination { type: "memory" } }
      connectivity { id: "2" source { type: "memory" } destination { type: "memory" } }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityTakesComputeUnitIdsAsGetComputeUnitIdFindsThem) {
  // vadd_1 of the first region has no id, so its id comes from the second region.
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "" name: "vadd_1" }
      compute_units { id: "5" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
    }
    user_regions {
      compute_units { id: "7" name: "vadd_1" }
    })"));
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" pin: "out" }
    destination { type: "compute_unit" instance: "vadd_2" pin: "in" })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "" name: "vadd_1" }
      compute_units { id: "5" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "7" instance: "vadd_1" pin: "out" }
        destination { type: "compute_unit" id: "1" instance: "vadd_2" pin: "in" }
      }
    }
    user_regions {
      compute_units { id: "7" name: "vadd_1" }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityCopiesOnlyTypeInstanceAndPinOntoANewConnection) {
  load(withQrxBin(twoUnits));
  // The request's own ids are not used: a compute unit's is looked up, any other end's is empty.
  diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    id: "42"
    source {
      type: "compute_unit" id: "99" arg_index: "2" arg_name: "in1" mode: "read"
      instance: "vadd_2" pin: "m_axi_gmem0"
    }
    destination {
      type: "memory" id: "12" arg_index: "3" arg_name: "x" mode: "write"
      instance: "HBM[3]" pin: "S00"
    })"));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" }
      compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
      connectivity {
        id: "0"
        source { type: "compute_unit" id: "1" instance: "vadd_2" pin: "m_axi_gmem0" }
        destination { type: "memory" instance: "HBM[3]" pin: "S00" }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       UpsertConnectivityBetweenComputeUnitsWithoutUserRegionAddsNothing) {
  std::string const tree = withQrxBin(R"(generated_by { name: "v++" })");
  load(tree);
  EXPECT_NO_THROW(diagram.upsertConnectivity(parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" }
    destination { type: "compute_unit" instance: "vadd_2" })")));
  EXPECT_TRUE(treeIs(tree));
}

// ---- clearComputeUnitResourceUse and upsertKernelUtilization -----------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       ClearComputeUnitResourceUseClearsEveryUnitOfThatNameInEveryRegion) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" reset_pins: "ap_rst_n"
        actual_resources { lut: "10" design_state: DESIGN_STATE_ROUTED }
        actual_resources { lut: "12" design_state: DESIGN_STATE_SYNTHESIZED }
      }
      compute_units { id: "1" name: "vadd_2" actual_resources { lut: "20" } }
      compute_units { id: "2" name: "vadd_1" actual_resources { lut: "30" } }
    }
    user_regions {
      compute_units { id: "0" name: "vadd_1" actual_resources { lut: "40" } }
    })"));
  diagram.clearComputeUnitResourceUse("vadd_1");
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" reset_pins: "ap_rst_n" }
      compute_units { id: "1" name: "vadd_2" actual_resources { lut: "20" } }
      compute_units { id: "2" name: "vadd_1" }
    }
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       ClearComputeUnitResourceUseWithAnEmptyNameDoesNothing) {
  // Not even a compute unit that has an empty name loses its resources.
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "" actual_resources { lut: "5" } }
      compute_units { id: "1" name: "vadd_1" actual_resources { lut: "6" } }
    })");
  load(tree);
  diagram.clearComputeUnitResourceUse("");
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, UpsertKernelUtilizationOfAnEmptyMapChangesNothing) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" actual_resources { lut: "5" } }
    })");
  load(tree);
  diagram.upsertKernelUtilization({});
  EXPECT_TRUE(treeIs(tree));
}

// ---- Reading operations ------------------------------------------------------------------------

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       ComputeUnitNamesListsEveryUnitInOrderWithDuplicates) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_2" }
      compute_units { id: "1" name: "vadd_1" }
      compute_units { id: "2" name: "vadd_2" }
    }
    user_regions { name: "without units" }
    user_regions {
      compute_units { id: "0" name: "mmult_1" }
      compute_units { id: "1" name: "" }
      compute_units { id: "2" name: "vadd_1" }
    })"));
  EXPECT_EQ(diagram.computeUnitNames(),
            (std::vector<std::string>{"vadd_2", "vadd_1", "vadd_2", "mmult_1", "", "vadd_1"}));
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       KernelNameFromComputeUnitNameIsTheTextBeforeTheFirstUnderscore) {
  // The stored tree is not asked: none of these names is in it.
  load(withQrxBin(R"(user_regions { compute_units { id: "0" kernel_name: "k" name: "vadd_1" } })"));
  struct Row {
    char const* computeUnitName;
    char const* kernelName;
  };
  Row const rows[] = {
      {"vadd_1", "vadd"}, {"vadd", "vadd"}, {"_x", ""},       {"a_b_c", "a"},
      {"", ""},           {"mm_", "mm"},    {"__", ""},       {"krnl_vadd_12", "krnl"},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(diagram.kernelNameFromComputeUnitName(row.computeUnitName), row.kernelName)
        << "for \"" << row.computeUnitName << "\"";
  }
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, ToDesignStateKnowsExactlyThreeWords) {
  struct Row {
    char const* word;
    int value;
  };
  Row const rows[] = {
      {"Synthesized", 1}, {"Fully Placed", 2}, {"Routed", 3},          {"routed", 0},
      {"Placed", 0},      {"", 0},             {"Fully  Placed", 0},   {"Routed ", 0},
  };
  for (auto const& row : rows) {
    EXPECT_EQ(static_cast<int>(ProfileAnalyzerSystemDiagram::toDesignState(row.word)), row.value)
        << "for \"" << row.word << "\"";
  }
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, GetComputeUnitIdGivesTheIdOfTheFirstUnitOfThatName) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "4" name: "vadd_2" }
      compute_units { id: "3" name: "vadd_1" }
      compute_units { id: "5" name: "vadd_1" }
    }
    user_regions {
      compute_units { id: "9" name: "vadd_1" }
      compute_units { id: "8" name: "mmult_1" }
    })"));
  EXPECT_EQ(diagram.getComputeUnitId("vadd_1"), "3");
  EXPECT_EQ(diagram.getComputeUnitId("vadd_2"), "4");
  EXPECT_EQ(diagram.getComputeUnitId("mmult_1"), "8");
  EXPECT_EQ(diagram.getComputeUnitId("ghost_1"), "");
  EXPECT_EQ(diagram.getComputeUnitId(""), "");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitIdGoesOnToTheNextRegionWhenTheFirstUnitHasNoId) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "" name: "vadd_1" }
      compute_units { id: "5" name: "vadd_1" }
    }
    user_regions {
      compute_units { id: "9" name: "vadd_1" }
    })"));
  EXPECT_EQ(diagram.getComputeUnitId("vadd_1"), "9");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitIdDoesNotLookAtTheNextUnitOfARegionWhoseFirstUnitHasNoId) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "" name: "vadd_1" }
      compute_units { id: "5" name: "vadd_1" }
    })"));
  EXPECT_EQ(diagram.getComputeUnitId("vadd_1"), "");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitClockPortNameGivesTheFirstClockRefWithARequestedFrequency) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs { name: "ap_clk" requested_frequency: 0 achieved_frequency: 300 }
        clock_refs { name: "ap_clk_2" requested_frequency: 300 }
        clock_refs { name: "ap_clk_3" requested_frequency: 400 }
      }
    })"));
  EXPECT_EQ(diagram.getComputeUnitClockPortName("vadd_1"), "ap_clk_2");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitClockPortNameGoesOnToTheNextUnitOfThatName) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" clock_refs { name: "ap_clk" } }
      compute_units { id: "1" name: "vadd_2" clock_refs { name: "other" requested_frequency: 100 } }
    }
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_1" clock_refs { name: "clk_r1" requested_frequency: 250 } }
    })"));
  EXPECT_EQ(diagram.getComputeUnitClockPortName("vadd_1"), "clk_r1");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitClockPortNameStopsAtAQualifyingReferenceWithAnEmptyName) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" clock_refs { name: "" requested_frequency: 100 } }
      compute_units { id: "1" name: "vadd_1" clock_refs { name: "late" requested_frequency: 250 } }
    })"));
  EXPECT_EQ(diagram.getComputeUnitClockPortName("vadd_1"), "");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitClockPortNameIsEmptyWhenNoClockRefQualifies) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" clock_refs { name: "ap_clk" achieved_frequency: 300 } }
      compute_units { id: "1" name: "vadd_2" clock_refs { name: "ap_clk" requested_frequency: 100 } }
    })"));
  EXPECT_EQ(diagram.getComputeUnitClockPortName("vadd_1"), "");
  EXPECT_EQ(diagram.getComputeUnitClockPortName("ghost_1"), "");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitClockInfoReadsTheFirstClockRefOfThatNameInTheUnitOfThatId) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "1" name: "vadd_2"
        clock_refs { name: "ap_clk" clock_id: "9" requested_frequency: 900 }
      }
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs { name: "ap_clk_2" clock_id: "5" requested_frequency: 100 }
        clock_refs { name: "ap_clk" clock_id: "1" requested_frequency: 300
                     achieved_frequency: 287.456 }
        clock_refs { name: "ap_clk" clock_id: "2" requested_frequency: 500 }
      }
    })"));
  std::string clockId;
  std::string requested;
  std::string achieved;
  diagram.getComputeUnitClockInfo("0", "ap_clk", clockId, requested, achieved);
  EXPECT_EQ(clockId, "1");
  EXPECT_EQ(requested, "300.00");
  EXPECT_EQ(achieved, "287.46");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitClockInfoGoesOnWhileTheClockIdIsEmpty) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs { name: "ap_clk" clock_id: "" requested_frequency: 100 }
      }
    }
    user_regions {
      compute_units {
        id: "0" name: "mmult_1"
        clock_refs { name: "ap_clk" clock_id: "4" requested_frequency: 200 achieved_frequency: 150 }
      }
      compute_units {
        id: "0" name: "conv_1"
        clock_refs { name: "ap_clk" clock_id: "8" requested_frequency: 999 }
      }
    })"));
  std::string clockId;
  std::string requested;
  std::string achieved;
  diagram.getComputeUnitClockInfo("0", "ap_clk", clockId, requested, achieved);
  EXPECT_EQ(clockId, "4");
  EXPECT_EQ(requested, "200.00");
  EXPECT_EQ(achieved, "150.00");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetComputeUnitClockInfoLeavesTheOutputsAsTheyCameWhenNothingMatches) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        clock_refs { name: "ap_clk" clock_id: "1" requested_frequency: 300 }
      }
    })"));
  std::string clockId = "kept id";
  std::string requested = "kept requested";
  std::string achieved = "kept achieved";
  diagram.getComputeUnitClockInfo("7", "ap_clk", clockId, requested, achieved);
  EXPECT_EQ(clockId, "kept id");
  EXPECT_EQ(requested, "kept requested");
  EXPECT_EQ(achieved, "kept achieved");

  clockId = "";
  diagram.getComputeUnitClockInfo("0", "ap_clk_2", clockId, requested, achieved);
  EXPECT_EQ(clockId, "");
  EXPECT_EQ(requested, "kept requested");
  EXPECT_EQ(achieved, "kept achieved");
}

// Four platform clocks: two share the id 3, one has the id -1 that stands for "none given".
std::string const fourClocks = R"(
  clocks { name: "clk_a" id: 1 frequency: 100 }
  clocks { name: "clk_b" id: 3 frequency: 300 requested_frequency: 250 }
  clocks { name: "clk_c" id: 3 frequency: 333 requested_frequency: 333 achieved_frequency: 333 }
  clocks { name: "clk_d" id: -1 frequency: -1 achieved_frequency: 12.345 })";

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetQsaClockFrequenciesReadsTheFirstClockOfThatId) {
  load(withQsa(fourClocks));
  std::string frequency = "old frequency";
  std::string requested = "old requested";
  std::string achieved = "old achieved";
  diagram.getQsaClockFrequencies("3", frequency, requested, achieved);
  EXPECT_EQ(frequency, "300.00");
  EXPECT_EQ(requested, "250.00");
  EXPECT_EQ(achieved, "");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest, GetQsaClockFrequenciesMatchesMinusOne) {
  load(withQsa(fourClocks));
  std::string frequency;
  std::string requested = "old requested";
  std::string achieved;
  diagram.getQsaClockFrequencies("-1", frequency, requested, achieved);
  EXPECT_EQ(frequency, "-1.00");
  EXPECT_EQ(requested, "");
  EXPECT_EQ(achieved, "12.35");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetQsaClockFrequenciesReadsTheIdTheWayStoiDoes) {
  load(withQsa(fourClocks));
  // Leading white space and a sign are read, and reading stops at the first non-digit.
  for (char const* id : {" 3", "+3", "3abc", "03", "\t3 "}) {
    SCOPED_TRACE(std::string("id \"") + id + "\"");
    std::string frequency;
    std::string requested;
    std::string achieved;
    diagram.getQsaClockFrequencies(id, frequency, requested, achieved);
    EXPECT_EQ(frequency, "300.00");
    EXPECT_EQ(requested, "250.00");
    EXPECT_EQ(achieved, "");
  }
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetQsaClockFrequenciesThrowsForATextThatIsNoNumberWhenThereIsAClock) {
  load(withQsa(R"(clocks { name: "clk_a" id: 1 frequency: 100 })"));
  std::string frequency;
  std::string requested;
  std::string achieved;
  EXPECT_THROW(diagram.getQsaClockFrequencies("abc", frequency, requested, achieved),
               std::invalid_argument);
  EXPECT_THROW(diagram.getQsaClockFrequencies("", frequency, requested, achieved),
               std::invalid_argument);
  EXPECT_THROW(diagram.getQsaClockFrequencies("99999999999", frequency, requested, achieved),
               std::out_of_range);
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetQsaClockFrequenciesPassesQuietlyOverAnyTextWhenThereIsNoClock) {
  load(withQsa(R"(name: "platform without clocks")"));
  std::string frequency = "f";
  std::string requested = "r";
  std::string achieved = "a";
  EXPECT_NO_THROW(diagram.getQsaClockFrequencies("abc", frequency, requested, achieved));
  EXPECT_NO_THROW(diagram.getQsaClockFrequencies("99999999999", frequency, requested, achieved));
  EXPECT_EQ(frequency, "f");
  EXPECT_EQ(requested, "r");
  EXPECT_EQ(achieved, "a");
}

TEST_F(ProfileAnalyzerSystemDiagramOperationsTest,
       GetQsaClockFrequenciesLeavesTheOutputsAsTheyCameWhenNoClockHasThatId) {
  load(withQsa(fourClocks));
  std::string frequency = "f";
  std::string requested = "r";
  std::string achieved = "a";
  diagram.getQsaClockFrequencies("2", frequency, requested, achieved);
  EXPECT_EQ(frequency, "f");
  EXPECT_EQ(requested, "r");
  EXPECT_EQ(achieved, "a");
}

}  // namespace
