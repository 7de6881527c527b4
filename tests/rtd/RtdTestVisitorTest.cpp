#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "rtd/RtdTestVisitor.h"
#include "rtd/RtdTree.h"
#include "rtd/RtdTreeBuilder.h"
#include "rtd/RtdTreeVisitor.h"

namespace {

class RtdTestVisitorTest : public ::testing::Test {
 protected:
  static std::shared_ptr<IPA::RtdTree> read(std::string const& json) {
    std::istringstream in(json);
    IPA::RtdTreeBuilder builder;
    builder.deSerialize(in);
    return builder.build();
  }

  // The dump of the tree read from `json`.
  static std::string dump(std::string const& json) {
    auto tree = read(json);
    std::ostringstream out;
    IPA::RtdTestVisitor visitor(out);
    visitor.visit(*tree);
    return out.str();
  }

  // The message with which the dump of `tree` is refused, and what it wrote before refusing
  // ("" if the dump was written).
  struct Refusal {
    std::string message;
    std::string written;
  };
  static Refusal refusalOf(IPA::RtdTree& tree) {
    std::ostringstream out;
    IPA::RtdTestVisitor visitor(out);
    try {
      visitor.visit(tree);
    } catch (std::invalid_argument const& e) {
      return {e.what(), out.str()};
    }
    return {"", out.str()};
  }

  // A file of version 1.0.0 with one entry in each list; the three sections can be replaced.
  static constexpr char const* kOneMemory =
      R"({"m_count": "1", "m_mem_data": [{"m_type": "MEM_DDR4", "m_used": "1",
          "m_sizeKB": "0x1000", "m_base_address": "0x0", "m_tag": "bank0", "m_spTag": "DDR[0]"}]})";
  static constexpr char const* kOneIp =
      R"({"m_count": "1", "m_ip_data": [{"m_type": "IP_KERNEL", "properties": "0",
          "m_int_enable": "1", "m_interrupt_id": "3", "m_ip_control": "AP_CTRL_HS",
          "m_base_address": "0x1800000", "m_name": "vadd:vadd_1"}]})";
  static constexpr char const* kOneConnection =
      R"({"m_count": "1", "m_connection": [{"arg_index": "0", "arg_name": "in1", "mode": "0",
          "m_ip_layout_index": "0", "mem_data_index": "0"}]})";
  static std::string file(std::string const& memTopology = kOneMemory,
                          std::string const& ipLayout = kOneIp,
                          std::string const& connectivity = kOneConnection) {
    return R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"}, "mem_topology": )" +
           memTopology + R"(, "ip_layout": )" + ipLayout + R"(, "connectivity": )" + connectivity +
           "}";
  }

  // The dump of file() with all three default sections: one entry per list.
  static constexpr char const* kOneOfEachDump = R"({
"schema_version" : {
"major": "1",
"minor": "0",
"patch": "0"
},
"mem_topology": {
"m_count": "1",
"m_mem_data": {
"mem_data": {
"m_type": "MEM_DDR4",
"m_used": "1",
"m_sizeKB": "0x1000",
"m_base_address": "0x0",
"m_tag": "bank0",
"m_spTag": "DDR[0]"
}
}
},
"ip_layout": {
"m_count": "1",
"m_ip_data": {
"ip_data": {
"m_type": "IP_KERNEL",
"properties": "0",
"m_int_enable": "1",
"m_interrupt_id": "3",
"m_ip_control": "AP_CTRL_HS",
"m_base_address": "0x1800000",
"m_name": "vadd:vadd_1"
}
}
},
"connectivity": {
"m_count": "1",
"m_connection": {
"connection": {
"arg_index": "0",
"arg_name": "in1",
"mode": "0",
"m_ip_layout_index": "0",
"mem_data_index": "0"
}
}
}
}
)";
};

TEST_F(RtdTestVisitorTest, WritesTheWholeTreeInTheShapeOfTheFile) {
  // Members out of order, a missing member, bare numbers and an ignored extra member: the dump
  // shows what the reader kept, in the fixed order of the keys.
  auto tree = read(R"({"schema_version": {"patch": "3", "minor": "0", "major": "1"},
    "mem_topology": {"m_count": "2", "m_mem_data": [
      {"m_type": "MEM_DDR4", "m_used": "1", "m_sizeKB": "0x1000000", "m_tag": "bank0",
       "m_base_address": "0x4000000000", "m_spTag": "DDR[0]"},
      {"m_used": "0", "m_type": "MEM_DRAM", "m_sizeKB": "0x40000", "m_base_address": "0x0",
       "m_tag": "HBM[0]", "extra": "x"}]},
    "ip_layout": {"m_count": "2", "m_ip_data": [
      {"m_type": "IP_KERNEL", "properties": "0", "m_int_enable": "1", "m_interrupt_id": "0",
       "m_ip_control": "AP_CTRL_HS", "m_base_address": "0x1800000", "m_name": "vadd:vadd_1",
       "m_clocks": [{"ap_clk": {"refClockId": "0"}}]},
      {"m_name": "ddr_ctrl", "m_type": "IP_MEM_CTRL", "properties": "1", "m_int_enable": "0",
       "m_interrupt_id": "", "m_ip_control": "AP_CTRL_NONE", "m_base_address": "0x2000000",
       "m_clocks": [{"sys_clk": {}}, {"s_axi_aclk": {"refClockId": "1"}}]}]},
    "connectivity": {"m_count": "2", "m_connection": [
      {"arg_index": 0, "arg_name": "in1", "mode": 0, "m_ip_layout_index": 0, "mem_data_index": 0},
      {"mem_data_index": 1, "m_ip_layout_index": 0, "mode": "1", "arg_name": "out",
       "arg_index": 2}]}})");
  std::ostringstream out;
  IPA::RtdTestVisitor visitor(out);
  IPA::RtdTreeVisitor& asInterface = visitor;

  asInterface.visit(*tree);

  EXPECT_EQ(out.str(), R"({
"schema_version" : {
"major": "1",
"minor": "0",
"patch": "3"
},
"mem_topology": {
"m_count": "2",
"m_mem_data": {
"mem_data": {
"m_type": "MEM_DDR4",
"m_used": "1",
"m_sizeKB": "0x1000000",
"m_base_address": "0x4000000000",
"m_tag": "bank0",
"m_spTag": "DDR[0]"
},
"mem_data": {
"m_type": "MEM_DRAM",
"m_used": "0",
"m_sizeKB": "0x40000",
"m_base_address": "0x0",
"m_tag": "HBM[0]",
"m_spTag": ""
}
}
},
"ip_layout": {
"m_count": "2",
"m_ip_data": {
"ip_data": {
"m_type": "IP_KERNEL",
"properties": "0",
"m_int_enable": "1",
"m_interrupt_id": "0",
"m_ip_control": "AP_CTRL_HS",
"m_base_address": "0x1800000",
"m_name": "vadd:vadd_1"
},
"ip_data": {
"m_type": "IP_MEM_CTRL",
"properties": "1",
"m_int_enable": "0",
"m_interrupt_id": "",
"m_ip_control": "AP_CTRL_NONE",
"m_base_address": "0x2000000",
"m_name": "ddr_ctrl"
}
}
},
"connectivity": {
"m_count": "2",
"m_connection": {
"connection": {
"arg_index": "0",
"arg_name": "in1",
"mode": "0",
"m_ip_layout_index": "0",
"mem_data_index": "0"
},
"connection": {
"arg_index": "2",
"arg_name": "out",
"mode": "1",
"m_ip_layout_index": "0",
"mem_data_index": "1"
}
}
}
}
)");
}

TEST_F(RtdTestVisitorTest, OneEntryPerListHasNoCommaBehindItsEntry) {
  EXPECT_EQ(dump(file()), kOneOfEachDump);
}

TEST_F(RtdTestVisitorTest, ClockListsDoNotShow) {
  // The same file as kOneOfEachDump's, but its IP entry has two clock ports.
  std::string const withClocks =
      R"({"m_count": "1", "m_ip_data": [{"m_type": "IP_KERNEL", "properties": "0",
          "m_int_enable": "1", "m_interrupt_id": "3", "m_ip_control": "AP_CTRL_HS",
          "m_base_address": "0x1800000", "m_name": "vadd:vadd_1",
          "m_clocks": [{"ap_clk": {"refClockId": "0"}, "ap_clk_2": {"refClockId": "1"}}]}]})";
  auto tree = read(file(kOneMemory, withClocks));
  ASSERT_EQ(tree->ipLayout->getIpDataCollection()->getIpData().at(0).clocks.size(), 2u);
  std::ostringstream out;
  IPA::RtdTestVisitor visitor(out);

  visitor.visit(*tree);

  EXPECT_EQ(out.str(), kOneOfEachDump);
}

TEST_F(RtdTestVisitorTest, AValueHoldingADoubleQuoteIsWrittenAsItStands) {
  // The reader unescapes \" and \\; the dump writes the bare characters back, so its text is no
  // longer valid JSON.
  std::string const quotedName =
      R"({"m_count": "1", "m_ip_data": [{"m_type": "IP_KERNEL", "properties": "0",
          "m_int_enable": "1", "m_interrupt_id": "3", "m_ip_control": "AP_CTRL_HS",
          "m_base_address": "0x1800000", "m_name": "vadd:\"cu\\1"}]})";

  std::string const text = dump(file(kOneMemory, quotedName));

  EXPECT_EQ(text, R"({
"schema_version" : {
"major": "1",
"minor": "0",
"patch": "0"
},
"mem_topology": {
"m_count": "1",
"m_mem_data": {
"mem_data": {
"m_type": "MEM_DDR4",
"m_used": "1",
"m_sizeKB": "0x1000",
"m_base_address": "0x0",
"m_tag": "bank0",
"m_spTag": "DDR[0]"
}
}
},
"ip_layout": {
"m_count": "1",
"m_ip_data": {
"ip_data": {
"m_type": "IP_KERNEL",
"properties": "0",
"m_int_enable": "1",
"m_interrupt_id": "3",
"m_ip_control": "AP_CTRL_HS",
"m_base_address": "0x1800000",
"m_name": "vadd:"cu\1"
}
}
},
"connectivity": {
"m_count": "1",
"m_connection": {
"connection": {
"arg_index": "0",
"arg_name": "in1",
"mode": "0",
"m_ip_layout_index": "0",
"mem_data_index": "0"
}
}
}
}
)");
}

TEST_F(RtdTestVisitorTest, CountIsTheNumberOfEntriesNotTheFileText) {
  // The file's count only opens the gate; the dump counts the list. An empty list behind a count
  // that is not zero is written as an empty object.
  std::string const text = dump(
      file(R"({"m_count": "1", "m_mem_data": [{"m_tag": "a"}, {"m_tag": "b"}, {"m_tag": "c"}]})",
           R"({"m_count": "5abc", "m_ip_data": []})"));

  EXPECT_EQ(text, R"({
"schema_version" : {
"major": "1",
"minor": "0",
"patch": "0"
},
"mem_topology": {
"m_count": "3",
"m_mem_data": {
"mem_data": {
"m_type": "",
"m_used": "",
"m_sizeKB": "",
"m_base_address": "",
"m_tag": "a",
"m_spTag": ""
},
"mem_data": {
"m_type": "",
"m_used": "",
"m_sizeKB": "",
"m_base_address": "",
"m_tag": "b",
"m_spTag": ""
},
"mem_data": {
"m_type": "",
"m_used": "",
"m_sizeKB": "",
"m_base_address": "",
"m_tag": "c",
"m_spTag": ""
}
}
},
"ip_layout": {
"m_count": "0",
"m_ip_data": {
}
},
"connectivity": {
"m_count": "1",
"m_connection": {
"connection": {
"arg_index": "0",
"arg_name": "in1",
"mode": "0",
"m_ip_layout_index": "0",
"mem_data_index": "0"
}
}
}
}
)");
}

TEST_F(RtdTestVisitorTest, ATreeWithAZeroCountSectionIsRefusedBeforeAnythingIsWritten) {
  auto noMemories = read(file(R"({"m_count": "0"})"));
  auto noIps = read(file(kOneMemory, R"({"m_count": "0"})"));
  auto noConnections = read(file(kOneMemory, kOneIp, R"({"m_count": "none"})"));

  Refusal const memories = refusalOf(*noMemories);
  Refusal const ips = refusalOf(*noIps);
  Refusal const connections = refusalOf(*noConnections);

  EXPECT_EQ(memories.message,
            R"(RtdTestVisitor needs every part of the tree; "mem_topology" is missing)");
  EXPECT_EQ(memories.written, "");
  EXPECT_EQ(ips.message, R"(RtdTestVisitor needs every part of the tree; "ip_layout" is missing)");
  EXPECT_EQ(ips.written, "");
  EXPECT_EQ(connections.message,
            R"(RtdTestVisitor needs every part of the tree; "connectivity" is missing)");
  EXPECT_EQ(connections.written, "");
}

TEST_F(RtdTestVisitorTest, AnUnbuiltTreeIsRefusedForItsVersion) {
  IPA::RtdTreeBuilder builder;
  auto tree = builder.build();

  Refusal const refusal = refusalOf(*tree);

  EXPECT_EQ(refusal.message,
            R"(RtdTestVisitor needs every part of the tree; "schema_version" is missing)");
  EXPECT_EQ(refusal.written, "");
}

TEST_F(RtdTestVisitorTest, ASectionWithoutItsListIsRefused) {
  // The reader always gives a section its list; a tree put together by hand might not.
  auto tree = read(file());
  tree->ipLayout = std::make_shared<IPA::RtdIpLayout>(nullptr);

  Refusal const refusal = refusalOf(*tree);

  EXPECT_EQ(refusal.message,
            R"(RtdTestVisitor needs every part of the tree; "m_ip_data" is missing)");
  EXPECT_EQ(refusal.written, "");
}

TEST_F(RtdTestVisitorTest, TheStreamIsTheCallersAndIsAppendedTo) {
  std::ostringstream out;
  out << "before\n";
  auto tree = read(file());
  {
    IPA::RtdTestVisitor visitor(out);
    visitor.visit(*tree);
  }

  EXPECT_EQ(out.str(), std::string("before\n") + kOneOfEachDump);
}

}  // namespace
