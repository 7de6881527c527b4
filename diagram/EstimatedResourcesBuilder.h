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

// Fills `kernel.estimated_resources` of the kernel of its parent builder. Making it adds
// nothing: the estimate comes into being with the first setter, so a kernel whose report gives
// no value has no estimate at all. The shared parent builder keeps the tree alive for as long as
// this builder lives.
class EstimatedResourcesBuilder {
 public:
  explicit EstimatedResourcesBuilder(std::shared_ptr<QrxBinKernelBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), kernel(parent->message()) {}

  // The estimate, created if absent.
  ProfileAnalyzerSystemDiagramSerializable::estimatedResources* message() const {
    return kernel->mutable_estimated_resources();
  }
  std::shared_ptr<QrxBinKernelBuilder> const& getParent() const { return parent; }

  void setLut(std::string const& value) { message()->set_lut(value); }
  void setReg(std::string const& value) { message()->set_reg(value); }
  void setBram(std::string const& value) { message()->set_bram(value); }
  void setDsp(std::string const& value) { message()->set_dsp(value); }
  void setUram(std::string const& value) { message()->set_uram(value); }

 private:
  std::shared_ptr<QrxBinKernelBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::kernel* kernel;
};

}  // namespace IPA

#endif  // DIAGRAM_ESTIMATEDRESOURCESBUILDER_H_
