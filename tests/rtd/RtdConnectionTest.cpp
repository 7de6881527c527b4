#include <gtest/gtest.h>

#include <string>

#include "rtd/RtdConnection.h"
#include "tests/rtd/RtdPrint.h"

namespace {

class RtdConnectionTest : public ::testing::Test {};

TEST_F(RtdConnectionTest, KeyNamesAreThoseOfTheFile) {
  EXPECT_EQ(IPA::RtdConnection::argIndexId, "arg_index");
  EXPECT_EQ(IPA::RtdConnection::argNameId, "arg_name");
  EXPECT_EQ(IPA::RtdConnection::modeId, "mode");
  EXPECT_EQ(IPA::RtdConnection::ipLayoutIndexId, "m_ip_layout_index");
  EXPECT_EQ(IPA::RtdConnection::memDataIndexId, "mem_data_index");
}

TEST_F(RtdConnectionTest, ANewEntryIsEmpty) {
  EXPECT_EQ(IPA::RtdConnection(), (IPA::RtdConnection{"", "", "", "", ""}));
}

TEST_F(RtdConnectionTest, EqualityLooksAtEveryField) {
  IPA::RtdConnection const base{"a", "b", "c", "d", "e"};
  IPA::RtdConnection const others[] = {
      {"x", "b", "c", "d", "e"}, {"a", "x", "c", "d", "e"}, {"a", "b", "x", "d", "e"},
      {"a", "b", "c", "x", "e"}, {"a", "b", "c", "d", "x"},
  };

  EXPECT_TRUE(base == (IPA::RtdConnection{"a", "b", "c", "d", "e"}));
  for (auto const& other : others) EXPECT_FALSE(base == other);
}

}  // namespace
