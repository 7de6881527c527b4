// What every fuzz target shares: a quiet process, one scratch file for the inputs that the
// library only reads from a path, and the example files the targets build on.
#ifndef FUZZ_FUZZSUPPORT_H_
#define FUZZ_FUZZSUPPORT_H_

#include <cstddef>
#include <cstdint>
#include <string>

namespace qvfuzz {

// Silences the repository's Log lines, the catalogue's messages, the server's trace and
// libxml2's own error printing. A fuzzer runs millions of inputs, nearly all of them bad, and
// every one of them would otherwise write its complaint to standard error. Call once, first.
void quiet();

// Writes the input to the one scratch file of this process (in a fresh directory under
// $TMPDIR, removed at exit) and returns its path. Each call replaces the content.
std::string writeScratchFile(std::uint8_t const* data, std::size_t size);

// A file of the source tree's examples/ or tests/data/ folder, e.g. "platforms/x.json".
std::string exampleFile(std::string const& name);
std::string testDataFile(std::string const& name);

// The whole content of a file; throws std::runtime_error when it cannot be read.
std::string readFile(std::string const& path);

}  // namespace qvfuzz

#endif  // FUZZ_FUZZSUPPORT_H_
