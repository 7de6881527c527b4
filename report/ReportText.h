// Text layout helpers of the flow report: padding, borders, widths and number formats.
#ifndef REPORT_REPORTTEXT_H_
#define REPORT_REPORTTEXT_H_

#include <string>
#include <vector>

// doubleToString(double), the report's frequency format, lives with the diagram's other number
// conversions and is shared from there: 0.0 gives "", any other value fixed notation with two
// decimals (300 gives "300.00", 99.999 gives "100.00", 0.001 gives "0.00"). The empty text is
// how the report tells that a frequency is not known.
#include "diagram/TextConversions.h"

namespace IPA {

// `text` followed by blanks up to `width` bytes; `text` itself when `width` equals its length.
//
// A `width` below the length is a caller's error and is not clamped: the shortfall, a negative
// int, is widened to an enormous count of blanks, and std::length_error
// "basic_string::_M_replace_aux" is thrown. The report's tables take every width from the longest
// cell of the column, so they never come to this.
std::string leftAlignString(std::string const& text, int width);

// Blanks up to `width` bytes followed by `text`; fails as leftAlignString does for a `width`
// below the length.
std::string rightAlignString(std::string const& text, int width);

// `count` times "-"; empty when `count` is 0 or negative.
std::string borderString(int count);

// The greatest length in bytes among `texts`; 0 for an empty list.
int getMaxSizeString(std::vector<std::string> const& texts);

// `part` over `whole` in percent, in fixed notation with two decimals and without a percent sign
// ("1" over "3" gives "33.33").
//
// Both texts are read as std::stof reads them, `part` first, and the arithmetic is in single
// precision, so the last decimal is that of a float: the percentages must match those of earlier
// reports to the digit. A `whole` of 0 does not fail: it gives "inf" (or "-inf"), and 0 over 0
// gives "nan" or "-nan", as the stream prints the quotient.
//
// Throws std::invalid_argument "stof" when either text is no number (the empty text included),
// std::out_of_range "stof" when it is beyond the range of float.
std::string dividePercentString(std::string const& part, std::string const& whole);

}  // namespace IPA

#endif  // REPORT_REPORTTEXT_H_
