#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/ptree.hpp>
#include <string>
#include <vector>

#include "diagram/TextConversions.h"
#include "rtd/RtdConnectionCollectionBuilder.h"
#include "tests/rtd/RtdPrint.h"

namespace {

using Connections = std::vector<IPA::RtdConnection>;

class RtdConnectionCollectionBuilderTest : public ::testing::Test {};

TEST_F(RtdConnectionCollectionBuilderTest, EachKeyFillsItsOwnField) {
  struct Row {
    char const* key;
    IPA::RtdConnection expected;
  };
  Row const rows[] = {
      {"arg_index", {"v", "", "", "", ""}},      {"arg_name", {"", "v", "", "", ""}},
      {"mode", {"", "", "v", "", ""}},           {"m_ip_layout_index", {"", "", "", "v", ""}},
      {"mem_data_index", {"", "", "", "", "v"}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.key);
    boost::property_tree::ptree const tree =
        IPA::makePropertyTree(std::string(R"({"list": [{")") + row.key + R"(": "v"}]})");

    auto collection = IPA::RtdConnectionCollectionBuilder(tree, "list").build();

    ASSERT_NE(collection, nullptr);
    EXPECT_EQ(collection->getConnections(), Connections{row.expected});
  }
}

TEST_F(RtdConnectionCollectionBuilderTest, ReadsEveryEntryInFileOrder) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"c": {"l": [
      {"arg_index": "0", "arg_name": "a", "mode": "0", "m_ip_layout_index": "1",
       "mem_data_index": "2"},
      {"arg_index": "1", "arg_name": "b", "mode": "1", "m_ip_layout_index": "3",
       "mem_data_index": "4"}]}})");

  auto collection = IPA::RtdConnectionCollectionBuilder(tree, "c.l").build();

  EXPECT_EQ(collection->getConnections(),
            (Connections{{"0", "a", "0", "1", "2"}, {"1", "b", "1", "3", "4"}}));
}

TEST_F(RtdConnectionCollectionBuilderTest, AMissingListThrowsNamingThePath) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"c": {"m_count": "1"}})");
  IPA::RtdConnectionCollectionBuilder builder(tree, "c.l");

  try {
    builder.build();
    FAIL() << "build() returned without a list";
  } catch (boost::property_tree::ptree_bad_path const& e) {
    EXPECT_EQ(e.path<boost::property_tree::ptree::path_type>().dump(), "c.l");
  }
}

TEST_F(RtdConnectionCollectionBuilderTest, AListThatIsABareValueHasNoEntries) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"l": "none"})");

  auto collection = IPA::RtdConnectionCollectionBuilder(tree, "l").build();

  ASSERT_NE(collection, nullptr);
  EXPECT_TRUE(collection->getConnections().empty());
}

}  // namespace
