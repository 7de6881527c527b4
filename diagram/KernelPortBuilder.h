// Fills one port of a kernel.
#ifndef DIAGRAM_KERNELPORTBUILDER_H_
#define DIAGRAM_KERNELPORTBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinKernelBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Fills one `port`. Making it adds one entry; the entry belongs to the parent message, and the
// shared parent builder keeps the tree alive for as long as this builder lives.
class KernelPortBuilder {
 public:
  explicit KernelPortBuilder(std::shared_ptr<QrxBinKernelBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), entry(parent->message()->add_ports()) {}

  ProfileAnalyzerSystemDiagramSerializable::port* message() const { return entry; }
  std::shared_ptr<QrxBinKernelBuilder> const& getParent() const { return parent; }

  void setName(std::string const& value) { entry->set_name(value); }
  void setMode(std::string const& value) { entry->set_mode(value); }
  void setDetailA(std::string const& value) { entry->set_detail_a(value); }
  void setDataWidth(std::string const& value) { entry->set_data_width(value); }
  void setPortType(std::string const& value) { entry->set_port_type(value); }
  void setDetailB(std::string const& value) { entry->set_detail_b(value); }

 private:
  std::shared_ptr<QrxBinKernelBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::port* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_KERNELPORTBUILDER_H_
