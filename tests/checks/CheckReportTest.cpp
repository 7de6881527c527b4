// How findings are shown: the compiler's line, the summary, the JSON document, the exit code.
#include "checks/CheckReport.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "checks/NearestKey.h"

namespace {

qvcheck::Finding finding(qvcheck::Severity severity, int line, int column, char const* path) {
  qvcheck::Finding f;
  f.severity = severity;
  f.file = "a.json";
  f.line = line;
  f.column = column;
  f.keyPath = path;
  f.text = "it \"is\" so";
  f.effect = "the import does that";
  f.code = "QV-X-Y";
  return f;
}

TEST(CheckReportTest, LinesLeaveOutWhatIsNotKnown) {
  using qvcheck::CheckReport;
  using qvcheck::Severity;
  EXPECT_EQ(CheckReport::line(finding(Severity::kWarning, 3, 7, "a.b")),
            "a.json:3:7: warning: a.b: it \"is\" so; the import does that [QV-X-Y]");
  EXPECT_EQ(CheckReport::line(finding(Severity::kError, 3, 0, "")),
            "a.json:3: error: it \"is\" so; the import does that [QV-X-Y]");
  qvcheck::Finding bare = finding(Severity::kNote, 0, 0, "");
  bare.effect.clear();
  EXPECT_EQ(CheckReport::line(bare), "a.json: note: it \"is\" so [QV-X-Y]");
}

TEST(CheckReportTest, SummaryJsonAndExitCodes) {
  qvcheck::CheckReport report;
  report.addFile("a.json");
  report.addFile("a.json");
  EXPECT_EQ(report.exitCode(true), 0);
  report.add(finding(qvcheck::Severity::kWarning, 1, 2, "k"));
  EXPECT_EQ(report.exitCode(false), 0);
  EXPECT_EQ(report.exitCode(true), 1);
  std::ostringstream text;
  report.writeText(text);
  EXPECT_EQ(text.str(),
            "a.json:1:2: warning: k: it \"is\" so; the import does that [QV-X-Y]\n"
            "check: 0 errors, 1 warning, 0 notes in 1 file\n");
  std::ostringstream json;
  report.writeJson(json);
  EXPECT_EQ(json.str(),
            "{\n \"findings\": [\n  {\"severity\": \"warning\", \"code\": \"QV-X-Y\", \"file\": "
            "\"a.json\", \"line\": 1, \"column\": 2, \"key_path\": \"k\", \"text\": \"it \\\"is\\\" "
            "so\", \"effect\": \"the import does that\"}\n ],\n \"files\": [\"a.json\"],\n "
            "\"summary\": {\"errors\": 0, \"warnings\": 1, \"notes\": 0}\n}\n");
  report.add(finding(qvcheck::Severity::kError, 1, 2, "k"));
  EXPECT_EQ(report.exitCode(false), 1);
}

TEST(CheckReportTest, NearestKeys) {
  std::vector<std::string> const keys = {"m_type", "m_used", "m_tag", "m_spTag"};
  EXPECT_EQ(qvcheck::nearestKey("m_tpye", keys), "m_type");  // two letters swapped
  EXPECT_EQ(qvcheck::nearestKey("M_TAG", keys), "m_tag");    // case
  EXPECT_EQ(qvcheck::nearestKey("m_sptag", keys), "m_spTag");
  EXPECT_EQ(qvcheck::nearestKey("colour", keys), "");
  EXPECT_EQ(qvcheck::nearestKey("ab", {"xy"}), "");
}

}  // namespace
