// Fuzz target: the reader of the flow report's text layout behind qvdiag report --format json.
//
// The bytes are a report's text; one that has the layout is written as JSON. The reader sees
// the library's own output in practice, but a report file may come from anywhere, and the
// reader must refuse anything else with its line, never read out of bounds.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "views/FlowReportData.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(data), size);
  try {
    std::ostringstream json;
    qvviews::FlowReportData::fromText(text).writeJson(json);
  } catch (std::runtime_error const&) {
    // "line N: ...": the documented refusal.
  }
  return 0;
}
