#include "diagram/QsaDeviceTopologyBuilder.h"

#include <array>
#include <utility>

namespace IPA {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

pb::MemoryType QsaDeviceTopologyBuilder::memoryType(std::string const& word) {
  static const std::array<std::pair<char const*, pb::MemoryType>, 8> kWords = {{
      {"MEM_DDR3", pb::MEM_DDR3},
      {"MEM_DDR4", pb::MEM_DDR4},
      {"MEM_DRAM", pb::MEM_DRAM},
      {"MEM_HBM", pb::MEM_HBM},
      {"MEM_BRAM", pb::MEM_BRAM},
      {"MEM_URAM", pb::MEM_URAM},
      {"MEM_STREAMING", pb::MEM_STREAMING},
      {"MEM_STREAMING_CONNECTION", pb::MEM_STREAMING_CONNECTION},
  }};
  for (auto const& entry : kWords) {
    if (word == entry.first) return entry.second;
  }
  return pb::MEM_UNSET;
}

}  // namespace IPA
