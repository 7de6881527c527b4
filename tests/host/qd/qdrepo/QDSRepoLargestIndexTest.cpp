// The readers that take an index write the position i + 1 into their expression. At INT_MAX
// that position must be 2147483648, computed without overflowing an int, and the answer is the
// one of any other index past the end: no such element. An int sum would overflow there, which
// the build with the undefined-behaviour sanitizer (scripts/test) stops on.
#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tests/host/qd/qdrepo/RepoQueryTranscript.h"
#include "tests/support/Golden.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"
#include "tools/qvdiag/RepoQueries.h"

namespace qd {
namespace {

using Question = qvtest::RepoQueryTranscript::Question;

// Every question of `file` to a query with an index, with that index set to `index`.
std::vector<Question> indexQuestions(std::string const& file, std::string const& index) {
  std::vector<Question> asked;
  for (Question question : qvtest::RepoQueryTranscript::questions(file, 7, 2, false)) {
    for (qvdiag::RepoQueries::Query const& query : qvdiag::RepoQueries::all()) {
      if (query.name != question.query) continue;
      bool indexed = false;
      for (std::size_t p = 0; p < query.parameters.size(); ++p) {
        if (query.parameters[p] != "i") continue;
        question.arguments.at(p) = index;
        indexed = true;
      }
      if (indexed) asked.push_back(question);
    }
  }
  return asked;
}

void replaceAll(std::string* text, std::string const& from, std::string const& to) {
  for (std::size_t at = text->find(from); at != std::string::npos;
       at = text->find(from, at + to.size())) {
    text->replace(at, from.size(), to);
  }
}

// Everything the repository says (answers, Log lines, how each process ended) to every index
// reader asked INT_MAX is what it says to the same readers asked 100000, once the index and the
// position are written as those of 100000.
TEST(QDSRepoLargestIndexTest, EveryIndexReaderAnswersTheLargestIndexAsAnyIndexPastTheEnd) {
  for (std::string const& file :
       {qvtest::exampleFile("repository/qd_ip_db.xml"), qvtest::dataFile("repository/core.xml"),
        qvtest::dataFile("repository/hwfcns.xml")}) {
    std::vector<Question> const far = indexQuestions(file, "100000");
    std::vector<Question> const largest = indexQuestions(file, "2147483647");
    ASSERT_GT(largest.size(), 100u) << file;
    std::string const expected = qvtest::RepoQueryTranscript::forked(file, far, true);
    std::string actual = qvtest::RepoQueryTranscript::forked(file, largest, true);
    replaceAll(&actual, "2147483647", "100000");
    replaceAll(&actual, "2147483648", "100001");
    EXPECT_EQ(qvtest::RepoQueryTranscript::firstDifference(expected, actual), "") << file;
  }
}

class QDSRepoLargestIndexAnswersTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(dir.file("largest.xml"))
        << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">"
           "<qd:component qd:name=\"acc\" qd:type=\"accelerator\">"
           "<qd:busInterface qd:name=\"ap_clk\" qd:busTypeRef=\"clock\" qd:direction=\"in\""
           " qd:port=\"clk_pin\"/>"
           "<qd:port qd:name=\"clk_pin\" qd:direction=\"in\" qd:width=\"1\"/>"
           "</qd:component>"
           "<qd:fcnMap qd:fcnName=\"f\" qd:componentRef=\"acc\">"
           "<qd:arg qd:name=\"a\" qd:dataWidth=\"32\"/>"
           "</qd:fcnMap>"
           "</qd:repository>";
    qvtest::stderrOf([&] { repo = std::make_unique<QDSRepo>(dir.file("largest.xml"), 0); });
  }

  qvtest::SilentLibxml silent;
  qvtest::TempDir dir;
  std::unique_ptr<QDSRepo> repo;
};

TEST_F(QDSRepoLargestIndexAnswersTest, ReadersAskedTheLargestIndexFindNoElementAndSayNothing) {
  std::string const said = qvtest::stderrOf([&] {
    EXPECT_EQ(repo->getIthQdComponent(0), "acc");
    EXPECT_EQ(repo->getIthQdComponent(INT_MAX), "");
    EXPECT_TRUE(repo->isValidQdCompIthPortAttr("acc", 0, "qd:port"));
    EXPECT_FALSE(repo->isValidQdCompIthPortAttr("acc", INT_MAX, "qd:port"));
    EXPECT_EQ(repo->getQdCompPortIntAttrByIndex("acc", 0, "qd:width"), 1);
    EXPECT_EQ(repo->getQdCompPortIntAttrByIndex("acc", INT_MAX, "qd:width"), -1);
    EXPECT_EQ(repo->getQdCompPortStringAttrByIndex("acc", INT_MAX, "qd:name"), "");
    EXPECT_EQ(repo->getIthQdHwFcn(0), "f");
    EXPECT_EQ(repo->getIthQdHwFcn(INT_MAX), "");
    EXPECT_EQ(repo->getIthQdHwFcnArg1("f", INT_MAX), "");
    EXPECT_EQ(repo->getIthQdHwFcnArgDataWidth("f", INT_MAX), -1);
    EXPECT_EQ(repo->getIthQdHwFcnForQdComp("acc", INT_MAX), "");
  });
  EXPECT_EQ(said, "");
  // The interface's own reader checks the index against the count first, and says so.
  EXPECT_EQ(qvtest::stderrOf([&] {
              EXPECT_EQ(repo->getIthQdCompBusInterfacePort("acc", INT_MAX), "");
            }),
            "WARNING: [Morvane 83-1001]  Index 2147483647 out of range for component acc\n");
}

}  // namespace
}  // namespace qd
