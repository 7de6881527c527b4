// What only shows with two inputs side by side: memories of the rtd file that find no SLR in the
// platform, and resource reports for compute units the rtd file does not have.
#ifndef CHECKS_CROSSFILECHECK_H_
#define CHECKS_CROSSFILECHECK_H_

#include <string>

#include "checks/CheckReport.h"

namespace qvcheck {

// Each function reads its files again, quietly: a file that does not read or is not JSON has its
// own finding already, and gives no cross-file finding.
class CrossFileCheck {
 public:
  // QV-RTD-SPTAG-NO-SLR, warning: a memory whose m_spTag is none of the tags <spTag>[<index>] that
  // the platform's address segments give (rtd/RtdSystemDiagramVisitor.cpp, makeSlrTagCollection):
  // the import leaves its slr empty. Memories without an m_spTag are left alone.
  static void memorySlrs(std::string const& rtdFile, std::string const& platformFile,
                         CheckReport& report);

  // QV-UTIL-UNKNOWN-CU, warning: a report for a compute unit that the rtd file does not name
  // (<kernel>:<unit>); the session keeps it, but no compute unit of the diagram shows it.
  static void reportedComputeUnits(std::string const& rtdFile,
                                   std::string const& utilizationFile, CheckReport& report);
};

}  // namespace qvcheck

#endif  // CHECKS_CROSSFILECHECK_H_
