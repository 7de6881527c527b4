#include "resources/ActualResourcesSchemaValidationVisitor.h"

#include <boost/property_tree/ptree.hpp>
#include <stdexcept>
#include <string>

#include "diagram/ActualResourcesSchema.h"
#include "resources/ActualResourcesTree.h"

namespace IPA {

void ActualResourcesSchemaValidationVisitor::visit(ActualResourcesTree& tree) {
  boost::property_tree::ptree const& document = tree.propertyTree();
  // Patch level first: with the whole version missing, it is the key the error names, the same
  // as for the run-time data file.
  std::string const patch = document.get<std::string>("schema_version.patch");
  std::string const minor = document.get<std::string>("schema_version.minor");
  std::string const major = document.get<std::string>("schema_version.major");

  ActualResourcesSchema const schema(major, minor, patch);
  if (schema.isSupported(schema)) return;
  // The two blanks after "is: 1.0.0." are part of the text that readers of the log know.
  throw std::runtime_error("Unsupported actual resources schema. The supported version is: " +
                           schema.supportedVersion() + ".  The version found is: " + major + "." +
                           minor + "." + patch + ".");
}

}  // namespace IPA
