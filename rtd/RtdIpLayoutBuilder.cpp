#include "rtd/RtdIpLayoutBuilder.h"

#include <string>

#include "rtd/RtdIpDataCollectionBuilder.h"
#include "rtd/RtdJsonDocument.h"
#include "rtd/RtdSectionBuilder.h"

namespace IPA {

template <class Tree>
std::shared_ptr<RtdIpLayout> readRtdIpLayout(Tree const& tree) {
  return readRtdSection<RtdIpLayout>(tree, "ip_layout.m_count", "ip_layout.m_ip_data",
                            [](Tree const& parsed, std::string const& path) {
                              return std::make_shared<RtdIpDataCollection>(readRtdIpData(parsed, path));
                            });
}

template std::shared_ptr<RtdIpLayout> readRtdIpLayout(boost::property_tree::ptree const&);
template std::shared_ptr<RtdIpLayout> readRtdIpLayout(RtdJsonDocument::Node const&);

std::shared_ptr<RtdIpLayout> RtdIpLayoutBuilder::build() const { return readRtdIpLayout(tree); }

}  // namespace IPA
