#include "diagram/QrxBinGeneratedByBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class QrxBinGeneratedByBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::QrxBinGeneratedByBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::qrxBinGeneratedBy>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setName writes name", &Builder::setName, &pb::qrxBinGeneratedBy::name, "linker"},
        {"setVersion writes version", &Builder::setVersion, &pb::qrxBinGeneratedBy::version,
         "2024.2"},
        {"setChangeList writes change_list", &Builder::setChangeList,
         &pb::qrxBinGeneratedBy::change_list, "5049306"},
        {"setTimestamp writes timestamp", &Builder::setTimestamp,
         &pb::qrxBinGeneratedBy::timestamp, "Tue Feb  6 12:00:00 2024"},
        {"setDetailA writes detail_a", &Builder::setDetailA, &pb::qrxBinGeneratedBy::detail_a,
         "--target hw"},
        {"setDetailB writes detail_b", &Builder::setDetailB, &pb::qrxBinGeneratedBy::detail_b,
         "--optimize 2"},
        {"setLabel writes label", &Builder::setLabel, &pb::qrxBinGeneratedBy::label,
         "binary_a"},
        {"setNote writes note", &Builder::setNote, &pb::qrxBinGeneratedBy::note,
         "a note of the build"},
        {"setLabelCopy writes label_copy", &Builder::setLabelCopy,
         &pb::qrxBinGeneratedBy::label_copy, "binary_a_copy"},
    };
    return rows;
  }

  pb::qrxBin const& qrxbin() const { return root->system_diagram_metadata().qrxbin(); }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QrxBinBuilder& owner = *diagram.getQrxBinBuilder();
};

TEST_F(QrxBinGeneratedByBuilderTest, MakingItAddsNothing) {
  Builder builder(owner, root);

  EXPECT_EQ(root->ByteSizeLong(), 0u);
  EXPECT_FALSE(root->has_system_diagram_metadata());
}

TEST_F(QrxBinGeneratedByBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto fresh = std::make_shared<pb::outerContainer>();
    Builder builder(owner, fresh);

    (builder.*row.set)(row.value);

    auto const& message = fresh->system_diagram_metadata().qrxbin().generated_by();
    EXPECT_TRUE(qvtest::holdsOnlyField(message, textSetters(), i));
    EXPECT_FALSE(message.flag());
  }
}

TEST_F(QrxBinGeneratedByBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder builder(owner, root);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(qrxbin().generated_by(), textSetters()));
}

TEST_F(QrxBinGeneratedByBuilderTest, SetFlagWritesTheFlagOnly) {
  Builder builder(owner, root);

  builder.setFlag(true);

  ASSERT_TRUE(qrxbin().has_generated_by());
  EXPECT_TRUE(qrxbin().generated_by().flag());
  EXPECT_EQ(qrxbin().generated_by().name(), "");
  EXPECT_EQ(qrxbin().generated_by().label_copy(), "");

  builder.setFlag(false);
  EXPECT_FALSE(qrxbin().generated_by().flag());
}

TEST_F(QrxBinGeneratedByBuilderTest, SettingFalseStillCreatesTheMessage) {
  Builder builder(owner, root);

  builder.setFlag(false);

  ASSERT_TRUE(root->has_system_diagram_metadata());
  ASSERT_TRUE(root->system_diagram_metadata().has_qrxbin());
  EXPECT_TRUE(qrxbin().has_generated_by());
}

TEST_F(QrxBinGeneratedByBuilderTest, ASetterCreatesTheMessageAndTheSectionsOnTheWay) {
  Builder builder(owner, root);

  builder.setLabel("binary_a");

  ASSERT_TRUE(root->has_system_diagram_metadata());
  ASSERT_TRUE(root->system_diagram_metadata().has_qrxbin());
  EXPECT_TRUE(qrxbin().has_generated_by());
  EXPECT_EQ(qrxbin().user_regions_size(), 0);
  EXPECT_FALSE(qrxbin().has_platform());
  EXPECT_FALSE(root->system_diagram_metadata().has_qsa());
}

TEST_F(QrxBinGeneratedByBuilderTest, MessageIsTheGeneratedByOfTheTree) {
  Builder builder(owner, root);

  pb::qrxBinGeneratedBy* message = builder.message();

  EXPECT_EQ(message, &qrxbin().generated_by());
}

TEST_F(QrxBinGeneratedByBuilderTest, KnowsItsOwnerAndItsRoot) {
  Builder builder(owner, root);

  EXPECT_EQ(&builder.getOwner(), &owner);
  EXPECT_EQ(builder.getRoot().get(), root.get());
}

TEST_F(QrxBinGeneratedByBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root of its own, so that the builder holds the only reference once `tree` is dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto builder = std::make_unique<Builder>(owner, tree);
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->setNote("kept");
  EXPECT_EQ(builder->getRoot()->system_diagram_metadata().qrxbin().generated_by().note(), "kept");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
