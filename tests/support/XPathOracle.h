// A second, independent reading of a repository file for tests: libxml2 alone, no repository
// code, so that a test can evaluate the expression text it expects a query to build and compare
// the two answers.
//
//   qvtest::XPathOracle oracle(file);
//   EXPECT_EQ(repo.getQdHwFcnFlow("vadd"),
//             oracle.string("/qd:repository/qd:fcnMap[@qd:fcnName='vadd'][1]/@qd:flow"));
#ifndef TESTS_SUPPORT_XPATHORACLE_H_
#define TESTS_SUPPORT_XPATHORACLE_H_

#include <libxml/parser.h>
#include <libxml/xpath.h>
#include <libxml/xpathInternals.h>

#include <cmath>
#include <memory>
#include <stdexcept>
#include <string>

#include "host/qd/qdrepo/QDNamespaces.h"

namespace qvtest {

class XPathOracle {
 public:
  explicit XPathOracle(std::string const& file)
      : doc_(xmlReadFile(file.c_str(), nullptr, 0), xmlFreeDoc),
        context_(nullptr, xmlXPathFreeContext) {
    if (!doc_) throw std::runtime_error("XPathOracle: cannot read " + file);
    context_.reset(xmlXPathNewContext(doc_.get()));
    for (qd::QDNamespace const& space : qd::kQDNamespaces) {
      xmlXPathRegisterNs(context_.get(), reinterpret_cast<xmlChar const*>(space.prefix),
                         reinterpret_cast<xmlChar const*>(space.uri));
    }
  }

  // XPath's string(), number() and boolean() of the expression's value. An expression that
  // does not evaluate throws, so that a test cannot compare against a broken expectation.
  std::string string(std::string const& expression) const {
    Object value = evaluate(expression);
    xmlChar* text = xmlXPathCastToString(value.get());
    std::string result = text ? reinterpret_cast<char const*>(text) : "";
    xmlFree(text);
    return result;
  }
  double number(std::string const& expression) const {
    return xmlXPathCastToNumber(evaluate(expression).get());
  }
  // number() as the repository's int queries read it: truncated, -1 where it is not a number.
  int integer(std::string const& expression) const {
    double const value = number(expression);
    return std::isnan(value) ? -1 : static_cast<int>(value);
  }
  bool boolean(std::string const& expression) const {
    return xmlXPathCastToBoolean(evaluate(expression).get()) != 0;
  }

 private:
  using Object = std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObjectPtr)>;

  Object evaluate(std::string const& expression) const {
    Object value(xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(expression.c_str()),
                                        context_.get()),
                 xmlXPathFreeObject);
    if (!value) throw std::runtime_error("XPathOracle: cannot evaluate " + expression);
    return value;
  }

  std::unique_ptr<xmlDoc, void (*)(xmlDocPtr)> doc_;
  std::unique_ptr<xmlXPathContext, void (*)(xmlXPathContextPtr)> context_;
};

}  // namespace qvtest

#endif  // TESTS_SUPPORT_XPATHORACLE_H_
