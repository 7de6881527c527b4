// Hardware function queries.
#include <sstream>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {

std::string getQdHwFcnStrAttr(QDSRepo& repo, std::string const& function,
                              std::string const& attribute, std::string const& caller) {
  if (!repo.isQdHwFcn(function)) {
    Log(logINTERNAL, 1003) << "Function '" << function << "' is not a hardware function";
    return "";
  }
  std::ostringstream expression;
  expression << "/qd:repository/qd:fcnMap[@qd:fcnName='" << function << "'][1]/@" << attribute;
  return repo.stringQuery(expression.str(), caller);
}

bool QDSRepo::isQdHwFcn(std::string const& function) {
  std::ostringstream expression;
  expression << "boolean(/qd:repository/qd:fcnMap[@qd:fcnName='" << function << "'])";
  return booleanQuery(expression.str(), "isQdHwFcn");
}

int QDSRepo::getNumQdHwFcns() {
  return intQuery("count(/qd:repository/qd:fcnMap)", "getNumQdHwFcns");
}

std::string QDSRepo::getIthQdHwFcn(int i) {
  std::ostringstream expression;
  expression << "/qd:repository/qd:fcnMap[" << i + 1 << "]/@qd:fcnName";
  return stringQuery(expression.str(), "getIthQdHwFcn");
}

std::string QDSRepo::getQdHwFcnQdComponentRef(std::string const& function) {
  return getQdHwFcnStrAttr(*this, function, "qd:componentRef", "getQdHwFcnQdComponentRef");
}

}  // namespace qd
