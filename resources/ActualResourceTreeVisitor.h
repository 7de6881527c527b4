// The interface through which an actual resources document is walked.
#ifndef RESOURCES_ACTUALRESOURCETREEVISITOR_H_
#define RESOURCES_ACTUALRESOURCETREEVISITOR_H_

#include "service/Export.h"

namespace IPA {

class ActualResourcesTree;

// The tree has no accept operation: the caller hands the tree to visit itself. Unlike the
// visitors of the run-time data tree, these are derived from and owned by code outside the
// library, which may hold and delete them through this base; hence the public virtual
// destructor.
class QV_EXPORT ActualResourceTreeVisitor {
 public:
  virtual ~ActualResourceTreeVisitor() = default;

  // Walks `tree`, which the caller owns and which outlives the call. The tree is passed as a
  // mutable reference but no visitor of this library changes it.
  virtual void visit(ActualResourcesTree& tree) = 0;
};

}  // namespace IPA

#endif  // RESOURCES_ACTUALRESOURCETREEVISITOR_H_
