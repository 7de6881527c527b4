// Sections 6 and 7 of the flow report: the use of each SLR by each compute unit.
#ifndef REPORT_UTILIZATIONTABLES_H_
#define REPORT_UTILIZATIONTABLES_H_

#include <fstream>
#include <ostream>

#include "proto/system_diagram.pb.h"

namespace IPA {

// Both sections read the `slr_resources` of the compute units, in the order of the user regions,
// their compute units and their entries; an entry without `utilization` rows is passed over.
// Amounts are printed as stored. The first column (the site types) is left-aligned, all other
// columns, headers included, are right-aligned.
//
// The rows are labelled by the site types of the first entry with that many rows: a later entry
// with as many rows adds no names, and its own names are not compared. An entry with another
// number of rows adds its names to the list, which then outgrows the columns, and writing the
// table throws std::out_of_range (the text of std::vector::at) part way through a line. What was
// written before stays written. Nothing is caught, and `binary` is only read.
//
// Each function has an std::ostream overload, which the std::ofstream one forwards to.

// Section 6: for each compute unit with rows, "Compute Unit: <name>" and a table with the site
// types, one column of used amounts per entry (headed by its `slr`) and one column of
// percentages of the available amounts per entry (headed by `slr` and " %"). The title
// "6. SLR Utilization per Compute Unit" comes once, before the first table, and not at all
// without one. The site type names start over in each user region.
//
// Throws std::invalid_argument "stof" (or std::out_of_range "stof") when a `used` or `available`
// text is no number (or is beyond float), before anything of that compute unit is written.
void writeSlrUtilizationPerCu(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                              std::ofstream& out);
void writeSlrUtilizationPerCu(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                              std::ostream& out);

// Section 7: the title "7. Compute Unit Utilization per SLR", then for each SLR in plain string
// order of its name, the name on a line of its own and a table with the site types, one column
// of used amounts per entry of a compute unit for that SLR (headed by the compute unit's name,
// in the order found), and the column "Available". Nothing at all without any entry with rows.
//
// The site types and the available amounts are taken once for the whole section, from the first
// entry with rows, and every SLR's table shows those same amounts.
void writeCuUtilizationPerSlr(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                              std::ofstream& out);
void writeCuUtilizationPerSlr(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                              std::ostream& out);

}  // namespace IPA

#endif  // REPORT_UTILIZATIONTABLES_H_
