// The check of a hardware repository file (a system compiler database, qd_ip_db.xml): whether it
// opens, whether checkDatabase passes, and whether the repository's two readings of the file
// agree on every query that the import asks of it.
#ifndef CHECKS_REPOSITORYCHECK_H_
#define CHECKS_REPOSITORYCHECK_H_

#include <string>

#include "checks/CheckReport.h"

namespace qvcheck {

// Findings with the codes QV-REPO-... of docs/check.md, all errors: the file does not open as a
// repository; checkDatabase fails; the XPath answer and the cached answer of a query disagree
// (the repository then ends the process that asked, a compile server included); the process
// asking the queries ended otherwise.
//
// A disagreement ends the process by design (host/qd/qdrepo/QDSRepo.h, QDREPO_VERIFY), so the
// repository is opened and asked in a child process: the check sees how the child ended and its
// standard error, and goes on.
class RepositoryCheck {
 public:
  static void checkFile(std::string const& path, CheckReport& report);
};

}  // namespace qvcheck

#endif  // CHECKS_REPOSITORYCHECK_H_
