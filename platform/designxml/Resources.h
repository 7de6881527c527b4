// One resource record of a high-level synthesis report.
#ifndef PLATFORM_DESIGNXML_RESOURCES_H_
#define PLATFORM_DESIGNXML_RESOURCES_H_

#include <cstdint>

#include "platform/lmx60/List.h"

namespace DesignXML {

// The counts a record gives, one list per resource, each with the values of its repeated
// element in document order. A resource the record does not list is an empty list.
struct Resources {
  lmx60::List<std::uint32_t> BRAM;
  lmx60::List<std::uint32_t> DSP;
  // Flip-flops.
  lmx60::List<std::uint32_t> FF;
  lmx60::List<std::uint32_t> LUT;
  // Shift registers built of look-up tables; reported, not used by the diagram.
  lmx60::List<std::uint32_t> SRL;
  lmx60::List<std::uint32_t> URAM;
};

}  // namespace DesignXML

#endif  // PLATFORM_DESIGNXML_RESOURCES_H_
