// The frame of the flow report: its heading, its section titles and section 1.
#ifndef REPORT_FLOWREPORTFRAME_H_
#define REPORT_FLOWREPORTFRAME_H_

#include <ostream>
#include <string>

#include "proto/system_diagram.pb.h"

namespace IPA {

// The flow report is plain text for the person who reads a build's output. Apart from the three
// values of the heading, which the host supplies, it must come out byte for byte the same from
// the same diagram, so every line here ends with std::endl (one line feed) and nothing depends
// on locale or time. None of these functions catches anything: an exception leaves the report
// with what was written before it.

// Writes the heading, five lines and an empty line:
//
//   ====================================================================   (68 "=")
//   Version:    <HUTEnv::getFullProductStr()>
//   Copyright:  <HUTEnv::getCopyRight()>
//   Created:    <HUTEnv::getTimeStamp()>
//   ====================================================================
//
// Tests and reproducible builds fix the time stamp with HUTEnv::setFixedTimeStamp.
void writeHeading(std::ostream& out);

// Writes `title`, a line of as many "=" as `title` has bytes, and an empty line.
void writeSectionTitle(std::ostream& out, std::string const& title);

// Writes section 1, "1. Kernel and compute unit information": its title, then for each compute
// unit of each user region, in order,
//
//   Compute Unit: <name>
//   Kernel: <kernel_name>
//   Base Address: <base_address>        only when base_address isn't empty
//   Clock Pin: <clock ref names>        "Clock Pins: " from two names on, joined by ", "
//   Reset Pin: <reset pins>             "Reset Pins: " from two pins on, joined by ", "
//   (empty line)
//
// A compute unit without clocks or resets keeps the label with its trailing blank. Every clock
// reference counts, also one whose frequency is 0. A `binary` without compute units gives the
// title alone.
void writeKernelAndComputeUnitSection(
    ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary, std::ostream& out);

}  // namespace IPA

#endif  // REPORT_FLOWREPORTFRAME_H_
