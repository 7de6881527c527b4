#include "diagram/QrxBinAvailableResourceBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinBySlrBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class QrxBinAvailableResourceBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::QrxBinAvailableResourceBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::userRegionAvailableResources>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setLut writes lut", &Builder::setLut, &pb::userRegionAvailableResources::lut,
         "1303680"},
        {"setReg writes reg", &Builder::setReg, &pb::userRegionAvailableResources::reg,
         "2607360"},
        {"setBram writes bram", &Builder::setBram, &pb::userRegionAvailableResources::bram,
         "2016"},
        {"setDsp writes dsp", &Builder::setDsp, &pb::userRegionAvailableResources::dsp, "9024"},
        {"setUram writes uram", &Builder::setUram, &pb::userRegionAvailableResources::uram,
         "960"},
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

TEST_F(QrxBinAvailableResourceBuilderTest, MakingItAddsNothing) {
  std::string const before = root->SerializeAsString();

  auto resources = std::make_shared<Builder>(owner, root, region);

  EXPECT_FALSE(userRegion().has_available_resources());
  EXPECT_EQ(root->SerializeAsString(), before);
}

TEST_F(QrxBinAvailableResourceBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, root);
    auto resources = std::make_shared<Builder>(owner, root, ownRegion);

    ((*resources).*row.set)(row.value);

    ASSERT_TRUE(ownRegion->message()->has_available_resources());
    EXPECT_TRUE(qvtest::holdsOnlyField(ownRegion->message()->available_resources(),
                                       textSetters(), i));
    EXPECT_EQ(ownRegion->message()->available_resources().by_slr_size(), 0);
  }
}

TEST_F(QrxBinAvailableResourceBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  auto resources = std::make_shared<Builder>(owner, root, region);

  for (auto const& row : textSetters()) ((*resources).*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(userRegion().available_resources(), textSetters()));
}

TEST_F(QrxBinAvailableResourceBuilderTest, ASetterFillsTheRegionOfItsRegionBuilderOnly) {
  auto other = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, root);
  auto resources = std::make_shared<Builder>(owner, root, other);

  resources->setLut("1303680");

  EXPECT_FALSE(userRegion().has_available_resources());
  EXPECT_EQ(other->message()->available_resources().lut(), "1303680");
}

TEST_F(QrxBinAvailableResourceBuilderTest, AddBySlrAppendsSlrsInOrder) {
  auto resources = std::make_shared<Builder>(owner, root, region);

  auto first = resources->addBySlr();
  auto second = resources->addBySlr();
  auto third = resources->addBySlr();
  third->setSlr("SLR2");
  first->setSlr("SLR0");
  second->setSlr("SLR1");

  ASSERT_TRUE(userRegion().has_available_resources());
  auto const& bySlr = userRegion().available_resources().by_slr();
  ASSERT_EQ(bySlr.size(), 3);
  EXPECT_EQ(bySlr.Get(0).slr(), "SLR0");
  EXPECT_EQ(bySlr.Get(1).slr(), "SLR1");
  EXPECT_EQ(bySlr.Get(2).slr(), "SLR2");
  EXPECT_EQ(first->getParent(), resources);
}

TEST_F(QrxBinAvailableResourceBuilderTest, AddBySlrLeavesTheTotalsEmpty) {
  auto resources = std::make_shared<Builder>(owner, root, region);

  resources->addBySlr();

  EXPECT_EQ(userRegion().available_resources().lut(), "");
  EXPECT_EQ(userRegion().available_resources().uram(), "");
}

TEST_F(QrxBinAvailableResourceBuilderTest, AddBySlrOutsideASharedPointerThrowsBadWeakPtr) {
  Builder resources(owner, root, region);

  EXPECT_THROW(resources.addBySlr(), std::bad_weak_ptr);
  EXPECT_FALSE(userRegion().has_available_resources());
}

TEST_F(QrxBinAvailableResourceBuilderTest, SettersWorkOutsideASharedPointer) {
  Builder resources(owner, root, region);

  // Only handing itself to children needs the shared pointer; its own fields do not.
  resources.setDsp("9024");

  EXPECT_EQ(userRegion().available_resources().dsp(), "9024");
}

TEST_F(QrxBinAvailableResourceBuilderTest, KnowsItsOwnerAndItsRegionBuilder) {
  auto resources = std::make_shared<Builder>(owner, root, region);

  EXPECT_EQ(&resources->getOwner(), &owner);
  EXPECT_EQ(resources->getUserRegionBuilder(), region);
}

TEST_F(QrxBinAvailableResourceBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root and region of their own, so that this builder holds the only way to them once the
  // other references are dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto resources = std::make_shared<Builder>(owner, tree, ownRegion);
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  resources->setBram("2016");
  EXPECT_EQ(resources->getUserRegionBuilder()->message()->available_resources().bram(), "2016");

  resources.reset();
  EXPECT_TRUE(watch.expired());
}

TEST_F(QrxBinAvailableResourceBuilderTest, AnSlrBuilderKeepsItAndTheTreeAlive) {
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto resources = std::make_shared<Builder>(owner, tree, ownRegion);
  std::weak_ptr<Builder> watchResources = resources;
  auto slr = resources->addBySlr();
  resources.reset();
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  ASSERT_FALSE(watchResources.expired());
  slr->setSlr("SLR0");
  EXPECT_EQ(slr->getParent()->getUserRegionBuilder()->message()->available_resources()
                .by_slr(0).slr(),
            "SLR0");

  slr.reset();
  EXPECT_TRUE(watchResources.expired());
  EXPECT_TRUE(watch.expired());
}

}  // namespace
