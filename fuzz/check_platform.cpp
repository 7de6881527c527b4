// Fuzz target: the strict reader of platform descriptions (checks/PlatformCheck), held against
// the import's reading of a platform.
//
// The bytes are the description. The check must not crash, leak or run into undefined
// behaviour; and when the import's walk of the platform (RtdSystemDiagramVisitor::
// visitWithPlatformText, on a small rtd file of its own) fails, the check must have an error.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <memory>
#include <sstream>
#include <string>

#include "checks/CheckReport.h"
#include "checks/PlatformCheck.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "fuzz/FuzzSupport.h"
#include "rtd/RtdSystemDiagramVisitor.h"
#include "rtd/RtdTreeBuilder.h"

namespace {

std::shared_ptr<IPA::RtdTree> const& smallRtd() {
  static std::shared_ptr<IPA::RtdTree> const tree = [] {
    std::istringstream in(R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},
      "mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "0"},
      "connectivity": {"m_count": "0"}})");
    IPA::RtdTreeBuilder reader;
    reader.deSerialize(in);
    return reader.build();
  }();
  return tree;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const text(reinterpret_cast<char const*>(data), size);
  qvcheck::CheckReport report;
  qvcheck::PlatformCheck::checkText("input.json", text, report);

  auto const root = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
  // No kernels file: the walk reads the platform and nothing else from disk.
  IPA::RtdSystemDiagramVisitor visitor(builder, "fuzz-platform", "gen", "1", "cl", "ts", "a", "b",
                                       false, "/nonexistent/kernels.txt", "label", "");
  try {
    visitor.visitWithPlatformText(*smallRtd(), text);
  } catch (std::exception const& error) {
    if (report.count(qvcheck::Severity::kError) == 0) {
      std::fprintf(stderr, "the import fails on this platform (%s) but the check has no error\n",
                   error.what());
      std::abort();
    }
  }
  return 0;
}
