#include "rtd/RtdIpData.h"

namespace IPA {

const std::string RtdIpData::ClockRef::refClockIdId = "refClockId";

const std::string RtdIpData::typeId = "m_type";
const std::string RtdIpData::propertiesId = "properties";
const std::string RtdIpData::intEnableId = "m_int_enable";
const std::string RtdIpData::interruptIdId = "m_interrupt_id";
const std::string RtdIpData::ipControlId = "m_ip_control";
const std::string RtdIpData::baseAddressId = "m_base_address";
const std::string RtdIpData::nameId = "m_name";
const std::string RtdIpData::clocksId = "m_clocks";

}  // namespace IPA
