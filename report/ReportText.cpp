#include "report/ReportText.h"

#include <algorithm>
#include <cstddef>
#include <iomanip>
#include <sstream>

namespace IPA {

namespace {

// The number of blanks that pad `text` to `width`. Computed in int and only then widened, on
// purpose: a width below the length must fail loudly (std::length_error) rather than be clamped
// to no padding, which would let a misaligned table through unnoticed.
std::size_t paddingCount(std::string const& text, int width) {
  return static_cast<std::size_t>(width - static_cast<int>(text.size()));
}

}  // namespace

std::string leftAlignString(std::string const& text, int width) {
  // append(count, ch) is what raises the length_error with the text "basic_string::_M_replace_aux";
  // building a std::string(count, ' ') first would raise it with another text.
  std::string padded(text);
  padded.append(paddingCount(text, width), ' ');
  return padded;
}

std::string rightAlignString(std::string const& text, int width) {
  // insert(0, count, ch) fails with the same text as append in leftAlignString.
  std::string padded(text);
  padded.insert(0, paddingCount(text, width), ' ');
  return padded;
}

std::string borderString(int count) {
  if (count <= 0) return "";
  return std::string(static_cast<std::size_t>(count), '-');
}

int getMaxSizeString(std::vector<std::string> const& texts) {
  std::size_t longest = 0;
  for (auto const& text : texts) longest = std::max(longest, text.size());
  return static_cast<int>(longest);
}

std::string dividePercentString(std::string const& part, std::string const& whole) {
  // Two statements, so that `part` is converted (and fails) before `whole`.
  float const numerator = std::stof(part);
  float const denominator = std::stof(whole);
  // Division and multiplication each rounded to float, and only the product widened: this is
  // the rounding that the report's percentages have always had.
  float const quotient = numerator / denominator;
  float const percent = quotient * 100.0f;
  std::ostringstream out;
  out << std::fixed << std::setprecision(2) << static_cast<double>(percent);
  return out.str();
}

}  // namespace IPA
