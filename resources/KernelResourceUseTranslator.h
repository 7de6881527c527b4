// Turns a resource use report message into the shape the kernel use keeps.
#ifndef RESOURCES_KERNELRESOURCEUSETRANSLATOR_H_
#define RESOURCES_KERNELRESOURCEUSETRANSLATOR_H_

#include <string>
#include <unordered_map>

#include "proto/system_diagram_server.pb.h"
#include "resources/ActualResourceCollection.h"

namespace IPA {

class KernelResourceUseTranslator {
 public:
  // Compute unit name to the reports of the message, all under the message's design state.
  // Of the compute unit uses of one KernelResourceUse only the last survives, under its own
  // name: clients send one compute unit use per kernel entry. A kernel entry without compute
  // unit uses gives an empty collection under the empty name.
  static std::unordered_map<std::string, ActualResourceCollection> toActualResourceMap(
      dispatch::system_diagram_server::UpsertKernelUse const& message);
};

}  // namespace IPA

#endif  // RESOURCES_KERNELRESOURCEUSETRANSLATOR_H_
