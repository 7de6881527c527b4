// The argument-to-memory connections of a run-time data file.
#ifndef RTD_RTDCONNECTIONCOLLECTION_H_
#define RTD_RTDCONNECTIONCOLLECTION_H_

#include <utility>
#include <vector>

#include "rtd/RtdConnection.h"

namespace IPA {

// Owns its entries, in the order of the file. Made once by its builder and not changed after.
class RtdConnectionCollection {
 public:
  explicit RtdConnectionCollection(std::vector<RtdConnection> entries)
      : connections(std::move(entries)) {}

  std::vector<RtdConnection> const& getConnections() const { return connections; }

 private:
  std::vector<RtdConnection> connections;
};

}  // namespace IPA

#endif  // RTD_RTDCONNECTIONCOLLECTION_H_
