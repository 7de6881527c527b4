// qvdiag build: the whole flow of one design, in-process, through the request path of a
// compile server.
#ifndef TOOLS_QVDIAG_FLOWBUILD_H_
#define TOOLS_QVDIAG_FLOWBUILD_H_

#include <google/protobuf/message.h>

#include <ostream>
#include <string>
#include <vector>

#include "tools/qvdiag/ServiceHost.h"

namespace qvdiag {

// Sends the requests of a flow to the diagram service of a ServiceHost, as a tool chain would:
// one session, real dispatch.Request messages through ConnectionMgr::dispatch.
//
//   MakeInitialSystemDiagram            from the rtd file, the platform and the kernels file
//   any requests of the request files   in file order, as a tool chain sends them while linking
//   UpdateSystemDiagramAfterBrenloRuns  when an rtd file after implementation is given
//   UtilizationDuringBrenloRun          once for each resource report, in the order given
//   WriteSystemDiagram                  <out-dir>/system_diagram.json
//   WriteFlowReport                     <out-dir>/flow_report.txt
//
// The session exists only for the length of run().
class FlowBuild {
 public:
  struct Inputs {
    std::string rtdFile;
    std::string platform;
    std::string kernelsFile;       // empty: kernels.txt beside the rtd file
    std::string afterImplRtdFile;  // empty: no update after implementation
    std::vector<std::string> utilizationFiles;
    // JSON arrays of further requests (RequestTypes::listFromJson), sent after the import.
    std::vector<std::string> requestFiles;
    std::string outDir = ".";
    // The build's generator record; empty fields take the defaults of withDefaults().
    std::string generatedName;
    std::string generatedVersion;
    std::string generatedChangeList;
    std::string generatedTimestamp;
    std::string generatedDetailA;
    std::string generatedDetailB;
    std::string binaryLabel;
    bool generatedFlag = false;
  };

  struct Result {
    std::string binaryLabel;  // as given or defaulted
    std::string diagramFile;
    std::string reportFile;
  };

  static constexpr char const* kDiagramFileName = "system_diagram.json";
  static constexpr char const* kReportFileName = "flow_report.txt";

  // `inputs` with every empty field that has a default filled in: the kernels file, and the
  // generator record from this tool ("qvdiag", its version, "local", the report time stamp,
  // the rtd file's name, the platform) and the label (the rtd file's name without ".json" and
  // ".rtd").
  static Inputs withDefaults(Inputs inputs);

  // `host` must outlive this object. Progress lines go to `progress`.
  FlowBuild(ServiceHost& host, std::ostream& progress);

  // Runs the flow on `inputs` as withDefaults() completes them. Creates the output directory.
  // Throws UsageError, before anything is sent, for a request file that cannot be read or is
  // not a list of requests; std::runtime_error naming the step when a request is not answered
  // 200, with the reason the service logged. What earlier steps wrote stays.
  Result run(Inputs const& inputs);

  // The flow report of a stored diagram, as a server writes it: in a session of its own,
  // ReadSystemDiagram of `diagramFile`, then WriteFlowReport to `reportFile`. Throws
  // std::runtime_error naming the request and the service's reason when one is not answered 200.
  void writeReport(std::string const& diagramFile, std::string const& reportFile);

 private:
  // Sends `payload` in the flow's session; throws unless the answer is 200.
  void send(std::string const& what, google::protobuf::Message const& payload);

  ServiceHost& host_;
  std::ostream& progress_;
  std::string sessionUuid_;
  int step_ = 0;
  int steps_ = 0;
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_FLOWBUILD_H_
