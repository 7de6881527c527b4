// A run-time data file as read, before anything interprets it.
#ifndef RTD_RTDTREE_H_
#define RTD_RTDTREE_H_

#include <memory>

#include "diagram/RtdSchemaVersion.h"
#include "rtd/RtdConnectivity.h"
#include "rtd/RtdIpLayout.h"
#include "rtd/RtdMemTopology.h"

namespace IPA {

// Made by RtdTreeBuilder::build and walked by an RtdTreeVisitor. Built and used by one request on
// one thread; the shared pointers make ownership easy, they are not there for sharing between
// threads. Nobody changes a tree once it is built.
//
// In a tree made from a file, schemaVersion is never null. Each of the other three is null when
// its section's "m_count" is zero or does not begin with a decimal number: every visitor must
// allow for that.
struct RtdTree {
  std::shared_ptr<RtdSchemaVersion> schemaVersion;
  std::shared_ptr<RtdMemTopology> memTopology;
  std::shared_ptr<RtdIpLayout> ipLayout;
  std::shared_ptr<RtdConnectivity> connectivity;
};

}  // namespace IPA

#endif  // RTD_RTDTREE_H_
