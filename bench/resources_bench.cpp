// Speed of the resource reports of an implementation run, as UtilizationDuringBrenloRun brings
// them into a session.
//
//   build/bench/resources_bench                                100, 1,000 and 10,000 compute units
//   build/bench/resources_bench --benchmark_filter=Utilization
//
// BM_UtilizationDuringBrenloRun sends one request naming three report files, one per design
// state ("Synthesized", "Fully Placed", "Routed"), each with all N compute units, to a fresh
// session whose diagram has those N compute units. Each file's compute units are merged one by
// one and published together, and a publication finds the compute units of all its names in
// one pass over the diagram, so the request should grow linearly: ten times the compute units,
// about ten times as long (it used to be a thousand times, when every compute unit was
// published on its own and each publication looked for every name in a pass of its own).
// BM_BareReadReports parses the same three files with Boost's reader and does nothing else, the
// floor that the request cannot go below.
//
// Only the request is timed: making the session and loading its diagram (ReadSystemDiagram),
// and removing the session afterwards, are not. The files are written once into a fresh
// directory under the system's temporary directory, which is removed when the program ends.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <array>
#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <map>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/dispatch/Logger.h"
#include "proto/dispatch.pb.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"

namespace {

namespace fs = std::filesystem;
namespace wire = dispatch::system_diagram_server;

constexpr int kKernels = 10;
constexpr std::array<char const*, 3> kDesignStates = {"Synthesized", "Fully Placed", "Routed"};

std::string unitName(int unit) { return "cu_" + std::to_string(unit); }
std::string kernelName(int kernel) { return "krnl_" + std::to_string(kernel); }

// A stored diagram with one user region holding `units` compute units, cu_<i> of the kernel
// krnl_<i mod 10>, with no actual resources yet.
std::string diagramText(int units) {
  std::ostringstream out;
  out << R"({"system_diagram_metadata": {"qrxbin": {"user_regions": [{"name": "ulp", )"
      << R"("type": "user_region", "compute_units": [)";
  for (int u = 0; u < units; ++u) {
    out << (u == 0 ? "\n" : ",\n") << R"(  {"id": ")" << u << R"(", "kernel_name": ")"
        << kernelName(u % kKernels) << R"(", "name": ")" << unitName(u) << R"("})";
  }
  out << "]}]}}}\n";
  return out.str();
}

// The actual resources document of design state `state` (an index into kDesignStates) for all
// `units` compute units, grouped by kernel; the counts shift a little from state to state, as
// those of a real run do.
std::string reportText(int units, int state) {
  std::ostringstream out;
  out << "{\n"
      << R"(  "schema_version": {"major": "1", "minor": "0", "patch": "0"},)" << "\n"
      << R"(  "design_state": ")" << kDesignStates[static_cast<std::size_t>(state)] << R"(",)"
      << "\n"
      << R"(  "kernels": [)";
  for (int k = 0; k < kKernels; ++k) {
    out << (k == 0 ? "\n" : ",\n") << R"(    {"name": ")" << kernelName(k)
        << R"(", "compute_units": [)";
    bool first = true;
    for (int u = k; u < units; u += kKernels) {
      out << (first ? "\n" : ",\n") << R"(      {"cu_name": ")" << unitName(u)
          << R"(", "actual_resources": {"LUT": ")" << 2400 + 100 * k - 40 * state
          << R"(", "REG": ")" << 3800 + 150 * k - 25 * state << R"(", "BRAM": ")" << 2 + k % 3
          << R"(", "URAM": ")" << k % 2 << R"(", "DSP": ")" << 4 * (k % 4) << R"("}})";
      first = false;
    }
    out << "]}";
  }
  out << "\n  ]\n}\n";
  return out.str();
}

void writeFile(fs::path const& path, std::string const& text) {
  std::ofstream out(path, std::ios::out | std::ios::binary | std::ios::trunc);
  out << text;
  if (!out) throw std::runtime_error("Could not write " + path.string() + ".");
}

// The files of one size: the diagram to load and the three reports to send.
struct Design {
  std::string diagramFile;
  std::array<std::string, 3> reportFiles;
  std::int64_t reportBytes = 0;
};

// The benchmark's files, made on first use and removed with the directory when the program
// ends.
class SyntheticReports {
 public:
  SyntheticReports()
      : directory_(fs::temp_directory_path() /
                   ("qv_resources_bench_" + std::to_string(static_cast<long>(::getpid())))) {
    fs::remove_all(directory_);
    fs::create_directories(directory_);
  }
  ~SyntheticReports() {
    std::error_code ignored;
    fs::remove_all(directory_, ignored);
  }
  SyntheticReports(SyntheticReports const&) = delete;
  SyntheticReports& operator=(SyntheticReports const&) = delete;

  // The files for `units` compute units, written on the first call.
  Design const& design(int units) {
    auto found = designs_.find(units);
    if (found != designs_.end()) return found->second;
    std::string const stem = "synthetic_" + std::to_string(units);
    Design made;
    made.diagramFile = (directory_ / (stem + ".diagram.json")).string();
    writeFile(made.diagramFile, diagramText(units));
    for (int state = 0; state < 3; ++state) {
      std::string const path =
          (directory_ / (stem + ".state" + std::to_string(state) + ".util.json")).string();
      writeFile(path, reportText(units, state));
      made.reportFiles[static_cast<std::size_t>(state)] = path;
      made.reportBytes += static_cast<std::int64_t>(fs::file_size(path));
    }
    return designs_.emplace(units, made).first->second;
  }

 private:
  fs::path directory_;
  std::map<int, Design> designs_;
};

SyntheticReports& reports() {
  static SyntheticReports instance;
  return instance;
}

// A request of the diagram service for `sessionUuid` carrying `payload`.
dispatch::Request requestFor(std::string const& sessionUuid,
                             google::protobuf::Message const& payload) {
  dispatch::Request request;
  request.set_service("dispatch.system_diagram_server");
  request.set_session_uuid(sessionUuid);
  request.mutable_payload()->PackFrom(payload);
  return request;
}

dispatch::Session sessionNamed(std::string const& uuid) {
  dispatch::Session session;
  session.set_uuid(uuid);
  session.set_name(uuid);
  return session;
}

// Sends `message` and fails the benchmark unless it is answered 200.
bool served(benchmark::State& state, dispatch::server::ConnectionMgr const& connections,
            std::string const& uuid, google::protobuf::Message const& message) {
  dispatch::Response response;
  connections.dispatch(requestFor(uuid, message), response);
  if (response.status().code() == 200) return true;
  state.SkipWithError(("answered " + std::to_string(response.status().code()) + " to " +
                       message.GetTypeName())
                          .c_str());
  return false;
}

// The same counters on both suites, so that their rates compare directly.
void report(benchmark::State& state, int units, Design const& design) {
  state.SetBytesProcessed(state.iterations() * design.reportBytes);
  state.SetItemsProcessed(state.iterations() * 3 * units);
  state.counters["units"] = units;
}

void BM_UtilizationDuringBrenloRun(benchmark::State& state) {
  int const units = static_cast<int>(state.range(0));
  Design const& design = reports().design(units);
  // The session events would only add noise to the figures.
  dispatch::server::Logger::setStream(nullptr);
  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler(connections);

  wire::ReadSystemDiagram load;
  load.set_path(design.diagramFile);
  wire::UtilizationDuringBrenloRun run;
  for (std::string const& path : design.reportFiles) run.add_utilizationfiles(path);

  int round = 0;
  for (auto _ : state) {
    state.PauseTiming();
    std::string const uuid = "bench-" + std::to_string(round++);
    connections.createSession(sessionNamed(uuid));
    bool const loaded = served(state, connections, uuid, load);
    state.ResumeTiming();
    if (!loaded || !served(state, connections, uuid, run)) break;
    state.PauseTiming();
    connections.removeSession(sessionNamed(uuid));
    state.ResumeTiming();
  }
  report(state, units, design);
  dispatch::server::Logger::setStream(&std::clog);
}
BENCHMARK(BM_UtilizationDuringBrenloRun)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_BareReadReports(benchmark::State& state) {
  int const units = static_cast<int>(state.range(0));
  Design const& design = reports().design(units);
  for (auto _ : state) {
    for (std::string const& path : design.reportFiles) {
      boost::property_tree::ptree tree;
      boost::property_tree::read_json(path, tree);
      benchmark::DoNotOptimize(tree);
    }
  }
  report(state, units, design);
}
BENCHMARK(BM_BareReadReports)->Arg(100)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
