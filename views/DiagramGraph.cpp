#include "views/DiagramGraph.h"

#include <algorithm>

namespace qvviews {

DiagramGraph::Node const* DiagramGraph::node(std::string const& id) const {
  auto const found =
      std::find_if(nodes.begin(), nodes.end(), [&id](Node const& each) { return each.id == id; });
  return found == nodes.end() ? nullptr : &*found;
}

DiagramGraph::Cluster const* DiagramGraph::cluster(std::string const& id) const {
  auto const found = std::find_if(clusters.begin(), clusters.end(),
                                  [&id](Cluster const& each) { return each.id == id; });
  return found == clusters.end() ? nullptr : &*found;
}

std::size_t DiagramGraph::count(NodeKind kind) const {
  return static_cast<std::size_t>(std::count_if(
      nodes.begin(), nodes.end(), [kind](Node const& each) { return each.kind == kind; }));
}

std::size_t DiagramGraph::count(EdgeKind kind) const {
  return static_cast<std::size_t>(std::count_if(
      edges.begin(), edges.end(), [kind](Edge const& each) { return each.kind == kind; }));
}

}  // namespace qvviews
