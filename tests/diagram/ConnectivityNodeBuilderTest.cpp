#include "diagram/ConnectivityNodeBuilder.h"

#include <cstddef>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ConnectivityBuilder.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"
#include "tests/support/SetterTable.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class ConnectivityNodeBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::ConnectivityNodeBuilder;
  using End = IPA::ConnectivityNodeBuilder::End;
  using Table = qvtest::TextSetterTable<Builder, pb::Node>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setType writes type", &Builder::setType, &pb::Node::type, "compute_unit"},
        {"setId writes id", &Builder::setId, &pb::Node::id, "4"},
        {"setArgIndex writes arg_index", &Builder::setArgIndex, &pb::Node::arg_index, "2"},
        {"setArgName writes arg_name", &Builder::setArgName, &pb::Node::arg_name, "out_r"},
        {"setMode writes mode", &Builder::setMode, &pb::Node::mode, "write_only"},
        {"setInstance writes instance", &Builder::setInstance, &pb::Node::instance,
         "inst_0"},
        {"setPin writes pin", &Builder::setPin, &pb::Node::pin, "S_AXI_CTRL"},
    };
    return rows;
  }

  pb::Connectivity const& connectivity() const {
    return root->system_diagram_metadata().qrxbin().user_regions(0).connectivity(0);
  }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QrxBinBuilder& owner = *diagram.getQrxBinBuilder();
  std::shared_ptr<IPA::QrxBinUserRegionBuilder> region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, root);
  std::shared_ptr<IPA::ConnectivityBuilder> connection = region->addConnectivity();
};

TEST_F(ConnectivityNodeBuilderTest, MakingASourceBuilderCreatesTheSourceOnly) {
  Builder node(connection, End::kSource);

  ASSERT_TRUE(connectivity().has_source());
  EXPECT_FALSE(connectivity().has_destination());
  EXPECT_EQ(node.message(), &connectivity().source());
  EXPECT_EQ(connectivity().source().ByteSizeLong(), 0u);
}

TEST_F(ConnectivityNodeBuilderTest, MakingADestinationBuilderCreatesTheDestinationOnly) {
  Builder node(connection, End::kDestination);

  ASSERT_TRUE(connectivity().has_destination());
  EXPECT_FALSE(connectivity().has_source());
  EXPECT_EQ(node.message(), &connectivity().destination());
  EXPECT_EQ(connectivity().destination().ByteSizeLong(), 0u);
}

TEST_F(ConnectivityNodeBuilderTest, MakingItForAnEndThatIsThereKeepsWhatItHolds) {
  connection->message()->mutable_source()->set_type("ip");

  Builder node(connection, End::kSource);

  EXPECT_EQ(node.message(), &connectivity().source());
  EXPECT_EQ(connectivity().source().type(), "ip");
}

TEST_F(ConnectivityNodeBuilderTest, MakingItAppendsNoConnection) {
  Builder source(connection, End::kSource);
  Builder destination(connection, End::kDestination);

  EXPECT_EQ(root->system_diagram_metadata().qrxbin().user_regions(0).connectivity_size(), 1);
}

TEST_F(ConnectivityNodeBuilderTest, EachTextSetterOfASourceWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto ownConnection = region->addConnectivity();
    Builder node(ownConnection, End::kSource);

    (node.*row.set)(row.value);

    EXPECT_TRUE(qvtest::holdsOnlyField(ownConnection->message()->source(), textSetters(), i));
    EXPECT_FALSE(ownConnection->message()->has_destination());
  }
}

TEST_F(ConnectivityNodeBuilderTest, EachTextSetterOfADestinationWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto ownConnection = region->addConnectivity();
    Builder node(ownConnection, End::kDestination);

    (node.*row.set)(row.value);

    EXPECT_TRUE(
        qvtest::holdsOnlyField(ownConnection->message()->destination(), textSetters(), i));
    EXPECT_FALSE(ownConnection->message()->has_source());
  }
}

TEST_F(ConnectivityNodeBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder node(connection, End::kDestination);

  for (auto const& row : textSetters()) (node.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(connectivity().destination(), textSetters()));
}

TEST_F(ConnectivityNodeBuilderTest, KnowsItsParent) {
  Builder node(connection, End::kSource);

  EXPECT_EQ(node.getParent(), connection);
}

TEST_F(ConnectivityNodeBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root, region and connection of their own, so that the node's builder holds the only way to
  // them once the other references are dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto node = std::make_unique<Builder>(ownRegion->addConnectivity(), End::kSource);
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  node->setMode("read_only");
  EXPECT_EQ(node->getParent()->getParent()->message()->connectivity(0).source().mode(),
            "read_only");

  node.reset();
  EXPECT_TRUE(watch.expired());
}

}  // namespace
