#include "rtd/KernelConnections.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

#include "rtd/KernelConnection.h"

namespace {

using IPA::KernelConnection;
using IPA::KernelConnections;

std::vector<std::string> sorted(std::vector<std::string> values) {
  std::sort(values.begin(), values.end());
  return values;
}

TEST(KernelConnectionTest, NodeTypeNamesHaveTheirExactTexts) {
  EXPECT_EQ(KernelConnection::computeUnitIdName, "compute_unit");
  EXPECT_EQ(KernelConnection::memoryIdName, "memory");
}

TEST(KernelConnectionTest, AggregateInitialisationFollowsTheFieldOrder) {
  KernelConnection const record{"3", "1", "in_stream", "read_only"};

  EXPECT_EQ(record.ipLayoutIndex, "3");
  EXPECT_EQ(record.argIndex, "1");
  EXPECT_EQ(record.argName, "in_stream");
  EXPECT_EQ(record.mode, "read_only");
}

TEST(KernelConnectionsTest, NothingAddedGivesNoIdentifiers) {
  KernelConnections const connections;

  EXPECT_TRUE(connections.kernelConnectionIds().empty());
}

TEST(KernelConnectionsTest, UnknownIdentifierGivesAnEmptyList) {
  KernelConnections connections;
  connections.addKernelConnection("4", "0", "1", "out", "write_only");

  EXPECT_TRUE(connections.kernelConnectionsForConnectionId("5").empty());
  EXPECT_TRUE(connections.kernelConnectionsForConnectionId("").empty());
  EXPECT_TRUE(KernelConnections().kernelConnectionsForConnectionId("4").empty());
}

TEST(KernelConnectionsTest, RecordsKeepTheirFieldsAndInsertionOrderWithinAList) {
  KernelConnections connections;
  connections.addKernelConnection("7", "2", "0", "out_stream", "write_only");
  connections.addKernelConnection("9", "5", "3", "other", "read_only");
  connections.addKernelConnection("7", "1", "4", "in_stream", "read_only");
  connections.addKernelConnection("7", "0", "2", "third", "");

  auto const list = connections.kernelConnectionsForConnectionId("7");

  ASSERT_EQ(list.size(), 3u);
  EXPECT_EQ(list[0].ipLayoutIndex, "2");
  EXPECT_EQ(list[0].argIndex, "0");
  EXPECT_EQ(list[0].argName, "out_stream");
  EXPECT_EQ(list[0].mode, "write_only");
  EXPECT_EQ(list[1].ipLayoutIndex, "1");
  EXPECT_EQ(list[1].argIndex, "4");
  EXPECT_EQ(list[1].argName, "in_stream");
  EXPECT_EQ(list[1].mode, "read_only");
  EXPECT_EQ(list[2].ipLayoutIndex, "0");
  EXPECT_EQ(list[2].argIndex, "2");
  EXPECT_EQ(list[2].argName, "third");
  EXPECT_EQ(list[2].mode, "");

  auto const other = connections.kernelConnectionsForConnectionId("9");
  ASSERT_EQ(other.size(), 1u);
  EXPECT_EQ(other[0].ipLayoutIndex, "5");
  EXPECT_EQ(other[0].argName, "other");
}

TEST(KernelConnectionsTest, EachIdentifierIsListedOnce) {
  KernelConnections connections;
  connections.addKernelConnection("7", "0", "0", "a", "write_only");
  connections.addKernelConnection("2", "1", "0", "b", "read_only");
  connections.addKernelConnection("7", "2", "1", "c", "read_only");
  connections.addKernelConnection("2", "3", "1", "d", "write_only");
  connections.addKernelConnection("2", "4", "2", "e", "write_only");

  EXPECT_EQ(sorted(connections.kernelConnectionIds()), (std::vector<std::string>{"2", "7"}));
}

TEST(KernelConnectionsTest, TextsOfTheSameNumberAreTwoIdentifiers) {
  KernelConnections connections;
  connections.addKernelConnection("1", "0", "0", "plain", "write_only");
  connections.addKernelConnection("01", "1", "0", "padded", "read_only");

  EXPECT_EQ(sorted(connections.kernelConnectionIds()), (std::vector<std::string>{"01", "1"}));
  auto const plain = connections.kernelConnectionsForConnectionId("1");
  auto const padded = connections.kernelConnectionsForConnectionId("01");
  ASSERT_EQ(plain.size(), 1u);
  ASSERT_EQ(padded.size(), 1u);
  EXPECT_EQ(plain[0].argName, "plain");
  EXPECT_EQ(padded[0].argName, "padded");
}

TEST(KernelConnectionsTest, AnEmptyTextIsAnIdentifierLikeAnyOther) {
  KernelConnections connections;
  connections.addKernelConnection("", "6", "1", "nameless", "read_only");

  EXPECT_EQ(connections.kernelConnectionIds(), (std::vector<std::string>{""}));
  auto const list = connections.kernelConnectionsForConnectionId("");
  ASSERT_EQ(list.size(), 1u);
  EXPECT_EQ(list[0].ipLayoutIndex, "6");
}

TEST(KernelConnectionsTest, TheListReturnedIsACopy) {
  KernelConnections connections;
  connections.addKernelConnection("3", "0", "0", "a", "write_only");

  auto list = connections.kernelConnectionsForConnectionId("3");
  list[0].argName = "changed";
  list.push_back(KernelConnection{"9", "9", "extra", "read_only"});

  auto const again = connections.kernelConnectionsForConnectionId("3");
  ASSERT_EQ(again.size(), 1u);
  EXPECT_EQ(again[0].argName, "a");
}

}  // namespace
