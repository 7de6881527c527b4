#include "report/FlowReportFrame.h"

#include "platform/hut/HUTEnv.h"

namespace IPA {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

namespace {

constexpr int kHeadingBorderLength = 68;

// `label` with a plural "s" from two entries on, then ": " and the entries joined by ", ". Fewer
// than two entries, none included, keep the singular label.
template <class Entries, class NameOf>
void writeList(std::ostream& out, char const* label, Entries const& entries, NameOf nameOf) {
  out << label << (entries.size() < 2 ? ": " : "s: ");
  char const* separator = "";
  for (auto const& entry : entries) {
    out << separator << nameOf(entry);
    separator = ", ";
  }
  out << std::endl;
}

void writeComputeUnit(std::ostream& out, pb::computeUnit const& unit) {
  out << "Compute Unit: " << unit.name() << std::endl;
  out << "Kernel: " << unit.kernel_name() << std::endl;
  if (!unit.base_address().empty()) {
    // Printed as stored: the address text is whatever the linker wrote, hex or not.
    out << "Base Address: " << unit.base_address() << std::endl;
  }
  writeList(out, "Clock Pin", unit.clock_refs(),
            [](pb::clockRef const& clock) -> std::string const& { return clock.name(); });
  writeList(out, "Reset Pin", unit.reset_pins(),
            [](std::string const& pin) -> std::string const& { return pin; });
  out << std::endl;
}

}  // namespace

void writeHeading(std::ostream& out) {
  std::string const border(kHeadingBorderLength, '=');
  std::string stamp;
  HUTEnv::getTimeStamp(stamp);
  out << border << std::endl;
  out << "Version:    " << HUTEnv::getFullProductStr() << std::endl;
  out << "Copyright:  " << HUTEnv::getCopyRight() << std::endl;
  out << "Created:    " << stamp << std::endl;
  out << border << std::endl;
  out << std::endl;
}

void writeSectionTitle(std::ostream& out, std::string const& title) {
  out << title << std::endl;
  out << std::string(title.size(), '=') << std::endl;
  out << std::endl;
}

void writeKernelAndComputeUnitSection(pb::qrxBin const& binary, std::ostream& out) {
  writeSectionTitle(out, "1. Kernel and compute unit information");
  for (auto const& region : binary.user_regions()) {
    for (auto const& unit : region.compute_units()) writeComputeUnit(out, unit);
  }
}

}  // namespace IPA
