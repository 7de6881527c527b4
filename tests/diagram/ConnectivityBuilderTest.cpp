#include "diagram/ConnectivityBuilder.h"

#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "diagram/ConnectivityNodeBuilder.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class ConnectivityBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::ConnectivityBuilder;

  pb::userRegion const& userRegion() const {
    return root->system_diagram_metadata().qrxbin().user_regions(0);
  }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QrxBinBuilder& owner = *diagram.getQrxBinBuilder();
  std::shared_ptr<IPA::QrxBinUserRegionBuilder> region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, root);
};

TEST_F(ConnectivityBuilderTest, MakingItAppendsOneConnectionWithoutEnds) {
  auto connection = std::make_shared<Builder>(region);

  ASSERT_EQ(userRegion().connectivity_size(), 1);
  EXPECT_EQ(connection->message(), &userRegion().connectivity(0));
  EXPECT_EQ(userRegion().connectivity(0).ByteSizeLong(), 0u);
  EXPECT_FALSE(userRegion().connectivity(0).has_source());
  EXPECT_FALSE(userRegion().connectivity(0).has_destination());
}

TEST_F(ConnectivityBuilderTest, EachBuilderAppendsItsOwnConnectionInOrder) {
  auto first = std::make_shared<Builder>(region);
  auto second = std::make_shared<Builder>(region);
  auto third = std::make_shared<Builder>(region);
  third->setId("2");
  second->setId("1");
  first->setId("0");

  ASSERT_EQ(userRegion().connectivity_size(), 3);
  EXPECT_EQ(userRegion().connectivity(0).id(), "0");
  EXPECT_EQ(userRegion().connectivity(1).id(), "1");
  EXPECT_EQ(userRegion().connectivity(2).id(), "2");
}

TEST_F(ConnectivityBuilderTest, SetIdWritesTheIdOnly) {
  auto connection = std::make_shared<Builder>(region);

  connection->setId("17");

  EXPECT_EQ(userRegion().connectivity(0).id(), "17");
  EXPECT_FALSE(userRegion().connectivity(0).has_source());
  EXPECT_FALSE(userRegion().connectivity(0).has_destination());
}

TEST_F(ConnectivityBuilderTest, SourceCreatesTheSourceOnly) {
  auto connection = std::make_shared<Builder>(region);

  auto source = connection->source();

  ASSERT_TRUE(userRegion().connectivity(0).has_source());
  EXPECT_FALSE(userRegion().connectivity(0).has_destination());
  EXPECT_EQ(source->message(), &userRegion().connectivity(0).source());
  EXPECT_EQ(source->getParent(), connection);
}

TEST_F(ConnectivityBuilderTest, DestinationCreatesTheDestinationOnly) {
  auto connection = std::make_shared<Builder>(region);

  auto destination = connection->destination();

  ASSERT_TRUE(userRegion().connectivity(0).has_destination());
  EXPECT_FALSE(userRegion().connectivity(0).has_source());
  EXPECT_EQ(destination->message(), &userRegion().connectivity(0).destination());
  EXPECT_EQ(destination->getParent(), connection);
}

TEST_F(ConnectivityBuilderTest, SourceAndDestinationFillDifferentNodes) {
  auto connection = std::make_shared<Builder>(region);

  connection->source()->setType("compute_unit");
  connection->destination()->setType("memory");

  EXPECT_EQ(userRegion().connectivity(0).source().type(), "compute_unit");
  EXPECT_EQ(userRegion().connectivity(0).destination().type(), "memory");
}

TEST_F(ConnectivityBuilderTest, SourceTwiceFillsTheSameNode) {
  auto connection = std::make_shared<Builder>(region);

  auto once = connection->source();
  once->setType("compute_unit");
  auto twice = connection->source();
  twice->setId("3");

  // The second call finds the end made by the first and must not start it afresh.
  EXPECT_EQ(twice->message(), once->message());
  EXPECT_EQ(userRegion().connectivity(0).source().type(), "compute_unit");
  EXPECT_EQ(userRegion().connectivity(0).source().id(), "3");
}

TEST_F(ConnectivityBuilderTest, DestinationTwiceFillsTheSameNode) {
  auto connection = std::make_shared<Builder>(region);

  connection->destination()->setArgName("in1");
  connection->destination()->setArgIndex("0");

  EXPECT_EQ(userRegion().connectivity(0).destination().arg_name(), "in1");
  EXPECT_EQ(userRegion().connectivity(0).destination().arg_index(), "0");
}

TEST_F(ConnectivityBuilderTest, SourceOutsideASharedPointerThrowsBadWeakPtr) {
  Builder connection(region);

  EXPECT_THROW(connection.source(), std::bad_weak_ptr);
  EXPECT_FALSE(userRegion().connectivity(0).has_source());
}

TEST_F(ConnectivityBuilderTest, DestinationOutsideASharedPointerThrowsBadWeakPtr) {
  Builder connection(region);

  EXPECT_THROW(connection.destination(), std::bad_weak_ptr);
  EXPECT_FALSE(userRegion().connectivity(0).has_destination());
}

TEST_F(ConnectivityBuilderTest, KnowsItsParent) {
  auto connection = std::make_shared<Builder>(region);

  EXPECT_EQ(connection->getParent(), region);
}

TEST_F(ConnectivityBuilderTest, ANodeBuilderKeepsTheConnectionAndTheTreeAlive) {
  // A root and region of their own, so that the node's builder holds the only way to them once
  // the other references are dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto ownRegion = std::make_shared<IPA::QrxBinUserRegionBuilder>(owner, tree);
  auto connection = ownRegion->addConnectivity();
  std::weak_ptr<Builder> watchConnection = connection;
  auto node = connection->destination();
  connection.reset();
  ownRegion.reset();
  tree.reset();

  ASSERT_FALSE(watch.expired());
  ASSERT_FALSE(watchConnection.expired());
  node->setPin("pin_a");
  EXPECT_EQ(node->getParent()->message()->destination().pin(), "pin_a");

  node.reset();
  EXPECT_TRUE(watchConnection.expired());
  EXPECT_TRUE(watch.expired());
}

}  // namespace
