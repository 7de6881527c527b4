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
  boost::property_tree::ptree const& list = tree.get_child(path);
  memData.reserve(list.size());
  for (auto const& child : list) {
    RtdMemData entry;
    for (auto const& member : child.second) {
      // An unknown member is no error: files carry more than this library reads.
      assignRtdTextField(entry, memDataFields, member.first, member.second.data());
    }
    memData.push_back(std::move(entry));
  }
  // The entries move into the collection: the next call reads the list afresh anyway.
  return std::make_shared<RtdMemDataCollection>(std::move(memData));
}

}  // namespace IPA
