#include "host/qd/qdrepo/Port.h"

#include "host/qd/qdrepo/BusIntf.h"

namespace qd {

Port::Port(boost::property_tree::ptree const& element)
    : name(requiredAttribute(element, "qd:name")),
      direction(requiredAttribute(element, "qd:direction")) {}

}  // namespace qd
