// Numbered lines on standard error, used by the hardware repository.
#ifndef SERVICE_LOG_H_
#define SERVICE_LOG_H_

#include <cstdint>
#include <sstream>
#include <string>

#include "service/Export.h"

// The level of a Log line. A level outside the table still works: it compares by number and
// prints its word as "UNKNOWN".
enum TLogLevel : std::int32_t {
  logINTERNAL = 0,
  logDEBUG = 1,
  logINFO = 2,
  logWARNING = 3,
  logCRITICAL_WARNING = 4,
  logERROR = 5,
};

// One line, built in a temporary and printed when it is destroyed:
//
//   Log(logERROR, 1001) << "cannot open " << path;
//
// prints "ERROR: [Morvane 83-1001] cannot open <path>" and a newline to standard error, in one
// fputs, if logERROR is at or above Log::reportingLevel; a line below the threshold is dropped.
class QV_EXPORT Log {
 public:
  // Starts the line with its prefix: "<WORD>: [<subsystemName> <subsystemID>-<number>] ".
  Log(TLogLevel level, int number);
  ~Log();

  Log(Log const&) = delete;
  Log& operator=(Log const&) = delete;

  template <class T>
  Log& operator<<(T const& value) {
    line_ << value;
    return *this;
  }
  std::ostringstream& stream() { return line_; }

  // "INTERNAL", "DEBUG", "INFO", "WARNING", "CRITICAL WARNING", "ERROR"; "UNKNOWN" otherwise.
  static std::string toString(TLogLevel level);

  // Process-wide settings for the host program; this library never sets them. Not guarded:
  // set them before lines are written from several threads.
  static std::int32_t reportingLevel;  // default logINFO
  static std::int32_t subsystemID;     // default 83
  static std::string subsystemName;    // default "Morvane"

 private:
  std::ostringstream line_;
  TLogLevel level_;
};

#endif  // SERVICE_LOG_H_
