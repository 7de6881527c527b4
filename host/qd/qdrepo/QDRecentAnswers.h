// The results of the expressions last evaluated on one repository document, by their text.
#ifndef HOST_QD_QDREPO_QDRECENTANSWERS_H_
#define HOST_QD_QDREPO_QDRECENTANSWERS_H_

#include <libxml/xpath.h>

#include <cstddef>
#include <string>
#include <vector>

namespace qd {

// A fixed number of slots, each holding one expression and a copy of its result; an expression
// always goes to the same slot (by a hash of its text), and a new one there replaces the old.
// The repository asks the same few expressions over and over while it walks one function (is
// it a function, how many arguments has it), so the last few thousand catch nearly every
// repetition in a bounded amount of memory.
//
// A result may be kept only while the document, its namespace bindings and the rest of the
// XPath context stay as they were when it was evaluated; the owner clears the slots when they
// change. Node sets kept point into the document. Not thread-safe.
class QDRecentAnswers {
 public:
  explicit QDRecentAnswers(std::size_t slots);
  ~QDRecentAnswers();
  QDRecentAnswers(QDRecentAnswers const&) = delete;
  QDRecentAnswers& operator=(QDRecentAnswers const&) = delete;

  // A copy of the result kept for `expression`, which the caller frees; null when none is.
  xmlXPathObjectPtr find(std::string const& expression) const;
  // Keeps a copy of `result` (left to the caller) as the answer to `expression`.
  void keep(std::string const& expression, xmlXPathObjectPtr result);

 private:
  struct Slot {
    std::string expression;
    xmlXPathObjectPtr result = nullptr;
  };

  std::size_t slotOf(std::string const& expression) const;

  std::vector<Slot> slots_;
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDRECENTANSWERS_H_
