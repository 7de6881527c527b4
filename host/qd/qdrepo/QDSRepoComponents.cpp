// Component and port queries.
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <sstream>
#include <stdexcept>
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {

bool isQdCompType(std::string const& component, std::string const& type,
                  boost::shared_ptr<QDXPathDoc> const& doc) {
  return doc->booleanQuery("boolean(/qd:repository/qd:component[@qd:name='" + component +
                               "' and @qd:type='" + type + "'])",
                           "isQdCompType");
}

bool QDSRepo::isQdComp(std::string const& component) {
  if (component.empty()) {
    Log(logINTERNAL, 1014) << " NULL component type reference ";
    return false;
  }
  return booleanQuery("boolean(/qd:repository/qd:component[@qd:name='" + component + "'])",
                      "isQdComp");
}

bool QDSRepo::isQdAcceleratorComp(std::string const& component) {
  return isQdComp(component) && isQdCompType(component, "accelerator", doc);
}

bool QDSRepo::isQdDatamoverComp(std::string const& component) {
  return isQdComp(component) && isQdCompType(component, "datamover", doc);
}

bool QDSRepo::isQdMonitorComp(std::string const& component) {
  return isQdComp(component) && isQdCompType(component, "monitor", doc);
}

bool QDSRepo::isQdInterconnectComp(std::string const& component) {
  return isQdComp(component) && isQdCompType(component, "interconnect", doc);
}

bool QDSRepo::isQdSmartConnectComp(std::string const& component) {
  return isQdComp(component) && isQdCompType(component, "smartconnect", doc);
}

bool QDSRepo::isQdPlatformComp(std::string const& component) {
  bool const answer = isQdCompType(component, "platform", doc);
  if (platformComponent) {
    QDREPO_VERIFY("isQdPlatformComp", answer, component == platformComponent->Name(), "");
  }
  return answer;
}

std::string QDSRepo::getQdCompType(std::string const& component) {
  return stringQuery("/qd:repository/qd:component[@qd:name='" + component + "']/@qd:type",
                     "getQdCompType");
}

}  // namespace qd

namespace qd {

namespace {

std::string component(std::string const& name) {
  return "/qd:repository/qd:component[@qd:name='" + name + "'][1]";
}

std::string interfaceAttribute(std::string const& name, std::string const& port,
                               std::string const& attribute) {
  return component(name) + "/qd:busInterface[@qd:name='" + port + "']/@" + attribute;
}

// The cached component of `name` when the cache may answer for `port`, else null.
Component const* cachedFor(QDSRepo const& repo, std::string const& name, std::string const& port) {
  auto const found = repo.components.find(name);
  if (found == repo.components.end() || port.empty()) return nullptr;
  return found->second.get();
}

template <class T>
std::shared_ptr<T> named(Component::ByName<T> const& byName, std::string const& name) {
  auto const found = byName.find(name);
  return found == byName.end() ? nullptr : found->second;
}

// A string attribute of the interface `port`, checked against `field` of its cached object.
std::string checkedInterfaceAttribute(QDSRepo& repo, std::string const& name,
                                      std::string const& port, std::string const& attribute,
                                      std::string const& query, std::string BusIntf::*field) {
  std::string const answer = repo.stringQuery(interfaceAttribute(name, port, attribute), query);
  if (Component const* cached = cachedFor(repo, name, port)) {
    auto const object = named(cached->busInterfaces, port);
    QDREPO_VERIFY(query, answer, object ? (*object).*field : std::string(), name + "/" + port);
  }
  return answer;
}

// The attribute of the interface at index `i`. An adapter may nest its interfaces, so all
// descendants count there, in document order.
std::string ithInterfaceAttribute(QDSRepo& repo, std::string const& name, int i,
                                  std::string const& attribute) {
  std::string const position = "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@" + attribute;
  if (repo.isQdCompWithAdapter(name))
    return "(" + component(name) + "//qd:busInterface)" + position;
  return component(name) + "/qd:busInterface" + position;
}

}  // namespace

namespace {

// getQdCompBusInterfaceStringAttrByIndex, telling in `indexed` whether `i` passed the guards of
// the component and of the index, so that a checked query knows there is an interface to ask
// the cache about.
std::string stringAttrByIndex(QDSRepo& repo, std::string const& name, int i,
                              std::string const& attribute, std::string const& caller,
                              bool& indexed) {
  indexed = false;
  if (!repo.isQdComp(name) || !repo.isValidQdCompPortIndex(name, i)) return "";
  indexed = true;
  if (!repo.isValidQdCompIthPortAttr(name, i, attribute)) return "";
  return repo.stringQuery(ithInterfaceAttribute(repo, name, i, attribute), caller);
}

// A checked by-index query: the attribute at `i`, compared with `field` of the cached interface
// at `i` whenever the index is one of the component's. An index out of range has already
// answered the sentinel with its warning and has nothing to compare. The count the index was
// tested against is itself checked, so the cached list has an entry there; at() still guards it.
std::string checkedAttributeByIndex(QDSRepo& repo, std::string const& name, int i,
                                    std::string const& attribute, std::string const& query,
                                    std::string BusIntf::*field) {
  bool indexed = false;
  std::string const answer = stringAttrByIndex(repo, name, i, attribute, query, indexed);
  auto const cached = repo.components.find(name);
  if (indexed && cached != repo.components.end()) {
    auto const& object = cached->second->busInterfaceList.at(static_cast<std::size_t>(i));
    QDREPO_VERIFY(query, answer, object ? (*object).*field : std::string(), name);
  }
  return answer;
}

}  // namespace

std::string getQdCompBusInterfaceStringAttrByIndex(QDSRepo& repo, std::string const& name, int i,
                                                   std::string const& attribute,
                                                   std::string const& caller) {
  bool indexed = false;
  return stringAttrByIndex(repo, name, i, attribute, caller, indexed);
}

int getQdCompBusInterfaceIntAttrByIndex(QDSRepo& repo, std::string const& name, int i,
                                        std::string const& attribute, std::string const& caller) {
  if (!repo.isQdComp(name) || !repo.isValidQdCompPortIndex(name, i)) return -1;
  if (!repo.isValidQdCompIthPortAttr(name, i, attribute)) return -1;
  return repo.intQuery("number(" + ithInterfaceAttribute(repo, name, i, attribute) + ")", caller);
}

bool QDSRepo::isValidQdCompIthPortAttr(std::string const& name, int i,
                                       std::string const& attribute) {
  return booleanQuery("boolean(" + ithInterfaceAttribute(*this, name, i, attribute) + ")",
                      "isValidQdCompIthPortAttr");
}

bool QDSRepo::isQdCompWithAdapter(std::string const& name) {
  return booleanQuery("boolean(" + component(name) + "/@qd:adapterCompRef)", "isQdCompWithAdapter");
}

bool QDSRepo::isQdAdapteeComp(std::string const& name) { return isQdCompWithAdapter(name); }

std::string QDSRepo::getQdPlatformComp() {
  if (!booleanQuery("boolean(/qd:repository/qd:component[@qd:type='platform'])",
                    "getQdPlatformComp")) {
    Log(logERROR, 1014) << " Platform component reference not found";
    return "";
  }
  std::string const answer = stringQuery(
      "/qd:repository/qd:component[@qd:type='platform'][1]/@qd:name", "getQdPlatformComp");
  if (platformComponent) {
    QDREPO_VERIFY("getQdPlatformComp", answer, platformComponent->Name(), "");
  }
  return answer;
}

bool QDSRepo::isQdCompPort(std::string const& name, std::string const& port) {
  // 1. An interface of that name, or one whose physical port has that name. This is the fact the
  //    cache holds too, so the two are compared here and nowhere else.
  bool const named = booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:name='" +
                                      port + "' or @qd:port = '" + port + "'])",
                                  "isQdCompPort");
  if (Component const* cached = cachedFor(*this, name, port)) {
    bool inCache = cached->busInterfaces.count(port) != 0;
    for (auto const& object : cached->busInterfaceList) {
      if (object && object->port == port) inCache = true;
    }
    QDREPO_VERIFY("isQdCompPort", named, inCache, name + "/" + port);
  }
  if (named) return true;
  // 2. A packed group answers to the name of its interface on the inner component. The cache
  //    keeps no such name, so this answer is XPath's alone, on cached components as on others.
  return booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:busInterfaceRef='" +
                          port + "' and @qd:dataPack='true'])",
                      "isQdCompPort");
}

bool QDSRepo::isQdCompAxiPort(std::string const& name, std::string const& port) {
  bool const answer =
      booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:name='" + port +
                       "' and (@qd:busTypeRef='aximm' or @qd:busTypeRef='axis')])",
                   "isQdCompAxiPort");
  if (Component const* cached = cachedFor(*this, name, port)) {
    QDREPO_VERIFY("isQdCompAxiPort", answer, cached->axiInterfaces.count(port) != 0,
                  name + "/" + port);
  }
  return answer;
}

bool QDSRepo::isQdCompClockPort(std::string const& name, std::string const& port) {
  bool const answer =
      booleanQuery("boolean(" + component(name) +
                       "/qd:busInterface[@qd:busTypeRef='clock' and @qd:port='" + port + "'])",
                   "isQdCompClockPort");
  if (Component const* cached = cachedFor(*this, name, port)) {
    bool inCache = false;
    for (auto const& clock : cached->clockList) inCache = inCache || clock->port == port;
    QDREPO_VERIFY("isQdCompClockPort", answer, inCache, name + "/" + port);
  }
  return answer;
}

int QDSRepo::getQdCompNumPorts(std::string const& name) {
  if (!isQdComp(name)) return -1;
  int const answer =
      intQuery("count(" + component(name) + "/qd:busInterface)", "getQdCompNumPorts");
  auto const cached = components.find(name);
  if (cached != components.end()) {
    QDREPO_VERIFY("getQdCompNumPorts", answer,
                  static_cast<int>(cached->second->busInterfaceList.size()), "Target " + name);
  }
  return answer;
}

bool QDSRepo::isValidQdCompPortIndex(std::string const& name, int i) {
  if (0 <= i && i < getQdCompNumPorts(name)) return true;
  Log(logWARNING, 1001) << " Index " << i << " out of range for component " << name;
  return false;
}

std::string QDSRepo::getQdCompPortName(std::string const& name, int i) {
  return checkedAttributeByIndex(*this, name, i, "qd:name", "getQdCompPortName", &BusIntf::name);
}

std::string QDSRepo::getQdCompPortType(std::string const& name, int i) {
  return checkedAttributeByIndex(*this, name, i, "qd:busTypeRef", "getQdCompPortType",
                                 &BusIntf::busTypeRef);
}

std::string QDSRepo::getQdCompBusInterfacePort(std::string const& name, std::string const& port) {
  return checkedInterfaceAttribute(*this, name, port, "qd:port", "getQdCompBusInterfacePort",
                                   &BusIntf::port);
}

std::string QDSRepo::getQdCompBusInterfaceInstanceRef(std::string const& name,
                                                      std::string const& port) {
  return checkedInterfaceAttribute(*this, name, port, "qd:instanceRef",
                                   "getQdCompBusInterfaceInstanceRef", &BusIntf::instanceRef);
}

std::string QDSRepo::getQdCompBusInterfaceComponentRef(std::string const& name,
                                                       std::string const& port) {
  return checkedInterfaceAttribute(*this, name, port, "qd:componentRef",
                                   "getQdCompBusInterfaceComponentRef", &BusIntf::componentRef);
}

std::string QDSRepo::getQdCompBusInterfaceBusInterfaceRef(std::string const& name,
                                                          std::string const& port) {
  return checkedInterfaceAttribute(*this, name, port, "qd:busInterfaceRef",
                                   "getQdCompBusInterfaceBusInterfaceRef",
                                   &BusIntf::busInterfaceRef);
}

std::string QDSRepo::getQdCompBusInterfaceMemObject(std::string const& name,
                                                    std::string const& port) {
  std::string const answer =
      stringQuery(interfaceAttribute(name, port, "qd:memport"), "getQdCompBusInterfaceMemObject");
  if (Component const* cached = cachedFor(*this, name, port)) {
    auto const axi = named(cached->axiInterfaces, port);
    QDREPO_VERIFY("getQdCompBusInterfaceMemObject", answer, axi ? axi->memport : std::string(),
                  name + "/" + port);
  }
  return answer;
}

}  // namespace qd

namespace qd {

namespace {

std::string physicalPortAttribute(std::string const& name, std::string const& port,
                                  std::string const& attribute) {
  return component(name) + "/qd:port[@qd:name='" + port + "']/@" + attribute;
}

// The attribute of the interface whose qd:port is `port`, as this lookup has always been
// written: the quotes around the attribute make an expression that XPath cannot evaluate, so it
// answers "" and the caller goes on to its next source. Callers that depend on the order of the
// tries see the same order as ever.
std::string attributeBehindPhysicalPort(QDSRepo& repo, std::string const& name,
                                        std::string const& port, std::string const& attribute,
                                        std::string const& caller) {
  return repo.stringQuery(
      component(name) + "/qd:busInterface[@qd:port='" + port + "']/@'" + attribute + "'", caller);
}

std::string modeOfDirection(std::string const& direction) {
  // An input port is where the data comes in from outside, so it is the master end.
  return direction == "in" ? BusIntf::masterStr : BusIntf::slaveStr;
}

void warnNoDefinition(int number, std::string const& name, std::string const& port,
                      char const* what) {
  Log(logWARNING, number) << "Component type '" << name << "' has no port '" << port << "' " << what
                          << " definition";
}

}  // namespace

bool QDSRepo::isQdCompQdPort(std::string const& name, std::string const& port) {
  return booleanQuery("boolean(" + component(name) + "/qd:port[@qd:name='" + port + "'])",
                      "isQdCompQdPort");
}

std::string QDSRepo::getQdCompQdPortDir(std::string const& name, std::string const& port) {
  return stringQuery(physicalPortAttribute(name, port, "qd:direction"), "getQdCompQdPortDir");
}

std::string QDSRepo::getQdCompPortStringAttr(std::string const& name, std::string const& port,
                                             std::string const& attribute) {
  return stringQuery(physicalPortAttribute(name, port, attribute), "getQdCompPortStringAttr");
}

std::string QDSRepo::getQdCompBusInterfaceStringAttr(std::string const& name,
                                                     std::string const& port,
                                                     std::string const& attribute) {
  return stringQuery(interfaceAttribute(name, port, attribute), "getQdCompBusInterfaceStringAttr");
}

std::string QDSRepo::getQdCompPortType(std::string const& name, std::string const& port) {
  Component const* cached = cachedFor(*this, name, port);
  std::string cachedType;
  if (cached) {
    if (auto const object = named(cached->busInterfaces, port)) {
      cachedType = object->busTypeRef;
    } else if (cached->ports.count(port) != 0) {
      cachedType = "wire";
    }
  }

  if (isQdCompPort(name, port)) {
    std::string const type = getQdCompBusInterfaceStringAttr(name, port, "qd:busTypeRef");
    return type.empty() ? getQdCompPortStringAttr(name, port, "qd:portTypeRef") : type;
  }
  std::string answer;
  if (booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:port='" + port + "'])",
                   "getQdCompPortType")) {
    answer =
        stringQuery(component(name) + "/qd:busInterface[@qd:port='" + port + "']/@qd:busTypeRef",
                    "getQdCompPortType");
  } else if (isQdCompQdPort(name, port)) {
    answer = "wire";
  } else {
    warnNoDefinition(1002, name, port, "type");
  }
  if (cached) QDREPO_VERIFY("getQdCompPortType", answer, cachedType, name + "/" + port);
  return answer;
}

std::string QDSRepo::getQdCompPortDir(std::string const& name, std::string const& port) {
  Component const* cached = cachedFor(*this, name, port);
  std::string cachedDirection;
  if (cached) {
    auto const object = named(cached->busInterfaces, port);
    auto const physical = named(cached->ports, port);
    if (object && !object->direction.empty()) {
      cachedDirection = object->direction;
    } else if (physical) {
      cachedDirection = physical->direction;
    }
  }

  std::string answer = getQdCompBusInterfaceStringAttr(name, port, "qd:direction");
  if (answer.empty()) {
    answer = attributeBehindPhysicalPort(*this, name, port, "qd:direction", "getQdCompPortDir");
  }
  if (answer.empty()) answer = getQdCompQdPortDir(name, port);
  if (answer.empty()) warnNoDefinition(1003, name, port, "direction");
  if (cached) QDREPO_VERIFY("getQdCompPortDir", answer, cachedDirection, name + "/" + port);
  return answer;
}

std::string QDSRepo::getQdCompPortMode(std::string const& name, std::string const& port) {
  Component const* cached = cachedFor(*this, name, port);

  std::string answer = getQdCompBusInterfaceStringAttr(name, port, "qd:mode");
  if (!answer.empty()) {
    // The cache keeps only whether the interface is a master, so it can speak for an interface
    // that states its mode, and not for one that leaves it out.
    auto const object = cached ? named(cached->busInterfaces, port) : nullptr;
    if (object) {
      QDREPO_VERIFY("getQdCompPortMode", answer,
                    object->isMaster ? BusIntf::masterStr : BusIntf::slaveStr, name + "/" + port);
    }
    return answer;
  }
  answer = attributeBehindPhysicalPort(*this, name, port, "qd:mode", "getQdCompPortMode");
  if (!answer.empty()) return answer;
  if (isQdCompQdPort(name, port)) {
    answer = modeOfDirection(getQdCompQdPortDir(name, port));
    auto const physical = cached ? named(cached->ports, port) : nullptr;
    if (physical) {
      QDREPO_VERIFY("getQdCompPortMode", answer, modeOfDirection(physical->direction),
                    name + "/" + port);
    }
    return answer;
  }
  warnNoDefinition(1004, name, port, "mode");
  return answer;
}

}  // namespace qd

namespace qd {

namespace {

constexpr char const* kScAdapterType = "system_compiler_generated_adapter_v2";

// The adapter's own checks: an assertion that holds for every database the system compiler
// writes, so a failure means a broken database and nothing sensible can follow.
#define QD_SC_ADAPTER_ASSERT(condition)                                         \
  do {                                                                          \
    if (!(condition)) {                                                         \
      std::printf("Assertion failed in \"%s\", line %d\n", __FILE__, __LINE__); \
      std::fflush(stdout);                                                      \
      std::abort();                                                             \
    }                                                                           \
  } while (false)

std::string interfaceNamed(std::string const& name, std::string const& port) {
  return component(name) + "/qd:busInterface[@qd:name='" + port + "']";
}

// The first function mapped onto the component, and its argument on `port`.
std::string firstFunction(std::string const& name) {
  return "/qd:repository/qd:fcnMap[@qd:componentRef='" + name + "'][1]";
}

std::string firstFunctionArgument(std::string const& name, std::string const& port,
                                  std::string const& attribute) {
  return firstFunction(name) + "/qd:arg[@qd:busInterfaceRef='" + port + "'][1]/@" + attribute;
}

// AXI interfaces of either bus type (aximm, axis), with a further condition.
std::string axiInterfaces(std::string const& name, std::string const& condition) {
  return component(name) +
         "/qd:busInterface[(@qd:busTypeRef='aximm' or @qd:busTypeRef='axis') and " + condition +
         "]";
}

unsigned int hexadecimal(std::string const& text) {
  unsigned int value = 0;
  if (std::sscanf(text.c_str(), "%x", &value) != 1) return 0;
  return value;
}

bool isInterconnectRef(std::string const& reference) {
  return reference == "axi_interconnect" || reference == "smartconnect";
}

}  // namespace

bool QDSRepo::isQdAdapterComp(std::string const& name) {
  return booleanQuery("boolean(" + component(name) + "/@qd:adapteeCompRef)", "isQdAdapterComp");
}

bool QDSRepo::isAddressableQdComp(std::string const& name) {
  return booleanQuery("boolean(" + component(name) +
                          "/qd:busInterface[@qd:busTypeRef='aximm' and @qd:mode='slave'][1])",
                      "isAddressableQdComp");
}

bool QDSRepo::isQdCompSCAdapter(std::string const& name) {
  if (!isQdComp(name)) return false;
  if (getQdCompStringAttr(name, "qd:adapterType") != kScAdapterType) return false;
  QD_SC_ADAPTER_ASSERT(isQdAcceleratorComp(name));
  QD_SC_ADAPTER_ASSERT(isQdAdapterComp(name));
  QD_SC_ADAPTER_ASSERT(!isQdAdapteeComp(name));
  return true;
}

bool QDSRepo::isQdCompStringAttr(std::string const& name, std::string const& attribute) {
  return booleanQuery(
      "boolean(/qd:repository/qd:component[@qd:name='" + name + "']/@" + attribute + ")",
      "isQdCompStringAttr");
}

bool QDSRepo::isQdCompBusInterface(std::string const& name, std::string const& port) {
  return booleanQuery("boolean(" + interfaceNamed(name, port) + ")", "isQdCompBusInterface");
}

bool QDSRepo::isQdCompBusInterfacePort(std::string const& name, std::string const& port) {
  return booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:port='" + port + "'])",
                      "isQdCompBusInterfacePort");
}

bool QDSRepo::isQdCompPortReturnType(std::string const& name, std::string const& port) {
  return getQdCompBusInterfaceStringAttr(name, port, "qd:return") == "true";
}

// ---- Kind tests by index: the bus type or mode of the interface at `i`.
bool QDSRepo::isQdCompClockPort(std::string const& name, int i) {
  return getQdCompPortType(name, i) == "clock";
}
bool QDSRepo::isQdCompResetPort(std::string const& name, int i) {
  return getQdCompPortType(name, i) == "reset";
}
bool QDSRepo::isQdCompInterruptPort(std::string const& name, int i) {
  return getQdCompPortType(name, i) == "interrupt";
}
bool QDSRepo::isQdCompRegisterPort(std::string const& name, int i) {
  return getQdCompPortType(name, i) == "register";
}
bool QDSRepo::isQdCompMasterPort(std::string const& name, int i) {
  return getQdCompPortMode(name, i) == BusIntf::masterStr;
}
bool QDSRepo::isQdCompSlavePort(std::string const& name, int i) {
  return getQdCompPortMode(name, i) == BusIntf::slaveStr;
}
bool QDSRepo::isQdCompAxiPort(std::string const& name, int i) {
  return getQdCompPortType(name, i) == "aximm";
}
bool QDSRepo::isQdCompAxiSlavePort(std::string const& name, int i) {
  return isQdCompAxiPort(name, i) && isQdCompSlavePort(name, i);
}
bool QDSRepo::isQdCompAxiMasterPort(std::string const& name, int i) {
  return isQdCompAxiPort(name, i) && isQdCompMasterPort(name, i);
}
bool QDSRepo::isQdCompAxilitePort(std::string const& name, int i) {
  return getQdCompPortType(name, i) == "axilite";
}
bool QDSRepo::isQdCompAxisPort(std::string const& name, int i) {
  return getQdCompPortType(name, i) == "axis";
}
bool QDSRepo::isQdCompAxisSlavePort(std::string const& name, int i) {
  return isQdCompAxisPort(name, i) && isQdCompSlavePort(name, i);
}
bool QDSRepo::isQdCompAxisMasterPort(std::string const& name, int i) {
  return isQdCompAxisPort(name, i) && isQdCompMasterPort(name, i);
}
bool QDSRepo::isQdCompBramPort(std::string const& name, int i) {
  return getQdCompPortType(name, i) == "bram";
}
bool QDSRepo::isQdCompFifoPort(std::string const& name, int i) {
  std::string const type = getQdCompPortType(name, i);
  return type == "fifo" || type == "acc_fifo_read" || type == "acc_fifo_write";
}

// ---- The same kind tests by name.
bool QDSRepo::isQdCompResetPort(std::string const& name, std::string const& port) {
  return getQdCompPortType(name, port) == "reset";
}
bool QDSRepo::isQdCompInterruptPort(std::string const& name, std::string const& port) {
  return getQdCompPortType(name, port) == "interrupt";
}
bool QDSRepo::isQdCompRegisterPort(std::string const& name, std::string const& port) {
  return getQdCompPortType(name, port) == "register";
}
bool QDSRepo::isQdCompMasterPort(std::string const& name, std::string const& port) {
  return getQdCompPortMode(name, port) == BusIntf::masterStr;
}
bool QDSRepo::isQdCompSlavePort(std::string const& name, std::string const& port) {
  return getQdCompPortMode(name, port) == BusIntf::slaveStr;
}
bool QDSRepo::isQdCompAxiSlavePort(std::string const& name, std::string const& port) {
  return isQdCompAxiPort(name, port) && isQdCompSlavePort(name, port);
}
bool QDSRepo::isQdCompAxiMasterPort(std::string const& name, std::string const& port) {
  return isQdCompAxiPort(name, port) && isQdCompMasterPort(name, port);
}
bool QDSRepo::isQdCompAxilitePort(std::string const& name, std::string const& port) {
  return getQdCompPortType(name, port) == "axilite";
}
bool QDSRepo::isQdCompAxisPort(std::string const& name, std::string const& port) {
  return getQdCompPortType(name, port) == "axis";
}
bool QDSRepo::isQdCompAxisSlavePort(std::string const& name, std::string const& port) {
  return isQdCompAxisPort(name, port) && isQdCompSlavePort(name, port);
}
bool QDSRepo::isQdCompAxisMasterPort(std::string const& name, std::string const& port) {
  return isQdCompAxisPort(name, port) && isQdCompMasterPort(name, port);
}
bool QDSRepo::isQdCompBramPort(std::string const& name, std::string const& port) {
  return getQdCompPortType(name, port) == "bram";
}
bool QDSRepo::isQdCompFifoPort(std::string const& name, std::string const& port) {
  std::string const type = getQdCompPortType(name, port);
  return type == "fifo" || type == "acc_fifo_read" || type == "acc_fifo_write";
}

bool QDSRepo::is_qdmemport_type(std::string const& name, std::string const& port,
                                std::string const& memport) {
  return booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:name='" + port +
                          "' and @qd:memport='" + memport + "'])",
                      "qdmemport_type");
}
bool QDSRepo::isQdCompAcpPort(std::string const& name, std::string const& port) {
  return is_qdmemport_type(name, port, "S_AXI_ACP");
}
bool QDSRepo::isQdCompGpPort(std::string const& name, std::string const& port) {
  return is_qdmemport_type(name, port, "M_AXI_GP");
}
bool QDSRepo::isQdCompHpPort(std::string const& name, std::string const& port) {
  return is_qdmemport_type(name, port, "S_AXI_HP");
}
bool QDSRepo::isQdCompHpcPort(std::string const& name, std::string const& port) {
  return is_qdmemport_type(name, port, "S_AXI_HPC");
}
bool QDSRepo::isQdCompMigPort(std::string const& name, std::string const& port) {
  return is_qdmemport_type(name, port, "MIG");
}

bool QDSRepo::isQdPlatformCompProcessor(std::string const& name, std::string const& port) {
  if (!isQdPlatformComp(name) || !isQdCompAxiPort(name, port)) return false;
  std::string const memport = getQdCompBusInterfaceStringAttr(name, port, "qd:memport");
  // A memory controller is no processor, although it too has a memport.
  return !memport.empty() && memport != "MIG";
}

bool QDSRepo::isQdCompPlatformAxisPort(std::string const& name, std::string const& port) {
  return isQdPlatformComp(name) && isQdCompAxisPort(name, port);
}

bool QDSRepo::isCoherentQdCompPort(std::string const& name, std::string const& port) {
  return getQdCompBusInterfaceStringAttr(name, port, "qd:cacheCoherent") == "true";
}

bool isQdCompWithAdapterHlsInoutPort(std::string const& name, int i, QDSRepo& repo) {
  std::string const port = repo.getQdCompPortName(name, i);
  if (port.size() < 3) return false;
  std::string const stem = port.substr(0, port.size() - 2);
  std::string const suffix = port.substr(port.size() - 2);
  std::string const direction = repo.getQdCompPortDir(name, i);
  // High-level synthesis splits an inout argument into an input and an output in a row.
  if (suffix == "_i" && direction == "in") {
    return repo.getQdCompPortName(name, i + 1) == stem + "_o" &&
           repo.getQdCompPortDir(name, i + 1) == "out";
  }
  if (suffix == "_o" && direction == "out") {
    return repo.getQdCompPortName(name, i - 1) == stem + "_i" &&
           repo.getQdCompPortDir(name, i - 1) == "in";
  }
  return false;
}

bool QDSRepo::isQdCompHlsInoutPort(std::string const& name, int i) {
  return isQdCompWithAdapter(name) && isQdCompWithAdapterHlsInoutPort(name, i, *this);
}

bool QDSRepo::isAxiClockRef(std::string const& name, std::string const& port) {
  return booleanQuery("boolean(" + axiInterfaces(name, "@qd:clockRef='" + port + "'") + ")",
                      "isAxiClockRef");
}

bool QDSRepo::isAxiResetRef(std::string const& name, std::string const& port) {
  return booleanQuery("boolean(" + axiInterfaces(name, "@qd:resetRef='" + port + "'") + ")",
                      "isAxiResetRef");
}

bool QDSRepo::qdCompAxisPortHasTlast(std::string const& name, std::string const& port) {
  return isQdCompAxisPort(name, port) &&
         getQdCompBusInterfaceStringAttr(name, port, "qd:hasTlast") == "true";
}

bool QDSRepo::qdCompPortIsPacked(std::string const& name, std::string const& port) {
  if (!isQdCompPort(name, port)) return false;
  if (booleanQuery("boolean(" + interfaceNamed(name, port) + "/@qd:dataPack)",
                   "qdCompPortIsPacked")) {
    return true;
  }
  // An adaptee's packing is told by its function's argument.
  if (!isQdAdapteeComp(name)) return false;
  return booleanQuery("boolean(/qd:repository/qd:fcnMap[@qd:componentRef='" + name +
                          "'][1]/qd:arg[@qd:busInterfaceRef='" + port + "'][1]/@qd:dataPack)",
                      "qdCompPortIsPacked");
}

bool QDSRepo::qdCompIthPortIsPacked(std::string const& name, int i) {
  return qdCompPortIsPacked(name, getQdCompPortName(name, i));
}

std::string QDSRepo::getQdCompCompRef(std::string const& name) {
  return stringQuery("/qd:repository/qd:component[@qd:name='" + name + "']/@qd:componentRef",
                     "getQdCompCompRef");
}

std::string QDSRepo::getQdAdapterCompRef(std::string const& name) {
  return stringQuery("/qd:repository/qd:component[@qd:name='" + name + "']/@qd:adapterCompRef",
                     "getQdAdapterCompRef");
}

std::string QDSRepo::getQdAdapteeCompRef(std::string const& name) {
  // Its caller word has always been its twin's.
  return stringQuery("/qd:repository/qd:component[@qd:name='" + name + "']/@qd:adapteeCompRef",
                     "getQdAdapterCompRef");
}

std::string QDSRepo::getQdCompStringAttr(std::string const& name, std::string const& attribute) {
  return stringQuery("/qd:repository/qd:component[@qd:name='" + name + "']/@" + attribute,
                     "getQdCompStringAttr");
}

std::string QDSRepo::getQdCompBusIntfAttr(std::string const& name, std::string const& port,
                                          std::string const& attribute) {
  std::string const answer = getQdCompBusInterfaceStringAttr(name, port, attribute);
  if (!answer.empty()) return answer;
  return getQdCompPortStringAttr(name, port, attribute);
}

unsigned int QDSRepo::getQdCompRegionSize(std::string const& name) {
  if (!isAddressableQdComp(name)) return 0;
  return hexadecimal(stringQuery(
      component(name) +
          "/qd:busInterface[@qd:busTypeRef='aximm' and @qd:mode='slave'][1]/@qd:regionSize",
      "getQdCompRegionSize"));
}

std::string QDSRepo::getQdCompControlProtocol(std::string const& name) {
  if (!isQdComp(name)) {
    Log(logINTERNAL, 1016) << "Invalid control protocol query on non-qd:comp '" << name << "'";
    return "";
  }
  std::string const protocol =
      stringQuery(firstFunction(name) + "/qd:ctrlReg/@qd:type", "getQdCompControlProtocol");
  if (protocol.empty()) return "ap_ctrl_none";
  // A plain AXI-Lite register block is driven with the handshake protocol.
  if (protocol == "generic_axi_lite") return "ap_ctrl_hs";
  return protocol;
}

int QDSRepo::getQdCompNumPorts(std::string const& name, std::string const& type,
                               std::string const& mode) {
  if (!isQdComp(name)) return -1;
  return intQuery("count(" + component(name) + "/qd:busInterface[@qd:busTypeRef='" + type +
                      "' and @qd:mode='" + mode + "'])",
                  "getQdCompNumPorts");
}

int QDSRepo::getNumAieConfigs(std::string const& name) {
  if (!isQdComp(name)) return -1;
  return intQuery("count(" + component(name) + "/qd:busInterface[@qd:busTypeRef='aie_config'])",
                  "getNumAieConfigs");
}

std::string QDSRepo::getIthAieConfigPeer(std::string const& name, int i) {
  std::string const configs = component(name) + "/qd:busInterface[@qd:busTypeRef='aie_config']";
  if (!booleanQuery("boolean(" + configs + ")", "getIthAieConfigPeer")) return "";
  return stringQuery(configs + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:connectedInstanceRef",
                     "getIthAieConfigPeer");
}

std::string QDSRepo::getIthQdCompBusInterfacePort(std::string const& name, int i) {
  return getQdCompBusInterfaceStringAttrByIndex(*this, name, i, "qd:port",
                                                "getIthQdCompBusInterfacePort");
}

std::string QDSRepo::getQdCompPortDir(std::string const& name, int i) {
  return getQdCompBusInterfaceStringAttrByIndex(*this, name, i, "qd:direction", "getQdCompPortDir");
}

std::string QDSRepo::getQdCompPortMode(std::string const& name, int i) {
  return getQdCompBusInterfaceStringAttrByIndex(*this, name, i, "qd:mode", "getQdCompPortMode");
}

int QDSRepo::getQdCompPortDataWidth(std::string const& name, std::string const& port) {
  if (!isQdCompPort(name, port)) return -1;
  std::string const type = getQdCompPortType(name, port);
  // Registers and plain data keep their own width even where the group is packed.
  if (qdCompPortIsPacked(name, port) && type != "register" && type != "data") {
    return getQdCompPortPackedDataWidth(name, port);
  }
  int const width = getQdCompBusInterfaceIntAttr(name, port, "qd:dataWidth");
  if (width >= 0) return width;
  return intQuery("number(/qd:repository/qd:fcnMap[@qd:componentRef='" + name +
                      "']/qd:arg[@qd:busInterfaceRef='" + port + "'][1]/@qd:dataWidth)",
                  "getQdCompPortDataWidth");
}

int QDSRepo::getQdCompPortPackedDataWidth(std::string const& name, std::string const& port) {
  if (!qdCompPortIsPacked(name, port)) return -1;
  if (!isQdAdapteeComp(name)) {
    Log(logERROR, 1016) << "Packed ports for non-qd_adapter IPs are unsupported";
    return -1;
  }
  return intQuery("number(" + firstFunctionArgument(name, port, "qd:dataPackWidth") + ")",
                  "getQdCompPortPackedDataWidth");
}

unsigned int QDSRepo::getQdCompPortRegionSize(std::string const& name, std::string const& port) {
  return hexadecimal(getQdCompBusInterfaceStringAttr(name, port, "qd:regionSize"));
}

int QDSRepo::getQdCompPortNumElements(std::string const& name, std::string const& port) {
  return getQdCompBusInterfaceIntAttr(name, port, "qd:numElements");
}
int QDSRepo::getQdCompPortCapacity(std::string const& name, std::string const& port) {
  return getQdCompBusInterfaceIntAttr(name, port, "qd:capacity");
}
int QDSRepo::getQdCompPortBufferDepth(std::string const& name, std::string const& port) {
  return getQdCompBusInterfaceIntAttr(name, port, "qd:bufferDepth");
}
int QDSRepo::getQdCompPortArraySize(std::string const& name, std::string const& port) {
  return getQdCompBusInterfaceIntAttr(name, port, "qd:arraySize");
}

int QDSRepo::getQdCompPortIntAttr(std::string const& name, std::string const& port,
                                  std::string const& attribute) {
  return intQuery("number(" + physicalPortAttribute(name, port, attribute) + ")",
                  "getQdCompPortIntAttr");
}

int QDSRepo::getQdCompPortIntAttrByIndex(std::string const& name, int i,
                                         std::string const& attribute) {
  return intQuery(
      "number(" + component(name) + "/qd:port[" + std::to_string(static_cast<long long>(i) + 1) + "]/@" + attribute + ")",
      "getQdCompPortIntAttrByIndex");
}

std::string QDSRepo::getQdCompPortStringAttrByIndex(std::string const& name, int i,
                                                    std::string const& attribute) {
  return stringQuery(component(name) + "/qd:port[" + std::to_string(static_cast<long long>(i) + 1) + "]/@" + attribute,
                     "getQdCompPortStringAttrByIndex");
}

int QDSRepo::getQdCompBusInterfaceIntAttr(std::string const& name, std::string const& port,
                                          std::string const& attribute) {
  return intQuery("number(" + interfaceAttribute(name, port, attribute) + ")",
                  "getQdCompBusInterfaceIntAttr");
}

std::string QDSRepo::getQdCompBusInterfaceStrAttr(std::string const& name, std::string const& port,
                                                  std::string const& attribute) {
  std::string const resolved = resolveQdCompPortToBusInterface(name, port);
  if (resolved.empty()) return "";
  return stringQuery(interfaceAttribute(name, resolved, attribute), "getQdCompBusInterfaceStrAttr");
}

std::string QDSRepo::getQdCompBusInterfacePortAttr(std::string const& name, std::string const& port,
                                                   std::string const& attribute) {
  return attributeBehindPhysicalPort(*this, name, port, attribute, "getQdCompBusInterfacePortAttr");
}

std::string QDSRepo::getQdCompBusInterfacePortName(std::string const& name,
                                                   std::string const& port) {
  return stringQuery(component(name) + "/qd:busInterface[@qd:port='" + port + "']/@qd:name",
                     "getQdCompBusInterfacePortName");
}

std::string QDSRepo::getQdCompBusInterfacePortType(std::string const& name,
                                                   std::string const& port) {
  std::string const behind = getQdCompBusInterfacePortName(name, port);
  if (behind.empty()) return "";
  return getQdCompBusInterfaceStringAttr(name, behind, "qd:busTypeRef");
}

std::string QDSRepo::getQdCompBusInterfacePortMode(std::string const& name,
                                                   std::string const& port) {
  std::string const behind = getQdCompBusInterfacePortName(name, port);
  if (behind.empty()) return "";
  return getQdCompBusInterfaceStringAttr(name, behind, "qd:mode");
}

std::string QDSRepo::getQdCompBusInterfacePortDir(std::string const& name,
                                                  std::string const& port) {
  std::string const behind = getQdCompBusInterfacePortName(name, port);
  if (behind.empty()) return "";
  return getQdCompBusInterfaceStringAttr(name, behind, "qd:direction");
}

std::string QDSRepo::getQdCompBusInterfaceSptag(std::string const& name, std::string const& port) {
  return stringQuery(interfaceAttribute(name, port, "qd:sptag"), "getQdCompBusInterfaceSptag");
}

std::string QDSRepo::getQdBusTypeRef(std::string const& name, std::string const& port) {
  if (!isQdAdapterComp(name) && !isQdAdapteeComp(name)) return "";
  if (!isQdCompPort(name, port)) return "";
  return stringQuery(interfaceAttribute(name, port, "qd:busTypeRef"), "getQdBusTypeRef");
}

namespace {

std::string ithOfKind(QDSRepo& repo, std::string const& name, std::string const& type,
                      std::string const& mode, int i, std::string const& caller) {
  std::string const kind = component(name) + "/qd:busInterface[@qd:busTypeRef='" + type +
                           "' and @qd:mode='" + mode + "']";
  if (!repo.booleanQuery("boolean(" + kind + ")", caller)) return "";
  return repo.stringQuery(kind + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name", caller);
}

}  // namespace

std::string QDSRepo::getQdCompAxiMasterPortName(std::string const& name, int i) {
  return ithOfKind(*this, name, "aximm", "master", i, "getQdCompAxiMasterPortName");
}
std::string QDSRepo::getQdCompAxiSlavePortName(std::string const& name, int i) {
  return ithOfKind(*this, name, "aximm", "slave", i, "getQdCompAxiSlavePortName");
}
std::string QDSRepo::getQdCompAxisMasterPortName(std::string const& name, int i) {
  return ithOfKind(*this, name, "axis", "master", i, "getQdCompAxisMasterPortName");
}
std::string QDSRepo::getQdCompAxisSlavePortName(std::string const& name, int i) {
  return ithOfKind(*this, name, "axis", "slave", i, "getQdCompAxisSlavePortName");
}

std::string QDSRepo::getQdCompAxisPortInterfaceType(std::string const& name,
                                                    std::string const& port) {
  return stringQuery(firstFunctionArgument(name, port, "qd:portInterfaceType"),
                     "getQdCompAxisPortInterfaceType");
}

std::string QDSRepo::getQdCompPlatformAxisPortSlr(std::string const& name,
                                                  std::string const& port) {
  if (!isQdCompPlatformAxisPort(name, port)) return "";
  return stringQuery(interfaceAttribute(name, port, "qd:slr"), "getQdCompPlatformAxisPortSlr");
}

std::string QDSRepo::getQdPortClockRef(std::string const& name, std::string const& port) {
  return stringQuery(interfaceAttribute(name, port, "qd:clockRef"), "getQdPortClockRef");
}

std::string QDSRepo::getQdPortResetRef(std::string const& name, std::string const& port) {
  return stringQuery(interfaceAttribute(name, port, "qd:resetRef"), "getQdPortResetRef");
}

std::string QDSRepo::getQdCompAxiPortClockPort(std::string const& name, std::string const& port) {
  if (!isQdCompAxiPort(name, port)) return "";
  return stringQuery(interfaceAttribute(name, port, "qd:clockRef"), "getQdCompAxiPortClockPort");
}

std::string QDSRepo::getQdCompAxiPortResetPort(std::string const& name, std::string const& port) {
  if (!isQdCompAxiPort(name, port)) return "";
  return stringQuery(interfaceAttribute(name, port, "qd:resetRef"), "getQdCompAxiPortResetPort");
}

std::vector<std::string> QDSRepo::getAxiResetRefsForAxiClockRef(std::string const& name,
                                                                std::string const& clock) {
  std::vector<std::string> const all =
      stringListQuery(axiInterfaces(name, "@qd:clockRef='" + clock + "'") + "/@qd:resetRef",
                      "getAxiResetRefsForAxiClockRef");
  // Many interfaces share one reset; each is named once.
  std::vector<std::string> unique;
  for (std::string const& reset : all) {
    if (std::find(unique.begin(), unique.end(), reset) == unique.end()) unique.push_back(reset);
  }
  return unique;
}

std::string QDSRepo::getAxiClockRefForAxiReset(std::string const& name, std::string const& reset) {
  return stringQuery(
      axiInterfaces(name, "@qd:resetRef='" + reset + "' and @qd:clockRef") + "[1]/@qd:clockRef",
      "getAxiClockRefForAxiReset");
}

std::string QDSRepo::getAxiResetRefForAxiClock(std::string const& name, std::string const& clock) {
  return stringQuery(
      axiInterfaces(name, "@qd:clockRef='" + clock + "' and @qd:resetRef") + "[1]/@qd:resetRef",
      "getAxiResetRefForAxiClock");
}

std::string QDSRepo::getIthCompClkSlavePortForInst(std::string const& name,
                                                   std::string const& instance, int i) {
  return stringQuery(component(name) +
                         "/qd:busInterface[@qd:busTypeRef='clock' and @qd:mode='slave' and "
                         "@qd:instanceRef='" +
                         instance + "'][" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name",
                     "getIthCompClkSlavePortForInst");
}

std::string QDSRepo::getQdAdapterPort(std::string const& name, std::string const& port) {
  if (!isQdAdapteeComp(name)) return "";
  std::string const adapter =
      "/qd:repository/qd:component[@qd:name='" + getQdAdapterCompRef(name) + "']";
  // A register of the adaptee sits behind the adapter's control interface; a stream keeps its
  // name as the adapter's qd:hlsname.
  for (std::string const& interface : {adapter + "/qd:busInterface[qd:reg/@qd:name='" + port + "']",
                                       adapter + "/qd:busInterface[@qd:hlsname='" + port + "']"}) {
    if (booleanQuery("boolean(" + interface + ")", "getQdAdapterPort")) {
      return stringQuery(interface + "/@qd:name", "getQdAdapterPort");
    }
  }
  Log(logERROR, 1014) << "NULL qd_adapter query result for port '" << port << "' on qd:comp '"
                      << name;
  return "";
}

std::string QDSRepo::resolveQdCompPortToBusInterface(std::string const& name,
                                                     std::string const& port) {
  if (!isQdComp(name)) return "";
  if (isQdCompBusInterfacePort(name, port)) return getQdCompBusInterfacePortName(name, port);
  if (isQdCompBusInterface(name, port)) return port;
  return "";
}

namespace {

// A stream wider than 2048 bits, or not of whole bytes, needs a data mover in between.
bool directSideFits(port_t type, int width) {
  if (type == PORT_AXIS && (width > 2048 || width % 8 != 0)) return false;
  return type == PORT_AXIS || type == PORT_BRAM || type == PORT_FIFO;
}

}  // namespace

bool QDSRepo::directQdPortConnectionPossible(std::string const& componentA,
                                             std::string const& portA,
                                             std::string const& componentB,
                                             std::string const& portB) {
  if (!isQdCompPort(componentA, portA) || !isQdCompPort(componentB, portB)) return false;
  port_t const typeA = str2port_t(getQdCompPortType(componentA, portA));
  port_t const typeB = str2port_t(getQdCompPortType(componentB, portB));
  int const widthA = getQdCompPortDataWidth(componentA, portA);
  int const widthB = getQdCompPortDataWidth(componentB, portB);
  return directSideFits(typeA, widthA) && directSideFits(typeB, widthB);
}

bool QDSRepo::hasDataMoverForPlatformConn(std::string const&, std::string const&,
                                          std::string const&, std::string const&) {
  // Every platform connection can be served by some data mover.
  return true;
}

int QDSRepo::getDatamoverMaxNumChannels(datamover_t datamover, channel_t channel) {
  // -1 stands for no limit (zero copy shares the buffer and needs no channel).
  static std::map<datamover_t, std::map<channel_t, int>> const kMaxChannels = {
      {DATAMOVER_AXI_LITE, {{CHANNEL_MM2MM, 64}}},
      {DATAMOVER_AXI_DMA_SG, {{CHANNEL_MM2S, 16}, {CHANNEL_S2MM, 1}}},
      {DATAMOVER_AXI_DMA_SIMPLE, {{CHANNEL_MM2S, 1}, {CHANNEL_S2MM, 1}}},
      {DATAMOVER_AXI_DMA_2D, {{CHANNEL_MM2S, 1}, {CHANNEL_S2MM, 1}}},
      {DATAMOVER_AXI_FIFO, {{CHANNEL_MM2S, 1}, {CHANNEL_S2MM, 1}}},
      {DATAMOVER_ZERO_COPY, {{CHANNEL_MM2MM, -1}}},
      {DATAMOVER_FAST_DMA, {{CHANNEL_MM2S, 1}, {CHANNEL_S2MM, 1}}},
  };
  auto const mover = kMaxChannels.find(datamover);
  if (mover != kMaxChannels.end()) {
    auto const found = mover->second.find(channel);
    if (found != mover->second.end()) return found->second;
  }
  Log line(logERROR, 1075);
  line << "No max channel information for dm " << datamover_t2str(datamover);
  if (mover != kMaxChannels.end()) line << " channel type " << channel_t2str(channel);
  return 0;
}

int QDSRepo::getNumQdCompAxiPortIds(std::string const& name, std::string const& port) {
  if (!isQdCompAxiPort(name, port)) return 0;
  std::string const instance = getQdCompBusInterfaceInstanceRef(name, port);
  std::string const reference = getQdCompBusInterfaceComponentRef(name, port);
  // Behind an interconnect the ids of all its ports are counted once, at its first port.
  int throughInterconnect = -1;
  if (isInterconnectRef(reference)) {
    throughInterconnect = 0;
    if (booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:name='" + port +
                         "' and not(preceding-sibling::qd:busInterface[@qd:instanceRef='" +
                         instance + "' and @qd:busTypeRef='aximm'])])",
                     "getNumQdCompAxiPortIds")) {
      throughInterconnect =
          intQuery("count(" + component(name) + "/qd:busInterface[@qd:instanceRef='" + instance +
                       "' and @qd:busTypeRef='aximm'])",
                   "getNumQdCompAxiPortIds");
    }
  }
  bool const through = throughInterconnect >= 0;
  if (isQdCompMigPort(name, port)) return through ? throughInterconnect : 16;
  if (isQdCompAcpPort(name, port) || isQdCompHpcPort(name, port)) {
    return through ? throughInterconnect : 8;
  }
  if (isQdCompHpPort(name, port)) return through ? throughInterconnect : 16;
  if (isQdCompGpPort(name, port)) return through ? throughInterconnect : 64;
  if (booleanQuery("boolean(" + interfaceNamed(name, port) + "/@qd:memport)",
                   "getNumQdCompAxiPortIds")) {
    return getMemObjectMaxMasters(port, name);
  }
  Log(logERROR, 1015) << "Unknown memory port " << port << ".";
  return -1;
}

namespace {

// The interfaces of the port's interconnect instance with the port's bus type, and with its mode
// unless `mode` says otherwise; empty when the port is not on an interconnect.
std::string interconnectSiblings(QDSRepo& repo, std::string const& name, std::string const& port,
                                 std::string const& mode) {
  if (!repo.isQdCompPort(name, port)) return "";
  if (!isInterconnectRef(repo.getQdCompBusInterfaceStringAttr(name, port, "qd:componentRef"))) {
    return "";
  }
  std::string const ownMode = repo.getQdCompBusInterfaceStringAttr(name, port, "qd:mode");
  return "[@qd:mode='" + (mode.empty() ? ownMode : mode) + "' and @qd:busTypeRef='" +
         repo.getQdCompBusInterfaceStringAttr(name, port, "qd:busTypeRef") +
         "' and @qd:instanceRef='" +
         repo.getQdCompBusInterfaceStringAttr(name, port, "qd:instanceRef") + "']";
}

}  // namespace

int QDSRepo::getInterconnectPortIndex(std::string const& name, std::string const& port) {
  std::string const siblings = interconnectSiblings(*this, name, port, "");
  if (siblings.empty()) return -1;
  return intQuery("count(" + interfaceNamed(name, port) + "/preceding-sibling::qd:busInterface" +
                      siblings + ")",
                  "getInterconnectPortIndex");
}

int QDSRepo::getNumMastersForInterconnectPort(std::string const& name, std::string const& port) {
  std::string const siblings = interconnectSiblings(*this, name, port, "master");
  if (siblings.empty()) return -1;
  return intQuery("count(" + component(name) + "/qd:busInterface" + siblings + ")",
                  "getNumMastersForInterconnectPort");
}

int QDSRepo::getNumSlavesForInterconnectPort(std::string const& name, std::string const& port) {
  std::string const siblings = interconnectSiblings(*this, name, port, "slave");
  if (siblings.empty()) return -1;
  return intQuery("count(" + component(name) + "/qd:busInterface" + siblings + ")",
                  "getNumSlavesForInterconnectPort");
}

std::string QDSRepo::getInterconnectPortFollowingSibling(std::string const& name,
                                                         std::string const& port) {
  std::string const siblings = interconnectSiblings(*this, name, port, "");
  if (siblings.empty()) return "";
  return stringQuery(interfaceNamed(name, port) + "/following-sibling::qd:busInterface" + siblings +
                         "[1]/@qd:name",
                     "getAxiInterconnectFollowingSiblingPort");
}

}  // namespace qd
