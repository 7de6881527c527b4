#include "diagram/ProfileAnalyzerSystemDiagram.h"

#include <google/protobuf/util/json_util.h>

#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "diagram/TextConversions.h"
#include "report/ClockSummary.h"
#include "report/ConnectionSections.h"
#include "report/FlowReportFrame.h"
#include "report/UtilizationTables.h"

namespace IPA {

const std::string ProfileAnalyzerSystemDiagram::schemaMajorVersion = "2";
const std::string ProfileAnalyzerSystemDiagram::schemaMinorVersion = "0";
const std::string ProfileAnalyzerSystemDiagram::schemaPatchLevel = "0";

ProfileAnalyzerSystemDiagram::ProfileAnalyzerSystemDiagram(std::shared_ptr<Container> root)
    : container(std::move(root)) {
  if (!container) throw std::invalid_argument("ProfileAnalyzerSystemDiagram: no container");
}

void ProfileAnalyzerSystemDiagram::serializeToJson(std::ostream& out) const {
  auto* version = container->mutable_system_diagram_metadata()->mutable_schema_version();
  version->set_major(schemaMajorVersion);
  version->set_minor(schemaMinorVersion);
  version->set_patch(schemaPatchLevel);

  google::protobuf::util::JsonPrintOptions options;
  options.add_whitespace = true;
  options.always_print_primitive_fields = true;
  options.always_print_enums_as_ints = false;
  options.preserve_proto_field_names = true;
  std::string text;
  auto const status = google::protobuf::util::MessageToJsonString(*container, &text, options);
  if (!status.ok()) {
    throw std::runtime_error("Serializing failed with error: " + std::string(status.message()) +
                             ".");
  }
  out << text << "\n";
}

void ProfileAnalyzerSystemDiagram::serializeFromJson(std::istream& in) {
  // Read in large blocks: the stored form of a big design runs to tens of megabytes.
  std::string text;
  std::array<char, 1 << 16> block;
  while (in.read(block.data(), block.size()) || in.gcount() > 0) {
    text.append(block.data(), static_cast<std::size_t>(in.gcount()));
  }
  google::protobuf::util::JsonParseOptions options;
  options.ignore_unknown_fields = false;
  options.case_insensitive_enum_parsing = false;
  auto const status = google::protobuf::util::JsonStringToMessage(text, container.get(), options);
  if (!status.ok()) {
    throw std::runtime_error("Deserializing failed with error: " + std::string(status.message()) +
                             ".");
  }
}

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

namespace {

// The sections as readers see them: the default instance where a section is absent.
pb::Qsa const& qsaOf(ProfileAnalyzerSystemDiagram::Container const& root) {
  return root.system_diagram_metadata().qsa();
}
pb::qrxBin const& qrxBinOf(ProfileAnalyzerSystemDiagram::Container const& root) {
  return root.system_diagram_metadata().qrxbin();
}

// The sections as writers reach them: created empty on the way.
pb::Qsa* mutableQsa(ProfileAnalyzerSystemDiagram::Container& root) {
  return root.mutable_system_diagram_metadata()->mutable_qsa();
}
pb::qrxBin* mutableQrxBin(ProfileAnalyzerSystemDiagram::Container& root) {
  return root.mutable_system_diagram_metadata()->mutable_qrxbin();
}

bool isComputeUnit(pb::Node const& node) { return node.type() == "compute_unit"; }

// Whether some compute unit of `region` has the id `id` and the name `name`.
bool regionHasUnit(pb::userRegion const& region, std::string const& id, std::string const& name) {
  for (auto const& unit : region.compute_units()) {
    if (unit.id() == id && unit.name() == name) return true;
  }
  return false;
}

}  // namespace

pb::DesignState ProfileAnalyzerSystemDiagram::toDesignState(std::string const& word) {
  if (word == "Synthesized") return pb::DESIGN_STATE_SYNTHESIZED;
  if (word == "Fully Placed") return pb::DESIGN_STATE_FULLY_PLACED;
  if (word == "Routed") return pb::DESIGN_STATE_ROUTED;
  return pb::DESIGN_STATE_UNSET;
}

std::vector<std::string> ProfileAnalyzerSystemDiagram::computeUnitNames() {
  std::vector<std::string> names;
  for (auto const& region : qrxBinOf(*container).user_regions()) {
    for (auto const& unit : region.compute_units()) names.push_back(unit.name());
  }
  return names;
}

std::string ProfileAnalyzerSystemDiagram::kernelNameFromComputeUnitName(
    std::string const& computeUnitName) const {
  // Compute units are named "<kernel>_<n>"; the stored diagram is not asked.
  return computeUnitName.substr(0, computeUnitName.find('_'));
}

void ProfileAnalyzerSystemDiagram::setComputeUnitBaseAddress(std::string const& kernelName,
                                                             std::string const& computeUnitName,
                                                             std::string const& baseAddress) {
  for (auto& region : *mutableQrxBin(*container)->mutable_user_regions()) {
    for (auto& unit : *region.mutable_compute_units()) {
      if (unit.kernel_name() != kernelName || unit.name() != computeUnitName) continue;
      unit.set_base_address(baseAddress);
    }
  }
}

void ProfileAnalyzerSystemDiagram::setDeviceTopologyField(
    std::string const& tag, std::string const& value,
    std::function<void(DeviceTopologyIterator, std::string const&)> const& setter) {
  for (auto& memory : *mutableQsa(*container)->mutable_device_topology()) {
    if (memory.tag() != tag) continue;
    setter(&memory, value);
  }
}

void ProfileAnalyzerSystemDiagram::setDeviceTopologyBaseAddress(std::string const& tag,
                                                                std::string const& value) {
  setDeviceTopologyField(tag, value, [](DeviceTopologyIterator memory, std::string const& text) {
    memory->set_base_address(text);
  });
}

void ProfileAnalyzerSystemDiagram::setDeviceTopologySlr(std::string const& tag,
                                                        std::string const& value) {
  setDeviceTopologyField(tag, value, [](DeviceTopologyIterator memory, std::string const& text) {
    memory->set_slr(text);
  });
}

void ProfileAnalyzerSystemDiagram::setDeviceTopologyUsed(std::string const& tag,
                                                         std::string const& value) {
  setDeviceTopologyField(tag, value, [](DeviceTopologyIterator memory, std::string const& text) {
    memory->set_used(text);
  });
}

void ProfileAnalyzerSystemDiagram::setDeviceTopologySizeKB(std::string const& tag,
                                                           std::string const& value) {
  setDeviceTopologyField(tag, value, [](DeviceTopologyIterator memory, std::string const& text) {
    memory->set_size_kb(text);
  });
}

void ProfileAnalyzerSystemDiagram::appendActualResources(
    pb::computeUnit& unit, std::string const& computeUnitName,
    ActualResourceCollection const& resources) {
  try {
    for (std::string const& state : resources.states()) {
      ActualResource const record = resources.resources.at(state);
      pb::actualResources* const entry = unit.add_actual_resources();
      entry->set_design_state(toDesignState(record.state));
      entry->set_lut(record.lut);
      entry->set_reg(record.reg);
      entry->set_bram(record.bram);
      entry->set_uram(record.uram);
      entry->set_dsp(record.dsp);
    }
  } catch (std::exception const& error) {
    // No blank before "failed": the text stays as readers of the log know it.
    throw std::runtime_error("Adding compute unit actual resources to " + computeUnitName +
                             "failed with error: " + error.what() + ".");
  } catch (...) {
    throw std::runtime_error("Adding compute unit actual resources to " + computeUnitName +
                             "failed with an error of an unknown type.");
  }
}

void ProfileAnalyzerSystemDiagram::addComputeUnitActualResource(
    std::string const& computeUnitName, ActualResourceCollection const& resources) {
  if (computeUnitName.empty()) return;
  // Every compute unit of that name, in every user region; entries are appended, never merged.
  for (auto& region : *mutableQrxBin(*container)->mutable_user_regions()) {
    for (auto& unit : *region.mutable_compute_units()) {
      if (unit.name() == computeUnitName) appendActualResources(unit, computeUnitName, resources);
    }
  }
}

void ProfileAnalyzerSystemDiagram::upsertKernelUtilization(
    std::unordered_map<std::string, ActualResourceCollection> const& kernelUse) {
  // What the map names replaces what a compute unit held; other compute units keep theirs.
  // Each entry, in the map's order, clears and then fills every compute unit of its name, as
  // clearComputeUnitResourceUse and addComputeUnitActualResource do. The compute units of each
  // name are found in one pass over the diagram, not in two passes per entry: the map holds
  // every compute unit reported so far, and N of them used to cost N * N looks.
  // Only a named entry reaches the diagram (and creates its missing sections on the way).
  bool const anyNamed = std::any_of(kernelUse.begin(), kernelUse.end(),
                                    [](auto const& entry) { return !entry.first.empty(); });
  if (!anyNamed) return;
  std::unordered_map<std::string_view, std::vector<pb::computeUnit*>> unitsByName;
  for (auto& region : *mutableQrxBin(*container)->mutable_user_regions()) {
    for (auto& unit : *region.mutable_compute_units()) {
      if (kernelUse.count(unit.name()) > 0) unitsByName[unit.name()].push_back(&unit);
    }
  }
  for (auto const& entry : kernelUse) {
    if (entry.first.empty()) continue;
    auto const found = unitsByName.find(entry.first);
    if (found == unitsByName.end()) continue;
    for (pb::computeUnit* unit : found->second) unit->clear_actual_resources();
    for (pb::computeUnit* unit : found->second) {
      appendActualResources(*unit, entry.first, entry.second);
    }
  }
}

void ProfileAnalyzerSystemDiagram::clearComputeUnitResourceUse(std::string const& computeUnitName) {
  if (computeUnitName.empty()) return;
  for (auto& region : *mutableQrxBin(*container)->mutable_user_regions()) {
    for (auto& unit : *region.mutable_compute_units()) {
      if (unit.name() == computeUnitName) unit.clear_actual_resources();
    }
  }
}

void ProfileAnalyzerSystemDiagram::upsertKernel(pb::kernel const& kernel) {
  if (kernel.name().empty()) return;
  // The import always makes a user region; without one there is nowhere to put a kernel.
  if (qrxBinOf(*container).user_regions().empty()) {
    throw std::runtime_error("Cannot upsert kernel '" + kernel.name() +
                             "': the system diagram has no user region.");
  }
  // Only the first region is searched and only it gets new kernels.
  pb::userRegion* region = mutableQrxBin(*container)->mutable_user_regions(0);
  for (auto& stored : *region->mutable_kernels()) {
    if (stored.name() != kernel.name()) continue;
    stored.MergeFrom(kernel);
    return;
  }
  region->add_kernels()->MergeFrom(kernel);
}

void ProfileAnalyzerSystemDiagram::upsertQrxBin(pb::qrxBin const& qrxBin) {
  mutableQrxBin(*container)->MergeFrom(qrxBin);
}

void ProfileAnalyzerSystemDiagram::upsertQrxBinGeneratedBy(
    pb::qrxBinGeneratedBy const& generatedBy) {
  mutableQrxBin(*container)->mutable_generated_by()->MergeFrom(generatedBy);
}

void ProfileAnalyzerSystemDiagram::upsertQsaClock(pb::Clock const& clock) {
  pb::Qsa* qsa = mutableQsa(*container);
  // The name is the key; a clock without a name is matched by its id, whatever the stored name.
  bool const byName = !clock.name().empty();
  for (auto& stored : *qsa->mutable_clocks()) {
    bool const match = byName ? stored.name() == clock.name() : stored.id() == clock.id();
    if (!match) continue;
    stored.MergeFrom(clock);
    return;
  }
  qsa->add_clocks()->MergeFrom(clock);
}

void ProfileAnalyzerSystemDiagram::updateComputeUnit(pb::computeUnit const& unit) {
  pb::computeUnit* stored = nullptr;
  for (auto& region : *mutableQrxBin(*container)->mutable_user_regions()) {
    for (auto& candidate : *region.mutable_compute_units()) {
      if (candidate.name() != unit.name()) continue;
      stored = &candidate;
      break;
    }
    if (stored != nullptr) break;
  }
  if (stored == nullptr) return;

  // Appended, never matched by SLR: a second update of one SLR gives a second entry.
  for (auto const& slr : unit.slr_resources()) {
    pb::slrResources* added = stored->add_slr_resources();
    added->set_slr(slr.slr());
    for (auto const& use : slr.utilization()) {
      pb::resourceUtilization* copied = added->add_utilization();
      copied->set_resource(use.resource());
      copied->set_used(use.used());
      copied->set_available(use.available());
    }
  }
  // Only the first reset pin and the first clock reference of a request count.
  if (!unit.reset_pins().empty()) stored->add_reset_pins(unit.reset_pins(0));
  if (unit.clock_refs().empty()) return;
  pb::clockRef const& incoming = unit.clock_refs(0);
  if (incoming.name().empty()) return;
  for (auto& reference : *stored->mutable_clock_refs()) {
    if (reference.name() != incoming.name()) continue;
    if (incoming.requested_frequency() != 0.0) {
      reference.set_requested_frequency(incoming.requested_frequency());
    }
    if (incoming.achieved_frequency() != 0.0) {
      reference.set_achieved_frequency(incoming.achieved_frequency());
    }
    if (!incoming.plio().empty()) reference.set_plio(incoming.plio());
    if (!incoming.annotated_arg().empty()) reference.set_annotated_arg(incoming.annotated_arg());
  }
}

void ProfileAnalyzerSystemDiagram::upsertConnectivity(pb::Connectivity const& connection) {
  pb::Node const& source = connection.source();
  pb::Node const& destination = connection.destination();
  pb::qrxBin* qrxBin = mutableQrxBin(*container);

  // Only a compute unit to compute unit connection is ever matched, by the names its stored ids
  // stand for; any other kind is stored again on every upsert.
  if (isComputeUnit(source) && isComputeUnit(destination)) {
    for (auto& region : *qrxBin->mutable_user_regions()) {
      for (auto& stored : *region.mutable_connectivity()) {
        if (!isComputeUnit(stored.source()) || !isComputeUnit(stored.destination())) continue;
        if (!regionHasUnit(region, stored.source().id(), source.instance())) continue;
        if (!regionHasUnit(region, stored.destination().id(), destination.instance())) continue;
        stored.MergeFrom(connection);
        return;
      }
    }
  }

  if (qrxBin->user_regions().empty()) return;
  std::string sourceId;
  if (isComputeUnit(source)) {
    sourceId = getComputeUnitId(source.instance());
    if (sourceId.empty()) return;
  }
  std::string destinationId;
  if (isComputeUnit(destination)) {
    destinationId = getComputeUnitId(destination.instance());
    if (destinationId.empty()) return;
  }
  pb::userRegion* region = qrxBin->mutable_user_regions(0);
  // Ids count the region's connections from "0"; this is the only numbering.
  std::string const id = integerToText(region->connectivity_size());
  pb::Connectivity* added = region->add_connectivity();
  added->set_id(id);
  auto const copyEnd = [](pb::Node const& from, std::string const& unitId, pb::Node* to) {
    if (isComputeUnit(from)) to->set_id(unitId);
    to->set_type(from.type());
    to->set_instance(from.instance());
    to->set_pin(from.pin());
  };
  copyEnd(source, sourceId, added->mutable_source());
  copyEnd(destination, destinationId, added->mutable_destination());
}

void ProfileAnalyzerSystemDiagram::writeFlowReport(std::ofstream& out) {
  // Read only: an absent build section reads as an empty one and is not created.
  pb::qrxBin const& binary = container->system_diagram_metadata().qrxbin();
  writeHeading(out);
  writeKernelAndComputeUnitSection(binary, out);
  writeConnectionSections(*this, binary, out);
  writeClockSummary(binary, out);
  writeSlrUtilizationPerCu(binary, out);
  writeCuUtilizationPerSlr(binary, out);
}

void ProfileAnalyzerSystemDiagram::getQrxBinGeneratedBy(pb::qrxBinGeneratedBy& generatedBy) {
  // Asking creates the section, as every other access through the writers' path does.
  generatedBy.CopyFrom(*mutableQrxBin(*container)->mutable_generated_by());
}

void ProfileAnalyzerSystemDiagram::upsertPlatform(pb::Platform const& platform) {
  mutableQrxBin(*container)->mutable_platform()->MergeFrom(platform);
}

std::string ProfileAnalyzerSystemDiagram::getComputeUnitId(
    std::string const& computeUnitName) const {
  for (auto const& region : qrxBinOf(*container).user_regions()) {
    for (auto const& unit : region.compute_units()) {
      if (unit.name() != computeUnitName) continue;
      if (!unit.id().empty()) return unit.id();
      // A unit of that name without an id sends the search on to the next region.
      break;
    }
  }
  return "";
}

std::string ProfileAnalyzerSystemDiagram::getComputeUnitClockPortName(
    std::string const& computeUnitName) const {
  for (auto const& region : qrxBinOf(*container).user_regions()) {
    for (auto const& unit : region.compute_units()) {
      if (unit.name() != computeUnitName) continue;
      std::string name;
      // A reference with an empty name ends the search too.
      if (requestedClockPortName(unit, name)) return name;
    }
  }
  return "";
}

bool ProfileAnalyzerSystemDiagram::requestedClockPortName(pb::computeUnit const& unit,
                                                          std::string& name) {
  for (auto const& reference : unit.clock_refs()) {
    if (reference.requested_frequency() == 0.0) continue;
    name = reference.name();
    return true;
  }
  return false;
}

void ProfileAnalyzerSystemDiagram::getComputeUnitClockInfo(std::string const& computeUnitId,
                                                           std::string const& clockRefName,
                                                           std::string& clockId,
                                                           std::string& requested,
                                                           std::string& achieved) const {
  for (auto const& region : qrxBinOf(*container).user_regions()) {
    for (auto const& unit : region.compute_units()) {
      if (unit.id() != computeUnitId) continue;
      clockRefInfo(unit, clockRefName, clockId, requested, achieved);
      if (!clockId.empty()) return;
    }
  }
}

void ProfileAnalyzerSystemDiagram::clockRefInfo(pb::computeUnit const& unit,
                                                std::string const& clockRefName,
                                                std::string& clockId, std::string& requested,
                                                std::string& achieved) {
  for (auto const& reference : unit.clock_refs()) {
    if (reference.name() != clockRefName) continue;
    clockId = reference.clock_id();
    requested = doubleToString(reference.requested_frequency());
    achieved = doubleToString(reference.achieved_frequency());
    return;
  }
}

void ProfileAnalyzerSystemDiagram::getQsaClockFrequencies(std::string const& clockId,
                                                          std::string& frequency,
                                                          std::string& requested,
                                                          std::string& achieved) const {
  for (auto const& clock : qsaOf(*container).clocks()) {
    // Converted per clock: a text that is no number throws only when there is a clock to ask.
    if (std::stoi(clockId) != clock.id()) continue;
    frequency = doubleToString(clock.frequency());
    requested = doubleToString(clock.requested_frequency());
    achieved = doubleToString(clock.achieved_frequency());
    return;
  }
}

}  // namespace IPA
