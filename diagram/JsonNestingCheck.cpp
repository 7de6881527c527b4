#include "diagram/JsonNestingCheck.h"

#include <boost/property_tree/json_parser.hpp>
#include <string>

#include "diagram/TextConversions.h"

namespace IPA {

namespace {

// What a character can mean to the check, outside a string and inside one; most characters of a
// file mean nothing, and are passed over by one look-up each.
enum : unsigned char { kNothing = 0, kNewline, kQuote, kBackslash, kOpen, kClose };

struct Meanings {
  unsigned char outside[256] = {};
  unsigned char inside[256] = {};
  Meanings() {
    outside[static_cast<unsigned char>('\n')] = kNewline;
    outside[static_cast<unsigned char>('"')] = kQuote;
    outside[static_cast<unsigned char>('[')] = kOpen;
    outside[static_cast<unsigned char>('{')] = kOpen;
    outside[static_cast<unsigned char>(']')] = kClose;
    outside[static_cast<unsigned char>('}')] = kClose;
    inside[static_cast<unsigned char>('\n')] = kNewline;
    inside[static_cast<unsigned char>('"')] = kQuote;
    inside[static_cast<unsigned char>('\\')] = kBackslash;
  }
};

}  // namespace

void JsonNestingCheck::scan(char const* first, char const* last) {
  static Meanings const meanings;
  char const* p = first;
  if (escaped && p != last) {
    escaped = false;
    ++p;
  }
  while (p != last) {
    unsigned char const* const table = inString ? meanings.inside : meanings.outside;
    unsigned char meaning = kNothing;
    while (p != last && (meaning = table[static_cast<unsigned char>(*p)]) == kNothing) ++p;
    if (p == last) return;
    ++p;
    switch (meaning) {
      case kNewline:
        ++line;
        break;
      case kQuote:
        inString = !inString;
        break;
      case kBackslash:
        // The escaped character, a quote or a newline included, is passed over: it neither ends
        // the string nor counts as a line. It may be the first of the next piece.
        if (p == last) {
          escaped = true;
          return;
        }
        ++p;
        break;
      case kOpen:
        if (++depth > kMaxJsonNesting) {
          throw boost::property_tree::json_parser_error(
              "nesting deeper than " + std::to_string(kMaxJsonNesting) + " levels", "", line);
        }
        break;
      case kClose:
        --depth;
        break;
      default:
        break;
    }
  }
}

}  // namespace IPA
