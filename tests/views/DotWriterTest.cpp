#include "views/DotWriter.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/Golden.h"
#include "tests/support/StoredDiagrams.h"
#include "views/DiagramGraphBuilder.h"
#include "views/IpLayout.h"

namespace qvviews {
namespace {

using NodeKind = DiagramGraph::NodeKind;
using EdgeKind = DiagramGraph::EdgeKind;

class DotWriterTest : public ::testing::Test {
 protected:
  static DiagramGraph::Node node(NodeKind kind, std::string const& id, std::string const& name) {
    DiagramGraph::Node each;
    each.kind = kind;
    each.id = id;
    each.name = name;
    return each;
  }
};

TEST_F(DotWriterTest, ExampleMatchesTheReviewedDot) {
  DiagramGraphBuilder::Options options;
  options.ipLayout = IpLayout::read(qvtest::exampleFile("design/vector_pipeline.rtd.json"));
  DiagramGraph const graph = DiagramGraphBuilder(options).build(
      exampleDiagram());
  EXPECT_GOLDEN(DotWriter::write(graph), "views/example.dot");
}

TEST_F(DotWriterTest, EveryMarkOfASmallGraph) {
  DiagramGraph graph;
  graph.title = "lab \"A\" on card";
  graph.notes.push_back("1 streaming connection has no ends.");
  DiagramGraph::Node kernel = node(NodeKind::kKernel, "kernel:k", "k");
  kernel.computeUnits = 1;
  DiagramGraph::Clock compiled;
  compiled.pin = "ap_clk";
  compiled.requested = 300;
  kernel.clocks.push_back(compiled);
  graph.nodes.push_back(kernel);

  DiagramGraph::Node unit = node(NodeKind::kComputeUnit, "cu:u\\1", "u\\1");
  unit.kernel = "k";
  unit.baseAddress = "0x100";
  unit.slr = "SLR0";
  unit.cluster = "slr:SLR0";
  DiagramGraph::Clock clock;
  clock.pin = "ap_clk";
  clock.requested = 300;
  clock.achieved = 287.5;
  unit.clocks.push_back(clock);
  DiagramGraph::StateResources routed;
  routed.state = "Routed";
  for (char const* resource : {"LUT", "REG", "BRAM", "DSP", "URAM"}) {
    DiagramGraph::Amount amount;
    amount.resource = resource;
    amount.used = "10";
    amount.available = "1000";
    amount.percent = 1;
    routed.amounts.push_back(amount);
  }
  routed.amounts[4].percent = -1;
  unit.resources.push_back(routed);
  graph.nodes.push_back(unit);

  DiagramGraph::Node bank = node(NodeKind::kMemory, "mem:DDR[0]", "DDR[0]");
  bank.memoryType = "DDR4";
  bank.memorySlr = "SLR0";
  bank.cluster = "slr:SLR0";
  bank.baseAddress = "0x0";
  bank.sizeKb = "16777216";
  bank.used = true;
  graph.nodes.push_back(bank);
  DiagramGraph::Node group = node(NodeKind::kMemoryGroup, "mem:HBM[0..3]", "HBM[0..3]");
  group.memoryType = "HBM";
  group.banks = 4;
  group.sizeKb = "1048576";
  graph.nodes.push_back(group);

  DiagramGraph::Edge instance;
  instance.kind = EdgeKind::kInstance;
  instance.id = "edge:kernel:k->cu:u\\1";
  instance.from = "kernel:k";
  instance.to = "cu:u\\1";
  graph.edges.push_back(instance);
  DiagramGraph::Edge memory;
  memory.kind = EdgeKind::kMemory;
  memory.id = "edge:cu:u\\1->mem:DDR[0]";
  memory.from = "cu:u\\1";
  memory.to = "mem:DDR[0]";
  memory.arguments = {"a", "b"};
  graph.edges.push_back(memory);
  DiagramGraph::Edge stream;
  stream.kind = EdgeKind::kStream;
  stream.id = "edge:cu:u\\1->cu:u\\1";
  stream.from = "cu:u\\1";
  stream.to = "cu:u\\1";
  stream.arguments = {"out -> in"};
  graph.edges.push_back(stream);

  DiagramGraph::Cluster slr;
  slr.id = "slr:SLR0";
  slr.name = "SLR0";
  slr.computeUnits = 1;
  DiagramGraph::Amount lut;
  lut.resource = "LUT";
  lut.percent = 60;
  slr.use.push_back(lut);
  DiagramGraph::Amount reg;
  reg.resource = "REG";
  slr.use.push_back(reg);
  slr.fullness = 60;
  graph.clusters.push_back(slr);

  EXPECT_EQ(
      DotWriter::write(graph),
      "digraph \"system diagram\" {\n"
      "  graph [id=\"diagram\", rankdir=LR, label=\"lab \\\"A\\\" on card\\n1 streaming "
      "connection has no ends.\", labelloc=t, fontname=\"Helvetica\", fontsize=14, "
      "nodesep=0.2, ranksep=0.8, newrank=true];\n"
      "  node [fontname=\"Helvetica\", fontsize=10, margin=\"0.12,0.06\"];\n"
      "  edge [fontname=\"Helvetica\", fontsize=9, arrowsize=0.7];\n"
      "  \"kernel:k\" [id=\"kernel:k\", class=\"kernel\", shape=box, style=\"filled\", "
      "fillcolor=\"#eeeeee\", color=\"#999999\", label=\"k\\n1 compute unit\\nap_clk 300.00 "
      "MHz\", tooltip=\"kernel k\"];\n"
      "  subgraph \"cluster_0\" {\n"
      "    graph [id=\"slr:SLR0\", class=\"slr\", label=\"SLR0: 1 compute unit\\nLUT 60.0%\", "
      "style=\"filled,rounded\", fillcolor=\"#fdd49e\", color=\"#888888\", fontsize=12];\n"
      "    \"cu:u\\\\1\" [id=\"cu:u\\\\1\", class=\"cu\", shape=box, style=\"rounded,filled\", "
      "fillcolor=\"#ffffff\", color=\"#333333\", label=\"u\\\\1\\nk @ 0x100\\nap_clk "
      "300.00/287.50 MHz\\nRouted: LUT 1.0% REG 1.0%\\nBRAM 1.0% DSP 1.0% URAM 10\", "
      "tooltip=\"compute unit u\\\\1 of k on SLR0\"];\n"
      "    \"mem:DDR[0]\" [id=\"mem:DDR[0]\", class=\"mem\", shape=cylinder, style=\"filled\", "
      "fillcolor=\"#cfe2f3\", color=\"#3d85c6\", label=\"DDR[0]\\nDDR4, 16 GiB\", "
      "tooltip=\"DDR4 bank DDR[0] at 0x0\"];\n"
      "  }\n"
      "  \"mem:HBM[0..3]\" [id=\"mem:HBM[0..3]\", class=\"memgroup\", shape=cylinder, "
      "style=\"filled,dashed\", fillcolor=\"#d9ead3\", color=\"#38761d\", "
      "label=\"HBM[0..3]\\n4 unused HBM banks, 1 GiB\", tooltip=\"4 unused HBM banks\"];\n"
      "  { rank=min; \"kernel:k\"; }\n"
      "  { rank=max; \"mem:DDR[0]\"; \"mem:HBM[0..3]\"; }\n"
      "  \"kernel:k\" -> \"cu:u\\\\1\" [id=\"edge:kernel:k->cu:u\\\\1\", class=\"instance\", "
      "style=dashed, color=\"#aaaaaa\", arrowhead=none];\n"
      "  \"cu:u\\\\1\" -> \"mem:DDR[0]\" [id=\"edge:cu:u\\\\1->mem:DDR[0]\", class=\"memedge\", "
      "color=\"#3d85c6\", label=\"a, b\", tooltip=\"a, b\"];\n"
      "  \"cu:u\\\\1\" -> \"cu:u\\\\1\" [id=\"edge:cu:u\\\\1->cu:u\\\\1\", class=\"stream\", "
      "constraint=false, color=\"#7b3294\", penwidth=2, xlabel=\"out -> in\", tooltip=\"stream out -> in\"];\n"
      "}\n");
}

TEST_F(DotWriterTest, ManyConnectionsLeaveTheirArgumentsToTheTooltips) {
  DiagramGraph graph;
  graph.title = "t";
  graph.nodes.push_back(node(NodeKind::kComputeUnit, "cu:u", "u"));
  graph.nodes.push_back(node(NodeKind::kMemory, "mem:m", "m"));
  DiagramGraph::Edge edge;
  edge.kind = EdgeKind::kMemory;
  edge.from = "cu:u";
  edge.to = "mem:m";
  edge.arguments = {"a"};
  for (int i = 0; i < 150; ++i) {
    edge.id = "edge:" + std::to_string(i);
    graph.edges.push_back(edge);
  }
  std::string const few = DotWriter::write(graph);
  EXPECT_NE(few.find("ranksep=0.8,"), std::string::npos);
  EXPECT_NE(few.find("[id=\"edge:149\", class=\"memedge\", color=\"#666666\", label=\"a\", "
                     "tooltip=\"a\"];\n"),
            std::string::npos);
  edge.id = "edge:150";
  graph.edges.push_back(edge);
  std::string const many = DotWriter::write(graph);
  EXPECT_NE(many.find("ranksep=2.5,"), std::string::npos);
  EXPECT_NE(many.find("[id=\"edge:149\", class=\"memedge\", color=\"#666666\", "
                      "tooltip=\"a\"];\n"),
            std::string::npos);
  EXPECT_EQ(many.find("label=\"a\""), std::string::npos);
}

TEST_F(DotWriterTest, TextsOfSizesSharesAndFrequencies) {
  EXPECT_EQ(DotWriter::sizeText("16777216"), "16 GiB");
  EXPECT_EQ(DotWriter::sizeText("262144"), "256 MiB");
  EXPECT_EQ(DotWriter::sizeText("1536"), "1536 KiB");
  EXPECT_EQ(DotWriter::sizeText("0"), "0 KiB");
  EXPECT_EQ(DotWriter::sizeText("-4"), "-4 KB");
  EXPECT_EQ(DotWriter::sizeText("big"), "big KB");
  EXPECT_EQ(DotWriter::percentText(12.345), "12.3%");
  EXPECT_EQ(DotWriter::percentText(-1), "-");
  EXPECT_EQ(DotWriter::frequencyText(291.5), "291.50");
  EXPECT_EQ(DotWriter::frequencyText(0), "-");
  EXPECT_EQ(DotWriter::fullnessColour(-1), "#f5f5f5");
  EXPECT_EQ(DotWriter::fullnessColour(0), "#e5f5e0");
  EXPECT_EQ(DotWriter::fullnessColour(25), "#fff7bc");
  EXPECT_EQ(DotWriter::fullnessColour(74.9), "#fdd49e");
  EXPECT_EQ(DotWriter::fullnessColour(75), "#fcae91");
  EXPECT_EQ(DotWriter::memoryColour("HBM"), "#d9ead3");
  EXPECT_EQ(DotWriter::memoryColour("DDR4"), "#cfe2f3");
  EXPECT_EQ(DotWriter::memoryColour("memory"), "#eeeeee");
}

}  // namespace
}  // namespace qvviews
