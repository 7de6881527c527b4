// Brings a diagram's addresses and memory use up to date from a later run-time data file.
#ifndef RTD_RTDTREESLRBASEADDRESSVISITOR_H_
#define RTD_RTDTREESLRBASEADDRESSVISITOR_H_

#include "diagram/SystemDiagramInterface.h"
#include "rtd/RtdTree.h"
#include "rtd/RtdTreeVisitor.h"

namespace IPA {

// After an implementation run the memories and compute units have their final addresses. This
// visitor writes them, and the memories' use and size, into a diagram through its setters; it
// adds nothing and removes nothing, and an entry the diagram does not know is passed over.
// Despite the name it never changes a memory's SLR.
//
// Refers to `diagram`, which it does not own and which must outlive it; a stack object used for
// one update.
class RtdTreeSlrBaseAddressVisitor : public RtdTreeVisitor {
 public:
  explicit RtdTreeSlrBaseAddressVisitor(SystemDiagramInterface& target) : diagram(&target) {}

  // For every memory, in file order: base address, use ("yes" only for a "m_used" of exactly
  // "1") and size, by tag. Then for every IP entry whose name has the form kernel:unit[:...]:
  // the base address of the compute units with that pair of names. Either section may be absent.
  // A setter already called stays in effect if a later one throws.
  void visit(RtdTree& tree) override;

 private:
  SystemDiagramInterface* diagram;
};

}  // namespace IPA

#endif  // RTD_RTDTREESLRBASEADDRESSVISITOR_H_
