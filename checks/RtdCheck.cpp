#include "checks/RtdCheck.h"

#include <cstddef>
#include <map>
#include <optional>
#include <utility>
#include <vector>

#include "checks/JsonFile.h"
#include "checks/LenientNumbers.h"
#include "checks/NearestKey.h"

namespace qvcheck {

namespace {

// "1 entry", "3 entries".
std::string entriesText(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " entry" : " entries");
}

// The keys of docs/formats.md, "The run-time data file"; the names are those of
// rtd/RtdMemData.cpp, rtd/RtdIpData.cpp and rtd/RtdConnection.cpp.
std::vector<std::string> const kMemDataKeys = {"m_type",         "m_used", "m_sizeKB",
                                               "m_base_address", "m_tag",  "m_spTag"};
std::vector<std::string> const kIpDataKeys = {
    "m_type",       "properties",     "m_int_enable", "m_interrupt_id",
    "m_ip_control", "m_base_address", "m_name",       "m_clocks"};
std::vector<std::string> const kConnectionKeys = {"arg_index", "arg_name", "mode",
                                                  "m_ip_layout_index", "mem_data_index"};

// The version this library's import supports (diagram/RtdSchemaVersion.cpp).
char const* const kSupportedMajor = "1";
char const* const kSupportedMinor = "0";
char const* const kSupportedPatch = "0";

class Checker {
 public:
  Checker(std::string path, CheckReport& report, RtdCheck::Use use)
      : path_(std::move(path)), report_(report), use_(use) {}

  void check(JsonValue const& root) {
    checkVersion(root);
    memories_ = section(root, "mem_topology", "m_mem_data", kMemDataKeys, "memory");
    ips_ = section(root, "ip_layout", "m_ip_data", kIpDataKeys, "IP entry");
    connections_ = section(root, "connectivity", "m_connection", kConnectionKeys, "connection");
    checkIps();
    // The update after implementation reads the connections' section (its count and list are
    // required) but does nothing with its entries.
    if (use_ == RtdCheck::Use::kImport) checkConnections();
  }

 private:
  // The entries of a section that the import reads; none when it drops the section.
  struct Section {
    bool read = false;
    std::string listPath;
    std::vector<JsonMember const*> entries;
  };

  void add(Severity severity, int line, int column, std::string keyPath, std::string text,
           std::string effect, std::string code) {
    Finding finding;
    finding.severity = severity;
    finding.file = path_;
    finding.line = line;
    finding.column = column;
    finding.keyPath = std::move(keyPath);
    finding.text = std::move(text);
    finding.effect = std::move(effect);
    finding.code = std::move(code);
    report_.add(std::move(finding));
  }

  void checkVersion(JsonValue const& root) {
    JsonMember const* const version = root.findMember("schema_version");
    // The reader asks for the patch level first, so that is what a file without a version
    // is refused for.
    std::map<std::string, std::string> found;
    bool complete = true;
    for (char const* part : {"patch", "minor", "major"}) {
      JsonMember const* const member =
          version == nullptr ? nullptr : version->value.findMember(part);
      if (member == nullptr) {
        int const line = version == nullptr ? root.line : version->line;
        int const column = version == nullptr ? root.column : version->column;
        add(Severity::kError, line, column, std::string("schema_version.") + part,
            "missing", "the import refuses the file", "QV-RTD-VERSION-MISSING");
        complete = false;
        continue;
      }
      found[part] = member->value.text;
    }
    if (!complete) return;
    // Compared as text, as the import compares them (diagram/SchemaVersion.cpp): a major
    // version that sorts before "1" is refused, the minor version and patch level must be "0".
    std::string const& major = found["major"];
    bool const supported = !(major < kSupportedMajor) && found["minor"] == kSupportedMinor &&
                           found["patch"] == kSupportedPatch;
    if (supported) return;
    bool const update = use_ == RtdCheck::Use::kUpdate;
    add(update ? Severity::kNote : Severity::kError, version->line, version->column,
        "schema_version",
        "version " + major + "." + found["minor"] + "." + found["patch"] +
            " is not supported; the import accepts major version 1 or one that sorts after it "
            "as text, with minor version 0 and patch level 0 (1.0.0, 2.0.0, ...)",
        update ? "the update after implementation checks no version and reads the file"
               : "the import refuses the file",
        "QV-RTD-VERSION-UNSUPPORTED");
  }

  Section section(JsonValue const& root, std::string const& name, std::string const& listKey,
                  std::vector<std::string> const& keys, char const* entryWord) {
    Section result;
    result.listPath = name + "." + listKey;
    JsonMember const* const sectionMember = root.findMember(name);
    JsonMember const* const countMember =
        sectionMember == nullptr ? nullptr : sectionMember->value.findMember("m_count");
    if (countMember == nullptr) {
      int const line = sectionMember == nullptr ? root.line : sectionMember->line;
      int const column = sectionMember == nullptr ? root.column : sectionMember->column;
      add(Severity::kError, line, column, name + ".m_count",
          "missing (even a section with no entries needs its count)",
          "the import refuses the file", "QV-RTD-COUNT-MISSING");
      return result;
    }
    JsonMember const* const listMember = sectionMember->value.findMember(listKey);
    std::size_t const listLength = listMember == nullptr ? 0 : listMember->value.members.size();
    std::string const& countText = countMember->value.text;
    std::uint32_t const count = LenientNumbers::count(countText);
    if (count == 0) {
      if (LenientNumbers::isDecimal(countText)) {
        if (listLength == 0) return result;  // an empty section, said as it should be
        add(Severity::kWarning, countMember->line, countMember->column, name + ".m_count",
            "the count is " + countText + " but " + listKey + " has " +
                entriesText(listLength),
            "the import drops the whole section", "QV-RTD-COUNT-ZERO");
        return result;
      }
      add(Severity::kWarning, countMember->line, countMember->column, name + ".m_count",
          countMember->value.describe() +
              " does not read as a count (a decimal number from 1 to 4294967295)",
          listLength == 0 ? "the import takes the section as absent"
                          : "the import drops the whole section, " + entriesText(listLength),
          "QV-RTD-COUNT-NOT-NUMBER");
      return result;
    }
    if (listMember == nullptr) {
      add(Severity::kError, sectionMember->line, sectionMember->column, result.listPath,
          "missing behind a count of " + countText, "the import refuses the file",
          "QV-RTD-LIST-MISSING");
      return result;
    }
    if (listLength != count) {
      add(Severity::kWarning, countMember->line, countMember->column, name + ".m_count",
          "the count says " + std::to_string(count) + " but " + listKey + " has " +
              entriesText(listLength),
          "the import reads the " + entriesText(listLength) + " and ignores the count",
          "QV-RTD-COUNT-MISMATCH");
    }
    result.read = true;
    for (std::size_t i = 0; i < listMember->value.members.size(); ++i) {
      JsonMember const& entry = listMember->value.members[i];
      result.entries.push_back(&entry);
      checkEntryKeys(entry, indexPath(result.listPath, i), keys, entryWord);
    }
    return result;
  }

  void checkEntryKeys(JsonMember const& entry, std::string const& entryPath,
                      std::vector<std::string> const& keys, char const* entryWord) {
    if (entry.value.kind != JsonValue::Kind::kObject) {
      add(Severity::kWarning, entry.value.line, entry.value.column, entryPath,
          std::string("the ") + entryWord + " is " + entry.value.describe() + ", not an object",
          "the import keeps it with every field empty", "QV-RTD-ENTRY-NOT-OBJECT");
      return;
    }
    std::map<std::string, int> seen;
    for (JsonMember const& member : entry.value.members) {
      bool known = false;
      for (std::string const& key : keys) known = known || key == member.key;
      if (!known) {
        add(Severity::kWarning, member.line, member.column, entryPath,
            member.key + " is not a key of " + (std::string(entryWord) == "IP entry" ? "an " : "a ") +
                entryWord + didYouMean(member.key, keys),
            "the import skips it", "QV-RTD-UNKNOWN-KEY");
        continue;
      }
      if (++seen[member.key] == 2) {
        add(Severity::kNote, member.line, member.column, joinPath(entryPath, member.key),
            "given more than once", "the import keeps the last value", "QV-RTD-DUPLICATE-KEY");
      }
    }
  }

  // The text of a field as the import stores it: the last member of that key, "" when none.
  static std::string field(JsonMember const& entry, std::string const& key) {
    std::string text;
    for (JsonMember const& member : entry.value.members) {
      if (member.key == key) text = member.value.text;
    }
    return text;
  }
  static JsonMember const* lastMember(JsonMember const& entry, std::string const& key) {
    JsonMember const* found = nullptr;
    for (JsonMember const& member : entry.value.members) {
      if (member.key == key) found = &member;
    }
    return found;
  }

  void checkIps() {
    for (std::size_t i = 0; i < ips_.entries.size(); ++i) {
      JsonMember const& entry = *ips_.entries[i];
      if (entry.value.kind != JsonValue::Kind::kObject) continue;
      std::string const name = field(entry, "m_name");
      // The import counts an entry as a compute unit when its name has a colon
      // (rtd/RtdSystemDiagramVisitor.cpp, populateComputeUnits); a kernel without one is taken
      // for a plain IP block.
      if (field(entry, "m_type") != "IP_KERNEL" || name.find(':') != std::string::npos) continue;
      JsonMember const* const at = lastMember(entry, "m_name");
      add(Severity::kWarning, at ? at->line : entry.value.line,
          at ? at->column : entry.value.column, indexPath(ips_.listPath, i) + ".m_name",
          "the IP_KERNEL \"" + name + "\" has no colon; a compute unit is named <kernel>:<unit>",
          use_ == RtdCheck::Use::kImport
              ? "the import takes it for a plain IP block and makes no compute unit of it"
              : "the update takes it for a plain IP block and sets no compute unit's base "
                "address from it",
          "QV-RTD-CU-NO-COLON");
    }
  }

  void checkIndex(JsonMember const& entry, std::string const& entryPath, std::string const& key,
                  Section const& target, char const* targetWord, bool* pastEnd) {
    *pastEnd = false;
    JsonMember const* const member = lastMember(entry, key);
    int const line = member ? member->value.line : entry.value.line;
    int const column = member ? member->value.column : entry.value.column;
    std::string const text = member ? member->value.text : std::string();
    if (!LenientNumbers::isDecimal(text)) {
      add(Severity::kWarning, line, column, joinPath(entryPath, key),
          member ? member->value.describe() + " is not a position in " + target.listPath
                 : "missing",
          std::string("the connection's ") + targetWord + " end names no " + targetWord,
          "QV-RTD-INDEX-NOT-NUMBER");
      return;
    }
    // A digit string too long for any list is past its end too.
    bool const inRange = text.size() < 10 && std::stoul(text) < target.entries.size();
    if (inRange) return;
    *pastEnd = true;
    add(Severity::kWarning, line, column, joinPath(entryPath, key),
        text + " is past the end of " + target.listPath + " (" +
            entriesText(target.entries.size()) + (target.read ? ")" : " read)"),
        std::string("the import keeps the connection with a ") + targetWord +
            " end that names nothing",
        targetWord == std::string("memory") ? "QV-RTD-MEM-INDEX-RANGE" : "QV-RTD-IP-INDEX-RANGE");
  }

  void checkConnections() {
    // The halves of the links between compute units, by the memory index's text, as the import
    // gathers them (rtd/KernelConnections): "1" and "01" are two streams.
    std::map<std::string, std::vector<std::size_t>> streams;
    std::vector<std::string> streamOrder;
    for (std::size_t i = 0; i < connections_.entries.size(); ++i) {
      JsonMember const& entry = *connections_.entries[i];
      std::string const entryPath = indexPath(connections_.listPath, i);
      if (entry.value.kind != JsonValue::Kind::kObject) continue;
      bool memoryPastEnd = false, ipPastEnd = false;
      checkIndex(entry, entryPath, "mem_data_index", memories_, "memory", &memoryPastEnd);
      checkIndex(entry, entryPath, "m_ip_layout_index", ips_, "compute unit", &ipPastEnd);
      std::string const memoryText = field(entry, "mem_data_index");
      // The import reads the index leniently: "" and "x" are memory 0, as is "0".
      std::uint64_t const memory = LenientNumbers::count(memoryText);
      if (memoryPastEnd || memory >= memories_.entries.size()) continue;
      JsonMember const& target = *memories_.entries[memory];
      if (target.value.kind != JsonValue::Kind::kObject) continue;
      if (field(target, "m_type") != "MEM_STREAMING_CONNECTION") continue;
      if (streams[memoryText].empty()) streamOrder.push_back(memoryText);
      streams[memoryText].push_back(i);
    }
    for (std::string const& memoryText : streamOrder) {
      std::vector<std::size_t> const& halves = streams[memoryText];
      if (halves.size() == 2) continue;
      JsonMember const& first = *connections_.entries[halves.front()];
      add(Severity::kWarning, first.value.line, first.value.column,
          indexPath(connections_.listPath, halves.front()),
          "the stream through memory " + memoryText + " has " + std::to_string(halves.size()) +
              (halves.size() == 1 ? " half" : " halves") + "; a stream has two",
          "the import numbers it but gives it no source or destination",
          "QV-RTD-STREAM-HALVES");
    }
  }

  std::string path_;
  CheckReport& report_;
  RtdCheck::Use use_;
  Section memories_;
  Section ips_;
  Section connections_;
};

}  // namespace

void RtdCheck::checkFile(std::string const& path, CheckReport& report, Use use) {
  report.addFile(path);
  std::string text;
  if (!JsonFile::readOrReport(path, text, Severity::kError, "the import fails", "QV-RTD-UNREADABLE",
                              report)) {
    return;
  }
  checkText(path, text, report, use);
}

void RtdCheck::checkText(std::string const& path, std::string const& text, CheckReport& report,
                         Use use) {
  std::optional<JsonDocument> const document =
      JsonFile::parse(path, text, "RTD", "the import refuses the file", report);
  if (!document) return;
  Checker(path, report, use).check(document->root());
}

}  // namespace qvcheck
