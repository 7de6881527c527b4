#include "rtd/RtdMemData.h"

namespace IPA {

const std::string RtdMemData::typeId = "m_type";
const std::string RtdMemData::usedId = "m_used";
const std::string RtdMemData::sizeKBId = "m_sizeKB";
const std::string RtdMemData::baseAddressId = "m_base_address";
const std::string RtdMemData::tagId = "m_tag";
const std::string RtdMemData::spTagId = "m_spTag";

}  // namespace IPA
