#include "resources/ActualResourcesTree.h"

#include <boost/property_tree/json_parser.hpp>

namespace IPA {

ActualResourcesTree::ActualResourcesTree(std::istream& document) {
  boost::property_tree::read_json(document, tree);
}

boost::property_tree::ptree& ActualResourcesTree::propertyTree() { return tree; }

boost::property_tree::ptree const& ActualResourcesTree::propertyTree() const { return tree; }

}  // namespace IPA
