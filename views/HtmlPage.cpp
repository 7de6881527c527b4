#include "views/HtmlPage.h"

#include <cmath>
#include <cstdio>
#include <set>
#include <sstream>
#include <stdexcept>

#include "views/DotWriter.h"

namespace qvviews {

// Generated from views/viewer.js and views/viewer.css (views/EmbedViewerAssets.cmake).
extern const char* const kViewerScript;
extern const char* const kViewerStyle;

namespace {

using Node = DiagramGraph::Node;
using NodeKind = DiagramGraph::NodeKind;

std::string number(double value) {
  if (!std::isfinite(value)) return "null";
  char text[64];
  std::snprintf(text, sizeof text, "%.6g", value);
  return text;
}

char const* kindName(NodeKind kind) {
  switch (kind) {
    case NodeKind::kKernel: return "kernel";
    case NodeKind::kComputeUnit: return "cu";
    case NodeKind::kMemory: return "mem";
    case NodeKind::kMemoryGroup: return "memgroup";
    case NodeKind::kNote: return "note";
  }
  return "note";
}

char const* edgeKindName(DiagramGraph::EdgeKind kind) {
  switch (kind) {
    case DiagramGraph::EdgeKind::kInstance: return "instance";
    case DiagramGraph::EdgeKind::kStream: return "stream";
    case DiagramGraph::EdgeKind::kMemory: return "memory";
  }
  return "instance";
}

void stringList(std::ostream& out, std::vector<std::string> const& texts) {
  out << "[";
  for (std::size_t i = 0; i < texts.size(); ++i) {
    out << (i == 0 ? "" : ",") << HtmlPage::jsonString(texts[i]);
  }
  out << "]";
}

void amounts(std::ostream& out, std::vector<DiagramGraph::Amount> const& list) {
  out << "[";
  for (std::size_t i = 0; i < list.size(); ++i) {
    DiagramGraph::Amount const& amount = list[i];
    out << (i == 0 ? "" : ",") << "{\"resource\":" << HtmlPage::jsonString(amount.resource)
        << ",\"used\":" << HtmlPage::jsonString(amount.used)
        << ",\"available\":" << HtmlPage::jsonString(amount.available)
        << ",\"percent\":" << (amount.percent < 0 ? "null" : number(amount.percent)) << "}";
  }
  out << "]";
}

void node(std::ostream& out, Node const& each) {
  out << HtmlPage::jsonString(each.id) << ":{\"kind\":\"" << kindName(each.kind)
      << "\",\"name\":" << HtmlPage::jsonString(each.name)
      << ",\"cluster\":" << HtmlPage::jsonString(each.cluster);
  switch (each.kind) {
    case NodeKind::kComputeUnit: {
      out << ",\"kernel\":" << HtmlPage::jsonString(each.kernel)
          << ",\"baseAddress\":" << HtmlPage::jsonString(each.baseAddress)
          << ",\"slr\":" << HtmlPage::jsonString(each.slr)
          << ",\"slrFrom\":" << HtmlPage::jsonString(each.slrFrom) << ",\"clocks\":[";
      for (std::size_t i = 0; i < each.clocks.size(); ++i) {
        DiagramGraph::Clock const& clock = each.clocks[i];
        out << (i == 0 ? "" : ",") << "{\"pin\":" << HtmlPage::jsonString(clock.pin)
            << ",\"clockId\":" << HtmlPage::jsonString(clock.clockId)
            << ",\"platformClock\":" << HtmlPage::jsonString(clock.platformClock)
            << ",\"requested\":" << number(clock.requested)
            << ",\"achieved\":" << number(clock.achieved)
            << ",\"platform\":" << number(clock.platform) << "}";
      }
      out << "],\"resources\":[";
      for (std::size_t i = 0; i < each.resources.size(); ++i) {
        out << (i == 0 ? "" : ",") << "{\"state\":" << HtmlPage::jsonString(each.resources[i].state)
            << ",\"amounts\":";
        amounts(out, each.resources[i].amounts);
        out << "}";
      }
      out << "]";
      break;
    }
    case NodeKind::kMemory:
    case NodeKind::kMemoryGroup:
      out << ",\"memoryType\":" << HtmlPage::jsonString(each.memoryType)
          << ",\"slr\":" << HtmlPage::jsonString(each.memorySlr)
          << ",\"baseAddress\":" << HtmlPage::jsonString(each.baseAddress)
          << ",\"size\":" << HtmlPage::jsonString(each.sizeKb.empty() ? "" : DotWriter::sizeText(each.sizeKb))
          << ",\"used\":" << (each.used ? "true" : "false") << ",\"banks\":" << each.banks
          << ",\"tags\":";
      stringList(out, each.tags);
      break;
    case NodeKind::kKernel:
      out << ",\"computeUnits\":" << each.computeUnits << ",\"clocks\":[";
      for (std::size_t i = 0; i < each.clocks.size(); ++i) {
        out << (i == 0 ? "" : ",") << "{\"pin\":" << HtmlPage::jsonString(each.clocks[i].pin)
            << ",\"requested\":" << number(each.clocks[i].requested) << "}";
      }
      out << "]";
      break;
    case NodeKind::kNote:
      break;
  }
  out << "}";
}

// The legend: the memory types the picture shows, the SLR fill scale, and the kinds of edges.
std::string legend(DiagramGraph const& graph) {
  std::ostringstream out;
  out << "<aside id=\"legend\" aria-label=\"Legend\"><h2>Legend</h2><ul>";
  std::set<std::string> seen;
  for (Node const& each : graph.nodes) {
    if (each.kind != NodeKind::kMemory && each.kind != NodeKind::kMemoryGroup) continue;
    if (!seen.insert(each.memoryType).second) continue;
    out << "<li><span class=\"swatch mem\" style=\"background:"
        << DotWriter::memoryColour(each.memoryType) << "\"></span>"
        << HtmlPage::escapeHtml(each.memoryType) << " memory</li>";
  }
  out << "<li><span class=\"swatch mem dashed\"></span>unused banks (folded: a count)</li>"
      << "</ul><h3>SLR use, fullest resource</h3><ul>";
  struct Band {
    double sample;
    char const* text;
  };
  static Band const kBands[] = {{10, "under 25%"},  {30, "25% to 50%"}, {60, "50% to 75%"},
                                {80, "75% or more"}, {-1, "not reported"}};
  for (Band const& band : kBands) {
    out << "<li><span class=\"swatch\" style=\"background:" << DotWriter::fullnessColour(band.sample)
        << "\"></span>" << band.text << "</li>";
  }
  out << "</ul><h3>Marks</h3><ul>"
      << "<li><span class=\"line memedge\"></span>argument to memory</li>"
      << "<li><span class=\"line stream\"></span>stream, compute unit to compute unit</li>"
      << "<li><span class=\"line instance\"></span>kernel to its compute unit</li>"
      << "<li>clock line: pin requested/achieved MHz</li>"
      << "</ul></aside>";
  return out.str();
}

}  // namespace

std::string HtmlPage::escapeHtml(std::string const& text) {
  std::string out;
  out.reserve(text.size());
  for (char c : text) {
    switch (c) {
      case '&': out += "&amp;"; break;
      case '<': out += "&lt;"; break;
      case '>': out += "&gt;"; break;
      case '"': out += "&quot;"; break;
      case '\'': out += "&#39;"; break;
      default: out += c;
    }
  }
  return out;
}

std::string HtmlPage::jsonString(std::string const& text) {
  std::string out = "\"";
  for (char c : text) {
    unsigned char const byte = static_cast<unsigned char>(c);
    switch (c) {
      case '"': out += "\\\""; break;
      case '\\': out += "\\\\"; break;
      case '\n': out += "\\n"; break;
      case '\r': out += "\\r"; break;
      case '\t': out += "\\t"; break;
      case '<': out += "\\u003c"; break;
      case '>': out += "\\u003e"; break;
      case '&': out += "\\u0026"; break;
      default:
        if (byte < 0x20) {
          char escaped[8];
          std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
          out += escaped;
        } else {
          out += c;
        }
    }
  }
  return out + "\"";
}

std::string HtmlPage::json(DiagramGraph const& graph) {
  std::ostringstream out;
  out << "{\"title\":" << jsonString(graph.title) << ",\"notes\":";
  stringList(out, graph.notes);
  out << ",\"nodes\":{";
  for (std::size_t i = 0; i < graph.nodes.size(); ++i) {
    if (i != 0) out << ",";
    node(out, graph.nodes[i]);
  }
  out << "},\"edges\":[";
  for (std::size_t i = 0; i < graph.edges.size(); ++i) {
    DiagramGraph::Edge const& edge = graph.edges[i];
    out << (i == 0 ? "" : ",") << "{\"id\":" << jsonString(edge.id) << ",\"kind\":\""
        << edgeKindName(edge.kind) << "\",\"from\":" << jsonString(edge.from)
        << ",\"to\":" << jsonString(edge.to) << ",\"arguments\":";
    stringList(out, edge.arguments);
    out << "}";
  }
  out << "],\"clusters\":{";
  for (std::size_t i = 0; i < graph.clusters.size(); ++i) {
    DiagramGraph::Cluster const& cluster = graph.clusters[i];
    out << (i == 0 ? "" : ",") << jsonString(cluster.id) << ":{\"name\":"
        << jsonString(cluster.name) << ",\"computeUnits\":" << cluster.computeUnits
        << ",\"fullness\":" << (cluster.fullness < 0 ? "null" : number(cluster.fullness))
        << ",\"use\":";
    amounts(out, cluster.use);
    out << "}";
  }
  out << "}}";
  return out.str();
}

std::string HtmlPage::write(DiagramGraph const& graph, std::string const& svg) {
  std::size_t const start = svg.find("<svg");
  if (start == std::string::npos) throw std::invalid_argument("the picture holds no <svg> element");
  std::size_t const computeUnits = graph.count(NodeKind::kComputeUnit);
  std::size_t const memories =
      graph.count(NodeKind::kMemory) + graph.count(NodeKind::kMemoryGroup);
  std::size_t banks = 0;
  for (Node const& each : graph.nodes) {
    if (each.kind == NodeKind::kMemory || each.kind == NodeKind::kMemoryGroup) {
      banks += static_cast<std::size_t>(each.banks);
    }
  }
  std::string const title = escapeHtml(graph.title);
  std::ostringstream out;
  out << "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
      << "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
      << "<title>" << title << " - system diagram</title>\n"
      << "<style>\n" << kViewerStyle << "</style>\n</head>\n<body>\n"
      << "<header id=\"bar\">\n<h1 id=\"title\">" << title << "</h1>\n"
      << "<p id=\"counts\"><span id=\"cu-count\">" << computeUnits << "</span> compute "
      << (computeUnits == 1 ? "unit" : "units") << ", <span id=\"kernel-count\">"
      << graph.count(NodeKind::kKernel) << "</span> kernels, <span id=\"memory-count\">" << banks
      << "</span> memories in " << memories << " nodes</p>\n"
      << "<input id=\"search\" type=\"search\" autocomplete=\"off\" "
         "placeholder=\"Find a compute unit, kernel or memory\" "
         "aria-label=\"Find a compute unit, kernel or memory\">\n"
      << "<span id=\"search-result\" aria-live=\"polite\"></span>\n"
      << "<span id=\"hint\">drag or scroll to move, Ctrl+wheel to zoom</span>\n"
      << "<span class=\"buttons\"><button id=\"zoom-in\" title=\"Zoom in (+)\">+</button>"
         "<button id=\"zoom-out\" title=\"Zoom out (-)\">&#8722;</button>"
         "<button id=\"zoom-fit\" title=\"Whole picture (0)\">Fit</button>"
         "<button id=\"legend-toggle\" title=\"Show or hide the legend\">Legend</button></span>\n"
      << "</header>\n";
  if (!graph.notes.empty()) {
    out << "<ul id=\"notes\">";
    for (std::string const& note : graph.notes) out << "<li>" << escapeHtml(note) << "</li>";
    out << "</ul>\n";
  }
  out << "<div id=\"stage\">\n<main id=\"view\">\n" << svg.substr(start) << "</main>\n"
      << "<div id=\"side\">\n<aside id=\"panel\" hidden aria-label=\"Details\"><button "
         "id=\"panel-close\" title=\"Close (Esc)\">&#215;</button><div id=\"panel-body\">"
         "</div></aside>\n"
      << legend(graph) << "\n</div>\n</div>\n<div id=\"tooltip\" hidden></div>\n"
      << "<script type=\"application/json\" id=\"diagram-data\">" << json(graph)
      << "</script>\n<script>\n" << kViewerScript << "</script>\n</body>\n</html>\n";
  return out.str();
}

}  // namespace qvviews
