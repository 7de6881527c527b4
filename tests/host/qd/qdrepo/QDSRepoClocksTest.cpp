// Platform clock, clock domain, reset, interrupt and device queries.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"
#include "tests/support/XPathOracle.h"

namespace qd {
namespace {

// Domain "k" holds a fast clock and two slow ones of the same normalised period; "m" one clock
// with a reset of its own; "r" only a reserved clock; "free" has no domain.
char const* const kClocks =
    "<qd:component qd:name=\"plat\" qd:type=\"platform\" qd:LUT=\"5000\" qd:DSP=\"12\">"
    "<qd:platformInfo><qd:systemClocks qd:defaultClock=\"1\">"
    "<qd:clock qd:name=\"fast\" qd:id=\"0\" qd:frequency=\"300.000000\" qd:status=\"scalable\""
    " qd:period=\"3.333333\" qd:normalizedPeriod=\"1.0\" qd:clkDomain=\"k\"/>"
    "<qd:clock qd:name=\"slowA\" qd:id=\"1\" qd:frequency=\"100.000000\" qd:status=\"fixed\""
    " qd:period=\"10.0\" qd:normalizedPeriod=\"3.0\" qd:clkDomain=\"k\"/>"
    "<qd:clock qd:name=\"slowB\" qd:id=\"2\" qd:frequency=\"100.000000\" qd:status=\"fixed\""
    " qd:period=\"10.0\" qd:normalizedPeriod=\"3.0\" qd:clkDomain=\"k\"/>"
    "<qd:clock qd:name=\"hbm\" qd:id=\"3\" qd:frequency=\"450.000000\" qd:status=\"fixed\""
    " qd:normalizedPeriod=\"0.6\" qd:clkDomain=\"m\"/>"
    "<qd:clock qd:name=\"free\" qd:id=\"4\" qd:frequency=\"50.000000\" qd:status=\"fixed\"/>"
    "<qd:clock qd:name=\"res\" qd:id=\"5\" qd:frequency=\"250.000000\" qd:status=\"reserved\""
    " qd:clkDomain=\"r\"/>"
    "<qd:clock qd:name=\"CPU\" qd:frequency=\"1200.000000\" qd:status=\"reserved\""
    " qd:instanceRef=\"cpu0\" qd:componentRef=\"ps\"/>"
    "</qd:systemClocks>"
    "<qd:deviceInfo qd:device=\"dev\" qd:package=\"pkg\" qd:speedGrade=\"-3HP\""
    " qd:architecture=\"arch\"/>"
    "</qd:platformInfo>"
    "<qd:busInterface qd:name=\"fast\" qd:busTypeRef=\"clock\" qd:mode=\"master\""
    " qd:busInterfaceRef=\"kernel_clk\"/>"
    "<qd:busInterface qd:name=\"slowA\" qd:busTypeRef=\"clock\" qd:mode=\"master\"/>"
    "<qd:busInterface qd:name=\"slowB\" qd:busTypeRef=\"clock\" qd:mode=\"master\"/>"
    "<qd:busInterface qd:name=\"hbm\" qd:busTypeRef=\"clock\" qd:mode=\"master\"/>"
    "<qd:busInterface qd:name=\"rst_fast\" qd:busTypeRef=\"reset\" qd:mode=\"master\""
    " qd:clockRef=\"fast\" qd:busInterfaceRef=\"ap_rst_n\" qd:slr=\"SLR0\"/>"
    "<qd:busInterface qd:name=\"rst_fast1\" qd:busTypeRef=\"reset\" qd:mode=\"master\""
    " qd:clockRef=\"fast\" qd:busInterfaceRef=\"ap_rst_n\" qd:slr=\"SLR1\"/>"
    "<qd:busInterface qd:name=\"rst_slowA\" qd:busTypeRef=\"reset\" qd:mode=\"master\""
    " qd:clockRef=\"slowA\" qd:busInterfaceRef=\"aresetn\"/>"
    "<qd:busInterface qd:name=\"rst_slowB\" qd:busTypeRef=\"reset\" qd:mode=\"master\""
    " qd:clockRef=\"slowB\" qd:busInterfaceRef=\"aresetn\"/>"
    "<qd:busInterface qd:name=\"rst_hbm\" qd:busTypeRef=\"reset\" qd:mode=\"master\""
    " qd:clockRef=\"hbm\" qd:busInterfaceRef=\"ap_rst_n\" qd:clkDomain=\"m\"/>"
    "<qd:busInterface qd:name=\"ap_rst\" qd:busTypeRef=\"reset\" qd:mode=\"slave\""
    " qd:clockRef=\"fast\"/>"
    "<qd:busInterface qd:name=\"rst\" qd:busTypeRef=\"reset\" qd:mode=\"slave\""
    " qd:clockRef=\"fast\"/>"
    "<qd:busInterface qd:name=\"irq0\" qd:busTypeRef=\"interrupt\" qd:direction=\"in\""
    " qd:isrId=\"3\"/>"
    "<qd:busInterface qd:name=\"irq1\" qd:busTypeRef=\"interrupt\" qd:direction=\"in\""
    " qd:isrId=\"4\"/>"
    "<qd:busInterface qd:name=\"irq_old\" qd:busTypeRef=\"interrupt\" qd:direction=\"in\""
    " qd:irq=\"61\"/>"
    "</qd:component>"
    "<qd:component qd:name=\"acc\" qd:type=\"accelerator\">"
    "<qd:busInterface qd:name=\"ap_clk\" qd:busTypeRef=\"clock\" qd:direction=\"in\"/>"
    "<qd:busInterface qd:name=\"ap_rst\" qd:busTypeRef=\"reset\" qd:clockRef=\"ap_clk\""
    " qd:activeLevel=\"low\"/>"
    "<qd:busInterface qd:name=\"ap_rst_n\" qd:busTypeRef=\"reset\" qd:clockRef=\"ap_clk\"/>"
    "<qd:busInterface qd:name=\"irq\" qd:busTypeRef=\"interrupt\" qd:direction=\"in\""
    " qd:isrId=\"1\"/>"
    "</qd:component>"
    "<qd:fcnMap qd:fcnName=\"f\" qd:componentRef=\"acc\">"
    "<qd:derivedClock qd:derivedClockName=\"ap_clk_2\" qd:derivedClockPeriodMultiplier=\"3\""
    " qd:derivedClockPeriodDivisor=\"5\"/>"
    "</qd:fcnMap>"
    "<qd:fcnMap qd:fcnName=\"g\" qd:componentRef=\"acc\"/>"
    // Latency estimates on a clock of period 3, on the default clock, on a reserved clock and
    // on a clock without a normalised period.
    "<qd:fcnMap qd:fcnName=\"lat\" qd:componentRef=\"acc\" qd:clockId=\"1\">"
    "<qd:latencyEstimates qd:worst-case=\"1001\" qd:average-case=\"7\"/></qd:fcnMap>"
    "<qd:fcnMap qd:fcnName=\"latdef\" qd:componentRef=\"acc\">"
    "<qd:latencyEstimates qd:worst-case=\"10\" qd:average-case=\"5\"/></qd:fcnMap>"
    "<qd:fcnMap qd:fcnName=\"latres\" qd:componentRef=\"acc\" qd:clockId=\"5\">"
    "<qd:latencyEstimates qd:worst-case=\"10\" qd:average-case=\"5\"/></qd:fcnMap>"
    "<qd:fcnMap qd:fcnName=\"latfree\" qd:componentRef=\"acc\" qd:clockId=\"4\">"
    "<qd:latencyEstimates qd:worst-case=\"10\" qd:average-case=\"5\"/></qd:fcnMap>";

class QDSRepoClocksTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(dir.file("clocks.xml"))
        << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">" << kClocks << "</qd:repository>";
    qvtest::stderrOf([&] { repo = std::make_unique<QDSRepo>(dir.file("clocks.xml"), 0); });
    oracle = std::make_unique<qvtest::XPathOracle>(dir.file("clocks.xml"));
    ASSERT_TRUE(repo->platformComponent);
  }

  // A repository of one platform with `clocks` and `device` inside its platformInfo, which the
  // cache cannot always build.
  std::unique_ptr<QDSRepo> platformWith(std::string const& clocks, std::string const& device) {
    std::string const file = dir.file("other" + std::to_string(++files) + ".xml");
    std::ofstream(file) << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">"
                        << "<qd:component qd:name=\"p\" qd:type=\"platform\"><qd:platformInfo>"
                        << "<qd:systemClocks qd:defaultClock=\"0\">" << clocks
                        << "</qd:systemClocks>" << device
                        << "</qd:platformInfo></qd:component></qd:repository>";
    std::unique_ptr<QDSRepo> made;
    qvtest::stderrOf([&] { made = std::make_unique<QDSRepo>(file, 0); });
    return made;
  }

  qvtest::SilentLibxml silent;
  qvtest::TempDir dir;
  int files = 0;
  std::unique_ptr<QDSRepo> repo;
  std::unique_ptr<qvtest::XPathOracle> oracle;
};

std::string const kSystemClocks =
    "/qd:repository/qd:component[@qd:name='plat'][1]/qd:platformInfo/qd:systemClocks";

TEST_F(QDSRepoClocksTest, ReservedClockIsCountedByNoAvailableClockQuery) {
  EXPECT_FALSE(repo->isAvailableClockId(5, "plat"));
  EXPECT_EQ(repo->getNumAvailableClocks("plat"), 5);
  for (int i = 0; i < 5; ++i) EXPECT_NE(repo->getIthAvailableClockId(i, "plat"), 5);
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getClockNameForClockId(5, "plat"), "INVALID_ID"); }),
      "WARNING: [Morvane 83-1006] Invalid clock id 5 for platform plat\n");
}

TEST_F(QDSRepoClocksTest, ClockWithoutStatusIsNotAvailable) {
  auto const other = platformWith(
      "<qd:clock qd:name=\"a\" qd:id=\"0\" qd:frequency=\"1.000000\"/>"
      "<qd:clock qd:name=\"b\" qd:id=\"1\" qd:frequency=\"2.000000\" qd:status=\"fixed\"/>",
      "");
  EXPECT_FALSE(other->isAvailableClockId(0, "p"));
  EXPECT_TRUE(other->isAvailableClockId(1, "p"));
  EXPECT_EQ(other->getNumAvailableClocks("p"), 1);
}

TEST_F(QDSRepoClocksTest, FrequencyOfAnUnavailableIdIsMinusOneWithAWarning) {
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getClockFrequencyForClockId(5, "plat"), -1.0); }),
      "WARNING: [Morvane 83-10051] Invalid clock id 5 for platform plat\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getClockPeriodForClockId(9, "acc"), -1.0); }),
            "WARNING: [Morvane 83-10051] Invalid clock id 9 for platform acc\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getClockStatusForClockId(5, "plat"), ""); }),
            "WARNING: [Morvane 83-10051] Invalid clock id 5 for platform plat\n");
}

TEST_F(QDSRepoClocksTest, AttributesOfAClockById) {
  EXPECT_DOUBLE_EQ(repo->getClockPeriodForClockId(1, "plat"), 10.0);
  EXPECT_DOUBLE_EQ(repo->getNormalizedClockPeriodForClockId(3, "plat"), 0.6);
  EXPECT_EQ(repo->getNormalizedClockPeriodForClockId(4, "plat"), -1.0);  // absent
  EXPECT_EQ(repo->getClockStatusForClockId(0, "plat"), "scalable");
  EXPECT_EQ(repo->getClockNameForClockId(2, "plat"), "slowB");
  EXPECT_DOUBLE_EQ(repo->getClockPeriodForClockId(0, "plat"),
                   oracle->number("number(" + kSystemClocks + "/qd:clock[@qd:id='0']/@qd:period)"));
  EXPECT_EQ(repo->getClockStatusForClockId(0, "plat"),
            oracle->string(kSystemClocks + "/qd:clock[@qd:id='0']/@qd:status"));
}

TEST_F(QDSRepoClocksTest, FrequencyInHzIsTheMegahertzTextWithoutItsPoint) {
  EXPECT_EQ(repo->getClockFreqHzForClockId(0, "plat"), 300000000L);
  EXPECT_EQ(repo->getClockFreqHzForClockId(3, "plat"), 450000000L);
}

TEST_F(QDSRepoClocksTest, FrequencyInHzOfNoTextThrows) {
  std::string log = qvtest::stderrOf([&] {
    try {
      repo->getClockFreqHzForClockId(5, "plat");
      ADD_FAILURE() << "no exception";
    } catch (std::invalid_argument const& error) {
      EXPECT_STREQ(error.what(), "stol");
    }
  });
  EXPECT_EQ(log, "WARNING: [Morvane 83-10051] Invalid clock id 5 for platform plat\n");
}

TEST_F(QDSRepoClocksTest, ClockIdByNameOrByTheInterfaceThatOffersIt) {
  EXPECT_EQ(repo->getClockIdForClockName("plat", "slowB"), 2);
  EXPECT_EQ(repo->getClockIdForClockName("plat", "kernel_clk"), 0);
  EXPECT_EQ(repo->getClockIdForClockName("plat", "nope"), -1);
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getClockIdForClockName("acc", "ap_clk"), -1); }),
            "WARNING: [Morvane 83-1007] Invalid platform component type: 'acc'\n");
  EXPECT_EQ(oracle->string("/qd:repository/qd:component[@qd:name='plat'][1]/"
                           "qd:busInterface[@qd:busInterfaceRef='kernel_clk']/@qd:name"),
            "fast");
}

TEST_F(QDSRepoClocksTest, ProcessorAndDevice) {
  EXPECT_EQ(repo->getQdPlatformCpuInstanceRef("plat"), "cpu0");
  EXPECT_EQ(repo->getArchitectureForPlatform("plat"), "arch");
  EXPECT_EQ(repo->getDeviceForPlatform("plat"), "dev:pkg:-3HP");
  EXPECT_EQ(repo->getDeviceForPlatform("acc"), "::");
  EXPECT_EQ(repo->getQdPlatformCpuInstanceRef("plat"),
            oracle->string(kSystemClocks + "/qd:clock[@qd:name='CPU']/@qd:instanceRef"));
}

TEST_F(QDSRepoClocksTest, SpeedGrade3HPPeaksAt1300MHzAndAnEmptyGradeAt1000) {
  EXPECT_EQ(repo->getAiePeakFrequency("plat"), 1300000000L);
  auto const plain = platformWith("", "<qd:deviceInfo qd:device=\"d\" qd:speedGrade=\"\"/>");
  EXPECT_EQ(plain->getAiePeakFrequency("p"), 1000000000L);
  auto const none = platformWith("", "<qd:deviceInfo qd:device=\"d\"/>");
  EXPECT_EQ(none->getAiePeakFrequency("p"), 1000000000L);
}

TEST_F(QDSRepoClocksTest, AiePeakFrequencyOfEverySpeedGrade) {
  struct Row {
    char const* grade;
    long hertz;
  };
  Row const rows[] = {{"-1LP", 1000000000L}, {"-1MP", 1150000000L},  {"-2LP", 1050000000L},
                      {"-2MP", 1250000000L}, {"-2HP", 1300000000L},  {"-3HP", 1300000000L},
                      {"-1LQ", 1000000000L}, {"-1LHP", 1000000000L}, {"-1MM", 1150000000L},
                      {"-9XX", 1000000000L}};
  for (Row const& row : rows) {
    auto const other =
        platformWith("", std::string("<qd:deviceInfo qd:speedGrade=\"") + row.grade + "\"/>");
    EXPECT_EQ(other->getAiePeakFrequency("p"), row.hertz) << row.grade;
  }
}

TEST_F(QDSRepoClocksTest, DerivedClockOfAFunction) {
  EXPECT_EQ(repo->getDerivedClockPort("f"), "ap_clk_2");
  EXPECT_EQ(repo->getDerivedClockPeriodMultiplier("f"), 3);
  EXPECT_EQ(repo->getDerivedClockPeriodDivisor("f"), 5);
  EXPECT_EQ(repo->getDerivedClockPort("g"), "");
  EXPECT_EQ(repo->getDerivedClockPeriodMultiplier("g"), -1);
  EXPECT_EQ(repo->getDerivedClockPeriodDivisor("g"), -1);
  EXPECT_EQ(repo->getDerivedClockPeriodDivisor("f"),
            oracle->integer("number(/qd:repository/qd:fcnMap[@qd:fcnName='f'][1]/"
                            "qd:derivedClock/@qd:derivedClockPeriodDivisor)"));
}

TEST_F(QDSRepoClocksTest, ClocksWithoutADomainOpenNone) {
  EXPECT_EQ(repo->getNumClockDomains("plat"), 3);
  EXPECT_EQ(repo->getIthClockDomain(0, "plat"), "k");
  EXPECT_EQ(repo->getIthClockDomain(1, "plat"), "m");
  EXPECT_EQ(repo->getIthClockDomain(2, "plat"), "r");
  EXPECT_EQ(repo->getIthClockDomain(3, "plat"), "");
  std::string const openers =
      kSystemClocks +
      "/qd:clock[@qd:clkDomain and not(@qd:clkDomain=preceding-sibling::qd:clock/@qd:clkDomain)]";
  EXPECT_EQ(repo->getNumClockDomains("plat"), oracle->integer("count(" + openers + ")"));
  EXPECT_EQ(repo->getIthClockDomain(1, "plat"), oracle->string(openers + "[2]/@qd:clkDomain"));
}

TEST_F(QDSRepoClocksTest, DomainQueriesOfANonPlatformSaySo) {
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getNumClockDomains("acc"), -1); }),
            "ERROR: [Morvane 83-1009] Invalid platform component type: 'acc'\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthClockDomain(0, "acc"), ""); }),
            "ERROR: [Morvane 83-1010] Invalid platform component type: 'acc'\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getClockDomainForClockId(0, "acc"), ""); }),
            "ERROR: [Morvane 83-1011] Invalid platform component type: 'acc'\n");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getNumClockIdsForClockDomain("acc", "k"), -1); }),
      "ERROR: [Morvane 83-1013] Invalid platform component type: 'acc'\n");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthClockIdForClockDomain(0, "acc", "k"), -1); }),
      "ERROR: [Morvane 83-1018] Invalid clock id 0 for platform 'acc' clkDomain 'k'\n");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthClockForClockDomain(0, "acc", "k"), ""); }),
      "ERROR: [Morvane 83-1014] Invalid clock id 0 for platform 'acc' clkDomain 'k'\n");
}

TEST_F(QDSRepoClocksTest, ClocksOfADomain) {
  EXPECT_EQ(repo->getClockDomainForClockId(3, "plat"), "m");
  EXPECT_EQ(repo->getClockDomainForClockId(4, "plat"), "");
  EXPECT_EQ(repo->getClockDomainForClockId(3, "plat"),
            oracle->string(kSystemClocks + "/qd:clock[@qd:id=3]/@qd:clkDomain"));
  EXPECT_EQ(repo->getNumClockIdsForClockDomain("plat", "k"), 3);
  EXPECT_EQ(repo->getNumClockIdsForClockDomain("plat", "none"), 0);
  EXPECT_EQ(repo->getIthClockIdForClockDomain(1, "plat", "k"), 1);
  EXPECT_EQ(repo->getIthClockForClockDomain(2, "plat", "k"), "slowB");
  EXPECT_EQ(repo->getIthClockIdForClockDomain(2, "plat", "k"),
            oracle->integer("number(" + kSystemClocks + "/qd:clock[@qd:clkDomain='k'][3]/@qd:id)"));
}

TEST_F(QDSRepoClocksTest, IndexEqualToTheDomainsCountFindsNothingSilently) {
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthClockIdForClockDomain(3, "plat", "k"), -1); }),
      "");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthClockForClockDomain(3, "plat", "k"), ""); }),
      "");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthClockIdForClockDomain(4, "plat", "k"), -1); }),
      "ERROR: [Morvane 83-1018] Invalid clock id 4 for platform 'plat' clkDomain 'k'\n");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthClockForClockDomain(4, "plat", "k"), ""); }),
      "ERROR: [Morvane 83-1014] Invalid clock id 4 for platform 'plat' clkDomain 'k'\n");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthClockIdForClockDomain(-1, "plat", "k"), -1); }),
      "ERROR: [Morvane 83-1018] Invalid clock id -1 for platform 'plat' clkDomain 'k'\n");
}

TEST_F(QDSRepoClocksTest, ApRstWithoutActiveLevelIsHighAndWithLowIsLow) {
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdResetActiveLevel("plat", "ap_rst"), "high"); }),
      "");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdResetActiveLevel("acc", "ap_rst"), "low"); }),
      "");
}

TEST_F(QDSRepoClocksTest, ResetNamedRstIsLowWithACriticalWarning) {
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdResetActiveLevel("plat", "rst"), "low"); }),
            "CRITICAL WARNING: [Morvane 83-1090] Could not determine reset polarity for rst, "
            "assuming active low\n");
}

TEST_F(QDSRepoClocksTest, ActiveLowResetNamesNeedNoWarning) {
  for (char const* name : {"ap_rst_n", "aresetn", "ap_rst_n_2"}) {
    EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdResetActiveLevel("x", name), "low"); }),
              "")
        << name;
  }
}

TEST_F(QDSRepoClocksTest, ResetAndItsClock) {
  EXPECT_EQ(repo->getQdResetAssociatedClock("plat", "rst_slowA"), "slowA");
  EXPECT_EQ(repo->getQdResetAssociatedClock("plat", "nope"), "");
}

TEST_F(QDSRepoClocksTest, ResetMastersOfAClock) {
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClkCount("plat", "ap_rst_n", "fast"), 2);
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClkCount("plat", "", "fast"), 2);
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClkCount("plat", "x", "fast"), 0);
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClkCount("plat", "ap_rst_n", "fast"),
            oracle->integer("count(/qd:repository/qd:component[@qd:name='plat'][1]/"
                            "qd:busInterface[@qd:busInterfaceRef='ap_rst_n' and "
                            "@qd:busTypeRef='reset' and @qd:mode='master' and "
                            "@qd:clockRef='fast'])"));
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClk("plat", "ap_rst_n", "fast", 1), "rst_fast1");
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClk("plat", "", "fast", 0), "rst_fast");
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClk("acc", "", "ap_clk", 0), "");
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClkAndSlr("plat", "ap_rst_n", "fast", "SLR1"),
            "rst_fast1");
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClkAndSlr("plat", "ap_rst_n", "fast", "SLR2"),
            "");
}

TEST_F(QDSRepoClocksTest, ClockWithoutItsOwnResetTakesTheDomainsSlowest) {
  // "fast" has no reset for "aresetn": its domain's slowest clock has.
  EXPECT_EQ(qvtest::stderrOf([&] {
              EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClk("plat", "aresetn", "fast", 0),
                        "rst_slowB");
            }),
            "WARNING: [Morvane 83-10051] Invalid clock id -1 for platform plat\n");
}

TEST_F(QDSRepoClocksTest, DomainsOwnResetStands) {
  EXPECT_EQ(qvtest::stderrOf([&] {
              EXPECT_EQ(repo->getResetBusInterfaceForClockDomain("plat", "m", "ap_rst_n"),
                        "rst_hbm");
            }),
            "");
}

TEST_F(QDSRepoClocksTest, OfTwoSlowestClocksTheLaterInTheDomainGivesTheReset) {
  // The walk starts one past the last clock (the warning), and on a tie the later clock stays.
  EXPECT_EQ(qvtest::stderrOf([&] {
              EXPECT_EQ(repo->getResetBusInterfaceForClockDomain("plat", "k", "aresetn"),
                        "rst_slowB");
            }),
            "WARNING: [Morvane 83-10051] Invalid clock id -1 for platform plat\n");
  EXPECT_EQ(oracle->string("/qd:repository/qd:component[@qd:name='plat'][1]/"
                           "qd:busInterface[@qd:clockRef='slowB' and "
                           "@qd:busInterfaceRef='aresetn']/@qd:name"),
            "rst_slowB");
}

TEST_F(QDSRepoClocksTest, InterruptsOfThePlatform) {
  EXPECT_TRUE(repo->hasQdPlatformInterruptSupport("plat"));
  EXPECT_FALSE(repo->hasQdPlatformInterruptSupport("acc"));  // no platform
  EXPECT_EQ(repo->getQdPlatformCompIthInterruptSlavePort("plat", 1), "irq1");
  EXPECT_EQ(repo->getQdPlatformCompIthInterruptSlavePort("plat", 2), "");
  EXPECT_EQ(repo->getQdPlatformCompIthInterruptSlavePort("acc", 0), "");
  EXPECT_EQ(repo->getQdPlatformCompIthLegacyInterruptSlavePort("plat", 0), "irq_old");
  EXPECT_EQ(repo->getQdPlatformCompIthLegacyInterruptSlavePort("plat", 1), "");
  EXPECT_EQ(repo->getQdPlatformCompPortIrq("plat", "irq1"), 4);
  EXPECT_EQ(repo->getQdPlatformCompPortIrq("plat", "irq_old"), -1);
  EXPECT_EQ(repo->getQdPlatformCompIthInterruptSlavePort("plat", 0),
            oracle->string("/qd:repository/qd:component[@qd:name='plat' and "
                           "@qd:type='platform'][1]/qd:busInterface[@qd:busTypeRef='interrupt' "
                           "and @qd:direction='in' and @qd:isrId][1]/@qd:name"));
}

TEST_F(QDSRepoClocksTest, ResourceCapacityOfThePlatform) {
  EXPECT_EQ(repo->getQdPlatformResourceCapacity("plat", "LUT"), 5000);
  EXPECT_EQ(repo->getQdPlatformResourceCapacity("plat", "DSP"), 12);
  EXPECT_EQ(repo->getQdPlatformResourceCapacity("plat", "URAM"), -1);
  EXPECT_EQ(repo->getQdPlatformResourceCapacity("acc", "LUT"), -1);
}

TEST_F(QDSRepoClocksTest, ExpressionsAgreeWithAnIndependentReading) {
  std::string const plat = "/qd:repository/qd:component[@qd:name='plat'][1]";
  std::string const platform =
      "/qd:repository/qd:component[@qd:name='plat' and @qd:type='platform'][1]";
  EXPECT_EQ(repo->getNumClockIdsForClockDomain("plat", "k"),
            oracle->integer("count(" + kSystemClocks + "/qd:clock[@qd:clkDomain='k'])"));
  EXPECT_EQ(repo->getIthClockForClockDomain(1, "plat", "k"),
            oracle->string(kSystemClocks + "/qd:clock[@qd:clkDomain='k'][2]/@qd:name"));
  EXPECT_EQ(repo->getClockNameForClockId(3, "plat"),
            oracle->string(kSystemClocks + "/qd:clock[@qd:id='3']/@qd:name"));
  EXPECT_EQ(repo->getClockIdForClockName("plat", "hbm"),
            oracle->integer("number(" + kSystemClocks + "/qd:clock[@qd:name='hbm']/@qd:id)"));
  EXPECT_EQ(repo->getArchitectureForPlatform("plat"),
            oracle->string(plat + "/qd:platformInfo/qd:deviceInfo/@qd:architecture"));
  EXPECT_EQ(repo->getQdResetAssociatedClock("plat", "rst_hbm"),
            oracle->string(plat + "/qd:busInterface[@qd:name='rst_hbm']/@qd:clockRef"));
  EXPECT_EQ(repo->getQdResetActiveLevel("acc", "ap_rst"),
            oracle->string("/qd:repository/qd:component[@qd:name='acc'][1]/"
                           "qd:busInterface[@qd:name='ap_rst']/@qd:activeLevel"));
  EXPECT_EQ(repo->getQdPlatformResetBusInterfaceForClkAndSlr("plat", "ap_rst_n", "fast", "SLR0"),
            oracle->string(plat + "/qd:busInterface[@qd:busInterfaceRef='ap_rst_n' and "
                                  "@qd:clockRef='fast' and @qd:slr='SLR0' and "
                                  "@qd:busTypeRef='reset' and @qd:mode='master']/@qd:name"));
  EXPECT_EQ(repo->getResetBusInterfaceForClockDomain("plat", "m", "ap_rst_n"),
            oracle->string(plat + "/qd:busInterface[@qd:clkDomain='m' and "
                                  "@qd:busInterfaceRef='ap_rst_n']/@qd:name"));
  EXPECT_EQ(repo->hasQdPlatformInterruptSupport("plat"),
            oracle->boolean("boolean(" + platform +
                            "/qd:busInterface[@qd:busTypeRef='interrupt' and "
                            "@qd:direction='in' and @qd:isrId])"));
  EXPECT_EQ(repo->getQdPlatformCompIthLegacyInterruptSlavePort("plat", 0),
            oracle->string(platform + "/qd:busInterface[@qd:busTypeRef='interrupt' and "
                                      "@qd:direction='in' and @qd:irq][1]/@qd:name"));
  EXPECT_EQ(repo->getQdPlatformCompPortIrq("plat", "irq0"),
            oracle->integer("number(" + platform + "/qd:busInterface[@qd:name='irq0']/@qd:isrId)"));
  EXPECT_EQ(repo->getQdPlatformResourceCapacity("plat", "LUT"),
            oracle->integer("number(" + platform + "/@qd:LUT)"));
  EXPECT_EQ(repo->getDerivedClockPort("f"),
            oracle->string("/qd:repository/qd:fcnMap[@qd:fcnName='f'][1]/qd:derivedClock/"
                           "@qd:derivedClockName"));
}

TEST_F(QDSRepoClocksTest, NormalizedLatencyIsTheEstimateInPeriodsOfTheFunctionsClock) {
  EXPECT_EQ(repo->getQdHwFcnNormalizedWorstCaseLatencyEstimate("lat", "plat"), 3003);
  EXPECT_EQ(repo->getQdHwFcnNormalizedAverageCaseLatencyEstimate("lat", "plat"), 21);
}

TEST_F(QDSRepoClocksTest, NormalizedLatencyWithoutAClockIdUsesTheDefaultClock) {
  EXPECT_EQ(repo->getQdHwFcnNormalizedWorstCaseLatencyEstimate("latdef", "plat"), 30);
  EXPECT_EQ(repo->getQdHwFcnNormalizedAverageCaseLatencyEstimate("latdef", "plat"), 15);
}

TEST_F(QDSRepoClocksTest, NormalizedLatencyWithoutAUsablePeriodIsTheRawEstimate) {
  EXPECT_EQ(qvtest::stderrOf([&] {
              EXPECT_EQ(repo->getQdHwFcnNormalizedWorstCaseLatencyEstimate("latres", "plat"), 10);
            }),
            "WARNING: [Morvane 83-10051] Invalid clock id 5 for platform plat\n");
  EXPECT_EQ(repo->getQdHwFcnNormalizedAverageCaseLatencyEstimate("latfree", "plat"), 5);
  // No default clock on a component that is no platform either.
  EXPECT_EQ(repo->getQdHwFcnNormalizedWorstCaseLatencyEstimate("latdef", "acc"), 10);
}

TEST_F(QDSRepoClocksTest, NormalizedLatencyWithoutAnEstimateIsMinusOne) {
  EXPECT_EQ(repo->getQdHwFcnNormalizedWorstCaseLatencyEstimate("g", "plat"), -1);
  EXPECT_EQ(repo->getQdHwFcnNormalizedAverageCaseLatencyEstimate("zz", "plat"), -1);
}

}  // namespace
}  // namespace qd
