#include "views/DiagramGraphBuilder.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/Golden.h"
#include "tests/support/StoredDiagrams.h"
#include "views/IpLayout.h"

namespace qvviews {
namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using NodeKind = DiagramGraph::NodeKind;
using EdgeKind = DiagramGraph::EdgeKind;

class DiagramGraphBuilderTest : public ::testing::Test {
 protected:
  // The example design after the whole flow of qvdiag build, as the reviewed golden file keeps it.
  static pb::outerContainer example() {
    return exampleDiagram();
  }
  static IpLayout exampleLayout() {
    return IpLayout::read(qvtest::exampleFile("design/vector_pipeline.rtd.json"));
  }
  static DiagramGraph build(pb::outerContainer const& diagram, IpLayout layout = IpLayout()) {
    DiagramGraphBuilder::Options options;
    options.ipLayout = std::move(layout);
    return DiagramGraphBuilder(options).build(diagram);
  }

  static std::vector<std::string> nodeIds(DiagramGraph const& graph) {
    std::vector<std::string> ids;
    for (DiagramGraph::Node const& node : graph.nodes) ids.push_back(node.id);
    return ids;
  }
  // "<from> -> <to> [<arguments>]" per edge of `kind`.
  static std::vector<std::string> edges(DiagramGraph const& graph, EdgeKind kind) {
    std::vector<std::string> texts;
    for (DiagramGraph::Edge const& edge : graph.edges) {
      if (edge.kind != kind) continue;
      std::string text = edge.from + " -> " + edge.to + " [";
      for (std::size_t i = 0; i < edge.arguments.size(); ++i) {
        text += (i == 0 ? "" : ", ") + edge.arguments[i];
      }
      texts.push_back(text + "]");
    }
    return texts;
  }
  static std::vector<std::string> clusterIds(DiagramGraph const& graph) {
    std::vector<std::string> ids;
    for (DiagramGraph::Cluster const& cluster : graph.clusters) ids.push_back(cluster.id);
    return ids;
  }

  // Builders of hand-made diagrams.
  pb::Qsa& qsa() { return *diagram.mutable_system_diagram_metadata()->mutable_qsa(); }
  pb::userRegion& region() {
    pb::qrxBin& bin = *diagram.mutable_system_diagram_metadata()->mutable_qrxbin();
    return bin.user_regions_size() == 0 ? *bin.add_user_regions() : *bin.mutable_user_regions(0);
  }
  void memory(std::string const& tag, pb::MemoryType type, std::string const& slr,
              std::string const& used) {
    pb::deviceTopology& bank = *qsa().add_device_topology();
    bank.set_id(std::to_string(qsa().device_topology_size() - 1));
    bank.set_tag(tag);
    bank.set_type(type);
    bank.set_slr(slr);
    bank.set_used(used);
    bank.set_size_kb("262144");
    bank.set_base_address("0x" + std::to_string(qsa().device_topology_size() - 1) + "0000000");
  }
  pb::computeUnit& computeUnit(std::string const& kernel, std::string const& name) {
    pb::computeUnit& unit = *region().add_compute_units();
    unit.set_id(std::to_string(region().compute_units_size() - 1));
    unit.set_kernel_name(kernel);
    unit.set_name(name);
    return unit;
  }
  void kernel(std::string const& name) { region().add_kernels()->set_name(name); }
  void toMemory(std::string const& unitId, std::string const& argument,
                std::string const& memoryId) {
    pb::Connectivity& connection = *region().add_connectivity();
    connection.mutable_source()->set_type("compute_unit");
    connection.mutable_source()->set_id(unitId);
    connection.mutable_source()->set_arg_name(argument);
    connection.mutable_destination()->set_type("memory");
    connection.mutable_destination()->set_id(memoryId);
  }
  void slr(std::string const& name, std::string const& lut) {
    pb::bySlr& entry = *region().mutable_available_resources()->add_by_slr();
    entry.set_slr(name);
    entry.set_lut(lut);
    entry.set_reg("2000");
    entry.set_bram("100");
    entry.set_dsp("10");
    entry.set_uram("0");
  }

  pb::outerContainer diagram;
};

TEST_F(DiagramGraphBuilderTest, ExampleWithItsIpLayoutHasEveryKernelComputeUnitAndMemory) {
  DiagramGraph const graph = build(example(), exampleLayout());
  EXPECT_EQ(graph.title, "vector_pipeline on qv_accel_h2_gen3x16");
  EXPECT_EQ(graph.notes, std::vector<std::string>{});
  EXPECT_EQ(nodeIds(graph),
            (std::vector<std::string>{
                "kernel:vadd", "kernel:mmult", "kernel:producer", "kernel:consumer",
                "cu:vadd_1", "cu:vadd_2", "cu:mmult_1", "cu:mmult_2", "cu:producer_1",
                "cu:consumer_1", "mem:DDR[0]", "mem:DDR[1]", "mem:DDR[2]", "mem:DDR[3]",
                "mem:HBM[0]", "mem:HBM[1]", "mem:HBM[2]", "mem:HBM[3]", "mem:HBM[4]",
                "mem:HBM[5]", "mem:HBM[6]", "mem:HBM[7]", "mem:HBM[8..31]"}));
  EXPECT_EQ(clusterIds(graph), (std::vector<std::string>{"slr:SLR0", "slr:SLR1"}));
  EXPECT_EQ(edges(graph, EdgeKind::kInstance),
            (std::vector<std::string>{
                "kernel:vadd -> cu:vadd_1 []", "kernel:vadd -> cu:vadd_2 []",
                "kernel:mmult -> cu:mmult_1 []", "kernel:mmult -> cu:mmult_2 []",
                "kernel:producer -> cu:producer_1 []", "kernel:consumer -> cu:consumer_1 []"}));
  EXPECT_EQ(edges(graph, EdgeKind::kMemory),
            (std::vector<std::string>{
                "cu:vadd_1 -> mem:DDR[0] [in1, in2]", "cu:vadd_1 -> mem:DDR[1] [out]",
                "cu:vadd_2 -> mem:DDR[2] [in1, in2, out]", "cu:mmult_1 -> mem:HBM[0] [a]",
                "cu:mmult_1 -> mem:HBM[1] [b]", "cu:mmult_1 -> mem:HBM[2] [c]",
                "cu:mmult_2 -> mem:HBM[3] [a]", "cu:mmult_2 -> mem:HBM[4] [b]",
                "cu:mmult_2 -> mem:HBM[5] [c]", "cu:producer_1 -> mem:HBM[6] [in]",
                "cu:consumer_1 -> mem:HBM[7] [out]"}));
  // The stream comes twice in the diagram: from the run-time data and by instance and pin.
  EXPECT_EQ(edges(graph, EdgeKind::kStream),
            (std::vector<std::string>{"cu:producer_1 -> cu:consumer_1 [out -> in]"}));
}

TEST_F(DiagramGraphBuilderTest, ExampleComputeUnitCarriesClocksAndResourcesAsSharesOfItsSlr) {
  DiagramGraph const graph = build(example(), exampleLayout());
  DiagramGraph::Node const* unit = graph.node("cu:producer_1");
  ASSERT_NE(unit, nullptr);
  EXPECT_EQ(unit->kind, NodeKind::kComputeUnit);
  EXPECT_EQ(unit->kernel, "producer");
  EXPECT_EQ(unit->baseAddress, "0x1c40000");
  EXPECT_EQ(unit->slr, "SLR0");
  EXPECT_EQ(unit->slrFrom, "resources");
  EXPECT_EQ(unit->cluster, "slr:SLR0");
  ASSERT_EQ(unit->clocks.size(), 1u);
  EXPECT_EQ(unit->clocks[0].pin, "ap_clk");
  EXPECT_EQ(unit->clocks[0].clockId, "1");
  EXPECT_EQ(unit->clocks[0].platformClock, "clk_kernel_01");
  EXPECT_EQ(unit->clocks[0].requested, 500);
  EXPECT_EQ(unit->clocks[0].achieved, 450);
  EXPECT_EQ(unit->clocks[0].platform, 500);
  ASSERT_EQ(unit->resources.size(), 3u);
  EXPECT_EQ(unit->resources[0].state, "Synthesized");
  EXPECT_EQ(unit->resources[1].state, "Fully Placed");
  EXPECT_EQ(unit->resources[2].state, "Routed");
  DiagramGraph::Amount const& lut = unit->resources[2].amounts[0];
  EXPECT_EQ(lut.resource, "LUT");
  EXPECT_EQ(lut.used, "1394");
  EXPECT_EQ(lut.available, "369600");
  EXPECT_DOUBLE_EQ(lut.percent, 1394.0 / 369600.0 * 100.0);
  DiagramGraph::Amount const& uram = unit->resources[2].amounts[4];
  EXPECT_EQ(uram.resource, "URAM");
  EXPECT_EQ(uram.used, "0");
  EXPECT_EQ(uram.available, "288");
  EXPECT_DOUBLE_EQ(uram.percent, 0.0);

  // A clock without a frequency of its own or of its platform clock stays at 0.
  DiagramGraph::Node const* mmult = graph.node("cu:mmult_1");
  ASSERT_NE(mmult, nullptr);
  ASSERT_EQ(mmult->clocks.size(), 2u);
  EXPECT_EQ(mmult->clocks[1].pin, "ap_clk_2");
  EXPECT_EQ(mmult->clocks[1].requested, 0);
  EXPECT_EQ(mmult->clocks[1].achieved, 0);
  EXPECT_EQ(mmult->clocks[1].platform, 500);
}

TEST_F(DiagramGraphBuilderTest, ExampleSlrClustersSumTheirComputeUnitsLatestState) {
  DiagramGraph const graph = build(example(), exampleLayout());
  DiagramGraph::Cluster const* slr0 = graph.cluster("slr:SLR0");
  ASSERT_NE(slr0, nullptr);
  EXPECT_EQ(slr0->name, "SLR0");
  EXPECT_EQ(slr0->computeUnits, 5);
  ASSERT_EQ(slr0->use.size(), 5u);
  // Routed LUT of vadd_1, mmult_1, mmult_2, producer_1, consumer_1.
  EXPECT_EQ(slr0->use[0].used, "42215");
  EXPECT_EQ(slr0->use[0].available, "369600");
  EXPECT_EQ(slr0->use[2].used, "69");
  // DSP, 0 + 160 + 160 + 0 + 3 of 2616, is fuller than BRAM, 69 of 600.
  EXPECT_EQ(slr0->use[3].used, "323");
  EXPECT_DOUBLE_EQ(slr0->fullness, 323.0 / 2616.0 * 100.0);
  DiagramGraph::Cluster const* slr1 = graph.cluster("slr:SLR1");
  ASSERT_NE(slr1, nullptr);
  EXPECT_EQ(slr1->computeUnits, 1);
  EXPECT_EQ(slr1->use[0].used, "2421");
}

TEST_F(DiagramGraphBuilderTest, ExampleFoldsTheUnusedHbmChannelsButNotALoneUnusedBank) {
  DiagramGraph const graph = build(example(), exampleLayout());
  DiagramGraph::Node const* group = graph.node("mem:HBM[8..31]");
  ASSERT_NE(group, nullptr);
  EXPECT_EQ(group->kind, NodeKind::kMemoryGroup);
  EXPECT_EQ(group->banks, 24);
  EXPECT_EQ(group->memoryType, "HBM");
  EXPECT_EQ(group->memorySlr, "SLR0");
  EXPECT_EQ(group->cluster, "slr:SLR0");
  EXPECT_EQ(group->sizeKb, "6291456");
  EXPECT_EQ(group->tags.front(), "HBM[8]");
  EXPECT_EQ(group->tags.back(), "HBM[31]");
  DiagramGraph::Node const* lone = graph.node("mem:DDR[3]");
  ASSERT_NE(lone, nullptr);
  EXPECT_EQ(lone->kind, NodeKind::kMemory);
  EXPECT_FALSE(lone->used);
  EXPECT_EQ(lone->cluster, "slr:SLR1");
  // The streaming connection's memory entry is the stream edge, not a memory.
  EXPECT_EQ(graph.node("mem:producer_1.out-consumer_1.in"), nullptr);
  EXPECT_EQ(graph.count(NodeKind::kMemory), 12u);
  EXPECT_EQ(graph.count(NodeKind::kMemoryGroup), 1u);
}

TEST_F(DiagramGraphBuilderTest, WithoutTheIpLayoutConnectionEndsAreComputeUnitIds) {
  // The example's run-time data has plain IP blocks at positions 0 and 3, so its positions are
  // not compute unit ids: IP 1 (vadd_1) reads as compute unit 1 (vadd_2), and IPs 6 and 7 name
  // no compute unit. The picture says so instead of guessing.
  DiagramGraph const graph = build(example());
  EXPECT_EQ(graph.notes, (std::vector<std::string>{
                             "3 connections name no compute unit or memory of this diagram."}));
  std::vector<std::string> const memoryEdges = edges(graph, EdgeKind::kMemory);
  ASSERT_EQ(memoryEdges.size(), 9u);
  EXPECT_EQ(memoryEdges[0], "cu:vadd_2 -> mem:DDR[0] [in1, in2]");
  // The stream told by instance and pin still finds its ends by name.
  EXPECT_EQ(edges(graph, EdgeKind::kStream),
            (std::vector<std::string>{"cu:producer_1 -> cu:consumer_1 [out -> in]"}));
}

TEST_F(DiagramGraphBuilderTest, EmptyDiagramGivesOneNoteNode) {
  DiagramGraph const graph = build(freshDiagram());
  EXPECT_EQ(graph.title, "system diagram");
  ASSERT_EQ(graph.nodes.size(), 1u);
  EXPECT_EQ(graph.nodes[0].kind, NodeKind::kNote);
  EXPECT_EQ(graph.nodes[0].id, "note:empty");
  EXPECT_EQ(graph.nodes[0].name, "This diagram has no kernels, compute units or memories.");
  EXPECT_TRUE(graph.edges.empty());
  EXPECT_TRUE(graph.clusters.empty());
}

TEST_F(DiagramGraphBuilderTest, ComputeUnitSlrComesFromResourcesThenMemoriesElseUnplaced) {
  slr("SLR0", "1000");
  slr("SLR1", "1000");
  memory("DDR[0]", pb::MEM_DDR4, "SLR0", "yes");
  memory("DDR[1]", pb::MEM_DDR4, "SLR1", "yes");
  memory("PLRAM[0]", pb::MEM_BRAM, "", "yes");
  kernel("k");
  pb::computeUnit& placed = computeUnit("k", "placed");
  placed.add_slr_resources()->set_slr("SLR1");
  computeUnit("k", "byMemory");
  computeUnit("k", "nowhere");
  computeUnit("k", "plramOnly");
  toMemory("0", "a", "0");  // resources win over memories
  toMemory("1", "a", "1");
  toMemory("1", "b", "0");
  toMemory("1", "c", "1");
  toMemory("3", "a", "2");  // a memory without SLR places nothing
  DiagramGraph const graph = build(diagram);

  EXPECT_EQ(graph.node("cu:placed")->slr, "SLR1");
  EXPECT_EQ(graph.node("cu:placed")->slrFrom, "resources");
  EXPECT_EQ(graph.node("cu:byMemory")->slr, "SLR1");
  EXPECT_EQ(graph.node("cu:byMemory")->slrFrom, "memories");
  EXPECT_EQ(graph.node("cu:nowhere")->slr, "");
  EXPECT_EQ(graph.node("cu:nowhere")->cluster, "slr:unplaced");
  EXPECT_EQ(graph.node("cu:plramOnly")->cluster, "slr:unplaced");
  EXPECT_EQ(graph.node("mem:PLRAM[0]")->cluster, "");
  EXPECT_EQ(clusterIds(graph),
            (std::vector<std::string>{"slr:SLR0", "slr:SLR1", "slr:unplaced"}));
  EXPECT_EQ(graph.cluster("slr:SLR0")->computeUnits, 0);
  EXPECT_EQ(graph.cluster("slr:SLR1")->computeUnits, 2);
  EXPECT_EQ(graph.cluster("slr:unplaced")->computeUnits, 2);
  EXPECT_EQ(graph.cluster("slr:unplaced")->fullness, -1);
  EXPECT_EQ(edges(graph, EdgeKind::kMemory),
            (std::vector<std::string>{"cu:placed -> mem:DDR[0] [a]",
                                      "cu:byMemory -> mem:DDR[1] [a, c]",
                                      "cu:byMemory -> mem:DDR[0] [b]",
                                      "cu:plramOnly -> mem:PLRAM[0] [a]"}));
}

TEST_F(DiagramGraphBuilderTest, PlatformWithOneSlrPlacesEveryComputeUnitThere) {
  slr("SLR0", "1000");
  kernel("k");
  computeUnit("k", "a");
  DiagramGraph const graph = build(diagram);
  EXPECT_EQ(graph.node("cu:a")->slr, "SLR0");
  EXPECT_EQ(graph.node("cu:a")->slrFrom, "only SLR");
  EXPECT_EQ(clusterIds(graph), std::vector<std::string>{"slr:SLR0"});
}

TEST_F(DiagramGraphBuilderTest, UnusedBanksFoldPerTypeAndSlrUnlessConnected) {
  for (int i = 0; i < 8; ++i) {
    memory("HBM[" + std::to_string(i) + "]", pb::MEM_HBM, "SLR0", i == 0 || i == 6 ? "yes" : "no");
  }
  memory("HBM[8]", pb::MEM_HBM, "SLR1", "no");  // another SLR: a group of one stays a bank
  memory("DDR[0]", pb::MEM_DDR4, "SLR0", "no");
  memory("DDR[1]", pb::MEM_DDR4, "SLR0", "no");
  memory("HBM[9]", pb::MEM_HBM, "SLR0", "no");  // unused but connected: drawn alone
  kernel("k");
  computeUnit("k", "u").add_slr_resources()->set_slr("SLR0");
  toMemory("0", "x", "11");
  DiagramGraph const graph = build(diagram);

  EXPECT_EQ(nodeIds(graph),
            (std::vector<std::string>{"kernel:k", "cu:u", "mem:HBM[0]", "mem:HBM[1..5,7]",
                                      "mem:HBM[6]", "mem:HBM[8]", "mem:DDR[0,1]",
                                      "mem:HBM[9]"}));
  // Two in a row are listed, not a range.
  EXPECT_EQ(graph.node("mem:DDR[0,1]")->banks, 2);
  DiagramGraph::Node const* hbm = graph.node("mem:HBM[1..5,7]");
  ASSERT_NE(hbm, nullptr);
  EXPECT_EQ(hbm->banks, 6);
  EXPECT_EQ(hbm->sizeKb, "1572864");

  DiagramGraphBuilder::Options options;
  options.foldUnusedBanks = false;
  EXPECT_EQ(DiagramGraphBuilder(options).build(diagram).count(NodeKind::kMemory), 12u);
}

TEST_F(DiagramGraphBuilderTest, GroupsOfIrregularTagsAreNamedByTheFirstAndACount) {
  memory("bank_a", pb::MEM_DDR4, "SLR0", "no");
  memory("bank_b", pb::MEM_DDR4, "SLR0", "no");
  memory("bank_c", pb::MEM_DDR4, "SLR0", "no");
  DiagramGraph const graph = build(diagram);
  EXPECT_EQ(nodeIds(graph), std::vector<std::string>{"mem:bank_a +2"});
  EXPECT_EQ(graph.nodes[0].tags, (std::vector<std::string>{"bank_a", "bank_b", "bank_c"}));
}

TEST_F(DiagramGraphBuilderTest, StreamsPairsAndUnknownEndsAreTold) {
  kernel("k");
  computeUnit("k", "a");
  computeUnit("k", "b");
  memory("DDR[0]", pb::MEM_DDR4, "SLR0", "yes");
  pb::Connectivity& stream = *region().add_connectivity();
  stream.mutable_source()->set_type("compute_unit");
  stream.mutable_source()->set_id("0");
  stream.mutable_source()->set_arg_name("out");
  stream.mutable_destination()->set_type("compute_unit");
  stream.mutable_destination()->set_id("1");
  stream.mutable_destination()->set_arg_name("in");
  region().add_connectivity();  // a stream with one half: no ends
  toMemory("7", "x", "0");      // no compute unit 7
  toMemory("0", "y", "9");      // no memory 9
  pb::Connectivity& clock = *region().add_connectivity();  // not drawn, not counted
  clock.mutable_source()->set_type("bd_clock");
  clock.mutable_destination()->set_type("compute_unit");
  clock.mutable_destination()->set_id("0");
  DiagramGraph const graph = build(diagram);
  EXPECT_EQ(edges(graph, EdgeKind::kStream),
            std::vector<std::string>{"cu:a -> cu:b [out -> in]"});
  EXPECT_EQ(edges(graph, EdgeKind::kMemory), std::vector<std::string>{});
  EXPECT_EQ(graph.notes,
            (std::vector<std::string>{
                "2 connections name no compute unit or memory of this diagram.",
                "1 streaming connection has no ends."}));
  EXPECT_EQ(graph.edges.back().id, "edge:cu:a->cu:b");
}

TEST_F(DiagramGraphBuilderTest, KernelsWithoutDescriptionAndRepeatedNamesKeepIdsUnique) {
  kernel("k");
  computeUnit("k", "u");
  computeUnit("k", "u");
  computeUnit("other", "v");
  memory("M", pb::MEM_UNSET, "", "yes");
  memory("M", pb::MEM_UNSET, "", "yes");
  DiagramGraph const graph = build(diagram);
  EXPECT_EQ(nodeIds(graph), (std::vector<std::string>{"kernel:k", "kernel:other", "cu:u",
                                                      "cu:u#1", "cu:v", "mem:M", "mem:M#1"}));
  EXPECT_EQ(graph.node("kernel:k")->computeUnits, 2);
  EXPECT_EQ(graph.node("kernel:other")->computeUnits, 1);
  EXPECT_EQ(graph.node("mem:M")->memoryType, "memory");
}

TEST_F(DiagramGraphBuilderTest, TextsThatAreNoNumbersLeaveSharesUnknown) {
  slr("SLR0", "lots");
  kernel("k");
  pb::computeUnit& unit = computeUnit("k", "u");
  unit.add_slr_resources()->set_slr("SLR0");
  pb::actualResources& routed = *unit.add_actual_resources();
  routed.set_design_state(pb::DESIGN_STATE_ROUTED);
  routed.set_lut("12");
  routed.set_reg("");
  routed.set_bram("5");
  pb::clockRef& clock = *unit.add_clock_refs();
  clock.set_name("clk");
  clock.set_clock_id("x");
  clock.set_requested_frequency(250);
  DiagramGraph const graph = build(diagram);
  DiagramGraph::Node const* node = graph.node("cu:u");
  ASSERT_EQ(node->resources.size(), 1u);
  EXPECT_EQ(node->resources[0].state, "Routed");
  EXPECT_EQ(node->resources[0].amounts[0].percent, -1);  // "lots" available
  EXPECT_EQ(node->resources[0].amounts[1].percent, -1);  // nothing used
  EXPECT_DOUBLE_EQ(node->resources[0].amounts[2].percent, 5.0);
  EXPECT_EQ(node->resources[0].amounts[4].percent, -1);  // 0 available
  EXPECT_EQ(node->clocks[0].platformClock, "");
  EXPECT_EQ(node->clocks[0].platform, 0);
  EXPECT_EQ(node->clocks[0].requested, 250);
  EXPECT_DOUBLE_EQ(graph.cluster("slr:SLR0")->fullness, 5.0);
}

}  // namespace
}  // namespace qvviews
