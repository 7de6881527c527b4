#include "diagram/TextConversions.h"

#include <boost/property_tree/json_parser.hpp>
#include <iomanip>
#include <iterator>
#include <string>

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

namespace {

// Refuses `text` if its arrays and objects nest deeper than kMaxJsonNesting. Follows the parser
// only as far as it matters: on the part of a text that parses, strings end where the parser
// ends them (an escaped quote does not end one), so the depth counted is the depth the parser
// would reach; past the first error the parser stops anyway.
void checkNesting(std::string const& text) {
  int depth = 0;
  unsigned long line = 1;
  bool inString = false;
  for (std::size_t i = 0; i < text.size(); ++i) {
    char const c = text[i];
    if (c == '\n') ++line;
    if (inString) {
      if (c == '\\') {
        ++i;  // the escaped character, a quote included, does not end the string
      } else if (c == '"') {
        inString = false;
      }
    } else if (c == '"') {
      inString = true;
    } else if (c == '[' || c == '{') {
      if (++depth > kMaxJsonNesting) {
        throw boost::property_tree::json_parser_error(
            "nesting deeper than " + std::to_string(kMaxJsonNesting) + " levels", "", line);
      }
    } else if (c == ']' || c == '}') {
      --depth;
    }
  }
}

}  // namespace

void readJsonTree(std::istream& in, boost::property_tree::ptree& tree) {
  std::string const text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  checkNesting(text);
  std::istringstream parsed(text);
  boost::property_tree::read_json(parsed, tree);
}

boost::property_tree::ptree makePropertyTree(std::string const& json) {
  std::istringstream in(json);
  boost::property_tree::ptree tree;
  readJsonTree(in, tree);
  return tree;
}

}  // namespace IPA
