// The table layout of the flow report: widths, borders, alignment, line order and the failure on
// a short column.
#include "report/ReportTable.h"

#include <gtest/gtest.h>

#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using IPA::ReportTable;
using Alignment = IPA::ReportTable::Alignment;

class ReportTableTest : public ::testing::Test {
 protected:
  static std::string textOf(ReportTable const& table) {
    std::ostringstream out;
    table.write(out);
    return out.str();
  }
};

TEST_F(ReportTableTest, TwoColumnTableBuiltByLines) {
  ReportTable table({"Site", "Value"});
  table.addRow({"one", "first cell"});
  table.addRow({"two", "second"});
  EXPECT_EQ(textOf(table),
            "+------+------------+\n"
            "| Site | Value      |\n"
            "+------+------------+\n"
            "| one  | first cell |\n"
            "| two  | second     |\n"
            "+------+------------+\n"
            "\n");
}

TEST_F(ReportTableTest, TwoColumnTableBuiltByColumnsIsTheSame) {
  ReportTable table;
  table.addColumn({"Site", "one", "two"}, Alignment::kLeft);
  table.addColumn({"Value", "first cell", "second"}, Alignment::kLeft);
  EXPECT_EQ(textOf(table),
            "+------+------------+\n"
            "| Site | Value      |\n"
            "+------+------------+\n"
            "| one  | first cell |\n"
            "| two  | second     |\n"
            "+------+------------+\n"
            "\n");
}

TEST_F(ReportTableTest, RightAlignedColumnsAlignTheirHeaderToo) {
  ReportTable table;
  table.addColumn({"Site Type", "LUT", "REG", "BRAM"}, Alignment::kLeft);
  table.addColumn({"SLR0", "12000", "20000", "18"}, Alignment::kRight);
  table.addColumn({"SLR1", "300", "410", "0"}, Alignment::kRight);
  table.addColumn({"SLR0 %", "1.33", "1.11", "1.38"}, Alignment::kRight);
  table.addColumn({"SLR1 %", "0.03", "0.02", "0.00"}, Alignment::kRight);
  EXPECT_EQ(textOf(table),
            "+-----------+-------+------+--------+--------+\n"
            "| Site Type |  SLR0 | SLR1 | SLR0 % | SLR1 % |\n"
            "+-----------+-------+------+--------+--------+\n"
            "| LUT       | 12000 |  300 |   1.33 |   0.03 |\n"
            "| REG       | 20000 |  410 |   1.11 |   0.02 |\n"
            "| BRAM      |    18 |    0 |   1.38 |   0.00 |\n"
            "+-----------+-------+------+--------+--------+\n"
            "\n");
}

TEST_F(ReportTableTest, OneColumnSharedByTwoTablesPrintsTheSameInBoth) {
  // One list of available amounts stands at the right of every SLR's table.
  std::vector<std::string> const siteTypes = {"Site Type", "LUT", "REG", "BRAM"};
  std::vector<std::string> const available = {"Available", "900000", "1800000", "1300"};

  ReportTable first;
  first.addColumn(siteTypes, Alignment::kLeft);
  first.addColumn({"kernel_a_1", "12000", "20000", "18"}, Alignment::kRight);
  first.addColumn({"kernel_a_2", "11000", "19000", "18"}, Alignment::kRight);
  first.addColumn(available, Alignment::kRight);
  ReportTable second;
  second.addColumn(siteTypes, Alignment::kLeft);
  second.addColumn({"kernel_a_1", "300", "410", "0"}, Alignment::kRight);
  second.addColumn(available, Alignment::kRight);

  EXPECT_EQ(textOf(first),
            "+-----------+------------+------------+-----------+\n"
            "| Site Type | kernel_a_1 | kernel_a_2 | Available |\n"
            "+-----------+------------+------------+-----------+\n"
            "| LUT       |      12000 |      11000 |    900000 |\n"
            "| REG       |      20000 |      19000 |   1800000 |\n"
            "| BRAM      |         18 |         18 |      1300 |\n"
            "+-----------+------------+------------+-----------+\n"
            "\n");
  EXPECT_EQ(textOf(second),
            "+-----------+------------+-----------+\n"
            "| Site Type | kernel_a_1 | Available |\n"
            "+-----------+------------+-----------+\n"
            "| LUT       |        300 |    900000 |\n"
            "| REG       |        410 |   1800000 |\n"
            "| BRAM      |          0 |      1300 |\n"
            "+-----------+------------+-----------+\n"
            "\n");
}

TEST_F(ReportTableTest, EmptyCellPrintsAsBlanksAtTheColumnWidth) {
  ReportTable table(
      {"Instance", "Kernel", "PLIO", "Annotated Arg", "Clock Port", "Compile (MHz)", "Link (MHz)"});
  table.addRow({"engine_1", "ai_engine", "in_a", "data_in", "clk", "312.50", "300.00"});
  table.addRow({"engine_1", "ai_engine", "in_b", "", "clk", "N/A", "300.00"});
  EXPECT_EQ(
      textOf(table),
      "+----------+-----------+------+---------------+------------+---------------+------------+\n"
      "| Instance | Kernel    | PLIO | Annotated Arg | Clock Port | Compile (MHz) | Link (MHz) |\n"
      "+----------+-----------+------+---------------+------------+---------------+------------+\n"
      "| engine_1 | ai_engine | in_a | data_in       | clk        | 312.50        | 300.00     |\n"
      "| engine_1 | ai_engine | in_b |               | clk        | N/A           | 300.00     |\n"
      "+----------+-----------+------+---------------+------------+---------------+------------+\n"
      "\n");
}

TEST_F(ReportTableTest, BorderAndTextLinesHaveTheSameLength) {
  ReportTable table({"A", "Longer header"});
  table.addRow({"a much longer cell", ""});
  std::istringstream lines(textOf(table));
  std::string line;
  std::vector<std::size_t> lengths;
  while (std::getline(lines, line)) {
    if (!line.empty()) lengths.push_back(line.size());
  }
  ASSERT_EQ(lengths.size(), 5u);
  for (auto length : lengths) EXPECT_EQ(length, lengths.front());
}

TEST_F(ReportTableTest, HeaderOnlyTableHasTwoBordersBelowTheHeader) {
  ReportTable table({"Instance", "Kernel"});
  EXPECT_FALSE(table.hasBody());
  EXPECT_EQ(textOf(table),
            "+----------+--------+\n"
            "| Instance | Kernel |\n"
            "+----------+--------+\n"
            "+----------+--------+\n"
            "\n");
}

TEST_F(ReportTableTest, TableWithoutColumnsWritesNothing) {
  ReportTable table;
  EXPECT_EQ(table.lineCount(), 0u);
  EXPECT_FALSE(table.hasBody());
  EXPECT_EQ(textOf(table), "");
}

TEST_F(ReportTableTest, EmptyHeaderGivesAColumnOfWidthZero) {
  ReportTable table({"", "B"});
  table.addRow({"", "b"});
  EXPECT_EQ(textOf(table),
            "+--+---+\n"
            "|  | B |\n"
            "+--+---+\n"
            "|  | b |\n"
            "+--+---+\n"
            "\n");
}

TEST_F(ReportTableTest, WidthsAndLineCountComeFromTheCells) {
  ReportTable table;
  table.addColumn({"Site Type", "LUT"}, Alignment::kLeft);
  table.addColumn({"SLR0", "1234567"}, Alignment::kRight);
  EXPECT_EQ(table.columnCount(), 2u);
  EXPECT_EQ(table.lineCount(), 2u);
  EXPECT_TRUE(table.hasBody());
  EXPECT_EQ(table.columnWidths(), (std::vector<int>{9, 7}));
}

TEST_F(ReportTableTest, AddRowWithAnotherNumberOfCellsThrowsAndChangesNothing) {
  ReportTable table({"A", "B"});
  try {
    table.addRow({"only one"});
    FAIL() << "nothing thrown";
  } catch (std::invalid_argument const& error) {
    EXPECT_STREQ(error.what(), "ReportTable::addRow: 1 cells for a table of 2 columns");
  }
  EXPECT_THROW(table.addRow({"a", "b", "c"}), std::invalid_argument);
  EXPECT_EQ(table.lineCount(), 1u);
  EXPECT_EQ(table.columnWidths(), (std::vector<int>{1, 1}));
}

TEST_F(ReportTableTest, ShortColumnThrowsOutOfRangeInTheMiddleOfTheTable) {
  // Six site types against columns of four entries: what two resource lists of different
  // lengths leave behind. The table stops at the first missing cell, and what was written
  // stays.
  ReportTable table;
  table.addColumn({"Site Type", "LUT", "REG", "BRAM", "LUT", "REG"}, Alignment::kLeft);
  table.addColumn({"SLR0", "12000", "20000", "18"}, Alignment::kRight);
  std::ostringstream out;
  try {
    table.write(out);
    FAIL() << "nothing thrown";
  } catch (std::out_of_range const& error) {
    EXPECT_STREQ(error.what(),
                 "vector::_M_range_check: __n (which is 4) >= this->size() (which is 4)");
  }
  EXPECT_EQ(out.str(),
            "+-----------+-------+\n"
            "| Site Type |  SLR0 |\n"
            "+-----------+-------+\n"
            "| LUT       | 12000 |\n"
            "| REG       | 20000 |\n"
            "| BRAM      |    18 |\n"
            "| LUT       |");
}

TEST_F(ReportTableTest, FirstColumnWithoutHeaderThrowsOnTheHeaderLine) {
  ReportTable table;
  table.addColumn({}, Alignment::kLeft);
  table.addColumn({"B"}, Alignment::kLeft);
  std::ostringstream out;
  try {
    table.write(out);
    FAIL() << "nothing thrown";
  } catch (std::out_of_range const& error) {
    EXPECT_STREQ(error.what(),
                 "vector::_M_range_check: __n (which is 0) >= this->size() (which is 0)");
  }
  EXPECT_EQ(out.str(),
            "+--+---+\n"
            "|");
}

TEST_F(ReportTableTest, CellsBeyondTheFirstColumnCountForTheWidthButAreNotPrinted) {
  ReportTable table;
  table.addColumn({"Site Type", "LUT"}, Alignment::kLeft);
  table.addColumn({"SLR0", "1", "123456789"}, Alignment::kRight);
  EXPECT_EQ(textOf(table),
            "+-----------+-----------+\n"
            "| Site Type |      SLR0 |\n"
            "+-----------+-----------+\n"
            "| LUT       |         1 |\n"
            "+-----------+-----------+\n"
            "\n");
}

}  // namespace
