// The whole of a high-level synthesis report.
#ifndef PLATFORM_DESIGNXML_PROFILE_H_
#define PLATFORM_DESIGNXML_PROFILE_H_

#include <vector>

#include "platform/designxml/ModuleInformation.h"

namespace DesignXML {

// The report's groups of modules, in document order.
struct Profile {
  std::vector<ModuleInformation> moduleInformation;
};

}  // namespace DesignXML

#endif  // PLATFORM_DESIGNXML_PROFILE_H_
