#include "diagram/QrxBinBySlrBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinAvailableResourceBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class QrxBinBySlrBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::QrxBinBySlrBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::bySlr>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setSlr writes slr", &Builder::setSlr, &pb::bySlr::slr, "SLR1"},
        {"setLut writes lut", &Builder::setLut, &pb::bySlr::lut, "434560"},
        {"setReg writes reg", &Builder::setReg, &pb::bySlr::reg, "869120"},
        {"setBram writes bram", &Builder::setBram, &pb::bySlr::bram, "672"},
        {"setDsp writes dsp", &Builder::setDsp, &pb::bySlr::dsp, "3008"},
        {"setUram writes uram", &Builder::setUram, &pb::bySlr::uram, "320"},
    };
    return rows;
  }

  pb::userRegionAvailableResources const& available() const {
    return root->system_diagram_metadata().qrxbin().user_regions(0).available_resources();
  }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QrxBinBuilder& owner = *diagram.getQrxBinBuilder();
  std::shared_ptr<IPA::QrxBinUserRegionBuilder> region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, root);
  std::shared_ptr<IPA::QrxBinAvailableResourceBuilder> resources =
      std::make_shared<IPA::QrxBinAvailableResourceBuilder>(owner, root, region);
};

TEST_F(QrxBinBySlrBuilderTest, MakingItAppendsOneEmptyEntry) {
  Builder slr(resources);

  ASSERT_TRUE(region->message()->has_available_resources());
  ASSERT_EQ(available().by_slr_size(), 1);
  EXPECT_EQ(slr.message(), &available().by_slr(0));
  EXPECT_EQ(available().by_slr(0).ByteSizeLong(), 0u);
}

TEST_F(QrxBinBySlrBuilderTest, EachBuilderAppendsItsOwnEntryInOrder) {
  Builder first(resources);
  Builder second(resources);
  second.setSlr("SLR1");
  first.setSlr("SLR0");

  ASSERT_EQ(available().by_slr_size(), 2);
  EXPECT_EQ(available().by_slr(0).slr(), "SLR0");
  EXPECT_EQ(available().by_slr(1).slr(), "SLR1");
}

TEST_F(QrxBinBySlrBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    Builder slr(resources);

    (slr.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(*slr.message(), textSetters(), i));
  }
}

TEST_F(QrxBinBySlrBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder slr(resources);

  for (auto const& row : textSetters()) (slr.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(available().by_slr(0), textSetters()));
}

TEST_F(QrxBinBySlrBuilderTest, SettersLeaveTheRegionTotalsAlone) {
  resources->setLut("1303680");
  Builder slr(resources);

  slr.setLut("434560");

  EXPECT_EQ(available().lut(), "1303680");
  EXPECT_EQ(available().by_slr(0).lut(), "434560");
}

TEST_F(QrxBinBySlrBuilderTest, AResourceNotSetStaysEmpty) {
  Builder slr(resources);

  // The platform may list only some resources for an SLR; the others stay empty texts.
  slr.setSlr("SLR0");
  slr.setLut("434560");

  EXPECT_EQ(available().by_slr(0).bram(), "");
  EXPECT_EQ(available().by_slr(0).dsp(), "");
  EXPECT_EQ(available().by_slr(0).uram(), "");
  EXPECT_EQ(available().by_slr(0).reg(), "");
}

TEST_F(QrxBinBySlrBuilderTest, KnowsItsParent) {
  Builder slr(resources);

  EXPECT_EQ(slr.getParent(), resources);
}

TEST_F(QrxBinBySlrBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root, region and resources builder of their own, so that this builder holds the only way
  // to them once the other references are dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto slr = std::make_unique<Builder>(
      std::make_shared<IPA::QrxBinAvailableResourceBuilder>(owner, tree, ownRegion));
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  slr->setDsp("3008");
  EXPECT_EQ(slr->message()->dsp(), "3008");

  slr.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
