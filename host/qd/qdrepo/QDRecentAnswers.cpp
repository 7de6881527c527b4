#include "host/qd/qdrepo/QDRecentAnswers.h"

#include <functional>

namespace qd {

QDRecentAnswers::QDRecentAnswers(std::size_t slots) : slots_(slots == 0 ? 1 : slots) {}

QDRecentAnswers::~QDRecentAnswers() {
  for (Slot& slot : slots_) xmlXPathFreeObject(slot.result);
}

std::size_t QDRecentAnswers::slotOf(std::string const& expression) const {
  return std::hash<std::string>()(expression) % slots_.size();
}

xmlXPathObjectPtr QDRecentAnswers::find(std::string const& expression) const {
  Slot const& slot = slots_[slotOf(expression)];
  if (slot.result == nullptr || slot.expression != expression) return nullptr;
  return xmlXPathObjectCopy(slot.result);
}

void QDRecentAnswers::keep(std::string const& expression, xmlXPathObjectPtr result) {
  xmlXPathObjectPtr const copy = xmlXPathObjectCopy(result);
  if (copy == nullptr) return;
  Slot& slot = slots_[slotOf(expression)];
  xmlXPathFreeObject(slot.result);
  slot.result = copy;
  slot.expression = expression;
}

}  // namespace qd
