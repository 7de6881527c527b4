#include "diagram/JsonNestingCheck.h"

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <string>
#include <vector>

#include "diagram/TextConversions.h"

namespace IPA {
namespace {

// The check's answer for `text` given in pieces of `piece` bytes: "" or the error's text.
std::string checked(std::string const& text, std::size_t piece) {
  JsonNestingCheck check;
  try {
    for (std::size_t at = 0; at < text.size(); at += piece) {
      std::size_t const size = std::min(piece, text.size() - at);
      check.scan(text.data() + at, text.data() + at + size);
    }
  } catch (boost::property_tree::json_parser_error const& error) {
    return error.what();
  }
  return "";
}

std::string nested(int depth) { return std::string(depth, '[') + std::string(depth, ']'); }

TEST(JsonNestingCheckTest, AHundredLevelsPassAndOneMoreIsRefusedAtItsLine) {
  ASSERT_EQ(kMaxJsonNesting, 100);
  EXPECT_EQ(checked(nested(100), 7), "");
  EXPECT_EQ(checked("{\"a\":\n\n" + nested(101), 7),
            "<unspecified file>(3): nesting deeper than 100 levels");
}

TEST(JsonNestingCheckTest, BracketsInsideStringsDoNotCount) {
  std::string const text = "[\"" + std::string(200, '[') + "\"]";
  EXPECT_EQ(checked(text, 1000), "");
  // An escaped quote does not end the string, so the brackets after it are still inside it.
  std::string const escaped = "[\"\\\"" + std::string(200, '{') + "\"]";
  EXPECT_EQ(checked(escaped, 1000), "");
}

TEST(JsonNestingCheckTest, EveryCutGivesTheAnswerOfTheWholeText) {
  // A backslash, a quote and newlines at every place a piece can end.
  std::vector<std::string> const texts = {
      "[\"a\\\"" + std::string(150, '[') + "\"," + nested(99) + "]",
      "[\"a\\\\\"," + nested(100) + "]",
      "[\"\\\n\"\n,\n" + nested(101) + "]",
      "[\"\\\"\",\n\"x\"\n," + std::string(120, '{'),
  };
  for (std::string const& text : texts) {
    std::string const whole = checked(text, text.size());
    for (std::size_t piece = 1; piece <= 9; ++piece) {
      EXPECT_EQ(checked(text, piece), whole) << text << " in pieces of " << piece;
    }
  }
  EXPECT_EQ(checked(texts[0], texts[0].size()), "");
  EXPECT_EQ(checked(texts[1], texts[1].size()),
            "<unspecified file>(1): nesting deeper than 100 levels");
  // The newline after a backslash is skipped whole and not counted: the refusal is on line 3.
  EXPECT_EQ(checked(texts[2], texts[2].size()),
            "<unspecified file>(3): nesting deeper than 100 levels");
}

}  // namespace
}  // namespace IPA
