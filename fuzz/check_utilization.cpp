// Fuzz target: the strict reader of actual resources documents (checks/UtilizationCheck).
//
// The bytes are the document. The check must not crash, leak or run into undefined behaviour,
// and every finding must name its file and carry a QV-UTIL- code.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string>

#include "checks/CheckReport.h"
#include "checks/UtilizationCheck.h"
#include "fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  qvcheck::CheckReport report;
  qvcheck::UtilizationCheck::checkText(
      "input.json", std::string(reinterpret_cast<char const*>(data), size), report);
  for (qvcheck::Finding const& finding : report.findings()) {
    if (finding.file.empty() || finding.code.compare(0, 8, "QV-UTIL-") != 0) std::abort();
  }
  return 0;
}
