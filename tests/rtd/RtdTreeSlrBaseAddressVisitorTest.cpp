#include "rtd/RtdTreeSlrBaseAddressVisitor.h"

#include <memory>
#include <sstream>
#include <string>

#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>
#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "rtd/RtdTreeBuilder.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class RtdTreeSlrBaseAddressVisitorTest : public ::testing::Test {
 protected:
  // Two memories and, in two user regions, compute units named like the file's IP entries.
  RtdTreeSlrBaseAddressVisitorTest() : root(std::make_shared<pb::outerContainer>()) {
    EXPECT_TRUE(google::protobuf::TextFormat::ParseFromString(R"(
      system_diagram_metadata {
        qsa {
          device_topology { id: "0" tag: "DDR[0]" used: "no" size_kb: "0" base_address: "0x0" slr: "SLR0" }
          device_topology { id: "1" tag: "HBM[0]" used: "no" size_kb: "0" base_address: "0x0" slr: "SLR1" }
        }
        qrxbin {
          user_regions {
            compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" base_address: "old" }
            compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" base_address: "old" }
          }
          user_regions {
            compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" base_address: "old" }
          }
        }
      })",
                                                              root.get()));
  }

  static std::shared_ptr<IPA::RtdTree> tree(std::string const& json) {
    std::istringstream in(json);
    IPA::RtdTreeBuilder builder;
    builder.deSerialize(in);
    return builder.build();
  }

  void visit(std::string const& json) {
    IPA::ProfileAnalyzerSystemDiagram diagram(root);
    IPA::RtdTreeSlrBaseAddressVisitor visitor(diagram);
    visitor.visit(*tree(json));
  }

  pb::deviceTopology const& memory(int index) const {
    return root->system_diagram_metadata().qsa().device_topology(index);
  }
  std::string unitAddress(int region, int unit) const {
    return root->system_diagram_metadata().qrxbin().user_regions(region).compute_units(unit).base_address();
  }

  static std::string file(std::string const& memories, std::string const& ips) {
    return R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},
               "mem_topology": )" + memories + R"(, "ip_layout": )" + ips +
           R"(, "connectivity": {"m_count": "0"}})";
  }

  std::shared_ptr<pb::outerContainer> root;
};

TEST_F(RtdTreeSlrBaseAddressVisitorTest, MemoriesTakeAddressUseAndSizeButKeepTheirSlr) {
  visit(file(R"({"m_count": "1", "m_mem_data": [
      {"m_tag": "DDR[0]", "m_used": "1", "m_sizeKB": "4194304", "m_base_address": "0x4000000000"}]})",
             R"({"m_count": "0"})"));
  EXPECT_EQ(memory(0).base_address(), "0x4000000000");
  EXPECT_EQ(memory(0).used(), "yes");
  EXPECT_EQ(memory(0).size_kb(), "4194304");
  EXPECT_EQ(memory(0).slr(), "SLR0");
  // A memory the file does not mention stays as it was.
  EXPECT_EQ(memory(1).base_address(), "0x0");
  EXPECT_EQ(memory(1).used(), "no");
}

TEST_F(RtdTreeSlrBaseAddressVisitorTest, OnlyAUsedOfOneGivesYes) {
  struct Row {
    char const* used;
    char const* expected;
  };
  for (Row const row : {Row{"1", "yes"}, Row{"0", "no"}, Row{"", "no"}, Row{"true", "no"},
                        Row{"01", "no"}, Row{" 1", "no"}}) {
    visit(file(std::string(R"({"m_count": "1", "m_mem_data": [{"m_tag": "DDR[0]", "m_used": ")") +
                   row.used + R"("}]})",
               R"({"m_count": "0"})"));
    EXPECT_EQ(memory(0).used(), row.expected) << "m_used '" << row.used << "'";
  }
}

TEST_F(RtdTreeSlrBaseAddressVisitorTest, KernelUnitNameUpdatesEveryComputeUnitOfThatPairInAllRegions) {
  visit(file(R"({"m_count": "0"})", R"({"m_count": "1", "m_ip_data": [
      {"m_name": "vadd:vadd_1", "m_base_address": "0x1800000"}]})"));
  EXPECT_EQ(unitAddress(0, 0), "0x1800000");
  EXPECT_EQ(unitAddress(0, 1), "old");
  EXPECT_EQ(unitAddress(1, 0), "0x1800000");
}

TEST_F(RtdTreeSlrBaseAddressVisitorTest, NameWithoutAColonUpdatesNothing) {
  auto const before = *root;
  visit(file(R"({"m_count": "0"})", R"({"m_count": "1", "m_ip_data": [
      {"m_name": "vadd_1", "m_type": "IP_KERNEL", "m_base_address": "0x1800000"}]})"));
  EXPECT_TRUE(google::protobuf::util::MessageDifferencer::Equals(before, *root));
}

TEST_F(RtdTreeSlrBaseAddressVisitorTest, NameWithThreePiecesUpdatesTheUnitOfTheFirstTwo) {
  visit(file(R"({"m_count": "0"})", R"({"m_count": "1", "m_ip_data": [
      {"m_name": "vadd:vadd_2:extra", "m_base_address": "0x1810000"}]})"));
  EXPECT_EQ(unitAddress(0, 1), "0x1810000");
  EXPECT_EQ(unitAddress(0, 0), "old");
}

TEST_F(RtdTreeSlrBaseAddressVisitorTest, TreeWithoutMemoriesStillUpdatesComputeUnits) {
  visit(file(R"({"m_count": "0"})", R"({"m_count": "1", "m_ip_data": [
      {"m_name": "vadd:vadd_2", "m_base_address": "0x1810000"}]})"));
  EXPECT_EQ(unitAddress(0, 1), "0x1810000");
  EXPECT_EQ(memory(0).used(), "no");
}

TEST_F(RtdTreeSlrBaseAddressVisitorTest, TreeWithoutIpLayoutStillUpdatesMemories) {
  visit(file(R"({"m_count": "1", "m_mem_data": [{"m_tag": "HBM[0]", "m_used": "1"}]})",
             R"({"m_count": "0"})"));
  EXPECT_EQ(memory(1).used(), "yes");
  EXPECT_EQ(unitAddress(0, 0), "old");
}

TEST_F(RtdTreeSlrBaseAddressVisitorTest, LaterOfTwoMemoriesWithOneTagWins) {
  visit(file(R"({"m_count": "2", "m_mem_data": [
      {"m_tag": "DDR[0]", "m_used": "1", "m_sizeKB": "1024", "m_base_address": "0x10"},
      {"m_tag": "DDR[0]", "m_used": "0", "m_sizeKB": "2048", "m_base_address": "0x20"}]})",
             R"({"m_count": "0"})"));
  EXPECT_EQ(memory(0).base_address(), "0x20");
  EXPECT_EQ(memory(0).used(), "no");
  EXPECT_EQ(memory(0).size_kb(), "2048");
}

TEST_F(RtdTreeSlrBaseAddressVisitorTest, EmptyPiecesAreNamesLikeAnyOther) {
  // ":vadd_1" asks for a compute unit whose kernel name is empty: there is none.
  auto const before = *root;
  visit(file(R"({"m_count": "0"})", R"({"m_count": "1", "m_ip_data": [
      {"m_name": ":vadd_1", "m_base_address": "0x1"}]})"));
  EXPECT_TRUE(google::protobuf::util::MessageDifferencer::Equals(before, *root));
}

}  // namespace
