#include "platform/hco/HCOKernelXMLReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "tests/support/TempDir.h"

namespace {

class HCOKernelXMLReaderTest : public ::testing::Test {
 protected:
  std::string write(std::string const& text) {
    std::string const path = dir.file("kernel.xml");
    std::ofstream(path) << text;
    return path;
  }

  // The text of the error that parse() throws on `text`, or "" when it reads.
  std::string errorOf(std::string const& text) {
    HCOKernelXMLReader reader(write(text));
    try {
      reader.parse();
    } catch (std::runtime_error const& error) {
      EXPECT_TRUE(reader.getKernelDef().getArgs().empty());
      return error.what();
    }
    return "";
  }

  qvtest::TempDir dir;
};

TEST_F(HCOKernelXMLReaderTest, EveryAttributeGoesToItsField) {
  HCOKernelXMLReader reader(write(R"(<?xml version="1.0"?>
<kernel name="vadd">
  <port name="m_axi_gmem" mode="master" detailA="da" dataWidth="512" portType="addressable"
        detailB="db"/>
  <arg name="in1" addressKind="1" id="0" port="m_axi_gmem" size="0x8" offset="0x10"
       detailA="a1" detailB="b1" portInterfaceType="aximm" type="int*" argName="in1_src"
       hostSize="8"/>
  <port name="s_axi_control" mode="slave"/>
</kernel>
)"));
  reader.parse();
  mvk::kernel::KernelDef const& def = reader.getKernelDef();
  EXPECT_EQ(def.getName(), "vadd");
  ASSERT_EQ(def.getPorts().size(), 2u);
  mvk::kernel::PortDesc const& port = def.getPorts()[0];
  EXPECT_EQ(port.name, "m_axi_gmem");
  EXPECT_EQ(port.mode, "master");
  EXPECT_EQ(port.detailA, "da");
  EXPECT_EQ(port.dataWidth, 512);
  EXPECT_EQ(port.portType, "addressable");
  EXPECT_EQ(port.detailB, "db");
  EXPECT_EQ(def.getPorts()[1].name, "s_axi_control");
  EXPECT_EQ(def.getPorts()[1].dataWidth, 0);
  EXPECT_EQ(def.getPorts()[1].portType, "");
  ASSERT_EQ(def.getArgs().size(), 1u);
  mvk::kernel::ArgDesc const& arg = def.getArgs()[0];
  EXPECT_EQ(arg.name, "in1");
  EXPECT_EQ(arg.addressKind, 1u);
  EXPECT_EQ(arg.id, "0");
  EXPECT_EQ(arg.port, "m_axi_gmem");
  EXPECT_EQ(arg.size, "0x8");
  EXPECT_EQ(arg.offset, "0x10");
  EXPECT_EQ(arg.detailA, "a1");
  EXPECT_EQ(arg.detailB, "b1");
  EXPECT_EQ(arg.portInterfaceType, "aximm");
  EXPECT_EQ(arg.type, "int*");
  EXPECT_EQ(arg.argName, "in1_src");
  EXPECT_EQ(arg.hostSize, "8");
}

TEST_F(HCOKernelXMLReaderTest, EmptyKernelHasNoPortsAndNoArguments) {
  HCOKernelXMLReader reader(write("<kernel/>"));
  reader.parse();
  EXPECT_EQ(reader.getKernelDef().getName(), "");
  EXPECT_TRUE(reader.getKernelDef().getPorts().empty());
  EXPECT_TRUE(reader.getKernelDef().getArgs().empty());
}

TEST_F(HCOKernelXMLReaderTest, NothingBeforeParse) {
  HCOKernelXMLReader reader(write("<kernel><arg name=\"a\"/></kernel>"));
  EXPECT_TRUE(reader.getKernelDef().getArgs().empty());
}

TEST_F(HCOKernelXMLReaderTest, MalformedXmlNamesTheFileAndTheLine) {
  std::string const error = errorOf("<kernel name=\"k\">\n  <arg name=\"a\">\n</kernel>\n");
  EXPECT_EQ(error.rfind(dir.file("kernel.xml") + ":3: ", 0), 0u) << error;
}

TEST_F(HCOKernelXMLReaderTest, MissingFileSaysItCannotBeRead) {
  HCOKernelXMLReader reader(dir.file("absent.xml"));
  try {
    reader.parse();
    FAIL() << "no error";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()), dir.file("absent.xml") + ": cannot be read");
  }
}

TEST_F(HCOKernelXMLReaderTest, OtherRootIsRefused) {
  EXPECT_EQ(errorOf("<?xml version=\"1.0\"?>\n<kernels/>\n"),
            dir.file("kernel.xml") + ":2: the root element must be <kernel>, not <kernels>");
}

TEST_F(HCOKernelXMLReaderTest, UnknownElementIsRefusedWithItsLine) {
  EXPECT_EQ(
      errorOf("<kernel>\n<arg/>\n<argument/>\n</kernel>"),
      dir.file("kernel.xml") +
          ":3: unexpected element <argument> in <kernel>: only <port> and <arg> belong there");
}

TEST_F(HCOKernelXMLReaderTest, NumbersMustReadWhole) {
  EXPECT_EQ(errorOf("<kernel>\n<port dataWidth=\"64bits\"/></kernel>"),
            dir.file("kernel.xml") +
                ":2: dataWidth must be a signed 32-bit decimal number, not '64bits'");
  EXPECT_EQ(errorOf("<kernel>\n\n<arg addressKind=\"-1\"/></kernel>"),
            dir.file("kernel.xml") +
                ":3: addressKind must be an unsigned decimal number below 2^32, not '-1'");
  EXPECT_EQ(errorOf("<kernel><port dataWidth=\"-8\"/><arg addressKind=\"4294967295\"/></kernel>"),
            "");
}

}  // namespace
