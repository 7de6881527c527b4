// Speed of qvdiag diff on large designs.
//
//   build/bench/diff_bench                            5,000 and 50,000 compute units
//   build/bench/diff_bench --benchmark_filter=Diff/5000
//
// Two diagrams are generated as JSON text: N compute units of ten kernels over four SLRs, each
// with a clock pin, two design states of resource use and one SLR's use, and 10 * N connections
// (eight to memories, one stream to the next compute unit, one to an IP's pin); 64 memories and
// four platform clocks. The newer diagram differs the way a second run does: one compute unit
// in twenty moves to another base address, one in ten grows by 3% of LUTs, one connection in a
// hundred goes to another memory, the first clock closes lower, and one compute unit in a
// thousand is renamed (one removed and one added).
//
// BM_Diff times what qvdiag diff does with the two files' contents: read both into the schema
// messages, compare them, and write the text. BM_Compare times the comparison and the text
// alone, and BM_BareRead the reading of the two files alone, the floor. The time should grow
// linearly: compare the ratio of the two sizes' medians with the ratio of the sizes (10);
// scripts/bench --suite diff prints both, measured in turns.
#include <benchmark/benchmark.h>

#include <sstream>
#include <string>

#include "views/DiagramDiff.h"
#include "views/StoredDiagram.h"

namespace {

constexpr int kSlrs = 4;
constexpr int kKernels = 10;
constexpr int kMemories = 64;

std::string quoted(std::string const& text) { return "\"" + text + "\""; }

// The stored form of a synthetic diagram; `later` applies the changes of a second run.
std::string diagramText(int units, bool later) {
  std::ostringstream out;
  out << "{\"system_diagram_metadata\": {\"schema_version\": {\"major\": \"1\", \"minor\": \"0\", "
         "\"patch\": \"0\"}, \"qsa\": {\"name\": \"bench_platform\", \"board\": {\"name\": "
         "\"b\"}, \"clocks\": [";
  for (int c = 0; c < 4; ++c) {
    double const achieved = (later && c == 0) ? 281.25 : 300.0;
    out << (c ? ", " : "") << "{\"name\": \"clk_" << c << "\", \"id\": " << c
        << ", \"frequency\": 300, \"requested_frequency\": 300, \"achieved_frequency\": "
        << achieved << ", \"status\": \"CLOCK_SCALABLE\"}";
  }
  out << "], \"device_topology\": [";
  for (int m = 0; m < kMemories; ++m) {
    out << (m ? ", " : "") << "{\"id\": " << quoted(std::to_string(m)) << ", \"used\": \"yes\", "
        << "\"size_kb\": \"262144\", \"base_address\": \"0x" << std::hex << (m * 0x10000000L)
        << std::dec << "\", \"tag\": \"HBM[" << m << "]\", \"slr\": \"SLR" << (m % kSlrs)
        << "\", \"type\": \"MEM_HBM\"}";
  }
  out << "]}, \"qrxbin\": {\"user_regions\": [{\"available_resources\": {\"by_slr\": [";
  for (int s = 0; s < kSlrs; ++s) {
    out << (s ? ", " : "") << "{\"slr\": \"SLR" << s << "\", \"lut\": \"400000\", \"reg\": "
        << "\"800000\", \"bram\": \"600\", \"dsp\": \"3000\", \"uram\": \"300\"}";
  }
  out << "]}, \"kernels\": [";
  for (int k = 0; k < kKernels; ++k) out << (k ? ", " : "") << "{\"name\": \"krnl_" << k << "\"}";
  auto const unitName = [later](int u) {
    std::string name = "krnl_" + std::to_string(u % kKernels) + "_" + std::to_string(u);
    if (later && u % 1000 == 999) name += "_renamed";
    return name;
  };
  out << "], \"compute_units\": [";
  for (int u = 0; u < units; ++u) {
    long const base = 0x1000000L + u * 0x10000L + ((later && u % 20 == 0) ? 0x8000000L : 0);
    int const luts = 2000 + u % 500 + ((later && u % 10 == 0) ? (2000 + u % 500) * 3 / 100 : 0);
    std::string const slr = "SLR" + std::to_string(u % kSlrs);
    out << (u ? ", " : "") << "{\"id\": " << quoted(std::to_string(u))
        << ", \"kernel_name\": " << quoted("krnl_" + std::to_string(u % kKernels))
        << ", \"name\": " << quoted(unitName(u)) << ", \"base_address\": \"0x" << std::hex << base
        << std::dec << "\", \"clock_refs\": [{\"name\": \"ap_clk\", \"clock_id\": \"0\", "
        << "\"requested_frequency\": 300, \"achieved_frequency\": 300}], "
        << "\"actual_resources\": [{\"lut\": " << quoted(std::to_string(luts))
        << ", \"reg\": \"3000\", \"bram\": \"2\", \"dsp\": \"4\", \"uram\": \"0\", "
        << "\"design_state\": \"DESIGN_STATE_ROUTED\"}, {\"lut\": \"2600\", \"reg\": \"3100\", "
        << "\"bram\": \"2\", \"dsp\": \"4\", \"uram\": \"0\", \"design_state\": "
        << "\"DESIGN_STATE_SYNTHESIZED\"}], \"slr_resources\": [{\"slr\": " << quoted(slr)
        << ", \"utilization\": [{\"resource\": \"LUT\", \"used\": " << quoted(std::to_string(luts))
        << ", \"available\": \"400000\"}]}]}";
  }
  out << "], \"connectivity\": [";
  int id = 0;
  for (int u = 0; u < units; ++u) {
    for (int c = 0; c < 10; ++c, ++id) {
      out << (id ? ", " : "") << "{\"id\": " << quoted(std::to_string(id))
          << ", \"source\": {\"type\": \"compute_unit\", \"id\": " << quoted(std::to_string(u))
          << ", \"arg_name\": \"arg" << c << "\"}, \"destination\": ";
      if (c < 8) {
        int const memory = (u * 8 + c + ((later && id % 100 == 0) ? 1 : 0)) % kMemories;
        out << "{\"type\": \"memory\", \"id\": " << quoted(std::to_string(memory)) << "}}";
      } else if (c == 8) {
        out << "{\"type\": \"compute_unit\", \"id\": " << quoted(std::to_string((u + 1) % units))
            << ", \"arg_name\": \"in\"}}";
      } else {
        out << "{\"type\": \"ip\", \"instance\": \"monitor_" << (u % 16) << "\", \"pin\": \"SLOT_"
            << (u % 8) << "\"}}";
      }
    }
  }
  out << "]}]}}}";
  return out.str();
}

void BM_Diff(benchmark::State& state) {
  int const units = static_cast<int>(state.range(0));
  std::string const before = diagramText(units, false);
  std::string const after = diagramText(units, true);
  for (auto _ : state) {
    qvviews::StoredDiagram const old = qvviews::StoredDiagram::fromText(before, "a.json");
    qvviews::StoredDiagram const now = qvviews::StoredDiagram::fromText(after, "b.json");
    std::ostringstream text;
    qvviews::DiagramDiff::compare(old, now, false).writeText(text, false);
    benchmark::DoNotOptimize(text.str().size());
  }
  state.counters["bytes_per_file"] = static_cast<double>(before.size());
}
BENCHMARK(BM_Diff)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

// The floor: reading the two files' contents into the schema messages, and nothing else.
void BM_BareRead(benchmark::State& state) {
  int const units = static_cast<int>(state.range(0));
  std::string const before = diagramText(units, false);
  std::string const after = diagramText(units, true);
  for (auto _ : state) {
    qvviews::StoredDiagram const old = qvviews::StoredDiagram::fromText(before, "a.json");
    qvviews::StoredDiagram const now = qvviews::StoredDiagram::fromText(after, "b.json");
    benchmark::DoNotOptimize(&old);
    benchmark::DoNotOptimize(&now);
  }
}
BENCHMARK(BM_BareRead)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

void BM_Compare(benchmark::State& state) {
  int const units = static_cast<int>(state.range(0));
  qvviews::StoredDiagram const old =
      qvviews::StoredDiagram::fromText(diagramText(units, false), "a.json");
  qvviews::StoredDiagram const now =
      qvviews::StoredDiagram::fromText(diagramText(units, true), "b.json");
  for (auto _ : state) {
    std::ostringstream text;
    qvviews::DiagramDiff::compare(old, now, false).writeText(text, false);
    benchmark::DoNotOptimize(text.str().size());
  }
}
BENCHMARK(BM_Compare)->Arg(5000)->Arg(50000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
