// What QDREPO_VERIFY throws instead of ending the process, in the fuzz build only.
#ifndef HOST_QD_QDREPO_EQUIVALENCYVIOLATION_H_
#define HOST_QD_QDREPO_EQUIVALENCYVIOLATION_H_

#include <stdexcept>

namespace qd {

// The cache and XPath of a repository disagreed on a query. Every build but the fuzz build
// (QV_REPOSITORY_DISAGREEMENT_THROWS) ends the process instead; see QDREPO_VERIFY.
class EquivalencyViolation : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_EQUIVALENCYVIOLATION_H_
