#include "diagram/JsonNestingCheck.h"

#include <boost/property_tree/json_parser.hpp>
#include <string>

#include "diagram/TextConversions.h"

namespace IPA {

void JsonNestingCheck::scan(char const* first, char const* last) {
  char const* p = first;
  if (escaped && p != last) {
    escaped = false;
    ++p;
  }
  for (; p != last; ++p) {
    char const c = *p;
    if (c == '\n') ++line;
    if (inString) {
      if (c == '\\') {
        // The escaped character, a quote included, does not end the string; it may be the first
        // of the next piece.
        if (++p == last) {
          escaped = true;
          return;
        }
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

}  // namespace IPA
