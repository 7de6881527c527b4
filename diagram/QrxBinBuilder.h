// Fills the build section of a diagram.
#ifndef DIAGRAM_QRXBINBUILDER_H_
#define DIAGRAM_QRXBINBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "proto/system_diagram.pb.h"

namespace IPA {

class ProfileAnalyzerSystemDiagramBuilder;

// Fills `qrxbin`. Holds the root, so the tree outlives it, and refers to its owner, which must
// outlive it. Making it adds nothing; each setter creates the message on the way if it is absent.
class QrxBinBuilder {
 public:
  QrxBinBuilder(
      ProfileAnalyzerSystemDiagramBuilder& ownerBuilder,
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : owner(ownerBuilder), root(std::move(rootMessage)) {}

  // The message, created if absent.
  ProfileAnalyzerSystemDiagramSerializable::qrxBin* message() {
    return root->mutable_system_diagram_metadata()->mutable_qrxbin();
  }
  ProfileAnalyzerSystemDiagramBuilder& getOwner() const { return owner; }
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> const& getRoot() const {
    return root;
  }

 private:
  ProfileAnalyzerSystemDiagramBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
};

}  // namespace IPA

#endif  // DIAGRAM_QRXBINBUILDER_H_
