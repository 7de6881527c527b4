// The version of an actual resources document.
#ifndef DIAGRAM_ACTUALRESOURCESSCHEMA_H_
#define DIAGRAM_ACTUALRESOURCESSCHEMA_H_

#include <string>

#include "diagram/SchemaVersion.h"

namespace IPA {

// Made from "schema_version.{major,minor,patch}" of the document; this library reads version
// 1.0.0 (and any greater major version with minor 0 and patch 0).
class ActualResourcesSchema : public SchemaVersion {
 public:
  ActualResourcesSchema(std::string major, std::string minor, std::string patch);
  ~ActualResourcesSchema() override;
};

}  // namespace IPA

#endif  // DIAGRAM_ACTUALRESOURCESSCHEMA_H_
