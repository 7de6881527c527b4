#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "proto/system_diagram.pb.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class ProfileAnalyzerSystemDiagramBuilderTest : public ::testing::Test {
 protected:
  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
};

TEST_F(ProfileAnalyzerSystemDiagramBuilderTest, MakingItLeavesAnEmptyContainerEmpty) {
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);

  // The import makes the builder before it knows anything; a section that is never filled must
  // not show up in the stored file.
  EXPECT_EQ(root->ByteSizeLong(), 0u);
  EXPECT_FALSE(root->has_system_diagram_metadata());
}

TEST_F(ProfileAnalyzerSystemDiagramBuilderTest, MakingItLeavesAFilledContainerAsItWas) {
  root->mutable_system_diagram_metadata()->mutable_qsa()->set_vendor("vendor_a");
  root->mutable_system_diagram_metadata()->mutable_qrxbin()->add_user_regions()->set_name("ur");
  std::string const before = root->SerializeAsString();

  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);

  EXPECT_EQ(root->SerializeAsString(), before);
  EXPECT_EQ(root->system_diagram_metadata().qsa().vendor(), "vendor_a");
  ASSERT_EQ(root->system_diagram_metadata().qrxbin().user_regions_size(), 1);
  EXPECT_EQ(root->system_diagram_metadata().qrxbin().user_regions(0).name(), "ur");
}

TEST_F(ProfileAnalyzerSystemDiagramBuilderTest, SharesTheRootItWasGiven) {
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);

  EXPECT_EQ(builder.getRoot().get(), root.get());
  EXPECT_EQ(builder.getQsaBuilder()->getRoot().get(), root.get());
  EXPECT_EQ(builder.getQrxBinBuilder()->getRoot().get(), root.get());
}

TEST_F(ProfileAnalyzerSystemDiagramBuilderTest, SectionBuildersReferBackToIt) {
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);

  ASSERT_NE(builder.getQsaBuilder(), nullptr);
  ASSERT_NE(builder.getQrxBinBuilder(), nullptr);
  EXPECT_EQ(&builder.getQsaBuilder()->getOwner(), &builder);
  EXPECT_EQ(&builder.getQrxBinBuilder()->getOwner(), &builder);
}

TEST_F(ProfileAnalyzerSystemDiagramBuilderTest, SectionBuildersWriteIntoTheSharedRoot) {
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);

  builder.getQsaBuilder()->setVendor("vendor_a");
  builder.getQrxBinBuilder()->message()->add_user_regions()->set_name("region_0");

  EXPECT_EQ(root->system_diagram_metadata().qsa().vendor(), "vendor_a");
  ASSERT_EQ(root->system_diagram_metadata().qrxbin().user_regions_size(), 1);
  EXPECT_EQ(root->system_diagram_metadata().qrxbin().user_regions(0).name(), "region_0");
}

TEST_F(ProfileAnalyzerSystemDiagramBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  std::weak_ptr<pb::outerContainer> watch = root;
  auto builder = std::make_unique<IPA::ProfileAnalyzerSystemDiagramBuilder>(root);
  root.reset();

  ASSERT_FALSE(watch.expired());
  builder->getQsaBuilder()->setName("platform_a");
  EXPECT_EQ(builder->getRoot()->system_diagram_metadata().qsa().name(), "platform_a");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
