#include "diagram/SystemDiagram.h"

#include <fstream>
#include <sstream>
#include <stdexcept>

#include "diagram/FStreamFinalizer.h"

namespace IPA {

SystemDiagram::SystemDiagram(SystemDiagram const& source) : SystemDiagram() { *this = source; }

SystemDiagram& SystemDiagram::operator=(SystemDiagram const& source) {
  std::stringstream text;
  source.systemDiagram.serializeToJson(text);
  systemDiagram.serializeFromJson(text);
  return *this;
}

void SystemDiagram::readSystemDiagram(std::string const& path) {
  std::ifstream in(path, std::ios::in | std::ios::binary);
  FStreamFinalizer<std::ifstream> finalizer(in);
  if (!in.is_open()) throw std::runtime_error("Could not open " + path + " for reading.");
  systemDiagram.serializeFromJson(in);
}

void SystemDiagram::serializeCurrentSystemDiagram(std::string const& path) {
  std::ofstream out(path, std::ios::out | std::ios::binary | std::ios::trunc);
  FStreamFinalizer<std::ofstream> finalizer(out);
  if (!out.is_open()) throw std::runtime_error("Could not open " + path + " for writing.");
  systemDiagram.serializeToJson(out);
}

void SystemDiagram::upsertKernel(ProfileAnalyzerSystemDiagramSerializable::kernel const& kernel) {
  systemDiagram.upsertKernel(kernel);
}

void SystemDiagram::upsertQrxBin(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& qrxBin) {
  systemDiagram.upsertQrxBin(qrxBin);
}

void SystemDiagram::upsertQrxBinGeneratedBy(
    ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy const& generatedBy) {
  systemDiagram.upsertQrxBinGeneratedBy(generatedBy);
}

void SystemDiagram::upsertQsaClock(ProfileAnalyzerSystemDiagramSerializable::Clock const& clock) {
  systemDiagram.upsertQsaClock(clock);
}

void SystemDiagram::updateComputeUnit(
    ProfileAnalyzerSystemDiagramSerializable::computeUnit const& computeUnit) {
  systemDiagram.updateComputeUnit(computeUnit);
}

void SystemDiagram::upsertConnectivity(
    ProfileAnalyzerSystemDiagramSerializable::Connectivity const& connectivity) {
  systemDiagram.upsertConnectivity(connectivity);
}

void SystemDiagram::getQrxBinGeneratedBy(
    ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy& generatedBy) {
  systemDiagram.getQrxBinGeneratedBy(generatedBy);
}

void SystemDiagram::upsertPlatform(
    ProfileAnalyzerSystemDiagramSerializable::Platform const& platform) {
  systemDiagram.upsertPlatform(platform);
}

}  // namespace IPA
