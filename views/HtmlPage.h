// The diagram viewer: one self-contained HTML page around the SVG picture.
#ifndef VIEWS_HTMLPAGE_H_
#define VIEWS_HTMLPAGE_H_

#include <string>

#include "views/DiagramGraph.h"

namespace qvviews {

// A page that a person opens from disk, with nothing fetched from anywhere: the SVG inline, the
// model's details as JSON in a data block, and the viewer's own script and style
// (views/viewer.js, views/viewer.css, compiled in). The script gives pan and zoom, a search box
// that highlights compute units, kernels and memories by name, tooltips, a side panel for the
// node clicked (a compute unit's kernel, base address, clocks, connections and resources per
// design state as shares of its SLR), and a legend. Elements the tests and scripts may rely on:
//   #cu-count       the number of compute units
//   #search         the search box; #search-result says how many nodes it found
//   #panel          the side panel; #panel-base-address, and .achieved cells of its clock table
//   #legend         the legend
class HtmlPage {
 public:
  // The page for `graph` drawn as `svg` (SvgRenderer's output for DotWriter's text of the same
  // graph). Throws std::invalid_argument when `svg` holds no <svg> element.
  static std::string write(DiagramGraph const& graph, std::string const& svg);

  // `text` with &, <, >, " and ' as character references, for HTML text and attribute values.
  static std::string escapeHtml(std::string const& text);
  // `text` as a JSON string literal, quotes included; "<" is written \u003c so that no text
  // can close the script element that holds the data.
  static std::string jsonString(std::string const& text);
  // The model as one JSON object: {"title", "notes", "nodes", "edges", "clusters"}.
  static std::string json(DiagramGraph const& graph);
};

}  // namespace qvviews

#endif  // VIEWS_HTMLPAGE_H_
