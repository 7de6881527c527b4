#include "diagram/QrxBinUserRegionBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ComputeUnitBuilder.h"
#include "diagram/ConnectivityBuilder.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinKernelBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class QrxBinUserRegionBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::QrxBinUserRegionBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::userRegion>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setName writes name", &Builder::setName, &pb::userRegion::name, "region_core"},
        {"setType writes type", &Builder::setType, &pb::userRegion::type, "region_type"},
        {"setInstPath writes inst_path", &Builder::setInstPath, &pb::userRegion::inst_path,
         "top/region_0"},
    };
    return rows;
  }

  pb::qrxBin const& qrxbin() const { return root->system_diagram_metadata().qrxbin(); }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QrxBinBuilder& owner = *diagram.getQrxBinBuilder();
};

TEST_F(QrxBinUserRegionBuilderTest, MakingItAppendsOneEmptyRegion) {
  auto region = std::make_shared<Builder>(owner, root);

  ASSERT_TRUE(root->has_system_diagram_metadata());
  ASSERT_EQ(qrxbin().user_regions_size(), 1);
  EXPECT_EQ(region->message(), &qrxbin().user_regions(0));
  EXPECT_EQ(qrxbin().user_regions(0).ByteSizeLong(), 0u);
  EXPECT_FALSE(qrxbin().has_generated_by());
  EXPECT_FALSE(root->system_diagram_metadata().has_qsa());
}

TEST_F(QrxBinUserRegionBuilderTest, EachBuilderAppendsItsOwnRegionInOrder) {
  auto first = std::make_shared<Builder>(owner, root);
  auto second = std::make_shared<Builder>(owner, root);
  second->setName("second");
  first->setName("first");

  ASSERT_EQ(qrxbin().user_regions_size(), 2);
  EXPECT_EQ(qrxbin().user_regions(0).name(), "first");
  EXPECT_EQ(qrxbin().user_regions(1).name(), "second");
}

TEST_F(QrxBinUserRegionBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto fresh = std::make_shared<pb::outerContainer>();
    auto region = std::make_shared<Builder>(owner, fresh);

    ((*region).*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(fresh->system_diagram_metadata().qrxbin().user_regions(0),
                                       textSetters(), i));
  }
}

TEST_F(QrxBinUserRegionBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  auto region = std::make_shared<Builder>(owner, root);

  for (auto const& row : textSetters()) ((*region).*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(qrxbin().user_regions(0), textSetters()));
}

TEST_F(QrxBinUserRegionBuilderTest, AddComputeUnitAppendsUnitsInOrder) {
  auto region = std::make_shared<Builder>(owner, root);

  auto first = region->addComputeUnit();
  auto second = region->addComputeUnit();
  auto third = region->addComputeUnit();
  third->setName("cu_c");
  first->setName("cu_a");
  second->setName("cu_b");

  auto const& units = qrxbin().user_regions(0).compute_units();
  ASSERT_EQ(units.size(), 3);
  EXPECT_EQ(units.Get(0).name(), "cu_a");
  EXPECT_EQ(units.Get(1).name(), "cu_b");
  EXPECT_EQ(units.Get(2).name(), "cu_c");
  EXPECT_EQ(first->getParent(), region);
}

TEST_F(QrxBinUserRegionBuilderTest, AddConnectivityAppendsConnectionsInOrder) {
  auto region = std::make_shared<Builder>(owner, root);

  auto first = region->addConnectivity();
  auto second = region->addConnectivity();
  second->setId("1");
  first->setId("0");

  auto const& connections = qrxbin().user_regions(0).connectivity();
  ASSERT_EQ(connections.size(), 2);
  EXPECT_EQ(connections.Get(0).id(), "0");
  EXPECT_EQ(connections.Get(1).id(), "1");
  EXPECT_EQ(second->getParent(), region);
}

TEST_F(QrxBinUserRegionBuilderTest, AddKernelAppendsKernelsInOrder) {
  auto region = std::make_shared<Builder>(owner, root);

  auto first = region->addKernel();
  auto second = region->addKernel();
  second->setName("kernel_b");
  first->setName("kernel_a");

  auto const& kernels = qrxbin().user_regions(0).kernels();
  ASSERT_EQ(kernels.size(), 2);
  EXPECT_EQ(kernels.Get(0).name(), "kernel_a");
  EXPECT_EQ(kernels.Get(1).name(), "kernel_b");
  EXPECT_EQ(first->getParent(), region);
}

TEST_F(QrxBinUserRegionBuilderTest, AddersFillTheRegionOfTheirBuilder) {
  auto first = std::make_shared<Builder>(owner, root);
  auto second = std::make_shared<Builder>(owner, root);

  second->addKernel()->setName("kernel_in_second");

  EXPECT_EQ(qrxbin().user_regions(0).kernels_size(), 0);
  ASSERT_EQ(qrxbin().user_regions(1).kernels_size(), 1);
  EXPECT_EQ(qrxbin().user_regions(1).kernels(0).name(), "kernel_in_second");
}

TEST_F(QrxBinUserRegionBuilderTest, AddComputeUnitOutsideASharedPointerThrowsBadWeakPtr) {
  Builder region(owner, root);

  EXPECT_THROW(region.addComputeUnit(), std::bad_weak_ptr);
  EXPECT_EQ(qrxbin().user_regions(0).compute_units_size(), 0);
}

TEST_F(QrxBinUserRegionBuilderTest, AddConnectivityOutsideASharedPointerThrowsBadWeakPtr) {
  Builder region(owner, root);

  EXPECT_THROW(region.addConnectivity(), std::bad_weak_ptr);
  EXPECT_EQ(qrxbin().user_regions(0).connectivity_size(), 0);
}

TEST_F(QrxBinUserRegionBuilderTest, AddKernelOutsideASharedPointerThrowsBadWeakPtr) {
  Builder region(owner, root);

  EXPECT_THROW(region.addKernel(), std::bad_weak_ptr);
  EXPECT_EQ(qrxbin().user_regions(0).kernels_size(), 0);
}

TEST_F(QrxBinUserRegionBuilderTest, KnowsItsOwnerAndItsRoot) {
  auto region = std::make_shared<Builder>(owner, root);

  EXPECT_EQ(&region->getOwner(), &owner);
  EXPECT_EQ(region->getRoot().get(), root.get());
}

TEST_F(QrxBinUserRegionBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root of its own, so that the builder holds the only reference once `tree` is dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto region = std::make_shared<Builder>(owner, tree);
  tree.reset();

  ASSERT_FALSE(watch.expired());
  region->setInstPath("top/region_0");
  EXPECT_EQ(region->message()->inst_path(), "top/region_0");

  region.reset();
  EXPECT_TRUE(watch.expired());
}

TEST_F(QrxBinUserRegionBuilderTest, AChildBuilderKeepsTheRegionAndTheTreeAlive) {
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto region = std::make_shared<Builder>(owner, tree);
  std::weak_ptr<Builder> watchRegion = region;
  auto unit = region->addComputeUnit();
  region.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  ASSERT_FALSE(watchRegion.expired());
  unit->setKernelName("kernel_a");
  EXPECT_EQ(unit->getParent()->getRoot()->system_diagram_metadata().qrxbin().user_regions(0)
                .compute_units(0).kernel_name(),
            "kernel_a");

  unit.reset();
  EXPECT_TRUE(watchRegion.expired());
  EXPECT_TRUE(watch.expired());
}

}  // namespace
