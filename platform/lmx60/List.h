// A multi-valued member of the report's data binding.
#ifndef PLATFORM_LMX60_LIST_H_
#define PLATFORM_LMX60_LIST_H_

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/lmx60/lmx_exception.h"

namespace lmx60 {

// The values of one repeated element, in document order. A member that the document does not
// have is an empty list, so reading it fails like reading beyond the end of a short one.
template <class T>
class List {
 public:
  std::size_t size() const { return values.size(); }
  bool empty() const { return values.empty(); }

  // The value at `index`; throws lmx_exception "index <i> is beyond the <n> values of the list"
  // when there is none.
  T const& get(std::size_t index) const {
    if (index >= values.size()) {
      throw lmx_exception("index " + std::to_string(index) + " is beyond the " +
                          std::to_string(values.size()) + " values of the list");
    }
    return values[index];
  }
  T const& operator[](std::size_t index) const { return get(index); }

  void append(T value) { values.push_back(std::move(value)); }

 private:
  std::vector<T> values;
};

}  // namespace lmx60

#endif  // PLATFORM_LMX60_LIST_H_
