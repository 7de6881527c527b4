#include "checks/UtilizationCheck.h"

#include <optional>
#include <utility>
#include <vector>

#include "checks/JsonDocument.h"
#include "checks/JsonFile.h"
#include "checks/LenientNumbers.h"
#include "checks/NearestKey.h"

namespace qvcheck {

namespace {

std::vector<std::string> const kStates = {"Synthesized", "Fully Placed", "Routed"};
std::vector<std::string> const kCounts = {"LUT", "REG", "BRAM", "URAM", "DSP"};

class Checker {
 public:
  Checker(std::string path, CheckReport& report) : path_(std::move(path)), report_(report) {}

  // Walks the document as the request does: in file order, keeping the last design state,
  // kernel name and compute unit name it passed, and making a report at each
  // "actual_resources" from those three.
  void check(JsonValue const& root) {
    for (JsonMember const& top : root.members) {
      if (top.key == "design_state") {
        state_ = top.value.text;
        checkState(top);
        continue;
      }
      if (top.key != "kernels") continue;
      for (std::size_t k = 0; k < top.value.members.size(); ++k) {
        if (!kernel(top.value.members[k].value, indexPath("kernels", k))) return;
      }
    }
  }

 private:
  void add(Severity severity, int line, int column, std::string keyPath, std::string text,
           std::string effect, char const* code) {
    Finding finding;
    finding.severity = severity;
    finding.file = path_;
    finding.line = line;
    finding.column = column;
    finding.keyPath = std::move(keyPath);
    finding.text = std::move(text);
    finding.effect = std::move(effect);
    finding.code = code;
    report_.add(std::move(finding));
  }

  void checkState(JsonMember const& member) {
    for (std::string const& known : kStates) {
      if (known == member.value.text) return;
    }
    add(Severity::kWarning, member.value.line, member.value.column, "design_state",
        member.value.describe() + " is none of Synthesized, Fully Placed, Routed" +
            didYouMean(member.value.text, kStates),
        "the import stores the reports as DESIGN_STATE_UNSET", "QV-UTIL-STATE");
  }

  // False when the request stops in this kernel.
  bool kernel(JsonValue const& kernel, std::string const& kernelPath) {
    for (JsonMember const& member : kernel.members) {
      if (member.key == "name") {
        kernelName_ = member.value.text;
        continue;
      }
      if (member.key != "compute_units") continue;
      for (std::size_t c = 0; c < member.value.members.size(); ++c) {
        std::string const unitPath = indexPath(kernelPath + ".compute_units", c);
        if (!computeUnit(member.value.members[c].value, unitPath)) return false;
      }
    }
    return true;
  }

  bool computeUnit(JsonValue const& unit, std::string const& unitPath) {
    bool namedHere = false;
    for (JsonMember const& member : unit.members) {
      if (member.key == "cu_name") {
        unitName_ = member.value.text;
        namedHere = true;
        continue;
      }
      if (member.key != "actual_resources") continue;
      if (!report(member, unitPath, namedHere)) return false;
    }
    return true;
  }

  bool report(JsonMember const& resources, std::string const& unitPath, bool namedHere) {
    std::string const path = unitPath + ".actual_resources";
    char const* missing = state_.empty()        ? "design_state"
                          : kernelName_.empty() ? "the kernel's name"
                          : unitName_.empty()   ? "cu_name"
                                                : nullptr;
    if (missing != nullptr) {
      add(Severity::kError, resources.line, resources.column, path,
          std::string("the report is reached with an empty ") + missing +
              " (each name must stand before what it names: design_state before kernels, name "
              "before compute_units, cu_name before actual_resources)",
          "the request is refused here; nothing after it is read", "QV-UTIL-EMPTY-NAME");
      return false;
    }
    if (!namedHere) {
      add(Severity::kWarning, resources.line, resources.column, path,
          "no cu_name before it in this compute unit", "the import files the counts under the "
          "compute unit before, " + unitName_, "QV-UTIL-STALE-NAME");
    }
    for (JsonMember const& count : resources.value.members) {
      bool known = false;
      for (std::string const& each : kCounts) known = known || each == count.key;
      if (!known) {
        add(Severity::kWarning, count.line, count.column, path,
            count.key + " is none of LUT, REG, BRAM, URAM, DSP" + didYouMean(count.key, kCounts),
            "the import drops the count", "QV-UTIL-UNKNOWN-KEY");
        continue;
      }
      if (LenientNumbers::isDecimal(count.value.text)) continue;
      add(Severity::kWarning, count.value.line, count.value.column, joinPath(path, count.key),
          count.value.describe() + " is not a whole number", "the import stores it as it stands",
          "QV-UTIL-COUNT-NOT-NUMBER");
    }
    for (std::string const& each : kCounts) {
      if (resources.value.find(each) != nullptr) continue;
      add(Severity::kNote, resources.line, resources.column, path, each + " is not given",
          "the import leaves its field empty", "QV-UTIL-COUNT-MISSING");
    }
    return true;
  }

  std::string path_;
  CheckReport& report_;
  std::string state_;
  std::string kernelName_;
  std::string unitName_;
};

}  // namespace

void UtilizationCheck::checkFile(std::string const& path, CheckReport& report) {
  report.addFile(path);
  std::string text;
  if (!JsonFile::readOrReport(path, text, Severity::kError, "the request fails",
                              "QV-UTIL-UNREADABLE", report)) {
    return;
  }
  checkText(path, text, report);
}

void UtilizationCheck::checkText(std::string const& path, std::string const& text,
                                 CheckReport& report) {
  std::optional<JsonDocument> const document =
      JsonFile::parse(path, text, "UTIL", "the request fails", report);
  if (!document) return;
  Checker(path, report).check(document->root());
}

}  // namespace qvcheck
