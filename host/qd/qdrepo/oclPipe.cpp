#include "host/qd/qdrepo/oclPipe.h"

#include <sstream>

namespace qd {

linkage_t oclPipe::linkageOf(std::string const& word) {
  // Not str2linkage_t: its table also knows "no_linkage", and it is empty until the first
  // repository fills it, while a pipe's word means the same at any time.
  if (word == "internal") return LINKAGE_INTERNAL;
  if (word == "external") return LINKAGE_EXTERNAL;
  return LINKAGE_NO_LINKAGE;
}

int oclPipe::numberOf(std::string const& text) {
  int value = 0;
  std::istringstream stream(text);
  stream >> value;
  // A failed extraction stores 0 already; an overflow stores a limit, which is no depth either.
  return stream.fail() ? 0 : value;
}

}  // namespace qd
