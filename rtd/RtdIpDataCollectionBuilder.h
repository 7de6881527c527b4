// Reads the list of IP blocks and compute units of a run-time data file.
#ifndef RTD_RTDIPDATACOLLECTIONBUILDER_H_
#define RTD_RTDIPDATACOLLECTIONBUILDER_H_

#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "rtd/RtdIpData.h"
#include "rtd/RtdIpDataCollection.h"

namespace IPA {

// Refers to the parsed file, which must outlive the builder, and owns the entries it has read.
class RtdIpDataCollectionBuilder {
 public:
  RtdIpDataCollectionBuilder(boost::property_tree::ptree const& parsed, std::string listPath)
      : tree(parsed), path(std::move(listPath)) {}

  // One entry for each child of the list at the path, in the order of the file, whatever its key
  // (so a JSON array and an object read alike). Members named by a key of RtdIpData set that field,
  // a repeated one keeping its last value; other members are skipped, missing ones leave the
  // field empty, and a child that is a bare value gives an entry with every field empty. Throws
  // boost::property_tree::ptree_bad_path naming the path when the list is missing. Reads the list
  // afresh on each call.
  std::shared_ptr<RtdIpDataCollection> build();

 private:
  boost::property_tree::ptree const& tree;
  std::string const path;
};

// What build reads, from any tree that reads like a property tree (a ptree or an
// RtdJsonDocument::Node), with the same rules and failures; `tree` need only live for the call.
template <class Tree>
std::vector<RtdIpData> readRtdIpData(Tree const& tree, std::string const& listPath);

}  // namespace IPA

#endif  // RTD_RTDIPDATACOLLECTIONBUILDER_H_
