// Sections 2, 3 and 4 of the flow report: interface, clock and reset connections.
#ifndef REPORT_CONNECTIONSECTIONS_H_
#define REPORT_CONNECTIONSECTIONS_H_

#include <ostream>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Writes "2. Interface Connections", "3. Clock Connections" and "4. Reset Connections", each
// title through writeSectionTitle, from the `connectivity` lists of all user regions of `binary`,
// taken in order. The flow report calls this between section 1 and section 5.
//
// `binary` is the diagram's own qrxBin section as writeFlowReport passes it; `diagram` answers
// the clock lookups, which read its stored tree and change nothing: getQsaClockFrequencies
// itself, and the answers of getComputeUnitClockInfo and getComputeUnitClockPortName from an
// index of the tree's compute units made once per call, so that the time grows with the number
// of connections and not with its product with the number of compute units. Both are only
// borrowed for the call, and the tree must not change during it.
//
// A connection is reported by the `type` of its source: "ip_reset" in section 4, "bd_clock" and
// "ip_clock" in section 3, "ip" in section 2, and "compute_unit" in section 2 when the
// destination is a "compute_unit" or an "ip". Every other connection, memory ones above all, is
// left out. A pin is written as "<instance>/<pin>".
//
// Section 2 writes, in this order and each only when it holds a connection, the groups
// "Compute Unit to Compute Unit", "IP to Compute Unit" and "Compute Unit to IP", each underlined
// with "-" to its length and followed by its blocks:
//
//   Source Pin: <source pin>
//   Destination Pin: <destination pin>
//   (empty line)
//
// Compute unit to compute unit connections print only once all four instance and pin names are
// known, and only once per such quadruple; "ip" to "ip" (or to anything other than a compute
// unit) is not printed.
//
// Section 3 writes per clock connection
//
//   Compute Unit: <destination instance>           for a "compute_unit" destination, then
//   Clock ID: <clock_id>                           only for a clock id other than "" and
//   Platform Clock Frequency: <f> MHz              "not_specified", and each frequency line
//   Requested Kernel Clock Frequency: <f> MHz      only when it has a value (the compute
//   Achieved Kernel Clock Frequency: <f> MHz       unit's own, else the platform clock's)
//   Clock Instance: <destination instance>         instead, for an "ip_clock" destination
//   Source Port: <source pin>                      "Source Pin: " unless the source is a
//   Destination Pin: <destination pin>             "bd_clock"
//   (empty line)
//
// Section 4 writes per reset connection
//
//   Compute Unit: <destination instance>
//   Source Pin: <source pin>
//   Destination Pin: <destination pin>
//   Associated Clock Pin: <instance>/<clock pin>   only when the unit has a clocked pin
//   (empty line)
//
// Catches nothing. A clock id that is no number throws std::invalid_argument "stoi" (or
// std::out_of_range "stoi") from getQsaClockFrequencies when the platform has any clock; `out`
// then keeps everything written before, up to and including that connection's
// "Compute Unit: " line.
void writeConnectionSections(ProfileAnalyzerSystemDiagram const& diagram,
                             ProfileAnalyzerSystemDiagramSerializable::qrxBin const& binary,
                             std::ostream& out);

}  // namespace IPA

#endif  // REPORT_CONNECTIONSECTIONS_H_
