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

std::vector<std::string> splitKeepingEmpty(std::string const& text, char separator) {
  std::vector<std::string> pieces;
  std::string::size_type start = 0;
  while (true) {
    auto const found = text.find(separator, start);
    pieces.push_back(text.substr(start, found - start));
    if (found == std::string::npos) return pieces;
    start = found + 1;
  }
}

boost::property_tree::ptree makePropertyTree(std::string const& json) {
  std::istringstream in(json);
  boost::property_tree::ptree tree;
  boost::property_tree::read_json(in, tree);
  return tree;
}

}  // namespace IPA
