// What one implementation stage reported for one compute unit.
#ifndef RESOURCES_ACTUALRESOURCE_H_
#define RESOURCES_ACTUALRESOURCE_H_

#include <string>

namespace IPA {

// Counts stay text from the report to the stored diagram; a value the report lacks is empty.
struct ActualResource {
  std::string state;  // design state word: "Synthesized", "Fully Placed", "Routed", ...
  std::string lut;
  std::string reg;
  std::string bram;
  std::string uram;
  std::string dsp;
};

inline bool operator==(ActualResource const& a, ActualResource const& b) {
  return a.state == b.state && a.lut == b.lut && a.reg == b.reg && a.bram == b.bram &&
         a.uram == b.uram && a.dsp == b.dsp;
}

}  // namespace IPA

#endif  // RESOURCES_ACTUALRESOURCE_H_
