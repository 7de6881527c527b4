#include "diagram/ActualResourcesSchema.h"

#include <utility>

namespace IPA {

ActualResourcesSchema::ActualResourcesSchema(std::string foundMajor, std::string foundMinor,
                                             std::string foundPatch)
    : SchemaVersion(std::move(foundMajor), std::move(foundMinor), std::move(foundPatch), "1", "0",
                    "0") {}

ActualResourcesSchema::~ActualResourcesSchema() = default;

}  // namespace IPA
