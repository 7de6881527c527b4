// Stored system diagrams as ReadSystemDiagram reads them: for each finding a minimal document
// and the exact line printed for it.
#include "checks/StoredDiagramCheck.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "checks/CheckReport.h"

namespace {

using Lines = std::vector<std::string>;

Lines lines(std::string const& text) {
  qvcheck::CheckReport report;
  qvcheck::StoredDiagramCheck::checkText("d.json", text, report);
  Lines printed;
  for (qvcheck::Finding const& finding : report.findings()) {
    printed.push_back(qvcheck::CheckReport::line(finding));
  }
  return printed;
}

TEST(StoredDiagramCheckTest, TheShippedDiagramsHaveNoFindings) {
  qvcheck::CheckReport report;
  qvcheck::StoredDiagramCheck::checkFile(QV_TEST_DATA_DIR "/diagrams/base.json", report);
  EXPECT_EQ(report.findings().size(), 0u);
}

TEST(StoredDiagramCheckTest, FieldsByTheirNameOrTheirJsonName) {
  EXPECT_EQ(lines(R"({"system_diagram_metadata": {"schema_version": {"major": "2"},
    "qsa": {"board_id": "u2", "boardId": "u2"}}})"),
            Lines{});
}

TEST(StoredDiagramCheckTest, AnUnknownKeyNamesTheNearestField) {
  EXPECT_EQ(lines("{\"system_diagram_metadata\": {\"qrxbin\": {\"user_regions\": [\n"
                  "  {\"compute_units\": [{\"kernel_nam\": \"vadd\"}]}]}}}"),
            (Lines{"d.json:2:23: error: system_diagram_metadata.qrxbin.user_regions[0]."
                   "compute_units[0]: kernel_nam is not a field of computeUnit (did you mean "
                   "kernel_name?); the reader refuses the file [QV-DIAGRAM-UNKNOWN-KEY]"}));
}

TEST(StoredDiagramCheckTest, AnEnumerationNameSpelledOtherwise) {
  EXPECT_EQ(lines("{\"system_diagram_metadata\": {\"qsa\": {\"clocks\": [\n"
                  "  {\"name\": \"c\", \"status\": \"CLOCK_Fixed\"}]}}}"),
            (Lines{"d.json:2:27: error: system_diagram_metadata.qsa.clocks[0].status: "
                   "\"CLOCK_Fixed\" is no value of ClockStatus (did you mean CLOCK_FIXED?); the "
                   "reader refuses the file [QV-DIAGRAM-ENUM]"}));
}

TEST(StoredDiagramCheckTest, WhatElseTheReaderRefusesInItsOwnWords) {
  Lines const found = lines(R"({"system_diagram_metadata": {"qsa": {"clocks": [{"id": "x"}]}}})");
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].substr(0, 66), "d.json: error: refused: (system_diagram_metadata.qsa.clocks[0].id)");
  EXPECT_EQ(found[0].substr(found[0].size() - 50),
            "; the reader refuses the file [QV-DIAGRAM-REFUSED]");
}

}  // namespace
