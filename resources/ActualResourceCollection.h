// The reports of one compute unit, at most one per design state.
#ifndef RESOURCES_ACTUALRESOURCECOLLECTION_H_
#define RESOURCES_ACTUALRESOURCECOLLECTION_H_

#include <string>
#include <unordered_map>
#include <vector>

#include "resources/ActualResource.h"
#include "service/Export.h"

namespace IPA {

struct ActualResourceCollection {
  // The keys of `resources` in the map's iteration order, which is not sorted: look each one up
  // again, and never rely on the order. Exported, since diagrams written outside the library
  // receive collections and read them; only this member is, so that the map's template code
  // instantiated for the library's own use stays inside it.
  QV_EXPORT std::vector<std::string> states() const;

  // Design state word to the report of that state.
  std::unordered_map<std::string, ActualResource> resources;
};

}  // namespace IPA

#endif  // RESOURCES_ACTUALRESOURCECOLLECTION_H_
