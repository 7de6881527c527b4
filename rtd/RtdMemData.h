// One memory of the device, as an entry of "mem_topology.m_mem_data" in a run-time data file.
#ifndef RTD_RTDMEMDATA_H_
#define RTD_RTDMEMDATA_H_

#include <string>

namespace IPA {

// A plain record. Every value is the text that stood in the file (numbers and flags included);
// a member the entry lacks stays empty. The visitors decide what the texts mean. The key names
// are shared by the reader and by the dump of the tree; see docs/formats.md.
struct RtdMemData {
  std::string type;         // one of the MEM_ words of the stored diagram
  std::string used;         // "1" when the memory is in use
  std::string sizeKB;       // size in kilobytes
  std::string baseAddress;  // base address
  std::string tag;          // memory tag
  std::string spTag;        // joins the memory to the platform's address segments

  static const std::string typeId;         // "m_type"
  static const std::string usedId;         // "m_used"
  static const std::string sizeKBId;       // "m_sizeKB"
  static const std::string baseAddressId;  // "m_base_address"
  static const std::string tagId;          // "m_tag"
  static const std::string spTagId;        // "m_spTag"
};

inline bool operator==(RtdMemData const& a, RtdMemData const& b) {
  return a.type == b.type && a.used == b.used && a.sizeKB == b.sizeKB &&
         a.baseAddress == b.baseAddress && a.tag == b.tag && a.spTag == b.spTag;
}

}  // namespace IPA

#endif  // RTD_RTDMEMDATA_H_
