// Writes the graph model of a diagram as Graphviz DOT text.
#ifndef VIEWS_DOTWRITER_H_
#define VIEWS_DOTWRITER_H_

#include <string>

#include "views/DiagramGraph.h"

namespace qvviews {

// The look of every mark of a picture is decided here (docs/pictures.md lists them): left to
// right, kernels, then compute units in one cluster per SLR, then memories; memories filled by
// type, SLR clusters by how full their fullest resource is, streams bold. Every node, cluster
// and edge carries its model id as its DOT `id`, which the SVG keeps, and a `class` the viewer's
// script and style select on.
class DotWriter {
 public:
  // The DOT text of `graph`: the same text for the same model, byte for byte.
  static std::string write(DiagramGraph const& graph);

  // The fill colour of a memory type ("HBM", "DDR4", ...) and of an SLR cluster whose fullest
  // resource is at `percent` (-1: not known), as "#rrggbb". The HTML page's legend uses the same.
  static std::string memoryColour(std::string const& memoryType);
  static std::string fullnessColour(double percent);

  // "16 GiB" for "16777216", "256 MiB" for "262144", "<text> KiB" for other numbers; the text
  // itself, with " KB", when it is no whole number.
  static std::string sizeText(std::string const& sizeKb);
  // "12.3%" (one decimal), or "-" for -1.
  static std::string percentText(double percent);
  // "300.00" (two decimals, as the flow report writes frequencies), or "-" for 0.
  static std::string frequencyText(double megahertz);
};

}  // namespace qvviews

#endif  // VIEWS_DOTWRITER_H_
