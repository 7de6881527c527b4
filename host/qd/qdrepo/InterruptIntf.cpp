#include "host/qd/qdrepo/InterruptIntf.h"

namespace qd {

InterruptIntf::InterruptIntf(boost::property_tree::ptree const& element) : BusIntf(element) {}

}  // namespace qd
