// The streaming halves of a run-time data file, gathered by the memory index they share.
#ifndef RTD_KERNELCONNECTIONS_H_
#define RTD_KERNELCONNECTIONS_H_

#include <string>
#include <unordered_map>
#include <vector>

#include "rtd/KernelConnection.h"

namespace IPA {

// A streaming link between two compute units appears in the file as two entries that name the
// same streaming memory; neither half can become a connection of the diagram on its own. This
// collects the halves under that memory index until the whole file has been read.
//
// The identifier is the memory index's text as it stood in the file, so "1" and "01" are two
// identifiers even though they name the same memory. A stack object, used for one import.
class KernelConnections {
 public:
  // Appends one record to the list of `connectionId`, making the list if this is the first.
  void addKernelConnection(std::string connectionId, std::string ipLayoutIndex,
                           std::string argIndex, const std::string& argName,
                           const std::string& mode);

  // Every identifier once, in the iteration order of the hash map; empty when nothing was added.
  // No particular order is promised beyond that.
  std::vector<std::string> kernelConnectionIds() const;

  // A copy of the list of `connectionId`, in the order the records were added; empty for an
  // identifier never added.
  std::vector<KernelConnection> kernelConnectionsForConnectionId(
      const std::string& connectionId) const;

 private:
  std::unordered_map<std::string, std::vector<KernelConnection>> connections;
};

}  // namespace IPA

#endif  // RTD_KERNELCONNECTIONS_H_
