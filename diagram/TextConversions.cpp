#include "diagram/TextConversions.h"

#include <boost/property_tree/json_parser.hpp>
#include <iomanip>

namespace IPA {

std::string doubleToString(double value) {
  if (value == 0.0) return "";
  std::ostringstream out;
  out << std::fixed << std::setprecision(2) << value;
  return out.str();
}

boost::property_tree::ptree makePropertyTree(std::string const& json) {
  std::istringstream in(json);
  boost::property_tree::ptree tree;
  boost::property_tree::read_json(in, tree);
  return tree;
}

}  // namespace IPA
