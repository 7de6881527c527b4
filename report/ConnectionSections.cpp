#include "report/ConnectionSections.h"

#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "diagram/TextConversions.h"
#include "report/FlowReportFrame.h"

namespace IPA {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

namespace {

// The node types that the report knows. Any other, "memory" above all, keeps a connection out.
char const* const kComputeUnit = "compute_unit";
char const* const kIp = "ip";
char const* const kIpClock = "ip_clock";
char const* const kBoardClock = "bd_clock";
char const* const kIpReset = "ip_reset";

// A clock reference whose clock the linker left open.
char const* const kUnassignedClockId = "not_specified";

// The connections of all user regions, in order, by the section that reports them.
struct SortedConnections {
  std::vector<pb::Connectivity> interfaceConnections;
  std::vector<pb::Connectivity> clockConnections;
  std::vector<pb::Connectivity> resetConnections;
};

// The three groups of section 2, each a list of two-line text blocks.
struct InterfaceGroups {
  std::vector<std::string> computeUnitToComputeUnit;
  std::vector<std::string> ipToComputeUnit;
  std::vector<std::string> computeUnitToIp;
};

// The compute units of the diagram's stored tree, by `id` and by `name`, each list in the order of
// the tree (user regions, then compute units). A large design has a clock and a reset connection
// for every compute unit; asking the diagram's own lookups for each would go through all compute
// units every time. The two answers below walk only the units of the key, with the same loop as
// ProfileAnalyzerSystemDiagram::getComputeUnitClockInfo and getComputeUnitClockPortName (and the
// same per-unit steps), so they give the same results, "first match" and "go on to the next unit"
// rules included. The index borrows the tree, which the report only reads.
class ComputeUnitIndex {
 public:
  explicit ComputeUnitIndex(pb::qrxBin const& stored) {
    for (auto const& region : stored.user_regions()) {
      for (auto const& unit : region.compute_units()) {
        unitsById_[unit.id()].push_back(&unit);
        unitsByName_[unit.name()].push_back(&unit);
      }
    }
  }

  // As ProfileAnalyzerSystemDiagram::getComputeUnitClockInfo.
  void clockInfo(std::string const& computeUnitId, std::string const& clockRefName,
                 std::string& clockId, std::string& requested, std::string& achieved) const {
    auto const found = unitsById_.find(computeUnitId);
    if (found == unitsById_.end()) return;
    for (pb::computeUnit const* unit : found->second) {
      ProfileAnalyzerSystemDiagram::clockRefInfo(*unit, clockRefName, clockId, requested, achieved);
      if (!clockId.empty()) return;
    }
  }

  // As ProfileAnalyzerSystemDiagram::getComputeUnitClockPortName.
  std::string clockPortName(std::string const& computeUnitName) const {
    auto const found = unitsByName_.find(computeUnitName);
    if (found == unitsByName_.end()) return "";
    for (pb::computeUnit const* unit : found->second) {
      std::string name;
      if (ProfileAnalyzerSystemDiagram::requestedClockPortName(*unit, name)) return name;
    }
    return "";
  }

 private:
  using Units = std::vector<pb::computeUnit const*>;
  std::unordered_map<std::string, Units> unitsById_;
  std::unordered_map<std::string, Units> unitsByName_;
};

std::string pinOf(pb::Node const& node) { return node.instance() + "/" + node.pin(); }

SortedConnections sortConnections(pb::qrxBin const& binary) {
  SortedConnections sorted;
  for (auto const& region : binary.user_regions()) {
    for (auto const& connection : region.connectivity()) {
      std::string const& sourceType = connection.source().type();
      std::string const& destinationType = connection.destination().type();
      if (sourceType == kIpReset) {
        sorted.resetConnections.push_back(connection);
      } else if (sourceType == kBoardClock || sourceType == kIpClock) {
        sorted.clockConnections.push_back(connection);
      } else if (sourceType == kIp) {
        sorted.interfaceConnections.push_back(connection);
      } else if (sourceType == kComputeUnit &&
                 (destinationType == kComputeUnit || destinationType == kIp)) {
        sorted.interfaceConnections.push_back(connection);
      }
    }
  }
  return sorted;
}

InterfaceGroups groupInterfaceConnections(std::vector<pb::Connectivity> const& connections) {
  InterfaceGroups groups;
  std::set<std::string> seenComputeUnitLinks;
  for (auto const& connection : connections) {
    pb::Node const& source = connection.source();
    pb::Node const& destination = connection.destination();
    std::string const block =
        "Source Pin: " + pinOf(source) + "\n" + "Destination Pin: " + pinOf(destination) + "\n";

    if (source.type() == kComputeUnit && destination.type() == kComputeUnit) {
      // The import stores these links before their pins are known; they stay out of the report
      // until an update has named all four ends.
      if (source.instance().empty() || source.pin().empty() || destination.instance().empty() ||
          destination.pin().empty()) {
        continue;
      }
      // A link stored more than once is told once; only this group drops repeats.
      std::string const key = pinOf(source) + "/" + pinOf(destination);
      if (!seenComputeUnitLinks.insert(key).second) continue;
      groups.computeUnitToComputeUnit.push_back(block);
    } else if (source.type() == kComputeUnit && destination.type() == kIp) {
      groups.computeUnitToIp.push_back(block);
    } else if (source.type() == kIp && destination.type() == kComputeUnit) {
      groups.ipToComputeUnit.push_back(block);
    }
    // An "ip" source with any other destination is not reported.
  }
  return groups;
}

void writeGroup(std::ostream& out, std::string const& title,
                std::vector<std::string> const& blocks) {
  if (blocks.empty()) return;
  out << title << std::endl;
  out << std::string(title.size(), '-') << std::endl;
  for (auto const& block : blocks) out << block << std::endl;
}

void writeInterfaceConnections(std::ostream& out,
                               std::vector<pb::Connectivity> const& connections) {
  writeSectionTitle(out, "2. Interface Connections");
  InterfaceGroups const groups = groupInterfaceConnections(connections);
  writeGroup(out, "Compute Unit to Compute Unit", groups.computeUnitToComputeUnit);
  writeGroup(out, "IP to Compute Unit", groups.ipToComputeUnit);
  writeGroup(out, "Compute Unit to IP", groups.computeUnitToIp);
}

void writeFrequencyLine(std::ostream& out, char const* label, std::string const& frequency) {
  if (frequency.empty()) return;
  out << label << frequency << " MHz" << std::endl;
}

// The clock lines of a compute unit end: its clock id and the frequencies that are known. The
// compute unit's own requested and achieved frequencies win over the platform clock's; an empty
// text (a frequency of 0 included) lets the platform's value step in.
void writeComputeUnitClock(std::ostream& out, ProfileAnalyzerSystemDiagram const& diagram,
                           ComputeUnitIndex const& units, pb::Node const& destination) {
  std::string clockId;
  std::string unitRequested;
  std::string unitAchieved;
  units.clockInfo(destination.id(), destination.pin(), clockId, unitRequested, unitAchieved);
  if (clockId.empty() || clockId == kUnassignedClockId) return;

  std::string platformFrequency;
  std::string platformRequested;
  std::string platformAchieved;
  // Throws for a clock id that is no number, before anything of this clock is written.
  diagram.getQsaClockFrequencies(clockId, platformFrequency, platformRequested, platformAchieved);
  out << "Clock ID: " << clockId << std::endl;
  writeFrequencyLine(out, "Platform Clock Frequency: ", platformFrequency);
  writeFrequencyLine(out, "Requested Kernel Clock Frequency: ",
                     unitRequested.empty() ? platformRequested : unitRequested);
  writeFrequencyLine(out, "Achieved Kernel Clock Frequency: ",
                     unitAchieved.empty() ? platformAchieved : unitAchieved);
}

void writeClockConnections(std::ostream& out, ProfileAnalyzerSystemDiagram const& diagram,
                           ComputeUnitIndex const& units,
                           std::vector<pb::Connectivity> const& connections) {
  writeSectionTitle(out, "3. Clock Connections");
  for (auto const& connection : connections) {
    pb::Node const& source = connection.source();
    pb::Node const& destination = connection.destination();
    if (destination.type() == kComputeUnit) {
      out << "Compute Unit: " << destination.instance() << std::endl;
      writeComputeUnitClock(out, diagram, units, destination);
    } else if (destination.type() == kIpClock) {
      out << "Clock Instance: " << destination.instance() << std::endl;
    }
    // A board clock is a port of the platform; every other clock source is a pin of an IP.
    out << "Source " << (source.type() == kBoardClock ? "Port" : "Pin") << ": " << pinOf(source)
        << std::endl;
    out << "Destination Pin: " << pinOf(destination) << std::endl;
    out << std::endl;
  }
}

void writeResetConnections(std::ostream& out, ComputeUnitIndex const& units,
                           std::vector<pb::Connectivity> const& connections) {
  writeSectionTitle(out, "4. Reset Connections");
  for (auto const& connection : connections) {
    pb::Node const& source = connection.source();
    pb::Node const& destination = connection.destination();
    // Reset destinations are labelled as compute units whatever their type.
    out << "Compute Unit: " << destination.instance() << std::endl;
    out << "Source Pin: " << pinOf(source) << std::endl;
    out << "Destination Pin: " << pinOf(destination) << std::endl;
    std::string const clockPin = units.clockPortName(destination.instance());
    if (!clockPin.empty()) {
      out << "Associated Clock Pin: " << destination.instance() << "/" << clockPin << std::endl;
    }
    out << std::endl;
  }
}

}  // namespace

void writeConnectionSections(ProfileAnalyzerSystemDiagram const& diagram, pb::qrxBin const& binary,
                             std::ostream& out) {
  SortedConnections const sorted = sortConnections(binary);
  // The lookups answer from the diagram's own tree, which need not be `binary`.
  ComputeUnitIndex const units(diagram.getContainer()->system_diagram_metadata().qrxbin());
  writeInterfaceConnections(out, sorted.interfaceConnections);
  writeClockConnections(out, diagram, units, sorted.clockConnections);
  writeResetConnections(out, units, sorted.resetConnections);
}

}  // namespace IPA
