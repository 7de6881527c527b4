#include "tools/qvdiag/FlowBuild.h"

#include <boost/filesystem.hpp>
#include <chrono>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <streambuf>
#include <string>

#include "platform/dispatch/Logger.h"
#include "platform/dispatch/RequestHandler.h"
#include "platform/hut/HUTEnv.h"
#include "proto/system_diagram_server.pb.h"
#include "tools/qvdiag/RequestTypes.h"

#ifndef QV_VERSION
#error "QV_VERSION must be defined by the build"
#endif

namespace qvdiag {
namespace {

namespace fs = boost::filesystem;
namespace wire = dispatch::system_diagram_server;

// The last line of `text` that is not empty.
std::string lastLine(std::string const& text) {
  std::istringstream lines(text);
  std::string line;
  std::string last;
  while (std::getline(lines, line)) {
    if (!line.empty()) last = line;
  }
  return last;
}

// Passes everything on to the trace's usual stream at once, and keeps a copy.
class TeeBuffer : public std::streambuf {
 public:
  explicit TeeBuffer(std::streambuf* out) : out_(out) {}
  std::string const& copy() const { return copy_; }

 protected:
  int_type overflow(int_type c) override {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    copy_.push_back(traits_type::to_char_type(c));
    return out_->sputc(traits_type::to_char_type(c));
  }
  std::streamsize xsputn(char const* text, std::streamsize n) override {
    copy_.append(text, static_cast<std::size_t>(n));
    return out_->sputn(text, n);
  }
  int sync() override { return out_->pubsync(); }

 private:
  std::streambuf* out_;
  std::string copy_;
};

// While it lives, the service trace goes on to `out`, the trace's usual stream, line by line as
// ever, and what it says is also kept, so that a failed request can be named with its reason.
class TraceCapture {
 public:
  explicit TraceCapture(std::ostream& out) : out_(out), tee_(out.rdbuf()), teeStream_(&tee_) {
    dispatch::server::Logger::setStream(&teeStream_);
  }
  ~TraceCapture() { dispatch::server::Logger::setStream(&out_); }
  TraceCapture(TraceCapture const&) = delete;
  TraceCapture& operator=(TraceCapture const&) = delete;

  std::string text() const { return tee_.copy(); }

 private:
  std::ostream& out_;
  TeeBuffer tee_;
  std::ostream teeStream_;
};

// Removes the session of the flow however run() ends.
class SessionGuard {
 public:
  SessionGuard(dispatch::server::ConnectionMgr& connections, std::string const& uuid)
      : connections_(connections) {
    session_.set_name("qvdiag build");
    session_.set_uuid(uuid);
    connections_.createSession(session_);
  }
  ~SessionGuard() {
    try {
      connections_.removeSession(session_);
    } catch (std::exception const&) {
      // The flow's own error, if any, is the one worth reporting.
    }
  }
  SessionGuard(SessionGuard const&) = delete;
  SessionGuard& operator=(SessionGuard const&) = delete;

 private:
  dispatch::server::ConnectionMgr& connections_;
  dispatch::Session session_;
};

}  // namespace

FlowBuild::Inputs FlowBuild::withDefaults(Inputs inputs) {
  fs::path const rtd(inputs.rtdFile);
  if (inputs.kernelsFile.empty()) {
    inputs.kernelsFile = (rtd.parent_path() / "kernels.txt").string();
  }
  if (inputs.generatedName.empty()) inputs.generatedName = "qvdiag";
  if (inputs.generatedVersion.empty()) inputs.generatedVersion = QV_VERSION;
  if (inputs.generatedChangeList.empty()) inputs.generatedChangeList = "local";
  if (inputs.generatedTimestamp.empty()) HUTEnv::getTimeStamp(inputs.generatedTimestamp);
  if (inputs.generatedDetailA.empty()) inputs.generatedDetailA = rtd.filename().string();
  if (inputs.generatedDetailB.empty()) inputs.generatedDetailB = inputs.platform;
  if (inputs.binaryLabel.empty()) {
    fs::path label = rtd.filename();
    if (label.extension() == ".json") label = label.stem();
    if (label.extension() == ".rtd") label = label.stem();
    inputs.binaryLabel = label.string();
  }
  if (inputs.outDir.empty()) inputs.outDir = ".";
  return inputs;
}

FlowBuild::FlowBuild(ServiceHost& host, std::ostream& progress)
    : host_(host), progress_(progress) {}

FlowBuild::Result FlowBuild::run(Inputs const& given) {
  Inputs const inputs = withDefaults(given);
  // Request files are read first: a bad one stops the run before anything is sent.
  struct FileRequest {
    std::string origin;
    std::unique_ptr<google::protobuf::Message> message;
  };
  std::vector<FileRequest> fileRequests;
  for (std::string const& file : inputs.requestFiles) {
    int entry = 0;
    for (auto& message : RequestTypes::listFromJsonFile(file)) {
      fileRequests.push_back({file + " entry " + std::to_string(++entry), std::move(message)});
    }
  }

  Result result;
  result.binaryLabel = inputs.binaryLabel;
  result.diagramFile = (fs::path(inputs.outDir) / kDiagramFileName).string();
  result.reportFile = (fs::path(inputs.outDir) / kReportFileName).string();

  boost::system::error_code error;
  fs::create_directories(inputs.outDir, error);
  if (error) {
    throw std::runtime_error("cannot create the output directory '" + inputs.outDir +
                             "': " + error.message());
  }

  auto const started = std::chrono::steady_clock::now();
  step_ = 0;
  steps_ = 3 + static_cast<int>(fileRequests.size()) + (inputs.afterImplRtdFile.empty() ? 0 : 1) +
           static_cast<int>(inputs.utilizationFiles.size());
  sessionUuid_ = dispatch::server::ConnectionMgr::freshUuid();
  SessionGuard session(host_.connections(), sessionUuid_);

  wire::MakeInitialSystemDiagram make;
  make.set_rtdfile(inputs.rtdFile);
  make.set_platform(inputs.platform);
  make.set_generatedname(inputs.generatedName);
  make.set_generatedversion(inputs.generatedVersion);
  make.set_generatedchangelist(inputs.generatedChangeList);
  make.set_generatedtimestamp(inputs.generatedTimestamp);
  make.set_generateddetaila(inputs.generatedDetailA);
  make.set_generateddetailb(inputs.generatedDetailB);
  make.set_kernelsfile(inputs.kernelsFile);
  make.set_binarylabel(inputs.binaryLabel);
  make.set_generatedflag(inputs.generatedFlag);
  send("MakeInitialSystemDiagram from " + inputs.rtdFile + " on " + inputs.platform, make);
  for (FileRequest const& request : fileRequests) {
    send(request.message->GetDescriptor()->name() + " from " + request.origin, *request.message);
  }

  if (!inputs.afterImplRtdFile.empty()) {
    wire::UpdateSystemDiagramAfterBrenloRuns update;
    update.set_rtdfile(inputs.afterImplRtdFile);
    send("UpdateSystemDiagramAfterBrenloRuns from " + inputs.afterImplRtdFile, update);
  }
  for (std::string const& file : inputs.utilizationFiles) {
    wire::UtilizationDuringBrenloRun utilization;
    utilization.add_utilizationfiles(file);
    send("UtilizationDuringBrenloRun from " + file, utilization);
  }

  wire::WriteSystemDiagram write;
  write.set_path(result.diagramFile);
  send("WriteSystemDiagram to " + result.diagramFile, write);
  wire::WriteFlowReport report;
  report.set_path(result.reportFile);
  send("WriteFlowReport to " + result.reportFile, report);
  progress_ << "qvdiag build: " << steps_ << " requests served in "
            << std::chrono::duration_cast<std::chrono::milliseconds>(
                   std::chrono::steady_clock::now() - started)
                   .count()
            << " ms" << std::endl;
  return result;
}

void FlowBuild::writeReport(std::string const& diagramFile, std::string const& reportFile) {
  step_ = 0;
  steps_ = 2;
  sessionUuid_ = dispatch::server::ConnectionMgr::freshUuid();
  SessionGuard session(host_.connections(), sessionUuid_);
  wire::ReadSystemDiagram read;
  read.set_path(diagramFile);
  send("ReadSystemDiagram from " + diagramFile, read);
  wire::WriteFlowReport report;
  report.set_path(reportFile);
  send("WriteFlowReport to " + reportFile, report);
}

void FlowBuild::send(std::string const& what, google::protobuf::Message const& payload) {
  ++step_;
  progress_ << "[" << step_ << "/" << steps_ << "] " << what << std::endl;

  // The service logs the reason of a failure, not the client; keep what it logs during the
  // request so that the failure can name it.
  std::string trace;
  dispatch::Response response;
  {
    TraceCapture capture(host_.traceStream());
    host_.connections().dispatch(RequestTypes::request(sessionUuid_, payload), response);
    trace = capture.text();
  }
  std::string const type = payload.GetDescriptor()->name();
  if (!response.has_status()) {
    throw std::runtime_error(type + " was not answered by the service");
  }
  int const code = response.status().code();
  if (code != dispatch::StatusResponse::OK) {
    std::string const reason = lastLine(trace);
    throw std::runtime_error(type + " failed: " + std::to_string(code) + " " +
                             response.status().message() +
                             (reason.empty() ? std::string() : ": " + reason));
  }
}

}  // namespace qvdiag
