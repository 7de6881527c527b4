#include "rtd/RtdIpDataCollectionBuilder.h"

#include "rtd/RtdIpDataBuilder.h"

namespace IPA {

std::shared_ptr<RtdIpDataCollection> RtdIpDataCollectionBuilder::build() {
  ipData.clear();
  for (auto const& child : tree.get_child(path)) {
    RtdIpDataBuilder entry;
    for (auto const& member : child.second) entry.addMember(member.first, member.second);
    ipData.push_back(entry.build());
  }
  return std::make_shared<RtdIpDataCollection>(ipData);
}

}  // namespace IPA
