// Fills one compute unit of the user region.
#ifndef DIAGRAM_COMPUTEUNITBUILDER_H_
#define DIAGRAM_COMPUTEUNITBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Fills one `computeUnit`. Making it adds one entry; the entry belongs to the parent message, and
// the shared parent builder keeps the tree alive for as long as this builder lives.
class ComputeUnitBuilder {
 public:
  explicit ComputeUnitBuilder(std::shared_ptr<QrxBinUserRegionBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), entry(parent->message()->add_compute_units()) {}

  ProfileAnalyzerSystemDiagramSerializable::computeUnit* message() const { return entry; }
  std::shared_ptr<QrxBinUserRegionBuilder> const& getParent() const { return parent; }

  void setId(std::string const& value) { entry->set_id(value); }
  void setKernelName(std::string const& value) { entry->set_kernel_name(value); }
  void setName(std::string const& value) { entry->set_name(value); }
  void setBaseAddress(std::string const& value) { entry->set_base_address(value); }

  // Appends a clock reference to the compute unit and returns it.
  ProfileAnalyzerSystemDiagramSerializable::clockRef* addClockRef() {
    return entry->add_clock_refs();
  }

 private:
  std::shared_ptr<QrxBinUserRegionBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::computeUnit* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_COMPUTEUNITBUILDER_H_
