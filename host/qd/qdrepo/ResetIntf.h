// A reset interface of a repository component.
#ifndef HOST_QD_QDREPO_RESETINTF_H_
#define HOST_QD_QDREPO_RESETINTF_H_

#include <memory>

#include "host/qd/qdrepo/BusIntf.h"

namespace qd {

class ClockIntf;

// A qd:busInterface of bus type "reset".
class QV_EXPORT ResetIntf : public BusIntf {
 public:
  // `clockOfReset`, the clock interface its qd:clockRef names (possibly empty), is not kept:
  // `clock` stays empty.
  ResetIntf(boost::property_tree::ptree const& element, std::shared_ptr<ClockIntf> clockOfReset);

  std::shared_ptr<ClockIntf> clock;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_RESETINTF_H_
