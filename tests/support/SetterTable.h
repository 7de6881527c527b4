// Tables of a diagram builder's text setters, and the checks that each setter writes its own
// field and no other.
#ifndef TESTS_SUPPORT_SETTERTABLE_H_
#define TESTS_SUPPORT_SETTERTABLE_H_

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace qvtest {

// One text setter of `Builder` beside the getter of the field that it must write in `Message`.
// Every row of a table carries a different value, so that a setter wired to a neighbour's field
// leaves a value where the table expects another one.
template <class Builder, class Message>
struct TextSetterRow {
  char const* desc;
  void (Builder::*set)(std::string const&);
  std::string const& (Message::*get)() const;
  char const* value;
};

template <class Builder, class Message>
using TextSetterTable = std::vector<TextSetterRow<Builder, Message>>;

// Succeeds when the field of rows[written] holds that row's value and the fields of all other rows
// are still empty.
template <class Builder, class Message>
::testing::AssertionResult holdsOnlyField(Message const& message,
                                          TextSetterTable<Builder, Message> const& rows,
                                          std::size_t written) {
  bool ok = true;
  std::string report;
  for (std::size_t i = 0; i < rows.size(); ++i) {
    std::string const expected = i == written ? rows[i].value : "";
    std::string const actual = (message.*rows[i].get)();
    if (actual == expected) continue;
    ok = false;
    report += "\n  field of \"" + std::string(rows[i].desc) + "\" holds \"" + actual +
              "\", expected \"" + expected + "\"";
  }
  if (ok) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "after \"" << rows[written].desc << "\":" << report;
}

// Succeeds when the field of every row holds that row's value.
template <class Builder, class Message>
::testing::AssertionResult holdsEveryField(Message const& message,
                                           TextSetterTable<Builder, Message> const& rows) {
  bool ok = true;
  std::string report;
  for (auto const& row : rows) {
    std::string const actual = (message.*row.get)();
    if (actual == row.value) continue;
    ok = false;
    report += "\n  field of \"" + std::string(row.desc) + "\" holds \"" + actual +
              "\", expected \"" + row.value + "\"";
  }
  if (ok) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << report;
}

}  // namespace qvtest

#endif  // TESTS_SUPPORT_SETTERTABLE_H_
