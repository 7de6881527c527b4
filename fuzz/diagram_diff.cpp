// Fuzz target: the stored diagrams that qvdiag diff reads, and the difference it writes.
//
// The input is two diagrams, split at the first form feed (which JSON never holds unescaped);
// without one, the input is compared with itself and with the example diagram. Each diagram
// that reads is compared with the other both ways and written as text and as JSON, with and
// without the unchanged entries.
#include <cstddef>
#include <cstdint>
#include <sstream>
#include <stdexcept>
#include <string>

#include "fuzz/FuzzSupport.h"
#include "views/DiagramDiff.h"
#include "views/StoredDiagram.h"

namespace {

void writeBoth(qvviews::StoredDiagram const& before, qvviews::StoredDiagram const& after) {
  for (bool all : {false, true}) {
    qvviews::DiagramDiff const diff = qvviews::DiagramDiff::compare(before, after, all);
    std::ostringstream text, json;
    diff.writeText(text, all);
    diff.writeJson(json, all, "a.json", "b.json");
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  static qvviews::StoredDiagram const example = qvviews::StoredDiagram::fromFile(
      qvfuzz::testDataFile("golden/qvdiag_build/system_diagram.json"));
  std::string const input(reinterpret_cast<char const*>(data), size);
  std::size_t const split = input.find('\f');
  try {
    if (split == std::string::npos) {
      qvviews::StoredDiagram const one = qvviews::StoredDiagram::fromText(input, "a.json");
      writeBoth(one, one);
      writeBoth(one, example);
      writeBoth(example, one);
      return 0;
    }
    qvviews::StoredDiagram const before =
        qvviews::StoredDiagram::fromText(input.substr(0, split), "a.json");
    qvviews::StoredDiagram const after =
        qvviews::StoredDiagram::fromText(input.substr(split + 1), "b.json");
    writeBoth(before, after);
    writeBoth(after, before);
  } catch (std::runtime_error const&) {
    // "a.json: Deserializing failed with error: ...": the documented refusal.
  }
  return 0;
}
