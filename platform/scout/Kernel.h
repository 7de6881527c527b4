// Kernel types of the kernel tools.
#ifndef PLATFORM_SCOUT_KERNEL_H_
#define PLATFORM_SCOUT_KERNEL_H_

#include <cstdint>
#include <string>

namespace scout {

class Kernel {
 public:
  // The type number of a kernel type word, as the kernels file writes it (docs/formats.md,
  // "The kernels file"): "hls" 0, "rtl" 1, "opencl" 2, "ps" 3. Words are compared exactly, case
  // included; any other text, the empty one too, is -1.
  static std::int32_t getTypeFromString(std::string const& text);
};

}  // namespace scout

#endif  // PLATFORM_SCOUT_KERNEL_H_
