#include "resources/ActualResourcesTree.h"

#include "diagram/TextConversions.h"

namespace IPA {

ActualResourcesTree::ActualResourcesTree(std::istream& document) { readJsonTree(document, tree); }

boost::property_tree::ptree& ActualResourcesTree::propertyTree() { return tree; }

boost::property_tree::ptree const& ActualResourcesTree::propertyTree() const { return tree; }

}  // namespace IPA
