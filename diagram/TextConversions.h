// Conversions between numbers and the text in which the diagram keeps them.
#ifndef DIAGRAM_TEXTCONVERSIONS_H_
#define DIAGRAM_TEXTCONVERSIONS_H_

#include <boost/property_tree/ptree.hpp>
#include <cstddef>
#include <istream>
#include <limits>
#include <sstream>
#include <string>
#include <type_traits>
#include <vector>

namespace IPA {

// Decimal text to an unsigned integer, as a default string stream reads it: leading white space
// skipped, reading stops at the first character that cannot continue the number. A failed read
// gives 0: "12ab" gives 12, "0x1f" gives 0, "" gives 0.
template <class T>
T textToInteger(std::string const& text) {
  // The common case, digits alone and too few to overflow, without a stream: an import reads
  // one such number per connection. Anything else takes the stream's road below.
  if (!text.empty() && text.size() <= static_cast<std::size_t>(std::numeric_limits<T>::digits10)) {
    T value = 0;
    bool digitsOnly = true;
    for (char const c : text) {
      if (c < '0' || c > '9') {
        digitsOnly = false;
        break;
      }
      value = static_cast<T>(value * 10 + static_cast<T>(c - '0'));
    }
    if (digitsOnly) return value;
  }
  std::istringstream in(text);
  T value{};
  in >> value;
  if (in.fail() || in.bad()) return 0;
  return value;
}

// The decimal text of a number.
template <class T>
std::string integerToText(T value) {
  // std::to_string writes what a default stream writes for every integer type but the
  // characters, which a stream writes as characters.
  if constexpr (std::is_integral_v<T> && !std::is_same_v<T, char> &&
                !std::is_same_v<T, signed char> && !std::is_same_v<T, unsigned char> &&
                !std::is_same_v<T, bool>) {
    return std::to_string(value);
  }
  std::ostringstream out;
  out << value;
  return out.str();
}

// 0.0 gives the empty text, which is how a frequency that is not known shows; anything else is
// fixed notation with two decimals: 300 gives "300.00", 99.999 gives "100.00", 0.001 gives
// "0.00".
std::string doubleToString(double value);

// Splits `text` at every `separator`, keeping empty pieces: ":b:" at ':' gives "", "b" and "";
// "" gives one empty piece.
std::vector<std::string> splitKeepingEmpty(std::string const& text, char separator);

// The deepest nesting of arrays and objects that the JSON readers of this library accept. Boost's
// JSON parser, and the property tree it builds, recurse once per level on the thread's stack, so
// a file of a few hundred kilobytes of "[" would end the server with a stack overflow. The real
// files nest less than ten deep; 100 is also the limit of the protobuf reader of stored diagrams.
constexpr int kMaxJsonNesting = 100;

// Reads `in` to its end as JSON into `tree`, as boost::property_tree::read_json does. Throws
// boost::property_tree::json_parser_error on bad JSON, and also, before anything is parsed, for
// a text that nests arrays and objects more than kMaxJsonNesting deep ("nesting deeper than 100
// levels", with the line where it goes deeper). Brackets inside strings do not count.
void readJsonTree(std::istream& in, boost::property_tree::ptree& tree);

// The rest of `in` as the text of one JSON document, with readJsonTree's check of its nesting
// (the same json_parser_error) but without parsing it: for readers that parse it themselves.
std::string readJsonText(std::istream& in);

// JSON text to a property tree through readJsonTree; throws
// boost::property_tree::json_parser_error on bad JSON.
boost::property_tree::ptree makePropertyTree(std::string const& json);

}  // namespace IPA

#endif  // DIAGRAM_TEXTCONVERSIONS_H_
