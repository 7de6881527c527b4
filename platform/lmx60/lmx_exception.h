// The failure of an access to the report's data binding.
#ifndef PLATFORM_LMX60_LMX_EXCEPTION_H_
#define PLATFORM_LMX60_LMX_EXCEPTION_H_

#include <stdexcept>
#include <string>

namespace lmx60 {

// Thrown by the binding's lists for an index beyond their end. It is a std::exception, so code
// that guards a read of a report value with `catch (std::exception const&)` catches it.
class lmx_exception : public std::out_of_range {
 public:
  explicit lmx_exception(std::string const& what) : std::out_of_range(what) {}
};

}  // namespace lmx60

#endif  // PLATFORM_LMX60_LMX_EXCEPTION_H_
