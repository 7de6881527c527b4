// A table of the flow report, kept as columns of text cells and written as framed text lines.
#ifndef REPORT_REPORTTABLE_H_
#define REPORT_REPORTTABLE_H_

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace IPA {

// Every table of the flow report has this layout:
//
//   +------+------------+
//   | Site | Value      |
//   +------+------------+
//   | one  | first cell |
//   | two  | second     |
//   +------+------------+
//   (one empty line)
//
// A column's width is the greatest length among all its cells, header included, so no cell is
// ever cut. A border line has "+" and width + 2 times "-" per column and one closing "+"; a text
// line has "|" and then, per column, a blank, the cell padded to the width and " |". Each column
// pads its cells (its header too) to the left or to the right.
//
// The table is held by columns, because that is how the report's sections collect it: the first
// column of a utilisation table is the list of site types, and one list of available amounts is
// shared, as the same column, by the tables of every SLR. Each column's first cell is its header.
// Tables that are easier to build line by line use addRow.
//
// The first column decides how many text lines are written, and every other cell is fetched by
// checked access. A column shorter than the first therefore makes write() throw
// std::out_of_range, with the text of std::vector::at
// ("vector::_M_range_check: __n (which is 4) >= this->size() (which is 4)"), in the middle of
// the table. This is deliberate: a section whose resource lists differ in length must stop the
// report there rather than print a table whose rows don't line up. Cells of a column beyond the
// first column's length count for its width, but are never printed.
class ReportTable {
 public:
  enum class Alignment { kLeft, kRight };

  // A table without columns; add them with addColumn.
  ReportTable() = default;
  // A table with one column per entry of `header`, that entry as its header, all aligned alike.
  explicit ReportTable(std::vector<std::string> const& header,
                       Alignment alignment = Alignment::kLeft);

  // Appends a column at the right. `cells` holds its header first, then one cell per text line.
  void addColumn(std::vector<std::string> cells, Alignment alignment);

  // Appends one cell to each column, in order. Throws std::invalid_argument, and changes
  // nothing, when the number of cells differs from the number of columns.
  void addRow(std::vector<std::string> const& cells);

  std::size_t columnCount() const { return columns.size(); }
  // The number of text lines write() prints, header included: the length of the first column,
  // or 0 without any column.
  std::size_t lineCount() const;
  // Whether there is a line below the header. The sections print nothing for a table without
  // one.
  bool hasBody() const { return lineCount() > 1; }
  // The width of each column, in column order.
  std::vector<int> columnWidths() const;

  // Writes border, header, border, the other lines, border and one empty line, each line ended
  // with std::endl. A table without columns writes nothing.
  //
  // Cells are written to `out` as they are fetched, so when a short column makes this throw
  // std::out_of_range, `out` holds the table up to the failing cell, with that line left
  // unfinished: what was written stays in the report.
  void write(std::ostream& out) const;

 private:
  struct Column {
    std::vector<std::string> cells;  // header first
    Alignment alignment;
  };

  void writeBorder(std::ostream& out, std::vector<int> const& widths) const;
  void writeLine(std::ostream& out, std::vector<int> const& widths, std::size_t line) const;

  std::vector<Column> columns;
};

}  // namespace IPA

#endif  // REPORT_REPORTTABLE_H_
