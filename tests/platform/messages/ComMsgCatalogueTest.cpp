#include "platform/messages/ComMsgCatalogue.h"

#include <fstream>
#include <set>
#include <sstream>
#include <stdexcept>
#include <string>
#include <typeinfo>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using platform_messages::ComMsgCatalogue;
using Key = std::pair<std::string, std::string>;
using ::testing::ElementsAre;
using ::testing::Pair;

class ComMsgCatalogueTest : public ::testing::Test {
 protected:
  // Runs `call`, expects exactly a std::invalid_argument, and returns its text.
  template <class Call>
  static std::string thrown(Call call) {
    try {
      call();
    } catch (std::invalid_argument const& error) {
      EXPECT_EQ(typeid(error), typeid(std::invalid_argument));
      return error.what();
    } catch (...) {
      ADD_FAILURE() << "an exception of another type";
      return "";
    }
    ADD_FAILURE() << "no exception";
    return "";
  }

  // How many printf-style conversions `text` has, and how many of them are "%s". A "%%" is no
  // conversion.
  struct Conversions {
    int all = 0;
    int strings = 0;
  };
  static Conversions conversionsIn(std::string const& text) {
    Conversions found;
    for (std::size_t i = 0; i < text.size(); ++i) {
      if (text[i] != '%') continue;
      if (i + 1 < text.size() && text[i + 1] == '%') {
        ++i;
        continue;
      }
      ++found.all;
      if (i + 1 < text.size() && text[i + 1] == 's') ++found.strings;
    }
    return found;
  }

  // Every message of the shipped catalogue file, written out here so that an id that goes
  // missing, or one added without a test, shows.
  static std::set<Key> shippedIds() {
    return {
        {"morvane", "82-179"}, {"morvane", "82-183"}, {"morvane", "82-165"},
        {"morvane", "82-181"}, {"morvane", "82-180"}, {"morvane", "82-3588"},
        {"morvane", "82-222"}, {"morvane", "82-164"}, {"morvane", "82-182"},
        {"morvane", "82-171"}, {"morvane", "82-178"}, {"morvane", "82-176"},
        {"morvane", "82-177"}, {"morvane", "82-166"}, {"morvane", "82-2053"},
        {"morvane", "82-173"}, {"morvane", "82-175"}, {"morvane", "82-172"},
        {"morvane", "82-174"}, {"morvane", "82-168"}, {"morvane", "82-170"},
        {"morvane", "82-169"}, {"morvane", "82-167"}, {"morvane", "82-214"},
        {"morvane", "82-159"}, {"morvane", "82-157"}, {"morvane", "82-3568"},
        {"morvane", "82-158"}, {"morvane", "82-160"}, {"morvane", "82-163"},
        {"mvk", "60-808"},     {"mvk", "60-633"},     {"mvk", "60-839"},
        {"mvk", "60-842"},
    };
  }
};

// ---- Parsing ------------------------------------------------------------------------------------

TEST_F(ComMsgCatalogueTest, OneMessageALine) {
  ComMsgCatalogue const catalogue(
      "mvk 60-1 The first text.\n"
      "morvane 82-2 The second text, with %s.\n");
  EXPECT_EQ(catalogue.size(), 2u);
  EXPECT_EQ(catalogue.find("mvk", "60-1"), "The first text.");
  EXPECT_EQ(catalogue.find("morvane", "82-2"), "The second text, with %s.");
}

TEST_F(ComMsgCatalogueTest, CommentsAndEmptyLinesAreSkipped) {
  ComMsgCatalogue const catalogue(
      "# a heading\n"
      "\n"
      "   \n"
      "\t\n"
      "   # an indented comment\n"
      "#mvk 60-9 commented out\n"
      "mvk 60-1 Kept.\n"
      "\n");
  EXPECT_EQ(catalogue.size(), 1u);
  EXPECT_EQ(catalogue.find("mvk", "60-1"), "Kept.");
  EXPECT_EQ(catalogue.find("#mvk", "60-9"), std::nullopt);
  EXPECT_EQ(catalogue.find("mvk", "60-9"), std::nullopt);
}

TEST_F(ComMsgCatalogueTest, TextRunsToTheEndOfTheLineWithoutOuterBlanks) {
  ComMsgCatalogue const catalogue(
      "  mvk   60-1    Spaces  inside   stay.   \n"
      "mvk\t60-2\tTabs\tbetween.\t\n"
      "mvk 60-3 Windows line end.\r\n"
      "mvk 60-4 # not a comment here\n"
      "mvk 60-5 Last line without a line end.");
  EXPECT_EQ(catalogue.size(), 5u);
  EXPECT_EQ(catalogue.find("mvk", "60-1"), "Spaces  inside   stay.");
  EXPECT_EQ(catalogue.find("mvk", "60-2"), "Tabs\tbetween.");
  EXPECT_EQ(catalogue.find("mvk", "60-3"), "Windows line end.");
  EXPECT_EQ(catalogue.find("mvk", "60-4"), "# not a comment here");
  EXPECT_EQ(catalogue.find("mvk", "60-5"), "Last line without a line end.");
}

TEST_F(ComMsgCatalogueTest, EmptyTextGivesAnEmptyCatalogue) {
  EXPECT_EQ(ComMsgCatalogue("").size(), 0u);
  EXPECT_EQ(ComMsgCatalogue("# only a comment\n\n").size(), 0u);
}

TEST_F(ComMsgCatalogueTest, SameIdentifierUnderTwoLookupsIsTwoMessages) {
  ComMsgCatalogue const catalogue(
      "mvk 60-1 For mvk.\n"
      "morvane 60-1 For morvane.\n");
  EXPECT_EQ(catalogue.size(), 2u);
  EXPECT_EQ(catalogue.find("mvk", "60-1"), "For mvk.");
  EXPECT_EQ(catalogue.find("morvane", "60-1"), "For morvane.");
}

TEST_F(ComMsgCatalogueTest, FindAnswersNothingForWhatIsNotThere) {
  ComMsgCatalogue const catalogue("mvk 60-1 There.\n");
  EXPECT_EQ(catalogue.find("mvk", "60-2"), std::nullopt);
  EXPECT_EQ(catalogue.find("morvane", "60-1"), std::nullopt);
  EXPECT_EQ(catalogue.find("MVK", "60-1"), std::nullopt);
  EXPECT_EQ(catalogue.find("mvk", "60-1 "), std::nullopt);
  EXPECT_EQ(catalogue.find("", ""), std::nullopt);
}

TEST_F(ComMsgCatalogueTest, EntriesAreOrderedByLookupAndIdentifier) {
  ComMsgCatalogue const catalogue(
      "mvk 60-2 b\n"
      "morvane 82-1 c\n"
      "mvk 60-1 a\n");
  EXPECT_THAT(catalogue.entries(),
              ElementsAre(Pair(Key("morvane", "82-1"), "c"), Pair(Key("mvk", "60-1"), "a"),
                          Pair(Key("mvk", "60-2"), "b")));
}

TEST_F(ComMsgCatalogueTest, LineWithoutTextThrowsNamingTheLine) {
  struct Row {
    char const* text;
    char const* error;
  };
  Row const rows[] = {
      {"mvk 60-1 Fine.\n# comment\nmvk 60-2\n",
       "message catalogue line 3: expected '<lookup> <id> <text>', got 'mvk 60-2'"},
      {"mvk 60-2   \n",
       "message catalogue line 1: expected '<lookup> <id> <text>', got 'mvk 60-2'"},
      {"\n\nmvk\n", "message catalogue line 3: expected '<lookup> <id> <text>', got 'mvk'"},
      {"  lonely  \n", "message catalogue line 1: expected '<lookup> <id> <text>', got 'lonely'"},
      {"mvk 60-1 Fine.\nmvk 60-3",
       "message catalogue line 2: expected '<lookup> <id> <text>', got 'mvk 60-3'"},
  };
  for (Row const& row : rows) {
    EXPECT_EQ(thrown([&] { ComMsgCatalogue catalogue(row.text); }), row.error) << row.text;
  }
}

TEST_F(ComMsgCatalogueTest, IdentifierGivenTwiceThrowsNamingTheSecondLine) {
  EXPECT_EQ(thrown([] {
              ComMsgCatalogue catalogue(
                  "# messages\n"
                  "mvk 60-1 First.\n"
                  "mvk 60-2 Other.\n"
                  "mvk 60-1 Again.\n");
            }),
            "message catalogue line 4: mvk 60-1 is given twice");
}

TEST_F(ComMsgCatalogueTest, IdentifierGivenTwiceWithTheSameTextStillThrows) {
  EXPECT_EQ(thrown([] { ComMsgCatalogue catalogue("mvk 60-1 Same.\n\nmvk 60-1 Same.\n"); }),
            "message catalogue line 3: mvk 60-1 is given twice");
}

// ---- The built-in catalogue ---------------------------------------------------------------------

TEST_F(ComMsgCatalogueTest, BuiltInHoldsTheShippedMessages) {
  std::set<Key> ids;
  for (auto const& entry : ComMsgCatalogue::builtIn().entries()) ids.insert(entry.first);
  EXPECT_EQ(ids, shippedIds());
  EXPECT_EQ(ComMsgCatalogue::builtIn().size(), 34u);
}

TEST_F(ComMsgCatalogueTest, BuiltInIsParsedOnce) {
  EXPECT_EQ(&ComMsgCatalogue::builtIn(), &ComMsgCatalogue::builtIn());
}

TEST_F(ComMsgCatalogueTest, BuiltInIsTheShippedFile) {
  // The file is compiled in at build time; a build that missed a change of the file shows here.
  std::ifstream in(QV_TEST_DATA_DIR "/../../platform/messages/catalogue");
  ASSERT_TRUE(in) << "cannot read the catalogue file";
  std::ostringstream text;
  text << in.rdbuf();
  EXPECT_EQ(ComMsgCatalogue::builtIn().entries(), ComMsgCatalogue(text.str()).entries());
}

TEST_F(ComMsgCatalogueTest, BuiltInTextsReadAsWritten) {
  ComMsgCatalogue const& catalogue = ComMsgCatalogue::builtIn();
  EXPECT_EQ(catalogue.find("morvane", "82-214"),
            "No high-level synthesis report was found at %s; the kernel is listed without a "
            "resource estimate.");
  EXPECT_EQ(catalogue.find("mvk", "60-842"),
            "Unknown kernel type '%s' in the kernels file; the kernel is kept with an unknown "
            "type.");
  EXPECT_EQ(catalogue.find("mvk", "60-808"), "The kernels file could not be read: %s");
  EXPECT_EQ(catalogue.find("mvk", "60-633"), "The kernel instances could not be collected: %s");
  EXPECT_EQ(catalogue.find("mvk", "60-839"), "Finished reading the kernels file %s.");
  EXPECT_EQ(catalogue.find("morvane", "82-163"),
            "The available resources of the platform's first device could not be read "
            "completely; the user region's totals are left incomplete.");
}

TEST_F(ComMsgCatalogueTest, BuiltInTextsTakeOneStringOrNothing) {
  // The catalogue does not say how many arguments a message takes; the senders and
  // docs/messages.md agree on one text argument for these five and none for the rest.
  std::set<Key> const oneString = {{"morvane", "82-214"},
                                   {"mvk", "60-808"},
                                   {"mvk", "60-633"},
                                   {"mvk", "60-839"},
                                   {"mvk", "60-842"}};
  for (auto const& entry : ComMsgCatalogue::builtIn().entries()) {
    Conversions const found = conversionsIn(entry.second);
    std::string const name = entry.first.first + " " + entry.first.second;
    if (oneString.count(entry.first) != 0) {
      EXPECT_EQ(found.all, 1) << name << ": " << entry.second;
      EXPECT_EQ(found.strings, 1) << name << ": " << entry.second;
    } else {
      EXPECT_EQ(found.all, 0) << name << ": " << entry.second;
    }
  }
}

TEST_F(ComMsgCatalogueTest, ConversionCounterCountsWhatItShould) {
  // The helper above decides the previous test; make sure it cannot pass by counting nothing.
  EXPECT_EQ(conversionsIn("none").all, 0);
  EXPECT_EQ(conversionsIn("100%% sure").all, 0);
  EXPECT_EQ(conversionsIn("at %s").all, 1);
  EXPECT_EQ(conversionsIn("at %s").strings, 1);
  EXPECT_EQ(conversionsIn("%d of %s").all, 2);
  EXPECT_EQ(conversionsIn("%d of %s").strings, 1);
}

}  // namespace
