#include "diagram/QsaBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class QsaBuilderTest : public ::testing::Test {
 protected:
  using Table = qvtest::TextSetterTable<IPA::QsaBuilder, pb::Qsa>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setVendor writes vendor", &IPA::QsaBuilder::setVendor, &pb::Qsa::vendor, "vendor_a"},
        {"setBoardId writes board_id", &IPA::QsaBuilder::setBoardId, &pb::Qsa::board_id,
         "board_7"},
        {"setName writes name", &IPA::QsaBuilder::setName, &pb::Qsa::name, "platform_a"},
        {"setVersionMajor writes version_major", &IPA::QsaBuilder::setVersionMajor,
         &pb::Qsa::version_major, "202"},
        {"setVersionMinor writes version_minor", &IPA::QsaBuilder::setVersionMinor,
         &pb::Qsa::version_minor, "3"},
        {"setDescription writes description", &IPA::QsaBuilder::setDescription,
         &pb::Qsa::description, "A platform for tests"},
    };
    return rows;
  }

  pb::Qsa const& qsa() const { return root->system_diagram_metadata().qsa(); }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder owner{root};
};

TEST_F(QsaBuilderTest, MakingItAddsNothing) {
  IPA::QsaBuilder builder(owner, root);

  EXPECT_EQ(root->ByteSizeLong(), 0u);
  EXPECT_FALSE(root->has_system_diagram_metadata());
}

TEST_F(QsaBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto fresh = std::make_shared<pb::outerContainer>();
    IPA::QsaBuilder builder(owner, fresh);

    (builder.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(fresh->system_diagram_metadata().qsa(), textSetters(), i));
  }
}

TEST_F(QsaBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  IPA::QsaBuilder builder(owner, root);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(qsa(), textSetters()));
}

TEST_F(QsaBuilderTest, ASetterCreatesTheSectionAndNothingBeside) {
  IPA::QsaBuilder builder(owner, root);

  builder.setVendor("vendor_a");

  ASSERT_TRUE(root->has_system_diagram_metadata());
  EXPECT_TRUE(root->system_diagram_metadata().has_qsa());
  EXPECT_FALSE(root->system_diagram_metadata().has_qrxbin());
  EXPECT_FALSE(root->system_diagram_metadata().has_schema_version());
  EXPECT_FALSE(qsa().has_generated_by());
  EXPECT_FALSE(qsa().has_board());
  EXPECT_FALSE(qsa().has_available_resources());
}

TEST_F(QsaBuilderTest, SettingTheEmptyTextStillCreatesTheSection) {
  IPA::QsaBuilder builder(owner, root);

  builder.setName("");

  ASSERT_TRUE(root->has_system_diagram_metadata());
  EXPECT_TRUE(root->system_diagram_metadata().has_qsa());
  EXPECT_EQ(qsa().name(), "");
}

TEST_F(QsaBuilderTest, ASecondSetReplacesTheFirst) {
  IPA::QsaBuilder builder(owner, root);

  builder.setName("first");
  builder.setName("second");

  EXPECT_EQ(qsa().name(), "second");
}

TEST_F(QsaBuilderTest, DesignIntentsStayInInsertionOrder) {
  IPA::QsaBuilder builder(owner, root);

  builder.addDesignIntent("server_managed");
  builder.addDesignIntent("external_host");
  builder.addDesignIntent("embedded");

  ASSERT_EQ(qsa().design_intent_size(), 3);
  EXPECT_EQ(qsa().design_intent(0), "server_managed");
  EXPECT_EQ(qsa().design_intent(1), "external_host");
  EXPECT_EQ(qsa().design_intent(2), "embedded");
}

TEST_F(QsaBuilderTest, AddClockAppendsAnEmptyClockThatBelongsToTheSection) {
  IPA::QsaBuilder builder(owner, root);

  pb::Clock* first = builder.addClock();
  ASSERT_EQ(qsa().clocks_size(), 1);
  EXPECT_EQ(first, &qsa().clocks(0));
  EXPECT_EQ(first->ByteSizeLong(), 0u);

  first->set_name("clk_a");
  pb::Clock* second = builder.addClock();
  second->set_name("clk_b");

  ASSERT_EQ(qsa().clocks_size(), 2);
  EXPECT_EQ(qsa().clocks(0).name(), "clk_a");
  EXPECT_EQ(qsa().clocks(1).name(), "clk_b");
}

TEST_F(QsaBuilderTest, MessageIsTheSectionOfTheTree) {
  IPA::QsaBuilder builder(owner, root);

  pb::Qsa* section = builder.message();

  EXPECT_EQ(section, &qsa());
  EXPECT_EQ(builder.message(), section);
}

TEST_F(QsaBuilderTest, KnowsItsOwnerAndItsRoot) {
  IPA::QsaBuilder builder(owner, root);

  EXPECT_EQ(&builder.getOwner(), &owner);
  EXPECT_EQ(builder.getRoot().get(), root.get());
}

TEST_F(QsaBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root of its own, so that the builder holds the only reference once `tree` is dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto builder = std::make_unique<IPA::QsaBuilder>(owner, tree);
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->setVendor("vendor_a");
  EXPECT_EQ(builder->getRoot()->system_diagram_metadata().qsa().vendor(), "vendor_a");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
