// Memory objects and SP tags: the tag text functions, the tag queries over the example platform
// (ranged, per-segment and plain tags) and over a small platform with the odd cases, and the
// memory object family.
#include <gtest/gtest.h>

#include <climits>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"
#include "tests/support/XPathOracle.h"

namespace qd {
namespace {

using Strings = std::vector<std::string>;

std::string const kP = "qv_accel_h2_gen3x16";
// The platform as the expressions of this family select it.
std::string const kPlatform =
    "/qd:repository/qd:component[@qd:name='qv_accel_h2_gen3x16' and @qd:type='platform'][1]";

std::string const kDeprecated =
    "WARNING: [Morvane 83-1028] Per-segment SP Tags are deprecated when in the presences of "
    "ranged SP Tags.\n";

std::string remapped(std::string const& from, std::string const& to) {
  return kDeprecated + "WARNING: [Morvane 83-1028] SP Tag '" + from + "' is being remapped to '" +
         to + "'.\n";
}

// A platform with the cases the example does not need: GP and HPC memports, a bram interface,
// a range of one index, a base on two interfaces, an empty and a duplicate tag, ports of the
// processor, of a smartconnect and of a second-generation NoC.
char const* const kOdd =
    "<qd:component qd:name=\"p\" qd:type=\"platform\"><qd:platformInfo>"
    "<qd:systemClocks qd:defaultClock=\"0\">"
    "<qd:clock qd:name=\"clk\" qd:id=\"0\" qd:frequency=\"100.000000\" qd:status=\"fixed\"/>"
    "<qd:clock qd:name=\"CPU\" qd:frequency=\"1000.000000\" qd:status=\"reserved\""
    " qd:componentRef=\"ps\"/>"
    "</qd:systemClocks></qd:platformInfo>"
    "<qd:busInterface qd:name=\"clk\" qd:busTypeRef=\"clock\" qd:mode=\"master\"/>"
    "<qd:busInterface qd:name=\"GP0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\" qd:clockRef=\"clk\""
    " qd:memport=\"S_AXI_GP\" qd:sptag=\"GP0\"/>"
    "<qd:busInterface qd:name=\"GP1\" qd:busTypeRef=\"aximm\" qd:mode=\"master\""
    " qd:clockRef=\"clk\" qd:memport=\"M_AXI_GP\" qd:sptag=\"GP1\"/>"
    "<qd:busInterface qd:name=\"HPC0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:clockRef=\"clk\" qd:memport=\"S_AXI_HPC\" qd:sptag=\"HPC0\"/>"
    "<qd:busInterface qd:name=\"BR\" qd:busTypeRef=\"bram\" qd:mode=\"slave\" qd:memport=\"MIG\""
    " qd:sptag=\"BR\" qd:dataWidth=\"0\"/>"
    "<qd:busInterface qd:name=\"ONE\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\" qd:clockRef=\"clk\""
    " qd:memport=\"memss\" qd:sptag=\"ONE\" qd:cardinality=\"1\">"
    "<qd:addressSegment qd:baseName=\"ONE_S0\" qd:index=\"0\" qd:slr=\"SLR0\"/>"
    "</qd:busInterface>"
    "<qd:busInterface qd:name=\"TWIN_A\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:clockRef=\"clk\" qd:memport=\"memss\" qd:sptag=\"TWIN\" qd:cardinality=\"2\"/>"
    "<qd:busInterface qd:name=\"TWIN_B\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:clockRef=\"clk\" qd:memport=\"memss\" qd:sptag=\"TWIN\" qd:cardinality=\"2\"/>"
    "<qd:busInterface qd:name=\"EMPTY\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:clockRef=\"clk\" qd:memport=\"memss\" qd:sptag=\"\"/>"
    "<qd:busInterface qd:name=\"DUP\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\" qd:clockRef=\"clk\""
    " qd:memport=\"S_AXI_HP\" qd:sptag=\"GP0\"/>"
    "<qd:busInterface qd:name=\"ACP0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:clockRef=\"clk\" qd:memport=\"S_AXI_ACP\" qd:componentRef=\"ps\"/>"
    "<qd:busInterface qd:name=\"HP2\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\" qd:clockRef=\"clk\""
    " qd:memport=\"S_AXI_HP\" qd:componentRef=\"ps\"/>"
    "<qd:busInterface qd:name=\"SC0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\" qd:clockRef=\"clk\""
    " qd:memport=\"S_AXI_HP\" qd:sptag=\"SC0\" qd:componentRef=\"smartconnect\""
    " qd:instanceRef=\"sc\"/>"
    "<qd:busInterface qd:name=\"SC1\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\" qd:clockRef=\"clk\""
    " qd:memport=\"S_AXI_HP\" qd:sptag=\"SC1\" qd:componentRef=\"smartconnect\""
    " qd:instanceRef=\"sc\"/>"
    "<qd:busInterface qd:name=\"NOC2\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
    " qd:clockRef=\"clk\" qd:memport=\"NOC_SLAVE\" qd:componentRef=\"axi_noc2\""
    " qd:maxMasters=\"3\"/>"
    "</qd:component>";

class QDSRepoMemObjectsTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(dir.file("odd.xml"))
        << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">" << kOdd << "</qd:repository>";
    qvtest::stderrOf([&] {
      repo = std::make_unique<QDSRepo>(example, 0);
      odd = std::make_unique<QDSRepo>(dir.file("odd.xml"), 0);
    });
    ASSERT_TRUE(repo->platformComponent);
    ASSERT_TRUE(odd->platformComponent);
  }

  qvtest::SilentLibxml silent;
  qvtest::TempDir dir;
  std::string const example = std::string(QV_EXAMPLES_DIR) + "/repository/qd_ip_db.xml";
  qvtest::XPathOracle oracle{example};
  std::unique_ptr<QDSRepo> repo;
  std::unique_ptr<QDSRepo> odd;
};

// ---- Tag text ------------------------------------------------------------------------------

TEST_F(QDSRepoMemObjectsTest, IsRangeSpTagWantsAClosingBracketAfterTheOpeningOne) {
  EXPECT_TRUE(repo->isRangeSpTag("DDR[0]"));
  EXPECT_TRUE(repo->isRangeSpTag("DDR[0:3]"));
  EXPECT_TRUE(repo->isRangeSpTag("[]"));
  EXPECT_FALSE(repo->isRangeSpTag("DDR]0["));  // the "]" stands before the "[" only
  EXPECT_FALSE(repo->isRangeSpTag("DDR[0"));
  EXPECT_FALSE(repo->isRangeSpTag("DDR0]"));
  EXPECT_FALSE(repo->isRangeSpTag("DDR"));
  EXPECT_FALSE(repo->isRangeSpTag(""));
}

TEST_F(QDSRepoMemObjectsTest, DisassembleReadsBaseLowAndHigh) {
  std::string base = "x";
  int low = 7;
  int high = 7;
  repo->disassembleRangeSpTag("DDR[1:3]", base, low, high);
  EXPECT_EQ(base, "DDR");
  EXPECT_EQ(low, 1);
  EXPECT_EQ(high, 3);
  repo->disassembleRangeSpTag("HBM[12]", base, low, high);
  EXPECT_EQ(base, "HBM");
  EXPECT_EQ(low, 12);
  EXPECT_EQ(high, 12);
}

TEST_F(QDSRepoMemObjectsTest, DisassembleOfATagWithNoBracketIsAllBaseWithIndicesZero) {
  std::string base;
  int low = 7;
  int high = 7;
  repo->disassembleRangeSpTag("PLRAM", base, low, high);
  EXPECT_EQ(base, "PLRAM");
  EXPECT_EQ(low, 0);
  EXPECT_EQ(high, 0);
  repo->disassembleRangeSpTag("X[a:b]", base, low, high);
  EXPECT_EQ(base, "X");
  EXPECT_EQ(low, 0);
  EXPECT_EQ(high, 0);
}

TEST_F(QDSRepoMemObjectsTest, AssembleWithEqualIndicesGivesTheSingleIndexForm) {
  EXPECT_EQ(repo->assembleRangeSpTag("DDR", 3, 3), "DDR[3]");
  EXPECT_EQ(repo->assembleRangeSpTag("DDR", 0, 2), "DDR[0:2]");
}

TEST_F(QDSRepoMemObjectsTest, SplitOfARangeGivesEverySingleIndexTagInRisingOrder) {
  EXPECT_EQ(repo->splitSpTag("DDR[0:2]"), (Strings{"DDR[0]", "DDR[1]", "DDR[2]"}));
}

TEST_F(QDSRepoMemObjectsTest, SplitOfAPlainTagGivesTheTagWithIndexZero) {
  EXPECT_EQ(repo->splitSpTag("PLRAM"), (Strings{"PLRAM[0]"}));
}

TEST_F(QDSRepoMemObjectsTest, SplitWithLowAboveHighIsEmpty) {
  EXPECT_EQ(repo->splitSpTag("DDR[3:1]"), Strings{});
}

// ---- Normalising and validating ----------------------------------------------------------------

TEST_F(QDSRepoMemObjectsTest, NormalizeLeavesRangesAndInterfaceTagsAsTheyAre) {
  std::string answer;
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->normalizeSpTag(kP, "DDR[0:1]"); }), "");
  EXPECT_EQ(answer, "DDR[0:1]");
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->normalizeSpTag(kP, "HP0"); }), "");
  EXPECT_EQ(answer, "HP0");
}

TEST_F(QDSRepoMemObjectsTest, NormalizeRemapsAPerSegmentTagWithBothWarningsAtEveryCall) {
  std::string answer;
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->normalizeSpTag(kP, "MC_B"); }),
            remapped("MC_B", "MC[1]"));
  EXPECT_EQ(answer, "MC[1]");
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->normalizeSpTag(kP, "MC_B"); }),
            remapped("MC_B", "MC[1]"));
  EXPECT_EQ(answer, "MC[1]");
  // The two parts of the new tag, read as the remapping reads them.
  EXPECT_EQ(oracle.integer("number(" + kPlatform +
                           "/qd:busInterface[@qd:memport='memss']/qd:addressSegment[@qd:sptag='"
                           "MC_B']/@qd:index)"),
            1);
  EXPECT_EQ(oracle.string(kPlatform +
                          "/qd:busInterface[@qd:memport='memss' and qd:addressSegment[@qd:sptag='"
                          "MC_B']]/@qd:sptag"),
            "MC");
}

TEST_F(QDSRepoMemObjectsTest, NormalizeOfAnUnknownTagGivesIndexMinusOneWithTheWarnings) {
  std::string answer;
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->normalizeSpTag(kP, "NOPE"); }),
            remapped("NOPE", "[-1]"));
  EXPECT_EQ(answer, "[-1]");
}

TEST_F(QDSRepoMemObjectsTest, PerSegmentTagGivenToGetSpTagModeWarnsAndAnswersItsInterfacesMode) {
  mode_t mode = MODE_MASTER;
  EXPECT_EQ(qvtest::stderrOf([&] { mode = repo->getSpTagMode(kP, "MC_A"); }),
            remapped("MC_A", "MC[0]"));
  EXPECT_EQ(mode, MODE_SLAVE);
  EXPECT_EQ(oracle.string(kPlatform + "/qd:busInterface[@qd:sptag='MC'][1]/@qd:mode"), "slave");
}

TEST_F(QDSRepoMemObjectsTest, ModeOfAnUnknownTagIsNoMode) {
  mode_t mode = MODE_MASTER;
  EXPECT_EQ(qvtest::stderrOf([&] { mode = repo->getSpTagMode(kP, "NOPE"); }),
            remapped("NOPE", "[-1]"));
  EXPECT_EQ(mode, MODE_NO_MODE);
  EXPECT_EQ(odd->getSpTagMode("p", "GP1"), MODE_MASTER);
}

TEST_F(QDSRepoMemObjectsTest, RangeWithHighEqualToTheCardinalityIsInvalidAndOneLessValid) {
  EXPECT_FALSE(repo->isValidSpTag(kP, "DDR[0:4]"));
  EXPECT_TRUE(repo->isValidSpTag(kP, "DDR[0:3]"));
  EXPECT_TRUE(repo->isValidSpTag(kP, "DDR[2]"));
  EXPECT_FALSE(repo->isValidSpTag(kP, "DDR[-1:2]"));
  EXPECT_FALSE(repo->isValidSpTag(kP, "DDR[2:1]"));
  EXPECT_FALSE(repo->isValidSpTag(kP, "HBM[0]"));  // no interface carries the base HBM
}

TEST_F(QDSRepoMemObjectsTest, PlainTagIsValidOnAnInterfaceOrAMemssSegmentWithoutAWarning) {
  bool valid = false;
  EXPECT_EQ(qvtest::stderrOf([&] { valid = repo->isValidSpTag(kP, "MC_A"); }), "");
  EXPECT_TRUE(valid);
  EXPECT_TRUE(repo->isValidSpTag(kP, "HP0"));
  EXPECT_FALSE(repo->isValidSpTag(kP, "NOPE"));
  EXPECT_FALSE(repo->isValidSpTag("vadd", "HP0"));
  EXPECT_TRUE(oracle.boolean("boolean(" + kPlatform +
                             "/qd:busInterface[@qd:memport='memss']/qd:addressSegment[@qd:sptag='"
                             "MC_A'])"));
}

TEST_F(QDSRepoMemObjectsTest, RangeMaxIsTheCardinalityOfTheBaseWithoutNormalising) {
  EXPECT_EQ(repo->getSpTagRangeMax(kP, "DDR[0]"), 4);
  EXPECT_EQ(repo->getSpTagRangeMax(kP, "DDR[0]"),
            oracle.integer("number(" + kPlatform +
                           "/qd:busInterface[@qd:sptag='DDR'][1]/@qd:cardinality)"));
  EXPECT_EQ(repo->getSpTagRangeMax(kP, "MC[1:2]"), 3);
  std::string const err = qvtest::stderrOf([&] {
    EXPECT_EQ(repo->getSpTagRangeMax(kP, "DDR"), -1);     // no range
    EXPECT_EQ(repo->getSpTagRangeMax(kP, "MC_A"), -1);    // not normalised: no warning
    EXPECT_EQ(repo->getSpTagRangeMax(kP, "HP0[0]"), -1);  // no cardinality
  });
  EXPECT_EQ(err, "");
}

TEST_F(QDSRepoMemObjectsTest, AllSpTagsArePlainTagsThenRangesEachOnceInFileOrder) {
  EXPECT_EQ(repo->getAllSpTags(kP),
            (Strings{"HP0", "HP1", "ACP", "NOC_HBM", "STREAM", "DDR[0:3]", "MC[0:2]"}));
  // An empty tag is passed over, a duplicate counted once, a cardinality of 1 is one index.
  EXPECT_EQ(odd->getAllSpTags("p"),
            (Strings{"GP0", "GP1", "HPC0", "BR", "SC0", "SC1", "ONE[0]", "TWIN[0:1]"}));
  EXPECT_EQ(repo->getAllSpTags("vadd"), Strings{});
}

// ---- What a tag is ---------------------------------------------------------------------------

TEST_F(QDSRepoMemObjectsTest, ProtocolOfARangeIsAddressableAndOfAPlainTagByItsBusType) {
  EXPECT_EQ(repo->getSpTagProtocol(kP, "DDR[0:1]"), PORT_ADDRESSABLE);
  EXPECT_EQ(repo->getSpTagProtocol(kP, "HP0"), PORT_ADDRESSABLE);
  EXPECT_EQ(repo->getSpTagProtocol(kP, "STREAM"), PORT_STREAM);
  EXPECT_EQ(odd->getSpTagProtocol("p", "GP0"), PORT_UNKNOWN);
  EXPECT_EQ(odd->getSpTagProtocol("p", "GP1"), PORT_UNKNOWN);
  EXPECT_EQ(odd->getSpTagProtocol("p", "BR"), 3);
  EXPECT_EQ(oracle.string(kPlatform + "/qd:busInterface[@qd:sptag='STREAM'][1]/@qd:busTypeRef"),
            "axis");
}

TEST_F(QDSRepoMemObjectsTest, ProtocolOfAPerSegmentTagWarnsAndReadsItsInterface) {
  port_t protocol = PORT_UNKNOWN;
  EXPECT_EQ(qvtest::stderrOf([&] { protocol = repo->getSpTagProtocol(kP, "MC_B"); }),
            remapped("MC_B", "MC[1]"));
  EXPECT_EQ(protocol, PORT_ADDRESSABLE);
}

TEST_F(QDSRepoMemObjectsTest, MemorySpaceIsTheProcessorsForAcpAndHpPortsAndNoneForAStream) {
  EXPECT_EQ(repo->getSpTagMemorySpace(kP, "DDR[0:1]"), std::vector<int>{1});
  EXPECT_EQ(repo->getSpTagMemorySpace(kP, "DDR"), std::vector<int>{1});
  EXPECT_EQ(repo->getSpTagMemorySpace(kP, "ACP"), std::vector<int>{0});
  EXPECT_EQ(repo->getSpTagMemorySpace(kP, "HP1"), std::vector<int>{0});
  EXPECT_EQ(odd->getSpTagMemorySpace("p", "HPC0"), std::vector<int>{0});
  EXPECT_EQ(repo->getSpTagMemorySpace(kP, "STREAM"), std::vector<int>{});
  EXPECT_TRUE(repo->isSpTagMemory(kP, "NOC_HBM"));
  EXPECT_FALSE(repo->isSpTagMemory(kP, "STREAM"));
}

TEST_F(QDSRepoMemObjectsTest, SwNameOfASingleIndexIsItsSegmentsOwnTag) {
  EXPECT_EQ(repo->getSpTagSwName(kP, "MC[1]"), "MC_B");
  EXPECT_EQ(
      repo->getSpTagSwName(kP, "MC[1]"),
      oracle.string(kPlatform + "/qd:busInterface[@qd:sptag='MC']/qd:addressSegment[@qd:index='1']/"
                                "@qd:sptag"));
  EXPECT_EQ(repo->getSpTagSwName(kP, "MC[2]"), "MC[2]");  // the segment has no tag of its own
  EXPECT_EQ(repo->getSpTagSwName(kP, "MC[0:1]"), "MC[0:1]");
  EXPECT_EQ(repo->getSpTagSwName(kP, "HP0"), "HP0");
  std::string answer;
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->getSpTagSwName(kP, "MC_A"); }),
            remapped("MC_A", "MC[0]"));
  EXPECT_EQ(answer, "MC_A");
}

TEST_F(QDSRepoMemObjectsTest, CoherenceIsTheAttributeAndFalseForARange) {
  EXPECT_TRUE(repo->isSpTagCoherent(kP, "ACP"));
  EXPECT_EQ(oracle.string(kPlatform + "/qd:busInterface[@qd:sptag='ACP'][1]/@qd:cacheCoherent"),
            "true");
  EXPECT_FALSE(repo->isSpTagCoherent(kP, "HP0"));
  EXPECT_FALSE(repo->isSpTagCoherent(kP, "DDR[0]"));
}

TEST_F(QDSRepoMemObjectsTest, DataWidthIsTheAttributeAndZeroWhenAbsent) {
  EXPECT_EQ(repo->getSpTagDataWidth(kP, "DDR"), 512);
  EXPECT_EQ(repo->getSpTagDataWidth(kP, "DDR[1:2]"), 512);
  EXPECT_EQ(repo->getSpTagDataWidth(kP, "STREAM"),
            oracle.integer("number(" + kPlatform +
                           "/qd:busInterface[@qd:sptag='STREAM'][1]/@qd:dataWidth)"));
  EXPECT_EQ(odd->getSpTagDataWidth("p", "GP0"), 0);
}

TEST_F(QDSRepoMemObjectsTest, PeakBandwidthOfAnHpPortWithoutTheAttributeIs1200) {
  EXPECT_EQ(repo->getSpTagPeakBw(kP, "HP0"), 1200);
}

TEST_F(QDSRepoMemObjectsTest, PeakBandwidthOf512BitsOnAnUnlistedMemportIs6400) {
  EXPECT_EQ(repo->getSpTagPeakBw(kP, "NOC_HBM"), 6400);
}

TEST_F(QDSRepoMemObjectsTest, PeakBandwidthIsTheAttributeElseTheTableOfMemports) {
  EXPECT_EQ(repo->getSpTagPeakBw(kP, "DDR"), 19200);
  EXPECT_EQ(repo->getSpTagPeakBw(kP, "DDR"),
            oracle.integer("number(" + kPlatform +
                           "/qd:busInterface[@qd:sptag='DDR'][1]/@qd:peakMemoryBandwidth)"));
  EXPECT_EQ(repo->getSpTagPeakBw(kP, "ACP"), 700);
  EXPECT_EQ(odd->getSpTagPeakBw("p", "GP0"), 600);
  EXPECT_EQ(odd->getSpTagPeakBw("p", "GP1"), 600);
  EXPECT_EQ(odd->getSpTagPeakBw("p", "HPC0"), 3000);
  EXPECT_EQ(odd->getSpTagPeakBw("p", "BR"), 0);  // a width of 0
  EXPECT_EQ(repo->getSpTagPeakBw(kP, "STREAM"), 800);
}

TEST_F(QDSRepoMemObjectsTest, PeakBandwidthOfAPerSegmentTagWarnsOnce) {
  int bandwidth = 0;
  EXPECT_EQ(qvtest::stderrOf([&] { bandwidth = repo->getSpTagPeakBw(kP, "MC_A"); }),
            remapped("MC_A", "MC[0]"));
  EXPECT_EQ(bandwidth, 6400);  // memss, 512 bits
}

// ---- Where a tag leads -----------------------------------------------------------------------

TEST_F(QDSRepoMemObjectsTest, SlrsOfARangeInOneSlrAreOnePerIndexOrOnceWhenUnique) {
  EXPECT_EQ(repo->getSpTagSlrs(kP, "DDR[0:1]", false), (Strings{"SLR0", "SLR0"}));
  EXPECT_EQ(repo->getSpTagSlrs(kP, "DDR[0:1]", true), (Strings{"SLR0"}));
}

TEST_F(QDSRepoMemObjectsTest, SlrsKeepTheOrderOfFirstAppearanceAndEmptyAnswers) {
  EXPECT_EQ(repo->getSpTagSlrs(kP, "DDR[0:3]", true), (Strings{"SLR0", "SLR1"}));
  EXPECT_EQ(repo->getSpTagSlrs(kP, "MC[1:3]", false), (Strings{"SLR1", "SLR2", ""}));
  EXPECT_EQ(repo->getSpTagSlrs(kP, "MC[2]", false),
            Strings{oracle.string(kPlatform +
                                  "/qd:busInterface[@qd:sptag='MC']/qd:addressSegment[@qd:index="
                                  "'2']/@qd:slr")});
  EXPECT_EQ(repo->getSpTagSlrs(kP, "HP0", false), (Strings{"SLR1"}));
  EXPECT_EQ(repo->getSpTagSlrs(kP, "ACP", true), Strings{});  // no qd:slr
}

TEST_F(QDSRepoMemObjectsTest, MemObjectsOfATagAreTheInterfacesThatCarryIt) {
  EXPECT_EQ(repo->getMemObjectsFromSpTag(kP, "DDR"), (Strings{"DDR"}));
  EXPECT_EQ(repo->getMemObjectsFromSpTag(kP, "DDR[1:2]"), (Strings{"DDR"}));
  EXPECT_EQ(odd->getMemObjectsFromSpTag("p", "GP0"), (Strings{"GP0", "DUP"}));
  EXPECT_EQ(oracle.integer("count(" + kPlatform + "/qd:busInterface[@qd:sptag='HP1']/@qd:name)"),
            1);
  Strings objects;
  EXPECT_EQ(qvtest::stderrOf([&] { objects = repo->getMemObjectsFromSpTag(kP, "MC_A"); }),
            remapped("MC_A", "MC[0]"));
  EXPECT_EQ(objects, (Strings{"MEMSS_MC"}));
}

TEST_F(QDSRepoMemObjectsTest, RangeIsAlwaysOneEntryEmptyWhenNoInterfaceOrTwoNamesCarryItsBase) {
  // One string query for the name: no interface gives "", and two interfaces of different
  // names disagree, which a string query also answers with "".
  EXPECT_EQ(repo->getMemObjectsFromSpTag(kP, "HBM[0]"), Strings{""});
  EXPECT_EQ(repo->getMemObjectsFromSpTag(kP, "HBM[0:3]"), Strings{""});
  EXPECT_EQ(odd->getMemObjectsFromSpTag("p", "TWIN[0:1]"), Strings{""});
  EXPECT_EQ(oracle.integer("count(" + kPlatform + "/qd:busInterface[@qd:sptag='HBM'])"), 0);
}

TEST_F(QDSRepoMemObjectsTest, RangeWithAMatchingInterfaceIsThatInterface) {
  EXPECT_EQ(repo->getMemObjectsFromSpTag(kP, "MC[0:2]"), Strings{"MEMSS_MC"});
  EXPECT_EQ(repo->getMemObjectsFromSpTag(kP, "MC[1]"), Strings{"MEMSS_MC"});
  EXPECT_EQ(odd->getMemObjectsFromSpTag("p", "ONE[0]"), Strings{"ONE"});
}

TEST_F(QDSRepoMemObjectsTest, SegmentsOfARangeAreReadPerIndexWithDuplicatesKept) {
  EXPECT_EQ(repo->getMemObjectSegmentsForSpTag(kP, "DDR", "DDR[0:3]"),
            (Strings{"C0_DDR4_ADDR", "C0_DDR4_ADDR", "C1_DDR4_ADDR", "C1_DDR4_ADDR"}));
  EXPECT_EQ(repo->getMemObjectSegmentsForSpTag(kP, "MEMSS_MC", "MC[1:4]"),
            (Strings{"MC_S1", "MC_S2"}));
  EXPECT_EQ(repo->getMemObjectSegmentsForSpTag(kP, "HP0", "MC[1:4]"), Strings{});
  EXPECT_EQ(oracle.string(kPlatform + "/qd:busInterface[@qd:name = 'MEMSS_MC' and @qd:sptag='MC']/"
                                      "qd:addressSegment[@qd:index='2']/@qd:baseName"),
            "MC_S2");
}

TEST_F(QDSRepoMemObjectsTest, SegmentOfAPlainTagIsTheInterfacesAddressSegment) {
  EXPECT_EQ(repo->getMemObjectSegmentsForSpTag(kP, "HP0", "HP0"), (Strings{"HP0_SEG"}));
  EXPECT_EQ(repo->getMemObjectSegmentsForSpTag(kP, "HP1", "HP0"), Strings{});
  EXPECT_EQ(oracle.string(kPlatform + "/qd:busInterface[@qd:sptag='HP0' and @qd:name='HP0']/"
                                      "@qd:addressSegment"),
            "HP0_SEG");
}

TEST_F(QDSRepoMemObjectsTest, MemoryInstancesFollowTheSegments) {
  EXPECT_EQ(repo->getMemObjectMemInstsForSpTag(kP, "MEMSS_MC", "MC[0:2]"),
            (Strings{"mc_0", "mc_1", "mc_2"}));
  EXPECT_EQ(repo->getMemObjectMemInstsForSpTag(kP, "DDR", "DDR"), (Strings{"ddr4_mem_ctrl_0"}));
  EXPECT_EQ(repo->getMemObjectMemInstsForSpTag(kP, "HP0", "HP0"), Strings{});
  EXPECT_EQ(oracle.string(kPlatform + "/qd:busInterface[@qd:name='MEMSS_MC' and @qd:sptag='MC']/"
                                      "qd:addressSegment[@qd:index='1']/@qd:memoryInstance"),
            "mc_1");
}

TEST_F(QDSRepoMemObjectsTest, MemoryInterfaceOfAPlainTagOnlyAndWhenPresent) {
  EXPECT_EQ(repo->getMemObjectMemInterfaceForSpTag(kP, "DDR", "DDR"), (Strings{"C0_DDR4"}));
  EXPECT_EQ(repo->getMemObjectMemInterfaceForSpTag(kP, "NOC_HBM", "NOC_HBM"),
            (Strings{oracle.string(kPlatform +
                                   "/qd:busInterface[@qd:sptag='NOC_HBM' and @qd:name='NOC_HBM']/"
                                   "@qd:memoryInterface")}));
  EXPECT_EQ(repo->getMemObjectMemInterfaceForSpTag(kP, "DDR", "DDR[0]"), Strings{});
  EXPECT_EQ(repo->getMemObjectMemInterfaceForSpTag(kP, "HP0", "HP0"), Strings{});
}

// ---- Auto enable and masters -----------------------------------------------------------------

TEST_F(QDSRepoMemObjectsTest, AutoEnableOfAPlainTagWithoutTheAttributeIsTrue) {
  EXPECT_EQ(repo->getSpTagAutoEnable(kP, "HP0"), "true");
  EXPECT_EQ(repo->getSpTagAutoEnable(kP, "NOC_HBM"), "preferred");
  EXPECT_EQ(repo->getSpTagAutoEnable(kP, "STREAM"), "false");
  EXPECT_EQ(oracle.string(kPlatform + "/qd:busInterface[@qd:sptag='NOC_HBM']/@qd:auto"),
            "preferred");
}

TEST_F(QDSRepoMemObjectsTest, AutoEnableOfPreferredAndTrueSegmentsIsTrue) {
  EXPECT_EQ(repo->getSpTagAutoEnable(kP, "MC[0:1]"), "true");
  EXPECT_EQ(repo->getSpTagAutoEnable(kP, "MC[0]"), "preferred");
}

TEST_F(QDSRepoMemObjectsTest, AutoEnableOfTrueAndFalseSegmentsIsFalse) {
  EXPECT_EQ(repo->getSpTagAutoEnable(kP, "MC[1:2]"), "false");
}

TEST_F(QDSRepoMemObjectsTest, AutoEnableWithoutTheAttributeOnAnySegmentWarnsAndIsFalse) {
  std::string answer;
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->getSpTagAutoEnable(kP, "DDR[0:1]"); }),
            "WARNING: [Morvane 83-1056] auto enable property unrecognized for spTag DDR[0:1]\n");
  EXPECT_EQ(answer, "false");
}

TEST_F(QDSRepoMemObjectsTest, AutoEnableOfARangeOnTwoInterfacesWarnsAndIsFalse) {
  // The range stands for one object, "", which has no segments, so no segment has a value.
  std::string answer;
  EXPECT_EQ(qvtest::stderrOf([&] { answer = odd->getSpTagAutoEnable("p", "TWIN[0:1]"); }),
            "WARNING: [Morvane 83-1056] auto enable property unrecognized for spTag TWIN[0:1]\n");
  EXPECT_EQ(answer, "false");
}

TEST_F(QDSRepoMemObjectsTest, AutoEnableOfARangeOnNoInterfaceWarnsAndIsFalse) {
  std::string answer;
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->getSpTagAutoEnable(kP, "HBM[0]"); }),
            "WARNING: [Morvane 83-1056] auto enable property unrecognized for spTag HBM[0]\n");
  EXPECT_EQ(answer, "false");
  EXPECT_EQ(qvtest::stderrOf([&] { answer = repo->getSpTagAutoEnable(kP, "HBM[0:7]"); }),
            "WARNING: [Morvane 83-1056] auto enable property unrecognized for spTag HBM[0:7]\n");
  EXPECT_EQ(answer, "false");
}

TEST_F(QDSRepoMemObjectsTest, MaxMastersOfTheSecondPortOfAnInterconnectIsZero) {
  EXPECT_EQ(repo->getMemObjectMaxMasters("HP1", kP), 0);
  EXPECT_EQ(repo->getMemObjectMaxMasters("HP0", kP), 2);
  EXPECT_EQ(oracle.integer("count(" + kPlatform +
                           "/qd:busInterface[@qd:sptag and @qd:instanceRef='hp_ic'])"),
            2);
}

TEST_F(QDSRepoMemObjectsTest, MaxMastersByTheComponentBehindTheObject) {
  EXPECT_EQ(repo->getMemObjectMaxMasters("NOC_HBM", kP), 16);  // axi_noc
  EXPECT_EQ(odd->getMemObjectMaxMasters("NOC2", "p"), 16);     // axi_noc2, its own 3 unread
  EXPECT_EQ(repo->getMemObjectMaxMasters("ACP", kP), 8);       // the CPU, ACP
  EXPECT_EQ(odd->getMemObjectMaxMasters("ACP0", "p"), 8);
  EXPECT_EQ(odd->getMemObjectMaxMasters("HP2", "p"), 16);  // the CPU, not ACP
  EXPECT_EQ(odd->getMemObjectMaxMasters("SC0", "p"), 2);   // smartconnect
  EXPECT_EQ(odd->getMemObjectMaxMasters("SC1", "p"), 0);
  EXPECT_EQ(repo->getMemObjectMaxMasters("DDR", kP), 15);  // its own attribute
  EXPECT_EQ(repo->getMemObjectMaxMasters("STREAM", kP), -1);
  EXPECT_EQ(repo->getMemObjectMaxMasters("NOPE", kP), -1);
  EXPECT_EQ(oracle.string("/qd:repository/qd:component[@qd:name='" + kP +
                          "'][1]/qd:platformInfo/qd:systemClocks/qd:clock[@qd:name='CPU']/"
                          "@qd:componentRef"),
            "x86");
}

TEST_F(QDSRepoMemObjectsTest, MaxMastersOfARangeIsTheLeastOfItsSegments) {
  EXPECT_EQ(repo->getSpTagMaxMasters(kP, "MEMSS_MC", "MC[0:1]"), 2);
  EXPECT_EQ(repo->getSpTagMaxMasters(kP, "MEMSS_MC", "MC[0]"), 4);
  EXPECT_EQ(repo->getSpTagMaxMasters(kP, "MEMSS_MC", "MC[0:2]"), -1);       // one segment lacks it
  EXPECT_EQ(repo->getSpTagMaxMasters(kP, "MEMSS_MC", "MC[5:6]"), INT_MAX);  // no segments
  EXPECT_EQ(repo->getSpTagMaxMasters(kP, "HP1", "HP1"), 0);  // a plain tag: the object's
  EXPECT_EQ(repo->getSpTagMaxMasters(kP, "DDR", "DDR"), 15);
}

// ---- The memory object family ----------------------------------------------------------------

TEST_F(QDSRepoMemObjectsTest, FileLevelReadersAnswerTheAttributeOrTheirSentinel) {
  EXPECT_EQ(getMemObjectStringAttr(*repo, kP, "HBM", "qd:cacheCoherent"), "false");
  EXPECT_EQ(getMemObjectStringAttr(*repo, kP, "HBM", "qd:auto"), "");
  EXPECT_EQ(getMemObjectStringAttr(*repo, "vadd", "m_axi_gmem", "qd:sptag"), "");  // no platform
  EXPECT_EQ(getMemObjectIntAttr(*repo, kP, "DDR", "qd:cardinality"), 4);
  EXPECT_EQ(getMemObjectIntAttr(*repo, kP, "S_AXI_CTRL", "qd:regionSize"), -1);  // no memport
  EXPECT_EQ(getIthMemObjectStringAttr(*repo, 2, kP, "qd:sptag"), "MC");
  EXPECT_EQ(getIthMemObjectStringAttr(*repo, 8, kP, "qd:name"), "");
  EXPECT_EQ(getIthMemObjectIntAttr(*repo, 2, kP, "qd:cardinality"), 3);
  EXPECT_EQ(getIthMemObjectIntAttr(*repo, 3, kP, "qd:cardinality"), -1);
  EXPECT_EQ(getMemObjectSegmentStringAttr(*repo, kP, "MEMSS_MC", "MC_S0", "qd:auto"), "preferred");
  EXPECT_EQ(getMemObjectSegmentStringAttr(*repo, kP, "DDR", "C0_DDR4_ADDR", "qd:auto"), "");
  EXPECT_EQ(getMemObjectSegmentIntAttr(*repo, kP, "MEMSS_MC", "MC_S1", "qd:maxMasters"), 2);
  EXPECT_EQ(getMemObjectSegmentIntAttr(*repo, kP, "MEMSS_MC", "MC_S2", "qd:maxMasters"), -1);
  EXPECT_EQ(getMemObjectSegmentIntAttr(*repo, kP, "MEMSS_MC", "MC_S2", "qd:index"),
            oracle.integer("number(" + kPlatform +
                           "/qd:busInterface[@qd:memport and @qd:name='MEMSS_MC']/"
                           "qd:addressSegment[@qd:baseName='MC_S2']/@qd:index)"));
}

TEST_F(QDSRepoMemObjectsTest, MemObjectAttributesByName) {
  std::string const object = kPlatform + "/qd:busInterface[@qd:memport and @qd:name='HP0']/@";
  EXPECT_EQ(repo->getMemObjectAddressSegment(kP, "HP0"), "HP0_SEG");
  EXPECT_EQ(repo->getMemObjectCompRef(kP, "HP0"), oracle.string(object + "qd:componentRef"));
  EXPECT_EQ(repo->getMemObjectCompRef(kP, "HP0"), "axi_interconnect");
  EXPECT_EQ(repo->getMemObjectSptag(kP, "DDR"), "DDR");
  EXPECT_EQ(repo->getMemObjectSptag(kP, "HBM"), "");
  EXPECT_EQ(repo->getMemObjectDataWidth(kP, "HP0"), 128);
  EXPECT_EQ(repo->getMemObjectDataWidth(kP, "HP0"),
            oracle.integer("number(" + object + "qd:dataWidth)"));
  EXPECT_EQ(repo->getMemObjectPeakMemoryBandwidth(kP, "DDR"), 19200);
  EXPECT_EQ(repo->getMemObjectPeakMemoryBandwidth(kP, "HBM"), -1);
  EXPECT_EQ(repo->getMemObjectInstRef(kP, "HP1"), "hp_ic");
  EXPECT_EQ(repo->getMemObjectSlr(kP, "MEMSS_MC"), "SLR1");
  EXPECT_EQ(repo->getMemObjectMemPort(kP, "STREAM"), "S_AXIS");
  EXPECT_EQ(repo->getMemObjectCompRef(kP, "NOPE"), "");
  EXPECT_EQ(repo->getMemObjectDataWidth("nope", "HP0"), -1);
}

TEST_F(QDSRepoMemObjectsTest, MemObjectAttributesByIndexCountSlaveMemoryObjects) {
  std::string const ith = kPlatform + "/qd:busInterface[@qd:memport and @qd:mode='slave'][";
  EXPECT_EQ(repo->getIthMemObject(0, kP), "DDR");
  EXPECT_EQ(repo->getIthMemObject(7, kP), oracle.string(ith + "8]/@qd:name"));
  EXPECT_EQ(repo->getIthMemObject(7, kP), "STREAM");
  EXPECT_EQ(repo->getIthMemObject(8, kP), "");
  EXPECT_EQ(repo->getIthMemObjectMemport(2, kP), "memss");
  EXPECT_EQ(repo->getIthMemObjectMemoryInstRef(0, kP), "ddr4_mem_ctrl_0");
  EXPECT_EQ(repo->getIthMemObjectAddressSegment(3, kP), "HP0_SEG");
  EXPECT_EQ(repo->getIthMemObjectCompRef(5, kP), "x86");
  EXPECT_EQ(repo->getIthMemObjectInstRef(1, kP), "memss_hbm");
  EXPECT_EQ(repo->getIthMemObjectSptag(6, kP), "NOC_HBM");
  EXPECT_EQ(repo->getIthMemObjectSlr(4, kP), oracle.string(ith + "5]/@qd:slr"));
  EXPECT_EQ(repo->getIthMemObjectDataWidth(7, kP), 64);
  EXPECT_EQ(repo->getIthMemObjectPeakMemoryBandwidth(0, kP), 19200);
  EXPECT_EQ(repo->getIthMemObjectPeakMemoryBandwidth(1, kP), -1);
  EXPECT_EQ(repo->getIthMemObjectMaxMasters(1, kP), 32);
  EXPECT_EQ(repo->getIthMemObjectMaxMasters(3, kP), -1);  // the attribute, not the rules
  EXPECT_EQ(repo->getIthMemObjectSptag(-1, kP), "");
  EXPECT_EQ(repo->getIthMemObjectSlr(0, "vadd"), "");
}

TEST_F(QDSRepoMemObjectsTest, EveryMemberAnswersItsAttributesExpression) {
  using ByName = std::string (QDSRepo::*)(std::string const&, std::string const&);
  using ByIndex = std::string (QDSRepo::*)(int, std::string const&);
  struct Member {
    char const* attribute;
    ByName byName;
    ByIndex byIndex;
  };
  Member const members[] = {
      {"qd:name", nullptr, &QDSRepo::getIthMemObject},
      {"qd:memport", &QDSRepo::getMemObjectMemPort, &QDSRepo::getIthMemObjectMemport},
      {"qd:memoryInstance", nullptr, &QDSRepo::getIthMemObjectMemoryInstRef},
      {"qd:addressSegment", &QDSRepo::getMemObjectAddressSegment,
       &QDSRepo::getIthMemObjectAddressSegment},
      {"qd:componentRef", &QDSRepo::getMemObjectCompRef, &QDSRepo::getIthMemObjectCompRef},
      {"qd:instanceRef", &QDSRepo::getMemObjectInstRef, &QDSRepo::getIthMemObjectInstRef},
      {"qd:sptag", &QDSRepo::getMemObjectSptag, &QDSRepo::getIthMemObjectSptag},
      {"qd:slr", &QDSRepo::getMemObjectSlr, &QDSRepo::getIthMemObjectSlr},
  };
  Strings const objects = {"DDR", "HBM", "MEMSS_MC", "HP0", "HP1", "ACP", "NOC_HBM", "STREAM"};
  for (Member const& member : members) {
    for (int i = 0; i < static_cast<int>(objects.size()); ++i) {
      SCOPED_TRACE(std::string(member.attribute) + " " + objects[i]);
      if (member.byName) {
        EXPECT_EQ((repo.get()->*member.byName)(kP, objects[i]),
                  oracle.string(kPlatform + "/qd:busInterface[@qd:memport and @qd:name='" +
                                objects[i] + "']/@" + member.attribute));
      }
      EXPECT_EQ((repo.get()->*member.byIndex)(i, kP),
                oracle.string(kPlatform + "/qd:busInterface[@qd:memport and @qd:mode='slave'][" +
                              std::to_string(i + 1) + "]/@" + member.attribute));
    }
  }
  using IntByName = int (QDSRepo::*)(std::string const&, std::string const&);
  using IntByIndex = int (QDSRepo::*)(int, std::string const&);
  struct IntMember {
    char const* attribute;
    IntByName byName;
    IntByIndex byIndex;
  };
  IntMember const numbers[] = {
      {"qd:dataWidth", &QDSRepo::getMemObjectDataWidth, &QDSRepo::getIthMemObjectDataWidth},
      {"qd:peakMemoryBandwidth", &QDSRepo::getMemObjectPeakMemoryBandwidth,
       &QDSRepo::getIthMemObjectPeakMemoryBandwidth},
      {"qd:maxMasters", nullptr, &QDSRepo::getIthMemObjectMaxMasters},
  };
  for (IntMember const& member : numbers) {
    for (int i = 0; i < static_cast<int>(objects.size()); ++i) {
      SCOPED_TRACE(std::string(member.attribute) + " " + objects[i]);
      if (member.byName) {
        EXPECT_EQ(
            (repo.get()->*member.byName)(kP, objects[i]),
            oracle.integer("number(" + kPlatform + "/qd:busInterface[@qd:memport and @qd:name='" +
                           objects[i] + "']/@" + member.attribute + ")"));
      }
      EXPECT_EQ((repo.get()->*member.byIndex)(i, kP),
                oracle.integer("number(" + kPlatform +
                               "/qd:busInterface[@qd:memport and @qd:mode='slave'][" +
                               std::to_string(i + 1) + "]/@" + member.attribute + ")"));
    }
  }
}

// ---- Other queries of memory objects -----------------------------------------------------------

TEST_F(QDSRepoMemObjectsTest, NumberOfMemObjectsCountsSlavesOfThePlatformOnly) {
  EXPECT_EQ(repo->getNumMemObjects(kP), 8);
  EXPECT_EQ(repo->getNumMemObjects(kP),
            oracle.integer("count(/qd:repository/qd:component[@qd:name='" + kP +
                           "'][1]/qd:busInterface[@qd:memport and @qd:mode='slave'])"));
  EXPECT_EQ(repo->getNumMemObjects("vadd"), -1);
  EXPECT_EQ(repo->getNumMemObjects("nope"), -1);
}

TEST_F(QDSRepoMemObjectsTest, IsMemObjectWantsAMemport) {
  EXPECT_TRUE(repo->isMemObject(kP, "HBM"));
  EXPECT_TRUE(
      oracle.boolean("boolean(" + kPlatform + "/qd:busInterface[@qd:memport and @qd:name='HBM'])"));
  EXPECT_FALSE(repo->isMemObject(kP, "S_AXI_CTRL"));
  EXPECT_FALSE(repo->isMemObject("vadd", "m_axi_gmem"));
}

TEST_F(QDSRepoMemObjectsTest, TagsOfAMemportAreCountedOnItsInterfaces) {
  EXPECT_EQ(repo->getNumSptagsForMemObject(kP, "S_AXI_HP"), 2);
  EXPECT_EQ(
      repo->getNumSptagsForMemObject(kP, "memss"),
      oracle.integer("count(" + kPlatform + "/qd:busInterface[@qd:memport='memss']/@qd:sptag)"));
  EXPECT_EQ(repo->getNumSptagsForMemObject(kP, "memss"), 2);  // HBM has none
  EXPECT_EQ(repo->getNumSptagsForMemObject("vadd", "memss"), -1);
  EXPECT_EQ(repo->getIthSptagForMemObject(1, kP, "S_AXI_HP"), "HP1");
  // The index runs over the interfaces of the memport, tagged or not.
  EXPECT_EQ(repo->getIthSptagForMemObject(1, kP, "memss"),
            oracle.string(kPlatform + "/qd:busInterface[@qd:memport='memss'][2]/@qd:sptag"));
  EXPECT_EQ(repo->getIthSptagForMemObject(1, kP, "memss"), "");
  EXPECT_EQ(repo->getIthSptagForMemObject(2, kP, "memss"), "MC");
  EXPECT_EQ(repo->getIthSptagForMemObject(0, "vadd", "memss"), "");
}

TEST_F(QDSRepoMemObjectsTest, PortOfATagIsTheFirstInterfaceThatCarriesIt) {
  EXPECT_EQ(repo->getPortForMemObjectSptag(kP, "S_AXI_HP", "HP1"), "HP1");
  EXPECT_EQ(
      repo->getPortForMemObjectSptag(kP, "S_AXI_HP", "HP1"),
      oracle.string(kPlatform + "/qd:busInterface[@qd:memport='S_AXI_HP' and @qd:sptag = 'HP1'][1]/"
                                "@qd:name"));
  EXPECT_EQ(repo->getPortForMemObjectSptag(kP, "memss", "HP1"), "");
  EXPECT_EQ(repo->getPortForMemObjectSptag(kP, "S_AXI_HP", ""), "");
  EXPECT_EQ(odd->getPortForSptag("p", "GP0"), "GP0");
  EXPECT_EQ(repo->getPortForSptag(kP, "NOC_HBM"),
            oracle.string(kPlatform + "/qd:busInterface[@qd:sptag='NOC_HBM'][1]/@qd:name"));
  EXPECT_EQ(repo->getPortForSptag("vadd", "DDR"), "");
}

TEST_F(QDSRepoMemObjectsTest, AllSlrsAreSortedAndEachOnce) {
  EXPECT_EQ(repo->getAllSlrs(kP), (Strings{"SLR0", "SLR1"}));
  EXPECT_EQ(repo->getAllSlrs("vadd"), Strings{});
  EXPECT_EQ(odd->getAllSlrs("p"), Strings{});
}

TEST_F(QDSRepoMemObjectsTest, InstanceSlrIsTheSlrOfThePortsInstance) {
  EXPECT_EQ(repo->getQdCompPlatformInstanceSlr(kP, "HP0"), "SLR1");
  EXPECT_EQ(repo->getQdCompPlatformInstanceSlr(kP, "DDR"),
            oracle.string(kPlatform +
                          "/qd:busInterface[@qd:instanceRef=../qd:busInterface[@qd:name='DDR']/"
                          "@qd:instanceRef]/@qd:slr"));
  EXPECT_EQ(repo->getQdCompPlatformInstanceSlr(kP, "STREAM"), "");  // no instance
  EXPECT_EQ(repo->getQdCompPlatformInstanceSlr("vadd", "m_axi_gmem"), "");
}

}  // namespace
}  // namespace qd
