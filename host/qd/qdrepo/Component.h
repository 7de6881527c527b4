// The cached form of one qd:component of a repository file.
#ifndef HOST_QD_QDREPO_COMPONENT_H_
#define HOST_QD_QDREPO_COMPONENT_H_

#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "host/qd/qdrepo/AxiBusIntf.h"
#include "host/qd/qdrepo/BusIntf.h"
#include "host/qd/qdrepo/ClockIntf.h"
#include "host/qd/qdrepo/InterruptIntf.h"
#include "host/qd/qdrepo/Port.h"
#include "host/qd/qdrepo/ResetIntf.h"

namespace qd {

// A component read with the property tree parser, so that the repository can answer the
// cached side of its doubly evaluated queries without XPath. Made only by QDSRepo's
// constructor; never changed afterwards.
//
// Maps take the first interface of a name; the lists keep every one in file order.
// busInterfaceList is indexed like the qd:busInterface elements among their siblings; where
// interfaces of several kinds share a name, the last written stays there: AXI, then clock,
// reset, interrupt, then plain bus interfaces.
class QV_EXPORT Component {
 public:
  template <class T>
  using ByName = std::unordered_map<std::string, std::shared_ptr<T>>;
  template <class T>
  using List = std::vector<std::shared_ptr<T>>;

  // Builds the component from its element. A bad clock, interrupt, reset or AXI entry is logged
  // (Log INTERNAL 9999, "Failed to parse data base ... entry <component>/<interface>") and the
  // walk goes on; at the end such a component throws std::runtime_error "Failed to parse data
  // file for <component>". Anything else that is missing or unreadable (qd:name, a port, a
  // platform's clocks) throws at once, as the property tree or std::stol threw it.
  explicit Component(boost::property_tree::ptree const& element);

  std::string const& Name() const { return name; }
  std::string const& Type() const { return type; }

  std::string name;
  std::string type;
  ByName<ClockIntf> clocks;
  ByName<ResetIntf> resets;
  ByName<InterruptIntf> interrupts;
  ByName<AxiBusIntf> axiInterfaces;
  ByName<BusIntf> busInterfaces;  // every bus interface of whatever kind
  ByName<Port> ports;
  List<ClockIntf> clockList;
  List<ResetIntf> resetList;
  List<InterruptIntf> interruptList;
  List<AxiBusIntf> axiList;
  List<BusIntf> busInterfaceList;
  List<Port> portList;
  // Clock interfaces of a platform that name one of its system clocks.
  List<ClockIntf> systemClocks;
  // A platform's qd:defaultClock; 0 on other components.
  int defaultClock = 0;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_COMPONENT_H_
