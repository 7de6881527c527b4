#include "host/qd/qdrepo/oclPipeConnection.h"

namespace qd {

comp_t oclPipeConnection::endTypeOf(std::string const& word) {
  // Not str2comp_t: that would make "accelerator" or "platform" an end of a pipe connection.
  if (word == "kernel") return COMP_KERNEL;
  if (word == "pipe") return COMP_PIPE;
  return COMP_GENERIC;
}

}  // namespace qd
