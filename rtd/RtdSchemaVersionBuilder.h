// Reads the version of a run-time data file from its parsed tree.
#ifndef RTD_RTDSCHEMAVERSIONBUILDER_H_
#define RTD_RTDSCHEMAVERSIONBUILDER_H_

#include <boost/property_tree/ptree.hpp>
#include <memory>

#include "diagram/RtdSchemaVersion.h"

namespace IPA {

// Refers to the tree for the length of one build call.
class RtdSchemaVersionBuilder {
 public:
  explicit RtdSchemaVersionBuilder(boost::property_tree::ptree const& parsed) : tree(parsed) {}

  // Reads "schema_version.patch", then ".minor", then ".major" (in that order, so a file missing
  // several reports the patch level first). A missing key throws
  // boost::property_tree::ptree_bad_path. Any text is taken as it is; no check is made here.
  std::shared_ptr<RtdSchemaVersion> build() const;

 private:
  boost::property_tree::ptree const& tree;
};

// What build reads, from any tree that reads like a property tree (a ptree or an
// RtdJsonDocument::Node), in the same order and with the same failures.
template <class Tree>
std::shared_ptr<RtdSchemaVersion> readRtdSchemaVersion(Tree const& tree);

}  // namespace IPA

#endif  // RTD_RTDSCHEMAVERSIONBUILDER_H_
