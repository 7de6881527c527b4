// Stands for the root of a diagram while the import fills it.
#ifndef DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAMBUILDER_H_
#define DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAMBUILDER_H_

#include <memory>
#include <utility>

#include "diagram/QrxBinBuilder.h"
#include "diagram/QsaBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Holds the root and the builders of its two sections. Making it adds nothing to the tree: a
// section comes into being when one of its fields is first set.
class ProfileAnalyzerSystemDiagramBuilder {
 public:
  explicit ProfileAnalyzerSystemDiagramBuilder(
      std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> rootMessage)
      : root(std::move(rootMessage)),
        qsaBuilder(std::make_shared<QsaBuilder>(*this, root)),
        qrxBinBuilder(std::make_shared<QrxBinBuilder>(*this, root)) {}

  ProfileAnalyzerSystemDiagramBuilder(ProfileAnalyzerSystemDiagramBuilder const&) = delete;
  ProfileAnalyzerSystemDiagramBuilder& operator=(ProfileAnalyzerSystemDiagramBuilder const&) =
      delete;

  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> const& getRoot() const {
    return root;
  }
  // The section builders refer back to this object, which must outlive them.
  std::shared_ptr<QsaBuilder> const& getQsaBuilder() const { return qsaBuilder; }
  std::shared_ptr<QrxBinBuilder> const& getQrxBinBuilder() const { return qrxBinBuilder; }

 private:
  std::shared_ptr<ProfileAnalyzerSystemDiagramSerializable::outerContainer> root;
  std::shared_ptr<QsaBuilder> qsaBuilder;
  std::shared_ptr<QrxBinBuilder> qrxBinBuilder;
};

}  // namespace IPA

#endif  // DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAMBUILDER_H_
