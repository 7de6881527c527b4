#include "report/ReportTable.h"

#include <stdexcept>
#include <utility>

#include "report/ReportText.h"

namespace IPA {

ReportTable::ReportTable(std::vector<std::string> const& header, Alignment alignment) {
  for (auto const& title : header) addColumn({title}, alignment);
}

void ReportTable::addColumn(std::vector<std::string> cells, Alignment alignment) {
  columns.push_back(Column{std::move(cells), alignment});
}

void ReportTable::addRow(std::vector<std::string> const& cells) {
  if (cells.size() != columns.size()) {
    throw std::invalid_argument("ReportTable::addRow: " + std::to_string(cells.size()) +
                                " cells for a table of " + std::to_string(columns.size()) +
                                " columns");
  }
  for (std::size_t i = 0; i < cells.size(); ++i) columns[i].cells.push_back(cells[i]);
}

std::size_t ReportTable::lineCount() const {
  if (columns.empty()) return 0;
  return columns.front().cells.size();
}

std::vector<int> ReportTable::columnWidths() const {
  std::vector<int> widths;
  widths.reserve(columns.size());
  for (auto const& column : columns) widths.push_back(getMaxSizeString(column.cells));
  return widths;
}

void ReportTable::write(std::ostream& out) const {
  if (columns.empty()) return;
  std::vector<int> const widths = columnWidths();
  std::size_t const lines = lineCount();
  writeBorder(out, widths);
  // The header line is fetched like any other, so a first column without even a header fails
  // here rather than printing an empty frame.
  writeLine(out, widths, 0);
  writeBorder(out, widths);
  for (std::size_t line = 1; line < lines; ++line) writeLine(out, widths, line);
  writeBorder(out, widths);
  out << std::endl;
}

void ReportTable::writeBorder(std::ostream& out, std::vector<int> const& widths) const {
  for (int width : widths) out << "+" << borderString(width + 2);
  out << "+" << std::endl;
}

void ReportTable::writeLine(std::ostream& out, std::vector<int> const& widths,
                            std::size_t line) const {
  out << "|";
  for (std::size_t i = 0; i < columns.size(); ++i) {
    Column const& column = columns[i];
    std::string const& cell = column.cells.at(line);
    out << " "
        << (column.alignment == Alignment::kLeft ? leftAlignString(cell, widths[i])
                                                 : rightAlignString(cell, widths[i]))
        << " |";
  }
  out << std::endl;
}

}  // namespace IPA
