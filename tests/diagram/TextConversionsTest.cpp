#include "diagram/TextConversions.h"

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <cstdint>
#include <limits>
#include <sstream>
#include <string>

namespace {

class TextConversionsTest : public ::testing::Test {
 protected:
  template <class T>
  struct TextRow {
    char const* desc;
    char const* text;
    T value;
  };
};

TEST_F(TextConversionsTest, TextToUnsignedReadsAsADefaultStreamDoes) {
  TextRow<unsigned> const rows[] = {
      {"plain decimal", "12", 12u},
      {"leading blanks are skipped", "  7", 7u},
      {"leading tab and new line are skipped", "\t\n9", 9u},
      {"reading stops at the first letter", "12ab", 12u},
      {"reading stops at a blank", "3 4", 3u},
      {"decimal, so the prefix 0x stops it after the 0", "0x1f", 0u},
      {"decimal, so a leading 0 is no octal", "010", 10u},
      {"the empty text fails and gives 0", "", 0u},
      {"only blanks fail and give 0", "   ", 0u},
      {"a letter first fails and gives 0", "abc", 0u},
      {"a plus sign is read", "+5", 5u},
      {"the greatest 32-bit value", "4294967295", 4294967295u},
      // One more than fits: the stream sets the fail flag, and a failed read gives 0.
      {"one beyond the greatest value fails and gives 0", "4294967296", 0u},
      // The stream reads "-1" as strtoul does: the minus negates in unsigned arithmetic and the
      // fail flag stays clear, so the result is the greatest value, not 0. A negative count in a
      // file therefore reads as a huge one, not as a refusal.
      {"-1 wraps to the greatest value", "-1", 4294967295u},
      {"-0 is zero", "-0", 0u},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(IPA::textToInteger<unsigned>(row.text), row.value);
  }
}

TEST_F(TextConversionsTest, TextToUnsignedLongReadsAsADefaultStreamDoes) {
  TextRow<unsigned long> const rows[] = {
      {"plain decimal", "12", 12ul},
      {"leading blanks are skipped", "  7", 7ul},
      {"reading stops at the first letter", "12ab", 12ul},
      {"decimal, so the prefix 0x stops it after the 0", "0x1f", 0ul},
      {"the empty text fails and gives 0", "", 0ul},
      {"a letter first fails and gives 0", "abc", 0ul},
      {"beyond 32 bits fits", "4294967296", 4294967296ul},
      {"the greatest 64-bit value", "18446744073709551615", 18446744073709551615ul},
      {"one beyond the greatest value fails and gives 0", "18446744073709551616", 0ul},
      // As for unsigned: "-1" negates in unsigned arithmetic without setting the fail flag.
      {"-1 wraps to the greatest value", "-1", 18446744073709551615ul},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(IPA::textToInteger<unsigned long>(row.text), row.value);
  }
}

TEST_F(TextConversionsTest, IntegerToTextGivesTheDecimalText) {
  EXPECT_EQ(IPA::integerToText(0u), "0");
  EXPECT_EQ(IPA::integerToText(42u), "42");
  EXPECT_EQ(IPA::integerToText(42), "42");
  EXPECT_EQ(IPA::integerToText(std::uint32_t{4294967295u}), "4294967295");
  EXPECT_EQ(IPA::integerToText(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615");
}

TEST_F(TextConversionsTest, IntegerToTextOfANegativeNumberHasItsSign) {
  EXPECT_EQ(IPA::integerToText(-5), "-5");
  EXPECT_EQ(IPA::integerToText(std::int64_t{-9223372036854775807LL - 1}), "-9223372036854775808");
}

TEST_F(TextConversionsTest, IntegerToTextIsReadBackByTextToInteger) {
  std::uint64_t const value = 1234567890123ull;

  EXPECT_EQ(IPA::textToInteger<unsigned long>(IPA::integerToText(value)), 1234567890123ul);
}

TEST_F(TextConversionsTest, DoubleToStringPrintsTwoDecimalsOrNothingForZero) {
  struct Row {
    char const* desc;
    double value;
    char const* text;
  };
  Row const rows[] = {
      // The report reads the empty text as "frequency not known".
      {"zero gives the empty text", 0.0, ""},
      {"negative zero equals zero and gives the empty text", -0.0, ""},
      {"a whole number gets two decimals", 300.0, "300.00"},
      {"rounding carries into the integer part", 99.999, "100.00"},
      {"a tiny value rounds to 0.00, which is not empty", 0.001, "0.00"},
      {"the -1 of a clock given by none prints with its sign", -1.0, "-1.00"},
      {"one decimal is padded", 2.5, "2.50"},
      {"more decimals are rounded", 287.456, "287.46"},
      {"a large value stays in fixed notation", 1e20, "100000000000000000000.00"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(IPA::doubleToString(row.value), row.text);
  }
}

TEST_F(TextConversionsTest, MakePropertyTreeParsesJson) {
  boost::property_tree::ptree const tree =
      IPA::makePropertyTree(R"({"a": {"b": "text"}, "n": 5, "list": [1, "two"]})");

  EXPECT_EQ(tree.get<std::string>("a.b"), "text");
  // The JSON reader keeps numbers as their text.
  EXPECT_EQ(tree.get<std::string>("n"), "5");
  auto const& list = tree.get_child("list");
  ASSERT_EQ(list.size(), 2u);
  auto it = list.begin();
  EXPECT_EQ(it->first, "");
  EXPECT_EQ(it->second.data(), "1");
  ++it;
  EXPECT_EQ(it->second.data(), "two");
}

TEST_F(TextConversionsTest, MakePropertyTreeOfAnEmptyObjectIsEmpty) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree("{}");

  EXPECT_TRUE(tree.empty());
  EXPECT_EQ(tree.data(), "");
}

TEST_F(TextConversionsTest, MakePropertyTreeRefusesBadJson) {
  struct Row {
    char const* desc;
    char const* json;
  };
  Row const rows[] = {
      {"the empty text", ""},
      {"an object left open", "{"},
      {"a member without value", R"({"a": })"},
      {"plain words", "not json"},
      {"a trailing comma", R"({"a": "1",})"},
      {"a key without quotes", R"({a: "1"})"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_THROW(IPA::makePropertyTree(row.json), boost::property_tree::json_parser_error);
  }
}

// ---- Nesting ----

std::string nested(int depth) {
  return std::string(static_cast<std::size_t>(depth), '[') +
         std::string(static_cast<std::size_t>(depth), ']');
}

TEST_F(TextConversionsTest, ReadJsonTreeReadsAsReadJsonDoes) {
  std::istringstream in(R"({"a": {"b": "text"}, "list": [1, "two"]})");
  boost::property_tree::ptree tree;
  IPA::readJsonTree(in, tree);
  EXPECT_EQ(tree.get<std::string>("a.b"), "text");
  EXPECT_EQ(tree.get_child("list").size(), 2u);
}

TEST_F(TextConversionsTest, NestingUpToTheLimitIsRead) {
  EXPECT_NO_THROW(IPA::makePropertyTree(nested(IPA::kMaxJsonNesting)));
}

TEST_F(TextConversionsTest, NestingPastTheLimitIsRefusedWithTheParserError) {
  try {
    IPA::makePropertyTree("{\"a\":\n" + nested(IPA::kMaxJsonNesting) + "}");
    FAIL() << "no exception";
  } catch (boost::property_tree::json_parser_error const& error) {
    EXPECT_STREQ(error.what(), "<unspecified file>(2): nesting deeper than 100 levels");
  }
}

// Found by feeding the fuzz targets of the rtd file, the actual resources document and the
// platform description a file of 200,000 "[": the parser recursed once per level until the
// stack overflowed and the process died. It must be refused like any other bad JSON.
TEST_F(TextConversionsTest, TwoHundredThousandOpenBracketsAreRefusedNotACrash) {
  EXPECT_THROW(IPA::makePropertyTree(std::string(200000, '[')),
               boost::property_tree::json_parser_error);
  EXPECT_THROW(IPA::makePropertyTree(nested(200000)), boost::property_tree::json_parser_error);
  std::string objects;
  for (int i = 0; i < 200000; ++i) objects += "{\"a\":";
  EXPECT_THROW(IPA::makePropertyTree(objects), boost::property_tree::json_parser_error);
}

TEST_F(TextConversionsTest, BracketsInsideStringsDoNotCount) {
  std::string const deep(1000, '[');
  boost::property_tree::ptree const tree =
      IPA::makePropertyTree(R"({"a": ")" + deep + R"(", "b": "\"[[[", "c": "{{{\\"})");
  EXPECT_EQ(tree.get<std::string>("a"), deep);
  EXPECT_EQ(tree.get<std::string>("b"), "\"[[[");
  EXPECT_EQ(tree.get<std::string>("c"), "{{{\\");
}

}  // namespace
