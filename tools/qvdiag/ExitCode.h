// The exit codes of qvdiag; see docs/qvdiag.md.
#ifndef TOOLS_QVDIAG_EXITCODE_H_
#define TOOLS_QVDIAG_EXITCODE_H_

namespace qvdiag {

enum ExitCode : int {
  kExitSuccess = 0,
  kExitFailure = 1,  // the work failed; the reason is on standard error
  kExitUsage = 2,    // the command line was wrong; nothing was done
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_EXITCODE_H_
