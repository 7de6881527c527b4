#include "rtd/RtdKernelConnectionVisitor.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "diagram/ConnectivityBuilder.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"
#include "rtd/KernelConnections.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

class RtdKernelConnectionVisitorTest : public ::testing::Test {
 protected:
  void visit(IPA::KernelConnections const& connections, std::int32_t nextConnectionId) {
    IPA::RtdKernelConnectionVisitor const visitor(region, nextConnectionId);
    visitor.visit(connections);
  }

  google::protobuf::RepeatedPtrField<pb::Connectivity> const& connectivity() const {
    return region->message()->connectivity();
  }

  // The connection whose id is `id`; fails the test if there is not exactly one.
  pb::Connectivity const& connectionWithId(std::string const& id) const {
    pb::Connectivity const* match = nullptr;
    int count = 0;
    for (auto const& connection : connectivity()) {
      if (connection.id() != id) continue;
      match = &connection;
      ++count;
    }
    EXPECT_EQ(count, 1) << "id " << id;
    static pb::Connectivity const none;
    return match ? *match : none;
  }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  std::shared_ptr<IPA::QrxBinUserRegionBuilder> region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(*diagram.getQrxBinBuilder(), root);
};

TEST_F(RtdKernelConnectionVisitorTest, NothingGatheredAddsNothing) {
  visit(IPA::KernelConnections(), 5);

  EXPECT_EQ(connectivity().size(), 0);
  EXPECT_EQ(region->message()->ByteSizeLong(), 0u);
}

TEST_F(RtdKernelConnectionVisitorTest, APairBecomesOneConnectionWithTheFirstRecordAsSource) {
  IPA::KernelConnections connections;
  connections.addKernelConnection("4", "2", "1", "out_stream", "write_only");
  connections.addKernelConnection("4", "3", "0", "in_stream", "read_only");

  visit(connections, 7);

  ASSERT_EQ(connectivity().size(), 1);
  auto const& connection = connectivity().Get(0);
  EXPECT_EQ(connection.id(), "7");
  ASSERT_TRUE(connection.has_source());
  ASSERT_TRUE(connection.has_destination());

  EXPECT_EQ(connection.source().type(), "compute_unit");
  EXPECT_EQ(connection.source().id(), "2");
  EXPECT_EQ(connection.source().arg_index(), "1");
  EXPECT_EQ(connection.source().arg_name(), "out_stream");
  EXPECT_EQ(connection.source().mode(), "write_only");
  EXPECT_EQ(connection.source().instance(), "");
  EXPECT_EQ(connection.source().pin(), "");

  EXPECT_EQ(connection.destination().type(), "compute_unit");
  EXPECT_EQ(connection.destination().id(), "3");
  EXPECT_EQ(connection.destination().arg_index(), "0");
  EXPECT_EQ(connection.destination().arg_name(), "in_stream");
  EXPECT_EQ(connection.destination().mode(), "read_only");
  EXPECT_EQ(connection.destination().instance(), "");
  EXPECT_EQ(connection.destination().pin(), "");
}

TEST_F(RtdKernelConnectionVisitorTest, ThePairIsNotSortedByDirection) {
  // The reading half comes first in the file, so it is the source.
  IPA::KernelConnections connections;
  connections.addKernelConnection("4", "3", "0", "in_stream", "read_only");
  connections.addKernelConnection("4", "2", "1", "out_stream", "write_only");

  visit(connections, 0);

  ASSERT_EQ(connectivity().size(), 1);
  EXPECT_EQ(connectivity().Get(0).source().id(), "3");
  EXPECT_EQ(connectivity().Get(0).source().mode(), "read_only");
  EXPECT_EQ(connectivity().Get(0).destination().id(), "2");
  EXPECT_EQ(connectivity().Get(0).destination().mode(), "write_only");
}

TEST_F(RtdKernelConnectionVisitorTest, ASingleHalfLeavesAConnectionWithItsIdOnly) {
  IPA::KernelConnections connections;
  connections.addKernelConnection("6", "1", "0", "lonely", "write_only");

  visit(connections, 3);

  ASSERT_EQ(connectivity().size(), 1);
  auto const& connection = connectivity().Get(0);
  EXPECT_EQ(connection.id(), "3");
  // Observed: both ends are absent, not present and empty; nothing ever touches them.
  EXPECT_FALSE(connection.has_source());
  EXPECT_FALSE(connection.has_destination());
  EXPECT_EQ(connection.source().ByteSizeLong(), 0u);
  EXPECT_EQ(connection.destination().ByteSizeLong(), 0u);
}

TEST_F(RtdKernelConnectionVisitorTest, ThreeHalvesLeaveAConnectionWithItsIdOnly) {
  IPA::KernelConnections connections;
  connections.addKernelConnection("6", "1", "0", "a", "write_only");
  connections.addKernelConnection("6", "2", "0", "b", "read_only");
  connections.addKernelConnection("6", "3", "0", "c", "read_only");

  visit(connections, 11);

  ASSERT_EQ(connectivity().size(), 1);
  auto const& connection = connectivity().Get(0);
  EXPECT_EQ(connection.id(), "11");
  // Observed: both ends are absent, as for a single half.
  EXPECT_FALSE(connection.has_source());
  EXPECT_FALSE(connection.has_destination());
}

TEST_F(RtdKernelConnectionVisitorTest, IdsAreNumberedFromTheFirstInTheOrderOfTheIdentifiers) {
  // Pairs, a single half and a triple mixed: every identifier uses up one number.
  IPA::KernelConnections connections;
  connections.addKernelConnection("10", "0", "0", "p10_src", "write_only");
  connections.addKernelConnection("11", "1", "0", "single11", "write_only");
  connections.addKernelConnection("12", "2", "0", "t12_a", "write_only");
  connections.addKernelConnection("10", "3", "1", "p10_dst", "read_only");
  connections.addKernelConnection("12", "4", "1", "t12_b", "read_only");
  connections.addKernelConnection("12", "5", "2", "t12_c", "read_only");
  connections.addKernelConnection("13", "6", "0", "p13_src", "write_only");
  connections.addKernelConnection("13", "7", "1", "p13_dst", "read_only");

  visit(connections, 4);

  std::vector<std::string> const order = connections.kernelConnectionIds();
  ASSERT_EQ(order.size(), 4u);
  ASSERT_EQ(connectivity().size(), 4);
  std::vector<std::string> const expectedIds = {"4", "5", "6", "7"};
  for (std::size_t i = 0; i < order.size(); ++i) {
    SCOPED_TRACE("identifier " + order[i]);
    auto const& connection = connectivity().Get(static_cast<int>(i));
    EXPECT_EQ(connection.id(), expectedIds[i]);
    if (order[i] == "10") {
      EXPECT_EQ(connection.source().arg_name(), "p10_src");
      EXPECT_EQ(connection.destination().arg_name(), "p10_dst");
    } else if (order[i] == "13") {
      EXPECT_EQ(connection.source().arg_name(), "p13_src");
      EXPECT_EQ(connection.destination().arg_name(), "p13_dst");
    } else {
      EXPECT_TRUE(order[i] == "11" || order[i] == "12");
      EXPECT_FALSE(connection.has_source());
      EXPECT_FALSE(connection.has_destination());
    }
  }
}

TEST_F(RtdKernelConnectionVisitorTest, TextsOfTheSameNumberBecomeTwoConnections) {
  IPA::KernelConnections connections;
  connections.addKernelConnection("1", "0", "0", "plain_src", "write_only");
  connections.addKernelConnection("1", "1", "0", "plain_dst", "read_only");
  connections.addKernelConnection("01", "2", "0", "padded_src", "write_only");
  connections.addKernelConnection("01", "3", "0", "padded_dst", "read_only");

  visit(connections, 0);

  ASSERT_EQ(connectivity().size(), 2);
  std::vector<std::string> const order = connections.kernelConnectionIds();
  ASSERT_EQ(order.size(), 2u);
  std::string const plainId = order[0] == "1" ? "0" : "1";
  std::string const paddedId = order[0] == "1" ? "1" : "0";
  EXPECT_EQ(connectionWithId(plainId).source().arg_name(), "plain_src");
  EXPECT_EQ(connectionWithId(plainId).destination().arg_name(), "plain_dst");
  EXPECT_EQ(connectionWithId(paddedId).source().arg_name(), "padded_src");
  EXPECT_EQ(connectionWithId(paddedId).destination().arg_name(), "padded_dst");
}

TEST_F(RtdKernelConnectionVisitorTest, ConnectionsAreAppendedAfterThoseAlreadyInTheRegion) {
  region->addConnectivity()->setId("0");
  region->addConnectivity()->setId("1");
  IPA::KernelConnections connections;
  connections.addKernelConnection("8", "0", "0", "out", "write_only");
  connections.addKernelConnection("8", "1", "0", "in", "read_only");

  visit(connections, 2);

  ASSERT_EQ(connectivity().size(), 3);
  EXPECT_EQ(connectivity().Get(0).id(), "0");
  EXPECT_FALSE(connectivity().Get(0).has_source());
  EXPECT_EQ(connectivity().Get(1).id(), "1");
  EXPECT_EQ(connectivity().Get(2).id(), "2");
  EXPECT_EQ(connectivity().Get(2).source().arg_name(), "out");
}

TEST_F(RtdKernelConnectionVisitorTest, ANegativeFirstIdIsWrittenWithItsSign) {
  IPA::KernelConnections connections;
  connections.addKernelConnection("8", "0", "0", "a", "write_only");

  visit(connections, -1);

  ASSERT_EQ(connectivity().size(), 1);
  EXPECT_EQ(connectivity().Get(0).id(), "-1");
}

TEST_F(RtdKernelConnectionVisitorTest, EachVisitNumbersAfreshFromTheFirstId) {
  // The counter is a local copy inside visit, so the visitor itself never changes.
  IPA::KernelConnections connections;
  connections.addKernelConnection("8", "0", "0", "a", "write_only");
  IPA::RtdKernelConnectionVisitor const visitor(region, 20);

  visitor.visit(connections);
  visitor.visit(connections);

  ASSERT_EQ(connectivity().size(), 2);
  EXPECT_EQ(connectivity().Get(0).id(), "20");
  EXPECT_EQ(connectivity().Get(1).id(), "20");
}

}  // namespace
