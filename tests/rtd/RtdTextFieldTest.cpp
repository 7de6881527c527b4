#include <gtest/gtest.h>

#include <string>

#include "rtd/RtdTextField.h"

namespace {

struct Pair {
  std::string left;
  std::string right;
  static const std::string leftKey;
  static const std::string rightKey;
};
const std::string Pair::leftKey = "l";
const std::string Pair::rightKey = "r";

class RtdTextFieldTest : public ::testing::Test {
 protected:
  static constexpr IPA::RtdTextField<Pair> fields[] = {
      {&Pair::leftKey, &Pair::left},
      {&Pair::rightKey, &Pair::right},
  };
};

TEST_F(RtdTextFieldTest, AMatchingKeySetsItsFieldOnly) {
  Pair pair;

  EXPECT_TRUE(IPA::assignRtdTextField(pair, fields, "r", "2"));

  EXPECT_EQ(pair.left, "");
  EXPECT_EQ(pair.right, "2");
}

TEST_F(RtdTextFieldTest, ALaterValueOverwritesAnEarlierOne) {
  Pair pair;

  IPA::assignRtdTextField(pair, fields, "l", "1");
  IPA::assignRtdTextField(pair, fields, "l", "");

  EXPECT_EQ(pair.left, "");
}

TEST_F(RtdTextFieldTest, AnUnknownKeyLeavesTheEntryAsItWas) {
  Pair pair{"1", "2"};

  EXPECT_FALSE(IPA::assignRtdTextField(pair, fields, "L", "x"));
  EXPECT_FALSE(IPA::assignRtdTextField(pair, fields, "", "x"));

  EXPECT_EQ(pair.left, "1");
  EXPECT_EQ(pair.right, "2");
}

}  // namespace
