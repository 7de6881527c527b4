// The strict reader of run-time data files: what the import (rtd/RtdTreeBuilder and
// rtd/RtdSystemDiagramVisitor) will refuse, drop or misread in one, with its place.
#ifndef CHECKS_RTDCHECK_H_
#define CHECKS_RTDCHECK_H_

#include <string>

#include "checks/CheckReport.h"
#include "checks/JsonDocument.h"

namespace qvcheck {

// Findings, in the order of the file, with the codes QV-RTD-... of docs/check.md:
//
//   error    the file cannot be read or is not JSON; a schema version member or a section's
//            m_count is missing, or a list behind a count other than zero; a version the
//            import does not support
//   warning  a count of zero, or one that is no number, in front of entries (the section is
//            dropped); a count that differs from the list's length; a key that no entry of the
//            list has; an entry that is not an object; an IP_KERNEL without a colon in its
//            name; a connection to a memory or an IP past the end of its list, or with an
//            index that is no number; a stream with one half or more than two
//   note     a key given twice in one entry (the last one counts)
//
// The rtd file after implementation goes through the same reader, but its update
// (rtd/RtdTreeSlrBaseAddressVisitor) reads only memories and IP entries and checks no version:
// for it a version the import would refuse is a note, and connections are not looked at.
class RtdCheck {
 public:
  enum class Use {
    kImport,  // MakeInitialSystemDiagram
    kUpdate,  // UpdateSystemDiagramAfterBrenloRuns
  };

  // Reads `path` and adds what it finds to `report`; never throws for a bad file.
  static void checkFile(std::string const& path, CheckReport& report, Use use = Use::kImport);
  // The same for text already read; findings name `path`.
  static void checkText(std::string const& path, std::string const& text, CheckReport& report,
                        Use use = Use::kImport);
};

}  // namespace qvcheck

#endif  // CHECKS_RTDCHECK_H_
