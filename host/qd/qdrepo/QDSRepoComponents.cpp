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

std::string QDSRepo::getQdCompBusInterfaceInstanceRef(std::string const& component,
                                                      std::string const& port) {
  std::string const answer =
      stringQuery("/qd:repository/qd:component[@qd:name='" + component +
                      "'][1]/qd:busInterface[@qd:name='" + port + "']/@qd:instanceRef",
                  "getQdCompBusInterfaceInstanceRef");
  auto const cached = components.find(component);
  if (cached != components.end() && !port.empty()) {
    auto const interface = cached->second->busInterfaces.find(port);
    std::string const value =
        interface == cached->second->busInterfaces.end() ? "" : interface->second->instanceRef;
    QDREPO_VERIFY("getQdCompBusInterfaceInstanceRef", answer, value, component + "/" + port);
  }
  return answer;
}

}  // namespace qd
