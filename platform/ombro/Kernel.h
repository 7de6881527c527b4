// One kernel of a design, as the kernel tools of the tool chain pass it around.
#ifndef PLATFORM_OMBRO_KERNEL_H_
#define PLATFORM_OMBRO_KERNEL_H_

#include <cstdint>
#include <string>
#include <vector>

#include "platform/mvk/ArgDesc.h"
#include "platform/mvk/PortDesc.h"

namespace OmbroCommonUtils {

// A plain record, filled step by step by whoever knows a part: the kernels file gives the name,
// type and directory, the kernel's description its ports and arguments, the instance lists its
// instances.
struct Kernel {
  std::string name;
  // The directory that holds the kernel's "kernel.xml", "kernel.json" and report.
  std::string directory;
  // What the kernel's build records of its origin; carried, not interpreted here.
  std::string topFunction;
  std::string language;
  std::string vendor;
  std::string library;
  std::string version;
  // A word of the table of scout::Kernel::getTypeFromString; -1 while unknown.
  std::int32_t type = -1;
  // 1 when the system compiler database describes the kernel; -1 otherwise.
  std::int32_t repoKernel = -1;
  // The compute units of the kernel, in the order collectKernelInsts was told them, and beside
  // each the instance list text that named it.
  std::vector<std::string> instances;
  std::vector<std::string> instanceOrigins;
  std::vector<mvk::kernel::PortDesc> ports;
  std::vector<mvk::kernel::ArgDesc> args;
};

}  // namespace OmbroCommonUtils

#endif  // PLATFORM_OMBRO_KERNEL_H_
