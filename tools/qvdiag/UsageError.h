// A command line that cannot be carried out as given.
#ifndef TOOLS_QVDIAG_USAGEERROR_H_
#define TOOLS_QVDIAG_USAGEERROR_H_

#include <stdexcept>

namespace qvdiag {

// Thrown for bad use: an unknown request type, a payload that is not valid JSON for its type,
// a file named on the command line that cannot be read. main turns it into exit code 2; every
// other std::exception means that the work itself failed (exit code 1).
class UsageError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_USAGEERROR_H_
