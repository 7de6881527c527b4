#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/ptree.hpp>
#include <string>
#include <vector>

#include "diagram/TextConversions.h"
#include "rtd/RtdMemDataCollectionBuilder.h"
#include "tests/rtd/RtdPrint.h"

namespace {

using Memories = std::vector<IPA::RtdMemData>;

class RtdMemDataCollectionBuilderTest : public ::testing::Test {};

TEST_F(RtdMemDataCollectionBuilderTest, EachKeyFillsItsOwnField) {
  struct Row {
    char const* key;
    IPA::RtdMemData expected;
  };
  Row const rows[] = {
      {"m_type", {"v", "", "", "", "", ""}},   {"m_used", {"", "v", "", "", "", ""}},
      {"m_sizeKB", {"", "", "v", "", "", ""}}, {"m_base_address", {"", "", "", "v", "", ""}},
      {"m_tag", {"", "", "", "", "v", ""}},    {"m_spTag", {"", "", "", "", "", "v"}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.key);
    boost::property_tree::ptree const tree =
        IPA::makePropertyTree(std::string(R"({"list": [{")") + row.key + R"(": "v"}]})");

    auto collection = IPA::RtdMemDataCollectionBuilder(tree, "list").build();

    ASSERT_NE(collection, nullptr);
    EXPECT_EQ(collection->getMemData(), Memories{row.expected});
  }
}

TEST_F(RtdMemDataCollectionBuilderTest, ReadsTheListAtTheGivenPathInFileOrder) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(
      R"({"a": {"b": [{"m_tag": "t1"}, {"m_tag": "t0"}]}, "list": [{"m_tag": "elsewhere"}]})");

  auto collection = IPA::RtdMemDataCollectionBuilder(tree, "a.b").build();

  EXPECT_EQ(collection->getMemData(),
            (Memories{{"", "", "", "", "t1", ""}, {"", "", "", "", "t0", ""}}));
}

TEST_F(RtdMemDataCollectionBuilderTest, AMissingListThrowsNamingThePath) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"a": {}})");
  IPA::RtdMemDataCollectionBuilder builder(tree, "a.b");

  try {
    builder.build();
    FAIL() << "build() returned without a list";
  } catch (boost::property_tree::ptree_bad_path const& e) {
    EXPECT_EQ(e.path<boost::property_tree::ptree::path_type>().dump(), "a.b");
  }
}

TEST_F(RtdMemDataCollectionBuilderTest, BuildingTwiceGivesTheSameEntriesNotTwiceAsMany) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"l": [{"m_used": "1"}]})");
  IPA::RtdMemDataCollectionBuilder builder(tree, "l");

  auto first = builder.build();
  auto second = builder.build();

  EXPECT_NE(first, second);
  EXPECT_EQ(first->getMemData(), (Memories{{"", "1", "", "", "", ""}}));
  EXPECT_EQ(second->getMemData(), (Memories{{"", "1", "", "", "", ""}}));
}

TEST_F(RtdMemDataCollectionBuilderTest, AnObjectValueOfAKnownMemberGivesAnEmptyField) {
  // Only the text of a member counts; an object has none.
  boost::property_tree::ptree const tree =
      IPA::makePropertyTree(R"({"l": [{"m_tag": {"x": "1"}, "m_used": "1"}]})");

  auto collection = IPA::RtdMemDataCollectionBuilder(tree, "l").build();

  EXPECT_EQ(collection->getMemData(), (Memories{{"", "1", "", "", "", ""}}));
}

}  // namespace
