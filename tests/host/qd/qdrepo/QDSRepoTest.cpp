#include "host/qd/qdrepo/QDSRepo.h"

#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <fstream>
#include <iostream>
#include <memory>
#include <sstream>
#include <string>

#include "host/qd/qdrepo/QDEnumerations.h"
#include "tests/support/Golden.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"

namespace qd {
namespace {

class QDSRepoTest : public ::testing::Test {
 protected:
  void TearDown() override { Log::reportingLevel = logINFO; }

  // A repository file in the test's directory holding `body` inside qd:repository.
  std::string file(std::string const& name, std::string const& body) {
    std::ofstream(dir.file(name)) << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">" << body
                                  << "</qd:repository>";
    return dir.file(name);
  }

  qvtest::SilentLibxml silent;
  std::string const core = qvtest::dataFile("repository/core.xml");
  qvtest::TempDir dir;
};

TEST_F(QDSRepoTest, CachesEveryComponentThatParsesAndSkipsTheOthers) {
  Log::reportingLevel = logINTERNAL;
  std::unique_ptr<QDSRepo> repo;
  EXPECT_EQ(qvtest::stderrOf([&] { repo = std::make_unique<QDSRepo>(core, 0); }),
            "INTERNAL: [Morvane 83-9999] Adding component plat for parsing\n"
            "INTERNAL: [Morvane 83-9999] Adding component acc for parsing\n"
            "INTERNAL: [Morvane 83-9999] Adding component gen for parsing\n"
            "INTERNAL: [Morvane 83-9999] Failed to parse data base reset intf entry "
            "broken/ap_rst_n: No such node (<xmlattr>.qd:clockRef)\n"
            "INTERNAL: [Morvane 83-9999] Skipping due to Failed to parse data file for broken\n"
            "INTERNAL: [Morvane 83-9999] Skipping component for parsing broken\n");
  EXPECT_EQ(repo->components.size(), 3u);
  EXPECT_EQ(repo->components.count("broken"), 0u);
  ASSERT_TRUE(repo->platformComponent);
  EXPECT_EQ(repo->platformComponent->Name(), "plat");
  EXPECT_EQ(repo->flags, 0u);
  EXPECT_FALSE(repo->doc->interactive);
  EXPECT_EQ(repo->getFileName(), core);
}

TEST_F(QDSRepoTest, SkippedComponentIsStillThereForXPath) {
  QDSRepo repo(core, 0);
  EXPECT_EQ(repo.getNumQdComponents(), 4);
  EXPECT_TRUE(repo.isQdComp("broken"));
  EXPECT_TRUE(repo.isQdAcceleratorComp("broken"));
  EXPECT_EQ(repo.getIthQdComponent(3), "broken");
  EXPECT_EQ(repo.getIthQdComponent(4), "");
}

TEST_F(QDSRepoTest, FileWithNoFunctionAndNoComponentStands) {
  QDSRepo repo(file("empty.xml", ""), 0);
  EXPECT_TRUE(repo.checkDatabase());
  EXPECT_FALSE(repo.platformComponent);
  EXPECT_EQ(repo.getNumQdComponents(), 0);
  EXPECT_EQ(repo.getNumQdHwFcns(), 0);
}

TEST_F(QDSRepoTest, FunctionsOnAnAcceleratorOrThePlatformPassTheCheck) {
  QDSRepo repo(core, 0);
  EXPECT_EQ(repo.getNumQdHwFcns(), 2);
  EXPECT_EQ(repo.getIthQdHwFcn(1), "f_plat");
  EXPECT_EQ(repo.getQdHwFcnQdComponentRef("f_acc"), "acc");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_TRUE(repo.checkDatabase()); }), "");
}

TEST_F(QDSRepoTest, FunctionOnAGenericComponentFailsWithTheListOfFunctions) {
  QDSRepo repo(file("generic.xml",
                    "<qd:component qd:name=\"gen\" qd:type=\"generic\"/>"
                    "<qd:component qd:name=\"acc\" qd:type=\"accelerator\"/>"
                    "<qd:fcnMap qd:fcnName=\"f_gen\" qd:componentRef=\"gen\"/>"
                    "<qd:fcnMap qd:fcnName=\"f_acc\" qd:componentRef=\"acc\"/>"),
               0);
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_FALSE(repo.checkDatabase()); }),
            "ERROR: [Morvane 83-1020] Function 'f_gen' does not map to accelerator or platform "
            "hardware.  This can occur if the hardware function specifier is in error.  "
            "Declared hardware functions: f_gen, f_acc\n");
}

TEST_F(QDSRepoTest, CheckOfAnUnknownFunctionSaysSoAtInfo) {
  QDSRepo repo(core, 0);
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_FALSE(repo.checkQdHwFcn("nope")); }),
            "INFO: [Morvane 83-1000] Invalid accelerator function (nope);\n");
}

TEST_F(QDSRepoTest, CheckGoesOnPastAFailureFromTheLastFunctionToTheFirst) {
  QDSRepo repo(file("two_bad.xml",
                    "<qd:fcnMap qd:fcnName=\"a\" qd:componentRef=\"none\"/>"
                    "<qd:fcnMap qd:fcnName=\"b\"/>"),
               0);
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_FALSE(repo.checkDatabase()); }),
            "INTERNAL: [Morvane 83-1014]  NULL component type reference \n"
            "ERROR: [Morvane 83-1020] Function 'b' does not map to accelerator or platform "
            "hardware.  This can occur if the hardware function specifier is in error.  "
            "Declared hardware functions: a, b\n"
            "ERROR: [Morvane 83-1020] Function 'a' does not map to accelerator or platform "
            "hardware.  This can occur if the hardware function specifier is in error.  "
            "Declared hardware functions: a, b\n");
}

TEST_F(QDSRepoTest, FunctionAttributeOfAnUnknownFunctionIsEmptyWithANote) {
  QDSRepo repo(core, 0);
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo.getQdHwFcnQdComponentRef("nope"), ""); }),
            "INTERNAL: [Morvane 83-1003] Function 'nope' is not a hardware function\n");
}

TEST_F(QDSRepoTest, KindTestsNeedTheComponentAndItsType) {
  QDSRepo repo(core, 0);
  EXPECT_TRUE(repo.isQdAcceleratorComp("acc"));
  EXPECT_FALSE(repo.isQdAcceleratorComp("gen"));
  EXPECT_FALSE(repo.isQdDatamoverComp("acc"));
  EXPECT_FALSE(repo.isQdAcceleratorComp("absent"));
  EXPECT_TRUE(repo.isQdPlatformComp("plat"));
  EXPECT_FALSE(repo.isQdPlatformComp("acc"));
  EXPECT_EQ(repo.getQdCompType("gen"), "generic");
  EXPECT_EQ(repo.getQdCompType("absent"), "");
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_FALSE(repo.isQdComp("")); }),
            "INTERNAL: [Morvane 83-1014]  NULL component type reference \n");
}

TEST_F(QDSRepoTest, EarlierOfTwoPlatformsEndsTheProcessThroughTheCheck) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  std::string const path =
      file("two_platforms.xml",
           "<qd:component qd:name=\"p1\" qd:type=\"platform\"><qd:platformInfo><qd:systemClocks "
           "qd:defaultClock=\"0\"/></qd:platformInfo></qd:component>"
           "<qd:component qd:name=\"p2\" qd:type=\"platform\"><qd:platformInfo><qd:systemClocks "
           "qd:defaultClock=\"0\"/></qd:platformInfo></qd:component>");
  QDSRepo repo(path, 0);
  EXPECT_EQ(repo.platformComponent->Name(), "p2");
  EXPECT_TRUE(repo.isQdPlatformComp("p2"));
  EXPECT_EXIT(repo.isQdPlatformComp("p1"), ::testing::ExitedWithCode(255),
              "^ERROR: \\[Morvane 83-9999\\] Equivalency violation found for isQdPlatformComp "
              "1!=0\n$");
}

TEST_F(QDSRepoTest, VerifyPrintsTheExtraTextAndEndsTheProcess) {
  EXPECT_EXIT(QDREPO_VERIFY<std::string>("getQdCompPortName", "a", "b", "comp/port"),
              ::testing::ExitedWithCode(255),
              "^ERROR: \\[Morvane 83-9999\\] Equivalency violation found for getQdCompPortName "
              "a!=b: comp/port\n$");
  QDREPO_VERIFY<int>("same", 3, 3, "");  // agreement returns
}

TEST_F(QDSRepoTest, FlagBitZeroRunsTheQueryLoopBeforeTheCacheIsBuilt) {
  std::istringstream in("count(//qd:component)\n-q\n");
  std::streambuf* const saved = std::cin.rdbuf(in.rdbuf());
  testing::internal::CaptureStdout();
  QDSRepo repo(core, 1);
  std::string const out = testing::internal::GetCapturedStdout();
  std::cin.rdbuf(saved);
  EXPECT_EQ(out.rfind("Enter XPath expression (-q to exit): evaluating count(//qd:component)\n"
                      "Object is a number : 4\n",
                      0),
            0u)
      << out;
  EXPECT_TRUE(repo.doc->interactive);
  EXPECT_EQ(repo.flags, 1u);
  EXPECT_EQ(repo.components.size(), 3u);
}

TEST_F(QDSRepoTest, SecondRepositoryDoesNotRefillTheTables) {
  QDSRepo first(core, 0);
  EXPECT_EQ(str2comp_t("kernel"), 10);
  QDSRepo second(core, 0);
  EXPECT_EQ(str2comp_t("kernel"), 10);
}

TEST_F(QDSRepoTest, FileThatIsNotXmlFailsTheRepositoryWithAClearLine) {
  std::ofstream(dir.file("text.xml")) << "no xml here";
  std::string thrown;
  EXPECT_EQ(qvtest::stderrOf([&] {
              try {
                QDSRepo repo(dir.file("text.xml"), 0);
              } catch (std::runtime_error const& error) {
                thrown = error.what();
              }
            }),
            "ERROR: [Morvane 83-1019] Cannot read IP database " + dir.file("text.xml") +
                ": it cannot be opened or is not well-formed XML\n");
  EXPECT_EQ(thrown, "cannot read IP database " + dir.file("text.xml"));
}

TEST_F(QDSRepoTest, FileWithoutTheRepositoryRootThrowsTheTreesError) {
  std::ofstream(dir.file("other.xml")) << "<qd:other xmlns:qd=\"urn:quarrix:qd\"/>";
  EXPECT_THROW(QDSRepo(dir.file("other.xml"), 0), boost::property_tree::ptree_bad_path);
}

TEST_F(QDSRepoTest, CreateRepoOfAMissingFileSaysSoAndGivesNull) {
  boost::shared_ptr<QDSRepo> repo;
  EXPECT_EQ(qvtest::stderrOf([&] { repo = QDSRepo::createRepo(dir.file("absent.xml"), 0); }),
            "ERROR: [Morvane 83-1017] Cannot open IP database" + dir.file("absent.xml") + "\n");
  EXPECT_FALSE(repo);
}

TEST_F(QDSRepoTest, CreateRepoOfAFileThatIsNotXmlGivesNull) {
  std::ofstream(dir.file("text.xml")) << "<qd:repository";
  boost::shared_ptr<QDSRepo> repo;
  EXPECT_EQ(qvtest::stderrOf([&] { repo = QDSRepo::createRepo(dir.file("text.xml"), 0); }),
            "ERROR: [Morvane 83-1019] Cannot read IP database " + dir.file("text.xml") +
                ": it cannot be opened or is not well-formed XML\n");
  EXPECT_FALSE(repo);
}

TEST_F(QDSRepoTest, CreateRepoOfADatabaseThatFailsItsCheckGivesNull) {
  std::string const path = file("generic.xml",
                                "<qd:component qd:name=\"gen\" qd:type=\"generic\"/>"
                                "<qd:fcnMap qd:fcnName=\"f\" qd:componentRef=\"gen\"/>");
  boost::shared_ptr<QDSRepo> repo;
  EXPECT_EQ(qvtest::stderrOf([&] { repo = QDSRepo::createRepo(path, 0); }),
            "ERROR: [Morvane 83-1020] Function 'f' does not map to accelerator or platform "
            "hardware.  This can occur if the hardware function specifier is in error.  "
            "Declared hardware functions: f\n");
  EXPECT_FALSE(repo);
}

TEST_F(QDSRepoTest, CreateRepoWithoutTheRootLetsTheTreesErrorThrough) {
  std::ofstream(dir.file("other.xml")) << "<qd:other xmlns:qd=\"urn:quarrix:qd\"/>";
  EXPECT_THROW(QDSRepo::createRepo(dir.file("other.xml"), 0), boost::property_tree::ptree_bad_path);
}

TEST_F(QDSRepoTest, CreateRepoLogsTheDumpAtDebug) {
  Log::reportingLevel = logDEBUG;
  boost::shared_ptr<QDSRepo> repo;
  std::string const logged = qvtest::stderrOf([&] { repo = QDSRepo::createRepo(core, 0); });
  ASSERT_TRUE(repo);
  EXPECT_EQ(logged, "DEBUG: [Morvane 83-1000] " + repo->toString("DEBUG: ") + "\n");
}

class QDSRepoExampleTest : public QDSRepoTest {
 protected:
  void SetUp() override {
    repo = QDSRepo::createRepo(qvtest::exampleFile("repository/qd_ip_db.xml"), 0);
    ASSERT_TRUE(repo);
  }

  boost::shared_ptr<QDSRepo> repo;
};

TEST_F(QDSRepoExampleTest, DumpOfTheExampleDatabase) {
  std::string dump = repo->toString("> ");
  // The first line is the file's path, which depends on where the sources are.
  dump.replace(0, dump.find('\n'), "<file>");
  EXPECT_GOLDEN(dump, "repository_example_dump.txt");
}

TEST_F(QDSRepoExampleTest, PackedArgumentsCountOnceInTheLogicalView) {
  EXPECT_EQ(repo->getNumQdHwFcnArgs1("producer"), 3);
  EXPECT_EQ(repo->getNumQdHwFcnArgs("producer"), 2);
  EXPECT_TRUE(repo->qdHwFcnArgIsPacked("producer", "out_lo"));
  EXPECT_TRUE(repo->qdHwFcnArgIsPacked("producer", "out"));  // by its root name
  EXPECT_FALSE(repo->qdHwFcnArgIsPacked("producer", "count"));
  EXPECT_EQ(repo->getQdHwFcnArgPackedDataWidth("producer", "out_lo"), 64);
  EXPECT_EQ(repo->getQdHwFcnArgPackedDataWidth("producer", "count"), 32);
  EXPECT_EQ(repo->getNumQdHwFcnArgs1("absent"), -1);
}

TEST_F(QDSRepoExampleTest, PointerArgumentsReadTheirMasterUnlessOpenClForWidth) {
  EXPECT_EQ(repo->getIthQdHwFcnArgPortInterfaceType1("vadd", 0), "aximm_addr");
  EXPECT_EQ(repo->getIthQdHwFcnArgDataWidth("vadd", 0), 512);
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize1("vadd", 0), 4096);
  EXPECT_TRUE(repo->isQdHwHlsOpenclFcn("mmult"));
  EXPECT_EQ(repo->getIthQdHwFcnArgPortInterfaceType1("mmult", 0), "aximm_addr");
  EXPECT_EQ(repo->getIthQdHwFcnArgDataWidth("mmult", 0), 64);
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize1("mmult", 0), 1024);
  EXPECT_EQ(repo->getIthQdHwFcnArgPortInterfaceType1("vadd", 3), "register");
}

TEST_F(QDSRepoExampleTest, NamesFallBackToTheInterface) {
  EXPECT_EQ(repo->getIthQdHwFcnArgHwName1("vadd", 2), "out_r");
  EXPECT_EQ(repo->getIthQdHwFcnArgHwName1("vadd", 3), "s_axi_control");
  EXPECT_TRUE(repo->isQdHwFcnArg("vadd", "out_r"));    // by hardware name
  EXPECT_TRUE(repo->isQdHwFcnArg("producer", "out"));  // by root name
  EXPECT_FALSE(repo->isQdHwFcnArg("vadd", "nothing"));
}

TEST_F(QDSRepoExampleTest, IndexOutsideTheArgumentsIsEmptyWithANote) {
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArg1("vadd", -1), ""); }),
            "INTERNAL: [Morvane 83-1010] Function 'vadd' does not have argument index'-1'\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArg1("vadd", 4), ""); }),
            "INTERNAL: [Morvane 83-1010] Function 'vadd' does not have argument index'4'\n");
}

TEST_F(QDSRepoExampleTest, ControlProtocolDefaultsAndReturnOffset) {
  EXPECT_EQ(repo->getQdHwFcnCtrlRegType("vadd"), "ap_ctrl_chain");
  EXPECT_EQ(repo->getQdHwFcnCtrlRegType("mmult"), "ap_ctrl_hs");  // generic_axi_lite
  EXPECT_EQ(repo->getQdHwFcnCtrlRegType("consumer"), "ap_ctrl_none");
  EXPECT_EQ(repo->getQdHwFcnReturnOffset("vadd"), "0x40");
  EXPECT_EQ(repo->getQdHwFcnReturnOffset("mmult"), "");
  EXPECT_TRUE(repo->isQdPlatformHwFcn("dma_copy"));
  EXPECT_FALSE(repo->isQdPlatformHwFcn("vadd"));
}

TEST_F(QDSRepoExampleTest, ReservedClocksAreNotAvailable) {
  std::string const platform = "qv_accel_h2_gen3x16";
  EXPECT_EQ(repo->getNumAvailableClocks(platform), 4);
  EXPECT_FALSE(repo->isAvailableClockId(4, platform));
  EXPECT_EQ(repo->getIthAvailableClockId(3, platform), 3);
  EXPECT_EQ(repo->getIthAvailableClockId(4, platform), -1);
  EXPECT_EQ(repo->getPlatformDefaultClockId(platform), 0);
  EXPECT_EQ(repo->getClockFrequencyForClockId(1, platform), 500.0);
  EXPECT_EQ(repo->getCpuClockFrequency(platform), 1200.0f);
  EXPECT_EQ(repo->getNumAvailableClocks("vadd"), -1);
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getClockFrequencyForClockId(4, platform), -1.0); }),
      "WARNING: [Morvane 83-10051] Invalid clock id 4 for platform qv_accel_h2_gen3x16\n");
}

TEST_F(QDSRepoExampleTest, InstanceOfAPlatformInterfaceAgreesWithTheCache) {
  EXPECT_EQ(repo->getQdCompBusInterfaceInstanceRef("qv_accel_h2_gen3x16", "DDR"), "memss_ddr");
  EXPECT_EQ(repo->getQdCompBusInterfaceInstanceRef("qv_accel_h2_gen3x16", "none"), "");
  EXPECT_EQ(repo->getQdCompBusInterfaceInstanceRef("absent", "DDR"), "");
}

TEST_F(QDSRepoExampleTest, PlatformAndItsMasterClocksAgreeWithTheCache) {
  std::string const platform = "qv_accel_h2_gen3x16";
  EXPECT_EQ(repo->getQdPlatformComp(), platform);
  EXPECT_EQ(repo->getNumPlatformClocks(platform), 4);
  EXPECT_EQ(repo->getIthPlatformClock(1, platform), "clk_kernel_01");
  EXPECT_EQ(repo->getIthPlatformClock(4, platform), "");
  EXPECT_EQ(repo->getNumPlatformClocks("vadd"), -1);
  EXPECT_TRUE(repo->isQdCompClockPort(platform, "clk_out1"));
  EXPECT_FALSE(repo->isQdCompClockPort(platform, "clk_kernel_00"));
}

TEST_F(QDSRepoExampleTest, PortsByIndexFollowTheInterfaces) {
  EXPECT_EQ(repo->getQdCompNumPorts("vadd"), 5);
  EXPECT_EQ(repo->getQdCompNumPorts("absent"), -1);
  EXPECT_EQ(repo->getQdCompPortName("vadd", 0), "ap_clk");
  EXPECT_EQ(repo->getQdCompPortType("vadd", 3), "aximm");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdCompPortName("vadd", 5), ""); }),
            "WARNING: [Morvane 83-1001]  Index 5 out of range for component vadd\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdCompPortType("vadd", -1), ""); }),
            "WARNING: [Morvane 83-1001]  Index -1 out of range for component vadd\n");
}

TEST_F(QDSRepoExampleTest, PortNamesAreInterfaceNamesOrTheirPhysicalPorts) {
  std::string const platform = "qv_accel_h2_gen3x16";
  EXPECT_TRUE(repo->isQdCompPort("vadd", "m_axi_gmem"));
  EXPECT_TRUE(repo->isQdCompPort(platform, "clk_out2"));  // the qd:port of an interface
  EXPECT_FALSE(repo->isQdCompPort("vadd", "nothing"));
  EXPECT_TRUE(repo->isQdCompAxiPort("vadd", "m_axi_gmem"));
  EXPECT_TRUE(repo->isQdCompAxiPort("producer", "out"));
  EXPECT_FALSE(repo->isQdCompAxiPort("vadd", "ap_clk"));
  EXPECT_EQ(repo->getQdCompBusInterfacePort(platform, "clk_kernel_00"), "clk_out1");
  EXPECT_EQ(repo->getQdCompBusInterfaceBusInterfaceRef(platform, "rst_kernel_00"), "ap_rst_n");
  EXPECT_EQ(repo->getQdCompBusInterfaceComponentRef("vadd", "ap_clk"), "");
  EXPECT_EQ(repo->getQdCompBusInterfaceMemObject(platform, "DDR"), "memss");
  EXPECT_EQ(repo->getQdCompBusInterfaceMemObject("vadd", "m_axi_gmem"), "");
}

TEST_F(QDSRepoExampleTest, MemoryObjectsAgreeWithThePlatformsAxiInterfaces) {
  std::string const platform = "qv_accel_h2_gen3x16";
  EXPECT_EQ(repo->getMemObjectInstRef(platform, "DDR"), "memss_ddr");
  EXPECT_EQ(repo->getMemObjectSlr(platform, "HBM"), "SLR0");
  EXPECT_EQ(repo->getMemObjectMemPort(platform, "HBM"), "memss");
  EXPECT_EQ(repo->getMemObjectInstRef(platform, "S_AXI_CTRL"), "");  // no qd:memport
}

TEST_F(QDSRepoExampleTest, MemoryObjectOfAnotherComponentDisagreesWithThePlatformsCache) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  // The cache answers for the platform whatever component is named.
  EXPECT_EXIT(repo->getMemObjectInstRef("vadd", "DDR"), ::testing::ExitedWithCode(255),
              "^ERROR: \\[Morvane 83-9999\\] Equivalency violation found for "
              "getMemObjectInstRef !=memss_ddr: vadd/DDR\n$");
}

TEST_F(QDSRepoTest, DisagreeingDuplicateInterfacesEndTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  QDSRepo repo(file("duplicates.xml",
                    "<qd:component qd:name=\"c\" qd:type=\"accelerator\">"
                    "<qd:busInterface qd:name=\"m\" qd:busTypeRef=\"bram\" qd:instanceRef=\"a\"/>"
                    "<qd:busInterface qd:name=\"m\" qd:busTypeRef=\"bram\" qd:instanceRef=\"b\"/>"
                    "</qd:component>"),
               0);
  // XPath finds two values that disagree and answers nothing; the cache kept the first.
  EXPECT_EXIT(repo.getQdCompBusInterfaceInstanceRef("c", "m"), ::testing::ExitedWithCode(255),
              "^ERROR: \\[Morvane 83-9999\\] Equivalency violation found for "
              "getQdCompBusInterfaceInstanceRef !=a: c/m\n$");
}

}  // namespace
}  // namespace qd
