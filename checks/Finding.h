// One thing a strict reader found in an input of a flow: where it is, what it is, and what the
// lenient import will make of it. The codes and their meaning are listed in docs/check.md.
#ifndef CHECKS_FINDING_H_
#define CHECKS_FINDING_H_

#include <string>

namespace qvcheck {

enum class Severity {
  kNote,     // worth knowing; nothing is lost
  kWarning,  // the import goes on but drops or misreads something
  kError,    // the import fails or refuses the input
};

// "note", "warning" or "error".
char const* severityName(Severity severity);

struct Finding {
  Severity severity = Severity::kNote;
  std::string file;     // as named on the command line or in the file that led to it
  int line = 0;         // from 1; 0 when the parser does not know it
  int column = 0;       // from 1; 0 when the parser does not know it
  std::string keyPath;  // e.g. "ip_layout.m_ip_data[3].m_name"; empty for the file as a whole
  std::string text;     // what is wrong, in a sentence without a final full stop
  std::string effect;   // what the import will do with it; may be empty
  std::string code;     // a stable code, QV-<FORMAT>-<WHAT>
};

}  // namespace qvcheck

#endif  // CHECKS_FINDING_H_
