// The interface through which the import turns gathered streaming halves into the diagram.
#ifndef RTD_KERNELCONNECTIONVISITOR_H_
#define RTD_KERNELCONNECTIONVISITOR_H_

namespace IPA {

class KernelConnections;

// A visitor is a stack object, used for one walk. The collection has no accept operation: the
// caller hands it to visit itself.
class KernelConnectionVisitor {
 public:
  // Walks `connections`, which the caller owns and which outlives the call.
  virtual void visit(const KernelConnections& connections) const = 0;

 protected:
  // Visitors are never deleted through this interface, so the destructor need not be virtual;
  // protected, so that nobody can try.
  ~KernelConnectionVisitor() = default;
};

}  // namespace IPA

#endif  // RTD_KERNELCONNECTIONVISITOR_H_
