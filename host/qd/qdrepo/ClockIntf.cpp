#include "host/qd/qdrepo/ClockIntf.h"

namespace qd {

ClockIntf::ClockIntf(boost::property_tree::ptree const& element) : BusIntf(element) {}

void ClockIntf::SetSystemClkInfo(int id, bool fixed, bool fixedRate, long frequency) {
  systemClockId = id;
  isFixed = fixed;
  isFixedRate = fixedRate;
  frequencyHz = frequency;
}

void ClockIntf::AddAssociation(std::shared_ptr<ResetIntf>) {}

void ClockIntf::AddAssociation(std::shared_ptr<AxiBusIntf>) {}

}  // namespace qd
