#include "diagram/QsaAvailableResourceBuilder.h"

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

class QsaAvailableResourceBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::QsaAvailableResourceBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::qsaAvailableResources>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setLut writes lut", &Builder::setLut, &pb::qsaAvailableResources::lut, "1728000"},
        {"setReg writes reg", &Builder::setReg, &pb::qsaAvailableResources::reg, "3456000"},
        {"setBram writes bram", &Builder::setBram, &pb::qsaAvailableResources::bram, "2688"},
        {"setDsp writes dsp", &Builder::setDsp, &pb::qsaAvailableResources::dsp, "12288"},
        {"setUram writes uram", &Builder::setUram, &pb::qsaAvailableResources::uram, "1280"},
    };
    return rows;
  }

  pb::Qsa const& qsa() const { return root->system_diagram_metadata().qsa(); }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QsaBuilder& owner = *diagram.getQsaBuilder();
};

TEST_F(QsaAvailableResourceBuilderTest, MakingItAddsNothing) {
  Builder builder(owner, root);

  EXPECT_EQ(root->ByteSizeLong(), 0u);
  EXPECT_FALSE(root->has_system_diagram_metadata());
}

TEST_F(QsaAvailableResourceBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto fresh = std::make_shared<pb::outerContainer>();
    Builder builder(owner, fresh);

    (builder.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(
        fresh->system_diagram_metadata().qsa().available_resources(), textSetters(), i));
  }
}

TEST_F(QsaAvailableResourceBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder builder(owner, root);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(qsa().available_resources(), textSetters()));
}

TEST_F(QsaAvailableResourceBuilderTest, ASetterCreatesTheResourcesAndTheSectionsOnTheWay) {
  Builder builder(owner, root);

  builder.setDsp("12288");

  ASSERT_TRUE(root->has_system_diagram_metadata());
  ASSERT_TRUE(root->system_diagram_metadata().has_qsa());
  EXPECT_TRUE(qsa().has_available_resources());
  EXPECT_FALSE(qsa().has_board());
  EXPECT_FALSE(qsa().has_generated_by());
  EXPECT_FALSE(root->system_diagram_metadata().has_qrxbin());
}

TEST_F(QsaAvailableResourceBuilderTest, TakesTheTextAsItIs) {
  Builder builder(owner, root);

  // The builders convert nothing: a count that is no number is stored as it came.
  builder.setLut(" 12k ");

  EXPECT_EQ(qsa().available_resources().lut(), " 12k ");
}

TEST_F(QsaAvailableResourceBuilderTest, MessageIsTheResourcesOfTheTree) {
  Builder builder(owner, root);

  pb::qsaAvailableResources* message = builder.message();

  EXPECT_EQ(message, &qsa().available_resources());
}

TEST_F(QsaAvailableResourceBuilderTest, KnowsItsOwnerAndItsRoot) {
  Builder builder(owner, root);

  EXPECT_EQ(&builder.getOwner(), &owner);
  EXPECT_EQ(builder.getRoot().get(), root.get());
}

TEST_F(QsaAvailableResourceBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root of its own, so that the builder holds the only reference once `tree` is dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto builder = std::make_unique<Builder>(owner, tree);
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->setUram("1280");
  EXPECT_EQ(builder->getRoot()->system_diagram_metadata().qsa().available_resources().uram(),
            "1280");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
