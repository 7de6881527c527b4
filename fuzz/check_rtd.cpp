// Fuzz target: the strict reader of run-time data files (checks/RtdCheck), held against the
// import's reader.
//
// The bytes are the file. The check must not crash, leak or run into undefined behaviour, every
// finding it makes must name a file and a code, and whenever the import's reader
// (RtdTreeBuilder::deSerialize, then the version check of the import's walk) refuses the bytes,
// the check must have said so with an error: a refusal without an error finding is a finding of
// this target (it aborts).
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <sstream>
#include <string>

#include "checks/CheckReport.h"
#include "checks/RtdCheck.h"
#include "fuzz/FuzzSupport.h"
#include "rtd/RtdTreeBuilder.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(data), size);
  qvcheck::CheckReport report;
  qvcheck::RtdCheck::checkText("input.rtd.json", text, report);
  for (qvcheck::Finding const& finding : report.findings()) {
    if (finding.file.empty() || finding.code.compare(0, 7, "QV-RTD-") != 0) std::abort();
  }

  bool refused = false;
  std::string why;
  std::istringstream in(text);
  IPA::RtdTreeBuilder reader;
  try {
    reader.deSerialize(in);
    std::shared_ptr<IPA::RtdTree> const tree = reader.build();
    refused = !tree->schemaVersion->isSupported(*tree->schemaVersion);
    why = "unsupported version";
  } catch (std::exception const& error) {
    refused = true;
    why = error.what();
  }
  if (refused && report.count(qvcheck::Severity::kError) == 0) {
    std::fprintf(stderr, "the import refuses this file (%s) but the check has no error\n",
                 why.c_str());
    std::abort();
  }
  return 0;
}
