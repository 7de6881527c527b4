#include "views/DotWriter.h"

#include <cstdio>
#include <cstdlib>
#include <sstream>
#include <vector>

namespace qvviews {
namespace {

using Node = DiagramGraph::Node;
using Edge = DiagramGraph::Edge;
using NodeKind = DiagramGraph::NodeKind;
using EdgeKind = DiagramGraph::EdgeKind;

// A DOT string: quotes and backslashes escaped, so that a name shows as it is written. Line
// breaks are added by the callers as "\n" between escaped lines.
std::string escape(std::string const& text) {
  std::string out;
  out.reserve(text.size() + 2);
  for (char c : text) {
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\n' || c == '\r') {
      out += ' ';
    } else {
      out += c;
    }
  }
  return out;
}

std::string quoted(std::string const& text) { return "\"" + escape(text) + "\""; }

// Lines joined as one DOT label: each escaped, separated by centred line breaks.
std::string lines(std::vector<std::string> const& each) {
  std::string out = "\"";
  for (std::size_t i = 0; i < each.size(); ++i) {
    if (i != 0) out += "\\n";
    out += escape(each[i]);
  }
  return out + "\"";
}

std::string clockLine(DiagramGraph::Clock const& clock) {
  return clock.pin + " " + DotWriter::frequencyText(clock.requested) + "/" +
         DotWriter::frequencyText(clock.achieved) + " MHz";
}

// The latest design state's use in two short lines, as shares of the SLR where known.
std::vector<std::string> resourceLines(Node const& unit) {
  if (unit.resources.empty()) return {"no resources reported"};
  DiagramGraph::StateResources const& latest = unit.resources.back();
  std::vector<std::string> parts;
  for (DiagramGraph::Amount const& amount : latest.amounts) {
    if (amount.percent >= 0) {
      parts.push_back(amount.resource + " " + DotWriter::percentText(amount.percent));
    } else {
      parts.push_back(amount.resource + " " + (amount.used.empty() ? "-" : amount.used));
    }
  }
  std::string first = latest.state + ":";
  std::string second;
  for (std::size_t i = 0; i < parts.size(); ++i) {
    std::string& line = i < 2 ? first : second;
    line += (line.empty() ? "" : " ") + parts[i];
  }
  return {first, second};
}

std::string memoryEdgeColour(std::string const& memoryType) {
  if (memoryType == "DDR3" || memoryType == "DDR4" || memoryType == "DRAM") return "#3d85c6";
  if (memoryType == "HBM") return "#38761d";
  if (memoryType == "BRAM") return "#bf9000";
  if (memoryType == "URAM") return "#b45f06";
  if (memoryType == "STREAMING") return "#a64d79";
  return "#666666";
}

void writeKernel(std::ostream& out, Node const& node) {
  std::vector<std::string> label = {node.name};
  label.push_back(std::to_string(node.computeUnits) +
                  (node.computeUnits == 1 ? " compute unit" : " compute units"));
  for (DiagramGraph::Clock const& clock : node.clocks) {
    label.push_back(clock.pin + " " + DotWriter::frequencyText(clock.requested) + " MHz");
  }
  out << "  " << quoted(node.id) << " [id=" << quoted(node.id)
      << ", class=\"kernel\", shape=box, style=\"filled\", fillcolor=\"#eeeeee\", "
         "color=\"#999999\", label="
      << lines(label) << ", tooltip=" << quoted("kernel " + node.name) << "];\n";
}

void writeComputeUnit(std::ostream& out, Node const& node, std::string const& indent) {
  std::vector<std::string> label = {node.name, node.kernel + " @ " + node.baseAddress};
  for (DiagramGraph::Clock const& clock : node.clocks) label.push_back(clockLine(clock));
  for (std::string const& line : resourceLines(node)) label.push_back(line);
  out << indent << quoted(node.id) << " [id=" << quoted(node.id)
      << ", class=\"cu\", shape=box, style=\"rounded,filled\", fillcolor=\"#ffffff\", "
         "color=\"#333333\", label="
      << lines(label) << ", tooltip="
      << quoted("compute unit " + node.name + " of " + node.kernel + " on " +
                (node.slr.empty() ? std::string("no known SLR") : node.slr))
      << "];\n";
}

void writeMemory(std::ostream& out, Node const& node, std::string const& indent) {
  std::vector<std::string> label = {node.name};
  std::string tooltip;
  if (node.kind == NodeKind::kMemoryGroup) {
    label.push_back(std::to_string(node.banks) + " unused " + node.memoryType + " banks");
    tooltip = std::to_string(node.banks) + " unused " + node.memoryType + " banks";
  } else {
    label.push_back(node.memoryType + (node.used ? "" : ", unused"));
    tooltip = node.memoryType + " bank " + node.name + " at " + node.baseAddress;
  }
  if (!node.sizeKb.empty()) label.back() += ", " + DotWriter::sizeText(node.sizeKb);
  out << indent << quoted(node.id) << " [id=" << quoted(node.id) << ", class=\""
      << (node.kind == NodeKind::kMemoryGroup ? "memgroup" : "mem")
      << "\", shape=cylinder, style=\""
      << (node.kind == NodeKind::kMemoryGroup || !node.used ? "filled,dashed" : "filled")
      << "\", fillcolor=\"" << DotWriter::memoryColour(node.memoryType)
      << "\", color=\"" << memoryEdgeColour(node.memoryType) << "\", label=" << lines(label)
      << ", tooltip=" << quoted(tooltip) << "];\n";
}

void writeNode(std::ostream& out, Node const& node, std::string const& indent) {
  switch (node.kind) {
    case NodeKind::kKernel:
      writeKernel(out, node);
      return;
    case NodeKind::kComputeUnit:
      writeComputeUnit(out, node, indent);
      return;
    case NodeKind::kMemory:
    case NodeKind::kMemoryGroup:
      writeMemory(out, node, indent);
      return;
    case NodeKind::kNote:
      out << indent << quoted(node.id) << " [id=" << quoted(node.id)
          << ", class=\"note\", shape=note, style=\"filled\", fillcolor=\"#fff8dc\", label="
          << quoted(node.name) << "];\n";
      return;
  }
}

// Up to this many memory and stream edges carry their argument names as labels. Beyond it the
// names stay in the tooltips and the viewer's panel: hundreds of labels cover each other, and
// dot lays out each label as a node of its own, which took a 1,000 compute unit picture from one
// second to minutes.
constexpr std::size_t kMostLabelledEdges = 150;

void writeEdge(std::ostream& out, DiagramGraph const& graph, Edge const& edge, bool labelled) {
  out << "  " << quoted(edge.from) << " -> " << quoted(edge.to) << " [id=" << quoted(edge.id);
  std::string joined;
  for (std::string const& argument : edge.arguments) {
    joined += (joined.empty() ? "" : ", ") + argument;
  }
  switch (edge.kind) {
    case EdgeKind::kInstance:
      out << ", class=\"instance\", style=dashed, color=\"#aaaaaa\", arrowhead=none";
      break;
    case EdgeKind::kMemory: {
      Node const* memory = graph.node(edge.to);
      out << ", class=\"memedge\", color=\""
          << memoryEdgeColour(memory == nullptr ? "" : memory->memoryType) << "\"";
      if (labelled) out << ", label=" << quoted(joined);
      out << ", tooltip=" << quoted(joined);
      break;
    }
    case EdgeKind::kStream:
      // A stream does not rank its consumer after its producer: compute units stay in one
      // column. Ranked, every stream between two SLRs split the column and made dot route the
      // kernel and memory edges around the split: 125 streams took a 1,000 compute unit layout
      // from half a second to eight. Streams are thus flat edges, and their names go in an
      // xlabel, placed after the layout: Graphviz 2.42 makes a rank of its own for the label of
      // a flat edge, and together with the rank=min and rank=max groups that freed memory twice
      // when the layout was freed.
      out << ", class=\"stream\", constraint=false, color=\"#7b3294\", penwidth=2";
      if (labelled) out << ", xlabel=" << quoted(joined);
      out << ", tooltip=" << quoted("stream " + joined);
      break;
  }
  out << "];\n";
}

std::string clusterLabel(DiagramGraph::Cluster const& cluster) {
  std::string first = cluster.name;
  if (cluster.computeUnits > 0) {
    first += ": " + std::to_string(cluster.computeUnits) +
             (cluster.computeUnits == 1 ? " compute unit" : " compute units");
  }
  std::string second;
  for (DiagramGraph::Amount const& amount : cluster.use) {
    if (amount.percent < 0) continue;
    second += (second.empty() ? "" : "  ") + amount.resource + " " +
              DotWriter::percentText(amount.percent);
  }
  if (second.empty()) return quoted(first);
  return lines({first, second});
}

}  // namespace

std::string DotWriter::memoryColour(std::string const& memoryType) {
  if (memoryType == "DDR3" || memoryType == "DDR4" || memoryType == "DRAM") return "#cfe2f3";
  if (memoryType == "HBM") return "#d9ead3";
  if (memoryType == "BRAM") return "#fff2cc";
  if (memoryType == "URAM") return "#fce5cd";
  if (memoryType == "STREAMING") return "#ead1dc";
  return "#eeeeee";
}

std::string DotWriter::fullnessColour(double percent) {
  if (percent < 0) return "#f5f5f5";
  if (percent < 25) return "#e5f5e0";
  if (percent < 50) return "#fff7bc";
  if (percent < 75) return "#fdd49e";
  return "#fcae91";
}

std::string DotWriter::sizeText(std::string const& sizeKb) {
  char* end = nullptr;
  unsigned long long const value = std::strtoull(sizeKb.c_str(), &end, 10);
  if (sizeKb.empty() || end != sizeKb.c_str() + sizeKb.size() ||
      sizeKb.find_first_not_of("0123456789") != std::string::npos) {
    return sizeKb + " KB";
  }
  if (value != 0 && value % (1024ULL * 1024ULL) == 0) {
    return std::to_string(value / (1024ULL * 1024ULL)) + " GiB";
  }
  if (value != 0 && value % 1024ULL == 0) return std::to_string(value / 1024ULL) + " MiB";
  return std::to_string(value) + " KiB";
}

std::string DotWriter::percentText(double percent) {
  if (percent < 0) return "-";
  char text[64];
  std::snprintf(text, sizeof text, "%.1f%%", percent);
  return text;
}

std::string DotWriter::frequencyText(double megahertz) {
  if (megahertz == 0) return "-";
  char text[64];
  std::snprintf(text, sizeof text, "%.2f", megahertz);
  return text;
}

std::string DotWriter::write(DiagramGraph const& graph) {
  std::ostringstream out;
  std::vector<std::string> title = {graph.title};
  for (std::string const& note : graph.notes) title.push_back(note);
  std::size_t const connections =
      graph.count(EdgeKind::kMemory) + graph.count(EdgeKind::kStream);
  bool const labelled = connections <= kMostLabelledEdges;
  out << "digraph \"system diagram\" {\n"
      << "  graph [id=\"diagram\", rankdir=LR, label=" << lines(title)
      << ", labelloc=t, fontname=\"Helvetica\", fontsize=14, nodesep=0.2, ranksep="
      // Without labels the edges need room of their own to be told apart.
      << (labelled ? "0.8" : "2.5") << ", newrank=true];\n"
      << "  node [fontname=\"Helvetica\", fontsize=10, margin=\"0.12,0.06\"];\n"
      << "  edge [fontname=\"Helvetica\", fontsize=9, arrowsize=0.7];\n";

  for (Node const& node : graph.nodes) {
    if (node.cluster.empty() && node.kind == NodeKind::kKernel) writeNode(out, node, "  ");
  }
  int index = 0;
  for (DiagramGraph::Cluster const& cluster : graph.clusters) {
    out << "  subgraph \"cluster_" << index++ << "\" {\n"
        << "    graph [id=" << quoted(cluster.id) << ", class=\"slr\", label="
        << clusterLabel(cluster) << ", style=\"filled,rounded\", fillcolor=\""
        << fullnessColour(cluster.fullness) << "\", color=\"#888888\", fontsize=12];\n";
    for (Node const& node : graph.nodes) {
      if (node.cluster == cluster.id) writeNode(out, node, "    ");
    }
    out << "  }\n";
  }
  for (Node const& node : graph.nodes) {
    if (node.cluster.empty() && node.kind != NodeKind::kKernel) writeNode(out, node, "  ");
  }
  // Three columns whatever the edges say: kernels at the left, memories at the right, compute
  // units between. Without this an unused bank, having no edge, would stand among the kernels,
  // and a stream would push the memories of its consumer one column further than the others.
  std::string kernels;
  std::string memories;
  for (Node const& node : graph.nodes) {
    if (node.kind == NodeKind::kKernel) kernels += " " + quoted(node.id) + ";";
    if (node.kind == NodeKind::kMemory || node.kind == NodeKind::kMemoryGroup) {
      memories += " " + quoted(node.id) + ";";
    }
  }
  if (!kernels.empty()) out << "  { rank=min;" << kernels << " }\n";
  if (!memories.empty()) out << "  { rank=max;" << memories << " }\n";
  for (Edge const& edge : graph.edges) writeEdge(out, graph, edge, labelled);
  out << "}\n";
  return out.str();
}

}  // namespace qvviews
