// The numbered lines that Log writes to standard error (docs/logging.md), and the one
// ScopedDebugLog line whose label already says "Entering". Every test compares the whole of what
// reached standard error, so a second newline or a stray line fails it as well.
#include "service/Log.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

#include "service/ScopedDebugLog.h"
#include "tests/support/LoggerCapture.h"

namespace {

class LogTest : public ::testing::Test {
 protected:
  // The settings are process-wide: each test may change them, and gets them back afterwards.
  void SetUp() override {
    savedReportingLevel = Log::reportingLevel;
    savedSubsystemID = Log::subsystemID;
    savedSubsystemName = Log::subsystemName;
  }
  void TearDown() override {
    Log::reportingLevel = savedReportingLevel;
    Log::subsystemID = savedSubsystemID;
    Log::subsystemName = savedSubsystemName;
  }

  // What one line of `level` and `number` carrying `text` puts on standard error.
  static std::string printed(TLogLevel level, int number, std::string const& text) {
    testing::internal::CaptureStderr();
    { Log(level, number) << text; }
    return testing::internal::GetCapturedStderr();
  }

  static TLogLevel asLevel(std::int32_t value) { return static_cast<TLogLevel>(value); }

 private:
  std::int32_t savedReportingLevel = 0;
  std::int32_t savedSubsystemID = 0;
  std::string savedSubsystemName;
};

// ---- Edge cases --------------------------------------------------------------------------------

TEST_F(LogTest, LevelOneIsDroppedAtDefaultReportingLevel) {
  EXPECT_EQ(printed(logDEBUG, 1, "not shown"), "");
}

TEST_F(LogTest, LevelTwoPrintsAndEndsInExactlyOneNewline) {
  EXPECT_EQ(printed(logINFO, 2, "opened repo.xml"), "INFO: [Morvane 83-2] opened repo.xml\n");
}

TEST_F(LogTest, LevelSevenPrintsAsUnknownBecauseItIsAboveTheThreshold) {
  EXPECT_EQ(printed(asLevel(7), 7, "odd level"), "UNKNOWN: [Morvane 83-7] odd level\n");
}

TEST_F(LogTest, ReportingLevelSixLetsOnlyUnknownLinesOfLevelSixOrMorePrint) {
  Log::reportingLevel = 6;
  for (std::int32_t value = 0; value <= 5; ++value) {
    EXPECT_EQ(printed(asLevel(value), 10 + value, "hidden"), "") << "level " << value;
  }
  EXPECT_EQ(printed(asLevel(6), 16, "shown"), "UNKNOWN: [Morvane 83-16] shown\n");
  EXPECT_EQ(printed(asLevel(7), 17, "shown"), "UNKNOWN: [Morvane 83-17] shown\n");
}

// This edge case of the logging section is about ScopedDebugLog, which writes to the server's
// logger rather than through Log; it lives here so that the section's list is complete in one file.
TEST_F(LogTest, ScopedDebugLogWithEnteringLabelSaysEnteringTwiceThenLeavingAndEntering) {
  qvtest::LoggerCapture log(dispatch::server::kLogDebug);
  { IPA::SystemDiagramHandler::ScopedDebugLog scoped("Entering handleUpsertKernelRequest"); }
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering Entering handleUpsertKernelRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving Entering handleUpsertKernelRequest\n");
}

// ---- The line ----------------------------------------------------------------------------------

TEST_F(LogTest, ErrorLineCarriesTheSubsystemPrefix) {
  std::string const path = "repo.xml";
  testing::internal::CaptureStderr();
  { Log(logERROR, 1001) << "cannot open " << path; }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "ERROR: [Morvane 83-1001] cannot open repo.xml\n");
}

TEST_F(LogTest, EachLevelOfTheTablePrintsItsWordFromInfoUpwards) {
  struct Row {
    TLogLevel level;
    char const* expected;
  };
  Row const rows[] = {
      {logINTERNAL, ""},
      {logDEBUG, ""},
      {logINFO, "INFO: [Morvane 83-500] x\n"},
      {logWARNING, "WARNING: [Morvane 83-500] x\n"},
      {logCRITICAL_WARNING, "CRITICAL WARNING: [Morvane 83-500] x\n"},
      {logERROR, "ERROR: [Morvane 83-500] x\n"},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(printed(row.level, 500, "x"), row.expected) << "level " << row.level;
  }
}

TEST_F(LogTest, ToStringNamesTheSixLevelsAndAnythingElseUnknown) {
  struct Row {
    std::int32_t level;
    char const* word;
  };
  Row const rows[] = {
      {0, "INTERNAL"}, {1, "DEBUG"},   {2, "INFO"},    {3, "WARNING"},  {4, "CRITICAL WARNING"},
      {5, "ERROR"},    {6, "UNKNOWN"}, {7, "UNKNOWN"}, {-1, "UNKNOWN"}, {1000, "UNKNOWN"},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(Log::toString(asLevel(row.level)), row.word) << "level " << row.level;
  }
}

TEST_F(LogTest, DefaultSettingsAreInfoMorvaneAnd83) {
  EXPECT_EQ(Log::reportingLevel, 2);
  EXPECT_EQ(Log::subsystemID, 83);
  EXPECT_EQ(Log::subsystemName, "Morvane");
}

TEST_F(LogTest, LineAtTheReportingLevelPrintsAndOneBelowDoesNot) {
  Log::reportingLevel = logWARNING;
  EXPECT_EQ(printed(logWARNING, 3, "at"), "WARNING: [Morvane 83-3] at\n");
  EXPECT_EQ(printed(logINFO, 2, "below"), "");
}

TEST_F(LogTest, NegativeReportingLevelLetsNegativeLevelsPrintAsUnknown) {
  Log::reportingLevel = -3;
  EXPECT_EQ(printed(asLevel(-3), 1, "low"), "UNKNOWN: [Morvane 83-1] low\n");
  EXPECT_EQ(printed(asLevel(-4), 1, "lower"), "");
}

TEST_F(LogTest, ChangedSubsystemNameAndIdAppearInThePrefix) {
  Log::subsystemName = "Qv";
  Log::subsystemID = 7;
  EXPECT_EQ(printed(logWARNING, 42, "changed"), "WARNING: [Qv 7-42] changed\n");
}

TEST_F(LogTest, EmptySubsystemNameLeavesTheBlankBeforeTheId) {
  Log::subsystemName = "";
  EXPECT_EQ(printed(logINFO, 1, "t"), "INFO: [ 83-1] t\n");
}

TEST_F(LogTest, NumbersArePrintedInDecimalWhateverTheirSign) {
  EXPECT_EQ(printed(logINFO, 0, "zero"), "INFO: [Morvane 83-0] zero\n");
  EXPECT_EQ(printed(logINFO, -5, "negative"), "INFO: [Morvane 83--5] negative\n");
  Log::subsystemID = -1;
  EXPECT_EQ(printed(logINFO, 12, "id"), "INFO: [Morvane -1-12] id\n");
}

TEST_F(LogTest, LineWithoutTextIsThePrefixAndTheNewline) {
  testing::internal::CaptureStderr();
  { Log line(logINFO, 9); }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "INFO: [Morvane 83-9] \n");
}

TEST_F(LogTest, TextThatEndsInANewlineStillGetsTheLinesOwnNewline) {
  // The line adds its newline whatever the text holds; callers must not add their own.
  EXPECT_EQ(printed(logINFO, 4, "two\nparts\n"), "INFO: [Morvane 83-4] two\nparts\n\n");
}

TEST_F(LogTest, ValuesOfSeveralTypesAreInsertedInOrder) {
  testing::internal::CaptureStderr();
  { Log(logWARNING, 3001) << "line " << 12 << ", column " << 4u << ": " << 'x'; }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "WARNING: [Morvane 83-3001] line 12, column 4: x\n");
}

TEST_F(LogTest, StreamWritesIntoTheSameLine) {
  testing::internal::CaptureStderr();
  {
    Log line(logERROR, 1002);
    line.stream() << "via stream";
    line << ", then via the operator";
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "ERROR: [Morvane 83-1002] via stream, then via the operator\n");
}

TEST_F(LogTest, PrefixIsInTheLineFromTheStartEvenWhenTheLineWillBeDropped) {
  testing::internal::CaptureStderr();
  {
    Log line(logDEBUG, 5);
    EXPECT_EQ(line.stream().str(), "DEBUG: [Morvane 83-5] ");
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(LogTest, PrefixTakesTheSettingsOfWhenTheLineWasStarted) {
  testing::internal::CaptureStderr();
  {
    Log line(logINFO, 6);
    Log::subsystemName = "Later";
    Log::subsystemID = 99;
    line << "text";
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "INFO: [Morvane 83-6] text\n");
}

TEST_F(LogTest, ThresholdIsTheOneInForceWhenTheLineEnds) {
  // The destructor decides: lowering the threshold while a line is being built lets it through.
  testing::internal::CaptureStderr();
  {
    Log line(logDEBUG, 8);
    line << "late decision";
    Log::reportingLevel = logDEBUG;
  }
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "DEBUG: [Morvane 83-8] late decision\n");
}

TEST_F(LogTest, TwoLinesArriveWholeAndInOrder) {
  testing::internal::CaptureStderr();
  { Log(logINFO, 1) << "first"; }
  { Log(logDEBUG, 2) << "dropped"; }
  { Log(logERROR, 3) << "second"; }
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "INFO: [Morvane 83-1] first\n"
            "ERROR: [Morvane 83-3] second\n");
}

}  // namespace
