#include "platform/scout/Kernel.h"

#include <gtest/gtest.h>

namespace {

TEST(ScoutKernelTest, TheFourWordsAndTheirTypes) {
  EXPECT_EQ(scout::Kernel::getTypeFromString("hls"), 0);
  EXPECT_EQ(scout::Kernel::getTypeFromString("rtl"), 1);
  EXPECT_EQ(scout::Kernel::getTypeFromString("opencl"), 2);
  EXPECT_EQ(scout::Kernel::getTypeFromString("ps"), 3);
}

TEST(ScoutKernelTest, AnyOtherTextIsMinusOne) {
  EXPECT_EQ(scout::Kernel::getTypeFromString(""), -1);
  EXPECT_EQ(scout::Kernel::getTypeFromString("HLS"), -1);
  EXPECT_EQ(scout::Kernel::getTypeFromString(" hls"), -1);
  EXPECT_EQ(scout::Kernel::getTypeFromString("c"), -1);
  EXPECT_EQ(scout::Kernel::getTypeFromString("0"), -1);
}

}  // namespace
