// Every input of one flow, checked by the strict readers in the order qvdiag build reads them.
#ifndef CHECKS_FLOWCHECK_H_
#define CHECKS_FLOWCHECK_H_

#include <string>
#include <vector>

#include "checks/CheckReport.h"

namespace qvcheck {

// The inputs of qvdiag build (tools/qvdiag/FlowBuild.h), plus the two files a flow may meet
// beside them: a stored diagram and a hardware repository.
class FlowCheck {
 public:
  struct Inputs {
    std::string rtdFile;                    // empty: not checked
    std::string platform;                   // a name on the search path or a path; empty: none
    std::vector<std::string> platformPath;  // searched in order, as --platform-path
    std::string kernelsFile;                // empty: kernels.txt beside the rtd file
    std::string afterImplRtdFile;
    std::vector<std::string> utilizationFiles;
    std::string diagramFile;
    std::string repositoryFile;
  };

  // Checks each input that is given, in this order: the rtd file, the platform, the kernels
  // file and each kernel's files, the rtd file after implementation, the resource reports, the
  // stored diagram, the repository. Never throws for a bad input: everything is a finding.
  static void run(Inputs const& inputs, CheckReport& report);
};

}  // namespace qvcheck

#endif  // CHECKS_FLOWCHECK_H_
