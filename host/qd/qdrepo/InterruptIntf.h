// An interrupt interface of a repository component.
#ifndef HOST_QD_QDREPO_INTERRUPTINTF_H_
#define HOST_QD_QDREPO_INTERRUPTINTF_H_

#include "host/qd/qdrepo/BusIntf.h"

namespace qd {

// A qd:busInterface of bus type "interrupt"; nothing beyond BusIntf.
class QV_EXPORT InterruptIntf : public BusIntf {
 public:
  explicit InterruptIntf(boost::property_tree::ptree const& element);
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_INTERRUPTINTF_H_
