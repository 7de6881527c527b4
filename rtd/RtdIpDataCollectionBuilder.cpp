#include "rtd/RtdIpDataCollectionBuilder.h"

#include <utility>

#include "rtd/RtdIpDataBuilder.h"

namespace IPA {

std::shared_ptr<RtdIpDataCollection> RtdIpDataCollectionBuilder::build() {
  ipData.clear();
  boost::property_tree::ptree const& list = tree.get_child(path);
  ipData.reserve(list.size());
  for (auto const& child : list) {
    RtdIpDataBuilder entry;
    for (auto const& member : child.second) entry.addMember(member.first, member.second);
    ipData.push_back(entry.build());
  }
  // The entries move into the collection: the next call reads the list afresh anyway.
  return std::make_shared<RtdIpDataCollection>(std::move(ipData));
}

}  // namespace IPA
