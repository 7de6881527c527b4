// Turns the gathered streaming halves of a run-time data file into connections of the diagram.
#ifndef RTD_RTDKERNELCONNECTIONVISITOR_H_
#define RTD_RTDKERNELCONNECTIONVISITOR_H_

#include <cstdint>
#include <memory>

#include "diagram/QrxBinUserRegionBuilder.h"
#include "rtd/KernelConnectionVisitor.h"
#include "rtd/KernelConnections.h"

namespace IPA {

// Adds one Connectivity to the user region for every identifier of a KernelConnections. The ids
// continue the numbering of the memory connections made before it: the first identifier gets
// `nextConnectionId`. A stack object used for one import; the shared builder keeps the diagram
// alive while it lives.
class RtdKernelConnectionVisitor : public KernelConnectionVisitor {
 public:
  RtdKernelConnectionVisitor(std::shared_ptr<QrxBinUserRegionBuilder> userRegionBuilder,
                             std::int32_t firstConnectionId);

  // For each identifier, in the order kernelConnectionIds() gives them: one Connectivity whose id
  // is the decimal text of the next number. Only a list of exactly two records fills the two
  // ends, the first record as `source`; a list of one or of more than two leaves the connection
  // with its id alone, and its number is used up all the same.
  //
  // The numbering starts afresh from `nextConnectionId` on every call: the counter is a local
  // copy, so visiting twice gives the same ids twice. The caller keeps the count of identifiers
  // small enough that the last id does not pass the largest std::int32_t.
  void visit(const KernelConnections& connections) const override;

 private:
  std::shared_ptr<QrxBinUserRegionBuilder> userRegion;
  std::int32_t nextConnectionId;
};

}  // namespace IPA

#endif  // RTD_RTDKERNELCONNECTIONVISITOR_H_
