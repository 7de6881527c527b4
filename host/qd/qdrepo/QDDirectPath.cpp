#include "host/qd/qdrepo/QDDirectPath.h"

#include <libxml/xpathInternals.h>

#include <memory>
#include <utility>

namespace qd {
namespace {

constexpr std::string_view kOpenings[] = {"boolean(", "count(", "number("};

bool isNameChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

// A text cursor over the expression; every read either takes what it expects and moves on, or
// leaves the cursor where it was and says no.
class Reader {
 public:
  explicit Reader(std::string_view text) : text_(text) {}

  bool atEnd() const { return at_ == text_.size(); }
  bool take(std::string_view expected) {
    if (text_.compare(at_, expected.size(), expected) != 0) return false;
    at_ += expected.size();
    return true;
  }
  bool peek(std::string_view expected) const {
    return text_.compare(at_, expected.size(), expected) == 0;
  }
  // A name as XPath reads one: it may not start with a digit ("@qd:0x1c" does not compile).
  bool name(std::string_view* read) {
    std::size_t end = at_;
    while (end < text_.size() && isNameChar(text_[end])) ++end;
    if (end == at_ || (text_[at_] >= '0' && text_[at_] <= '9')) return false;
    *read = text_.substr(at_, end - at_);
    at_ = end;
    return true;
  }
  // 1 to 999,999,999 without leading zeros: XPath reads those as the same whole number.
  bool position(long* read) {
    std::size_t end = at_;
    long value = 0;
    while (end < text_.size() && text_[end] >= '0' && text_[end] <= '9' && end - at_ < 9) {
      value = value * 10 + (text_[end] - '0');
      ++end;
    }
    if (end == at_ || text_[at_] == '0') return false;
    if (end < text_.size() && text_[end] >= '0' && text_[end] <= '9') return false;
    *read = value;
    at_ = end;
    return true;
  }
  // A quoted text of printable ASCII: libxml2 checks every character of a literal against
  // XML's character classes and reads other bytes as UTF-8, and such texts stay with it.
  bool literal(std::string_view* read) {
    if (!peek("'")) return false;
    std::size_t end = at_ + 1;
    while (end < text_.size() && text_[end] != '\'') {
      if (text_[end] < 0x20 || text_[end] > 0x7e) return false;
      ++end;
    }
    if (end == text_.size()) return false;
    *read = text_.substr(at_ + 1, end - at_ - 1);
    at_ = end + 1;
    return true;
  }

 private:
  std::string_view text_;
  std::size_t at_ = 0;
};

// The parts of "not(@qd:<a>='<v>') or (@qd:<a>='<v>' and
// not(@qd:<g>=preceding-sibling::qd:<e>/@qd:<g>))", read at the cursor; both <a>, both <v> and
// both <g> must be the same.
struct FirstOfGroup {
  std::string_view attribute;
  std::string_view value;
  std::string_view group;
  std::string_view sibling;
};

bool readFirstOfGroup(Reader* reader, FirstOfGroup* read) {
  std::string_view attribute;
  std::string_view value;
  std::string_view group;
  if (!reader->take("not(@qd:") || !reader->name(&read->attribute) || !reader->take("=") ||
      !reader->literal(&read->value) || !reader->take(") or (@qd:") || !reader->name(&attribute) ||
      !reader->take("=") || !reader->literal(&value) || !reader->take(" and not(@qd:") ||
      !reader->name(&read->group) || !reader->take("=preceding-sibling::qd:") ||
      !reader->name(&read->sibling) || !reader->take("/@qd:") || !reader->name(&group) ||
      !reader->take("))")) {
    return false;
  }
  return attribute == read->attribute && value == read->value && group == read->group;
}

std::string_view textOf(xmlChar const* text) {
  return text == nullptr ? std::string_view()
                         : std::string_view(reinterpret_cast<char const*>(text));
}

struct NodeSet {
  void operator()(xmlNodeSetPtr set) const { xmlXPathFreeNodeSet(set); }
};

}  // namespace

QDDirectPath::QDDirectPath(std::string qdUri, std::string variable)
    : qdUri_(std::move(qdUri)), variable_(std::move(variable)) {}

bool QDDirectPath::isQd(xmlNsPtr ns) const {
  // A document declares its namespaces a few times at most, and the nodes point at those few
  // declarations: the last one found to be qd's answers most questions without reading a text.
  if (ns == nullptr) return false;
  if (ns == lastQd_) return true;
  if (ns->href == nullptr || textOf(ns->href) != qdUri_) return false;
  lastQd_ = ns;
  return true;
}

// A node's name against a name of the expression, without measuring the node's name first.
bool QDDirectPath::named(xmlChar const* name, std::string_view expected) {
  if (name == nullptr) return false;
  char const* text = reinterpret_cast<char const*>(name);
  for (char const c : expected) {
    if (*text == '\0' || *text != c) return false;
    ++text;
  }
  return *text == '\0';
}

bool QDDirectPath::hasAttributeValue(xmlNodePtr element, std::string_view name,
                                     std::string_view value, bool* plain) const {
  bool found = false;
  for (xmlAttrPtr attribute = element->properties; attribute != nullptr;
       attribute = attribute->next) {
    if (!named(attribute->name, name) || !isQd(attribute->ns)) continue;
    std::string_view content;
    if (!plainValue(attribute, &content)) {
      *plain = false;
      return false;
    }
    if (content == value) found = true;
  }
  return found;
}

bool QDDirectPath::filter(Predicate const& predicate, std::vector<xmlNodePtr>* nodes) const {
  if (!predicate.group.empty()) return filterFirstOfGroup(predicate, nodes);
  if (predicate.position != 0) {
    if (static_cast<std::size_t>(predicate.position) > nodes->size()) {
      nodes->clear();
    } else {
      xmlNodePtr const kept = (*nodes)[static_cast<std::size_t>(predicate.position) - 1];
      nodes->assign(1, kept);
    }
    return true;
  }
  bool plain = true;
  std::size_t kept = 0;
  for (xmlNodePtr node : *nodes) {
    if (hasAttributeValue(node, predicate.attribute, predicate.value, &plain)) {
      (*nodes)[kept++] = node;
    }
    if (!plain) return false;
    if (predicate.limit != 0 && kept == predicate.limit) break;
  }
  nodes->resize(kept);
  return true;
}

// [not(@qd:<a>='<v>') or (@qd:<a>='<v>' and not(@qd:<g>=preceding-sibling::qd:<e>/@qd:<g>))]:
// an element passes unless it is marked and an earlier qd:<e> sibling shares one of its <g>
// values. XPath compares two sets of attributes by their values, pair by pair, and finds them
// equal when any pair is; an attribute that is not plain text is left to libxml2.
bool QDDirectPath::filterFirstOfGroup(Predicate const& predicate,
                                      std::vector<xmlNodePtr>* nodes) const {
  bool plain = true;
  std::size_t kept = 0;
  for (xmlNodePtr node : *nodes) {
    bool const marked = hasAttributeValue(node, predicate.attribute, predicate.value, &plain);
    if (!plain) return false;
    bool shared = false;
    if (marked) {
      for (xmlAttrPtr own = node->properties; own != nullptr && !shared; own = own->next) {
        if (!named(own->name, predicate.group) || !isQd(own->ns)) continue;
        std::string_view ownValue;
        if (!plainValue(own, &ownValue)) return false;
        for (xmlNodePtr sibling = node->prev; sibling != nullptr && !shared;
             sibling = sibling->prev) {
          if (sibling->type != XML_ELEMENT_NODE || !named(sibling->name, predicate.sibling) ||
              !isQd(sibling->ns)) {
            continue;
          }
          if (hasAttributeValue(sibling, predicate.group, ownValue, &plain)) shared = true;
          if (!plain) return false;
        }
      }
    }
    if (!marked || !shared) (*nodes)[kept++] = node;
    if (predicate.limit != 0 && kept == predicate.limit) break;
  }
  nodes->resize(kept);
  return true;
}

bool QDDirectPath::plainValue(xmlAttrPtr attribute, std::string_view* value) {
  xmlNodePtr const text = attribute->children;
  if (text != nullptr && (text->type != XML_TEXT_NODE || text->next != nullptr)) return false;
  *value = text == nullptr ? std::string_view() : textOf(text->content);
  return true;
}

xmlXPathObjectPtr QDDirectPath::evaluate(std::string_view rewritten,
                                         std::vector<xmlNodePtr> const& elements) const {
  Reader reader(rewritten);
  std::string_view opening;
  for (std::string_view candidate : kOpenings) {
    if (reader.take(candidate)) {
      opening = candidate;
      break;
    }
  }
  if (!reader.take("$") || !reader.take(variable_)) return nullptr;
  // Reads the predicates at the cursor and applies them to `nodes`, each to the whole list.
  auto const predicates = [this, &reader](std::vector<xmlNodePtr>* nodes) {
    while (reader.take("[")) {
      Predicate predicate;
      FirstOfGroup group;
      if (reader.peek("not(")) {
        if (!readFirstOfGroup(&reader, &group)) return false;
        predicate.attribute = group.attribute;
        predicate.value = group.value;
        predicate.group = group.group;
        predicate.sibling = group.sibling;
      } else if (reader.take("@qd:")) {
        if (!reader.name(&predicate.attribute) || !reader.take("=") ||
            !reader.literal(&predicate.value)) {
          return false;
        }
      } else if (!reader.position(&predicate.position)) {
        return false;
      }
      if (!reader.take("]")) return false;
      // A position right after a test reads only that many of the nodes that pass it, so the
      // test may stop there.
      Reader ahead = reader;
      long limit = 0;
      if (predicate.position == 0 && ahead.take("[") && ahead.position(&limit) && ahead.take("]")) {
        predicate.limit = static_cast<std::size_t>(limit);
      }
      if (!filter(predicate, nodes)) return false;
    }
    return true;
  };
  // The lists keep their room from one expression to the next.
  std::vector<xmlNodePtr>& nodes = nodes_;
  std::vector<xmlNodePtr>& children = children_;
  std::vector<xmlNodePtr>& next = next_;
  nodes.assign(elements.begin(), elements.end());
  if (!predicates(&nodes)) return nullptr;
  // Child steps: each element's children pass the step's predicates among themselves.
  std::string_view attribute;
  while (reader.take("/")) {
    if (reader.take("@qd:")) {
      if (!reader.name(&attribute)) return nullptr;
      break;
    }
    std::string_view element;
    if (!reader.take("qd:") || !reader.name(&element)) return nullptr;
    Reader const stepStart = reader;
    next.clear();
    for (xmlNodePtr parent : nodes) {
      children.clear();
      for (xmlNodePtr child = parent->children; child != nullptr; child = child->next) {
        if (child->type == XML_ELEMENT_NODE && named(child->name, element) && isQd(child->ns)) {
          children.push_back(child);
        }
      }
      // Every parent reads the same predicates.
      reader = stepStart;
      if (!predicates(&children)) return nullptr;
      next.insert(next.end(), children.begin(), children.end());
    }
    if (nodes.empty()) {
      // No parent read them: they must still be of the form.
      children.clear();
      if (!predicates(&children)) return nullptr;
    }
    nodes.swap(next);
  }
  if (!opening.empty() && !reader.take(")")) return nullptr;
  if (!reader.atEnd()) return nullptr;

  // The selected nodes, in document order: the elements, or their attributes of the name, in
  // the order the element holds them (which is the order XPath sorts them in).
  std::vector<xmlNodePtr>& selected = attribute.empty() ? nodes : next;
  if (!attribute.empty()) {
    next.clear();
    for (xmlNodePtr node : nodes) {
      for (xmlAttrPtr found = node->properties; found != nullptr; found = found->next) {
        if (named(found->name, attribute) && isQd(found->ns)) {
          next.push_back(reinterpret_cast<xmlNodePtr>(found));
        }
      }
    }
  }
  if (opening == "count(") return xmlXPathNewFloat(static_cast<double>(selected.size()));
  if (opening == "boolean(") return xmlXPathNewBoolean(!selected.empty());
  if (opening == "number(") {
    // number() of a node set reads the string of its first node, and of an empty set "".
    return xmlXPathNewFloat(selected.empty()
                                ? xmlXPathCastStringToNumber(reinterpret_cast<xmlChar const*>(""))
                                : xmlXPathCastNodeToNumber(selected.front()));
  }
  std::unique_ptr<xmlNodeSet, NodeSet> set(xmlXPathNodeSetCreate(nullptr));
  if (!set) return nullptr;
  for (xmlNodePtr node : selected) {
    if (xmlXPathNodeSetAddUnique(set.get(), node) != 0) return nullptr;
  }
  return xmlXPathWrapNodeSet(set.release());
}

}  // namespace qd
