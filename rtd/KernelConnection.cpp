#include "rtd/KernelConnection.h"

namespace IPA {

const std::string KernelConnection::computeUnitIdName = "compute_unit";
const std::string KernelConnection::memoryIdName = "memory";

}  // namespace IPA
