// The repository's most frequent expressions answered by walking the tree, without libxml2's
// XPath machine. docs/repository.md, "What it costs", says why the answers are the same.
#ifndef HOST_QD_QDREPO_QDDIRECTPATH_H_
#define HOST_QD_QDREPO_QDDIRECTPATH_H_

#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <string>
#include <string_view>
#include <vector>

namespace qd {

// Reads a rewritten expression of QDNameIndex (the named elements in a variable) when it is
// made of nothing but child steps, attribute-equality and position predicates, and at most one
// attribute step at its end:
//
//   [boolean(|count(|number(]$<variable>{pred}{/qd:<name>{pred}}[/@qd:<name>][)]
//   pred := [<n>] | [@qd:<name>='<text>'] | <first of a packed group>
//   <first of a packed group> := [not(@qd:<a>='<text>') or (@qd:<a>='<text>' and
//                                not(@qd:<g>=preceding-sibling::qd:<name>/@qd:<g>))]
//
// with <n> a number from 1 to 999,999,999, <name> letters, digits and '_' not starting with a
// digit, and <text> printable ASCII without a quote. That is what the repository asks about one function's arguments or one
// component's interfaces, hundreds of thousands of times while it checks and dumps a large
// database, and for those libxml2 spends most of its time allocating: a node set per step and
// per predicate, a string per comparison.
//
// The walk is XPath's for these forms and nothing more: the variable's predicates filter the
// whole list (it is in document order); a step's predicates filter the children of each element
// on their own, positions counting from 1 among those that passed the predicates before; a name
// test matches an element or attribute whose namespace is qd's and whose local name is the name;
// an attribute equals a text when its value (xmlNodeGetContent) is that text, byte for byte; the
// results of all elements are joined in document order. The value is made by libxml2's own
// conversions (xmlXPathCastNodeSetToNumber for number()), so it is the value XPath gives.
//
// The answers of an expression of any other form, or with a text outside those rules, are left
// to libxml2: evaluate returns null and the caller evaluates the text as before. Nothing here
// reports anything; these forms cannot fail in libxml2 either.
class QDDirectPath {
 public:
  // `qdUri` is the namespace the expressions' "qd" prefix stands for; `variable` the name of
  // the variable that holds the named elements.
  QDDirectPath(std::string qdUri, std::string variable);

  // The result XPath gives for `rewritten` with the variable bound to `elements`, owned by the
  // caller; null when the text is not of the form above.
  xmlXPathObjectPtr evaluate(std::string_view rewritten,
                             std::vector<xmlNodePtr> const& elements) const;

 private:
  // [position], or [@qd:attribute='value'], or, with a group, the first of each group of
  // marked siblings (filterFirstOfGroup).
  struct Predicate {
    long position = 0;
    std::string_view attribute;
    std::string_view value;
    std::string_view group;
    std::string_view sibling;
    // The test may stop once this many nodes passed (0: never); a position predicate follows.
    std::size_t limit = 0;
  };

  // Keeps the nodes of `nodes` (elements, in document order) that pass `predicate`, counting
  // positions among them. False when a value met is one to leave to libxml2.
  bool filter(Predicate const& predicate, std::vector<xmlNodePtr>* nodes) const;
  // Whether `element` has a qd:`name` attribute whose value is `value`; `plain` is set false
  // when an attribute of that name holds more than one plain text.
  bool filterFirstOfGroup(Predicate const& predicate, std::vector<xmlNodePtr>* nodes) const;
  // The value of an attribute whose content is one text node or none; false for any other.
  static bool plainValue(xmlAttrPtr attribute, std::string_view* value);
  bool hasAttributeValue(xmlNodePtr element, std::string_view name, std::string_view value,
                         bool* plain) const;
  bool isQd(xmlNsPtr ns) const;
  static bool named(xmlChar const* name, std::string_view expected);

  std::string qdUri_;
  std::string variable_;
  mutable xmlNsPtr lastQd_ = nullptr;
  mutable std::vector<xmlNodePtr> nodes_;
  mutable std::vector<xmlNodePtr> children_;
  mutable std::vector<xmlNodePtr> next_;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDDIRECTPATH_H_
