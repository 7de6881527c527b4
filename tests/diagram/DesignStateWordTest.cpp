// ProfileAnalyzerSystemDiagram::toDesignState, the word of an actual resources document to the
// number that the stored diagram carries.
#include <string>

#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagram.h"

namespace {

class DesignStateWordTest : public ::testing::Test {
 protected:
  struct Row {
    char const* desc;
    char const* word;
    int number;
  };

  static int numberOf(std::string const& word) {
    return static_cast<int>(IPA::ProfileAnalyzerSystemDiagram::toDesignState(word));
  }
};

TEST_F(DesignStateWordTest, KnownWordsGiveTheirNumbers) {
  // The numbers are what the stored diagram carries, so they are written out and must not move.
  Row const rows[] = {
      {"synthesized", "Synthesized", 1},
      {"fully placed, with its blank", "Fully Placed", 2},
      {"routed", "Routed", 3},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(numberOf(row.word), row.number);
  }
}

TEST_F(DesignStateWordTest, AnyOtherWordGivesZero) {
  Row const rows[] = {
      {"lower case is another word", "routed", 0},
      {"the empty word", "", 0},
      {"placed alone is not fully placed", "Placed", 0},
      {"without the blank", "FullyPlaced", 0},
      {"two blanks", "Fully  Placed", 0},
      {"a trailing blank is not trimmed", "Routed ", 0},
      {"a leading blank is not trimmed", " Synthesized", 0},
      {"all capitals", "SYNTHESIZED", 0},
      {"a line end is not trimmed", "Fully Placed\n", 0},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(numberOf(row.word), row.number);
  }
}

}  // namespace
