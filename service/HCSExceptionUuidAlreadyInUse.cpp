#include "service/HCSExceptionUuidAlreadyInUse.h"

namespace dispatch {
namespace server {

// Out of line, so that the vtable and the type information live in the library.
HCSExceptionUuidAlreadyInUse::~HCSExceptionUuidAlreadyInUse() = default;

}  // namespace server
}  // namespace dispatch
