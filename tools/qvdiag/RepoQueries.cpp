#include "tools/qvdiag/RepoQueries.h"

#include <libxml/xpath.h>

#include <functional>
#include <memory>
#include <sstream>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tools/qvdiag/UsageError.h"

namespace qvdiag {
namespace {

using Arguments = std::vector<std::string>;
using Call = std::function<std::string(qd::QDSRepo&, Arguments const&)>;

std::string text(bool value) { return value ? "true" : "false"; }
std::string text(int value) { return std::to_string(value); }
std::string text(float value) {
  std::ostringstream out;
  out << value;
  return out.str();
}
std::string text(double value) {
  std::ostringstream out;
  out << value;
  return out.str();
}
std::string text(std::string const& value) { return "\"" + value + "\""; }

int integer(std::string const& argument, std::string const& name) {
  std::size_t used = 0;
  int value = 0;
  try {
    value = std::stoi(argument, &used);
  } catch (std::exception const&) {
    used = 0;
  }
  if (used == 0 || used != argument.size()) {
    throw UsageError(name + ": '" + argument + "' is not an integer");
  }
  return value;
}

struct Entry {
  RepoQueries::Query query;
  Call call;
};

// Adapters from a query's parameters as typed to its C++ signature.
template <class Method>
Call none(Method method) {
  return [method](qd::QDSRepo& repo, Arguments const&) { return text((repo.*method)()); };
}
template <class Method>
Call one(Method method) {
  return [method](qd::QDSRepo& repo, Arguments const& a) { return text((repo.*method)(a[0])); };
}
template <class Method>
Call two(Method method) {
  return
      [method](qd::QDSRepo& repo, Arguments const& a) { return text((repo.*method)(a[0], a[1])); };
}
template <class Method>
Call three(Method method) {
  return [method](qd::QDSRepo& repo, Arguments const& a) {
    return text((repo.*method)(a[0], a[1], a[2]));
  };
}
template <class Method>
Call index(Method method, std::string const& name) {
  return [method, name](qd::QDSRepo& repo, Arguments const& a) {
    return text((repo.*method)(integer(a[0], name)));
  };
}
template <class Method>
Call nameAndIndex(Method method, std::string const& name) {
  return [method, name](qd::QDSRepo& repo, Arguments const& a) {
    return text((repo.*method)(a[0], integer(a[1], name)));
  };
}
template <class Method>
Call indexAndName(Method method, std::string const& name) {
  return [method, name](qd::QDSRepo& repo, Arguments const& a) {
    return text((repo.*method)(integer(a[0], name), a[1]));
  };
}

std::vector<Entry> const& allEntries() {
  using R = qd::QDSRepo;
  // An overloaded method is listed once per form, the forms with an index first: ask() takes
  // the first form whose index parameters read as integers.
  static std::vector<Entry> const kEntries = {
      // Core
      {{"getNumQdComponents", {}}, none(&R::getNumQdComponents)},
      {{"getIthQdComponent", {"i"}}, index(&R::getIthQdComponent, "getIthQdComponent")},
      {{"checkDatabase", {}}, none(&R::checkDatabase)},
      {{"checkQdHwFcn", {"function"}}, one(&R::checkQdHwFcn)},
      // Components
      {{"isQdComp", {"component"}}, one(&R::isQdComp)},
      {{"isQdAcceleratorComp", {"component"}}, one(&R::isQdAcceleratorComp)},
      {{"isQdDatamoverComp", {"component"}}, one(&R::isQdDatamoverComp)},
      {{"isQdMonitorComp", {"component"}}, one(&R::isQdMonitorComp)},
      {{"isQdInterconnectComp", {"component"}}, one(&R::isQdInterconnectComp)},
      {{"isQdSmartConnectComp", {"component"}}, one(&R::isQdSmartConnectComp)},
      {{"isQdPlatformComp", {"component"}}, one(&R::isQdPlatformComp)},
      {{"getQdCompType", {"component"}}, one(&R::getQdCompType)},
      {{"isQdCompWithAdapter", {"component"}}, one(&R::isQdCompWithAdapter)},
      {{"isQdAdapteeComp", {"component"}}, one(&R::isQdAdapteeComp)},
      {{"getQdPlatformComp", {}}, none(&R::getQdPlatformComp)},
      {{"isQdCompPort", {"component", "port"}}, two(&R::isQdCompPort)},
      {{"isQdCompAxiPort", {"component", "port"}}, two(&R::isQdCompAxiPort)},
      {{"isQdCompClockPort", {"component", "port"}}, two(&R::isQdCompClockPort)},
      {{"getQdCompNumPorts", {"component"}}, one(&R::getQdCompNumPorts)},
      {{"isValidQdCompPortIndex", {"component", "i"}},
       nameAndIndex(&R::isValidQdCompPortIndex, "isValidQdCompPortIndex")},
      {{"getQdCompPortName", {"component", "i"}},
       nameAndIndex(&R::getQdCompPortName, "getQdCompPortName")},
      {{"getQdCompPortType", {"component", "i"}},
       nameAndIndex(static_cast<std::string (R::*)(std::string const&, int)>(&R::getQdCompPortType),
                    "getQdCompPortType")},
      {{"getQdCompPortType", {"component", "port"}},
       two(static_cast<std::string (R::*)(std::string const&, std::string const&)>(
           &R::getQdCompPortType))},
      {{"getQdCompPortDir", {"component", "port"}}, two(&R::getQdCompPortDir)},
      {{"getQdCompPortMode", {"component", "port"}}, two(&R::getQdCompPortMode)},
      {{"isQdCompQdPort", {"component", "port"}}, two(&R::isQdCompQdPort)},
      {{"getQdCompQdPortDir", {"component", "port"}}, two(&R::getQdCompQdPortDir)},
      {{"getQdCompPortStringAttr", {"component", "port", "attribute"}},
       three(&R::getQdCompPortStringAttr)},
      {{"getQdCompBusInterfaceStringAttr", {"component", "port", "attribute"}},
       three(&R::getQdCompBusInterfaceStringAttr)},
      {{"getQdCompBusInterfacePort", {"component", "port"}}, two(&R::getQdCompBusInterfacePort)},
      {{"getQdCompBusInterfaceInstanceRef", {"component", "port"}},
       two(&R::getQdCompBusInterfaceInstanceRef)},
      {{"getQdCompBusInterfaceComponentRef", {"component", "port"}},
       two(&R::getQdCompBusInterfaceComponentRef)},
      {{"getQdCompBusInterfaceBusInterfaceRef", {"component", "port"}},
       two(&R::getQdCompBusInterfaceBusInterfaceRef)},
      {{"getQdCompBusInterfaceMemObject", {"component", "port"}},
       two(&R::getQdCompBusInterfaceMemObject)},
      // Memory objects
      {{"getMemObjectInstRef", {"platform", "object"}}, two(&R::getMemObjectInstRef)},
      {{"getMemObjectSlr", {"platform", "object"}}, two(&R::getMemObjectSlr)},
      {{"getMemObjectMemPort", {"platform", "object"}}, two(&R::getMemObjectMemPort)},
      // Hardware functions
      {{"isQdHwFcn", {"function"}}, one(&R::isQdHwFcn)},
      {{"getNumQdHwFcns", {}}, none(&R::getNumQdHwFcns)},
      {{"getIthQdHwFcn", {"i"}}, index(&R::getIthQdHwFcn, "getIthQdHwFcn")},
      {{"getQdHwFcnQdComponentRef", {"function"}}, one(&R::getQdHwFcnQdComponentRef)},
      {{"isQdHwHlsOpenclFcn", {"function"}}, one(&R::isQdHwHlsOpenclFcn)},
      {{"isQdPlatformHwFcn", {"function"}}, one(&R::isQdPlatformHwFcn)},
      {{"getQdHwFcnCtrlRegType", {"function"}}, one(&R::getQdHwFcnCtrlRegType)},
      {{"getQdHwFcnReturnOffset", {"function"}}, one(&R::getQdHwFcnReturnOffset)},
      {{"getNumQdHwFcnArgs1", {"function"}}, one(&R::getNumQdHwFcnArgs1)},
      {{"getNumQdHwFcnArgs", {"function"}}, one(&R::getNumQdHwFcnArgs)},
      {{"isQdHwFcnArg", {"function", "argument"}}, two(&R::isQdHwFcnArg)},
      {{"getIthQdHwFcnArg1", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArg1, "getIthQdHwFcnArg1")},
      {{"getIthQdHwFcnArgBusInterfaceRef1", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArgBusInterfaceRef1, "getIthQdHwFcnArgBusInterfaceRef1")},
      {{"getIthQdHwFcnArgHwName1", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArgHwName1, "getIthQdHwFcnArgHwName1")},
      {{"getIthQdHwFcnArgAximmMasterRef1", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArgAximmMasterRef1, "getIthQdHwFcnArgAximmMasterRef1")},
      {{"ithQdHwFcnArgIsAximmMasterPtr1", {"function", "i"}},
       nameAndIndex(&R::ithQdHwFcnArgIsAximmMasterPtr1, "ithQdHwFcnArgIsAximmMasterPtr1")},
      {{"ithQdHwFcnArgIsAximmMasterPtr", {"function", "i"}},
       nameAndIndex(&R::ithQdHwFcnArgIsAximmMasterPtr, "ithQdHwFcnArgIsAximmMasterPtr")},
      {{"qdHwFcnArgIsAximmMasterPtr", {"function", "argument"}},
       two(&R::qdHwFcnArgIsAximmMasterPtr)},
      {{"getIthQdHwFcnArgPortInterfaceType1", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArgPortInterfaceType1, "getIthQdHwFcnArgPortInterfaceType1")},
      {{"getIthQdHwFcnArgOffset", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArgOffset, "getIthQdHwFcnArgOffset")},
      {{"getIthQdHwFcnArgDataWidth", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArgDataWidth, "getIthQdHwFcnArgDataWidth")},
      {{"qdHwFcnArgIsPacked", {"function", "argument"}}, two(&R::qdHwFcnArgIsPacked)},
      {{"getQdHwFcnArgPackedDataWidth", {"function", "argument"}},
       two(&R::getQdHwFcnArgPackedDataWidth)},
      {{"getIthQdHwFcnArgPackedDataWidth1", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArgPackedDataWidth1, "getIthQdHwFcnArgPackedDataWidth1")},
      {{"isQdHwFcnArrayArg", {"function", "argument"}}, two(&R::isQdHwFcnArrayArg)},
      {{"getIthQdHwFcnArgArraySize1", {"function", "i"}},
       nameAndIndex(&R::getIthQdHwFcnArgArraySize1, "getIthQdHwFcnArgArraySize1")},
      // Platform clocks
      {{"getNumPlatformClocks", {"platform"}}, one(&R::getNumPlatformClocks)},
      {{"getIthPlatformClock", {"i", "platform"}},
       indexAndName(&R::getIthPlatformClock, "getIthPlatformClock")},
      {{"isAvailableClockId", {"id", "platform"}},
       indexAndName(&R::isAvailableClockId, "isAvailableClockId")},
      {{"getNumAvailableClocks", {"platform"}}, one(&R::getNumAvailableClocks)},
      {{"getIthAvailableClockId", {"i", "platform"}},
       indexAndName(&R::getIthAvailableClockId, "getIthAvailableClockId")},
      {{"getPlatformDefaultClockId", {"platform"}}, one(&R::getPlatformDefaultClockId)},
      {{"getClockFrequencyForClockId", {"id", "platform"}},
       indexAndName(&R::getClockFrequencyForClockId, "getClockFrequencyForClockId")},
      {{"getCpuClockFrequency", {"platform"}}, one(&R::getCpuClockFrequency)},
  };
  return kEntries;
}

bool isIndexParameter(std::string const& parameter) {
  return parameter == "i" || parameter == "id";
}

// Whether `arguments` can be given to `query`: as many, and integers where it takes an index.
bool fits(RepoQueries::Query const& query, Arguments const& arguments) {
  if (arguments.size() != query.parameters.size()) return false;
  for (std::size_t k = 0; k < arguments.size(); ++k) {
    if (!isIndexParameter(query.parameters[k])) continue;
    try {
      integer(arguments[k], query.name);
    } catch (UsageError const&) {
      return false;
    }
  }
  return true;
}

std::string usage(RepoQueries::Query const& query) {
  std::string text = query.name;
  for (std::string const& parameter : query.parameters) text += " " + parameter;
  return text;
}

}  // namespace

std::vector<RepoQueries::Query> const& RepoQueries::all() {
  static std::vector<Query> const kQueries = [] {
    std::vector<Query> made;
    for (Entry const& entry : allEntries()) made.push_back(entry.query);
    return made;
  }();
  return kQueries;
}

std::string RepoQueries::ask(qd::QDSRepo& repo, std::string const& name,
                             std::vector<std::string> const& arguments) {
  std::vector<Entry const*> forms;
  for (Entry const& entry : allEntries()) {
    if (entry.query.name == name) forms.push_back(&entry);
  }
  if (forms.empty()) {
    throw UsageError("unknown query '" + name + "'; qvdiag repo --list-queries shows them");
  }
  if (forms.size() == 1) {
    Entry const& entry = *forms.front();
    if (arguments.size() != entry.query.parameters.size()) {
      throw UsageError(name + " takes " + std::to_string(entry.query.parameters.size()) +
                       " argument(s): " + usage(entry.query));
    }
    return entry.call(repo, arguments);
  }
  std::string choices;
  for (Entry const* entry : forms) {
    if (fits(entry->query, arguments)) return entry->call(repo, arguments);
    choices += (choices.empty() ? "" : " | ") + usage(entry->query);
  }
  throw UsageError(name + " takes one of: " + choices);
}

std::string RepoQueries::evaluate(qd::QDSRepo& repo, std::string const& expression) {
  std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObjectPtr)> result(
      xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(expression.c_str()),
                             repo.doc->xpathContext),
      xmlXPathFreeObject);
  if (!result) throw UsageError("the expression '" + expression + "' does not evaluate");
  switch (result->type) {
    case XPATH_NUMBER:
      return "number " + text(result->floatval);
    case XPATH_BOOLEAN:
      return "boolean " + text(result->boolval != 0);
    case XPATH_STRING:
      return "string " + text(std::string(reinterpret_cast<char const*>(result->stringval)));
    case XPATH_NODESET: {
      // The node texts as the repository reads them.
      std::vector<std::string> const values = repo.stringListQuery(expression, "qvdiag");
      std::string answer = "node-set " + std::to_string(values.size());
      for (std::string const& value : values) answer += "\n" + text(value);
      return answer;
    }
    default:
      return "other (XPath type " + std::to_string(static_cast<int>(result->type)) + ")";
  }
}

}  // namespace qvdiag
