#include "rtd/RtdKernelConfigure.h"

#include <gtest/gtest.h>

#include <boost/filesystem.hpp>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/MessageCapture.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"

namespace {

namespace fs = boost::filesystem;
using IPA::RtdKernelConfigure;
using OmbroCommonUtils::Kernel;
using Strings = std::vector<std::string>;

// A database with the hardware function `name` on the accelerator of the same name: two
// arguments (the second without a hardware name, so that its interface stands in) and two ports.
std::string database(std::string const& name) {
  return R"(<?xml version="1.0"?>
<qd:repository xmlns:qd="urn:quarrix:qd">
  <qd:component qd:name=")" +
         name + R"(" qd:type="accelerator">
    <qd:busInterface qd:name="ap_clk" qd:busTypeRef="clock" qd:direction="in"/>
    <qd:busInterface qd:name="m_axi_gmem" qd:busTypeRef="aximm" qd:mode="master"
                     qd:dataWidth="512"/>
  </qd:component>
  <qd:fcnMap qd:fcnName=")" +
         name + R"(" qd:componentRef=")" + name + R"(" qd:type="hls">
    <qd:arg qd:name="in" qd:hwName="in_r" qd:portInterfaceType="aximm"
            qd:busInterfaceRef="s_axi_control" qd:dataWidth="64" qd:offset="0x10"/>
    <qd:arg qd:name="n" qd:portInterfaceType="register" qd:busInterfaceRef="s_axi_control"
            qd:dataWidth="32" qd:offset="0x1c"/>
  </qd:fcnMap>
</qd:repository>
)";
}

class RtdKernelConfigureTest : public ::testing::Test {
 protected:
  std::string write(std::string const& relative, std::string const& text) {
    fs::path const path = fs::path(dir.path()) / relative;
    fs::create_directories(path.parent_path());
    std::ofstream(path.string(), std::ios::binary) << text;
    return path.string();
  }

  std::string kernelsFile(std::string const& text) { return write("kernels.txt", text); }

  // A kernel directory <dir>/<root>/int/o/<name>/<name>, and the database that it leads to,
  // <dir>/<root>/sys_link/_sysl/.cdb/qd_ip_db.xml, describing `function`.
  std::string systemCompilerTree(std::string const& root, std::string const& name,
                                 std::string const& function) {
    write(root + "/sys_link/_sysl/.cdb/qd_ip_db.xml", database(function));
    std::string const directory = dir.file(root + "/int/o/" + name + "/" + name);
    fs::create_directories(directory);
    return directory;
  }

  static std::string kernelXml(std::string const& argName, std::string const& portName) {
    return "<kernel><arg name=\"" + argName + "\" id=\"0\"/><port name=\"" + portName +
           "\" mode=\"slave\" dataWidth=\"32\"/></kernel>";
  }

  std::shared_ptr<std::vector<Kernel>> execute(std::string const& file,
                                               Strings const& instances = {}) {
    RtdKernelConfigure configure(instances, none, none, "", false);
    return configure.execute(file);
  }

  std::string finished(std::string const& file) {
    return "mvk @60-839@%s 0x4000000 [" + file + "]";
  }

  qvtest::TempDir dir;
  qvtest::MessageCapture messages;
  Strings const none;
};

// ---- The kernels file ----

TEST_F(RtdKernelConfigureTest, FileWithOnlyCommentsOrNothingStillSendsFinishedAndGivesNoKernel) {
  std::string const comments = kernelsFile("# kernels of the design\n  # indented\n#\n");
  EXPECT_TRUE(execute(comments)->empty());
  EXPECT_EQ(messages.sent(), Strings{finished(comments)});
  messages.clear();
  std::string const empty = write("empty.txt", "");
  EXPECT_TRUE(execute(empty)->empty());
  EXPECT_EQ(messages.sent(), Strings{finished(empty)});
}

TEST_F(RtdKernelConfigureTest, NameAloneMakesKernelWithEmptyDirectoryAndDefaultType) {
  std::string const file = kernelsFile("vadd\n");
  std::vector<Kernel> kernels;
  std::string error;
  RtdKernelConfigure configure(none, none, none, "", false);
  ASSERT_TRUE(configure.parseKernelsFile(file, kernels, error));
  ASSERT_EQ(kernels.size(), 1u);
  EXPECT_EQ(kernels[0].name, "vadd");
  EXPECT_EQ(kernels[0].directory, "");
  EXPECT_EQ(kernels[0].type, -1);
  // Its description is then looked for at "/kernel.xml", which is not there.
  auto const configured = execute(file);
  ASSERT_EQ(configured->size(), 1u);
  EXPECT_EQ((*configured)[0].type, 0);
  EXPECT_TRUE((*configured)[0].ports.empty());
  EXPECT_TRUE((*configured)[0].args.empty());
  EXPECT_EQ((*configured)[0].repoKernel, -1);
}

TEST_F(RtdKernelConfigureTest, UnknownTypeSendsItsMessageWithTheFieldAndEndsWithTypeZero) {
  std::string const file = kernelsFile("vadd,vhdl," + dir.path() + "\nmmult,rtl\n");
  std::vector<Kernel> parsed;
  std::string error = "kept";
  RtdKernelConfigure configure(none, none, none, "", false);
  ASSERT_TRUE(configure.parseKernelsFile(file, parsed, error));
  EXPECT_EQ(error, "kept");
  ASSERT_EQ(parsed.size(), 2u);
  EXPECT_EQ(parsed[0].type, -1);
  EXPECT_EQ(parsed[1].type, 1);
  EXPECT_EQ(messages.sent(), (Strings{"mvk @60-842@%s 0x10000000 [vhdl]", finished(file)}));
  messages.clear();
  auto const kernels = execute(file);
  ASSERT_EQ(kernels->size(), 2u);
  EXPECT_EQ((*kernels)[0].type, 0);
  EXPECT_EQ((*kernels)[0].directory, dir.path());
  EXPECT_EQ((*kernels)[1].type, 1);
  EXPECT_EQ(messages.sent(), (Strings{"mvk @60-842@%s 0x10000000 [vhdl]", finished(file)}));
}

TEST_F(RtdKernelConfigureTest, WhitespaceAroundTheLineAndEachFieldIsRemoved) {
  auto const kernels = execute(kernelsFile(" \t vadd ,  hls\t, /some dir/x  \r\n"));
  ASSERT_EQ(kernels->size(), 1u);
  EXPECT_EQ((*kernels)[0].name, "vadd");
  EXPECT_EQ((*kernels)[0].type, 0);
  EXPECT_EQ((*kernels)[0].directory, "/some dir/x");
}

TEST_F(RtdKernelConfigureTest, FinalLineWithoutLineEndIsRead) {
  auto const kernels = execute(kernelsFile("vadd,hls\nmmult,opencl"));
  ASSERT_EQ(kernels->size(), 2u);
  EXPECT_EQ((*kernels)[1].name, "mmult");
  EXPECT_EQ((*kernels)[1].type, 2);
}

TEST_F(RtdKernelConfigureTest, EmptyLinesAndFieldsBeyondTheThirdAreIgnored) {
  auto const kernels = execute(kernelsFile("\n   \nvadd,ps,/d,extra,more\n\n"));
  ASSERT_EQ(kernels->size(), 1u);
  EXPECT_EQ((*kernels)[0].name, "vadd");
  EXPECT_EQ((*kernels)[0].type, 3);
  EXPECT_EQ((*kernels)[0].directory, "/d");
}

TEST_F(RtdKernelConfigureTest, EmptyNameFieldStillMakesARecord) {
  auto const kernels = execute(kernelsFile(",hls\n"));
  ASSERT_EQ(kernels->size(), 1u);
  EXPECT_EQ((*kernels)[0].name, "");
}

TEST_F(RtdKernelConfigureTest, MissingKernelsFileGivesNoKernelAndNoMessage) {
  EXPECT_TRUE(execute(dir.file("absent.txt"))->empty());
  EXPECT_TRUE(execute(dir.path())->empty());
  EXPECT_TRUE(execute("")->empty());
  EXPECT_EQ(messages.sent(), Strings{});
}

TEST_F(RtdKernelConfigureTest, StatusThatCannotBeTakenSendsCannotReadWithEmptyArgument) {
  // A symbolic link to itself: its status is an error, not "not found".
  fs::create_symlink(dir.file("loop"), dir.file("loop"));
  std::vector<Kernel> kernels;
  std::string error = "kept";
  RtdKernelConfigure configure(none, none, none, "", false);
  EXPECT_FALSE(configure.parseKernelsFile(dir.file("loop"), kernels, error));
  EXPECT_EQ(error, "kept");
  EXPECT_EQ(messages.sent(), Strings{});
  // No instance collection either: it would fail on this instance list.
  EXPECT_TRUE(execute(dir.file("loop"), {"ghost:g"})->empty());
  EXPECT_EQ(messages.sent(), Strings{"mvk @60-808@%s 0x10000000 []"});
}

TEST_F(RtdKernelConfigureTest, InstancesThatCannotBeCollectedSendTheirErrorAndTheListStands) {
  std::string const file = kernelsFile("vadd,hls\n");
  auto const kernels = execute(file, {"ghost:g"});
  ASSERT_EQ(kernels->size(), 1u);
  EXPECT_EQ((*kernels)[0].name, "vadd");
  EXPECT_EQ(messages.sent(),
            (Strings{finished(file),
                     "mvk @60-633@%s 0x10000000 [kernel instance list 'ghost:g' names "
                     "the kernel 'ghost', which is not among the kernels]"}));
}

TEST_F(RtdKernelConfigureTest, InstancesAreCollectedFromTheFirstList) {
  auto const kernels = execute(kernelsFile("vadd\n"), {"vadd:vadd_1,vadd_2"});
  EXPECT_EQ((*kernels)[0].instances, (Strings{"vadd_1", "vadd_2"}));
}

// ---- kernel.xml ----

TEST_F(RtdKernelConfigureTest, KernelXmlReplacesPortsAndArguments) {
  write("vadd/kernel.xml", kernelXml("in1", "m_axi_gmem"));
  auto const kernels = execute(kernelsFile("vadd,hls," + dir.file("vadd")));
  ASSERT_EQ((*kernels)[0].args.size(), 1u);
  EXPECT_EQ((*kernels)[0].args[0].name, "in1");
  ASSERT_EQ((*kernels)[0].ports.size(), 1u);
  EXPECT_EQ((*kernels)[0].ports[0].name, "m_axi_gmem");
  EXPECT_EQ((*kernels)[0].ports[0].dataWidth, 32);
  EXPECT_EQ((*kernels)[0].repoKernel, -1);
}

TEST_F(RtdKernelConfigureTest, MalformedKernelXmlEndsWithAnErrorNamingFileAndLine) {
  std::string const xml = write("vadd/kernel.xml", "<kernel>\n<arg name=\"a\">\n</kernel>\n");
  try {
    execute(kernelsFile("vadd,hls," + dir.file("vadd")));
    FAIL() << "no error";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()).rfind(xml + ":3: ", 0), 0u) << error.what();
  }
}

// ---- The system compiler database ----

TEST_F(RtdKernelConfigureTest, DatabaseGivesArgumentsAndPortsToAKernelWithoutKernelXml) {
  std::string const directory = systemCompilerTree("build", "krnl", "krnl");
  std::shared_ptr<std::vector<Kernel>> kernels;
  // The clock interface states no mode, and the repository says so.
  EXPECT_EQ(qvtest::stderrOf([&] { kernels = execute(kernelsFile("krnl,hls," + directory)); }),
            "WARNING: [Morvane 83-1004] Component type 'krnl' has no port 'ap_clk' mode "
            "definition\n");
  ASSERT_EQ(kernels->size(), 1u);
  Kernel const& kernel = (*kernels)[0];
  EXPECT_EQ(kernel.repoKernel, 1);
  ASSERT_EQ(kernel.args.size(), 2u);
  EXPECT_EQ(kernel.args[0].name, "in_r");
  EXPECT_EQ(kernel.args[0].addressKind, 0u);
  EXPECT_EQ(kernel.args[0].id, "0");
  EXPECT_EQ(kernel.args[0].port, "s_axi_control");
  EXPECT_EQ(kernel.args[0].size, "64");
  EXPECT_EQ(kernel.args[0].offset, "0x10");
  EXPECT_EQ(kernel.args[0].detailA, "");
  EXPECT_EQ(kernel.args[0].detailB, "");
  EXPECT_EQ(kernel.args[0].portInterfaceType, "aximm");
  EXPECT_EQ(kernel.args[0].type, "");
  EXPECT_EQ(kernel.args[0].argName, "in");
  EXPECT_EQ(kernel.args[0].hostSize, "");
  EXPECT_EQ(kernel.args[1].name, "s_axi_control");
  EXPECT_EQ(kernel.args[1].id, "1");
  EXPECT_EQ(kernel.args[1].size, "32");
  EXPECT_EQ(kernel.args[1].offset, "0x1c");
  EXPECT_EQ(kernel.args[1].portInterfaceType, "register");
  EXPECT_EQ(kernel.args[1].argName, "n");
  ASSERT_EQ(kernel.ports.size(), 2u);
  EXPECT_EQ(kernel.ports[0].name, "ap_clk");
  EXPECT_EQ(kernel.ports[0].mode, "");
  EXPECT_EQ(kernel.ports[0].dataWidth, 0);  // no width anywhere: -1 is not taken
  EXPECT_EQ(kernel.ports[0].portType, "clock");
  EXPECT_EQ(kernel.ports[0].detailA, "");
  EXPECT_EQ(kernel.ports[0].detailB, "");
  EXPECT_EQ(kernel.ports[1].name, "m_axi_gmem");
  EXPECT_EQ(kernel.ports[1].mode, "master");
  EXPECT_EQ(kernel.ports[1].dataWidth, 512);
  EXPECT_EQ(kernel.ports[1].portType, "aximm");
  EXPECT_EQ(messages.sent(), Strings{finished(dir.file("kernels.txt"))});
}

TEST_F(RtdKernelConfigureTest, KernelWithBothXmlAndDatabaseEntryGetsBothOneBehindTheOther) {
  write("krnl/kernel.xml", kernelXml("from_xml", "xml_port"));
  // krnl's own directory has a kernel.xml; other's directory leads to the database.
  std::string const other = systemCompilerTree("build", "other", "krnl");
  auto const kernels =
      execute(kernelsFile("krnl,hls," + dir.file("krnl") + "\nother,hls," + other + "\n"));
  Kernel const& kernel = (*kernels)[0];
  EXPECT_EQ(kernel.repoKernel, 1);
  ASSERT_EQ(kernel.args.size(), 3u);
  EXPECT_EQ(kernel.args[0].name, "from_xml");
  EXPECT_EQ(kernel.args[1].name, "in_r");
  EXPECT_EQ(kernel.args[2].name, "s_axi_control");
  ASSERT_EQ(kernel.ports.size(), 3u);
  EXPECT_EQ(kernel.ports[0].name, "xml_port");
  EXPECT_EQ(kernel.ports[1].name, "ap_clk");
  // `other` is no function of the database: it keeps nothing, and nothing is said.
  EXPECT_EQ((*kernels)[1].repoKernel, -1);
  EXPECT_TRUE((*kernels)[1].args.empty());
  EXPECT_EQ(messages.sent(), Strings{finished(dir.file("kernels.txt"))});
}

TEST_F(RtdKernelConfigureTest, DatabaseIsSoughtOnlyUntilTheFirstHit) {
  std::string const first = systemCompilerTree("one", "a", "a");
  std::string const second = systemCompilerTree("two", "b", "b");
  auto const kernels = execute(kernelsFile("a,hls," + first + "\nb,hls," + second + "\n"));
  EXPECT_EQ((*kernels)[0].repoKernel, 1);
  EXPECT_EQ((*kernels)[0].args.size(), 2u);
  // b is described only by the second database, which is never read.
  EXPECT_EQ((*kernels)[1].repoKernel, -1);
  EXPECT_TRUE((*kernels)[1].args.empty());
}

TEST_F(RtdKernelConfigureTest, FailedSearchIsTriedAgainByTheNextKernelWithoutXml) {
  std::string const found = systemCompilerTree("build", "b", "a");
  auto const kernels =
      execute(kernelsFile("a,hls," + dir.file("elsewhere/a") + "\nb,hls," + found + "\n"));
  EXPECT_EQ((*kernels)[0].repoKernel, 1);
  EXPECT_EQ((*kernels)[1].repoKernel, -1);
}

TEST_F(RtdKernelConfigureTest, DirectoryOfAnotherFormLeavesTheDatabaseUnfound) {
  write("sys_link/_sysl/.cdb/qd_ip_db.xml", database("k"));
  write("x/sys_link/_sysl/.cdb/qd_ip_db.xml", database("k"));
  for (std::string const directory : {"k", "k/k", "o/k/k", "x/o/k/k", "x/int/k/k", "x/int/o/k",
                                      "x/int/o/j/k", "x/int/o/k/j", "x/int/o/k/k/"}) {
    auto const kernels = execute(kernelsFile("k,hls," + dir.file(directory)));
    EXPECT_EQ((*kernels)[0].repoKernel, -1) << directory;
  }
  // The same kernel from a directory of the right form finds it.
  auto const kernels = execute(kernelsFile("k,hls," + dir.file("x/int/o/k/k")));
  EXPECT_EQ((*kernels)[0].repoKernel, 1);
}

TEST_F(RtdKernelConfigureTest, DatabaseThatIsADirectoryIsNotTaken) {
  fs::create_directories(dir.file("sys_link/_sysl/.cdb/qd_ip_db.xml"));
  std::string const directory = dir.file("int/o/k/k");
  fs::create_directories(directory);
  auto const kernels = execute(kernelsFile("k,hls," + directory));
  EXPECT_EQ((*kernels)[0].repoKernel, -1);
}

TEST_F(RtdKernelConfigureTest, DatabaseThatCannotBeReadChangesNothingAndIsNotReported) {
  write("sys_link/_sysl/.cdb/qd_ip_db.xml", "<qd:repository");
  std::string const directory = dir.file("int/o/k/k");
  fs::create_directories(directory);
  qvtest::SilentLibxml silent;
  std::shared_ptr<std::vector<Kernel>> kernels;
  std::string const file = kernelsFile("k,hls," + directory);
  // The repository logs why it could not open the file; the user is told nothing.
  std::string const log = qvtest::stderrOf([&] { kernels = execute(file); });
  EXPECT_NE(log.find("1019"), std::string::npos) << log;
  EXPECT_EQ((*kernels)[0].repoKernel, -1);
  EXPECT_TRUE((*kernels)[0].args.empty());
  EXPECT_EQ(messages.sent(), Strings{finished(dir.file("kernels.txt"))});
}

TEST_F(RtdKernelConfigureTest, ReadFromDatabaseDirectlyAppendsToTheGivenKernels) {
  std::string const file = write("db.xml", database("krnl"));
  auto kernels = std::make_shared<std::vector<Kernel>>(2);
  (*kernels)[0].name = "krnl";
  (*kernels)[1].name = "ghost";
  RtdKernelConfigure configure(none, none, none, "", false);
  configure.readKernelsFromSystemCompilerDB(file, kernels);
  configure.readKernelsFromSystemCompilerDB(file, kernels);
  EXPECT_EQ((*kernels)[0].args.size(), 4u);
  EXPECT_EQ((*kernels)[0].ports.size(), 4u);
  EXPECT_EQ((*kernels)[1].repoKernel, -1);
  EXPECT_EQ(messages.sent(), Strings{});
}

}  // namespace
