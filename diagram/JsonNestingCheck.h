// The depth check of the library's JSON readers, on a text read in pieces.
#ifndef DIAGRAM_JSONNESTINGCHECK_H_
#define DIAGRAM_JSONNESTINGCHECK_H_

namespace IPA {

// Refuses a text whose arrays and objects nest deeper than kMaxJsonNesting (TextConversions.h),
// with boost::property_tree::json_parser_error("nesting deeper than 100 levels", "", line), line
// being the one where the text goes deeper. The text may come in pieces of any size, cut
// anywhere (inside a string, between a backslash and the character it escapes): the result is
// that of the whole text.
//
// It follows the parser only as far as it matters: on the part of a text that parses, strings end
// where the parser ends them (an escaped quote does not end one), so the depth counted is the
// depth the parser would reach; past the first error the parser stops anyway. The character after
// a backslash in a string is skipped whole, a newline too, as the readers have always counted.
class JsonNestingCheck {
 public:
  // The next piece of the text, [first, last).
  void scan(char const* first, char const* last);

 private:
  int depth = 0;
  unsigned long line = 1;
  bool inString = false;
  // The piece before ended on a backslash inside a string.
  bool escaped = false;
};

}  // namespace IPA

#endif  // DIAGRAM_JSONNESTINGCHECK_H_
