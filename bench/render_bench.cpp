// Speed of the pictures: a stored diagram drawn as qvdiag render draws it.
//
//   build/bench/render_bench                                     every size and stage
//   build/bench/render_bench --benchmark_filter='Render/64$'
//
// The diagrams are built in memory: N compute units of eight kernels over three SLRs, each with
// two clock references, resources for the three design states, its use of its SLR, and four
// memory ports. The platform has B memory banks, HBM and DDR4 spread over the SLRs.
//
//   64 compute units on 36 banks (32 HBM, 4 DDR4): every bank in use, the size the viewer must
//     stay usable at; one stream per eight compute units.
//   1,000 compute units on 64 banks (48 HBM, 16 DDR4): the ports go to the first 32 banks only,
//     so the other 32 are unused and fold into one node per type and SLR.
//
// BM_Render times the whole road from the stored message to the SVG and the HTML page: the graph
// model, the DOT text, Graphviz's layout and its SVG. BM_Layout times Graphviz's parse and
// layout of the same DOT alone, without rendering; BM_Model the graph model alone, BM_Dot the DOT
// text alone. The goals: under 1 s for 64 compute units, under 10 s for 1,000.
#include <benchmark/benchmark.h>

#include <string>

#include "proto/system_diagram.pb.h"
#include "views/DiagramGraphBuilder.h"
#include "views/DotWriter.h"
#include "views/HtmlPage.h"
#include "views/SvgRenderer.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;

constexpr int kSlrs = 3;
constexpr int kKernels = 8;
constexpr int kPortsPerUnit = 4;

struct Size {
  int units;
  int banks;
  int hbm;       // the first `hbm` banks are HBM, the rest DDR4
  int banksUsed; // ports go to the first `banksUsed` banks
};

Size sizeFor(int units) {
  if (units <= 64) return {units, 36, 32, 36};
  return {units, 64, 48, 32};
}

std::string slrName(int slr) { return "SLR" + std::to_string(slr); }

pb::outerContainer synthetic(Size const& size) {
  pb::outerContainer diagram;
  pb::systemDiagramMetaData& root = *diagram.mutable_system_diagram_metadata();
  pb::Qsa& qsa = *root.mutable_qsa();
  qsa.set_name("synthetic_card");
  for (int id = 0; id < 2; ++id) {
    pb::Clock& clock = *qsa.add_clocks();
    clock.set_name("clk_kernel_0" + std::to_string(id));
    clock.set_id(id);
    clock.set_frequency(id == 0 ? 300 : 500);
  }
  for (int bank = 0; bank < size.banks; ++bank) {
    bool const hbm = bank < size.hbm;
    int const index = hbm ? bank : bank - size.hbm;
    pb::deviceTopology& memory = *qsa.add_device_topology();
    memory.set_id(std::to_string(bank));
    memory.set_tag((hbm ? "HBM[" : "DDR[") + std::to_string(index) + "]");
    memory.set_type(hbm ? pb::MEM_HBM : pb::MEM_DDR4);
    // HBM sits on SLR0, as on the cards that have it; DDR4 banks go round the SLRs.
    memory.set_slr(hbm ? slrName(0) : slrName(index % kSlrs));
    memory.set_used(bank < size.banksUsed ? "yes" : "no");
    memory.set_size_kb(hbm ? "262144" : "16777216");
    memory.set_base_address("0x" + std::to_string(bank) + "0000000");
  }
  root.mutable_qrxbin()->mutable_generated_by()->set_label("synthetic_" +
                                                           std::to_string(size.units));
  pb::userRegion& region = *root.mutable_qrxbin()->add_user_regions();
  for (int slr = 0; slr < kSlrs; ++slr) {
    pb::bySlr& offered = *region.mutable_available_resources()->add_by_slr();
    offered.set_slr(slrName(slr));
    offered.set_lut("400000");
    offered.set_reg("800000");
    offered.set_bram("700");
    offered.set_dsp("3000");
    offered.set_uram("320");
  }
  for (int kernel = 0; kernel < kKernels; ++kernel) {
    pb::kernel& described = *region.add_kernels();
    described.set_name("krnl_" + std::to_string(kernel));
    pb::clockRef& clock = *described.add_clock_refs();
    clock.set_name("ap_clk");
    clock.set_requested_frequency(300);
  }
  int connection = 0;
  for (int unit = 0; unit < size.units; ++unit) {
    pb::computeUnit& cu = *region.add_compute_units();
    cu.set_id(std::to_string(unit));
    cu.set_kernel_name("krnl_" + std::to_string(unit % kKernels));
    cu.set_name(cu.kernel_name() + "_" + std::to_string(unit / kKernels + 1));
    cu.set_base_address("0x" + std::to_string(1800000 + unit * 10000));
    for (int id = 0; id < 2; ++id) {
      pb::clockRef& clock = *cu.add_clock_refs();
      clock.set_name(id == 0 ? "ap_clk" : "ap_clk_2");
      clock.set_clock_id(std::to_string(id));
      clock.set_requested_frequency(id == 0 ? 300 : 500);
      clock.set_achieved_frequency(id == 0 ? 300 : 487.5);
    }
    for (pb::DesignState state : {pb::DESIGN_STATE_SYNTHESIZED, pb::DESIGN_STATE_FULLY_PLACED,
                                  pb::DESIGN_STATE_ROUTED}) {
      pb::actualResources& use = *cu.add_actual_resources();
      use.set_design_state(state);
      use.set_lut(std::to_string(2000 + unit % 13 * 100));
      use.set_reg(std::to_string(3000 + unit % 7 * 100));
      use.set_bram("2");
      use.set_dsp(std::to_string(unit % 5));
      use.set_uram("0");
    }
    pb::slrResources& slr = *cu.add_slr_resources();
    slr.set_slr(slrName(unit % kSlrs));
    pb::resourceUtilization& lut = *slr.add_utilization();
    lut.set_resource("LUT");
    lut.set_used("2000");
    lut.set_available("400000");
    for (int port = 0; port < kPortsPerUnit; ++port) {
      pb::Connectivity& link = *region.add_connectivity();
      link.set_id(std::to_string(connection++));
      link.mutable_source()->set_type("compute_unit");
      link.mutable_source()->set_id(cu.id());
      link.mutable_source()->set_arg_name("m" + std::to_string(port));
      link.mutable_destination()->set_type("memory");
      link.mutable_destination()->set_id(
          std::to_string((unit * kPortsPerUnit + port) % size.banksUsed));
    }
    if (unit % 8 == 7) {
      pb::Connectivity& stream = *region.add_connectivity();
      stream.set_id(std::to_string(connection++));
      stream.mutable_source()->set_type("compute_unit");
      stream.mutable_source()->set_id(std::to_string(unit - 1));
      stream.mutable_source()->set_arg_name("out");
      stream.mutable_destination()->set_type("compute_unit");
      stream.mutable_destination()->set_id(cu.id());
      stream.mutable_destination()->set_arg_name("in");
    }
  }
  return diagram;
}

void setLabels(benchmark::State& state, qvviews::DiagramGraph const& graph) {
  state.counters["nodes"] = static_cast<double>(graph.nodes.size());
  state.counters["edges"] = static_cast<double>(graph.edges.size());
}

void BM_Render(benchmark::State& state) {
  pb::outerContainer const diagram = synthetic(sizeFor(static_cast<int>(state.range(0))));
  qvviews::DiagramGraph graph;
  for (auto _ : state) {
    graph = qvviews::DiagramGraphBuilder().build(diagram);
    std::string const svg = qvviews::SvgRenderer::render(qvviews::DotWriter::write(graph));
    std::string const page = qvviews::HtmlPage::write(graph, svg);
    benchmark::DoNotOptimize(page.data());
  }
  setLabels(state, graph);
}

void BM_Layout(benchmark::State& state) {
  qvviews::DiagramGraph const graph = qvviews::DiagramGraphBuilder().build(
      synthetic(sizeFor(static_cast<int>(state.range(0)))));
  std::string const dot = qvviews::DotWriter::write(graph);
  for (auto _ : state) qvviews::SvgRenderer::layoutOnly(dot);
  setLabels(state, graph);
}

void BM_Model(benchmark::State& state) {
  pb::outerContainer const diagram = synthetic(sizeFor(static_cast<int>(state.range(0))));
  for (auto _ : state) {
    qvviews::DiagramGraph const graph = qvviews::DiagramGraphBuilder().build(diagram);
    benchmark::DoNotOptimize(graph.nodes.data());
  }
}

void BM_Dot(benchmark::State& state) {
  qvviews::DiagramGraph const graph = qvviews::DiagramGraphBuilder().build(
      synthetic(sizeFor(static_cast<int>(state.range(0)))));
  for (auto _ : state) {
    std::string const dot = qvviews::DotWriter::write(graph);
    benchmark::DoNotOptimize(dot.data());
  }
}

// The layouts take seconds at the large size: a few rounds say enough.
BENCHMARK(BM_Render)->Arg(64)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Layout)->Arg(64)->Arg(1000)->Unit(benchmark::kMillisecond)->Iterations(3);
BENCHMARK(BM_Model)->Arg(64)->Arg(1000)->Unit(benchmark::kMillisecond);
BENCHMARK(BM_Dot)->Arg(64)->Arg(1000)->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
