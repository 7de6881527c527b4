// Lays DOT text out with Graphviz's dot layout and renders it as SVG, in this process.
#ifndef VIEWS_SVGRENDERER_H_
#define VIEWS_SVGRENDERER_H_

#include <string>

namespace qvviews {

// Graphviz's C library (libgvc, libcgraph) with the dot layout and the SVG renderer linked in as
// built-in plugins: no `dot` process, no plugin directory. Graphviz keeps state in globals
// (cgraph's error handler and the current graph of the layout), so calls are serialised by one
// lock, and each call makes and frees a context of its own. Safe to call from any thread.
class SvgRenderer {
 public:
  // The SVG document of `dot`, laid out left to right as the text asks. Throws
  // std::runtime_error with Graphviz's message when the text is not DOT or cannot be laid out.
  static std::string render(std::string const& dot);

  // Parses and lays out `dot`, then frees the layout: the cost of the layout alone, for the
  // benchmark. Throws as render() does.
  static void layoutOnly(std::string const& dot);
};

}  // namespace qvviews

#endif  // VIEWS_SVGRENDERER_H_
