// Padding, borders, widths and number formats of the flow report.
#include "report/ReportText.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace {

class ReportTextTest : public ::testing::Test {
 protected:
  struct AlignRow {
    char const* desc;
    char const* text;
    int width;
    char const* left;
    char const* right;
  };

  struct PercentRow {
    char const* desc;
    char const* part;
    char const* whole;
    char const* expected;
  };

  // The what() of the exception of type E that `call` throws; fails the test if it throws
  // nothing or something else.
  template <class E, class Call>
  static std::string whatOf(Call const& call) {
    try {
      call();
    } catch (E const& error) {
      return error.what();
    } catch (...) {
      ADD_FAILURE() << "another exception type";
      return "";
    }
    ADD_FAILURE() << "nothing thrown";
    return "";
  }
};

// ---- Alignment ---------------------------------------------------------------------------------

TEST_F(ReportTextTest, AlignmentPadsWithBlanksUpToTheWidth) {
  AlignRow const rows[] = {
      {"shorter text is padded", "one", 6, "one   ", "   one"},
      {"text of the width stays as it is", "value", 5, "value", "value"},
      {"empty text becomes blanks", "", 4, "    ", "    "},
      {"empty text at width 0 stays empty", "", 0, "", ""},
      {"inner blanks are kept", "a b", 4, "a b ", " a b"},
      {"lengths count bytes, not characters", "\xc3\xa9", 3, "\xc3\xa9 ", " \xc3\xa9"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(IPA::leftAlignString(row.text, row.width), row.left);
    EXPECT_EQ(IPA::rightAlignString(row.text, row.width), row.right);
  }
}

TEST_F(ReportTextTest, LeftAlignBelowTheLengthThrowsLengthError) {
  EXPECT_EQ(whatOf<std::length_error>([] { IPA::leftAlignString("abcd", 3); }),
            "basic_string::_M_replace_aux");
  EXPECT_EQ(whatOf<std::length_error>([] { IPA::leftAlignString("abcd", 0); }),
            "basic_string::_M_replace_aux");
  EXPECT_EQ(whatOf<std::length_error>([] { IPA::leftAlignString("", -1); }),
            "basic_string::_M_replace_aux");
}

TEST_F(ReportTextTest, RightAlignBelowTheLengthThrowsLengthError) {
  EXPECT_EQ(whatOf<std::length_error>([] { IPA::rightAlignString("abcd", 3); }),
            "basic_string::_M_replace_aux");
  EXPECT_EQ(whatOf<std::length_error>([] { IPA::rightAlignString("abcd", 0); }),
            "basic_string::_M_replace_aux");
  EXPECT_EQ(whatOf<std::length_error>([] { IPA::rightAlignString("", -1); }),
            "basic_string::_M_replace_aux");
}

// ---- Borders and widths ------------------------------------------------------------------------

TEST_F(ReportTextTest, BorderStringRepeatsTheDash) {
  EXPECT_EQ(IPA::borderString(1), "-");
  EXPECT_EQ(IPA::borderString(7), "-------");
}

TEST_F(ReportTextTest, BorderStringOfZeroOrNegativeCountIsEmpty) {
  EXPECT_EQ(IPA::borderString(0), "");
  EXPECT_EQ(IPA::borderString(-1), "");
  EXPECT_EQ(IPA::borderString(-68), "");
}

TEST_F(ReportTextTest, GetMaxSizeStringGivesTheGreatestLength) {
  EXPECT_EQ(IPA::getMaxSizeString({"Site Type", "LUT", "REG", "BRAM"}), 9);
  EXPECT_EQ(IPA::getMaxSizeString({"SLR0", "12000", "20000", "18"}), 5);
  EXPECT_EQ(IPA::getMaxSizeString({"", "", ""}), 0);
  // Bytes, not characters: two bytes of UTF-8 count as two.
  EXPECT_EQ(IPA::getMaxSizeString({"\xc3\xa9"}), 2);
}

TEST_F(ReportTextTest, GetMaxSizeStringOfAnEmptyListIsZero) {
  EXPECT_EQ(IPA::getMaxSizeString(std::vector<std::string>{}), 0);
}

// ---- doubleToString, as the report uses it -----------------------------------------------------

TEST_F(ReportTextTest, DoubleToStringGivesTwoDecimals) {
  EXPECT_EQ(IPA::doubleToString(300), "300.00");
  EXPECT_EQ(IPA::doubleToString(291.5), "291.50");
  EXPECT_EQ(IPA::doubleToString(99.999), "100.00");
  EXPECT_EQ(IPA::doubleToString(-5.0), "-5.00");
}

TEST_F(ReportTextTest, DoubleToStringOfZeroIsEmpty) { EXPECT_EQ(IPA::doubleToString(0.0), ""); }

TEST_F(ReportTextTest, DoubleToStringOfATinyValueIsZeroPointZeroZeroAndNotEmpty) {
  // Only an exact 0.0 means "not known"; a tiny frequency still shows.
  EXPECT_EQ(IPA::doubleToString(0.001), "0.00");
}

// ---- dividePercentString -----------------------------------------------------------------------

TEST_F(ReportTextTest, DividePercentStringGivesThePercentWithTwoDecimals) {
  PercentRow const rows[] = {
      {"a third", "1", "3", "33.33"},
      {"two thirds", "2", "3", "66.67"},
      {"the whole", "5", "5", "100.00"},
      {"nothing used", "0", "1300", "0.00"},
      {"a utilisation row", "12000", "900000", "1.33"},
      {"a small utilisation row", "300", "900000", "0.03"},
      {"more than the whole", "3", "2", "150.00"},
      {"decimal texts", "0.5", "2", "25.00"},
      {"leading blanks are skipped as stof skips them", " 1", " 4", "25.00"},
      {"trailing letters are ignored as stof ignores them", "1abc", "4xyz", "25.00"},
      {"negative part", "-1", "4", "-25.00"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(IPA::dividePercentString(row.part, row.whole), row.expected);
  }
}

TEST_F(ReportTextTest, DividePercentStringRoundsInSinglePrecision) {
  // In double precision these give 0.07, 0.53 and 14.37; the report's percentages are float
  // quotients multiplied by 100 in float, and so are these.
  EXPECT_EQ(IPA::dividePercentString("3", "4000"), "0.08");
  EXPECT_EQ(IPA::dividePercentString("21", "4000"), "0.52");
  EXPECT_EQ(IPA::dividePercentString("23", "160"), "14.38");
}

TEST_F(ReportTextTest, DividePercentStringOverZeroIsInfinite) {
  EXPECT_EQ(IPA::dividePercentString("18", "0"), "inf");
  EXPECT_EQ(IPA::dividePercentString("-18", "0"), "-inf");
}

TEST_F(ReportTextTest, DividePercentStringOfZeroOverZeroIsNotANumber) {
  std::string const text = IPA::dividePercentString("0", "0");
  EXPECT_TRUE(text == "nan" || text == "-nan") << text;
}

TEST_F(ReportTextTest, DividePercentStringOfNoNumberThrowsInvalidArgument) {
  EXPECT_EQ(whatOf<std::invalid_argument>([] { IPA::dividePercentString("", "3"); }), "stof");
  EXPECT_EQ(whatOf<std::invalid_argument>([] { IPA::dividePercentString("1", ""); }), "stof");
  EXPECT_EQ(whatOf<std::invalid_argument>([] { IPA::dividePercentString("abc", "3"); }), "stof");
  EXPECT_EQ(whatOf<std::invalid_argument>([] { IPA::dividePercentString("1", "N/A"); }), "stof");
}

TEST_F(ReportTextTest, DividePercentStringBeyondFloatThrowsOutOfRange) {
  EXPECT_EQ(whatOf<std::out_of_range>([] { IPA::dividePercentString("1e39", "3"); }), "stof");
  EXPECT_EQ(whatOf<std::out_of_range>([] { IPA::dividePercentString("1", "1e39"); }), "stof");
}

TEST_F(ReportTextTest, DividePercentStringConvertsThePartBeforeTheWhole) {
  // Each text fails in its own way, so the exception tells which one was converted first.
  EXPECT_EQ(whatOf<std::invalid_argument>([] { IPA::dividePercentString("abc", "1e39"); }), "stof");
  EXPECT_EQ(whatOf<std::out_of_range>([] { IPA::dividePercentString("1e39", "abc"); }), "stof");
}

}  // namespace
