#include "rtd/SlrResourceTuple.h"

#include <gtest/gtest.h>

#include <string>

namespace {

class SlrResourceTupleTest : public ::testing::Test {};

TEST_F(SlrResourceTupleTest, ANewTupleHasFiveEmptyFields) {
  IPA::SlrResourceTuple const tuple;

  EXPECT_EQ(tuple.bram, "");
  EXPECT_EQ(tuple.uram, "");
  EXPECT_EQ(tuple.dsp, "");
  EXPECT_EQ(tuple.lut, "");
  EXPECT_EQ(tuple.reg, "");
}

TEST_F(SlrResourceTupleTest, FieldsStandInTheOrderBramUramDspLutReg) {
  IPA::SlrResourceTuple const tuple{"1", "2", "3", "4", "5"};

  EXPECT_EQ(tuple.bram, "1");
  EXPECT_EQ(tuple.uram, "2");
  EXPECT_EQ(tuple.dsp, "3");
  EXPECT_EQ(tuple.lut, "4");
  EXPECT_EQ(tuple.reg, "5");
}

TEST_F(SlrResourceTupleTest, EqualityLooksAtEveryField) {
  IPA::SlrResourceTuple const base{"a", "b", "c", "d", "e"};
  IPA::SlrResourceTuple const others[] = {
      {"x", "b", "c", "d", "e"}, {"a", "x", "c", "d", "e"}, {"a", "b", "x", "d", "e"},
      {"a", "b", "c", "x", "e"}, {"a", "b", "c", "d", "x"},
  };

  EXPECT_TRUE(base == (IPA::SlrResourceTuple{"a", "b", "c", "d", "e"}));
  for (auto const& other : others) EXPECT_FALSE(base == other);
}

TEST_F(SlrResourceTupleTest, AnEmptyFieldDiffersFromAZero) {
  EXPECT_FALSE((IPA::SlrResourceTuple{"", "", "", "", ""}) ==
               (IPA::SlrResourceTuple{"0", "", "", "", ""}));
  EXPECT_TRUE(IPA::SlrResourceTuple() == (IPA::SlrResourceTuple{"", "", "", "", ""}));
}

}  // namespace
