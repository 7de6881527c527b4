#include "rtd/RtdSystemDiagramVisitor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <fstream>
#include <functional>
#include <limits>
#include <memory>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinKernelBuilder.h"
#include "diagram/TextConversions.h"
#include "platform/lmx60/lmx_exception.h"
#include "platform/ombro/Kernel.h"
#include "rtd/RtdTreeBuilder.h"
#include "tests/support/MessageCapture.h"
#include "tests/support/Messages.h"
#include "tests/support/TempDir.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using boost::property_tree::ptree;
using IPA::RtdSystemDiagramVisitor;
using Strings = std::vector<std::string>;

// A platform with every key the import reads, so that importing it sends no message.
constexpr char kPlatform[] = R"({
  "vendor": "qv",
  "name": "qv_test_platform",
  "description": "A platform for tests",
  "hardwarePlatform": {
    "boardId": "b1",
    "versionMajor": "2",
    "versionMinor": "1",
    "designIntent": {"server": {"value": "true"}, "embedded": {"value": "false"}},
    "generatedName": "platgen",
    "generatedVersion": "5.0",
    "generatedChangeList": "1234",
    "generatedTimestamp": "Mon Jan  1 00:00:00 2024",
    "board": {"name": "card", "vendor": "qv", "part": "part-1", "boardPart": "qv:card:1.0"},
    "resources": [{"resource": "LUT", "count": "100"}, {"resource": "DSP", "count": "7"}],
    "systemClocks": [{"name": "clk0", "origName": "ref0", "id": "0", "frequency": "300",
                      "period": "3.333", "status": "fixed"}],
    "busInterfaces": [{"name": "ddr", "spTag": "DDR",
                       "addressSegments": [{"slr": "SLR0", "index": "0"},
                                           {"slr": "SLR1", "index": "1"}]}],
    "devices": [{"core": {"name": "core0", "type": "clc_region", "instPath": "/top/core0",
                          "availableResources": {"lutCount": "1000", "registerCount": "2000",
                                                 "bramCount": "30", "dspCount": "40",
                                                 "uramCount": "50"}}}]
  }
})";

// A run-time data file with the given lists; an empty list text gives a section with count 0.
std::string rtdText(std::string const& memData, std::string const& ipData,
                    std::string const& connections,
                    std::string const& version = R"("major": "1", "minor": "0", "patch": "0")") {
  auto section = [](char const* name, char const* list, std::string const& entries) {
    return std::string("\"") + name + "\": {\"m_count\": \"" + (entries.empty() ? "0" : "1") +
           "\", \"" + list + "\": [" + entries + "]}";
  };
  return "{\"schema_version\": {" + version + "}, " +
         section("mem_topology", "m_mem_data", memData) + ", " +
         section("ip_layout", "m_ip_data", ipData) + ", " +
         section("connectivity", "m_connection", connections) + "}";
}

std::string memory(std::string const& type, std::string const& tag, std::string const& spTag = "",
                   std::string const& used = "1") {
  return R"({"m_type": ")" + type + R"(", "m_used": ")" + used + R"(", "m_sizeKB": "1024", )" +
         R"("m_base_address": "0x1000", "m_tag": ")" + tag + R"(", "m_spTag": ")" + spTag + R"("})";
}

std::string ip(std::string const& name) {
  return R"({"m_type": "IP_KERNEL", "m_base_address": "0x1800000", "m_name": ")" + name + R"("})";
}

std::string connection(std::string const& ipIndex, std::string const& memIndex,
                       std::string const& argName = "in", std::string const& argIndex = "0") {
  return R"({"arg_index": ")" + argIndex + R"(", "arg_name": ")" + argName +
         R"(", "mode": "1", "m_ip_layout_index": ")" + ipIndex + R"(", "mem_data_index": ")" +
         memIndex + R"("})";
}

class RtdSystemDiagramVisitorTest : public ::testing::Test {
 protected:
  // A platform file made from kPlatform after `change`; every call gives a new path, so that
  // the process-wide cache of platform texts never serves one test another test's platform.
  std::string platformFile(std::function<void(ptree&)> const& change = {}) {
    ptree tree = IPA::makePropertyTree(kPlatform);
    if (change) change(tree);
    std::string const path = directory.file("platform" + std::to_string(files++) + ".json");
    boost::property_tree::write_json(path, tree);
    return path;
  }

  static std::shared_ptr<IPA::RtdTree> tree(std::string const& text) {
    std::istringstream in(text);
    IPA::RtdTreeBuilder builder;
    builder.deSerialize(in);
    return builder.build();
  }

  // Imports `rtd` on `platform` into a new diagram and returns the diagram.
  // The kernels file "kernels.txt" of the working directory is not there: no kernels.
  pb::outerContainer import(std::string const& rtd, std::string const& platform,
                            std::string const& kernelsFile = "kernels.txt") {
    auto const root = std::make_shared<pb::outerContainer>();
    IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
    RtdSystemDiagramVisitor visitor(builder, platform, "gen", "1.2", "cl9", "ts", "detail a",
                                    "detail b", true, kernelsFile, "the label", "");
    auto const rtdTree = tree(rtd);
    visitor.visit(*rtdTree);
    return *root;
  }

  pb::outerContainer import(std::string const& rtd) { return import(rtd, platformFile()); }

  static pb::Qsa const& qsa(pb::outerContainer const& diagram) {
    return diagram.system_diagram_metadata().qsa();
  }
  static pb::userRegion const& region(pb::outerContainer const& diagram) {
    return diagram.system_diagram_metadata().qrxbin().user_regions(0);
  }

  qvtest::TempDir directory;
  int files = 0;
  qvtest::MessageCapture messages;
};

// A visitor on a throwaway diagram, for the operations that are called one by one.
class VisitorOperationsTest : public RtdSystemDiagramVisitorTest {
 protected:
  VisitorOperationsTest()
      : root(std::make_shared<pb::outerContainer>()),
        builder(root),
        visitor(builder, "unused", "gen", "1.2", "cl9", "ts", "da", "db", false, "k", "lbl", "") {}

  std::shared_ptr<pb::outerContainer> root;
  IPA::ProfileAnalyzerSystemDiagramBuilder builder;
  RtdSystemDiagramVisitor visitor;
};

// ---- The whole walk ----

TEST_F(RtdSystemDiagramVisitorTest, CompletePlatformAndFileGiveTheExactDiagramAndNoMessage) {
  auto const diagram = import(
      rtdText(memory("MEM_DDR4", "bank0", "DDR[1]"), ip("vadd:vadd_1"), connection("0", "0")));
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::outerContainer>(R"(
    system_diagram_metadata {
      qsa {
        vendor: "qv" board_id: "b1" name: "qv_test_platform" version_major: "2"
        version_minor: "1" description: "A platform for tests" design_intent: "server"
        generated_by { name: "platgen" version: "5.0" change_list: "1234"
                       timestamp: "Mon Jan  1 00:00:00 2024" }
        board { name: "card" vendor: "qv" part: "part-1" board_part: "qv:card:1.0" }
        available_resources { bram: "" uram: "" dsp: "7" lut: "100" reg: "" }
        clocks { name: "clk0" orig_name: "ref0" id: 0 frequency: 300 period: 3.333
                 status: CLOCK_FIXED }
        device_topology { id: "0" type: MEM_DDR4 used: "yes" size_kb: "1024"
                          base_address: "0x1000" tag: "bank0" sp_tag: "DDR[1]" slr: "SLR1" }
      }
      qrxbin {
        generated_by { name: "gen" version: "1.2" change_list: "cl9" timestamp: "ts"
                       detail_a: "detail a" detail_b: "detail b" flag: true
                       label_copy: "the label" label: "the label" note: "" }
        user_regions {
          name: "core0" type: "clc_region" inst_path: "/top/core0"
          compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" }
          connectivity { id: "0"
                         source { type: "compute_unit" id: "0" arg_index: "0" arg_name: "in"
                                  mode: "1" }
                         destination { type: "memory" id: "0" } }
          available_resources { lut: "1000" reg: "2000" bram: "30" uram: "50" dsp: "40" }
        }
      }
    })"),
                                  diagram));
  EXPECT_EQ(messages.formats(), Strings{});
}

TEST_F(RtdSystemDiagramVisitorTest, EmptyFileStillGetsPlatformRegionAndResources) {
  auto const diagram = import(rtdText("", "", ""));
  EXPECT_EQ(qsa(diagram).device_topology_size(), 0);
  ASSERT_EQ(diagram.system_diagram_metadata().qrxbin().user_regions_size(), 1);
  EXPECT_EQ(region(diagram).compute_units_size(), 0);
  EXPECT_EQ(region(diagram).connectivity_size(), 0);
  EXPECT_EQ(region(diagram).available_resources().lut(), "1000");
  EXPECT_EQ(qsa(diagram).name(), "qv_test_platform");
}

// ---- Schema version ----

TEST_F(RtdSystemDiagramVisitorTest, UnsupportedVersionFailsWithPartsJoinedByFullStopsAndLineEnd) {
  try {
    import(rtdText("", "", "", R"("major": "1", "minor": "2", "patch": "3")"), "no-such-platform");
    FAIL() << "no exception";
  } catch (std::runtime_error const& error) {
    // The platform is never asked for: its absence would have failed with another text.
    EXPECT_STREQ(error.what(),
                 "Unsupported rtd file schema.  The supported schema is: 1.0.0.  The version "
                 "found is 1.2.3.\n");
  }
}

TEST_F(VisitorOperationsTest, SupportedVersionPasses) {
  EXPECT_NO_THROW(visitor.checkRtdSchemaVersion(*tree(rtdText("", "", ""))));
  EXPECT_NO_THROW(visitor.checkRtdSchemaVersion(
      *tree(rtdText("", "", "", R"("major": "2", "minor": "0", "patch": "0")"))));
}

TEST_F(VisitorOperationsTest, EmptyVersionPartsShowAsEmptyBetweenTheFullStops) {
  try {
    visitor.checkRtdSchemaVersion(
        *tree(rtdText("", "", "", R"("major": "", "minor": "", "patch": "")")));
    FAIL() << "no exception";
  } catch (std::runtime_error const& error) {
    EXPECT_STREQ(error.what(),
                 "Unsupported rtd file schema.  The supported schema is: 1.0.0.  The version "
                 "found is ...\n");
  }
}

// ---- The platform cache ----

TEST_F(RtdSystemDiagramVisitorTest, SecondImportWithSamePlatformDoesNotAskThePlatformAgain) {
  std::string const first = platformFile();
  EXPECT_EQ(qsa(import(rtdText("", "", ""), first)).vendor(), "qv");
  // Rewritten underneath: the cached text still serves this name.
  ptree changed = IPA::makePropertyTree(kPlatform);
  changed.put("vendor", "changed");
  boost::property_tree::write_json(first, changed);
  EXPECT_EQ(qsa(import(rtdText("", "", ""), first)).vendor(), "qv");
  // Another name is fetched, and the first stays cached.
  std::string const second = directory.file("copy.json");
  boost::property_tree::write_json(second, changed);
  EXPECT_EQ(qsa(import(rtdText("", "", ""), second)).vendor(), "changed");
  EXPECT_EQ(qsa(import(rtdText("", "", ""), first)).vendor(), "qv");
}

TEST_F(RtdSystemDiagramVisitorTest, PlatformThatCannotBeFoundEndsTheImport) {
  EXPECT_THROW(import(rtdText("", "", ""), directory.file("absent.json")), std::runtime_error);
}

TEST_F(RtdSystemDiagramVisitorTest, PlatformThatIsNotJsonEndsTheImportAndStaysCached) {
  std::string const path = directory.file("broken.json");
  std::ofstream(path) << "{ not json";
  EXPECT_THROW(import(rtdText("", "", ""), path),
               boost::property_tree::json_parser::json_parser_error);
  // Mended on disk, but the bad text was cached.
  std::ofstream(path, std::ios::trunc) << kPlatform;
  EXPECT_THROW(import(rtdText("", "", ""), path),
               boost::property_tree::json_parser::json_parser_error);
}

// ---- The platform given as text ----

TEST_F(RtdSystemDiagramVisitorTest, PlatformGivenAsTextMakesTheSameDiagramAsTheFetchedOne) {
  std::string const rtd =
      rtdText(memory("MEM_DDR4", "DDR[0]", "DDR[0]"), ip("vadd:vadd_1"), connection("0", "0"));
  pb::outerContainer const fetched = import(rtd, platformFile());

  auto const root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
  // A name that no file has: the text given is all the walk reads.
  RtdSystemDiagramVisitor visitor(builder, "no-such-platform", "gen", "1.2", "cl9", "ts",
                                  "detail a", "detail b", true, "kernels.txt", "the label", "");
  visitor.visitWithPlatformText(*tree(rtd), kPlatform);
  EXPECT_EQ(root->SerializeAsString(), fetched.SerializeAsString());
  EXPECT_EQ(root->system_diagram_metadata().qsa().vendor(), "qv");
}

TEST_F(RtdSystemDiagramVisitorTest, PlatformGivenAsTextIsCheckedAfterTheVersionAndMustBeJson) {
  auto const root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
  RtdSystemDiagramVisitor visitor(builder, "", "", "", "", "", "", "", false, "", "", "");
  EXPECT_THROW(
      visitor.visitWithPlatformText(
          *tree(rtdText("", "", "", R"("major": "1", "minor": "2", "patch": "3")")), "{ not json"),
      std::runtime_error);
  EXPECT_FALSE(root->system_diagram_metadata().has_qsa());
  EXPECT_THROW(visitor.visitWithPlatformText(*tree(rtdText("", "", "")), "{ not json"),
               boost::property_tree::json_parser::json_parser_error);
}

// A fuzzing finding: a platform description of 200,000 "[" overflowed the parser's stack.
TEST_F(RtdSystemDiagramVisitorTest, PlatformNestedTooDeepEndsTheImportAsBadJson) {
  std::string const path = directory.file("deep.json");
  std::ofstream(path) << std::string(200000, '[');
  EXPECT_THROW(import(rtdText("", "", ""), path),
               boost::property_tree::json_parser::json_parser_error);
}

TEST_F(VisitorOperationsTest, PlatformValuesReturnsTheTextAsStored) {
  std::string const path = directory.file("exact.json");
  std::ofstream(path) << kPlatform;
  IPA::RtdSystemDiagramVisitor reader(builder, path, "", "", "", "", "", "", false, "", "", "");
  EXPECT_EQ(reader.platformValues(), kPlatform);
  EXPECT_EQ(reader.platformPropertyTree().get<std::string>("vendor"), "qv");
}

// ---- Memories ----

TEST_F(RtdSystemDiagramVisitorTest, OnlyAUsedTextOfOneGivesYes) {
  auto const diagram = import(
      rtdText(memory("MEM_DDR4", "a", "", "1") + "," + memory("MEM_DDR4", "b", "", "0") + "," +
                  memory("MEM_DDR4", "c", "", "") + "," + memory("MEM_DDR4", "d", "", "yes") + "," +
                  memory("MEM_DDR4", "e", "", " 1"),
              "", ""));
  Strings used;
  for (auto const& topology : qsa(diagram).device_topology()) used.push_back(topology.used());
  EXPECT_EQ(used, (Strings{"yes", "no", "no", "no", "no"}));
}

TEST_F(RtdSystemDiagramVisitorTest, MemoryWithoutAddressSegmentGetsEmptySlrAndImportGoesOn) {
  auto const diagram =
      import(rtdText(memory("MEM_HBM", "h0", "HBM[0]") + "," + memory("MEM_DDR4", "d0", "DDR[0]") +
                         "," + memory("MEM_DDR4", "d1", "DDR"),
                     "", ""));
  ASSERT_EQ(qsa(diagram).device_topology_size(), 3);
  EXPECT_EQ(qsa(diagram).device_topology(0).slr(), "");
  EXPECT_EQ(qsa(diagram).device_topology(1).slr(), "SLR0");
  // The tag must carry its bracketed index to find a segment.
  EXPECT_EQ(qsa(diagram).device_topology(2).slr(), "");
  EXPECT_EQ(messages.formats(), Strings{});
}

TEST_F(RtdSystemDiagramVisitorTest, MemoriesAreNumberedByPositionWithTheirTypeWord) {
  auto const diagram =
      import(rtdText(memory("MEM_HBM", "h0") + "," + memory("MEM_STREAMING_CONNECTION", "s") + "," +
                         memory("mem_ddr4", "x"),
                     "", ""));
  ASSERT_EQ(qsa(diagram).device_topology_size(), 3);
  EXPECT_EQ(qsa(diagram).device_topology(0).id(), "0");
  EXPECT_EQ(qsa(diagram).device_topology(0).type(), pb::MEM_HBM);
  EXPECT_EQ(qsa(diagram).device_topology(1).id(), "1");
  EXPECT_EQ(qsa(diagram).device_topology(1).type(), pb::MEM_STREAMING_CONNECTION);
  EXPECT_EQ(qsa(diagram).device_topology(2).id(), "2");
  EXPECT_EQ(qsa(diagram).device_topology(2).type(), pb::MEM_UNSET);
}

// ---- Compute units ----

TEST_F(RtdSystemDiagramVisitorTest, IpWithoutColonAddsNoComputeUnitAndTheNextTakesTheNextId) {
  auto const diagram =
      import(rtdText("", ip("vadd:vadd_1") + "," + ip("dma_engine") + "," + ip("vadd:vadd_2"), ""));
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::userRegion>(R"(
    name: "core0" type: "clc_region" inst_path: "/top/core0"
    compute_units { id: "0" kernel_name: "vadd" name: "vadd_1" }
    compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
    available_resources { lut: "1000" reg: "2000" bram: "30" uram: "50" dsp: "40" })"),
                                  region(diagram)));
}

TEST_F(RtdSystemDiagramVisitorTest, NameWithTwoColonsUsesItsFirstTwoParts) {
  auto const diagram = import(rtdText("", ip("mmult:mmult_1:extra"), ""));
  ASSERT_EQ(region(diagram).compute_units_size(), 1);
  EXPECT_EQ(region(diagram).compute_units(0).kernel_name(), "mmult");
  EXPECT_EQ(region(diagram).compute_units(0).name(), "mmult_1");
}

TEST_F(RtdSystemDiagramVisitorTest, LeadingColonGivesEmptyKernelNameAndTrailingColonEmptyName) {
  auto const diagram = import(rtdText("", ip(":cu_a") + "," + ip("kern:"), ""));
  ASSERT_EQ(region(diagram).compute_units_size(), 2);
  EXPECT_EQ(region(diagram).compute_units(0).kernel_name(), "");
  EXPECT_EQ(region(diagram).compute_units(0).name(), "cu_a");
  EXPECT_EQ(region(diagram).compute_units(1).kernel_name(), "kern");
  EXPECT_EQ(region(diagram).compute_units(1).name(), "");
}

TEST_F(RtdSystemDiagramVisitorTest, ComputeUnitTakesEveryClockPortInOrder) {
  auto const diagram =
      import(rtdText("",
                     R"({"m_name": "k:k_1", "m_clocks": [{"ap_clk": {"refClockId": "0"},
                                          "ap_clk_2": {"refClockId": "3"}},
                                         {"stream_clk": {}}]})",
                     ""));
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::computeUnit>(R"(
    id: "0" kernel_name: "k" name: "k_1"
    clock_refs { name: "ap_clk" clock_id: "0" }
    clock_refs { name: "ap_clk_2" clock_id: "3" }
    clock_refs { name: "stream_clk" clock_id: "" })"),
                                  region(diagram).compute_units(0)));
}

TEST_F(RtdSystemDiagramVisitorTest, IpLayoutCountZeroWithConnectionsStillGetsConnectionsAndTotals) {
  auto const diagram = import(rtdText(memory("MEM_DDR4", "d0"), "", connection("0", "0")));
  EXPECT_EQ(region(diagram).compute_units_size(), 0);
  EXPECT_EQ(region(diagram).connectivity_size(), 1);
  EXPECT_EQ(region(diagram).available_resources().uram(), "50");
}

// ---- User region ----

TEST_F(RtdSystemDiagramVisitorTest, MissingInstancePathSendsItsMessageAndGoesOn) {
  auto const diagram = import(rtdText("", "", ""), platformFile([](ptree& platform) {
                                platform.get_child("hardwarePlatform.devices")
                                    .begin()
                                    ->second.get_child("core")
                                    .erase("instPath");
                              }));
  EXPECT_EQ(region(diagram).name(), "core0");
  EXPECT_EQ(region(diagram).inst_path(), "");
  EXPECT_EQ(messages.formats(), Strings{"@82-164@"});
}

TEST_F(RtdSystemDiagramVisitorTest, MissingCoreNameOrTypeEndsTheImport) {
  for (char const* key : {"name", "type"}) {
    auto const platform = platformFile([key](ptree& tree) {
      tree.get_child("hardwarePlatform.devices").begin()->second.get_child("core").erase(key);
    });
    try {
      import(rtdText("", "", ""), platform);
      FAIL() << key;
    } catch (boost::property_tree::ptree_bad_path const& error) {
      EXPECT_EQ(std::string(error.what()),
                std::string("No such node (hardwarePlatform.devices..core.") + key + ")");
    }
  }
}

// ---- The generated-by section of the binary ----

TEST_F(RtdSystemDiagramVisitorTest, NoteStartsEmptyAndLabelStandsTwice) {
  auto const diagram = import(rtdText("", "", ""));
  auto const& generatedBy = diagram.system_diagram_metadata().qrxbin().generated_by();
  EXPECT_EQ(generatedBy.label(), "the label");
  EXPECT_EQ(generatedBy.label_copy(), "the label");
  EXPECT_EQ(generatedBy.note(), "");
}

TEST_F(VisitorOperationsTest, GeneratedByRowsCopyTheRequestStrings) {
  visitor.populateQrxBinGeneratedByBuider(std::make_shared<IPA::QrxBinGeneratedByBuilder>(
      *builder.getQrxBinBuilder(), builder.getRoot()));
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::qrxBinGeneratedBy>(R"(
    name: "gen" version: "1.2" change_list: "cl9" timestamp: "ts" detail_a: "da" detail_b: "db"
    flag: false label_copy: "lbl" label: "lbl" note: "")"),
                                  root->system_diagram_metadata().qrxbin().generated_by()));
  EXPECT_EQ(messages.formats(), Strings{});
}

// ---- The platform section ----

TEST_F(RtdSystemDiagramVisitorTest, PlatformWithoutOptionalKeysSendsEachMessageInOrder) {
  // Only what the import cannot do without: the first device's core name and type.
  std::string const path = directory.file("bare.json");
  std::ofstream(path)
      << R"({"hardwarePlatform": {"devices": [{"core": {"name": "c", "type": "t"}}]}})";
  auto const diagram = import(rtdText("", "", ""), path);
  EXPECT_EQ(messages.formats(),
            (Strings{"@82-182@", "@82-171@", "@82-178@", "@82-176@", "@82-177@", "@82-166@",
                     "@82-173@", "@82-175@", "@82-172@", "@82-174@", "@82-168@", "@82-170@",
                     "@82-169@", "@82-167@", "@82-164@", "@82-163@"}));
  EXPECT_EQ(messages.lines().front(),
            "WARNING: [morvane 82-182] The platform description gives no vendor; the platform's "
            "vendor is left empty in the system diagram.");
  // The generator and board sections come into being with their first field only.
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::Qsa>(R"(
    available_resources { bram: "" uram: "" dsp: "" lut: "" reg: "" })"),
                                  qsa(diagram)));
  EXPECT_EQ(region(diagram).name(), "c");
  EXPECT_EQ(region(diagram).available_resources().by_slr_size(), 0);
}

TEST_F(VisitorOperationsTest, EachTopLevelReadIsGuardedOnItsOwn) {
  ptree platform = IPA::makePropertyTree(kPlatform);
  platform.erase("name");
  platform.get_child("hardwarePlatform").erase("versionMinor");
  visitor.generateAndPopulateQsaBuilder(platform);
  EXPECT_EQ(messages.formats(), (Strings{"@82-178@", "@82-177@"}));
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::Qsa>(R"(
    vendor: "qv" board_id: "b1" version_major: "2" description: "A platform for tests"
    design_intent: "server")"),
                                  root->system_diagram_metadata().qsa()));
}

TEST_F(VisitorOperationsTest, GeneratedByAndBoardReadsAreGuardedOnTheirOwn) {
  ptree platform = IPA::makePropertyTree(kPlatform);
  platform.get_child("hardwarePlatform").erase("generatedChangeList");
  platform.get_child("hardwarePlatform.board").erase("vendor");
  visitor.populateQsaGeneratedByBuilder(builder.getQsaBuilder(), platform);
  visitor.populateQsaBoardBuilder(builder.getQsaBuilder(), platform);
  EXPECT_EQ(messages.formats(), (Strings{"@82-172@", "@82-170@"}));
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::Qsa>(R"(
    generated_by { name: "platgen" version: "5.0" timestamp: "Mon Jan  1 00:00:00 2024" }
    board { name: "card" part: "part-1" board_part: "qv:card:1.0" })"),
                                  root->system_diagram_metadata().qsa()));
}

TEST_F(VisitorOperationsTest, DesignIntentsTrueOnlyForOneOrTrueInDocumentOrder) {
  ptree const platform = IPA::makePropertyTree(R"({"hardwarePlatform": {"designIntent": {
    "z_one": {"value": "1"}, "a_true": {"value": "true"}, "blank_behind": {"value": "true  "},
    "yes": {"value": "yes"}, "zero": {"value": "0"}, "false": {"value": "false"},
    "upper": {"value": "TRUE"}, "missing": {}, "two": {"value": "2"}}}})");
  visitor.generateAndPopulateQsaBuilder(platform);
  auto const& intents = root->system_diagram_metadata().qsa().design_intent();
  EXPECT_EQ(Strings(intents.begin(), intents.end()), (Strings{"z_one", "a_true", "blank_behind"}));
}

TEST_F(VisitorOperationsTest, DesignIntentValueYesCountsAsFalse) {
  visitor.generateAndPopulateQsaBuilder(
      IPA::makePropertyTree(R"({"hardwarePlatform": {"designIntent": {"x": {"value": "yes"}}}})"));
  EXPECT_EQ(root->system_diagram_metadata().qsa().design_intent_size(), 0);
}

class QsaResourcesTest : public VisitorOperationsTest {
 protected:
  pb::qsaAvailableResources resources(std::string const& records) {
    visitor.populateQsaAvailableResourcesBuilder(
        builder.getQsaBuilder(),
        IPA::makePropertyTree(R"({"hardwarePlatform": {"resources": [)" + records + "]}}"));
    return root->system_diagram_metadata().qsa().available_resources();
  }
};

TEST_F(QsaResourcesTest, EveryWordTakesTheCountBehindItAndMissingWordsAreEmpty) {
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::qsaAvailableResources>(R"(bram: "1" uram: "2" dsp: "3" lut: "4" reg: "")"),
      resources(R"({"w": "BRAM", "count": "1"}, {"w": "URAM", "count": "2"},
                   {"anything": "DSP", "count": "3"}, {"x": "LUT", "count": "4"})")));
}

TEST_F(QsaResourcesTest, CountBeforeItsWordIsIgnoredAndTheWordWaitsForALaterRecord) {
  auto const result = resources(R"({"count": "5", "resource": "LUT"}, {"count": "6"})");
  EXPECT_EQ(result.lut(), "6");
}

TEST_F(QsaResourcesTest, TwoWordsInARowTheSecondWinsAndTheFirstGetsNoCount) {
  auto const result = resources(R"({"a": "BRAM", "b": "URAM", "count": "8"})");
  EXPECT_EQ(result.bram(), "");
  EXPECT_EQ(result.uram(), "8");
}

TEST_F(QsaResourcesTest, DspsWithAnSIsNotAResourceWordForTheDeviceTotals) {
  auto const result = resources(R"({"resource": "DSPs", "count": "12"})");
  EXPECT_EQ(result.dsp(), "");
}

TEST_F(QsaResourcesTest, LaterRecordWithTheSameWordOverwritesTheCount) {
  auto const result = resources(R"({"r": "REG", "count": "1"}, {"r": "REG", "count": "2"})");
  EXPECT_EQ(result.reg(), "2");
}

TEST_F(QsaResourcesTest, NoResourcesGiveFiveEmptyFields) {
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::qsaAvailableResources>(R"(bram: "" uram: "" dsp: "" lut: "" reg: "")"),
      resources("")));
}

class QsaClocksTest : public VisitorOperationsTest {
 protected:
  google::protobuf::RepeatedPtrField<pb::Clock> clocks(std::string const& records) {
    visitor.populateQsaSystemClocks(
        builder.getQsaBuilder(),
        IPA::makePropertyTree(R"({"hardwarePlatform": {"systemClocks": [)" + records + "]}}"));
    return root->system_diagram_metadata().qsa().clocks();
  }
};

TEST_F(QsaClocksTest, RecordWithAllMembersGivesTheExactClock) {
  auto const result = clocks(
      R"({"name": "c", "origName": "o", "id": "4", "frequency": "250.5", "period": "3.992",
          "status": "reserved"})");
  ASSERT_EQ(result.size(), 1);
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::Clock>(
          R"(name: "c" orig_name: "o" id: 4 frequency: 250.5 period: 3.992 status: CLOCK_RESERVED)"),
      result.Get(0)));
}

TEST_F(QsaClocksTest, MissingMembersTakeTheirDefaults) {
  auto const result = clocks(R"({"name": "c"})");
  ASSERT_EQ(result.size(), 1);
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::Clock>(R"(name: "c" orig_name: "" id: -1 frequency: -1 period: -1)"),
      result.Get(0)));
}

TEST_F(QsaClocksTest, RecordWithoutNameIsSkipped) {
  EXPECT_EQ(clocks(R"({"id": "1"}, {"name": "", "id": "2"})").size(), 0);
}

TEST_F(QsaClocksTest, StatusWordsAndTheirNumbers) {
  auto const result =
      clocks(R"({"name": "a", "status": "reserved"}, {"name": "b", "status": "fixed"},
    {"name": "c", "status": "scalable"}, {"name": "d", "status": "changeable"},
    {"name": "e", "status": "Fixed"}, {"name": "f", "status": "other"}, {"name": "g"})");
  std::vector<int> statuses;
  for (auto const& clock : result) statuses.push_back(clock.status());
  EXPECT_EQ(statuses, (std::vector<int>{1, 2, 3, 3, 0, 0, 0}));
}

TEST_F(QsaClocksTest, StatusWordInAnotherCaseGivesZero) {
  auto const result = clocks(R"({"name": "a", "status": "RESERVED"})");
  EXPECT_EQ(result.Get(0).status(), pb::CLOCK_STATUS_UNSET);
}

TEST_F(QsaClocksTest, IdWithALetterBehindTheDigitsGivesMinusOne) {
  auto const result = clocks(R"({"name": "a", "id": "12a"}, {"name": "b", "id": "7 "},
                                {"name": "c", "id": " 8"}, {"name": "d", "id": "99999999999"})");
  EXPECT_EQ(result.Get(0).id(), -1);
  EXPECT_EQ(result.Get(1).id(), 7);
  EXPECT_EQ(result.Get(2).id(), 8);
  EXPECT_EQ(result.Get(3).id(), -1);
}

TEST_F(QsaClocksTest, FrequencyAndPeriodMustBeWholeNumbers) {
  auto const result = clocks(R"({"name": "a", "frequency": "3e2", "period": "3.3MHz"})");
  EXPECT_EQ(result.Get(0).frequency(), 300.0);
  EXPECT_EQ(result.Get(0).period(), -1.0);
}

TEST_F(QsaClocksTest, TwoRecordsWithTheSameNameGiveOneClockTheLaterWinningFieldByField) {
  auto const result = clocks(R"({"name": "k", "origName": "o1", "id": "1", "frequency": "100",
                                 "period": "10", "status": "fixed"},
                                {"name": "other"},
                                {"name": "k", "id": "2", "status": "scalable"})");
  ASSERT_EQ(result.size(), 2);
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::Clock>(
          R"(name: "k" orig_name: "" id: 2 frequency: -1 period: -1 status: CLOCK_SCALABLE)"),
      result.Get(0)));
  EXPECT_EQ(result.Get(1).name(), "other");
}

class SlrTagsTest : public VisitorOperationsTest {
 protected:
  std::unordered_map<std::string, std::string> tags(std::string const& busInterfaces) {
    std::unordered_map<std::string, std::string> slrTags;
    visitor.makeSlrTagCollection(
        slrTags, IPA::makePropertyTree(R"({"hardwarePlatform": {"busInterfaces": [)" +
                                       busInterfaces + "]}}"));
    return slrTags;
  }
};

TEST_F(SlrTagsTest, EverySegmentGivesItsBracketedTag) {
  EXPECT_EQ(tags(R"({"name": "ddr", "spTag": "DDR", "addressSegments": [
                     {"slr": "SLR0", "index": "0"}, {"slr": "SLR1", "index": "3"}]},
                    {"spTag": "HBM", "addressSegments": {"a": {"slr": "SLR0", "index": "12"}}})"),
            (std::unordered_map<std::string, std::string>{
                {"DDR[0]", "SLR0"}, {"DDR[3]", "SLR1"}, {"HBM[12]", "SLR0"}}));
}

TEST_F(SlrTagsTest, NegativeOrUnreadableIndexOrEmptySlrAddsNothing) {
  EXPECT_EQ(tags(R"({"spTag": "DDR", "addressSegments": [
                     {"slr": "SLR0", "index": "-1"}, {"slr": "SLR0", "index": "x1"},
                     {"slr": "SLR0", "index": "1x"}, {"slr": "SLR0"}, {"slr": "", "index": "2"},
                     {"index": "3"}]})"),
            (std::unordered_map<std::string, std::string>{}));
}

TEST_F(SlrTagsTest, BusInterfaceWithoutSpTagOrSegmentsAddsNothing) {
  EXPECT_EQ(tags(R"({"name": "a", "addressSegments": [{"slr": "SLR0", "index": "0"}]},
                    {"name": "b", "spTag": "DDR"})"),
            (std::unordered_map<std::string, std::string>{}));
}

TEST_F(SlrTagsTest, TwoSegmentsWithTheSameTagTheLaterWins) {
  EXPECT_EQ(tags(R"({"spTag": "DDR", "addressSegments": [{"slr": "SLR0", "index": "0"}]},
                    {"spTag": "DDR", "addressSegments": [{"slr": "SLR2", "index": "0"}]})"),
            (std::unordered_map<std::string, std::string>{{"DDR[0]", "SLR2"}}));
}

// ---- The user region's totals ----

class RegionTotalsTest : public VisitorOperationsTest {
 protected:
  pb::userRegionAvailableResources totalsWithout(char const* key) {
    ptree platform = IPA::makePropertyTree(kPlatform);
    platform.get_child("hardwarePlatform.devices")
        .begin()
        ->second.get_child("core.availableResources")
        .erase(key);
    auto const region =
        std::make_shared<IPA::QrxBinUserRegionBuilder>(*builder.getQrxBinBuilder(), root);
    visitor.populateUserRegionAvailableResources(
        platform, std::make_shared<IPA::QrxBinAvailableResourceBuilder>(*builder.getQrxBinBuilder(),
                                                                        root, region));
    return region->message()->available_resources();
  }
};

TEST_F(RegionTotalsTest, AllCountsPresentSetAllFiveWithoutMessage) {
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::userRegionAvailableResources>(
                                      R"(lut: "1000" reg: "2000" bram: "30" uram: "50" dsp: "40")"),
                                  totalsWithout("none")));
  EXPECT_EQ(messages.formats(), Strings{});
}

TEST_F(RegionTotalsTest, UnreadableUramCountLeavesAllFiveEmptyWithOneMessage) {
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::userRegionAvailableResources>(""),
                                  totalsWithout("uramCount")));
  EXPECT_EQ(messages.formats(), Strings{"@82-163@"});
}

TEST_F(RegionTotalsTest, UnreadableBramCountLeavesBramUramAndDspEmpty) {
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::userRegionAvailableResources>(R"(lut: "1000" reg: "2000")"),
      totalsWithout("bramCount")));
  EXPECT_EQ(messages.formats(), Strings{"@82-163@"});
}

TEST_F(RegionTotalsTest, UnreadableDspCountLeavesOnlyDspEmpty) {
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::userRegionAvailableResources>(
                                      R"(lut: "1000" reg: "2000" bram: "30" uram: "50")"),
                                  totalsWithout("dspCount")));
  EXPECT_EQ(messages.formats(), Strings{"@82-163@"});
}

// ---- Connections ----

TEST(ConnectionTypeForMemoryIndexTest, StreamingEntryIsComputeUnitAndEverythingElseMemory) {
  std::vector<IPA::RtdMemData> memData(3);
  memData[0].type = "MEM_DDR4";
  memData[1].type = "MEM_STREAMING_CONNECTION";
  memData[2].type = "mem_streaming_connection";
  EXPECT_EQ(RtdSystemDiagramVisitor::connectionTypeForMemoryIndex(memData, 0), "memory");
  EXPECT_EQ(RtdSystemDiagramVisitor::connectionTypeForMemoryIndex(memData, 1), "compute_unit");
  EXPECT_EQ(RtdSystemDiagramVisitor::connectionTypeForMemoryIndex(memData, 2), "memory");
  EXPECT_EQ(RtdSystemDiagramVisitor::connectionTypeForMemoryIndex(memData, 3), "memory");
  EXPECT_EQ(RtdSystemDiagramVisitor::connectionTypeForMemoryIndex({}, 0), "memory");
}

class ConnectionLoopTest : public RtdSystemDiagramVisitorTest {
 protected:
  // Memory 0 is a DDR bank, memories 1 and 2 are streams.
  static std::string memories() {
    return memory("MEM_DDR4", "d0") + "," + memory("MEM_STREAMING_CONNECTION", "s1") + "," +
           memory("MEM_STREAMING_CONNECTION", "s2");
  }
  static std::string ips() { return ip("p:p_1") + "," + ip("c:c_1") + "," + ip("c:c_2"); }
};

TEST_F(ConnectionLoopTest, NoConnectionsAddNothing) {
  EXPECT_EQ(region(import(rtdText(memories(), ips(), ""))).connectivity_size(), 0);
}

TEST_F(ConnectionLoopTest, MemoryConnectionsOnlyAreNumberedInFileOrder) {
  auto const diagram = import(rtdText(
      memories(), ips(), connection("2", "0", "b", "1") + "," + connection("0", "0", "a", "0")));
  ASSERT_EQ(region(diagram).connectivity_size(), 2);
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::Connectivity>(R"(
    id: "0"
    source { type: "compute_unit" id: "2" arg_index: "1" arg_name: "b" mode: "1" }
    destination { type: "memory" id: "0" })"),
                                  region(diagram).connectivity(0)));
  EXPECT_EQ(region(diagram).connectivity(1).id(), "1");
  EXPECT_EQ(region(diagram).connectivity(1).source().arg_name(), "a");
}

TEST_F(ConnectionLoopTest, StreamsAreNumberedAfterAllMemoryConnections) {
  // Stream halves stand between memory connections in the file.
  auto const diagram =
      import(rtdText(memories(), ips(),
                     connection("0", "1", "out") + "," + connection("0", "0", "m0") + "," +
                         connection("0", "2", "out2") + "," + connection("1", "1", "in") + "," +
                         connection("1", "0", "m1") + "," + connection("2", "2", "in2")));
  auto const& connectivity = region(diagram).connectivity();
  ASSERT_EQ(connectivity.size(), 4);
  EXPECT_EQ(connectivity.Get(0).id(), "0");
  EXPECT_EQ(connectivity.Get(0).source().arg_name(), "m0");
  EXPECT_EQ(connectivity.Get(1).id(), "1");
  EXPECT_EQ(connectivity.Get(1).source().arg_name(), "m1");
  // The two streams come in the gathering's own order, numbered 2 and 3.
  std::set<std::string> pairs;
  for (int i = 2; i < 4; ++i) {
    EXPECT_EQ(connectivity.Get(i).id(), std::to_string(i));
    pairs.insert(connectivity.Get(i).source().arg_name() + ">" +
                 connectivity.Get(i).destination().arg_name());
  }
  EXPECT_EQ(pairs, (std::set<std::string>{"out>in", "out2>in2"}));
}

TEST_F(ConnectionLoopTest, FirstHalfInTheFileIsTheSource) {
  auto const diagram = import(rtdText(
      memories(), ips(), connection("2", "1", "in", "3") + "," + connection("0", "1", "out", "4")));
  ASSERT_EQ(region(diagram).connectivity_size(), 1);
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::Connectivity>(R"(
    id: "0"
    source { type: "compute_unit" id: "2" arg_index: "3" arg_name: "in" mode: "1" }
    destination { type: "compute_unit" id: "0" arg_index: "4" arg_name: "out" mode: "1" })"),
                                  region(diagram).connectivity(0)));
}

TEST_F(ConnectionLoopTest, ThreeHalvesOnOneStreamGiveOneConnectionWithoutEndsAndUseItsId) {
  auto const diagram = import(rtdText(memories(), ips(),
                                      connection("0", "1") + "," + connection("1", "1") + "," +
                                          connection("2", "1") + "," + connection("0", "0")));
  ASSERT_EQ(region(diagram).connectivity_size(), 2);
  EXPECT_EQ(region(diagram).connectivity(0).destination().type(), "memory");
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::Connectivity>(R"(id: "1")"),
                                  region(diagram).connectivity(1)));
  EXPECT_EQ(messages.formats(), Strings{});
}

TEST_F(ConnectionLoopTest, WithoutMemoryListEveryConnectionIsAMemoryOne) {
  auto const diagram =
      import(rtdText("", ips(), connection("0", "1") + "," + connection("1", "1")));
  ASSERT_EQ(region(diagram).connectivity_size(), 2);
  for (auto const& connectivity : region(diagram).connectivity()) {
    EXPECT_EQ(connectivity.destination().type(), "memory");
    EXPECT_EQ(connectivity.destination().id(), "1");
  }
}

TEST_F(ConnectionLoopTest, IndexBeyondTheMemoryDataIsAMemoryConnectionAndKeepsItsNumber) {
  auto const diagram = import(rtdText(memories(), ips(), connection("0", "17")));
  ASSERT_EQ(region(diagram).connectivity_size(), 1);
  EXPECT_EQ(region(diagram).connectivity(0).destination().type(), "memory");
  EXPECT_EQ(region(diagram).connectivity(0).destination().id(), "17");
}

TEST_F(ConnectionLoopTest, SameIndexWithALeadingZeroIsAnotherStream) {
  auto const diagram =
      import(rtdText(memories(), ips(), connection("0", "1") + "," + connection("1", "01")));
  // Both are halves of stream 1, but gathered under two texts: two connections without ends.
  ASSERT_EQ(region(diagram).connectivity_size(), 2);
  for (auto const& connectivity : region(diagram).connectivity()) {
    EXPECT_FALSE(connectivity.has_source());
    EXPECT_FALSE(connectivity.has_destination());
  }
}

TEST_F(ConnectionLoopTest, ComputeUnitEndKeepsTheIpPositionNotTheComputeUnitId) {
  // A plain IP first: the compute unit "k:k_1" has id 0 but stands at position 1.
  auto const diagram =
      import(rtdText(memories(), ip("dma") + "," + ip("k:k_1"), connection("1", "0")));
  EXPECT_EQ(region(diagram).compute_units(0).id(), "0");
  EXPECT_EQ(region(diagram).connectivity(0).source().id(), "1");
}

// ---- Kernels ----

// A kernel section made from files in the test's directory.
class KernelSectionTest : public VisitorOperationsTest {
 protected:
  std::string write(std::string const& relative, std::string const& text) {
    std::string const path = directory.file(relative);
    boost::filesystem::create_directories(boost::filesystem::path(path).parent_path());
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

  // A kernel record of the kernel "k" in <dir>/k.
  OmbroCommonUtils::Kernel kernel() const {
    OmbroCommonUtils::Kernel record;
    record.name = "k";
    record.directory = directory.file("k");
    return record;
  }

  std::shared_ptr<IPA::QrxBinKernelBuilder> kernelBuilder() {
    auto const region =
        std::make_shared<IPA::QrxBinUserRegionBuilder>(*builder.getQrxBinBuilder(), root);
    return std::make_shared<IPA::QrxBinKernelBuilder>(region);
  }

  // The kernel after populateKernelEstimatedResources on a report with `modules`.
  pb::kernel estimateFrom(std::string const& modules) {
    write("k/k.design.xml", "<profile>" + modules + "</profile>");
    auto const target = kernelBuilder();
    visitor.populateKernelEstimatedResources(target, kernel());
    return *target->message();
  }

  // The kernel after populateKernelClockRefs on a kernel.json of `text`.
  pb::kernel clockFrom(std::string const& text) {
    write("k/kernel.json", text);
    auto const target = kernelBuilder();
    visitor.populateKernelClockRefs(target, kernel());
    return *target->message();
  }

  static std::string group(std::string const& modules) {
    return "<moduleInformation>" + modules + "</moduleInformation>";
  }
  static std::string module(std::string const& records) {
    return "<module><areaEstimates>" + records + "</areaEstimates></module>";
  }
  static std::string record(int lut, int bram, int uram, int dsp, int ff) {
    return "<resources><LUT>" + std::to_string(lut) + "</LUT><BRAM>" + std::to_string(bram) +
           "</BRAM><URAM>" + std::to_string(uram) + "</URAM><DSP>" + std::to_string(dsp) +
           "</DSP><FF>" + std::to_string(ff) + "</FF></resources>";
  }
};

TEST_F(KernelSectionTest, KernelsFileGivesKernelsWithArgumentsAndPortsInTheirOrder) {
  write("k/kernel.xml", R"(<kernel name="k">
  <arg name="in1" addressKind="1" id="0" port="m_axi_gmem" size="0x8" offset="0x10" detailA="da"
       detailB="db" portInterfaceType="aximm" type="int*" argName="in1" hostSize="8"/>
  <arg name="n" id="1" port="s_axi_control" size="0x4" offset="0x1c"/>
  <port name="m_axi_gmem" mode="master" detailA="pa" dataWidth="512" portType="addressable"
        detailB="pb"/>
  <port name="s_axi_control" mode="slave" dataWidth="-1"/>
</kernel>)");
  std::string const kernels = write("kernels.txt", "k,hls," + directory.file("k") + "\nj\n");
  auto const diagram = import(rtdText("", "", ""), platformFile(), kernels);
  ASSERT_EQ(region(diagram).kernels_size(), 2);
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::kernel>(R"(
    name: "k"
    arguments { name: "in1" id: "0" address_kind: "1" port: "m_axi_gmem" size: "0x8"
                offset: "0x10" detail_a: "da" detail_b: "db" port_interface_type: "aximm" }
    arguments { name: "n" id: "1" address_kind: "0" port: "s_axi_control" size: "0x4"
                offset: "0x1c" detail_a: "" detail_b: "" port_interface_type: "" }
    ports { detail_b: "pb" data_width: "512" mode: "master" name: "m_axi_gmem"
            port_type: "addressable" detail_a: "pa" }
    ports { detail_b: "" data_width: "4294967295" mode: "slave" name: "s_axi_control"
            port_type: "" detail_a: "" })"),
                                  region(diagram).kernels(0)));
  EXPECT_TRUE(
      qvtest::sameMessage(qvtest::parse<pb::kernel>(R"(name: "j")"), region(diagram).kernels(1)));
  // Neither kernel has a report; kernel.json is not looked for in a message.
  EXPECT_EQ(messages.sent(),
            (Strings{"mvk @60-839@%s 0x4000000 [" + kernels + "]",
                     "morvane @82-214@%s 0x8000000 [" + directory.file("k") + "/k.design.xml]",
                     "morvane @82-214@%s 0x8000000 [/j.design.xml]"}));
}

TEST_F(KernelSectionTest, KernelWithNeitherReportNorKernelJsonStillHasNameArgumentsAndPorts) {
  write("k/kernel.xml", R"(<kernel><arg name="a"/><port name="p"/></kernel>)");
  auto const diagram = import(rtdText("", "", ""), platformFile(),
                              write("kernels.txt", "k,hls," + directory.file("k")));
  ASSERT_EQ(region(diagram).kernels_size(), 1);
  pb::kernel const& kernel = region(diagram).kernels(0);
  EXPECT_EQ(kernel.name(), "k");
  ASSERT_EQ(kernel.arguments_size(), 1);
  EXPECT_EQ(kernel.arguments(0).name(), "a");
  ASSERT_EQ(kernel.ports_size(), 1);
  EXPECT_EQ(kernel.ports(0).name(), "p");
  EXPECT_FALSE(kernel.has_estimated_resources());
  EXPECT_EQ(kernel.clock_refs_size(), 0);
}

TEST_F(KernelSectionTest, NoKernelsFileGivesNoKernelsAndTheImportGoesOn) {
  auto const diagram = import(rtdText("", "", ""), platformFile(), directory.file("absent"));
  EXPECT_EQ(region(diagram).kernels_size(), 0);
  EXPECT_EQ(region(diagram).available_resources().lut(), "1000");
  EXPECT_EQ(messages.sent(), Strings{});
}

TEST_F(KernelSectionTest, ReportGivesTheEstimateWithoutMessage) {
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::kernel>(R"(estimated_resources { lut: "2490" reg: "3842" bram: "2"
                                                         dsp: "1" uram: "0" })"),
      estimateFrom(group(module(record(2490, 2, 0, 1, 3842))))));
  EXPECT_EQ(messages.sent(), Strings{});
}

TEST_F(KernelSectionTest, MissingReportSendsItsPathAndLeavesNoEstimate) {
  auto const target = kernelBuilder();
  visitor.populateKernelEstimatedResources(target, kernel());
  EXPECT_FALSE(target->message()->has_estimated_resources());
  EXPECT_EQ(messages.sent(),
            Strings{"morvane @82-214@%s 0x8000000 [" + directory.file("k") + "/k.design.xml]"});
}

TEST_F(KernelSectionTest, SecondModuleGroupIsAskedForItsModuleAtIndexOne) {
  // The second group's first module is passed over: its position among the groups is 1.
  pb::kernel const kernel =
      estimateFrom(group(module(record(1, 1, 1, 1, 1))) +
                   group(module(record(5, 5, 5, 5, 5)) + module(record(9, 8, 7, 6, 5))));
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::estimatedResources>(R"(lut: "9" bram: "8" uram: "7" dsp: "6" reg: "5")"),
      kernel.estimated_resources()));
  EXPECT_EQ(messages.sent(), Strings{});
}

TEST_F(KernelSectionTest, SecondGroupWithOneModuleEndsTheImport) {
  write("k/k.design.xml", "<profile>" + group(module(record(1, 1, 1, 1, 1))) +
                              group(module(record(2, 2, 2, 2, 2))) + "</profile>");
  EXPECT_THROW(visitor.populateKernelEstimatedResources(kernelBuilder(), kernel()),
               lmx60::lmx_exception);
}

TEST_F(KernelSectionTest, EmptyModuleGroupEndsTheImport) {
  // Found by fuzzing: the first group has no module 0 to give.
  write("k/k.design.xml", "<profile>" + group("") + "</profile>");
  EXPECT_THROW(visitor.populateKernelEstimatedResources(kernelBuilder(), kernel()),
               lmx60::lmx_exception);
}

TEST_F(KernelSectionTest, SecondRecordWithOneValueEachFailsAllFiveAndTheFirstValuesStay) {
  pb::kernel const kernel =
      estimateFrom(group(module(record(10, 20, 30, 40, 50) + record(11, 21, 31, 41, 51))));
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::estimatedResources>(
                                      R"(lut: "10" bram: "20" uram: "30" dsp: "40" reg: "50")"),
                                  kernel.estimated_resources()));
  EXPECT_EQ(messages.formats(),
            (Strings{"@82-159@", "@82-157@", "@82-3568@", "@82-158@", "@82-160@"}));
}

TEST_F(KernelSectionTest, SecondRecordTakesItsSecondValues) {
  pb::kernel const kernel = estimateFrom(
      group(module(record(10, 20, 30, 40, 50) +
                   "<resources><LUT>1</LUT><LUT>2</LUT><BRAM>3</BRAM><BRAM>4</BRAM><URAM>5</URAM>"
                   "<URAM>6</URAM><DSP>7</DSP><DSP>8</DSP><FF>9</FF><FF>10</FF></resources>")));
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::estimatedResources>(R"(lut: "2" bram: "4" uram: "6" dsp: "8" reg: "10")"),
      kernel.estimated_resources()));
  EXPECT_EQ(messages.formats(), Strings{});
}

TEST_F(KernelSectionTest, RecordEmptyInAllListsSendsTheFiveMessagesInOrder) {
  pb::kernel const kernel = estimateFrom(group(module("<resources/>")));
  EXPECT_FALSE(kernel.has_estimated_resources());
  EXPECT_EQ(messages.sent(), (Strings{"morvane @82-159@ 0x8000000", "morvane @82-157@ 0x8000000",
                                      "morvane @82-3568@ 0x8000000", "morvane @82-158@ 0x8000000",
                                      "morvane @82-160@ 0x8000000"}));
}

TEST_F(KernelSectionTest, ShortListsFailOnlyTheirOwnFields) {
  // The second record lists two LUT and two DSP values only.
  pb::kernel const kernel =
      estimateFrom(group(module(record(10, 20, 30, 40, 50) +
                                "<resources><LUT>0</LUT><LUT>12</LUT><DSP>0</DSP><DSP>42</DSP>"
                                "</resources>")));
  EXPECT_TRUE(qvtest::sameMessage(qvtest::parse<pb::estimatedResources>(
                                      R"(lut: "12" bram: "20" uram: "30" dsp: "42" reg: "50")"),
                                  kernel.estimated_resources()));
  EXPECT_EQ(messages.formats(), (Strings{"@82-157@", "@82-3568@", "@82-160@"}));
}

TEST_F(KernelSectionTest, LaterEstimateOfAnotherModuleWinsFieldByField) {
  pb::kernel const kernel =
      estimateFrom(group(module(record(10, 20, 30, 40, 50) + "<resources/>") + module("")) +
                   group(module("") + module(record(1, 2, 3, 4, 5))));
  EXPECT_EQ(kernel.estimated_resources().lut(), "1");
  EXPECT_EQ(kernel.estimated_resources().reg(), "5");
  EXPECT_EQ(messages.formats(),
            (Strings{"@82-159@", "@82-157@", "@82-3568@", "@82-158@", "@82-160@"}));
}

TEST_F(KernelSectionTest, ReportThatDoesNotReadEndsTheImportNamingFileAndLine) {
  write("k/k.design.xml", "<profile>\n<moduleInformation>\n</profile>\n");
  try {
    visitor.populateKernelEstimatedResources(kernelBuilder(), kernel());
    FAIL() << "no error";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()).rfind(directory.file("k") + "/k.design.xml:3: ", 0), 0u)
        << error.what();
  }
}

TEST_F(KernelSectionTest, PeriodOfFourGives250) {
  EXPECT_TRUE(qvtest::sameMessage(
      qvtest::parse<pb::kernel>(R"(clock_refs { name: "ap_clk" requested_frequency: 250 })"),
      clockFrom(R"({"ClockInfo": {"ClockName": "ap_clk", "ClockPeriod": "4.0"}})")));
  EXPECT_EQ(messages.sent(), Strings{});
}

TEST_F(KernelSectionTest, FrequencyIsOneThousandOverThePeriodInDoublePrecision) {
  pb::kernel const kernel =
      clockFrom(R"({"ClockInfo": {"ClockName": "c", "ClockPeriod": 3.333, "Other": 1}})");
  ASSERT_EQ(kernel.clock_refs_size(), 1);
  EXPECT_EQ(kernel.clock_refs(0).requested_frequency(), (1.0 / 3.333) * 1000.0);
  EXPECT_EQ(kernel.clock_refs(0).clock_id(), "");
  EXPECT_EQ(kernel.clock_refs(0).achieved_frequency(), 0.0);
}

TEST_F(KernelSectionTest, PeriodOfZeroGivesInfinityAndItIsStored) {
  pb::kernel const kernel = clockFrom(R"({"ClockInfo": {"ClockName": "c", "ClockPeriod": "0"}})");
  ASSERT_EQ(kernel.clock_refs_size(), 1);
  EXPECT_EQ(kernel.clock_refs(0).requested_frequency(), std::numeric_limits<double>::infinity());
}

TEST_F(KernelSectionTest, MissingKernelJsonAddsNoClockAndNoMessage) {
  auto const target = kernelBuilder();
  visitor.populateKernelClockRefs(target, kernel());
  EXPECT_EQ(target->message()->clock_refs_size(), 0);
  EXPECT_EQ(messages.sent(), Strings{});
}

TEST_F(KernelSectionTest, KernelJsonThatIsNotJsonAddsNoClockAndNoMessage) {
  EXPECT_EQ(clockFrom(R"({"ClockInfo": {"ClockName": "c", )").clock_refs_size(), 0);
  EXPECT_EQ(messages.sent(), Strings{});
}

TEST_F(KernelSectionTest, KernelJsonWithoutClockInfoEndsTheImportNamingTheFile) {
  try {
    clockFrom(R"({"Clock": {"ClockName": "c", "ClockPeriod": "4"}})");
    FAIL() << "no error";
  } catch (boost::property_tree::ptree_bad_path const& error) {
    EXPECT_EQ(std::string(error.what()),
              directory.file("k") + "/kernel.json: No such node (ClockInfo.ClockName)");
  }
  EXPECT_THROW(clockFrom(R"({"ClockInfo": {"ClockName": "c"}})"),
               boost::property_tree::ptree_bad_path);
  EXPECT_EQ(messages.sent(), Strings{});
}

TEST_F(KernelSectionTest, PeriodThatIsNotANumberEndsTheImport) {
  try {
    clockFrom(R"({"ClockInfo": {"ClockName": "c", "ClockPeriod": "4ns"}})");
    FAIL() << "no error";
  } catch (boost::property_tree::ptree_bad_data const& error) {
    EXPECT_EQ(std::string(error.what()),
              directory.file("k") + "/kernel.json: ClockInfo.ClockPeriod is not a number");
  }
}

TEST_F(KernelSectionTest, KernelJsonWithoutClockInfoFailsTheWholeImport) {
  write("k/kernel.json", R"({"Clock": {}})");
  EXPECT_THROW(import(rtdText("", "", ""), platformFile(),
                      write("kernels.txt", "k,hls," + directory.file("k"))),
               boost::property_tree::ptree_bad_path);
}

}  // namespace
