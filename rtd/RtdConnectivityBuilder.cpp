#include "rtd/RtdConnectivityBuilder.h"

#include "rtd/RtdConnectionCollectionBuilder.h"
#include "rtd/RtdSectionBuilder.h"

namespace IPA {

std::shared_ptr<RtdConnectivity> RtdConnectivityBuilder::build() const {
  return buildRtdSection<RtdConnectivity, RtdConnectionCollectionBuilder>(
      tree, "connectivity.m_count", "connectivity.m_connection");
}

}  // namespace IPA
