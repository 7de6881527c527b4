// The text fields of a run-time data entry, matched against the keys of its members.
#ifndef RTD_RTDTEXTFIELD_H_
#define RTD_RTDTEXTFIELD_H_

#include <cstddef>
#include <string>
#include <string_view>

namespace IPA {

// One text field of `Entry` beside the key it is read from. Both point to members of `Entry`, so
// a table of these is constant-initialized and needs no key to be built before it.
template <class Entry>
struct RtdTextField {
  std::string const* key;
  std::string Entry::*field;
};

// Assigns `text` to the field of the first row of `fields` whose key equals `key`, overwriting
// what was there, and returns true; returns false and leaves `entry` as it was when no key
// matches. Keys are compared exactly, case included.
template <class Entry, std::size_t N>
bool assignRtdTextField(Entry& entry, RtdTextField<Entry> const (&fields)[N],
                        std::string_view key, std::string_view text) {
  for (auto const& row : fields) {
    if (*row.key != key) continue;
    entry.*row.field = text;
    return true;
  }
  return false;
}

}  // namespace IPA

#endif  // RTD_RTDTEXTFIELD_H_
