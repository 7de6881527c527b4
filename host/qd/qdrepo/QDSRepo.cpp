// The repository core: construction, the cache, forwarding to the document, the counts of
// components and the database check.
#include "host/qd/qdrepo/QDSRepo.h"

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <sstream>
#include <stdexcept>

#include "host/qd/qdrepo/QDEnumerations.h"

namespace qd {

QDSRepo::QDSRepo(std::string const& fileName, unsigned int repoFlags) : flags(repoFlags) {
  bool const interactive = (flags & 1u) != 0;
  doc = QDXPathDoc::buildDoc(fileName, interactive);
  if (!doc) {
    // The original program read the document's flag through the pointer without a look; a
    // file that exists but does not parse fails the repository here instead.
    Log(logERROR, 1019) << "Cannot read IP database " << fileName
                        << ": it cannot be opened or is not well-formed XML";
    throw std::runtime_error("cannot read IP database " + fileName);
  }
  doc->interactive = interactive;

  boost::property_tree::ptree tree;
  boost::property_tree::xml_parser::read_xml(fileName, tree, 0, std::locale());
  for (auto const& [key, child] : tree.get_child("qd:repository")) {
    if (key != "qd:component") continue;
    try {
      auto component = std::make_shared<Component>(child);
      if (component->Type() == "platform") platformComponent = component;
      Log(logINTERNAL, 9999) << "Adding component " << component->Name() << " for parsing";
      components.emplace(component->Name(), component);
    } catch (std::exception const& error) {
      Log(logINTERNAL, 9999) << "Skipping due to " << error.what();
      try {
        std::string const name = child.get_child("<xmlattr>.qd:name").data();
        Log(logINTERNAL, 9999) << "Skipping component for parsing " << name;
      } catch (std::exception const&) {
        // A component without a name has nothing more to say.
      }
    }
  }
  initEnumerationMaps();
}

std::string QDSRepo::getFileName() const { return doc->fileName; }

int QDSRepo::intQuery(std::string const& expression, std::string const& caller) {
  return doc->intQuery(expression, caller);
}
long long QDSRepo::longLongQuery(std::string const& expression, std::string const& caller) {
  return doc->longLongQuery(expression, caller);
}
double QDSRepo::floatQuery(std::string const& expression, std::string const& caller) {
  return doc->floatQuery(expression, caller);
}
bool QDSRepo::booleanQuery(std::string const& expression, std::string const& caller) {
  return doc->booleanQuery(expression, caller);
}
std::string QDSRepo::stringQuery(std::string const& expression, std::string const& caller) {
  return doc->stringQuery(expression, caller);
}
std::vector<std::string> QDSRepo::stringListQuery(std::string const& expression,
                                                  std::string const& caller) {
  return doc->stringListQuery(expression, caller);
}
bool QDSRepo::queryDocInteractive() { return doc->queryDocInteractive(); }

int QDSRepo::getNumQdComponents() {
  return intQuery("count(/qd:repository/qd:component)", "getNumQdComponents");
}

std::string QDSRepo::getIthQdComponent(int i) {
  std::ostringstream expression;
  expression << "/qd:repository/qd:component[" << i + 1 << "]/@qd:name";
  return stringQuery(expression.str(), "getIthQdComponent");
}

bool QDSRepo::checkDatabase() {
  bool allPassed = true;
  // Every function is checked, so that all bad ones are reported.
  for (int i = getNumQdHwFcns() - 1; i >= 0; --i) {
    if (!checkQdHwFcn(getIthQdHwFcn(i))) allPassed = false;
  }
  return allPassed;
}

bool QDSRepo::checkQdHwFcn(std::string const& name) {
  if (!isQdHwFcn(name)) {
    Log(logINFO, 1000) << "Invalid accelerator function (" << name << ");";
    return false;
  }
  std::string const component = getQdHwFcnQdComponentRef(name);
  if (isQdAcceleratorComp(component) || isQdPlatformComp(component)) return true;
  Log line(logERROR, 1020);
  line << "Function '" << name << "' does not map to accelerator or platform hardware.  "
       << "This can occur if the hardware function specifier is "
       << "in error.  Declared hardware functions: ";
  int const count = getNumQdHwFcns();
  for (int i = 0; i < count; ++i) line << (i == 0 ? "" : ", ") << getIthQdHwFcn(i);
  return false;
}

}  // namespace qd
