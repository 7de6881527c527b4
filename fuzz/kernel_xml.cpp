// Fuzz target: a kernel's own description, "kernel.xml".
//
// The bytes are the file. HCOKernelXMLReader::parse either reads it into a kernel definition or
// throws std::runtime_error naming the file and line; on failure the definition stays empty.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "platform/hco/HCOKernelXMLReader.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const path = qvfuzz::writeScratchFile(data, size);
  HCOKernelXMLReader reader(path);
  try {
    reader.parse();
  } catch (std::runtime_error const& error) {
    // The message names the file; an empty definition is what a failure leaves.
    if (std::string(error.what()).rfind(path, 0) != 0) std::abort();
    if (!reader.getKernelDef().getPorts().empty() || !reader.getKernelDef().getArgs().empty()) {
      std::abort();
    }
    return 0;
  }
  return 0;
}
