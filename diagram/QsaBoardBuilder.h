// Fills the board of the platform.
#ifndef DIAGRAM_QSABOARDBUILDER_H_
#define DIAGRAM_QSABOARDBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QsaBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

class QsaBuilder;

// Fills `qsa.board`. Holds the root, so the tree outlives it, and refers to its owner, which must
// outlive it. Making it adds nothing; each setter creates the message on the way if it is absent.
class QsaBoardBuilder {
 public:
  QsaBoardBuilder(
      QsaBuilder& ownerBuilder,
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : owner(ownerBuilder), root(std::move(rootMessage)) {}

  // The message, created if absent.
  ProfileAnalyzerSystemDiagramSerializable::Board* message() {
    return root->mutable_system_diagram_metadata()->mutable_qsa()->mutable_board();
  }
  QsaBuilder& getOwner() const { return owner; }
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> const& getRoot() const {
    return root;
  }

  void setName(std::string const& value) { message()->set_name(value); }
  void setVendor(std::string const& value) { message()->set_vendor(value); }
  void setPart(std::string const& value) { message()->set_part(value); }
  void setBoardPart(std::string const& value) { message()->set_board_part(value); }

 private:
  QsaBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
};

}  // namespace IPA

#endif  // DIAGRAM_QSABOARDBUILDER_H_
