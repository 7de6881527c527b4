#include "resources/ActualResourceCollection.h"

namespace IPA {

std::vector<std::string> ActualResourceCollection::states() const {
  std::vector<std::string> keys;
  keys.reserve(resources.size());
  for (auto const& entry : resources) keys.push_back(entry.first);
  return keys;
}

}  // namespace IPA
