#include "checks/PlatformCheck.h"

#include <sys/stat.h>

#include <cstdint>
#include <fstream>
#include <map>
#include <optional>
#include <utility>

#include "checks/JsonDocument.h"
#include "checks/JsonFile.h"
#include "checks/LenientNumbers.h"
#include "checks/NearestKey.h"

namespace qvcheck {

namespace {

// The optional keys of docs/formats.md, "What the import reads", in the order the import asks
// for them, each with the message it sends when the key is missing and the field it leaves
// empty.
struct OptionalKey {
  char const* path;
  char const* messageId;
  char const* field;
};
OptionalKey const kOptionalKeys[] = {
    {"vendor", "82-182", "qsa.vendor"},
    {"hardwarePlatform.boardId", "82-171", "qsa.board_id"},
    {"name", "82-178", "qsa.name"},
    {"hardwarePlatform.versionMajor", "82-176", "qsa.version_major"},
    {"hardwarePlatform.versionMinor", "82-177", "qsa.version_minor"},
    {"description", "82-166", "qsa.description"},
    {"hardwarePlatform.generatedName", "82-173", "qsa.generated_by.name"},
    {"hardwarePlatform.generatedVersion", "82-175", "qsa.generated_by.version"},
    {"hardwarePlatform.generatedChangeList", "82-172", "qsa.generated_by.change_list"},
    {"hardwarePlatform.generatedTimestamp", "82-174", "qsa.generated_by.timestamp"},
    {"hardwarePlatform.board.name", "82-168", "qsa.board.name"},
    {"hardwarePlatform.board.vendor", "82-170", "qsa.board.vendor"},
    {"hardwarePlatform.board.part", "82-169", "qsa.board.part"},
    {"hardwarePlatform.board.boardPart", "82-167", "qsa.board.board_part"},
};

char const* const kCore = "hardwarePlatform.devices..core";

std::vector<std::string> split(std::string const& path) {
  std::vector<std::string> keys;
  std::string::size_type begin = 0;
  while (true) {
    auto const end = path.find('.', begin);
    keys.push_back(path.substr(begin, end == std::string::npos ? end : end - begin));
    if (end == std::string::npos) return keys;
    begin = end + 1;
  }
}

// A walk as the platform service walks (platform/mvk/NativeObjectService.cpp): each key selects
// the first child with that key, an empty key the first element of an array.
struct Walk {
  JsonValue const* node = nullptr;      // the value at the path, or null
  JsonValue const* deepest = nullptr;   // the last node reached
  std::string missingKey;               // the first key not found
  std::string reachedPath;              // the path of `deepest`
};

Walk walk(JsonValue const& root, std::string const& path) {
  Walk result;
  result.deepest = &root;
  JsonValue const* node = &root;
  std::string reached;
  for (std::string const& key : split(path)) {
    JsonValue const* const next = node->find(key);
    if (next == nullptr) {
      result.missingKey = key;
      result.reachedPath = reached;
      return result;
    }
    reached = reached.empty() ? key : reached + "." + key;
    node = next;
    result.deepest = node;
  }
  result.node = node;
  result.reachedPath = reached;
  return result;
}

class Checker {
 public:
  Checker(std::string path, CheckReport& report) : path_(std::move(path)), report_(report) {}

  void check(JsonValue const& root) {
    for (OptionalKey const& key : kOptionalKeys) {
      Walk const found = walk(root, key.path);
      if (found.node != nullptr) continue;
      missing(found, key.path, Severity::kWarning,
              std::string("the import sends WARNING ") + key.messageId + " and leaves " +
                  key.field + " empty",
              "QV-PLATFORM-KEY-MISSING");
    }
    checkIntents(root);
    checkResources(root);
    checkClocks(root);
    checkBusInterfaces(root);
    checkCore(root);
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

  // A key that the walk did not find, reported at the object it was looked for in, with the
  // key of that object nearest to it.
  void missing(Walk const& found, std::string const& path, Severity severity,
               std::string effect, char const* code) {
    // Keys of the object that the import reads under their own names are not misspellings of
    // this one ("uramCount" is no misspelt "bramCount").
    static std::vector<std::string> const kRead = {
        "vendor", "name", "description", "hardwarePlatform", "boardId", "versionMajor",
        "versionMinor", "designIntent", "generatedName", "generatedVersion",
        "generatedChangeList", "generatedTimestamp", "board", "part", "boardPart", "resources",
        "systemClocks", "busInterfaces", "devices", "core", "type", "instPath",
        "availableResources", "lutCount", "registerCount", "bramCount", "dspCount", "uramCount",
        "pBlocks"};
    std::vector<std::string> present;
    for (JsonMember const& member : found.deepest->members) {
      bool read = false;
      for (std::string const& key : kRead) read = read || key == member.key;
      if (!read) present.push_back(member.key);
    }
    std::string text = "missing";
    std::string const near = nearestKey(found.missingKey, present);
    if (!near.empty() && !found.missingKey.empty()) {
      text += " (" + joinPath(found.reachedPath, near) + " is there: did you mean " +
              found.missingKey + "?)";
    }
    add(severity, found.deepest->line, found.deepest->column, path, text, std::move(effect),
        code);
  }

  void checkIntents(JsonValue const& root) {
    Walk const intents = walk(root, "hardwarePlatform.designIntent");
    if (intents.node == nullptr) return;
    for (JsonMember const& intent : intents.node->members) {
      std::string const path = "hardwarePlatform.designIntent." + intent.key;
      JsonValue const* const value = intent.value.find("value");
      if (value == nullptr) {
        add(Severity::kWarning, intent.line, intent.column, path, "has no value",
            "the import takes the intent as false and leaves it out of qsa.design_intent",
            "QV-PLATFORM-INTENT-NOT-BOOL");
        continue;
      }
      if (LenientNumbers::reads<bool>(value->text)) continue;
      add(Severity::kWarning, value->line, value->column, path + ".value",
          value->describe() + " is neither true, false, 1 nor 0",
          "the import takes the intent as false and leaves it out of qsa.design_intent",
          "QV-PLATFORM-INTENT-NOT-BOOL");
    }
  }

  // Resource records: the value of any member that is one of the five words waits for the next
  // "count" (rtd/RtdSystemDiagramVisitor.cpp, populateQsaAvailableResourcesBuilder).
  void checkResources(JsonValue const& root) {
    Walk const records = walk(root, "hardwarePlatform.resources");
    if (records.node == nullptr) return;
    static std::vector<std::string> const kWords = {"BRAM", "URAM", "DSP", "LUT", "REG"};
    for (std::size_t i = 0; i < records.node->members.size(); ++i) {
      JsonMember const& record = records.node->members[i];
      JsonValue const* const word = record.value.find("resource");
      if (word == nullptr || word->kind != JsonValue::Kind::kString) continue;
      bool known = false;
      for (std::string const& each : kWords) known = known || each == word->text;
      if (known) continue;
      std::string const near = nearestKey(word->text, kWords);
      add(Severity::kWarning, word->line, word->column,
          indexPath("hardwarePlatform.resources", i) + ".resource",
          "\"" + word->text + "\" is none of BRAM, URAM, DSP, LUT, REG" +
              (near.empty() ? std::string() : " (did you mean " + near + "?)"),
          "the import drops the record's count from qsa.available_resources",
          "QV-PLATFORM-RESOURCE-WORD");
    }
  }

  template <class T>
  void number(JsonValue const& record, std::string const& recordPath, char const* key,
              char const* kind, char const* fallback) {
    JsonValue const* const value = record.find(key);
    if (value == nullptr || LenientNumbers::reads<T>(value->text)) return;
    add(Severity::kWarning, value->line, value->column, recordPath + "." + key,
        value->describe() + " does not read as " + kind,
        std::string("the import stores ") + fallback, "QV-PLATFORM-CLOCK-NUMBER");
  }

  void checkClocks(JsonValue const& root) {
    Walk const records = walk(root, "hardwarePlatform.systemClocks");
    if (records.node == nullptr) return;
    std::map<std::string, int> names;
    for (std::size_t i = 0; i < records.node->members.size(); ++i) {
      JsonMember const& record = records.node->members[i];
      std::string const recordPath = indexPath("hardwarePlatform.systemClocks", i);
      JsonValue const* const name = record.value.find("name");
      if (name == nullptr || name->text.empty()) {
        add(Severity::kWarning, record.value.line, record.value.column, recordPath,
            name == nullptr ? "the clock has no name" : "the clock's name is empty",
            "the import skips the record", "QV-PLATFORM-CLOCK-NO-NAME");
        continue;
      }
      if (++names[name->text] == 2) {
        add(Severity::kNote, name->line, name->column, recordPath + ".name",
            "the clock " + name->text + " is described again",
            "the import makes one clock of both, every field from this later record",
            "QV-PLATFORM-CLOCK-REPEATED");
      }
      number<std::int32_t>(record.value, recordPath, "id", "a whole number", "-1");
      number<double>(record.value, recordPath, "frequency", "a number", "-1");
      number<double>(record.value, recordPath, "period", "a number", "-1");
      JsonValue const* const status = record.value.find("status");
      if (status == nullptr) continue;
      std::string const& word = status->text;
      if (word == "reserved" || word == "fixed" || word == "scalable" || word == "changeable") {
        continue;
      }
      add(Severity::kWarning, status->line, status->column, recordPath + ".status",
          status->describe() + " is none of reserved, fixed, scalable, changeable (lower case)",
          "the import stores CLOCK_STATUS_UNSET", "QV-PLATFORM-CLOCK-STATUS");
    }
  }

  void checkBusInterfaces(JsonValue const& root) {
    Walk const interfaces = walk(root, "hardwarePlatform.busInterfaces");
    if (interfaces.node == nullptr) return;
    for (std::size_t i = 0; i < interfaces.node->members.size(); ++i) {
      JsonValue const& busInterface = interfaces.node->members[i].value;
      JsonValue const* const segments = busInterface.find("addressSegments");
      std::string const path = indexPath("hardwarePlatform.busInterfaces", i);
      JsonValue const* const spTag = busInterface.find("spTag");
      if (spTag == nullptr || spTag->text.empty() || segments == nullptr) {
        add(Severity::kWarning, busInterface.line, busInterface.column, path,
            spTag == nullptr || spTag->text.empty() ? "no spTag" : "no addressSegments",
            "the import passes the bus interface over: its memories get no SLR",
            "QV-PLATFORM-SEGMENT-SKIPPED");
        continue;
      }
      for (std::size_t s = 0; s < segments->members.size(); ++s) {
        JsonValue const& segment = segments->members[s].value;
        JsonValue const* const slr = segment.find("slr");
        JsonValue const* const index = segment.find("index");
        int number = -1;
        bool const indexReads = index != nullptr && LenientNumbers::reads<int>(index->text, &number);
        if (slr != nullptr && !slr->text.empty() && indexReads && number >= 0) continue;
        std::string why = slr == nullptr || slr->text.empty() ? "no slr"
                          : index == nullptr              ? "no index"
                                                          : index->describe() +
                                                " is not a whole number from 0";
        add(Severity::kWarning, segment.line, segment.column,
            indexPath(path + ".addressSegments", s), why,
            "the import passes the segment over: its memory gets no SLR",
            "QV-PLATFORM-SEGMENT-SKIPPED");
      }
    }
  }

  void checkCore(JsonValue const& root) {
    for (char const* key : {"name", "type"}) {
      std::string const path = std::string(kCore) + "." + key;
      Walk const found = walk(root, path);
      if (found.node != nullptr) continue;
      missing(found, path, Severity::kError,
              "the import fails: the user region is the first device's core",
              "QV-PLATFORM-CORE-MISSING");
    }
    std::string const instPath = std::string(kCore) + ".instPath";
    Walk const inst = walk(root, instPath);
    if (inst.node == nullptr) {
      missing(inst, instPath, Severity::kWarning,
              "the import sends WARNING 82-164 and leaves the user region's inst_path empty",
              "QV-PLATFORM-KEY-MISSING");
    }
    // The totals are read in this order and the first one missing ends the reading
    // (populateUserRegionAvailableResources).
    static char const* const kCounts[] = {"uramCount", "lutCount", "registerCount", "bramCount",
                                          "dspCount"};
    static char const* const kLost[] = {
        "all five totals", "lut, reg, bram, uram and dsp", "reg, bram, uram and dsp",
        "bram, uram and dsp", "dsp"};
    for (std::size_t i = 0; i < 5; ++i) {
      std::string const path = std::string(kCore) + ".availableResources." + kCounts[i];
      Walk const found = walk(root, path);
      if (found.node != nullptr) continue;
      missing(found, path, Severity::kWarning,
              std::string("the import sends WARNING 82-163 and leaves ") + kLost[i] +
                  " of the user region's available_resources empty",
              "QV-PLATFORM-KEY-MISSING");
      return;
    }
  }

  std::string path_;
  CheckReport& report_;
};

bool isReadableRegularFile(std::string const& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode)) return false;
  std::ifstream in(path, std::ios::binary);
  return in.is_open();
}

}  // namespace

std::string PlatformCheck::locate(std::string const& platform,
                                  std::vector<std::string> const& searchPath,
                                  std::vector<std::string>& tried) {
  tried.clear();
  if (platform.empty()) return std::string();
  tried.push_back(platform);
  if (isReadableRegularFile(platform)) return platform;
  for (std::string const& directory : searchPath) {
    if (directory.empty()) continue;
    for (std::string const& candidate :
         {directory + "/" + platform + ".json", directory + "/" + platform + "/platform.json"}) {
      tried.push_back(candidate);
      if (isReadableRegularFile(candidate)) return candidate;
    }
  }
  return std::string();
}

void PlatformCheck::checkPlatform(std::string const& platform,
                                  std::vector<std::string> const& searchPath,
                                  CheckReport& report) {
  std::vector<std::string> tried;
  std::string const path = locate(platform, searchPath, tried);
  if (path.empty()) {
    Finding finding;
    finding.severity = Severity::kError;
    finding.file = platform.empty() ? std::string("<platform>") : platform;
    if (platform.empty()) {
      finding.text = "no platform given";
    } else {
      finding.text = "not found (tried";
      for (std::size_t i = 0; i < tried.size(); ++i) finding.text += (i ? ", " : " ") + tried[i];
      finding.text += ")";
    }
    finding.effect = "the import fails";
    finding.code = "QV-PLATFORM-NOT-FOUND";
    report.add(std::move(finding));
    return;
  }
  report.addFile(path);
  std::string text;
  if (!JsonFile::readOrReport(path, text, Severity::kError, "the import fails",
                              "QV-PLATFORM-NOT-FOUND", report)) {
    return;
  }
  checkText(path, text, report);
}

void PlatformCheck::checkText(std::string const& path, std::string const& text,
                              CheckReport& report) {
  std::optional<JsonDocument> const document =
      JsonFile::parse(path, text, "PLATFORM", "the import fails", report);
  if (!document) return;
  Checker(path, report).check(document->root());
}

}  // namespace qvcheck
