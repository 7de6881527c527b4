#include "rtd/RtdTreeBuilder.h"

#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

#include "rtd/RtdConnection.h"
#include "rtd/RtdIpData.h"
#include "rtd/RtdMemData.h"
#include "rtd/RtdTree.h"
#include "tests/rtd/RtdPrint.h"

namespace {

using ClockRefs = std::vector<IPA::RtdIpData::ClockRef>;

class RtdTreeBuilderTest : public ::testing::Test {
 protected:
  // A section that the file has but that holds nothing.
  static constexpr char const* kEmpty = R"({"m_count": "0"})";

  // A whole file of version 1.0.0 with the three sections given.
  static std::string file(std::string const& memTopology, std::string const& ipLayout = kEmpty,
                          std::string const& connectivity = kEmpty) {
    return R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"}, "mem_topology": )" +
           memTopology + R"(, "ip_layout": )" + ipLayout + R"(, "connectivity": )" + connectivity +
           "}";
  }

  static std::shared_ptr<IPA::RtdTree> read(std::string const& json) {
    std::istringstream in(json);
    IPA::RtdTreeBuilder builder;
    builder.deSerialize(in);
    return builder.build();
  }

  // The path that a refused file names; "" if the file was read.
  static std::string missingPathOf(std::string const& json) {
    try {
      read(json);
    } catch (boost::property_tree::ptree_bad_path const& e) {
      return e.path<boost::property_tree::ptree::path_type>().dump();
    }
    return "";
  }

  // The entries of each section; a test that calls these expects the section to be there.
  static std::vector<IPA::RtdMemData> memData(IPA::RtdTree const& tree) {
    if (tree.memTopology == nullptr) {
      ADD_FAILURE() << "no memory section";
      return {};
    }
    return tree.memTopology->getMemDataCollection()->getMemData();
  }
  static std::vector<IPA::RtdIpData> ipData(IPA::RtdTree const& tree) {
    if (tree.ipLayout == nullptr) {
      ADD_FAILURE() << "no IP section";
      return {};
    }
    return tree.ipLayout->getIpDataCollection()->getIpData();
  }
  static std::vector<IPA::RtdConnection> connections(IPA::RtdTree const& tree) {
    if (tree.connectivity == nullptr) {
      ADD_FAILURE() << "no connectivity section";
      return {};
    }
    return tree.connectivity->getConnectionCollection()->getConnections();
  }

  // An IP entry with only a name and clocks; the other fields empty.
  static IPA::RtdIpData namedIp(std::string const& name, ClockRefs const& clocks) {
    return IPA::RtdIpData{"", "", "", "", "", "", name, clocks};
  }
};

// --- The cases that the file format calls out ---------------------------------------------------

TEST_F(RtdTreeBuilderTest, AZeroCountWithoutAListLoadsWithANullMemTopology) {
  auto tree = read(
      file(R"({"m_count": "0"})", R"({"m_count": "1", "m_ip_data": [{"m_name": "vadd:vadd_1"}]})"));

  ASSERT_NE(tree->schemaVersion, nullptr);
  EXPECT_EQ(tree->memTopology, nullptr);
  ASSERT_EQ(ipData(*tree).size(), 1u);
  EXPECT_EQ(ipData(*tree)[0].name, "vadd:vadd_1");
  EXPECT_EQ(tree->connectivity, nullptr);
}

TEST_F(RtdTreeBuilderTest, CountThatBeginsWithALetterBehavesLikeZero) {
  // The list is there and has an entry, but the count closes the gate before it is looked at.
  auto withList = read(file(R"({"m_count": "a1", "m_mem_data": [{"m_tag": "bank0"}]})"));
  auto withoutList = read(file(R"({"m_count": "x"})"));

  EXPECT_EQ(withList->memTopology, nullptr);
  EXPECT_EQ(withoutList->memTopology, nullptr);
}

TEST_F(RtdTreeBuilderTest, CountOfOneWithThreeEntriesYieldsThree) {
  auto tree = read(file(
      R"({"m_count": "1", "m_mem_data": [{"m_tag": "bank0"}, {"m_tag": "bank1"}, {"m_tag": "bank2"}]})"));

  auto const memories = memData(*tree);
  ASSERT_EQ(memories.size(), 3u);
  EXPECT_EQ(memories[0].tag, "bank0");
  EXPECT_EQ(memories[1].tag, "bank1");
  EXPECT_EQ(memories[2].tag, "bank2");
}

TEST_F(RtdTreeBuilderTest, CountOfFiveWithOneEntryYieldsOne) {
  auto tree = read(file(R"({"m_count": "5", "m_mem_data": [{"m_tag": "bank0"}]})"));

  auto const memories = memData(*tree);
  ASSERT_EQ(memories.size(), 1u);
  EXPECT_EQ(memories[0].tag, "bank0");
}

TEST_F(RtdTreeBuilderTest, AnEntryWithAnExtraMemberIsReadWithoutComplaint) {
  auto tree = read(
      file(R"({"m_count": "1", "m_mem_data": [{"m_tag": "bank0", "m_extra": "7", "m_used": "1"}]})",
           R"({"m_count": "1", "m_ip_data": [{"m_name": "k:k_1", "m_unknown": {"a": "b"}}]})",
           R"({"m_count": "1", "m_connection": [{"arg_index": "2", "flags": ["x"]}]})"));

  EXPECT_EQ(memData(*tree), (std::vector<IPA::RtdMemData>{{"", "1", "", "", "bank0", ""}}));
  EXPECT_EQ(ipData(*tree), (std::vector<IPA::RtdIpData>{namedIp("k:k_1", {})}));
  EXPECT_EQ(connections(*tree), (std::vector<IPA::RtdConnection>{{"2", "", "", "", ""}}));
}

TEST_F(RtdTreeBuilderTest, AMemoryEntryWithoutSpTagHasAnEmptySpTag) {
  auto tree = read(file(R"({"m_count": "1", "m_mem_data": [{"m_type": "MEM_DDR4", "m_used": "1",
      "m_sizeKB": "16777216", "m_base_address": "0x4000000000", "m_tag": "DDR[0]"}]})"));

  auto const memories = memData(*tree);
  ASSERT_EQ(memories.size(), 1u);
  EXPECT_EQ(memories[0].spTag, "");
  EXPECT_EQ(memories[0].tag, "DDR[0]");
}

TEST_F(RtdTreeBuilderTest, AnIpEntryWithoutClocksHasNoClockReferences) {
  auto tree = read(file(kEmpty, R"({"m_count": "1", "m_ip_data": [{"m_name": "vadd:vadd_1"}]})"));

  auto const ips = ipData(*tree);
  ASSERT_EQ(ips.size(), 1u);
  EXPECT_TRUE(ips[0].clocks.empty());
}

TEST_F(RtdTreeBuilderTest, AClockPortWithoutRefClockIdHasAnEmptyRefClockId) {
  auto tree = read(file(kEmpty, R"({"m_count": "1", "m_ip_data": [{"m_name": "vadd:vadd_1",
      "m_clocks": [{"ap_clk": {}, "ap_clk_2": {"refClockId": "1"}}]}]})"));

  auto const ips = ipData(*tree);
  ASSERT_EQ(ips.size(), 1u);
  EXPECT_EQ(ips[0].clocks, (ClockRefs{{"ap_clk", ""}, {"ap_clk_2", "1"}}));
}

TEST_F(RtdTreeBuilderTest, TwoGroupsOfOnePortAndOneGroupOfTwoPortsGiveTheSameTwoReferences) {
  auto twoGroups = read(file(kEmpty, R"({"m_count": "1", "m_ip_data": [{"m_clocks": [
      {"ap_clk": {"refClockId": "0"}}, {"ap_clk_2": {"refClockId": "1"}}]}]})"));
  auto oneGroup = read(file(kEmpty, R"({"m_count": "1", "m_ip_data": [{"m_clocks": [
      {"ap_clk": {"refClockId": "0"}, "ap_clk_2": {"refClockId": "1"}}]}]})"));

  ClockRefs const expected{{"ap_clk", "0"}, {"ap_clk_2", "1"}};
  ASSERT_EQ(ipData(*twoGroups).size(), 1u);
  ASSERT_EQ(ipData(*oneGroup).size(), 1u);
  EXPECT_EQ(ipData(*twoGroups)[0].clocks, expected);
  EXPECT_EQ(ipData(*oneGroup)[0].clocks, expected);
}

TEST_F(RtdTreeBuilderTest, AMissingConnectivityKeyRefusesTheFile) {
  // Memories and IPs are complete; nothing in them refers to a connection.
  std::string const json = R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},
      "mem_topology": {"m_count": "1", "m_mem_data": [{"m_tag": "bank0"}]},
      "ip_layout": {"m_count": "1", "m_ip_data": [{"m_name": "vadd:vadd_1"}]}})";

  EXPECT_EQ(missingPathOf(json), "connectivity.m_count");
}

TEST_F(RtdTreeBuilderTest, MemberOrderInsideAnEntryDoesNotChangeTheResult) {
  auto forward = read(file(
      R"({"m_count": "1", "m_mem_data": [{"m_type": "MEM_DDR4", "m_used": "1", "m_sizeKB": "64",
          "m_base_address": "0x0", "m_tag": "DDR[0]", "m_spTag": "DDR0"}]})",
      R"({"m_count": "1", "m_ip_data": [{"m_type": "IP_KERNEL", "properties": "4",
          "m_int_enable": "1", "m_interrupt_id": "3", "m_ip_control": "AP_CTRL_HS",
          "m_base_address": "0x1000", "m_name": "vadd:vadd_1",
          "m_clocks": [{"ap_clk": {"refClockId": "0"}}]}]})",
      R"({"m_count": "1", "m_connection": [{"arg_index": "0", "arg_name": "in1", "mode": "0",
          "m_ip_layout_index": "0", "mem_data_index": "0"}]})"));
  auto backward = read(file(
      R"({"m_count": "1", "m_mem_data": [{"m_spTag": "DDR0", "m_tag": "DDR[0]",
          "m_base_address": "0x0", "m_sizeKB": "64", "m_used": "1", "m_type": "MEM_DDR4"}]})",
      R"({"m_count": "1", "m_ip_data": [{"m_clocks": [{"ap_clk": {"refClockId": "0"}}],
          "m_name": "vadd:vadd_1", "m_base_address": "0x1000", "m_ip_control": "AP_CTRL_HS",
          "m_interrupt_id": "3", "m_int_enable": "1", "properties": "4",
          "m_type": "IP_KERNEL"}]})",
      R"({"m_count": "1", "m_connection": [{"mem_data_index": "0", "m_ip_layout_index": "0",
          "mode": "0", "arg_name": "in1", "arg_index": "0"}]})"));

  EXPECT_EQ(memData(*backward),
            (std::vector<IPA::RtdMemData>{{"MEM_DDR4", "1", "64", "0x0", "DDR[0]", "DDR0"}}));
  EXPECT_EQ(
      ipData(*backward),
      (std::vector<IPA::RtdIpData>{
          {"IP_KERNEL", "4", "1", "3", "AP_CTRL_HS", "0x1000", "vadd:vadd_1", {{"ap_clk", "0"}}}}));
  EXPECT_EQ(connections(*backward), (std::vector<IPA::RtdConnection>{{"0", "in1", "0", "0", "0"}}));
  EXPECT_EQ(memData(*forward), memData(*backward));
  EXPECT_EQ(ipData(*forward), ipData(*backward));
  EXPECT_EQ(connections(*forward), connections(*backward));
}

// --- Everything read
// ------------------------------------------------------------------------------

TEST_F(RtdTreeBuilderTest, ACompleteFileFillsEveryFieldOfEveryClass) {
  auto tree = read(R"({
    "schema_version": {"major": "1", "minor": "0", "patch": "0"},
    "mem_topology": {"m_count": "2", "m_mem_data": [
      {"m_type": "MEM_DDR4", "m_used": "1", "m_sizeKB": "16777216",
       "m_base_address": "0x4000000000", "m_tag": "DDR[0]", "m_spTag": "DDR0"},
      {"m_type": "MEM_DRAM", "m_used": "0", "m_sizeKB": "1024", "m_base_address": "0x0",
       "m_tag": "PLRAM[0]", "m_spTag": "PLRAM0"}]},
    "ip_layout": {"m_count": "2", "m_ip_data": [
      {"m_type": "IP_KERNEL", "properties": "4", "m_int_enable": "1", "m_interrupt_id": "3",
       "m_ip_control": "AP_CTRL_HS", "m_base_address": "0x1800000", "m_name": "vadd:vadd_1",
       "m_clocks": [{"ap_clk": {"refClockId": "0"}}, {"ap_clk_2": {"refClockId": "1"}}]},
      {"m_type": "IP_DDR4_CONTROLLER", "properties": "0", "m_int_enable": "0",
       "m_interrupt_id": "0", "m_ip_control": "", "m_base_address": "0x0",
       "m_name": "ddr4_mem00"}]},
    "connectivity": {"m_count": "2", "m_connection": [
      {"arg_index": "0", "arg_name": "in1", "mode": "0", "m_ip_layout_index": "0",
       "mem_data_index": "0"},
      {"arg_index": "2", "arg_name": "out", "mode": "1", "m_ip_layout_index": "0",
       "mem_data_index": "1"}]}
  })");

  ASSERT_NE(tree->schemaVersion, nullptr);
  EXPECT_EQ(tree->schemaVersion->getMajor(), "1");
  EXPECT_EQ(tree->schemaVersion->getMinor(), "0");
  EXPECT_EQ(tree->schemaVersion->getPatch(), "0");

  auto const memories = memData(*tree);
  ASSERT_EQ(memories.size(), 2u);
  EXPECT_EQ(memories[0].type, "MEM_DDR4");
  EXPECT_EQ(memories[0].used, "1");
  EXPECT_EQ(memories[0].sizeKB, "16777216");
  EXPECT_EQ(memories[0].baseAddress, "0x4000000000");
  EXPECT_EQ(memories[0].tag, "DDR[0]");
  EXPECT_EQ(memories[0].spTag, "DDR0");
  EXPECT_EQ(memories[1].type, "MEM_DRAM");
  EXPECT_EQ(memories[1].used, "0");
  EXPECT_EQ(memories[1].sizeKB, "1024");
  EXPECT_EQ(memories[1].baseAddress, "0x0");
  EXPECT_EQ(memories[1].tag, "PLRAM[0]");
  EXPECT_EQ(memories[1].spTag, "PLRAM0");

  auto const ips = ipData(*tree);
  ASSERT_EQ(ips.size(), 2u);
  EXPECT_EQ(ips[0].type, "IP_KERNEL");
  EXPECT_EQ(ips[0].properties, "4");
  EXPECT_EQ(ips[0].intEnable, "1");
  EXPECT_EQ(ips[0].interruptId, "3");
  EXPECT_EQ(ips[0].ipControl, "AP_CTRL_HS");
  EXPECT_EQ(ips[0].baseAddress, "0x1800000");
  EXPECT_EQ(ips[0].name, "vadd:vadd_1");
  ASSERT_EQ(ips[0].clocks.size(), 2u);
  EXPECT_EQ(ips[0].clocks[0].portName, "ap_clk");
  EXPECT_EQ(ips[0].clocks[0].refClockId, "0");
  EXPECT_EQ(ips[0].clocks[1].portName, "ap_clk_2");
  EXPECT_EQ(ips[0].clocks[1].refClockId, "1");
  EXPECT_EQ(ips[1].type, "IP_DDR4_CONTROLLER");
  EXPECT_EQ(ips[1].properties, "0");
  EXPECT_EQ(ips[1].intEnable, "0");
  EXPECT_EQ(ips[1].interruptId, "0");
  EXPECT_EQ(ips[1].ipControl, "");
  EXPECT_EQ(ips[1].baseAddress, "0x0");
  EXPECT_EQ(ips[1].name, "ddr4_mem00");
  EXPECT_TRUE(ips[1].clocks.empty());

  auto const links = connections(*tree);
  ASSERT_EQ(links.size(), 2u);
  EXPECT_EQ(links[0].argIndex, "0");
  EXPECT_EQ(links[0].argName, "in1");
  EXPECT_EQ(links[0].mode, "0");
  EXPECT_EQ(links[0].ipLayoutIndex, "0");
  EXPECT_EQ(links[0].memDataIndex, "0");
  EXPECT_EQ(links[1].argIndex, "2");
  EXPECT_EQ(links[1].argName, "out");
  EXPECT_EQ(links[1].mode, "1");
  EXPECT_EQ(links[1].ipLayoutIndex, "0");
  EXPECT_EQ(links[1].memDataIndex, "1");
}

TEST_F(RtdTreeBuilderTest, TheVersionIsKeptAsTextAndNotCheckedWhileReading) {
  // Whether 7.3.1 is read is decided when the tree is visited; here it is only kept.
  auto tree = read(R"({"schema_version": {"major": "7", "minor": "3", "patch": "1"},
      "mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "0"},
      "connectivity": {"m_count": "0"}})");

  ASSERT_NE(tree->schemaVersion, nullptr);
  EXPECT_EQ(tree->schemaVersion->getMajor(), "7");
  EXPECT_EQ(tree->schemaVersion->getMinor(), "3");
  EXPECT_EQ(tree->schemaVersion->getPatch(), "1");
  EXPECT_EQ(tree->schemaVersion->supportedVersion(), "1.0.0");
  EXPECT_FALSE(tree->schemaVersion->isSupported(*tree->schemaVersion));
}

TEST_F(RtdTreeBuilderTest, OtherTopLevelKeysAreIgnored) {
  auto tree = read(R"({"build_metadata": {"dsa": "x"}, "clock_freq_topology": [1, 2],
      "schema_version": {"major": "1", "minor": "0", "patch": "0"},
      "mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "0"},
      "connectivity": {"m_count": "0"}, "debug_ip_layout": "none"})");

  ASSERT_NE(tree->schemaVersion, nullptr);
  EXPECT_EQ(tree->schemaVersion->getMajor(), "1");
  EXPECT_EQ(tree->memTopology, nullptr);
  EXPECT_EQ(tree->ipLayout, nullptr);
  EXPECT_EQ(tree->connectivity, nullptr);
}

// --- The count gates --------------------------------------------------------------------------

TEST_F(RtdTreeBuilderTest, CountsThatReadAsZeroLeaveTheSectionNull) {
  struct Row {
    char const* desc;
    char const* count;
  };
  Row const rows[] = {
      {"zero", R"("0")"},
      {"zero written twice", R"("00")"},
      {"bare zero", "0"},
      {"empty", R"("")"},
      {"white space only", R"("   ")"},
      {"a word", R"("two")"},
      {"hexadecimal: the 0 before the x is read", R"("0x10")"},
      {"too large for 32 bits", R"("4294967296")"},
      {"an object", R"({"n": "3"})"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    // The list is there, so a null section shows that the count alone decided.
    auto tree = read(file(std::string(R"({"m_count": )") + row.count +
                          R"(, "m_mem_data": [{"m_tag": "bank0"}]})"));
    EXPECT_EQ(tree->memTopology, nullptr);
  }
}

TEST_F(RtdTreeBuilderTest, CountsThatBeginWithANumberOtherThanZeroOpenTheGate) {
  struct Row {
    char const* desc;
    char const* count;
  };
  Row const rows[] = {
      {"one", R"("1")"},
      {"bare one", "1"},
      {"leading white space is skipped", R"("  2")"},
      {"reading stops at the first letter", R"("3abc")"},
      {"leading zeros", R"("007")"},
      {"the largest 32-bit count", R"("4294967295")"},
      // A default string stream reads an unsigned number after a minus sign and negates it, so
      // "-1" counts as 4294967295 and opens the gate.
      {"a minus sign", R"("-1")"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    auto tree = read(file(std::string(R"({"m_count": )") + row.count +
                          R"(, "m_mem_data": [{"m_tag": "bank0"}]})"));
    ASSERT_NE(tree->memTopology, nullptr);
    ASSERT_EQ(memData(*tree).size(), 1u);
    EXPECT_EQ(memData(*tree)[0].tag, "bank0");
  }
}

TEST_F(RtdTreeBuilderTest, ANonZeroCountWithAnEmptyListGivesASectionWithNoEntries) {
  auto tree = read(file(R"({"m_count": "2", "m_mem_data": []})"));

  ASSERT_NE(tree->memTopology, nullptr);
  ASSERT_NE(tree->memTopology->getMemDataCollection(), nullptr);
  EXPECT_TRUE(memData(*tree).empty());
}

// --- Refused files ----------------------------------------------------------------------------

TEST_F(RtdTreeBuilderTest, AFileMissingAllThreeVersionMembersIsRefusedNamingThePatchLevel) {
  EXPECT_EQ(missingPathOf(R"({"schema_version": {}, "mem_topology": {"m_count": "0"},
      "ip_layout": {"m_count": "0"}, "connectivity": {"m_count": "0"}})"),
            "schema_version.patch");
}

TEST_F(RtdTreeBuilderTest, VersionMembersAreReadPatchThenMinorThenMajor) {
  std::string const sections = R"("mem_topology": {"m_count": "0"},
      "ip_layout": {"m_count": "0"}, "connectivity": {"m_count": "0"})";
  struct Row {
    char const* desc;
    char const* version;
    char const* path;
  };
  Row const rows[] = {
      {"no version at all", R"("other": "1")", "schema_version.patch"},
      {"only the major", R"("schema_version": {"major": "1"})", "schema_version.patch"},
      {"major and minor", R"("schema_version": {"major": "1", "minor": "0"})",
       "schema_version.patch"},
      {"only the patch level", R"("schema_version": {"patch": "0"})", "schema_version.minor"},
      {"patch and major", R"("schema_version": {"patch": "0", "major": "1"})",
       "schema_version.minor"},
      {"patch and minor", R"("schema_version": {"patch": "0", "minor": "0"})",
       "schema_version.major"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(missingPathOf("{" + std::string(row.version) + ", " + sections + "}"), row.path);
  }
}

TEST_F(RtdTreeBuilderTest, TheVersionIsReadBeforeAnySection) {
  EXPECT_EQ(missingPathOf(R"({"schema_version": {"major": "1", "minor": "0"}})"),
            "schema_version.patch");
}

TEST_F(RtdTreeBuilderTest, EachMissingCountIsRefusedNamingItsPath) {
  std::string const version = R"("schema_version": {"major": "1", "minor": "0", "patch": "0"})";
  struct Row {
    char const* desc;
    char const* sections;
    char const* path;
  };
  Row const rows[] = {
      {"no memory section", R"("ip_layout": {"m_count": "0"}, "connectivity": {"m_count": "0"})",
       "mem_topology.m_count"},
      {"a memory section without a count",
       R"("mem_topology": {"m_mem_data": []}, "ip_layout": {"m_count": "0"},
          "connectivity": {"m_count": "0"})",
       "mem_topology.m_count"},
      {"no IP section", R"("mem_topology": {"m_count": "0"}, "connectivity": {"m_count": "0"})",
       "ip_layout.m_count"},
      {"an IP section without a count",
       R"("mem_topology": {"m_count": "0"}, "ip_layout": {}, "connectivity": {"m_count": "0"})",
       "ip_layout.m_count"},
      {"no connectivity section",
       R"("mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "0"})",
       "connectivity.m_count"},
      {"a connectivity section without a count",
       R"("mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "0"},
          "connectivity": {"m_connection": []})",
       "connectivity.m_count"},
      {"a count cased otherwise",
       R"("mem_topology": {"M_COUNT": "0"}, "ip_layout": {"m_count": "0"},
          "connectivity": {"m_count": "0"})",
       "mem_topology.m_count"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(missingPathOf("{" + version + ", " + std::string(row.sections) + "}"), row.path);
  }
}

TEST_F(RtdTreeBuilderTest, ANonZeroCountWithoutItsListIsRefusedNamingTheList) {
  struct Row {
    char const* desc;
    std::string json;
    char const* path;
  };
  Row const rows[] = {
      {"memories", file(R"({"m_count": "1"})"), "mem_topology.m_mem_data"},
      {"IPs", file(kEmpty, R"({"m_count": "1"})"), "ip_layout.m_ip_data"},
      {"connections", file(kEmpty, kEmpty, R"({"m_count": "1"})"), "connectivity.m_connection"},
      {"a list under another section's name", file(R"({"m_count": "1", "m_ip_data": []})"),
       "mem_topology.m_mem_data"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(missingPathOf(row.json), row.path);
  }
}

TEST_F(RtdTreeBuilderTest, SectionsAreReadMemoriesThenIpsThenConnections) {
  // Each file has two faults; the one of the earlier section is reported.
  std::string const version = R"("schema_version": {"major": "1", "minor": "0", "patch": "0"})";
  EXPECT_EQ(missingPathOf("{" + version + R"(, "mem_topology": {"m_count": "1"}})"),
            "mem_topology.m_mem_data");
  EXPECT_EQ(missingPathOf("{" + version +
                          R"(, "mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "1"}})"),
            "ip_layout.m_ip_data");
}

TEST_F(RtdTreeBuilderTest, AMissingPathIsNamedInTheTextOfTheError) {
  std::istringstream in(file(R"({"m_count": "1"})"));
  IPA::RtdTreeBuilder builder;

  try {
    builder.deSerialize(in);
    FAIL() << "deSerialize returned for a file without its memory list";
  } catch (boost::property_tree::ptree_bad_path const& e) {
    EXPECT_STREQ(e.what(), "No such node (mem_topology.m_mem_data)");
  }
}

TEST_F(RtdTreeBuilderTest, TextThatIsNotJsonThrowsJsonParserError) {
  char const* const rows[] = {
      "",
      "{",
      "not json",
      R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},})",
      R"({"schema_version": {"major": 1 "minor": 0}})",
  };
  for (char const* json : rows) {
    SCOPED_TRACE(json);
    std::istringstream in(json);
    IPA::RtdTreeBuilder builder;
    EXPECT_THROW(builder.deSerialize(in), boost::property_tree::json_parser::json_parser_error);
  }
}

// A fuzzing finding: 200,000 "[" in the file overflowed the parser's stack and ended the
// process; deep nesting anywhere in the file is refused as bad JSON instead, before anything is
// read, and the builder keeps what it had.
TEST_F(RtdTreeBuilderTest, NestingTooDeepThrowsJsonParserErrorInsteadOfEndingTheProcess) {
  std::string deepMemories = R"({"m_count": "1", "m_mem_data": [)";
  deepMemories += std::string(200000, '[');
  std::istringstream in(file(deepMemories));
  IPA::RtdTreeBuilder builder;
  EXPECT_THROW(builder.deSerialize(in), boost::property_tree::json_parser::json_parser_error);
  EXPECT_EQ(builder.build()->memTopology, nullptr);

  std::istringstream brackets(std::string(200000, '['));
  EXPECT_THROW(builder.deSerialize(brackets), boost::property_tree::json_parser::json_parser_error);
}

// --- What JSON leaves open ------------------------------------------------------------------

TEST_F(RtdTreeBuilderTest, QuotedAndBareNumbersReadAlike) {
  auto quoted = read(R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},
      "mem_topology": {"m_count": "1", "m_mem_data": [{"m_used": "1", "m_sizeKB": "65536"}]},
      "ip_layout": {"m_count": "1", "m_ip_data": [{"properties": "4", "m_interrupt_id": "3",
          "m_clocks": [{"ap_clk": {"refClockId": "2"}}]}]},
      "connectivity": {"m_count": "1", "m_connection": [{"arg_index": "5", "mode": "0"}]}})");
  auto bare = read(R"({"schema_version": {"major": 1, "minor": 0, "patch": 0},
      "mem_topology": {"m_count": 1, "m_mem_data": [{"m_used": 1, "m_sizeKB": 65536}]},
      "ip_layout": {"m_count": 1, "m_ip_data": [{"properties": 4, "m_interrupt_id": 3,
          "m_clocks": [{"ap_clk": {"refClockId": 2}}]}]},
      "connectivity": {"m_count": 1, "m_connection": [{"arg_index": 5, "mode": 0}]}})");

  for (auto const& tree : {quoted, bare}) {
    EXPECT_EQ(tree->schemaVersion->getMajor(), "1");
    EXPECT_EQ(tree->schemaVersion->getMinor(), "0");
    EXPECT_EQ(tree->schemaVersion->getPatch(), "0");
    EXPECT_EQ(memData(*tree), (std::vector<IPA::RtdMemData>{{"", "1", "65536", "", "", ""}}));
    EXPECT_EQ(ipData(*tree),
              (std::vector<IPA::RtdIpData>{{"", "4", "", "3", "", "", "", {{"ap_clk", "2"}}}}));
    EXPECT_EQ(connections(*tree), (std::vector<IPA::RtdConnection>{{"5", "", "0", "", ""}}));
  }
}

TEST_F(RtdTreeBuilderTest, BareWordsAndNumbersKeepTheTextAsWritten) {
  auto tree = read(file(R"({"m_count": 1, "m_mem_data": [{"m_used": true, "m_type": null,
      "m_sizeKB": 1.50, "m_tag": -0}]})"));

  EXPECT_EQ(memData(*tree), (std::vector<IPA::RtdMemData>{{"null", "true", "1.50", "", "-0", ""}}));
}

TEST_F(RtdTreeBuilderTest, ArraysAndKeyedObjectsReadAlike) {
  auto arrays =
      read(file(R"({"m_count": "2", "m_mem_data": [{"m_tag": "bank0"}, {"m_tag": "bank1"}]})",
                R"({"m_count": "1", "m_ip_data": [{"m_name": "vadd:vadd_1",
          "m_clocks": [{"ap_clk": {"refClockId": "0"}}, {"ap_clk_2": {"refClockId": "1"}}]}]})",
                R"({"m_count": "2", "m_connection": [{"arg_name": "in1"}, {"arg_name": "out"}]})"));
  // The keys of list entries carry no meaning and are dropped; the order of the file is kept,
  // even where the keys would sort otherwise.
  auto objects = read(file(
      R"({"m_count": "2", "m_mem_data": {"z": {"m_tag": "bank0"}, "a": {"m_tag": "bank1"}}})",
      R"({"m_count": "1", "m_ip_data": {"only": {"m_name": "vadd:vadd_1",
          "m_clocks": {"g2": {"ap_clk": {"refClockId": "0"}},
                       "g1": {"ap_clk_2": {"refClockId": "1"}}}}}})",
      R"({"m_count": "2", "m_connection": {"1": {"arg_name": "in1"}, "0": {"arg_name": "out"}}})"));

  for (auto const& tree : {arrays, objects}) {
    EXPECT_EQ(memData(*tree), (std::vector<IPA::RtdMemData>{{"", "", "", "", "bank0", ""},
                                                            {"", "", "", "", "bank1", ""}}));
    EXPECT_EQ(ipData(*tree), (std::vector<IPA::RtdIpData>{
                                 namedIp("vadd:vadd_1", {{"ap_clk", "0"}, {"ap_clk_2", "1"}})}));
    EXPECT_EQ(connections(*tree),
              (std::vector<IPA::RtdConnection>{{"", "in1", "", "", ""}, {"", "out", "", "", ""}}));
  }
}

TEST_F(RtdTreeBuilderTest, ARepeatedMemberKeepsItsLastValue) {
  auto tree = read(file(
      R"({"m_count": "1", "m_mem_data": [{"m_tag": "first", "m_used": "1", "m_tag": "last"}]})",
      R"({"m_count": "1", "m_ip_data": [{"m_name": "a:a_1", "m_name": "b:b_1"}]})",
      R"({"m_count": "1", "m_connection": [{"mode": "0", "mode": "1", "mode": "2"}]})"));

  EXPECT_EQ(memData(*tree), (std::vector<IPA::RtdMemData>{{"", "1", "", "", "last", ""}}));
  EXPECT_EQ(ipData(*tree), (std::vector<IPA::RtdIpData>{namedIp("b:b_1", {})}));
  EXPECT_EQ(connections(*tree), (std::vector<IPA::RtdConnection>{{"", "", "2", "", ""}}));
}

TEST_F(RtdTreeBuilderTest, ARepeatedClocksMemberReplacesTheEarlierList) {
  auto tree = read(file(kEmpty, R"({"m_count": "1", "m_ip_data": [{"m_name": "vadd:vadd_1",
      "m_clocks": [{"ap_clk": {"refClockId": "0"}, "ap_clk_2": {"refClockId": "1"}}],
      "m_clocks": [{"s_clk": {"refClockId": "7"}}]}]})"));

  EXPECT_EQ(ipData(*tree), (std::vector<IPA::RtdIpData>{namedIp("vadd:vadd_1", {{"s_clk", "7"}})}));
}

TEST_F(RtdTreeBuilderTest, ABareScalarListEntryYieldsAnAllEmptyEntry) {
  auto tree = read(file(R"({"m_count": "1", "m_mem_data": ["bank0", {"m_tag": "bank1"}]})",
                        R"({"m_count": "1", "m_ip_data": [7]})",
                        R"({"m_count": "1", "m_connection": [null, {"mode": "1"}]})"));

  EXPECT_EQ(memData(*tree), (std::vector<IPA::RtdMemData>{{"", "", "", "", "", ""},
                                                          {"", "", "", "", "bank1", ""}}));
  EXPECT_EQ(ipData(*tree), (std::vector<IPA::RtdIpData>{namedIp("", {})}));
  EXPECT_EQ(connections(*tree),
            (std::vector<IPA::RtdConnection>{{"", "", "", "", ""}, {"", "", "1", "", ""}}));
}

TEST_F(RtdTreeBuilderTest, KeysAreComparedExactly) {
  auto tree = read(file(
      R"({"m_count": "1", "m_mem_data": [{"M_TAG": "a", "m_tag ": "b", "tag": "c", "m_used": "1"}]})"));

  EXPECT_EQ(memData(*tree), (std::vector<IPA::RtdMemData>{{"", "1", "", "", "", ""}}));
}

// --- The builder itself -----------------------------------------------------------------------

TEST_F(RtdTreeBuilderTest, BuildBeforeDeSerializeGivesFourNullPointers) {
  IPA::RtdTreeBuilder builder;

  auto tree = builder.build();

  ASSERT_NE(tree, nullptr);
  EXPECT_EQ(tree->schemaVersion, nullptr);
  EXPECT_EQ(tree->memTopology, nullptr);
  EXPECT_EQ(tree->ipLayout, nullptr);
  EXPECT_EQ(tree->connectivity, nullptr);
}

TEST_F(RtdTreeBuilderTest, EachBuildGivesANewTreeWithTheSameParts) {
  std::istringstream in(file(R"({"m_count": "1", "m_mem_data": [{"m_tag": "bank0"}]})"));
  IPA::RtdTreeBuilder builder;
  builder.deSerialize(in);

  auto first = builder.build();
  auto second = builder.build();

  EXPECT_NE(first, second);
  EXPECT_EQ(first->schemaVersion, second->schemaVersion);
  EXPECT_EQ(first->memTopology, second->memTopology);
  EXPECT_EQ(memData(*second), (std::vector<IPA::RtdMemData>{{"", "", "", "", "bank0", ""}}));
}

TEST_F(RtdTreeBuilderTest, AFailedDeSerializeKeepsThePartsReadBefore) {
  std::istringstream good(file(R"({"m_count": "1", "m_mem_data": [{"m_tag": "bank0"}]})"));
  std::istringstream bad(
      file(R"({"m_count": "1", "m_mem_data": [{"m_tag": "other"}]})", R"({"m_count": "1"})"));
  IPA::RtdTreeBuilder builder;
  builder.deSerialize(good);

  EXPECT_THROW(builder.deSerialize(bad), boost::property_tree::ptree_bad_path);

  auto tree = builder.build();
  EXPECT_EQ(memData(*tree), (std::vector<IPA::RtdMemData>{{"", "", "", "", "bank0", ""}}));
}

TEST_F(RtdTreeBuilderTest, ASecondDeSerializeReplacesTheParts) {
  std::istringstream first(file(R"({"m_count": "1", "m_mem_data": [{"m_tag": "bank0"}]})"));
  std::istringstream second(file(kEmpty, R"({"m_count": "1", "m_ip_data": [{"m_name": "k"}]})"));
  IPA::RtdTreeBuilder builder;
  builder.deSerialize(first);
  auto earlier = builder.build();

  builder.deSerialize(second);
  auto later = builder.build();

  EXPECT_EQ(later->memTopology, nullptr);
  EXPECT_EQ(ipData(*later), (std::vector<IPA::RtdIpData>{namedIp("k", {})}));
  // A tree built before keeps what it was given.
  EXPECT_EQ(memData(*earlier), (std::vector<IPA::RtdMemData>{{"", "", "", "", "bank0", ""}}));
  EXPECT_EQ(earlier->ipLayout, nullptr);
}

}  // namespace
