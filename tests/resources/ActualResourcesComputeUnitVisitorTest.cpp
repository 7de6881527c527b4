// The walk over an actual resources document that hands each compute unit's counts to a diagram:
// first the exact calls it makes, seen by a fake diagram; then what a real diagram holds
// afterwards.
#include "resources/ActualResourcesComputeUnitVisitor.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "diagram/StatefulSystemDiagram.h"
#include "diagram/SystemDiagramInterface.h"
#include "resources/ActualResourceCollection.h"
#include "resources/ActualResourceTreeVisitor.h"
#include "resources/ActualResourcesTree.h"
#include "tests/support/Calls.h"
#include "tests/support/Messages.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Container = IPA::ProfileAnalyzerSystemDiagram::Container;
using IPA::ActualResourceCollection;
using IPA::ActualResourcesComputeUnitVisitor;
using IPA::ActualResourcesTree;
using qvtest::parse;
using qvtest::runtimeErrorText;
using qvtest::sameMessage;

// "<key>=<state>|<lut>|<reg>|<bram>|<uram>|<dsp>" per entry, sorted, joined by "; "; "{}" when
// empty.
std::string describe(ActualResourceCollection const& collection) {
  std::vector<std::string> entries;
  for (auto const& entry : collection.resources) {
    auto const& r = entry.second;
    entries.push_back(entry.first + "=" + r.state + "|" + r.lut + "|" + r.reg + "|" + r.bram + "|" +
                      r.uram + "|" + r.dsp);
  }
  if (entries.empty()) return "{}";
  std::sort(entries.begin(), entries.end());
  std::string text;
  for (std::string const& entry : entries) text += (text.empty() ? "" : "; ") + entry;
  return "{" + text + "}";
}

std::string withQrxBin(std::string const& body) {
  return "system_diagram_metadata { qrxbin { " + body + " } }";
}

class ActualResourcesComputeUnitVisitorTest : public ::testing::Test {
 protected:
  // Keeps one line "<name> <collection>" per addComputeUnitActualResource; any other operation is
  // a failure, since the walk has no business with the rest of a diagram.
  class FakeDiagram : public IPA::SystemDiagramInterface {
   public:
    void addComputeUnitActualResource(std::string const& name,
                                      ActualResourceCollection const& collection) override {
      calls.push_back("'" + name + "' " + describe(collection));
      if (!failOn.empty() && name == failOn) throw std::runtime_error("refused " + name);
    }

    std::vector<std::string> computeUnitNames() override {
      return unexpected<std::vector<std::string>>();
    }
    std::string kernelNameFromComputeUnitName(std::string const&) const override {
      return unexpected<std::string>();
    }
    void setComputeUnitBaseAddress(std::string const&, std::string const&,
                                   std::string const&) override {
      unexpected<void>();
    }
    void setDeviceTopologyBaseAddress(std::string const&, std::string const&) override {
      unexpected<void>();
    }
    void setDeviceTopologySlr(std::string const&, std::string const&) override {
      unexpected<void>();
    }
    void setDeviceTopologyUsed(std::string const&, std::string const&) override {
      unexpected<void>();
    }
    void setDeviceTopologySizeKB(std::string const&, std::string const&) override {
      unexpected<void>();
    }
    void serializeToJson(std::ostream&) const override { unexpected<void>(); }
    void serializeFromJson(std::istream&) override { unexpected<void>(); }
    void upsertKernelUtilization(
        std::unordered_map<std::string, ActualResourceCollection> const&) override {
      unexpected<void>();
    }
    void upsertKernel(pb::kernel const&) override { unexpected<void>(); }
    void upsertQrxBin(pb::qrxBin const&) override { unexpected<void>(); }
    void upsertQrxBinGeneratedBy(pb::qrxBinGeneratedBy const&) override { unexpected<void>(); }
    void upsertQsaClock(pb::Clock const&) override { unexpected<void>(); }
    void updateComputeUnit(pb::computeUnit const&) override { unexpected<void>(); }
    void upsertConnectivity(pb::Connectivity const&) override { unexpected<void>(); }
    void writeFlowReport(std::ofstream&) override { unexpected<void>(); }
    void getQrxBinGeneratedBy(pb::qrxBinGeneratedBy&) override { unexpected<void>(); }
    void upsertPlatform(pb::Platform const&) override { unexpected<void>(); }

    std::vector<std::string> calls;
    std::string failOn;  // addComputeUnitActualResource throws for this name when not empty

   private:
    template <class Result>
    static Result unexpected() {
      ADD_FAILURE() << "the walk called a diagram operation other than "
                       "addComputeUnitActualResource";
      return Result();
    }
  };

  ActualResourcesComputeUnitVisitorTest()
      : container(std::make_shared<Container>()),
        diagram(std::make_shared<IPA::ProfileAnalyzerSystemDiagram>(container)) {}

  static ActualResourcesTree read(std::string const& text) {
    std::istringstream in(text);
    return ActualResourcesTree(in);
  }

  // The calls that walking `text` makes on the fake diagram.
  std::vector<std::string> callsFor(std::string const& text) {
    ActualResourcesTree tree = read(text);
    ActualResourcesComputeUnitVisitor(&fake).visit(tree);
    return fake.calls;
  }

  // Walks `text` into the real diagram.
  void visitDiagram(std::string const& text) {
    ActualResourcesTree tree = read(text);
    ActualResourcesComputeUnitVisitor(diagram.get()).visit(tree);
  }

  void load(std::string const& text) { *container = parse<Container>(text); }

  ::testing::AssertionResult treeIs(std::string const& text) const {
    return sameMessage(parse<Container>(text), *container);
  }

  FakeDiagram fake;
  std::shared_ptr<Container> container;
  std::shared_ptr<IPA::ProfileAnalyzerSystemDiagram> diagram;
};

using Calls = std::vector<std::string>;

// One compute unit reported as routed.
std::string const routedVadd = R"({
  "schema_version": {"major": "1", "minor": "0", "patch": "0"},
  "design_state": "Routed",
  "kernels": [{"name": "vadd", "compute_units": [
    {"cu_name": "vadd_1",
     "actual_resources": {"LUT": "10", "REG": "20", "BRAM": "3", "URAM": "4", "DSP": "5"}}]}]})";

// ---- The calls ----------------------------------------------------------------------------------

TEST_F(ActualResourcesComputeUnitVisitorTest, CopiesTheFiveCountsUnderTheCurrentState) {
  EXPECT_EQ(callsFor(routedVadd), (Calls{"'vadd_1' {Routed=Routed|10|20|3|4|5}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, MakesOneCallPerComputeUnitInFileOrder) {
  EXPECT_EQ(
      callsFor(R"({"design_state": "Synthesized", "kernels": [
      {"name": "vmul", "compute_units": [
        {"cu_name": "vmul_2", "actual_resources": {"LUT": "1"}},
        {"cu_name": "vmul_1", "actual_resources": {"LUT": "2"}}]},
      {"name": "vadd", "compute_units": [
        {"cu_name": "vadd_1", "actual_resources": {"LUT": "3"}}]}]})"),
      (Calls{"'vmul_2' {Synthesized=Synthesized|1||||}", "'vmul_1' {Synthesized=Synthesized|2||||}",
             "'vadd_1' {Synthesized=Synthesized|3||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, MissingCountsStayEmpty) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1", "actual_resources": {"REG": "7", "DSP": "9"}}]}]})"),
            (Calls{"'vadd_1' {Routed=Routed||7|||9}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, CountsWithoutQuotesAreHandedOverAsWritten) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1",
       "actual_resources": {"LUT": 10, "REG": 2e1, "BRAM": 1.50, "URAM": "0", "DSP": -1}}]}]})"),
            (Calls{"'vadd_1' {Routed=Routed|10|2e1|1.50|0|-1}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, ComputeUnitWithoutNameIsHandedOverWithAnEmptyName) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"actual_resources": {"LUT": "10"}}]}]})"),
            (Calls{"'' {Routed=Routed|10||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest,
       ComputeUnitWithoutActualResourcesIsHandedOverWithAnEmptyCollection) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1"}]}]})"),
            (Calls{"'vadd_1' {}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, EmptyComputeUnitObjectStillMakesItsCall) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [{}]}]})"),
            (Calls{"'' {}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, DesignStateAfterKernelsLeavesTheStateEmpty) {
  EXPECT_EQ(callsFor(R"({"kernels": [{"compute_units": [
      {"cu_name": "vadd_1", "actual_resources": {"LUT": "10"}}]}],
      "design_state": "Routed"})"),
            (Calls{"'vadd_1' {=|10||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, EachDesignStateAppliesToTheKernelsAfterIt) {
  EXPECT_EQ(callsFor(R"({
      "design_state": "Synthesized",
      "kernels": [{"compute_units": [{"cu_name": "vadd_1", "actual_resources": {"LUT": "1"}}]}],
      "design_state": "Routed",
      "kernels": [{"compute_units": [{"cu_name": "vadd_1", "actual_resources": {"LUT": "2"}}]}]})"),
            (Calls{"'vadd_1' {Synthesized=Synthesized|1||||}", "'vadd_1' {Routed=Routed|2||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, UnknownStateWordIsHandedOverAsWritten) {
  EXPECT_EQ(callsFor(R"({"design_state": "Placed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1", "actual_resources": {"LUT": "10"}}]}]})"),
            (Calls{"'vadd_1' {Placed=Placed|10||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, SecondActualResourcesReplacesTheFirst) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1",
       "actual_resources": {"LUT": "10", "DSP": "5"},
       "actual_resources": {"LUT": "11"}}]}]})"),
            (Calls{"'vadd_1' {Routed=Routed|11||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, NameAfterActualResourcesCountsTheSame) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"actual_resources": {"LUT": "10", "REG": "20", "BRAM": "3", "URAM": "4", "DSP": "5"},
       "cu_name": "vadd_1"}]}]})"),
            (Calls{"'vadd_1' {Routed=Routed|10|20|3|4|5}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, LastNameOfAComputeUnitObjectIsTheOneHandedOver) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1", "actual_resources": {"LUT": "10"}, "cu_name": "vadd_2"}]}]})"),
            (Calls{"'vadd_2' {Routed=Routed|10||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, KeysNotKnownAreSkippedAtEveryLevel) {
  EXPECT_EQ(callsFor(R"({
      "tool": {"name": "v++", "kernels": [{"compute_units": [{"cu_name": "hidden"}]}]},
      "design_state": "Routed",
      "kernels": [{
        "name": "vadd", "clock": "ap_clk", "units": [{"cu_name": "hidden"}],
        "compute_units": [{
          "cu_name": "vadd_1", "slr": "SLR0", "status": {"cu_name": "hidden"},
          "actual_resources": {"LUT": "10", "CARRY": "99", "FF": "98", "DSP": "5"}}]}],
      "comment": "done"})"),
            (Calls{"'vadd_1' {Routed=Routed|10||||5}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, KeysAreComparedExactly) {
  EXPECT_EQ(callsFor(R"({"Design_State": "Synthesized", "design_state ": "Fully Placed",
      "Kernels": [{"compute_units": [{"cu_name": "hidden"}]}],
      "kernels": [{"Compute_Units": [{"cu_name": "hidden"}], "compute_units": [
        {"CU_name": "hidden", "cu_name": "vadd_1", "Actual_Resources": {"LUT": "1"},
         "actual_resources": {"lut": "1", "Reg": "2", "LUT ": "3", "DSP": "4"}}]}]})"),
            (Calls{"'vadd_1' {=|||||4}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, KernelWithoutComputeUnitsMakesNoCall) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [
      {"name": "vadd"}, {"name": "vmul", "compute_units": []}]})"),
            Calls{});
}

TEST_F(ActualResourcesComputeUnitVisitorTest, DocumentWithoutKernelsMakesNoCall) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed"})"), Calls{});
}

TEST_F(ActualResourcesComputeUnitVisitorTest, DocumentWithoutVersionIsWalkedWithoutComplaint) {
  EXPECT_EQ(callsFor(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1", "actual_resources": {"LUT": "10"}}]}]})"),
            (Calls{"'vadd_1' {Routed=Routed|10||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, UnsupportedVersionIsNotChecked) {
  EXPECT_EQ(callsFor(R"({"schema_version": {"major": "0", "minor": "7", "patch": "3"},
      "design_state": "Routed", "kernels": [{"compute_units": [{"cu_name": "vadd_1"}]}]})"),
            (Calls{"'vadd_1' {}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, SameVisitorOverOneTreeTwiceMakesEveryCallTwice) {
  ActualResourcesTree tree = read(routedVadd);
  ActualResourcesComputeUnitVisitor visitor(&fake);
  visitor.visit(tree);
  visitor.visit(tree);
  EXPECT_EQ(fake.calls, (Calls{"'vadd_1' {Routed=Routed|10|20|3|4|5}",
                               "'vadd_1' {Routed=Routed|10|20|3|4|5}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, StateOfOneWalkDoesNotCarryOverToTheNext) {
  ActualResourcesComputeUnitVisitor visitor(&fake);
  ActualResourcesTree first = read(routedVadd);
  visitor.visit(first);
  ActualResourcesTree second = read(R"({"kernels": [{"compute_units": [
      {"cu_name": "vadd_1", "actual_resources": {"LUT": "1"}}]}]})");
  visitor.visit(second);
  EXPECT_EQ(fake.calls, (Calls{"'vadd_1' {Routed=Routed|10|20|3|4|5}", "'vadd_1' {=|1||||}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, ErrorOfTheDiagramPassesThroughAndStopsTheWalk) {
  fake.failOn = "vadd_2";
  ActualResourcesTree tree = read(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1"}, {"cu_name": "vadd_2"}, {"cu_name": "vadd_3"}]}]})");
  ActualResourcesComputeUnitVisitor visitor(&fake);
  EXPECT_EQ(runtimeErrorText([&] { visitor.visit(tree); }), "refused vadd_2");
  EXPECT_EQ(fake.calls, (Calls{"'vadd_1' {}", "'vadd_2' {}"}));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, CanBeOwnedAndUsedThroughTheBase) {
  std::unique_ptr<IPA::ActualResourceTreeVisitor> base =
      std::make_unique<ActualResourcesComputeUnitVisitor>(&fake);
  ActualResourcesTree tree = read(routedVadd);
  base->visit(tree);
  EXPECT_EQ(fake.calls, (Calls{"'vadd_1' {Routed=Routed|10|20|3|4|5}"}));
}

// ---- A real diagram -----------------------------------------------------------------------------

TEST_F(ActualResourcesComputeUnitVisitorTest, EntriesAreAppendedAfterWhatTheComputeUnitHeld) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" kernel_name: "vadd" name: "vadd_1"
        actual_resources { lut: "1" design_state: DESIGN_STATE_ROUTED }
      }
      compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
    })"));
  visitDiagram(routedVadd);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" kernel_name: "vadd" name: "vadd_1"
        actual_resources { lut: "1" design_state: DESIGN_STATE_ROUTED }
        actual_resources {
          lut: "10" reg: "20" bram: "3" uram: "4" dsp: "5" design_state: DESIGN_STATE_ROUTED
        }
      }
      compute_units { id: "1" kernel_name: "vadd" name: "vadd_2" }
    })")));
}

TEST_F(ActualResourcesComputeUnitVisitorTest,
       TwoComputeUnitsOfTheSameNameInTwoUserRegionsBothGetTheEntries) {
  load(withQrxBin(R"(
    user_regions { compute_units { id: "0" name: "vadd_1" } }
    user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  visitDiagram(routedVadd);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        actual_resources {
          lut: "10" reg: "20" bram: "3" uram: "4" dsp: "5" design_state: DESIGN_STATE_ROUTED
        }
      }
    }
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        actual_resources {
          lut: "10" reg: "20" bram: "3" uram: "4" dsp: "5" design_state: DESIGN_STATE_ROUTED
        }
      }
    })")));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, DocumentWithOneStateVisitedTwiceLeavesTwoEntries) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  ActualResourcesTree tree = read(routedVadd);
  ActualResourcesComputeUnitVisitor visitor(diagram.get());
  visitor.visit(tree);
  visitor.visit(tree);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        actual_resources {
          lut: "10" reg: "20" bram: "3" uram: "4" dsp: "5" design_state: DESIGN_STATE_ROUTED
        }
        actual_resources {
          lut: "10" reg: "20" bram: "3" uram: "4" dsp: "5" design_state: DESIGN_STATE_ROUTED
        }
      }
    })")));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, ComputeUnitObjectWithoutNameChangesNothing) {
  // Not even a stored compute unit with an empty name gets the counts.
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "" }
      compute_units { id: "1" name: "vadd_1" }
    })");
  load(tree);
  visitDiagram(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"actual_resources": {"LUT": "10"}}]}]})");
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ActualResourcesComputeUnitVisitorTest,
       ComputeUnitObjectWithoutActualResourcesChangesNothing) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" actual_resources { lut: "1" } }
    })");
  load(tree);
  visitDiagram(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1"}]}]})");
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, UnknownStateWordIsStoredAsUnset) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  visitDiagram(R"({"design_state": "Implemented", "kernels": [{"compute_units": [
      {"cu_name": "vadd_1", "actual_resources": {"LUT": "10"}}]}]})");
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" actual_resources { lut: "10" design_state: DESIGN_STATE_UNSET }
      }
    })")));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, DesignStateAfterKernelsIsStoredAsUnset) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  visitDiagram(R"({"kernels": [{"compute_units": [
      {"cu_name": "vadd_1", "actual_resources": {"LUT": "10"}}]}], "design_state": "Routed"})");
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" actual_resources { lut: "10" design_state: DESIGN_STATE_UNSET }
      }
    })")));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, EachKnownStateWordIsStoredAsItsDesignState) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  visitDiagram(R"({
      "design_state": "Synthesized",
      "kernels": [{"compute_units": [{"cu_name": "vadd_1", "actual_resources": {"LUT": "1"}}]}],
      "design_state": "Fully Placed",
      "kernels": [{"compute_units": [{"cu_name": "vadd_1", "actual_resources": {"LUT": "2"}}]}],
      "design_state": "Routed",
      "kernels": [{"compute_units": [{"cu_name": "vadd_1", "actual_resources": {"LUT": "3"}}]}]})");
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        actual_resources { lut: "1" design_state: DESIGN_STATE_SYNTHESIZED }
        actual_resources { lut: "2" design_state: DESIGN_STATE_FULLY_PLACED }
        actual_resources { lut: "3" design_state: DESIGN_STATE_ROUTED }
      }
    })")));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, DocumentWithoutVersionFillsTheDiagram) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  visitDiagram(R"({"design_state": "Routed", "kernels": [{"compute_units": [
      {"actual_resources": {"DSP": "5"}, "cu_name": "vadd_1"}]}]})");
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" actual_resources { dsp: "5" design_state: DESIGN_STATE_ROUTED }
      }
    })")));
}

TEST_F(ActualResourcesComputeUnitVisitorTest, WalkThroughTheLockingDiagramReachesTheStoredUnits) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  IPA::StatefulSystemDiagram stateful(diagram);
  ActualResourcesTree tree = read(routedVadd);
  ActualResourcesComputeUnitVisitor(&stateful).visit(tree);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        actual_resources {
          lut: "10" reg: "20" bram: "3" uram: "4" dsp: "5" design_state: DESIGN_STATE_ROUTED
        }
      }
    })")));
}

}  // namespace
