// The interface through which the library walks a run-time data tree.
#ifndef RTD_RTDTREEVISITOR_H_
#define RTD_RTDTREEVISITOR_H_

namespace IPA {

struct RtdTree;

// A visitor is a stack object, used for one walk. The tree has no accept operation: the caller
// hands the tree to visit itself.
class RtdTreeVisitor {
 public:
  // Walks `tree`, which the caller owns and which outlives the call. The tree is passed as a
  // mutable reference but no visitor changes it.
  virtual void visit(RtdTree& tree) = 0;

 protected:
  // Visitors are never deleted through this interface, so the destructor need not be virtual;
  // protected, so that nobody can try.
  ~RtdTreeVisitor() = default;
};

}  // namespace IPA

#endif  // RTD_RTDTREEVISITOR_H_
