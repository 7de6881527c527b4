// Fills the resource estimate of a kernel.
#ifndef DIAGRAM_ESTIMATEDRESOURCESBUILDER_H_
#define DIAGRAM_ESTIMATEDRESOURCESBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinKernelBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Fills one `estimatedResources`. Making it creates the estimate if the kernel has none and
// otherwise adds nothing; the entry belongs to the parent message, and the shared parent builder
// keeps the tree alive for as long as this builder lives.
class EstimatedResourcesBuilder {
 public:
  explicit EstimatedResourcesBuilder(std::shared_ptr<QrxBinKernelBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), entry(parent->message()->mutable_estimated_resources()) {}

  ProfileAnalyzerSystemDiagramSerializable::estimatedResources* message() const { return entry; }
  std::shared_ptr<QrxBinKernelBuilder> const& getParent() const { return parent; }

  void setLut(std::string const& value) { entry->set_lut(value); }
  void setReg(std::string const& value) { entry->set_reg(value); }
  void setBram(std::string const& value) { entry->set_bram(value); }
  void setDsp(std::string const& value) { entry->set_dsp(value); }
  void setUram(std::string const& value) { entry->set_uram(value); }

 private:
  std::shared_ptr<QrxBinKernelBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::estimatedResources* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_ESTIMATEDRESOURCESBUILDER_H_
