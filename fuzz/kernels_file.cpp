// Fuzz target: the kernels file of an import.
//
// The bytes are the file. RtdKernelConfigure::parseKernelsFile reads it line by line into kernel
// records; what it does not understand becomes a message, never a failure. The configuration
// that follows (kernel.xml, the system compiler database) reads the directories the lines name,
// which a fuzzer would point anywhere on the machine, so it is left to the kernel_xml and
// design_xml targets and to the repository_file target.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "fuzz/FuzzSupport.h"
#include "platform/ombro/Kernel.h"
#include "rtd/RtdKernelConfigure.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::vector<std::string> const none;
  IPA::RtdKernelConfigure configure(none, none, none, "", false);
  std::vector<OmbroCommonUtils::Kernel> kernels;
  std::string errorText;
  // False only when the file's status cannot be taken, which a file just written never gives.
  if (!configure.parseKernelsFile(qvfuzz::writeScratchFile(data, size), kernels, errorText)) {
    std::abort();
  }
  // A line such as ",dir" makes a record without a name: the file's fields are taken as they
  // stand, so no property of the records is checked here beyond their being made.
  return 0;
}
