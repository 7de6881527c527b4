// Fills one kernel of the user region.
#ifndef DIAGRAM_QRXBINKERNELBUILDER_H_
#define DIAGRAM_QRXBINKERNELBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

class EstimatedResourcesBuilder;
class KernelArgumentBuilder;
class KernelClockRefBuilder;
class KernelPortBuilder;

// Fills one `kernel`. Making it adds one entry; the entry belongs to the parent message, and the
// shared parent builder keeps the tree alive for as long as this builder lives.
// Hands itself to the builders of its children: use it only inside a std::shared_ptr.
class QrxBinKernelBuilder : public std::enable_shared_from_this<QrxBinKernelBuilder> {
 public:
  explicit QrxBinKernelBuilder(std::shared_ptr<QrxBinUserRegionBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), entry(parent->message()->add_kernels()) {}

  ProfileAnalyzerSystemDiagramSerializable::kernel* message() const { return entry; }
  std::shared_ptr<QrxBinUserRegionBuilder> const& getParent() const { return parent; }

  void setName(std::string const& value) { entry->set_name(value); }
  void setDescription(std::string const& value) { entry->set_description(value); }

  // Each appends one entry to this kernel and returns the builder that fills it.
  std::shared_ptr<KernelPortBuilder> addPort();
  std::shared_ptr<KernelArgumentBuilder> addArgument();
  std::shared_ptr<KernelClockRefBuilder> addClockRef();
  // The builder of this kernel's estimate; the estimate comes into being with its first setter.
  std::shared_ptr<EstimatedResourcesBuilder> estimatedResources();

 private:
  std::shared_ptr<QrxBinUserRegionBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::kernel* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_QRXBINKERNELBUILDER_H_
