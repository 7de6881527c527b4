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
