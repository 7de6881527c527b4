#include "rtd/RtdMemTopologyBuilder.h"

#include "rtd/RtdMemDataCollectionBuilder.h"
#include "rtd/RtdSectionBuilder.h"

namespace IPA {

std::shared_ptr<RtdMemTopology> RtdMemTopologyBuilder::build() const {
  return buildRtdSection<RtdMemTopology, RtdMemDataCollectionBuilder>(tree, "mem_topology.m_count",
                                                                      "mem_topology.m_mem_data");
}

}  // namespace IPA
