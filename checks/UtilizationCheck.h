// The strict reader of actual resources documents as UtilizationDuringBrenloRun reads them
// (service/SystemDiagramHandler.cpp; docs/formats.md, "Actual resources documents").
#ifndef CHECKS_UTILIZATIONCHECK_H_
#define CHECKS_UTILIZATIONCHECK_H_

#include <string>

#include "checks/CheckReport.h"

namespace qvcheck {

// Findings with the codes QV-UTIL-... of docs/check.md:
//
//   error    the file cannot be read or is not JSON; a report reached with an empty design
//            state, kernel name or compute unit name (the request is refused there: a name that
//            stands after what it names counts as not given)
//   warning  a design state that is none of the three words (stored as DESIGN_STATE_UNSET); a
//            compute unit name left over from the compute unit before (the counts land under
//            it); a count under a key that is none of LUT, REG, BRAM, URAM, DSP; a count that
//            is no whole number (stored as it stands)
//   note     one of the five counts missing (its field stays empty)
class UtilizationCheck {
 public:
  static void checkFile(std::string const& path, CheckReport& report);
  static void checkText(std::string const& path, std::string const& text, CheckReport& report);
};

}  // namespace qvcheck

#endif  // CHECKS_UTILIZATIONCHECK_H_
