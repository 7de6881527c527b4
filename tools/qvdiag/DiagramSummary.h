// A one-screen account of a stored diagram, for the end of qvdiag build.
#ifndef TOOLS_QVDIAG_DIAGRAMSUMMARY_H_
#define TOOLS_QVDIAG_DIAGRAMSUMMARY_H_

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace ProfileAnalyzerSystemDiagramSerializable {
class outerContainer;
}

namespace qvdiag {

// What a person checks first in a diagram: which platform, how many memories (and how many in
// use), kernels, compute units, connections, and which design states have reported resources.
class DiagramSummary {
 public:
  explicit DiagramSummary(ProfileAnalyzerSystemDiagramSerializable::outerContainer const& diagram);

  // Reads the stored diagram at `path` (its JSON form). Throws std::runtime_error naming the
  // path when the file cannot be read or is not a diagram.
  static DiagramSummary fromFile(std::string const& path);

  std::string platform;  // qsa.name, else the build's platform name
  std::size_t clocks = 0;
  std::size_t memories = 0;
  std::size_t memoriesInUse = 0;  // used "yes"
  std::size_t kernels = 0;
  // One line per kernel of every user region, in the diagram's order: its name, its clocks with
  // the frequency they were compiled for, and its synthesis estimate.
  struct KernelLine {
    std::string name;
    std::string clocks;    // "ap_clk 300.00 MHz, ap_clk_2 500.00 MHz", or "no clock"
    std::string estimate;  // "LUT 2490 REG 3842 BRAM 2 URAM 0 DSP 0", or "no estimate"
  };
  std::vector<KernelLine> kernelLines;
  std::size_t computeUnits = 0;
  std::size_t connections = 0;
  // "Synthesized", "Fully Placed", "Routed" as far as any compute unit has them, in that order.
  std::vector<std::string> statesReported;

  // The lines of the summary, each "  <what><padding><value>", ending in a line break.
  void print(std::ostream& out) const;
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_DIAGRAMSUMMARY_H_
