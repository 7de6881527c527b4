// The strict reader of stored system diagrams (the JSON that WriteSystemDiagram writes and
// ReadSystemDiagram reads back; docs/formats.md, "The stored system diagram").
#ifndef CHECKS_STOREDDIAGRAMCHECK_H_
#define CHECKS_STOREDDIAGRAMCHECK_H_

#include <string>

#include "checks/CheckReport.h"

namespace qvcheck {

// The library's reader refuses a whole file for one key the schema does not know, so every
// finding here is an error, with the codes QV-DIAGRAM-... of docs/check.md: not JSON; a key that
// is no field of its message (with the nearest field); an enumeration name that its enumeration
// does not have; and, for anything else the reader refuses (a value of the wrong type, say), the
// reader's own reason without a position.
class StoredDiagramCheck {
 public:
  static void checkFile(std::string const& path, CheckReport& report);
  static void checkText(std::string const& path, std::string const& text, CheckReport& report);
};

}  // namespace qvcheck

#endif  // CHECKS_STOREDDIAGRAMCHECK_H_
