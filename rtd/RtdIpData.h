// One IP block or compute unit, as an entry of "ip_layout.m_ip_data" in a run-time data file.
#ifndef RTD_RTDIPDATA_H_
#define RTD_RTDIPDATA_H_

#include <string>
#include <vector>

namespace IPA {

// A plain record. Every value is the text that stood in the file; a member the entry lacks stays
// empty. The key names are shared by the reader and by the dump of the tree; see
// docs/formats.md.
struct RtdIpData {
  // One clock port of the IP and the clock it is tied to.
  struct ClockRef {
    std::string portName;    // the member key inside a group of "m_clocks"
    std::string refClockId;  // empty when the port names no clock

    static const std::string refClockIdId;  // "refClockId"
  };

  std::string type;         // IP type word
  std::string properties;   // properties, as text
  std::string intEnable;    // interrupt enable, as text
  std::string interruptId;  // interrupt number, as text
  std::string ipControl;    // control protocol, as text
  std::string baseAddress;  // base address, as text
  // For a compute unit "<kernel>:<compute unit>"; for any other IP a name without a colon.
  std::string name;
  // Every port of every group of "m_clocks", in the order of the file.
  std::vector<ClockRef> clocks;

  static const std::string typeId;         // "m_type"
  static const std::string propertiesId;   // "properties"
  static const std::string intEnableId;    // "m_int_enable"
  static const std::string interruptIdId;  // "m_interrupt_id"
  static const std::string ipControlId;    // "m_ip_control"
  static const std::string baseAddressId;  // "m_base_address"
  static const std::string nameId;         // "m_name"
  static const std::string clocksId;       // "m_clocks"
};

inline bool operator==(RtdIpData::ClockRef const& a, RtdIpData::ClockRef const& b) {
  return a.portName == b.portName && a.refClockId == b.refClockId;
}

inline bool operator==(RtdIpData const& a, RtdIpData const& b) {
  return a.type == b.type && a.properties == b.properties && a.intEnable == b.intEnable &&
         a.interruptId == b.interruptId && a.ipControl == b.ipControl &&
         a.baseAddress == b.baseAddress && a.name == b.name && a.clocks == b.clocks;
}

}  // namespace IPA

#endif  // RTD_RTDIPDATA_H_
