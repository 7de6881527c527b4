#include "rtd/RtdConnectivityBuilder.h"

#include <string>

#include "rtd/RtdConnectionCollectionBuilder.h"
#include "rtd/RtdJsonDocument.h"
#include "rtd/RtdSectionBuilder.h"

namespace IPA {

template <class Tree>
std::shared_ptr<RtdConnectivity> readRtdConnectivity(Tree const& tree) {
  return readRtdSection<RtdConnectivity>(tree, "connectivity.m_count", "connectivity.m_connection",
                            [](Tree const& parsed, std::string const& path) {
                              return std::make_shared<RtdConnectionCollection>(readRtdConnections(parsed, path));
                            });
}

template std::shared_ptr<RtdConnectivity> readRtdConnectivity(boost::property_tree::ptree const&);
template std::shared_ptr<RtdConnectivity> readRtdConnectivity(RtdJsonDocument::Node const&);

std::shared_ptr<RtdConnectivity> RtdConnectivityBuilder::build() const { return readRtdConnectivity(tree); }

}  // namespace IPA
