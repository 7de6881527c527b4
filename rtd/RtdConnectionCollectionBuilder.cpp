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
  for (auto const& child : tree.get_child(path)) {
    RtdConnection entry;
    for (auto const& member : child.second) {
      // An unknown member is no error: files carry more than this library reads.
      assignRtdTextField(entry, connectionFields, member.first, member.second.data());
    }
    connections.push_back(std::move(entry));
  }
  return std::make_shared<RtdConnectionCollection>(connections);
}

}  // namespace IPA
