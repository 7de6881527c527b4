#include "host/qd/qdrepo/QDXPathDoc.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

#include "host/qd/qdrepo/QDNamespaces.h"
#include "tests/support/Golden.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"

namespace qd {
namespace {

class QDXPathDocTest : public ::testing::Test {
 protected:
  void SetUp() override {
    document = QDXPathDoc::buildDoc(path, false);
    ASSERT_TRUE(document);
  }

  qvtest::SilentLibxml silent;
  std::string const path = qvtest::dataFile("repository/xpath_doc.xml");
  boost::shared_ptr<QDXPathDoc> document;
};

TEST_F(QDXPathDocTest, CountOverNothingIsZeroNotAnError) {
  int value = -5;
  EXPECT_EQ(qvtest::stderrOf([&] { value = document->intQuery("count(//qd:nothing)", "caller"); }),
            "");
  EXPECT_EQ(value, 0);
}

TEST_F(QDXPathDocTest, NumberOfAnAbsentAttributeIsMinusOneWithoutMessage) {
  EXPECT_EQ(qvtest::stderrOf([&] {
              EXPECT_EQ(document->intQuery("number(//qd:values/@qd:absent)", "c"), -1);
              EXPECT_EQ(document->longLongQuery("number(//qd:values/@qd:absent)", "c"), -1);
              EXPECT_EQ(document->floatQuery("number(//qd:values/@qd:absent)", "c"), -1.0);
            }),
            "");
}

TEST_F(QDXPathDocTest, IntegerQueriesTruncateTowardZero) {
  EXPECT_EQ(document->intQuery("number(//qd:values/@qd:up)", "c"), 2);
  EXPECT_EQ(document->floatQuery("number(//qd:values/@qd:up)", "c"), 2.9);
  EXPECT_EQ(document->intQuery("number(//qd:values/@qd:down)", "c"), -2);
  EXPECT_EQ(document->longLongQuery("number(//qd:values/@qd:down)", "c"), -2);
  EXPECT_EQ(document->longLongQuery("number(//qd:values/@qd:big)", "c"), 5000000000LL);
}

struct NumberMessage {
  char const* query;
  char const* nullLine;
  char const* typeLine;
};

TEST_F(QDXPathDocTest, NodeSetOrFailedEvaluationIsMinusOneWithTheQuerysMessage) {
  std::string const nodes = "//qd:item";
  std::string const broken = "count(//qd:item";
  auto const run = [&](std::string const& which, std::string const& expression) {
    if (which == "int") return static_cast<double>(document->intQuery(expression, "getX"));
    if (which == "longLong") {
      return static_cast<double>(document->longLongQuery(expression, "getX"));
    }
    return document->floatQuery(expression, "getX");
  };
  NumberMessage const rows[] = {
      {"int", "ERROR: [Morvane 83-1002] getX count(//qd:item is NULL\n",
       "ERROR: [Morvane 83-1003] getX //qd:item is not an XPATH_NUMBER\n"},
      {"longLong", "ERROR: [Morvane 83-1004] getX count(//qd:item is NULL\n",
       "ERROR: [Morvane 83-1005] getX //qd:item is not an XPATH_NUMBER\n"},
      {"float", "ERROR: [Morvane 83-1006] getX count(//qd:item is NULL\n",
       "ERROR: [Morvane 83-1007] getX //qd:item is not an XPATH_NUMBER\n"},
  };
  for (NumberMessage const& row : rows) {
    SCOPED_TRACE(row.query);
    double value = 0;
    EXPECT_EQ(qvtest::stderrOf([&] { value = run(row.query, broken); }), row.nullLine);
    EXPECT_EQ(value, -1.0);
    EXPECT_EQ(qvtest::stderrOf([&] { value = run(row.query, nodes); }), row.typeLine);
    EXPECT_EQ(value, -1.0);
  }
}

TEST_F(QDXPathDocTest, BooleanQueryAnswersBooleansOnly) {
  EXPECT_TRUE(document->booleanQuery("boolean(//qd:item)", "c"));
  EXPECT_FALSE(document->booleanQuery("boolean(//qd:nothing)", "c"));
  bool value = true;
  EXPECT_EQ(qvtest::stderrOf([&] { value = document->booleanQuery("count(//qd:item)", "isX"); }),
            "ERROR: [Morvane 83-1008] isX count(//qd:item) does not evaluate to XPATH_BOOLEAN\n");
  EXPECT_FALSE(value);
  EXPECT_EQ(qvtest::stderrOf([&] { value = document->booleanQuery("boolean(", "isX"); }),
            "ERROR: [Morvane 83-1008] isX boolean( does not evaluate to XPATH_BOOLEAN\n");
  EXPECT_FALSE(value);
}

TEST_F(QDXPathDocTest, StringQueryOfANumberIsEmptyWithoutMessage) {
  std::string value = "x";
  EXPECT_EQ(qvtest::stderrOf([&] { value = document->stringQuery("count(//qd:item)", "c"); }), "");
  EXPECT_EQ(value, "");
  EXPECT_EQ(document->stringQuery("concat('a', 'b')", "c"), "ab");
  EXPECT_EQ(document->stringQuery("string(", "c"), "");
}

TEST_F(QDXPathDocTest, AgreeingNodesGiveTheirValueDisagreeingNodesNothing) {
  EXPECT_EQ(document->stringQuery("//qd:item/@qd:name", "c"), "same");
  EXPECT_EQ(document->stringQuery("//qd:item/@qd:kind", "c"), "");
  EXPECT_EQ(document->stringQuery("//qd:item[2]/@qd:kind", "c"), "b");
  EXPECT_EQ(document->stringListQuery("//qd:item/@qd:name", "c"),
            (std::vector<std::string>{"same", "same"}));
  EXPECT_EQ(document->stringListQuery("//qd:item/@qd:kind", "c"),
            (std::vector<std::string>{"a", "b"}));
}

TEST_F(QDXPathDocTest, StringListQueryOfAStringIsOneElementOfAnythingElseNone) {
  EXPECT_EQ(document->stringListQuery("string(//qd:item/@qd:kind)", "c"),
            (std::vector<std::string>{"a"}));
  EXPECT_TRUE(document->stringListQuery("count(//qd:item)", "c").empty());
  EXPECT_TRUE(document->stringListQuery("//qd:nothing/@qd:x", "c").empty());
  EXPECT_TRUE(document->stringListQuery("(", "c").empty());
}

TEST_F(QDXPathDocTest, AttributeWithAnEmptyValueReadsAsEmpty) {
  EXPECT_EQ(document->stringQuery("//qd:values/@qd:empty", "c"), "");
  EXPECT_EQ(document->stringListQuery("//qd:values/@qd:empty", "c"),
            (std::vector<std::string>{""}));
}

TEST_F(QDXPathDocTest, AllSixPrefixesAreBoundInOrder) {
  ASSERT_EQ(sizeof(kQDNamespaces) / sizeof(kQDNamespaces[0]), 6u);
  std::vector<std::string> prefixes;
  for (QDNamespace const& space : kQDNamespaces) prefixes.push_back(space.prefix);
  EXPECT_EQ(prefixes, (std::vector<std::string>{"cf", "mvk", "qd", "quarrix", "spirit", "hsi"}));
  EXPECT_EQ(document->stringQuery("//cf:connection/@cf:id", "c"), "c1");
  EXPECT_EQ(document->stringQuery("//mvk:family/@mvk:id", "c"), "m1");
  EXPECT_EQ(document->stringQuery("//quarrix:root/@quarrix:id", "c"), "r1");
  EXPECT_EQ(document->stringQuery("//spirit:component/@spirit:id", "c"), "s1");
  // The W3C instance namespace is reached through "hsi", whatever the file calls it.
  EXPECT_EQ(document->stringQuery("/qd:repository/@hsi:noNamespaceSchemaLocation", "c"),
            "qd_repository.xsd");
}

TEST_F(QDXPathDocTest, EmptyFileNameCannotBeOpened) {
  boost::shared_ptr<QDXPathDoc> made;
  EXPECT_EQ(qvtest::stderrOf([&] { made = QDXPathDoc::buildDoc("", false); }),
            "ERROR: [Morvane 83-1001] Cannot open \n");
  EXPECT_FALSE(made);
}

TEST_F(QDXPathDocTest, MissingFileCannotBeOpened) {
  qvtest::TempDir dir;
  boost::shared_ptr<QDXPathDoc> made;
  EXPECT_EQ(qvtest::stderrOf([&] { made = QDXPathDoc::buildDoc(dir.file("absent.xml"), false); }),
            "ERROR: [Morvane 83-1001] Cannot open " + dir.file("absent.xml") + "\n");
  EXPECT_FALSE(made);
}

TEST_F(QDXPathDocTest, FileThatIsNotXmlGivesNullWithoutAMessageOfOurs) {
  qvtest::TempDir dir;
  std::ofstream(dir.file("text.xml")) << "this is not <xml";
  boost::shared_ptr<QDXPathDoc> made;
  EXPECT_EQ(qvtest::stderrOf([&] { made = QDXPathDoc::buildDoc(dir.file("text.xml"), false); }),
            "");
  EXPECT_FALSE(made);
}

TEST_F(QDXPathDocTest, ParseFileOfAMissingFileSaysSoWithItsOwnNumber) {
  qvtest::TempDir dir;
  QDXPathDoc made(dir.file("absent.xml"), false);
  bool parsed = true;
  EXPECT_EQ(qvtest::stderrOf([&] { parsed = made.parseFile(); }),
            "ERROR: [Morvane 83-1000] Cannot open " + dir.file("absent.xml") + "\n");
  EXPECT_FALSE(parsed);
  EXPECT_EQ(made.doc, nullptr);
  EXPECT_EQ(made.xpathContext, nullptr);
}

TEST_F(QDXPathDocTest, ConstructionKeepsNameAndFlagWithNullHandles) {
  QDXPathDoc made("some/file.xml", true);
  EXPECT_EQ(made.fileName, "some/file.xml");
  EXPECT_TRUE(made.interactive);
  EXPECT_EQ(made.doc, nullptr);
  EXPECT_EQ(made.xpathContext, nullptr);
  EXPECT_FALSE(document->interactive);
}

TEST(QDFileTest, FileExistsIsFalseForEmptyAndMissingPaths) {
  qvtest::TempDir dir;
  std::ofstream(dir.file("here")) << "x";
  EXPECT_TRUE(file_exists(dir.file("here")));
  EXPECT_FALSE(file_exists(dir.file("absent")));
  EXPECT_FALSE(file_exists(""));
}

TEST(QDFileTest, FileNameFollowsTheLastSeparatorOfEitherKind) {
  EXPECT_EQ(getFileName("a/b\\c/d.xml"), "d.xml");
  EXPECT_EQ(getFileName("a\\b/c\\d.xml"), "d.xml");
  EXPECT_EQ(getFileName("plain.xml"), "plain.xml");
  EXPECT_EQ(getFileName("dir/"), "");
  EXPECT_EQ(getFileName("dir\\"), "");
  EXPECT_EQ(getFileName(""), "");
}

class QDXPathDocInteractiveTest : public QDXPathDocTest {
 protected:
  // Standard output of queryDocInteractive with `input` on standard input.
  std::string session(std::string const& input) {
    std::istringstream in(input);
    std::streambuf* const saved = std::cin.rdbuf(in.rdbuf());
    testing::internal::CaptureStdout();
    EXPECT_TRUE(document->queryDocInteractive());
    std::string const out = testing::internal::GetCapturedStdout();
    std::cin.rdbuf(saved);
    std::cin.clear();
    return out;
  }

  static std::string const kPrompt;
};

std::string const QDXPathDocInteractiveTest::kPrompt = "Enter XPath expression (-q to exit): ";

TEST_F(QDXPathDocInteractiveTest, QEndsTheLoop) {
  EXPECT_EQ(session("q\ncount(//qd:item)\n"), kPrompt + "\n");
}

TEST_F(QDXPathDocInteractiveTest, DashQEndsTheLoop) { EXPECT_EQ(session("-q\n"), kPrompt + "\n"); }

TEST_F(QDXPathDocInteractiveTest, EndOfInputEndsTheLoop) { EXPECT_EQ(session(""), kPrompt + "\n"); }

TEST_F(QDXPathDocInteractiveTest, EachLineIsEvaluatedAndDumped) {
  std::string const out = session("count(//qd:item)\n -q\n-q\n");
  // libxml2 writes the dump; only its gist is ours to check.
  std::string const first = kPrompt + "evaluating count(//qd:item)\nObject is a number : 2\n";
  EXPECT_EQ(out.substr(0, first.size()), first) << out;
  EXPECT_NE(out.find(kPrompt + "evaluating  -q\n"), std::string::npos) << out;
  EXPECT_EQ(out.substr(out.size() - kPrompt.size() - 1), kPrompt + "\n");
}

TEST_F(QDXPathDocInteractiveTest, BuildDocRunsTheLoopWhenAskedButKeepsTheDocumentQuiet) {
  std::istringstream in("count(//qd:item)\n");
  std::streambuf* const saved = std::cin.rdbuf(in.rdbuf());
  testing::internal::CaptureStdout();
  boost::shared_ptr<QDXPathDoc> made = QDXPathDoc::buildDoc(path, true);
  std::string const out = testing::internal::GetCapturedStdout();
  std::cin.rdbuf(saved);
  std::cin.clear();
  ASSERT_TRUE(made);
  EXPECT_FALSE(made->interactive);
  EXPECT_EQ(out.rfind(kPrompt + "evaluating count(//qd:item)\n", 0), 0u) << out;
}

}  // namespace
}  // namespace qd
