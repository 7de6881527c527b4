// Speed of the diagram's editing operations and of its JSON form.
//
//   scripts/bench --suite diagram       the JSON suites beside their floors, in turns, as ratios
//   build/bench/diagram_bench --benchmark_filter=Json
//
// The JSON suites run our serializeToJson/serializeFromJson and, beside them, the bare protobuf
// conversion of the same container: the floor that the dependency allows. scripts/bench prints
// the ratio of their medians.
#include <memory>
#include <sstream>
#include <string>

#include <benchmark/benchmark.h>
#include <google/protobuf/util/json_util.h>

#include "diagram/ProfileAnalyzerSystemDiagram.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Container = pb::outerContainer;

// A diagram of `units` compute units, `connections` connections between them and memories, and
// `memories` memories, with every field a real import fills.
std::shared_ptr<Container> makeDiagram(int units, int connections, int memories) {
  auto root = std::make_shared<Container>();
  auto* qsa = root->mutable_system_diagram_metadata()->mutable_qsa();
  qsa->set_name("acme_u2_gen3x4");
  for (int m = 0; m < memories; ++m) {
    auto* memory = qsa->add_device_topology();
    memory->set_id(std::to_string(m));
    memory->set_used(m % 2 == 0 ? "yes" : "no");
    memory->set_size_kb("262144");
    memory->set_base_address("0x" + std::to_string(4000000000 + m * 262144));
    memory->set_tag("HBM[" + std::to_string(m) + "]");
    memory->set_slr("SLR" + std::to_string(m % 3));
    memory->set_sp_tag("HBM[" + std::to_string(m) + "]");
    memory->set_type(pb::MEM_HBM);
  }
  auto* region = root->mutable_system_diagram_metadata()->mutable_qrxbin()->add_user_regions();
  region->set_name("ulp");
  for (int u = 0; u < units; ++u) {
    auto* unit = region->add_compute_units();
    unit->set_id(std::to_string(u));
    unit->set_kernel_name("krnl" + std::to_string(u % 50));
    unit->set_name("krnl" + std::to_string(u % 50) + "_" + std::to_string(u));
    unit->set_base_address("0x" + std::to_string(0x800000 + u * 0x10000));
    auto* clock = unit->add_clock_refs();
    clock->set_name("ap_clk");
    clock->set_clock_id("0");
    clock->set_requested_frequency(300.0);
  }
  for (int c = 0; c < connections; ++c) {
    auto* connection = region->add_connectivity();
    connection->set_id(std::to_string(c));
    auto* source = connection->mutable_source();
    source->set_type("compute_unit");
    source->set_id(std::to_string(c % units));
    source->set_arg_index(std::to_string(c % 8));
    source->set_arg_name("arg" + std::to_string(c % 8));
    auto* destination = connection->mutable_destination();
    destination->set_type("memory");
    destination->set_id(std::to_string(c % memories));
  }
  return root;
}

std::shared_ptr<Container> const& largeDiagram() {
  static auto const diagram = makeDiagram(5000, 50000, 64);
  return diagram;
}

void BM_UpsertKernels(benchmark::State& state) {
  for (auto _ : state) {
    IPA::ProfileAnalyzerSystemDiagram diagram(makeDiagram(1, 0, 1));
    for (int k = 0; k < 1000; ++k) {
      pb::kernel kernel;
      kernel.set_name("krnl" + std::to_string(k));
      kernel.add_ports()->set_name("m_axi_gmem");
      diagram.upsertKernel(kernel);
    }
    benchmark::DoNotOptimize(diagram.getContainer());
  }
}
BENCHMARK(BM_UpsertKernels)->Unit(benchmark::kMillisecond);

void BM_UpdateComputeUnits(benchmark::State& state) {
  for (auto _ : state) {
    state.PauseTiming();
    IPA::ProfileAnalyzerSystemDiagram diagram(makeDiagram(1000, 0, 1));
    state.ResumeTiming();
    for (int n = 0; n < 10000; ++n) {
      int const u = n % 1000;
      pb::computeUnit unit;
      unit.set_name("krnl" + std::to_string(u % 50) + "_" + std::to_string(u));
      auto* clock = unit.add_clock_refs();
      clock->set_name("ap_clk");
      clock->set_achieved_frequency(287.5);
      diagram.updateComputeUnit(unit);
    }
  }
}
BENCHMARK(BM_UpdateComputeUnits)->Unit(benchmark::kMillisecond);

google::protobuf::util::JsonPrintOptions printOptions() {
  google::protobuf::util::JsonPrintOptions options;
  options.add_whitespace = true;
  options.always_print_primitive_fields = true;
  options.preserve_proto_field_names = true;
  return options;
}

void BM_SerializeToJson(benchmark::State& state) {
  IPA::ProfileAnalyzerSystemDiagram diagram(largeDiagram());
  for (auto _ : state) {
    std::ostringstream out;
    diagram.serializeToJson(out);
    benchmark::DoNotOptimize(out);
  }
}
BENCHMARK(BM_SerializeToJson)->Unit(benchmark::kMillisecond);

void BM_BareMessageToJsonString(benchmark::State& state) {
  auto const options = printOptions();
  for (auto _ : state) {
    std::string text;
    auto const status = google::protobuf::util::MessageToJsonString(*largeDiagram(), &text, options);
    benchmark::DoNotOptimize(status);
    benchmark::DoNotOptimize(text);
  }
}
BENCHMARK(BM_BareMessageToJsonString)->Unit(benchmark::kMillisecond);

std::string const& largeText() {
  static std::string const text = [] {
    std::ostringstream out;
    IPA::ProfileAnalyzerSystemDiagram(largeDiagram()).serializeToJson(out);
    return out.str();
  }();
  return text;
}

void BM_SerializeFromJson(benchmark::State& state) {
  IPA::ProfileAnalyzerSystemDiagram diagram(std::make_shared<Container>());
  for (auto _ : state) {
    std::istringstream in(largeText());
    diagram.serializeFromJson(in);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * largeText().size()));
}
BENCHMARK(BM_SerializeFromJson)->Unit(benchmark::kMillisecond);

void BM_BareJsonStringToMessage(benchmark::State& state) {
  Container container;
  google::protobuf::util::JsonParseOptions options;
  for (auto _ : state) {
    auto const status =
        google::protobuf::util::JsonStringToMessage(largeText(), &container, options);
    benchmark::DoNotOptimize(status);
  }
  state.SetBytesProcessed(static_cast<int64_t>(state.iterations() * largeText().size()));
}
BENCHMARK(BM_BareJsonStringToMessage)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
