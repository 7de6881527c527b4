// Fills the tool run that made the platform.
#ifndef DIAGRAM_QSAGENERATEDBYBUILDER_H_
#define DIAGRAM_QSAGENERATEDBYBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QsaBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

class QsaBuilder;

// Fills `qsa.generated_by`. Holds the root, so the tree outlives it, and refers to its owner, which
// must outlive it. Making it adds nothing; each setter creates the message on the way if it is
// absent.
class QsaGeneratedByBuilder {
 public:
  QsaGeneratedByBuilder(
      QsaBuilder& ownerBuilder,
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : owner(ownerBuilder), root(std::move(rootMessage)) {}

  // The message, created if absent.
  ProfileAnalyzerSystemDiagramSerializable::qsaGeneratedBy* message() {
    return root->mutable_system_diagram_metadata()->mutable_qsa()->mutable_generated_by();
  }
  QsaBuilder& getOwner() const { return owner; }
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> const& getRoot() const {
    return root;
  }

  void setName(std::string const& value) { message()->set_name(value); }
  void setVersion(std::string const& value) { message()->set_version(value); }
  void setChangeList(std::string const& value) { message()->set_change_list(value); }
  void setTimestamp(std::string const& value) { message()->set_timestamp(value); }

 private:
  QsaBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
};

}  // namespace IPA

#endif  // DIAGRAM_QSAGENERATEDBYBUILDER_H_
