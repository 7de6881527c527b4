#include "platform/hco/HCOXmlDocument.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/xmlerror.h>

#include <cerrno>
#include <cstdlib>
#include <fstream>
#include <limits>
#include <stdexcept>
#include <utility>

namespace {

std::string trimmed(std::string const& text) {
  auto const first = text.find_first_not_of(" \t\r\n");
  if (first == std::string::npos) return "";
  auto const last = text.find_last_not_of(" \t\r\n");
  return text.substr(first, last - first + 1);
}

// Reads the whole of `text` as a decimal integer of type long long; false when anything but
// digits (after an optional sign) is there, or the number is out of range.
bool wholeDecimal(std::string const& text, long long& value) {
  if (text.empty() || text.find_first_of(" \t\r\n") != std::string::npos) return false;
  char* end = nullptr;
  errno = 0;
  value = std::strtoll(text.c_str(), &end, 10);
  return errno == 0 && end == text.c_str() + text.size();
}

// libxml2 goes on after the first error and reports later ones that follow from it ("Premature
// end of data" at the end of the file); the first one says where the file went wrong.
struct FirstError {
  bool seen = false;
  std::string message;
  int line = 0;
};

void keepFirstError(void* data, xmlErrorPtr error) {
  auto* first = static_cast<FirstError*>(data);
  if (first->seen || error == nullptr || error->level < XML_ERR_ERROR) return;
  first->seen = true;
  first->message = error->message != nullptr ? error->message : "";
  first->line = error->line;
}

// Sends libxml2's errors of this thread to `first` while it lives, and then back to whoever had
// them.
class ErrorCollector {
 public:
  explicit ErrorCollector(FirstError& first)
      : previous(xmlStructuredError), previousContext(xmlStructuredErrorContext) {
    xmlSetStructuredErrorFunc(&first, keepFirstError);
  }
  ~ErrorCollector() { xmlSetStructuredErrorFunc(previousContext, previous); }
  ErrorCollector(ErrorCollector const&) = delete;
  ErrorCollector& operator=(ErrorCollector const&) = delete;

 private:
  xmlStructuredErrorFunc previous;
  void* previousContext;
};

}  // namespace

HCOXmlDocument::HCOXmlDocument(std::string path)
    : path_(std::move(path)), doc_(nullptr, xmlFreeDoc) {
  // libxml2 would report an unreadable file as an "I/O error" with no line; say it plainly.
  if (!std::ifstream(path_)) throw std::runtime_error(path_ + ": cannot be read");
  xmlInitParser();
  std::unique_ptr<xmlParserCtxt, void (*)(xmlParserCtxtPtr)> context(xmlNewParserCtxt(),
                                                                     xmlFreeParserCtxt);
  if (!context) throw std::runtime_error(path_ + ": out of memory while reading");
  FirstError first;
  {
    ErrorCollector const collector(first);
    doc_.reset(xmlCtxtReadFile(context.get(), path_.c_str(), nullptr,
                               XML_PARSE_NONET | XML_PARSE_NOERROR | XML_PARSE_NOWARNING));
  }
  if (!doc_) {
    if (!first.seen) {
      xmlError const* last = xmlCtxtGetLastError(context.get());
      first.message = last != nullptr && last->message != nullptr ? last->message : "";
      first.line = last != nullptr ? last->line : 0;
    }
    std::string const message = trimmed(first.message);
    throw std::runtime_error(path_ + ":" + std::to_string(first.line) + ": " +
                             (message.empty() ? "not well-formed XML" : message));
  }
  if (xmlDocGetRootElement(doc_.get()) == nullptr) {
    throw std::runtime_error(path_ + ": the document has no root element");
  }
}

xmlNode* HCOXmlDocument::root() const { return xmlDocGetRootElement(doc_.get()); }

std::vector<xmlNode*> HCOXmlDocument::children(xmlNode const* node, char const* name) {
  std::vector<xmlNode*> found;
  for (xmlNode* child = node->children; child != nullptr; child = child->next) {
    if (child->type != XML_ELEMENT_NODE) continue;
    if (name != nullptr && HCOXmlDocument::name(child) != name) continue;
    found.push_back(child);
  }
  return found;
}

std::string HCOXmlDocument::name(xmlNode const* node) {
  return reinterpret_cast<char const*>(node->name);
}

std::string HCOXmlDocument::attribute(xmlNode const* node, char const* name) {
  xmlChar* value = xmlGetProp(node, reinterpret_cast<xmlChar const*>(name));
  if (value == nullptr) return "";
  std::string text = reinterpret_cast<char const*>(value);
  xmlFree(value);
  return text;
}

std::string HCOXmlDocument::text(xmlNode const* node) {
  xmlChar* content = xmlNodeGetContent(node);
  if (content == nullptr) return "";
  std::string text = reinterpret_cast<char const*>(content);
  xmlFree(content);
  return trimmed(text);
}

std::runtime_error HCOXmlDocument::error(xmlNode const* node, std::string const& what) const {
  return std::runtime_error(path_ + ":" + std::to_string(xmlGetLineNo(node)) + ": " + what);
}

std::uint32_t HCOXmlDocument::unsignedNumber(xmlNode const* node, std::string const& text,
                                             std::string const& what) const {
  long long value = 0;
  if (!wholeDecimal(text, value) || text[0] == '-' || text[0] == '+' ||
      value > static_cast<long long>(std::numeric_limits<std::uint32_t>::max())) {
    throw error(node, what + " must be an unsigned decimal number below 2^32, not '" + text + "'");
  }
  return static_cast<std::uint32_t>(value);
}

std::int32_t HCOXmlDocument::signedNumber(xmlNode const* node, std::string const& text,
                                          std::string const& what) const {
  if (text.empty()) return 0;
  long long value = 0;
  if (!wholeDecimal(text, value) || value < std::numeric_limits<std::int32_t>::min() ||
      value > std::numeric_limits<std::int32_t>::max()) {
    throw error(node, what + " must be a signed 32-bit decimal number, not '" + text + "'");
  }
  return static_cast<std::int32_t>(value);
}
