#include "rtd/RtdConnectionCollectionBuilder.h"

#include <utility>

#include "rtd/RtdTextField.h"

namespace IPA {

namespace {

// In the order of the file format's table: the first match wins.
RtdTextField<RtdConnection> const connectionFields[] = {
    {&RtdConnection::argIndexId, &RtdConnection::argIndex},
    {&RtdConnection::argNameId, &RtdConnection::argName},
    {&RtdConnection::modeId, &RtdConnection::mode},
    {&RtdConnection::ipLayoutIndexId, &RtdConnection::ipLayoutIndex},
    {&RtdConnection::memDataIndexId, &RtdConnection::memDataIndex},
};

}  // namespace

std::shared_ptr<RtdConnectionCollection> RtdConnectionCollectionBuilder::build() {
  connections.clear();
  boost::property_tree::ptree const& list = tree.get_child(path);
  connections.reserve(list.size());
  for (auto const& child : list) {
    RtdConnection entry;
    for (auto const& member : child.second) {
      // An unknown member is no error: files carry more than this library reads.
      assignRtdTextField(entry, connectionFields, member.first, member.second.data());
    }
    connections.push_back(std::move(entry));
  }
  // The entries move into the collection: the next call reads the list afresh anyway.
  return std::make_shared<RtdConnectionCollection>(std::move(connections));
}

}  // namespace IPA
