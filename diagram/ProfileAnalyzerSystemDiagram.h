// The system diagram kept as a tree of protobuf messages.
#ifndef DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAM_H_
#define DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAM_H_

#include <functional>
#include <memory>
#include <string>

#include "diagram/SystemDiagramInterface.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// The concrete diagram: every operation reads or changes the tree under `container`, whose
// stored form is the protobuf JSON mapping of outerContainer (docs/formats.md).
//
// Changing operations create missing sections on the way (also getQrxBinGeneratedBy, which
// creates `qrxbin.generated_by`); the other reading operations create nothing. An operation that
// finds no entry for its key does nothing and reports nothing. No lock of its own: all access
// comes through StatefulSystemDiagram. docs/diagram-operations.md tells each operation's key and
// merge rule.
class ProfileAnalyzerSystemDiagram : public SystemDiagramInterface {
 public:
  using Container = ProfileAnalyzerSystemDiagramSerializable::outerContainer;
  using DeviceTopologyIterator = ProfileAnalyzerSystemDiagramSerializable::deviceTopology*;

  // The version stamped into every diagram written: 2.0.0.
  static const std::string schemaMajorVersion;
  static const std::string schemaMinorVersion;
  static const std::string schemaPatchLevel;

  // Shares `container`, which must not be null; nothing is added to it.
  explicit ProfileAnalyzerSystemDiagram(std::shared_ptr<Container> container);

  std::shared_ptr<Container> const& getContainer() const { return container; }

  // "Synthesized" 1, "Fully Placed" 2, "Routed" 3, any other word DESIGN_STATE_UNSET (0).
  static ProfileAnalyzerSystemDiagramSerializable::DesignState toDesignState(
      std::string const& word);

  // Calls `setter` with every memory whose `tag` equals `tag`, and `value`.
  void setDeviceTopologyField(
      std::string const& tag, std::string const& value,
      std::function<void(DeviceTopologyIterator, std::string const&)> const& setter);
  // Clears `actual_resources` of every compute unit named `computeUnitName`; nothing for "".
  void clearComputeUnitResourceUse(std::string const& computeUnitName);
  // The frequencies of the platform clock whose `id` is `clockId` (converted as std::stoi does,
  // once per clock looked at, so a text that is no number throws std::invalid_argument or
  // std::out_of_range if there is any clock), each through doubleToString. Outputs are left as
  // they came when no clock matches.
  void getQsaClockFrequencies(std::string const& clockId, std::string& frequency,
                              std::string& requested, std::string& achieved) const;
  // The `id` of the first compute unit named `computeUnitName` whose id is not empty; "" if none.
  std::string getComputeUnitId(std::string const& computeUnitName) const;
  // The name of the first clock reference with a requested frequency, in the compute units
  // named `computeUnitName`; "" if none.
  std::string getComputeUnitClockPortName(std::string const& computeUnitName) const;
  // From the first clock reference named `clockRefName` of the compute units whose `id` is
  // `computeUnitId`: its `clock_id`, and its two frequencies through doubleToString (0.0 gives
  // ""). Stops at the first compute unit that gives a clock id; outputs are left as they came
  // when nothing matches.
  void getComputeUnitClockInfo(std::string const& computeUnitId, std::string const& clockRefName,
                               std::string& clockId, std::string& requested,
                               std::string& achieved) const;

  // The two lookups above, for one compute unit already found: the first clock reference named
  // `clockRefName` (outputs left as they came when there is none), and the name of the first
  // clock reference with a requested frequency (false when there is none; the name found may
  // be empty). The flow report uses
  // them with its own index of compute units.
  static void clockRefInfo(ProfileAnalyzerSystemDiagramSerializable::computeUnit const& unit,
                           std::string const& clockRefName, std::string& clockId,
                           std::string& requested, std::string& achieved);
  static bool requestedClockPortName(
      ProfileAnalyzerSystemDiagramSerializable::computeUnit const& unit, std::string& name);

  std::vector<std::string> computeUnitNames() override;
  std::string kernelNameFromComputeUnitName(std::string const& computeUnitName) const override;
  void setComputeUnitBaseAddress(std::string const& kernelName, std::string const& computeUnitName,
                                 std::string const& baseAddress) override;
  void setDeviceTopologyBaseAddress(std::string const& tag, std::string const& value) override;
  void setDeviceTopologySlr(std::string const& tag, std::string const& value) override;
  void setDeviceTopologyUsed(std::string const& tag, std::string const& value) override;
  void setDeviceTopologySizeKB(std::string const& tag, std::string const& value) override;
  // Appends one actual_resources entry per state of `resources` to every compute unit named
  // `computeUnitName`, in every user region; nothing for an empty name or an unknown one. A
  // state word other than the three known ones is stored as DESIGN_STATE_UNSET. Throws
  // std::runtime_error "Adding compute unit actual resources to <name>failed with error: <what>."
  // (no blank before "failed") if writing an entry fails; entries already appended stay.
  void addComputeUnitActualResource(std::string const& computeUnitName,
                                    ActualResourceCollection const& resources) override;

  // Stamps system_diagram_metadata.schema_version with 2.0.0 (creating the messages as needed;
  // the stamp stays in the tree) and writes the JSON text with every primitive field printed,
  // enumerations as names and field names as declared, then one newline. Throws
  // std::runtime_error "Serializing failed with error: <reason>." if the conversion fails.
  void serializeToJson(std::ostream& out) const override;
  // Reads the whole stream and replaces the tree with it. Unknown keys and enumeration names
  // spelled otherwise are refused with std::runtime_error
  // "Deserializing failed with error: <reason>."; the tree is then unchanged, since the whole
  // document is converted before the tree is touched. The stored schema version is not checked.
  void serializeFromJson(std::istream& in) override;

  void upsertKernelUtilization(
      std::unordered_map<std::string, ActualResourceCollection> const& kernelUse) override;
  // Merges into the first region's kernel of the same name, or appends it there. A kernel
  // without a name changes nothing. Throws std::runtime_error on a diagram without a user
  // region, which has nowhere to put a kernel.
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
  // Appends one actual_resources entry per state of `resources` to `unit`, throwing as
  // addComputeUnitActualResource says; `computeUnitName` is for the message.
  static void appendActualResources(ProfileAnalyzerSystemDiagramSerializable::computeUnit& unit,
                                    std::string const& computeUnitName,
                                    ActualResourceCollection const& resources);

  std::shared_ptr<Container> container;
};

}  // namespace IPA

#endif  // DIAGRAM_PROFILEANALYZERSYSTEMDIAGRAM_H_
