// The version of a run-time data file.
#ifndef DIAGRAM_RTDSCHEMAVERSION_H_
#define DIAGRAM_RTDSCHEMAVERSION_H_

#include <string>

#include "diagram/SchemaVersion.h"

namespace IPA {

// Made by RtdSchemaVersionBuilder from "schema_version.{major,minor,patch}" of the file; this
// library reads version 1.0.0 (and any greater major version with minor 0 and patch 0).
class RtdSchemaVersion : public SchemaVersion {
 public:
  RtdSchemaVersion(std::string major, std::string minor, std::string patch);
  ~RtdSchemaVersion() override;
};

}  // namespace IPA

#endif  // DIAGRAM_RTDSCHEMAVERSION_H_
