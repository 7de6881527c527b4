// A clock interface of a repository component.
#ifndef HOST_QD_QDREPO_CLOCKINTF_H_
#define HOST_QD_QDREPO_CLOCKINTF_H_

#include <memory>
#include <vector>

#include "host/qd/qdrepo/BusIntf.h"

namespace qd {

class ResetIntf;
class AxiBusIntf;

// A qd:busInterface of bus type "clock". On a platform component, one that names a platform
// clock carries that clock's id, status and frequency (SetSystemClkInfo).
class QV_EXPORT ClockIntf : public BusIntf {
 public:
  explicit ClockIntf(boost::property_tree::ptree const& element);

  void SetSystemClkInfo(int id, bool fixed, bool fixedRate, long frequency);
  // Hooks for associating resets and AXI interfaces with their clock. They keep nothing:
  // nothing reads the two lists below, which stay empty.
  void AddAssociation(std::shared_ptr<ResetIntf> reset);
  void AddAssociation(std::shared_ptr<AxiBusIntf> axi);

  std::vector<std::shared_ptr<ResetIntf>> resets;
  std::vector<std::shared_ptr<AxiBusIntf>> axiInterfaces;
  int systemClockId = -1;
  bool isFixed = false;
  bool isFixedRate = false;
  long frequencyHz = 0;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_CLOCKINTF_H_
