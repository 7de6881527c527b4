// The strict readers' JSON parser: positions, and the same verdict as the library's reader on
// what is JSON at all.
#include "checks/JsonDocument.h"

#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>
#include <sstream>
#include <string>

#include "diagram/TextConversions.h"

namespace {

bool libraryReads(std::string const& text) {
  std::istringstream in(text);
  boost::property_tree::ptree tree;
  try {
    IPA::readJsonTree(in, tree);
  } catch (std::exception const&) {
    return false;
  }
  return true;
}

TEST(JsonDocumentTest, KeysAndValuesKeepTheirPositions) {
  qvcheck::JsonDocument const document =
      qvcheck::JsonDocument::parse("{\n  \"a\": [1, \"x,y\", {\"b\":\n true}],\n \"c\": -2.50}");
  ASSERT_TRUE(document.ok());
  qvcheck::JsonValue const& root = document.root();
  ASSERT_EQ(root.members.size(), 2u);
  qvcheck::JsonMember const& a = root.members[0];
  EXPECT_EQ(a.line, 2);
  EXPECT_EQ(a.column, 3);
  EXPECT_EQ(a.value.column, 8);
  ASSERT_EQ(a.value.members.size(), 3u);
  EXPECT_EQ(a.value.members[1].value.text, "x,y");
  EXPECT_EQ(a.value.members[1].column, 12);
  qvcheck::JsonValue const& inner = a.value.members[2].value;
  EXPECT_EQ(inner.column, 19);
  EXPECT_EQ(inner.members[0].line, 2);
  EXPECT_EQ(inner.members[0].value.line, 3);
  EXPECT_EQ(inner.members[0].value.column, 2);
  EXPECT_EQ(inner.members[0].value.text, "true");
  EXPECT_EQ(root.members[1].value.text, "-2.50");  // as written, as the library keeps it
  EXPECT_EQ(root.members[1].value.column, 7);
}

TEST(JsonDocumentTest, ANumberTooLargeForADoubleIsKeptAsWritten) {
  qvcheck::JsonDocument const document =
      qvcheck::JsonDocument::parse("{\"a\": 1e999, \"b\": [-2E+400], \"c\": 3}");
  ASSERT_TRUE(document.ok());
  EXPECT_EQ(document.root().members[0].value.text, "1e999");
  EXPECT_EQ(document.root().members[1].value.members[0].value.text, "-2E+400");
  EXPECT_EQ(document.root().members[2].value.text, "3");
  EXPECT_EQ(document.root().members[2].column, 30);
}

// Each row: a text, and whether it is JSON. The library's reader must say the same, so that a
// check never calls a file broken that the import reads, nor the other way round.
TEST(JsonDocumentTest, WhatIsJsonAgreesWithTheLibrarysReader) {
  struct Row {
    char const* text;
    bool json;
  };
  Row const rows[] = {
      {"{}", true},
      {"  {\"a\": 1}  \n", true},
      {"\xEF\xBB\xBF{\"a\": 1}", true},  // a byte order mark
      {"[1, 2]", true},
      {"\"text\"", true},
      {"3", true},
      {"{\"a\": \"\\u00e9\\n\"}", true},
      {"{\"a\": \"\\ud83d\\ude00\"}", true},
      {"{\"a\": -0.5e+3}", true},
      {"{\"a\": 1, \"a\": 2}", true},  // a key twice
      {"", false},
      {"   ", false},
      {"{", false},
      {"{\"a\": 1,}", false},
      {"[1,]", false},
      {"{'a': 1}", false},
      {"{\"a\": 01}", false},
      {"{\"a\": 1.}", false},
      {"{\"a\": .5}", false},
      {"{\"a\": +1}", false},
      {"{\"a\": NaN}", false},
      {"{\"a\": tru}", false},
      {"{} {}", false},
      {"{} x", false},
      {"{\"a\": \"\x01\"}", false},
      {"{\"a\": \"\\x\"}", false},
      {"{\"a\": \"\xff\"}", false},  // not UTF-8
      {"{\"a\" 1}", false},
      {"{\"a\": 1e999}", true},        // kept as text, never converted
      {"{\"a\": \"\\ud800\"}", false},  // half of a surrogate pair
      {"{\"a\": \"\\u0000\"}", true},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(qvcheck::JsonDocument::parse(row.text).ok(), row.json) << row.text;
    EXPECT_EQ(libraryReads(row.text), row.json) << row.text;
  }
}

TEST(JsonDocumentTest, NestingPastTheLibrarysLimitIsRefusedWhereItGoesDeeper) {
  std::string const deep = "{\"a\":\n" + std::string(100, '[') + std::string(100, ']') + "}";
  qvcheck::JsonDocument const document = qvcheck::JsonDocument::parse(deep);
  EXPECT_FALSE(document.ok());
  EXPECT_TRUE(document.tooDeep());
  EXPECT_EQ(document.errorLine(), 2);
  EXPECT_EQ(document.errorColumn(), 100);
  EXPECT_FALSE(libraryReads(deep));
  std::string const allowed = "{\"a\":\n" + std::string(99, '[') + std::string(99, ']') + "}";
  EXPECT_TRUE(qvcheck::JsonDocument::parse(allowed).ok());
  EXPECT_TRUE(libraryReads(allowed));
}

}  // namespace
