// One kernel argument tied to a memory, as an entry of "connectivity.m_connection" in a run-time
// data file.
#ifndef RTD_RTDCONNECTION_H_
#define RTD_RTDCONNECTION_H_

#include <string>

namespace IPA {

// A plain record. Every value is the text that stood in the file, the two positions included; a
// member the entry lacks stays empty. The key names are shared by the reader and by the dump of
// the tree; see docs/formats.md.
struct RtdConnection {
  std::string argIndex;       // index of the kernel argument
  std::string argName;        // name of the kernel argument
  std::string mode;           // connection mode
  std::string ipLayoutIndex;  // position of the IP entry in "ip_layout.m_ip_data"
  std::string memDataIndex;   // position of the memory entry in "mem_topology.m_mem_data"

  static const std::string argIndexId;       // "arg_index"
  static const std::string argNameId;        // "arg_name"
  static const std::string modeId;           // "mode"
  static const std::string ipLayoutIndexId;  // "m_ip_layout_index"
  static const std::string memDataIndexId;   // "mem_data_index"
};

inline bool operator==(RtdConnection const& a, RtdConnection const& b) {
  return a.argIndex == b.argIndex && a.argName == b.argName && a.mode == b.mode &&
         a.ipLayoutIndex == b.ipLayoutIndex && a.memDataIndex == b.memDataIndex;
}

}  // namespace IPA

#endif  // RTD_RTDCONNECTION_H_
