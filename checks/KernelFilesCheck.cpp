#include "checks/KernelFilesCheck.h"

#include <libxml/parser.h>
#include <libxml/tree.h>
#include <libxml/xmlerror.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <map>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "checks/JsonDocument.h"
#include "checks/JsonFile.h"
#include "checks/LenientNumbers.h"
#include "checks/NearestKey.h"

namespace qvcheck {

namespace {

Finding makeFinding(Severity severity, std::string const& file, int line, std::string keyPath,
                    std::string text, std::string effect, std::string code) {
  Finding finding;
  finding.severity = severity;
  finding.file = file;
  finding.line = line;
  finding.keyPath = std::move(keyPath);
  finding.text = std::move(text);
  finding.effect = std::move(effect);
  finding.code = std::move(code);
  return finding;
}

// libxml2's first error of a parse; later ones follow from it.
struct FirstError {
  bool seen = false;
  std::string message;
  int line = 0;
  int column = 0;
};

void keepFirstError(void* data, xmlErrorPtr error) {
  auto* first = static_cast<FirstError*>(data);
  if (first->seen || error == nullptr || error->level < XML_ERR_ERROR) return;
  first->seen = true;
  first->message = error->message != nullptr ? error->message : "";
  while (!first->message.empty() &&
         (first->message.back() == '\n' || first->message.back() == ' ')) {
    first->message.pop_back();
  }
  first->line = error->line;
  first->column = error->int2;
}

using Document = std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)>;

// Parses `path` with the options of the library's reader (platform/hco/HCOXmlDocument.cpp);
// a null document after an error finding with `format`'s code.
Document readXml(std::string const& path, std::string const& format, CheckReport& report) {
  Document document(nullptr, xmlFreeDoc);
  if (!std::ifstream(path)) {
    report.add(makeFinding(Severity::kError, path, 0, "", "cannot be read",
                           "the import fails", "QV-" + format + "-NOT-XML"));
    return document;
  }
  xmlInitParser();
  std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxtPtr)> context(xmlNewParserCtxt(),
                                                                     xmlFreeParserCtxt);
  FirstError first;
  xmlStructuredErrorFunc const previous = xmlStructuredError;
  void* const previousContext = xmlStructuredErrorContext;
  xmlSetStructuredErrorFunc(&first, keepFirstError);
  document.reset(xmlCtxtReadFile(context.get(), path.c_str(), nullptr,
                                 XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  xmlSetStructuredErrorFunc(previousContext, previous);
  if (!document) {
    Finding finding = makeFinding(Severity::kError, path, first.line, "",
                                  "not well-formed XML: " +
                                      (first.message.empty() ? std::string("no details")
                                                             : first.message),
                                  "the import fails", "QV-" + format + "-NOT-XML");
    finding.column = first.column;
    report.add(std::move(finding));
    return document;
  }
  if (xmlDocGetRootElement(document.get()) == nullptr) {
    report.add(makeFinding(Severity::kError, path, 0, "", "the document has no root element",
                           "the import fails", "QV-" + format + "-NOT-XML"));
    document.reset();
  }
  return document;
}

std::string nameOf(xmlNode const* node) { return reinterpret_cast<char const*>(node->name); }

int lineOf(xmlNode const* node) { return static_cast<int>(xmlGetLineNo(node)); }

std::vector<xmlNode*> elements(xmlNode const* node) {
  std::vector<xmlNode*> found;
  for (xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (child->type == XML_ELEMENT_NODE) found.push_back(child);
  }
  return found;
}

std::optional<std::string> attribute(xmlNode const* node, char const* name) {
  xmlChar* value = xmlGetProp(node, reinterpret_cast<xmlChar const*>(name));
  if (value == nullptr) return std::nullopt;
  std::string text = reinterpret_cast<char const*>(value);
  xmlFree(value);
  return text;
}

std::string trimmedContent(xmlNode const* node) {
  xmlChar* content = xmlNodeGetContent(node);
  std::string text = content == nullptr ? "" : reinterpret_cast<char const*>(content);
  if (content != nullptr) xmlFree(content);
  auto const firstChar = text.find_first_not_of(" \t\r\n");
  if (firstChar == std::string::npos) return "";
  return text.substr(firstChar, text.find_last_not_of(" \t\r\n") - firstChar + 1);
}

// The whole text as a decimal integer, as the library's reader takes one: digits after an
// optional sign, no white space, within long long.
bool wholeDecimal(std::string const& text, long long& value) {
  if (text.empty() || text.find_first_of(" \t\r\n") != std::string::npos) return false;
  char* end = nullptr;
  errno = 0;
  value = std::strtoll(text.c_str(), &end, 10);
  return errno == 0 && end == text.c_str() + text.size();
}

bool unsigned32(std::string const& text) {
  long long value = 0;
  return wholeDecimal(text, value) && text[0] != '-' && text[0] != '+' &&
         value <= static_cast<long long>(std::numeric_limits<std::uint32_t>::max());
}

bool signed32(std::string const& text) {
  if (text.empty()) return true;
  long long value = 0;
  return wholeDecimal(text, value) && value >= std::numeric_limits<std::int32_t>::min() &&
         value <= std::numeric_limits<std::int32_t>::max();
}

void unknownAttributes(xmlNode const* element, std::vector<std::string> const& known,
                       std::string const& path, std::string const& where, CheckReport& report) {
  for (xmlAttr const* a = element->properties; a != nullptr; a = a->next) {
    std::string const name = reinterpret_cast<char const*>(a->name);
    bool isKnown = false;
    for (std::string const& each : known) isKnown = isKnown || each == name;
    if (isKnown) continue;
    report.add(makeFinding(Severity::kWarning, path, lineOf(element), where,
                           name + " is not an attribute of <" + nameOf(element) + ">" +
                               didYouMean(name, known),
                           "the import ignores it", "QV-KERNELXML-UNKNOWN-ATTRIBUTE"));
  }
}

}  // namespace

void KernelFilesCheck::checkKernelXml(std::string const& path, CheckReport& report) {
  report.addFile(path);
  Document const document = readXml(path, "KERNELXML", report);
  if (!document) return;
  xmlNode const* const root = xmlDocGetRootElement(document.get());
  if (nameOf(root) != "kernel") {
    report.add(makeFinding(Severity::kError, path, lineOf(root), "",
                           "the root element is <" + nameOf(root) + ">, not <kernel>",
                           "the import fails", "QV-KERNELXML-ROOT"));
    return;
  }
  static std::vector<std::string> const kPort = {"name",     "mode",     "detailA",
                                                 "dataWidth", "portType", "detailB"};
  static std::vector<std::string> const kArg = {
      "name",    "addressKind", "id",     "port",          "size",    "offset", "detailA",
      "detailB", "portInterfaceType", "type", "argName", "hostSize"};
  std::size_t ports = 0, args = 0;
  for (xmlNode const* element : elements(root)) {
    std::string const what = nameOf(element);
    if (what == "port") {
      std::string const where = "kernel.port[" + std::to_string(ports++) + "]";
      unknownAttributes(element, kPort, path, where, report);
      std::string const width = attribute(element, "dataWidth").value_or("");
      if (!signed32(width)) {
        report.add(makeFinding(Severity::kError, path, lineOf(element), where + ".dataWidth",
                               "'" + width + "' is not a signed 32-bit decimal number",
                               "the import fails", "QV-KERNELXML-NUMBER"));
      }
      continue;
    }
    if (what == "arg") {
      std::string const where = "kernel.arg[" + std::to_string(args++) + "]";
      unknownAttributes(element, kArg, path, where, report);
      std::string const kind = attribute(element, "addressKind").value_or("");
      if (!kind.empty() && !unsigned32(kind)) {
        report.add(makeFinding(Severity::kError, path, lineOf(element), where + ".addressKind",
                               "'" + kind + "' is not an unsigned decimal number below 2^32",
                               "the import fails", "QV-KERNELXML-NUMBER"));
      }
      continue;
    }
    report.add(makeFinding(Severity::kError, path, lineOf(element), "kernel",
                           "<" + what + "> is not allowed in <kernel>: only <port> and <arg>" +
                               didYouMean(what, {"port", "arg"}),
                           "the import fails", "QV-KERNELXML-ELEMENT"));
  }
}

void KernelFilesCheck::checkDesignXml(std::string const& path, CheckReport& report) {
  report.addFile(path);
  Document const document = readXml(path, "DESIGNXML", report);
  if (!document) return;
  xmlNode const* const root = xmlDocGetRootElement(document.get());
  if (nameOf(root) != "profile") {
    report.add(makeFinding(Severity::kError, path, lineOf(root), "",
                           "the root element is <" + nameOf(root) + ">, not <profile>",
                           "the import fails", "QV-DESIGNXML-ROOT"));
    return;
  }
  auto const misplaced = [&](xmlNode const* element, char const* expected, std::string const& in) {
    report.add(makeFinding(Severity::kError, path, lineOf(element), in,
                           "<" + nameOf(element) + "> is out of its place: only <" + expected +
                               "> belongs here",
                           "the import fails", "QV-DESIGNXML-ELEMENT"));
  };
  // The messages of a missing estimate, in the order the import asks for them
  // (rtd/RtdSystemDiagramVisitor.cpp, populateKernelEstimatedResources).
  struct Estimate {
    char const* element;
    char const* messageId;
    char const* field;
  };
  static Estimate const kEstimates[] = {{"LUT", "82-159", "lut"},
                                        {"BRAM", "82-157", "bram"},
                                        {"URAM", "82-3568", "uram"},
                                        {"DSP", "82-158", "dsp"},
                                        {"FF", "82-160", "reg"}};
  static std::vector<std::string> const kCounts = {"BRAM", "DSP", "FF", "LUT", "SRL", "URAM"};
  std::vector<xmlNode*> const groups = elements(root);
  for (std::size_t g = 0; g < groups.size(); ++g) {
    std::string const groupPath = "profile.moduleInformation[" + std::to_string(g) + "]";
    if (nameOf(groups[g]) != "moduleInformation") {
      misplaced(groups[g], "moduleInformation", "profile");
      return;
    }
    std::vector<xmlNode*> const modules = elements(groups[g]);
    for (std::size_t m = 0; m < modules.size(); ++m) {
      std::string const modulePath = groupPath + ".module[" + std::to_string(m) + "]";
      if (nameOf(modules[m]) != "module") {
        misplaced(modules[m], "module", groupPath);
        return;
      }
      std::vector<xmlNode*> const estimates = elements(modules[m]);
      for (std::size_t e = 0; e < estimates.size(); ++e) {
        std::string const estimatePath = modulePath + ".areaEstimates[" + std::to_string(e) + "]";
        if (nameOf(estimates[e]) != "areaEstimates") {
          misplaced(estimates[e], "areaEstimates", modulePath);
          return;
        }
        std::vector<xmlNode*> const records = elements(estimates[e]);
        for (std::size_t r = 0; r < records.size(); ++r) {
          std::string const recordPath = estimatePath + ".resources[" + std::to_string(r) + "]";
          if (nameOf(records[r]) != "resources") {
            misplaced(records[r], "resources", estimatePath);
            return;
          }
          for (xmlNode const* count : elements(records[r])) {
            std::string const what = nameOf(count);
            bool known = false;
            for (std::string const& each : kCounts) known = known || each == what;
            if (!known) {
              report.add(makeFinding(Severity::kError, path, lineOf(count), recordPath,
                                     "<" + what + "> is none of <BRAM>, <DSP>, <FF>, <LUT>, "
                                     "<SRL>, <URAM>" + didYouMean(what, kCounts),
                                     "the import fails", "QV-DESIGNXML-ELEMENT"));
              return;
            }
            std::string const text = trimmedContent(count);
            if (!unsigned32(text)) {
              report.add(makeFinding(Severity::kError, path, lineOf(count),
                                     recordPath + "." + what,
                                     "'" + text + "' is not an unsigned decimal number below 2^32",
                                     "the import fails", "QV-DESIGNXML-NUMBER"));
              return;
            }
          }
        }
      }
    }
  }
  // What the import asks of the report it has read: the n-th group's n-th module, and of each
  // record of its estimates the r-th value of each list.
  for (std::size_t g = 0; g < groups.size(); ++g) {
    std::vector<xmlNode*> const modules = elements(groups[g]);
    if (modules.size() <= g) {
      report.add(makeFinding(Severity::kError, path, lineOf(groups[g]),
                             "profile.moduleInformation[" + std::to_string(g) + "]",
                             "group " + std::to_string(g) + " has " +
                                 std::to_string(modules.size()) +
                                 " modules, and the import asks each group for the module at "
                                 "its own position (write one group with one module)",
                             "the import fails", "QV-DESIGNXML-MODULE-MISSING"));
      return;
    }
    for (xmlNode const* estimate : elements(modules[g])) {
      std::vector<xmlNode*> const records = elements(estimate);
      for (std::size_t r = 0; r < records.size(); ++r) {
        std::map<std::string, std::size_t> counted;
        for (xmlNode const* count : elements(records[r])) ++counted[nameOf(count)];
        for (Estimate const& each : kEstimates) {
          if (counted[each.element] > r) continue;
          report.add(makeFinding(
              Severity::kWarning, path, lineOf(records[r]),
              "profile.moduleInformation[" + std::to_string(g) + "].module[" +
                  std::to_string(g) + "]",
              std::string("record ") + std::to_string(r) + " has no " + each.element +
                  " value at its position",
              std::string("the import sends WARNING ") + each.messageId + " and leaves " +
                  each.field + " as it was",
              "QV-DESIGNXML-ESTIMATE-MISSING"));
        }
      }
    }
  }
}

void KernelFilesCheck::checkKernelJson(std::string const& path, CheckReport& report) {
  report.addFile(path);
  std::string text;
  if (!JsonFile::readOrReport(path, text, Severity::kWarning, "the kernel gets no clock",
                              "QV-KERNELJSON-NOT-JSON", report)) {
    return;
  }
  // The import reads kernel.json with the property tree's own reader, and takes a file that is
  // not JSON as absent.
  std::optional<JsonDocument> const document = JsonFile::parse(
      path, text, "KERNELJSON", "the import takes it as absent: the kernel gets no clock", report,
      Severity::kWarning,
      // Its reader there is the property tree's own, without the nesting limit of the others.
      "the check reads no further; the import reads it as deep as its stack allows");
  if (!document) return;
  JsonValue const& root = document->root();
  JsonValue const* const info = root.find("ClockInfo");
  for (char const* key : {"ClockName", "ClockPeriod"}) {
    if (info != nullptr && info->find(key) != nullptr) continue;
    JsonValue const& at = info != nullptr ? *info : root;
    Finding finding = makeFinding(Severity::kError, path, at.line,
                                  std::string("ClockInfo.") + key, "missing",
                                  "the import fails", "QV-KERNELJSON-CLOCK-MISSING");
    finding.column = at.column;
    report.add(std::move(finding));
    return;
  }
  JsonValue const& period = *info->find("ClockPeriod");
  double value = 0;
  if (!LenientNumbers::reads<double>(period.text, &value)) {
    Finding finding = makeFinding(Severity::kError, path, period.line, "ClockInfo.ClockPeriod",
                                  period.describe() + " is not a number", "the import fails",
                                  "QV-KERNELJSON-PERIOD-NOT-NUMBER");
    finding.column = period.column;
    report.add(std::move(finding));
    return;
  }
  if (value == 0.0) {
    Finding finding = makeFinding(Severity::kWarning, path, period.line, "ClockInfo.ClockPeriod",
                                  "a period of 0 ns",
                                  "the import stores an infinite requested frequency",
                                  "QV-KERNELJSON-PERIOD-ZERO");
    finding.column = period.column;
    report.add(std::move(finding));
  }
}

}  // namespace qvcheck
