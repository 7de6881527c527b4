// Fills one clock reference of a kernel.
#ifndef DIAGRAM_KERNELCLOCKREFBUILDER_H_
#define DIAGRAM_KERNELCLOCKREFBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinKernelBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Fills one `clockRef`. Making it adds one entry; the entry belongs to the parent message, and the
// shared parent builder keeps the tree alive for as long as this builder lives.
class KernelClockRefBuilder {
 public:
  explicit KernelClockRefBuilder(std::shared_ptr<QrxBinKernelBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), entry(parent->message()->add_clock_refs()) {}

  ProfileAnalyzerSystemDiagramSerializable::clockRef* message() const { return entry; }
  std::shared_ptr<QrxBinKernelBuilder> const& getParent() const { return parent; }

  void setName(std::string const& value) { entry->set_name(value); }
  void setClockId(std::string const& value) { entry->set_clock_id(value); }
  void setPlio(std::string const& value) { entry->set_plio(value); }
  void setAnnotatedArg(std::string const& value) { entry->set_annotated_arg(value); }
  void setRequestedFrequency(double value) { entry->set_requested_frequency(value); }
  void setAchievedFrequency(double value) { entry->set_achieved_frequency(value); }

 private:
  std::shared_ptr<QrxBinKernelBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::clockRef* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_KERNELCLOCKREFBUILDER_H_
