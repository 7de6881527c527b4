// The system diagram kept as a tree of protobuf messages.
#ifndef DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAM_H_
#define DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAM_H_

#include <memory>
#include <string>

#include "diagram/SystemDiagramInterface.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// The concrete diagram: every operation reads or changes the tree under `container`, whose
// stored form is the protobuf JSON mapping of outerContainer (docs/formats.md).
class ProfileAnalyzerSystemDiagram : public SystemDiagramInterface {
 public:
  using Container = ProfileAnalyzerSystemDiagramSerializable::outerContainer;

  // The version stamped into every diagram written: 2.0.0.
  static const std::string schemaMajorVersion;
  static const std::string schemaMinorVersion;
  static const std::string schemaPatchLevel;

  // Shares `container`, which must not be null; nothing is added to it.
  explicit ProfileAnalyzerSystemDiagram(std::shared_ptr<Container> container);

  std::shared_ptr<Container> const& getContainer() const { return container; }

  std::vector<std::string> computeUnitNames() override;
  std::string kernelNameFromComputeUnitName(std::string const& computeUnitName) const override;
  void setComputeUnitBaseAddress(std::string const& kernelName, std::string const& computeUnitName,
                                 std::string const& baseAddress) override;
  void setDeviceTopologyBaseAddress(std::string const& tag, std::string const& value) override;
  void setDeviceTopologySlr(std::string const& tag, std::string const& value) override;
  void setDeviceTopologyUsed(std::string const& tag, std::string const& value) override;
  void setDeviceTopologySizeKB(std::string const& tag, std::string const& value) override;
  void addComputeUnitActualResource(std::string const& computeUnitName,
                                    ActualResourceCollection const& resources) override;

  // Stamps system_diagram_metadata.schema_version with 2.0.0 (creating the messages as needed;
  // the stamp stays in the tree) and writes the JSON text with every primitive field printed,
  // enumerations as names and field names as declared, then one newline. Throws
  // std::runtime_error "Serializing failed with error: <reason>." if the conversion fails.
  void serializeToJson(std::ostream& out) const override;
  // Reads the whole stream and replaces the tree with it. Unknown keys and enumeration names
  // spelled otherwise are refused with std::runtime_error
  // "Deserializing failed with error: <reason>.". The stored schema version is not checked.
  void serializeFromJson(std::istream& in) override;

  void upsertKernelUtilization(
      std::unordered_map<std::string, ActualResourceCollection> const& kernelUse) override;
  void upsertKernel(ProfileAnalyzerSystemDiagramSerializable::kernel const& kernel) override;
  void upsertQrxBin(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& qrxBin) override;
  void upsertQrxBinGeneratedBy(
      ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy const& generatedBy) override;
  void upsertQsaClock(ProfileAnalyzerSystemDiagramSerializable::Clock const& clock) override;
  void updateComputeUnit(
      ProfileAnalyzerSystemDiagramSerializable::computeUnit const& computeUnit) override;
  void upsertConnectivity(
      ProfileAnalyzerSystemDiagramSerializable::Connectivity const& connectivity) override;
  void writeFlowReport(std::ofstream& out) override;
  void getQrxBinGeneratedBy(
      ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy& generatedBy) override;
  void upsertPlatform(ProfileAnalyzerSystemDiagramSerializable::Platform const& platform) override;

 private:
  std::shared_ptr<Container> container;
};

}  // namespace IPA

#endif  // DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAM_H_
