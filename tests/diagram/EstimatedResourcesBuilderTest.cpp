#include "diagram/EstimatedResourcesBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinKernelBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"
#include "tests/support/KernelBuilderFixture.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class EstimatedResourcesBuilderTest : public qvtest::KernelBuilderFixture {
 protected:
  using Builder = IPA::EstimatedResourcesBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::estimatedResources>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setLut writes lut", &Builder::setLut, &pb::estimatedResources::lut, "1523"},
        {"setReg writes reg", &Builder::setReg, &pb::estimatedResources::reg, "2841"},
        {"setBram writes bram", &Builder::setBram, &pb::estimatedResources::bram, "4"},
        {"setDsp writes dsp", &Builder::setDsp, &pb::estimatedResources::dsp, "12"},
        {"setUram writes uram", &Builder::setUram, &pb::estimatedResources::uram, "1"},
    };
    return rows;
  }
};

TEST_F(EstimatedResourcesBuilderTest, MakingItAddsNothing) {
  Builder builder(kernel);

  // An area estimate with no resource record, or one whose every value fails, makes a builder
  // and sets nothing; the kernel must then have no estimate, not an estimate of empty texts.
  EXPECT_FALSE(storedKernel().has_estimated_resources());
  EXPECT_EQ(storedKernel().ByteSizeLong(), 0u);
}

TEST_F(EstimatedResourcesBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto ownKernel = region->addKernel();
    Builder builder(ownKernel);

    (builder.*row.set)(row.value);

    ASSERT_TRUE(ownKernel->message()->has_estimated_resources());
    EXPECT_TRUE(
        qvtest::holdsOnlyField(ownKernel->message()->estimated_resources(), textSetters(), i));
  }
}

TEST_F(EstimatedResourcesBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder builder(kernel);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(storedKernel().estimated_resources(), textSetters()));
}

TEST_F(EstimatedResourcesBuilderTest, ASetterCreatesTheEstimateOfItsKernelOnly) {
  auto other = region->addKernel();
  Builder builder(kernel);

  builder.setBram("4");

  ASSERT_TRUE(storedKernel().has_estimated_resources());
  EXPECT_EQ(storedKernel().estimated_resources().bram(), "4");
  EXPECT_FALSE(other->message()->has_estimated_resources());
}

TEST_F(EstimatedResourcesBuilderTest, TwoBuildersOfOneKernelFillTheSameEstimate) {
  Builder first(kernel);
  first.setLut("100");
  first.setReg("200");
  Builder second(kernel);
  second.setLut("150");

  // The last value set wins field by field; a new builder never clears the estimate.
  EXPECT_EQ(storedKernel().estimated_resources().lut(), "150");
  EXPECT_EQ(storedKernel().estimated_resources().reg(), "200");
}

TEST_F(EstimatedResourcesBuilderTest, MakingItAppendsNoKernel) {
  Builder builder(kernel);

  EXPECT_EQ(root->system_diagram_metadata().qrxbin().user_regions(0).kernels_size(), 1);
}

TEST_F(EstimatedResourcesBuilderTest, KnowsItsParent) {
  Builder builder(kernel);

  EXPECT_EQ(builder.getParent(), kernel);
}

TEST_F(EstimatedResourcesBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root, region and kernel of their own, so that this builder holds the only way to them once
  // the other references are dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto builder = std::make_unique<Builder>(ownRegion->addKernel());
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->setUram("2");
  EXPECT_EQ(builder->getParent()->message()->estimated_resources().uram(), "2");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
