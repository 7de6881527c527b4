#include "platform/messages/RecordingSink.h"

#include <cstdio>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/messages/ComMsgMgr.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class RecordingSinkTest : public ::testing::Test {
 protected:
  RecordingSink sink;
};

TEST_F(RecordingSinkTest, StartsEmpty) {
  EXPECT_THAT(sink.messages(), IsEmpty());
  EXPECT_THAT(sink.formats(), IsEmpty());
  EXPECT_THAT(sink.lines(), IsEmpty());
}

TEST_F(RecordingSinkTest, KeepsFormatsAndLinesOldestFirst) {
  sink.show(ComMsgMgrInstance("morvane", "@82-179@", 0x8000000));
  sink.show(ComMsgMgrInstance("mvk", "@60-842@%s", 0x8000000, "RTL"));
  sink.show(ComMsgMgrInstance("mvk", "Plain %s", 0x4000000, "text"));

  EXPECT_THAT(sink.formats(), ElementsAre("@82-179@", "@60-842@%s", "Plain %s"));
  EXPECT_THAT(
      sink.lines(),
      ElementsAre("WARNING: [morvane 82-179] The name or a detail of the tool run that generated "
                  "the binary could not be recorded in the system diagram; the field is left "
                  "empty.",
                  "WARNING: [mvk 60-842] Unknown kernel type 'RTL' in the kernels file; the "
                  "kernel is kept with an unknown type.",
                  "INFO: [mvk] Plain text"));
}

TEST_F(RecordingSinkTest, MessagesAreWholeCopies) {
  {
    ComMsgMgrInstance const shown("mvk", "@60-808@%s", 0x10000000, "gone");
    sink.show(shown);
  }
  std::vector<ComMsgMgrInstance> const kept = sink.messages();
  ASSERT_EQ(kept.size(), 1u);
  EXPECT_EQ(kept[0].lookup(), "mvk");
  EXPECT_EQ(kept[0].id(), "60-808");
  EXPECT_EQ(kept[0].mask(), 0x10000000u);
  EXPECT_THAT(kept[0].arguments(), ElementsAre("gone"));
  EXPECT_EQ(kept[0].text(), "The kernels file could not be read: gone");
}

TEST_F(RecordingSinkTest, SameMessageTwiceIsKeptTwice) {
  ComMsgMgrInstance const message("mvk", "again", 0x4000000);
  sink.show(message);
  sink.show(message);
  EXPECT_THAT(sink.lines(), ElementsAre("INFO: [mvk] again", "INFO: [mvk] again"));
}

TEST_F(RecordingSinkTest, ClearForgetsEverything) {
  sink.show(ComMsgMgrInstance("mvk", "one", 0x4000000));
  sink.show(ComMsgMgrInstance("mvk", "two", 0x4000000));
  sink.clear();
  EXPECT_THAT(sink.messages(), IsEmpty());
  EXPECT_THAT(sink.formats(), IsEmpty());
  EXPECT_THAT(sink.lines(), IsEmpty());

  sink.show(ComMsgMgrInstance("mvk", "three", 0x4000000));
  EXPECT_THAT(sink.formats(), ElementsAre("three"));
}

TEST_F(RecordingSinkTest, ResultsAreSnapshots) {
  sink.show(ComMsgMgrInstance("mvk", "one", 0x4000000));
  std::vector<std::string> const before = sink.formats();
  sink.show(ComMsgMgrInstance("mvk", "two", 0x4000000));
  EXPECT_THAT(before, ElementsAre("one"));
  EXPECT_THAT(sink.formats(), ElementsAre("one", "two"));
}

TEST_F(RecordingSinkTest, ReceivesWhatComMsgMgrSends) {
  auto installed = std::make_shared<RecordingSink>();
  std::shared_ptr<ComMsgSink> const before = ComMsgMgr::setSink(installed);
  ComMsgMgr::sendMessage(ComMsgMgrInstance("mvk", "@60-839@%s", 0x4000000, "k.xml"));
  ComMsgMgr::setSink(before);

  EXPECT_THAT(installed->lines(),
              ElementsAre("INFO: [mvk 60-839] Finished reading the kernels file k.xml."));
}

TEST_F(RecordingSinkTest, KeepsEveryMessageOfManyThreadsInEachThreadsOrder) {
  constexpr int kThreads = 8;
  constexpr int kMessages = 200;
  std::vector<std::thread> senders;
  for (int t = 0; t < kThreads; ++t) {
    senders.emplace_back([this, t] {
      for (int i = 0; i < kMessages; ++i) {
        sink.show(ComMsgMgrInstance("mvk", "%d %d", 0x4000000, t, i));
        // Readers run alongside writers and must always see whole lists.
        if (i % 50 == 0) (void)sink.lines();
      }
    });
  }
  for (std::thread& sender : senders) sender.join();

  std::vector<std::string> const lines = sink.lines();
  ASSERT_EQ(lines.size(), static_cast<std::size_t>(kThreads * kMessages));
  std::vector<int> next(kThreads, 0);
  for (std::string const& line : lines) {
    int t = -1;
    int i = -1;
    ASSERT_EQ(std::sscanf(line.c_str(), "INFO: [mvk] %d %d", &t, &i), 2) << line;
    ASSERT_GE(t, 0);
    ASSERT_LT(t, kThreads);
    EXPECT_EQ(i, next[static_cast<std::size_t>(t)]) << "thread " << t;
    next[static_cast<std::size_t>(t)] = i + 1;
  }
  for (int t = 0; t < kThreads; ++t) {
    EXPECT_EQ(next[static_cast<std::size_t>(t)], kMessages) << "thread " << t;
  }
}

}  // namespace
