// The reports of one compute unit, keyed by design state, and the record that each report is.
#include "resources/ActualResourceCollection.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using IPA::ActualResource;
using IPA::ActualResourceCollection;
using ::testing::UnorderedElementsAre;

TEST(ActualResourceCollectionTest, StatesOfAnEmptyCollectionIsEmpty) {
  EXPECT_EQ(ActualResourceCollection().states(), std::vector<std::string>{});
}

TEST(ActualResourceCollectionTest, StatesListsEveryKeyOnceInNoParticularOrder) {
  ActualResourceCollection collection;
  collection.resources["Synthesized"] = ActualResource{"Synthesized", "10", "", "", "", ""};
  collection.resources["Routed"] = ActualResource{"Routed", "30", "", "", "", ""};
  collection.resources["Fully Placed"] = ActualResource{"Fully Placed", "20", "", "", "", ""};
  EXPECT_THAT(collection.states(), UnorderedElementsAre("Synthesized", "Fully Placed", "Routed"));
}

TEST(ActualResourceCollectionTest, StatesAreTheKeysNotTheStateFieldsOfTheRecords) {
  ActualResourceCollection collection;
  collection.resources["Routed"] = ActualResource{"Synthesized", "1", "", "", "", ""};
  EXPECT_EQ(collection.states(), std::vector<std::string>{"Routed"});
}

TEST(ActualResourceCollectionTest, EmptyStateWordIsAKeyLikeAnyOther) {
  ActualResourceCollection collection;
  collection.resources[""] = ActualResource{};
  EXPECT_EQ(collection.states(), std::vector<std::string>{""});
}

TEST(ActualResourceCollectionTest, StatesIsASnapshotOfTheKeys) {
  ActualResourceCollection collection;
  collection.resources["Routed"] = ActualResource{};
  std::vector<std::string> const states = collection.states();
  collection.resources["Synthesized"] = ActualResource{};
  EXPECT_EQ(states, std::vector<std::string>{"Routed"});
}

TEST(ActualResourceCollectionTest, DefaultRecordHoldsSixEmptyTexts) {
  ActualResource const record;
  EXPECT_EQ(record.state, "");
  EXPECT_EQ(record.lut, "");
  EXPECT_EQ(record.reg, "");
  EXPECT_EQ(record.bram, "");
  EXPECT_EQ(record.uram, "");
  EXPECT_EQ(record.dsp, "");
}

TEST(ActualResourceCollectionTest, RecordsAreEqualOnlyWhenAllSixFieldsAre) {
  ActualResource const base{"Routed", "1", "2", "3", "4", "5"};
  EXPECT_TRUE(base == (ActualResource{"Routed", "1", "2", "3", "4", "5"}));
  struct Row {
    char const* changed;
    ActualResource record;
  };
  Row const rows[] = {
      {"state", {"Synthesized", "1", "2", "3", "4", "5"}},
      {"lut", {"Routed", "9", "2", "3", "4", "5"}},
      {"reg", {"Routed", "1", "9", "3", "4", "5"}},
      {"bram", {"Routed", "1", "2", "9", "4", "5"}},
      {"uram", {"Routed", "1", "2", "3", "9", "5"}},
      {"dsp", {"Routed", "1", "2", "3", "4", "9"}},
  };
  for (Row const& row : rows) {
    EXPECT_FALSE(base == row.record) << row.changed;
    EXPECT_FALSE(row.record == base) << row.changed;
  }
}

TEST(ActualResourceCollectionTest, CountsAreComparedAsTextNotAsNumbers) {
  EXPECT_FALSE((ActualResource{"Routed", "010", "", "", "", ""}) ==
               (ActualResource{"Routed", "10", "", "", "", ""}));
}

}  // namespace
