#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/ptree.hpp>
#include <string>
#include <vector>

#include "diagram/TextConversions.h"
#include "rtd/RtdIpDataCollectionBuilder.h"
#include "tests/rtd/RtdPrint.h"

namespace {

using Ips = std::vector<IPA::RtdIpData>;

class RtdIpDataCollectionBuilderTest : public ::testing::Test {};

TEST_F(RtdIpDataCollectionBuilderTest, EachEntryStartsEmpty) {
  // Nothing of the first entry, its clocks included, may leak into the second.
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"l": [
      {"m_type": "IP_KERNEL", "m_name": "k:k_1", "m_clocks": [{"ap_clk": {"refClockId": "0"}}]},
      {"m_base_address": "0x10"}]})");

  auto collection = IPA::RtdIpDataCollectionBuilder(tree, "l").build();

  ASSERT_NE(collection, nullptr);
  EXPECT_EQ(collection->getIpData(),
            (Ips{{"IP_KERNEL", "", "", "", "", "", "k:k_1", {{"ap_clk", "0"}}},
                 {"", "", "", "", "", "0x10", "", {}}}));
}

TEST_F(RtdIpDataCollectionBuilderTest, AMissingListThrowsNamingThePath) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"ip_layout": {}})");
  IPA::RtdIpDataCollectionBuilder builder(tree, "ip_layout.m_ip_data");

  try {
    builder.build();
    FAIL() << "build() returned without a list";
  } catch (boost::property_tree::ptree_bad_path const& e) {
    EXPECT_EQ(e.path<boost::property_tree::ptree::path_type>().dump(), "ip_layout.m_ip_data");
  }
}

TEST_F(RtdIpDataCollectionBuilderTest, BuildingTwiceGivesTheSameEntriesNotTwiceAsMany) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"l": [{"m_name": "n"}]})");
  IPA::RtdIpDataCollectionBuilder builder(tree, "l");

  builder.build();
  auto second = builder.build();

  EXPECT_EQ(second->getIpData(), (Ips{{"", "", "", "", "", "", "n", {}}}));
}

}  // namespace
