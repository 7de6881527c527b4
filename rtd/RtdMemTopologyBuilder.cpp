#include "rtd/RtdMemTopologyBuilder.h"

#include <string>

#include "rtd/RtdMemDataCollectionBuilder.h"
#include "rtd/RtdJsonDocument.h"
#include "rtd/RtdSectionBuilder.h"

namespace IPA {

template <class Tree>
std::shared_ptr<RtdMemTopology> readRtdMemTopology(Tree const& tree) {
  return readRtdSection<RtdMemTopology>(tree, "mem_topology.m_count", "mem_topology.m_mem_data",
                            [](Tree const& parsed, std::string const& path) {
                              return std::make_shared<RtdMemDataCollection>(readRtdMemData(parsed, path));
                            });
}

template std::shared_ptr<RtdMemTopology> readRtdMemTopology(boost::property_tree::ptree const&);
template std::shared_ptr<RtdMemTopology> readRtdMemTopology(RtdJsonDocument::Node const&);

std::shared_ptr<RtdMemTopology> RtdMemTopologyBuilder::build() const { return readRtdMemTopology(tree); }

}  // namespace IPA
