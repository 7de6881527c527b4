#include "rtd/RtdTreeBuilder.h"

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <utility>

#include "rtd/RtdConnectivityBuilder.h"
#include "rtd/RtdIpLayoutBuilder.h"
#include "rtd/RtdJsonDocument.h"
#include "rtd/RtdMemTopologyBuilder.h"
#include "rtd/RtdSchemaVersionBuilder.h"

namespace IPA {

void RtdTreeBuilder::deSerialize(std::istream& in) {
  // The parsed file lives only for this call; the parts keep copies of the texts they need. It is
  // read into a compact document rather than a property tree (see RtdJsonDocument.h): the same
  // parser and the same tree, at a fraction of the allocations for a large design, read from the
  // stream a piece at a time rather than as one text.
  RtdJsonDocument const document(in);
  RtdJsonDocument::Node const tree = document.root();

  // The order of the reads decides which missing path a broken file is refused with.
  auto version = readRtdSchemaVersion(tree);
  auto memories = readRtdMemTopology(tree);
  auto ips = readRtdIpLayout(tree);
  auto connections = readRtdConnectivity(tree);

  schemaVersion = std::move(version);
  memTopology = std::move(memories);
  ipLayout = std::move(ips);
  connectivity = std::move(connections);
}

std::shared_ptr<RtdTree> RtdTreeBuilder::build() const {
  auto tree = std::make_shared<RtdTree>();
  tree->schemaVersion = schemaVersion;
  tree->memTopology = memTopology;
  tree->ipLayout = ipLayout;
  tree->connectivity = connectivity;
  return tree;
}

}  // namespace IPA
