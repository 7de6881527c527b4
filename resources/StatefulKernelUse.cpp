#include "resources/StatefulKernelUse.h"

#include "diagram/SystemDiagramInterface.h"
#include "resources/KernelResourceUseTranslator.h"

namespace IPA {

void StatefulKernelUse::mergeFrom(
    dispatch::system_diagram_server::UpsertKernelUse const& message) {
  auto const reported = KernelResourceUseTranslator::toActualResourceMap(message);
  std::lock_guard<std::mutex> lock(kernelUseMutex);
  for (auto const& unit : reported) {
    // The entry is made per state, so a unit without reports (a kernel entry without compute
    // unit uses comes back as one, under the empty name) leaves no trace.
    for (auto const& state : unit.second.resources) {
      kernelUse[unit.first].resources[state.first] = state.second;
    }
  }
}

void StatefulKernelUse::mergeTo(SystemDiagramInterface& diagram) {
  std::lock_guard<std::mutex> lock(kernelUseMutex);
  diagram.upsertKernelUtilization(kernelUse);
}

std::unordered_map<std::string, ActualResourceCollection> StatefulKernelUse::snapshot() const {
  std::lock_guard<std::mutex> lock(kernelUseMutex);
  return kernelUse;
}

}  // namespace IPA
