#include "diagram/ProfileAnalyzerSystemDiagram.h"

#include <iterator>
#include <stdexcept>
#include <utility>

#include <google/protobuf/util/json_util.h>

namespace IPA {

const std::string ProfileAnalyzerSystemDiagram::schemaMajorVersion = "2";
const std::string ProfileAnalyzerSystemDiagram::schemaMinorVersion = "0";
const std::string ProfileAnalyzerSystemDiagram::schemaPatchLevel = "0";

namespace {

// The operations below this point arrive with the diagram's editing logic; until then they
// refuse loudly instead of pretending to work.
[[noreturn]] void notImplementedYet(char const* operation) {
  throw std::runtime_error(std::string("ProfileAnalyzerSystemDiagram::") + operation +
                           " is not implemented yet");
}

}  // namespace

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
  std::string const text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  google::protobuf::util::JsonParseOptions options;
  options.ignore_unknown_fields = false;
  options.case_insensitive_enum_parsing = false;
  auto const status = google::protobuf::util::JsonStringToMessage(text, container.get(), options);
  if (!status.ok()) {
    throw std::runtime_error("Deserializing failed with error: " +
                             std::string(status.message()) + ".");
  }
}

std::vector<std::string> ProfileAnalyzerSystemDiagram::computeUnitNames() {
  notImplementedYet("computeUnitNames");
}
std::string ProfileAnalyzerSystemDiagram::kernelNameFromComputeUnitName(std::string const&) const {
  notImplementedYet("kernelNameFromComputeUnitName");
}
void ProfileAnalyzerSystemDiagram::setComputeUnitBaseAddress(std::string const&,
                                                             std::string const&,
                                                             std::string const&) {
  notImplementedYet("setComputeUnitBaseAddress");
}
void ProfileAnalyzerSystemDiagram::setDeviceTopologyBaseAddress(std::string const&,
                                                                std::string const&) {
  notImplementedYet("setDeviceTopologyBaseAddress");
}
void ProfileAnalyzerSystemDiagram::setDeviceTopologySlr(std::string const&, std::string const&) {
  notImplementedYet("setDeviceTopologySlr");
}
void ProfileAnalyzerSystemDiagram::setDeviceTopologyUsed(std::string const&, std::string const&) {
  notImplementedYet("setDeviceTopologyUsed");
}
void ProfileAnalyzerSystemDiagram::setDeviceTopologySizeKB(std::string const&,
                                                           std::string const&) {
  notImplementedYet("setDeviceTopologySizeKB");
}
void ProfileAnalyzerSystemDiagram::addComputeUnitActualResource(std::string const&,
                                                                ActualResourceCollection const&) {
  notImplementedYet("addComputeUnitActualResource");
}
void ProfileAnalyzerSystemDiagram::upsertKernelUtilization(
    std::unordered_map<std::string, ActualResourceCollection> const&) {
  notImplementedYet("upsertKernelUtilization");
}
void ProfileAnalyzerSystemDiagram::upsertKernel(
    ProfileAnalyzerSystemDiagramSerializable::kernel const&) {
  notImplementedYet("upsertKernel");
}
void ProfileAnalyzerSystemDiagram::upsertQrxBin(
    ProfileAnalyzerSystemDiagramSerializable::qrxBin const&) {
  notImplementedYet("upsertQrxBin");
}
void ProfileAnalyzerSystemDiagram::upsertQrxBinGeneratedBy(
    ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy const&) {
  notImplementedYet("upsertQrxBinGeneratedBy");
}
void ProfileAnalyzerSystemDiagram::upsertQsaClock(
    ProfileAnalyzerSystemDiagramSerializable::Clock const&) {
  notImplementedYet("upsertQsaClock");
}
void ProfileAnalyzerSystemDiagram::updateComputeUnit(
    ProfileAnalyzerSystemDiagramSerializable::computeUnit const&) {
  notImplementedYet("updateComputeUnit");
}
void ProfileAnalyzerSystemDiagram::upsertConnectivity(
    ProfileAnalyzerSystemDiagramSerializable::Connectivity const&) {
  notImplementedYet("upsertConnectivity");
}
void ProfileAnalyzerSystemDiagram::writeFlowReport(std::ofstream&) {
  notImplementedYet("writeFlowReport");
}
void ProfileAnalyzerSystemDiagram::getQrxBinGeneratedBy(
    ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy&) {
  notImplementedYet("getQrxBinGeneratedBy");
}
void ProfileAnalyzerSystemDiagram::upsertPlatform(
    ProfileAnalyzerSystemDiagramSerializable::Platform const&) {
  notImplementedYet("upsertPlatform");
}

}  // namespace IPA
