#include "checks/CheckReport.h"

#include <algorithm>
#include <cstdio>
#include <sstream>
#include <utility>

namespace qvcheck {

char const* severityName(Severity severity) {
  switch (severity) {
    case Severity::kError:
      return "error";
    case Severity::kWarning:
      return "warning";
    case Severity::kNote:
      break;
  }
  return "note";
}

namespace {

// A JSON string literal of `text`; bytes of 0x80 and above pass as they are, since every text
// here is UTF-8 from our own messages or from the inputs' keys.
std::string quoted(std::string const& text) {
  std::string out = "\"";
  for (unsigned char c : text) {
    switch (c) {
      case '"':
        out += "\\\"";
        break;
      case '\\':
        out += "\\\\";
        break;
      case '\n':
        out += "\\n";
        break;
      case '\t':
        out += "\\t";
        break;
      case '\r':
        out += "\\r";
        break;
      default:
        if (c < 0x20) {
          char escape[8];
          std::snprintf(escape, sizeof escape, "\\u%04x", c);
          out += escape;
        } else {
          out += static_cast<char>(c);
        }
    }
  }
  return out + "\"";
}

std::string plural(std::size_t n, char const* word) {
  return std::to_string(n) + " " + word + (n == 1 ? "" : "s");
}

}  // namespace

void CheckReport::add(Finding finding) { findings_.push_back(std::move(finding)); }

void CheckReport::addFile(std::string const& file) {
  if (std::find(files_.begin(), files_.end(), file) == files_.end()) files_.push_back(file);
}

std::size_t CheckReport::count(Severity severity) const {
  return static_cast<std::size_t>(
      std::count_if(findings_.begin(), findings_.end(),
                    [severity](Finding const& f) { return f.severity == severity; }));
}

std::string CheckReport::line(Finding const& finding) {
  std::ostringstream out;
  out << finding.file;
  if (finding.line > 0) {
    out << ':' << finding.line;
    if (finding.column > 0) out << ':' << finding.column;
  }
  out << ": " << severityName(finding.severity) << ": ";
  if (!finding.keyPath.empty()) out << finding.keyPath << ": ";
  out << finding.text;
  if (!finding.effect.empty()) out << "; " << finding.effect;
  out << " [" << finding.code << "]";
  return out.str();
}

void CheckReport::writeText(std::ostream& out) const {
  for (Finding const& finding : findings_) out << line(finding) << '\n';
  out << "check: " << plural(count(Severity::kError), "error") << ", "
      << plural(count(Severity::kWarning), "warning") << ", "
      << plural(count(Severity::kNote), "note") << " in " << plural(files_.size(), "file")
      << '\n';
}

void CheckReport::writeJson(std::ostream& out) const {
  out << "{\n \"findings\": [";
  bool first = true;
  for (Finding const& f : findings_) {
    out << (first ? "\n" : ",\n") << "  {\"severity\": " << quoted(severityName(f.severity))
        << ", \"code\": " << quoted(f.code) << ", \"file\": " << quoted(f.file)
        << ", \"line\": " << f.line << ", \"column\": " << f.column
        << ", \"key_path\": " << quoted(f.keyPath) << ", \"text\": " << quoted(f.text)
        << ", \"effect\": " << quoted(f.effect) << "}";
    first = false;
  }
  out << (first ? "],\n" : "\n ],\n");
  out << " \"files\": [";
  for (std::size_t i = 0; i < files_.size(); ++i) out << (i ? ", " : "") << quoted(files_[i]);
  out << "],\n \"summary\": {\"errors\": " << count(Severity::kError)
      << ", \"warnings\": " << count(Severity::kWarning)
      << ", \"notes\": " << count(Severity::kNote) << "}\n}\n";
}

int CheckReport::exitCode(bool strict) const {
  if (count(Severity::kError) > 0) return 1;
  if (strict && count(Severity::kWarning) > 0) return 1;
  return 0;
}

}  // namespace qvcheck
