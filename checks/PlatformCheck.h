// The strict reader of platform descriptions: every key the import (the platform half of
// rtd/RtdSystemDiagramVisitor) will miss, with the message it would send, and the values it
// will read otherwise than they are written.
#ifndef CHECKS_PLATFORMCHECK_H_
#define CHECKS_PLATFORMCHECK_H_

#include <string>
#include <vector>

#include "checks/CheckReport.h"

namespace qvcheck {

// Findings, with the codes QV-PLATFORM-... of docs/check.md:
//
//   error    the platform is not found, cannot be read or is not JSON; the first device's core
//            has no name or type
//   warning  an optional key is missing (its message id is named); a system clock without a
//            name, or whose id, frequency or period does not read as a number, or whose status
//            is no known word; a resource record whose word is none of the five; a design intent
//            whose value is no boolean; an address segment that is passed over
//   note     a clock name given twice (the later record counts)
class PlatformCheck {
 public:
  // The file the platform service would take for `platform` with `searchPath` (docs/formats.md,
  // "Finding a platform"), or "" when there is none; `tried` gets the candidates in order.
  static std::string locate(std::string const& platform,
                            std::vector<std::string> const& searchPath,
                            std::vector<std::string>& tried);

  // Locates `platform` and checks the file; never throws for a bad file.
  static void checkPlatform(std::string const& platform,
                            std::vector<std::string> const& searchPath, CheckReport& report);
  // The same for a file's text; findings name `path`.
  static void checkText(std::string const& path, std::string const& text, CheckReport& report);
};

}  // namespace qvcheck

#endif  // CHECKS_PLATFORMCHECK_H_
