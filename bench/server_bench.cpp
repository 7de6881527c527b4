// The compile server under load, against the floor of its transport; and what a session costs.
//
//   scripts/bench --suite server                    BM_Requests/1 against BM_Requests/0, in turns
//   build/bench/server_bench
//   build/bench/server_bench --benchmark_filter=Requests
//
// BM_Requests/1 serves libqv_system_diagram.so through qvdiag's gRPC host on a Unix socket;
// BM_Requests/0 serves a handler that answers 200 and does nothing else, on the same host: the
// floor of gRPC, the socket and the ConnectionMgr. Each iteration runs 8 clients, each on a
// connection of its own and its own session, sending UpsertQsaClock and GetQrxBinGeneratedBy in
// turn. Counters: requests per second over all clients, and the 50th and 99th percentile of
// one request's latency in microseconds.
//
// BM_SessionMemory makes 1,000 sessions, each holding the example design's diagram (imported
// with MakeInitialSystemDiagram from examples/), and reports per session in KiB the growth of
// the peak resident set (VmHWM) and of the heap in use (mallinfo2). It runs once: a second run
// in the same process would reuse the memory the first one freed, and its peak would not move.
#include <benchmark/benchmark.h>
#include <malloc.h>

#include <algorithm>
#include <boost/filesystem.hpp>
#include <chrono>
#include <fstream>
#include <memory>
#include <string>
#include <thread>
#include <vector>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/dispatch/RequestHandler.h"
#include "proto/system_diagram_server.pb.h"
#include "tools/qvdiag/CompileServerHost.h"
#include "tools/qvdiag/RemoteClient.h"
#include "tools/qvdiag/RequestTypes.h"
#include "tools/qvdiag/ServiceHost.h"

namespace {

namespace wire = dispatch::system_diagram_server;
using qvdiag::ListenAddress;

constexpr int kClients = 8;
constexpr int kRequestsPerClient = 500;

// Answers every request 200, as fast as a handler can.
class NullHandler : public dispatch::server::RequestHandler {
 public:
  explicit NullHandler(dispatch::server::ConnectionMgr& connections)
      : RequestHandler("dispatch.system_diagram_server", connections) {}
  void handle_request(dispatch::Request const&, dispatch::Response& response) override {
    stockResponse(dispatch::StatusResponse::OK, response);
  }
};

std::string socketPath() {
  return (boost::filesystem::temp_directory_path() /
          boost::filesystem::unique_path("qv-bench-%%%%-%%%%.sock"))
      .string();
}

// KiB of a "VmHWM:" or "VmRSS:" line of /proc/self/status.
long statusKiB(std::string const& key) {
  std::ifstream status("/proc/self/status");
  std::string line;
  while (std::getline(status, line)) {
    if (line.rfind(key, 0) == 0) return std::stol(line.substr(key.size()));
  }
  return 0;
}

double percentile(std::vector<double>& sorted, double fraction) {
  std::size_t const index =
      std::min(sorted.size() - 1, static_cast<std::size_t>(fraction * sorted.size()));
  return sorted[index];
}

void BM_Requests(benchmark::State& state) {
  bool const library = state.range(0) == 1;
  std::unique_ptr<qvdiag::ServiceHost> host;
  std::unique_ptr<dispatch::server::ConnectionMgr> bare;
  dispatch::server::ConnectionMgr* connections = nullptr;
  if (library) {
    qvdiag::ServiceHost::Settings settings;
    settings.libraryPath = QV_LIBRARY_PATH;
    host = std::make_unique<qvdiag::ServiceHost>(settings);
    connections = &host->connections();
  } else {
    bare = std::make_unique<dispatch::server::ConnectionMgr>();
    bare->adoptHandler(std::make_unique<NullHandler>(*bare));
    connections = bare.get();
  }
  ListenAddress const address = ListenAddress::parse("unix:" + socketPath());
  qvdiag::CompileServerHost server(*connections, address);

  std::vector<std::unique_ptr<qvdiag::RemoteClient>> clients;
  for (int client = 0; client < kClients; ++client) {
    clients.push_back(std::make_unique<qvdiag::RemoteClient>(address));
    dispatch::Session session;
    session.set_uuid("bench-" + std::to_string(client));
    clients.back()->createSession(session);
  }
  wire::UpsertQsaClock upsert;
  upsert.mutable_clock()->set_name("clk_bench");
  upsert.mutable_clock()->set_id(7);
  upsert.mutable_clock()->set_frequency(300.0);
  wire::GetQrxBinGeneratedBy get;

  std::vector<double> latencies;
  double seconds = 0;
  for (auto _ : state) {
    std::vector<std::vector<double>> perClient(kClients);
    auto const started = std::chrono::steady_clock::now();
    std::vector<std::thread> threads;
    for (int client = 0; client < kClients; ++client) {
      threads.emplace_back([&, client] {
        std::string const uuid = "bench-" + std::to_string(client);
        dispatch::Request const requests[] = {qvdiag::RequestTypes::request(uuid, upsert),
                                              qvdiag::RequestTypes::request(uuid, get)};
        std::vector<double>& mine = perClient[static_cast<std::size_t>(client)];
        mine.reserve(kRequestsPerClient);
        for (int i = 0; i < kRequestsPerClient; ++i) {
          auto const sent = std::chrono::steady_clock::now();
          dispatch::Response const response =
              clients[static_cast<std::size_t>(client)]->dispatch(requests[i % 2]);
          mine.push_back(
              std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - sent)
                  .count());
          if (response.status().code() != 200) state.SkipWithError("a request failed");
        }
      });
    }
    for (std::thread& thread : threads) thread.join();
    double const elapsed =
        std::chrono::duration<double>(std::chrono::steady_clock::now() - started).count();
    state.SetIterationTime(elapsed);
    seconds += elapsed;
    for (auto const& mine : perClient) latencies.insert(latencies.end(), mine.begin(), mine.end());
  }
  std::sort(latencies.begin(), latencies.end());
  state.SetItemsProcessed(static_cast<int64_t>(latencies.size()));
  state.counters["req_per_s"] = static_cast<double>(latencies.size()) / seconds;
  state.counters["p50_us"] = percentile(latencies, 0.50);
  state.counters["p99_us"] = percentile(latencies, 0.99);
  server.shutdown();
}
BENCHMARK(BM_Requests)
    ->ArgName("library")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

void BM_SessionMemory(benchmark::State& state) {
  int const sessions = static_cast<int>(state.range(0));
  for (auto _ : state) {
    qvdiag::ServiceHost::Settings settings;
    settings.libraryPath = QV_LIBRARY_PATH;
    settings.timestamp = "Mon Nov 23 09:00:00 2026";
    qvdiag::ServiceHost host(settings);
    wire::MakeInitialSystemDiagram make;
    make.set_rtdfile(std::string(QV_EXAMPLES_DIR) + "/design/vector_pipeline.rtd.json");
    make.set_platform(std::string(QV_EXAMPLES_DIR) + "/platforms/qv_accel_h2_gen3x16.json");
    for (auto* field : {make.mutable_generatedname(), make.mutable_generatedversion(),
                        make.mutable_generatedchangelist(), make.mutable_generatedtimestamp(),
                        make.mutable_generateddetaila(), make.mutable_generateddetailb(),
                        make.mutable_kernelsfile(), make.mutable_binarylabel()}) {
      *field = "bench";
    }
    // The first import fills the process's platform cache; it is not a session's cost.
    dispatch::Session warm;
    warm.set_uuid("warm");
    host.connections().createSession(warm);
    dispatch::Response warmed;
    host.connections().dispatch(qvdiag::RequestTypes::request("warm", make), warmed);

    long const peakBefore = statusKiB("VmHWM:");
    std::size_t const heapBefore = mallinfo2().uordblks + mallinfo2().hblkhd;
    for (int i = 0; i < sessions; ++i) {
      dispatch::Session session;
      session.set_uuid("s" + std::to_string(i));
      host.connections().createSession(session);
      dispatch::Response response;
      host.connections().dispatch(qvdiag::RequestTypes::request(session.uuid(), make), response);
      if (response.status().code() != 200) state.SkipWithError("an import failed");
    }
    long const peak = statusKiB("VmHWM:");
    std::size_t const heap = mallinfo2().uordblks + mallinfo2().hblkhd;
    state.counters["peak_rss_KiB"] = static_cast<double>(peak);
    state.counters["peak_rss_KiB_per_session"] =
        static_cast<double>(peak - peakBefore) / static_cast<double>(sessions);
    state.counters["heap_KiB_per_session"] =
        static_cast<double>(heap - heapBefore) / 1024.0 / static_cast<double>(sessions);
  }
}
BENCHMARK(BM_SessionMemory)
    ->Arg(1000)
    ->Iterations(1)
    ->Repetitions(1)
    ->Unit(benchmark::kMillisecond);

}  // namespace

BENCHMARK_MAIN();
