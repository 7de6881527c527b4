// The repository core: construction, the cache, forwarding to the document, the counts of
// components and the database check.
#include "host/qd/qdrepo/QDSRepo.h"

#include <boost/property_tree/ptree.hpp>
#include <sstream>
#include <stdexcept>

#include "host/qd/qdrepo/QDComponentReader.h"
#include "host/qd/qdrepo/QDEnumerations.h"

namespace qd {

QDSRepo::QDSRepo(std::string const& fileName, unsigned int repoFlags) : flags(repoFlags) {
  bool const interactive = (flags & 1u) != 0;
  doc = QDXPathDoc::buildDoc(fileName, interactive);
  if (!doc) {
    // Reading the document's flag through a null pointer would crash; a file that exists but
    // does not parse fails the repository here instead.
    Log(logERROR, 1019) << "Cannot read IP database " << fileName
                        << ": it cannot be opened or is not well-formed XML";
    throw std::runtime_error("cannot read IP database " + fileName);
  }
  doc->interactive = interactive;

  // The file's components as property trees, as read_xml reads them (it throws what read_xml
  // throws), without a tree of the rest of the file.
  QDComponentReader::read(
      fileName, std::locale(), [this](boost::property_tree::ptree const& child) {
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
      });
  initEnumerationMaps();
}

boost::shared_ptr<QDSRepo> QDSRepo::createRepo(std::string const& fileName, int repoFlags) {
  if (!file_exists(fileName)) {
    Log(logERROR, 1017) << "Cannot open IP database" << fileName;
    return {};
  }
  boost::shared_ptr<QDSRepo> repo;
  try {
    repo.reset(new QDSRepo(fileName, static_cast<unsigned int>(repoFlags)));
  } catch (boost::property_tree::ptree_error const&) {
    throw;  // no qd:repository root: the caller's to handle, as the design has it
  } catch (std::runtime_error const&) {
    return {};  // not well-formed: the constructor has said so
  }
  if (!repo->checkDatabase()) return {};
  Log(logDEBUG, 1000) << repo->toString("DEBUG: ");
  return repo;
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
  return stringQuery(
      "/qd:repository/qd:component[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name",
      "getIthQdComponent");
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

std::string QDSRepo::toString(std::string const& prefix) {
  std::ostringstream out;
  out << getFileName() << std::endl;
  out << prefix << " available components: " << std::endl;
  int const numComponents = getNumQdComponents();
  for (int i = 0; i < numComponents; ++i) {
    std::string const name = getIthQdComponent(i);
    out << prefix << "    " << name << "  (" << getQdCompType(name) << ")" << std::endl;
    if (!isQdPlatformComp(name)) continue;
    out << prefix << "         clock IDs: " << std::endl;
    out << prefix << "           CPU  (" << getCpuClockFrequency(name) << ")" << std::endl;
    int const numClocks = getNumAvailableClocks(name);
    for (int j = 0; j < numClocks; ++j) {
      int const id = getIthAvailableClockId(j, name);
      out << prefix << "             " << id << "  (" << getClockFrequencyForClockId(id, name)
          << " MHz)" << (id == getPlatformDefaultClockId(name) ? " - default" : "") << std::endl;
    }
  }
  out << prefix << " available hardware functions: " << std::endl;
  out << prefix << "     <fcn_name> => compRef (ctrlRegType:returnOffset)" << std::endl;
  out << prefix << "          <arg> => portRef (portType:dataWidth:arraySize:offset:aximmRef)"
      << std::endl;
  out << prefix << std::endl;
  int const numFunctions = getNumQdHwFcns();
  for (int i = 0; i < numFunctions; ++i) {
    std::string const name = getIthQdHwFcn(i);
    std::string const component = getQdHwFcnQdComponentRef(name);
    bool const onPlatform = isQdPlatformHwFcn(name);
    out << prefix << "    " << name << " => " << component << " (" << getQdHwFcnCtrlRegType(name)
        << ":" << getQdHwFcnReturnOffset(name) << ")" << (onPlatform ? "  - platform " : "")
        << std::endl;
    // Arguments from the last to the first, as the original dump lists them.
    for (int a = getNumQdHwFcnArgs1(name) - 1; a >= 0; --a) {
      std::string const hwName = getIthQdHwFcnArgHwName1(name, a);
      out << prefix << "           " << getIthQdHwFcnArg1(name, a) << " => ";
      if (onPlatform) out << getQdCompBusInterfaceInstanceRef(component, hwName) << ".";
      out << hwName << " (" << getIthQdHwFcnArgPortInterfaceType1(name, a) << ":"
          << getIthQdHwFcnArgDataWidth(name, a) << "(" << getIthQdHwFcnArgPackedDataWidth1(name, a)
          << "):" << getIthQdHwFcnArgArraySize1(name, a) << ":" << getIthQdHwFcnArgOffset(name, a);
      std::string const master = getIthQdHwFcnArgAximmMasterRef1(name, a);
      if (!master.empty()) out << ":" << master;
      out << ")" << std::endl;
    }
  }
  return out.str();
}

}  // namespace qd
