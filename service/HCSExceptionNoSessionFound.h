// A session that was to be used, forked from or removed is not in the table.
#ifndef SERVICE_HCSEXCEPTIONNOSESSIONFOUND_H_
#define SERVICE_HCSEXCEPTIONNOSESSIONFOUND_H_

#include <stdexcept>

#include "service/Export.h"

namespace dispatch {
namespace server {

// Thrown by the session table with its full message text. Exported with its type information,
// so that the server can catch it by type across the library boundary.
class QV_EXPORT HCSExceptionNoSessionFound : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  ~HCSExceptionNoSessionFound() override;
};

}  // namespace server
}  // namespace dispatch

#endif  // SERVICE_HCSEXCEPTIONNOSESSIONFOUND_H_
