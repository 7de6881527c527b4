// NoC queries: the connectivity of the example platform's NoC instances, the identity and
// interleave fallbacks of their segments, the platform's NoC estimates and the resource kind
// behind a port.
#include <gtest/gtest.h>

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
// The platform as the NoC expressions select it, with the blank before the "=".
std::string const kNocPlatform =
    "/qd:repository/qd:component[@qd:name='qv_accel_h2_gen3x16' and @qd:type ='platform'][1]";
std::string const kNoc0 = kNocPlatform + "/qd:nocConnectivity[@qd:instanceRef='noc_0'][1]";
std::string const kS00 = kNoc0 + "/qd:busInterface[@qd:name='S00_AXI']";

std::string platformWith(std::string const& name, std::string const& inside) {
  return "<qd:component qd:name=\"" + name +
         "\" qd:type=\"platform\"><qd:platformInfo><qd:systemClocks qd:defaultClock=\"0\"/>"
         "</qd:platformInfo>" +
         inside + "</qd:component>";
}

class QDSRepoNocTest : public ::testing::Test {
 protected:
  void SetUp() override {
    qvtest::stderrOf([&] { repo = std::make_unique<QDSRepo>(example, 0); });
    ASSERT_TRUE(repo->platformComponent);
  }

  // A repository of one platform holding `inside`.
  std::unique_ptr<QDSRepo> small(std::string const& inside) {
    std::ofstream(dir.file("noc.xml")) << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">"
                                       << platformWith("p", inside) << "</qd:repository>";
    std::unique_ptr<QDSRepo> made;
    qvtest::stderrOf([&] { made = std::make_unique<QDSRepo>(dir.file("noc.xml"), 0); });
    return made;
  }

  qvtest::SilentLibxml silent;
  qvtest::TempDir dir;
  std::string const example = std::string(QV_EXAMPLES_DIR) + "/repository/qd_ip_db.xml";
  qvtest::XPathOracle oracle{example};
  std::unique_ptr<QDSRepo> repo;
};

TEST_F(QDSRepoNocTest, HasNocDataForAnInstanceOfThePlatform) {
  EXPECT_TRUE(repo->hasNocData(kP, "noc_1"));
  EXPECT_TRUE(oracle.boolean("boolean(" + kNoc0 + ")"));
  EXPECT_FALSE(repo->hasNocData(kP, "noc_9"));
  EXPECT_FALSE(repo->hasNocData("vadd", "noc_0"));
}

TEST_F(QDSRepoNocTest, SetsOfInstancesAndConnections) {
  EXPECT_EQ(repo->getNocInstanceSet(kP), (Strings{"noc_0", "noc_1"}));
  EXPECT_EQ(repo->getNocInstanceSet("vadd"), Strings{});
  EXPECT_EQ(repo->getNocConnectionSet(kP, "noc_0"), (Strings{"S00_AXI", "M00_AXI"}));
  EXPECT_EQ(repo->getNocSlaveBusIfSet(kP, "noc_0"), (Strings{"S00_AXI"}));
  EXPECT_EQ(repo->getNocMasterBusIfSet(kP, "noc_0"), (Strings{"M00_AXI"}));
  EXPECT_EQ(repo->getNocMasterBusIfSet(kP, "noc_1"), Strings{});
  EXPECT_EQ(repo->getNocConnectionSet(kP, "noc_9"), Strings{});
}

TEST_F(QDSRepoNocTest, NumberOfSegmentsOfAConnection) {
  EXPECT_EQ(repo->numNocConnectionAddressSegment(kP, "noc_0", "S00_AXI"), 4);
  EXPECT_EQ(repo->numNocConnectionAddressSegment(kP, "noc_0", "S00_AXI"),
            oracle.integer("count(" + kS00 + "/qd:addressSegment)"));
  EXPECT_EQ(repo->numNocConnectionAddressSegment(kP, "noc_0", "M00_AXI"), 0);
  EXPECT_EQ(repo->numNocConnectionAddressSegment("vadd", "noc_0", "S00_AXI"), 0);
}

TEST_F(QDSRepoNocTest, AttributesOfAConnection) {
  EXPECT_EQ(repo->getNocConnectionBusInterfaceRef(kP, "noc_0", "M00_AXI"), "NOC_HBM");
  EXPECT_EQ(
      repo->getNocConnectionBusInterfaceRef(kP, "noc_1", "S00_AXI"),
      oracle.string(kNocPlatform + "/qd:nocConnectivity[@qd:instanceRef='noc_1'][1]/"
                                   "qd:busInterface[@qd:name='S00_AXI']/@qd:busInterfaceRef"));
  EXPECT_EQ(repo->getNocConnectionMode(kP, "noc_0", "M00_AXI"), "master");
  EXPECT_EQ(repo->getNocConnectionMode(kP, "noc_0", "S00_AXI"), oracle.string(kS00 + "/@qd:mode"));
  EXPECT_EQ(repo->getNocConnectionMode(kP, "noc_0", "S99_AXI"), "");
}

TEST_F(QDSRepoNocTest, AttributesOfASegmentByIndexFromZero) {
  std::string const second = kS00 + "/qd:addressSegment[2]/@";
  EXPECT_EQ(repo->getNocConnectionAddressSegmentName(kP, "noc_0", "S00_AXI", 1), "HBM1x2_PC");
  EXPECT_EQ(repo->getNocConnectionAddressSegmentName(kP, "noc_0", "S00_AXI", 0), "");
  EXPECT_EQ(repo->getNocConnectionAddressSegmentInstanceRef(kP, "noc_0", "S00_AXI", 1),
            oracle.string(second + "qd:instanceRef"));
  EXPECT_EQ(repo->getNocConnectionAddressSegmentInstanceRef(kP, "noc_0", "S00_AXI", 2),
            "memss_ddr");
  EXPECT_EQ(repo->getNocConnectionAddressSegmentRegion(kP, "noc_0", "S00_AXI", 0), "HBM0");
  EXPECT_EQ(repo->getNocConnectionAddressSegmentReadBwUsed(kP, "noc_0", "S00_AXI", 1), 400);
  EXPECT_EQ(repo->getNocConnectionAddressSegmentReadBwUsed(kP, "noc_0", "S00_AXI", 1),
            oracle.integer("number(" + second + "qd:readBwUsed)"));
  EXPECT_EQ(repo->getNocConnectionAddressSegmentWriteBwUsed(kP, "noc_0", "S00_AXI", 0), 800);
  EXPECT_EQ(repo->getNocConnectionAddressSegmentWriteBwUsed(kP, "noc_0", "S00_AXI", 0),
            oracle.integer("number(" + kS00 + "/qd:addressSegment[1]/@qd:writeBwUsed)"));
  EXPECT_EQ(repo->getNocConnectionAddressSegmentName(kP, "noc_0", "S00_AXI", 2),
            oracle.string(kS00 + "/qd:addressSegment[3]/@qd:name"));
  EXPECT_EQ(repo->getNocConnectionAddressSegmentRegion(kP, "noc_0", "S00_AXI", 2),
            oracle.string(kS00 + "/qd:addressSegment[3]/@qd:region"));
  EXPECT_EQ(repo->getNocConnectionAddressSegmentWriteBwUsed(kP, "noc_0", "S00_AXI", 1), -1);
  EXPECT_EQ(repo->getNocConnectionAddressSegmentRegion(kP, "noc_0", "S00_AXI", 9), "");
}

TEST_F(QDSRepoNocTest, SegmentIdIsTheAttributeWhenThere) {
  EXPECT_EQ(repo->getNocConnectionAddressSegmentId(kP, "noc_0", "S00_AXI", 0), "0");
  EXPECT_EQ(repo->getNocConnectionAddressSegmentId(kP, "noc_0", "S00_AXI", 3),
            oracle.string(kS00 + "/qd:addressSegment[4]/@qd:id"));
}

TEST_F(QDSRepoNocTest, SegmentWithoutAnIdIsItsNameTwoUnderscoresAndItsInstance) {
  EXPECT_EQ(repo->getNocConnectionAddressSegmentId(kP, "noc_0", "S00_AXI", 1),
            "HBM1x2_PC__memss_hbm");
  EXPECT_EQ(repo->getNocConnectionAddressSegmentId(kP, "noc_0", "S00_AXI", 9), "__");
}

TEST_F(QDSRepoNocTest, InterleaveIsTheAttributeWhenThere) {
  EXPECT_EQ(repo->getNocConnectionAddressSegmentInterleave(kP, "noc_0", "S00_AXI", 3), 2);
  // "false" is there but no number.
  EXPECT_EQ(repo->getNocConnectionAddressSegmentInterleave(kP, "noc_0", "S00_AXI", 0), -1);
  EXPECT_EQ(repo->getNocConnectionAddressSegmentInterleave(kP, "noc_0", "S00_AXI", 0),
            oracle.integer("number(" + kS00 + "/qd:addressSegment[1]/@qd:interleave)"));
}

TEST_F(QDSRepoNocTest, InterleaveWithoutTheAttributeIsTwoWhenTheNameHoldsRegionX2) {
  EXPECT_EQ(repo->getNocConnectionAddressSegmentInterleave(kP, "noc_0", "S00_AXI", 1), 2);
}

TEST_F(QDSRepoNocTest, InterleaveWithoutTheAttributeIsFourWhenTheNameHoldsBothForms) {
  EXPECT_EQ(repo->getNocConnectionAddressSegmentInterleave(kP, "noc_0", "S00_AXI", 2), 4);
}

TEST_F(QDSRepoNocTest, InterleaveWithoutTheAttributeOrAFormInTheNameIsOne) {
  auto const noc = small(
      "<qd:nocConnectivity qd:instanceRef=\"n\"><qd:busInterface qd:name=\"c\">"
      "<qd:addressSegment qd:name=\"DDRx2\" qd:region=\"HBM\"/>"
      "<qd:addressSegment qd:name=\"HBM_x4\" qd:region=\"HBM\"/>"
      "</qd:busInterface></qd:nocConnectivity>");
  EXPECT_EQ(noc->getNocConnectionAddressSegmentInterleave("p", "n", "c", 0), 1);
  EXPECT_EQ(noc->getNocConnectionAddressSegmentInterleave("p", "n", "c", 1), 1);
}

TEST_F(QDSRepoNocTest, ResourcesOfThePlatformInTheirOrder) {
  int out[5] = {7, 7, 7, 7, 7};
  EXPECT_TRUE(repo->getPlatformNocResources(kP, out[0], out[1], out[2], out[3], out[4]));
  EXPECT_EQ(std::vector<int>(out, out + 5), (std::vector<int>{28, 28, 0, 0, 32}));
  EXPECT_EQ(out[4],
            oracle.integer("number(" + kNocPlatform + "/qd:resourceEstimates/@qd:nocHbmNmu)"));
  int bandwidth = 7;
  EXPECT_TRUE(repo->getPlatformNocChannelBandwidth(kP, bandwidth));
  EXPECT_EQ(bandwidth, 16000);
}

TEST_F(QDSRepoNocTest, PlatformWithoutTheHbmEstimateIsTrueWithMinusOneForIt) {
  auto const noc = small(
      "<qd:resourceEstimates qd:nocPlNmu=\"4\" qd:nocPlNsu=\"3\" qd:nocAieNmu=\"2\""
      " qd:nocAieNsu=\"1\"/>");
  int out[5] = {7, 7, 7, 7, 7};
  std::string const err = qvtest::stderrOf([&] {
    EXPECT_TRUE(noc->getPlatformNocResources("p", out[0], out[1], out[2], out[3], out[4]));
  });
  EXPECT_EQ(err, "");
  EXPECT_EQ(std::vector<int>(out, out + 5), (std::vector<int>{4, 3, 2, 1, -1}));
  // Only the channel bandwidth's own attribute counts for it.
  int bandwidth = 7;
  EXPECT_FALSE(noc->getPlatformNocChannelBandwidth("p", bandwidth));
  EXPECT_EQ(bandwidth, 7);
}

TEST_F(QDSRepoNocTest, PlatformWithoutResourceEstimatesIsFalseAndKeepsTheOutValues) {
  auto const noc = small("");
  int out[5] = {1, 2, 3, 4, 5};
  EXPECT_FALSE(noc->getPlatformNocResources("p", out[0], out[1], out[2], out[3], out[4]));
  EXPECT_EQ(std::vector<int>(out, out + 5), (std::vector<int>{1, 2, 3, 4, 5}));
  int bandwidth = 9;
  EXPECT_FALSE(noc->getPlatformNocChannelBandwidth("p", bandwidth));
  EXPECT_EQ(bandwidth, 9);
  EXPECT_FALSE(repo->getPlatformNocResources("vadd", out[0], out[1], out[2], out[3], out[4]));
}

TEST_F(QDSRepoNocTest, ResourceTypeByTheInterfaceBehindAnAximmPort) {
  EXPECT_EQ(repo->supportedNocResourceType(kP, "HP0"), NOC_RESOURCE_PL_NMU);       // S00_AXI
  EXPECT_EQ(repo->supportedNocResourceType(kP, "HP1"), NOC_RESOURCE_PL_NSU);       // M00_AXI
  EXPECT_EQ(repo->supportedNocResourceType(kP, "NOC_HBM"), NOC_RESOURCE_HBM_NMU);  // HBM00_AXI
  EXPECT_EQ(oracle.string(kNocPlatform +
                          "/qd:busInterface[@qd:name='NOC_HBM' and @qd:busTypeRef='aximm']/"
                          "@qd:busInterfaceRef"),
            "HBM00_AXI");
  EXPECT_EQ(repo->supportedNocResourceType(kP, "DDR"), NOC_RESOURCE_NONE);  // no reference
  EXPECT_EQ(repo->supportedNocResourceType(kP, "nope"), NOC_RESOURCE_NONE);
}

TEST_F(QDSRepoNocTest, ResourceTypeOfAnAxisPortIsNoneSinceOnlyAximmIsSelected) {
  // STREAM's reference is S01_AXI, which would be a PL NMU on an aximm port.
  EXPECT_EQ(repo->supportedNocResourceType(kP, "STREAM"), NOC_RESOURCE_NONE);
}

TEST_F(QDSRepoNocTest, ResourceTypeWantsTheRightStartAndEnd) {
  auto const noc = small(
      "<qd:busInterface qd:name=\"a\" qd:busTypeRef=\"aximm\" qd:busInterfaceRef=\"S_AXI\"/>"
      "<qd:busInterface qd:name=\"b\" qd:busTypeRef=\"aximm\" qd:busInterfaceRef=\"S00_AXIS\"/>"
      "<qd:busInterface qd:name=\"c\" qd:busTypeRef=\"aximm\" qd:busInterfaceRef=\"HB_AXI\"/>"
      "<qd:busInterface qd:name=\"d\" qd:busTypeRef=\"aximm\" qd:busInterfaceRef=\"X_AXI\"/>");
  EXPECT_EQ(noc->supportedNocResourceType("p", "a"), NOC_RESOURCE_PL_NMU);
  EXPECT_EQ(noc->supportedNocResourceType("p", "b"), NOC_RESOURCE_NONE);
  EXPECT_EQ(noc->supportedNocResourceType("p", "c"), NOC_RESOURCE_NONE);
  EXPECT_EQ(noc->supportedNocResourceType("p", "d"), NOC_RESOURCE_NONE);
}

TEST_F(QDSRepoNocTest, PlatformOfAnotherTypeHasNoNocData) {
  EXPECT_EQ(repo->getNocConnectionSet("vadd", "noc_0"), Strings{});
  EXPECT_EQ(repo->getNocConnectionAddressSegmentReadBwUsed("vadd", "noc_0", "S00_AXI", 0), -1);
}

}  // namespace
}  // namespace qd
