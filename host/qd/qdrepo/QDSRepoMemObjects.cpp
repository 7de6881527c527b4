// Memory object and SP tag queries.
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {
namespace {

std::string memObject(std::string const& platform, std::string const& object) {
  return "/qd:repository/qd:component[@qd:name='" + platform +
         "' and @qd:type='platform'][1]/qd:busInterface[@qd:memport and @qd:name='" + object + "']";
}

// The attribute, checked against `field` of the platform's cached AXI interface of that name.
std::string checkedMemObjectAttribute(QDSRepo& repo, std::string const& platform,
                                      std::string const& object, std::string const& attribute,
                                      std::string const& query, std::string AxiBusIntf::*field) {
  std::string const answer = getMemObjectStringAttr(repo, platform, object, attribute);
  if (repo.platformComponent) {
    auto const& axi = repo.platformComponent->axiInterfaces;
    auto const found = axi.find(object);
    QDREPO_VERIFY(query, answer, found == axi.end() ? std::string() : (*found->second).*field,
                  platform + "/" + object);
  }
  return answer;
}

}  // namespace

std::string getMemObjectStringAttr(QDSRepo& repo, std::string const& platform,
                                   std::string const& object, std::string const& attribute) {
  std::string const expression = memObject(platform, object) + "/@" + attribute;
  if (!repo.booleanQuery("boolean(" + expression + ")", " getMemObjectStringAttr ")) return "";
  return repo.stringQuery(expression, " getMemObjectStringAttr ");
}

std::string QDSRepo::getMemObjectInstRef(std::string const& platform, std::string const& object) {
  return checkedMemObjectAttribute(*this, platform, object, "qd:instanceRef", "getMemObjectInstRef",
                                   &AxiBusIntf::instanceRef);
}

std::string QDSRepo::getMemObjectSlr(std::string const& platform, std::string const& object) {
  return checkedMemObjectAttribute(*this, platform, object, "qd:slr", "getMemObjectSlr",
                                   &AxiBusIntf::slr);
}

std::string QDSRepo::getMemObjectMemPort(std::string const& platform, std::string const& object) {
  return checkedMemObjectAttribute(*this, platform, object, "qd:memport", "getMemObjectMemPort",
                                   &AxiBusIntf::memport);
}

}  // namespace qd
