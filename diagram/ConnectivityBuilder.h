// Fills one connection of the user region.
#ifndef DIAGRAM_CONNECTIVITYBUILDER_H_
#define DIAGRAM_CONNECTIVITYBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

class ConnectivityNodeBuilder;

// Fills one `Connectivity`. Making it adds one entry; the entry belongs to the parent message, and
// the shared parent builder keeps the tree alive for as long as this builder lives. Hands itself to
// the builders of its children: use it only inside a std::shared_ptr.
class ConnectivityBuilder : public std::enable_shared_from_this<ConnectivityBuilder> {
 public:
  explicit ConnectivityBuilder(std::shared_ptr<QrxBinUserRegionBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), entry(parent->message()->add_connectivity()) {}

  ProfileAnalyzerSystemDiagramSerializable::Connectivity* message() const { return entry; }
  std::shared_ptr<QrxBinUserRegionBuilder> const& getParent() const { return parent; }

  void setId(std::string const& value) { entry->set_id(value); }

  // The builders of the two ends, each creating its end on first use.
  std::shared_ptr<ConnectivityNodeBuilder> source();
  std::shared_ptr<ConnectivityNodeBuilder> destination();

 private:
  std::shared_ptr<QrxBinUserRegionBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::Connectivity* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_CONNECTIVITYBUILDER_H_
