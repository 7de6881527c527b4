// Fills the resources of the whole device.
#ifndef DIAGRAM_QSAAVAILABLERESOURCEBUILDER_H_
#define DIAGRAM_QSAAVAILABLERESOURCEBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QsaBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

class QsaBuilder;

// Fills `qsa.available_resources`. Holds the root, so the tree outlives it, and refers to its
// owner, which must outlive it. Making it adds nothing; each setter creates the message on the way
// if it is absent.
class QsaAvailableResourceBuilder {
 public:
  QsaAvailableResourceBuilder(
      QsaBuilder& ownerBuilder,
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : owner(ownerBuilder), root(std::move(rootMessage)) {}

  // The message, created if absent.
  ProfileAnalyzerSystemDiagramSerializable::qsaAvailableResources* message() {
    return root->mutable_system_diagram_metadata()->mutable_qsa()->mutable_available_resources();
  }
  QsaBuilder& getOwner() const { return owner; }
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> const& getRoot() const {
    return root;
  }

  void setLut(std::string const& value) { message()->set_lut(value); }
  void setReg(std::string const& value) { message()->set_reg(value); }
  void setBram(std::string const& value) { message()->set_bram(value); }
  void setDsp(std::string const& value) { message()->set_dsp(value); }
  void setUram(std::string const& value) { message()->set_uram(value); }

 private:
  QsaBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
};

}  // namespace IPA

#endif  // DIAGRAM_QSAAVAILABLERESOURCEBUILDER_H_
