#include "platform/scout/Kernel.h"

namespace scout {

std::int32_t Kernel::getTypeFromString(std::string const& text) {
  // 0 is also the type that a kernel of unknown type is given, so the most common kind, a
  // kernel compiled from C or C++ by high-level synthesis, has it.
  static struct {
    char const* word;
    std::int32_t type;
  } const kTypes[] = {{"hls", 0}, {"rtl", 1}, {"opencl", 2}, {"ps", 3}};
  for (auto const& entry : kTypes) {
    if (text == entry.word) return entry.type;
  }
  return -1;
}

}  // namespace scout
