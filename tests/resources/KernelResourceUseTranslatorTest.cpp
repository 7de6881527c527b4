// How an UpsertKernelUse message becomes compute unit name -> design state -> report. The odd
// rules (one state per message, one surviving compute unit use per kernel entry, the empty name
// of a kernel entry without uses) are kept on purpose: clients send one compute unit use per
// kernel entry, and the rest of the library is written against exactly this shape.
#include "resources/KernelResourceUseTranslator.h"

#include <algorithm>
#include <string>
#include <unordered_map>
#include <vector>

#include <google/protobuf/text_format.h>
#include <gtest/gtest.h>

namespace {

namespace server = dispatch::system_diagram_server;
using IPA::ActualResourceCollection;
using IPA::KernelResourceUseTranslator;
using KernelUse = std::unordered_map<std::string, ActualResourceCollection>;

server::UpsertKernelUse message(std::string const& text) {
  server::UpsertKernelUse parsed;
  EXPECT_TRUE(google::protobuf::TextFormat::ParseFromString(text, &parsed)) << text;
  return parsed;
}

// One line per compute unit, sorted: "<unit>: <key>=<state>|<lut>|<reg>|<bram>|<uram>|<dsp>; ..."
// with the states of the unit sorted too, and "<unit>: (none)" for a unit without reports. The
// record's own state field is shown beside its key, since both matter.
std::string describe(KernelUse const& kernelUse) {
  std::vector<std::string> lines;
  for (auto const& unit : kernelUse) {
    std::vector<std::string> states;
    for (auto const& entry : unit.second.resources) {
      auto const& r = entry.second;
      states.push_back(entry.first + "=" + r.state + "|" + r.lut + "|" + r.reg + "|" + r.bram +
                       "|" + r.uram + "|" + r.dsp);
    }
    std::sort(states.begin(), states.end());
    std::string line = unit.first + ":";
    if (states.empty()) line += " (none)";
    for (std::string const& state : states) line += " " + state + ";";
    lines.push_back(line);
  }
  std::sort(lines.begin(), lines.end());
  std::string text;
  for (std::string const& line : lines) text += line + "\n";
  return text;
}

std::string translated(std::string const& text) {
  return describe(KernelResourceUseTranslator::toActualResourceMap(message(text)));
}

TEST(KernelResourceUseTranslatorTest, OneComputeUnitUseGivesOneReportUnderItsNameAndTheState) {
  EXPECT_EQ(translated(R"(
    designState: "Routed" useKind: 4
    kernelUses { kernelName: "vadd" computeUnitUses { computeUnitName: "vadd_1"
      actualResources { lut: "2398" reg: "3790" bram: "2" uram: "1" dsp: "7" } } })"),
            "vadd_1: Routed=Routed|2398|3790|2|1|7;\n");
}

TEST(KernelResourceUseTranslatorTest, EachCountComesFromTheFieldOfItsNameAndLutMemIsNotRead) {
  EXPECT_EQ(translated(R"(
    designState: "Synthesized"
    kernelUses { kernelName: "k" computeUnitUses { computeUnitName: "k_1"
      actualResources { lut: "1" lutMem: "99" reg: "2" bram: "3" uram: "4" dsp: "5" } } })"),
            "k_1: Synthesized=Synthesized|1|2|3|4|5;\n");
}

TEST(KernelResourceUseTranslatorTest, ComputeUnitUseWithoutCountsGivesFiveEmptyTexts) {
  EXPECT_EQ(translated(R"(
    designState: "Fully Placed"
    kernelUses { kernelName: "k" computeUnitUses { computeUnitName: "k_1" } })"),
            "k_1: Fully Placed=Fully Placed|||||;\n");
}

TEST(KernelResourceUseTranslatorTest, OnlyTheLastComputeUnitUseOfAKernelEntrySurvives) {
  // Both uses share one scratch collection and one state, so the second overwrites the first and
  // the result is filed under the second's name; vadd_1 disappears.
  EXPECT_EQ(translated(R"(
    designState: "Routed"
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_1" actualResources { lut: "111" } }
      computeUnitUses { computeUnitName: "vadd_2" actualResources { lut: "222" } } })"),
            "vadd_2: Routed=Routed|222||||;\n");
}

TEST(KernelResourceUseTranslatorTest, LastUseWithoutCountsWipesTheCountsOfTheEarlierOnes) {
  EXPECT_EQ(translated(R"(
    designState: "Routed"
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_1" actualResources { lut: "111" dsp: "9" } }
      computeUnitUses { computeUnitName: "vadd_1" } })"),
            "vadd_1: Routed=Routed|||||;\n");
}

TEST(KernelResourceUseTranslatorTest,
     KernelEntryWithoutComputeUnitUsesGivesAnEmptyCollectionUnderTheEmptyName) {
  KernelUse const result = KernelResourceUseTranslator::toActualResourceMap(message(R"(
    designState: "Routed" kernelUses { kernelName: "vadd" })"));
  ASSERT_EQ(result.size(), 1u);
  ASSERT_EQ(result.count(""), 1u);
  EXPECT_TRUE(result.at("").resources.empty());
}

TEST(KernelResourceUseTranslatorTest, EmptyKernelEntryAfterAFullOneDoesNotTakeItsName) {
  // The noted name starts empty for each kernel entry, so the empty entry cannot wipe vadd_1.
  EXPECT_EQ(translated(R"(
    designState: "Routed"
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_1" actualResources { lut: "1" } } }
    kernelUses { kernelName: "vmul" })"),
            ": (none)\n"
            "vadd_1: Routed=Routed|1||||;\n");
}

TEST(KernelResourceUseTranslatorTest, ComputeUnitsOfAllKernelEntriesLandInOneMap) {
  EXPECT_EQ(translated(R"(
    designState: "Synthesized"
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_1" actualResources { lut: "1" } } }
    kernelUses { kernelName: "vmul"
      computeUnitUses { computeUnitName: "vmul_1" actualResources { lut: "2" } } }
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_2" actualResources { lut: "3" } } })"),
            "vadd_1: Synthesized=Synthesized|1||||;\n"
            "vadd_2: Synthesized=Synthesized|3||||;\n"
            "vmul_1: Synthesized=Synthesized|2||||;\n");
}

TEST(KernelResourceUseTranslatorTest, KernelNamePlaysNoPart) {
  EXPECT_EQ(translated(R"(
    designState: "Routed"
    kernelUses { computeUnitUses { computeUnitName: "vadd_1" actualResources { lut: "5" } } })"),
            "vadd_1: Routed=Routed|5||||;\n");
}

TEST(KernelResourceUseTranslatorTest, LaterKernelEntryForTheSameComputeUnitReplacesTheEarlier) {
  EXPECT_EQ(translated(R"(
    designState: "Routed"
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_1" actualResources { lut: "1" reg: "1" } } }
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_1" actualResources { lut: "2" } } })"),
            "vadd_1: Routed=Routed|2||||;\n");
}

TEST(KernelResourceUseTranslatorTest, StateIsTheMessagesWordWhateverItIs) {
  struct Row {
    char const* state;
    char const* expected;
  };
  Row const rows[] = {
      {"Synthesized", "k_1: Synthesized=Synthesized|1||||;\n"},
      {"Fully Placed", "k_1: Fully Placed=Fully Placed|1||||;\n"},
      {"Routed", "k_1: Routed=Routed|1||||;\n"},
      {"routed", "k_1: routed=routed|1||||;\n"},
      {"Placed and Hopeful", "k_1: Placed and Hopeful=Placed and Hopeful|1||||;\n"},
      {"", "k_1: =|1||||;\n"},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(translated(std::string("designState: \"") + row.state + R"("
      kernelUses { kernelName: "k"
        computeUnitUses { computeUnitName: "k_1" actualResources { lut: "1" } } })"),
              row.expected)
        << row.state;
  }
}

TEST(KernelResourceUseTranslatorTest, ComputeUnitUseWithoutANameIsFiledUnderTheEmptyName) {
  EXPECT_EQ(translated(R"(
    designState: "Routed"
    kernelUses { kernelName: "k" computeUnitUses { actualResources { lut: "4" } } })"),
            ": Routed=Routed|4||||;\n");
}

TEST(KernelResourceUseTranslatorTest, MessageWithoutKernelEntriesGivesAnEmptyMap) {
  EXPECT_TRUE(KernelResourceUseTranslator::toActualResourceMap(message(R"(designState: "Routed")"))
                  .empty());
  EXPECT_TRUE(KernelResourceUseTranslator::toActualResourceMap(server::UpsertKernelUse()).empty());
}

TEST(KernelResourceUseTranslatorTest, UseKindChangesNothing) {
  std::string const body = R"(designState: "Routed"
    kernelUses { kernelName: "k" computeUnitUses { computeUnitName: "k_1"
      actualResources { lut: "1" } } })";
  EXPECT_EQ(translated(body + " useKind: 0"), "k_1: Routed=Routed|1||||;\n");
  EXPECT_EQ(translated(body + " useKind: 4"), "k_1: Routed=Routed|1||||;\n");
  EXPECT_EQ(translated(body + " useKind: -7"), "k_1: Routed=Routed|1||||;\n");
}

}  // namespace
