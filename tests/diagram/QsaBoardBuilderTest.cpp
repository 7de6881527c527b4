#include "diagram/QsaBoardBuilder.h"

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

class QsaBoardBuilderTest : public ::testing::Test {
 protected:
  using Table = qvtest::TextSetterTable<IPA::QsaBoardBuilder, pb::Board>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setName writes name", &IPA::QsaBoardBuilder::setName, &pb::Board::name, "board_a"},
        {"setVendor writes vendor", &IPA::QsaBoardBuilder::setVendor, &pb::Board::vendor,
         "board_vendor"},
        {"setPart writes part", &IPA::QsaBoardBuilder::setPart, &pb::Board::part, "part-1234"},
        {"setBoardPart writes board_part", &IPA::QsaBoardBuilder::setBoardPart,
         &pb::Board::board_part, "vendor:board_a:part0:1.0"},
    };
    return rows;
  }

  pb::Qsa const& qsa() const { return root->system_diagram_metadata().qsa(); }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QsaBuilder& owner = *diagram.getQsaBuilder();
};

TEST_F(QsaBoardBuilderTest, MakingItAddsNothing) {
  IPA::QsaBoardBuilder builder(owner, root);

  EXPECT_EQ(root->ByteSizeLong(), 0u);
  EXPECT_FALSE(root->has_system_diagram_metadata());
}

TEST_F(QsaBoardBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto fresh = std::make_shared<pb::outerContainer>();
    IPA::QsaBoardBuilder builder(owner, fresh);

    (builder.*row.set)(row.value);

    EXPECT_TRUE(
        qvtest::holdsOnlyField(fresh->system_diagram_metadata().qsa().board(), textSetters(), i));
  }
}

TEST_F(QsaBoardBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  IPA::QsaBoardBuilder builder(owner, root);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(qsa().board(), textSetters()));
}

TEST_F(QsaBoardBuilderTest, ASetterCreatesTheBoardAndTheSectionsOnTheWay) {
  IPA::QsaBoardBuilder builder(owner, root);

  builder.setPart("part-1234");

  ASSERT_TRUE(root->has_system_diagram_metadata());
  ASSERT_TRUE(root->system_diagram_metadata().has_qsa());
  EXPECT_TRUE(qsa().has_board());
  EXPECT_FALSE(qsa().has_generated_by());
  EXPECT_FALSE(qsa().has_available_resources());
  EXPECT_FALSE(root->system_diagram_metadata().has_qrxbin());
}

TEST_F(QsaBoardBuilderTest, ASecondSetReplacesTheFirst) {
  IPA::QsaBoardBuilder builder(owner, root);

  builder.setName("first");
  builder.setName("second");

  EXPECT_EQ(qsa().board().name(), "second");
}

TEST_F(QsaBoardBuilderTest, MessageIsTheBoardOfTheTree) {
  IPA::QsaBoardBuilder builder(owner, root);

  pb::Board* message = builder.message();

  EXPECT_EQ(message, &qsa().board());
}

TEST_F(QsaBoardBuilderTest, KnowsItsOwnerAndItsRoot) {
  IPA::QsaBoardBuilder builder(owner, root);

  EXPECT_EQ(&builder.getOwner(), &owner);
  EXPECT_EQ(builder.getRoot().get(), root.get());
}

TEST_F(QsaBoardBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root of its own, so that the builder holds the only reference once `tree` is dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto builder = std::make_unique<IPA::QsaBoardBuilder>(owner, tree);
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->setVendor("board_vendor");
  EXPECT_EQ(builder->getRoot()->system_diagram_metadata().qsa().board().vendor(), "board_vendor");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
