#include "tools/qvdiag/RepoQueries.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/qd/qdrepo/QDEnumerations.h"
#include "host/qd/qdrepo/QDSRepo.h"
#include "tools/qvdiag/UsageError.h"

namespace qvdiag {
namespace {

class RepoQueriesTest : public ::testing::Test {
 protected:
  std::unique_ptr<qd::QDSRepo> repo =
      std::make_unique<qd::QDSRepo>(std::string(QV_EXAMPLES_DIR) + "/repository/qd_ip_db.xml", 0);

  std::string usageError(std::string const& name, std::vector<std::string> const& arguments) {
    try {
      RepoQueries::ask(*repo, name, arguments);
    } catch (UsageError const& error) {
      return error.what();
    }
    return "";
  }

  // The text of the std::out_of_range that the query throws, or "" when it throws none.
  std::string outOfRange(std::string const& name, std::vector<std::string> const& arguments) {
    try {
      RepoQueries::ask(*repo, name, arguments);
    } catch (std::out_of_range const& error) {
      return error.what();
    }
    return "";
  }
};

struct Row {
  char const* name;
  std::vector<std::string> arguments;
  char const* answer;
};

TEST_F(RepoQueriesTest, AnswersPrintByType) {
  Row const rows[] = {
      {"getNumQdComponents", {}, "10"},
      {"getIthQdComponent", {"1"}, "\"vadd\""},
      {"getIthQdComponent", {"99"}, "\"\""},
      {"checkDatabase", {}, "true"},
      {"isQdPlatformComp", {"qv_accel_h2_gen3x16"}, "true"},
      {"isQdMonitorComp", {"axi_perf_mon_0"}, "true"},
      {"getQdCompType", {"producer_adapter"}, "\"accelerator\""},
      {"isQdCompSCAdapter", {"producer_adapter"}, "true"},
      {"getQdCompBusInterfaceInstanceRef", {"qv_accel_h2_gen3x16", "HBM"}, "\"memss_hbm\""},
      {"getIthQdHwFcn", {"5"}, "\"dma_copy\""},
      {"getNumQdHwFcnArgs1", {"producer"}, "3"},
      {"getNumQdHwFcnArgs", {"producer"}, "2"},
      {"getIthQdHwFcnArgPortInterfaceType1", {"vadd", "0"}, "\"aximm_addr\""},
      {"getIthQdHwFcnArgDataWidth", {"mmult", "0"}, "64"},
      {"getQdHwFcnArgPackedDataWidth", {"producer", "out_hi"}, "64"},
      {"getIthAvailableClockId", {"2", "qv_accel_h2_gen3x16"}, "2"},
      {"getClockFrequencyForClockId", {"2", "qv_accel_h2_gen3x16"}, "450"},
      {"getCpuClockFrequency", {"qv_accel_h2_gen3x16"}, "1200"},
      {"getQdCompPortType", {"vadd", "3"}, "\"aximm\""},
      {"getQdCompPortType", {"vadd", "m_axi_gmem"}, "\"aximm\""},
      {"getQdCompPortMode", {"vadd", "s_axi_control"}, "\"slave\""},
      {"getQdCompPortStringAttr", {"qv_accel_h2_gen3x16", "pcie_refclk", "qd:width"}, "\"1\""},
      {"getSpTagMemorySpace", {"qv_accel_h2_gen3x16", "DDR[0:1]"}, "1"},
      {"getSpTagMemorySpace", {"qv_accel_h2_gen3x16", "STREAM"}, "(none)"},
      {"getSpTagProtocol", {"qv_accel_h2_gen3x16", "STREAM"}, "1"},
      {"getSpTagMode", {"qv_accel_h2_gen3x16", "DDR"}, "1"},
      {"getSpTagSlrs", {"qv_accel_h2_gen3x16", "DDR[0:3]", "true"}, "\"SLR0\" \"SLR1\""},
      {"getSpTagSlrs",
       {"qv_accel_h2_gen3x16", "DDR[0:3]", "0"},
       "\"SLR0\" \"SLR0\" \"SLR1\" \"SLR1\""},
      {"disassembleRangeSpTag", {"DDR[1:3]"}, "base \"DDR\" low 1 high 3"},
      {"assembleRangeSpTag", {"DDR", "2", "2"}, "\"DDR[2]\""},
      {"getPlatformNocResources",
       {"qv_accel_h2_gen3x16"},
       "true plNmu 28 plNsu 28 aieNmu 0 aieNsu 0 hbmNmu 32"},
      {"getPlatformNocResources",
       {"vadd"},
       "false plNmu -1 plNsu -1 aieNmu -1 aieNsu -1 hbmNmu -1"},
      {"getPlatformNocChannelBandwidth", {"qv_accel_h2_gen3x16"}, "true bandwidth 16000"},
      {"supportedNocResourceType", {"qv_accel_h2_gen3x16", "NOC_HBM"}, "3"},
      {"getIthPipeForKernel", {"0", "mmult"}, "name \"p_ab\" depth 16 width 32 linkage 1"},
      {"getIthPipeConnectionForKernel",
       {"0", "mmult"},
       "srcInst \"mmult_1\" srcPort \"p_ab\" dstInst \"mmult_2\" dstPort \"p_ab\" srcType 11 "
       "dstType 11"},
      {"getQdCompRegionSize", {"ddr_sc_0"}, "2147483648"},
      {"getNumQdCompAxiPortIds", {"ddr_sc_0", "S00_AXI"}, "3"},
      {"getNumQdCompAxiPortIds", {"ddr_sc_0", "S01_AXI"}, "0"},
      {"getInterconnectPortIndex", {"ddr_sc_0", "S01_AXI"}, "1"},
      {"getDatamoverMaxNumChannels", {"axi_dma_sg", "mm2s"}, "16"},
      {"getDatamoverMaxNumChannels", {"zero_copy", "mm2mm"}, "-1"},
      {"isQdCompAxisSlavePort", {"consumer", "2"}, "true"},
      {"isQdCompAxisSlavePort", {"consumer", "in"}, "true"},
      {"getAxiResetRefsForAxiClockRef", {"axi_ic_0", "aclk"}, "\"aresetn\""},
      {"getQdAdapterPort", {"producer", "count"}, "\"S_AXI_CTRL\""},
      {"getClockFreqHzForClockId", {"1", "qv_accel_h2_gen3x16"}, "500000000"},
      {"getAiePeakFrequency", {"qv_accel_h2_gen3x16"}, "1250000000"},
      {"getNumClockDomains", {"qv_accel_h2_gen3x16"}, "2"},
      {"getQdPlatformResetBusInterfaceForClkAndSlr",
       {"qv_accel_h2_gen3x16", "ap_rst_n", "clk_kernel_01", "SLR1"},
       "\"rst_kernel_01\""},
      {"getQdPlatformCompIthInterruptSlavePort", {"qv_accel_h2_gen3x16", "1"}, "\"irq_kernel_01\""},
      {"getQdCompPlatformAxisPortSlr", {"qv_accel_h2_gen3x16", "S_AXIS_HOST"}, "\"SLR0\""},
      {"getQdPlatformResourceCapacity", {"qv_accel_h2_gen3x16", "URAM"}, "608"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(row.name);
    EXPECT_EQ(RepoQueries::ask(*repo, row.name, row.arguments), row.answer);
  }
}

TEST_F(RepoQueriesTest, VocabularyWordsReadAsTheirValuesOnceARepositoryIsOpen) {
  // The fixture's repository has filled the tables; every character of a word counts.
  Row const rows[] = {
      {"str2comp_t", {"kernel"}, "10"},
      {"str2comp_t", {"Kernel"}, "0"},
      {"str2comp_t", {"pipe"}, "11"},
      {"str2port_t", {"aximm"}, "16"},
      {"str2port_t", {"acc_fifo_read"}, "21"},
      {"str2port_t", {"acc_fifo_write"}, "21"},
      {"str2port_t", {"wire"}, "0"},
      {"str2datamover_t", {"axi_dma_2d"}, "4"},
      {"str2datamover_t", {"dma"}, "0"},
      {"str2channel_t", {"s2mm"}, "2"},
      {"str2channel_t", {"unsupported"}, "0"},
      {"str2channel_t", {""}, "4"},
      {"str2channel_t", {"mm2mm "}, "4"},
      {"str2cpu_t", {"cortex-a53"}, "1"},
      {"str2cpu_t", {"cortex_r5"}, "3"},
      {"str2cpu_t", {"power8"}, "6"},
      {"str2cpu_t", {"arm"}, "0"},
      {"str2device_t", {"tarsk_ultra"}, "1"},
      {"str2device_t", {"tarsk-ultra"}, "0"},
      {"str2mode_t", {"slave"}, "1"},
      {"str2mode_t", {"Master"}, "2"},
      {"str2dir_t", {"inout"}, "2"},
      {"str2dir_t", {"IN"}, "3"},
      {"str2monitor_t", {"trace"}, "3"},
      {"str2monitor_t", {"axi_perf_mon"}, "0"},
      {"str2memport_t", {"M_AXI_NOC"}, "1"},
      {"str2memport_t", {"M_AXI_DMA"}, "2"},
      {"str2memport_t", {"S_AXI_NOC"}, "8"},
      {"str2memport_t", {"MIG"}, "9"},
      {"str2memport_t", {"mig"}, "0"},
      {"str2linkage_t", {"external"}, "2"},
      {"str2linkage_t", {"none"}, "0"},
      {"str2noc_resource_t", {"pl_nsu"}, "2"},
      {"str2noc_resource_t", {"hbm_nmu"}, "3"},
      // The words that noc_resource_t2str gives are no keys: they read as the default.
      {"str2noc_resource_t", {"no_noc_resourcepl_nsu"}, "0"},
      {"str2noc_resource_t", {"hbm_nsu"}, "0"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(std::string(row.name) + " '" + row.arguments[0] + "'");
    EXPECT_EQ(RepoQueries::ask(*repo, row.name, row.arguments), row.answer);
  }
}

TEST_F(RepoQueriesTest, VocabularyValuesGiveTheirWordsQuoted) {
  Row const rows[] = {
      {"comp_t2str", {"0"}, "\"generic\""},
      {"comp_t2str", {"10"}, "\"kernel\""},
      {"port_t2str", {"2"}, "\"addressable\""},
      {"port_t2str", {"3"}, "\"\""},
      {"port_t2str", {"15"}, "\"\""},
      {"port_t2str", {"21"}, "\"fifo\""},
      {"port_t2str", {"28"}, "\"memobject\""},
      {"datamover_t2str", {"8"}, "\"fast_dma\""},
      {"channel_t2str", {"4"}, "\"mm2mm\""},
      {"cpu_t2str", {"1"}, "\"cortex_a53\""},
      {"mode_t2str", {"2"}, "\"no_mode\""},
      {"dir_t2str", {"1"}, "\"out\""},
      {"monitor_t2str", {"1"}, "\"apm\""},
      // str2memport_t("M_AXI_DMA") is 2, whose word is another.
      {"memport_t2str", {"2"}, "\"M_AXI_NOC\""},
      // Twelve words for ten values: the last two are asked by numbers that name no value.
      {"memport_t2str", {"10"}, "\"S_AXI_NOC\""},
      {"memport_t2str", {"11"}, "\"MIG\""},
      {"linkage_t2str", {"0"}, "\"no_linkage\""},
      {"noc_resource_t2str", {"0"}, "\"no_noc_resourcepl_nsu\""},
      {"noc_resource_t2str", {"2"}, "\"hbm_nsu\""},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(std::string(row.name) + " " + row.arguments[0]);
    EXPECT_EQ(RepoQueries::ask(*repo, row.name, row.arguments), row.answer);
  }
}

TEST_F(RepoQueriesTest, ValuePastItsWordTableIsTheConversionsOwnError) {
  EXPECT_EQ(outOfRange("comp_t2str", {"12"}), "qd::comp_t2str: 12 has no word (the table has 12)");
  EXPECT_EQ(outOfRange("comp_t2str", {"15"}), "qd::comp_t2str: 15 has no word (the table has 12)");
  EXPECT_EQ(outOfRange("port_t2str", {"29"}), "qd::port_t2str: 29 has no word (the table has 29)");
  EXPECT_EQ(outOfRange("noc_resource_t2str", {"3"}),
            "qd::noc_resource_t2str: 3 has no word (the table has 3)");
  EXPECT_EQ(outOfRange("memport_t2str", {"12"}),
            "qd::memport_t2str: 12 has no word (the table has 12)");
  EXPECT_EQ(outOfRange("mode_t2str", {"3"}), "qd::mode_t2str: 3 has no word (the table has 3)");
}

TEST_F(RepoQueriesTest, NumberTheVocabularyCannotHoldIsBadUse) {
  EXPECT_EQ(usageError("comp_t2str", {"16"}),
            "comp_t2str: 16 is out of the range of comp_t, 0 to 15");
  EXPECT_EQ(usageError("comp_t2str", {"-1"}),
            "comp_t2str: -1 is out of the range of comp_t, 0 to 15");
  EXPECT_EQ(usageError("port_t2str", {"32"}),
            "port_t2str: 32 is out of the range of port_t, 0 to 31");
  EXPECT_EQ(usageError("noc_resource_t2str", {"4"}),
            "noc_resource_t2str: 4 is out of the range of noc_resource_t, 0 to 3");
  EXPECT_EQ(usageError("mode_t2str", {"4"}), "mode_t2str: 4 is out of the range of mode_t, 0 to 3");
  EXPECT_EQ(usageError("comp_t2str", {"kernel"}), "comp_t2str: 'kernel' is not an integer");
  EXPECT_EQ(usageError("str2comp_t", {}), "str2comp_t takes 1 argument(s): str2comp_t word");
  EXPECT_EQ(usageError("cpu_t2str", {"1", "2"}), "cpu_t2str takes 1 argument(s): cpu_t2str value");
}

TEST(RepoQueriesBeforeARepositoryTest, TablesFilledByTheFirstRepositoryAreTheOnesAsked) {
  // A fresh process, in which no repository has filled the tables yet. The word reads as the
  // default until the repository is made, and then as its value through the query too: the
  // queries convert with the library's tables, not with a copy of their own.
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        bool const before = qd::str2comp_t("kernel") == qd::COMP_GENERIC;
        qd::QDSRepo repo(std::string(QV_EXAMPLES_DIR) + "/repository/qd_ip_db.xml", 0);
        bool const after = RepoQueries::ask(repo, "str2comp_t", {"kernel"}) == "10";
        std::exit(before && after ? 0 : 1);
      },
      ::testing::ExitedWithCode(0), "");
}

TEST_F(RepoQueriesTest, InterfaceAttributesByIndexTakeTheRepositoryAndACallerWord) {
  Row const rows[] = {
      {"getQdCompBusInterfaceStringAttrByIndex",
       {"vadd", "3", "qd:name", "qvdiag"},
       "\"m_axi_gmem\""},
      {"getQdCompBusInterfaceStringAttrByIndex",
       {"vadd", "2", "qd:regionSize", "qvdiag"},
       "\"0x1000\""},
      {"getQdCompBusInterfaceStringAttrByIndex", {"vadd", "0", "qd:mode", "qvdiag"}, "\"\""},
      {"getQdCompBusInterfaceStringAttrByIndex", {"nobody", "0", "qd:name", "qvdiag"}, "\"\""},
      {"getQdCompBusInterfaceIntAttrByIndex", {"vadd", "3", "qd:dataWidth", "qvdiag"}, "512"},
      {"getQdCompBusInterfaceIntAttrByIndex", {"consumer", "3", "qd:bufferDepth", "qvdiag"}, "512"},
      {"getQdCompBusInterfaceIntAttrByIndex", {"vadd", "0", "qd:dataWidth", "qvdiag"}, "-1"},
  };
  for (Row const& row : rows) {
    SCOPED_TRACE(std::string(row.name) + " " + row.arguments[0] + " " + row.arguments[1] + " " +
                 row.arguments[2]);
    EXPECT_EQ(RepoQueries::ask(*repo, row.name, row.arguments), row.answer);
  }
  testing::internal::CaptureStderr();
  EXPECT_EQ(RepoQueries::ask(*repo, "getQdCompBusInterfaceIntAttrByIndex",
                             {"vadd", "5", "qd:dataWidth", "qvdiag"}),
            "-1");
  EXPECT_EQ(testing::internal::GetCapturedStderr(),
            "WARNING: [Morvane 83-1001]  Index 5 out of range for component vadd\n");
  EXPECT_EQ(usageError("getQdCompBusInterfaceStringAttrByIndex", {"vadd", "x", "qd:name", "q"}),
            "getQdCompBusInterfaceStringAttrByIndex: 'x' is not an integer");
  EXPECT_EQ(usageError("getQdCompBusInterfaceIntAttrByIndex", {"vadd", "0", "qd:dataWidth"}),
            "getQdCompBusInterfaceIntAttrByIndex takes 4 argument(s): "
            "getQdCompBusInterfaceIntAttrByIndex component i attribute caller");
}

TEST_F(RepoQueriesTest, EveryListedQueryCanBeAsked) {
  for (RepoQueries::Query const& query : RepoQueries::all()) {
    SCOPED_TRACE(query.name);
    std::vector<std::string> arguments;
    // Names that every query of the example can take without a disagreement of the cache.
    for (std::string const& parameter : query.parameters) {
      if (parameter == "i" || parameter == "id" || parameter == "low" || parameter == "high" ||
          parameter == "value") {
        arguments.push_back("0");
      } else if (parameter == "unique") {
        arguments.push_back("true");
      } else if (parameter == "tag") {
        // A tag the platform knows: an unknown range ends the process in getSpTagAutoEnable.
        arguments.push_back("DDR");
      } else if (parameter == "platform") {
        arguments.push_back("qv_accel_h2_gen3x16");
      } else if (parameter == "object") {
        arguments.push_back("DDR");
      } else if (parameter == "port") {
        arguments.push_back("ap_clk");
      } else {
        arguments.push_back("vadd");
      }
    }
    testing::internal::CaptureStderr();
    EXPECT_FALSE(RepoQueries::ask(*repo, query.name, arguments).empty());
    testing::internal::GetCapturedStderr();
  }
}

TEST_F(RepoQueriesTest, BadUseNamesTheQuery) {
  EXPECT_EQ(usageError("nope", {}), "unknown query 'nope'; qvdiag repo --list-queries shows them");
  EXPECT_EQ(usageError("getIthQdHwFcnArg1", {"vadd"}),
            "getIthQdHwFcnArg1 takes 2 argument(s): getIthQdHwFcnArg1 function i");
  EXPECT_EQ(usageError("getIthQdHwFcnArg1", {"vadd", "1x"}),
            "getIthQdHwFcnArg1: '1x' is not an integer");
  EXPECT_EQ(usageError("getQdCompPortType", {"vadd"}),
            "getQdCompPortType takes one of: getQdCompPortType component i | "
            "getQdCompPortType component port");
  EXPECT_EQ(usageError("getSpTagSlrs", {"qv_accel_h2_gen3x16", "DDR", "yes"}),
            "getSpTagSlrs: 'yes' is not true or false");
}

TEST_F(RepoQueriesTest, ExpressionsPrintTheirType) {
  EXPECT_EQ(RepoQueries::evaluate(*repo, "count(//qd:fcnMap)"), "number 6");
  EXPECT_EQ(RepoQueries::evaluate(*repo, "boolean(//qd:nothing)"), "boolean false");
  EXPECT_EQ(RepoQueries::evaluate(*repo, "string(//qd:fcnMap[2]/@qd:type)"),
            "string \"hls_opencl\"");
  EXPECT_EQ(RepoQueries::evaluate(*repo, "//qd:fcnMap[position() < 3]/@qd:fcnName"),
            "node-set 2\n\"vadd\"\n\"mmult\"");
  testing::internal::CaptureStderr();
  try {
    RepoQueries::evaluate(*repo, "count((");
    ADD_FAILURE() << "evaluated";
  } catch (UsageError const& error) {
    EXPECT_EQ(std::string(error.what()), "the expression 'count((' does not evaluate");
  }
  testing::internal::GetCapturedStderr();
}

}  // namespace
}  // namespace qvdiag
