#include "host/qd/qdrepo/QDNameIndex.h"

#include <gtest/gtest.h>
#include <libxml/parser.h>

#include <cstdint>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "host/qd/qdrepo/QDXPathDoc.h"
#include "tests/host/qd/qdrepo/RandomRepositoryFile.h"
#include "tests/host/qd/qdrepo/RepoQueryTranscript.h"
#include "service/Log.h"
#include "tests/support/Golden.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"

namespace qd {
namespace {

class QDNameIndexTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(path) << R"(<?xml version="1.0"?>
<qd:repository xmlns:qd="urn:quarrix:qd" xmlns:q2="urn:quarrix:qd" xmlns:o="urn:other">
  <qd:component qd:name="acc" qd:type="accelerator"/>
  <qd:component qd:name="plat" qd:type="platform"/>
  <qd:component qd:name="acc" qd:type="monitor"/>
  <q2:component q2:name="acc2" qd:type="accelerator"/>
  <qd:component o:name="plat" qd:type="accelerator"/>
  <qd:fcnMap qd:fcnName="f" qd:componentRef="acc"/>
  <qd:other qd:name="acc"/>
  <qd:component qd:name="it's"/>
</qd:repository>
)";
    doc = xmlReadFile(path.c_str(), nullptr, 0);
    ASSERT_NE(doc, nullptr);
    index = std::make_unique<QDNameIndex>(doc, "urn:quarrix:qd");
  }
  void TearDown() override { xmlFreeDoc(doc); }

  // The line numbers (libxml2 keeps them) of the elements an expression is rewritten to read.
  std::vector<long> linesRead(std::string const& expression, std::string* rewritten) {
    std::vector<xmlNodePtr> const* elements = nullptr;
    std::vector<long> lines;
    if (!index->rewrite(expression, rewritten, &elements)) return {-1};
    for (xmlNodePtr element : *elements) lines.push_back(xmlGetLineNo(element));
    return lines;
  }

  qvtest::TempDir dir;
  std::string const path = dir.file("named.xml");
  xmlDocPtr doc = nullptr;
  std::unique_ptr<QDNameIndex> index;
};

struct Rewritten {
  char const* expression;
  char const* rewritten;
  std::vector<long> lines;  // of the elements the variable holds
};

TEST_F(QDNameIndexTest, AnElementChosenByItsNameIsReadFromTheIndex) {
  Rewritten const rows[] = {
      {"/qd:repository/qd:component[@qd:name='acc'][1]/@qd:type",
       "$qdNamedElements[@qd:name='acc'][1]/@qd:type", {3, 5}},
      {"boolean(/qd:repository/qd:component[@qd:name='acc'])",
       "boolean($qdNamedElements[@qd:name='acc'])", {3, 5}},
      {"count(/qd:repository/qd:fcnMap[@qd:fcnName ='f'][1]/qd:arg)",
       "count($qdNamedElements[@qd:fcnName ='f'][1]/qd:arg)", {8}},
      {"number(/qd:repository/qd:fcnMap[@qd:componentRef='acc']/qd:arg[1]/@qd:dataWidth)",
       "number($qdNamedElements[@qd:componentRef='acc']/qd:arg[1]/@qd:dataWidth)", {8}},
      {"/qd:repository/qd:component[@qd:name='plat' and @qd:type ='platform'][1]",
       "$qdNamedElements[@qd:name='plat' and @qd:type ='platform'][1]", {4}},
      // Another prefix bound to the namespace names the same element and attribute.
      {"/qd:repository/qd:component[@qd:name='acc2'][1]", "$qdNamedElements[@qd:name='acc2'][1]",
       {6}},
      {"/qd:repository/qd:component[@qd:name='nobody']/@qd:type",
       "$qdNamedElements[@qd:name='nobody']/@qd:type", {}},
      {"/qd:repository/qd:component[@qd:type='platform'][1]/@qd:name",
       "$qdNamedElements[@qd:type='platform'][1]/@qd:name", {4}},
  };
  for (Rewritten const& row : rows) {
    std::string rewritten = "untouched";
    std::vector<long> const lines = linesRead(row.expression, &rewritten);
    EXPECT_EQ(rewritten, row.rewritten) << row.expression;
    EXPECT_EQ(lines, row.lines) << row.expression;
  }
}

TEST_F(QDNameIndexTest, ANameWithAQuoteIsLeftToTheWholeDocument) {
  std::string rewritten;
  // The literal 'it' ends at the quote, and "s'" then breaks the predicate: left as it is.
  EXPECT_EQ(linesRead("/qd:repository/qd:component[@qd:name='it's']", &rewritten),
            std::vector<long>{-1});
  // Written with the other quote, XPath's literal holds the apostrophe; the repository never
  // writes that form, so it is left as it is too.
  EXPECT_EQ(linesRead("/qd:repository/qd:component[@qd:name=\"it's\"]", &rewritten),
            std::vector<long>{-1});
}

TEST_F(QDNameIndexTest, ExpressionsOfOtherFormsAreLeftAsTheyAre) {
  char const* const rows[] = {
      // A spliced name that turns the test into a truth.
      "/qd:repository/qd:component[@qd:name='x' or '1'='1']/@qd:type",
      "boolean(/qd:repository/qd:component[@qd:name='x' or '1'='1'])",
      // A conjunction that is not one more attribute test.
      "/qd:repository/qd:component[@qd:name='acc' and position()=2]",
      "/qd:repository/qd:component[@qd:name='acc' and @qd:type='a' or true()]",
      // Positions, other steps and other openings.
      "/qd:repository/qd:component[2]/@qd:name",
      "count(/qd:repository/qd:component)",
      "/qd:repository/qd:fcnMap/qd:arg[@qd:name='a']",
      "//qd:component[@qd:name='acc']",
      "not(/qd:repository/qd:component[@qd:name='acc'])",
      "x/qd:repository/qd:component[@qd:name='acc']",
      "/qd:repository/qd:component[@qd:name = 'acc']",
      "/qd:repository/qd:component[@qd:name='acc",
      // An expression that names a variable itself.
      "/qd:repository/qd:component[@qd:name='acc'][$qdNamedElements]",
  };
  for (char const* expression : rows) {
    std::string rewritten = "untouched";
    EXPECT_EQ(linesRead(expression, &rewritten), std::vector<long>{-1}) << expression;
    EXPECT_EQ(rewritten, "untouched") << expression;
  }
}

TEST_F(QDNameIndexTest, ARootOtherThanTheRepositoryIndexesNothing) {
  xmlFreeDoc(doc);
  std::ofstream(path) << R"(<qd:other xmlns:qd="urn:quarrix:qd"><qd:component qd:name="acc"/></qd:other>)";
  doc = xmlReadFile(path.c_str(), nullptr, 0);
  ASSERT_NE(doc, nullptr);
  QDNameIndex other(doc, "urn:quarrix:qd");
  std::string rewritten;
  std::vector<xmlNodePtr> const* elements = nullptr;
  ASSERT_TRUE(other.rewrite("/qd:repository/qd:component[@qd:name='acc']", &rewritten, &elements));
  EXPECT_TRUE(elements->empty());
}

// Expressions that differ only in the names they quote share one compiled shape, with the
// literals read from variables; every one answers, and says, what it does as written, also where
// a literal touches a name, holds a '$', cannot be lifted or makes libxml2 fail.
TEST_F(QDNameIndexTest, ExpressionsOfOneShapeAnswerAsWrittenWithEveryName) {
  char const* const expressions[] = {
      "/qd:repository/qd:component[@qd:name='acc'][1]/@qd:type",
      "/qd:repository/qd:component[@qd:name='plat'][1]/@qd:type",
      "/qd:repository/qd:component[@qd:name='nobody'][1]/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc2'][1]/@qd:type",
      "/qd:repository/qd:component[@qd:name='a$b'][1]/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc' and @qd:type='monitor']/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc' and @qd:type='accelerator']/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc'][@qd:type='x'or'a'='a']/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc'][@qd:type='x'and'a'='a']/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc'][concat('monitor','')=@qd:type]/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc'][\"monitor\"=@qd:type]/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc']/processing-instruction('x')",
      "/qd:repository/qd:component[@qd:name='acc'][nonsense('a')]/@qd:type",
      "/qd:repository/qd:component[@qd:name='acc'][@qd:type='a]",
      "count(/qd:repository/qd:component[@qd:name='acc'])",
      "count(/qd:repository/qd:component[@qd:name='plat'])",
      "boolean(/qd:repository/qd:component[@qd:name='plat'])",
      "boolean(/qd:repository/qd:component[@qd:name='none'])",
  };
  auto const transcript = [this, &expressions](bool shortcuts) {
    QDXPathDoc::setShortcutsForNewDocuments(shortcuts);
    boost::shared_ptr<QDXPathDoc> const document = QDXPathDoc::buildDoc(path, false);
    QDXPathDoc::setShortcutsForNewDocuments(true);
    std::int32_t const level = Log::reportingLevel;
    Log::reportingLevel = logINTERNAL;
    std::string said;
    // Twice: the second round meets the shapes compiled and the answers kept.
    for (int round = 0; round < 2; ++round) {
      for (char const* expression : expressions) {
        said += qvtest::stderrOf([&] {
          std::cerr << expression << " ->";
          for (std::string const& value : document->stringListQuery(expression, "t")) {
            std::cerr << " [" << value << "]";
          }
          std::cerr << " " << document->intQuery(expression, "t") << "\n";
        });
      }
    }
    Log::reportingLevel = level;
    return said;
  };
  std::string const plain = transcript(false);
  EXPECT_EQ(transcript(true), plain);
  // The answers are there to compare: names found, and libxml2's words for what it rejects.
  EXPECT_NE(plain.find("[@qd:name='plat'][1]/@qd:type -> [platform]"), std::string::npos);
  EXPECT_NE(plain.find("[@qd:type='x'or'a'='a']/@qd:type -> [accelerator] [monitor]"),
            std::string::npos)
      << plain;
  EXPECT_NE(plain.find("function nonsense not found"), std::string::npos) << plain;
}

// The proof that the index changes nothing: random repository files, every query with arguments
// from the file and from outside it, and the whole transcript — answers, Log lines at every
// level, the end of each process — with the index and without it.
class QDNameIndexDifferentialTest : public ::testing::Test {
 protected:
  static std::string transcript(std::string const& file, bool nameIndex) {
    std::vector<qvtest::RepoQueryTranscript::Question> const questions =
        qvtest::RepoQueryTranscript::questions(file, 11, 3, false);
    return qvtest::RepoQueryTranscript::forked(file, questions, nameIndex);
  }

  static void expectSameTranscripts(std::string const& file) {
    std::string const plain = transcript(file, false);
    std::string const indexed = transcript(file, true);
    EXPECT_EQ(qvtest::RepoQueryTranscript::firstDifference(plain, indexed), "") << file;
  }

  // The answers of a transcript that are not one of the sentinels.
  static int answersOtherThanSentinels(std::string const& transcript) {
    std::istringstream lines(transcript);
    int count = 0;
    for (std::string line; std::getline(lines, line);) {
      if (line.rfind("= ", 0) != 0) continue;
      std::string const answer = line.substr(2);
      if (answer != "\"\"" && answer != "-1" && answer != "false" && answer != "(none)" &&
          answer != "0") {
        ++count;
      }
    }
    return count;
  }

  qvtest::TempDir dir;
};

TEST_F(QDNameIndexDifferentialTest, RandomFilesAnswerAlikeWithAndWithoutTheIndex) {
  constexpr unsigned kFiles = 24;
  int endedEarly = 0;
  int answers = 0;
  for (unsigned seed = 1; seed <= kFiles; ++seed) {
    std::string const file = dir.file("random_" + std::to_string(seed) + ".xml");
    std::ofstream(file) << qvtest::RandomRepositoryFile(seed).text();
    std::string const plain = transcript(file, false);
    std::string const indexed = transcript(file, true);
    ASSERT_EQ(qvtest::RepoQueryTranscript::firstDifference(plain, indexed), "")
        << "seed " << seed << ", " << file;
    answers += answersOtherThanSentinels(plain);
    if (plain.find("# ended: exit 0") == std::string::npos ||
        plain.find("# ended: exit 255") != std::string::npos ||
        plain.find("# ended: signal") != std::string::npos) {
      ++endedEarly;
    }
  }
  // Disagreeing readings and aborting adapters are part of what is compared, not all of it,
  // and the files answer many questions with something other than "no answer".
  EXPECT_LT(endedEarly, static_cast<int>(kFiles));
  EXPECT_GT(answers, 1000);
}

TEST_F(QDNameIndexDifferentialTest, TheExamplesAndTestFilesAnswerAlike) {
  for (std::string const& file :
       {qvtest::exampleFile("repository/qd_ip_db.xml"), qvtest::dataFile("repository/core.xml"),
        qvtest::dataFile("repository/hwfcns.xml"), qvtest::dataFile("repository/xpath_doc.xml")}) {
    expectSameTranscripts(file);
  }
}

TEST_F(QDNameIndexDifferentialTest, TwoDifferentFilesGiveDifferentTranscripts) {
  // The comparison can fail: the same questions of two files differ where the files do.
  std::string const one = dir.file("one.xml");
  std::string const other = dir.file("other.xml");
  std::ofstream(one) << qvtest::RandomRepositoryFile(3).text();
  std::ofstream(other) << qvtest::RandomRepositoryFile(4).text();
  std::vector<qvtest::RepoQueryTranscript::Question> const questions =
      qvtest::RepoQueryTranscript::questions(one, 5, 1, false);
  std::string const difference = qvtest::RepoQueryTranscript::firstDifference(
      qvtest::RepoQueryTranscript::forked(one, questions, true),
      qvtest::RepoQueryTranscript::forked(other, questions, true));
  EXPECT_NE(difference, "");
}

}  // namespace
}  // namespace qd
