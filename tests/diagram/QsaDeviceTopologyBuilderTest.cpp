#include "diagram/QsaDeviceTopologyBuilder.h"

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

class QsaDeviceTopologyBuilderTest : public ::testing::Test {
 protected:
  using Builder = IPA::QsaDeviceTopologyBuilder;
  using Table = qvtest::TextSetterTable<Builder, pb::deviceTopology>;

  static Table const& textSetters() {
    static Table const rows = {
        {"setId writes id", &Builder::setId, &pb::deviceTopology::id, "0"},
        {"setUsed writes used", &Builder::setUsed, &pb::deviceTopology::used, "yes"},
        {"setSizeKb writes size_kb", &Builder::setSizeKb, &pb::deviceTopology::size_kb,
         "16777216"},
        {"setBaseAddress writes base_address", &Builder::setBaseAddress,
         &pb::deviceTopology::base_address, "0x4000000000"},
        {"setTag writes tag", &Builder::setTag, &pb::deviceTopology::tag, "bank0"},
        {"setSlr writes slr", &Builder::setSlr, &pb::deviceTopology::slr, "SLR1"},
        {"setSpTag writes sp_tag", &Builder::setSpTag, &pb::deviceTopology::sp_tag, "DDR[0]"},
    };
    return rows;
  }

  pb::Qsa const& qsa() const { return root->system_diagram_metadata().qsa(); }

  std::shared_ptr<pb::outerContainer> root = std::make_shared<pb::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder diagram{root};
  IPA::QsaBuilder& owner = *diagram.getQsaBuilder();
};

TEST_F(QsaDeviceTopologyBuilderTest, MakingItAppendsOneEmptyEntry) {
  Builder builder(owner, root);

  ASSERT_EQ(qsa().device_topology_size(), 1);
  EXPECT_EQ(builder.message(), &qsa().device_topology(0));
  EXPECT_EQ(qsa().device_topology(0).ByteSizeLong(), 0u);
  EXPECT_EQ(qsa().device_topology(0).type(), 0);
}

TEST_F(QsaDeviceTopologyBuilderTest, MakingItCreatesNoOtherPartOfTheSection) {
  Builder builder(owner, root);

  EXPECT_FALSE(qsa().has_generated_by());
  EXPECT_FALSE(qsa().has_board());
  EXPECT_FALSE(qsa().has_available_resources());
  EXPECT_EQ(qsa().clocks_size(), 0);
  EXPECT_FALSE(root->system_diagram_metadata().has_qrxbin());
}

TEST_F(QsaDeviceTopologyBuilderTest, EachBuilderAppendsItsOwnEntryInOrder) {
  Builder first(owner, root);
  Builder second(owner, root);
  Builder third(owner, root);
  // Set out of order, so that the entries' order can only come from the order of making.
  third.setId("2");
  first.setId("0");
  second.setId("1");

  ASSERT_EQ(qsa().device_topology_size(), 3);
  EXPECT_EQ(qsa().device_topology(0).id(), "0");
  EXPECT_EQ(qsa().device_topology(1).id(), "1");
  EXPECT_EQ(qsa().device_topology(2).id(), "2");
}

TEST_F(QsaDeviceTopologyBuilderTest, AppendsAfterTheEntriesAlreadyThere) {
  root->mutable_system_diagram_metadata()->mutable_qsa()->add_device_topology()->set_tag("old");

  Builder builder(owner, root);
  builder.setTag("new");

  ASSERT_EQ(qsa().device_topology_size(), 2);
  EXPECT_EQ(qsa().device_topology(0).tag(), "old");
  EXPECT_EQ(qsa().device_topology(1).tag(), "new");
  EXPECT_EQ(builder.message(), &qsa().device_topology(1));
}

TEST_F(QsaDeviceTopologyBuilderTest, EachTextSetterWritesItsOwnFieldOnly) {
  for (std::size_t i = 0; i < textSetters().size(); ++i) {
    auto const& row = textSetters()[i];
    SCOPED_TRACE(row.desc);
    auto fresh = std::make_shared<pb::outerContainer>();
    Builder builder(owner, fresh);

    (builder.*row.set)(row.value);

    auto const& entry = fresh->system_diagram_metadata().qsa().device_topology(0);
    EXPECT_TRUE(qvtest::holdsOnlyField(entry, textSetters(), i));
    EXPECT_EQ(entry.type(), 0);
  }
}

TEST_F(QsaDeviceTopologyBuilderTest, AllTextSettersTogetherKeepTheirOwnValues) {
  Builder builder(owner, root);

  for (auto const& row : textSetters()) (builder.*row.set)(row.value);

  EXPECT_TRUE(qvtest::holdsEveryField(qsa().device_topology(0), textSetters()));
}

TEST_F(QsaDeviceTopologyBuilderTest, SetTypeWritesTheTypeOnly) {
  Builder builder(owner, root);

  builder.setType(pb::MEM_HBM);

  EXPECT_EQ(qsa().device_topology(0).type(), 4);
  EXPECT_EQ(qsa().device_topology(0).id(), "");
  EXPECT_EQ(qsa().device_topology(0).tag(), "");
}

TEST_F(QsaDeviceTopologyBuilderTest, SettersFillOnlyTheirOwnEntry) {
  Builder first(owner, root);
  Builder second(owner, root);

  second.setUsed("yes");
  second.setType(pb::MEM_DDR4);

  EXPECT_EQ(qsa().device_topology(0).ByteSizeLong(), 0u);
  EXPECT_EQ(qsa().device_topology(1).used(), "yes");
  EXPECT_EQ(qsa().device_topology(1).type(), 2);
}

TEST_F(QsaDeviceTopologyBuilderTest, KnowsItsOwner) {
  Builder builder(owner, root);

  EXPECT_EQ(&builder.getOwner(), &owner);
}

TEST_F(QsaDeviceTopologyBuilderTest, KeepsTheTreeAliveUntilItEnds) {
  // A root of its own, so that the builder holds the only reference once `tree` is dropped.
  auto tree = std::make_shared<pb::outerContainer>();
  std::weak_ptr<pb::outerContainer> watch = tree;
  auto builder = std::make_unique<Builder>(owner, tree);
  tree.reset();

  ASSERT_FALSE(watch.expired());
  builder->setSpTag("HBM[3]");
  EXPECT_EQ(builder->message()->sp_tag(), "HBM[3]");

  builder.reset();
  EXPECT_TRUE(watch.expired());
}

// The memory words of the run-time data file. Their numbers are what the stored diagram carries,
// so they are written out here and must never move.
struct MemoryWordRow {
  char const* desc;
  char const* word;
  int number;
};

TEST_F(QsaDeviceTopologyBuilderTest, MemoryTypeGivesEachKnownWordItsNumber) {
  MemoryWordRow const rows[] = {
      {"DDR3", "MEM_DDR3", 1},
      {"DDR4", "MEM_DDR4", 2},
      {"DRAM", "MEM_DRAM", 3},
      {"HBM", "MEM_HBM", 4},
      {"block RAM", "MEM_BRAM", 5},
      {"ultra RAM", "MEM_URAM", 6},
      {"streaming", "MEM_STREAMING", 7},
      {"streaming connection, not taken for its prefix MEM_STREAMING",
       "MEM_STREAMING_CONNECTION", 8},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(static_cast<int>(Builder::memoryType(row.word)), row.number);
  }
}

TEST_F(QsaDeviceTopologyBuilderTest, MemoryTypeGivesZeroForAnyOtherWord) {
  MemoryWordRow const rows[] = {
      {"the empty word", "", 0},
      {"lower case is another word", "mem_ddr4", 0},
      {"a type the file format does not have", "MEM_DDR5", 0},
      {"a trailing blank is not trimmed", "MEM_HBM ", 0},
      {"a leading blank is not trimmed", " MEM_HBM", 0},
      {"without its prefix", "DDR4", 0},
      {"a prefix of a known word", "MEM_STREAM", 0},
      {"a known word with more behind it", "MEM_STREAMING_CONNECTIONS", 0},
      {"the name of the unset value is no word of the file", "MEM_UNSET", 0},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(static_cast<int>(Builder::memoryType(row.word)), row.number);
  }
}

TEST_F(QsaDeviceTopologyBuilderTest, AnUnknownMemoryWordStillMakesAnEntry) {
  Builder builder(owner, root);

  builder.setTag("bank9");
  builder.setType(Builder::memoryType("MEM_DDR5"));

  ASSERT_EQ(qsa().device_topology_size(), 1);
  EXPECT_EQ(qsa().device_topology(0).tag(), "bank9");
  EXPECT_EQ(qsa().device_topology(0).type(), 0);
}

}  // namespace
