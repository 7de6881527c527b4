// Carries the actual resources of an actual resources document into a diagram's compute units.
#ifndef RESOURCES_ACTUALRESOURCESCOMPUTEUNITVISITOR_H_
#define RESOURCES_ACTUALRESOURCESCOMPUTEUNITVISITOR_H_

#include "resources/ActualResourceTreeVisitor.h"
#include "service/Export.h"

namespace IPA {

class ActualResourcesTree;
class SystemDiagramInterface;

// Hands one ActualResourceCollection per compute unit object of the document to
// `diagram->addComputeUnitActualResource`. Holds nothing between two calls of visit, and has no
// lock: if `diagram` is a StatefulSystemDiagram each call takes its lock on its own, so other
// requests may come between two compute units.
class QV_EXPORT ActualResourcesComputeUnitVisitor : public ActualResourceTreeVisitor {
 public:
  // `diagram` is not owned, must not be null and must outlive the visitor.
  explicit ActualResourcesComputeUnitVisitor(SystemDiagramInterface* diagram);

  // Walks the document in file order, remembering the last top-level "design_state" seen (empty
  // before the first), so it counts only where it stands before "kernels". For every entry of
  // "kernels"[]."compute_units" it makes one call at the end of the entry, with the last
  // "cu_name" and a collection holding, under the current state, the last "actual_resources"
  // ("LUT", "REG", "BRAM", "URAM", "DSP"; a missing count stays empty). The call is made also when
  // the name or the collection is empty; the diagram decides what that means. Keys not named
  // here are skipped at every level, and the version is not checked. What the diagram throws
  // passes through, and the compute units handed over before stay handed over.
  void visit(ActualResourcesTree& tree) override;

 private:
  SystemDiagramInterface* diagram;
};

}  // namespace IPA

#endif  // RESOURCES_ACTUALRESOURCESCOMPUTEUNITVISITOR_H_
