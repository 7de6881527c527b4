// qvdiag: the command line of qv_system_diagram. See docs/qvdiag.md.
//
//   qvdiag build    the whole flow of one design, in-process
//   qvdiag check    what the import of a flow's inputs will refuse, drop or misread
//   qvdiag serve    the compile server: the library over gRPC
//   qvdiag call     one request to a running server
//   qvdiag session  create, fork and remove sessions of a running server
//   qvdiag repo     check, dump and query a hardware repository file
//   qvdiag diff     what changed between two stored diagrams
//   qvdiag report   the flow report of a stored diagram
//   qvdiag render   a stored diagram as SVG, DOT or the HTML viewer
#include <pthread.h>
#include <signal.h>

#include <unistd.h>

#include <CLI/CLI.hpp>
#include <boost/filesystem.hpp>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <optional>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "host/qd/qdrepo/QDSRepo.h"
#include "platform/dispatch/RequestHandler.h"
#include "service/Log.h"
#include "checks/CheckReport.h"
#include "checks/FlowCheck.h"
#include "tools/qvdiag/CompileServerHost.h"
#include "tools/qvdiag/DiagramSummary.h"
#include "tools/qvdiag/ExitCode.h"
#include "tools/qvdiag/FlowBuild.h"
#include "tools/qvdiag/ListenAddress.h"
#include "tools/qvdiag/RemoteClient.h"
#include "tools/qvdiag/RenderCommand.h"
#include "tools/qvdiag/RepoQueries.h"
#include "tools/qvdiag/RequestTypes.h"
#include "tools/qvdiag/ServiceHost.h"
#include "tools/qvdiag/UsageError.h"
#include "views/DiagramDiff.h"
#include "views/FlowReportData.h"
#include "views/StoredDiagram.h"
#include "views/TextFile.h"

namespace {

using namespace qvdiag;

// The options shared by the two commands that host the library.
void addHostOptions(CLI::App& command, ServiceHost::Settings& settings) {
  command.add_option("--library", settings.libraryPath,
                     "The service library to load (default: libqv_system_diagram.so beside "
                     "qvdiag, else in ../lib)");
  command
      .add_option("--platform-path", settings.platformPath,
                  "A directory searched for <platform>.json and <platform>/platform.json; "
                  "repeat for more, searched in order")
      ->check(CLI::ExistingDirectory);
  command.add_option("--timestamp", settings.timestamp,
                     "A fixed time stamp for reports and the build record, for reproducible "
                     "output (default: the clock)");
  command.add_option("--log", settings.logFile,
                     "Append the service trace to FILE (default: standard error)");
  command
      .add_option("--log-level", settings.logLevel,
                  "Trace lines of this level and more serious: 0 errors, 1 failed requests, "
                  "2 warnings, 3 session events, 4 request entry and exit, 5 everything")
      ->check(CLI::Range(0, 5))
      ->default_val(1);
}

// flow_report.json beside `reportFile` (below, with the report command); returns its path.
std::string writeReportJson(std::string const& reportFile);

int runBuild(ServiceHost::Settings const& settings, FlowBuild::Inputs const& inputs,
             bool reportJson, bool pictures) {
  ServiceHost host(settings);
  FlowBuild flow(host, std::cerr);
  FlowBuild::Result const written = flow.run(inputs);
  DiagramSummary const summary = DiagramSummary::fromFile(written.diagramFile);
  // The rtd file that made the diagram names the compute units of its connections.
  RenderCommand::Written drawn;
  if (pictures) drawn = RenderCommand::writeBeside(written.diagramFile, inputs.rtdFile);
  std::cout << "qvdiag build: system diagram of " << written.binaryLabel << '\n';
  summary.print(std::cout);
  std::cout << "  diagram          " << written.diagramFile << '\n'
            << "  flow report      " << written.reportFile << '\n';
  if (reportJson) {
    std::cout << "  report as JSON   " << writeReportJson(written.reportFile) << '\n';
  }
  if (pictures) {
    std::cout << "  picture          " << drawn.svgFile << '\n'
              << "  viewer           " << drawn.htmlFile << '\n';
  }
  std::cout << std::flush;
  return kExitSuccess;
}

int runServe(ServiceHost::Settings const& settings, std::string const& listen, bool allowRemote) {
  ListenAddress const address =
      listen.empty() ? ListenAddress::defaultAddress() : ListenAddress::parse(listen);
  // Whoever reaches the server can make it read and write files with its rights; across the
  // network that takes a decision of the person starting it, not a typo in an address.
  if (!address.isLoopback() && !allowRemote) {
    throw UsageError(address.target() +
                     " is not a loopback address and the server has no authentication; give "
                     "--allow-remote to serve on it anyway (see docs/security.md)");
  }
  // SIGINT and SIGTERM are taken by one thread of ours only: blocked here, before gRPC starts
  // its threads, which inherit the mask.
  sigset_t stopSignals;
  sigemptyset(&stopSignals);
  sigaddset(&stopSignals, SIGINT);
  sigaddset(&stopSignals, SIGTERM);
  pthread_sigmask(SIG_BLOCK, &stopSignals, nullptr);
  signal(SIGPIPE, SIG_IGN);

  ServiceHost host(settings);
  if (!address.isLoopback()) {
    std::cerr << "qvdiag serve: warning: " << address.target()
              << " is not a loopback address; the server has no authentication" << std::endl;
  }
  CompileServerHost server(host.connections(), address);
  std::thread stopper([&server, &stopSignals] {
    int signal = 0;
    sigwait(&stopSignals, &signal);
    std::cerr << "qvdiag serve: " << (signal == SIGINT ? "SIGINT" : "SIGTERM")
              << ": finishing running requests" << std::endl;
    server.shutdown();
  });
  dispatch::Version const version = RequestTypes::serviceVersion();
  std::cout << "qvdiag serve: listening on " << server.target() << " (service "
            << RequestTypes::kServiceName << " " << version.major() << "." << version.minor() << "."
            << version.patch() << ", library " << host.libraryPath() << ")" << std::endl;
  server.wait();
  stopper.join();
  std::cerr << "qvdiag serve: stopped" << std::endl;
  return kExitSuccess;
}

ListenAddress serverAddress(std::string const& text) {
  return text.empty() ? ListenAddress::defaultAddress() : ListenAddress::parse(text);
}

int runCall(std::string const& server, std::string const& session, std::string const& type,
            std::string const& json, std::string const& jsonFile) {
  std::unique_ptr<google::protobuf::Message> const payload =
      !jsonFile.empty() ? RequestTypes::fromJsonFile(type, jsonFile)
                        : RequestTypes::fromJson(type, json.empty() ? "{}" : json);
  RemoteClient client(serverAddress(server));
  dispatch::Response const response = client.dispatch(RequestTypes::request(session, *payload));
  std::cout << RequestTypes::toJson(response) << std::flush;  // ends in a line break
  if (!response.has_status()) {
    std::cerr << "qvdiag call: the service gave no status to " << type << std::endl;
    return kExitFailure;
  }
  if (response.status().code() != dispatch::StatusResponse::OK) {
    std::cerr << "qvdiag call: " << type << " was answered " << response.status().code() << " "
              << response.status().message()
              << (response.status().code() == dispatch::StatusResponse::INTERNAL_SERVER_ERROR
                      ? "; the reason is in the server's log"
                      : "")
              << std::endl;
    return kExitFailure;
  }
  return kExitSuccess;
}

struct RepoOptions {
  std::string file;
  bool dump = false;
  bool check = false;
  bool interactive = false;
  bool listQueries = false;
  std::string xpath;
  std::vector<std::string> query;  // the method, then its arguments
  int logLevel = logINFO;
};

int runRepo(RepoOptions const& options) {
  if (options.listQueries) {
    for (RepoQueries::Query const& query : RepoQueries::all()) {
      std::cout << query.name;
      for (std::string const& parameter : query.parameters) std::cout << " " << parameter;
      std::cout << '\n';
    }
    return kExitSuccess;
  }
  if (options.file.empty()) throw UsageError("a repository FILE is required");
  Log::reportingLevel = options.logLevel;
  std::unique_ptr<qd::QDSRepo> repo;
  try {
    repo = std::make_unique<qd::QDSRepo>(options.file, options.interactive ? 1u : 0u);
  } catch (std::exception const& error) {
    throw std::runtime_error("cannot open the repository '" + options.file + "': " + error.what());
  }
  if (options.dump) std::cout << repo->toString("");
  if (!options.xpath.empty()) std::cout << RepoQueries::evaluate(*repo, options.xpath) << '\n';
  if (!options.query.empty()) {
    std::vector<std::string> const arguments(options.query.begin() + 1, options.query.end());
    std::cout << RepoQueries::ask(*repo, options.query.front(), arguments) << '\n';
  }
  if (options.check) {
    bool const passed = repo->checkDatabase();
    std::cout << options.file << ": " << repo->getNumQdComponents() << " components, "
              << repo->getNumQdHwFcns() << " hardware functions: "
              << (passed ? "every function maps onto an accelerator or the platform"
                         : "the check failed (see the messages above)")
              << std::endl;
    if (!passed) return kExitFailure;
  }
  return kExitSuccess;
}

struct DiffOptions {
  std::string before;
  std::string after;
  std::string format = "text";
  bool all = false;
};

// Exit codes as diff(1) has them: 0 the same, 1 different, 2 trouble (bad usage or a file that
// cannot be read), so that a script can tell "changed" from "could not compare".
int runDiff(DiffOptions const& options) {
  std::optional<qvviews::StoredDiagram> before, after;
  try {
    before = qvviews::StoredDiagram::fromFile(options.before);
    after = qvviews::StoredDiagram::fromFile(options.after);
  } catch (std::exception const& error) {
    throw UsageError(error.what());
  }
  qvviews::DiagramDiff const diff = qvviews::DiagramDiff::compare(*before, *after, options.all);
  // The whole output is composed first: a failure halfway leaves no half document behind.
  std::ostringstream text;
  if (options.format == "json") {
    diff.writeJson(text, options.all, options.before, options.after);
  } else {
    diff.writeText(text, options.all);
  }
  std::cout << text.str() << std::flush;
  return diff.same() ? kExitSuccess : kExitFailure;
}

struct ReportOptions {
  std::string diagram;
  std::string format = "text";
  std::string output;  // empty: standard output
};

// A file of ours that is removed when this object ends, unless it was renamed into place.
class ScratchFile {
 public:
  explicit ScratchFile(std::string path) : path_(std::move(path)) {}
  ~ScratchFile() {
    if (!path_.empty()) std::remove(path_.c_str());
  }
  ScratchFile(ScratchFile const&) = delete;
  ScratchFile& operator=(ScratchFile const&) = delete;
  std::string const& path() const { return path_; }
  void renameTo(std::string const& target) {
    if (std::rename(path_.c_str(), target.c_str()) != 0) {
      throw std::runtime_error("cannot write '" + target + "': " + std::strerror(errno));
    }
    path_.clear();
  }

 private:
  std::string path_;
};

// The flow report is the library's own: the diagram goes through the request path of a
// compile server (ReadSystemDiagram, WriteFlowReport), so that the text is byte for byte what a
// server writes. The report is written beside its target and renamed into place, so a reader
// never sees half a report.
int runReport(ServiceHost::Settings const& settings, ReportOptions const& options) {
  // A diagram that cannot be read is the user's input, not the library's failure: it is read
  // here first, with the library's rules, so that the message names the file and the reason.
  try {
    (void)qvviews::StoredDiagram::fromFile(options.diagram);
  } catch (std::exception const& error) {
    throw UsageError(error.what());
  }
  // Beside the target, so that the rename stays within one file system; for standard output a
  // name in the temporary directory that nobody can guess in advance.
  ScratchFile scratch(
      options.output.empty()
          ? (boost::filesystem::temp_directory_path() /
             boost::filesystem::unique_path("qvdiag-report-%%%%-%%%%-%%%%-%%%%.tmp"))
                .string()
          : options.output + ".tmp-" + std::to_string(::getpid()));
  ServiceHost host(settings);
  std::ostream quiet(nullptr);  // no progress lines: the report is the output
  FlowBuild flow(host, quiet);
  flow.writeReport(options.diagram, scratch.path());
  if (options.format == "json") {
    std::ostringstream json;
    qvviews::FlowReportData::fromText(qvviews::TextFile::read(scratch.path())).writeJson(json);
    std::ofstream out(scratch.path(), std::ios::binary | std::ios::trunc);
    out << json.str();
    out.close();
    if (!out) throw std::runtime_error("cannot write '" + scratch.path() + "'");
  }
  if (!options.output.empty()) {
    scratch.renameTo(options.output);
    return kExitSuccess;
  }
  std::cout << qvviews::TextFile::read(scratch.path()) << std::flush;
  return kExitSuccess;
}

// flow_report.json beside the text report of a build, from the text the library wrote.
std::string writeReportJson(std::string const& reportFile) {
  std::string const target =
      (boost::filesystem::path(reportFile).parent_path() / "flow_report.json").string();
  std::ostringstream json;
  qvviews::FlowReportData::fromText(qvviews::TextFile::read(reportFile)).writeJson(json);
  ScratchFile scratch(target + ".tmp-" + std::to_string(::getpid()));
  {
    std::ofstream out(scratch.path(), std::ios::binary | std::ios::trunc);
    out << json.str();
    out.close();
    if (!out) throw std::runtime_error("cannot write '" + scratch.path() + "'");
  }
  scratch.renameTo(target);
  return target;
}

dispatch::Session sessionOf(std::string const& uuid, std::string const& name) {
  dispatch::Session session;
  session.set_uuid(uuid);
  session.set_name(name);
  return session;
}

// The options of build, which check takes as well, so that a command line of one runs as the
// other. For check nothing is required, and the options that only matter to build say so.
struct FlowOptions {
  ServiceHost::Settings settings;
  FlowBuild::Inputs inputs;
  std::string reportFormat = "text";
  bool noPictures = false;
  bool checkFirst = false;
};

struct CheckOptions {
  std::string diagramFile;
  std::string repositoryFile;
  std::string format = "text";
  bool strict = false;
};

void addFlowOptions(CLI::App& command, FlowOptions& options, bool forCheck) {
  FlowBuild::Inputs& inputs = options.inputs;
  std::string const ignored = forCheck ? " (check: accepted and ignored)" : "";
  CLI::Option* rtd =
      command.add_option("--rtd", inputs.rtdFile, "The run-time data file written after linking")
          ->check(CLI::ExistingFile);
  CLI::Option* platform = command.add_option(
      "--platform", inputs.platform,
      "The platform: a name found on --platform-path, or the path of its JSON file");
  if (!forCheck) {
    rtd->required();
    platform->required();
  }
  command.add_option("--kernels", inputs.kernelsFile,
                     "The kernels file (default: kernels.txt beside the rtd file; a missing one "
                     "means no kernels)");
  command
      .add_option("--after-impl-rtd", inputs.afterImplRtdFile,
                  "The run-time data file written again after implementation")
      ->check(CLI::ExistingFile);
  command
      .add_option("--utilization", inputs.utilizationFiles,
                  "A resource report of an implementation stage; repeat for more, merged in "
                  "order")
      ->check(CLI::ExistingFile);
  command
      .add_option("--requests", inputs.requestFiles,
                  "A JSON array of further requests, [{\"type\": NAME, \"payload\": {...}}], "
                  "sent in order after the import; repeat for more" + ignored)
      ->check(CLI::ExistingFile);
  command.add_option("--out-dir", inputs.outDir,
                     "Where the two files are written (created)" + ignored)
      ->default_val(".");
  command.add_option("--label", inputs.binaryLabel,
                     "The binary's label (default: the rtd file's name without .rtd.json)" +
                         ignored);
  command.add_option("--generated-name", inputs.generatedName,
                     "Generator name of the build record (default: qvdiag)" + ignored);
  command.add_option("--generated-version", inputs.generatedVersion,
                     "Generator version (default: qvdiag's version)" + ignored);
  command.add_option("--generated-change-list", inputs.generatedChangeList,
                     "Generator change list (default: local)" + ignored);
  command.add_option("--generated-timestamp", inputs.generatedTimestamp,
                     "Time stamp of the build record (default: --timestamp, else now)" + ignored);
  command.add_option("--generated-detail-a", inputs.generatedDetailA,
                     "First detail of the build record (default: the rtd file's name)" + ignored);
  command.add_option("--generated-detail-b", inputs.generatedDetailB,
                     "Second detail of the build record (default: the platform as given)" +
                         ignored);
  command.add_flag("--generated-flag", inputs.generatedFlag,
                   "Set the build record's flag" + ignored);
  command
      .add_option("--report-format", options.reportFormat,
                  "text (default): flow_report.txt; json or both: also flow_report.json, the "
                  "report's sections as data (docs/flow-report.md)" + ignored)
      ->check(CLI::IsMember({"text", "json", "both"}));
  command.add_flag("--no-pictures", options.noPictures,
                   "Do not draw system_diagram.svg and system_diagram.html beside the diagram" +
                       ignored);
  addHostOptions(command, options.settings);
  if (forCheck) {
    // Of the host's options only --platform-path matters to a check; the others are build's.
    for (char const* name : {"--library", "--timestamp", "--log", "--log-level"}) {
      CLI::Option* option = command.get_option(name);
      option->description(option->get_description() + ignored);
    }
  }
}

qvcheck::FlowCheck::Inputs checkInputs(FlowOptions const& options, CheckOptions const& only) {
  qvcheck::FlowCheck::Inputs inputs;
  inputs.rtdFile = options.inputs.rtdFile;
  inputs.platform = options.inputs.platform;
  inputs.platformPath = options.settings.platformPath;
  inputs.kernelsFile = options.inputs.kernelsFile;
  inputs.afterImplRtdFile = options.inputs.afterImplRtdFile;
  inputs.utilizationFiles = options.inputs.utilizationFiles;
  inputs.diagramFile = only.diagramFile;
  inputs.repositoryFile = only.repositoryFile;
  return inputs;
}

int runCheck(FlowOptions const& options, CheckOptions const& only) {
  qvcheck::FlowCheck::Inputs const inputs = checkInputs(options, only);
  if (inputs.rtdFile.empty() && inputs.platform.empty() && inputs.kernelsFile.empty() &&
      inputs.afterImplRtdFile.empty() && inputs.utilizationFiles.empty() &&
      inputs.diagramFile.empty() && inputs.repositoryFile.empty()) {
    throw UsageError("nothing to check: give at least one input (--rtd, --platform, --kernels, "
                     "--after-impl-rtd, --utilization, --diagram, --repository)");
  }
  qvcheck::CheckReport report;
  qvcheck::FlowCheck::run(inputs, report);
  std::ostringstream out;
  if (only.format == "json") {
    report.writeJson(out);
  } else {
    report.writeText(out);
  }
  std::cout << out.str() << std::flush;
  return report.exitCode(only.strict);
}

// Text of the exception being handled, for the one line qvdiag prints on failure.
int failed(char const* command, std::exception const& error, int code) {
  std::cerr << "qvdiag " << command << ": " << error.what() << std::endl;
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  CLI::App app{"qvdiag: builds, serves and queries system diagrams of accelerated designs"};
  app.require_subcommand(1);
  app.set_version_flag("--version", std::string("qvdiag ") + QV_VERSION);

  // build
  FlowOptions buildOptions;
  CLI::App* build = app.add_subcommand(
      "build",
      "Run the whole flow of one design in-process: import the rtd file, update it after "
      "implementation, merge resource reports, write system_diagram.json and flow_report.txt");
  addFlowOptions(*build, buildOptions, false);
  build->add_flag("--check", buildOptions.checkFirst,
                  "Check the inputs first, as qvdiag check does, and stop before the first "
                  "request when the check finds an error (findings on standard error)");

  // check
  FlowOptions checkOptions;
  CheckOptions checkOnly;
  CLI::App* check = app.add_subcommand(
      "check",
      "Check the inputs of a flow with strict readers: say, with file, line and a code, what "
      "the import will refuse, drop or misread (docs/check.md). Takes the options of build; "
      "those that only matter to build are accepted and ignored. Exit 0: no error (with "
      "--strict: no warning either); 1: errors; 2: bad usage");
  addFlowOptions(*check, checkOptions, true);
  check->add_option("--diagram", checkOnly.diagramFile,
                    "A stored system diagram (JSON) to check as ReadSystemDiagram reads it")
      ->check(CLI::ExistingFile);
  check->add_option("--repository", checkOnly.repositoryFile,
                    "A hardware repository (system compiler database) to open, check and ask "
                    "the import's queries")
      ->check(CLI::ExistingFile);
  check
      ->add_option("--format", checkOnly.format,
                   "text (default): one line per finding, as a compiler prints them, and a "
                   "summary; json: one document for a script (docs/check.md)")
      ->check(CLI::IsMember({"text", "json"}));
  check->add_flag("--strict", checkOnly.strict, "Exit 1 when there is any warning");

  // serve
  ServiceHost::Settings serveSettings;
  std::string listen;
  CLI::App* serve = app.add_subcommand(
      "serve",
      "Serve the library over gRPC (CompileServer and grpc.health.v1.Health) until SIGINT or "
      "SIGTERM");
  serve->add_option("--listen", listen,
                    "unix:PATH (mode 0600), tcp:PORT or PORT (on 127.0.0.1), or HOST:PORT "
                    "(default: unix:/tmp/qvdiag-<uid>.sock)");
  bool allowRemote = false;
  serve->add_flag("--allow-remote", allowRemote,
                  "Serve on a --listen address that is not a loopback one (any client that "
                  "reaches it can read and write files as this user)");
  addHostOptions(*serve, serveSettings);

  // call
  std::string callServer, callSession, callType, callJson, callJsonFile;
  CLI::App* call = app.add_subcommand(
      "call", "Send one request to a running server and print its response as JSON");
  call->add_option("--server", callServer,
                   "The server's address, as for serve --listen (default: "
                   "unix:/tmp/qvdiag-<uid>.sock)");
  call->add_option("--session", callSession, "The session's UUID")->required();
  call->add_option("--type", callType, "The request type, e.g. MakeInitialSystemDiagram")
      ->required()
      ->check(
          [](std::string const& name) {
            if (RequestTypes::isKnown(name)) return std::string();
            std::string known;
            for (std::string const& each : RequestTypes::names()) known += " " + each;
            return "unknown request type '" + name + "'; the request types are:" + known;
          },
          "TYPE");
  CLI::Option* jsonOption =
      call->add_option("--json", callJson, "The payload in protobuf JSON (default: {})");
  call->add_option("--json-file", callJsonFile, "A file holding the payload in protobuf JSON")
      ->check(CLI::ExistingFile)
      ->excludes(jsonOption);

  // session
  std::string sessionServer, sessionUuid, sessionName, forkSource;
  CLI::App* session =
      app.add_subcommand("session", "Create, fork or remove a session of a running server");
  session->require_subcommand(1);
  session->add_option("--server", sessionServer,
                      "The server's address (default: unix:/tmp/qvdiag-<uid>.sock)");
  CLI::App* create = session->add_subcommand("create", "Create a session and print its UUID");
  create->add_option("--uuid", sessionUuid, "The UUID to use (default: a fresh one)");
  create->add_option("--name", sessionName, "The session's name");
  CLI::App* fork = session->add_subcommand(
      "fork", "Create a session holding a copy of another's diagram and print its UUID");
  fork->add_option("source", forkSource, "The UUID of the session to copy")->required();
  fork->add_option("--uuid", sessionUuid, "The new session's UUID (default: a fresh one)");
  fork->add_option("--name", sessionName, "The new session's name");
  CLI::App* remove = session->add_subcommand("remove", "Remove a session and its diagram");
  remove->add_option("uuid", sessionUuid, "The session's UUID")->required();

  // repo
  RepoOptions repoOptions;
  CLI::App* repo = app.add_subcommand(
      "repo", "Open a hardware repository file, check it, dump it or ask it queries");
  repo->add_option("file", repoOptions.file, "The repository file (XML)")->check(CLI::ExistingFile);
  repo->add_flag("--dump", repoOptions.dump, "Print the repository's account of itself");
  repo->add_flag("--check", repoOptions.check,
                 "Check that every hardware function maps onto an accelerator or the platform "
                 "(exit 1 when not)");
  repo->add_option("--xpath", repoOptions.xpath,
                   "Evaluate an XPath expression (prefixes cf, mvk, qd, quarrix, spirit, hsi) "
                   "and print its type and value");
  repo->add_flag("--interactive", repoOptions.interactive,
                 "Read XPath expressions from standard input until -q or the end of input");
  repo->add_option("--query", repoOptions.query,
                   "Ask one query: METHOD ARG... (see --list-queries)")
      ->expected(1, -1);
  repo->add_flag("--list-queries", repoOptions.listQueries,
                 "List the queries that --query knows, with their parameters");
  repo->add_option("--log-level", repoOptions.logLevel,
                   "Show repository lines of this level and above: 0 internal, 1 debug, 2 info "
                   "(the default), 3 warning, 4 critical warning, 5 error")
      ->check(CLI::Range(0, 5));

  // diff
  DiffOptions diffOptions;
  CLI::App* diff = app.add_subcommand(
      "diff",
      "Show what changed from one stored system diagram to another.\n"
      "Entries are matched by name (compute units, kernels), tag (memories), source instance\n"
      "and pin and destination (connections), id (platform clocks), compute unit and state\n"
      "(resources), compute unit and SLR (SLR use). Text marks: + added, - removed,\n"
      "~ changed, = unchanged (--all). A change reads OLD \u2192 NEW; counts add the change\n"
      "and its percentage of OLD, (+1,629, +8.9%), and a resource count its share of its\n"
      "SLR's available amount before and after; frequencies add their percentage change,\n"
      "300.00 \u2192 281.25 MHz (\u22126.2%). \u2212 is a minus sign. The largest changes come\n"
      "first in each group. Exit 0: the same; 1: different; 2: bad usage or unreadable input");
  diff->add_option("old", diffOptions.before, "The earlier diagram (system_diagram.json)")
      ->required();
  diff->add_option("new", diffOptions.after, "The later diagram")->required();
  diff->add_option("--format", diffOptions.format,
                   "text for a person (default), json for a script (docs/formats.md)")
      ->check(CLI::IsMember({"text", "json"}));
  diff->add_flag("--all", diffOptions.all, "List what did not change as well");

  // report
  ServiceHost::Settings reportSettings;
  ReportOptions reportOptions;
  CLI::App* report = app.add_subcommand(
      "report",
      "Write the flow report of a stored system diagram, as the library writes it for a "
      "server. Exit 0: written; 1: the library failed; 2: bad usage or unreadable input");
  report->add_option("diagram", reportOptions.diagram, "The stored diagram (system_diagram.json)")
      ->required();
  report
      ->add_option("--format", reportOptions.format,
                   "text (default): the report itself; json: its seven sections as data "
                   "(docs/flow-report.md)")
      ->check(CLI::IsMember({"text", "json"}));
  report->add_option("-o,--output", reportOptions.output,
                     "Write the report to FILE (default: standard output)");
  addHostOptions(*report, reportSettings);

  // render
  RenderCommand::Options renderOptions;
  CLI::App* render = app.add_subcommand(
      "render",
      "Draw a stored diagram: compute units per SLR, their kernels, memories, connections, "
      "clocks and resource use, as SVG, Graphviz DOT or a self-contained HTML viewer");
  render->add_option("diagram", renderOptions.diagramFile, "The stored diagram (JSON)")
      ->required();
  render->add_option("--format", renderOptions.format,
                     "svg, dot or html (default: from the output's extension, else svg)");
  render->add_option("-o,--output", renderOptions.outputFile,
                     "Where the picture is written (default, or -: standard output)");
  render->add_option("--rtd", renderOptions.rtdFile,
                     "The run-time data file that made the diagram: its IP layout names the "
                     "compute units of imported connections (docs/pictures.md)");

  try {
    app.parse(argc, argv);
  } catch (CLI::ParseError const& error) {
    int const code = app.exit(error);
    return code == 0 ? kExitSuccess : kExitUsage;
  }

  char const* command = app.get_subcommands().front()->get_name().c_str();
  try {
    if (build->parsed()) {
      if (buildOptions.checkFirst) {
        // The findings go to standard error, where build's progress goes; standard output
        // keeps build's summary alone.
        qvcheck::CheckReport findings;
        qvcheck::FlowCheck::run(checkInputs(buildOptions, CheckOptions()), findings);
        findings.writeText(std::cerr);
        if (findings.exitCode(false) != kExitSuccess) {
          std::cerr << "qvdiag build: the check found errors; nothing was sent" << std::endl;
          return kExitFailure;
        }
      }
      return runBuild(buildOptions.settings, buildOptions.inputs,
                      buildOptions.reportFormat != "text", !buildOptions.noPictures);
    }
    if (check->parsed()) return runCheck(checkOptions, checkOnly);
    if (render->parsed()) {
      RenderCommand::run(renderOptions, std::cout);
      return kExitSuccess;
    }
    if (serve->parsed()) return runServe(serveSettings, listen, allowRemote);
    if (call->parsed()) return runCall(callServer, callSession, callType, callJson, callJsonFile);
    if (repo->parsed()) return runRepo(repoOptions);
    if (diff->parsed()) return runDiff(diffOptions);
    if (report->parsed()) return runReport(reportSettings, reportOptions);
    RemoteClient client(serverAddress(sessionServer));
    if (create->parsed()) {
      std::cout << client.createSession(sessionOf(sessionUuid, sessionName)).uuid() << std::endl;
    } else if (fork->parsed()) {
      std::cout << client.forkSession(forkSource, sessionOf(sessionUuid, sessionName)).uuid()
                << std::endl;
    } else {
      client.removeSession(sessionOf(sessionUuid, ""));
    }
    return kExitSuccess;
  } catch (UsageError const& error) {
    return failed(command, error, kExitUsage);
  } catch (std::exception const& error) {
    // For diff, 1 means "different"; anything that went wrong is trouble (2).
    return failed(command, error, diff->parsed() ? kExitUsage : kExitFailure);
  }
}
