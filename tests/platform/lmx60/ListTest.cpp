#include "platform/lmx60/List.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <exception>
#include <string>

namespace {

TEST(ListTest, ValuesInOrderOfAppending) {
  lmx60::List<std::uint32_t> list;
  list.append(7);
  list.append(9);
  EXPECT_EQ(list.size(), 2u);
  EXPECT_EQ(list.get(0), 7u);
  EXPECT_EQ(list[1], 9u);
}

TEST(ListTest, IndexBeyondTheEndThrowsLmxExceptionThatIsAStdException) {
  lmx60::List<std::uint32_t> list;
  list.append(7);
  EXPECT_THROW(list.get(1), lmx60::lmx_exception);
  try {
    list[3];
    FAIL() << "no exception";
  } catch (std::exception const& error) {
    EXPECT_STREQ(error.what(), "index 3 is beyond the 1 values of the list");
  }
  EXPECT_THROW(lmx60::List<std::uint32_t>().get(0), lmx60::lmx_exception);
}

}  // namespace
