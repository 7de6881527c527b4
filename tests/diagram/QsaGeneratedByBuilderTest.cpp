#include "diagram/QsaGeneratedByBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QsaBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class QsaGeneratedByBuilderTest : public ::testing::Test {
 protected:
  using Table = qvtest::TextSetterTable<IPA::QsaGeneratedByBuilder, pb::qsaGeneratedBy>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setName writes name", &IPA::QsaGeneratedByBuilder::setName, &pb::qsaGeneratedBy::name,
         "platform_tool"},
        {"setVersion writes version", &IPA::QsaGeneratedByBuilder::setVersion,
         &pb::qsaGeneratedBy::version, "2024.1"},
        {"setChangeList writes change_list", &IPA::QsaGeneratedByBuilder::setChangeList,
         &pb::qsaGeneratedBy::change_list, "4107822"},
        {"setTimestamp writes timestamp", &IPA::QsaGeneratedByBuilder::setTimestamp,
         &pb::qsaGeneratedBy::timestamp, "Mon Jan  1 00:00:00 2024"},
    };
    return rows;
  }

  pb::Qsa const& qsa() const { return root->system_diagram_metadata().qsa(); }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QsaBuilder& owner = *diagram.getQsaBuilder();
};

TEST_F(QsaGeneratedByBuilderTest, MakingItAddsNothing) {
  IPA::QsaGeneratedByBuilder builder(owner, root);

  EXPECT_EQ(root->ByteSizeLong(), 0u);
  EXPECT_FALSE(root->has_system_diagram_metadata());
}

TEST_F(QsaGeneratedByBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto fresh = std::make_shared<pb::outerContainer>();
    IPA::QsaGeneratedByBuilder builder(owner, fresh);

    (builder.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(fresh->system_diagram_metadata().qsa().generated_by(),
                                       textSetters(), i));
  }
}

TEST_F(QsaGeneratedByBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  IPA::QsaGeneratedByBuilder builder(owner, root);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(qsa().generated_by(), textSetters()));
}

TEST_F(QsaGeneratedByBuilderTest, ASetterCreatesTheMessageAndTheSectionsOnTheWay) {
  IPA::QsaGeneratedByBuilder builder(owner, root);

  builder.setName("platform_tool");

  ASSERT_TRUE(root->has_system_diagram_metadata());
  ASSERT_TRUE(root->system_diagram_metadata().has_qsa());
  EXPECT_TRUE(qsa().has_generated_by());
  EXPECT_FALSE(qsa().has_board());
  EXPECT_FALSE(qsa().has_available_resources());
  EXPECT_FALSE(root->system_diagram_metadata().has_qrxbin());
}

TEST_F(QsaGeneratedByBuilderTest, FillsTheSectionThatIsAlreadyThere) {
  owner.setVendor("vendor_a");
  IPA::QsaGeneratedByBuilder builder(owner, root);

  builder.setVersion("2024.1");

  EXPECT_EQ(qsa().vendor(), "vendor_a");
  EXPECT_EQ(qsa().generated_by().version(), "2024.1");
}

TEST_F(QsaGeneratedByBuilderTest, MessageIsTheGeneratedByOfTheTree) {
  IPA::QsaGeneratedByBuilder builder(owner, root);

  pb::qsaGeneratedBy* message = builder.message();

  EXPECT_EQ(message, &qsa().generated_by());
}

TEST_F(QsaGeneratedByBuilderTest, KnowsItsOwnerAndItsRoot) {
  IPA::QsaGeneratedByBuilder builder(owner, root);

  EXPECT_EQ(&builder.getOwner(), &owner);
  EXPECT_EQ(builder.getRoot().get(), root.get());
}

TEST_F(QsaGeneratedByBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root of its own, so that the builder holds the only reference once `tree` is dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto builder = std::make_unique<IPA::QsaGeneratedByBuilder>(owner, tree);
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->setTimestamp("today");
  EXPECT_EQ(builder->getRoot()->system_diagram_metadata().qsa().generated_by().timestamp(),
            "today");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
