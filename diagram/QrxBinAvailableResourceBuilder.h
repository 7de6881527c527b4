// Fills what the user region offers.
#ifndef DIAGRAM_QRXBINAVAILABLERESOURCEBUILDER_H_
#define DIAGRAM_QRXBINAVAILABLERESOURCEBUILDER_H_

#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

class QrxBinBySlrBuilder;

// Fills `userRegion.available_resources` of the region of `regionBuilder`. Making it adds
// nothing; each setter creates the message if it is absent. Holds the root and the region's
// builder, and refers to its owner, which must outlive it.
// Hands itself to the builders of its children: use it only inside a std::shared_ptr.
class QrxBinAvailableResourceBuilder
    : public std::enable_shared_from_this<QrxBinAvailableResourceBuilder> {
 public:
  QrxBinAvailableResourceBuilder(
      QrxBinBuilder& ownerBuilder,
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage,
      std::shared_ptr<QrxBinUserRegionBuilder> regionBuilder)
      : owner(ownerBuilder),
        root(std::move(rootMessage)),
        userRegionBuilder(std::move(regionBuilder)),
        userRegion(userRegionBuilder->message()) {}

  // The message, created if absent.
  ProfileAnalyzerSystemDiagramSerializable::userRegionAvailableResources* message() const {
    return userRegion->mutable_available_resources();
  }
  QrxBinBuilder& getOwner() const { return owner; }
  std::shared_ptr<QrxBinUserRegionBuilder> const& getUserRegionBuilder() const {
    return userRegionBuilder;
  }

  void setLut(std::string const& value) { message()->set_lut(value); }
  void setReg(std::string const& value) { message()->set_reg(value); }
  void setBram(std::string const& value) { message()->set_bram(value); }
  void setDsp(std::string const& value) { message()->set_dsp(value); }
  void setUram(std::string const& value) { message()->set_uram(value); }

  // Appends one SLR to `by_slr` and returns the builder that fills it.
  std::shared_ptr<QrxBinBySlrBuilder> addBySlr();

 private:
  QrxBinBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
  std::shared_ptr<QrxBinUserRegionBuilder> userRegionBuilder;
  ProfileAnalyzerSystemDiagramSerializable::userRegion* userRegion;
};

}  // namespace IPA

#endif  // DIAGRAM_QRXBINAVAILABLERESOURCEBUILDER_H_
