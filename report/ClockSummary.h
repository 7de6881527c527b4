// Section 5 of the flow report: compile time against link time clock frequencies.
#ifndef REPORT_CLOCKSUMMARY_H_
#define REPORT_CLOCKSUMMARY_H_

#include <fstream>
#include <ostream>

#include "proto/system_diagram.pb.h"

namespace IPA {

// Section 5 compares, for each clock port of each compute unit, the frequency its kernel was
// compiled for (the kernel's `clock_refs`) with the frequency it was linked at (the compute
// unit's own `clock_refs`). Compute units of the kernel "ai_engine" go to the table "AIE", all
// others to the table "PL". Rows keep the order of the user regions, their compute units and
// their clocks; nothing is sorted. Every cell, header included, is left-aligned.
//
// A clock whose linked frequency is 0 is not known and gets no row. A compile frequency that
// can't be found, or is 0, prints as "N/A".
//
// Nothing is caught and `binary` is only read. Each function has an std::ostream overload, which
// the std::ofstream one forwards to.

// Writes the title "5. Clock Summary" (underlined, then an empty line), then the AIE table and
// then the PL table, each only when it has a row. Without any row the title stands alone.
void writeClockSummary(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                       std::ofstream& out);
void writeClockSummary(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                       std::ostream& out);

// Writes the line "AIE" and a table with the columns Instance, Kernel, PLIO, Annotated Arg,
// Clock Port, Compile (MHz) and Link (MHz), or nothing without a row. Each clock gets one row
// per name of its ":"-joined `plio` (empty names included). A PLIO name is matched to the
// kernel's clock `name` ignoring case; that clock gives the compile frequency and the annotated
// argument, which stays empty without a match.
void writeAieClockSummary(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                          std::ofstream& out);
void writeAieClockSummary(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                          std::ostream& out);

// Writes the line "PL" and a table with the columns Instance, Kernel, Clock Port, Compile (MHz)
// and Link (MHz), or nothing without a row. The compile frequency is that of the first kernel
// clock whose `name` equals the port's exactly, case included.
void writePlClockSummary(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                         std::ofstream& out);
void writePlClockSummary(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                         std::ostream& out);

}  // namespace IPA

#endif  // REPORT_CLOCKSUMMARY_H_
