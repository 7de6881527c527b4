#include "checks/CrossFileCheck.h"

#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "checks/JsonDocument.h"
#include "checks/JsonFile.h"
#include "checks/LenientNumbers.h"

namespace qvcheck {

namespace {

std::optional<JsonDocument> quietly(std::string const& path) {
  std::string text, why;
  if (!JsonFile::readText(path, text, why)) return std::nullopt;
  JsonDocument document = JsonDocument::parse(text);
  if (!document.ok()) return std::nullopt;
  return document;
}

// The entries of a section's list when the import reads the section (its count not zero).
std::vector<JsonMember> const* entries(JsonValue const& root, char const* section,
                                       char const* list) {
  JsonValue const* const found = root.find(section);
  if (found == nullptr) return nullptr;
  JsonValue const* const count = found->find("m_count");
  if (count == nullptr || LenientNumbers::count(count->text) == 0) return nullptr;
  JsonValue const* const members = found->find(list);
  return members == nullptr ? nullptr : &members->members;
}

// The last member of `key`, as the import keeps it.
JsonMember const* last(JsonValue const& entry, char const* key) {
  JsonMember const* found = nullptr;
  for (JsonMember const& member : entry.members) {
    if (member.key == key) found = &member;
  }
  return found;
}

}  // namespace

void CrossFileCheck::memorySlrs(std::string const& rtdFile, std::string const& platformFile,
                                CheckReport& report) {
  std::optional<JsonDocument> const rtd = quietly(rtdFile);
  std::optional<JsonDocument> const platform = quietly(platformFile);
  if (!rtd || !platform) return;
  std::set<std::string> tags;
  JsonValue const* hardware = platform->root().find("hardwarePlatform");
  JsonValue const* const interfaces = hardware ? hardware->find("busInterfaces") : nullptr;
  if (interfaces != nullptr) {
    for (JsonMember const& busInterface : interfaces->members) {
      JsonValue const* const spTag = busInterface.value.find("spTag");
      JsonValue const* const segments = busInterface.value.find("addressSegments");
      if (spTag == nullptr || spTag->text.empty() || segments == nullptr) continue;
      for (JsonMember const& segment : segments->members) {
        JsonValue const* const slr = segment.value.find("slr");
        JsonValue const* const index = segment.value.find("index");
        int number = -1;
        if (slr == nullptr || slr->text.empty() || index == nullptr ||
            !LenientNumbers::reads<int>(index->text, &number) || number < 0) {
          continue;
        }
        tags.insert(spTag->text + "[" + std::to_string(number) + "]");
      }
    }
  }
  std::vector<JsonMember> const* const memories =
      entries(rtd->root(), "mem_topology", "m_mem_data");
  if (memories == nullptr) return;
  for (std::size_t i = 0; i < memories->size(); ++i) {
    JsonMember const* const spTag = last((*memories)[i].value, "m_spTag");
    if (spTag == nullptr || spTag->value.text.empty() || tags.count(spTag->value.text) > 0) {
      continue;
    }
    Finding finding;
    finding.severity = Severity::kWarning;
    finding.file = rtdFile;
    finding.line = spTag->value.line;
    finding.column = spTag->value.column;
    finding.keyPath = indexPath("mem_topology.m_mem_data", i) + ".m_spTag";
    finding.text = "\"" + spTag->value.text + "\" is no tag <spTag>[<index>] of the address "
                   "segments of " + platformFile;
    finding.effect = "the import leaves the memory's slr empty";
    finding.code = "QV-RTD-SPTAG-NO-SLR";
    report.add(std::move(finding));
  }
}

void CrossFileCheck::reportedComputeUnits(std::string const& rtdFile,
                                          std::string const& utilizationFile,
                                          CheckReport& report) {
  std::optional<JsonDocument> const rtd = quietly(rtdFile);
  std::optional<JsonDocument> const utilization = quietly(utilizationFile);
  if (!rtd || !utilization) return;
  std::vector<JsonMember> const* const ips = entries(rtd->root(), "ip_layout", "m_ip_data");
  std::set<std::string> units;
  if (ips != nullptr) {
    for (JsonMember const& ip : *ips) {
      JsonMember const* const name = last(ip.value, "m_name");
      if (name == nullptr) continue;
      std::string::size_type const colon = name->value.text.find(':');
      if (colon == std::string::npos) continue;
      std::string const rest = name->value.text.substr(colon + 1);
      units.insert(rest.substr(0, rest.find(':')));
    }
  }
  JsonValue const* const kernels = utilization->root().find("kernels");
  if (kernels == nullptr) return;
  for (std::size_t k = 0; k < kernels->members.size(); ++k) {
    JsonValue const* const list = kernels->members[k].value.find("compute_units");
    if (list == nullptr) continue;
    for (std::size_t c = 0; c < list->members.size(); ++c) {
      JsonMember const* const name = last(list->members[c].value, "cu_name");
      if (name == nullptr || name->value.text.empty() || units.count(name->value.text) > 0) {
        continue;
      }
      Finding finding;
      finding.severity = Severity::kWarning;
      finding.file = utilizationFile;
      finding.line = name->value.line;
      finding.column = name->value.column;
      finding.keyPath =
          indexPath(indexPath("kernels", k) + ".compute_units", c) + ".cu_name";
      finding.text = "\"" + name->value.text + "\" is no compute unit of " + rtdFile;
      finding.effect = "the session keeps the report, but no compute unit of the diagram shows it";
      finding.code = "QV-UTIL-UNKNOWN-CU";
      report.add(std::move(finding));
    }
  }
}

}  // namespace qvcheck
