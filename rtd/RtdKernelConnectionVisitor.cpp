#include "rtd/RtdKernelConnectionVisitor.h"

#include <string>
#include <utility>
#include <vector>

#include "diagram/ConnectivityBuilder.h"
#include "diagram/ConnectivityNodeBuilder.h"
#include "diagram/TextConversions.h"
#include "rtd/KernelConnection.h"

namespace IPA {
namespace {

// Both ends of a streaming link are compute units; `instance` and `pin` are not known here.
void fillEnd(ConnectivityNodeBuilder& end, KernelConnection const& record) {
  end.setType(KernelConnection::computeUnitIdName);
  end.setId(record.ipLayoutIndex);
  end.setArgName(record.argName);
  end.setMode(record.mode);
  end.setArgIndex(record.argIndex);
}

}  // namespace

RtdKernelConnectionVisitor::RtdKernelConnectionVisitor(
    std::shared_ptr<QrxBinUserRegionBuilder> userRegionBuilder, std::int32_t firstConnectionId)
    : userRegion(std::move(userRegionBuilder)), nextConnectionId(firstConnectionId) {}

void RtdKernelConnectionVisitor::visit(const KernelConnections& connections) const {
  std::int32_t connectionId = nextConnectionId;
  for (auto const& identifier : connections.kernelConnectionIds()) {
    // The connection is added even when its halves do not pair up: a dangling stream shows in
    // the diagram as a connection with an id and no ends, and it still takes its number.
    auto const connectivity = userRegion->addConnectivity();
    connectivity->setId(integerToText(connectionId));
    ++connectionId;

    std::vector<KernelConnection> const records =
        connections.kernelConnectionsForConnectionId(identifier);
    if (records.size() != 2) continue;
    // No sorting by direction: the half that came first in the file is the source.
    fillEnd(*connectivity->source(), records[0]);
    fillEnd(*connectivity->destination(), records[1]);
  }
}

}  // namespace IPA
