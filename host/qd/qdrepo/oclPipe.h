// A pipe of an OpenCL kernel, as a kernel's qd:fcnMap declares it in a repository file.
#ifndef HOST_QD_QDREPO_OCLPIPE_H_
#define HOST_QD_QDREPO_OCLPIPE_H_

#include <string>

#include "host/qd/qdrepo/QDEnumerations.h"
#include "service/Export.h"

namespace qd {

// The attributes of a `pipe` element. Every field keeps its default when its attribute is
// missing, so a record read past the last pipe is all defaults.
class QV_EXPORT oclPipe {
 public:
  // The word of a `linkage` attribute: "internal" and "external" are known, any other word
  // (and "") leaves no_linkage.
  static linkage_t linkageOf(std::string const& word);
  // A `depth` or `width` text read as a stream of digits: "16" is 16, "16x" 16, "x" and "" 0.
  static int numberOf(std::string const& text);

  std::string name;
  int depth = 0;
  int width = 0;
  linkage_t linkage = LINKAGE_NO_LINKAGE;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_OCLPIPE_H_
