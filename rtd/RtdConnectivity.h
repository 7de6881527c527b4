// The "connectivity" section of a run-time data file.
#ifndef RTD_RTDCONNECTIVITY_H_
#define RTD_RTDCONNECTIVITY_H_

#include <memory>
#include <utility>

#include "rtd/RtdConnectionCollection.h"

namespace IPA {

// Made by the reader only when the section's "m_count" reads as a number other than zero; a
// tree otherwise holds a null pointer in its place. Holds its list and nothing else; the reader
// always gives it one, possibly empty.
class RtdConnectivity {
 public:
  explicit RtdConnectivity(std::shared_ptr<RtdConnectionCollection> collection)
      : connectionCollection(std::move(collection)) {}

  std::shared_ptr<RtdConnectionCollection> const& getConnectionCollection() const {
    return connectionCollection;
  }

 private:
  std::shared_ptr<RtdConnectionCollection> connectionCollection;
};

}  // namespace IPA

#endif  // RTD_RTDCONNECTIVITY_H_
