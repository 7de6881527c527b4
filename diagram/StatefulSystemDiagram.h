// A diagram that can be swapped whole, with every operation serialised.
#ifndef DIAGRAM_STATEFULSYSTEMDIAGRAM_H_
#define DIAGRAM_STATEFULSYSTEMDIAGRAM_H_

#include <memory>
#include <mutex>
#include <string>

#include "diagram/SystemDiagramInterface.h"

namespace IPA {

// Holds the current diagram behind `diagramMutex`. Each operation locks, forwards to the current
// diagram and unlocks, also when the diagram throws. The mutex is not reentrant: the diagram
// must never call back into this object.
class StatefulSystemDiagram : public SystemDiagramInterface {
 public:
  // An empty ProfileAnalyzerSystemDiagram on a new, empty container.
  StatefulSystemDiagram();
  // Takes `diagram`, which must not be null.
  explicit StatefulSystemDiagram(std::shared_ptr<SystemDiagramInterface> diagram);
  ~StatefulSystemDiagram() = default;

  StatefulSystemDiagram(StatefulSystemDiagram const&) = delete;
  StatefulSystemDiagram& operator=(StatefulSystemDiagram const&) = delete;

  // Makes `diagram` (not null) the current diagram. The old one is released at once, and is
  // destroyed unless something else shares it.
  void setSystemDiagramInterface(std::shared_ptr<SystemDiagramInterface> diagram);

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
  void serializeToJson(std::ostream& out) const override;
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
  mutable std::mutex diagramMutex;  // guards `diagram` and each operation on it
  std::shared_ptr<SystemDiagramInterface> diagram;
};

}  // namespace IPA

#endif  // DIAGRAM_STATEFULSYSTEMDIAGRAM_H_
