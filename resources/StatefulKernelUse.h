// Everything a session's implementation runs reported, per compute unit and design state.
#ifndef RESOURCES_STATEFULKERNELUSE_H_
#define RESOURCES_STATEFULKERNELUSE_H_

#include <mutex>
#include <string>
#include <unordered_map>

#include "proto/system_diagram_server.pb.h"
#include "resources/ActualResourceCollection.h"

namespace IPA {

class SystemDiagramInterface;

// Lives beside a session's diagram: it survives a replacement of the diagram, is not saved with
// it, and is not carried by a copy of it. It starts empty and only grows.
class StatefulKernelUse {
 public:
  StatefulKernelUse() = default;
  StatefulKernelUse(StatefulKernelUse const&) = delete;
  StatefulKernelUse& operator=(StatefulKernelUse const&) = delete;

  // Keeps each report of `message`, replacing the earlier report of the same compute unit and
  // state; other states and compute units stay. A compute unit without reports is passed over.
  void mergeFrom(dispatch::system_diagram_server::UpsertKernelUse const& message);

  // Hands everything kept so far to diagram.upsertKernelUtilization, under this object's lock:
  // the kernel use is always locked before a diagram.
  void mergeTo(SystemDiagramInterface& diagram);

  // A copy of everything kept so far.
  std::unordered_map<std::string, ActualResourceCollection> snapshot() const;

 private:
  mutable std::mutex kernelUseMutex;  // guards kernelUse
  std::unordered_map<std::string, ActualResourceCollection> kernelUse;
};

}  // namespace IPA

#endif  // RESOURCES_STATEFULKERNELUSE_H_
