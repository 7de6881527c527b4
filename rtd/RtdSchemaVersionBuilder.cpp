#include "rtd/RtdSchemaVersionBuilder.h"

namespace IPA {

std::shared_ptr<RtdSchemaVersion> RtdSchemaVersionBuilder::build() const {
  std::string const patch = tree.get_child("schema_version.patch").data();
  std::string const minor = tree.get_child("schema_version.minor").data();
  std::string const major = tree.get_child("schema_version.major").data();
  return std::make_shared<RtdSchemaVersion>(major, minor, patch);
}

}  // namespace IPA
