// One synthesised module of a high-level synthesis report.
#ifndef PLATFORM_DESIGNXML_MODULE_H_
#define PLATFORM_DESIGNXML_MODULE_H_

#include <string>
#include <vector>

#include "platform/designxml/AreaEstimates.h"

namespace DesignXML {

// A module's name and its area estimates in document order.
struct Module {
  std::string name;
  std::vector<AreaEstimates> areaEstimates;
};

}  // namespace DesignXML

#endif  // PLATFORM_DESIGNXML_MODULE_H_
