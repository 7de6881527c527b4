// One half of a streaming link between two compute units, as gathered from a run-time data file.
#ifndef RTD_KERNELCONNECTION_H_
#define RTD_KERNELCONNECTION_H_

#include <string>

namespace IPA {

// A plain record. Every value is the text of the matching member of the RtdConnection it was
// taken from, unconverted.
struct KernelConnection {
  std::string ipLayoutIndex;  // position of the compute unit's entry in "ip_layout.m_ip_data"
  std::string argIndex;       // index of the kernel argument
  std::string argName;        // name of the kernel argument
  std::string mode;           // connection mode

  // The node types of the diagram: the `type` of a connection end that is a compute unit, and of
  // one that is a memory.
  static const std::string computeUnitIdName;  // "compute_unit"
  static const std::string memoryIdName;       // "memory"
};

}  // namespace IPA

#endif  // RTD_KERNELCONNECTION_H_
