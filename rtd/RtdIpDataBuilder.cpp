#include "rtd/RtdIpDataBuilder.h"

#include <vector>

#include "rtd/RtdJsonDocument.h"
#include "rtd/RtdTextField.h"

namespace IPA {

namespace {

// In the order of the file format's table: the first match wins.
RtdTextField<RtdIpData> const ipDataFields[] = {
    {&RtdIpData::typeId, &RtdIpData::type},
    {&RtdIpData::propertiesId, &RtdIpData::properties},
    {&RtdIpData::intEnableId, &RtdIpData::intEnable},
    {&RtdIpData::interruptIdId, &RtdIpData::interruptId},
    {&RtdIpData::ipControlId, &RtdIpData::ipControl},
    {&RtdIpData::baseAddressId, &RtdIpData::baseAddress},
    {&RtdIpData::nameId, &RtdIpData::name},
};

// "m_clocks" is a list of groups, each an object from port name to {"refClockId": ...}. The
// groups carry no meaning of their own, so their ports are kept as one flat list.
template <class Tree>
std::vector<RtdIpData::ClockRef> readClocks(Tree const& groups) {
  std::vector<RtdIpData::ClockRef> clocks;
  for (auto const& group : groups) {
    for (auto const& port : group.second) {
      std::string const refClockId =
          port.second.template get<std::string>(RtdIpData::ClockRef::refClockIdId, std::string());
      clocks.push_back(RtdIpData::ClockRef{port.first, refClockId});
    }
  }
  return clocks;
}

}  // namespace

template <class Tree>
void RtdIpDataBuilder::addMember(std::string const& key, Tree const& value) {
  if (assignRtdTextField(ipData, ipDataFields, key, value.data())) return;
  // A repeated "m_clocks" replaces the earlier list rather than adding to it, as a repeated text
  // member replaces its value.
  if (key == RtdIpData::clocksId) ipData.clocks = readClocks(value);
}

template void RtdIpDataBuilder::addMember(std::string const&, boost::property_tree::ptree const&);
template void RtdIpDataBuilder::addMember(std::string const&, RtdJsonDocument::Node const&);

}  // namespace IPA
