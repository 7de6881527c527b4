// DiagramDiff on pairs of small hand-made diagrams: one scenario per kind of change, each with
// the exact text and JSON a user sees.
#include "views/DiagramDiff.h"

#include <google/protobuf/util/json_util.h>
#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "views/StoredDiagram.h"

namespace qvviews {
namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class DiagramDiffTest : public ::testing::Test {
 protected:
  // Two SLRs, two memories, two kernels with one compute unit each, two connections, two
  // platform clocks: enough for every group to have an entry.
  static pb::outerContainer base() {
    pb::outerContainer root;
    auto* meta = root.mutable_system_diagram_metadata();
    meta->mutable_schema_version()->set_major("1");
    auto* qsa = meta->mutable_qsa();
    qsa->set_name("qv_test_platform");
    qsa->set_vendor("qvlabs");
    qsa->set_board_id("t1");
    qsa->set_version_major("1");
    qsa->set_version_minor("0");
    qsa->mutable_board()->set_name("t1");
    qsa->mutable_board()->set_part("qvf-t1");
    addClock(*qsa, 0, "clk_kernel_00", 300);
    addClock(*qsa, 1, "clk_kernel_01", 500);
    addMemory(*qsa, "0", "DDR[0]", "SLR0", "0x0");
    addMemory(*qsa, "1", "DDR[1]", "SLR1", "0x400000000");
    auto* region = meta->mutable_qrxbin()->add_user_regions();
    addSlr(*region, "SLR0");
    addSlr(*region, "SLR1");
    region->add_kernels()->set_name("vadd");
    region->add_kernels()->set_name("mmult");
    addUnit(*region, "0", "vadd", "vadd_1", "SLR0", "0x1000", "2000");
    addUnit(*region, "1", "mmult", "mmult_1", "SLR1", "0x2000", "18000");
    addConnection(*region, "0", "in1", "0");
    addConnection(*region, "1", "a", "1");
    return root;
  }

  static void addClock(pb::Qsa& qsa, int id, std::string const& name, double mhz) {
    auto* clock = qsa.add_clocks();
    clock->set_id(id);
    clock->set_name(name);
    clock->set_frequency(mhz);
    clock->set_requested_frequency(mhz);
    clock->set_achieved_frequency(mhz);
    clock->set_status(pb::CLOCK_SCALABLE);
  }

  static void addMemory(pb::Qsa& qsa, std::string const& id, std::string const& tag,
                        std::string const& slr, std::string const& base) {
    auto* memory = qsa.add_device_topology();
    memory->set_id(id);
    memory->set_tag(tag);
    memory->set_sp_tag(tag);
    memory->set_slr(slr);
    memory->set_used("yes");
    memory->set_size_kb("16777216");
    memory->set_base_address(base);
    memory->set_type(pb::MEM_DDR4);
  }

  static void addSlr(pb::userRegion& region, std::string const& name) {
    auto* slr = region.mutable_available_resources()->add_by_slr();
    slr->set_slr(name);
    slr->set_lut("100000");
    slr->set_reg("200000");
    slr->set_bram("500");
    slr->set_dsp("1000");
    slr->set_uram("100");
  }

  static pb::computeUnit* addUnit(pb::userRegion& region, std::string const& id,
                                  std::string const& kernel, std::string const& name,
                                  std::string const& slr, std::string const& base,
                                  std::string const& luts) {
    auto* unit = region.add_compute_units();
    unit->set_id(id);
    unit->set_kernel_name(kernel);
    unit->set_name(name);
    unit->set_base_address(base);
    auto* pin = unit->add_clock_refs();
    pin->set_name("ap_clk");
    pin->set_clock_id("0");
    pin->set_requested_frequency(300);
    pin->set_achieved_frequency(300);
    auto* use = unit->add_actual_resources();
    use->set_lut(luts);
    use->set_reg("3000");
    use->set_bram("2");
    use->set_dsp("0");
    use->set_uram("0");
    use->set_design_state(pb::DESIGN_STATE_ROUTED);
    auto* slrUse = unit->add_slr_resources();
    slrUse->set_slr(slr);
    auto* lut = slrUse->add_utilization();
    lut->set_resource("LUT");
    lut->set_used(luts);
    lut->set_available("100000");
    return unit;
  }

  static void addConnection(pb::userRegion& region, std::string const& unitId,
                            std::string const& argument, std::string const& memoryId) {
    auto* connection = region.add_connectivity();
    connection->set_id(std::to_string(region.connectivity_size() - 1));
    connection->mutable_source()->set_type("compute_unit");
    connection->mutable_source()->set_id(unitId);
    connection->mutable_source()->set_arg_name(argument);
    connection->mutable_destination()->set_type("memory");
    connection->mutable_destination()->set_id(memoryId);
  }

  static StoredDiagram stored(pb::outerContainer const& root, std::string const& name) {
    google::protobuf::util::JsonPrintOptions options;
    options.preserve_proto_field_names = true;
    options.always_print_primitive_fields = true;
    std::string text;
    EXPECT_TRUE(google::protobuf::util::MessageToJsonString(root, &text, options).ok());
    return StoredDiagram::fromText(text, name);
  }

  static std::string text(pb::outerContainer const& before, pb::outerContainer const& after,
                          bool all = false) {
    std::ostringstream out;
    DiagramDiff::compare(stored(before, "a.json"), stored(after, "b.json"), all)
        .writeText(out, all);
    return out.str();
  }

  static std::string json(pb::outerContainer const& before, pb::outerContainer const& after,
                          bool all = false) {
    std::ostringstream out;
    DiagramDiff::compare(stored(before, "a.json"), stored(after, "b.json"), all)
        .writeJson(out, all, "a.json", "b.json");
    return out.str();
  }


  // Checks both forms of the difference from `before` to `after`.
  static void expectDiff(pb::outerContainer const& before, pb::outerContainer const& after,
                         std::string const& expectedText, std::string const& expectedJson,
                         bool all = false) {
    std::string const actualText = text(before, after, all);
    std::string const actualJson = json(before, after, all);
    EXPECT_EQ(actualText, expectedText);
    EXPECT_EQ(actualJson, expectedJson);
  }

  static pb::userRegion& regionOf(pb::outerContainer& root) {
    return *root.mutable_system_diagram_metadata()->mutable_qrxbin()->mutable_user_regions(0);
  }
  static pb::Qsa& qsaOf(pb::outerContainer& root) {
    return *root.mutable_system_diagram_metadata()->mutable_qsa();
  }
};

TEST_F(DiagramDiffTest, ADiagramAgainstItselfWritesNothing) {
  expectDiff(base(), base(), "",
             R"--({
  "old": "a.json",
  "new": "b.json",
  "same": true,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 0, "removed": 0, "changed": 0, "unchanged": 19},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, AllListsWhatDidNotChange) {
  expectDiff(base(), base(),
             R"--(platform: 0 added, 0 removed, 0 changed, 1 unchanged
  = platform

compute units: 0 added, 0 removed, 0 changed, 2 unchanged
  = mmult_1
  = vadd_1

kernels: 0 added, 0 removed, 0 changed, 2 unchanged
  = mmult
  = vadd

memories: 0 added, 0 removed, 0 changed, 2 unchanged
  = DDR[0]
  = DDR[1]

connections: 0 added, 0 removed, 0 changed, 2 unchanged
  = mmult_1.a → DDR[1]
  = vadd_1.in1 → DDR[0]

clocks: 0 added, 0 removed, 0 changed, 2 unchanged
  = clock 0
  = clock 1

clock pins: 0 added, 0 removed, 0 changed, 2 unchanged
  = mmult_1.ap_clk
  = vadd_1.ap_clk

resources: 0 added, 0 removed, 0 changed, 2 unchanged
  = mmult_1 Routed
  = vadd_1 Routed

SLR use: 0 added, 0 removed, 0 changed, 2 unchanged
  = mmult_1 SLR1
  = vadd_1 SLR0

SLR totals: 0 added, 0 removed, 0 changed, 2 unchanged
  = SLR0
  = SLR1

summary: 0 added, 0 removed, 0 changed, 19 unchanged
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": true,
  "platform_changed": false,
  "all": true,
  "summary": {"added": 0, "removed": 0, "changed": 0, "unchanged": 19},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "unchanged", "key": "platform", "fields": []}
     ]},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "mmult_1", "fields": []},
       {"change": "unchanged", "key": "vadd_1", "fields": []}
     ]},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "mmult", "fields": []},
       {"change": "unchanged", "key": "vadd", "fields": []}
     ]},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "DDR[0]", "fields": []},
       {"change": "unchanged", "key": "DDR[1]", "fields": []}
     ]},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "mmult_1.a → DDR[1]", "fields": []},
       {"change": "unchanged", "key": "vadd_1.in1 → DDR[0]", "fields": []}
     ]},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "clock 0", "fields": []},
       {"change": "unchanged", "key": "clock 1", "fields": []}
     ]},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "mmult_1.ap_clk", "fields": []},
       {"change": "unchanged", "key": "vadd_1.ap_clk", "fields": []}
     ]},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "mmult_1 Routed", "fields": []},
       {"change": "unchanged", "key": "vadd_1 Routed", "fields": []}
     ]},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "mmult_1 SLR1", "fields": []},
       {"change": "unchanged", "key": "vadd_1 SLR0", "fields": []}
     ]},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "unchanged", "key": "SLR0", "fields": []},
       {"change": "unchanged", "key": "SLR1", "fields": []}
     ]}
  ]
}
)--", true);
}

TEST_F(DiagramDiffTest, ReorderedAndRenumberedEntriesAreTheSame) {
  pb::outerContainer after = base();
  auto& region = regionOf(after);
  region.mutable_compute_units()->SwapElements(0, 1);
  region.mutable_compute_units(0)->set_id("0");
  region.mutable_compute_units(1)->set_id("1");
  // The connections follow their compute units to the new ids.
  region.mutable_connectivity(0)->mutable_source()->set_id("1");
  region.mutable_connectivity(1)->mutable_source()->set_id("0");
  region.mutable_connectivity()->SwapElements(0, 1);
  region.mutable_kernels()->SwapElements(0, 1);
  qsaOf(after).mutable_clocks()->SwapElements(0, 1);
  EXPECT_EQ(text(base(), after), "");
  EXPECT_TRUE(
      DiagramDiff::compare(stored(base(), "a.json"), stored(after, "b.json"), false).same());
}

TEST_F(DiagramDiffTest, ComputeUnitsAddedAndRemoved) {
  pb::outerContainer after = base();
  auto& region = regionOf(after);
  region.mutable_compute_units()->RemoveLast();  // mmult_1
  region.mutable_connectivity()->RemoveLast();
  addUnit(region, "1", "vadd", "vadd_2", "SLR1", "0x3000", "2100");
  expectDiff(base(), after,
             R"--(compute units: 1 added, 1 removed, 0 changed
  + vadd_2                  kernel vadd, SLR SLR1, base address 0x3000
  - mmult_1                 kernel mmult, SLR SLR1, base address 0x2000

connections: 0 added, 1 removed, 0 changed
  - mmult_1.a → DDR[1]

clock pins: 1 added, 1 removed, 0 changed
  + vadd_2.ap_clk           clock id 0, requested 300.00 MHz, achieved 300.00 MHz
  - mmult_1.ap_clk          clock id 0, requested 300.00 MHz, achieved 300.00 MHz

resources: 1 added, 1 removed, 0 changed
  + vadd_2 Routed           LUT 2,100, REG 3,000, BRAM 2, DSP 0, URAM 0
  - mmult_1 Routed          LUT 18,000, REG 3,000, BRAM 2, DSP 0, URAM 0

SLR use: 1 added, 1 removed, 0 changed
  + vadd_2 SLR1             LUT 2,100
  - mmult_1 SLR1            LUT 18,000

SLR totals: 0 added, 0 removed, 1 changed
  ~ SLR1
      LUT used          18,000 → 2,100 (−15,900, −88.3%; 18.0% → 2.1% of SLR1)

summary: 4 added, 5 removed, 1 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 4, "removed": 5, "changed": 1, "unchanged": 13},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 1, "removed": 1, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "added", "key": "vadd_2", "fields": [
         {"field": "kernel", "name": "kernel", "old": null, "new": "vadd", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "slr", "name": "SLR", "old": null, "new": "SLR1", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "base_address", "name": "base address", "old": null, "new": "0x3000", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]},
       {"change": "removed", "key": "mmult_1", "fields": [
         {"field": "kernel", "name": "kernel", "old": "mmult", "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "slr", "name": "SLR", "old": "SLR1", "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "base_address", "name": "base address", "old": "0x2000", "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 1, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "removed", "key": "mmult_1.a → DDR[1]", "fields": []}
     ]},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 1, "removed": 1, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "added", "key": "vadd_2.ap_clk", "fields": [
         {"field": "clock_id", "name": "clock id", "old": null, "new": "0", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "requested_mhz", "name": "requested", "old": null, "new": 300, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "achieved_mhz", "name": "achieved", "old": null, "new": 300, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]},
       {"change": "removed", "key": "mmult_1.ap_clk", "fields": [
         {"field": "clock_id", "name": "clock id", "old": "0", "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "requested_mhz", "name": "requested", "old": 300, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "achieved_mhz", "name": "achieved", "old": 300, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "resources", "title": "resources", "added": 1, "removed": 1, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "added", "key": "vadd_2 Routed", "fields": [
         {"field": "lut", "name": "LUT", "old": null, "new": 2100, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "reg", "name": "REG", "old": null, "new": 3000, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "bram", "name": "BRAM", "old": null, "new": 2, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "dsp", "name": "DSP", "old": null, "new": 0, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "uram", "name": "URAM", "old": null, "new": 0, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]},
       {"change": "removed", "key": "mmult_1 Routed", "fields": [
         {"field": "lut", "name": "LUT", "old": 18000, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "reg", "name": "REG", "old": 3000, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "bram", "name": "BRAM", "old": 2, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "dsp", "name": "DSP", "old": 0, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "uram", "name": "URAM", "old": 0, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "slr_use", "title": "SLR use", "added": 1, "removed": 1, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "added", "key": "vadd_2 SLR1", "fields": [
         {"field": "lut", "name": "LUT", "old": null, "new": 2100, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]},
       {"change": "removed", "key": "mmult_1 SLR1", "fields": [
         {"field": "lut", "name": "LUT", "old": 18000, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 1, "unchanged": 1,
     "entries": [
       {"change": "changed", "key": "SLR1", "fields": [
         {"field": "lut_used", "name": "LUT used", "old": 18000, "new": 2100, "delta": -15900, "percent": -88.3, "share_of": "SLR1", "old_share": 18, "new_share": 2.1}
       ]}
     ]}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, ComputeUnitMovedToAnotherSlrAndAddress) {
  pb::outerContainer after = base();
  auto* unit = regionOf(after).mutable_compute_units(0);
  unit->set_base_address("0x5000");
  unit->mutable_slr_resources(0)->set_slr("SLR1");
  expectDiff(base(), after,
             R"--(compute units: 0 added, 0 removed, 1 changed
  ~ vadd_1
      SLR               SLR0 → SLR1
      base address      0x1000 → 0x5000

SLR use: 1 added, 1 removed, 0 changed
  + vadd_1 SLR1             LUT 2,000
  - vadd_1 SLR0             LUT 2,000

SLR totals: 0 added, 0 removed, 2 changed
  ~ SLR0
      LUT used          2,000 → 0 (−2,000, −100.0%; 2.0% → 0.0% of SLR0)
  ~ SLR1
      LUT used          18,000 → 20,000 (+2,000, +11.1%; 18.0% → 20.0% of SLR1)

summary: 1 added, 1 removed, 3 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 1, "removed": 1, "changed": 3, "unchanged": 15},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 1, "unchanged": 1,
     "entries": [
       {"change": "changed", "key": "vadd_1", "fields": [
         {"field": "slr", "name": "SLR", "old": "SLR0", "new": "SLR1", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "base_address", "name": "base address", "old": "0x1000", "new": "0x5000", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 1, "removed": 1, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "added", "key": "vadd_1 SLR1", "fields": [
         {"field": "lut", "name": "LUT", "old": null, "new": 2000, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]},
       {"change": "removed", "key": "vadd_1 SLR0", "fields": [
         {"field": "lut", "name": "LUT", "old": 2000, "new": null, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 2, "unchanged": 0,
     "entries": [
       {"change": "changed", "key": "SLR0", "fields": [
         {"field": "lut_used", "name": "LUT used", "old": 2000, "new": 0, "delta": -2000, "percent": -100, "share_of": "SLR0", "old_share": 2, "new_share": 0}
       ]},
       {"change": "changed", "key": "SLR1", "fields": [
         {"field": "lut_used", "name": "LUT used", "old": 18000, "new": 20000, "delta": 2000, "percent": 11.1, "share_of": "SLR1", "old_share": 18, "new_share": 20}
       ]}
     ]}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, KernelsAddedAndRemoved) {
  pb::outerContainer after = base();
  auto& region = regionOf(after);
  region.mutable_kernels(1)->set_name("scale");
  region.add_kernels()->set_name("fir");
  expectDiff(base(), after,
             R"--(kernels: 2 added, 1 removed, 0 changed
  + fir
  + scale
  - mmult

summary: 2 added, 1 removed, 0 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 2, "removed": 1, "changed": 0, "unchanged": 18},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 2, "removed": 1, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "added", "key": "fir", "fields": []},
       {"change": "added", "key": "scale", "fields": []},
       {"change": "removed", "key": "mmult", "fields": []}
     ]},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, ConnectionMovedToAnotherMemory) {
  pb::outerContainer after = base();
  regionOf(after).mutable_connectivity(0)->mutable_destination()->set_id("1");
  expectDiff(base(), after,
             R"--(connections: 1 added, 1 removed, 0 changed
  + vadd_1.in1 → DDR[1]
  - vadd_1.in1 → DDR[0]

summary: 1 added, 1 removed, 0 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 1, "removed": 1, "changed": 0, "unchanged": 18},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 1, "removed": 1, "changed": 0, "unchanged": 1,
     "entries": [
       {"change": "added", "key": "vadd_1.in1 → DDR[1]", "fields": []},
       {"change": "removed", "key": "vadd_1.in1 → DDR[0]", "fields": []}
     ]},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, OneOfTwoEqualConnectionsRemoved) {
  pb::outerContainer before = base();
  addConnection(regionOf(before), "0", "in1", "0");
  expectDiff(before, base(),
             R"--(connections: 0 added, 1 removed, 0 changed
  - vadd_1.in1 → DDR[0] (2)

summary: 0 added, 1 removed, 0 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 0, "removed": 1, "changed": 0, "unchanged": 19},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 1, "changed": 0, "unchanged": 2,
     "entries": [
       {"change": "removed", "key": "vadd_1.in1 → DDR[0] (2)", "fields": []}
     ]},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, ClockClosesLower) {
  pb::outerContainer after = base();
  qsaOf(after).mutable_clocks(0)->set_achieved_frequency(281.25);
  qsaOf(after).mutable_clocks(1)->set_requested_frequency(450);
  regionOf(after).mutable_compute_units(0)->mutable_clock_refs(0)->set_achieved_frequency(281.25);
  expectDiff(base(), after,
             R"--(clocks: 0 added, 0 removed, 2 changed
  ~ clock 1
      requested         500.00 → 450.00 MHz (−10.0%)
  ~ clock 0
      achieved          300.00 → 281.25 MHz (−6.2%)

clock pins: 0 added, 0 removed, 1 changed
  ~ vadd_1.ap_clk
      achieved          300.00 → 281.25 MHz (−6.2%)

summary: 0 added, 0 removed, 3 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 0, "removed": 0, "changed": 3, "unchanged": 16},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 2, "unchanged": 0,
     "entries": [
       {"change": "changed", "key": "clock 1", "fields": [
         {"field": "requested_mhz", "name": "requested", "old": 500, "new": 450, "delta": -50, "percent": -10, "share_of": null, "old_share": null, "new_share": null}
       ]},
       {"change": "changed", "key": "clock 0", "fields": [
         {"field": "achieved_mhz", "name": "achieved", "old": 300, "new": 281.25, "delta": -18.75, "percent": -6.2, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 1, "unchanged": 1,
     "entries": [
       {"change": "changed", "key": "vadd_1.ap_clk", "fields": [
         {"field": "achieved_mhz", "name": "achieved", "old": 300, "new": 281.25, "delta": -18.75, "percent": -6.2, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, ResourceUseGrewLargestFirst) {
  pb::outerContainer after = base();
  auto& region = regionOf(after);
  region.mutable_compute_units(0)->mutable_actual_resources(0)->set_lut("2500");
  region.mutable_compute_units(0)->mutable_slr_resources(0)->mutable_utilization(0)->set_used(
      "2500");
  region.mutable_compute_units(1)->mutable_actual_resources(0)->set_lut("16000");
  region.mutable_compute_units(1)->mutable_actual_resources(0)->set_reg("3300");
  region.mutable_compute_units(1)->mutable_slr_resources(0)->mutable_utilization(0)->set_used(
      "16000");
  auto* synthesized = region.mutable_compute_units(1)->add_actual_resources();
  synthesized->set_lut("19000");
  synthesized->set_reg("3100");
  synthesized->set_bram("2");
  synthesized->set_dsp("0");
  synthesized->set_uram("0");
  synthesized->set_design_state(pb::DESIGN_STATE_SYNTHESIZED);
  expectDiff(base(), after,
             R"--(resources: 1 added, 0 removed, 2 changed
  + mmult_1 Synthesized     LUT 19,000, REG 3,100, BRAM 2, DSP 0, URAM 0
  ~ mmult_1 Routed
      LUT               18,000 → 16,000 (−2,000, −11.1%; 18.0% → 16.0% of SLR1)
      REG               3,000 → 3,300 (+300, +10.0%; 1.5% → 1.6% of SLR1)
  ~ vadd_1 Routed
      LUT               2,000 → 2,500 (+500, +25.0%; 2.0% → 2.5% of SLR0)

SLR use: 0 added, 0 removed, 2 changed
  ~ mmult_1 SLR1
      LUT               18,000 → 16,000 (−2,000, −11.1%; 18.0% → 16.0% of SLR1)
  ~ vadd_1 SLR0
      LUT               2,000 → 2,500 (+500, +25.0%; 2.0% → 2.5% of SLR0)

SLR totals: 0 added, 0 removed, 2 changed
  ~ SLR1
      LUT used          18,000 → 16,000 (−2,000, −11.1%; 18.0% → 16.0% of SLR1)
  ~ SLR0
      LUT used          2,000 → 2,500 (+500, +25.0%; 2.0% → 2.5% of SLR0)

summary: 1 added, 0 removed, 6 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 1, "removed": 0, "changed": 6, "unchanged": 13},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 1, "removed": 0, "changed": 2, "unchanged": 0,
     "entries": [
       {"change": "added", "key": "mmult_1 Synthesized", "fields": [
         {"field": "lut", "name": "LUT", "old": null, "new": 19000, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "reg", "name": "REG", "old": null, "new": 3100, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "bram", "name": "BRAM", "old": null, "new": 2, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "dsp", "name": "DSP", "old": null, "new": 0, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "uram", "name": "URAM", "old": null, "new": 0, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]},
       {"change": "changed", "key": "mmult_1 Routed", "fields": [
         {"field": "lut", "name": "LUT", "old": 18000, "new": 16000, "delta": -2000, "percent": -11.1, "share_of": "SLR1", "old_share": 18, "new_share": 16},
         {"field": "reg", "name": "REG", "old": 3000, "new": 3300, "delta": 300, "percent": 10, "share_of": "SLR1", "old_share": 1.5, "new_share": 1.6}
       ]},
       {"change": "changed", "key": "vadd_1 Routed", "fields": [
         {"field": "lut", "name": "LUT", "old": 2000, "new": 2500, "delta": 500, "percent": 25, "share_of": "SLR0", "old_share": 2, "new_share": 2.5}
       ]}
     ]},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 2, "unchanged": 0,
     "entries": [
       {"change": "changed", "key": "mmult_1 SLR1", "fields": [
         {"field": "lut", "name": "LUT", "old": 18000, "new": 16000, "delta": -2000, "percent": -11.1, "share_of": "SLR1", "old_share": 18, "new_share": 16}
       ]},
       {"change": "changed", "key": "vadd_1 SLR0", "fields": [
         {"field": "lut", "name": "LUT", "old": 2000, "new": 2500, "delta": 500, "percent": 25, "share_of": "SLR0", "old_share": 2, "new_share": 2.5}
       ]}
     ]},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 2, "unchanged": 0,
     "entries": [
       {"change": "changed", "key": "SLR1", "fields": [
         {"field": "lut_used", "name": "LUT used", "old": 18000, "new": 16000, "delta": -2000, "percent": -11.1, "share_of": "SLR1", "old_share": 18, "new_share": 16}
       ]},
       {"change": "changed", "key": "SLR0", "fields": [
         {"field": "lut_used", "name": "LUT used", "old": 2000, "new": 2500, "delta": 500, "percent": 25, "share_of": "SLR0", "old_share": 2, "new_share": 2.5}
       ]}
     ]}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, SlrTotalsFollowTheAvailableResources) {
  pb::outerContainer after = base();
  regionOf(after).mutable_available_resources()->mutable_by_slr(1)->set_lut("80000");
  expectDiff(base(), after,
             R"--(SLR totals: 0 added, 0 removed, 1 changed
  ~ SLR1
      LUT available     100,000 → 80,000 (−20,000, −20.0%)

summary: 0 added, 0 removed, 1 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 0, "removed": 0, "changed": 1, "unchanged": 18},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 1, "unchanged": 1,
     "entries": [
       {"change": "changed", "key": "SLR1", "fields": [
         {"field": "lut_available", "name": "LUT available", "old": 100000, "new": 80000, "delta": -20000, "percent": -20, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, MemoryBankAddedAndMemoryUseChanged) {
  pb::outerContainer after = base();
  auto& qsa = qsaOf(after);
  addMemory(qsa, "2", "HBM[0]", "SLR0", "0x4000000000");
  qsa.mutable_device_topology(2)->set_type(pb::MEM_HBM);
  qsa.mutable_device_topology(2)->set_size_kb("262144");
  qsa.mutable_device_topology(1)->set_used("no");
  qsa.mutable_device_topology(1)->set_size_kb("8388608");
  expectDiff(base(), after,
             R"--(memories: 1 added, 0 removed, 1 changed
  + HBM[0]
      type              MEM_HBM
      SLR               SLR0
      used              yes
      size KB           262,144
      base address      0x4000000000
  ~ DDR[1]
      used              yes → no
      size KB           16,777,216 → 8,388,608 (−8,388,608, −50.0%)

summary: 1 added, 0 removed, 1 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": false,
  "all": false,
  "summary": {"added": 1, "removed": 0, "changed": 1, "unchanged": 18},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 0, "unchanged": 1,
     "entries": []},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 1, "removed": 0, "changed": 1, "unchanged": 1,
     "entries": [
       {"change": "added", "key": "HBM[0]", "fields": [
         {"field": "type", "name": "type", "old": null, "new": "MEM_HBM", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "slr", "name": "SLR", "old": null, "new": "SLR0", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "used", "name": "used", "old": null, "new": "yes", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "size_kb", "name": "size KB", "old": null, "new": 262144, "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "base_address", "name": "base address", "old": null, "new": "0x4000000000", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]},
       {"change": "changed", "key": "DDR[1]", "fields": [
         {"field": "used", "name": "used", "old": "yes", "new": "no", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "size_kb", "name": "size KB", "old": 16777216, "new": 8388608, "delta": -8388608, "percent": -50, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, APlatformChangeIsSaidFirst) {
  pb::outerContainer after = base();
  qsaOf(after).set_name("qv_other_platform");
  qsaOf(after).mutable_board()->set_name("t2");
  qsaOf(after).mutable_clocks(1)->set_frequency(450);
  expectDiff(base(), after,
             R"--(PLATFORM CHANGED: qv_test_platform (board t1) → qv_other_platform (board t2)
  every difference below may come from the other platform

platform: 0 added, 0 removed, 1 changed
  ~ platform
      name              qv_test_platform → qv_other_platform
      board             t1 → t2

clocks: 0 added, 0 removed, 1 changed
  ~ clock 1
      platform          500.00 → 450.00 MHz (−10.0%)

summary: 0 added, 0 removed, 2 changed
)--",
R"--({
  "old": "a.json",
  "new": "b.json",
  "same": false,
  "platform_changed": true,
  "all": false,
  "summary": {"added": 0, "removed": 0, "changed": 2, "unchanged": 17},
  "groups": [
    {"group": "platform", "title": "platform", "added": 0, "removed": 0, "changed": 1, "unchanged": 0,
     "entries": [
       {"change": "changed", "key": "platform", "fields": [
         {"field": "name", "name": "name", "old": "qv_test_platform", "new": "qv_other_platform", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null},
         {"field": "board", "name": "board", "old": "t1", "new": "t2", "delta": null, "percent": null, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "compute_units", "title": "compute units", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "kernels", "title": "kernels", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "memories", "title": "memories", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "connections", "title": "connections", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "clocks", "title": "clocks", "added": 0, "removed": 0, "changed": 1, "unchanged": 1,
     "entries": [
       {"change": "changed", "key": "clock 1", "fields": [
         {"field": "platform_mhz", "name": "platform", "old": 500, "new": 450, "delta": -50, "percent": -10, "share_of": null, "old_share": null, "new_share": null}
       ]}
     ]},
    {"group": "clock_pins", "title": "clock pins", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "resources", "title": "resources", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_use", "title": "SLR use", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []},
    {"group": "slr_totals", "title": "SLR totals", "added": 0, "removed": 0, "changed": 0, "unchanged": 2,
     "entries": []}
  ]
}
)--");
}

TEST_F(DiagramDiffTest, AFileWithAnUnknownKeyIsRefusedWithItsName) {
  try {
    StoredDiagram::fromText("{\"system_diagram_metadata\": {\"colour\": 1}}", "b.json");
    FAIL() << "an unknown key was accepted";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "b.json: Deserializing failed with error: (system_diagram_metadata) colour: "
              "Cannot find field..");
  }
}

TEST_F(DiagramDiffTest, AMissingFileIsRefusedWithItsName) {
  try {
    StoredDiagram::fromFile("/nonexistent/b.json");
    FAIL() << "a missing file was read";
  } catch (std::runtime_error const& error) {
    EXPECT_EQ(std::string(error.what()),
              "cannot read '/nonexistent/b.json': No such file or directory");
  }
}

}  // namespace
}  // namespace qvviews
