// The "ip_layout" section of a run-time data file.
#ifndef RTD_RTDIPLAYOUT_H_
#define RTD_RTDIPLAYOUT_H_

#include <memory>
#include <utility>

#include "rtd/RtdIpDataCollection.h"

namespace IPA {

// Made by the reader only when the section's "m_count" reads as a number other than zero; a
// tree otherwise holds a null pointer in its place. Holds its list and nothing else; the reader
// always gives it one, possibly empty.
class RtdIpLayout {
 public:
  explicit RtdIpLayout(std::shared_ptr<RtdIpDataCollection> collection)
      : ipDataCollection(std::move(collection)) {}

  std::shared_ptr<RtdIpDataCollection> const& getIpDataCollection() const {
    return ipDataCollection;
  }

 private:
  std::shared_ptr<RtdIpDataCollection> ipDataCollection;
};

}  // namespace IPA

#endif  // RTD_RTDIPLAYOUT_H_
