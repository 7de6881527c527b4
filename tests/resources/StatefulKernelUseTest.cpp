// A session's memory of every resource report: the newest report per compute unit and design
// state, all of it handed to the diagram at once. A fake diagram keeps what it was handed.
#include "resources/StatefulKernelUse.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <functional>
#include <future>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include <google/protobuf/text_format.h>
#include <gtest/gtest.h>

#include "diagram/SystemDiagramInterface.h"

namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
namespace server = dispatch::system_diagram_server;
using IPA::ActualResourceCollection;
using IPA::StatefulKernelUse;
using KernelUse = std::unordered_map<std::string, ActualResourceCollection>;

server::UpsertKernelUse message(std::string const& text) {
  server::UpsertKernelUse parsed;
  EXPECT_TRUE(google::protobuf::TextFormat::ParseFromString(text, &parsed)) << text;
  return parsed;
}

// One report for one compute unit, as a client sends it.
server::UpsertKernelUse report(std::string const& state, std::string const& unit,
                               std::string const& lut, std::string const& dsp = "5") {
  server::UpsertKernelUse message;
  message.set_designstate(state);
  message.set_usekind(4);
  server::KernelResourceUse* kernel = message.add_kerneluses();
  kernel->set_kernelname("vadd");
  server::ComputeUnitResourceUse* use = kernel->add_computeunituses();
  use->set_computeunitname(unit);
  server::ActualResources* counts = use->mutable_actualresources();
  counts->set_lut(lut);
  counts->set_reg("2");
  counts->set_bram("3");
  counts->set_uram("4");
  counts->set_dsp(dsp);
  return message;
}

// One line per compute unit, sorted: "<unit>: <key>=<state>|<lut>|<reg>|<bram>|<uram>|<dsp>; ...",
// states sorted too, "<unit>: (none)" for a unit without reports.
std::string describe(KernelUse const& kernelUse) {
  std::vector<std::string> lines;
  for (auto const& unit : kernelUse) {
    std::vector<std::string> states;
    for (auto const& entry : unit.second.resources) {
      auto const& r = entry.second;
      states.push_back(entry.first + "=" + r.state + "|" + r.lut + "|" + r.reg + "|" + r.bram +
                       "|" + r.uram + "|" + r.dsp);
    }
    std::sort(states.begin(), states.end());
    std::string line = unit.first + ":";
    if (states.empty()) line += " (none)";
    for (std::string const& state : states) line += " " + state + ";";
    lines.push_back(line);
  }
  std::sort(lines.begin(), lines.end());
  std::string text;
  for (std::string const& line : lines) text += line + "\n";
  return text;
}

class StatefulKernelUseTest : public ::testing::Test {
 protected:
  // Keeps each map handed to upsertKernelUtilization; any other operation is a failure, since
  // the kernel use has no business with the rest of a diagram.
  class FakeDiagram : public IPA::SystemDiagramInterface {
   public:
    std::vector<KernelUse> received() const {
      std::lock_guard<std::mutex> lock(mutex);
      return received_;
    }

    void upsertKernelUtilization(KernelUse const& kernelUse) override {
      {
        std::lock_guard<std::mutex> lock(mutex);
        received_.push_back(kernelUse);
      }
      if (onCall) onCall();
      if (!failWith.empty()) throw std::runtime_error(failWith);
    }

    std::vector<std::string> computeUnitNames() override {
      return unexpected<std::vector<std::string>>();
    }
    std::string kernelNameFromComputeUnitName(std::string const&) const override {
      return unexpected<std::string>();
    }
    void setComputeUnitBaseAddress(std::string const&, std::string const&,
                                   std::string const&) override {
      unexpected<void>();
    }
    void setDeviceTopologyBaseAddress(std::string const&, std::string const&) override {
      unexpected<void>();
    }
    void setDeviceTopologySlr(std::string const&, std::string const&) override {
      unexpected<void>();
    }
    void setDeviceTopologyUsed(std::string const&, std::string const&) override {
      unexpected<void>();
    }
    void setDeviceTopologySizeKB(std::string const&, std::string const&) override {
      unexpected<void>();
    }
    void addComputeUnitActualResource(std::string const&,
                                      ActualResourceCollection const&) override {
      unexpected<void>();
    }
    void serializeToJson(std::ostream&) const override { unexpected<void>(); }
    void serializeFromJson(std::istream&) override { unexpected<void>(); }
    void upsertKernel(pb::kernel const&) override { unexpected<void>(); }
    void upsertQrxBin(pb::qrxBin const&) override { unexpected<void>(); }
    void upsertQrxBinGeneratedBy(pb::qrxBinGeneratedBy const&) override { unexpected<void>(); }
    void upsertQsaClock(pb::Clock const&) override { unexpected<void>(); }
    void updateComputeUnit(pb::computeUnit const&) override { unexpected<void>(); }
    void upsertConnectivity(pb::Connectivity const&) override { unexpected<void>(); }
    void writeFlowReport(std::ofstream&) override { unexpected<void>(); }
    void getQrxBinGeneratedBy(pb::qrxBinGeneratedBy&) override { unexpected<void>(); }
    void upsertPlatform(pb::Platform const&) override { unexpected<void>(); }

    std::function<void()> onCall;  // runs inside upsertKernelUtilization; set before any call
    std::string failWith;          // upsertKernelUtilization throws it when not empty

   private:
    template <class Result>
    static Result unexpected() {
      ADD_FAILURE() << "the kernel use called a diagram operation other than "
                       "upsertKernelUtilization";
      return Result();
    }

    mutable std::mutex mutex;  // guards received_
    std::vector<KernelUse> received_;
  };

  StatefulKernelUse kernelUse;
  FakeDiagram diagram;
};

// ---- Merging reports ---------------------------------------------------------------------------

TEST_F(StatefulKernelUseTest, StartsEmpty) { EXPECT_EQ(describe(kernelUse.snapshot()), ""); }

TEST_F(StatefulKernelUseTest, MergeFromKeepsTheReportOfTheMessage) {
  kernelUse.mergeFrom(report("Synthesized", "vadd_1", "10"));
  EXPECT_EQ(describe(kernelUse.snapshot()), "vadd_1: Synthesized=Synthesized|10|2|3|4|5;\n");
}

TEST_F(StatefulKernelUseTest, ReportsOfOtherStatesStaySideBySide) {
  kernelUse.mergeFrom(report("Synthesized", "vadd_1", "10"));
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  kernelUse.mergeFrom(report("Fully Placed", "vadd_1", "20"));
  EXPECT_EQ(describe(kernelUse.snapshot()),
            "vadd_1: Fully Placed=Fully Placed|20|2|3|4|5; Routed=Routed|30|2|3|4|5; "
            "Synthesized=Synthesized|10|2|3|4|5;\n");
}

TEST_F(StatefulKernelUseTest, LaterReportReplacesTheSameUnitAndStateAndOthersStay) {
  kernelUse.mergeFrom(report("Synthesized", "vadd_1", "10"));
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  kernelUse.mergeFrom(report("Routed", "vmul_1", "70"));
  kernelUse.mergeFrom(report("Routed", "vadd_1", "31", "6"));
  EXPECT_EQ(describe(kernelUse.snapshot()),
            "vadd_1: Routed=Routed|31|2|3|4|6; Synthesized=Synthesized|10|2|3|4|5;\n"
            "vmul_1: Routed=Routed|70|2|3|4|5;\n");
}

TEST_F(StatefulKernelUseTest, LaterReportWithoutCountsReplacesAllSixFields) {
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  kernelUse.mergeFrom(message(R"(designState: "Routed"
    kernelUses { kernelName: "vadd" computeUnitUses { computeUnitName: "vadd_1" } })"));
  EXPECT_EQ(describe(kernelUse.snapshot()), "vadd_1: Routed=Routed|||||;\n");
}

TEST_F(StatefulKernelUseTest, KernelEntryWithoutComputeUnitUsesIsPassedOver) {
  kernelUse.mergeFrom(message(R"(designState: "Routed" kernelUses { kernelName: "vadd" })"));
  EXPECT_EQ(describe(kernelUse.snapshot()), "");
  EXPECT_EQ(kernelUse.snapshot().count(""), 0u);
}

TEST_F(StatefulKernelUseTest, EmptyKernelEntryBesideAFullOneTakesNothingAway) {
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  kernelUse.mergeFrom(message(R"(designState: "Routed"
    kernelUses { kernelName: "vmul" }
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_2" actualResources { lut: "40" } } })"));
  EXPECT_EQ(describe(kernelUse.snapshot()),
            "vadd_1: Routed=Routed|30|2|3|4|5;\n"
            "vadd_2: Routed=Routed|40||||;\n");
}

TEST_F(StatefulKernelUseTest, OnlyTheLastComputeUnitUseOfAKernelEntryIsKept) {
  kernelUse.mergeFrom(message(R"(designState: "Routed"
    kernelUses { kernelName: "vadd"
      computeUnitUses { computeUnitName: "vadd_1" actualResources { lut: "1" } }
      computeUnitUses { computeUnitName: "vadd_2" actualResources { lut: "2" } } })"));
  EXPECT_EQ(describe(kernelUse.snapshot()), "vadd_2: Routed=Routed|2||||;\n");
}

TEST_F(StatefulKernelUseTest, StateWordThatTheDiagramDoesNotKnowIsKeptUnderItsOwnKey) {
  kernelUse.mergeFrom(report("Placed Twice", "vadd_1", "30"));
  EXPECT_EQ(describe(kernelUse.snapshot()), "vadd_1: Placed Twice=Placed Twice|30|2|3|4|5;\n");
}

TEST_F(StatefulKernelUseTest, ComputeUnitUseWithoutANameIsKeptUnderTheEmptyName) {
  // The request handlers refuse such a message; the kernel use itself does not judge.
  kernelUse.mergeFrom(message(R"(designState: "Routed"
    kernelUses { kernelName: "vadd" computeUnitUses { actualResources { lut: "9" } } })"));
  EXPECT_EQ(describe(kernelUse.snapshot()), ": Routed=Routed|9||||;\n");
}

TEST_F(StatefulKernelUseTest, SnapshotIsACopy) {
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  KernelUse copy = kernelUse.snapshot();
  copy["vadd_1"].resources["Routed"].lut = "changed";
  copy["vmul_1"];
  EXPECT_EQ(describe(kernelUse.snapshot()), "vadd_1: Routed=Routed|30|2|3|4|5;\n");
}

// ---- Publishing to the diagram -----------------------------------------------------------------

TEST_F(StatefulKernelUseTest, MergeToHandsTheWholeMapToTheDiagram) {
  kernelUse.mergeFrom(report("Synthesized", "vadd_1", "10"));
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  kernelUse.mergeFrom(report("Routed", "vmul_1", "70"));
  kernelUse.mergeTo(diagram);
  std::vector<KernelUse> const received = diagram.received();
  ASSERT_EQ(received.size(), 1u);
  EXPECT_EQ(describe(received[0]),
            "vadd_1: Routed=Routed|30|2|3|4|5; Synthesized=Synthesized|10|2|3|4|5;\n"
            "vmul_1: Routed=Routed|70|2|3|4|5;\n");
}

TEST_F(StatefulKernelUseTest, EveryMergeToHandsEverythingKeptSoFarNotOnlyTheNewest) {
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  kernelUse.mergeTo(diagram);
  kernelUse.mergeFrom(report("Routed", "vmul_1", "70"));
  kernelUse.mergeTo(diagram);
  std::vector<KernelUse> const received = diagram.received();
  ASSERT_EQ(received.size(), 2u);
  EXPECT_EQ(describe(received[0]), "vadd_1: Routed=Routed|30|2|3|4|5;\n");
  EXPECT_EQ(describe(received[1]),
            "vadd_1: Routed=Routed|30|2|3|4|5;\n"
            "vmul_1: Routed=Routed|70|2|3|4|5;\n");
}

TEST_F(StatefulKernelUseTest, MergeToOfAnEmptyKernelUseStillCallsTheDiagramWithAnEmptyMap) {
  kernelUse.mergeTo(diagram);
  std::vector<KernelUse> const received = diagram.received();
  ASSERT_EQ(received.size(), 1u);
  EXPECT_TRUE(received[0].empty());
}

TEST_F(StatefulKernelUseTest, MergeToKeepsTheKernelUse) {
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  kernelUse.mergeTo(diagram);
  EXPECT_EQ(describe(kernelUse.snapshot()), "vadd_1: Routed=Routed|30|2|3|4|5;\n");
}

TEST_F(StatefulKernelUseTest, MergeToPublishesToWhicheverDiagramItIsGiven) {
  // The kernel use outlives a replaced diagram: the next diagram gets everything.
  kernelUse.mergeFrom(report("Synthesized", "vadd_1", "10"));
  kernelUse.mergeTo(diagram);
  FakeDiagram replacement;
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  kernelUse.mergeTo(replacement);
  ASSERT_EQ(replacement.received().size(), 1u);
  EXPECT_EQ(describe(replacement.received()[0]),
            "vadd_1: Routed=Routed|30|2|3|4|5; Synthesized=Synthesized|10|2|3|4|5;\n");
  EXPECT_EQ(diagram.received().size(), 1u);
}

TEST_F(StatefulKernelUseTest, ErrorOfTheDiagramPassesThroughAndTheLockIsFreeAfterwards) {
  // Shared, so that a call left hanging on a lock never held free can outlive the test.
  auto const shared = std::make_shared<StatefulKernelUse>();
  shared->mergeFrom(report("Routed", "vadd_1", "30"));
  diagram.failWith = "no such compute unit";
  std::string error = "<no exception>";
  try {
    shared->mergeTo(diagram);
  } catch (std::runtime_error const& thrown) {
    error = thrown.what();
  }
  EXPECT_EQ(error, "no such compute unit");

  auto const finished = std::make_shared<std::promise<void>>();
  std::future<void> done = finished->get_future();
  std::thread([shared, finished] {
    shared->mergeFrom(report("Routed", "vmul_1", "70"));
    finished->set_value();
  }).detach();
  ASSERT_EQ(done.wait_for(std::chrono::seconds(5)), std::future_status::ready)
      << "the kernel use kept its lock after the diagram threw";
  EXPECT_EQ(describe(shared->snapshot()),
            "vadd_1: Routed=Routed|30|2|3|4|5;\n"
            "vmul_1: Routed=Routed|70|2|3|4|5;\n");
}

TEST_F(StatefulKernelUseTest, MergeFromWaitsWhileMergeToIsPublishing) {
  // The kernel use stays locked while the diagram works on it, so a report that arrives meanwhile
  // is neither lost nor half seen.
  std::promise<void> entered;
  std::promise<void> gate;
  std::shared_future<void> const gateOpen = gate.get_future().share();
  diagram.onCall = [&] {
    entered.set_value();
    gateOpen.wait();
  };
  kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  std::thread publishing([this] { kernelUse.mergeTo(diagram); });
  entered.get_future().wait();

  std::atomic<bool> mergedMeanwhile{false};
  std::thread merging([this, &mergedMeanwhile] {
    kernelUse.mergeFrom(report("Routed", "vmul_1", "70"));
    mergedMeanwhile = true;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  EXPECT_FALSE(mergedMeanwhile);

  gate.set_value();
  publishing.join();
  merging.join();
  EXPECT_TRUE(mergedMeanwhile);
  ASSERT_EQ(diagram.received().size(), 1u);
  EXPECT_EQ(describe(diagram.received()[0]), "vadd_1: Routed=Routed|30|2|3|4|5;\n");
  EXPECT_EQ(describe(kernelUse.snapshot()),
            "vadd_1: Routed=Routed|30|2|3|4|5;\n"
            "vmul_1: Routed=Routed|70|2|3|4|5;\n");
}

}  // namespace
