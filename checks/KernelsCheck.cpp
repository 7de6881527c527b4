#include "checks/KernelsCheck.h"

#include <sys/stat.h>

#include <cctype>
#include <fstream>
#include <utility>
#include <vector>

#include "checks/KernelFilesCheck.h"

namespace qvcheck {

namespace {

bool exists(std::string const& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0;
}

bool isDirectory(std::string const& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

bool isRegularFile(std::string const& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

std::string trimmed(std::string const& text) {
  std::size_t begin = 0, end = text.size();
  while (begin < end && std::isspace(static_cast<unsigned char>(text[begin]))) ++begin;
  while (end > begin && std::isspace(static_cast<unsigned char>(text[end - 1]))) --end;
  return text.substr(begin, end - begin);
}

std::vector<std::string> fieldsOf(std::string const& line) {
  std::vector<std::string> fields;
  if (line.empty()) return fields;
  std::string::size_type start = 0;
  while (true) {
    auto const end = line.find(',', start);
    fields.push_back(trimmed(line.substr(start, end == std::string::npos ? end : end - start)));
    if (end == std::string::npos) return fields;
    start = end + 1;
  }
}

// A directory <root>/int/o/<name>/<name> leads to the system compiler database
// <root>/sys_link/_sysl/.cdb/qd_ip_db.xml (docs/formats.md, "From the system compiler
// database"); the database file, or "" when the directory has another form.
std::string databaseFor(std::string const& directory, std::string const& name) {
  std::string const tail = "/int/o/" + name + "/" + name;
  if (name.empty() || directory.size() < tail.size() ||
      directory.compare(directory.size() - tail.size(), tail.size(), tail) != 0) {
    return std::string();
  }
  std::string const root = directory.substr(0, directory.size() - tail.size());
  return (root.empty() ? std::string() : root + "/") + "sys_link/_sysl/.cdb/qd_ip_db.xml";
}

class Checker {
 public:
  Checker(std::string path, CheckReport& report) : path_(std::move(path)), report_(report) {}

  void add(Severity severity, int line, std::string keyPath, std::string text,
           std::string effect, char const* code) {
    Finding finding;
    finding.severity = severity;
    finding.file = path_;
    finding.line = line;
    finding.keyPath = std::move(keyPath);
    finding.text = std::move(text);
    finding.effect = std::move(effect);
    finding.code = code;
    report_.add(std::move(finding));
  }

  void kernel(int line, std::vector<std::string> const& fields) {
    std::string const& name = fields[0];
    std::string const where = name.empty() ? "kernel" : "kernel " + name;
    if (name.empty()) {
      add(Severity::kWarning, line, where, "the kernel's name is empty",
          "the import makes a kernel with an empty name", "QV-KERNELS-EMPTY-NAME");
    }
    if (fields.size() >= 2) {
      std::string const& type = fields[1];
      if (type != "hls" && type != "rtl" && type != "opencl" && type != "ps") {
        add(Severity::kWarning, line, where,
            "\"" + type + "\" is none of the types hls, rtl, opencl, ps",
            "the import sends CRITICAL WARNING 60-842 and keeps the kernel as hls",
            "QV-KERNELS-UNKNOWN-TYPE");
      }
    }
    std::string const directory = fields.size() >= 3 ? fields[2] : std::string();
    if (directory.empty()) {
      add(Severity::kWarning, line, where, "the kernel has no directory",
          "the import looks for its files at the root of the file system (/kernel.xml)",
          "QV-KERNELS-NO-DIRECTORY");
    } else if (!isDirectory(directory)) {
      add(Severity::kWarning, line, where,
          "the directory " + directory + " does not exist (relative directories are taken from "
          "the working directory)",
          "the import lists the kernel without ports, arguments, estimate or clock",
          "QV-KERNELS-DIRECTORY-MISSING");
      return;
    }
    std::string const kernelXml = directory + "/kernel.xml";
    if (exists(kernelXml)) {
      KernelFilesCheck::checkKernelXml(kernelXml, report_);
    } else {
      std::string const database = databaseFor(directory, name);
      if (database.empty() || !isRegularFile(database)) {
        add(Severity::kWarning, line, where,
            kernelXml + " is missing" +
                (database.empty() ? std::string(" and the directory leads to no system compiler "
                                                "database")
                                  : ", and so is the database " + database),
            "the import lists the kernel without ports or arguments",
            "QV-KERNELS-NO-KERNEL-XML");
      }
    }
    std::string const report = directory + "/" + name + ".design.xml";
    if (exists(report)) {
      KernelFilesCheck::checkDesignXml(report, report_);
    } else {
      add(Severity::kWarning, line, where, report + " is missing",
          "the import sends WARNING 82-214 and lists the kernel without an estimate",
          "QV-KERNELS-NO-REPORT");
    }
    std::string const clock = directory + "/kernel.json";
    if (exists(clock)) {
      KernelFilesCheck::checkKernelJson(clock, report_);
    } else {
      add(Severity::kWarning, line, where, clock + " is missing",
          "the import lists the kernel without a clock", "QV-KERNELS-NO-CLOCK");
    }
  }

 private:
  std::string path_;
  CheckReport& report_;
};

}  // namespace

void KernelsCheck::checkFile(std::string const& path, bool explicitlyNamed,
                             CheckReport& report) {
  std::ifstream in;
  if (isRegularFile(path)) in.open(path);
  if (!in.is_open()) {
    Finding finding;
    finding.severity = explicitlyNamed ? Severity::kWarning : Severity::kNote;
    finding.file = path;
    finding.text = isDirectory(path) ? "is a directory, not a kernels file"
                                     : "does not exist or cannot be read";
    finding.effect = "the import makes no kernels from it";
    finding.code = "QV-KERNELS-FILE-MISSING";
    report.add(std::move(finding));
    return;
  }
  report.addFile(path);
  Checker checker(path, report);
  std::string line;
  int number = 0;
  while (std::getline(in, line)) {
    ++number;
    std::string const text = trimmed(line);
    if (!text.empty() && text[0] == '#') continue;
    std::vector<std::string> const fields = fieldsOf(text);
    if (fields.empty()) continue;
    checker.kernel(number, fields);
  }
}

}  // namespace qvcheck
