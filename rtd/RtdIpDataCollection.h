// The IP blocks and compute units of a run-time data file.
#ifndef RTD_RTDIPDATACOLLECTION_H_
#define RTD_RTDIPDATACOLLECTION_H_

#include <utility>
#include <vector>

#include "rtd/RtdIpData.h"

namespace IPA {

// Owns its entries, in the order of the file. Made once by its builder and not changed after.
class RtdIpDataCollection {
 public:
  explicit RtdIpDataCollection(std::vector<RtdIpData> entries) : ipData(std::move(entries)) {}

  std::vector<RtdIpData> const& getIpData() const { return ipData; }

 private:
  std::vector<RtdIpData> ipData;
};

}  // namespace IPA

#endif  // RTD_RTDIPDATACOLLECTION_H_
