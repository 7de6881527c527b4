// Fuzz target: the strict reader of stored diagrams (checks/StoredDiagramCheck), held against
// the library's reader of them.
//
// The bytes are the document. The check must not crash, leak or run into undefined behaviour;
// and when the library's reader (ProfileAnalyzerSystemDiagram::serializeFromJson) refuses the
// bytes, the check must have an error.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <sstream>
#include <string>

#include "checks/CheckReport.h"
#include "checks/StoredDiagramCheck.h"
#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(data), size);
  qvcheck::CheckReport report;
  qvcheck::StoredDiagramCheck::checkText("input.json", text, report);

  auto const root = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagram diagram(root);
  std::istringstream in(text);
  try {
    diagram.serializeFromJson(in);
  } catch (std::exception const& error) {
    if (report.count(qvcheck::Severity::kError) == 0) {
      std::fprintf(stderr, "the reader refuses this diagram (%s) but the check has no error\n",
                   error.what());
      std::abort();
    }
  }
  return 0;
}
