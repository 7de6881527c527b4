// Fuzz target: the components of a hardware repository file, read as property trees.
//
// The bytes are the file. The repository reads its components with QDComponentReader, which
// runs Boost's XML parser and makes trees of the qd:component elements alone; the target holds
// it against what it replaces, read_xml of the whole file and the qd:component children of its
// qd:repository tree. Both must give the same trees in the same order, or throw the same
// exception with the same text; any difference aborts.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "tests/host/qd/qdrepo/ComponentTreeTranscript.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const path = qvfuzz::writeScratchFile(data, size);
  std::string const expected = qvtest::ComponentTreeTranscript::byReadXml(path);
  std::string const read = qvtest::ComponentTreeTranscript::byComponentReader(path);
  if (read != expected) {
    std::fprintf(stderr, "read_xml:\n%s\nthe component reader:\n%s\n", expected.c_str(),
                 read.c_str());
    std::abort();
  }
  return 0;
}
