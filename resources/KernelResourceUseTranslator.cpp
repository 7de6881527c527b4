#include "resources/KernelResourceUseTranslator.h"

namespace IPA {

std::unordered_map<std::string, ActualResourceCollection>
KernelResourceUseTranslator::toActualResourceMap(
    dispatch::system_diagram_server::UpsertKernelUse const& message) {
  std::unordered_map<std::string, ActualResourceCollection> result;
  for (auto const& kernelUse : message.kerneluses()) {
    // One scratch collection per kernel entry, not per compute unit use, and one state for the
    // whole message: later compute unit uses of the entry overwrite earlier ones.
    ActualResourceCollection scratch;
    std::string lastName;
    for (auto const& unitUse : kernelUse.computeunituses()) {
      auto const& counts = unitUse.actualresources();
      ActualResource record;
      record.state = message.designstate();
      record.lut = counts.lut();
      record.bram = counts.bram();
      record.reg = counts.reg();
      record.uram = counts.uram();
      record.dsp = counts.dsp();
      scratch.resources[record.state] = record;
      lastName = unitUse.computeunitname();
    }
    result[lastName] = scratch;
  }
  return result;
}

}  // namespace IPA
