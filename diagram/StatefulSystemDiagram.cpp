#include "diagram/StatefulSystemDiagram.h"

#include <stdexcept>
#include <utility>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"

namespace IPA {

using Lock = std::lock_guard<std::mutex>;

StatefulSystemDiagram::StatefulSystemDiagram() {
  Lock lock(diagramMutex);
  auto container = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  // The builder adds nothing: a new session's diagram has no section at all.
  ProfileAnalyzerSystemDiagramBuilder builder(container);
  diagram = std::make_shared<ProfileAnalyzerSystemDiagram>(builder.getRoot());
}

StatefulSystemDiagram::StatefulSystemDiagram(std::shared_ptr<SystemDiagramInterface> initial) {
  if (!initial) throw std::invalid_argument("StatefulSystemDiagram: no diagram");
  Lock lock(diagramMutex);
  diagram = std::move(initial);
}

void StatefulSystemDiagram::setSystemDiagramInterface(
    std::shared_ptr<SystemDiagramInterface> replacement) {
  if (!replacement) throw std::invalid_argument("StatefulSystemDiagram: no diagram");
  Lock lock(diagramMutex);
  diagram = std::move(replacement);
}

std::vector<std::string> StatefulSystemDiagram::computeUnitNames() {
  Lock lock(diagramMutex);
  return diagram->computeUnitNames();
}

std::string StatefulSystemDiagram::kernelNameFromComputeUnitName(
    std::string const& computeUnitName) const {
  Lock lock(diagramMutex);
  return diagram->kernelNameFromComputeUnitName(computeUnitName);
}

void StatefulSystemDiagram::setComputeUnitBaseAddress(std::string const& kernelName,
                                                      std::string const& computeUnitName,
                                                      std::string const& baseAddress) {
  Lock lock(diagramMutex);
  diagram->setComputeUnitBaseAddress(kernelName, computeUnitName, baseAddress);
}

void StatefulSystemDiagram::setDeviceTopologyBaseAddress(std::string const& tag,
                                                         std::string const& value) {
  Lock lock(diagramMutex);
  diagram->setDeviceTopologyBaseAddress(tag, value);
}

void StatefulSystemDiagram::setDeviceTopologySlr(std::string const& tag, std::string const& value) {
  Lock lock(diagramMutex);
  diagram->setDeviceTopologySlr(tag, value);
}

void StatefulSystemDiagram::setDeviceTopologyUsed(std::string const& tag,
                                                  std::string const& value) {
  Lock lock(diagramMutex);
  diagram->setDeviceTopologyUsed(tag, value);
}

void StatefulSystemDiagram::setDeviceTopologySizeKB(std::string const& tag,
                                                    std::string const& value) {
  Lock lock(diagramMutex);
  diagram->setDeviceTopologySizeKB(tag, value);
}

void StatefulSystemDiagram::addComputeUnitActualResource(
    std::string const& computeUnitName, ActualResourceCollection const& resources) {
  Lock lock(diagramMutex);
  diagram->addComputeUnitActualResource(computeUnitName, resources);
}

void StatefulSystemDiagram::serializeToJson(std::ostream& out) const {
  Lock lock(diagramMutex);
  diagram->serializeToJson(out);
}

void StatefulSystemDiagram::serializeFromJson(std::istream& in) {
  Lock lock(diagramMutex);
  diagram->serializeFromJson(in);
}

void StatefulSystemDiagram::upsertKernelUtilization(
    std::unordered_map<std::string, ActualResourceCollection> const& kernelUse) {
  Lock lock(diagramMutex);
  diagram->upsertKernelUtilization(kernelUse);
}

void StatefulSystemDiagram::upsertKernel(
    ProfileAnalyzerSystemDiagramSerializable::kernel const& kernel) {
  Lock lock(diagramMutex);
  diagram->upsertKernel(kernel);
}

void StatefulSystemDiagram::upsertQrxBin(
    ProfileAnalyzerSystemDiagramSerializable::qrxBin const& qrxBin) {
  Lock lock(diagramMutex);
  diagram->upsertQrxBin(qrxBin);
}

void StatefulSystemDiagram::upsertQrxBinGeneratedBy(
    ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy const& generatedBy) {
  Lock lock(diagramMutex);
  diagram->upsertQrxBinGeneratedBy(generatedBy);
}

void StatefulSystemDiagram::upsertQsaClock(
    ProfileAnalyzerSystemDiagramSerializable::Clock const& clock) {
  Lock lock(diagramMutex);
  diagram->upsertQsaClock(clock);
}

void StatefulSystemDiagram::updateComputeUnit(
    ProfileAnalyzerSystemDiagramSerializable::computeUnit const& computeUnit) {
  Lock lock(diagramMutex);
  diagram->updateComputeUnit(computeUnit);
}

void StatefulSystemDiagram::upsertConnectivity(
    ProfileAnalyzerSystemDiagramSerializable::Connectivity const& connectivity) {
  Lock lock(diagramMutex);
  diagram->upsertConnectivity(connectivity);
}

void StatefulSystemDiagram::writeFlowReport(std::ofstream& out) {
  Lock lock(diagramMutex);
  diagram->writeFlowReport(out);
}

void StatefulSystemDiagram::getQrxBinGeneratedBy(
    ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy& generatedBy) {
  Lock lock(diagramMutex);
  diagram->getQrxBinGeneratedBy(generatedBy);
}

void StatefulSystemDiagram::upsertPlatform(
    ProfileAnalyzerSystemDiagramSerializable::Platform const& platform) {
  Lock lock(diagramMutex);
  diagram->upsertPlatform(platform);
}

}  // namespace IPA
