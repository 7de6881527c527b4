#include "rtd/RtdJsonStreamSource.h"

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <cstddef>
#include <sstream>
#include <stdexcept>
#include <string>

#include "diagram/TextConversions.h"

namespace {

class RtdJsonStreamSourceTest : public ::testing::Test {};

// Everything the source hands out, as the parser reads it: asks for the end before each
// character.
std::string readAll(IPA::RtdJsonStreamSource& source) {
  std::string text;
  for (auto it = source.begin(); it != source.end(); ++it) text.push_back(*it);
  return text;
}

// The depth check's error for `text` read whole, or "" when it passes.
std::string wholeTextError(std::string const& text) {
  std::istringstream in(text);
  try {
    IPA::readJsonText(in);
  } catch (boost::property_tree::json_parser_error const& error) {
    return error.what();
  }
  return "";
}

// The same, read through the source a piece of `chunk` bytes at a time.
std::string piecesError(std::string const& text, std::size_t chunk) {
  std::istringstream in(text);
  IPA::RtdJsonStreamSource source(in, chunk);
  try {
    readAll(source);
  } catch (boost::property_tree::json_parser_error const& error) {
    return error.what();
  }
  return "";
}

std::string nested(int depth) {
  return std::string(static_cast<std::size_t>(depth), '[') +
         std::string(static_cast<std::size_t>(depth), ']');
}

TEST_F(RtdJsonStreamSourceTest, AnEmptyStreamEndsAtOnce) {
  std::istringstream in("");
  IPA::RtdJsonStreamSource source(in);
  EXPECT_TRUE(source.begin() == source.end());
  EXPECT_EQ(source.announcedLength(), 0u);
  EXPECT_NO_THROW(source.finishAfterFailure());
}

TEST_F(RtdJsonStreamSourceTest, HandsOutEveryCharacterInOrderWhateverThePieces) {
  std::string const text = "{\"a\": \"x\\\"y\",\n \"b\": [1, 2.5e-3, true, null]}\n";
  for (std::size_t chunk = 1; chunk <= text.size() + 1; ++chunk) {
    SCOPED_TRACE(chunk);
    std::istringstream in(text);
    IPA::RtdJsonStreamSource source(in, chunk);
    EXPECT_EQ(readAll(source), text);
    // At the end it stays at the end.
    EXPECT_TRUE(source.begin() == source.end());
  }
}

TEST_F(RtdJsonStreamSourceTest, ReadsFromWhereTheStreamStandsAndAnnouncesTheRest) {
  std::istringstream in("skip[1]");
  in.ignore(4);
  IPA::RtdJsonStreamSource source(in, 2);
  EXPECT_EQ(source.announcedLength(), 3u);
  EXPECT_EQ(readAll(source), "[1]");
}

TEST_F(RtdJsonStreamSourceTest, TooDeepIsRefusedOnTheLineOfTheWholeTextAcrossPieces) {
  std::string text = "{\"a\":\n";
  for (int i = 0; i < IPA::kMaxJsonNesting + 1; ++i) text += (i % 7 == 0) ? "[\n" : "[";
  text += "]";
  std::string const expected = wholeTextError(text);
  ASSERT_EQ(expected, "<unspecified file>(17): nesting deeper than 100 levels");
  for (std::size_t chunk = 1; chunk <= 9; ++chunk) {
    SCOPED_TRACE(chunk);
    EXPECT_EQ(piecesError(text, chunk), expected);
  }
}

TEST_F(RtdJsonStreamSourceTest, AnEscapeCutFromItsCharacterStillEscapesIt) {
  // The escaped quote does not end the string, so the brackets after it are inside it; the
  // escaped newline is not counted as a line (so the brackets of `lines`, after three newlines,
  // are on line 3).
  std::string const inside = "[\"a\\\"" + std::string(150, '[') + "\\\n\"]";
  std::string const outside = "[\"a\\\\\"" + std::string(150, '[');
  std::string const lines = "[\"\\\n\",\n\"\\\\\",\n" + nested(101) + "]";
  ASSERT_EQ(wholeTextError(inside), "");
  ASSERT_EQ(wholeTextError(outside), "<unspecified file>(1): nesting deeper than 100 levels");
  ASSERT_EQ(wholeTextError(lines), "<unspecified file>(3): nesting deeper than 100 levels");
  for (std::size_t chunk = 1; chunk <= 9; ++chunk) {
    SCOPED_TRACE(chunk);
    EXPECT_EQ(piecesError(inside, chunk), "");
    EXPECT_EQ(piecesError(outside, chunk), wholeTextError(outside));
    EXPECT_EQ(piecesError(lines, chunk), wholeTextError(lines));
  }
}

TEST_F(RtdJsonStreamSourceTest, AfterTheParserGaveUpTheRestIsStillCheckedForDepth) {
  std::string const text = "[1 2,\n" + nested(101) + "]";
  for (std::size_t chunk : {1u, 3u, 4096u}) {
    SCOPED_TRACE(chunk);
    std::istringstream in(text);
    IPA::RtdJsonStreamSource source(in, chunk);
    try {
      // Where the parser would stop: at the "2". A large piece may hold the deep part already,
      // and then it is refused before the parser sees it.
      auto it = source.begin();
      for (int i = 0; i < 3; ++i, ++it) ASSERT_TRUE(it != source.end());
      source.finishAfterFailure();
      FAIL() << "no exception";
    } catch (boost::property_tree::json_parser_error const& error) {
      EXPECT_STREQ(error.what(), "<unspecified file>(2): nesting deeper than 100 levels");
    }
  }
}

TEST_F(RtdJsonStreamSourceTest, AfterTheParserGaveUpAShallowTextLeavesItsError) {
  std::istringstream in("[1 2, [[3]]]");
  IPA::RtdJsonStreamSource source(in, 2);
  auto it = source.begin();
  ASSERT_TRUE(it != source.end());
  EXPECT_NO_THROW(source.finishAfterFailure());
  // Its own error or not, a second call does nothing more.
  EXPECT_NO_THROW(source.finishAfterFailure());
}

TEST_F(RtdJsonStreamSourceTest, AtTheLengthLimitTheTextIsTooLong) {
  std::string const text = "[1, 2, 3]";
  for (std::size_t chunk : {1u, 2u, 100u}) {
    SCOPED_TRACE(chunk);
    {
      std::istringstream in(text);
      IPA::RtdJsonStreamSource source(in, chunk, text.size() + 1);
      EXPECT_EQ(readAll(source), text);
    }
    {
      std::istringstream in(text);
      IPA::RtdJsonStreamSource source(in, chunk, text.size());
      EXPECT_THROW(readAll(source), std::length_error);
    }
    {
      // Found too long after the parser gave up: too long is the stronger reason than its error.
      std::istringstream in(text);
      IPA::RtdJsonStreamSource source(in, chunk, text.size());
      auto it = source.begin();
      if (chunk < text.size()) {
        ASSERT_TRUE(it != source.end());
      }
      EXPECT_THROW(source.finishAfterFailure(), std::length_error);
    }
  }
}

TEST_F(RtdJsonStreamSourceTest, TooDeepIsAStrongerReasonThanTooLong) {
  std::string const text = "[0,\n" + nested(101);
  for (std::size_t chunk : {1u, 5u, 1000u}) {
    SCOPED_TRACE(chunk);
    std::istringstream in(text);
    IPA::RtdJsonStreamSource source(in, chunk, 3);
    try {
      readAll(source);
      FAIL() << "no exception";
    } catch (boost::property_tree::json_parser_error const& error) {
      EXPECT_STREQ(error.what(), "<unspecified file>(2): nesting deeper than 100 levels");
    }
  }
}

}  // namespace
