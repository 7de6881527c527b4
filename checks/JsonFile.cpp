#include "checks/JsonFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <iterator>
#include <sstream>
#include <utility>

namespace qvcheck {

bool JsonFile::readOrReport(std::string const& path, std::string& text, Severity severity,
                            std::string const& effect, std::string const& code,
                            CheckReport& report) {
  std::string why;
  if (readText(path, text, why)) return true;
  Finding finding;
  finding.severity = severity;
  finding.file = path;
  finding.text = "cannot be read: " + why;
  finding.effect = effect;
  finding.code = code;
  report.add(std::move(finding));
  return false;
}

bool JsonFile::readText(std::string const& path, std::string& text, std::string& why) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) {
    why = std::strerror(errno);
    return false;
  }
  if (S_ISDIR(status.st_mode)) {
    why = "it is a directory";
    return false;
  }
  std::ifstream in(path, std::ios::binary);
  if (!in) {
    why = std::strerror(errno);
    return false;
  }
  std::ostringstream content;
  content << in.rdbuf();
  text = content.str();
  return true;
}

std::optional<JsonDocument> JsonFile::parse(std::string const& path, std::string const& text,
                                            std::string const& format, std::string const& effect,
                                            CheckReport& report, Severity notJsonSeverity,
                                            std::string const& tooDeepEffect) {
  JsonDocument document = JsonDocument::parse(text);
  if (document.ok()) return document;
  Finding finding;
  finding.severity = notJsonSeverity;
  finding.file = path;
  finding.line = document.errorLine();
  finding.column = document.errorColumn();
  finding.text = document.tooDeep() ? document.errorText()
                                    : "not valid JSON: " + document.errorText();
  finding.effect = document.tooDeep() && !tooDeepEffect.empty() ? tooDeepEffect : effect;
  finding.code = "QV-" + format + (document.tooDeep() ? "-TOO-DEEP" : "-NOT-JSON");
  report.add(std::move(finding));
  return std::nullopt;
}

}  // namespace qvcheck
