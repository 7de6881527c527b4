// One parsed repository file and the XPath queries over it.
#ifndef HOST_QD_QDREPO_QDXPATHDOC_H_
#define HOST_QD_QDREPO_QDXPATHDOC_H_

#include <libxml/tree.h>
#include <libxml/xpath.h>

#include <boost/shared_ptr.hpp>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "service/Export.h"

namespace qd {

class QDDirectPath;
class QDNameIndex;
class QDRecentAnswers;

// Whether `path` names a file that can be opened for reading; false for an empty path.
QV_EXPORT bool file_exists(std::string const& path);
// What follows the last '/' or '\' of `path` (both count on every platform); the whole path
// when it has neither; "" when it ends in one.
QV_EXPORT std::string getFileName(std::string const& path);

// An XML document and an XPath context with the repository's six namespace prefixes bound
// (kQDNamespaces), answering XPath expressions as plain values.
//
// Queries never throw. What they cannot answer they answer with a sentinel: -1 (-1.0) for the
// number queries, false, "" or an empty list; some also write a numbered Log line
// ("ERROR: [Morvane 83-1002] <caller> <expression> is NULL"). A missing attribute asked for with
// number(...) is -1 without a message, which callers rely on.
//
// An expression that selects a component or hardware function by its name reads only the
// elements of that name (QDNameIndex), and the results of the last few thousand expressions are
// kept (QDRecentAnswers); the answers and the lines are those of evaluating each expression over
// the whole document (docs/repository.md, "What it costs"). Both rely on the document and the
// XPath context staying as parseFile and registerNamespace left them: code that changes them
// through the public handles below must not query through this object afterwards.
//
// Not thread-safe: the XPath context is mutable state, so one document serves one thread at a
// time. Made by buildDoc and passed around by boost::shared_ptr; a copy would share the
// document and free it twice, so repository code never copies one.
class QV_EXPORT QDXPathDoc {
 public:
  // A document of `fileName` with its namespaces registered, or null: when the file cannot be
  // opened (Log ERROR 1001 "Cannot open <file>"), is not well-formed XML, or a namespace cannot
  // be registered. With `interactive`, runs queryDocInteractive before returning.
  static boost::shared_ptr<QDXPathDoc> buildDoc(std::string const& fileName, bool interactive);

  // Keeps the name and the flag; the handles stay null until parseFile. Calls xmlInitParser.
  QDXPathDoc(std::string const& fileName, bool interactive);
  // Shares the other's document and context (see the class comment).
  QDXPathDoc(QDXPathDoc const& other);
  QDXPathDoc& operator=(QDXPathDoc const&) = delete;
  // xmlCleanupParser, then frees the document, then the context: the order of the original
  // program, kept as it is.
  ~QDXPathDoc();

  // Whether documents made from now on in this process use the name index and keep recent
  // answers (true unless changed), or evaluate every expression over the whole document. For
  // the tests and benchmarks that compare the two ways; a document keeps the setting it was
  // made with.
  static void setShortcutsForNewDocuments(bool enabled);

  // Reads the file and makes the XPath context. False, with the handles left null, when the
  // file cannot be opened (Log ERROR 1000), is not well-formed, or the context cannot be made.
  bool parseFile();
  // True when libxml2 took the binding.
  bool registerNamespace(xmlChar const* prefix, xmlChar const* uri);

  // The number `expression` evaluates to, truncated toward zero for the integer forms; -1 for
  // NaN (no message), a failed evaluation (Log 1002/1004/1006 "... is NULL") or a result that is
  // not a number (Log 1003/1005/1007 "... is not an XPATH_NUMBER"). `caller` only names the
  // asking function in those lines.
  int intQuery(std::string const& expression, std::string const& caller);
  long long longLongQuery(std::string const& expression, std::string const& caller);
  double floatQuery(std::string const& expression, std::string const& caller);
  // The boolean value; false with Log ERROR 1008 "... does not evaluate to XPATH_BOOLEAN" for
  // anything else.
  bool booleanQuery(std::string const& expression, std::string const& caller);
  // A string result, or the text of the nodes of a node set when they all agree; "" otherwise.
  // An attribute with an empty value reads as "". No message.
  std::string stringQuery(std::string const& expression, std::string const& caller);
  // A string result as one element, or the text of every node of a node set in order,
  // duplicates kept; empty otherwise. No message.
  std::vector<std::string> stringListQuery(std::string const& expression,
                                           std::string const& caller);

  // A debugging loop: reads XPath expressions from standard input until end of input, "q" or
  // "-q", and dumps each result to standard output. Always true.
  bool queryDocInteractive();

  // In their fixed order. `interactive` is set by QDSRepo's
  // constructor; no query reads it.
  std::string fileName;
  xmlDocPtr doc = nullptr;
  xmlXPathContextPtr xpathContext = nullptr;
  bool interactive = false;

 private:
  // The result of `expression`, owned by the caller; null when it does not evaluate.
  xmlXPathObjectPtr evaluate(std::string const& expression);
  // The same through the name index where it applies; `failed` tells whether libxml2 reported
  // an error for the evaluation whose result this is.
  xmlXPathObjectPtr evaluateNamed(std::string const& expression, bool* failed);
  // The rewritten text of evaluateNamed with its literals read from variables, compiled once
  // per shape; null, with nothing reported, when it cannot be evaluated that way or libxml2
  // finds any error in it.
  xmlXPathObjectPtr evaluateShape(std::string const& rewritten,
                                  std::vector<xmlNodePtr> const& elements);

  struct CompiledShapes;

  // Made on the first query that can use them; dropped when the document or its namespaces
  // change (parseFile, registerNamespace). Not shared with a copy.
  bool useShortcuts_;
  std::unique_ptr<QDNameIndex> nameIndex_;
  std::unique_ptr<QDDirectPath> directPath_;
  std::unique_ptr<QDRecentAnswers> recentAnswers_;
  std::unique_ptr<CompiledShapes> shapes_;
  std::string rewritten_;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDXPATHDOC_H_
