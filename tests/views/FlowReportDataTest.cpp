// FlowReportData on small reports in the library's layout: blocks, sub-headings, labelled
// tables, the marks of absent data, and text that is no report.
#include "views/FlowReportData.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>

namespace qvviews {
namespace {

class FlowReportDataTest : public ::testing::Test {
 protected:
  static std::string heading() {
    std::string const rule(68, '=');
    return rule + "\nVersion:    qv 1\nCopyright:  us\nCreated:    today\n" + rule + "\n\n";
  }

  static std::string json(std::string const& text) {
    std::ostringstream out;
    FlowReportData::fromText(text).writeJson(out);
    return out.str();
  }

  static std::string errorOf(std::string const& text) {
    try {
      FlowReportData::fromText(text);
    } catch (std::runtime_error const& error) {
      return error.what();
    }
    return "no error";
  }
};

TEST_F(FlowReportDataTest, BlocksTablesAndMarksOfAbsentData) {
  std::string const text = heading() +
                           "1. Kernel and compute unit information\n"
                           "======================================\n\n"
                           "Compute Unit: k_1\nKernel: k\nClock Pin: \nReset Pin: rst\n\n"
                           "2. Interface Connections\n========================\n\n"
                           "Compute Unit to IP\n------------------\n"
                           "Source Pin: k_1/m\nDestination Pin: mon/S0\n\n"
                           "3. Clock Connections\n====================\n\n"
                           "Compute Unit: k_1\nClock ID: 0\n"
                           "Platform Clock Frequency: 300.00 MHz\n\n"
                           "4. Reset Connections\n====================\n\n"
                           "5. Clock Summary\n================\n\n"
                           "PL\n"
                           "+----------+--------+---------------+\n"
                           "| Instance | Kernel | Compile (MHz) |\n"
                           "+----------+--------+---------------+\n"
                           "| k_1      | k      | N/A           |\n"
                           "| k_2      | k      | 250.00        |\n"
                           "+----------+--------+---------------+\n\n"
                           "6. SLR Utilization per Compute Unit\n"
                           "===================================\n\n"
                           "Compute Unit: k_1\n"
                           "+-----------+------+--------+\n"
                           "| Site Type | SLR0 | SLR0 % |\n"
                           "+-----------+------+--------+\n"
                           "| LUT       | 2398 |   0.65 |\n"
                           "+-----------+------+--------+\n\n";
  EXPECT_EQ(json(text), R"--({
  "version": "qv 1",
  "copyright": "us",
  "created": "today",
  "sections": [
    {"number": 1, "title": "Kernel and compute unit information", "written": true, "items": [
      {"group": null, "values": {"Compute Unit": "k_1", "Kernel": "k", "Clock Pin": null, "Reset Pin": "rst"}}
    ]},
    {"number": 2, "title": "Interface Connections", "written": true, "items": [
      {"group": "Compute Unit to IP", "values": {"Source Pin": "k_1/m", "Destination Pin": "mon/S0"}}
    ]},
    {"number": 3, "title": "Clock Connections", "written": true, "items": [
      {"group": null, "values": {"Compute Unit": "k_1", "Clock ID": 0, "Platform Clock Frequency": 300.00}}
    ]},
    {"number": 4, "title": "Reset Connections", "written": true, "items": []},
    {"number": 5, "title": "Clock Summary", "written": true, "items": [
      {"group": null, "label": "PL",
       "columns": ["Instance", "Kernel", "Compile (MHz)"],
       "rows": [
        ["k_1", "k", null],
        ["k_2", "k", 250.00]
       ]}
    ]},
    {"number": 6, "title": "SLR Utilization per Compute Unit", "written": true, "items": [
      {"group": null, "label": "Compute Unit: k_1",
       "columns": ["Site Type", "SLR0", "SLR0 %"],
       "rows": [
        ["LUT", 2398, 0.65]
       ]}
    ]},
    {"number": 7, "title": "Compute Unit Utilization per SLR", "written": false, "items": []}
  ]
}
)--");
}

TEST_F(FlowReportDataTest, TextThatIsNoReportIsRefusedWithItsLine) {
  EXPECT_EQ(errorOf("hello\n"), "line 1: no flow report heading");
  EXPECT_EQ(errorOf(heading() + "Kernel: k\n"), "line 7: text before the first section");
  EXPECT_EQ(errorOf(heading() + "5. Clock Summary\n================\n\n"
                                "+---+\n| a |\n+---+\n| b |\n"),
            "line 10: a table without its closing border");
  EXPECT_EQ(errorOf(heading() + "5. Clock Summary\n================\n\n"
                                "1. Kernel and compute unit information\n"
                                "======================================\n"),
            "line 10: section 1 out of order");
  EXPECT_EQ(errorOf(heading() + "5. Clock Summary\n================\n\nPL\n"),
            "line 10: 'PL' stands above no table");
}

}  // namespace
}  // namespace qvviews
