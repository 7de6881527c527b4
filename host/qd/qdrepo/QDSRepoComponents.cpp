// Component and port queries.
#include <sstream>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {

bool isQdCompType(std::string const& component, std::string const& type,
                  boost::shared_ptr<QDXPathDoc> const& doc) {
  std::ostringstream expression;
  expression << "boolean(/qd:repository/qd:component[@qd:name='" << component << "' and @qd:type='"
             << type << "'])";
  return doc->booleanQuery(expression.str(), "isQdCompType");
}

bool QDSRepo::isQdComp(std::string const& component) {
  if (component.empty()) {
    Log(logINTERNAL, 1014) << " NULL component type reference ";
    return false;
  }
  std::ostringstream expression;
  expression << "boolean(/qd:repository/qd:component[@qd:name='" << component << "'])";
  return booleanQuery(expression.str(), "isQdComp");
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
  std::ostringstream expression;
  expression << "/qd:repository/qd:component[@qd:name='" << component << "']/@qd:type";
  return stringQuery(expression.str(), "getQdCompType");
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

}  // namespace

std::string getQdCompBusInterfaceStringAttrByIndex(QDSRepo& repo, std::string const& name, int i,
                                                   std::string const& attribute,
                                                   std::string const& caller) {
  if (!repo.isQdComp(name) || !repo.isValidQdCompPortIndex(name, i)) return "";
  // An adapter may nest its interfaces, so all descendants count there, in document order.
  std::string const expression =
      repo.isQdCompWithAdapter(name)
          ? "(" + component(name) + "//qd:busInterface)[" + std::to_string(i + 1) + "]/@" +
                attribute
          : component(name) + "/qd:busInterface[" + std::to_string(i + 1) + "]/@" + attribute;
  if (!repo.booleanQuery("boolean(" + expression + ")", "isValidQdCompIthPortAttr")) return "";
  return repo.stringQuery(expression, caller);
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
  bool answer = booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:name='" + port +
                                 "' or @qd:port = '" + port + "'])",
                             "isQdCompPort");
  // A packed group answers to the name of its interface on the inner component.
  if (!answer) {
    answer = booleanQuery("boolean(" + component(name) + "/qd:busInterface[@qd:busInterfaceRef='" +
                              port + "' and @qd:dataPack='true'])",
                          "isQdCompPort");
  }
  if (Component const* cached = cachedFor(*this, name, port)) {
    bool inCache = cached->busInterfaces.count(port) != 0;
    for (auto const& object : cached->busInterfaceList) {
      if (object && object->port == port) inCache = true;
    }
    QDREPO_VERIFY("isQdCompPort", answer, inCache, name + "/" + port);
  }
  return answer;
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
  std::string const answer =
      getQdCompBusInterfaceStringAttrByIndex(*this, name, i, "qd:name", "getQdCompPortName");
  auto const cached = components.find(name);
  if (cached != components.end() && !answer.empty()) {
    // An index past the cached list is a broken cache: at() throws std::out_of_range.
    auto const& object = cached->second->busInterfaceList.at(static_cast<std::size_t>(i));
    QDREPO_VERIFY("getQdCompPortName", answer, object ? object->name : std::string(), name);
  }
  return answer;
}

std::string QDSRepo::getQdCompPortType(std::string const& name, int i) {
  std::string const answer =
      getQdCompBusInterfaceStringAttrByIndex(*this, name, i, "qd:busTypeRef", "getQdCompPortType");
  auto const cached = components.find(name);
  if (cached != components.end() && !answer.empty()) {
    auto const& object = cached->second->busInterfaceList.at(static_cast<std::size_t>(i));
    QDREPO_VERIFY("getQdCompPortType", answer, object ? object->busTypeRef : std::string(), name);
  }
  return answer;
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
