#include "platform/hut/HUTEnv.h"

#include <cstring>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

class HUTEnvTest : public ::testing::Test {
 protected:
  // The fixed stamp is process-wide; the clock is what every other test expects.
  void TearDown() override { HUTEnv::clearFixedTimeStamp(); }

  static std::string stamp() {
    std::string made = "left over";
    HUTEnv::getTimeStamp(made);
    return made;
  }

  // The clock's form, as ctime writes it: "Sat Nov 21 22:27:47 2026", a day below 10 padded
  // with a blank.
  static bool isClockStamp(std::string const& text) {
    // gtest's own (POSIX) regular expressions: std::regex trips GCC 12's uninitialised-use
    // warning in sanitizer builds.
    return ::testing::Value(text, ::testing::MatchesRegex("[A-Z][a-z]{2} [A-Z][a-z]{2} [ 0-9][0-9] "
                                                          "[0-9]{2}:[0-9]{2}:[0-9]{2} [0-9]{4}"));
  }
};

TEST_F(HUTEnvTest, FullProductStringIsTheNameAndAVersion) {
  std::string const product = HUTEnv::getFullProductStr();
  EXPECT_THAT(product, ::testing::MatchesRegex("qv_system_diagram [0-9]+(\\.[0-9]+)*"));
  EXPECT_EQ(product.rfind("qv_system_diagram ", 0), 0u) << product;
}

TEST_F(HUTEnvTest, CopyRightNamesItsHolder) {
  char const* const text = HUTEnv::getCopyRight();
  ASSERT_NE(text, nullptr);
  EXPECT_GT(std::strlen(text), 0u);
  EXPECT_EQ(std::string(text).rfind("Copyright ", 0), 0u) << text;
  // The text is static: the same pointer every time, safe to keep.
  EXPECT_EQ(HUTEnv::getCopyRight(), text);
}

TEST_F(HUTEnvTest, TimeStampComesFromTheClock) {
  std::string const now = stamp();
  EXPECT_TRUE(isClockStamp(now)) << "'" << now << "'";
}

TEST_F(HUTEnvTest, ClockFormRecognisesWhatItShould) {
  // The form above decides two tests; make sure it is neither too loose nor too strict.
  EXPECT_TRUE(isClockStamp("Sat Nov 21 22:27:47 2026"));
  EXPECT_TRUE(isClockStamp("Sun Mar  1 01:02:03 2026"));
  EXPECT_FALSE(isClockStamp("Sat Nov 21 22:27:47 2026\n"));
  EXPECT_FALSE(isClockStamp("2026-11-21 22:27:47"));
  EXPECT_FALSE(isClockStamp(""));
}

TEST_F(HUTEnvTest, FixedTimeStampIsAnsweredAsGiven) {
  HUTEnv::setFixedTimeStamp("Thu Jan  1 00:00:00 1970");
  EXPECT_EQ(stamp(), "Thu Jan  1 00:00:00 1970");
  // And again: fixed means fixed, not once.
  EXPECT_EQ(stamp(), "Thu Jan  1 00:00:00 1970");
}

TEST_F(HUTEnvTest, FixedTimeStampNeedNotLookLikeATime) {
  HUTEnv::setFixedTimeStamp("reproducible");
  EXPECT_EQ(stamp(), "reproducible");
  HUTEnv::setFixedTimeStamp("");
  EXPECT_EQ(stamp(), "");
}

TEST_F(HUTEnvTest, LaterFixedTimeStampReplacesTheEarlier) {
  HUTEnv::setFixedTimeStamp("first");
  HUTEnv::setFixedTimeStamp("second");
  EXPECT_EQ(stamp(), "second");
}

TEST_F(HUTEnvTest, ClearFixedTimeStampGoesBackToTheClock) {
  HUTEnv::setFixedTimeStamp("Thu Jan  1 00:00:00 1970");
  HUTEnv::clearFixedTimeStamp();
  std::string const now = stamp();
  EXPECT_NE(now, "Thu Jan  1 00:00:00 1970");
  EXPECT_TRUE(isClockStamp(now)) << "'" << now << "'";
}

TEST_F(HUTEnvTest, ClearWithoutFixedTimeStampKeepsTheClock) {
  HUTEnv::clearFixedTimeStamp();
  EXPECT_TRUE(isClockStamp(stamp()));
}

}  // namespace
