// addComputeUnitActualResource of the protobuf diagram: which compute units get entries, what an
// entry holds, and what is created or left alone on the way. Each test compares the whole tree.
#include <google/protobuf/util/message_differencer.h>
#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "resources/ActualResource.h"
#include "resources/ActualResourceCollection.h"
#include "tests/support/Messages.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Container = IPA::ProfileAnalyzerSystemDiagram::Container;
using IPA::ActualResource;
using IPA::ActualResourceCollection;
using qvtest::parse;
using qvtest::sameMessage;

std::string withQrxBin(std::string const& body) {
  return "system_diagram_metadata { qrxbin { " + body + " } }";
}

// A collection with one report per given record, each under its own state word.
ActualResourceCollection collectionOf(std::initializer_list<ActualResource> records) {
  ActualResourceCollection collection;
  for (ActualResource const& record : records) collection.resources[record.state] = record;
  return collection;
}

class ProfileAnalyzerSystemDiagramActualResourcesTest : public ::testing::Test {
 protected:
  ProfileAnalyzerSystemDiagramActualResourcesTest()
      : container(std::make_shared<Container>()), diagram(container) {}

  void load(std::string const& text) { *container = parse<Container>(text); }

  ::testing::AssertionResult treeIs(std::string const& text) const {
    return sameMessage(parse<Container>(text), *container);
  }

  // Like treeIs, but the entries of each compute unit's `actual_resources` may stand in any
  // order: a collection hands its states over in the unordered map's order.
  ::testing::AssertionResult treeIsInAnyEntryOrder(std::string const& text) const {
    std::string differences;
    google::protobuf::util::MessageDifferencer differencer;
    differencer.ReportDifferencesToString(&differences);
    differencer.TreatAsSet(pb::computeUnit::descriptor()->FindFieldByName("actual_resources"));
    if (differencer.Compare(parse<Container>(text), *container)) {
      return ::testing::AssertionSuccess();
    }
    return ::testing::AssertionFailure() << differences << container->DebugString();
  }

  std::shared_ptr<Container> container;
  IPA::ProfileAnalyzerSystemDiagram diagram;
};

ActualResource const routed{"Routed", "10", "20", "3", "4", "5"};

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest, AppendsOneEntryWithTheFiveCountsAndState) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  diagram.addComputeUnitActualResource("vadd_1", collectionOf({routed}));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        actual_resources {
          lut: "10" reg: "20" bram: "3" uram: "4" dsp: "5" design_state: DESIGN_STATE_ROUTED
        }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest, EveryStateOfTheCollectionBecomesAnEntry) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  diagram.addComputeUnitActualResource("vadd_1",
                                       collectionOf({{"Synthesized", "1", "", "", "", ""},
                                                     {"Fully Placed", "2", "", "", "", ""},
                                                     {"Routed", "3", "", "", "", ""}}));
  EXPECT_TRUE(treeIsInAnyEntryOrder(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        actual_resources { lut: "1" design_state: DESIGN_STATE_SYNTHESIZED }
        actual_resources { lut: "2" design_state: DESIGN_STATE_FULLY_PLACED }
        actual_resources { lut: "3" design_state: DESIGN_STATE_ROUTED }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest,
       EveryComputeUnitOfThatNameInEveryUserRegionGetsTheEntries) {
  load(withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" }
      compute_units { id: "1" name: "vadd_2" }
      compute_units { id: "2" name: "vadd_1" }
    }
    user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  diagram.addComputeUnitActualResource("vadd_1", collectionOf({{"Routed", "10", "", "", "", ""}}));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" actual_resources { lut: "10" design_state: DESIGN_STATE_ROUTED }
      }
      compute_units { id: "1" name: "vadd_2" }
      compute_units {
        id: "2" name: "vadd_1" actual_resources { lut: "10" design_state: DESIGN_STATE_ROUTED }
      }
    }
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" actual_resources { lut: "10" design_state: DESIGN_STATE_ROUTED }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest,
       EntriesAreAppendedAndWhatStoodThereStaysAlsoForTheSameState) {
  load(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" reset_pins: "ap_rst_n"
        actual_resources { lut: "1" design_state: DESIGN_STATE_ROUTED }
      }
    })"));
  diagram.addComputeUnitActualResource("vadd_1", collectionOf({{"Routed", "2", "", "", "", ""}}));
  diagram.addComputeUnitActualResource("vadd_1", collectionOf({{"Routed", "2", "", "", "", ""}}));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" reset_pins: "ap_rst_n"
        actual_resources { lut: "1" design_state: DESIGN_STATE_ROUTED }
        actual_resources { lut: "2" design_state: DESIGN_STATE_ROUTED }
        actual_resources { lut: "2" design_state: DESIGN_STATE_ROUTED }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest, StateWordOutsideTheThreeKnownOnesIsUnset) {
  for (char const* word : {"", "routed", "Placed", "Fully placed", " Routed", "3"}) {
    load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
    diagram.addComputeUnitActualResource("vadd_1", collectionOf({{word, "7", "", "", "", ""}}));
    EXPECT_TRUE(treeIs(withQrxBin(R"(
      user_regions {
        compute_units {
          id: "0" name: "vadd_1" actual_resources { lut: "7" design_state: DESIGN_STATE_UNSET }
        }
      })")))
        << "'" << word << "'";
  }
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest,
       DesignStateComesFromTheRecordNotFromItsKey) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  ActualResourceCollection collection;
  collection.resources["Routed"] = ActualResource{"Synthesized", "7", "", "", "", ""};
  diagram.addComputeUnitActualResource("vadd_1", collection);
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1" actual_resources { lut: "7" design_state: DESIGN_STATE_SYNTHESIZED }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest, CountsAreStoredAsTheTextTheyAre) {
  load(withQrxBin(R"(user_regions { compute_units { id: "0" name: "vadd_1" } })"));
  diagram.addComputeUnitActualResource("vadd_1",
                                       collectionOf({{"Routed", "010", "1.50", "", "n/a", " 5"}}));
  EXPECT_TRUE(treeIs(withQrxBin(R"(
    user_regions {
      compute_units {
        id: "0" name: "vadd_1"
        actual_resources {
          lut: "010" reg: "1.50" bram: "" uram: "n/a" dsp: " 5" design_state: DESIGN_STATE_ROUTED
        }
      }
    })")));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest, EmptyCollectionChangesNothing) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1" actual_resources { lut: "1" } }
    })");
  load(tree);
  diagram.addComputeUnitActualResource("vadd_1", ActualResourceCollection());
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest,
       EmptyNameChangesNothingNotEvenAComputeUnitWithAnEmptyName) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "" }
      compute_units { id: "1" name: "vadd_1" }
    })");
  load(tree);
  diagram.addComputeUnitActualResource("", collectionOf({routed}));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest, EmptyNameOnAnEmptyDiagramCreatesNoSection) {
  diagram.addComputeUnitActualResource("", collectionOf({routed}));
  EXPECT_TRUE(treeIs(""));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest, NameInNoUserRegionChangesNothing) {
  std::string const tree = withQrxBin(R"(
    user_regions { compute_units { id: "0" name: "vadd_1" } }
    user_regions { compute_units { id: "0" name: "vadd_2" } })");
  load(tree);
  diagram.addComputeUnitActualResource("vmul_1", collectionOf({routed}));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest, NamesAreComparedExactly) {
  std::string const tree = withQrxBin(R"(
    user_regions {
      compute_units { id: "0" name: "vadd_1 " }
      compute_units { id: "1" name: "VADD_1" }
      compute_units { id: "2" name: "vadd_10" }
    })");
  load(tree);
  diagram.addComputeUnitActualResource("vadd_1", collectionOf({routed}));
  EXPECT_TRUE(treeIs(tree));
}

TEST_F(ProfileAnalyzerSystemDiagramActualResourcesTest,
       NonEmptyNameOnAnEmptyDiagramCreatesTheEmptyQrxBinSection) {
  // The compute units are reached through the writers' accessors, which create the sections on
  // the way even when nothing is found in them.
  diagram.addComputeUnitActualResource("vadd_1", collectionOf({routed}));
  EXPECT_TRUE(treeIs("system_diagram_metadata { qrxbin { } }"));
}

}  // namespace
