#include "views/IpLayout.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/Golden.h"

namespace qvviews {
namespace {

std::string failure(std::string const& text) {
  try {
    IpLayout::parse(text, "f.rtd.json");
  } catch (std::runtime_error const& error) {
    return error.what();
  }
  return "no exception";
}

TEST(IpLayoutTest, ExamplePositionsNameItsComputeUnits) {
  IpLayout const layout = IpLayout::read(qvtest::exampleFile("design/vector_pipeline.rtd.json"));
  EXPECT_EQ(layout.names(), (std::vector<std::string>{
                                "ddr4_mem_ctrl_0", "vadd:vadd_1", "vadd:vadd_2", "axi_perf_mon_0",
                                "mmult:mmult_1", "mmult:mmult_2", "producer:producer_1",
                                "consumer:consumer_1"}));
  EXPECT_EQ(layout.computeUnitAt("1"), "vadd_1");
  EXPECT_EQ(layout.computeUnitAt("6"), "producer_1");
  EXPECT_EQ(layout.computeUnitAt("0"), "");  // a plain IP block
  EXPECT_EQ(layout.computeUnitAt("8"), "");
  EXPECT_EQ(layout.computeUnitAt(""), "");
  EXPECT_EQ(layout.computeUnitAt("-1"), "");
  EXPECT_EQ(layout.computeUnitAt("1x"), "");
  EXPECT_EQ(layout.computeUnitAt("99999999999999999999"), "");
}

TEST(IpLayoutTest, NamesAreSplitAsTheImportSplitsThem) {
  IpLayout const layout(std::vector<std::string>{"k:cu:extra", ":cu", "k:", ""});
  EXPECT_EQ(layout.computeUnitAt("0"), "cu");
  EXPECT_EQ(layout.computeUnitAt("1"), "cu");
  EXPECT_EQ(layout.computeUnitAt("2"), "");
  EXPECT_EQ(layout.computeUnitAt("3"), "");
}

TEST(IpLayoutTest, FilesWithoutALayoutGiveAnEmptyOne) {
  EXPECT_TRUE(IpLayout::parse("{}", "f").empty());
  EXPECT_TRUE(IpLayout::parse("{\"ip_layout\": {\"m_count\": 0}}", "f").empty());
  EXPECT_EQ(IpLayout::parse("{\"ip_layout\": {\"m_ip_data\": [{}, {\"m_name\": 3}]}}", "f").names(),
            (std::vector<std::string>{"", ""}));
}

TEST(IpLayoutTest, OtherTextIsRefusedWithTheReason) {
  EXPECT_EQ(failure("{\"ip_layout\": []}"),
            "'f.rtd.json' is not a run-time data file: ip_layout is not an object");
  EXPECT_EQ(failure("{\"ip_layout\": {\"m_ip_data\": {}}}"),
            "'f.rtd.json' is not a run-time data file: ip_layout.m_ip_data is not a list");
  EXPECT_EQ(failure("{\"ip_layout\": {\"m_ip_data\": [{}, 4]}}"),
            "'f.rtd.json' is not a run-time data file: ip_layout.m_ip_data[1] is not an object");
  EXPECT_EQ(failure("[").rfind("'f.rtd.json' is not a run-time data file: ", 0), 0u);
  try {
    IpLayout::read("/nonexistent/x.rtd.json");
    FAIL() << "no exception";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "cannot read '/nonexistent/x.rtd.json': No such file or directory");
  }
}

}  // namespace
}  // namespace qvviews
