// Component and port queries: the type, direction and mode of a port named by an interface, a
// physical port or both (compared with the cache), the kind tests, the attribute readers,
// adapters, widths and direct connections, AXI ids and interconnect ports.
#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstdint>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"
#include "tests/support/XPathOracle.h"

namespace qd {
namespace {

// One accelerator with every way of naming a port, and one component the cache cannot build
// (a reset without its clock) so that its queries answer from XPath alone.
char const* const kPorts =
    "<qd:component qd:name=\"acc\" qd:type=\"accelerator\">"
    "<qd:busInterface qd:name=\"ap_clk\" qd:busTypeRef=\"clock\" qd:direction=\"in\""
    " qd:port=\"clk_pin\"/>"
    "<qd:busInterface qd:name=\"m_axi\" qd:busTypeRef=\"aximm\" qd:mode=\"master\"/>"
    "<qd:busInterface qd:name=\"s_ctrl\" qd:busTypeRef=\"axilite\" qd:mode=\"slave\""
    " qd:direction=\"inout\"/>"
    "<qd:busInterface qd:name=\"both\" qd:busTypeRef=\"bram\" qd:mode=\"master\""
    " qd:direction=\"out\"/>"
    "<qd:port qd:name=\"both\" qd:direction=\"in\" qd:portTypeRef=\"data\"/>"
    "<qd:port qd:name=\"clk_pin\" qd:direction=\"in\" qd:portTypeRef=\"clk_wire\"/>"
    "<qd:port qd:name=\"din\" qd:direction=\"in\"/>"
    "<qd:port qd:name=\"dout\" qd:direction=\"out\"/>"
    "<qd:port qd:name=\"dio\" qd:direction=\"inout\"/>"
    "</qd:component>"
    "<qd:component qd:name=\"uncached\" qd:type=\"accelerator\">"
    "<qd:busInterface qd:name=\"rst\" qd:busTypeRef=\"reset\" qd:direction=\"in\"/>"
    "<qd:port qd:name=\"p\" qd:direction=\"in\"/>"
    "</qd:component>"
    "<qd:component qd:name=\"odd\" qd:type=\"monitor\">"
    "<qd:busInterface qd:name=\"clk\" qd:busTypeRef=\"clock\" qd:direction=\"in\"/>"
    "<qd:busInterface qd:name=\"SLOT\" qd:busTypeRef=\"aximm\" qd:mode=\"monitor\""
    " qd:clockRef=\"clk\"/>"
    "</qd:component>";

class QDSRepoPortsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(dir.file("ports.xml"))
        << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">" << kPorts << "</qd:repository>";
    qvtest::stderrOf([&] { repo = std::make_unique<QDSRepo>(dir.file("ports.xml"), 0); });
    ASSERT_EQ(repo->components.count("uncached"), 0u);
    ASSERT_EQ(repo->components.count("odd"), 1u);
  }

  qvtest::SilentLibxml silent;
  qvtest::TempDir dir;
  std::unique_ptr<QDSRepo> repo;
};

TEST_F(QDSRepoPortsTest, NameThatIsBothAnInterfaceAndAPhysicalPortIsTheInterface) {
  EXPECT_EQ(repo->getQdCompPortType("acc", "both"), "bram");
  EXPECT_EQ(repo->getQdCompPortDir("acc", "both"), "out");
  EXPECT_EQ(repo->getQdCompPortMode("acc", "both"), "master");
}

TEST_F(QDSRepoPortsTest, TypeOfAnInterfaceIsItsBusType) {
  EXPECT_EQ(repo->getQdCompPortType("acc", "m_axi"), "aximm");
  EXPECT_EQ(repo->getQdCompPortType("acc", "ap_clk"), "clock");
}

TEST_F(QDSRepoPortsTest, TypeByThePhysicalPortOfAnInterfaceIsThePortsOwnType) {
  // The name passes isQdCompPort through the interface's qd:port, but the bus type is read by
  // interface name, finds nothing, and the physical port's qd:portTypeRef answers.
  EXPECT_EQ(repo->getQdCompPortType("acc", "clk_pin"), "clk_wire");
}

TEST_F(QDSRepoPortsTest, PhysicalPortWithoutAnInterfaceIsAWire) {
  EXPECT_EQ(repo->getQdCompPortType("acc", "din"), "wire");
  EXPECT_EQ(repo->getQdCompPortType("uncached", "p"), "wire");
}

TEST_F(QDSRepoPortsTest, UnknownPortHasNoTypeWithAWarning) {
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdCompPortType("acc", "nope"), ""); }),
            "WARNING: [Morvane 83-1002] Component type 'acc' has no port 'nope' type definition\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdCompPortType("absent", "x"), ""); }),
            "WARNING: [Morvane 83-1002] Component type 'absent' has no port 'x' type "
            "definition\n");
}

TEST_F(QDSRepoPortsTest, DirectionOfAnInterfaceThenOfThePhysicalPort) {
  EXPECT_EQ(repo->getQdCompPortDir("acc", "s_ctrl"), "inout");
  EXPECT_EQ(repo->getQdCompPortDir("acc", "dout"), "out");
  EXPECT_EQ(repo->getQdCompPortDir("uncached", "rst"), "in");
}

TEST_F(QDSRepoPortsTest, InterfaceWithoutDirectionAndNoPortHasNoneWithAWarning) {
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdCompPortDir("acc", "m_axi"), ""); }),
            "WARNING: [Morvane 83-1003] Component type 'acc' has no port 'm_axi' direction "
            "definition\n");
}

TEST_F(QDSRepoPortsTest, ModeOfAnInterfaceIsItsOwn) {
  EXPECT_EQ(repo->getQdCompPortMode("acc", "m_axi"), "master");
  EXPECT_EQ(repo->getQdCompPortMode("acc", "s_ctrl"), "slave");
}

TEST_F(QDSRepoPortsTest, PhysicalPortWithDirectionInHasModeMaster) {
  EXPECT_EQ(repo->getQdCompPortMode("acc", "din"), "master");
  EXPECT_EQ(repo->getQdCompPortMode("acc", "dout"), "slave");
  EXPECT_EQ(repo->getQdCompPortMode("acc", "dio"), "slave");
  EXPECT_EQ(repo->getQdCompPortMode("uncached", "p"), "master");
}

TEST_F(QDSRepoPortsTest, InterfaceWithoutModeAndNoPortHasNoneWithAWarning) {
  // The cache would call it a slave; it is not asked, since it cannot tell an absent mode.
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdCompPortMode("acc", "ap_clk"), ""); }),
            "WARNING: [Morvane 83-1004] Component type 'acc' has no port 'ap_clk' mode "
            "definition\n");
}

TEST_F(QDSRepoPortsTest, EmptyPortNameIsNotCheckedAgainstTheCache) {
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdCompPortDir("acc", ""), ""); }),
            "WARNING: [Morvane 83-1003] Component type 'acc' has no port '' direction "
            "definition\n");
}

TEST_F(QDSRepoPortsTest, ModeOutsideMasterAndSlaveEndsTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  // The cache keeps any mode but "slave" as a master.
  EXPECT_EXIT(repo->getQdCompPortMode("odd", "SLOT"), ::testing::ExitedWithCode(255),
              "^ERROR: \\[Morvane 83-9999\\] Equivalency violation found for "
              "getQdCompPortMode monitor!=master: odd/SLOT\n$");
}

TEST_F(QDSRepoPortsTest, NumPortsOfAComponentNotInTheFileIsMinusOneWithoutACheck) {
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdCompNumPorts("absent"), -1); }), "");
  // Counted by XPath with nothing to check; physical ports are not among the indexed ports.
  EXPECT_EQ(repo->getQdCompNumPorts("uncached"), 1);
  EXPECT_EQ(repo->getQdCompNumPorts("acc"), 4);
}

TEST_F(QDSRepoPortsTest, PhysicalPortReadersAnswerByName) {
  EXPECT_TRUE(repo->isQdCompQdPort("acc", "din"));
  EXPECT_FALSE(repo->isQdCompQdPort("acc", "m_axi"));
  EXPECT_EQ(repo->getQdCompQdPortDir("acc", "dio"), "inout");
  EXPECT_EQ(repo->getQdCompPortStringAttr("acc", "both", "qd:portTypeRef"), "data");
  EXPECT_EQ(repo->getQdCompPortStringAttr("acc", "nope", "qd:portTypeRef"), "");
  EXPECT_EQ(repo->getQdCompBusInterfaceStringAttr("acc", "s_ctrl", "qd:mode"), "slave");
  EXPECT_EQ(repo->getQdCompBusInterfaceStringAttr("acc", "din", "qd:mode"), "");
}

// A platform with memory ports of every kind and an interconnect instance, an accelerator with
// its generated adapter (and three adapters that break the adapter's rules), a component the cache
// cannot build (its reset names no clock) with packed groups, and the adaptee's function.
char const* const kFamily =
    "<qd:component qd:name=\"plat\" qd:type=\"platform\" qd:LUT=\"1000\">"
    "<qd:platformInfo><qd:systemClocks qd:defaultClock=\"0\">"
    "<qd:clock qd:name=\"clk0\" qd:id=\"0\" qd:frequency=\"100.000000\" qd:status=\"fixed\"/>"
    "<qd:clock qd:name=\"CPU\" qd:frequency=\"1200.000000\" qd:status=\"reserved\""
    " qd:componentRef=\"ps_cpu\" qd:instanceRef=\"cpu0\"/>"
    "</qd:systemClocks></qd:platformInfo>"
    "<qd:busInterface qd:name=\"clk0\" qd:busTypeRef=\"clock\" qd:mode=\"master\"/>"
    "<qd:busInterface qd:name=\"HP0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:memport=\"S_AXI_HP\" qd:clockRef=\"clk0\"/>"
    "<qd:busInterface qd:name=\"HPC0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:memport=\"S_AXI_HPC\" qd:clockRef=\"clk0\"/>"
    "<qd:busInterface qd:name=\"ACP\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:memport=\"S_AXI_ACP\" qd:clockRef=\"clk0\" qd:cacheCoherent=\"true\"/>"
    "<qd:busInterface qd:name=\"GP0\" qd:busTypeRef=\"aximm\" qd:mode=\"master\""
    " qd:memport=\"M_AXI_GP\" qd:clockRef=\"clk0\" qd:resetRef=\"rst0\"/>"
    "<qd:busInterface qd:name=\"MIG0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:memport=\"MIG\" qd:clockRef=\"clk0\" qd:resetRef=\"rst0\"/>"
    "<qd:busInterface qd:name=\"DDR\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:memport=\"memss\" qd:maxMasters=\"15\" qd:clockRef=\"clk0\" qd:resetRef=\"rst1\""
    " qd:regionSize=\"0x8000\"/>"
    "<qd:busInterface qd:name=\"CPU_MEM\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:memport=\"memss\" qd:componentRef=\"ps_cpu\" qd:clockRef=\"clk0\"/>"
    "<qd:busInterface qd:name=\"PLAIN\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:clockRef=\"clk0\"/>"
    "<qd:busInterface qd:name=\"S0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\" qd:memport=\"MIG\""
    " qd:instanceRef=\"ic\" qd:componentRef=\"axi_interconnect\" qd:clockRef=\"clk0\"/>"
    "<qd:busInterface qd:name=\"S1\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\" qd:memport=\"MIG\""
    " qd:instanceRef=\"ic\" qd:componentRef=\"axi_interconnect\" qd:clockRef=\"clk0\"/>"
    "<qd:busInterface qd:name=\"M0\" qd:busTypeRef=\"aximm\" qd:mode=\"master\" qd:memport=\"MIG\""
    " qd:instanceRef=\"ic\" qd:componentRef=\"axi_interconnect\" qd:clockRef=\"clk0\"/>"
    "<qd:busInterface qd:name=\"ic_clk\" qd:busTypeRef=\"clock\" qd:mode=\"slave\""
    " qd:instanceRef=\"ic\"/>"
    "<qd:busInterface qd:name=\"AXIS0\" qd:busTypeRef=\"axis\" qd:mode=\"master\""
    " qd:slr=\"SLR2\" qd:clockRef=\"clk0\"/>"
    "<qd:busInterface qd:name=\"aie0\" qd:busTypeRef=\"aie_config\" qd:mode=\"master\""
    " qd:connectedInstanceRef=\"ai_engine_0\"/>"
    "</qd:component>"
    "<qd:component qd:name=\"core\" qd:type=\"accelerator\" qd:adapterCompRef=\"core_adapter\""
    " qd:componentRef=\"core_ip\">"
    "<qd:busInterface qd:name=\"ap_clk\" qd:busTypeRef=\"clock\" qd:mode=\"slave\""
    " qd:direction=\"in\" qd:port=\"clk_pin\"/>"
    "<qd:busInterface qd:name=\"buf_i\" qd:busTypeRef=\"bram\" qd:mode=\"slave\""
    " qd:direction=\"in\"/>"
    "<qd:busInterface qd:name=\"buf_o\" qd:busTypeRef=\"bram\" qd:mode=\"master\""
    " qd:direction=\"out\"/>"
    "<qd:busInterface qd:name=\"lone_i\" qd:busTypeRef=\"acc_fifo_read\" qd:mode=\"slave\""
    " qd:direction=\"in\"/>"
    "<qd:busInterface qd:name=\"ab\" qd:busTypeRef=\"axis\" qd:mode=\"master\""
    " qd:direction=\"out\" qd:dataWidth=\"2056\" qd:clockRef=\"ap_clk\"/>"
    "<qd:busInterface qd:name=\"strm\" qd:busTypeRef=\"axis\" qd:mode=\"slave\""
    " qd:dataWidth=\"64\" qd:hasTlast=\"true\" qd:clockRef=\"ap_clk\"/>"
    "<qd:busInterface qd:name=\"pk\" qd:busTypeRef=\"axis\" qd:mode=\"master\""
    " qd:dataPack=\"true\" qd:dataWidth=\"8\" qd:clockRef=\"ap_clk\"/>"
    "<qd:busInterface qd:name=\"ctl\" qd:busTypeRef=\"register\" qd:mode=\"slave\""
    " qd:dataPack=\"true\" qd:dataWidth=\"32\" qd:return=\"true\"/>"
    "<qd:busInterface qd:name=\"nowidth\" qd:busTypeRef=\"fifo\" qd:mode=\"slave\"/>"
    "<qd:busInterface qd:name=\"f33\" qd:busTypeRef=\"fifo\" qd:mode=\"slave\""
    " qd:dataWidth=\"33\"/>"
    "<qd:busInterface qd:name=\"axis33\" qd:busTypeRef=\"axis\" qd:mode=\"slave\""
    " qd:dataWidth=\"33\" qd:clockRef=\"ap_clk\"/>"
    "<qd:busInterface qd:name=\"mem\" qd:busTypeRef=\"bram\" qd:mode=\"slave\" qd:dataWidth=\"64\""
    " qd:regionSize=\"0x1F00\" qd:numElements=\"1024\" qd:capacity=\"65536\""
    " qd:bufferDepth=\"2\" qd:arraySize=\"16\" qd:sptag=\"BRAM0\"/>"
    "<qd:port qd:name=\"clk_pin\" qd:direction=\"in\" qd:width=\"1\" qd:portTypeRef=\"clk\"/>"
    "<qd:port qd:name=\"led\" qd:direction=\"out\" qd:width=\"4\"/>"
    "</qd:component>"
    "<qd:component qd:name=\"core_adapter\" qd:type=\"accelerator\" qd:adapteeCompRef=\"core\""
    " qd:adapterType=\"system_compiler_generated_adapter_v2\">"
    "<qd:busInterface qd:name=\"S_AXI_CTRL\" qd:busTypeRef=\"axilite\" qd:mode=\"slave\">"
    "<qd:reg qd:name=\"len\"/></qd:busInterface>"
    "<qd:busInterface qd:name=\"M_AXIS_OUT\" qd:busTypeRef=\"axis\" qd:mode=\"master\""
    " qd:hlsname=\"pk\" qd:clockRef=\"aclk\"/>"
    "<qd:busInterface qd:name=\"aclk\" qd:busTypeRef=\"clock\" qd:direction=\"in\"/>"
    "</qd:component>"
    "<qd:component qd:name=\"typed_adapter\" qd:type=\"adapter\" qd:adapteeCompRef=\"core\""
    " qd:adapterType=\"system_compiler_generated_adapter_v2\"/>"
    "<qd:component qd:name=\"lone_adapter\" qd:type=\"accelerator\""
    " qd:adapterType=\"system_compiler_generated_adapter_v2\"/>"
    "<qd:component qd:name=\"twofold_adapter\" qd:type=\"accelerator\" qd:adapteeCompRef=\"core\""
    " qd:adapterCompRef=\"core_adapter\" qd:adapterType=\"system_compiler_generated_adapter_v2\"/>"
    "<qd:component qd:name=\"mon\" qd:type=\"monitor\"/>"
    "<qd:component qd:name=\"xbar\" qd:type=\"interconnect\"/>"
    "<qd:component qd:name=\"sc\" qd:type=\"smartconnect\"/>"
    "<qd:component qd:name=\"packer\" qd:type=\"generic\">"
    "<qd:busInterface qd:name=\"r\" qd:busTypeRef=\"reset\"/>"
    "<qd:busInterface qd:name=\"grp\" qd:busTypeRef=\"axis\" qd:busInterfaceRef=\"inner\""
    " qd:dataPack=\"true\"/>"
    "<qd:busInterface qd:name=\"loose\" qd:busTypeRef=\"axis\" qd:busInterfaceRef=\"inner2\"/>"
    "</qd:component>"
    "<qd:fcnMap qd:fcnName=\"core\" qd:componentRef=\"core\">"
    "<qd:arg qd:name=\"s\" qd:busInterfaceRef=\"strm\" qd:dataPack=\"true\""
    " qd:dataPackWidth=\"128\" qd:portInterfaceType=\"axis_tlast\"/>"
    "<qd:arg qd:name=\"p\" qd:busInterfaceRef=\"pk\" qd:dataPackWidth=\"96\"/>"
    "<qd:arg qd:name=\"n\" qd:busInterfaceRef=\"nowidth\" qd:dataWidth=\"24\"/>"
    "<qd:ctrlReg qd:type=\"generic_axi_lite\"/>"
    "</qd:fcnMap>"
    "<qd:fcnMap qd:fcnName=\"core_again\" qd:componentRef=\"core\">"
    "<qd:ctrlReg qd:type=\"ap_ctrl_chain\"/>"
    "</qd:fcnMap>"
    "<qd:fcnMap qd:fcnName=\"adapter_fn\" qd:componentRef=\"core_adapter\">"
    "<qd:ctrlReg qd:type=\"ap_ctrl_chain\"/>"
    "</qd:fcnMap>";

class QDSRepoComponentFamilyTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(dir.file("family.xml"))
        << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">" << kFamily << "</qd:repository>";
    qvtest::stderrOf([&] { repo = std::make_unique<QDSRepo>(dir.file("family.xml"), 0); });
    oracle = std::make_unique<qvtest::XPathOracle>(dir.file("family.xml"));
    ASSERT_EQ(repo->components.count("packer"), 0u);
    ASSERT_EQ(repo->components.count("core"), 1u);
    ASSERT_EQ(repo->components.count("plat"), 1u);
  }

  // What `call` logged, with libxml2's own lines silenced.
  template <class Call>
  std::string logOf(Call call) {
    return qvtest::stderrOf(call);
  }

  qvtest::SilentLibxml silent;
  qvtest::TempDir dir;
  std::unique_ptr<QDSRepo> repo;
  std::unique_ptr<qvtest::XPathOracle> oracle;
};

TEST_F(QDSRepoComponentFamilyTest, KindsOfComponent) {
  EXPECT_TRUE(repo->isQdMonitorComp("mon"));
  EXPECT_FALSE(repo->isQdMonitorComp("xbar"));
  EXPECT_TRUE(repo->isQdInterconnectComp("xbar"));
  EXPECT_FALSE(repo->isQdInterconnectComp("sc"));
  EXPECT_TRUE(repo->isQdSmartConnectComp("sc"));
  EXPECT_FALSE(repo->isQdSmartConnectComp("absent"));
  EXPECT_TRUE(isQdCompType("sc", "smartconnect", repo->doc));
  EXPECT_FALSE(isQdCompType("sc", "interconnect", repo->doc));
  EXPECT_EQ(isQdCompType("mon", "monitor", repo->doc),
            oracle->boolean("boolean(/qd:repository/qd:component[@qd:name='mon' and "
                            "@qd:type='monitor'])"));
  EXPECT_TRUE(repo->isQdCompWithAdapter("core"));
  EXPECT_FALSE(repo->isQdCompWithAdapter("core_adapter"));
}

TEST_F(QDSRepoComponentFamilyTest, PortIndexIsValidFromZeroToBelowTheCount) {
  EXPECT_EQ(logOf([&] { EXPECT_TRUE(repo->isValidQdCompPortIndex("core", 0)); }), "");
  EXPECT_EQ(logOf([&] { EXPECT_TRUE(repo->isValidQdCompPortIndex("core", 11)); }), "");
  EXPECT_EQ(logOf([&] { EXPECT_FALSE(repo->isValidQdCompPortIndex("core", -1)); }),
            "WARNING: [Morvane 83-1001]  Index -1 out of range for component core\n");
  EXPECT_EQ(logOf([&] { EXPECT_FALSE(repo->isValidQdCompPortIndex("absent", 0)); }),
            "WARNING: [Morvane 83-1001]  Index 0 out of range for component absent\n");
}

TEST_F(QDSRepoComponentFamilyTest, InterfaceAttributeByIndex) {
  EXPECT_EQ(getQdCompBusInterfaceStringAttrByIndex(*repo, "core", 5, "qd:dataWidth", "t"), "64");
  EXPECT_EQ(getQdCompBusInterfaceStringAttrByIndex(*repo, "core", 5, "qd:direction", "t"), "");
  EXPECT_EQ(getQdCompBusInterfaceStringAttrByIndex(*repo, "core", 5, "qd:dataWidth", "t"),
            oracle->string("(/qd:repository/qd:component[@qd:name='core'][1]//qd:busInterface)"
                           "[6]/@qd:dataWidth"));
  EXPECT_EQ(getQdCompBusInterfaceStringAttrByIndex(*repo, "plat", 2, "qd:memport", "t"),
            oracle->string("/qd:repository/qd:component[@qd:name='plat'][1]/qd:busInterface[3]"
                           "/@qd:memport"));
  EXPECT_EQ(logOf([&] {
              EXPECT_EQ(getQdCompBusInterfaceStringAttrByIndex(*repo, "plat", 99, "qd:name", "t"),
                        "");
            }),
            "WARNING: [Morvane 83-1001]  Index 99 out of range for component plat\n");
}

TEST_F(QDSRepoComponentFamilyTest, AdapterAndAdapteeAreTwoDifferentTests) {
  EXPECT_TRUE(repo->isQdAdapterComp("core_adapter"));
  EXPECT_FALSE(repo->isQdAdapterComp("core"));
  EXPECT_TRUE(repo->isQdAdapteeComp("core"));
  EXPECT_FALSE(repo->isQdAdapteeComp("core_adapter"));
  EXPECT_FALSE(repo->isQdAdapterComp("absent"));
  EXPECT_EQ(repo->isQdAdapterComp("core_adapter"),
            oracle->boolean("boolean(/qd:repository/qd:component[@qd:name='core_adapter'][1]/"
                            "@qd:adapteeCompRef)"));
}

TEST_F(QDSRepoComponentFamilyTest, AddressableComponentsHaveAnAximmSlave) {
  EXPECT_TRUE(repo->isAddressableQdComp("plat"));
  EXPECT_FALSE(repo->isAddressableQdComp("core"));
  // The first aximm slave is HP0, which names no region: sscanf finds no number there.
  EXPECT_EQ(repo->getQdCompRegionSize("plat"), 0u);
  EXPECT_EQ(repo->getQdCompRegionSize("core"), 0u);
  EXPECT_EQ(repo->getQdCompPortRegionSize("plat", "DDR"), 0x8000u);
  EXPECT_EQ(repo->getQdCompPortRegionSize("core", "mem"), 0x1F00u);
  EXPECT_EQ(repo->getQdCompPortRegionSize("core", "strm"), 0u);
}

TEST_F(QDSRepoComponentFamilyTest, GeneratedAdapterThatKeepsTheRulesIsOne) {
  EXPECT_TRUE(repo->isQdCompSCAdapter("core_adapter"));
  EXPECT_FALSE(repo->isQdCompSCAdapter("core"));
  // INTERNAL lines show only at the lowest reporting level.
  std::int32_t const level = Log::reportingLevel;
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(logOf([&] { EXPECT_FALSE(repo->isQdCompSCAdapter("")); }),
            "INTERNAL: [Morvane 83-1014]  NULL component type reference \n");
  Log::reportingLevel = level;
}

// The assertion text goes to standard output; the child sends it to standard error so that the
// death test can read it.
#define EXPECT_ADAPTER_ASSERTION(call)      \
  EXPECT_EXIT(                              \
      {                                     \
        dup2(STDERR_FILENO, STDOUT_FILENO); \
        call;                               \
      },                                    \
      ::testing::KilledBySignal(SIGABRT),   \
      "^Assertion failed in \"[^\"]*host/qd/qdrepo/QDSRepoComponents\\.cpp\", line [0-9]+\n$")

TEST_F(QDSRepoComponentFamilyTest, GeneratedAdapterThatIsNoAcceleratorAborts) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_ADAPTER_ASSERTION(repo->isQdCompSCAdapter("typed_adapter"));
}

TEST_F(QDSRepoComponentFamilyTest, GeneratedAdapterWithoutAnAdapteeAborts) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_ADAPTER_ASSERTION(repo->isQdCompSCAdapter("lone_adapter"));
}

TEST_F(QDSRepoComponentFamilyTest, GeneratedAdapterThatIsAlsoAnAdapteeAborts) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_ADAPTER_ASSERTION(repo->isQdCompSCAdapter("twofold_adapter"));
}

TEST_F(QDSRepoComponentFamilyTest, ComponentAttributes) {
  EXPECT_TRUE(repo->isQdCompStringAttr("core", "qd:componentRef"));
  EXPECT_FALSE(repo->isQdCompStringAttr("core", "qd:adapteeCompRef"));
  EXPECT_EQ(repo->getQdCompStringAttr("core", "qd:type"), "accelerator");
  EXPECT_EQ(repo->getQdCompStringAttr("core", "qd:nothing"), "");
  EXPECT_EQ(repo->getQdCompCompRef("core"), "core_ip");
  EXPECT_EQ(repo->getQdCompCompRef("plat"), "");
  EXPECT_EQ(repo->getQdAdapterCompRef("core"), "core_adapter");
  EXPECT_EQ(repo->getQdAdapteeCompRef("core_adapter"), "core");
  EXPECT_EQ(repo->getQdAdapteeCompRef("core"), "");
  EXPECT_EQ(repo->getQdCompCompRef("core"),
            oracle->string("/qd:repository/qd:component[@qd:name='core']/@qd:componentRef"));
  EXPECT_EQ(repo->isQdCompStringAttr("core", "qd:componentRef"),
            oracle->boolean("boolean(/qd:repository/qd:component[@qd:name='core']/"
                            "@qd:componentRef)"));
}

TEST_F(QDSRepoComponentFamilyTest, InterfacesByNameAndByTheirPhysicalPort) {
  EXPECT_TRUE(repo->isQdCompBusInterface("core", "ap_clk"));
  EXPECT_FALSE(repo->isQdCompBusInterface("core", "clk_pin"));
  EXPECT_TRUE(repo->isQdCompBusInterfacePort("core", "clk_pin"));
  EXPECT_FALSE(repo->isQdCompBusInterfacePort("core", "ap_clk"));
  EXPECT_EQ(repo->getQdCompBusInterfacePortName("core", "clk_pin"), "ap_clk");
  EXPECT_EQ(repo->getQdCompBusInterfacePortType("core", "clk_pin"), "clock");
  EXPECT_EQ(repo->getQdCompBusInterfacePortMode("core", "clk_pin"), "slave");
  EXPECT_EQ(repo->getQdCompBusInterfacePortDir("core", "clk_pin"), "in");
  EXPECT_EQ(repo->getQdCompBusInterfacePortType("core", "led"), "");
  EXPECT_EQ(repo->getQdCompBusInterfacePortName("core", "clk_pin"),
            oracle->string("/qd:repository/qd:component[@qd:name='core'][1]/"
                           "qd:busInterface[@qd:port='clk_pin']/@qd:name"));
}

TEST_F(QDSRepoComponentFamilyTest, AttributeBehindAPhysicalPortIsWrittenSoThatItNeverAnswers) {
  EXPECT_EQ(repo->getQdCompBusInterfacePortAttr("core", "clk_pin", "qd:name"), "");
  EXPECT_THROW(oracle->string("/qd:repository/qd:component[@qd:name='core'][1]/"
                              "qd:busInterface[@qd:port='clk_pin']/@'qd:name'"),
               std::runtime_error);
}

TEST_F(QDSRepoComponentFamilyTest, ResolvingAPortNamePrefersThePhysicalPort) {
  EXPECT_EQ(repo->resolveQdCompPortToBusInterface("core", "clk_pin"), "ap_clk");
  EXPECT_EQ(repo->resolveQdCompPortToBusInterface("core", "strm"), "strm");
  EXPECT_EQ(repo->resolveQdCompPortToBusInterface("core", "led"), "");
  EXPECT_EQ(repo->resolveQdCompPortToBusInterface("absent", "strm"), "");
  EXPECT_EQ(repo->getQdCompBusInterfaceStrAttr("core", "clk_pin", "qd:direction"), "in");
  EXPECT_EQ(repo->getQdCompBusInterfaceStrAttr("core", "led", "qd:direction"), "");
  EXPECT_EQ(repo->getQdCompBusIntfAttr("core", "strm", "qd:dataWidth"), "64");
  EXPECT_EQ(repo->getQdCompBusIntfAttr("core", "led", "qd:width"), "4");
  EXPECT_EQ(repo->getQdCompBusIntfAttr("core", "led", "qd:nothing"), "");
}

TEST_F(QDSRepoComponentFamilyTest, IthPortAttributeIsGuardedByItsPresence) {
  EXPECT_TRUE(repo->isValidQdCompIthPortAttr("core", 0, "qd:port"));
  EXPECT_FALSE(repo->isValidQdCompIthPortAttr("core", 1, "qd:port"));
  EXPECT_EQ(repo->getIthQdCompBusInterfacePort("core", 0), "clk_pin");
  EXPECT_EQ(repo->getIthQdCompBusInterfacePort("core", 1), "");
  EXPECT_EQ(getQdCompBusInterfaceIntAttrByIndex(*repo, "core", 4, "qd:dataWidth", "t"), 2056);
  EXPECT_EQ(getQdCompBusInterfaceIntAttrByIndex(*repo, "core", 0, "qd:dataWidth", "t"), -1);
  // An adaptee counts the interfaces of all its descendants.
  EXPECT_EQ(repo->isValidQdCompIthPortAttr("core", 4, "qd:dataWidth"),
            oracle->boolean("boolean((/qd:repository/qd:component[@qd:name='core'][1]"
                            "//qd:busInterface)[5]/@qd:dataWidth)"));
  EXPECT_EQ(repo->isValidQdCompIthPortAttr("plat", 1, "qd:memport"),
            oracle->boolean("boolean(/qd:repository/qd:component[@qd:name='plat'][1]"
                            "/qd:busInterface[2]/@qd:memport)"));
}

TEST_F(QDSRepoComponentFamilyTest, IndexEqualToThePortCountIsOutOfRange) {
  int const count = repo->getQdCompNumPorts("core");
  EXPECT_EQ(count, 12);
  EXPECT_EQ(logOf([&] { EXPECT_EQ(repo->getQdCompPortName("core", count), ""); }),
            "WARNING: [Morvane 83-1001]  Index 12 out of range for component core\n");
  EXPECT_EQ(logOf([&] { EXPECT_FALSE(repo->isQdCompFifoPort("core", count)); }),
            "WARNING: [Morvane 83-1001]  Index 12 out of range for component core\n");
  EXPECT_EQ(logOf([&] { EXPECT_EQ(repo->getQdCompPortName("core", count - 1), "mem"); }), "");
}

TEST_F(QDSRepoComponentFamilyTest, KindTestsByIndexReadTheBusTypeAndMode) {
  struct Row {
    int index;
    char const* kinds;  // the tests that hold, by their letters below
  };
  // c clock, r reset, i interrupt, g register, M master, S slave, x aximm, l axilite, s axis,
  // b bram, f fifo
  Row const rows[] = {{0, "cS"}, {1, "bS"}, {2, "bM"}, {3, "fS"}, {4, "sM"},  {5, "sS"},
                      {6, "sM"}, {7, "gS"}, {8, "fS"}, {9, "fS"}, {10, "sS"}, {11, "bS"}};
  for (Row const& row : rows) {
    std::string const kinds = row.kinds;
    auto has = [&](char letter) { return kinds.find(letter) != std::string::npos; };
    SCOPED_TRACE(row.index);
    EXPECT_EQ(repo->isQdCompClockPort("core", row.index), has('c'));
    EXPECT_EQ(repo->isQdCompResetPort("core", row.index), has('r'));
    EXPECT_EQ(repo->isQdCompInterruptPort("core", row.index), has('i'));
    EXPECT_EQ(repo->isQdCompRegisterPort("core", row.index), has('g'));
    EXPECT_EQ(repo->isQdCompMasterPort("core", row.index), has('M'));
    EXPECT_EQ(repo->isQdCompSlavePort("core", row.index), has('S'));
    EXPECT_EQ(repo->isQdCompAxiPort("core", row.index), has('x'));
    EXPECT_EQ(repo->isQdCompAxiSlavePort("core", row.index), has('x') && has('S'));
    EXPECT_EQ(repo->isQdCompAxiMasterPort("core", row.index), has('x') && has('M'));
    EXPECT_EQ(repo->isQdCompAxilitePort("core", row.index), has('l'));
    EXPECT_EQ(repo->isQdCompAxisPort("core", row.index), has('s'));
    EXPECT_EQ(repo->isQdCompAxisSlavePort("core", row.index), has('s') && has('S'));
    EXPECT_EQ(repo->isQdCompAxisMasterPort("core", row.index), has('s') && has('M'));
    EXPECT_EQ(repo->isQdCompBramPort("core", row.index), has('b'));
    EXPECT_EQ(repo->isQdCompFifoPort("core", row.index), has('f'));
  }
  EXPECT_TRUE(repo->isQdCompAxiSlavePort("plat", 1));
  EXPECT_TRUE(repo->isQdCompAxiMasterPort("plat", 4));
  EXPECT_TRUE(repo->isQdCompAxilitePort("core_adapter", 0));
  EXPECT_TRUE(repo->isQdCompResetPort("packer", 0));
  EXPECT_EQ(repo->getQdCompPortMode("core", 2), "master");
  EXPECT_EQ(repo->getQdCompPortDir("core", 2), "out");
  EXPECT_EQ(repo->getQdCompPortDir("core", 4), "out");
  EXPECT_EQ(repo->getQdCompPortDir("core", 5), "");
}

TEST_F(QDSRepoComponentFamilyTest, KindTestsByNameReadTheBusTypeAndMode) {
  EXPECT_TRUE(repo->isQdCompBramPort("core", "buf_i"));
  EXPECT_TRUE(repo->isQdCompFifoPort("core", "lone_i"));
  EXPECT_TRUE(repo->isQdCompFifoPort("core", "f33"));
  EXPECT_TRUE(repo->isQdCompRegisterPort("core", "ctl"));
  EXPECT_TRUE(repo->isQdCompAxisPort("core", "strm"));
  EXPECT_TRUE(repo->isQdCompAxisSlavePort("core", "strm"));
  EXPECT_FALSE(repo->isQdCompAxisMasterPort("core", "strm"));
  EXPECT_TRUE(repo->isQdCompAxisMasterPort("core", "pk"));
  EXPECT_TRUE(repo->isQdCompMasterPort("core", "buf_o"));
  EXPECT_TRUE(repo->isQdCompSlavePort("core", "buf_i"));
  EXPECT_TRUE(repo->isQdCompAxilitePort("core_adapter", "S_AXI_CTRL"));
  EXPECT_TRUE(repo->isQdCompResetPort("packer", "r"));
  EXPECT_FALSE(repo->isQdCompInterruptPort("core", "strm"));
  // The AXI compounds by name take axis as well as aximm, as isQdCompAxiPort by name does.
  EXPECT_TRUE(repo->isQdCompAxiSlavePort("core", "strm"));
  EXPECT_TRUE(repo->isQdCompAxiMasterPort("plat", "GP0"));
  EXPECT_FALSE(repo->isQdCompAxiMasterPort("plat", "HP0"));
  EXPECT_EQ(logOf([&] { EXPECT_FALSE(repo->isQdCompBramPort("core", "nope")); }),
            "WARNING: [Morvane 83-1002] Component type 'core' has no port 'nope' type "
            "definition\n");
}

TEST_F(QDSRepoComponentFamilyTest, MemoryPortKindsByTheirMemport) {
  EXPECT_TRUE(repo->isQdCompAcpPort("plat", "ACP"));
  EXPECT_TRUE(repo->isQdCompGpPort("plat", "GP0"));
  EXPECT_TRUE(repo->isQdCompHpPort("plat", "HP0"));
  EXPECT_FALSE(repo->isQdCompHpPort("plat", "HPC0"));
  EXPECT_TRUE(repo->isQdCompHpcPort("plat", "HPC0"));
  EXPECT_TRUE(repo->isQdCompMigPort("plat", "MIG0"));
  EXPECT_FALSE(repo->isQdCompMigPort("plat", "DDR"));
  EXPECT_TRUE(repo->is_qdmemport_type("plat", "DDR", "memss"));
  EXPECT_EQ(repo->isQdCompMigPort("plat", "MIG0"),
            oracle->boolean("boolean(/qd:repository/qd:component[@qd:name='plat'][1]/"
                            "qd:busInterface[@qd:name='MIG0' and @qd:memport='MIG'])"));
  EXPECT_TRUE(repo->isQdPlatformCompProcessor("plat", "ACP"));
  EXPECT_FALSE(repo->isQdPlatformCompProcessor("plat", "MIG0"));
  EXPECT_FALSE(repo->isQdPlatformCompProcessor("plat", "PLAIN"));
  EXPECT_FALSE(repo->isQdPlatformCompProcessor("core", "strm"));
  EXPECT_TRUE(repo->isCoherentQdCompPort("plat", "ACP"));
  EXPECT_FALSE(repo->isCoherentQdCompPort("plat", "HP0"));
}

TEST_F(QDSRepoComponentFamilyTest, PlatformAxisPortsAndTheirSlr) {
  EXPECT_TRUE(repo->isQdCompPlatformAxisPort("plat", "AXIS0"));
  EXPECT_FALSE(repo->isQdCompPlatformAxisPort("core", "strm"));
  EXPECT_EQ(repo->getQdCompPlatformAxisPortSlr("plat", "AXIS0"), "SLR2");
  EXPECT_EQ(repo->getQdCompPlatformAxisPortSlr("plat", "HP0"), "");
}

TEST_F(QDSRepoComponentFamilyTest, HlsInoutPortsComeInPairs) {
  EXPECT_TRUE(repo->isQdCompHlsInoutPort("core", 1));
  EXPECT_TRUE(repo->isQdCompHlsInoutPort("core", 2));
  EXPECT_FALSE(repo->isQdCompHlsInoutPort("core", 3));          // lone_i: no "lone_o" after it
  EXPECT_FALSE(repo->isQdCompHlsInoutPort("core", 4));          // "ab": fewer than three characters
  EXPECT_FALSE(repo->isQdCompHlsInoutPort("core_adapter", 0));  // no adapter of its own
  EXPECT_TRUE(isQdCompWithAdapterHlsInoutPort("core", 1, *repo));
}

TEST_F(QDSRepoComponentFamilyTest, ReturnTlastAndClockResetReferences) {
  EXPECT_TRUE(repo->isQdCompPortReturnType("core", "ctl"));
  EXPECT_FALSE(repo->isQdCompPortReturnType("core", "strm"));
  EXPECT_TRUE(repo->qdCompAxisPortHasTlast("core", "strm"));
  EXPECT_FALSE(repo->qdCompAxisPortHasTlast("core", "pk"));
  EXPECT_TRUE(repo->isAxiClockRef("plat", "clk0"));
  EXPECT_FALSE(repo->isAxiClockRef("plat", "ic_clk"));
  EXPECT_TRUE(repo->isAxiResetRef("plat", "rst0"));
  EXPECT_FALSE(repo->isAxiResetRef("plat", "clk0"));
  EXPECT_EQ(repo->getQdPortClockRef("plat", "GP0"), "clk0");
  EXPECT_EQ(repo->getQdPortResetRef("plat", "GP0"), "rst0");
  EXPECT_EQ(repo->getQdPortResetRef("plat", "HP0"), "");
  EXPECT_EQ(repo->getQdCompAxiPortClockPort("plat", "GP0"), "clk0");
  EXPECT_EQ(repo->getQdCompAxiPortResetPort("plat", "MIG0"), "rst0");
  EXPECT_EQ(repo->getQdCompAxiPortClockPort("plat", "ic_clk"), "");
  EXPECT_EQ(repo->getAxiResetRefsForAxiClockRef("plat", "clk0"),
            (std::vector<std::string>{"rst0", "rst1"}));
  EXPECT_EQ(repo->getAxiResetRefsForAxiClockRef("plat", "none"), std::vector<std::string>{});
  EXPECT_EQ(repo->getAxiClockRefForAxiReset("plat", "rst1"), "clk0");
  EXPECT_EQ(repo->getAxiResetRefForAxiClock("plat", "clk0"), "rst0");
  EXPECT_EQ(repo->getIthCompClkSlavePortForInst("plat", "ic", 0), "ic_clk");
  EXPECT_EQ(repo->getIthCompClkSlavePortForInst("plat", "ic", 1), "");
  EXPECT_EQ(repo->getIthCompClkSlavePortForInst("plat", "ic", 0),
            oracle->string("/qd:repository/qd:component[@qd:name='plat'][1]/qd:busInterface["
                           "@qd:busTypeRef='clock' and @qd:mode='slave' and "
                           "@qd:instanceRef='ic'][1]/@qd:name"));
}

TEST_F(QDSRepoComponentFamilyTest, NameOfAPackedInterfacesInnerPortIsAPort) {
  EXPECT_TRUE(repo->isQdCompPort("packer", "inner"));
  EXPECT_FALSE(repo->isQdCompPort("packer", "inner2"));
  EXPECT_TRUE(repo->isQdCompPort("packer", "loose"));
}

TEST_F(QDSRepoComponentFamilyTest, PackedInnerNameIsAPortOnACachedComponentToo) {
  std::ofstream(dir.file("cached.xml"))
      << "<qd:repository xmlns:qd=\"urn:quarrix:qd\"><qd:component qd:name=\"c\">"
         "<qd:busInterface qd:name=\"grp\" qd:busTypeRef=\"bram\" qd:busInterfaceRef=\"inner\""
         " qd:dataPack=\"true\"/></qd:component></qd:repository>";
  std::unique_ptr<QDSRepo> made;
  qvtest::stderrOf([&] { made = std::make_unique<QDSRepo>(dir.file("cached.xml"), 0); });
  ASSERT_EQ(made->components.count("c"), 1u);
  // The cache is compared on the interface names and ports only, which it knows; the packed
  // group's inner name comes after that comparison.
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_TRUE(made->isQdCompPort("c", "inner")); }), "");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_TRUE(made->isQdCompPort("c", "grp")); }), "");
}

TEST_F(QDSRepoComponentFamilyTest, PackedPortsAndTheirWidths) {
  EXPECT_TRUE(repo->qdCompPortIsPacked("core", "pk"));    // its own qd:dataPack
  EXPECT_TRUE(repo->qdCompPortIsPacked("core", "strm"));  // its function's argument
  EXPECT_FALSE(repo->qdCompPortIsPacked("core", "ab"));
  EXPECT_FALSE(repo->qdCompPortIsPacked("core", "nope"));
  EXPECT_TRUE(repo->qdCompIthPortIsPacked("core", 6));
  EXPECT_FALSE(repo->qdCompIthPortIsPacked("core", 4));
  EXPECT_EQ(repo->getQdCompPortPackedDataWidth("core", "pk"), 96);
  EXPECT_EQ(repo->getQdCompPortPackedDataWidth("core", "strm"), 128);
  EXPECT_EQ(repo->getQdCompPortPackedDataWidth("core", "ab"), -1);
  EXPECT_EQ(repo->getQdCompPortDataWidth("core", "pk"), 96);
  EXPECT_EQ(repo->getQdCompPortDataWidth("core", "ctl"), 32);  // a register keeps its width
  EXPECT_EQ(repo->getQdCompPortDataWidth("core", "ab"), 2056);
  EXPECT_EQ(repo->getQdCompPortDataWidth("core", "nowidth"), 24);  // from the function
  EXPECT_EQ(repo->getQdCompPortDataWidth("core", "nope"), -1);
  EXPECT_EQ(repo->getQdCompPortDataWidth("core", "nowidth"),
            oracle->integer("number(/qd:repository/qd:fcnMap[@qd:componentRef='core']/"
                            "qd:arg[@qd:busInterfaceRef='nowidth'][1]/@qd:dataWidth)"));
  EXPECT_EQ(repo->getQdCompPortPackedDataWidth("core", "pk"),
            oracle->integer("number(/qd:repository/qd:fcnMap[@qd:componentRef='core'][1]/"
                            "qd:arg[@qd:busInterfaceRef='pk'][1]/@qd:dataPackWidth)"));
}

TEST_F(QDSRepoComponentFamilyTest, PackedPortOfAComponentThatIsNoAdapteeIsUnsupported) {
  EXPECT_EQ(logOf([&] { EXPECT_EQ(repo->getQdCompPortPackedDataWidth("packer", "grp"), -1); }),
            "ERROR: [Morvane 83-1016] Packed ports for non-qd_adapter IPs are unsupported\n");
}

TEST_F(QDSRepoComponentFamilyTest, NumbersOfAnInterface) {
  EXPECT_EQ(repo->getQdCompPortNumElements("core", "mem"), 1024);
  EXPECT_EQ(repo->getQdCompPortCapacity("core", "mem"), 65536);
  EXPECT_EQ(repo->getQdCompPortBufferDepth("core", "mem"), 2);
  EXPECT_EQ(repo->getQdCompPortArraySize("core", "mem"), 16);
  EXPECT_EQ(repo->getQdCompPortArraySize("core", "strm"), -1);
  EXPECT_EQ(repo->getQdCompBusInterfaceIntAttr("core", "mem", "qd:dataWidth"), 64);
  EXPECT_EQ(repo->getQdCompBusInterfaceSptag("core", "mem"), "BRAM0");
  EXPECT_EQ(repo->getQdCompPortCapacity("core", "mem"),
            oracle->integer("number(/qd:repository/qd:component[@qd:name='core'][1]/"
                            "qd:busInterface[@qd:name='mem']/@qd:capacity)"));
}

TEST_F(QDSRepoComponentFamilyTest, PhysicalPortsByNameAndByIndex) {
  EXPECT_EQ(repo->getQdCompPortIntAttr("core", "led", "qd:width"), 4);
  EXPECT_EQ(repo->getQdCompPortIntAttr("core", "led", "qd:depth"), -1);
  EXPECT_EQ(repo->getQdCompPortIntAttrByIndex("core", 0, "qd:width"), 1);
  EXPECT_EQ(repo->getQdCompPortStringAttrByIndex("core", 1, "qd:name"), "led");
  EXPECT_EQ(repo->getQdCompPortStringAttrByIndex("core", 2, "qd:name"), "");
  EXPECT_EQ(repo->getQdCompPortStringAttrByIndex("core", 1, "qd:direction"),
            oracle->string("/qd:repository/qd:component[@qd:name='core'][1]/qd:port[2]/"
                           "@qd:direction"));
}

TEST_F(QDSRepoComponentFamilyTest, ControlProtocolOfTheFirstFunction) {
  EXPECT_EQ(repo->getQdCompControlProtocol("core"), "ap_ctrl_hs");  // generic_axi_lite
  EXPECT_EQ(repo->getQdCompControlProtocol("core_adapter"), "ap_ctrl_chain");
  EXPECT_EQ(repo->getQdCompControlProtocol("plat"), "ap_ctrl_none");
  std::int32_t const level = Log::reportingLevel;
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(logOf([&] { EXPECT_EQ(repo->getQdCompControlProtocol("absent"), ""); }),
            "INTERNAL: [Morvane 83-1016] Invalid control protocol query on non-qd:comp "
            "'absent'\n");
  Log::reportingLevel = level;
  EXPECT_EQ(oracle->string("/qd:repository/qd:fcnMap[@qd:componentRef='core_adapter'][1]/"
                           "qd:ctrlReg/@qd:type"),
            repo->getQdCompControlProtocol("core_adapter"));
}

TEST_F(QDSRepoComponentFamilyTest, PortCountsByTypeAndModeAndAieConfigs) {
  EXPECT_EQ(repo->getQdCompNumPorts("plat", "aximm", "slave"), 9);
  EXPECT_EQ(repo->getQdCompNumPorts("plat", "aximm", "master"), 2);
  EXPECT_EQ(repo->getQdCompNumPorts("absent", "aximm", "slave"), -1);
  EXPECT_EQ(repo->getQdCompNumPorts("plat", "aximm", "slave"),
            oracle->integer("count(/qd:repository/qd:component[@qd:name='plat'][1]/"
                            "qd:busInterface[@qd:busTypeRef='aximm' and @qd:mode='slave'])"));
  EXPECT_EQ(repo->getNumAieConfigs("plat"), 1);
  EXPECT_EQ(repo->getNumAieConfigs("core"), 0);
  EXPECT_EQ(repo->getNumAieConfigs("absent"), -1);
  EXPECT_EQ(repo->getIthAieConfigPeer("plat", 0), "ai_engine_0");
  EXPECT_EQ(repo->getIthAieConfigPeer("plat", 1), "");
  EXPECT_EQ(repo->getIthAieConfigPeer("core", 0), "");
}

TEST_F(QDSRepoComponentFamilyTest, BusTypeOnlyForAdaptersAndAdaptees) {
  EXPECT_EQ(repo->getQdBusTypeRef("core", "strm"), "axis");
  EXPECT_EQ(repo->getQdBusTypeRef("core_adapter", "M_AXIS_OUT"), "axis");
  EXPECT_EQ(repo->getQdBusTypeRef("plat", "HP0"), "");
  EXPECT_EQ(repo->getQdBusTypeRef("core", "nope"), "");
}

TEST_F(QDSRepoComponentFamilyTest, IthMastersAndSlavesOfAKind) {
  EXPECT_EQ(repo->getQdCompAxiMasterPortName("plat", 0), "GP0");
  EXPECT_EQ(repo->getQdCompAxiMasterPortName("plat", 1), "M0");
  EXPECT_EQ(repo->getQdCompAxiMasterPortName("plat", 2), "");
  EXPECT_EQ(repo->getQdCompAxiSlavePortName("plat", 0), "HP0");
  EXPECT_EQ(repo->getQdCompAxisMasterPortName("core", 1), "pk");
  EXPECT_EQ(repo->getQdCompAxisSlavePortName("core", 1), "axis33");
  EXPECT_EQ(repo->getQdCompAxisSlavePortName("plat", 0), "");
  EXPECT_EQ(repo->getQdCompAxiSlavePortName("plat", 2),
            oracle->string("/qd:repository/qd:component[@qd:name='plat'][1]/qd:busInterface["
                           "@qd:busTypeRef='aximm' and @qd:mode='slave'][3]/@qd:name"));
}

TEST_F(QDSRepoComponentFamilyTest, AxisInterfaceTypeOfTheFirstFunctionsArgument) {
  EXPECT_EQ(repo->getQdCompAxisPortInterfaceType("core", "strm"), "axis_tlast");
  EXPECT_EQ(repo->getQdCompAxisPortInterfaceType("core", "ab"), "");
}

TEST_F(QDSRepoComponentFamilyTest, AdapterPortByRegisterThenByHlsName) {
  EXPECT_EQ(repo->getQdAdapterPort("core", "len"), "S_AXI_CTRL");
  EXPECT_EQ(repo->getQdAdapterPort("core", "pk"), "M_AXIS_OUT");
  EXPECT_EQ(logOf([&] { EXPECT_EQ(repo->getQdAdapterPort("plat", "HP0"), ""); }), "");
  EXPECT_EQ(logOf([&] { EXPECT_EQ(repo->getQdAdapterPort("core", "zzz"), ""); }),
            "ERROR: [Morvane 83-1014] NULL qd_adapter query result for port 'zzz' on qd:comp "
            "'core\n");
  EXPECT_EQ(repo->getQdAdapterPort("core", "len"),
            oracle->string("/qd:repository/qd:component[@qd:name='core_adapter']/"
                           "qd:busInterface[qd:reg/@qd:name='len']/@qd:name"));
}

TEST_F(QDSRepoComponentFamilyTest, FifoOfWidth33CannotConnectToAStreamOfThatWidth) {
  // Only a stream side is bound by the width rule: the axis side of 33 bits refuses.
  EXPECT_FALSE(repo->directQdPortConnectionPossible("core", "f33", "core", "axis33"));
  EXPECT_FALSE(repo->directQdPortConnectionPossible("core", "axis33", "core", "f33"));
  EXPECT_TRUE(repo->directQdPortConnectionPossible("core", "f33", "core", "buf_i"));
}

TEST_F(QDSRepoComponentFamilyTest, StreamOf2056BitsCannotConnectDirectly) {
  EXPECT_FALSE(repo->directQdPortConnectionPossible("core", "ab", "core", "strm"));
  EXPECT_TRUE(repo->directQdPortConnectionPossible("core", "strm", "core", "buf_o"));
  EXPECT_TRUE(repo->directQdPortConnectionPossible("core", "lone_i", "core", "mem"));
  // A register is neither stream, memory nor fifo; an unknown port is no port.
  EXPECT_FALSE(repo->directQdPortConnectionPossible("core", "ctl", "core", "strm"));
  EXPECT_FALSE(repo->directQdPortConnectionPossible("core", "nope", "core", "strm"));
}

TEST_F(QDSRepoComponentFamilyTest, DataMoverForAPlatformConnectionIsAlwaysThere) {
  EXPECT_TRUE(repo->hasDataMoverForPlatformConn("", "", "", ""));
  EXPECT_TRUE(repo->hasDataMoverForPlatformConn("plat", "HP0", "core", "strm"));
}

TEST_F(QDSRepoComponentFamilyTest, ZeroCopyHasNoChannelLimitAndMemStreamNoFigure) {
  EXPECT_EQ(repo->getDatamoverMaxNumChannels(DATAMOVER_ZERO_COPY, CHANNEL_MM2MM), -1);
  EXPECT_EQ(logOf([&] {
              EXPECT_EQ(repo->getDatamoverMaxNumChannels(DATAMOVER_MEM_STREAM, CHANNEL_MM2S), 0);
            }),
            "ERROR: [Morvane 83-1075] No max channel information for dm mem_stream\n");
}

TEST_F(QDSRepoComponentFamilyTest, DataMoverChannelTable) {
  struct Row {
    datamover_t mover;
    channel_t channel;
    int maximum;
  };
  Row const rows[] = {
      {DATAMOVER_AXI_LITE, CHANNEL_MM2MM, 64},     {DATAMOVER_AXI_DMA_SG, CHANNEL_MM2S, 16},
      {DATAMOVER_AXI_DMA_SG, CHANNEL_S2MM, 1},     {DATAMOVER_AXI_DMA_SIMPLE, CHANNEL_MM2S, 1},
      {DATAMOVER_AXI_DMA_SIMPLE, CHANNEL_S2MM, 1}, {DATAMOVER_AXI_DMA_2D, CHANNEL_MM2S, 1},
      {DATAMOVER_AXI_DMA_2D, CHANNEL_S2MM, 1},     {DATAMOVER_AXI_FIFO, CHANNEL_MM2S, 1},
      {DATAMOVER_AXI_FIFO, CHANNEL_S2MM, 1},       {DATAMOVER_ZERO_COPY, CHANNEL_MM2MM, -1},
      {DATAMOVER_FAST_DMA, CHANNEL_MM2S, 1},       {DATAMOVER_FAST_DMA, CHANNEL_S2MM, 1},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(logOf([&] {
                EXPECT_EQ(repo->getDatamoverMaxNumChannels(row.mover, row.channel), row.maximum);
              }),
              "");
  }
  EXPECT_EQ(logOf([&] {
              EXPECT_EQ(repo->getDatamoverMaxNumChannels(DATAMOVER_AXI_LITE, CHANNEL_S2MM), 0);
            }),
            "ERROR: [Morvane 83-1075] No max channel information for dm axi_lite channel type "
            "s2mm\n");
  EXPECT_EQ(logOf([&] {
              EXPECT_EQ(repo->getDatamoverMaxNumChannels(DATAMOVER_UNSPECIFIED, CHANNEL_MM2S), 0);
            }),
            "ERROR: [Morvane 83-1075] No max channel information for dm unspecified\n");
}

TEST_F(QDSRepoComponentFamilyTest, AxiIdsOfTheFirstInterconnectPortCountTheInstancesPorts) {
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "S0"), 3);
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "S0"),
            oracle->integer("count(/qd:repository/qd:component[@qd:name='plat'][1]/"
                            "qd:busInterface[@qd:instanceRef='ic' and @qd:busTypeRef='aximm'])"));
  EXPECT_TRUE(oracle->boolean(
      "boolean(/qd:repository/qd:component[@qd:name='plat'][1]/qd:busInterface[@qd:name='S0' and "
      "not(preceding-sibling::qd:busInterface[@qd:instanceRef='ic' and "
      "@qd:busTypeRef='aximm'])])"));
}

TEST_F(QDSRepoComponentFamilyTest, AxiIdsOfTheSecondMigInterconnectPortAreNone) {
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "S1"), 0);
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "M0"), 0);
}

TEST_F(QDSRepoComponentFamilyTest, AxiIdsByMemoryPortKind) {
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "MIG0"), 16);
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "ACP"), 8);
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "HPC0"), 8);
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "HP0"), 16);
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "GP0"), 64);
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "DDR"), 15);      // its qd:maxMasters
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "CPU_MEM"), 16);  // on the processor
  EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "ic_clk"), 0);    // no AXI port
  EXPECT_EQ(logOf([&] { EXPECT_EQ(repo->getNumQdCompAxiPortIds("plat", "PLAIN"), -1); }),
            "ERROR: [Morvane 83-1015] Unknown memory port PLAIN.\n");
}

TEST_F(QDSRepoComponentFamilyTest, InterconnectPortsArePositionalWithinTheirInstance) {
  EXPECT_EQ(repo->getInterconnectPortIndex("plat", "S0"), 0);
  EXPECT_EQ(repo->getInterconnectPortIndex("plat", "S1"), 1);
  EXPECT_EQ(repo->getInterconnectPortIndex("plat", "M0"), 0);
  EXPECT_EQ(repo->getInterconnectPortIndex("plat", "HP0"), -1);
  EXPECT_EQ(repo->getInterconnectPortIndex("plat", "nope"), -1);
  EXPECT_EQ(repo->getInterconnectPortIndex("plat", "S1"),
            oracle->integer("count(/qd:repository/qd:component[@qd:name='plat'][1]/"
                            "qd:busInterface[@qd:name='S1']/preceding-sibling::qd:busInterface"
                            "[@qd:mode='slave' and @qd:busTypeRef='aximm' and "
                            "@qd:instanceRef='ic'])"));
  EXPECT_EQ(repo->getInterconnectPortFollowingSibling("plat", "S0"), "S1");
  EXPECT_EQ(repo->getInterconnectPortFollowingSibling("plat", "S1"), "");
  EXPECT_EQ(repo->getInterconnectPortFollowingSibling("plat", "HP0"), "");
  EXPECT_EQ(repo->getNumMastersForInterconnectPort("plat", "S0"), 1);
  EXPECT_EQ(repo->getNumSlavesForInterconnectPort("plat", "M0"), 2);
  EXPECT_EQ(repo->getNumSlavesForInterconnectPort("plat", "HP0"), -1);
}

TEST_F(QDSRepoComponentFamilyTest, ExpressionsAgreeWithAnIndependentReading) {
  std::string const plat = "/qd:repository/qd:component[@qd:name='plat'][1]";
  std::string const core = "/qd:repository/qd:component[@qd:name='core'][1]";
  EXPECT_EQ(repo->isAddressableQdComp("plat"),
            oracle->boolean("boolean(" + plat +
                            "/qd:busInterface[@qd:busTypeRef='aximm' and @qd:mode='slave'][1])"));
  EXPECT_EQ(repo->isQdCompBusInterface("core", "strm"),
            oracle->boolean("boolean(" + core + "/qd:busInterface[@qd:name='strm'])"));
  EXPECT_EQ(repo->getNumAieConfigs("plat"),
            oracle->integer("count(" + plat + "/qd:busInterface[@qd:busTypeRef='aie_config'])"));
  EXPECT_EQ(repo->getQdPortClockRef("plat", "GP0"),
            oracle->string(plat + "/qd:busInterface[@qd:name='GP0']/@qd:clockRef"));
  EXPECT_EQ(repo->getQdCompBusInterfaceSptag("core", "mem"),
            oracle->string(core + "/qd:busInterface[@qd:name='mem']/@qd:sptag"));
  EXPECT_EQ(repo->getQdCompAxisPortInterfaceType("core", "strm"),
            oracle->string("/qd:repository/qd:fcnMap[@qd:componentRef='core'][1]/"
                           "qd:arg[@qd:busInterfaceRef='strm'][1]/@qd:portInterfaceType"));
  EXPECT_EQ(repo->qdCompPortIsPacked("core", "strm"),
            oracle->boolean("boolean(/qd:repository/qd:fcnMap[@qd:componentRef='core'][1]/"
                            "qd:arg[@qd:busInterfaceRef='strm'][1]/@qd:dataPack)"));
  EXPECT_EQ(repo->getQdAdapterPort("core", "pk"),
            oracle->string("/qd:repository/qd:component[@qd:name='core_adapter']/"
                           "qd:busInterface[@qd:hlsname='pk']/@qd:name"));
  EXPECT_EQ(repo->getInterconnectPortFollowingSibling("plat", "S0"),
            oracle->string(plat + "/qd:busInterface[@qd:name='S0']/following-sibling::"
                                  "qd:busInterface[@qd:mode='slave' and @qd:busTypeRef='aximm' "
                                  "and @qd:instanceRef='ic'][1]/@qd:name"));
  EXPECT_EQ(repo->getNumMastersForInterconnectPort("plat", "S0"),
            oracle->integer("count(" + plat +
                            "/qd:busInterface[@qd:mode='master' and @qd:busTypeRef='aximm' and "
                            "@qd:instanceRef='ic'])"));
  EXPECT_EQ(repo->getQdCompPortIntAttrByIndex("core", 1, "qd:width"),
            oracle->integer("number(" + core + "/qd:port[2]/@qd:width)"));
  EXPECT_EQ(repo->isQdCompPort("packer", "inner"),
            oracle->boolean("boolean(/qd:repository/qd:component[@qd:name='packer'][1]/"
                            "qd:busInterface[@qd:busInterfaceRef='inner' and "
                            "@qd:dataPack='true'])"));
}

}  // namespace
}  // namespace qd
