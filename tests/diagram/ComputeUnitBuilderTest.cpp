#include "diagram/ComputeUnitBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class ComputeUnitBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::ComputeUnitBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::computeUnit>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setId writes id", &Builder::setId, &pb::computeUnit::id, "0"},
        {"setKernelName writes kernel_name", &Builder::setKernelName,
         &pb::computeUnit::kernel_name, "vadd"},
        {"setName writes name", &Builder::setName, &pb::computeUnit::name, "vadd_1"},
        {"setBaseAddress writes base_address", &Builder::setBaseAddress,
         &pb::computeUnit::base_address, "0x1800000"},
    };
    return rows;
  }

  pb::userRegion const& userRegion() const {
    return root->system_diagram_metadata().qrxbin().user_regions(0);
  }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QrxBinBuilder& owner = *diagram.getQrxBinBuilder();
  std::shared_ptr<IPA::QrxBinUserRegionBuilder> region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, root);
};

TEST_F(ComputeUnitBuilderTest, MakingItAppendsOneEmptyUnit) {
  Builder unit(region);

  ASSERT_EQ(userRegion().compute_units_size(), 1);
  EXPECT_EQ(unit.message(), &userRegion().compute_units(0));
  EXPECT_EQ(userRegion().compute_units(0).ByteSizeLong(), 0u);
  EXPECT_EQ(userRegion().kernels_size(), 0);
  EXPECT_EQ(userRegion().connectivity_size(), 0);
}

TEST_F(ComputeUnitBuilderTest, EachBuilderAppendsItsOwnUnitInOrder) {
  Builder first(region);
  Builder second(region);
  Builder third(region);
  third.setId("2");
  first.setId("0");
  second.setId("1");

  ASSERT_EQ(userRegion().compute_units_size(), 3);
  EXPECT_EQ(userRegion().compute_units(0).id(), "0");
  EXPECT_EQ(userRegion().compute_units(1).id(), "1");
  EXPECT_EQ(userRegion().compute_units(2).id(), "2");
}

TEST_F(ComputeUnitBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    Builder unit(region);

    (unit.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(*unit.message(), textSetters(), i));
  }
}

TEST_F(ComputeUnitBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder unit(region);

  for (auto const& row : textSetters()) (unit.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(userRegion().compute_units(0), textSetters()));
}

TEST_F(ComputeUnitBuilderTest, AddClockRefAppendsReferencesInOrder) {
  Builder unit(region);

  pb::clockRef* first = unit.addClockRef();
  first->set_name("ap_clk");
  pb::clockRef* second = unit.addClockRef();
  second->set_name("ap_clk_2");

  auto const& stored = userRegion().compute_units(0);
  ASSERT_EQ(stored.clock_refs_size(), 2);
  EXPECT_EQ(first, &stored.clock_refs(0));
  EXPECT_EQ(stored.clock_refs(0).name(), "ap_clk");
  EXPECT_EQ(stored.clock_refs(1).name(), "ap_clk_2");
  // A fresh import leaves these lists empty; only later requests fill them.
  EXPECT_EQ(stored.reset_pins_size(), 0);
  EXPECT_EQ(stored.slr_resources_size(), 0);
  EXPECT_EQ(stored.actual_resources_size(), 0);
}

TEST_F(ComputeUnitBuilderTest, AddClockRefGivesAnEmptyReference) {
  Builder unit(region);

  pb::clockRef* added = unit.addClockRef();

  EXPECT_EQ(added->ByteSizeLong(), 0u);
}

TEST_F(ComputeUnitBuilderTest, KnowsItsParent) {
  Builder unit(region);

  EXPECT_EQ(unit.getParent(), region);
}

TEST_F(ComputeUnitBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root and region of their own, so that the unit's builder holds the only way to them once
  // `tree` and `ownRegion` are dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto unit = std::make_unique<Builder>(ownRegion);
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  unit->setBaseAddress("0x0");
  EXPECT_EQ(unit->getParent()->message()->compute_units(0).base_address(), "0x0");

  unit.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
