#include "rtd/RtdJsonDocument.h"

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <cstddef>
#include <sstream>
#include <streambuf>
#include <string>
#include <utility>
#include <vector>

#include "diagram/TextConversions.h"

namespace {

class RtdJsonDocumentTest : public ::testing::Test {};

std::string nested(int depth) {
  return std::string(static_cast<std::size_t>(depth), '[') +
         std::string(static_cast<std::size_t>(depth), ']');
}

// Texts that parse, and texts that fail in every way the parser and the depth check know, many
// of them with the interesting part cut by small pieces.
std::vector<std::string> const& texts() {
  static std::vector<std::string> const all = {
      "",
      " \n\t ",
      "0",
      "-12.5e+3",
      "123",
      "\"lone string\"",
      "true",
      "null",
      "[]",
      "{}",
      "{\"a\": {\"b\": \"text\", \"b\": \"again\"}, \"list\": [1, \"two\", false, null, {}],"
      " \"\": \"empty key\", \"n\": -0.25E-2}",
      "{\"esc\": \"q\\\" b\\\\ s\\/ \\b\\f\\n\\r\\t u\\u00e9 \\ud83d\\ude00 end\"}",
      "{\"utf8\": \"\xc3\xa9\xe2\x82\xac\xf0\x9f\x98\x80\"}",
      "\xef\xbb\xbf{\"bom\": 1}",
      "[\n1,\n2\n,\n3\n]\n",
      "{\"a\": [[[[\"deep\"]]]], \"b\": {\"c\": {\"d\": 4}}}",
      nested(IPA::kMaxJsonNesting),
      // Refused.
      "{",
      "[1 2]",
      "[1,]",
      "{\"a\" 1}",
      "{\"a\": 1,}",
      "{1: 2}",
      "\"unterminated",
      "\"bad \\x escape\"",
      "\"bad \\u12g4 escape\"",
      "\"\\udc00 stray low\"",
      "\"\\ud800 stray high\"",
      "\"\\ud800\\u0041 no low\"",
      "\"control \x01 char\"",
      "\"bad utf8 \xff\"",
      "\"cut utf8 \xc3\"",
      "-",
      "1.",
      "1e",
      "tru",
      "nul",
      "[1] garbage",
      "{\"a\": 1}\n\n  x",
      "{\"a\":\n" + nested(IPA::kMaxJsonNesting + 1) + "}",
      // A syntax error first, too deep further on: refused for the depth.
      "[1 2,\n\n" + nested(IPA::kMaxJsonNesting + 1) + "]",
      // Too deep only inside a string: a syntax error.
      "[\"" + std::string(200, '[') + "\" x]",
  };
  return all;
}

// The document's outcome for `text` read in pieces of `chunk`, and read_json's for the whole text
// after the depth check (readJsonTree), written alike: the tree, or the error's text.
void describe(IPA::RtdJsonDocument::Node const& node, std::string const& indent,
              std::ostream& out) {
  out << indent << "'" << node.data() << "' " << node.size() << "\n";
  for (auto const& member : node) {
    out << indent << member.first << ":\n";
    describe(member.second, indent + "  ", out);
  }
}
void describe(boost::property_tree::ptree const& tree, std::string const& indent,
              std::ostream& out) {
  out << indent << "'" << tree.data() << "' " << tree.size() << "\n";
  for (auto const& member : tree) {
    out << indent << member.first << ":\n";
    describe(member.second, indent + "  ", out);
  }
}

// The document read from `in` in pieces of `chunk` bytes, described, or the parser's error.
std::string outcomeOf(std::istream& in, std::size_t chunk) {
  std::ostringstream out;
  try {
    IPA::RtdJsonDocument const document(in, chunk);
    describe(document.root(), "", out);
  } catch (boost::property_tree::json_parser_error const& error) {
    out << "error: " << error.what();
  }
  return out.str();
}

std::string documentOutcome(std::string const& text, std::size_t chunk) {
  std::istringstream in(text);
  return outcomeOf(in, chunk);
}

// A stream that can only be read forward, as a pipe: it does not tell its length.
class OneWayBuffer : public std::streambuf {
 public:
  explicit OneWayBuffer(std::string text) : text_(std::move(text)) {
    setg(&text_[0], &text_[0], &text_[0] + text_.size());
  }

 private:
  std::string text_;
};

std::string oneWayOutcome(std::string const& text, std::size_t chunk) {
  OneWayBuffer buffer(text);
  std::istream in(&buffer);
  return outcomeOf(in, chunk);
}

std::string readJsonOutcome(std::string const& text) {
  std::istringstream in(text);
  std::ostringstream out;
  try {
    boost::property_tree::ptree tree;
    IPA::readJsonTree(in, tree);
    describe(tree, "", out);
  } catch (boost::property_tree::json_parser_error const& error) {
    out << "error: " << error.what();
  }
  return out.str();
}

TEST_F(RtdJsonDocumentTest, ReadsWhatReadJsonReadsAndRefusesWhatItRefusesInAnyPieces) {
  for (std::string const& text : texts()) {
    std::string const expected = readJsonOutcome(text);
    for (std::size_t chunk : {1u, 2u, 3u, 5u, 7u, 16u, 64u * 1024u}) {
      SCOPED_TRACE("chunk " + std::to_string(chunk) + ": " + text.substr(0, 80));
      EXPECT_EQ(documentOutcome(text, chunk), expected);
      EXPECT_EQ(oneWayOutcome(text, chunk), expected);
    }
  }
}

TEST_F(RtdJsonDocumentTest, AStreamThatDoesNotTellItsLengthGrowsItsTexts) {
  std::string text = "[";
  for (int i = 0; i < 500; ++i) {
    text += (i == 0 ? "\"" : ", \"") + std::string(40, static_cast<char>('a' + i % 26)) + "\"";
  }
  text += "]";
  EXPECT_EQ(oneWayOutcome(text, 7), readJsonOutcome(text));
}

TEST_F(RtdJsonDocumentTest, AnEmptyFileIsRefusedOnItsFirstLine) {
  EXPECT_EQ(documentOutcome("", 64), "error: <unspecified file>(1): expected value");
}

TEST_F(RtdJsonDocumentTest, ErrorLinesCountAcrossPieces) {
  std::string text = "{\n";
  for (int i = 0; i < 40; ++i) text += "  \"k" + std::to_string(i) + "\": \"v\\n\\\"\",\n";
  text += "  \"last\": tru\n}";
  for (std::size_t chunk : {1u, 3u, 7u, 13u}) {
    SCOPED_TRACE(chunk);
    EXPECT_EQ(documentOutcome(text, chunk), "error: <unspecified file>(42): expected 'true'");
  }
}

TEST_F(RtdJsonDocumentTest, PathsReadTheFirstChildOfEachKey) {
  std::istringstream in("{\"a\": {\"b\": \"first\", \"b\": \"second\"}, \"n\": 42}");
  IPA::RtdJsonDocument const document(in, 3);
  EXPECT_EQ(document.root().get<std::string>("a.b", "none"), "first");
  EXPECT_EQ(document.root().get<std::string>("n", "none"), "42");
  EXPECT_EQ(document.root().get<std::string>("a.c", "none"), "none");
  EXPECT_EQ(document.root().get_child("a").size(), 2u);
}

}  // namespace
