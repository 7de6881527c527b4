#include "tools/qvdiag/RepoQueries.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

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

TEST_F(RepoQueriesTest, EveryListedQueryCanBeAsked) {
  for (RepoQueries::Query const& query : RepoQueries::all()) {
    SCOPED_TRACE(query.name);
    std::vector<std::string> arguments;
    // Names that every query of the example can take without a disagreement of the cache.
    for (std::string const& parameter : query.parameters) {
      if (parameter == "i" || parameter == "id" || parameter == "low" || parameter == "high") {
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
