#include "diagram/SchemaVersion.h"

#include <utility>

namespace IPA {

SchemaVersion::SchemaVersion(std::string foundMajor, std::string foundMinor, std::string foundPatch,
                             std::string majorSupported, std::string minorSupported,
                             std::string patchSupported)
    : major(std::move(foundMajor)),
      minor(std::move(foundMinor)),
      patch(std::move(foundPatch)),
      supportedMajor(std::move(majorSupported)),
      supportedMinor(std::move(minorSupported)),
      supportedPatch(std::move(patchSupported)) {}

bool SchemaVersion::isSupported(SchemaVersion const& other) const {
  // Text comparison on purpose: a higher major version passes, a "smaller" text does not.
  if (other.major < supportedMajor) return false;
  if (other.minor != supportedMinor) return false;
  return other.patch == supportedPatch;
}

std::string SchemaVersion::supportedVersion() const {
  return supportedMajor + "." + supportedMinor + "." + supportedPatch;
}

}  // namespace IPA
