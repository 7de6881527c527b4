// How the rtd records show in the messages of a failed test.
#ifndef TESTS_RTD_RTDPRINT_H_
#define TESTS_RTD_RTDPRINT_H_

#include <ostream>

#include "rtd/RtdConnection.h"
#include "rtd/RtdIpData.h"
#include "rtd/RtdMemData.h"

namespace IPA {

// GoogleTest finds these by argument-dependent lookup; without them a failed comparison shows
// the records as raw bytes.
inline void PrintTo(RtdMemData const& m, std::ostream* os) {
  *os << "{type \"" << m.type << "\", used \"" << m.used << "\", sizeKB \"" << m.sizeKB
      << "\", baseAddress \"" << m.baseAddress << "\", tag \"" << m.tag << "\", spTag \"" << m.spTag
      << "\"}";
}

inline void PrintTo(RtdIpData::ClockRef const& c, std::ostream* os) {
  *os << "{portName \"" << c.portName << "\", refClockId \"" << c.refClockId << "\"}";
}

inline void PrintTo(RtdIpData const& ip, std::ostream* os) {
  *os << "{type \"" << ip.type << "\", properties \"" << ip.properties << "\", intEnable \""
      << ip.intEnable << "\", interruptId \"" << ip.interruptId << "\", ipControl \""
      << ip.ipControl << "\", baseAddress \"" << ip.baseAddress << "\", name \"" << ip.name
      << "\", clocks [";
  for (auto const& clock : ip.clocks) PrintTo(clock, os);
  *os << "]}";
}

inline void PrintTo(RtdConnection const& c, std::ostream* os) {
  *os << "{argIndex \"" << c.argIndex << "\", argName \"" << c.argName << "\", mode \"" << c.mode
      << "\", ipLayoutIndex \"" << c.ipLayoutIndex << "\", memDataIndex \"" << c.memDataIndex
      << "\"}";
}

}  // namespace IPA

#endif  // TESTS_RTD_RTDPRINT_H_
