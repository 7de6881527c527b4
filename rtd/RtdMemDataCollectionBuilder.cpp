#include "rtd/RtdMemDataCollectionBuilder.h"

#include <utility>

#include "rtd/RtdTextField.h"

namespace IPA {

namespace {

// In the order of the file format's table: the first match wins.
RtdTextField<RtdMemData> const memDataFields[] = {
    {&RtdMemData::typeId, &RtdMemData::type},
    {&RtdMemData::usedId, &RtdMemData::used},
    {&RtdMemData::sizeKBId, &RtdMemData::sizeKB},
    {&RtdMemData::baseAddressId, &RtdMemData::baseAddress},
    {&RtdMemData::tagId, &RtdMemData::tag},
    {&RtdMemData::spTagId, &RtdMemData::spTag},
};

}  // namespace

std::shared_ptr<RtdMemDataCollection> RtdMemDataCollectionBuilder::build() {
  memData.clear();
  for (auto const& child : tree.get_child(path)) {
    RtdMemData entry;
    for (auto const& member : child.second) {
      // An unknown member is no error: files carry more than this library reads.
      assignRtdTextField(entry, memDataFields, member.first, member.second.data());
    }
    memData.push_back(std::move(entry));
  }
  return std::make_shared<RtdMemDataCollection>(memData);
}

}  // namespace IPA
