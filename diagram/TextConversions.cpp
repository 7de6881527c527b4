#include "diagram/TextConversions.h"

#include <boost/property_tree/json_parser.hpp>
#include <iomanip>
#include <iterator>
#include <string>

#include "diagram/JsonNestingCheck.h"

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

// Refuses `text` if its arrays and objects nest deeper than kMaxJsonNesting.
void checkNesting(std::string const& text) {
  JsonNestingCheck check;
  check.scan(text.data(), text.data() + text.size());
}

// The rest of `in` as one text. A stream that knows its length (a file, a string) is read in
// one piece into a text of that size; growing the text while reading would copy a large file
// several times over.
std::string readRest(std::istream& in) {
  std::streambuf* const buffer = in.rdbuf();
  std::string text;
  if (buffer == nullptr) return text;
  std::streamoff const here = buffer->pubseekoff(0, std::ios::cur, std::ios::in);
  std::streamoff const end =
      here < 0 ? -1 : static_cast<std::streamoff>(buffer->pubseekoff(0, std::ios::end, std::ios::in));
  if (here >= 0 && end >= here &&
      buffer->pubseekoff(here, std::ios::beg, std::ios::in) == here) {
    text.resize(static_cast<std::size_t>(end - here));
    text.resize(static_cast<std::size_t>(buffer->sgetn(&text[0], end - here)));
  }
  // Whatever the length did not cover (or all of it, for a stream that cannot seek).
  text.append(std::istreambuf_iterator<char>(buffer), std::istreambuf_iterator<char>());
  return text;
}

// What read_json does with a stream, on the text itself: the same parser, the same callbacks
// that build the tree, and the same unnamed file in its errors.
void parseJsonText(std::string const& text, boost::property_tree::ptree& tree) {
  namespace detail = boost::property_tree::json_parser::detail;
  detail::standard_callbacks<boost::property_tree::ptree> callbacks;
  detail::encoding<char> encoding;
  detail::read_json_internal(text.begin(), text.end(), encoding, callbacks, std::string());
  tree.swap(callbacks.output());
}

}  // namespace

std::string readJsonText(std::istream& in) {
  std::string text = readRest(in);
  checkNesting(text);
  return text;
}

void readJsonTree(std::istream& in, boost::property_tree::ptree& tree) {
  parseJsonText(readJsonText(in), tree);
}

boost::property_tree::ptree makePropertyTree(std::string const& json) {
  // The text is already whole: no stream, no copy of it.
  checkNesting(json);
  boost::property_tree::ptree tree;
  parseJsonText(json, tree);
  return tree;
}

}  // namespace IPA
