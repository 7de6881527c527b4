// Fills one memory of the platform section.
#ifndef DIAGRAM_QSADEVICETOPOLOGYBUILDER_H_
#define DIAGRAM_QSADEVICETOPOLOGYBUILDER_H_

#include <memory>
#include <string>
#include <utility>

#include "diagram/QsaBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Fills one `deviceTopology`. Making it appends the entry to `qsa.device_topology` (creating the
// sections on the way); the entry belongs to the tree, whose root this builder holds. Refers to
// its owner, which must outlive it.
class QsaDeviceTopologyBuilder {
 public:
  QsaDeviceTopologyBuilder(
      QsaBuilder& ownerBuilder,
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : owner(ownerBuilder),
        root(std::move(rootMessage)),
        entry(root->mutable_system_diagram_metadata()->mutable_qsa()->add_device_topology()) {}

  // The memory word of a run-time data file ("MEM_DDR4", "MEM_HBM", ...) to its type, by exact
  // comparison; any other word, also one cased otherwise, is MEM_UNSET (0).
  static ProfileAnalyzerSystemDiagramSerializable::MemoryType memoryType(std::string const& word);

  ProfileAnalyzerSystemDiagramSerializable::deviceTopology* message() const { return entry; }
  QsaBuilder& getOwner() const { return owner; }

  void setId(std::string const& value) { entry->set_id(value); }
  void setUsed(std::string const& value) { entry->set_used(value); }
  void setSizeKb(std::string const& value) { entry->set_size_kb(value); }
  void setBaseAddress(std::string const& value) { entry->set_base_address(value); }
  void setTag(std::string const& value) { entry->set_tag(value); }
  void setSlr(std::string const& value) { entry->set_slr(value); }
  void setSpTag(std::string const& value) { entry->set_sp_tag(value); }
  void setType(ProfileAnalyzerSystemDiagramSerializable::MemoryType value) {
    entry->set_type(value);
  }

 private:
  QsaBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
  ProfileAnalyzerSystemDiagramSerializable::deviceTopology* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_QSADEVICETOPOLOGYBUILDER_H_
