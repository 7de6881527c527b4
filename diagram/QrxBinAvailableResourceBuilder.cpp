#include "diagram/QrxBinAvailableResourceBuilder.h"

#include "diagram/QrxBinBySlrBuilder.h"

namespace IPA {

std::shared_ptr<QrxBinBySlrBuilder> QrxBinAvailableResourceBuilder::addBySlr() {
  return std::make_shared<QrxBinBySlrBuilder>(shared_from_this());
}

}  // namespace IPA
