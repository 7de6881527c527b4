#include "host/qd/qdrepo/QDXPathDoc.h"

#include <libxml/globals.h>
#include <libxml/parser.h>
#include <libxml/xpathInternals.h>

#include <cstdio>
#include <cstring>
#include <iostream>
#include <string>
#include <unordered_map>

#include "host/qd/qdrepo/QDDirectPath.h"
#include "host/qd/qdrepo/QDNameIndex.h"
#include "host/qd/qdrepo/QDNamespaces.h"
#include "host/qd/qdrepo/QDRecentAnswers.h"
#include "service/Log.h"

namespace qd {
namespace {

bool shortcutsForNewDocuments = true;

// Enough for every expression the repository repeats while it reads one hardware function.
constexpr std::size_t kRecentAnswers = 4096;

// The repository asks a few hundred shapes of expression; more than this means a caller asks
// shapes of its own, and the compiled ones are dropped and made again as they come.
constexpr std::size_t kCompiledShapes = 4096;

constexpr char kLiteralVariable[] = "qdLiteral";

bool isNameChar(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
         c == '-' || c == '.';
}

// Splits `text` into its shape, every quoted literal replaced by $qdLiteral<n>, and the
// literals' values in order. XPath reads a variable bound to a string wherever it reads the
// literal, so the shape means what the text means, with one exception, the argument of the
// processing-instruction() node test, which must be a literal; such a text is not split. Nor is
// one with a double quote, so that every single quote opens or closes a literal (there is no
// escape inside one), nor one whose quotes do not pair: those stay with libxml2's own reading.
bool liftLiterals(std::string const& text, std::string* shape, std::vector<std::string>* values) {
  if (text.find('"') != std::string::npos ||
      text.find("processing-instruction") != std::string::npos) {
    return false;
  }
  shape->clear();
  values->clear();
  std::size_t at = 0;
  while (true) {
    std::size_t const open = text.find('\'', at);
    shape->append(text, at, open == std::string::npos ? std::string::npos : open - at);
    if (open == std::string::npos) return true;
    std::size_t const close = text.find('\'', open + 1);
    if (close == std::string::npos) return false;
    values->push_back(text.substr(open + 1, close - open - 1));
    shape->append("$").append(kLiteralVariable).append(std::to_string(values->size() - 1));
    at = close + 1;
    // A name right after the literal ("'a'and ...") would otherwise run into the variable's.
    if (at < text.size() && isNameChar(text[at])) shape->push_back(' ');
  }
}

// The variables of one evaluation of a shape: the named elements and the literals.
struct ShapeVariables {
  std::vector<xmlNodePtr> const* elements;
  std::vector<std::string> const* literals;
};

// libxml2 frees what this returns once the evaluation has read it, as it does the copy of a
// registered variable. A name that is none of these is unknown (null), which libxml2 reports as
// an error; the caller then evaluates the expression as written.
xmlXPathObjectPtr lookUpShapeVariable(void* data, xmlChar const* name, xmlChar const* uri) {
  auto const* const variables = static_cast<ShapeVariables const*>(data);
  if (uri != nullptr || name == nullptr) return nullptr;
  char const* const text = reinterpret_cast<char const*>(name);
  if (std::strcmp(text, QDNameIndex::kVariable) == 0) {
    xmlXPathObjectPtr const named = xmlXPathNewNodeSet(nullptr);
    if (named == nullptr) return nullptr;
    for (xmlNodePtr element : *variables->elements) {
      if (named->nodesetval == nullptr ||
          xmlXPathNodeSetAddUnique(named->nodesetval, element) != 0) {
        xmlXPathFreeObject(named);
        return nullptr;
      }
    }
    return named;
  }
  std::size_t const prefix = sizeof kLiteralVariable - 1;
  if (std::strncmp(text, kLiteralVariable, prefix) != 0 || text[prefix] == '\0') return nullptr;
  std::size_t n = 0;
  for (char const* digit = text + prefix; *digit != '\0'; ++digit) {
    if (*digit < '0' || *digit > '9' || n > variables->literals->size()) return nullptr;
    n = n * 10 + static_cast<std::size_t>(*digit - '0');
  }
  if (n >= variables->literals->size()) return nullptr;
  return xmlXPathNewString(reinterpret_cast<xmlChar const*>((*variables->literals)[n].c_str()));
}

// libxml2 would print an expression it cannot evaluate to standard error. Inside a server that
// is noise for the user of some other tool; the query already answers with its sentinel, so the
// parser's own words go to the DEBUG log, where someone tracing a query finds them.
void logXPathError(void*, xmlErrorPtr error) {
  if (error == nullptr || error->message == nullptr) return;
  std::string message = error->message;
  while (!message.empty() && message.back() == '\n') message.pop_back();
  Log(logDEBUG, 1000) << "XPath: " << message << (error->str1 ? ": " : "")
                      << (error->str1 ? error->str1 : "");
}

// The text of a node as the repository reads it: the content of its first child, which for an
// attribute node is its value. An attribute with an empty value has no child and reads as "".
std::string textOf(xmlNodePtr node) {
  if (node == nullptr || node->children == nullptr || node->children->content == nullptr) {
    return "";
  }
  return reinterpret_cast<char const*>(node->children->content);
}

// Notes that libxml2 found an error, and keeps its words to itself: a rewritten expression that
// fails is evaluated again as it was written, which then reports the error in its own words.
void noteXPathError(void* failed, xmlErrorPtr) { *static_cast<bool*>(failed) = true; }

// Some of libxml2's evaluation errors (an unknown function) bypass the context and go to its
// generic handler, standard error by default. While a rewritten expression is tried, those are
// noted like the others and kept quiet: the expression as written, evaluated after it, prints
// them once, as it always did.
class QuietGenericErrors {
 public:
  explicit QuietGenericErrors(bool* failed)
      : report_(xmlGenericError), reportData_(xmlGenericErrorContext) {
    xmlSetGenericErrorFunc(failed, noteGenericError);
  }
  ~QuietGenericErrors() { xmlSetGenericErrorFunc(reportData_, report_); }
  QuietGenericErrors(QuietGenericErrors const&) = delete;
  QuietGenericErrors& operator=(QuietGenericErrors const&) = delete;

 private:
  static void noteGenericError(void* failed, char const*, ...) {
    *static_cast<bool*>(failed) = true;
  }

  xmlGenericErrorFunc report_;
  void* reportData_;
};

// Passes libxml2's errors on to the handler the context had, noting that there was one.
struct ErrorWatch {
  xmlStructuredErrorFunc report;
  void* reportData;
  bool failed;
};

void watchXPathError(void* watch, xmlErrorPtr error) {
  auto* const watching = static_cast<ErrorWatch*>(watch);
  watching->failed = true;
  if (watching->report != nullptr) watching->report(watching->reportData, error);
}

// A result that may be kept: namespace nodes in a node set are copies that libxml2 makes for
// each result, so a kept one would not be the node a fresh evaluation gives.
bool keepable(xmlXPathObjectPtr result) {
  if (result->type != XPATH_NODESET || result->nodesetval == nullptr) return true;
  for (int i = 0; i < result->nodesetval->nodeNr; ++i) {
    if (result->nodesetval->nodeTab[i]->type == XML_NAMESPACE_DECL) return false;
  }
  return true;
}

// Frees an XPath result object when the scope ends, also a null one.
class ResultObject {
 public:
  explicit ResultObject(xmlXPathObjectPtr object) : object_(object) {}
  ~ResultObject() { xmlXPathFreeObject(object_); }
  ResultObject(ResultObject const&) = delete;
  ResultObject& operator=(ResultObject const&) = delete;

  xmlXPathObjectPtr get() const { return object_; }
  xmlXPathObjectPtr operator->() const { return object_; }

 private:
  xmlXPathObjectPtr object_;
};

// The shape shared by the three number queries; `nullNumber` and `typeNumber` are their Log
// numbers for a failed evaluation and for a result that is no number.
double numberQuery(std::string const& expression, std::string const& caller,
                   xmlXPathObjectPtr evaluated, int nullNumber, int typeNumber, bool* ok) {
  *ok = false;
  ResultObject result(evaluated);
  if (result.get() == nullptr) {
    Log(logERROR, nullNumber) << caller << " " << expression << " is NULL";
    return -1;
  }
  if (result->type != XPATH_NUMBER) {
    Log(logERROR, typeNumber) << caller << " " << expression << " is not an XPATH_NUMBER";
    return -1;
  }
  // NaN is the ordinary answer for number(...) of an absent attribute.
  if (xmlXPathIsNaN(result->floatval)) return -1;
  *ok = true;
  return result->floatval;
}

}  // namespace

bool file_exists(std::string const& path) {
  if (path.empty()) return false;
  FILE* file = std::fopen(path.c_str(), "r");
  if (file == nullptr) return false;
  return std::fclose(file) == 0;
}

std::string getFileName(std::string const& path) {
  std::size_t const separator = path.find_last_of("/\\");
  if (separator == std::string::npos) return path;
  return path.substr(separator + 1);
}

boost::shared_ptr<QDXPathDoc> QDXPathDoc::buildDoc(std::string const& fileName, bool interactive) {
  if (!file_exists(fileName)) {
    Log(logERROR, 1001) << "Cannot open " << fileName;
    return {};
  }
  // The document itself is made non-interactive; the flag only decides step 5 here.
  boost::shared_ptr<QDXPathDoc> document(new QDXPathDoc(fileName, false));
  if (!document->parseFile()) return {};
  for (QDNamespace const& space : kQDNamespaces) {
    if (!document->registerNamespace(reinterpret_cast<xmlChar const*>(space.prefix),
                                     reinterpret_cast<xmlChar const*>(space.uri))) {
      return {};
    }
  }
  if (interactive) document->queryDocInteractive();
  return document;
}

// The compiled shapes of a document, by their text, freed with it. A shape that libxml2 cannot
// compile is kept as null, so that it is not tried again.
struct QDXPathDoc::CompiledShapes {
  CompiledShapes() = default;
  CompiledShapes(CompiledShapes const&) = delete;
  CompiledShapes& operator=(CompiledShapes const&) = delete;
  ~CompiledShapes() { clear(); }
  void clear() {
    for (auto& [text, compiled] : byText) xmlXPathFreeCompExpr(compiled);
    byText.clear();
  }

  std::unordered_map<std::string, xmlXPathCompExprPtr> byText;
  std::string shape;
  std::vector<std::string> literals;
};

void QDXPathDoc::setShortcutsForNewDocuments(bool enabled) { shortcutsForNewDocuments = enabled; }

QDXPathDoc::QDXPathDoc(std::string const& name, bool isInteractive)
    : fileName(name), interactive(isInteractive), useShortcuts_(shortcutsForNewDocuments) {
  xmlInitParser();
}

QDXPathDoc::QDXPathDoc(QDXPathDoc const& other)
    : fileName(other.fileName),
      doc(other.doc),
      xpathContext(other.xpathContext),
      interactive(other.interactive),
      useShortcuts_(other.useShortcuts_) {}

QDXPathDoc::~QDXPathDoc() {
  xmlCleanupParser();
  if (doc != nullptr) xmlFreeDoc(doc);
  if (xpathContext != nullptr) xmlXPathFreeContext(xpathContext);
}

bool QDXPathDoc::parseFile() {
  if (!file_exists(fileName)) {
    Log(logERROR, 1000) << "Cannot open " << fileName;
    return false;
  }
  nameIndex_.reset();
  directPath_.reset();
  recentAnswers_.reset();
  shapes_.reset();
  // No parser options: no recovery, blanks kept, libxml2's defaults throughout.
  doc = xmlReadFile(fileName.c_str(), nullptr, 0);
  if (doc == nullptr) return false;
  xpathContext = xmlXPathNewContext(doc);
  if (xpathContext == nullptr) {
    xmlFreeDoc(doc);
    doc = nullptr;
    return false;
  }
  xpathContext->error = logXPathError;
  xmlXPathContextSetCache(xpathContext, 1, -1, 0);
  return true;
}

bool QDXPathDoc::registerNamespace(xmlChar const* prefix, xmlChar const* uri) {
  nameIndex_.reset();
  directPath_.reset();
  recentAnswers_.reset();
  shapes_.reset();
  return xmlXPathRegisterNs(xpathContext, prefix, uri) == 0;
}

xmlXPathObjectPtr QDXPathDoc::evaluate(std::string const& expression) {
  if (!useShortcuts_ || doc == nullptr || xpathContext == nullptr) {
    return xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(expression.c_str()),
                                  xpathContext);
  }
  if (!recentAnswers_) recentAnswers_ = std::make_unique<QDRecentAnswers>(kRecentAnswers);
  if (xmlXPathObjectPtr const kept = recentAnswers_->find(expression)) return kept;
  bool failed = false;
  xmlXPathObjectPtr const result = evaluateNamed(expression, &failed);
  // Only a result that came without a word from libxml2 is kept, so that answering it again
  // says nothing, as evaluating it again would.
  if (result != nullptr && !failed && keepable(result)) recentAnswers_->keep(expression, result);
  return result;
}

xmlXPathObjectPtr QDXPathDoc::evaluateNamed(std::string const& expression, bool* failed) {
  // As written, over the whole document, with libxml2's errors reported as always.
  auto const whole = [this, &expression, failed] {
    ErrorWatch watch{xpathContext->error, xpathContext->userData, false};
    xpathContext->error = watchXPathError;
    xpathContext->userData = &watch;
    xmlXPathObjectPtr const result =
        xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(expression.c_str()), xpathContext);
    xpathContext->error = watch.report;
    xpathContext->userData = watch.reportData;
    *failed = watch.failed;
    return result;
  };
  if (!nameIndex_) {
    // The index reads names in the namespace the expressions' prefix stands for right now.
    xmlChar const* const uri = xmlXPathNsLookup(xpathContext, BAD_CAST "qd");
    if (uri == nullptr) return whole();
    nameIndex_ = std::make_unique<QDNameIndex>(doc, reinterpret_cast<char const*>(uri));
    directPath_ =
        std::make_unique<QDDirectPath>(reinterpret_cast<char const*>(uri), QDNameIndex::kVariable);
  }
  // The text is rewritten into the same buffer each time, which keeps its room.
  std::string& rewritten = rewritten_;
  std::vector<xmlNodePtr> const* elements = nullptr;
  if (!nameIndex_->rewrite(expression, &rewritten, &elements)) return whole();
  if (xmlXPathObjectPtr const walked = directPath_->evaluate(rewritten, *elements)) return walked;
  if (xmlXPathObjectPtr const shaped = evaluateShape(rewritten, *elements)) return shaped;
  xmlXPathObjectPtr const named = xmlXPathNewNodeSet(nullptr);
  if (named == nullptr) return whole();
  for (xmlNodePtr element : *elements) {
    if (named->nodesetval == nullptr || xmlXPathNodeSetAddUnique(named->nodesetval, element) != 0) {
      xmlXPathFreeObject(named);
      return whole();
    }
  }
  // The context owns the value from here, and frees it when the binding is removed.
  auto const* const variable = reinterpret_cast<xmlChar const*>(QDNameIndex::kVariable);
  if (xmlXPathRegisterVariable(xpathContext, variable, named) != 0) {
    xmlXPathFreeObject(named);
    return whole();
  }
  xmlStructuredErrorFunc const report = xpathContext->error;
  void* const reportData = xpathContext->userData;
  bool rewrittenFailed = false;
  xpathContext->error = noteXPathError;
  xpathContext->userData = &rewrittenFailed;
  xmlXPathObjectPtr result = nullptr;
  {
    QuietGenericErrors const quiet(&rewrittenFailed);
    result =
        xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(rewritten.c_str()), xpathContext);
  }
  xpathContext->error = report;
  xpathContext->userData = reportData;
  xmlXPathRegisterVariable(xpathContext, variable, nullptr);
  if (result != nullptr && !rewrittenFailed) return result;
  // Whatever went wrong goes wrong the same way as written, and is reported as it always was.
  xmlXPathFreeObject(result);
  return whole();
}

xmlXPathObjectPtr QDXPathDoc::evaluateShape(std::string const& rewritten,
                                            std::vector<xmlNodePtr> const& elements) {
  // Most of the cost of a fresh expression is libxml2 compiling it; the repository's differ
  // mostly in the names they quote, so one compiled shape serves every name.
  if (!shapes_) shapes_ = std::make_unique<CompiledShapes>();
  if (!liftLiterals(rewritten, &shapes_->shape, &shapes_->literals)) return nullptr;
  bool failed = false;
  xmlStructuredErrorFunc const report = xpathContext->error;
  void* const reportData = xpathContext->userData;
  xpathContext->error = noteXPathError;
  xpathContext->userData = &failed;
  QuietGenericErrors const quiet(&failed);
  auto found = shapes_->byText.find(shapes_->shape);
  if (found == shapes_->byText.end()) {
    if (shapes_->byText.size() >= kCompiledShapes) shapes_->clear();
    xmlXPathCompExprPtr const compiled = xmlXPathCtxtCompile(
        xpathContext, reinterpret_cast<xmlChar const*>(shapes_->shape.c_str()));
    found = shapes_->byText.emplace(shapes_->shape, failed ? nullptr : compiled).first;
    if (failed) xmlXPathFreeCompExpr(compiled);
  }
  xmlXPathObjectPtr result = nullptr;
  if (found->second != nullptr) {
    ShapeVariables variables{&elements, &shapes_->literals};
    xmlXPathRegisterVariableLookup(xpathContext, lookUpShapeVariable, &variables);
    result = xmlXPathCompiledEval(found->second, xpathContext);
    xmlXPathRegisterVariableLookup(xpathContext, nullptr, nullptr);
  }
  xpathContext->error = report;
  xpathContext->userData = reportData;
  if (result != nullptr && !failed) return result;
  xmlXPathFreeObject(result);
  return nullptr;
}

int QDXPathDoc::intQuery(std::string const& expression, std::string const& caller) {
  bool ok = false;
  double const value = numberQuery(expression, caller, evaluate(expression), 1002, 1003, &ok);
  return ok ? static_cast<int>(value) : -1;
}

long long QDXPathDoc::longLongQuery(std::string const& expression, std::string const& caller) {
  bool ok = false;
  double const value = numberQuery(expression, caller, evaluate(expression), 1004, 1005, &ok);
  return ok ? static_cast<long long>(value) : -1;
}

double QDXPathDoc::floatQuery(std::string const& expression, std::string const& caller) {
  bool ok = false;
  double const value = numberQuery(expression, caller, evaluate(expression), 1006, 1007, &ok);
  return ok ? value : -1.0;
}

bool QDXPathDoc::booleanQuery(std::string const& expression, std::string const& caller) {
  ResultObject result(evaluate(expression));
  if (result.get() == nullptr || result->type != XPATH_BOOLEAN) {
    Log(logERROR, 1008) << caller << " " << expression << " does not evaluate to XPATH_BOOLEAN";
    return false;
  }
  return result->boolval != 0;
}

std::string QDXPathDoc::stringQuery(std::string const& expression, std::string const&) {
  ResultObject result(evaluate(expression));
  if (result.get() == nullptr) return "";
  if (result->type == XPATH_STRING) {
    return result->stringval != nullptr ? reinterpret_cast<char const*>(result->stringval) : "";
  }
  if (result->type != XPATH_NODESET || result->nodesetval == nullptr ||
      result->nodesetval->nodeNr < 1) {
    return "";
  }
  // Duplicates that agree are one answer; any disagreement is no answer.
  xmlNodeSetPtr const nodes = result->nodesetval;
  std::string const first = textOf(nodes->nodeTab[0]);
  for (int i = 1; i < nodes->nodeNr; ++i) {
    if (textOf(nodes->nodeTab[i]) != first) return "";
  }
  return first;
}

std::vector<std::string> QDXPathDoc::stringListQuery(std::string const& expression,
                                                     std::string const&) {
  std::vector<std::string> values;
  ResultObject result(evaluate(expression));
  if (result.get() == nullptr) return values;
  if (result->type == XPATH_STRING) {
    values.emplace_back(
        result->stringval != nullptr ? reinterpret_cast<char const*>(result->stringval) : "");
  } else if (result->type == XPATH_NODESET && result->nodesetval != nullptr) {
    for (int i = 0; i < result->nodesetval->nodeNr; ++i) {
      values.push_back(textOf(result->nodesetval->nodeTab[i]));
    }
  }
  return values;
}

bool QDXPathDoc::queryDocInteractive() {
  static char const* const kPrompt = "Enter XPath expression (-q to exit): ";
  std::cout << kPrompt;
  // A person typing expressions wants libxml2's own account of a mistake, caret and all.
  xmlStructuredErrorFunc const quiet = xpathContext->error;
  xpathContext->error = nullptr;
  std::string line;
  while (std::getline(std::cin, line) && line != "-q" && line != "q") {
    std::cout << "evaluating " << line << std::endl;
    xmlXPathObjectPtr result =
        xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(line.c_str()), xpathContext);
    xmlXPathDebugDumpObject(stdout, result, 0);
    std::fflush(stdout);
    xmlXPathFreeObject(result);
    std::cout << kPrompt;
  }
  xpathContext->error = quiet;
  std::cout << std::endl;
  return true;
}

}  // namespace qd
