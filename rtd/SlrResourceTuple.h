// The resources of the user region that one SLR offers, as text.
#ifndef RTD_SLRRESOURCETUPLE_H_
#define RTD_SLRRESOURCETUPLE_H_

#include <string>

namespace IPA {

// A plain record. Each count is the decimal text that goes into the diagram's `bySlr` entry; a
// resource the platform does not list for the SLR stays empty.
struct SlrResourceTuple {
  std::string bram;
  std::string uram;
  std::string dsp;
  std::string lut;
  std::string reg;
};

inline bool operator==(SlrResourceTuple const& a, SlrResourceTuple const& b) {
  return a.bram == b.bram && a.uram == b.uram && a.dsp == b.dsp && a.lut == b.lut && a.reg == b.reg;
}

}  // namespace IPA

#endif  // RTD_SLRRESOURCETUPLE_H_
