#include "diagram/SystemDiagram.h"

#include <fstream>
#include <memory>
#include <sstream>
#include <stdexcept>

#include "diagram/FStreamFinalizer.h"
#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "rtd/RtdSystemDiagramVisitor.h"
#include "rtd/RtdTreeBuilder.h"
#include "rtd/RtdTreeSlrBaseAddressVisitor.h"

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

void SystemDiagram::writeFlowReport(std::string const& path) {
  std::ofstream out(path, std::ios::out | std::ios::trunc);
  FStreamFinalizer<std::ofstream> finalizer(out);
  if (!out.is_open()) throw std::runtime_error("Could not open " + path + " for writing.");
  systemDiagram.writeFlowReport(out);
}

namespace {

std::shared_ptr<RtdTree> readRtdTree(std::istream& in) {
  RtdTreeBuilder builder;
  builder.deSerialize(in);
  return builder.build();
}

// A new diagram from a run-time data file. The tree, the visitor and the builders end here; only
// the root lives on, in the diagram returned, which nobody else has seen yet.
std::shared_ptr<ProfileAnalyzerSystemDiagram> makeInitialSystemDiagram(
    std::string const& rtdFile, std::string const& platform, std::string const& generatedName,
    std::string const& generatedVersion, std::string const& generatedChangeList,
    std::string const& generatedTimestamp, std::string const& generatedDetailA,
    std::string const& generatedDetailB, std::string const& kernelsFile,
    std::string const& binaryLabel, std::string const& binaryNote, bool generatedFlag) {
  std::ifstream in(rtdFile, std::ios::in | std::ios::binary);
  FStreamFinalizer<std::ifstream> finalizer(in);
  if (!in.is_open()) throw std::runtime_error("Could not open " + rtdFile + " for reading.");
  auto const tree = readRtdTree(in);

  auto const root = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  ProfileAnalyzerSystemDiagramBuilder builder(root);
  RtdSystemDiagramVisitor visitor(
      builder, platform, generatedName, generatedVersion, generatedChangeList, generatedTimestamp,
      generatedDetailA, generatedDetailB, generatedFlag, kernelsFile, binaryLabel, binaryNote);
  visitor.visit(*tree);
  return std::make_shared<ProfileAnalyzerSystemDiagram>(root);
}

}  // namespace

void SystemDiagram::populateInitialSystemDiagram(
    std::string const& rtdFile, std::string const& platform, std::string const& generatedName,
    std::string const& generatedVersion, std::string const& generatedChangeList,
    std::string const& generatedTimestamp, std::string const& generatedDetailA,
    std::string const& generatedDetailB, std::string const& kernelsFile,
    std::string const& binaryLabel, bool generatedFlag) {
  // The note always starts empty on this road; an UpsertQrxBinGeneratedBy request sets it.
  std::shared_ptr<SystemDiagramInterface> const diagram = makeInitialSystemDiagram(
      rtdFile, platform, generatedName, generatedVersion, generatedChangeList, generatedTimestamp,
      generatedDetailA, generatedDetailB, kernelsFile, binaryLabel, std::string(), generatedFlag);
  // Only a complete diagram replaces the old one, which goes whole, upserts included.
  systemDiagram.setSystemDiagramInterface(diagram);
}

void SystemDiagram::updateSystemDiagramAfterRunningBrenlo(std::string const& rtdFile) {
  std::ifstream rtd(rtdFile, std::ios::in | std::ios::binary);
  if (!rtd.is_open()) throw std::runtime_error("Could not open " + rtdFile + " for reading.");
  FStreamFinalizer<std::ifstream> finalizer(rtd);
  auto const tree = readRtdTree(rtd);
  // Each setter locks the diagram for its own call only.
  RtdTreeSlrBaseAddressVisitor visitor(systemDiagram);
  visitor.visit(*tree);
}

void SystemDiagram::writeSystemDiagramAfterRunningBrenlo(std::string const& rtdFile,
                                                         std::string const& diagramInFile,
                                                         std::string const& diagramOutFile) {
  std::ifstream rtd(rtdFile, std::ios::in | std::ios::binary);
  if (!rtd.is_open()) throw std::runtime_error("Could not open " + rtdFile + " for reading.");
  FStreamFinalizer<std::ifstream> rtdFinalizer(rtd);
  std::ifstream diagramIn(diagramInFile, std::ios::in | std::ios::binary);
  if (!diagramIn.is_open()) {
    throw std::runtime_error("Could not open " + diagramInFile + " for reading.");
  }
  FStreamFinalizer<std::ifstream> inFinalizer(diagramIn);
  std::ofstream diagramOut(diagramOutFile, std::ios::out | std::ios::binary | std::ios::trunc);
  if (!diagramOut.is_open()) {
    throw std::runtime_error("Could not open " + diagramOutFile + " for writing.");
  }
  FStreamFinalizer<std::ofstream> outFinalizer(diagramOut);

  auto const tree = readRtdTree(rtd);
  // A private diagram: the session's own takes no part.
  ProfileAnalyzerSystemDiagram stored(
      std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>());
  stored.serializeFromJson(diagramIn);
  RtdTreeSlrBaseAddressVisitor visitor(stored);
  visitor.visit(*tree);
  stored.serializeToJson(diagramOut);
}

void SystemDiagram::upsertKernelUtilization(
    dispatch::system_diagram_server::UpsertKernelUse const& message) {
  kernelUse.mergeFrom(message);
  kernelUse.mergeTo(systemDiagram);
}

void SystemDiagram::upsertKernelUtilization(
    std::vector<dispatch::system_diagram_server::UpsertKernelUse> const& messages) {
  if (messages.empty()) return;
  for (auto const& message : messages) kernelUse.mergeFrom(message);
  kernelUse.mergeTo(systemDiagram);
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
