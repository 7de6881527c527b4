#include "checks/FlowCheck.h"

#include "checks/CrossFileCheck.h"
#include "checks/KernelsCheck.h"
#include "checks/PlatformCheck.h"
#include "checks/RepositoryCheck.h"
#include "checks/RtdCheck.h"
#include "checks/StoredDiagramCheck.h"
#include "checks/UtilizationCheck.h"

namespace qvcheck {

namespace {

// kernels.txt in the directory of the rtd file, as qvdiag build defaults it.
std::string defaultKernelsFile(std::string const& rtdFile) {
  std::string::size_type const slash = rtdFile.rfind('/');
  if (slash == std::string::npos) return "kernels.txt";
  return rtdFile.substr(0, slash + 1) + "kernels.txt";
}

}  // namespace

void FlowCheck::run(Inputs const& inputs, CheckReport& report) {
  if (!inputs.rtdFile.empty()) RtdCheck::checkFile(inputs.rtdFile, report);
  if (!inputs.platform.empty()) {
    PlatformCheck::checkPlatform(inputs.platform, inputs.platformPath, report);
    std::vector<std::string> tried;
    std::string const platformFile =
        PlatformCheck::locate(inputs.platform, inputs.platformPath, tried);
    if (!inputs.rtdFile.empty() && !platformFile.empty()) {
      CrossFileCheck::memorySlrs(inputs.rtdFile, platformFile, report);
    }
  }
  if (!inputs.kernelsFile.empty()) {
    KernelsCheck::checkFile(inputs.kernelsFile, true, report);
  } else if (!inputs.rtdFile.empty()) {
    KernelsCheck::checkFile(defaultKernelsFile(inputs.rtdFile), false, report);
  }
  if (!inputs.afterImplRtdFile.empty()) {
    RtdCheck::checkFile(inputs.afterImplRtdFile, report, RtdCheck::Use::kUpdate);
  }
  for (std::string const& file : inputs.utilizationFiles) {
    UtilizationCheck::checkFile(file, report);
    if (!inputs.rtdFile.empty()) CrossFileCheck::reportedComputeUnits(inputs.rtdFile, file, report);
  }
  if (!inputs.diagramFile.empty()) StoredDiagramCheck::checkFile(inputs.diagramFile, report);
  if (!inputs.repositoryFile.empty()) RepositoryCheck::checkFile(inputs.repositoryFile, report);
}

}  // namespace qvcheck
