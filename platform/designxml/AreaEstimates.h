// The area estimate of a module in a high-level synthesis report.
#ifndef PLATFORM_DESIGNXML_AREAESTIMATES_H_
#define PLATFORM_DESIGNXML_AREAESTIMATES_H_

#include <vector>

#include "platform/designxml/Resources.h"

namespace DesignXML {

// An estimate holds resource records in document order.
struct AreaEstimates {
  std::vector<Resources> resources;
};

}  // namespace DesignXML

#endif  // PLATFORM_DESIGNXML_AREAESTIMATES_H_
