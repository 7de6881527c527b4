#include <gtest/gtest.h>

#include <boost/property_tree/ptree.hpp>
#include <string>
#include <vector>

#include "diagram/TextConversions.h"
#include "rtd/RtdIpDataBuilder.h"
#include "tests/rtd/RtdPrint.h"

namespace {

using ClockRefs = std::vector<IPA::RtdIpData::ClockRef>;

class RtdIpDataBuilderTest : public ::testing::Test {
 protected:
  static boost::property_tree::ptree text(std::string const& value) {
    return boost::property_tree::ptree(value);
  }
};

TEST_F(RtdIpDataBuilderTest, StartsWithEveryFieldEmpty) {
  IPA::RtdIpDataBuilder builder;

  EXPECT_EQ(builder.build(), (IPA::RtdIpData{"", "", "", "", "", "", "", {}}));
}

TEST_F(RtdIpDataBuilderTest, EachTextKeyFillsItsOwnField) {
  struct Row {
    char const* key;
    IPA::RtdIpData expected;
  };
  Row const rows[] = {
      {"m_type", {"v", "", "", "", "", "", "", {}}},
      {"properties", {"", "v", "", "", "", "", "", {}}},
      {"m_int_enable", {"", "", "v", "", "", "", "", {}}},
      {"m_interrupt_id", {"", "", "", "v", "", "", "", {}}},
      {"m_ip_control", {"", "", "", "", "v", "", "", {}}},
      {"m_base_address", {"", "", "", "", "", "v", "", {}}},
      {"m_name", {"", "", "", "", "", "", "v", {}}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.key);
    IPA::RtdIpDataBuilder builder;

    builder.addMember(row.key, text("v"));

    EXPECT_EQ(builder.build(), row.expected);
  }
}

TEST_F(RtdIpDataBuilderTest, UnknownKeysChangeNothing) {
  IPA::RtdIpDataBuilder builder;
  builder.addMember("m_name", text("k:k_1"));

  builder.addMember("m_Name", text("x"));
  builder.addMember("clocks", IPA::makePropertyTree(R"([{"ap_clk": {"refClockId": "0"}}])"));
  builder.addMember("", text("y"));

  EXPECT_EQ(builder.build(), (IPA::RtdIpData{"", "", "", "", "", "", "k:k_1", {}}));
}

TEST_F(RtdIpDataBuilderTest, ClocksAreEveryPortOfEveryGroupInFileOrder) {
  IPA::RtdIpDataBuilder builder;

  builder.addMember("m_clocks", IPA::makePropertyTree(R"([
      {"ap_clk": {"refClockId": "0"}, "ap_clk_2": {"refClockId": "1"}},
      {},
      {"s_axi_clk": {"refClockId": "2", "note": "x"}, "other_clk": {"id": "3"}}])"));

  EXPECT_EQ(builder.build().clocks,
            (ClockRefs{{"ap_clk", "0"}, {"ap_clk_2", "1"}, {"s_axi_clk", "2"}, {"other_clk", ""}}));
}

TEST_F(RtdIpDataBuilderTest, APortWhoseValueIsTextHasNoClock) {
  IPA::RtdIpDataBuilder builder;

  builder.addMember("m_clocks", IPA::makePropertyTree(R"([{"ap_clk": "0"}])"));

  EXPECT_EQ(builder.build().clocks, (ClockRefs{{"ap_clk", ""}}));
}

TEST_F(RtdIpDataBuilderTest, ClocksGivenAsTextAreAnEmptyList) {
  IPA::RtdIpDataBuilder builder;
  builder.addMember("m_clocks", IPA::makePropertyTree(R"([{"ap_clk": {"refClockId": "0"}}])"));

  builder.addMember("m_clocks", text("none"));

  EXPECT_TRUE(builder.build().clocks.empty());
}

TEST_F(RtdIpDataBuilderTest, TextMembersLeaveTheClocksAlone) {
  IPA::RtdIpDataBuilder builder;
  builder.addMember("m_clocks", IPA::makePropertyTree(R"([{"ap_clk": {"refClockId": "4"}}])"));

  builder.addMember("m_name", text("k:k_1"));
  builder.addMember("m_name", text("k:k_2"));

  EXPECT_EQ(builder.build(), (IPA::RtdIpData{"", "", "", "", "", "", "k:k_2", {{"ap_clk", "4"}}}));
}

}  // namespace
