#include "rtd/RtdSchemaVersionBuilder.h"

#include <string>

#include "rtd/RtdJsonDocument.h"

namespace IPA {

template <class Tree>
std::shared_ptr<RtdSchemaVersion> readRtdSchemaVersion(Tree const& tree) {
  std::string const patch(tree.get_child("schema_version.patch").data());
  std::string const minor(tree.get_child("schema_version.minor").data());
  std::string const major(tree.get_child("schema_version.major").data());
  return std::make_shared<RtdSchemaVersion>(major, minor, patch);
}

template std::shared_ptr<RtdSchemaVersion> readRtdSchemaVersion(boost::property_tree::ptree const&);
template std::shared_ptr<RtdSchemaVersion> readRtdSchemaVersion(RtdJsonDocument::Node const&);

std::shared_ptr<RtdSchemaVersion> RtdSchemaVersionBuilder::build() const {
  return readRtdSchemaVersion(tree);
}

}  // namespace IPA
