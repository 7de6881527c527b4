#include "host/qd/qdrepo/AxiBusIntf.h"

#include <cctype>
#include <stdexcept>

namespace qd {
namespace {

// The value of a text that is wholly a decimal integer (a sign allowed), else 0.
int wholeInteger(std::string const& text) {
  std::size_t start = (!text.empty() && (text[0] == '-' || text[0] == '+')) ? 1 : 0;
  if (start == text.size()) return 0;
  for (std::size_t i = start; i < text.size(); ++i) {
    if (std::isdigit(static_cast<unsigned char>(text[i])) == 0) return 0;
  }
  try {
    return std::stoi(text);
  } catch (std::out_of_range const&) {
    return 0;
  }
}

}  // namespace

AxiBusIntf::AxiBusIntf(boost::property_tree::ptree const& element,
                       std::shared_ptr<ClockIntf> clockOfBus)
    : BusIntf(element),
      clock(std::move(clockOfBus)),
      dataWidth(wholeInteger(optionalAttribute(element, "qd:dataWidth"))),
      memport(optionalAttribute(element, "qd:memport")),
      slr(optionalAttribute(element, "qd:slr")) {}

}  // namespace qd
