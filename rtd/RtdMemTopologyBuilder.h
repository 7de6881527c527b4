// Reads the "mem_topology" section of a run-time data file.
#ifndef RTD_RTDMEMTOPOLOGYBUILDER_H_
#define RTD_RTDMEMTOPOLOGYBUILDER_H_

#include <boost/property_tree/ptree.hpp>
#include <memory>

#include "rtd/RtdMemTopology.h"

namespace IPA {

// Refers to the parsed file for the length of one build call; the tree must outlive the builder.
class RtdMemTopologyBuilder {
 public:
  explicit RtdMemTopologyBuilder(boost::property_tree::ptree const& parsed) : tree(parsed) {}

  // Null when "mem_topology.m_count" is zero or does not begin with a decimal number; the list is
  // then not looked at. Otherwise the entries of "mem_topology.m_mem_data", however many the count
  // says. Throws boost::property_tree::ptree_bad_path naming "mem_topology.m_count" when it is
  // missing, and naming "mem_topology.m_mem_data" when the count is not zero and the list is
  // missing.
  std::shared_ptr<RtdMemTopology> build() const;

 private:
  boost::property_tree::ptree const& tree;
};

// What build reads, from any tree that reads like a property tree (a ptree or an
// RtdJsonDocument::Node), with the same rules and failures.
template <class Tree>
std::shared_ptr<RtdMemTopology> readRtdMemTopology(Tree const& tree);

}  // namespace IPA

#endif  // RTD_RTDMEMTOPOLOGYBUILDER_H_
