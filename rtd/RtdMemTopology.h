// The "mem_topology" section of a run-time data file.
#ifndef RTD_RTDMEMTOPOLOGY_H_
#define RTD_RTDMEMTOPOLOGY_H_

#include <memory>
#include <utility>

#include "rtd/RtdMemDataCollection.h"

namespace IPA {

// Made by the reader only when the section's "m_count" reads as a number other than zero; a
// tree otherwise holds a null pointer in its place. Holds its list and nothing else; the reader
// always gives it one, possibly empty.
class RtdMemTopology {
 public:
  explicit RtdMemTopology(std::shared_ptr<RtdMemDataCollection> collection)
      : memDataCollection(std::move(collection)) {}

  std::shared_ptr<RtdMemDataCollection> const& getMemDataCollection() const {
    return memDataCollection;
  }

 private:
  std::shared_ptr<RtdMemDataCollection> memDataCollection;
};

}  // namespace IPA

#endif  // RTD_RTDMEMTOPOLOGY_H_
