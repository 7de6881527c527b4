// WriteFlowReport: the text report of a session's diagram, complete or cut short by a failure.
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/json_util.h>
#include <gtest/gtest.h>

#include <fstream>
#include <string>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/hut/HUTEnv.h"
#include "platform/mvk/NativeObjectService.h"
#include "proto/system_diagram.pb.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/Golden.h"
#include "tests/support/LoggerCapture.h"
#include "tests/support/Messages.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"
#include "tests/support/WorkingDirectory.h"

namespace {

namespace wire = dispatch::system_diagram_server;
namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using qvtest::exampleFile;
using qvtest::LoggerCapture;
using qvtest::parse;
using qvtest::requestFor;

constexpr char kTimeStamp[] = "Sat Nov 21 22:27:47 2026";

class FlowReportRequestsTest : public ::testing::Test {
 protected:
  FlowReportRequestsTest() : handler(connections) {
    HUTEnv::setFixedTimeStamp(kTimeStamp);
    mvk::platform::NativeObjectService::setSearchPath({exampleFile("platforms")});
    dispatch::Session session;
    session.set_uuid("s1");
    connections.createSession(session);
  }
  ~FlowReportRequestsTest() override {
    HUTEnv::clearFixedTimeStamp();
    mvk::platform::NativeObjectService::setSearchPath({});
  }

  dispatch::Response send(google::protobuf::Message const& message,
                          std::string const& uuid = "s1") {
    dispatch::Response response;
    connections.dispatch(requestFor(uuid, message), response);
    return response;
  }

  // The heading's product and holder texts belong to the build; the golden files carry
  // placeholders for them.
  static std::string withPlaceholders(std::string report) {
    for (auto const& [text, placeholder] :
         {std::pair<std::string, std::string>{HUTEnv::getFullProductStr(), "(product text)"},
          std::pair<std::string, std::string>{HUTEnv::getCopyRight(), "(holder text)"}}) {
      auto const at = report.find(text);
      if (at != std::string::npos) report.replace(at, text.size(), placeholder);
    }
    return report;
  }

  std::string report() { return withPlaceholders(qvtest::readFile(reportPath)); }

  wire::WriteFlowReport write() const {
    wire::WriteFlowReport message;
    message.set_path(reportPath);
    return message;
  }

  void importExample() {
    wire::MakeInitialSystemDiagram make;
    make.set_rtdfile(exampleFile("design/vector_pipeline.rtd.json"));
    make.set_platform("qv_accel_h2_gen3x16");
    make.set_generatedname("v++");
    make.set_generatedversion("2026.2");
    make.set_generatedchangelist("4711");
    make.set_generatedtimestamp("Sat Nov 21 10:00:00 2026");
    make.set_generateddetaila("linker");
    make.set_generateddetailb("hw");
    make.set_kernelsfile(exampleFile("design/kernels.txt"));
    make.set_binarylabel("vector_pipeline.xclbin");
    ASSERT_STATUS(send(make), 200);
    wire::UpdateSystemDiagramAfterBrenloRuns update;
    update.set_rtdfile(exampleFile("design/vector_pipeline.post_impl.rtd.json"));
    ASSERT_STATUS(send(update), 200);
  }

  // Makes the session's diagram the one given as protobuf text.
  void loadDiagram(std::string const& text) {
    std::string json;
    ASSERT_TRUE(
        google::protobuf::util::MessageToJsonString(parse<pb::outerContainer>(text), &json).ok());
    std::string const path = dir.file("loaded.json");
    std::ofstream(path) << json;
    wire::ReadSystemDiagram read;
    read.set_path(path);
    ASSERT_STATUS(send(read), 200);
  }

  // The example's kernels file names its kernel directories relative to examples/design.
  qvtest::WorkingDirectory workingDirectory{exampleFile("design")};
  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler;
  qvtest::TempDir dir;
  std::string const reportPath = dir.file("flow_report.txt");
};

std::string const kHeading =
    "====================================================================\n"
    "Version:    (product text)\n"
    "Copyright:  (holder text)\n"
    "Created:    Sat Nov 21 22:27:47 2026\n"
    "====================================================================\n"
    "\n";

TEST_F(FlowReportRequestsTest, ReportOfTheExampleDesignWithConnectionsClocksAndUtilization) {
  importExample();
  // The import gave each kernel the clock of its kernel.json. What the later flow steps add:
  // mmult's second clock, the compute units' link clocks, resets and SLR use, and the
  // connections to the platform's IP.
  ASSERT_STATUS(send(parse<wire::UpsertKernel>(
                    R"(kernel { name: "mmult" clock_refs { name: "ap_clk_2"
                                                           requested_frequency: 500 } })")),
                200);
  for (char const* text : {
           R"(computeUnit { name: "vadd_1"
                clock_refs { name: "ap_clk" requested_frequency: 300 achieved_frequency: 287.5 }
                reset_pins: "ap_rst_n"
                slr_resources { slr: "SLR0"
                  utilization { resource: "LUT" used: "2398" available: "369600" }
                  utilization { resource: "REG" used: "3790" available: "739200" }
                  utilization { resource: "BRAM" used: "2" available: "600" } } })",
           R"(computeUnit { name: "mmult_1"
                clock_refs { name: "ap_clk" requested_frequency: 300 achieved_frequency: 300 }
                clock_refs { name: "ap_clk_2" requested_frequency: 500 achieved_frequency: 450 }
                reset_pins: "ap_rst_n"
                slr_resources { slr: "SLR1"
                  utilization { resource: "LUT" used: "18417" available: "427200" }
                  utilization { resource: "REG" used: "27530" available: "854400" }
                  utilization { resource: "BRAM" used: "32" available: "696" } } })",
       }) {
    ASSERT_STATUS(send(parse<wire::UpdateComputeUnit>(text)), 200) << text;
  }
  for (char const* text : {
           R"(connectivity { id: "100"
                source { type: "ip" instance: "host_dma_0" pin: "M_AXIS" }
                destination { type: "compute_unit" id: "0" instance: "vadd_1" pin: "s_in" } })",
           R"(connectivity { id: "101"
                source { type: "compute_unit" id: "4" instance: "producer_1" pin: "out" }
                destination { type: "compute_unit" id: "5" instance: "consumer_1" pin: "in" } })",
           R"(connectivity { id: "102"
                source { type: "bd_clock" instance: "clkwiz_kernel" pin: "clk_out1" }
                destination { type: "compute_unit" id: "0" instance: "vadd_1" pin: "ap_clk" } })",
           R"(connectivity { id: "103"
                source { type: "ip_reset" instance: "psr_kernel" pin: "peripheral_aresetn" }
                destination { type: "compute_unit" id: "0" instance: "vadd_1" pin: "ap_rst_n" } })",
       }) {
    ASSERT_STATUS(send(parse<wire::UpsertConnectivity>(text)), 200) << text;
  }
  LoggerCapture log(dispatch::server::kLogDebug);
  EXPECT_STATUS(send(write()), 200);
  EXPECT_EQ(log.text(),
            "SYSTEM_DIAGRAM_HANDLER: Entering handleWriteFlowReportRequest\n"
            "SYSTEM_DIAGRAM_HANDLER: Leaving handleWriteFlowReportRequest\n");
  EXPECT_GOLDEN(report(), "flow_report_example.txt");
}

TEST_F(FlowReportRequestsTest, ClockSummaryTakesTheCompileFrequencyFromKernelJson) {
  importExample();
  // Linked at 450 MHz; producer's kernel.json says it was compiled for a 2 ns period.
  ASSERT_STATUS(send(parse<wire::UpdateComputeUnit>(
                    R"(computeUnit { name: "producer_1"
                         clock_refs { name: "ap_clk" requested_frequency: 450 } })")),
                200);
  EXPECT_STATUS(send(write()), 200);
  std::string const text = report();
  std::string const table = text.substr(text.find("5. Clock Summary"));
  EXPECT_EQ(table.substr(0, table.find("\n\n", table.find("PL")) + 2),
            "5. Clock Summary\n"
            "================\n"
            "\n"
            "PL\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| Instance   | Kernel   | Clock Port | Compile (MHz) | Link (MHz) |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "| producer_1 | producer | ap_clk     | 500.00        | 450.00     |\n"
            "+------------+----------+------------+---------------+------------+\n"
            "\n");
}

TEST_F(FlowReportRequestsTest, DiagramWithoutBuildSectionHasTitlesOneToFiveOnly) {
  EXPECT_STATUS(send(write()), 200);
  EXPECT_EQ(report(), kHeading +
                          "1. Kernel and compute unit information\n"
                          "======================================\n\n"
                          "2. Interface Connections\n"
                          "========================\n\n"
                          "3. Clock Connections\n"
                          "====================\n\n"
                          "4. Reset Connections\n"
                          "====================\n\n"
                          "5. Clock Summary\n"
                          "================\n\n");
}

TEST_F(FlowReportRequestsTest, EmptyPathIsAnswered400) {
  wire::WriteFlowReport message;
  EXPECT_STATUS(send(message), 400);
  EXPECT_STATUS(send(message, "ghost"), 400);
}

TEST_F(FlowReportRequestsTest, FileThatCannotBeOpenedIsAnswered500) {
  wire::WriteFlowReport message;
  message.set_path(dir.file("no/such/dir/report.txt"));
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(message), 500);
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM_HANDLER: Caught exception: Could not open " +
                            message.path() + " for writing..\n");
}

TEST_F(FlowReportRequestsTest, NonNumericClockIdEndsTheReportAfterItsComputeUnitLine) {
  loadDiagram(R"(system_diagram_metadata {
    qsa { clocks { name: "clk_a" id: 0 frequency: 300 } }
    qrxbin { user_regions {
      compute_units { id: "0" kernel_name: "k" name: "k_1"
                      clock_refs { name: "ap_clk" clock_id: "clk_a" } }
      connectivity { id: "0"
        source { type: "bd_clock" instance: "clkwiz" pin: "clk_out1" }
        destination { type: "compute_unit" id: "0" instance: "k_1" pin: "ap_clk" } } } } })");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(write()), 500);
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM_HANDLER: Caught exception: stoi.\n");
  std::string const written = report();
  EXPECT_EQ(written.substr(written.size() - std::string("Compute Unit: k_1\n").size()),
            "Compute Unit: k_1\n")
      << written;
}

TEST_F(FlowReportRequestsTest, EmptyUsedEndsTheReportBeforeSectionSix) {
  loadDiagram(R"(system_diagram_metadata { qrxbin { user_regions {
    compute_units { id: "0" kernel_name: "k" name: "k_1"
      slr_resources { slr: "SLR0" utilization { resource: "LUT" used: "" available: "100" } } }
  } } })");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(write()), 500);
  EXPECT_EQ(log.text(), "SYSTEM_DIAGRAM_HANDLER: Caught exception: stof.\n");
  std::string const written = report();
  EXPECT_EQ(written.find("6. SLR Utilization per Compute Unit"), std::string::npos) << written;
  EXPECT_NE(written.find("5. Clock Summary\n================\n\n"), std::string::npos) << written;
}

TEST_F(FlowReportRequestsTest, ShortColumnEndsTheReportInTheMiddleOfATable) {
  loadDiagram(R"(system_diagram_metadata { qrxbin { user_regions {
    compute_units { id: "0" kernel_name: "k" name: "k_1"
      slr_resources { slr: "SLR0"
        utilization { resource: "LUT" used: "1" available: "100" }
        utilization { resource: "REG" used: "2" available: "200" } }
      slr_resources { slr: "SLR1"
        utilization { resource: "LUT" used: "3" available: "100" } } }
  } } })");
  LoggerCapture log(dispatch::server::kLogException);
  EXPECT_STATUS(send(write()), 500);
  EXPECT_EQ(log.text().rfind("SYSTEM_DIAGRAM_HANDLER: Caught exception: vector::_M_range_check", 0),
            0u)
      << log.text();
  std::string const written = report();
  EXPECT_NE(written.find("6. SLR Utilization per Compute Unit"), std::string::npos) << written;
  // The last line is a table line cut short, without its line end.
  EXPECT_NE(written.back(), '\n') << written;
}

}  // namespace
