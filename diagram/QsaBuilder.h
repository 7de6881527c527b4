// Fills the platform section of a diagram.
#ifndef DIAGRAM_QSABUILDER_H_
#define DIAGRAM_QSABUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "proto/system_diagram.pb.h"

namespace IPA {

class ProfileAnalyzerSystemDiagramBuilder;

// Fills `qsa`. Holds the root, so the tree outlives it, and refers to its owner, which must
// outlive it. Making it adds nothing; each setter creates the message on the way if it is absent.
class QsaBuilder {
 public:
  QsaBuilder(ProfileAnalyzerSystemDiagramBuilder& ownerBuilder,
             std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : owner(ownerBuilder), root(std::move(rootMessage)) {}

  // The message, created if absent.
  ProfileAnalyzerSystemDiagramSerializable::Qsa* message() {
    return root->mutable_system_diagram_metadata()->mutable_qsa();
  }
  ProfileAnalyzerSystemDiagramBuilder& getOwner() const { return owner; }
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> const& getRoot() const {
    return root;
  }

  void setVendor(std::string const& value) { message()->set_vendor(value); }
  void setBoardId(std::string const& value) { message()->set_board_id(value); }
  void setName(std::string const& value) { message()->set_name(value); }
  void setVersionMajor(std::string const& value) { message()->set_version_major(value); }
  void setVersionMinor(std::string const& value) { message()->set_version_minor(value); }
  void setDescription(std::string const& value) { message()->set_description(value); }

  void addDesignIntent(std::string const& intent) { message()->add_design_intent(intent); }
  // Appends an empty clock and returns it; it belongs to the section.
  ProfileAnalyzerSystemDiagramSerializable::Clock* addClock() { return message()->add_clocks(); }

 private:
  ProfileAnalyzerSystemDiagramBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
};

}  // namespace IPA

#endif  // DIAGRAM_QSABUILDER_H_
