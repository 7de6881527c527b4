// upsertKernelUtilization finds the compute units of all the map's names in one pass. These
// tests hold its result to that of the plain definition, clearComputeUnitResourceUse and then
// addComputeUnitActualResource for each entry in the map's order, on random diagrams (names
// repeated within and across user regions, empty names, resources already held) and random maps
// (empty names, names the diagram lacks, unknown state words), compared byte for byte.
#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <unordered_map>
#include <vector>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "resources/ActualResource.h"
#include "resources/ActualResourceCollection.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Container = IPA::ProfileAnalyzerSystemDiagram::Container;
using KernelUse = std::unordered_map<std::string, IPA::ActualResourceCollection>;

std::vector<std::string> const kNames = {"vadd_1", "vadd_2", "k:cu_3", "mmul_1", "", "absent"};
std::vector<std::string> const kStates = {"Synthesized", "Fully Placed", "Routed", "Placed", ""};

class Generator {
 public:
  explicit Generator(unsigned seed) : random(seed) {}

  int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random); }
  std::string const& pick(std::vector<std::string> const& words) {
    return words[static_cast<std::size_t>(below(static_cast<int>(words.size())))];
  }

  // Sometimes no diagram at all, so that creating the sections on the way is compared too.
  Container diagram() {
    Container container;
    if (below(10) == 0) return container;
    int const regions = below(4);
    auto* const qrxbin = container.mutable_system_diagram_metadata()->mutable_qrxbin();
    for (int r = 0; r < regions; ++r) {
      auto* const region = qrxbin->add_user_regions();
      int const units = below(7);
      for (int u = 0; u < units; ++u) {
        auto* const unit = region->add_compute_units();
        unit->set_id(std::to_string(u));
        unit->set_name(pick(kNames));
        for (int e = below(3); e > 0; --e) {
          auto* const entry = unit->add_actual_resources();
          entry->set_lut(std::to_string(below(100)));
          entry->set_design_state(pb::DESIGN_STATE_ROUTED);
        }
      }
    }
    return container;
  }

  KernelUse kernelUse() {
    KernelUse map;
    for (int n = below(6); n > 0; --n) {
      IPA::ActualResourceCollection& collection = map[pick(kNames)];
      for (int s = below(4); s > 0; --s) {
        IPA::ActualResource record;
        record.state = pick(kStates);
        record.lut = std::to_string(below(1000));
        record.reg = std::to_string(below(1000));
        record.dsp = std::to_string(below(9));
        collection.resources[record.state] = record;
      }
    }
    return map;
  }

 private:
  std::mt19937 random;
};

TEST(ProfileAnalyzerSystemDiagramPublicationTest, SameTreeAsClearingAndAddingEachEntryInTurn) {
  int changed = 0;
  for (unsigned seed = 1; seed <= 2000; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Generator generate(seed);
    Container const start = generate.diagram();
    auto const published = std::make_shared<Container>(start);
    auto const reference = std::make_shared<Container>(start);
    IPA::ProfileAnalyzerSystemDiagram publishedDiagram(published);
    IPA::ProfileAnalyzerSystemDiagram referenceDiagram(reference);

    // Three publications in a row, each map on top of what the earlier ones left.
    for (int round = 0; round < 3; ++round) {
      KernelUse const map = generate.kernelUse();
      publishedDiagram.upsertKernelUtilization(map);
      for (auto const& entry : map) {
        referenceDiagram.clearComputeUnitResourceUse(entry.first);
        referenceDiagram.addComputeUnitActualResource(entry.first, entry.second);
      }
      ASSERT_EQ(published->SerializeAsString(), reference->SerializeAsString())
          << published->DebugString() << "\n---\n"
          << reference->DebugString();
    }
    if (published->SerializeAsString() != start.SerializeAsString()) ++changed;
  }
  // Most cases change the tree, so the comparison is not of untouched trees.
  EXPECT_GT(changed, 1000);
}

}  // namespace
