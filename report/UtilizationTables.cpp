#include "report/UtilizationTables.h"

#include <cstddef>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "report/FlowReportFrame.h"
#include "report/ReportTable.h"
#include "report/ReportText.h"

namespace IPA {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

namespace {

using Column = std::vector<std::string>;
using Alignment = ReportTable::Alignment;

// Adds to `column` the header `header` if it is empty, and then, for each row of `entry`, the
// text that `cellOf` gives, unless the column already has one cell per row plus its header.
//
// This is the only length check the sections make, and it compares lengths only: the first
// entry with n rows names the rows for every later entry with n rows. An entry with another
// number of rows keeps appending, so the column outgrows the others and the table fails when
// it is written, rather than printing rows that don't line up.
template <class CellOf>
void fillSharedColumn(Column& column, char const* header, pb::slrResources const& entry,
                      CellOf cellOf) {
  std::size_t const complete = static_cast<std::size_t>(entry.utilization_size()) + 1;
  if (column.empty()) column.push_back(header);
  for (auto const& row : entry.utilization()) {
    if (column.size() != complete) column.push_back(cellOf(row));
  }
}

void fillSiteTypes(Column& siteTypes, pb::slrResources const& entry) {
  fillSharedColumn(siteTypes, "Site Type", entry,
                   [](pb::resourceUtilization const& row) { return row.resource(); });
}

}  // namespace

void writeSlrUtilizationPerCu(pb::qrxBin const& binary, std::ofstream& out) {
  writeSlrUtilizationPerCu(binary, static_cast<std::ostream&>(out));
}

void writeSlrUtilizationPerCu(pb::qrxBin const& binary, std::ostream& out) {
  bool titleWritten = false;
  for (auto const& region : binary.user_regions()) {
    Column siteTypes;  // starts over in each user region
    for (auto const& unit : region.compute_units()) {
      std::vector<Column> usedColumns;
      std::vector<Column> percentColumns;
      for (auto const& entry : unit.slr_resources()) {
        if (entry.utilization().empty()) continue;
        Column used{entry.slr()};
        Column percent{entry.slr() + " %"};
        fillSiteTypes(siteTypes, entry);
        for (auto const& row : entry.utilization()) {
          used.push_back(row.used());
          percent.push_back(dividePercentString(row.used(), row.available()));
        }
        usedColumns.push_back(std::move(used));
        percentColumns.push_back(std::move(percent));
      }
      if (usedColumns.empty()) continue;

      ReportTable table;
      table.addColumn(siteTypes, Alignment::kLeft);
      for (auto& column : usedColumns) table.addColumn(std::move(column), Alignment::kRight);
      for (auto& column : percentColumns) table.addColumn(std::move(column), Alignment::kRight);

      if (!titleWritten) {
        writeSectionTitle(out, "6. SLR Utilization per Compute Unit");
        titleWritten = true;
      }
      out << "Compute Unit: " << unit.name() << std::endl;
      table.write(out);
    }
  }
}

void writeCuUtilizationPerSlr(pb::qrxBin const& binary, std::ofstream& out) {
  writeCuUtilizationPerSlr(binary, static_cast<std::ostream&>(out));
}

void writeCuUtilizationPerSlr(pb::qrxBin const& binary, std::ostream& out) {
  // All three are kept over the whole section, across user regions.
  Column siteTypes;
  // One column for every SLR: the amounts of the first entry of the report stand under each SLR.
  // Earlier reports showed it so, and readers compare against them.
  Column availableColumn;
  std::map<std::string, std::vector<Column>> columnsBySlr;

  for (auto const& region : binary.user_regions()) {
    for (auto const& unit : region.compute_units()) {
      for (auto const& entry : unit.slr_resources()) {
        if (entry.utilization().empty()) continue;
        Column used{unit.name()};
        fillSharedColumn(availableColumn, "Available", entry,
                         [](pb::resourceUtilization const& row) { return row.available(); });
        fillSiteTypes(siteTypes, entry);
        for (auto const& row : entry.utilization()) used.push_back(row.used());
        columnsBySlr[entry.slr()].push_back(std::move(used));
      }
    }
  }
  if (columnsBySlr.empty()) return;

  writeSectionTitle(out, "7. Compute Unit Utilization per SLR");
  for (auto const& [slr, columns] : columnsBySlr) {
    ReportTable table;
    table.addColumn(siteTypes, Alignment::kLeft);
    for (auto const& column : columns) table.addColumn(column, Alignment::kRight);
    table.addColumn(availableColumn, Alignment::kRight);
    out << slr << std::endl;
    table.write(out);
  }
}

}  // namespace IPA
