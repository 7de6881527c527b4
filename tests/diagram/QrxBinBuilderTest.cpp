#include "diagram/QrxBinBuilder.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "proto/system_diagram.pb.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class QrxBinBuilderTest : public ::testing::Test {
 protected:
  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder owner{root};
};

TEST_F(QrxBinBuilderTest, MakingItAddsNothing) {
  IPA::QrxBinBuilder builder(owner, root);

  EXPECT_EQ(root->ByteSizeLong(), 0u);
  EXPECT_FALSE(root->has_system_diagram_metadata());
}

TEST_F(QrxBinBuilderTest, MessageCreatesTheSectionAndNothingBeside) {
  IPA::QrxBinBuilder builder(owner, root);

  pb::qrxBin* section = builder.message();

  ASSERT_TRUE(root->has_system_diagram_metadata());
  ASSERT_TRUE(root->system_diagram_metadata().has_qrxbin());
  EXPECT_EQ(section, &root->system_diagram_metadata().qrxbin());
  EXPECT_FALSE(root->system_diagram_metadata().has_qsa());
  EXPECT_FALSE(root->system_diagram_metadata().has_schema_version());
  EXPECT_EQ(section->ByteSizeLong(), 0u);
}

TEST_F(QrxBinBuilderTest, MessageKeepsWhatTheSectionHolds) {
  root->mutable_system_diagram_metadata()->mutable_qrxbin()->add_user_regions()->set_name("ur");
  IPA::QrxBinBuilder builder(owner, root);

  pb::qrxBin* section = builder.message();

  ASSERT_EQ(section->user_regions_size(), 1);
  EXPECT_EQ(section->user_regions(0).name(), "ur");
  EXPECT_EQ(builder.message(), section);
}

TEST_F(QrxBinBuilderTest, KnowsItsOwnerAndItsRoot) {
  IPA::QrxBinBuilder builder(owner, root);

  EXPECT_EQ(&builder.getOwner(), &owner);
  EXPECT_EQ(builder.getRoot().get(), root.get());
}

TEST_F(QrxBinBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root of its own, so that the builder holds the only reference once `tree` is dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto builder = std::make_unique<IPA::QrxBinBuilder>(owner, tree);
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->message()->add_user_regions()->set_type("region_type");
  EXPECT_EQ(builder->getRoot()->system_diagram_metadata().qrxbin().user_regions(0).type(),
            "region_type");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
