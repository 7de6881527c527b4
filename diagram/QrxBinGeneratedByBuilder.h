// Fills the tool run that made the build.
#ifndef DIAGRAM_QRXBINGENERATEDBYBUILDER_H_
#define DIAGRAM_QRXBINGENERATEDBYBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/QrxBinBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

class QrxBinBuilder;

// Fills `qrxbin.generated_by`. Holds the root, so the tree outlives it, and refers to its owner,
// which must outlive it. Making it adds nothing; each setter creates the message on the way if it
// is absent.
class QrxBinGeneratedByBuilder {
 public:
  QrxBinGeneratedByBuilder(
      QrxBinBuilder& ownerBuilder,
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : owner(ownerBuilder), root(std::move(rootMessage)) {}

  // The message, created if absent.
  ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy* message() {
    return root->mutable_system_diagram_metadata()->mutable_qrxbin()->mutable_generated_by();
  }
  QrxBinBuilder& getOwner() const { return owner; }
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> const& getRoot() const {
    return root;
  }

  void setName(std::string const& value) { message()->set_name(value); }
  void setVersion(std::string const& value) { message()->set_version(value); }
  void setChangeList(std::string const& value) { message()->set_change_list(value); }
  void setTimestamp(std::string const& value) { message()->set_timestamp(value); }
  void setDetailA(std::string const& value) { message()->set_detail_a(value); }
  void setDetailB(std::string const& value) { message()->set_detail_b(value); }
  void setLabel(std::string const& value) { message()->set_label(value); }
  void setNote(std::string const& value) { message()->set_note(value); }
  void setLabelCopy(std::string const& value) { message()->set_label_copy(value); }
  void setFlag(bool value) { message()->set_flag(value); }

 private:
  QrxBinBuilder& owner;
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
};

}  // namespace IPA

#endif  // DIAGRAM_QRXBINGENERATEDBYBUILDER_H_
