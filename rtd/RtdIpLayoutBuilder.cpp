#include "rtd/RtdIpLayoutBuilder.h"

#include "rtd/RtdIpDataCollectionBuilder.h"
#include "rtd/RtdSectionBuilder.h"

namespace IPA {

std::shared_ptr<RtdIpLayout> RtdIpLayoutBuilder::build() const {
  return buildRtdSection<RtdIpLayout, RtdIpDataCollectionBuilder>(tree, "ip_layout.m_count",
                                                                  "ip_layout.m_ip_data");
}

}  // namespace IPA
