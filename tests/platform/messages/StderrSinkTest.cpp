#include "platform/messages/StderrSink.h"

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/messages/ComMsgMgrInstance.h"

namespace {

class StderrSinkTest : public ::testing::Test {
 protected:
  StderrSink sink;
};

TEST_F(StderrSinkTest, WritesTheLineAndANewline) {
  ::testing::internal::CaptureStderr();
  sink.show(ComMsgMgrInstance("morvane", "@82-214@%s", 0x8000000, "k/vadd.design.xml"));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "WARNING: [morvane 82-214] No high-level synthesis report was found at "
            "k/vadd.design.xml; the kernel is listed without a resource estimate.\n");
}

TEST_F(StderrSinkTest, PlainTextLine) {
  ::testing::internal::CaptureStderr();
  sink.show(ComMsgMgrInstance("mvk", "%d%% done", 0x4000000, 50));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "INFO: [mvk] 50% done\n");
}

TEST_F(StderrSinkTest, LinesOfTwoThreadsNeverMix) {
  constexpr int kLines = 200;
  std::string const a(80, 'a');
  std::string const b(80, 'b');
  ::testing::internal::CaptureStderr();
  std::thread first([&] {
    for (int i = 0; i < kLines; ++i) sink.show(ComMsgMgrInstance("mvk", a, 0x4000000));
  });
  std::thread second([&] {
    for (int i = 0; i < kLines; ++i) sink.show(ComMsgMgrInstance("mvk", b, 0x4000000));
  });
  first.join();
  second.join();
  std::string const written = ::testing::internal::GetCapturedStderr();

  std::string const lineA = "INFO: [mvk] " + a + "\n";
  std::string const lineB = "INFO: [mvk] " + b + "\n";
  ASSERT_EQ(lineA.size(), lineB.size());
  ASSERT_EQ(written.size(), 2 * kLines * lineA.size());
  int as = 0;
  int bs = 0;
  for (std::size_t at = 0; at < written.size(); at += lineA.size()) {
    std::string const line = written.substr(at, lineA.size());
    if (line == lineA) {
      ++as;
    } else if (line == lineB) {
      ++bs;
    } else {
      ADD_FAILURE() << "mixed line at " << at << ": " << line;
      return;
    }
  }
  EXPECT_EQ(as, kLines);
  EXPECT_EQ(bs, kLines);
}

}  // namespace
