// Findings that need two inputs: memories without an SLR, reports for unknown compute units.
#include "checks/CrossFileCheck.h"

#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "checks/CheckReport.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "rtd/RtdSystemDiagramVisitor.h"
#include "rtd/RtdTreeBuilder.h"
#include "tests/support/MessageCapture.h"
#include "tests/support/TempDir.h"

namespace {

using Lines = std::vector<std::string>;

std::string readFile(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

class CrossFileCheckTest : public ::testing::Test {
 protected:
  std::string write(std::string const& name, std::string const& text) {
    std::ofstream(directory.file(name), std::ios::binary) << text;
    return directory.file(name);
  }

  static Lines printed(qvcheck::CheckReport const& report) {
    Lines out;
    for (qvcheck::Finding const& finding : report.findings()) {
      out.push_back(qvcheck::CheckReport::line(finding));
    }
    return out;
  }

  qvtest::TempDir directory;
};

std::string const kRtd = R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},
 "mem_topology": {"m_count": "2", "m_mem_data": [{"m_spTag": "DDR[0]"},
                                                 {"m_spTag": "DDR0"}]},
 "ip_layout": {"m_count": "1", "m_ip_data": [{"m_type": "IP_KERNEL", "m_name": "vadd:vadd_1"}]},
 "connectivity": {"m_count": "0"}})";

TEST_F(CrossFileCheckTest, AMemoryWhoseTagNamesNoAddressSegment) {
  std::string const rtd = write("a.rtd.json", kRtd);
  std::string const platform = write("p.json", R"({"hardwarePlatform": {"busInterfaces": [
    {"spTag": "DDR", "addressSegments": [{"slr": "SLR0", "index": "0"}]}]}})");
  qvcheck::CheckReport report;
  qvcheck::CrossFileCheck::memorySlrs(rtd, platform, report);
  EXPECT_EQ(printed(report),
            (Lines{rtd + ":3:62: warning: mem_topology.m_mem_data[1].m_spTag: \"DDR0\" is no tag "
                         "<spTag>[<index>] of the address segments of " + platform +
                   "; the import leaves the memory's slr empty [QV-RTD-SPTAG-NO-SLR]"}));
}

TEST_F(CrossFileCheckTest, AReportForAComputeUnitTheRtdFileDoesNotHave) {
  std::string const rtd = write("a.rtd.json", kRtd);
  std::string const report = write("u.json", R"({"design_state": "Routed", "kernels": [
 {"name": "vadd", "compute_units": [{"cu_name": "vadd_1"}, {"cu_name": "vadd_2"}]}]})");
  qvcheck::CheckReport findings;
  qvcheck::CrossFileCheck::reportedComputeUnits(rtd, report, findings);
  EXPECT_EQ(printed(findings),
            (Lines{report + ":2:72: warning: kernels[0].compute_units[1].cu_name: \"vadd_2\" is no "
                            "compute unit of " + rtd +
                   "; the session keeps the report, but no compute unit of the diagram shows it "
                   "[QV-UTIL-UNKNOWN-CU]"}));
}

// The example design on its platform with one bus interface's tag changed: the memories the
// import leaves without an SLR are exactly those the check names.
TEST_F(CrossFileCheckTest, TheMemoriesWithoutAnSlrAreTheOnesTheImportLeavesEmpty) {
  std::string const rtdText = readFile(QV_EXAMPLES_DIR "/design/vector_pipeline.rtd.json");
  std::string platformText = readFile(QV_EXAMPLES_DIR "/platforms/qv_accel_h2_gen3x16.json");
  std::string::size_type const at = platformText.find("\"spTag\": \"HBM\"");
  ASSERT_NE(at, std::string::npos);
  platformText.replace(at, 14, "\"spTag\": \"hbm\"");
  std::string const rtd = write("a.rtd.json", rtdText);
  std::string const platform = write("p.json", platformText);

  qvtest::MessageCapture quiet;
  auto const root = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
  IPA::RtdSystemDiagramVisitor visitor(builder, "p", "gen", "1", "cl", "ts", "a", "b", false,
                                       "/nonexistent/kernels.txt", "label", "");
  std::istringstream in(rtdText);
  IPA::RtdTreeBuilder reader;
  reader.deSerialize(in);
  visitor.visitWithPlatformText(*reader.build(), platformText);
  std::set<std::string> emptySlr;
  auto const& topology = root->system_diagram_metadata().qsa().device_topology();
  for (int i = 0; i < topology.size(); ++i) {
    if (topology[i].slr().empty() && !topology[i].sp_tag().empty()) {
      emptySlr.insert("mem_topology.m_mem_data[" + std::to_string(i) + "].m_spTag");
    }
  }
  qvcheck::CheckReport report;
  qvcheck::CrossFileCheck::memorySlrs(rtd, platform, report);
  std::set<std::string> named;
  for (qvcheck::Finding const& finding : report.findings()) named.insert(finding.keyPath);
  EXPECT_EQ(named, emptySlr);
  EXPECT_EQ(emptySlr.size(), 32u);  // the HBM memories
}

}  // namespace
