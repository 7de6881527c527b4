// Requests from several threads while sessions are created, forked and removed, and while the
// resource reports of an implementation run arrive. Bounded in iterations; its value is in the
// ThreadSanitizer run of scripts/test, which fails on any race.
#include <algorithm>
#include <atomic>
#include <fstream>
#include <set>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <gtest/gtest.h>

#include "platform/dispatch/ConnectionMgr.h"
#include "proto/system_diagram.pb.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"

namespace {

namespace wire = dispatch::system_diagram_server;

constexpr int kWorkers = 4;
constexpr int kRequestsPerWorker = 150;
constexpr int kChurnRounds = 60;
constexpr int kReportsPerWorker = 60;
constexpr int kReadsPerReader = 40;
constexpr int kReportFileRequests = 20;

std::string readText(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

// The diagram's compute units as the writer printed them, one line per actual_resources entry
// ("<unit> <design_state> <lut> <reg> <bram> <uram> <dsp>"), or "<unit> none" for a unit without
// entries, sorted: entries are told apart by their state, never by their position.
std::vector<std::string> entryLines(std::string const& diagramJson) {
  boost::property_tree::ptree tree;
  std::istringstream in(diagramJson);
  boost::property_tree::read_json(in, tree);
  std::vector<std::string> lines;
  for (auto const& region : tree.get_child("system_diagram_metadata.qrxbin.user_regions")) {
    for (auto const& unit : region.second.get_child("compute_units")) {
      std::string const name = unit.second.get<std::string>("name");
      auto const& entries = unit.second.get_child("actual_resources");
      if (entries.empty()) lines.push_back(name + " none");
      for (auto const& entry : entries) {
        auto const& e = entry.second;
        lines.push_back(name + " " + e.get<std::string>("design_state") + " " +
                        e.get<std::string>("lut") + " " + e.get<std::string>("reg") + " " +
                        e.get<std::string>("bram") + " " + e.get<std::string>("uram") + " " +
                        e.get<std::string>("dsp"));
      }
    }
  }
  std::sort(lines.begin(), lines.end());
  return lines;
}

class ConcurrencyTest : public ::testing::Test {
 protected:
  ConcurrencyTest() {
    connections.adoptHandler(
        std::unique_ptr<dispatch::server::RequestHandler>(makeHandler(connections)));
    handler = static_cast<IPA::SystemDiagramHandler*>(
        connections.findHandler("dispatch.system_diagram_server"));
    // The trace of the session events would only slow the run down.
    dispatch::server::Logger::setStream(nullptr);
  }
  ~ConcurrencyTest() override { dispatch::server::Logger::setStream(&std::clog); }

  static dispatch::Session session(std::string const& uuid) {
    dispatch::Session made;
    made.set_uuid(uuid);
    made.set_name(uuid);
    return made;
  }

  int send(std::string const& uuid, google::protobuf::Message const& message) {
    dispatch::Response response;
    connections.dispatch(qvtest::requestFor(uuid, message), response);
    return response.status().code();
  }

  std::string writeFile(std::string const& name, std::string const& text) {
    std::string const path = dir.file(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

  int write(std::string const& uuid, std::string const& path) {
    wire::WriteSystemDiagram message;
    message.set_path(path);
    return send(uuid, message);
  }

  int read(std::string const& uuid, std::string const& path) {
    wire::ReadSystemDiagram message;
    message.set_path(path);
    return send(uuid, message);
  }

  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler* handler = nullptr;
  qvtest::TempDir dir;
};

TEST_F(ConcurrencyTest, RequestsRunWhileSessionsComeAndGo) {
  for (int w = 0; w < kWorkers; ++w) connections.createSession(session("stable-" + std::to_string(w)));

  std::atomic<int> unexpected{0};
  std::atomic<int> churnServed{0};
  std::atomic<int> churnRefused{0};
  std::vector<std::thread> threads;
  for (int w = 0; w < kWorkers; ++w) {
    threads.emplace_back([&, w] {
      std::string const own = "stable-" + std::to_string(w);
      std::string const path = dir.file(own + ".json");
      std::string const scratch = dir.file(own + "-churn.json");
      for (int i = 0; i < kRequestsPerWorker; ++i) {
        if (write(own, path) != 200) ++unexpected;
        if (read(own, path) != 200) ++unexpected;
        // A session that may or may not exist at this moment.
        int const code = write("churn-" + std::to_string(i % kChurnRounds), scratch);
        if (code == 200) {
          ++churnServed;
        } else if (code == 500) {
          ++churnRefused;
        } else {
          ++unexpected;
        }
      }
    });
  }
  threads.emplace_back([&] {
    for (int round = 0; round < kChurnRounds; ++round) {
      std::string const uuid = "churn-" + std::to_string(round);
      connections.createSession(session(uuid));
      connections.forkSession(uuid, session("fork-" + std::to_string(round)));
      connections.forkSession("stable-0", session("copy-" + std::to_string(round)));
      connections.removeSession(session("fork-" + std::to_string(round)));
      connections.removeSession(session("copy-" + std::to_string(round)), true);
      if (round % 2 == 0) connections.removeSession(session(uuid));
    }
  });
  for (auto& thread : threads) thread.join();

  EXPECT_EQ(unexpected.load(), 0);
  EXPECT_EQ(churnServed.load() + churnRefused.load(), kWorkers * kRequestsPerWorker);
  // The stable sessions and the odd-numbered churn sessions remain.
  auto const& sessions = handler->getSessionTable()->sessions;
  EXPECT_EQ(sessions.size(), static_cast<std::size_t>(kWorkers + kChurnRounds / 2));
  EXPECT_EQ(sessions.count("churn-1"), 1u);
  EXPECT_EQ(sessions.count("churn-2"), 0u);
}

TEST_F(ConcurrencyTest, RequestsOfOneSessionAreSerialisedByItsDiagram) {
  connections.createSession(session("shared"));
  std::string const seed = dir.file("seed.json");
  {
    std::ofstream out(seed);
    out << R"({"system_diagram_metadata": {"qsa": {"name": "board_a"}}})";
  }
  std::atomic<int> unexpected{0};
  std::vector<std::thread> threads;
  for (int w = 0; w < kWorkers; ++w) {
    threads.emplace_back([&, w] {
      std::string const path = dir.file("shared-" + std::to_string(w) + ".json");
      for (int i = 0; i < kRequestsPerWorker; ++i) {
        if (read("shared", seed) != 200) ++unexpected;
        if (write("shared", path) != 200) ++unexpected;
      }
    });
  }
  for (auto& thread : threads) thread.join();
  EXPECT_EQ(unexpected.load(), 0);
  // Every write saw a whole diagram: the last one of each thread holds the seed's name.
  for (int w = 0; w < kWorkers; ++w) {
    std::ifstream in(dir.file("shared-" + std::to_string(w) + ".json"));
    std::stringstream text;
    text << in.rdbuf();
    EXPECT_NE(text.str().find("\"name\": \"board_a\""), std::string::npos);
  }
}

TEST_F(ConcurrencyTest, KernelUseMergesFromSeveralThreads) {
  connections.createSession(session("use"));
  IPA::SystemDiagram& diagram = handler->getDiagramForSession("use");
  std::vector<std::thread> threads;
  for (int w = 0; w < kWorkers; ++w) {
    threads.emplace_back([&, w] {
      for (int i = 0; i < kRequestsPerWorker; ++i) {
        wire::UpsertKernelUse report;
        report.set_designstate(i % 2 == 0 ? "Synthesized" : "Routed");
        auto* kernel = report.add_kerneluses();
        kernel->set_kernelname("k");
        auto* unit = kernel->add_computeunituses();
        unit->set_computeunitname("cu_" + std::to_string(w));
        unit->mutable_actualresources()->set_lut(std::to_string(i));
        diagram.kernelUse.mergeFrom(report);
        (void)diagram.kernelUse.snapshot();
      }
    });
  }
  for (auto& thread : threads) thread.join();
  auto const kept = diagram.kernelUse.snapshot();
  ASSERT_EQ(kept.size(), static_cast<std::size_t>(kWorkers));
  for (auto const& unit : kept) {
    EXPECT_EQ(unit.second.resources.size(), 2u) << unit.first;
    EXPECT_EQ(unit.second.resources.at("Synthesized").lut,
              std::to_string(kRequestsPerWorker - 2));
    EXPECT_EQ(unit.second.resources.at("Routed").lut, std::to_string(kRequestsPerWorker - 1));
  }
}

TEST_F(ConcurrencyTest, ResourceReportsFromSeveralThreadsLeaveOneEntryPerState) {
  connections.createSession(session("impl"));
  // Eight compute units for the reporting threads (two each), two for the report files, and one
  // that nobody reports.
  std::ostringstream units;
  for (int u = 0; u < 2 * kWorkers; ++u) {
    units << R"({"name": "cu_)" << u << R"(", "kernel_name": "krnl"}, )";
  }
  std::string const seed = writeFile(
      "seed.json", R"({"system_diagram_metadata": {"qrxbin": {
        "generated_by": {"label": "impl.qrxbin"},
        "user_regions": [{"name": "ulp", "compute_units": [)" +
                       units.str() +
                       R"({"name": "fu_0", "kernel_name": "fu"}, {"name": "fu_1", "kernel_name": "fu"},
          {"name": "idle_1", "kernel_name": "idle"}]}]}}})");
  ASSERT_EQ(read("impl", seed), 200);

  // Synthesized and Routed for fu_0 and fu_1 (the second file with bare numbers), a report for
  // a compute unit the diagram does not have, and a state word of no known state for cu_0, which
  // the reporting threads update at the same time under the three known ones.
  wire::UtilizationDuringBrenloRun files;
  files.add_utilizationfiles(writeFile("fu.synth.util.json", R"({
    "schema_version": {"major": "1", "minor": "0", "patch": "0"},
    "design_state": "Synthesized",
    "kernels": [
      {"name": "fu", "compute_units": [
        {"cu_name": "fu_0", "actual_resources": {"LUT": "1200", "REG": "2100", "BRAM": "2", "URAM": "0", "DSP": "3"}},
        {"cu_name": "fu_1", "actual_resources": {"LUT": "1300", "REG": "2200", "BRAM": "1", "URAM": "1", "DSP": "0"}}]},
      {"name": "ghost", "compute_units": [
        {"cu_name": "ghost_1", "actual_resources": {"LUT": "1", "REG": "1", "BRAM": "1", "URAM": "1", "DSP": "1"}}]}]})"));
  files.add_utilizationfiles(writeFile("fu.route.util.json", R"({
    "schema_version": {"major": "1", "minor": "0", "patch": "0"},
    "design_state": "Routed",
    "kernels": [
      {"name": "fu", "compute_units": [
        {"cu_name": "fu_0", "actual_resources": {"LUT": 1180, "REG": 2090, "BRAM": 2, "URAM": 0, "DSP": 3}},
        {"cu_name": "fu_1", "actual_resources": {"LUT": 1290, "REG": 2195, "BRAM": 1, "URAM": 1, "DSP": 0}}]}]})"));
  files.add_utilizationfiles(writeFile("cu0.opt.util.json", R"({
    "schema_version": {"major": "1", "minor": "0", "patch": "0"},
    "design_state": "Post-Route Phys Opt",
    "kernels": [
      {"name": "krnl", "compute_units": [
        {"cu_name": "cu_0", "actual_resources": {"LUT": "1001", "REG": "2002", "BRAM": "3", "URAM": "1", "DSP": "8"}}]}]})"));

  char const* const states[] = {"Synthesized", "Fully Placed", "Routed"};
  std::atomic<int> unexpected{0};
  std::atomic<int> torn{0};
  std::vector<std::thread> threads;
  // Reporter w owns cu_<2w> and cu_<2w+1> and sends them, in turn, every state again and again,
  // with counts that tell the report apart: LUT 100w + i, REG 10000 + LUT.
  for (int w = 0; w < kWorkers; ++w) {
    threads.emplace_back([&, w] {
      for (int i = 0; i < kReportsPerWorker; ++i) {
        wire::UpsertKernelUse report;
        report.set_designstate(states[(i / 2) % 3]);
        report.set_usekind(4);
        auto* kernel = report.add_kerneluses();
        kernel->set_kernelname("krnl");
        auto* unit = kernel->add_computeunituses();
        unit->set_computeunitname("cu_" + std::to_string(2 * w + i % 2));
        auto* counts = unit->mutable_actualresources();
        counts->set_lut(std::to_string(100 * w + i));
        counts->set_reg(std::to_string(10000 + 100 * w + i));
        counts->set_bram("2");
        counts->set_uram("0");
        counts->set_dsp("4");
        if (send("impl", report) != 200) ++unexpected;
      }
    });
  }
  // Readers: every diagram they see is whole, with at most one entry per state on any compute
  // unit; an unknown state word only shows as DESIGN_STATE_UNSET, and just one is reported.
  for (int r = 0; r < 2; ++r) {
    threads.emplace_back([&, r] {
      std::string const path = dir.file("reader-" + std::to_string(r) + ".json");
      for (int i = 0; i < kReadsPerReader; ++i) {
        if (write("impl", path) != 200) ++unexpected;
        std::set<std::string> seen;
        for (std::string const& line : entryLines(readText(path))) {
          // "<unit> <state>" must not repeat.
          std::string const key = line.substr(0, line.find(' ', line.find(' ') + 1));
          if (!seen.insert(key).second) ++torn;
        }
        dispatch::Response response;
        connections.dispatch(qvtest::requestFor("impl", wire::GetQrxBinGeneratedBy()), response);
        ProfileAnalyzerSystemDiagramSerializable::qrxBinGeneratedBy generatedBy;
        if (response.status().code() != 200 || !response.payload().UnpackTo(&generatedBy) ||
            generatedBy.label() != "impl.qrxbin") {
          ++unexpected;
        }
      }
    });
  }
  threads.emplace_back([&] {
    for (int i = 0; i < kReportFileRequests; ++i) {
      if (send("impl", files) != 200) ++unexpected;
    }
  });
  for (auto& thread : threads) thread.join();

  EXPECT_EQ(unexpected.load(), 0);
  EXPECT_EQ(torn.load(), 0);
  std::string const last = dir.file("last.json");
  ASSERT_EQ(write("impl", last), 200);
  EXPECT_EQ(entryLines(readText(last)),
            (std::vector<std::string>{
                "cu_0 DESIGN_STATE_FULLY_PLACED 56 10056 2 0 4",
                "cu_0 DESIGN_STATE_ROUTED 58 10058 2 0 4",
                "cu_0 DESIGN_STATE_SYNTHESIZED 54 10054 2 0 4",
                "cu_0 DESIGN_STATE_UNSET 1001 2002 3 1 8",
                "cu_1 DESIGN_STATE_FULLY_PLACED 57 10057 2 0 4",
                "cu_1 DESIGN_STATE_ROUTED 59 10059 2 0 4",
                "cu_1 DESIGN_STATE_SYNTHESIZED 55 10055 2 0 4",
                "cu_2 DESIGN_STATE_FULLY_PLACED 156 10156 2 0 4",
                "cu_2 DESIGN_STATE_ROUTED 158 10158 2 0 4",
                "cu_2 DESIGN_STATE_SYNTHESIZED 154 10154 2 0 4",
                "cu_3 DESIGN_STATE_FULLY_PLACED 157 10157 2 0 4",
                "cu_3 DESIGN_STATE_ROUTED 159 10159 2 0 4",
                "cu_3 DESIGN_STATE_SYNTHESIZED 155 10155 2 0 4",
                "cu_4 DESIGN_STATE_FULLY_PLACED 256 10256 2 0 4",
                "cu_4 DESIGN_STATE_ROUTED 258 10258 2 0 4",
                "cu_4 DESIGN_STATE_SYNTHESIZED 254 10254 2 0 4",
                "cu_5 DESIGN_STATE_FULLY_PLACED 257 10257 2 0 4",
                "cu_5 DESIGN_STATE_ROUTED 259 10259 2 0 4",
                "cu_5 DESIGN_STATE_SYNTHESIZED 255 10255 2 0 4",
                "cu_6 DESIGN_STATE_FULLY_PLACED 356 10356 2 0 4",
                "cu_6 DESIGN_STATE_ROUTED 358 10358 2 0 4",
                "cu_6 DESIGN_STATE_SYNTHESIZED 354 10354 2 0 4",
                "cu_7 DESIGN_STATE_FULLY_PLACED 357 10357 2 0 4",
                "cu_7 DESIGN_STATE_ROUTED 359 10359 2 0 4",
                "cu_7 DESIGN_STATE_SYNTHESIZED 355 10355 2 0 4",
                "fu_0 DESIGN_STATE_ROUTED 1180 2090 2 0 3",
                "fu_0 DESIGN_STATE_SYNTHESIZED 1200 2100 2 0 3",
                "fu_1 DESIGN_STATE_ROUTED 1290 2195 1 1 0",
                "fu_1 DESIGN_STATE_SYNTHESIZED 1300 2200 1 1 0",
                "idle_1 none",
            }));
  // The session keeps the report for the compute unit the diagram lacks, under its own state.
  auto const kept = handler->getDiagramForSession("impl").kernelUse.snapshot();
  ASSERT_EQ(kept.count("ghost_1"), 1u);
  EXPECT_EQ(kept.at("ghost_1").states(), std::vector<std::string>{"Synthesized"});
  EXPECT_EQ(kept.at("cu_0").resources.size(), 4u);
}

}  // namespace
