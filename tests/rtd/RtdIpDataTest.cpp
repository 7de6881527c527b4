#include <gtest/gtest.h>

#include <string>

#include "rtd/RtdIpData.h"
#include "tests/rtd/RtdPrint.h"

namespace {

class RtdIpDataTest : public ::testing::Test {};

TEST_F(RtdIpDataTest, KeyNamesAreThoseOfTheFile) {
  EXPECT_EQ(IPA::RtdIpData::typeId, "m_type");
  EXPECT_EQ(IPA::RtdIpData::propertiesId, "properties");
  EXPECT_EQ(IPA::RtdIpData::intEnableId, "m_int_enable");
  EXPECT_EQ(IPA::RtdIpData::interruptIdId, "m_interrupt_id");
  EXPECT_EQ(IPA::RtdIpData::ipControlId, "m_ip_control");
  EXPECT_EQ(IPA::RtdIpData::baseAddressId, "m_base_address");
  EXPECT_EQ(IPA::RtdIpData::nameId, "m_name");
  EXPECT_EQ(IPA::RtdIpData::clocksId, "m_clocks");
  EXPECT_EQ(IPA::RtdIpData::ClockRef::refClockIdId, "refClockId");
}

TEST_F(RtdIpDataTest, ANewEntryIsEmpty) {
  IPA::RtdIpData const entry;

  EXPECT_EQ(entry, (IPA::RtdIpData{"", "", "", "", "", "", "", {}}));
  EXPECT_TRUE(entry.clocks.empty());
  EXPECT_EQ(IPA::RtdIpData::ClockRef(), (IPA::RtdIpData::ClockRef{"", ""}));
}

TEST_F(RtdIpDataTest, EqualityLooksAtEveryField) {
  IPA::RtdIpData const base{"a", "b", "c", "d", "e", "f", "g", {{"p", "0"}}};
  IPA::RtdIpData const others[] = {
      {"x", "b", "c", "d", "e", "f", "g", {{"p", "0"}}},
      {"a", "x", "c", "d", "e", "f", "g", {{"p", "0"}}},
      {"a", "b", "x", "d", "e", "f", "g", {{"p", "0"}}},
      {"a", "b", "c", "x", "e", "f", "g", {{"p", "0"}}},
      {"a", "b", "c", "d", "x", "f", "g", {{"p", "0"}}},
      {"a", "b", "c", "d", "e", "x", "g", {{"p", "0"}}},
      {"a", "b", "c", "d", "e", "f", "x", {{"p", "0"}}},
      {"a", "b", "c", "d", "e", "f", "g", {{"x", "0"}}},
      {"a", "b", "c", "d", "e", "f", "g", {{"p", "x"}}},
      {"a", "b", "c", "d", "e", "f", "g", {}},
      {"a", "b", "c", "d", "e", "f", "g", {{"p", "0"}, {"p", "0"}}},
  };

  EXPECT_TRUE(base == (IPA::RtdIpData{"a", "b", "c", "d", "e", "f", "g", {{"p", "0"}}}));
  for (auto const& other : others) EXPECT_FALSE(base == other);
}

}  // namespace
