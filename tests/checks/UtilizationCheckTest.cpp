// Actual resources documents as UtilizationDuringBrenloRun reads them: for each finding a
// minimal document and the exact line printed for it.
#include "checks/UtilizationCheck.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "checks/CheckReport.h"

namespace {

using Lines = std::vector<std::string>;

std::string const kGood = R"({
 "schema_version": {"major": "1", "minor": "0", "patch": "0"},
 "design_state": "Routed",
 "kernels": [
  {"name": "vadd",
   "compute_units": [
    {"cu_name": "vadd_1",
     "actual_resources": {"LUT": "2398", "REG": "3790", "BRAM": "2", "URAM": "0", "DSP": "0"}}]}]
}
)";

Lines lines(std::string const& text) {
  qvcheck::CheckReport report;
  qvcheck::UtilizationCheck::checkText("u.json", text, report);
  Lines printed;
  for (qvcheck::Finding const& finding : report.findings()) {
    printed.push_back(qvcheck::CheckReport::line(finding));
  }
  return printed;
}

std::string changed(std::string const& from, std::string const& to) {
  std::string text = kGood;
  std::string::size_type const at = text.find(from);
  EXPECT_NE(at, std::string::npos) << from;
  if (at != std::string::npos) text.replace(at, from.size(), to);
  return text;
}

TEST(UtilizationCheckTest, ADocumentTheRequestTakesWholeHasNoFindings) {
  EXPECT_EQ(lines(kGood), Lines{});
}

TEST(UtilizationCheckTest, AnUnknownStateWordIsStoredUnset) {
  EXPECT_EQ(lines(changed("\"Routed\"", "\"routed\"")),
            (Lines{"u.json:3:18: warning: design_state: the string \"routed\" is none of "
                   "Synthesized, Fully Placed, Routed (did you mean Routed?); the import stores "
                   "the reports as DESIGN_STATE_UNSET [QV-UTIL-STATE]"}));
}

TEST(UtilizationCheckTest, ANameAfterWhatItNamesRefusesTheRequest) {
  // The state after the kernels: the report is reached with none.
  std::string late = changed(" \"design_state\": \"Routed\",\n", "");
  late.replace(late.rfind('}'), 1, ", \"design_state\": \"Routed\"}");
  EXPECT_EQ(lines(late),
            (Lines{"u.json:7:6: error: kernels[0].compute_units[0].actual_resources: the report "
                   "is reached with an empty design_state (each name must stand before what it "
                   "names: design_state before kernels, name before compute_units, cu_name before "
                   "actual_resources); the request is refused here; nothing after it is read "
                   "[QV-UTIL-EMPTY-NAME]"}));
}

TEST(UtilizationCheckTest, AComputeUnitWithoutItsOwnNameTakesTheOneBefore) {
  std::string const text = changed(
      "\"DSP\": \"0\"}}]}]",
      "\"DSP\": \"0\"}},\n    {\"actual_resources\": {\"LUT\": \"1\", \"REG\": \"1\", "
      "\"BRAM\": \"1\", \"URAM\": \"1\", \"DSP\": \"1\"}}]}]");
  EXPECT_EQ(lines(text),
            (Lines{"u.json:9:6: warning: kernels[0].compute_units[1].actual_resources: no cu_name "
                   "before it in this compute unit; the import files the counts under the compute "
                   "unit before, vadd_1 [QV-UTIL-STALE-NAME]"}));
}

TEST(UtilizationCheckTest, CountsUnderOtherKeysOrThatAreNoNumbers) {
  EXPECT_EQ(lines(changed("\"LUT\": \"2398\"", "\"lut\": \"2398\"")),
            (Lines{"u.json:8:27: warning: kernels[0].compute_units[0].actual_resources: lut is "
                   "none of LUT, REG, BRAM, URAM, DSP (did you mean LUT?); the import drops the "
                   "count [QV-UTIL-UNKNOWN-KEY]",
                   "u.json:8:6: note: kernels[0].compute_units[0].actual_resources: LUT is not "
                   "given; the import leaves its field empty [QV-UTIL-COUNT-MISSING]"}));
  EXPECT_EQ(lines(changed("\"BRAM\": \"2\"", "\"BRAM\": \"n/a\"")),
            (Lines{"u.json:8:65: warning: kernels[0].compute_units[0].actual_resources.BRAM: the "
                   "string \"n/a\" is not a whole number; the import stores it as it stands "
                   "[QV-UTIL-COUNT-NOT-NUMBER]"}));
}

TEST(UtilizationCheckTest, TextThatIsNotJsonFailsTheRequest) {
  EXPECT_EQ(lines("{\"kernels\": [}"),
            (Lines{"u.json:1:14: error: not valid JSON: Invalid value; the request fails "
                   "[QV-UTIL-NOT-JSON]"}));
}

}  // namespace
