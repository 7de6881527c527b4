#include "diagram/QrxBinUserRegionBuilder.h"

#include "diagram/ComputeUnitBuilder.h"
#include "diagram/ConnectivityBuilder.h"
#include "diagram/QrxBinKernelBuilder.h"

namespace IPA {

std::shared_ptr<ComputeUnitBuilder> QrxBinUserRegionBuilder::addComputeUnit() {
  return std::make_shared<ComputeUnitBuilder>(shared_from_this());
}

std::shared_ptr<ConnectivityBuilder> QrxBinUserRegionBuilder::addConnectivity() {
  return std::make_shared<ConnectivityBuilder>(shared_from_this());
}

std::shared_ptr<QrxBinKernelBuilder> QrxBinUserRegionBuilder::addKernel() {
  return std::make_shared<QrxBinKernelBuilder>(shared_from_this());
}

}  // namespace IPA
