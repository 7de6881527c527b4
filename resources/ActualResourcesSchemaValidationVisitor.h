// Refuses an actual resources document whose version this library does not read.
#ifndef RESOURCES_ACTUALRESOURCESSCHEMAVALIDATIONVISITOR_H_
#define RESOURCES_ACTUALRESOURCESSCHEMAVALIDATIONVISITOR_H_

#include "resources/ActualResourceTreeVisitor.h"
#include "service/Export.h"

namespace IPA {

class ActualResourcesTree;

// Run over a tree before any visitor that reads it. Holds nothing, so one object can check any
// number of trees, from any thread.
class QV_EXPORT ActualResourcesSchemaValidationVisitor : public ActualResourceTreeVisitor {
 public:
  // Returns when "schema_version" is one ActualResourcesSchema accepts: 1.0.0, or a greater
  // major version with minor 0 and patch 0. Otherwise throws:
  //   - boost::property_tree::ptree_bad_path naming the first missing key, asked in the order
  //     "schema_version.patch", "schema_version.minor", "schema_version.major";
  //   - std::runtime_error "Unsupported actual resources schema. The supported version is:
  //     1.0.0.  The version found is: <major>.<minor>.<patch>." for any other version.
  // Nothing else in the document is checked, and the tree is left untouched.
  void visit(ActualResourcesTree& tree) override;
};

}  // namespace IPA

#endif  // RESOURCES_ACTUALRESOURCESSCHEMAVALIDATIONVISITOR_H_
