#include "tools/qvdiag/DiagramSummary.h"

#include <google/protobuf/util/json_util.h>

#include <cstdio>
#include <fstream>
#include <iomanip>
#include <set>
#include <sstream>
#include <stdexcept>

#include "proto/system_diagram.pb.h"

namespace qvdiag {
namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

void line(std::ostream& out, char const* what, std::string const& value) {
  out << "  " << std::left << std::setw(17) << what << value << '\n';
}

std::string megahertz(double frequency) {
  char text[64];
  std::snprintf(text, sizeof text, "%.2f MHz", frequency);
  return text;
}

DiagramSummary::KernelLine kernelLine(pb::kernel const& kernel) {
  DiagramSummary::KernelLine line{kernel.name(), "", ""};
  for (pb::clockRef const& clock : kernel.clock_refs()) {
    if (!line.clocks.empty()) line.clocks += ", ";
    line.clocks += clock.name() + " " + megahertz(clock.requested_frequency());
  }
  if (line.clocks.empty()) line.clocks = "no clock";
  if (!kernel.has_estimated_resources()) {
    line.estimate = "no estimate";
    return line;
  }
  pb::estimatedResources const& estimate = kernel.estimated_resources();
  auto const count = [](std::string const& value) { return value.empty() ? "-" : value; };
  line.estimate = "LUT " + count(estimate.lut()) + " REG " + count(estimate.reg()) + " BRAM " +
                  count(estimate.bram()) + " URAM " + count(estimate.uram()) + " DSP " +
                  count(estimate.dsp());
  return line;
}

}  // namespace

DiagramSummary::DiagramSummary(pb::outerContainer const& diagram) {
  pb::systemDiagramMetaData const& root = diagram.system_diagram_metadata();
  platform = root.qsa().name().empty() ? root.qrxbin().platform().name() : root.qsa().name();
  clocks = static_cast<std::size_t>(root.qsa().clocks_size());
  memories = static_cast<std::size_t>(root.qsa().device_topology_size());
  for (pb::deviceTopology const& memory : root.qsa().device_topology()) {
    if (memory.used() == "yes") ++memoriesInUse;
  }
  std::set<int> states;
  for (pb::userRegion const& region : root.qrxbin().user_regions()) {
    kernels += static_cast<std::size_t>(region.kernels_size());
    for (pb::kernel const& kernel : region.kernels()) kernelLines.push_back(kernelLine(kernel));
    computeUnits += static_cast<std::size_t>(region.compute_units_size());
    connections += static_cast<std::size_t>(region.connectivity_size());
    for (pb::computeUnit const& unit : region.compute_units()) {
      for (pb::actualResources const& entry : unit.actual_resources()) {
        states.insert(entry.design_state());
      }
    }
  }
  // The words of the resource reports, in the order of an implementation run.
  static std::pair<pb::DesignState, char const*> const kWords[] = {
      {pb::DESIGN_STATE_SYNTHESIZED, "Synthesized"},
      {pb::DESIGN_STATE_FULLY_PLACED, "Fully Placed"},
      {pb::DESIGN_STATE_ROUTED, "Routed"},
  };
  for (auto const& [state, word] : kWords) {
    if (states.count(state) != 0) statesReported.emplace_back(word);
  }
}

DiagramSummary DiagramSummary::fromFile(std::string const& path) {
  std::ifstream in(path);
  if (!in) throw std::runtime_error("cannot read the diagram '" + path + "'");
  std::stringstream text;
  text << in.rdbuf();
  pb::outerContainer diagram;
  google::protobuf::util::JsonParseOptions options;
  options.ignore_unknown_fields = true;
  auto const status = google::protobuf::util::JsonStringToMessage(text.str(), &diagram, options);
  if (!status.ok()) {
    throw std::runtime_error("'" + path +
                             "' is not a stored diagram: " + std::string(status.message()));
  }
  return DiagramSummary(diagram);
}

void DiagramSummary::print(std::ostream& out) const {
  line(out, "platform",
       (platform.empty() ? std::string("(none)") : platform) + " (" + std::to_string(clocks) +
           " clocks)");
  line(out, "memories",
       std::to_string(memories) + " (" + std::to_string(memoriesInUse) + " in use)");
  line(out, "kernels", std::to_string(kernels));
  for (KernelLine const& kernel : kernelLines) {
    out << "    " << std::left << std::setw(14) << kernel.name << ' ' << kernel.clocks << "; "
        << kernel.estimate << '\n';
  }
  line(out, "compute units", std::to_string(computeUnits));
  line(out, "connections", std::to_string(connections));
  std::string states;
  for (std::string const& word : statesReported) {
    states += (states.empty() ? "" : ", ") + word;
  }
  line(out, "states reported", states.empty() ? "none" : states);
}

}  // namespace qvdiag
