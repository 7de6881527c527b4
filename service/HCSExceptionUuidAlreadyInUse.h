// A session could not be created or forked: the UUID it was to get is taken.
#ifndef SERVICE_HCSEXCEPTIONUUIDALREADYINUSE_H_
#define SERVICE_HCSEXCEPTIONUUIDALREADYINUSE_H_

#include <stdexcept>

#include "service/Export.h"

namespace dispatch {
namespace server {

// Thrown by the session table with its full message text. Exported with its type information,
// so that the server can catch it by type across the library boundary.
class QV_EXPORT HCSExceptionUuidAlreadyInUse : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
  ~HCSExceptionUuidAlreadyInUse() override;
};

}  // namespace server
}  // namespace dispatch

#endif  // SERVICE_HCSEXCEPTIONUUIDALREADYINUSE_H_
