// Writes a run-time data tree back out as text, in the shape of the file it was read from.
#ifndef RTD_RTDTESTVISITOR_H_
#define RTD_RTDTESTVISITOR_H_

#include <ostream>

#include "rtd/RtdTreeVisitor.h"
#include "service/Export.h"

namespace IPA {

struct RtdTree;

// Lets a test, or someone looking at a build, compare what the reader made of a file with what
// the file says. Nothing in the library uses it; it is exported so that code outside the library
// can. Like every visitor it is a stack object used for one walk.
//
// The output mirrors the file's shape rather than being a JSON document of its own: every entry
// of a list is written as an object under one and the same key ("mem_data", "ip_data",
// "connection"), so keys repeat, and a value is written between double quotes exactly as it
// stands, without escaping, so a value holding a double quote or a backslash leaves the text
// invalid JSON. That way the text shows the values byte for byte as the reader kept them. The
// clock lists of the IP entries are not written. There is no indentation; every line ends with
// "\n".
class QV_EXPORT RtdTestVisitor final : public RtdTreeVisitor {
 public:
  // `out` is not owned and must outlive the visitor.
  explicit RtdTestVisitor(std::ostream& out);

  // Writes the whole tree to the stream. "m_count" is written as the number of entries the
  // section's list holds, not as the text of the file's count.
  //
  // The caller must pass a tree with all four parts: the reader leaves a section null when its
  // "m_count" is zero or unreadable, and such a tree has no dump. The walk does not skip a
  // missing part; instead every part (and the list of each section) is checked before anything
  // is written, and a missing one throws std::invalid_argument naming it, with the stream left
  // untouched.
  void visit(RtdTree& tree) override;

 private:
  std::ostream& out;
};

}  // namespace IPA

#endif  // RTD_RTDTESTVISITOR_H_
