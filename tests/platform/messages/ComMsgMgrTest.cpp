#include "platform/messages/ComMsgMgr.h"

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/messages/RecordingSink.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ComMsgMgrTest : public ::testing::Test {
 protected:
  // A sink that counts what it is shown and keeps nothing else.
  class CountingSink : public ComMsgSink {
   public:
    void show(ComMsgMgrInstance const&) override { ++shown; }
    int shown = 0;
  };

  // The sink is process-wide: start every test from standard error and give the tests after
  // this one back whatever they had.
  void SetUp() override { before_ = ComMsgMgr::setSink(nullptr); }
  void TearDown() override { ComMsgMgr::setSink(before_); }

 private:
  std::shared_ptr<ComMsgSink> before_;
};

TEST_F(ComMsgMgrTest, DefaultSinkWritesTheLineToStandardError) {
  ::testing::internal::CaptureStderr();
  ComMsgMgr::sendMessage(ComMsgMgrInstance("mvk", "@60-842@%s", 0x8000000, "RTL"));
  std::string const written = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(written,
            "WARNING: [mvk 60-842] Unknown kernel type 'RTL' in the kernels file; the kernel is "
            "kept with an unknown type.\n");
}

TEST_F(ComMsgMgrTest, DefaultSinkWritesOneLineAMessage) {
  ::testing::internal::CaptureStderr();
  ComMsgMgr::sendMessage(ComMsgMgrInstance("mvk", "@60-839@%s", 0x4000000, "k.xml"));
  ComMsgMgr::sendMessage(ComMsgMgrInstance("morvane", "Plain %d", 0x10000000, 7));
  std::string const written = ::testing::internal::GetCapturedStderr();
  EXPECT_EQ(written,
            "INFO: [mvk 60-839] Finished reading the kernels file k.xml.\n"
            "CRITICAL WARNING: [morvane] Plain 7\n");
}

TEST_F(ComMsgMgrTest, MakingAMessageShowsNothing) {
  auto recording = std::make_shared<RecordingSink>();
  ComMsgMgr::setSink(recording);
  ::testing::internal::CaptureStderr();
  ComMsgMgrInstance const unsent("mvk", "@60-842@%s", 0x8000000, "RTL");
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");
  EXPECT_THAT(recording->lines(), IsEmpty());
}

TEST_F(ComMsgMgrTest, InstalledSinkGetsTheMessagesInsteadOfStandardError) {
  auto recording = std::make_shared<RecordingSink>();
  ComMsgMgr::setSink(recording);

  ::testing::internal::CaptureStderr();
  ComMsgMgr::sendMessage(ComMsgMgrInstance("morvane", "@82-179@", 0x8000000));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(), "");

  EXPECT_THAT(recording->formats(), ElementsAre("@82-179@"));
}

TEST_F(ComMsgMgrTest, SetSinkReturnsTheSinkItReplaces) {
  auto first = std::make_shared<CountingSink>();
  auto second = std::make_shared<CountingSink>();

  std::shared_ptr<ComMsgSink> const standard = ComMsgMgr::setSink(first);
  ASSERT_NE(standard, nullptr);  // the standard error sink the fixture installed
  EXPECT_NE(standard, first);
  EXPECT_EQ(ComMsgMgr::setSink(second), first);
  EXPECT_EQ(ComMsgMgr::setSink(standard), second);
}

TEST_F(ComMsgMgrTest, OnlyTheCurrentSinkIsShownAMessage) {
  auto first = std::make_shared<CountingSink>();
  auto second = std::make_shared<CountingSink>();
  ComMsgMgr::setSink(first);
  ComMsgMgr::sendMessage(ComMsgMgrInstance("mvk", "one", 0x4000000));
  ComMsgMgr::setSink(second);
  ComMsgMgr::sendMessage(ComMsgMgrInstance("mvk", "two", 0x4000000));
  ComMsgMgr::sendMessage(ComMsgMgrInstance("mvk", "three", 0x4000000));
  EXPECT_EQ(first->shown, 1);
  EXPECT_EQ(second->shown, 2);
}

TEST_F(ComMsgMgrTest, NullSinkBringsStandardErrorBack) {
  auto recording = std::make_shared<RecordingSink>();
  ComMsgMgr::setSink(recording);

  EXPECT_EQ(ComMsgMgr::setSink(nullptr), recording);

  ::testing::internal::CaptureStderr();
  ComMsgMgr::sendMessage(ComMsgMgrInstance("mvk", "@60-808@%s", 0x10000000, "no such file"));
  EXPECT_EQ(::testing::internal::GetCapturedStderr(),
            "CRITICAL WARNING: [mvk 60-808] The kernels file could not be read: no such file\n");
  EXPECT_THAT(recording->lines(), IsEmpty());

  // What replaced nullptr is a real sink, handed back like any other.
  std::shared_ptr<ComMsgSink> const restored = ComMsgMgr::setSink(recording);
  EXPECT_NE(restored, nullptr);
  EXPECT_NE(restored, recording);
}

TEST_F(ComMsgMgrTest, ReplacedSinkLivesOnWithItsHolders) {
  // The manager shares its sink; replacing it leaves it to whoever else holds it.
  auto recording = std::make_shared<RecordingSink>();
  ComMsgMgr::setSink(recording);
  ComMsgMgr::sendMessage(ComMsgMgrInstance("mvk", "kept", 0x4000000));
  ComMsgMgr::setSink(nullptr);
  EXPECT_EQ(recording.use_count(), 1);
  EXPECT_THAT(recording->lines(), ElementsAre("INFO: [mvk] kept"));
}

}  // namespace
