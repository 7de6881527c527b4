#include "diagram/ConnectivityBuilder.h"

#include "diagram/ConnectivityNodeBuilder.h"

namespace IPA {

std::shared_ptr<ConnectivityNodeBuilder> ConnectivityBuilder::source() {
  return std::make_shared<ConnectivityNodeBuilder>(shared_from_this(),
                                                   ConnectivityNodeBuilder::End::kSource);
}

std::shared_ptr<ConnectivityNodeBuilder> ConnectivityBuilder::destination() {
  return std::make_shared<ConnectivityNodeBuilder>(shared_from_this(),
                                                   ConnectivityNodeBuilder::End::kDestination);
}

}  // namespace IPA
