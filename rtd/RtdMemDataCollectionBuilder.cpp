#include "rtd/RtdMemDataCollectionBuilder.h"

#include <utility>

#include "rtd/RtdJsonDocument.h"
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

template <class Tree>
std::vector<RtdMemData> readRtdMemData(Tree const& tree, std::string const& listPath) {
  std::vector<RtdMemData> memData;
  auto const& list = tree.get_child(listPath);
  memData.reserve(list.size());
  for (auto const& child : list) {
    RtdMemData entry;
    for (auto const& member : child.second) {
      // An unknown member is no error: files carry more than this library reads.
      assignRtdTextField(entry, memDataFields, member.first, member.second.data());
    }
    memData.push_back(std::move(entry));
  }
  return memData;
}

template std::vector<RtdMemData> readRtdMemData(boost::property_tree::ptree const&, std::string const&);
template std::vector<RtdMemData> readRtdMemData(RtdJsonDocument::Node const&, std::string const&);

std::shared_ptr<RtdMemDataCollection> RtdMemDataCollectionBuilder::build() {
  return std::make_shared<RtdMemDataCollection>(readRtdMemData(tree, path));
}

}  // namespace IPA
