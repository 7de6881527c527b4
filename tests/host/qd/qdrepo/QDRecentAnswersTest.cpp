#include "host/qd/qdrepo/QDRecentAnswers.h"

#include <gtest/gtest.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <string>

namespace qd {
namespace {

// A result the test owns.
struct Owned {
  explicit Owned(xmlXPathObjectPtr made) : object(made) {}
  ~Owned() { xmlXPathFreeObject(object); }
  Owned(Owned const&) = delete;
  Owned& operator=(Owned const&) = delete;
  xmlXPathObjectPtr object;
};

TEST(QDRecentAnswersTest, AKeptResultIsFoundAsACopyUnderItsOwnTextOnly) {
  QDRecentAnswers answers(16);
  Owned const four(xmlXPathNewFloat(4));
  answers.keep("count(/a)", four.object);
  Owned const found(answers.find("count(/a)"));
  ASSERT_NE(found.object, nullptr);
  EXPECT_NE(found.object, four.object);
  EXPECT_EQ(found.object->type, XPATH_NUMBER);
  EXPECT_EQ(found.object->floatval, 4.0);
  Owned const other(answers.find("count(/b)"));
  EXPECT_EQ(other.object, nullptr);
}

TEST(QDRecentAnswersTest, ANewExpressionInTheSameSlotReplacesTheOld) {
  // One slot: every expression shares it.
  QDRecentAnswers answers(1);
  Owned const first(xmlXPathNewString(BAD_CAST "first"));
  Owned const second(xmlXPathNewString(BAD_CAST "second"));
  answers.keep("string(/a)", first.object);
  answers.keep("string(/b)", second.object);
  Owned const gone(answers.find("string(/a)"));
  EXPECT_EQ(gone.object, nullptr);
  Owned const kept(answers.find("string(/b)"));
  ASSERT_NE(kept.object, nullptr);
  EXPECT_STREQ(reinterpret_cast<char const*>(kept.object->stringval), "second");
}

TEST(QDRecentAnswersTest, NothingIsFoundBeforeAnythingIsKept) {
  QDRecentAnswers answers(0);  // taken as one slot
  Owned const none(answers.find(""));
  EXPECT_EQ(none.object, nullptr);
}

}  // namespace
}  // namespace qd
