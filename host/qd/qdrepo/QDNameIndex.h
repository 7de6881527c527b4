// The elements of a repository document by the name they carry, so that a query about one
// component or hardware function reads that element instead of scanning all of them.
// docs/repository.md, "What it costs", says why the answers are the same.
#ifndef HOST_QD_QDREPO_QDNAMEINDEX_H_
#define HOST_QD_QDREPO_QDNAMEINDEX_H_

#include <libxml/tree.h>

#include <map>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

namespace qd {

// Rewrites a repository expression that opens with one element of the root chosen by a name,
//
//   [boolean(|count(|number(]/qd:repository/qd:<element>[@qd:<key>='<value>'...]<rest>
//
// into the same text with "/qd:repository/qd:<element>" replaced by a variable that holds the
// elements whose key attribute reads <value>, in document order. The predicate stays in the
// text, so XPath itself still reads (and checks) the value on each of those elements; everything
// after it is evaluated as before, relative to them.
//
// The document must outlive the index and must not change while it is used: the index keeps
// pointers into its tree. Each (element, key) pair is read from the document the first time an
// expression asks for it. Not thread-safe, like the document's XPath context.
class QDNameIndex {
 public:
  // `qdUri` is the namespace the expressions' "qd" prefix stands for.
  QDNameIndex(xmlDocPtr doc, std::string qdUri);
  QDNameIndex(QDNameIndex const&) = delete;
  QDNameIndex& operator=(QDNameIndex const&) = delete;

  // The name of the variable a rewritten expression reads.
  static char const* const kVariable;

  // True when `expression` has the form above and holds no variable reference of its own;
  // then `rewritten` is the text to evaluate with kVariable bound to `*elements` (possibly an
  // empty list: no element has the name). False leaves both untouched: evaluate the expression
  // as it is.
  bool rewrite(std::string const& expression, std::string* rewritten,
               std::vector<xmlNodePtr> const** elements);

 private:
  using Elements = std::unordered_map<std::string, std::vector<xmlNodePtr>>;

  // The children of the root element named qd:<element>, by the value of their qd:<key>, read
  // on first use.
  Elements const& elementsBy(std::string const& element, std::string const& key);

  xmlDocPtr doc_;
  std::string qdUri_;
  std::map<std::pair<std::string, std::string>, Elements> byKey_;
  std::vector<xmlNodePtr> const none_;
  // The list elementsBy gave last, and what it was asked (std::map keeps its address).
  Elements const* last_ = nullptr;
  std::string lastElement_;
  std::string lastKey_;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDNAMEINDEX_H_
