// Reads the "connectivity" section of a run-time data file.
#ifndef RTD_RTDCONNECTIVITYBUILDER_H_
#define RTD_RTDCONNECTIVITYBUILDER_H_

#include <boost/property_tree/ptree.hpp>
#include <memory>

#include "rtd/RtdConnectivity.h"

namespace IPA {

// Refers to the parsed file for the length of one build call; the tree must outlive the builder.
class RtdConnectivityBuilder {
 public:
  explicit RtdConnectivityBuilder(boost::property_tree::ptree const& parsed) : tree(parsed) {}

  // Null when "connectivity.m_count" is zero or does not begin with a decimal number; the list is
  // then not looked at. Otherwise the entries of "connectivity.m_connection", however many the
  // count says. Throws boost::property_tree::ptree_bad_path naming "connectivity.m_count" when it
  // is missing, and naming "connectivity.m_connection" when the count is not zero and the list is
  // missing.
  std::shared_ptr<RtdConnectivity> build() const;

 private:
  boost::property_tree::ptree const& tree;
};

// What build reads, from any tree that reads like a property tree (a ptree or an
// RtdJsonDocument::Node), with the same rules and failures.
template <class Tree>
std::shared_ptr<RtdConnectivity> readRtdConnectivity(Tree const& tree);

}  // namespace IPA

#endif  // RTD_RTDCONNECTIVITYBUILDER_H_
