// Reading one JSON input of a flow for a check: the file's text, then the document, with a
// finding for a file that cannot be read or is not JSON.
#ifndef CHECKS_JSONFILE_H_
#define CHECKS_JSONFILE_H_

#include <optional>
#include <string>

#include "checks/CheckReport.h"
#include "checks/JsonDocument.h"

namespace qvcheck {

class JsonFile {
 public:
  // The whole content of `path` into `text`; false when it cannot be read (a directory, no such
  // file, no permission), with the reason in `why`.
  static bool readText(std::string const& path, std::string& text, std::string& why);

  // readText, and for a file that cannot be read a finding "cannot be read: <why>" of
  // `severity` with `effect` and `code` in `report`.
  static bool readOrReport(std::string const& path, std::string& text, Severity severity,
                           std::string const& effect, std::string const& code,
                           CheckReport& report);

  // Parses `text`, the content of `path`. For text that is not JSON, adds an error (or a
  // warning with `notJsonSeverity`) with the code QV-<format>-NOT-JSON, or QV-<format>-TOO-DEEP
  // for nesting the library refuses, and returns nothing; `effect` says what the import does
  // then, `tooDeepEffect` (when not empty) what it does with nesting that deep.
  static std::optional<JsonDocument> parse(std::string const& path, std::string const& text,
                                           std::string const& format, std::string const& effect,
                                           CheckReport& report,
                                           Severity notJsonSeverity = Severity::kError,
                                           std::string const& tooDeepEffect = std::string());
};

}  // namespace qvcheck

#endif  // CHECKS_JSONFILE_H_
