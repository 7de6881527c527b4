// One bus interface of a repository component, as cached from the file.
#ifndef HOST_QD_QDREPO_BUSINTF_H_
#define HOST_QD_QDREPO_BUSINTF_H_

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "service/Export.h"

namespace qd {

// A qd:busInterface element, for every bus type that has no class of its own, and the base of
// ClockIntf, ResetIntf, InterruptIntf and AxiBusIntf. Made only while a Component is built;
// never changed afterwards. No virtual operations.
class QV_EXPORT BusIntf {
 public:
  static std::string const masterStr;  // "master"
  static std::string const slaveStr;   // "slave"

  // Reads the element's attributes. qd:name and qd:busTypeRef are required: their absence
  // throws boost::property_tree::ptree_bad_path. The others default to "". A qd:mode other
  // than "slave" makes a master, an absent one a slave.
  explicit BusIntf(boost::property_tree::ptree const& element);

  std::string name;
  std::string busTypeRef;
  std::string componentRef;
  std::string instanceRef;
  std::string busInterfaceRef;
  std::string direction;
  std::string port;
  bool isMaster = false;
};

// The text of the attribute `attribute` ("qd:name") of `element`; throws
// boost::property_tree::ptree_bad_path when it is absent.
std::string requiredAttribute(boost::property_tree::ptree const& element,
                              std::string const& attribute);
// The same, or `fallback` when it is absent.
std::string optionalAttribute(boost::property_tree::ptree const& element,
                              std::string const& attribute, std::string const& fallback = "");

}  // namespace qd

#endif  // HOST_QD_QDREPO_BUSINTF_H_
