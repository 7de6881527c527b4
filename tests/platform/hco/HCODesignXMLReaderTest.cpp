#include "platform/hco/HCODesignXMLReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/TempDir.h"

namespace {

class HCODesignXMLReaderTest : public ::testing::Test {
 protected:
  std::string write(std::string const& text) {
    std::string const path = dir.file("k.design.xml");
    std::ofstream(path) << text;
    return path;
  }

  std::string errorOf(std::string const& text) {
    HCODesignXMLReader reader(write(text));
    try {
      reader.parse();
    } catch (std::runtime_error const& error) {
      EXPECT_TRUE(reader.getProfile().moduleInformation.empty());
      return error.what();
    }
    return "";
  }

  qvtest::TempDir dir;
};

TEST_F(HCODesignXMLReaderTest, WalksDownToTheValuesOfEachList) {
  HCODesignXMLReader reader(write(R"(<profile>
  <moduleInformation>
    <module name="vadd">
      <areaEstimates>
        <resources>
          <BRAM>2</BRAM><DSP>0</DSP><FF>3842</FF><FF>3900</FF><LUT>2490</LUT><SRL>12</SRL>
          <URAM> 0 </URAM>
        </resources>
        <resources/>
      </areaEstimates>
    </module>
    <module name="vadd_loop"/>
  </moduleInformation>
  <moduleInformation/>
</profile>)"));
  reader.parse();
  std::vector<DesignXML::ModuleInformation> informations;
  reader.getModuleInformation(reader.getProfile(), informations);
  ASSERT_EQ(informations.size(), 2u);
  EXPECT_EQ(informations[0].NumModules(), 2u);
  EXPECT_EQ(informations[1].NumModules(), 0u);
  DesignXML::Module const& module = informations[0].GetModule(0);
  EXPECT_EQ(module.name, "vadd");
  EXPECT_EQ(informations[0].GetModule(1).name, "vadd_loop");
  std::vector<DesignXML::AreaEstimates> estimates;
  reader.getAreaEstimates(module, estimates);
  ASSERT_EQ(estimates.size(), 1u);
  std::vector<DesignXML::Resources> records;
  reader.getResources(estimates[0], records);
  ASSERT_EQ(records.size(), 2u);
  EXPECT_EQ(records[0].BRAM.get(0), 2u);
  EXPECT_EQ(records[0].DSP.get(0), 0u);
  ASSERT_EQ(records[0].FF.size(), 2u);
  EXPECT_EQ(records[0].FF.get(1), 3900u);
  EXPECT_EQ(records[0].LUT.get(0), 2490u);
  EXPECT_EQ(records[0].SRL.get(0), 12u);
  EXPECT_EQ(records[0].URAM.get(0), 0u);
  EXPECT_TRUE(records[1].LUT.empty());
  EXPECT_THROW(records[1].LUT.get(0), lmx60::lmx_exception);
}

TEST_F(HCODesignXMLReaderTest, GetOperationsAppend) {
  HCODesignXMLReader reader(write("<profile><moduleInformation/></profile>"));
  reader.parse();
  std::vector<DesignXML::ModuleInformation> informations(1);
  reader.getModuleInformation(reader.getProfile(), informations);
  EXPECT_EQ(informations.size(), 2u);
}

TEST_F(HCODesignXMLReaderTest, ModuleBeyondTheGroupThrowsAStdException) {
  DesignXML::ModuleInformation information;
  information.AppendModule(DesignXML::Module{});
  EXPECT_NO_THROW(information.GetModule(0));
  try {
    information.GetModule(1);
    FAIL() << "no exception";
  } catch (std::exception const& error) {
    EXPECT_STREQ(error.what(), "module index 1 is beyond the 1 modules of the group");
  }
}

TEST_F(HCODesignXMLReaderTest, MalformedXmlNamesTheFileAndTheLine) {
  std::string const error = errorOf("<profile>\n<moduleInformation>\n</profile>");
  EXPECT_EQ(error.rfind(dir.file("k.design.xml") + ":3: ", 0), 0u) << error;
}

TEST_F(HCODesignXMLReaderTest, ElementsOutOfPlaceAreRefusedWithTheirLine) {
  EXPECT_EQ(errorOf("<report/>"),
            dir.file("k.design.xml") + ":1: the root element must be <profile>, not <report>");
  EXPECT_EQ(errorOf("<profile>\n<module/>\n</profile>"),
            dir.file("k.design.xml") +
                ":2: unexpected element <module> in <profile>: only <moduleInformation> belongs "
                "there");
  EXPECT_EQ(errorOf("<profile><moduleInformation><module><areaEstimates><resources>\n"
                    "<LUTs>3</LUTs></resources></areaEstimates></module></moduleInformation>"
                    "</profile>"),
            dir.file("k.design.xml") +
                ":2: unexpected element <LUTs> in <resources>: only <BRAM>, <DSP>, <FF>, <LUT>, "
                "<SRL> and <URAM> belong there");
}

TEST_F(HCODesignXMLReaderTest, CountsMustBeUnsignedDecimalNumbers) {
  std::string const head = "<profile><moduleInformation><module><areaEstimates><resources>\n";
  std::string const tail = "</resources></areaEstimates></module></moduleInformation></profile>";
  EXPECT_EQ(errorOf(head + "<DSP>-3</DSP>" + tail),
            dir.file("k.design.xml") +
                ":2: <DSP> must be an unsigned decimal number below 2^32, not '-3'");
  EXPECT_EQ(errorOf(head + "<BRAM>1.5</BRAM>" + tail),
            dir.file("k.design.xml") +
                ":2: <BRAM> must be an unsigned decimal number below 2^32, not '1.5'");
  EXPECT_EQ(errorOf(head + "<LUT>4294967296</LUT>" + tail),
            dir.file("k.design.xml") +
                ":2: <LUT> must be an unsigned decimal number below 2^32, not '4294967296'");
  EXPECT_EQ(errorOf(head + "<LUT>4294967295</LUT>" + tail), "");
}

}  // namespace
