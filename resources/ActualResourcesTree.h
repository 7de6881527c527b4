// An actual resources document as read, before any visitor interprets it.
#ifndef RESOURCES_ACTUALRESOURCESTREE_H_
#define RESOURCES_ACTUALRESOURCESTREE_H_

#include <boost/property_tree/ptree.hpp>
#include <istream>

#include "service/Export.h"

namespace IPA {

// The document, as the tool chain writes it after or during an implementation run:
//
//   {"schema_version": {"major": "1", "minor": "0", "patch": "0"},
//    "design_state": "Routed",
//    "kernels": [{"name": "vadd",
//                 "compute_units": [{"cu_name": "vadd_1",
//                                    "actual_resources": {"LUT": "1200", "REG": "2100",
//                                                         "BRAM": "2", "URAM": "0",
//                                                         "DSP": "3"}}]}]}
//
// The readers walk it in file order, so "design_state" must stand before "kernels"; keys they do
// not know are skipped at every level. "design_state" is "Synthesized", "Fully Placed" or
// "Routed" in all known uses.
//
// Held as a tree of strings, and nothing else: every value, a count too, is kept as the text it
// was written as, quoted or not. Keys are kept exactly as written, and entries of a JSON array
// are children with empty keys, in file order.
//
// A caller outside the library opens the document, makes the tree, runs
// ActualResourcesSchemaValidationVisitor over it and then ActualResourcesComputeUnitVisitor.
// Built and walked on one thread; visitors do not change it.
class QV_EXPORT ActualResourcesTree {
 public:
  // Reads `document` as JSON until its end; the stream is used only during this call. Throws
  // boost::property_tree::json_parser_error when the text is not valid JSON, and then no tree
  // comes into being. Nothing beyond the JSON syntax is checked here: not even the version.
  explicit ActualResourcesTree(std::istream& document);

  // The parsed document, owned by this object and valid as long as it lives.
  boost::property_tree::ptree& propertyTree();
  boost::property_tree::ptree const& propertyTree() const;

 private:
  boost::property_tree::ptree tree;
};

}  // namespace IPA

#endif  // RESOURCES_ACTUALRESOURCESTREE_H_
