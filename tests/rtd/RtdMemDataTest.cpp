#include <gtest/gtest.h>

#include <string>

#include "rtd/RtdMemData.h"
#include "tests/rtd/RtdPrint.h"

namespace {

class RtdMemDataTest : public ::testing::Test {};

TEST_F(RtdMemDataTest, KeyNamesAreThoseOfTheFile) {
  EXPECT_EQ(IPA::RtdMemData::typeId, "m_type");
  EXPECT_EQ(IPA::RtdMemData::usedId, "m_used");
  EXPECT_EQ(IPA::RtdMemData::sizeKBId, "m_sizeKB");
  EXPECT_EQ(IPA::RtdMemData::baseAddressId, "m_base_address");
  EXPECT_EQ(IPA::RtdMemData::tagId, "m_tag");
  EXPECT_EQ(IPA::RtdMemData::spTagId, "m_spTag");
}

TEST_F(RtdMemDataTest, ANewEntryIsEmpty) {
  IPA::RtdMemData const entry;

  EXPECT_EQ(entry, (IPA::RtdMemData{"", "", "", "", "", ""}));
  EXPECT_EQ(entry.type, "");
  EXPECT_EQ(entry.spTag, "");
}

TEST_F(RtdMemDataTest, EqualityLooksAtEveryField) {
  IPA::RtdMemData const base{"a", "b", "c", "d", "e", "f"};
  IPA::RtdMemData const others[] = {
      {"x", "b", "c", "d", "e", "f"}, {"a", "x", "c", "d", "e", "f"},
      {"a", "b", "x", "d", "e", "f"}, {"a", "b", "c", "x", "e", "f"},
      {"a", "b", "c", "d", "x", "f"}, {"a", "b", "c", "d", "e", "x"},
  };

  EXPECT_TRUE(base == (IPA::RtdMemData{"a", "b", "c", "d", "e", "f"}));
  for (auto const& other : others) EXPECT_FALSE(base == other);
}

}  // namespace
