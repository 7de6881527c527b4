// Speed of the run-time data import, against the JSON parsing it cannot avoid.
//
//   scripts/bench --suite import                      the two in turns, as a table of ratios
//   build/bench/import_bench                          both suites, 1,000 and 10,000 compute units
//   build/bench/import_bench --benchmark_filter=Import
//
// BM_Import runs MakeInitialSystemDiagram's road end to end on a synthetic design;
// BM_BareReadJson parses the same files with Boost's reader and does nothing else: the rtd file
// once and the platform's text twice, as the import does (it fetches the text once per process
// and parses it twice). Both report the same byte and item counts, so the ratio of their
// bytes_per_second (or of their times) is the import's cost over the floor.
//
// The designs are written once into a fresh directory under the system's temporary directory,
// which is removed when the program ends. Messages of the import are counted, not shown.
#include <benchmark/benchmark.h>
#include <unistd.h>

#include <atomic>
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
#include <vector>

#include "diagram/SystemDiagram.h"
#include "platform/messages/ComMsgMgr.h"
#include "platform/messages/ComMsgSink.h"

namespace {

namespace fs = std::filesystem;

constexpr int kSlrs = 4;
constexpr int kDdrMemories = 16;
constexpr int kHbmMemories = 48;
constexpr int kMemories = kDdrMemories + kHbmMemories;
constexpr int kKernels = 10;
// Every compute unit has this many connected arguments, so a design of N units has 10 * N
// connections.
constexpr int kArgumentsPerUnit = 10;
// One plain IP block stands before every this many compute units, so that positions in the IP
// list and compute unit numbers differ as they do in real designs.
constexpr int kUnitsPerPlainIp = 100;

std::string slrName(int slr) { return "SLR" + std::to_string(slr); }

std::string hex(std::uint64_t value) {
  std::ostringstream out;
  out << "0x" << std::hex << value;
  return out.str();
}

// A platform of four SLRs: 16 DDR memories, four on each SLR, and 48 HBM memories on SLR0 and
// SLR1; a pBlock per SLR; every key the import reads.
std::string platformText() {
  std::ostringstream out;
  out << "{\n"
      << R"(  "vendor": "qvlabs", "name": "qv_bench_q4_gen4x8",)"
      << "\n"
      << R"(  "description": "Synthetic four-SLR platform for the import benchmark",)"
      << "\n"
      << R"(  "hardwarePlatform": {)"
      << "\n"
      << R"(    "boardId": "q4", "versionMajor": "1", "versionMinor": "0",)"
      << "\n"
      << R"(    "designIntent": {"server_managed": {"value": "true"}, )"
      << R"("external_host": {"value": "true"}, "embedded": {"value": "false"}},)"
      << "\n"
      << R"(    "generatedName": "qv_platgen", "generatedVersion": "2026.1",)"
      << R"( "generatedChangeList": "1", "generatedTimestamp": "Thu Jan  1 00:00:00 2026",)"
      << "\n"
      << R"(    "board": {"name": "q4", "vendor": "qvlabs", "part": "qvf4-x", )"
      << R"("boardPart": "qvlabs:q4:part0:1.0"},)"
      << "\n"
      << R"(    "resources": [{"resource": "LUT", "count": "1758720"}, )"
      << R"({"resource": "REG", "count": "3517440"}, {"resource": "BRAM", "count": "2880"}, )"
      << R"({"resource": "URAM", "count": "1280"}, {"resource": "DSP", "count": "12096"}],)"
      << "\n";
  out << R"(    "systemClocks": [)";
  char const* const statuses[] = {"scalable", "changeable", "fixed", "reserved"};
  for (int c = 0; c < 8; ++c) {
    out << (c == 0 ? "\n" : ",\n") << R"(      {"name": "clk_)" << c << R"(", "origName": "clk_out)"
        << c << R"(", "id": ")" << c << R"(", "frequency": "300.0", "period": "3.333333", )"
        << R"("status": ")" << statuses[c % 4] << R"("})";
  }
  out << "],\n"
      << R"(    "busInterfaces": [)"
      << "\n";
  out << R"(      {"name": "M_AXI_DDR", "spTag": "DDR", "addressSegments": [)";
  for (int i = 0; i < kDdrMemories; ++i) {
    out << (i == 0 ? "" : ", ") << R"({"slr": ")" << slrName(i / (kDdrMemories / kSlrs))
        << R"(", "index": ")" << i << R"("})";
  }
  out << "]},\n"
      << R"(      {"name": "M_AXI_HBM", "spTag": "HBM", "addressSegments": [)";
  for (int i = 0; i < kHbmMemories; ++i) {
    out << (i == 0 ? "" : ", ") << R"({"slr": ")" << slrName(i / (kHbmMemories / 2))
        << R"(", "index": ")" << i << R"("})";
  }
  out << "]}],\n";
  out << R"(    "devices": [{"name": "qvf4_0", "core": {"name": "ulp", "type": "user_region", )"
      << R"("instPath": "level0_i/ulp", "availableResources": {"lutCount": "1600000", )"
      << R"("registerCount": "3200000", "bramCount": "2560", "dspCount": "11200", )"
      << R"("uramCount": "1200", "pBlocks": [)";
  for (int slr = 0; slr < kSlrs; ++slr) {
    std::string const s = slrName(slr);
    out << (slr == 0 ? "\n" : ",\n") << R"(      {"name": "pblock_dynamic_)" << s
        << R"(", "validSlrs": {"resources": [)"
        << R"({"name": "BRAM_)" << s << R"(", "value": "640"}, )"
        << R"({"name": "URAM_)" << s << R"(", "value": "300"}, )"
        << R"({"name": "DSPs_)" << s << R"(", "value": "2800"}, )"
        << R"({"name": "LUT_)" << s << R"(", "value": "400000"}, )"
        << R"({"name": "REG_)" << s << R"(", "value": "800000"}]}})";
  }
  out << "]}}}]\n  }\n}\n";
  return out.str();
}

// A design of `units` compute units of ten kernels on the platform above: its 64 memories, one
// stream between each tenth unit and the next (each stream one MEM_STREAMING_CONNECTION
// memory), a plain IP block before every hundredth unit, and ten connections per unit.
std::string rtdText(int units) {
  int const streams = units / 10;
  std::ostringstream out;
  out << "{\n"
      << R"(  "schema_version": {"major": "1", "minor": "0", "patch": "0"},)"
      << "\n";

  out << R"(  "mem_topology": {"m_count": ")" << kMemories + streams << R"(", "m_mem_data": [)";
  for (int m = 0; m < kMemories; ++m) {
    bool const ddr = m < kDdrMemories;
    std::string const tag =
        ddr ? "DDR[" + std::to_string(m) + "]" : "HBM[" + std::to_string(m - kDdrMemories) + "]";
    out << (m == 0 ? "\n" : ",\n") << R"(    {"m_type": ")" << (ddr ? "MEM_DDR4" : "MEM_HBM")
        << R"(", "m_used": ")" << (m % 3 == 0 ? "0" : "1") << R"(", "m_sizeKB": ")"
        << (ddr ? "16777216" : "262144") << R"(", "m_base_address": ")"
        << hex(0x4000000000ULL + static_cast<std::uint64_t>(m) * 0x400000000ULL)
        << R"(", "m_tag": ")" << tag << R"(", "m_spTag": ")" << tag << R"("})";
  }
  for (int s = 0; s < streams; ++s) {
    out << ",\n"
        << R"(    {"m_type": "MEM_STREAMING_CONNECTION", "m_used": "1", "m_sizeKB": "0", )"
        << R"("m_base_address": "0x0", "m_tag": "stream_)" << s << R"("})";
  }
  out << "]},\n";

  // Positions in the IP list of each compute unit, for the connections below.
  std::vector<int> ipIndex(static_cast<std::size_t>(units));
  int const plainIps = (units + kUnitsPerPlainIp - 1) / kUnitsPerPlainIp;
  out << R"(  "ip_layout": {"m_count": ")" << units + plainIps << R"(", "m_ip_data": [)";
  int position = 0;
  for (int u = 0; u < units; ++u) {
    if (u % kUnitsPerPlainIp == 0) {
      out << (position == 0 ? "\n" : ",\n")
          << R"(    {"m_type": "IP_PERF_MONITOR", "properties": "0", "m_int_enable": "0", )"
          << R"("m_interrupt_id": "0", "m_ip_control": "AP_CTRL_NONE", "m_base_address": ")"
          << hex(0x100000000ULL + static_cast<std::uint64_t>(position) * 0x10000ULL)
          << R"(", "m_name": "axi_perf_mon_)" << u / kUnitsPerPlainIp << R"("})";
      ++position;
    }
    int const kernel = u % kKernels;
    ipIndex[static_cast<std::size_t>(u)] = position;
    out << ",\n"
        << R"(    {"m_type": "IP_KERNEL", "properties": "4", "m_int_enable": "1", )"
        << R"("m_interrupt_id": ")" << u % 128 << R"(", "m_ip_control": "AP_CTRL_HS", )"
        << R"("m_base_address": ")"
        << hex(0x1800000ULL + static_cast<std::uint64_t>(position) * 0x10000ULL)
        << R"(", "m_name": "krnl)" << kernel << ":krnl" << kernel << "_" << u
        << R"(", "m_clocks": [{"ap_clk": {"refClockId": ")" << u % 2 << R"("}}]})";
    ++position;
  }
  out << "]},\n";

  out << R"(  "connectivity": {"m_count": ")" << units * kArgumentsPerUnit
      << R"(", "m_connection": [)";
  bool first = true;
  for (int u = 0; u < units; ++u) {
    for (int a = 0; a < kArgumentsPerUnit; ++a) {
      // The last argument of unit 10k writes a stream that the last argument of unit 10k+1
      // reads; every other argument is tied to a memory.
      bool const streamEnd =
          a == kArgumentsPerUnit - 1 && u % 10 <= 1 && u / 10 < streams && u / 10 * 10 + 1 < units;
      int const memory = streamEnd ? kMemories + u / 10 : (u * kArgumentsPerUnit + a) % kMemories;
      out << (first ? "\n" : ",\n") << R"(    {"arg_index": ")" << a << R"(", "arg_name": "arg)"
          << a << R"(", "mode": ")" << (streamEnd ? 1 : 0) << R"(", "m_ip_layout_index": ")"
          << ipIndex[static_cast<std::size_t>(u)] << R"(", "mem_data_index": ")" << memory
          << R"("})";
      first = false;
    }
  }
  out << "]}\n}\n";
  return out.str();
}

void writeFile(fs::path const& path, std::string const& text) {
  std::ofstream out(path, std::ios::out | std::ios::binary | std::ios::trunc);
  out << text;
  if (!out) throw std::runtime_error("Could not write " + path.string() + ".");
}

// The benchmark's files, made on first use and removed with the directory when the program
// ends.
class SyntheticDesigns {
 public:
  SyntheticDesigns()
      : directory_(fs::temp_directory_path() /
                   ("qv_import_bench_" + std::to_string(static_cast<long>(::getpid())))) {
    fs::remove_all(directory_);
    fs::create_directories(directory_);
    platformText_ = platformText();
    platformFile_ = (directory_ / "qv_bench_q4_gen4x8.json").string();
    writeFile(platformFile_, platformText_);
  }
  ~SyntheticDesigns() {
    std::error_code ignored;
    fs::remove_all(directory_, ignored);
  }
  SyntheticDesigns(SyntheticDesigns const&) = delete;
  SyntheticDesigns& operator=(SyntheticDesigns const&) = delete;

  std::string const& platformFile() const { return platformFile_; }
  std::string const& platform() const { return platformText_; }

  // The path of the rtd file of `units` compute units, written on the first call.
  std::string const& rtdFile(int units) {
    auto found = rtdFiles_.find(units);
    if (found != rtdFiles_.end()) return found->second;
    std::string const path =
        (directory_ / ("synthetic_" + std::to_string(units) + ".rtd.json")).string();
    writeFile(path, rtdText(units));
    return rtdFiles_.emplace(units, path).first->second;
  }

 private:
  fs::path directory_;
  std::string platformText_;
  std::string platformFile_;
  std::map<int, std::string> rtdFiles_;
};

SyntheticDesigns& designs() {
  static SyntheticDesigns instance;
  return instance;
}

// Counts the import's messages instead of printing them, so that the figures measure the
// import and not the terminal.
class CountingSink : public ComMsgSink {
 public:
  void show(ComMsgMgrInstance const&) override { count.fetch_add(1, std::memory_order_relaxed); }
  std::atomic<std::int64_t> count{0};
};

std::shared_ptr<CountingSink> const& countingSink() {
  static auto const sink = [] {
    auto made = std::make_shared<CountingSink>();
    ComMsgMgr::setSink(made);
    return made;
  }();
  return sink;
}

// The same counters on both suites, so that their rates compare directly.
void report(benchmark::State& state, int units, std::string const& rtdFile) {
  auto const bytes = static_cast<std::int64_t>(fs::file_size(rtdFile)) +
                     2 * static_cast<std::int64_t>(designs().platform().size());
  state.SetBytesProcessed(state.iterations() * bytes);
  state.SetItemsProcessed(state.iterations() * units);
  state.counters["units"] = units;
  state.counters["connections"] = units * kArgumentsPerUnit;
}

void BM_Import(benchmark::State& state) {
  int const units = static_cast<int>(state.range(0));
  std::string const& rtdFile = designs().rtdFile(units);
  std::string const& platformFile = designs().platformFile();
  auto const& sink = countingSink();
  std::int64_t const messagesBefore = sink->count.load();
  for (auto _ : state) {
    IPA::SystemDiagram diagram;
    diagram.populateInitialSystemDiagram(rtdFile, platformFile, "gen", "1.0", "cl", "ts", "a", "b",
                                         "kernels.txt", "label", false);
    benchmark::DoNotOptimize(diagram);
  }
  report(state, units, rtdFile);
  state.counters["messages_per_import"] =
      state.iterations() == 0 ? 0.0
                              : static_cast<double>(sink->count.load() - messagesBefore) /
                                    static_cast<double>(state.iterations());
}
BENCHMARK(BM_Import)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

void BM_BareReadJson(benchmark::State& state) {
  int const units = static_cast<int>(state.range(0));
  std::string const& rtdFile = designs().rtdFile(units);
  // The import keeps the platform's text in memory after its first fetch, so this does too.
  std::string const& platform = designs().platform();
  for (auto _ : state) {
    boost::property_tree::ptree rtd;
    boost::property_tree::read_json(rtdFile, rtd);
    for (int copy = 0; copy < 2; ++copy) {
      std::istringstream in(platform);
      boost::property_tree::ptree platformTree;
      boost::property_tree::read_json(in, platformTree);
      benchmark::DoNotOptimize(platformTree);
    }
    benchmark::DoNotOptimize(rtd);
  }
  report(state, units, rtdFile);
}
BENCHMARK(BM_BareReadJson)->Arg(1000)->Arg(10000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
