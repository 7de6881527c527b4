#include "rtd/RtdIpDataCollectionBuilder.h"

#include <utility>

#include "rtd/RtdJsonDocument.h"
#include "rtd/RtdIpDataBuilder.h"

namespace IPA {

template <class Tree>
std::vector<RtdIpData> readRtdIpData(Tree const& tree, std::string const& listPath) {
  std::vector<RtdIpData> ipData;
  auto const& list = tree.get_child(listPath);
  ipData.reserve(list.size());
  for (auto const& child : list) {
    RtdIpDataBuilder entry;
    for (auto const& member : child.second) entry.addMember(member.first, member.second);
    ipData.push_back(entry.build());
  }
  return ipData;
}

template std::vector<RtdIpData> readRtdIpData(boost::property_tree::ptree const&, std::string const&);
template std::vector<RtdIpData> readRtdIpData(RtdJsonDocument::Node const&, std::string const&);

std::shared_ptr<RtdIpDataCollection> RtdIpDataCollectionBuilder::build() {
  return std::make_shared<RtdIpDataCollection>(readRtdIpData(tree, path));
}

}  // namespace IPA
