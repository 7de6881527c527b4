// The strict reader of platform descriptions: for each finding a minimal description and the
// exact line printed for it.
#include "checks/PlatformCheck.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "checks/CheckReport.h"
#include "tests/support/TempDir.h"

namespace {

// Every key the import reads, one platform clock, one bus interface.
std::string const kGood = R"({
 "vendor": "acme", "name": "u1", "description": "a card",
 "hardwarePlatform": {
  "boardId": "u1", "versionMajor": "3", "versionMinor": "1",
  "designIntent": {"server_managed": {"value": "true"}},
  "generatedName": "platgen", "generatedVersion": "1", "generatedChangeList": "2",
  "generatedTimestamp": "now",
  "board": {"name": "u1", "vendor": "acme", "part": "p", "boardPart": "acme:u1:1.0"},
  "resources": [{"resource": "LUT", "count": "10"}],
  "systemClocks": [{"name": "clk0", "id": "0", "frequency": "300", "period": "3.333",
                    "status": "scalable"}],
  "busInterfaces": [{"name": "M", "spTag": "DDR", "addressSegments": [{"slr": "SLR0", "index": "0"}]}],
  "devices": [{"core": {"name": "ulp", "type": "user_region", "instPath": "a/ulp",
   "availableResources": {"lutCount": "1", "registerCount": "2", "bramCount": "3",
                          "dspCount": "4", "uramCount": "5"}}}]
 }
}
)";

class PlatformCheckTest : public ::testing::Test {
 protected:
  using Lines = std::vector<std::string>;

  static Lines lines(std::string const& text) {
    qvcheck::CheckReport report;
    qvcheck::PlatformCheck::checkText("p.json", text, report);
    Lines printed;
    for (qvcheck::Finding const& finding : report.findings()) {
      printed.push_back(qvcheck::CheckReport::line(finding));
    }
    return printed;
  }

  static std::string changed(std::string const& from, std::string const& to) {
    std::string text = kGood;
    std::string::size_type const at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) text.replace(at, from.size(), to);
    return text;
  }
};

TEST_F(PlatformCheckTest, ADescriptionWithEveryKeyHasNoFindings) { EXPECT_EQ(lines(kGood), Lines{}); }

TEST_F(PlatformCheckTest, AMissingOptionalKeyNamesTheMessageTheImportSends) {
  EXPECT_EQ(lines(changed(" \"vendor\": \"acme\",", "")),
            (Lines{"p.json:1:1: warning: vendor: missing; the import sends WARNING 82-182 and "
                   "leaves qsa.vendor empty [QV-PLATFORM-KEY-MISSING]"}));
  EXPECT_EQ(lines(changed("\"boardPart\"", "\"board_part\"")),
            (Lines{"p.json:8:12: warning: hardwarePlatform.board.boardPart: missing "
                   "(hardwarePlatform.board.board_part is there: did you mean boardPart?); the "
                   "import sends WARNING 82-167 and leaves qsa.board.board_part empty "
                   "[QV-PLATFORM-KEY-MISSING]"}));
  EXPECT_EQ(lines(changed("\"instPath\": \"a/ulp\",", "")),
            (Lines{"p.json:13:24: warning: hardwarePlatform.devices..core.instPath: missing; the "
                   "import sends WARNING 82-164 and leaves the user region's inst_path empty "
                   "[QV-PLATFORM-KEY-MISSING]"}));
}

TEST_F(PlatformCheckTest, AMissingTotalStopsTheReadingOfTheOthers) {
  EXPECT_EQ(lines(changed("\"bramCount\": \"3\",", "")),
            (Lines{"p.json:14:26: warning: hardwarePlatform.devices..core.availableResources."
                   "bramCount: missing; the import sends WARNING 82-163 and leaves bram, uram and "
                   "dsp of the user region's available_resources empty "
                   "[QV-PLATFORM-KEY-MISSING]"}));
}

TEST_F(PlatformCheckTest, ACoreWithoutNameOrTypeFailsTheImport) {
  EXPECT_EQ(lines(changed("\"type\": \"user_region\", ", "")),
            (Lines{"p.json:13:24: error: hardwarePlatform.devices..core.type: missing; the "
                   "import fails: the user region is the first device's core "
                   "[QV-PLATFORM-CORE-MISSING]"}));
}

TEST_F(PlatformCheckTest, ClockNumbersThatDoNotReadTakeTheirDefaults) {
  EXPECT_EQ(lines(changed("\"frequency\": \"300\"", "\"frequency\": \"300MHz\"")),
            (Lines{"p.json:10:61: warning: hardwarePlatform.systemClocks[0].frequency: the string "
                   "\"300MHz\" does not read as a number; the import stores -1 "
                   "[QV-PLATFORM-CLOCK-NUMBER]"}));
  EXPECT_EQ(lines(changed("\"id\": \"0\"", "\"id\": \"0.5\"")),
            (Lines{"p.json:10:43: warning: hardwarePlatform.systemClocks[0].id: the string "
                   "\"0.5\" does not read as a whole number; the import stores -1 "
                   "[QV-PLATFORM-CLOCK-NUMBER]"}));
  // White space behind a number is allowed.
  EXPECT_EQ(lines(changed("\"period\": \"3.333\"", "\"period\": \"3.333 \"")), Lines{});
}

TEST_F(PlatformCheckTest, ClockStatusWordsAreLowerCase) {
  EXPECT_EQ(lines(changed("\"scalable\"", "\"Scalable\"")),
            (Lines{"p.json:11:31: warning: hardwarePlatform.systemClocks[0].status: the string "
                   "\"Scalable\" is none of reserved, fixed, scalable, changeable (lower case); "
                   "the import stores CLOCK_STATUS_UNSET [QV-PLATFORM-CLOCK-STATUS]"}));
}

TEST_F(PlatformCheckTest, AClockWithoutANameIsSkipped) {
  EXPECT_EQ(lines(changed("\"name\": \"clk0\", ", "")),
            (Lines{"p.json:10:20: warning: hardwarePlatform.systemClocks[0]: the clock has no "
                   "name; the import skips the record [QV-PLATFORM-CLOCK-NO-NAME]"}));
}

TEST_F(PlatformCheckTest, AClockDescribedTwiceIsANote) {
  EXPECT_EQ(lines(changed("\"status\": \"scalable\"}]",
                          "\"status\": \"scalable\"}, {\"name\": \"clk0\"}]")),
            (Lines{"p.json:11:53: note: hardwarePlatform.systemClocks[1].name: the clock clk0 is "
                   "described again; the import makes one clock of both, every field from this "
                   "later record [QV-PLATFORM-CLOCK-REPEATED]"}));
}

TEST_F(PlatformCheckTest, AResourceWordTheImportDoesNotKnow) {
  EXPECT_EQ(lines(changed("\"resource\": \"LUT\"", "\"resource\": \"LUTs\"")),
            (Lines{"p.json:9:30: warning: hardwarePlatform.resources[0].resource: \"LUTs\" is "
                   "none of BRAM, URAM, DSP, LUT, REG (did you mean LUT?); the import drops the "
                   "record's count from qsa.available_resources [QV-PLATFORM-RESOURCE-WORD]"}));
}

TEST_F(PlatformCheckTest, ADesignIntentThatIsNoBoolean) {
  EXPECT_EQ(lines(changed("{\"value\": \"true\"}", "{\"value\": \"yes\"}")),
            (Lines{"p.json:5:48: warning: hardwarePlatform.designIntent.server_managed.value: the "
                   "string \"yes\" is neither true, false, 1 nor 0; the import takes the intent as "
                   "false and leaves it out of qsa.design_intent [QV-PLATFORM-INTENT-NOT-BOOL]"}));
}

TEST_F(PlatformCheckTest, AnAddressSegmentThatIsPassedOver) {
  EXPECT_EQ(lines(changed("\"index\": \"0\"", "\"index\": \"-1\"")),
            (Lines{"p.json:12:71: warning: hardwarePlatform.busInterfaces[0].addressSegments[0]: "
                   "the string \"-1\" is not a whole number from 0; the import passes the segment "
                   "over: its memory gets no SLR [QV-PLATFORM-SEGMENT-SKIPPED]"}));
}

TEST_F(PlatformCheckTest, ANotJsonDescriptionFailsTheImport) {
  EXPECT_EQ(lines("{\"vendor\": }"),
            (Lines{"p.json:1:12: error: not valid JSON: Invalid value; the import fails "
                   "[QV-PLATFORM-NOT-JSON]"}));
}

TEST_F(PlatformCheckTest, APlatformIsFoundAsThePlatformServiceFindsIt) {
  qvtest::TempDir directory;
  std::ofstream(directory.file("u1.json")) << kGood;
  std::vector<std::string> tried;
  EXPECT_EQ(qvcheck::PlatformCheck::locate("u1", {"/nonexistent", directory.path()}, tried),
            directory.file("u1.json"));
  EXPECT_EQ(tried, (Lines{"u1", "/nonexistent/u1.json", "/nonexistent/u1/platform.json",
                          directory.file("u1.json")}));
  qvcheck::CheckReport report;
  qvcheck::PlatformCheck::checkPlatform("u9", {"/nonexistent"}, report);
  ASSERT_EQ(report.findings().size(), 1u);
  EXPECT_EQ(qvcheck::CheckReport::line(report.findings()[0]),
            "u9: error: not found (tried u9, /nonexistent/u9.json, /nonexistent/u9/platform.json); "
            "the import fails [QV-PLATFORM-NOT-FOUND]");
}

}  // namespace
