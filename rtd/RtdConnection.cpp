#include "rtd/RtdConnection.h"

namespace IPA {

const std::string RtdConnection::argIndexId = "arg_index";
const std::string RtdConnection::argNameId = "arg_name";
const std::string RtdConnection::modeId = "mode";
const std::string RtdConnection::ipLayoutIndexId = "m_ip_layout_index";
const std::string RtdConnection::memDataIndexId = "mem_data_index";

}  // namespace IPA
