// Fuzz target: the pictures of a stored diagram (views/), as qvdiag render draws them.
//
// The bytes are the stored diagram's text. A text that StoredDiagram accepts goes through the graph
// model, the DOT writer and the HTML page; its DOT must always be DOT that Graphviz reads and
// lays out, since every name of the diagram ends up quoted in it. Graphviz's layout grows much
// faster than the input, so only models of a size a person would look at are laid out: the
// fuzzer's inputs stay fast, and the escaping is what can break, whatever the size.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <optional>
#include <stdexcept>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "views/DiagramGraphBuilder.h"
#include "views/DotWriter.h"
#include "views/HtmlPage.h"
#include "views/StoredDiagram.h"
#include "views/SvgRenderer.h"

namespace {

constexpr std::size_t kMostNodesLaidOut = 64;

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(data), size);
  std::optional<qvviews::StoredDiagram> diagram;
  try {
    diagram = qvviews::StoredDiagram::fromText(text, "input");
  } catch (std::runtime_error const&) {
    // "input: Deserializing failed with error: ...": the documented refusal.
    return 0;
  }
  qvviews::DiagramGraph const graph = qvviews::DiagramGraphBuilder().build(diagram->root());
  std::string const dot = qvviews::DotWriter::write(graph);
  std::string svg = "<svg></svg>";
  if (graph.nodes.size() + graph.edges.size() <= kMostNodesLaidOut) {
    try {
      svg = qvviews::SvgRenderer::render(dot);
    } catch (std::runtime_error const& error) {
      // The writer's own text must always be drawable: anything else is a finding.
      std::fprintf(stderr, "the DOT of a stored diagram was refused: %s\n%s\n", error.what(),
                   dot.c_str());
      std::abort();
    }
  }
  std::string const page = qvviews::HtmlPage::write(graph, svg);
  (void)page;
  return 0;
}
