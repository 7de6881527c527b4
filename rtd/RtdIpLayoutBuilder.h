// Reads the "ip_layout" section of a run-time data file.
#ifndef RTD_RTDIPLAYOUTBUILDER_H_
#define RTD_RTDIPLAYOUTBUILDER_H_

#include <boost/property_tree/ptree.hpp>
#include <memory>

#include "rtd/RtdIpLayout.h"

namespace IPA {

// Refers to the parsed file for the length of one build call; the tree must outlive the builder.
class RtdIpLayoutBuilder {
 public:
  explicit RtdIpLayoutBuilder(boost::property_tree::ptree const& parsed) : tree(parsed) {}

  // Null when "ip_layout.m_count" is zero or does not begin with a decimal number; the list is then
  // not looked at. Otherwise the entries of "ip_layout.m_ip_data", however many the count says.
  // Throws boost::property_tree::ptree_bad_path naming "ip_layout.m_count" when it is missing, and
  // naming "ip_layout.m_ip_data" when the count is not zero and the list is missing.
  std::shared_ptr<RtdIpLayout> build() const;

 private:
  boost::property_tree::ptree const& tree;
};

// What build reads, from any tree that reads like a property tree (a ptree or an
// RtdJsonDocument::Node), with the same rules and failures.
template <class Tree>
std::shared_ptr<RtdIpLayout> readRtdIpLayout(Tree const& tree);

}  // namespace IPA

#endif  // RTD_RTDIPLAYOUTBUILDER_H_
