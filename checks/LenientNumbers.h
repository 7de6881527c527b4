// How the library's lenient readers turn text into numbers, restated for the checks so that a
// check and the import read every value alike.
#ifndef CHECKS_LENIENTNUMBERS_H_
#define CHECKS_LENIENTNUMBERS_H_

#include <cstdint>
#include <istream>
#include <sstream>
#include <string>

namespace qvcheck {

class LenientNumbers {
 public:
  // A section's m_count as the rtd reader reads it (diagram/TextConversions.h, textToInteger):
  // a default string stream, leading white space skipped, reading stopping at the first
  // character that cannot continue the number; 0 when nothing reads.
  static std::uint32_t count(std::string const& text) {
    std::istringstream in(text);
    std::uint32_t value{};
    in >> value;
    if (in.fail() || in.bad()) return 0;
    return value;
  }

  // True when `text` is nothing but decimal digits, as a count or an index is written.
  static bool isDecimal(std::string const& text) {
    if (text.empty()) return false;
    for (char c : text) {
      if (c < '0' || c > '9') return false;
    }
    return true;
  }

  // True when the property tree's get<T>(path, default) takes `text` as a T instead of the
  // default: the whole text must read, white space behind it aside.
  template <class T>
  static bool reads(std::string const& text, T* value = nullptr) {
    std::istringstream in(text);
    T read{};
    in >> read;
    if (!in.eof()) in >> std::ws;
    if (in.fail() || in.bad() || in.get() != std::char_traits<char>::eof()) return false;
    if (value != nullptr) *value = read;
    return true;
  }
};

// The property tree reads a bool first as a number, 0 or 1, then, on the same stream, as the
// words true and false.
template <>
inline bool LenientNumbers::reads<bool>(std::string const& text, bool* value) {
  std::istringstream in(text);
  bool read = false;
  in >> read;
  if (in.fail()) {
    in.clear();
    in.setf(std::ios_base::boolalpha);
    in >> read;
  }
  if (!in.eof()) in >> std::ws;
  if (in.fail() || in.bad() || in.get() != std::char_traits<char>::eof()) return false;
  if (value != nullptr) *value = read;
  return true;
}

}  // namespace qvcheck

#endif  // CHECKS_LENIENTNUMBERS_H_
