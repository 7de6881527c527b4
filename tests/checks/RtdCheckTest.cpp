// The strict reader of run-time data files: for each finding a minimal file and the exact line
// printed for it.
#include "checks/RtdCheck.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "checks/CheckReport.h"

namespace {

// A small file the import takes whole, one compute unit on one memory. Each test changes one
// thing in it.
std::string const kGood = R"({
 "schema_version": {"major": "1", "minor": "0", "patch": "0"},
 "mem_topology": {"m_count": "1", "m_mem_data": [
  {"m_type": "MEM_DDR4", "m_used": "1", "m_tag": "DDR[0]"}]},
 "ip_layout": {"m_count": "1", "m_ip_data": [
  {"m_type": "IP_KERNEL", "m_name": "vadd:vadd_1"}]},
 "connectivity": {"m_count": "1", "m_connection": [
  {"arg_index": "0", "m_ip_layout_index": "0", "mem_data_index": "0"}]}
}
)";

class RtdCheckTest : public ::testing::Test {
 protected:
  // The printed lines of the findings for `text`, named t.rtd.json.
  static std::vector<std::string> lines(std::string const& text) {
    qvcheck::CheckReport report;
    qvcheck::RtdCheck::checkText("t.rtd.json", text, report);
    std::vector<std::string> printed;
    for (qvcheck::Finding const& finding : report.findings()) {
      printed.push_back(qvcheck::CheckReport::line(finding));
    }
    return printed;
  }

  // kGood with the first `from` replaced by `to`; the test fails when `from` is not there.
  static std::string changed(std::string const& from, std::string const& to) {
    std::string text = kGood;
    std::string::size_type const at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    if (at != std::string::npos) text.replace(at, from.size(), to);
    return text;
  }

  using Lines = std::vector<std::string>;
};

TEST_F(RtdCheckTest, AFileTheImportTakesWholeHasNoFindings) { EXPECT_EQ(lines(kGood), Lines{}); }

TEST_F(RtdCheckTest, TextThatIsNotJsonIsAnErrorAtItsPosition) {
  EXPECT_EQ(lines(changed("\"m_used\": \"1\",", "\"m_used\": \"1\" ")),
            (Lines{"t.rtd.json:4:41: error: not valid JSON: Missing a comma or '}' after an object "
                  "member; the import refuses the file [QV-RTD-NOT-JSON]"}));
}

TEST_F(RtdCheckTest, NestingDeeperThanTheReaderTakesIsAnError) {
  std::string const deep = "{\"x\": " + std::string(100, '[') + std::string(100, ']') + "}";
  EXPECT_EQ(lines(deep),
            (Lines{"t.rtd.json:1:106: error: arrays and objects nest deeper than 100 levels; the "
                  "import refuses the file [QV-RTD-TOO-DEEP]"}));
}

TEST_F(RtdCheckTest, AMissingVersionMemberIsAnError) {
  EXPECT_EQ(lines(changed(", \"patch\": \"0\"", "")),
            (Lines{"t.rtd.json:2:2: error: schema_version.patch: missing; the import refuses the "
                  "file [QV-RTD-VERSION-MISSING]"}));
}

TEST_F(RtdCheckTest, AVersionTheImportRefusesNamesTheAcceptedOnes) {
  EXPECT_EQ(lines(changed("\"minor\": \"0\"", "\"minor\": \"1\"")),
            (Lines{"t.rtd.json:2:2: error: schema_version: version 1.1.0 is not supported; the "
                  "import accepts major version 1 or one that sorts after it as text, with minor "
                  "version 0 and patch level 0 (1.0.0, 2.0.0, ...); the import refuses the file "
                  "[QV-RTD-VERSION-UNSUPPORTED]"}));
  // Compared as text: "01" sorts before "1", "10" after it.
  EXPECT_EQ(lines(changed("\"major\": \"1\"", "\"major\": \"01\"")).size(), 1u);
  EXPECT_EQ(lines(changed("\"major\": \"1\"", "\"major\": \"10\"")), Lines{});
}

TEST_F(RtdCheckTest, TheUpdateAfterImplementationChecksNoVersionAndNoConnection) {
  std::string text = changed("\"minor\": \"0\"", "\"minor\": \"1\"");
  std::string const index = "\"mem_data_index\": \"0\"";
  text.replace(text.find(index), index.size(), "\"mem_data_index\": \"9\"");
  qvcheck::CheckReport report;
  qvcheck::RtdCheck::checkText("t.rtd.json", text, report, qvcheck::RtdCheck::Use::kUpdate);
  ASSERT_EQ(report.findings().size(), 1u);
  EXPECT_EQ(qvcheck::CheckReport::line(report.findings()[0]),
            "t.rtd.json:2:2: note: schema_version: version 1.1.0 is not supported; the import "
            "accepts major version 1 or one that sorts after it as text, with minor version 0 "
            "and patch level 0 (1.0.0, 2.0.0, ...); the update after implementation checks no "
            "version and reads the file [QV-RTD-VERSION-UNSUPPORTED]");
}

TEST_F(RtdCheckTest, AMissingCountIsAnErrorEvenForAnEmptySection) {
  EXPECT_EQ(lines(changed("\"connectivity\": {\"m_count\": \"1\",", "\"connectivity\": {")),
            (Lines{"t.rtd.json:7:2: error: connectivity.m_count: missing (even a section with no "
                  "entries needs its count); the import refuses the file "
                  "[QV-RTD-COUNT-MISSING]"}));
}

TEST_F(RtdCheckTest, ACountOfZeroInFrontOfEntriesDropsTheSection) {
  EXPECT_EQ(lines(changed("\"mem_topology\": {\"m_count\": \"1\"",
                          "\"mem_topology\": {\"m_count\": \"0\"")),
            (Lines{"t.rtd.json:3:19: warning: mem_topology.m_count: the count is 0 but m_mem_data "
                  "has 1 entry; the import drops the whole section [QV-RTD-COUNT-ZERO]",
                  // The connection's memory is then past the end of an empty list.
                  "t.rtd.json:8:66: warning: connectivity.m_connection[0].mem_data_index: 0 is "
                  "past the end of mem_topology.m_mem_data (0 entries read); the import keeps the "
                  "connection with a memory end that names nothing [QV-RTD-MEM-INDEX-RANGE]"}));
}

TEST_F(RtdCheckTest, ACountThatIsNoNumberDropsTheSection) {
  EXPECT_EQ(lines(changed("\"ip_layout\": {\"m_count\": \"1\"", "\"ip_layout\": {\"m_count\": \"x3\"")),
            (Lines{"t.rtd.json:5:16: warning: ip_layout.m_count: the string \"x3\" does not read "
                  "as a count (a decimal number from 1 to 4294967295); the import drops the whole "
                  "section, 1 entry [QV-RTD-COUNT-NOT-NUMBER]",
                  "t.rtd.json:8:43: warning: connectivity.m_connection[0].m_ip_layout_index: 0 is "
                  "past the end of ip_layout.m_ip_data (0 entries read); the import keeps the "
                  "connection with a compute unit end that names nothing "
                  "[QV-RTD-IP-INDEX-RANGE]"}));
}

TEST_F(RtdCheckTest, AnEmptySectionWithACountOfZeroIsFine) {
  EXPECT_EQ(lines(changed("\"connectivity\": {\"m_count\": \"1\", \"m_connection\": [\n  "
                          "{\"arg_index\": \"0\", \"m_ip_layout_index\": \"0\", "
                          "\"mem_data_index\": \"0\"}]}",
                          "\"connectivity\": {\"m_count\": \"0\"}")),
            Lines{});
}

TEST_F(RtdCheckTest, AListMissingBehindACountIsAnError) {
  EXPECT_EQ(lines(changed(", \"m_ip_data\": [\n  {\"m_type\": \"IP_KERNEL\", \"m_name\": "
                          "\"vadd:vadd_1\"}]",
                          "")),
            (Lines{"t.rtd.json:5:2: error: ip_layout.m_ip_data: missing behind a count of 1; the "
                  "import refuses the file [QV-RTD-LIST-MISSING]",
                  "t.rtd.json:7:43: warning: connectivity.m_connection[0].m_ip_layout_index: 0 is "
                  "past the end of ip_layout.m_ip_data (0 entries read); the import keeps the "
                  "connection with a compute unit end that names nothing "
                  "[QV-RTD-IP-INDEX-RANGE]"}));
}

TEST_F(RtdCheckTest, ACountThatDiffersFromTheListIsAWarning) {
  EXPECT_EQ(lines(changed("\"mem_topology\": {\"m_count\": \"1\"",
                          "\"mem_topology\": {\"m_count\": \"3\"")),
            (Lines{"t.rtd.json:3:19: warning: mem_topology.m_count: the count says 3 but "
                  "m_mem_data has 1 entry; the import reads the 1 entry and ignores the count "
                  "[QV-RTD-COUNT-MISMATCH]"}));
}

TEST_F(RtdCheckTest, AnUnknownKeyNamesTheNearestKnownOne) {
  EXPECT_EQ(lines(changed("{\"m_type\": \"IP_KERNEL\"", "{\"m_tpye\": \"IP_KERNEL\"")),
            (Lines{"t.rtd.json:6:4: warning: ip_layout.m_ip_data[0]: m_tpye is not a key of an IP "
                  "entry (did you mean m_type?); the import skips it [QV-RTD-UNKNOWN-KEY]"}));
  EXPECT_EQ(lines(changed("\"m_tag\"", "\"colour\"")),
            (Lines{"t.rtd.json:4:41: warning: mem_topology.m_mem_data[0]: colour is not a key of a "
                  "memory; the import skips it [QV-RTD-UNKNOWN-KEY]"}));
}

TEST_F(RtdCheckTest, AnEntryThatIsNoObjectIsKeptEmpty) {
  EXPECT_EQ(lines(changed("{\"m_type\": \"MEM_DDR4\", \"m_used\": \"1\", \"m_tag\": \"DDR[0]\"}",
                          "\"DDR\"")),
            (Lines{"t.rtd.json:4:3: warning: mem_topology.m_mem_data[0]: the memory is the string "
                  "\"DDR\", not an object; the import keeps it with every field empty "
                  "[QV-RTD-ENTRY-NOT-OBJECT]"}));
}

TEST_F(RtdCheckTest, AKeyGivenTwiceIsANote) {
  EXPECT_EQ(lines(changed("\"m_used\": \"1\"", "\"m_used\": \"1\", \"m_used\": \"0\"")),
            (Lines{"t.rtd.json:4:41: note: mem_topology.m_mem_data[0].m_used: given more than "
                  "once; the import keeps the last value [QV-RTD-DUPLICATE-KEY]"}));
}

TEST_F(RtdCheckTest, AKernelWithoutAColonIsNoComputeUnit) {
  EXPECT_EQ(lines(changed("\"vadd:vadd_1\"", "\"vadd_1\"")),
            (Lines{"t.rtd.json:6:27: warning: ip_layout.m_ip_data[0].m_name: the IP_KERNEL "
                  "\"vadd_1\" has no colon; a compute unit is named <kernel>:<unit>; the import "
                  "takes it for a plain IP block and makes no compute unit of it "
                  "[QV-RTD-CU-NO-COLON]"}));
  // A plain IP block is named without one, and rightly so.
  EXPECT_EQ(lines(changed("{\"m_type\": \"IP_KERNEL\", \"m_name\": \"vadd:vadd_1\"}",
                          "{\"m_type\": \"IP_DDR4_CONTROLLER\", \"m_name\": \"ddr\"}")),
            Lines{});
}

TEST_F(RtdCheckTest, ConnectionsPastTheEndOfTheirListsAreWarnings) {
  EXPECT_EQ(lines(changed("\"mem_data_index\": \"0\"", "\"mem_data_index\": \"4\"")),
            (Lines{"t.rtd.json:8:66: warning: connectivity.m_connection[0].mem_data_index: 4 is "
                  "past the end of mem_topology.m_mem_data (1 entry); the import keeps the "
                  "connection with a memory end that names nothing [QV-RTD-MEM-INDEX-RANGE]"}));
  EXPECT_EQ(lines(changed("\"m_ip_layout_index\": \"0\"", "\"m_ip_layout_index\": \"1\"")),
            (Lines{"t.rtd.json:8:43: warning: connectivity.m_connection[0].m_ip_layout_index: 1 is "
                  "past the end of ip_layout.m_ip_data (1 entry); the import keeps the "
                  "connection with a compute unit end that names nothing "
                  "[QV-RTD-IP-INDEX-RANGE]"}));
  EXPECT_EQ(lines(changed("\"mem_data_index\": \"0\"", "\"mem_data_index\": \"first\"")),
            (Lines{"t.rtd.json:8:66: warning: connectivity.m_connection[0].mem_data_index: the "
                  "string \"first\" is not a position in mem_topology.m_mem_data; the "
                  "connection's memory end names no memory [QV-RTD-INDEX-NOT-NUMBER]"}));
}

// Two compute units and a stream memory between them; the connections are the stream's halves.
std::string streams(std::string const& connections, int count) {
  return R"({
 "schema_version": {"major": "1", "minor": "0", "patch": "0"},
 "mem_topology": {"m_count": "1", "m_mem_data": [{"m_type": "MEM_STREAMING_CONNECTION"}]},
 "ip_layout": {"m_count": "2", "m_ip_data": [{"m_type": "IP_KERNEL", "m_name": "p:p_1"},
                                             {"m_type": "IP_KERNEL", "m_name": "c:c_1"}]},
 "connectivity": {"m_count": ")" +
         std::to_string(count) + R"(", "m_connection": [
)" + connections + "]}\n}\n";
}

TEST_F(RtdCheckTest, AStreamNeedsTwoHalves) {
  std::string const half0 = R"(  {"m_ip_layout_index": "0", "mem_data_index": "0"})";
  std::string const half1 = R"(  {"m_ip_layout_index": "1", "mem_data_index": "0"})";
  EXPECT_EQ(lines(streams(half0 + ",\n" + half1, 2)), Lines{});
  EXPECT_EQ(lines(streams(half0, 1)),
            (Lines{"t.rtd.json:7:3: warning: connectivity.m_connection[0]: the stream through "
                  "memory 0 has 1 half; a stream has two; the import numbers it but gives it no "
                  "source or destination [QV-RTD-STREAM-HALVES]"}));
  EXPECT_EQ(lines(streams(half0 + ",\n" + half1 + ",\n" + half1, 3)),
            (Lines{"t.rtd.json:7:3: warning: connectivity.m_connection[0]: the stream through "
                  "memory 0 has 3 halves; a stream has two; the import numbers it but gives it "
                  "no source or destination [QV-RTD-STREAM-HALVES]"}));
}

TEST_F(RtdCheckTest, AFileThatCannotBeReadIsAnError) {
  qvcheck::CheckReport report;
  qvcheck::RtdCheck::checkFile("/nonexistent/x.rtd.json", report);
  ASSERT_EQ(report.findings().size(), 1u);
  EXPECT_EQ(qvcheck::CheckReport::line(report.findings()[0]),
            "/nonexistent/x.rtd.json: error: cannot be read: No such file or directory; the "
            "import fails [QV-RTD-UNREADABLE]");
}

}  // namespace
