// The one algorithm behind the builders of the three sections of a run-time data file.
#ifndef RTD_RTDSECTIONBUILDER_H_
#define RTD_RTDSECTIONBUILDER_H_

#include <boost/property_tree/ptree.hpp>
#include <cstdint>
#include <memory>
#include <string>

#include "diagram/TextConversions.h"

namespace IPA {

// Builds one section from `tree`, which must outlive the call. `gatePath` names the section's
// "m_count" and `listPath` its list.
//
// A missing `gatePath` throws boost::property_tree::ptree_bad_path naming it, so a file without
// the section is refused though a zero count would pass. A count that reads as 0 with
// textToInteger (zero, empty, not beginning with a decimal digit, too large for 32 bits) gives a
// null pointer without a look at the list, so the list may then be absent. Any other count
// builds the list with a `CollectionBuilder` made from (tree, listPath), whose own failures pass
// through, and wraps it in a new `Section`. The count only opens the gate: it is not compared
// with the number of entries.
//
// readRtdSection is the same for any tree that reads like a property tree (RtdJsonDocument's
// nodes): `readList(tree, listPath)` gives what the Section is made from.
template <class Section, class Tree, class ReadList>
std::shared_ptr<Section> readRtdSection(Tree const& tree, std::string const& gatePath,
                                        std::string const& listPath, ReadList readList) {
  std::string const count(tree.get_child(gatePath).data());
  if (textToInteger<std::uint32_t>(count) == 0) return nullptr;
  return std::make_shared<Section>(readList(tree, listPath));
}

template <class Section, class CollectionBuilder>
std::shared_ptr<Section> buildRtdSection(boost::property_tree::ptree const& tree,
                                         std::string const& gatePath, std::string const& listPath) {
  return readRtdSection<Section>(
      tree, gatePath, listPath,
      [](boost::property_tree::ptree const& parsed, std::string const& path) {
        return CollectionBuilder(parsed, path).build();
      });
}

}  // namespace IPA

#endif  // RTD_RTDSECTIONBUILDER_H_
