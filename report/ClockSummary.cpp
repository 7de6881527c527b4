#include "report/ClockSummary.h"

#include <cctype>
#include <string>
#include <vector>

#include "diagram/TextConversions.h"
#include "report/FlowReportFrame.h"
#include "report/ReportTable.h"

namespace IPA {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

namespace {

// The kernel name that marks a compute unit as an AI Engine one. Only this literal decides the
// table.
char const* const kAiEngineKernelName = "ai_engine";

// The mark for a compile frequency that can't be found or isn't known.
char const* const kNotAvailable = "N/A";

using ClockRefs = google::protobuf::RepeatedPtrField<pb::clockRef>;

// The clocks at compile time of `unit`: those of the first kernel of `region` with the unit's
// kernel name; none without such a kernel.
ClockRefs kernelClocksOf(pb::userRegion const& region, pb::computeUnit const& unit) {
  for (auto const& kernel : region.kernels()) {
    if (kernel.name() == unit.kernel_name()) return kernel.clock_refs();
  }
  return {};
}

// Upper case byte by byte, as std::toupper gives it in the default locale, so bytes above 127
// stay as they are.
std::string toUpper(std::string text) {
  for (char& c : text) c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
  return text;
}

void writeTable(std::ostream& out, char const* heading, ReportTable const& table) {
  if (!table.hasBody()) return;
  out << heading << std::endl;
  table.write(out);
}

}  // namespace

void writeClockSummary(pb::qrxBin const& binary, std::ofstream& out) {
  writeClockSummary(binary, static_cast<std::ostream&>(out));
}

void writeClockSummary(pb::qrxBin const& binary, std::ostream& out) {
  writeSectionTitle(out, "5. Clock Summary");
  writeAieClockSummary(binary, out);
  writePlClockSummary(binary, out);
}

void writeAieClockSummary(pb::qrxBin const& binary, std::ofstream& out) {
  writeAieClockSummary(binary, static_cast<std::ostream&>(out));
}

void writeAieClockSummary(pb::qrxBin const& binary, std::ostream& out) {
  ReportTable table({"Instance", "Kernel", "PLIO", "Annotated Arg", "Clock Port", "Compile (MHz)",
                     "Link (MHz)"});
  for (auto const& region : binary.user_regions()) {
    for (auto const& unit : region.compute_units()) {
      if (unit.kernel_name() != kAiEngineKernelName) continue;
      ClockRefs const kernelClocks = kernelClocksOf(region, unit);
      for (auto const& clock : unit.clock_refs()) {
        std::string const link = doubleToString(clock.requested_frequency());
        if (link.empty()) continue;
        for (auto const& plio : splitKeepingEmpty(clock.plio(), ':')) {
          std::string const wanted = toUpper(plio);
          std::string compile;
          std::string annotated;
          for (auto const& kernelClock : kernelClocks) {
            if (toUpper(kernelClock.name()) != wanted) continue;
            compile = doubleToString(kernelClock.requested_frequency());
            annotated = kernelClock.annotated_arg();
            break;
          }
          // Only the compile column marks a missing value; an annotated argument stays blank.
          if (compile.empty()) compile = kNotAvailable;
          table.addRow({unit.name(), unit.kernel_name(), plio, annotated, clock.name(), compile,
                        link});
        }
      }
    }
  }
  writeTable(out, "AIE", table);
}

void writePlClockSummary(pb::qrxBin const& binary, std::ofstream& out) {
  writePlClockSummary(binary, static_cast<std::ostream&>(out));
}

void writePlClockSummary(pb::qrxBin const& binary, std::ostream& out) {
  ReportTable table({"Instance", "Kernel", "Clock Port", "Compile (MHz)", "Link (MHz)"});
  for (auto const& region : binary.user_regions()) {
    for (auto const& unit : region.compute_units()) {
      if (unit.kernel_name() == kAiEngineKernelName) continue;
      ClockRefs const kernelClocks = kernelClocksOf(region, unit);
      for (auto const& clock : unit.clock_refs()) {
        std::string const link = doubleToString(clock.requested_frequency());
        if (link.empty()) continue;
        std::string compile;
        for (auto const& kernelClock : kernelClocks) {
          if (kernelClock.name() != clock.name()) continue;
          // The first port of that name decides, even when its frequency isn't known.
          compile = doubleToString(kernelClock.requested_frequency());
          break;
        }
        if (compile.empty()) compile = kNotAvailable;
        table.addRow({unit.name(), unit.kernel_name(), clock.name(), compile, link});
      }
    }
  }
  writeTable(out, "PL", table);
}

}  // namespace IPA
