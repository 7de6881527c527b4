// What one session owns: its diagram, its kernel use, and the operations that open files.
#ifndef DIAGRAM_SYSTEMDIAGRAM_H_
#define DIAGRAM_SYSTEMDIAGRAM_H_

#include <string>
#include <vector>

#include "diagram/StatefulSystemDiagram.h"
#include "resources/StatefulKernelUse.h"

namespace IPA {

// Lives in its node of the session table, default-constructed there. The request handlers call
// it through a reference that stays good until the session is removed.
class SystemDiagram {
 public:
  SystemDiagram() = default;
  // An empty diagram, then assigned from `source` as operator= does.
  SystemDiagram(SystemDiagram const& source);
  // Copies the diagram through its JSON text (the same writer and reader as a file), which also
  // stamps the source's schema version. The kernel use is not copied: this object keeps its own.
  // No self-assignment test: that is a round trip onto itself. The two diagrams are locked one
  // after the other, never both at once.
  SystemDiagram& operator=(SystemDiagram const& source);

  // Replaces the diagram from the JSON file at `path`. Throws std::runtime_error
  // "Could not open <path> for reading." if the file cannot be opened (the diagram is then
  // unchanged) and the parse errors of serializeFromJson.
  void readSystemDiagram(std::string const& path);
  // Writes the diagram to `path` as JSON, truncating the file. Throws std::runtime_error
  // "Could not open <path> for writing." if the file cannot be opened. A write that fails
  // half-way is not noticed and may leave a short file.
  void serializeCurrentSystemDiagram(std::string const& path);

  // Replaces the diagram by one made from the run-time data file `rtdFile`, the description of
  // `platform` and the kernels file; the other strings and the flag are recorded as the tool run
  // that generated the binary. The old diagram is dropped whole, upserts included, once the new
  // one is complete: when anything throws (the file cannot be opened, it is malformed or of an
  // unsupported schema version, the platform is not found or is not JSON), the session keeps its
  // old diagram. Throws std::runtime_error "Could not open <path> for reading." and the errors of
  // the reader and of the platform service.
  void populateInitialSystemDiagram(
      std::string const& rtdFile, std::string const& platform, std::string const& generatedName,
      std::string const& generatedVersion, std::string const& generatedChangeList,
      std::string const& generatedTimestamp, std::string const& generatedDetailA,
      std::string const& generatedDetailB, std::string const& kernelsFile,
      std::string const& binaryLabel, bool generatedFlag);
  // Writes the flow report of the diagram to `path` as text, truncating the file. Throws
  // std::runtime_error "Could not open <path> for writing." if the file cannot be opened, and
  // whatever a section of the report throws; the file then holds what was written before.
  void writeFlowReport(std::string const& path);

  // Brings base addresses and memory use and size up to date from the run-time data file that an
  // implementation run wrote. Throws std::runtime_error "Could not open <path> for reading." and
  // the reader's errors; setters already applied stay applied (no rollback).
  void updateSystemDiagramAfterRunningBrenlo(std::string const& rtdFile);
  // The same from the stored diagram `diagramInFile` to `diagramOutFile`, leaving this session's
  // diagram alone. All three files are opened before anything is read, so `diagramOutFile` is
  // truncated even when reading fails later (and is then empty or short). Throws as above, and
  // "Could not open <path> for writing." for the output.
  void writeSystemDiagramAfterRunningBrenlo(std::string const& rtdFile,
                                            std::string const& diagramInFile,
                                            std::string const& diagramOutFile);

  // Keeps the reports of `message` in the session's kernel use, then writes everything reported
  // so far into the diagram: each compute unit named ends up with one actual_resources entry per
  // design state. Two steps, each under its own lock (kernel use, then diagram); another request
  // may merge between them, which is harmless since the second step publishes the whole map.
  void upsertKernelUtilization(dispatch::system_diagram_server::UpsertKernelUse const& message);
  // The same for each of `messages` in order, with one publication at the end instead of one per
  // message. Every publication writes the whole map, so the diagram ends up exactly as after
  // one upsertKernelUtilization per message; a report file of N compute units then costs one
  // rewrite of them instead of N. Nothing is published for an empty list.
  void upsertKernelUtilization(
      std::vector<dispatch::system_diagram_server::UpsertKernelUse> const& messages);

  // Forward to the operation of the same name on systemDiagram.
  void upsertKernel(ProfileAnalyzerSystemDiagramSerializable::kernel const& kernel);
  void upsertQrxBin(ProfileAnalyzerSystemDiagramSerializable::qrxBin const& qrxBin);
  void upsertQrxBinGeneratedBy(
      ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy const& generatedBy);
  void upsertQsaClock(ProfileAnalyzerSystemDiagramSerializable::Clock const& clock);
  void updateComputeUnit(ProfileAnalyzerSystemDiagramSerializable::computeUnit const& computeUnit);
  void upsertConnectivity(
      ProfileAnalyzerSystemDiagramSerializable::Connectivity const& connectivity);
  void getQrxBinGeneratedBy(
      ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy& generatedBy);
  void upsertPlatform(ProfileAnalyzerSystemDiagramSerializable::Platform const& platform);

  // The session's diagram; guarded by its own mutex.
  StatefulSystemDiagram systemDiagram;
  // What the session's implementation runs reported; guarded by its own mutex, always taken
  // before the diagram's.
  StatefulKernelUse kernelUse;
};

}  // namespace IPA

#endif  // DIAGRAM_SYSTEMDIAGRAM_H_
