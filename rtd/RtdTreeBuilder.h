// Reads a run-time data file into an RtdTree.
#ifndef RTD_RTDTREEBUILDER_H_
#define RTD_RTDTREEBUILDER_H_

#include <istream>
#include <memory>

#include "diagram/RtdSchemaVersion.h"
#include "rtd/RtdConnectivity.h"
#include "rtd/RtdIpLayout.h"
#include "rtd/RtdMemTopology.h"
#include "rtd/RtdTree.h"

namespace IPA {

// A local object of its caller: open the file, deSerialize the stream, build, then visit the
// tree. Holds the four parts of the tree between the two calls; the parts are shared with every
// tree that build hands out. The format is in docs/formats.md.
class RtdTreeBuilder {
 public:
  RtdTreeBuilder() = default;

  // Reads `in` to its end as JSON and builds the four parts, in this order: "schema_version"
  // (its "patch", then "minor", then "major"), "mem_topology", "ip_layout", "connectivity". The
  // stream is read only during this call. Catches nothing: bad JSON throws
  // boost::property_tree::json_parser::json_parser_error, a missing version member, a missing
  // "m_count" or a missing list behind a count that is not zero throws
  // boost::property_tree::ptree_bad_path naming the path. The version is not checked here. On
  // failure the builder keeps the parts it had before the call.
  void deSerialize(std::istream& in);

  // A new tree holding the four parts; before any deSerialize all four are null. A section whose
  // "m_count" is zero or does not begin with a decimal number is null too.
  std::shared_ptr<RtdTree> build() const;

 private:
  std::shared_ptr<RtdSchemaVersion> schemaVersion;
  std::shared_ptr<RtdMemTopology> memTopology;
  std::shared_ptr<RtdIpLayout> ipLayout;
  std::shared_ptr<RtdConnectivity> connectivity;
};

}  // namespace IPA

#endif  // RTD_RTDTREEBUILDER_H_
