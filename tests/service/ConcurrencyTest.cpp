// Requests from several threads while sessions are created, forked and removed. Bounded in
// iterations; its value is in the ThreadSanitizer run of scripts/test, which fails on any race.
#include <atomic>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "platform/dispatch/ConnectionMgr.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"

namespace {

namespace wire = dispatch::system_diagram_server;

constexpr int kWorkers = 4;
constexpr int kRequestsPerWorker = 150;
constexpr int kChurnRounds = 60;

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

}  // namespace
