// The kernels file and the files of each kernel's directory: for each finding a minimal input and
// the exact line printed for it.
#include "checks/KernelsCheck.h"

#include <gtest/gtest.h>

#include <boost/filesystem.hpp>
#include <fstream>
#include <string>
#include <vector>

#include "checks/CheckReport.h"
#include "checks/KernelFilesCheck.h"
#include "tests/support/TempDir.h"
#include "tests/support/WorkingDirectory.h"

namespace {

using Lines = std::vector<std::string>;

std::string const kKernelXml = R"(<kernel name="k">
  <port name="m_axi_gmem" mode="master" dataWidth="512" portType="addressable"/>
  <arg name="in1" addressKind="1" id="0" port="m_axi_gmem" size="0x8" offset="0x10"/>
</kernel>
)";
std::string const kDesignXml = R"(<profile>
  <moduleInformation>
    <module name="k">
      <areaEstimates>
        <resources><BRAM>2</BRAM><DSP>0</DSP><FF>3842</FF><LUT>2490</LUT><URAM>0</URAM></resources>
      </areaEstimates>
    </module>
  </moduleInformation>
</profile>
)";
std::string const kKernelJson = R"({"ClockInfo": {"ClockName": "ap_clk", "ClockPeriod": 3.3}})";

class KernelsCheckTest : public ::testing::Test {
 protected:
  KernelsCheckTest() : here(directory.path()) {
    boost::filesystem::create_directories(directory.file("k"));
    write("k/kernel.xml", kKernelXml);
    write("k/k.design.xml", kDesignXml);
    write("k/kernel.json", kKernelJson);
  }

  void write(std::string const& name, std::string const& text) {
    std::ofstream(directory.file(name), std::ios::binary) << text;
  }

  // The findings for the kernels file `text`, with relative directories taken from the test's
  // directory, as the import takes them from its working directory.
  Lines lines(std::string const& text) {
    write("kernels.txt", text);
    qvcheck::CheckReport report;
    qvcheck::KernelsCheck::checkFile("kernels.txt", true, report);
    return printed(report);
  }

  static Lines printed(qvcheck::CheckReport const& report) {
    Lines out;
    for (qvcheck::Finding const& finding : report.findings()) {
      out.push_back(qvcheck::CheckReport::line(finding));
    }
    return out;
  }

  // The findings for one file of a kernel's directory.
  Lines file(void (*check)(std::string const&, qvcheck::CheckReport&), std::string const& name,
             std::string const& text) {
    write(name, text);
    qvcheck::CheckReport report;
    check(name, report);
    return printed(report);
  }

  qvtest::TempDir directory;
  qvtest::WorkingDirectory here;
};

TEST_F(KernelsCheckTest, AKernelWithAllItsFilesHasNoFindings) {
  EXPECT_EQ(lines("# name,type,directory\n\n  k , hls , k  \n"), Lines{});
}

TEST_F(KernelsCheckTest, TheKernelsFileItself) {
  EXPECT_EQ(lines("k,verilog,k\n"),
            (Lines{"kernels.txt:1: warning: kernel k: \"verilog\" is none of the types hls, rtl, "
                   "opencl, ps; the import sends CRITICAL WARNING 60-842 and keeps the kernel as "
                   "hls [QV-KERNELS-UNKNOWN-TYPE]"}));
  EXPECT_EQ(lines("k,hls,k\n,hls,k\n").front(),
            "kernels.txt:2: warning: kernel: the kernel's name is empty; the import makes a "
            "kernel with an empty name [QV-KERNELS-EMPTY-NAME]");
  EXPECT_EQ(lines("k,hls,missing/k\n"),
            (Lines{"kernels.txt:1: warning: kernel k: the directory missing/k does not exist "
                   "(relative directories are taken from the working directory); the import "
                   "lists the kernel without ports, arguments, estimate or clock "
                   "[QV-KERNELS-DIRECTORY-MISSING]"}));
  EXPECT_EQ(lines("k,hls\n").front(),
            "kernels.txt:1: warning: kernel k: the kernel has no directory; the import looks "
            "for its files at the root of the file system (/kernel.xml) "
            "[QV-KERNELS-NO-DIRECTORY]");
  qvcheck::CheckReport report;
  qvcheck::KernelsCheck::checkFile("none.txt", true, report);
  EXPECT_EQ(printed(report),
            (Lines{"none.txt: warning: does not exist or cannot be read; the import makes no "
                   "kernels from it [QV-KERNELS-FILE-MISSING]"}));
}

TEST_F(KernelsCheckTest, FilesMissingFromAKernelsDirectory) {
  boost::filesystem::create_directories(directory.file("e"));
  EXPECT_EQ(lines("e,hls,e\n"),
            (Lines{"kernels.txt:1: warning: kernel e: e/kernel.xml is missing and the directory "
                   "leads to no system compiler database; the import lists the kernel without "
                   "ports or arguments [QV-KERNELS-NO-KERNEL-XML]",
                   "kernels.txt:1: warning: kernel e: e/e.design.xml is missing; the import sends "
                   "WARNING 82-214 and lists the kernel without an estimate "
                   "[QV-KERNELS-NO-REPORT]",
                   "kernels.txt:1: warning: kernel e: e/kernel.json is missing; the import lists "
                   "the kernel without a clock [QV-KERNELS-NO-CLOCK]"}));
}

TEST_F(KernelsCheckTest, KernelXmlThatEndsTheImport) {
  auto const check = &qvcheck::KernelFilesCheck::checkKernelXml;
  EXPECT_EQ(file(check, "x.xml", "<kernel>\n  <port name=\"a\">\n</kernel>\n"),
            (Lines{"x.xml:3:10: error: not well-formed XML: Opening and ending tag mismatch: port "
                   "line 2 and kernel; the import fails [QV-KERNELXML-NOT-XML]"}));
  EXPECT_EQ(file(check, "x.xml", "<kernels/>\n"),
            (Lines{"x.xml:1: error: the root element is <kernels>, not <kernel>; the import fails "
                   "[QV-KERNELXML-ROOT]"}));
  EXPECT_EQ(file(check, "x.xml", "<kernel>\n  <prot/>\n</kernel>\n"),
            (Lines{"x.xml:2: error: kernel: <prot> is not allowed in <kernel>: only <port> and "
                   "<arg> (did you mean port?); the import fails [QV-KERNELXML-ELEMENT]"}));
  EXPECT_EQ(file(check, "x.xml", "<kernel>\n  <port dataWidth=\"wide\"/>\n</kernel>\n"),
            (Lines{"x.xml:2: error: kernel.port[0].dataWidth: 'wide' is not a signed 32-bit "
                   "decimal number; the import fails [QV-KERNELXML-NUMBER]"}));
  EXPECT_EQ(file(check, "x.xml", "<kernel>\n  <arg addressKind=\"-1\"/>\n</kernel>\n"),
            (Lines{"x.xml:2: error: kernel.arg[0].addressKind: '-1' is not an unsigned decimal "
                   "number below 2^32; the import fails [QV-KERNELXML-NUMBER]"}));
}

TEST_F(KernelsCheckTest, KernelXmlAttributesTheReaderDoesNotKnow) {
  EXPECT_EQ(file(&qvcheck::KernelFilesCheck::checkKernelXml, "x.xml",
                 "<kernel>\n  <port name=\"a\" datawidth=\"32\"/>\n</kernel>\n"),
            (Lines{"x.xml:2: warning: kernel.port[0]: datawidth is not an attribute of <port> (did "
                   "you mean dataWidth?); the import ignores it [QV-KERNELXML-UNKNOWN-ATTRIBUTE]"}));
}

TEST_F(KernelsCheckTest, SynthesisReports) {
  auto const check = &qvcheck::KernelFilesCheck::checkDesignXml;
  EXPECT_EQ(file(check, "d.xml", kDesignXml), Lines{});
  std::string noUram = kDesignXml;
  noUram.replace(noUram.find("<URAM>0</URAM>"), 14, "");
  EXPECT_EQ(file(check, "d.xml", noUram),
            (Lines{"d.xml:5: warning: profile.moduleInformation[0].module[0]: record 0 has no URAM "
                   "value at its position; the import sends WARNING 82-3568 and leaves uram as it "
                   "was [QV-DESIGNXML-ESTIMATE-MISSING]"}));
  std::string badCount = kDesignXml;
  badCount.replace(badCount.find("<DSP>0</DSP>"), 12, "<DSP>n/a</DSP>");
  EXPECT_EQ(file(check, "d.xml", badCount),
            (Lines{"d.xml:5: error: profile.moduleInformation[0].module[0].areaEstimates[0]."
                   "resources[0].DSP: 'n/a' is not an unsigned decimal number below 2^32; the "
                   "import fails [QV-DESIGNXML-NUMBER]"}));
  EXPECT_EQ(file(check, "d.xml", "<profile>\n  <module/>\n</profile>\n"),
            (Lines{"d.xml:2: error: profile: <module> is out of its place: only "
                   "<moduleInformation> belongs here; the import fails [QV-DESIGNXML-ELEMENT]"}));
  EXPECT_EQ(file(check, "d.xml", "<report/>\n"),
            (Lines{"d.xml:1: error: the root element is <report>, not <profile>; the import fails "
                   "[QV-DESIGNXML-ROOT]"}));
  EXPECT_EQ(file(check, "d.xml",
                 "<profile>\n <moduleInformation><module/></moduleInformation>\n"
                 " <moduleInformation><module/></moduleInformation>\n</profile>\n"),
            (Lines{"d.xml:3: error: profile.moduleInformation[1]: group 1 has 1 modules, and the "
                   "import asks each group for the module at its own position (write one group "
                   "with one module); the import fails [QV-DESIGNXML-MODULE-MISSING]"}));
  EXPECT_EQ(file(check, "d.xml", "<profile>\n").front().substr(0, 40),
            "d.xml:2:1: error: not well-formed XML: P");
}

TEST_F(KernelsCheckTest, KernelClocks) {
  auto const check = &qvcheck::KernelFilesCheck::checkKernelJson;
  EXPECT_EQ(file(check, "c.json", kKernelJson), Lines{});
  EXPECT_EQ(file(check, "c.json", "{\"ClockInfo\": {\"ClockName\": \"ap_clk\"}}"),
            (Lines{"c.json:1:15: error: ClockInfo.ClockPeriod: missing; the import fails "
                   "[QV-KERNELJSON-CLOCK-MISSING]"}));
  EXPECT_EQ(file(check, "c.json",
                 "{\"ClockInfo\": {\"ClockName\": \"ap_clk\", \"ClockPeriod\": \"3.3 ns\"}}"),
            (Lines{"c.json:1:54: error: ClockInfo.ClockPeriod: the string \"3.3 ns\" is not a "
                   "number; the import fails [QV-KERNELJSON-PERIOD-NOT-NUMBER]"}));
  EXPECT_EQ(file(check, "c.json",
                 "{\"ClockInfo\": {\"ClockName\": \"ap_clk\", \"ClockPeriod\": 0}}"),
            (Lines{"c.json:1:54: warning: ClockInfo.ClockPeriod: a period of 0 ns; the import "
                   "stores an infinite requested frequency [QV-KERNELJSON-PERIOD-ZERO]"}));
  EXPECT_EQ(file(check, "c.json", std::string(101, '[') + std::string(101, ']')),
            (Lines{"c.json:1:101: warning: arrays and objects nest deeper than 100 levels; the "
                   "check reads no further; the import reads it as deep as its stack allows "
                   "[QV-KERNELJSON-TOO-DEEP]"}));
  EXPECT_EQ(file(check, "c.json", "{\"ClockInfo\": "),
            (Lines{"c.json:1:15: warning: not valid JSON: Invalid value; the import takes it as "
                   "absent: the kernel gets no clock [QV-KERNELJSON-NOT-JSON]"}));
}

}  // namespace
