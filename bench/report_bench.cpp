// Speed of the flow report on a large design.
//
//   build/bench/report_bench                          500 and 5,000 compute units
//   build/bench/report_bench --benchmark_filter=FlowReport/5000
//
// BM_WriteFlowReport writes the whole report of a diagram built in memory: N compute units of
// ten kernels over four SLRs, each with two clock references, a reset pin and one SLR's worth of
// resource rows, and 10 * N connections. Six in ten connections go to memories, which the report
// leaves out; the others are one reset, two clocks (one from an IP's clock pin, one from a board
// clock) and one stream per compute unit, the streams turning between IP to compute unit,
// compute unit to compute unit and compute unit to IP. One compute unit in fifty trades a
// memory connection for a board clock feeding an IP's clock input.
//
// Sections 3 and 4 ask the diagram for each clock and reset connection's compute unit, so the
// time per compute unit shows whether those lookups grow with the size of the design: compare
// the ratio of the two medians with the ratio of the sizes (10).
//
// Only writeFlowReport is timed; the stream is opened on a file in a fresh directory under the
// system's temporary directory, truncated before each round, and the directory is removed when
// the program ends. The heading's time stamp is fixed so that every round writes the same text.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <system_error>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "platform/hut/HUTEnv.h"

namespace {

namespace fs = std::filesystem;
namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Container = pb::outerContainer;

constexpr int kSlrs = 4;
constexpr int kKernels = 10;
constexpr int kPlatformClocks = 8;
constexpr int kMemoryConnectionsPerUnit = 6;
// One compute unit in this many gives a memory connection up for a board clock to an IP.
constexpr int kUnitsPerIpClockInput = 50;

std::string kernelName(int kernel) { return "krnl_" + std::to_string(kernel); }
std::string unitName(int unit) {
  return kernelName(unit % kKernels) + "_" + std::to_string(unit / kKernels + 1);
}
std::string slrName(int slr) { return "SLR" + std::to_string(slr); }

void setNode(pb::Node* node, char const* type, std::string const& id, std::string const& instance,
             std::string const& pin) {
  node->set_type(type);
  node->set_id(id);
  node->set_instance(instance);
  node->set_pin(pin);
}

void addClockRef(google::protobuf::RepeatedPtrField<pb::clockRef>* references, char const* name,
                 std::string const& clockId, double requested, double achieved) {
  pb::clockRef* reference = references->Add();
  reference->set_name(name);
  reference->set_clock_id(clockId);
  reference->set_requested_frequency(requested);
  reference->set_achieved_frequency(achieved);
}

void addUtilization(pb::slrResources* resources, char const* site, int used, int available) {
  pb::resourceUtilization* row = resources->add_utilization();
  row->set_resource(site);
  row->set_used(std::to_string(used));
  row->set_available(std::to_string(available));
}

// The eight platform clocks, ids 0 to 7.
void addPlatformClocks(pb::Qsa* qsa) {
  for (int c = 0; c < kPlatformClocks; ++c) {
    pb::Clock* clock = qsa->add_clocks();
    clock->set_name("clk_" + std::to_string(c));
    clock->set_orig_name("clk_out" + std::to_string(c));
    clock->set_id(c);
    clock->set_frequency(100.0 + 50.0 * c);
    clock->set_period(1000.0 / (100.0 + 50.0 * c));
    clock->set_requested_frequency(100.0 + 50.0 * c);
    clock->set_achieved_frequency(c % 2 == 0 ? 99.5 + 50.0 * c : 0.0);
  }
}

void addKernels(pb::userRegion* region) {
  for (int k = 0; k < kKernels; ++k) {
    pb::kernel* kernel = region->add_kernels();
    kernel->set_name(kernelName(k));
    addClockRef(kernel->mutable_clock_refs(), "ap_clk", "", 300.0, 0.0);
    addClockRef(kernel->mutable_clock_refs(), "ap_clk_2", "", 500.0, 0.0);
  }
}

void addComputeUnit(pb::userRegion* region, int u) {
  pb::computeUnit* unit = region->add_compute_units();
  unit->set_id(std::to_string(u));
  unit->set_kernel_name(kernelName(u % kKernels));
  unit->set_name(unitName(u));
  unit->set_base_address("0x" + std::to_string(1800000 + 10000 * u));
  // The first clock's frequencies are the unit's own; the second's achieved one comes from the
  // platform, and one unit in seven was linked without a clock for it.
  addClockRef(unit->mutable_clock_refs(), "ap_clk", std::to_string(u % kPlatformClocks), 300.0,
              291.5 + u % 8);
  addClockRef(unit->mutable_clock_refs(), "ap_clk_2",
              u % 7 == 0 ? "not_specified" : std::to_string((u + 3) % kPlatformClocks), 500.0, 0.0);
  unit->add_reset_pins("ap_rst_n");

  pb::slrResources* resources = unit->add_slr_resources();
  resources->set_slr(slrName(u % kSlrs));
  addUtilization(resources, "LUT", 2400 + 37 * (u % 97), 400000);
  addUtilization(resources, "REG", 3800 + 53 * (u % 89), 800000);
  addUtilization(resources, "BRAM", 2 + u % 11, 640);
  addUtilization(resources, "URAM", u % 3, 300);
  addUtilization(resources, "DSP", 4 * (u % 13), 2800);
}

// The ten connections of compute unit `u`, numbered from `u` * 10.
void addConnections(pb::userRegion* region, int u, int units) {
  std::string const id = std::to_string(u);
  std::string const name = unitName(u);
  int number = 10 * u;
  auto const add = [&]() {
    pb::Connectivity* connection = region->add_connectivity();
    connection->set_id(std::to_string(number++));
    return connection;
  };

  for (int m = 0; m < kMemoryConnectionsPerUnit; ++m) {
    pb::Connectivity* connection = add();
    if (m == 0 && u % kUnitsPerIpClockInput == 0) {
      setNode(connection->mutable_source(), "bd_clock", "", "board_clock", "clk_" + id);
      setNode(connection->mutable_destination(), "ip_clock", "", "clk_wiz_" + id, "clk_in1");
      continue;
    }
    setNode(connection->mutable_source(), "compute_unit", id, name,
            "m_axi_gmem" + std::to_string(m));
    int const memory = (u + m) % 64;
    setNode(connection->mutable_destination(), "memory", std::to_string(memory),
            (memory < 16 ? "DDR[" : "HBM[") + std::to_string(memory % 16) + "]", "");
  }

  pb::Connectivity* reset = add();
  setNode(reset->mutable_source(), "ip_reset", "", "psr_" + slrName(u % kSlrs),
          "peripheral_aresetn");
  setNode(reset->mutable_destination(), "compute_unit", id, name, "ap_rst_n");

  pb::Connectivity* clock = add();
  setNode(clock->mutable_source(), "ip_clock", "", "clkwiz_kernel", "clk_out1");
  setNode(clock->mutable_destination(), "compute_unit", id, name, "ap_clk");

  pb::Connectivity* secondClock = add();
  setNode(secondClock->mutable_source(), "bd_clock", "", "board_clock", "clk_2");
  setNode(secondClock->mutable_destination(), "compute_unit", id, name, "ap_clk_2");

  pb::Connectivity* stream = add();
  int const next = (u + 1) % units;
  switch (u % 3) {
    case 0:
      setNode(stream->mutable_source(), "ip", "", "dma_" + slrName(u % kSlrs), "m_axis_" + id);
      setNode(stream->mutable_destination(), "compute_unit", id, name, "s_axis_in");
      break;
    case 1:
      setNode(stream->mutable_source(), "compute_unit", id, name, "m_axis_out");
      setNode(stream->mutable_destination(), "compute_unit", std::to_string(next), unitName(next),
              "s_axis_in");
      break;
    default:
      setNode(stream->mutable_source(), "compute_unit", id, name, "m_axis_out");
      setNode(stream->mutable_destination(), "ip", "", "dma_" + slrName(u % kSlrs), "s_axis_" + id);
      break;
  }
}

// The diagram of `units` compute units, as an import and the later updates leave it.
std::shared_ptr<Container> makeDiagram(int units) {
  auto root = std::make_shared<Container>();
  addPlatformClocks(root->mutable_system_diagram_metadata()->mutable_qsa());
  pb::userRegion* region =
      root->mutable_system_diagram_metadata()->mutable_qrxbin()->add_user_regions();
  region->set_name("ulp");
  region->set_type("user_region");
  addKernels(region);
  for (int u = 0; u < units; ++u) addComputeUnit(region, u);
  for (int u = 0; u < units; ++u) addConnections(region, u, units);
  return root;
}

// The directory of the report files, removed with its contents when the program ends.
class ScratchDirectory {
 public:
  ScratchDirectory()
      : path_(fs::temp_directory_path() /
              ("qv_report_bench_" + std::to_string(static_cast<long>(::getpid())))) {
    fs::remove_all(path_);
    fs::create_directories(path_);
  }
  ~ScratchDirectory() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
  }
  ScratchDirectory(ScratchDirectory const&) = delete;
  ScratchDirectory& operator=(ScratchDirectory const&) = delete;

  fs::path const& path() const { return path_; }

 private:
  fs::path path_;
};

ScratchDirectory& scratch() {
  static ScratchDirectory instance;
  return instance;
}

void BM_WriteFlowReport(benchmark::State& state) {
  int const units = static_cast<int>(state.range(0));
  IPA::ProfileAnalyzerSystemDiagram diagram(makeDiagram(units));
  HUTEnv::setFixedTimeStamp("Thu Jan  1 00:00:00 2026");
  std::string const path =
      (scratch().path() / ("flow_report_" + std::to_string(units) + ".txt")).string();

  for (auto _ : state) {
    state.PauseTiming();
    std::ofstream out(path, std::ios::out | std::ios::trunc);
    if (!out) {
      state.SkipWithError(("could not open " + path).c_str());
      break;
    }
    state.ResumeTiming();
    diagram.writeFlowReport(out);
    state.PauseTiming();
    out.close();
    state.ResumeTiming();
  }
  std::error_code ignored;
  auto const bytes = fs::file_size(path, ignored);
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(bytes));
  state.SetItemsProcessed(state.iterations() * units);
  state.counters["units"] = units;
}
BENCHMARK(BM_WriteFlowReport)->Arg(500)->Arg(5000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
