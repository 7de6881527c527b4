// The operations of a system diagram, whatever keeps it.
#ifndef DIAGRAM_SYSTEMDIAGRAMINTERFACE_H_
#define DIAGRAM_SYSTEMDIAGRAMINTERFACE_H_

#include <fstream>
#include <istream>
#include <ostream>
#include <string>
#include <unordered_map>
#include <vector>

#include "proto/system_diagram.pb.h"
#include "resources/ActualResourceCollection.h"

namespace IPA {

// A diagram is always owned by a shared pointer made for its concrete type, which destroys the
// concrete type: nothing deletes a diagram through this interface, hence the protected,
// non-virtual destructor.
//
// An operation that finds no entry for its key does nothing and reports nothing. Failures are
// std::runtime_error with the full text.
class SystemDiagramInterface {
 public:
  virtual std::vector<std::string> computeUnitNames() = 0;
  virtual std::string kernelNameFromComputeUnitName(std::string const& computeUnitName) const = 0;
  virtual void setComputeUnitBaseAddress(std::string const& kernelName,
                                         std::string const& computeUnitName,
                                         std::string const& baseAddress) = 0;
  virtual void setDeviceTopologyBaseAddress(std::string const& tag, std::string const& value) = 0;
  virtual void setDeviceTopologySlr(std::string const& tag, std::string const& value) = 0;
  virtual void setDeviceTopologyUsed(std::string const& tag, std::string const& value) = 0;
  virtual void setDeviceTopologySizeKB(std::string const& tag, std::string const& value) = 0;
  virtual void addComputeUnitActualResource(std::string const& computeUnitName,
                                            ActualResourceCollection const& resources) = 0;
  // Writes the stored JSON form, stamped with the current schema version, and a newline.
  virtual void serializeToJson(std::ostream& out) const = 0;
  // Replaces the whole diagram with the stored JSON form read from `in`; an unknown key or
  // enumeration name is an error, and the diagram may then be partly replaced.
  virtual void serializeFromJson(std::istream& in) = 0;
  virtual void upsertKernelUtilization(
      std::unordered_map<std::string, ActualResourceCollection> const& kernelUse) = 0;
  virtual void upsertKernel(ProfileAnalyzerSystemDiagramSerializable::kernel const& kernel) = 0;
  virtual void upsertQrxBin(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& qrxBin) = 0;
  virtual void upsertQrxBinGeneratedBy(
      ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy const& generatedBy) = 0;
  virtual void upsertQsaClock(ProfileAnalyzerSystemDiagramSerializable::Clock const& clock) = 0;
  virtual void updateComputeUnit(
      ProfileAnalyzerSystemDiagramSerializable::computeUnit const& computeUnit) = 0;
  virtual void upsertConnectivity(
      ProfileAnalyzerSystemDiagramSerializable::Connectivity const& connectivity) = 0;
  virtual void writeFlowReport(std::ofstream& out) = 0;
  virtual void getQrxBinGeneratedBy(
      ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy& generatedBy) = 0;
  virtual void upsertPlatform(ProfileAnalyzerSystemDiagramSerializable::Platform const& platform) = 0;

 protected:
  SystemDiagramInterface() = default;
  SystemDiagramInterface(SystemDiagramInterface const&) = default;
  SystemDiagramInterface& operator=(SystemDiagramInterface const&) = default;
  ~SystemDiagramInterface() = default;
};

}  // namespace IPA

#endif  // DIAGRAM_SYSTEMDIAGRAMINTERFACE_H_
