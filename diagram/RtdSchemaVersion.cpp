#include "diagram/RtdSchemaVersion.h"

#include <utility>

namespace IPA {

RtdSchemaVersion::RtdSchemaVersion(std::string foundMajor, std::string foundMinor,
                                   std::string foundPatch)
    : SchemaVersion(std::move(foundMajor), std::move(foundMinor), std::move(foundPatch), "1", "0",
                    "0") {}

RtdSchemaVersion::~RtdSchemaVersion() = default;

}  // namespace IPA
