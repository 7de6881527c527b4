// Fills one argument of a kernel.
#ifndef DIAGRAM_KERNELARGUMENTBUILDER_H_
#define DIAGRAM_KERNELARGUMENTBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinKernelBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Fills one `argument`. Making it adds one entry; the entry belongs to the parent message, and the
// shared parent builder keeps the tree alive for as long as this builder lives.
class KernelArgumentBuilder {
 public:
  explicit KernelArgumentBuilder(std::shared_ptr<QrxBinKernelBuilder> parentBuilder)
      : parent(std::move(parentBuilder)), entry(parent->message()->add_arguments()) {}

  ProfileAnalyzerSystemDiagramSerializable::argument* message() const { return entry; }
  std::shared_ptr<QrxBinKernelBuilder> const& getParent() const { return parent; }

  void setId(std::string const& value) { entry->set_id(value); }
  void setName(std::string const& value) { entry->set_name(value); }
  void setAddressKind(std::string const& value) { entry->set_address_kind(value); }
  void setPort(std::string const& value) { entry->set_port(value); }
  void setSize(std::string const& value) { entry->set_size(value); }
  void setOffset(std::string const& value) { entry->set_offset(value); }
  void setDetailA(std::string const& value) { entry->set_detail_a(value); }
  void setDetailB(std::string const& value) { entry->set_detail_b(value); }
  void setPortInterfaceType(std::string const& value) { entry->set_port_interface_type(value); }

 private:
  std::shared_ptr<QrxBinKernelBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::argument* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_KERNELARGUMENTBUILDER_H_
