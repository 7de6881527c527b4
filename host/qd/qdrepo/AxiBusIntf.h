// An AXI interface of a repository component.
#ifndef HOST_QD_QDREPO_AXIBUSINTF_H_
#define HOST_QD_QDREPO_AXIBUSINTF_H_

#include <memory>
#include <string>

#include "host/qd/qdrepo/BusIntf.h"

namespace qd {

class ClockIntf;

// A qd:busInterface of bus type "aximm" or "axis", with the clock interface that its
// qd:clockRef names (empty when there is none of that name).
class QV_EXPORT AxiBusIntf : public BusIntf {
 public:
  // qd:dataWidth reads as 0 when absent or not wholly a decimal integer.
  AxiBusIntf(boost::property_tree::ptree const& element, std::shared_ptr<ClockIntf> clockOfBus);

  std::shared_ptr<ClockIntf> clock;
  int dataWidth = 0;
  std::string memport;
  std::string slr;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_AXIBUSINTF_H_
