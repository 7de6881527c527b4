#include "service/HCSExceptionNoSessionFound.h"

namespace dispatch {
namespace server {

// Out of line, so that the vtable and the type information live in the library.
HCSExceptionNoSessionFound::~HCSExceptionNoSessionFound() = default;

}  // namespace server
}  // namespace dispatch
