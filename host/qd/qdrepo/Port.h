// A port of a repository component.
#ifndef HOST_QD_QDREPO_PORT_H_
#define HOST_QD_QDREPO_PORT_H_

#include <boost/property_tree/ptree.hpp>
#include <string>

#include "service/Export.h"

namespace qd {

// A qd:port element: both attributes are required (ptree_bad_path when absent).
class QV_EXPORT Port {
 public:
  explicit Port(boost::property_tree::ptree const& element);

  std::string name;
  std::string direction;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_PORT_H_
