#include "rtd/UserRegionAvailableResourcesSlrPopulator.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <boost/property_tree/ptree.hpp>
#include <initializer_list>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinAvailableResourceBuilder.h"
#include "diagram/QrxBinBySlrBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "diagram/TextConversions.h"
#include "proto/system_diagram.pb.h"
#include "rtd/RtdSystemDiagramVisitor.h"
#include "rtd/SlrResourceTuple.h"
#include "tests/support/MessageCapture.h"
#include "tests/support/Messages.h"

namespace IPA {

// GoogleTest finds this by argument-dependent lookup; without it a failed comparison shows the
// tuple as raw bytes.
inline void PrintTo(SlrResourceTuple const& t, std::ostream* os) {
  *os << "{bram \"" << t.bram << "\", uram \"" << t.uram << "\", dsp \"" << t.dsp << "\", lut \""
      << t.lut << "\", reg \"" << t.reg << "\"}";
}

}  // namespace IPA

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using boost::property_tree::ptree;
using Populator = IPA::UserRegionAvailableResourcesSlrPopulator;
using UnCoalesced = Populator::UnCoalesced;
using Coalesced = Populator::Coalesced;
using BySlr = Populator::BySlr;
using Tuple = IPA::SlrResourceTuple;

// ---- Platform descriptions as JSON text ----

std::string joined(std::initializer_list<std::string> items) {
  std::string text;
  for (auto const& item : items) text += (text.empty() ? "" : ", ") + item;
  return text;
}

// A resource record as platforms write it: the name, then its "value".
std::string record(std::string const& name, std::string const& value) {
  return R"({"name": ")" + name + R"(", "value": ")" + value + R"("})";
}

// A pBlock whose "validSlrs" holds one "resources" list.
std::string pBlock(std::initializer_list<std::string> records) {
  return R"({"name": "pblock_dynamic", "validSlrs": {"resources": [)" + joined(records) + "]}}";
}

// A device whose core has the totals and the given pBlocks.
std::string device(std::initializer_list<std::string> pBlocks) {
  return R"({"core": {"name": "core0", "type": "clc_region", "availableResources": )"
         R"({"lutCount": "1000", "pBlocks": [)" +
         joined(pBlocks) + "]}}}";
}

std::string platform(std::initializer_list<std::string> devices) {
  return R"({"name": "qv_test_platform", "hardwarePlatform": {"devices": [)" + joined(devices) +
         "]}}";
}

class UserRegionAvailableResourcesSlrPopulatorTest : public ::testing::Test {
 protected:
  // The pairs of a "resources" member holding `records`, a JSON list without its brackets.
  UnCoalesced byResourceType(std::string const& records) const {
    ptree const tree = IPA::makePropertyTree(R"({"resources": [)" + records + "]}");
    return populator.unCoalescedSlrResourcesByResourceType(*tree.begin());
  }

  // The pairs of a "validSlrs" member whose value is the JSON object `block`.
  UnCoalesced forValidSlrBlock(std::string const& block) const {
    ptree const tree = IPA::makePropertyTree(R"({"validSlrs": )" + block + "}");
    return populator.unCoalescedSlrResourcesForValidSlrBlock(*tree.begin());
  }

  UnCoalesced unCoalescedSlrs(std::string const& json) const {
    return populator.unCoalescedSlrs(IPA::makePropertyTree(json), resources);
  }

  void populate(std::string const& json) {
    Populator const fromPlatform(IPA::makePropertyTree(json));
    fromPlatform.populateUserRegionAvailableResourcesSlr(resources);
  }

  // The region's available resources with `by_slr` sorted by SLR name, because the populator
  // leaves the order of the entries open.
  pb::userRegionAvailableResources sortedAvailable() const {
    pb::userRegionAvailableResources copy = region->message()->available_resources();
    std::sort(copy.mutable_by_slr()->begin(), copy.mutable_by_slr()->end(),
              [](pb::bySlr const& a, pb::bySlr const& b) { return a.slr() < b.slr(); });
    return copy;
  }

  static pb::userRegionAvailableResources expected(std::string const& text) {
    return qvtest::parse<pb::userRegionAvailableResources>(text);
  }

  Populator const populator{ptree()};
  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  std::shared_ptr<IPA::QrxBinUserRegionBuilder> region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(*diagram.getQrxBinBuilder(), root);
  std::shared_ptr<IPA::QrxBinAvailableResourceBuilder> resources =
      std::make_shared<IPA::QrxBinAvailableResourceBuilder>(*diagram.getQrxBinBuilder(), root,
                                                            region);
  qvtest::MessageCapture messages;
};

// ---- The names ----

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, PrefixesAreTheResourceWordsWithAnUnderscore) {
  EXPECT_EQ(Populator::bramPrefix, "BRAM_");
  EXPECT_EQ(Populator::uramPrefix, "URAM_");
  EXPECT_EQ(Populator::dspPrefix, "DSPs_");
  EXPECT_EQ(Populator::lutPrefix, "LUT_");
  EXPECT_EQ(Populator::regPrefix, "REG_");
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ResourceWordsNameDspDifferentlyPerSlr) {
  EXPECT_EQ(Populator::bramId, "BRAM");
  EXPECT_EQ(Populator::uramId, "URAM");
  EXPECT_EQ(Populator::dspId, "DSP");
  EXPECT_EQ(Populator::dspSlrId, "DSPs");
  EXPECT_EQ(Populator::lutId, "LUT");
  EXPECT_EQ(Populator::regId, "REG");
}

// ---- slrResourceTuple ----

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, EachResourceWordSetsItsOwnField) {
  struct Row {
    char const* word;
    Tuple expected;
  };
  Row const rows[] = {
      {"BRAM", {"7", "", "", "", ""}}, {"URAM", {"", "7", "", "", ""}},
      {"DSPs", {"", "", "7", "", ""}}, {"LUT", {"", "", "", "7", ""}},
      {"REG", {"", "", "", "", "7"}},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.word);
    EXPECT_EQ(populator.slrResourceTuple(row.word, 7, Tuple()), row.expected);
  }
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, SettingOneFieldKeepsTheOthersOfTheTuple) {
  Tuple const given{"1", "2", "3", "4", "5"};

  EXPECT_EQ(populator.slrResourceTuple("LUT", 400, given), (Tuple{"1", "2", "3", "400", "5"}));
  EXPECT_EQ(populator.slrResourceTuple("BRAM", 0, given), (Tuple{"0", "2", "3", "4", "5"}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, CountIsWrittenAsPlainDecimalText) {
  EXPECT_EQ(populator.slrResourceTuple("REG", 18446744073709551615ul, Tuple()).reg,
            "18446744073709551615");
  EXPECT_EQ(populator.slrResourceTuple("REG", 1000000, Tuple()).reg, "1000000");
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, UnknownWordLeavesTheTupleUnchanged) {
  Tuple const given{"1", "2", "3", "4", "5"};

  // "DSP" is the word of the device totals, not of the names per SLR.
  for (char const* word : {"DSP", "bram", "Lut", "FF", ""}) {
    SCOPED_TRACE(word);
    EXPECT_EQ(populator.slrResourceTuple(word, 9, given), given);
  }
}

// ---- coalesceSlrResources ----

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, CoalescingSumsTheCountsOfEqualNames) {
  UnCoalesced const pairs{
      {"BRAM_SLR0", 10}, {"LUT_SLR0", 400}, {"BRAM_SLR0", 5}, {"BRAM_SLR1", 2}, {"BRAM_SLR0", 0}};

  EXPECT_EQ(populator.coalesceSlrResources(pairs),
            (Coalesced{{"BRAM_SLR0", 15}, {"LUT_SLR0", 400}, {"BRAM_SLR1", 2}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, CoalescingKeepsANameWhoseCountIsZero) {
  EXPECT_EQ(populator.coalesceSlrResources({{"URAM_SLR2", 0}}), (Coalesced{{"URAM_SLR2", 0}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, CoalescingNothingGivesAnEmptyMap) {
  EXPECT_EQ(populator.coalesceSlrResources({}), Coalesced());
}

// ---- resourcesBySlr ----

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NamesAreGroupedBySlrIntoTheFieldOfTheirWord) {
  Coalesced const counts{{"BRAM_SLR0", 672},   {"URAM_SLR0", 320},   {"DSPs_SLR0", 3008},
                         {"LUT_SLR0", 434560}, {"REG_SLR0", 869120}, {"LUT_SLR1", 400000}};

  EXPECT_EQ(populator.resourcesBySlr(counts),
            (BySlr{{"SLR0", {"672", "320", "3008", "434560", "869120"}},
                   {"SLR1", {"", "", "", "400000", ""}}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NameWithoutUnderscoreIsSkipped) {
  EXPECT_EQ(populator.resourcesBySlr({{"BRAM", 3}, {"LUT_SLR0", 1}}),
            (BySlr{{"SLR0", {"", "", "", "1", ""}}}));
  EXPECT_EQ(populator.resourcesBySlr({{"", 3}}), BySlr());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, PartsBehindTheSecondUnderscoreAreIgnored) {
  EXPECT_EQ(populator.resourcesBySlr({{"BRAM_SLR0_extra_parts", 3}}),
            (BySlr{{"SLR0", {"3", "", "", "", ""}}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest,
       NamesDifferingOnlyBehindTheSecondUnderscoreShareOneFieldAndTheLaterInMapOrderWins) {
  Coalesced const counts{{"BRAM_SLR0_a", 3}, {"BRAM_SLR0_b", 4}};
  std::string later;
  for (auto const& entry : counts) later = std::to_string(entry.second);

  EXPECT_EQ(populator.resourcesBySlr(counts), (BySlr{{"SLR0", {later, "", "", "", ""}}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, UnderscoresAreNotMerged) {
  // "BRAM__SLR0" splits into "BRAM", "" and "SLR0": the SLR name is the empty second part.
  EXPECT_EQ(populator.resourcesBySlr({{"BRAM__SLR0", 6}}), (BySlr{{"", {"6", "", "", "", ""}}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NameEndingInItsUnderscoreGivesAnEmptySlrName) {
  EXPECT_EQ(populator.resourcesBySlr({{"LUT_", 12}}), (BySlr{{"", {"", "", "", "12", ""}}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, UnknownWordStillMakesItsSlrAppear) {
  EXPECT_EQ(populator.resourcesBySlr({{"FF_SLR2", 9}}), (BySlr{{"SLR2", Tuple()}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NoCountsGiveNoSlrs) {
  EXPECT_EQ(populator.resourcesBySlr({}), BySlr());
}

// ---- unCoalescedSlrResourcesByResourceType ----

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, EachNameTakesTheValueBehindItInDocumentOrder) {
  EXPECT_EQ(byResourceType(joined({record("LUT_SLR1", "400"), record("BRAM_SLR0", "10"),
                                   record("DSPs_SLR0", "30"), record("URAM_SLR0", "8"),
                                   record("REG_SLR1", "900"), record("LUT_SLR1", "1")})),
            (UnCoalesced{{"LUT_SLR1", 400},
                         {"BRAM_SLR0", 10},
                         {"DSPs_SLR0", 30},
                         {"URAM_SLR0", 8},
                         {"REG_SLR1", 900},
                         {"LUT_SLR1", 1}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NameIsPendingFromOneRecordToTheNext) {
  EXPECT_EQ(byResourceType(R"({"name": "BRAM_SLR0"}, {"value": "12"})"),
            (UnCoalesced{{"BRAM_SLR0", 12}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, AnyKeyMayHoldTheName) {
  EXPECT_EQ(byResourceType(R"({"resource": "BRAM_SLR0", "value": "1"},
                              {"x": "URAM_SLR1", "value": "2"})"),
            (UnCoalesced{{"BRAM_SLR0", 1}, {"URAM_SLR1", 2}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, KeyValueHoldsTheNameWhenNoNameIsPending) {
  EXPECT_EQ(byResourceType(R"({"value": "LUT_SLR0"}, {"value": "44"})"),
            (UnCoalesced{{"LUT_SLR0", 44}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, SecondNameBeforeTheValueReplacesTheFirst) {
  EXPECT_EQ(byResourceType(R"({"name": "BRAM_SLR0", "other": "URAM_SLR1", "value": "3"})"),
            (UnCoalesced{{"URAM_SLR1", 3}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ValueWithoutAPendingNameIsNotCounted) {
  EXPECT_EQ(byResourceType(R"({"value": "5"}, {"name": "not a resource", "value": "6"})"),
            UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ValueBeforeItsNameIsNotCounted) {
  // The name then waits for a "value" that never comes.
  EXPECT_EQ(byResourceType(R"({"value": "5", "name": "BRAM_SLR0"})"), UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ValueWithTextBehindTheDigitsCountsTheDigits) {
  EXPECT_EQ(byResourceType(record("LUT_SLR0", "12ab") + ", " + record("REG_SLR0", "  34 ")),
            (UnCoalesced{{"LUT_SLR0", 12}, {"REG_SLR0", 34}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, UnreadableValueCountsAsZero) {
  EXPECT_EQ(byResourceType(joined(
                {record("LUT_SLR0", "ab12"), record("REG_SLR0", ""), record("BRAM_SLR0", "0x1f")})),
            (UnCoalesced{{"LUT_SLR0", 0}, {"REG_SLR0", 0}, {"BRAM_SLR0", 0}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ValueBeyondSixtyFourBitsCountsAsZero) {
  EXPECT_EQ(byResourceType(joined({record("LUT_SLR0", "9223372036854775807"),
                                   record("LUT_SLR1", "9223372036854775808")})),
            (UnCoalesced{{"LUT_SLR0", 9223372036854775807ul}, {"LUT_SLR1", 0}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ZeroValueIsCounted) {
  EXPECT_EQ(byResourceType(record("URAM_SLR0", "0")), (UnCoalesced{{"URAM_SLR0", 0}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, JsonNumberReadsLikeItsText) {
  EXPECT_EQ(byResourceType(R"({"name": "DSPs_SLR2", "value": 1520})"),
            (UnCoalesced{{"DSPs_SLR2", 1520}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NegativeValueAppendsNothingAndUsesUpTheName) {
  EXPECT_EQ(byResourceType(R"({"name": "BRAM_SLR0", "value": "-3"}, {"value": "5"})"),
            UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, UnreadableValueAlsoUsesUpTheName) {
  EXPECT_EQ(byResourceType(R"({"name": "BRAM_SLR0", "value": "x"}, {"value": "5"})"),
            (UnCoalesced{{"BRAM_SLR0", 0}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, DspWithoutTheSIsNotAResourceName) {
  EXPECT_EQ(byResourceType(record("DSP_SLR0", "30")), UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ResourceWordInLowerCaseIsIgnored) {
  EXPECT_EQ(byResourceType(joined({record("bram_SLR0", "1"), record("uram_SLR0", "2"),
                                   record("dsps_SLR0", "3"), record("lut_SLR0", "4"),
                                   record("reg_SLR0", "5"), record("Lut_SLR0", "6")})),
            UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, WordWithoutItsUnderscoreIsNotAResourceName) {
  EXPECT_EQ(byResourceType(joined({record("BRAM", "1"), record("LUTSLR0", "2")})), UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NameNeedsNoSlrBehindItsUnderscore) {
  EXPECT_EQ(byResourceType(record("REG_", "7")), (UnCoalesced{{"REG_", 7}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, RecordsThatAreNotObjectsGiveNothing) {
  EXPECT_EQ(byResourceType(R"("BRAM_SLR0", "10")"), UnCoalesced());
}

// ---- unCoalescedSlrResourcesForValidSlrBlock ----

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, BlockGivesThePairsOfItsResources) {
  EXPECT_EQ(forValidSlrBlock(R"({"slr": "ignored", "resources": [)" +
                             joined({record("BRAM_SLR0", "1"), record("LUT_SLR0", "2")}) + "]}"),
            (UnCoalesced{{"BRAM_SLR0", 1}, {"LUT_SLR0", 2}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, LastResourcesMemberOfABlockReplacesEarlier) {
  EXPECT_EQ(
      forValidSlrBlock(R"({"resources": [)" + record("BRAM_SLR0", "1") + R"(], "resources": [)" +
                       record("LUT_SLR1", "2") + ", " + record("REG_SLR1", "3") + "]}"),
      (UnCoalesced{{"LUT_SLR1", 2}, {"REG_SLR1", 3}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, EmptyLastResourcesMemberLeavesTheBlockEmpty) {
  EXPECT_EQ(
      forValidSlrBlock(R"({"resources": [)" + record("BRAM_SLR0", "1") + R"(], "resources": []})"),
      UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NamePendingAtTheEndOfAResourcesListIsLost) {
  // Each "resources" member starts without a pending name.
  EXPECT_EQ(forValidSlrBlock(R"({"resources": [{"name": "BRAM_SLR0"}], )"
                             R"("resources": [{"value": "4"}]})"),
            UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, BlockWithoutResourcesGivesNothing) {
  EXPECT_EQ(forValidSlrBlock(R"({"Resources": [)" + record("BRAM_SLR0", "1") + "]}"),
            UnCoalesced());
  EXPECT_EQ(forValidSlrBlock("{}"), UnCoalesced());
}

// ---- unCoalescedSlrs ----

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest,
       WalkRunsDeviceByDeviceAndPBlockByPBlockWithoutSumming) {
  std::string const json =
      platform({device({pBlock({record("BRAM_SLR0", "10"), record("LUT_SLR0", "400")}),
                        pBlock({record("BRAM_SLR0", "5")})}),
                device({pBlock({record("URAM_SLR1", "8")}),
                        pBlock({record("REG_SLR1", "900"), record("BRAM_SLR0", "1")})})});

  EXPECT_EQ(unCoalescedSlrs(json), (UnCoalesced{{"BRAM_SLR0", 10},
                                                {"LUT_SLR0", 400},
                                                {"BRAM_SLR0", 5},
                                                {"URAM_SLR1", 8},
                                                {"REG_SLR1", 900},
                                                {"BRAM_SLR0", 1}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, EveryValidSlrsMemberOfAPBlockIsAppended) {
  std::string const json = platform(
      {device({R"({"validSlrs": {"resources": [)" + record("BRAM_SLR0", "1") +
               R"(]}, "name": "p0", "validSlrs": {"resources": [)" + record("LUT_SLR1", "2") +
               R"(]}, "validSlrs": {"resources": [)" + record("REG_SLR2", "3") + "]}}"})});

  EXPECT_EQ(unCoalescedSlrs(json),
            (UnCoalesced{{"BRAM_SLR0", 1}, {"LUT_SLR1", 2}, {"REG_SLR2", 3}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ResourcesAreReplacedWithinABlockOnly) {
  std::string const json =
      platform({device({R"({"validSlrs": {"resources": [)" + record("BRAM_SLR0", "1") +
                            R"(], "resources": [)" + record("BRAM_SLR0", "2") + "]}}",
                        pBlock({record("BRAM_SLR0", "3")})})});

  EXPECT_EQ(unCoalescedSlrs(json), (UnCoalesced{{"BRAM_SLR0", 2}, {"BRAM_SLR0", 3}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest,
       RepeatedCoreAndAvailableResourcesAreAllWalked) {
  std::string const json = R"({"hardwarePlatform": {"devices": [{
      "core": {"availableResources": {"pBlocks": [)" +
                           pBlock({record("BRAM_SLR0", "1")}) + R"(]},
               "availableResources": {"pBlocks": [)" +
                           pBlock({record("BRAM_SLR0", "2")}) + R"(]}},
      "core": {"availableResources": {"pBlocks": [)" +
                           pBlock({record("BRAM_SLR0", "3")}) + R"(]},
               "pBlocks": [)" +
                           pBlock({record("BRAM_SLR0", "4")}) + R"(]}}]}})";

  EXPECT_EQ(unCoalescedSlrs(json),
            (UnCoalesced{{"BRAM_SLR0", 1}, {"BRAM_SLR0", 2}, {"BRAM_SLR0", 3}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ResourcesOutsideTheValidSlrsPathAreNotRead) {
  std::string const json = R"({"hardwarePlatform": {
      "resources": [)" + record("BRAM_SLR0", "1") +
                           R"(],
      "devices": [{"pBlocks": [)" +
                           pBlock({record("BRAM_SLR0", "2")}) +
                           R"(],
                   "core": {"pBlocks": [)" +
                           pBlock({record("BRAM_SLR0", "3")}) +
                           R"(],
                            "availableResources": {"pBlocks": [{"resources": [)" +
                           record("BRAM_SLR0", "4") + R"(]}]}}}]}})";

  EXPECT_EQ(unCoalescedSlrs(json), UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, PlatformWithoutDevicesGivesNothing) {
  EXPECT_EQ(unCoalescedSlrs(R"({"hardwarePlatform": {"name": "p"}})"), UnCoalesced());
  EXPECT_EQ(unCoalescedSlrs("{}"), UnCoalesced());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, WalkNeedsNoBuilder) {
  std::string const json = platform({device({pBlock({record("LUT_SLR0", "5")})})});

  EXPECT_EQ(populator.unCoalescedSlrs(IPA::makePropertyTree(json), nullptr),
            (UnCoalesced{{"LUT_SLR0", 5}}));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, WalkReadsTheTreeItIsGivenNotItsOwn) {
  Populator const own(
      IPA::makePropertyTree(platform({device({pBlock({record("LUT_SLR0", "5")})})})));

  EXPECT_EQ(own.unCoalescedSlrs(
                IPA::makePropertyTree(platform({device({pBlock({record("REG_SLR1", "6")})})})),
                resources),
            (UnCoalesced{{"REG_SLR1", 6}}));
}

// ---- populateUserRegionAvailableResourcesSlr ----

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, EverySlrBecomesOneEntryWithItsSummedCounts) {
  populate(platform({device({pBlock({record("BRAM_SLR0", "10"), record("LUT_SLR0", "400"),
                                     record("DSPs_SLR1", "30")}),
                             pBlock({record("BRAM_SLR0", "5"), record("URAM_SLR1", "8"),
                                     record("REG_SLR1", "900")})}),
                     device({pBlock({record("LUT_SLR1", "7"), record("REG_SLR0", "1200"),
                                     record("DSPs_SLR0", "16"), record("URAM_SLR0", "4")})})}));

  EXPECT_TRUE(qvtest::sameMessage(
      expected(R"pb(
        by_slr { slr: "SLR0" bram: "15" uram: "4" dsp: "16" lut: "400" reg: "1200" }
        by_slr { slr: "SLR1" uram: "8" dsp: "30" lut: "7" reg: "900" }
      )pb"),
      sortedAvailable()));
  EXPECT_TRUE(messages.formats().empty());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, EntriesFollowTheIterationOrderOfTheSlrMap) {
  std::string const json = platform({device(
      {pBlock({record("LUT_SLR0", "1"), record("LUT_SLR1", "2"), record("LUT_SLR2", "3"),
               record("LUT_SLR3", "4"), record("LUT_SLR4", "5"), record("LUT_SLR5", "6")})})});
  BySlr const bySlr =
      populator.resourcesBySlr(populator.coalesceSlrResources(unCoalescedSlrs(json)));
  std::vector<std::string> mapOrder;
  for (auto const& entry : bySlr) mapOrder.push_back(entry.first);

  populate(json);

  std::vector<std::string> diagramOrder;
  for (auto const& entry : region->message()->available_resources().by_slr()) {
    diagramOrder.push_back(entry.slr());
  }
  EXPECT_EQ(diagramOrder, mapOrder);
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest,
       PlatformWithoutPBlocksGivesNoSlrsAndKeepsTheTotals) {
  ptree const tree = IPA::makePropertyTree(R"({"hardwarePlatform": {"devices": [{"core": {
      "name": "core0", "type": "clc_region",
      "availableResources": {"lutCount": "1000", "registerCount": "2000", "bramCount": "30",
                             "dspCount": "40", "uramCount": "50"}}}]}})");
  IPA::RtdSystemDiagramVisitor visitor(diagram, "unused", "gen", "1.2", "cl9", "ts", "da", "db",
                                       false, "k", "lbl", "");
  visitor.populateUserRegionAvailableResources(tree, resources);

  Populator(tree).populateUserRegionAvailableResourcesSlr(resources);

  EXPECT_TRUE(qvtest::sameMessage(
      expected(R"pb(lut: "1000" reg: "2000" bram: "30" dsp: "40" uram: "50")pb"),
      region->message()->available_resources()));
  EXPECT_TRUE(messages.formats().empty());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, PlatformWithoutAnyNamedResourceAddsNothing) {
  populate(platform({device({pBlock({})})}));

  EXPECT_FALSE(region->message()->has_available_resources());
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, EqualNamesInTwoPBlocksAreSummedIntoOneField) {
  populate(platform(
      {device({pBlock({record("BRAM_SLR0", "10")}), pBlock({record("BRAM_SLR0", "5")})})}));

  EXPECT_TRUE(
      qvtest::sameMessage(expected(R"pb(by_slr { slr: "SLR0" bram: "15" })pb"), sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, EqualNamesOfTwoDevicesAreSummedIntoOneField) {
  populate(platform({device({pBlock({record("DSPs_SLR1", "100")})}),
                     device({pBlock({record("DSPs_SLR1", "20")})})}));

  EXPECT_TRUE(
      qvtest::sameMessage(expected(R"pb(by_slr { slr: "SLR1" dsp: "120" })pb"), sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, DspNameWithoutTheSLeavesNoEntry) {
  populate(platform({device({pBlock({record("DSP_SLR0", "30")})})}));

  EXPECT_EQ(region->message()->available_resources().by_slr_size(), 0);
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ResourceWordInLowerCaseLeavesNoEntry) {
  populate(platform({device({pBlock({record("bram_SLR0", "10"), record("lut_SLR1", "20")})})}));

  EXPECT_EQ(region->message()->available_resources().by_slr_size(), 0);
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ValueWithTextBehindTheDigitsShowsTheDigits) {
  populate(platform({device({pBlock({record("LUT_SLR0", "434560 LUTs")})})}));

  EXPECT_TRUE(qvtest::sameMessage(expected(R"pb(by_slr { slr: "SLR0" lut: "434560" })pb"),
                                  sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, ValueBeginningWithALetterShowsTheSlrWithZero) {
  populate(platform({device({pBlock({record("URAM_SLR2", "n/a")})})}));

  EXPECT_TRUE(
      qvtest::sameMessage(expected(R"pb(by_slr { slr: "SLR2" uram: "0" })pb"), sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NegativeValueLeavesNoTraceNotEvenTheSlr) {
  populate(platform({device({pBlock({record("BRAM_SLR0", "1"), record("REG_SLR1", "-5")})})}));

  EXPECT_TRUE(
      qvtest::sameMessage(expected(R"pb(by_slr { slr: "SLR0" bram: "1" })pb"), sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NameEndingInItsUnderscoreGivesAnEmptySlr) {
  populate(platform({device({pBlock({record("LUT_", "12"), record("LUT_SLR0", "3")})})}));

  EXPECT_TRUE(qvtest::sameMessage(expected(R"pb(
                                    by_slr { slr: "" lut: "12" }
                                    by_slr { slr: "SLR0" lut: "3" }
                                  )pb"),
                                  sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, SlrWithSomeResourcesHasTheOthersEmpty) {
  populate(
      platform({device({pBlock({record("LUT_SLR0", "434560"), record("REG_SLR0", "869120")})})}));

  ASSERT_EQ(region->message()->available_resources().by_slr_size(), 1);
  pb::bySlr const& entry = region->message()->available_resources().by_slr(0);
  EXPECT_EQ(entry.slr(), "SLR0");
  EXPECT_EQ(entry.bram(), "");
  EXPECT_EQ(entry.uram(), "");
  EXPECT_EQ(entry.dsp(), "");
  EXPECT_EQ(entry.lut(), "434560");
  EXPECT_EQ(entry.reg(), "869120");
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, NameInOneRecordAndValueInTheNextMakeOneField) {
  populate(platform({device({pBlock({R"({"name": "BRAM_SLR1"})", R"({"value": "96"})"})})}));

  EXPECT_TRUE(
      qvtest::sameMessage(expected(R"pb(by_slr { slr: "SLR1" bram: "96" })pb"), sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, OnlyTheLastResourcesOfABlockReachTheDiagram) {
  populate(platform({device({R"({"validSlrs": {"resources": [)" + record("BRAM_SLR0", "1") +
                             R"(], "resources": [)" + record("LUT_SLR1", "2") + "]}}"})}));

  EXPECT_TRUE(
      qvtest::sameMessage(expected(R"pb(by_slr { slr: "SLR1" lut: "2" })pb"), sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest,
       EntriesGoBehindThoseAlreadyThereAndTotalsStay) {
  resources->setLut("1303680");
  resources->addBySlr()->setSlr("earlier");

  populate(platform({device({pBlock({record("LUT_SLR0", "434560")})})}));

  EXPECT_TRUE(qvtest::sameMessage(expected(R"pb(
                                    by_slr { slr: "earlier" }
                                    by_slr { slr: "SLR0" lut: "434560" }
                                    lut: "1303680"
                                  )pb"),
                                  region->message()->available_resources()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, PopulatorKeepsItsOwnCopyOfThePlatform) {
  ptree tree = IPA::makePropertyTree(platform({device({pBlock({record("LUT_SLR0", "5")})})}));
  Populator const copy(tree);
  tree.clear();

  copy.populateUserRegionAvailableResourcesSlr(resources);

  EXPECT_TRUE(
      qvtest::sameMessage(expected(R"pb(by_slr { slr: "SLR0" lut: "5" })pb"), sortedAvailable()));
}

TEST_F(UserRegionAvailableResourcesSlrPopulatorTest, PopulatingTwiceAppendsTheEntriesTwice) {
  Populator const twice(
      IPA::makePropertyTree(platform({device({pBlock({record("REG_SLR0", "8")})})})));

  twice.populateUserRegionAvailableResourcesSlr(resources);
  twice.populateUserRegionAvailableResourcesSlr(resources);

  EXPECT_TRUE(qvtest::sameMessage(expected(R"pb(
                                    by_slr { slr: "SLR0" reg: "8" }
                                    by_slr { slr: "SLR0" reg: "8" }
                                  )pb"),
                                  sortedAvailable()));
}

}  // namespace
