// Fills the user region of the build.
#ifndef DIAGRAM_QRXBINUSERREGIONBUILDER_H_
#define DIAGRAM_QRXBINUSERREGIONBUILDER_H_

#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

class ComputeUnitBuilder;
class ConnectivityBuilder;
class QrxBinKernelBuilder;

// Fills one `userRegion`. Making it appends the region to `qrxbin.user_regions` (creating the
// sections on the way); the entry belongs to the tree, whose root this builder holds. Refers to
// its owner, which must outlive it.
// Hands itself to the builders of its children: use it only inside a std::shared_ptr.
class QrxBinUserRegionBuilder : public std::enable_shared_from_this<QrxBinUserRegionBuilder> {
 public:
  QrxBinUserRegionBuilder(
      QrxBinBuilder& ownerBuilder,
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : owner(ownerBuilder),
        root(std::move(rootMessage)),
        entry(root->mutable_system_diagram_metadata()->mutable_qrxbin()->add_user_regions()) {}

  ProfileAnalyzerSystemDiagramSerializable::userRegion* message() const { return entry; }
  QrxBinBuilder& getOwner() const { return owner; }
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> const& getRoot() const {
    return root;
  }

  void setName(std::string const& value) { entry->set_name(value); }
  void setType(std::string const& value) { entry->set_type(value); }
  void setInstPath(std::string const& value) { entry->set_inst_path(value); }

  // Each appends one entry to this region and returns the builder that fills it.
  std::shared_ptr<ComputeUnitBuilder> addComputeUnit();
  std::shared_ptr<ConnectivityBuilder> addConnectivity();
  std::shared_ptr<QrxBinKernelBuilder> addKernel();

 private:
  QrxBinBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
  ProfileAnalyzerSystemDiagramSerializable::userRegion* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_QRXBINUSERREGIONBUILDER_H_
