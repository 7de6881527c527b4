#include "host/qd/qdrepo/QDNameIndex.h"

#include <cstring>
#include <memory>

namespace qd {
namespace {

// The functions a repository expression wraps its path in. Anything else in front of the path
// (another step, an operator) could make the root step part of a larger expression, so such an
// expression is left as it is.
constexpr char const* kOpenings[] = {"", "boolean(", "count(", "number("};
constexpr char kRootStep[] = "/qd:repository/qd:";

bool isNameChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// Reads a run of name characters at `*at`; false when there is none.
bool readName(std::string const& text, std::size_t* at, std::string* name) {
  std::size_t end = *at;
  while (end < text.size() && isNameChar(text[end])) ++end;
  if (end == *at) return false;
  *name = text.substr(*at, end - *at);
  *at = end;
  return true;
}

bool readText(std::string const& text, std::size_t* at, char const* expected) {
  std::size_t const length = std::strlen(expected);
  if (text.compare(*at, length, expected) != 0) return false;
  *at += length;
  return true;
}

// Reads "@qd:<name>='<value>'" or "@qd:<name> ='<value>'", the two spellings the repository's
// expressions use. The value is what XPath reads as the literal: everything up to the next
// single quote.
bool readAttributeTest(std::string const& text, std::size_t* at, std::string* name,
                       std::string* value) {
  if (!readText(text, at, "@qd:") || !readName(text, at, name)) return false;
  readText(text, at, " ");
  if (!readText(text, at, "='")) return false;
  std::size_t const close = text.find('\'', *at);
  if (close == std::string::npos) return false;
  *value = text.substr(*at, close - *at);
  *at = close + 1;
  return true;
}

struct XmlText {
  void operator()(xmlChar* text) const { xmlFree(text); }
};

bool isQdElement(xmlNodePtr node, xmlChar const* uri, xmlChar const* name) {
  return node->type == XML_ELEMENT_NODE && node->ns != nullptr &&
         xmlStrEqual(node->ns->href, uri) && xmlStrEqual(node->name, name);
}

}  // namespace

char const* const QDNameIndex::kVariable = "qdNamedElements";

QDNameIndex::QDNameIndex(xmlDocPtr doc, std::string qdUri) : doc_(doc), qdUri_(std::move(qdUri)) {}

bool QDNameIndex::rewrite(std::string const& expression, std::string* rewritten,
                          std::vector<xmlNodePtr> const** elements) {
  // The variable exists only while a rewritten expression is evaluated, but an expression that
  // names any variable itself is kept away from it all the same.
  if (expression.find('$') != std::string::npos) return false;
  for (char const* opening : kOpenings) {
    std::size_t at = std::strlen(opening);
    if (expression.compare(0, at, opening) != 0) continue;
    if (!readText(expression, &at, kRootStep)) continue;
    std::string element;
    if (!readName(expression, &at, &element)) return false;
    std::size_t const predicate = at;
    std::string key;
    std::string value;
    if (!readText(expression, &at, "[") || !readAttributeTest(expression, &at, &key, &value)) {
      return false;
    }
    // The first predicate must be the name test alone, or the name test and one more
    // attribute test: with any other operator (an "or", a spliced "' or '1'='1") elements of
    // another name could pass, and the index would miss them.
    if (!readText(expression, &at, "]")) {
      std::string otherKey;
      std::string otherValue;
      if (!readText(expression, &at, " and ") ||
          !readAttributeTest(expression, &at, &otherKey, &otherValue) ||
          !readText(expression, &at, "]")) {
        return false;
      }
    }
    Elements const& named = elementsBy(element, key);
    auto const found = named.find(value);
    *elements = found == named.end() ? &none_ : &found->second;
    // The predicate and the rest keep their text, so XPath reads them exactly as before.
    rewritten->assign(opening).append("$").append(kVariable).append(expression, predicate,
                                                                   std::string::npos);
    return true;
  }
  return false;
}

QDNameIndex::Elements const& QDNameIndex::elementsBy(std::string const& element,
                                                     std::string const& key) {
  // Runs of queries ask about the same kind of element.
  if (last_ != nullptr && element == lastElement_ && key == lastKey_) return *last_;
  lastElement_ = element;
  lastKey_ = key;
  auto const made = byKey_.find({element, key});
  if (made != byKey_.end()) {
    last_ = &made->second;
    return made->second;
  }
  Elements& elements = byKey_[{element, key}];
  last_ = &elements;
  auto const* uri = reinterpret_cast<xmlChar const*>(qdUri_.c_str());
  auto const* elementName = reinterpret_cast<xmlChar const*>(element.c_str());
  auto const* keyName = reinterpret_cast<xmlChar const*>(key.c_str());
  xmlNodePtr const root = xmlDocGetRootElement(doc_);
  if (root == nullptr || !isQdElement(root, uri, reinterpret_cast<xmlChar const*>("repository"))) {
    return elements;
  }
  for (xmlNodePtr child = root->children; child != nullptr; child = child->next) {
    if (!isQdElement(child, uri, elementName)) continue;
    // An element is filed under every value its key attribute has: a file may (not well-formed
    // as to namespaces, but libxml2 keeps it) bind two prefixes to the namespace and carry the
    // attribute twice, and XPath's test passes when either value matches.
    for (xmlAttrPtr attribute = child->properties; attribute != nullptr;
         attribute = attribute->next) {
      if (attribute->ns == nullptr || !xmlStrEqual(attribute->ns->href, uri) ||
          !xmlStrEqual(attribute->name, keyName)) {
        continue;
      }
      // The value as XPath compares it: the attribute node's content.
      std::unique_ptr<xmlChar, XmlText> content(
          xmlNodeGetContent(reinterpret_cast<xmlNodePtr>(attribute)));
      std::string const value =
          content ? reinterpret_cast<char const*>(content.get()) : std::string();
      std::vector<xmlNodePtr>& list = elements[value];
      if (list.empty() || list.back() != child) list.push_back(child);
    }
  }
  return elements;
}

}  // namespace qd
