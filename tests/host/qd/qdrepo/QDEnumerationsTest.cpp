#include "host/qd/qdrepo/QDEnumerations.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

namespace qd {
namespace {

class QDEnumerationsTest : public ::testing::Test {
 protected:
  // The tables are filled by the first repository of the process; these tests stand in for it.
  void SetUp() override { initEnumerationMaps(); }

  // The text of the std::out_of_range that `call` throws, or "" when it throws none.
  template <class Call>
  static std::string outOfRange(Call call) {
    try {
      call();
    } catch (std::out_of_range const& error) {
      return error.what();
    }
    return "";
  }
};

TEST(QDEnumerationsBeforeARepositoryTest, EveryWordReadsAsItsDefault) {
  // A fresh process, so that no other test has filled the tables yet.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        bool const defaults =
            str2comp_t("kernel") == COMP_GENERIC && str2port_t("aximm") == PORT_UNKNOWN &&
            str2channel_t("mm2s") == CHANNEL_MM2MM && str2mode_t("slave") == MODE_NO_MODE &&
            str2dir_t("in") == DIR_NO_DIR && str2cpu_t("x86") == CPU_CORTEX_A9 &&
            str2device_t("tarsk_ultra") == DEVICE_TARSK && str2memport_t("MIG") == MEMPORT_NONE;
        std::exit(defaults ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(QDEnumerationsTest, KernelIsTenOnceTheTablesAreFilled) {
  EXPECT_EQ(str2comp_t("kernel"), 10);
}

TEST_F(QDEnumerationsTest, FillingTwiceChangesNothing) {
  initEnumerationMaps();
  EXPECT_EQ(str2port_t("acc_fifo_write"), 21);
  EXPECT_EQ(str2memport_t("S_AXI_NOC"), 8);
}

TEST_F(QDEnumerationsTest, ComponentKindsAgreeBothWays) {
  std::vector<std::string> const words = {
      "generic",           "accelerator", "datamover", "interconnect", "memory", "platform",
      "processing_system", "monitor",     "adapter",   "smartconnect", "kernel", "pipe"};
  for (std::size_t value = 0; value < words.size(); ++value) {
    SCOPED_TRACE(words[value]);
    EXPECT_EQ(comp_t2str(static_cast<comp_t>(value)), words[value]);
    EXPECT_EQ(str2comp_t(words[value]), static_cast<comp_t>(value));
  }
}

TEST_F(QDEnumerationsTest, PortKindsJumpFromTwoToSixteen) {
  std::vector<std::pair<int, std::string>> const rows = {
      {0, "unknown"},    {1, "stream"},    {2, "addressable"},    {16, "aximm"},
      {17, "axis"},      {18, "axilite"},  {19, "acc_handshake"}, {20, "bram"},
      {21, "fifo"},      {22, "register"}, {23, "clock"},         {24, "reset"},
      {25, "interrupt"}, {26, "port"},     {27, "mvksoc_trace"},  {28, "memobject"}};
  for (auto const& [value, word] : rows) {
    SCOPED_TRACE(word);
    EXPECT_EQ(port_t2str(static_cast<port_t>(value)), word);
    EXPECT_EQ(str2port_t(word), value);
  }
  for (int value = 3; value <= 15; ++value) {
    EXPECT_EQ(port_t2str(static_cast<port_t>(value)), "") << value;
  }
}

TEST_F(QDEnumerationsTest, BothFifoAccessWordsReadAsFifo) {
  EXPECT_EQ(str2port_t("acc_fifo_read"), 21);
  EXPECT_EQ(str2port_t("acc_fifo_write"), 21);
  EXPECT_EQ(port_t2str(PORT_FIFO), "fifo");
}

TEST_F(QDEnumerationsTest, PortValueThreeHasNoWord) { EXPECT_EQ(port_t2str(port_t(3)), ""); }

TEST_F(QDEnumerationsTest, DataMoversChannelsModesDirectionsMonitorsAndLinkagesAgree) {
  struct Row {
    std::vector<std::string> words;
    std::string (*toWord)(int);
    int (*toValue)(std::string const&);
  };
  Row const rows[] = {
      {{"unspecified", "axi_lite", "axi_dma_sg", "axi_dma_simple", "axi_dma_2d", "axi_fifo",
        "zero_copy", "mem_stream", "fast_dma"},
       [](int v) { return datamover_t2str(static_cast<datamover_t>(v)); },
       [](std::string const& w) { return static_cast<int>(str2datamover_t(w)); }},
      {{"unsupported", "mm2s", "s2mm", "s2s", "mm2mm"},
       [](int v) { return channel_t2str(static_cast<channel_t>(v)); },
       [](std::string const& w) { return static_cast<int>(str2channel_t(w)); }},
      {{"master", "slave", "no_mode"},
       [](int v) { return mode_t2str(static_cast<mode_t>(v)); },
       [](std::string const& w) { return static_cast<int>(str2mode_t(w)); }},
      {{"in", "out", "inout", "no_dir"},
       [](int v) { return dir_t2str(static_cast<dir_t>(v)); },
       [](std::string const& w) { return static_cast<int>(str2dir_t(w)); }},
      {{"no_monitor", "apm", "ila", "trace"},
       [](int v) { return monitor_t2str(static_cast<monitor_t>(v)); },
       [](std::string const& w) { return static_cast<int>(str2monitor_t(w)); }},
      {{"no_linkage", "internal", "external"},
       [](int v) { return linkage_t2str(static_cast<linkage_t>(v)); },
       [](std::string const& w) { return static_cast<int>(str2linkage_t(w)); }},
  };
  for (Row const& row : rows) {
    for (std::size_t value = 0; value < row.words.size(); ++value) {
      SCOPED_TRACE(row.words[value]);
      EXPECT_EQ(row.toWord(static_cast<int>(value)), row.words[value]);
      EXPECT_EQ(row.toValue(row.words[value]), static_cast<int>(value));
    }
  }
}

TEST_F(QDEnumerationsTest, DashedCpuNamesReadAsTheirUnderscoreForms) {
  EXPECT_EQ(str2cpu_t("cortex-a53"), 1);
  EXPECT_EQ(cpu_t2str(CPU_CORTEX_A53), "cortex_a53");
  std::vector<std::string> const words = {"cortex_a9", "cortex_a53", "cortex_a72", "cortex_r5",
                                          "softcorix", "x86",        "power8"};
  for (std::size_t value = 0; value < words.size(); ++value) {
    EXPECT_EQ(cpu_t2str(static_cast<cpu_t>(value)), words[value]);
    EXPECT_EQ(str2cpu_t(words[value]), static_cast<cpu_t>(value));
  }
  EXPECT_EQ(str2cpu_t("cortex-a9"), 0);
  EXPECT_EQ(str2cpu_t("cortex-a72"), 2);
  EXPECT_EQ(str2cpu_t("cortex-r5"), 3);
  EXPECT_EQ(str2cpu_t("Cortex_A53"), 0);  // every character counts
}

TEST_F(QDEnumerationsTest, DeviceFamiliesHaveOnlyTheWayIn) {
  EXPECT_EQ(str2device_t("tarsk"), 0);
  EXPECT_EQ(str2device_t("tarsk_ultra"), 1);
  EXPECT_EQ(str2device_t("other"), 0);
}

TEST_F(QDEnumerationsTest, MemoryPortWordsFoldTwoPairsIntoOneValueEach) {
  std::vector<std::pair<std::string, int>> const rows = {
      {"MEMPORT_NONE", 0}, {"NOC_MASTER", 1}, {"M_AXI_NOC", 1}, {"M_AXI_DMA", 2},
      {"M_AXI_GP", 3},     {"S_AXI_ACP", 4},  {"S_AXI_GP", 5},  {"S_AXI_HP", 6},
      {"S_AXI_HPC", 7},    {"NOC_SLAVE", 8},  {"S_AXI_NOC", 8}, {"MIG", 9}};
  for (std::size_t index = 0; index < rows.size(); ++index) {
    SCOPED_TRACE(rows[index].first);
    EXPECT_EQ(memport_t2str(static_cast<memport_t>(index)), rows[index].first);
    EXPECT_EQ(str2memport_t(rows[index].first), rows[index].second);
  }
}

TEST_F(QDEnumerationsTest, MemoryPortWordOfAValueIsNoInverse) {
  EXPECT_EQ(memport_t2str(str2memport_t("M_AXI_DMA")), "M_AXI_NOC");
}

TEST_F(QDEnumerationsTest, NocResourceWordsDifferBetweenTheTwoTables) {
  EXPECT_EQ(noc_resource_t2str(NOC_RESOURCE_NONE), "no_noc_resourcepl_nsu");
  EXPECT_EQ(noc_resource_t2str(NOC_RESOURCE_PL_NMU), "pl_nmu");
  EXPECT_EQ(noc_resource_t2str(NOC_RESOURCE_PL_NSU), "hbm_nsu");
  // 0 only because a word the table lacks reads as the default, which is 0.
  EXPECT_EQ(str2noc_resource_t("no_noc_resourcepl_nsu"), 0);
  EXPECT_EQ(str2noc_resource_t("no_noc_resource"), 0);
  EXPECT_EQ(str2noc_resource_t("pl_nmu"), 1);
  EXPECT_EQ(str2noc_resource_t("pl_nsu"), 2);
  EXPECT_EQ(str2noc_resource_t("hbm_nmu"), 3);
  EXPECT_EQ(str2noc_resource_t("hbm_nsu"), 0);
}

TEST_F(QDEnumerationsTest, EmptyChannelWordReadsAsMm2mm) { EXPECT_EQ(str2channel_t(""), 4); }

TEST_F(QDEnumerationsTest, UnknownWordsReadAsTheirDefaults) {
  EXPECT_EQ(str2comp_t("nothing"), 0);
  EXPECT_EQ(str2port_t("nothing"), 0);
  EXPECT_EQ(str2datamover_t("nothing"), 0);
  EXPECT_EQ(str2channel_t("nothing"), 4);
  EXPECT_EQ(str2cpu_t("nothing"), 0);
  EXPECT_EQ(str2mode_t("nothing"), 2);
  EXPECT_EQ(str2dir_t("nothing"), 3);
  EXPECT_EQ(str2monitor_t("nothing"), 0);
  EXPECT_EQ(str2memport_t("nothing"), 0);
  EXPECT_EQ(str2linkage_t("nothing"), 0);
  EXPECT_EQ(str2noc_resource_t("nothing"), 0);
}

TEST_F(QDEnumerationsTest, ValuePastItsTableThrowsOutOfRangeNamingTheFunction) {
  EXPECT_EQ(outOfRange([] { noc_resource_t2str(NOC_RESOURCE_HBM_NMU); }),
            "qd::noc_resource_t2str: 3 has no word (the table has 3)");
  EXPECT_EQ(outOfRange([] { port_t2str(port_t(29)); }),
            "qd::port_t2str: 29 has no word (the table has 29)");
  EXPECT_EQ(outOfRange([] { comp_t2str(comp_t(12)); }),
            "qd::comp_t2str: 12 has no word (the table has 12)");
  EXPECT_EQ(outOfRange([] { memport_t2str(memport_t(12)); }),
            "qd::memport_t2str: 12 has no word (the table has 12)");
  EXPECT_EQ(outOfRange([] { memport_t2str(memport_t(11)); }), "");
}

}  // namespace
}  // namespace qd
