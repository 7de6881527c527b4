#include "platform/dispatch/Logger.h"

#include <climits>
#include <fstream>
#include <functional>
#include <iostream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"

namespace {

using dispatch::server::Logger;

class LoggerTest : public ::testing::Test {
 protected:
  // Every test starts from a known state: its own string as the stream, nothing echoed.
  void SetUp() override {
    Logger::setStream(&out);
    Logger::setReportingLevel(1);
    Logger::setEcho(false);
  }

  // The loggers are shared by the whole process, so put the host's defaults back for the tests
  // that come after this one.
  void TearDown() override {
    Logger::setReportingLevel(1);
    Logger::setEcho(false);
    Logger::setStream(&std::clog);
  }

  std::ostringstream out;
};

// ---- One logger per level -----------------------------------------------------------------------

TEST_F(LoggerTest, EachLevelHasItsOwnLogger) {
  for (int level = 0; level < 6; ++level) {
    Logger& logger = Logger::getLogger(level);
    EXPECT_EQ(logger.level, level);
    EXPECT_EQ(&Logger::getLogger(level), &logger) << "level " << level;
    for (int other = 0; other < level; ++other) {
      EXPECT_NE(&Logger::getLogger(other), &logger) << "levels " << other << " and " << level;
    }
  }
}

TEST_F(LoggerTest, LevelsOutsideTheRangeAreClamped) {
  struct Row {
    int asked;
    int given;
  };
  Row const rows[] = {
      {-1, 0}, {-100, 0}, {INT_MIN, 0}, {6, 5}, {7, 5}, {1000, 5}, {INT_MAX, 5},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(&Logger::getLogger(row.asked), &Logger::getLogger(row.given)) << row.asked;
    EXPECT_EQ(Logger::getLogger(row.asked).level, row.given) << row.asked;
  }
}

TEST_F(LoggerTest, SettersApplyToEveryLogger) {
  Logger::setReportingLevel(4);
  Logger::setEcho(true);
  for (int level = 0; level < 6; ++level) {
    EXPECT_EQ(Logger::getLogger(level).reportingLevel, 4) << level;
    EXPECT_TRUE(Logger::getLogger(level).echo) << level;
  }
  Logger::setReportingLevel(0);
  Logger::setEcho(false);
  for (int level = 0; level < 6; ++level) {
    EXPECT_EQ(Logger::getLogger(level).reportingLevel, 0) << level;
    EXPECT_FALSE(Logger::getLogger(level).echo) << level;
  }
}

// ---- The own stream -----------------------------------------------------------------------------

TEST_F(LoggerTest, OwnStreamGetsOnlyLevelsUpToTheReportingLevel) {
  struct Row {
    int reportingLevel;
    int level;
    bool written;
  };
  Row const rows[] = {
      {1, 0, true}, {1, 1, true},  {1, 2, false}, {1, 5, false},  {0, 0, true}, {0, 1, false},
      {3, 3, true}, {3, 4, false}, {5, 5, true},  {-1, 0, false}, {9, 5, true},
  };
  for (Row const& row : rows) {
    out.str("");
    Logger::setReportingLevel(row.reportingLevel);
    Logger::getLogger(row.level) << "x";
    EXPECT_EQ(out.str(), row.written ? "x" : "")
        << "reporting level " << row.reportingLevel << ", logger " << row.level;
  }
}

TEST_F(LoggerTest, ValuesOfAnyTypeAreWrittenAsOnAStream) {
  Logger::getLogger(0) << "text " << 42 << ' ' << -7L << ' ' << 2.5 << ' ' << std::string("s")
                       << ' ' << true;
  EXPECT_EQ(out.str(), "text 42 -7 2.5 s 1");
}

TEST_F(LoggerTest, EndlEndsTheLine) {
  Logger::getLogger(1) << "first" << std::endl << "second" << std::endl;
  EXPECT_EQ(out.str(), "first\nsecond\n");
}

TEST_F(LoggerTest, EndlOfALevelThatIsNotReportedWritesNothing) {
  Logger::getLogger(4) << "hidden" << std::endl;
  EXPECT_EQ(out.str(), "");
}

TEST_F(LoggerTest, ManipulatorsAffectTheOwnStream) {
  Logger::getLogger(0) << std::hex << 255 << std::dec << ' ' << 255;
  EXPECT_EQ(out.str(), "ff 255");
}

TEST_F(LoggerTest, LoggersShareTheStream) {
  Logger::setReportingLevel(5);
  Logger::getLogger(0) << "zero ";
  Logger::getLogger(3) << "three ";
  Logger::getLogger(5) << "five";
  EXPECT_EQ(out.str(), "zero three five");
}

TEST_F(LoggerTest, SetStreamRedirectsEveryLogger) {
  std::ostringstream other;
  Logger::setReportingLevel(5);
  Logger::setStream(&other);
  Logger::getLogger(0) << "a";
  Logger::getLogger(5) << "b";
  EXPECT_EQ(other.str(), "ab");
  EXPECT_EQ(out.str(), "");
}

TEST_F(LoggerTest, NullStreamDiscards) {
  Logger::setStream(nullptr);
  Logger::getLogger(0) << "lost" << 17 << std::endl;
  EXPECT_EQ(out.str(), "");
  // Discarding is not a failure: the logger stays usable.
  EXPECT_TRUE(Logger::getLogger(0).good());

  Logger::setStream(&out);
  Logger::getLogger(0) << "found";
  EXPECT_EQ(out.str(), "found");
}

// ---- Each line reaches its file as it ends ------------------------------------------------------

TEST_F(LoggerTest, EachLineReachesItsFileWhenItEndsWhateverEndsIt) {
  qvtest::TempDir dir;
  std::string const path = dir.file("trace.log");
  std::ofstream file(path);
  Logger::setStream(&file);
  Logger& logger = Logger::getLogger(1);

  logger << "SYSTEM_DIAGRAM_HANDLER: Caught exception: boom.\n";
  EXPECT_EQ(qvtest::readFile(path), "SYSTEM_DIAGRAM_HANDLER: Caught exception: boom.\n");
  logger << "made of " << 3 << " insertions" << '\n';
  EXPECT_EQ(qvtest::readFile(path),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: boom.\nmade of 3 insertions\n");
  logger << "two\nlines" << std::endl;
  EXPECT_EQ(qvtest::readFile(path),
            "SYSTEM_DIAGRAM_HANDLER: Caught exception: boom.\nmade of 3 insertions\ntwo\nlines\n");
  Logger::setStream(&out);
}

TEST_F(LoggerTest, EchoedLineReachesStandardOutputWhenItEnds) {
  qvtest::TempDir dir;
  std::string const path = dir.file("stdout");
  std::filebuf echoed;
  echoed.open(path, std::ios::out);
  std::streambuf* const saved = std::cout.rdbuf(&echoed);
  Logger::setEcho(true);
  Logger::getLogger(0) << "echoed " << 1 << "\n";
  std::string const seen = qvtest::readFile(path);
  std::cout.rdbuf(saved);
  EXPECT_EQ(seen, "echoed 1\n");
  EXPECT_EQ(out.str(), "echoed 1\n");
}

// ---- Echo to standard output --------------------------------------------------------------------

TEST_F(LoggerTest, EchoCopiesEveryLevelToStandardOutput) {
  Logger::setEcho(true);
  Logger::setReportingLevel(1);
  ::testing::internal::CaptureStdout();
  Logger::getLogger(0) << "zero" << std::endl;
  Logger::getLogger(4) << "four " << 4 << std::endl;
  std::string const echoed = ::testing::internal::GetCapturedStdout();

  // Echo does not depend on the reporting level; the own stream does.
  EXPECT_EQ(echoed, "zero\nfour 4\n");
  EXPECT_EQ(out.str(), "zero\n");
}

TEST_F(LoggerTest, NothingIsEchoedWithoutEcho) {
  Logger::setReportingLevel(5);
  ::testing::internal::CaptureStdout();
  Logger::getLogger(0) << "zero" << std::endl;
  Logger::getLogger(5) << "five" << std::endl;
  std::string const echoed = ::testing::internal::GetCapturedStdout();

  EXPECT_EQ(echoed, "");
  EXPECT_EQ(out.str(), "zero\nfive\n");
}

TEST_F(LoggerTest, EchoWorksWithTheStreamDiscarded) {
  Logger::setEcho(true);
  Logger::setStream(nullptr);
  ::testing::internal::CaptureStdout();
  Logger::getLogger(0) << "only here" << std::endl;
  EXPECT_EQ(::testing::internal::GetCapturedStdout(), "only here\n");
  EXPECT_EQ(out.str(), "");
}

// ---- Threads ------------------------------------------------------------------------------------

TEST_F(LoggerTest, InsertionsOfTwoThreadsNeverMix) {
  // Lines may interleave between insertions, but each insertion arrives whole.
  std::string const a(64, 'a');
  std::string const b(64, 'b');
  constexpr int kInsertions = 500;
  auto writer = [](std::string const& token) {
    for (int i = 0; i < kInsertions; ++i) Logger::getLogger(0) << token;
  };
  std::thread first(writer, std::cref(a));
  std::thread second(writer, std::cref(b));
  first.join();
  second.join();

  std::string const written = out.str();
  ASSERT_EQ(written.size(), 2u * kInsertions * 64u);
  int as = 0;
  int bs = 0;
  for (std::size_t at = 0; at < written.size(); at += 64) {
    std::string const piece = written.substr(at, 64);
    if (piece == a) {
      ++as;
    } else if (piece == b) {
      ++bs;
    } else {
      ADD_FAILURE() << "mixed insertion at " << at << ": " << piece;
      return;
    }
  }
  EXPECT_EQ(as, kInsertions);
  EXPECT_EQ(bs, kInsertions);
}

}  // namespace
