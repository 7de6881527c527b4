// The memories of a run-time data file.
#ifndef RTD_RTDMEMDATACOLLECTION_H_
#define RTD_RTDMEMDATACOLLECTION_H_

#include <utility>
#include <vector>

#include "rtd/RtdMemData.h"

namespace IPA {

// Owns its entries, in the order of the file. Made once by its builder and not changed after.
class RtdMemDataCollection {
 public:
  explicit RtdMemDataCollection(std::vector<RtdMemData> entries) : memData(std::move(entries)) {}

  std::vector<RtdMemData> const& getMemData() const { return memData; }

 private:
  std::vector<RtdMemData> memData;
};

}  // namespace IPA

#endif  // RTD_RTDMEMDATACOLLECTION_H_
