#include "rtd/KernelConnections.h"

#include <utility>

namespace IPA {

void KernelConnections::addKernelConnection(std::string connectionId, std::string ipLayoutIndex,
                                            std::string argIndex, const std::string& argName,
                                            const std::string& mode) {
  connections[std::move(connectionId)].push_back(
      KernelConnection{std::move(ipLayoutIndex), std::move(argIndex), argName, mode});
}

std::vector<std::string> KernelConnections::kernelConnectionIds() const {
  std::vector<std::string> ids;
  ids.reserve(connections.size());
  for (auto const& entry : connections) ids.push_back(entry.first);
  return ids;
}

std::vector<KernelConnection> KernelConnections::kernelConnectionsForConnectionId(
    const std::string& connectionId) const {
  auto const found = connections.find(connectionId);
  if (found == connections.end()) return {};
  return found->second;
}

}  // namespace IPA
