#include "views/DiagramDiff.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <set>
#include <string_view>
#include <unordered_map>
#include <utility>

namespace qvviews {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

namespace {

using Change = DiagramDiff::Change;
using Entry = DiagramDiff::Entry;
using Field = DiagramDiff::Field;
using Group = DiagramDiff::Group;
using ValueKind = DiagramDiff::ValueKind;

// The arrow and the minus sign of the text (U+2192, U+2212): a hyphen is too easily read as a
// dash between two values.
constexpr char const* kArrow = "\u2192";
constexpr char const* kMinus = "\u2212";
constexpr std::size_t kKeyColumn = 28;    // where the values of an added or removed entry start
constexpr std::size_t kFieldColumn = 24;  // where the values of a changed field start
constexpr std::size_t kTextWidth = 100;

// One value of one entry of one side, before the two sides are compared.
struct Value {
  std::string name;
  std::string id;
  ValueKind kind = ValueKind::kText;
  std::string text;
  std::string shareOf;
  std::optional<double> total;
};

struct Record {
  std::string key;
  std::vector<Value> values;
};
using Records = std::vector<Record>;

Value textValue(std::string name, std::string id, std::string text) {
  Value value;
  value.name = std::move(name);
  value.id = std::move(id);
  value.text = std::move(text);
  return value;
}

Value countValue(std::string name, std::string id, std::string text) {
  Value value = textValue(std::move(name), std::move(id), std::move(text));
  value.kind = ValueKind::kCount;
  return value;
}

// The shortest text that reads back as `number`: stored frequencies are doubles, and printing
// them with a fixed precision would make two different values look alike.
std::string shortest(double number) {
  char buffer[64];
  auto const result = std::to_chars(buffer, buffer + sizeof buffer, number);
  return std::string(buffer, result.ptr);
}

Value megahertzValue(std::string name, std::string id, double number) {
  Value value = textValue(std::move(name), std::move(id), shortest(number));
  value.kind = ValueKind::kMegahertz;
  return value;
}

// A whole decimal count, or nothing for any other text (an empty field, a word).
std::optional<long long> parseCount(std::string const& text) {
  if (text.empty()) return std::nullopt;
  long long number = 0;
  auto const result = std::from_chars(text.data(), text.data() + text.size(), number);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return std::nullopt;
  return number;
}

std::optional<double> parseNumber(std::string const& text) {
  if (text.empty()) return std::nullopt;
  char* end = nullptr;
  double const number = std::strtod(text.c_str(), &end);
  if (end != text.c_str() + text.size() || !std::isfinite(number)) return std::nullopt;
  return number;
}

std::string withSeparators(long long number) {
  std::string const digits = std::to_string(number < 0 ? -number : number);
  std::string out;
  for (std::size_t i = 0; i < digits.size(); ++i) {
    if (i > 0 && (digits.size() - i) % 3 == 0) out += ',';
    out += digits[i];
  }
  return number < 0 ? kMinus + out : out;
}

// `number` with `decimals` decimals and a true minus sign; a value that rounds to zero has none.
std::string fixed(double number, int decimals) {
  char buffer[64];
  std::snprintf(buffer, sizeof buffer, "%.*f", decimals, std::fabs(number));
  std::string const digits(buffer);
  bool const zero = digits.find_first_not_of("0.") == std::string::npos;
  return (number < 0 && !zero ? std::string(kMinus) : std::string()) + digits;
}

// Percentages are rounded to one decimal once, here, so that the text and the JSON agree. Halves
// go to the even neighbour, as printf rounds, so 300 -> 281.25 MHz reads -6.2%.
double roundedPercent(double part, double whole) {
  return std::nearbyint(part / whole * 1000.0) / 10.0;
}

std::string signedPercent(double percent) {
  char buffer[32];
  std::snprintf(buffer, sizeof buffer, "%.1f%%", std::fabs(percent));
  return std::string(percent < 0 ? kMinus : "+") + buffer;
}

std::string signedCount(long long delta) {
  return delta < 0 ? withSeparators(delta) : "+" + withSeparators(delta);
}

// Keys in the order a person expects: "cu_2" before "cu_10".
bool naturalLess(std::string const& a, std::string const& b) {
  std::size_t i = 0, j = 0;
  while (i < a.size() && j < b.size()) {
    bool const digitA = std::isdigit(static_cast<unsigned char>(a[i])) != 0;
    bool const digitB = std::isdigit(static_cast<unsigned char>(b[j])) != 0;
    if (digitA && digitB) {
      std::size_t endA = i, endB = j;
      while (endA < a.size() && std::isdigit(static_cast<unsigned char>(a[endA]))) ++endA;
      while (endB < b.size() && std::isdigit(static_cast<unsigned char>(b[endB]))) ++endB;
      std::size_t startA = i, startB = j;
      while (startA + 1 < endA && a[startA] == '0') ++startA;
      while (startB + 1 < endB && b[startB] == '0') ++startB;
      if (endA - startA != endB - startB) return endA - startA < endB - startB;
      int const order = a.compare(startA, endA - startA, b, startB, endB - startB);
      if (order != 0) return order < 0;
      i = endA;
      j = endB;
      continue;
    }
    if (a[i] != b[j]) return static_cast<unsigned char>(a[i]) < static_cast<unsigned char>(b[j]);
    ++i;
    ++j;
  }
  if (a.size() - i != b.size() - j) return a.size() - i < b.size() - j;
  return a < b;
}

// Each record's key hash beside its position, sorted: records whose keys are equal sit next to
// each other, found by sorting integers instead of by a hash table of every key. On a diagram of
// hundreds of thousands of connections such a table no longer fits in the cache, and its lookups
// made the comparison grow much faster than the diagrams.
struct KeyHash {
  std::size_t hash;
  std::size_t index;
  bool operator<(KeyHash const& other) const {
    return hash != other.hash ? hash < other.hash : index < other.index;
  }
};

std::vector<KeyHash> sortedKeyHashes(Records const& records) {
  std::vector<KeyHash> hashes;
  hashes.reserve(records.size());
  std::hash<std::string_view> const hasher;
  for (std::size_t i = 0; i < records.size(); ++i) {
    hashes.push_back(KeyHash{hasher(records[i].key), i});
  }
  std::sort(hashes.begin(), hashes.end());
  return hashes;
}

// A key that occurs again on the same side gets " (2)", " (3)", ... so that two equal
// connections of one diagram and one of the other show as one removed connection. The count
// is of the key as it came, in the order of the records; a suffixed key is not looked at again.
// Returns the sorted hashes of the keys as they are afterwards.
std::vector<KeyHash> makeKeysUnique(Records& records) {
  std::vector<KeyHash> hashes = sortedKeyHashes(records);
  // Only records sharing a hash with another can share a key with it.
  std::vector<std::size_t> candidates;
  for (std::size_t i = 0; i < hashes.size();) {
    std::size_t end = i + 1;
    while (end < hashes.size() && hashes[end].hash == hashes[i].hash) ++end;
    if (end - i > 1) {
      for (std::size_t k = i; k < end; ++k) candidates.push_back(hashes[k].index);
    }
    i = end;
  }
  if (candidates.empty()) return hashes;
  std::sort(candidates.begin(), candidates.end());
  // Views of the first occurrences: a key that is changed below is never one of them.
  std::unordered_map<std::string_view, int> seen;
  seen.reserve(candidates.size());
  for (std::size_t const index : candidates) {
    Record& record = records[index];
    int const count = ++seen[record.key];
    if (count > 1) record.key += " (" + std::to_string(count) + ")";
  }
  return sortedKeyHashes(records);
}

// For each record of `after`, the position of the first record of `before` with the same key,
// or `before.size()` when there is none.
// `beforeHashes` and `afterHashes` are the records' sorted key hashes.
std::vector<std::size_t> matchKeys(Records const& before, std::vector<KeyHash> const& beforeHashes,
                                   Records const& after, std::vector<KeyHash> const& afterHashes) {
  std::vector<std::size_t> match(after.size(), before.size());
  std::size_t b = 0;
  for (KeyHash const& wanted : afterHashes) {
    while (b < beforeHashes.size() && beforeHashes[b].hash < wanted.hash) ++b;
    // The run of `before` with this hash, in the order of the records: the first equal key wins.
    for (std::size_t k = b; k < beforeHashes.size() && beforeHashes[k].hash == wanted.hash; ++k) {
      if (before[beforeHashes[k].index].key == after[wanted.index].key) {
        match[wanted.index] = beforeHashes[k].index;
        break;
      }
    }
  }
  return match;
}

// ---- The entries of each group, from one diagram ---------------------------------------------

std::string const kResourceIds[] = {"lut", "reg", "bram", "dsp", "uram"};
std::string const kResourceNames[] = {"LUT", "REG", "BRAM", "DSP", "URAM"};

std::string resourceOf(pb::bySlr const& slr, std::string const& id) {
  if (id == "lut") return slr.lut();
  if (id == "reg") return slr.reg();
  if (id == "bram") return slr.bram();
  if (id == "dsp") return slr.dsp();
  if (id == "uram") return slr.uram();
  return "";
}

std::string lower(std::string text) {
  for (char& c : text) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  return text;
}

std::string stateName(pb::DesignState state) {
  switch (state) {
    case pb::DESIGN_STATE_SYNTHESIZED:
      return "Synthesized";
    case pb::DESIGN_STATE_FULLY_PLACED:
      return "Fully Placed";
    case pb::DESIGN_STATE_ROUTED:
      return "Routed";
    default:
      return "unset";
  }
}

// What every group needs from one diagram, gathered once.
class Side {
 public:
  explicit Side(StoredDiagram::Root const& root)
      : qsa_(root.system_diagram_metadata().qsa()),
        qrxbin_(root.system_diagram_metadata().qrxbin()) {
    for (auto const& memory : qsa_.device_topology())
      memoryTags_.emplace(memory.id(), memory.tag());
    for (auto const& region : qrxbin_.user_regions()) {
      unitCount_ += static_cast<std::size_t>(region.compute_units_size());
      for (auto const& unit : region.compute_units()) unitNames_.emplace(unit.id(), unit.name());
      for (auto const& slr : region.available_resources().by_slr()) slrs_.emplace(slr.slr(), &slr);
    }
  }

  Records platform() const {
    Record record{"platform", {}};
    record.values.push_back(textValue("name", "name", qsa_.name()));
    record.values.push_back(textValue("vendor", "vendor", qsa_.vendor()));
    record.values.push_back(textValue("board", "board", qsa_.board().name()));
    record.values.push_back(textValue("board id", "board_id", qsa_.board_id()));
    record.values.push_back(textValue("part", "part", qsa_.board().part()));
    record.values.push_back(
        textValue("version", "version", qsa_.version_major() + "." + qsa_.version_minor()));
    return {record};
  }

  Records computeUnits() const {
    Records records;
    records.reserve(unitCount_);
    for (auto const& region : qrxbin_.user_regions()) {
      for (auto const& unit : region.compute_units()) {
        Record record{unit.name(), {}};
        record.values.reserve(3);
        record.values.push_back(textValue("kernel", "kernel", unit.kernel_name()));
        record.values.push_back(textValue("SLR", "slr", slrsOf(unit)));
        record.values.push_back(textValue("base address", "base_address", unit.base_address()));
        records.push_back(std::move(record));
      }
    }
    return records;
  }

  Records kernels() const {
    Records records;
    for (auto const& region : qrxbin_.user_regions()) {
      for (auto const& kernel : region.kernels()) records.push_back(Record{kernel.name(), {}});
    }
    return records;
  }

  Records memories() const {
    Records records;
    for (auto const& memory : qsa_.device_topology()) {
      Record record{memory.tag(), {}};
      record.values.push_back(textValue("type", "type", pb::MemoryType_Name(memory.type())));
      record.values.push_back(textValue("SLR", "slr", memory.slr()));
      record.values.push_back(textValue("used", "used", memory.used()));
      record.values.push_back(countValue("size KB", "size_kb", memory.size_kb()));
      record.values.push_back(textValue("base address", "base_address", memory.base_address()));
      records.push_back(std::move(record));
    }
    return records;
  }

  Records connections() const {
    Records records;
    for (auto const& region : qrxbin_.user_regions()) {
      records.reserve(records.size() + static_cast<std::size_t>(region.connectivity_size()));
      for (auto const& connection : region.connectivity()) {
        auto const& source = connection.source();
        auto const& destination = connection.destination();
        std::string const& pin = source.pin().empty() ? source.arg_name() : source.pin();
        std::string key = instanceOf(source);
        key.reserve(key.size() + pin.size() + 32);
        key.append(".").append(pin).append(" ").append(kArrow).append(" ");
        key.append(destination.type() == "memory" ? lookup(memoryTags_, destination.id())
                                                  : instanceOf(destination));
        records.push_back(Record{std::move(key), {}});
      }
    }
    return records;
  }

  Records clocks() const {
    Records records;
    for (auto const& clock : qsa_.clocks()) {
      Record record{"clock " + std::to_string(clock.id()), {}};
      record.values.push_back(textValue("name", "name", clock.name()));
      record.values.push_back(megahertzValue("platform", "platform_mhz", clock.frequency()));
      record.values.push_back(
          megahertzValue("requested", "requested_mhz", clock.requested_frequency()));
      record.values.push_back(
          megahertzValue("achieved", "achieved_mhz", clock.achieved_frequency()));
      record.values.push_back(textValue("status", "status", pb::ClockStatus_Name(clock.status())));
      records.push_back(std::move(record));
    }
    return records;
  }

  Records clockPins() const {
    Records records;
    for (auto const& region : qrxbin_.user_regions()) {
      for (auto const& unit : region.compute_units()) {
        for (auto const& pin : unit.clock_refs()) {
          Record record{unit.name() + "." + pin.name(), {}};
          record.values.reserve(3);
          record.values.push_back(textValue("clock id", "clock_id", pin.clock_id()));
          record.values.push_back(
              megahertzValue("requested", "requested_mhz", pin.requested_frequency()));
          record.values.push_back(
              megahertzValue("achieved", "achieved_mhz", pin.achieved_frequency()));
          records.push_back(std::move(record));
        }
      }
    }
    return records;
  }

  Records resources() const {
    Records records;
    records.reserve(2 * unitCount_);  // two design states are the common case
    for (auto const& region : qrxbin_.user_regions()) {
      for (auto const& unit : region.compute_units()) {
        std::string const slr = slrsOf(unit);
        auto const found = slrs_.find(slr);
        for (auto const& use : unit.actual_resources()) {
          Record record{unit.name() + " " + stateName(use.design_state()), {}};
          record.values.reserve(5);
          std::string const counts[] = {use.lut(), use.reg(), use.bram(), use.dsp(), use.uram()};
          for (std::size_t i = 0; i < 5; ++i) {
            Value value = countValue(kResourceNames[i], kResourceIds[i], counts[i]);
            if (found != slrs_.end()) {
              value.shareOf = slr;
              value.total = parseNumber(resourceOf(*found->second, kResourceIds[i]));
            }
            record.values.push_back(std::move(value));
          }
          records.push_back(std::move(record));
        }
      }
    }
    return records;
  }

  Records slrUse() const {
    Records records;
    for (auto const& region : qrxbin_.user_regions()) {
      for (auto const& unit : region.compute_units()) {
        for (auto const& use : unit.slr_resources()) {
          Record record{unit.name() + " " + use.slr(), {}};
          record.values.reserve(static_cast<std::size_t>(use.utilization_size()));
          for (auto const& resource : use.utilization()) {
            Value value =
                countValue(resource.resource(), lower(resource.resource()), resource.used());
            value.shareOf = use.slr();
            value.total = parseNumber(resource.available());
            record.values.push_back(std::move(value));
          }
          records.push_back(std::move(record));
        }
      }
    }
    return records;
  }

  // Per SLR: what the compute units use of each resource in total, and what the SLR offers.
  Records slrTotals() const {
    std::map<std::string, std::map<std::string, long long>> used;  // SLR, resource word
    std::vector<std::string> order;
    for (auto const& region : qrxbin_.user_regions()) {
      for (auto const& slr : region.available_resources().by_slr()) {
        if (used.emplace(slr.slr(), std::map<std::string, long long>()).second)
          order.push_back(slr.slr());
      }
      for (auto const& unit : region.compute_units()) {
        for (auto const& use : unit.slr_resources()) {
          if (used.emplace(use.slr(), std::map<std::string, long long>()).second)
            order.push_back(use.slr());
          for (auto const& resource : use.utilization()) {
            std::optional<long long> const count = parseCount(resource.used());
            if (count) used[use.slr()][resource.resource()] += *count;
          }
        }
      }
    }
    Records records;
    for (std::string const& slr : order) {
      Record record{slr, {}};
      auto const found = slrs_.find(slr);
      std::map<std::string, long long> const& sums = used[slr];
      std::set<std::string> shown;
      // The five resources of the region first, in their usual order, then any other word.
      for (std::size_t i = 0; i < 5; ++i) {
        auto const sum = sums.find(kResourceNames[i]);
        std::string const available =
            found == slrs_.end() ? "" : resourceOf(*found->second, kResourceIds[i]);
        if (sum == sums.end() && available.empty()) continue;
        Value value = countValue(kResourceNames[i] + " used", kResourceIds[i] + "_used",
                                 std::to_string(sum == sums.end() ? 0 : sum->second));
        value.shareOf = slr;
        value.total = parseNumber(available);
        record.values.push_back(std::move(value));
        record.values.push_back(countValue(kResourceNames[i] + " available",
                                           kResourceIds[i] + "_available", available));
        shown.insert(kResourceNames[i]);
      }
      for (auto const& [word, sum] : sums) {
        if (shown.count(word) > 0) continue;
        record.values.push_back(
            countValue(word + " used", lower(word) + "_used", std::to_string(sum)));
      }
      records.push_back(std::move(record));
    }
    return records;
  }

 private:
  static std::string lookup(std::unordered_map<std::string, std::string> const& map,
                            std::string const& id) {
    auto const found = map.find(id);
    return found == map.end() ? "#" + id : found->second;
  }

  // The instance a node stands for: the name it carries, else its compute unit's name.
  std::string instanceOf(pb::Node const& node) const {
    if (!node.instance().empty()) return node.instance();
    if (node.type() == "compute_unit") return lookup(unitNames_, node.id());
    if (node.type() == "memory") return lookup(memoryTags_, node.id());
    return node.type() + "#" + node.id();
  }

  // The SLRs a compute unit uses, in name order, comma separated; empty when none is known.
  static std::string slrsOf(pb::computeUnit const& unit) {
    std::set<std::string> names;
    for (auto const& use : unit.slr_resources()) names.insert(use.slr());
    std::string text;
    for (std::string const& name : names) text += (text.empty() ? "" : ",") + name;
    return text;
  }

  pb::Qsa const& qsa_;
  pb::qrxBin const& qrxbin_;
  std::unordered_map<std::string, std::string> memoryTags_;  // deviceTopology.id -> tag
  std::unordered_map<std::string, std::string> unitNames_;   // computeUnit.id -> name
  std::size_t unitCount_ = 0;
  std::unordered_map<std::string, pb::bySlr const*> slrs_;   // SLR name -> its resources
};

// ---- Comparing -------------------------------------------------------------------------------

Field fieldOf(Value const& value) {
  Field field;
  field.name = value.name;
  field.id = value.id;
  field.kind = value.kind;
  field.shareOf = value.shareOf;
  return field;
}

Field addedField(Value const& value) {
  Field field = fieldOf(value);
  field.after = value.text;
  field.afterTotal = value.total;
  return field;
}

Field removedField(Value const& value) {
  Field field = fieldOf(value);
  field.before = value.text;
  field.beforeTotal = value.total;
  return field;
}

// The size of a change, for putting the largest first: absolute for counts and frequencies.
double weightOf(Field const& field) {
  if (field.kind == ValueKind::kText || !field.before || !field.after) return 0;
  std::optional<double> const before = parseNumber(*field.before);
  std::optional<double> const after = parseNumber(*field.after);
  if (!before || !after) return 0;
  return std::fabs(*after - *before);
}

Group compareRecords(std::string id, std::string title, Records before, Records after,
                     bool keepUnchanged) {
  std::vector<std::size_t> const match =
      matchKeys(before, makeKeysUnique(before), after, makeKeysUnique(after));
  std::vector<bool> matched(before.size(), false);

  // Keys and values are moved out of the records as they are used: a diagram of 50,000
  // compute units has half a million connection keys, and copying them would double the
  // memory the comparison takes.
  std::vector<Entry> added, removed, changed, same;
  std::size_t unchanged = 0;
  for (std::size_t a = 0; a < after.size(); ++a) {
    Record& record = after[a];
    if (match[a] == before.size()) {
      Entry entry{Change::kAdded, std::move(record.key), {}, 0};
      for (Value const& value : record.values) entry.fields.push_back(addedField(value));
      added.push_back(std::move(entry));
      continue;
    }
    matched[match[a]] = true;
    Record const& old = before[match[a]];
    Entry entry{Change::kSame, std::move(record.key), {}, 0};
    std::vector<bool> oldSeen(old.values.size(), false);
    for (Value const& value : record.values) {
      std::size_t i = 0;
      while (i < old.values.size() && (oldSeen[i] || old.values[i].id != value.id)) ++i;
      if (i == old.values.size()) {
        entry.fields.push_back(addedField(value));
        continue;
      }
      oldSeen[i] = true;
      if (old.values[i].text == value.text) continue;
      Field field = fieldOf(value);
      field.before = old.values[i].text;
      field.after = value.text;
      field.beforeTotal = old.values[i].total;
      field.afterTotal = value.total;
      entry.weight = std::max(entry.weight, weightOf(field));
      entry.fields.push_back(std::move(field));
    }
    for (std::size_t i = 0; i < old.values.size(); ++i) {
      if (!oldSeen[i]) entry.fields.push_back(removedField(old.values[i]));
    }
    if (entry.fields.empty()) {
      ++unchanged;
      if (keepUnchanged) same.push_back(std::move(entry));
      continue;
    }
    entry.change = Change::kChanged;
    changed.push_back(std::move(entry));
  }
  for (std::size_t i = 0; i < before.size(); ++i) {
    if (matched[i]) continue;
    Entry entry{Change::kRemoved, std::move(before[i].key), {}, 0};
    for (Value const& value : before[i].values) entry.fields.push_back(removedField(value));
    removed.push_back(std::move(entry));
  }

  auto const byKey = [](Entry const& a, Entry const& b) { return naturalLess(a.key, b.key); };
  std::sort(added.begin(), added.end(), byKey);
  std::sort(removed.begin(), removed.end(), byKey);
  std::sort(same.begin(), same.end(), byKey);
  std::sort(changed.begin(), changed.end(), [](Entry const& a, Entry const& b) {
    if (a.weight != b.weight) return a.weight > b.weight;
    return naturalLess(a.key, b.key);
  });

  Group group;
  group.id = std::move(id);
  group.title = std::move(title);
  group.unchanged = unchanged;
  group.entries.reserve(added.size() + removed.size() + changed.size() + same.size());
  for (auto* part : {&added, &removed, &changed, &same}) {
    for (Entry& entry : *part) group.entries.push_back(std::move(entry));
  }
  return group;
}

// ---- Writing ---------------------------------------------------------------------------------

std::string shownText(std::optional<std::string> const& text) {
  if (!text) return "(none)";
  if (text->empty()) return "\"\"";
  return *text;
}

// A value alone, as an added or removed entry shows it.
std::string shownValue(Field const& field, std::optional<std::string> const& text) {
  if (!text) return shownText(text);
  if (field.kind == ValueKind::kCount) {
    if (std::optional<long long> const count = parseCount(*text)) return withSeparators(*count);
  }
  if (field.kind == ValueKind::kMegahertz) {
    if (std::optional<double> const number = parseNumber(*text)) return fixed(*number, 2) + " MHz";
  }
  return shownText(text);
}

// "18,371 → 20,000 (+1,629, +8.9%; 5.0% → 5.4% of SLR0)", "300.00 → 281.25 MHz (−6.2%)".
std::string shownChange(Field const& field) {
  std::string const arrow = std::string(" ") + kArrow + " ";
  if (field.before && field.after && field.kind == ValueKind::kCount) {
    std::optional<long long> const before = parseCount(*field.before);
    std::optional<long long> const after = parseCount(*field.after);
    if (before && after) {
      std::string text = withSeparators(*before) + arrow + withSeparators(*after) + " (" +
                         signedCount(*after - *before);
      if (*before != 0)
        text += ", " + signedPercent(roundedPercent(double(*after - *before), double(*before)));
      if (field.beforeTotal && field.afterTotal && *field.beforeTotal > 0 &&
          *field.afterTotal > 0) {
        text += "; " + fixed(roundedPercent(double(*before), *field.beforeTotal), 1) + "%" + arrow +
                fixed(roundedPercent(double(*after), *field.afterTotal), 1) + "% of " +
                field.shareOf;
      }
      return text + ")";
    }
  }
  if (field.before && field.after && field.kind == ValueKind::kMegahertz) {
    std::optional<double> const before = parseNumber(*field.before);
    std::optional<double> const after = parseNumber(*field.after);
    if (before && after) {
      std::string text = fixed(*before, 2) + arrow + fixed(*after, 2) + " MHz";
      if (*before > 0)
        text += " (" + signedPercent(roundedPercent(*after - *before, *before)) + ")";
      return text;
    }
  }
  return shownValue(field, field.before) + arrow + shownValue(field, field.after);
}

std::size_t columns(std::string const& text) {
  std::size_t count = 0;
  for (unsigned char c : text) {
    if ((c & 0xC0) != 0x80) ++count;  // count code points, not bytes
  }
  return count;
}

std::string padded(std::string text, std::size_t width) {
  std::size_t const used = columns(text);
  if (used < width)
    text.append(width - used, ' ');
  else
    text += ' ';
  return text;
}

char const* markOf(Change change) {
  switch (change) {
    case Change::kAdded:
      return "+";
    case Change::kRemoved:
      return "-";
    case Change::kChanged:
      return "~";
    case Change::kSame:
      return "=";
  }
  return "?";
}

char const* changeWord(Change change) {
  switch (change) {
    case Change::kAdded:
      return "added";
    case Change::kRemoved:
      return "removed";
    case Change::kChanged:
      return "changed";
    case Change::kSame:
      return "unchanged";
  }
  return "?";
}

struct Counts {
  std::size_t added = 0, removed = 0, changed = 0, same = 0;
  void count(Change change) {
    if (change == Change::kAdded) ++added;
    if (change == Change::kRemoved) ++removed;
    if (change == Change::kChanged) ++changed;
    if (change == Change::kSame) ++same;
  }
  bool differs() const { return added + removed + changed > 0; }
};

Counts countsOf(Group const& group) {
  Counts counts;
  for (Entry const& entry : group.entries) {
    if (entry.change != Change::kSame) counts.count(entry.change);
  }
  counts.same = group.unchanged;
  return counts;
}

std::string countsText(Counts const& counts, bool all) {
  std::string text = std::to_string(counts.added) + " added, " + std::to_string(counts.removed) +
                     " removed, " + std::to_string(counts.changed) + " changed";
  if (all) text += ", " + std::to_string(counts.same) + " unchanged";
  return text;
}

void writeJsonString(std::ostream& out, std::string const& text) {
  out << '"';
  for (unsigned char c : text) {
    switch (c) {
      case '"':
        out << "\\\"";
        break;
      case '\\':
        out << "\\\\";
        break;
      case '\n':
        out << "\\n";
        break;
      case '\r':
        out << "\\r";
        break;
      case '\t':
        out << "\\t";
        break;
      default:
        if (c < 0x20) {
          char buffer[8];
          std::snprintf(buffer, sizeof buffer, "\\u%04x", c);
          out << buffer;
        } else {
          out << static_cast<char>(c);
        }
    }
  }
  out << '"';
}

// A side's value in JSON: a number where the kind is numeric and the text is one, else the
// text, and null for an absent side.
void writeJsonValue(std::ostream& out, Field const& field, std::optional<std::string> const& text) {
  if (!text) {
    out << "null";
    return;
  }
  if (field.kind == ValueKind::kCount) {
    if (std::optional<long long> const count = parseCount(*text)) {
      out << *count;
      return;
    }
  }
  if (field.kind == ValueKind::kMegahertz) {
    if (std::optional<double> const number = parseNumber(*text)) {
      out << shortest(*number);
      return;
    }
  }
  writeJsonString(out, *text);
}

void writeJsonField(std::ostream& out, Field const& field) {
  out << "{\"field\": ";
  writeJsonString(out, field.id);
  out << ", \"name\": ";
  writeJsonString(out, field.name);
  out << ", \"old\": ";
  writeJsonValue(out, field, field.before);
  out << ", \"new\": ";
  writeJsonValue(out, field, field.after);
  std::optional<double> before, after;
  if (field.kind != ValueKind::kText && field.before && field.after) {
    before = parseNumber(*field.before);
    after = parseNumber(*field.after);
  }
  // The change and percentages exactly as the text shows them.
  out << ", \"delta\": ";
  if (before && after && field.kind == ValueKind::kCount && parseCount(*field.before) &&
      parseCount(*field.after)) {
    out << (*parseCount(*field.after) - *parseCount(*field.before));
  } else if (before && after && field.kind == ValueKind::kMegahertz) {
    out << shortest(*after - *before);
  } else {
    out << "null";
  }
  out << ", \"percent\": ";
  bool const countPair = field.kind == ValueKind::kCount && field.before && field.after &&
                         parseCount(*field.before) && parseCount(*field.after);
  bool const megahertzPair = field.kind == ValueKind::kMegahertz && before && after;
  if ((countPair && *before != 0) || (megahertzPair && *before > 0)) {
    out << shortest(roundedPercent(*after - *before, *before));
  } else {
    out << "null";
  }
  bool const shares = countPair && field.beforeTotal && field.afterTotal &&
                      *field.beforeTotal > 0 && *field.afterTotal > 0;
  out << ", \"share_of\": ";
  if (shares) {
    writeJsonString(out, field.shareOf);
    out << ", \"old_share\": " << shortest(roundedPercent(*before, *field.beforeTotal))
        << ", \"new_share\": " << shortest(roundedPercent(*after, *field.afterTotal));
  } else {
    out << "null, \"old_share\": null, \"new_share\": null";
  }
  out << "}";
}

}  // namespace

DiagramDiff DiagramDiff::compare(StoredDiagram const& before, StoredDiagram const& after,
                                 bool keepUnchanged) {
  Side const old(before.root());
  Side const now(after.root());
  DiagramDiff diff;
  auto const add = [&diff, keepUnchanged](char const* id, char const* title, Records before_,
                                          Records after_) {
    diff.groups_.push_back(
        compareRecords(id, title, std::move(before_), std::move(after_), keepUnchanged));
  };
  add("platform", "platform", old.platform(), now.platform());
  add("compute_units", "compute units", old.computeUnits(), now.computeUnits());
  add("kernels", "kernels", old.kernels(), now.kernels());
  add("memories", "memories", old.memories(), now.memories());
  add("connections", "connections", old.connections(), now.connections());
  add("clocks", "clocks", old.clocks(), now.clocks());
  add("clock_pins", "clock pins", old.clockPins(), now.clockPins());
  add("resources", "resources", old.resources(), now.resources());
  add("slr_use", "SLR use", old.slrUse(), now.slrUse());
  add("slr_totals", "SLR totals", old.slrTotals(), now.slrTotals());

  auto const& qsaBefore = before.root().system_diagram_metadata().qsa();
  auto const& qsaAfter = after.root().system_diagram_metadata().qsa();
  diff.platformChanged_ =
      qsaBefore.name() != qsaAfter.name() || qsaBefore.board().name() != qsaAfter.board().name();
  diff.platformBefore_ = qsaBefore.name() + " (board " + qsaBefore.board().name() + ")";
  diff.platformAfter_ = qsaAfter.name() + " (board " + qsaAfter.board().name() + ")";
  return diff;
}

bool DiagramDiff::same() const {
  for (Group const& group : groups_) {
    if (countsOf(group).differs()) return false;
  }
  return true;
}

void DiagramDiff::writeText(std::ostream& out, bool all) const {
  if (same() && !all) return;
  if (platformChanged_) {
    out << "PLATFORM CHANGED: " << platformBefore_ << " " << kArrow << " " << platformAfter_
        << "\n  every difference below may come from the other platform\n\n";
  }
  Counts total;
  bool first = true;
  for (Group const& group : groups_) {
    Counts const counts = countsOf(group);
    total.added += counts.added;
    total.removed += counts.removed;
    total.changed += counts.changed;
    total.same += counts.same;
    if (!counts.differs() && !(all && counts.same > 0)) continue;
    if (!first) out << '\n';
    first = false;
    out << group.title << ": " << countsText(counts, all) << '\n';
    for (Entry const& entry : group.entries) {
      if (entry.change == Change::kSame && !all) continue;
      std::string line = std::string("  ") + markOf(entry.change) + " " + entry.key;
      if (entry.change == Change::kChanged) {
        out << line << '\n';
        for (Field const& field : entry.fields) {
          out << padded("      " + field.name, kFieldColumn) << shownChange(field) << '\n';
        }
        continue;
      }
      if (entry.change == Change::kSame || entry.fields.empty()) {
        out << line << '\n';
        continue;
      }
      // Added and removed entries: their values on the same line when they fit.
      std::string values;
      for (Field const& field : entry.fields) {
        if (!values.empty()) values += ", ";
        values += field.name + " " +
                  shownValue(field, entry.change == Change::kAdded ? field.after : field.before);
      }
      std::string const joined = padded(line, kKeyColumn) + values;
      if (columns(joined) <= kTextWidth) {
        out << joined << '\n';
        continue;
      }
      out << line << '\n';
      for (Field const& field : entry.fields) {
        out << padded("      " + field.name, kFieldColumn)
            << shownValue(field, entry.change == Change::kAdded ? field.after : field.before)
            << '\n';
      }
    }
  }
  if (!first) out << '\n';
  out << "summary: " << countsText(total, all) << '\n';
}

void DiagramDiff::writeJson(std::ostream& out, bool all, std::string const& beforeName,
                            std::string const& afterName) const {
  Counts total;
  for (Group const& group : groups_) {
    Counts const counts = countsOf(group);
    total.added += counts.added;
    total.removed += counts.removed;
    total.changed += counts.changed;
    total.same += counts.same;
  }
  out << "{\n  \"old\": ";
  writeJsonString(out, beforeName);
  out << ",\n  \"new\": ";
  writeJsonString(out, afterName);
  out << ",\n  \"same\": " << (same() ? "true" : "false")
      << ",\n  \"platform_changed\": " << (platformChanged_ ? "true" : "false")
      << ",\n  \"all\": " << (all ? "true" : "false")
      << ",\n  \"summary\": {\"added\": " << total.added << ", \"removed\": " << total.removed
      << ", \"changed\": " << total.changed << ", \"unchanged\": " << total.same << "}"
      << ",\n  \"groups\": [";
  bool firstGroup = true;
  for (Group const& group : groups_) {
    Counts const counts = countsOf(group);
    out << (firstGroup ? "\n" : ",\n") << "    {\"group\": ";
    firstGroup = false;
    writeJsonString(out, group.id);
    out << ", \"title\": ";
    writeJsonString(out, group.title);
    out << ", \"added\": " << counts.added << ", \"removed\": " << counts.removed
        << ", \"changed\": " << counts.changed << ", \"unchanged\": " << counts.same
        << ",\n     \"entries\": [";
    bool firstEntry = true;
    for (Entry const& entry : group.entries) {
      if (entry.change == Change::kSame && !all) continue;
      out << (firstEntry ? "\n" : ",\n") << "       {\"change\": \"" << changeWord(entry.change)
          << "\", \"key\": ";
      firstEntry = false;
      writeJsonString(out, entry.key);
      out << ", \"fields\": [";
      for (std::size_t i = 0; i < entry.fields.size(); ++i) {
        out << (i == 0 ? "\n         " : ",\n         ");
        writeJsonField(out, entry.fields[i]);
      }
      out << (entry.fields.empty() ? "]}" : "\n       ]}");
    }
    out << (firstEntry ? "]}" : "\n     ]}");
  }
  out << "\n  ]\n}\n";
}

}  // namespace qvviews
