// Fills the resources of one SLR of the user region.
#ifndef DIAGRAM_QRXBINBYSLRBUILDER_H_
#define DIAGRAM_QRXBINBYSLRBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinAvailableResourceBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Fills one `bySlr`. Making it adds one entry; the entry belongs to the parent message, and the
// shared parent builder keeps the tree alive for as long as this builder lives.
class QrxBinBySlrBuilder {
 public:
  explicit QrxBinBySlrBuilder(std::shared_ptr<QrxBinAvailableResourceBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), entry(parent->message()->add_by_slr()) {}

  ProfileAnalyzerSystemDiagramSerializable::bySlr* message() const { return entry; }
  std::shared_ptr<QrxBinAvailableResourceBuilder> const& getParent() const { return parent; }

  void setSlr(std::string const& value) { entry->set_slr(value); }
  void setLut(std::string const& value) { entry->set_lut(value); }
  void setReg(std::string const& value) { entry->set_reg(value); }
  void setBram(std::string const& value) { entry->set_bram(value); }
  void setDsp(std::string const& value) { entry->set_dsp(value); }
  void setUram(std::string const& value) { entry->set_uram(value); }

 private:
  std::shared_ptr<QrxBinAvailableResourceBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::bySlr* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_QRXBINBYSLRBUILDER_H_
