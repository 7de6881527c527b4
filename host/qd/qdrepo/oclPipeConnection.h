// A connection between OpenCL kernels and pipes, as a kernel's qd:fcnMap declares it in a
// repository file.
#ifndef HOST_QD_QDREPO_OCLPIPECONNECTION_H_
#define HOST_QD_QDREPO_OCLPIPECONNECTION_H_

#include <string>

#include "host/qd/qdrepo/QDEnumerations.h"
#include "service/Export.h"

namespace qd {

// The attributes of a `connection` element; a missing attribute keeps its default.
class QV_EXPORT oclPipeConnection {
 public:
  // The word of a `srcType` or `dstType` attribute: "kernel" and "pipe" are the two ends a
  // connection can have; any other word (and "") leaves generic.
  static comp_t endTypeOf(std::string const& word);

  std::string srcInst;
  std::string srcPort;
  std::string dstInst;
  std::string dstPort;
  comp_t srcType = COMP_GENERIC;
  comp_t dstType = COMP_GENERIC;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_OCLPIPECONNECTION_H_
