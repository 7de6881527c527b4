#include "host/qd/qdrepo/ResetIntf.h"

namespace qd {

ResetIntf::ResetIntf(boost::property_tree::ptree const& element, std::shared_ptr<ClockIntf>)
    : BusIntf(element) {}

}  // namespace qd
