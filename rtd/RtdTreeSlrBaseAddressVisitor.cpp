#include "rtd/RtdTreeSlrBaseAddressVisitor.h"

#include <string>
#include <vector>

#include "diagram/TextConversions.h"

namespace IPA {

void RtdTreeSlrBaseAddressVisitor::visit(RtdTree& tree) {
  if (tree.memTopology) {
    // A copy, as the setters could in principle reach back into the tree's owner.
    std::vector<RtdMemData> const memories = tree.memTopology->getMemDataCollection()->getMemData();
    for (auto const& memory : memories) {
      diagram->setDeviceTopologyBaseAddress(memory.tag, memory.baseAddress);
      diagram->setDeviceTopologyUsed(memory.tag, memory.used == "1" ? "yes" : "no");
      diagram->setDeviceTopologySizeKB(memory.tag, memory.sizeKB);
    }
  }
  if (!tree.ipLayout) return;
  std::vector<RtdIpData> const entries = tree.ipLayout->getIpDataCollection()->getIpData();
  for (auto const& entry : entries) {
    // Only the shape of the name tells a compute unit from a plain IP; its type is not asked.
    auto const pieces = splitKeepingEmpty(entry.name, ':');
    if (pieces.size() < 2) continue;
    diagram->setComputeUnitBaseAddress(pieces[0], pieces[1], entry.baseAddress);
  }
}

}  // namespace IPA
