#include "host/qd/qdrepo/BusIntf.h"

namespace qd {

std::string const BusIntf::masterStr = "master";
std::string const BusIntf::slaveStr = "slave";

std::string requiredAttribute(boost::property_tree::ptree const& element,
                              std::string const& attribute) {
  return element.get_child("<xmlattr>." + attribute).data();
}

std::string optionalAttribute(boost::property_tree::ptree const& element,
                              std::string const& attribute, std::string const& fallback) {
  auto const child = element.get_child_optional("<xmlattr>." + attribute);
  return child ? child->data() : fallback;
}

BusIntf::BusIntf(boost::property_tree::ptree const& element)
    : name(requiredAttribute(element, "qd:name")),
      busTypeRef(requiredAttribute(element, "qd:busTypeRef")),
      componentRef(optionalAttribute(element, "qd:componentRef")),
      instanceRef(optionalAttribute(element, "qd:instanceRef")),
      busInterfaceRef(optionalAttribute(element, "qd:busInterfaceRef")),
      direction(optionalAttribute(element, "qd:direction")),
      port(optionalAttribute(element, "qd:port")),
      // Any mode but "slave" is a master, an unknown word included.
      isMaster(optionalAttribute(element, "qd:mode", slaveStr) != slaveStr) {}

}  // namespace qd
