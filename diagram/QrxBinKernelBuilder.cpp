#include "diagram/QrxBinKernelBuilder.h"

#include "diagram/EstimatedResourcesBuilder.h"
#include "diagram/KernelArgumentBuilder.h"
#include "diagram/KernelClockRefBuilder.h"
#include "diagram/KernelPortBuilder.h"

namespace IPA {

std::shared_ptr<KernelPortBuilder> QrxBinKernelBuilder::addPort() {
  return std::make_shared<KernelPortBuilder>(shared_from_this());
}

std::shared_ptr<KernelArgumentBuilder> QrxBinKernelBuilder::addArgument() {
  return std::make_shared<KernelArgumentBuilder>(shared_from_this());
}

std::shared_ptr<KernelClockRefBuilder> QrxBinKernelBuilder::addClockRef() {
  return std::make_shared<KernelClockRefBuilder>(shared_from_this());
}

std::shared_ptr<EstimatedResourcesBuilder> QrxBinKernelBuilder::estimatedResources() {
  return std::make_shared<EstimatedResourcesBuilder>(shared_from_this());
}

}  // namespace IPA
