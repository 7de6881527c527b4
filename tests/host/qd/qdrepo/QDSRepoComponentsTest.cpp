// Component and port queries that compare the cache with XPath: the type, direction and mode
// of a port named by an interface, a physical port or both.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"

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

}  // namespace
}  // namespace qd
