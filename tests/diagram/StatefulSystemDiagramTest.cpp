// StatefulSystemDiagram forwards every operation to the diagram it holds, one at a time, and lets
// the diagram be swapped whole. A fake diagram records what reached it; the real one is used where
// the empty diagram of a new session is the point.
#include "diagram/StatefulSystemDiagram.h"

#include <algorithm>
#include <atomic>
#include <chrono>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <mutex>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>
#include <gtest/gtest.h>

#include "tests/support/TempDir.h"
#include "tests/support/Messages.h"
#include "tests/support/Calls.h"

namespace {

using qvtest::parse;
using qvtest::sameMessage;
using qvtest::runtimeErrorText;
using qvtest::returnsInTime;

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using IPA::ActualResource;
using IPA::ActualResourceCollection;
using IPA::StatefulSystemDiagram;
using KernelUse = std::unordered_map<std::string, ActualResourceCollection>;

// "<state>=<lut>/<reg>/<bram>/<uram>/<dsp>" per record, sorted, since the map has no order.
std::string describe(ActualResourceCollection const& collection) {
  std::vector<std::string> parts;
  for (auto const& entry : collection.resources) {
    ActualResource const& r = entry.second;
    parts.push_back(entry.first + "=" + r.state + ":" + r.lut + "/" + r.reg + "/" + r.bram + "/" +
                    r.uram + "/" + r.dsp);
  }
  std::sort(parts.begin(), parts.end());
  std::string text;
  for (std::string const& part : parts) text += (text.empty() ? "" : " ") + part;
  return "{" + text + "}";
}

std::string describe(KernelUse const& kernelUse) {
  std::vector<std::string> parts;
  for (auto const& entry : kernelUse) parts.push_back(entry.first + describe(entry.second));
  std::sort(parts.begin(), parts.end());
  std::string text;
  for (std::string const& part : parts) text += (text.empty() ? "" : " ") + part;
  return "[" + text + "]";
}

ActualResourceCollection collectionOf(std::string const& state, std::string const& lut) {
  ActualResourceCollection collection;
  collection.resources[state] = ActualResource{state, lut, "2", "3", "4", "5"};
  return collection;
}

class StatefulSystemDiagramTest : public ::testing::Test {
 protected:
  // Records each call and its arguments, answers with what the test put in, and on request throws
  // or runs a hook inside the call (after recording it).
  class FakeDiagram : public IPA::SystemDiagramInterface {
   public:
    std::vector<std::string> calls() const {
      std::lock_guard<std::mutex> lock(mutex);
      return calls_;
    }

    std::vector<std::string> computeUnitNames() override {
      record("computeUnitNames()");
      return unitNames;
    }
    std::string kernelNameFromComputeUnitName(std::string const& computeUnitName) const override {
      record("kernelNameFromComputeUnitName(" + computeUnitName + ")");
      return kernelName;
    }
    void setComputeUnitBaseAddress(std::string const& kernel, std::string const& computeUnitName,
                                   std::string const& baseAddress) override {
      record("setComputeUnitBaseAddress(" + kernel + ", " + computeUnitName + ", " + baseAddress +
             ")");
    }
    void setDeviceTopologyBaseAddress(std::string const& tag, std::string const& value) override {
      record("setDeviceTopologyBaseAddress(" + tag + ", " + value + ")");
    }
    void setDeviceTopologySlr(std::string const& tag, std::string const& value) override {
      record("setDeviceTopologySlr(" + tag + ", " + value + ")");
    }
    void setDeviceTopologyUsed(std::string const& tag, std::string const& value) override {
      record("setDeviceTopologyUsed(" + tag + ", " + value + ")");
    }
    void setDeviceTopologySizeKB(std::string const& tag, std::string const& value) override {
      record("setDeviceTopologySizeKB(" + tag + ", " + value + ")");
    }
    void addComputeUnitActualResource(std::string const& computeUnitName,
                                      ActualResourceCollection const& resources) override {
      record("addComputeUnitActualResource(" + computeUnitName + ", " + describe(resources) + ")");
    }
    void serializeToJson(std::ostream& out) const override {
      stream = &out;
      out << textToWrite;
      record("serializeToJson()");
    }
    void serializeFromJson(std::istream& in) override {
      stream = &in;
      std::string const text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
      record("serializeFromJson(" + text + ")");
    }
    void upsertKernelUtilization(KernelUse const& kernelUse) override {
      record("upsertKernelUtilization(" + describe(kernelUse) + ")");
    }
    void upsertKernel(pb::kernel const& kernel) override {
      keep(kernelArgument, kernel);
      record("upsertKernel");
    }
    void upsertQrxBin(pb::qrxBin const& qrxBin) override {
      keep(qrxBinArgument, qrxBin);
      record("upsertQrxBin");
    }
    void upsertQrxBinGeneratedBy(pb::qrxBinGeneratedBy const& generatedBy) override {
      keep(generatedByArgument, generatedBy);
      record("upsertQrxBinGeneratedBy");
    }
    void upsertQsaClock(pb::Clock const& clock) override {
      keep(clockArgument, clock);
      record("upsertQsaClock");
    }
    void updateComputeUnit(pb::computeUnit const& computeUnit) override {
      keep(computeUnitArgument, computeUnit);
      record("updateComputeUnit");
    }
    void upsertConnectivity(pb::Connectivity const& connectivity) override {
      keep(connectivityArgument, connectivity);
      record("upsertConnectivity");
    }
    void writeFlowReport(std::ofstream& out) override {
      stream = &out;
      out << "fake report\n";
      record("writeFlowReport()");
    }
    void getQrxBinGeneratedBy(pb::qrxBinGeneratedBy& generatedBy) override {
      generatedBy.CopyFrom(generatedByToGive);
      record("getQrxBinGeneratedBy()");
    }
    void upsertPlatform(pb::Platform const& platform) override {
      keep(platformArgument, platform);
      record("upsertPlatform");
    }

    // Answers and behaviour; set them before any call.
    std::vector<std::string> unitNames;
    std::string kernelName;
    std::string textToWrite;
    pb::qrxBinGeneratedBy generatedByToGive;
    std::string failWith;          // every call throws std::runtime_error with it when not empty
    std::function<void()> onCall;  // runs inside every call

    // What the calls passed; read them once the calls are over.
    mutable void const* stream = nullptr;
    pb::kernel kernelArgument;
    pb::qrxBin qrxBinArgument;
    pb::qrxBinGeneratedBy generatedByArgument;
    pb::Clock clockArgument;
    pb::computeUnit computeUnitArgument;
    pb::Connectivity connectivityArgument;
    pb::Platform platformArgument;

   private:
    template <class Message>
    void keep(Message& into, Message const& argument) {
      std::lock_guard<std::mutex> lock(mutex);
      into.CopyFrom(argument);
    }
    void record(std::string const& call) const {
      {
        std::lock_guard<std::mutex> lock(mutex);
        calls_.push_back(call);
      }
      if (onCall) onCall();
      if (!failWith.empty()) throw std::runtime_error(failWith);
    }

    mutable std::mutex mutex;  // guards calls_ and the kept arguments
    mutable std::vector<std::string> calls_;
  };

  StatefulSystemDiagramTest()
      : fake(std::make_shared<FakeDiagram>()),
        stateful(std::make_shared<StatefulSystemDiagram>(fake)) {}

  using Calls = std::vector<std::string>;

  std::shared_ptr<FakeDiagram> fake;
  std::shared_ptr<StatefulSystemDiagram> stateful;
};

// ---- Forwarding --------------------------------------------------------------------------------

TEST_F(StatefulSystemDiagramTest, ComputeUnitNamesIsForwardedAndItsResultReturned) {
  fake->unitNames = {"vadd_1", "vmul_1"};
  EXPECT_EQ(stateful->computeUnitNames(), (Calls{"vadd_1", "vmul_1"}));
  EXPECT_EQ(fake->calls(), (Calls{"computeUnitNames()"}));
}

TEST_F(StatefulSystemDiagramTest, KernelNameFromComputeUnitNameIsForwardedThroughAConstReference) {
  fake->kernelName = "vadd";
  StatefulSystemDiagram const& constant = *stateful;
  EXPECT_EQ(constant.kernelNameFromComputeUnitName("vadd_1"), "vadd");
  EXPECT_EQ(fake->calls(), (Calls{"kernelNameFromComputeUnitName(vadd_1)"}));
}

TEST_F(StatefulSystemDiagramTest, SettersAreForwardedWithTheirArgumentsInOrder) {
  stateful->setComputeUnitBaseAddress("vadd", "vadd_1", "0x800000");
  stateful->setDeviceTopologyBaseAddress("HBM[0]", "0x4000000000");
  stateful->setDeviceTopologySlr("HBM[1]", "SLR0");
  stateful->setDeviceTopologyUsed("DDR[0]", "yes");
  stateful->setDeviceTopologySizeKB("DDR[1]", "4194304");
  EXPECT_EQ(fake->calls(), (Calls{
                               "setComputeUnitBaseAddress(vadd, vadd_1, 0x800000)",
                               "setDeviceTopologyBaseAddress(HBM[0], 0x4000000000)",
                               "setDeviceTopologySlr(HBM[1], SLR0)",
                               "setDeviceTopologyUsed(DDR[0], yes)",
                               "setDeviceTopologySizeKB(DDR[1], 4194304)",
                           }));
}

TEST_F(StatefulSystemDiagramTest, AddComputeUnitActualResourceIsForwardedWithTheCollection) {
  stateful->addComputeUnitActualResource("vadd_1", collectionOf("Routed", "2398"));
  EXPECT_EQ(fake->calls(),
            (Calls{"addComputeUnitActualResource(vadd_1, {Routed=Routed:2398/2/3/4/5})"}));
}

TEST_F(StatefulSystemDiagramTest, UpsertKernelUtilizationIsForwardedWithTheWholeMap) {
  KernelUse kernelUse;
  kernelUse["vadd_1"] = collectionOf("Synthesized", "10");
  kernelUse["vadd_1"].resources["Routed"] = ActualResource{"Routed", "30", "", "", "", ""};
  kernelUse["vmul_1"] = collectionOf("Routed", "7");
  stateful->upsertKernelUtilization(kernelUse);
  EXPECT_EQ(fake->calls(),
            (Calls{"upsertKernelUtilization([vadd_1{Routed=Routed:30//// "
                   "Synthesized=Synthesized:10/2/3/4/5} vmul_1{Routed=Routed:7/2/3/4/5}])"}));
}

TEST_F(StatefulSystemDiagramTest, SerializeToJsonWritesIntoTheCallersStreamThroughAConstReference) {
  fake->textToWrite = "{\"from\": \"fake\"}\n";
  std::ostringstream out;
  StatefulSystemDiagram const& constant = *stateful;
  constant.serializeToJson(out);
  EXPECT_EQ(out.str(), "{\"from\": \"fake\"}\n");
  EXPECT_EQ(fake->stream, &out);
  EXPECT_EQ(fake->calls(), (Calls{"serializeToJson()"}));
}

TEST_F(StatefulSystemDiagramTest, SerializeFromJsonReadsFromTheCallersStream) {
  std::istringstream in("{\"to\": \"fake\"}");
  stateful->serializeFromJson(in);
  EXPECT_EQ(fake->stream, &in);
  EXPECT_EQ(fake->calls(), (Calls{"serializeFromJson({\"to\": \"fake\"})"}));
}

TEST_F(StatefulSystemDiagramTest, MessageOperationsAreForwardedWithTheirMessages) {
  auto const kernel = parse<pb::kernel>(R"(name: "vadd" ports { name: "m_axi_gmem" })");
  auto const qrxBin = parse<pb::qrxBin>(R"(user_regions { name: "ulp" })");
  auto const generatedBy = parse<pb::qrxBinGeneratedBy>(R"(name: "qvcc" flag: true)");
  auto const clock = parse<pb::Clock>(R"(name: "ext_clk" id: -1 frequency: -1
                                          status: CLOCK_SCALABLE)");
  auto const computeUnit = parse<pb::computeUnit>(R"(name: "vadd_1" reset_pins: "ap_rst_n")");
  auto const connectivity = parse<pb::Connectivity>(R"(
    source { type: "compute_unit" instance: "vadd_1" }
    destination { type: "memory" instance: "HBM[0]" })");
  auto const platform = parse<pb::Platform>(R"(name: "u2" properties: "p1" properties: "p2")");

  stateful->upsertKernel(kernel);
  stateful->upsertQrxBin(qrxBin);
  stateful->upsertQrxBinGeneratedBy(generatedBy);
  stateful->upsertQsaClock(clock);
  stateful->updateComputeUnit(computeUnit);
  stateful->upsertConnectivity(connectivity);
  stateful->upsertPlatform(platform);

  EXPECT_EQ(fake->calls(),
            (Calls{"upsertKernel", "upsertQrxBin", "upsertQrxBinGeneratedBy", "upsertQsaClock",
                   "updateComputeUnit", "upsertConnectivity", "upsertPlatform"}));
  EXPECT_TRUE(sameMessage(kernel, fake->kernelArgument));
  EXPECT_TRUE(sameMessage(qrxBin, fake->qrxBinArgument));
  EXPECT_TRUE(sameMessage(generatedBy, fake->generatedByArgument));
  EXPECT_TRUE(sameMessage(clock, fake->clockArgument));
  EXPECT_TRUE(sameMessage(computeUnit, fake->computeUnitArgument));
  EXPECT_TRUE(sameMessage(connectivity, fake->connectivityArgument));
  EXPECT_TRUE(sameMessage(platform, fake->platformArgument));
}

TEST_F(StatefulSystemDiagramTest, WriteFlowReportIsForwardedWithTheCallersFileStream) {
  qvtest::TempDir dir;
  std::ofstream out(dir.file("report.txt"), std::ios::binary);
  stateful->writeFlowReport(out);
  EXPECT_EQ(fake->stream, &out);
  EXPECT_EQ(fake->calls(), (Calls{"writeFlowReport()"}));
}

TEST_F(StatefulSystemDiagramTest, GetQrxBinGeneratedByFillsTheCallersMessage) {
  fake->generatedByToGive = parse<pb::qrxBinGeneratedBy>(R"(name: "qvcc" version: "2026.2")");
  pb::qrxBinGeneratedBy answer = parse<pb::qrxBinGeneratedBy>(R"(note: "overwritten")");
  stateful->getQrxBinGeneratedBy(answer);
  EXPECT_TRUE(
      sameMessage(parse<pb::qrxBinGeneratedBy>(R"(name: "qvcc" version: "2026.2")"), answer));
  EXPECT_EQ(fake->calls(), (Calls{"getQrxBinGeneratedBy()"}));
}

// ---- Failures ----------------------------------------------------------------------------------

TEST_F(StatefulSystemDiagramTest, EveryOperationPassesAnExceptionOnAndReleasesItsLock) {
  // One row per operation of the interface. After each throw a second call must get the lock.
  qvtest::TempDir dir;
  auto report = std::make_shared<std::ofstream>(dir.file("report.txt"));
  std::shared_ptr<StatefulSystemDiagram> const target = stateful;
  struct Row {
    char const* name;
    std::function<void()> call;
  };
  std::vector<Row> const rows = {
      {"computeUnitNames", [target] { target->computeUnitNames(); }},
      {"kernelNameFromComputeUnitName", [target] { target->kernelNameFromComputeUnitName("a_1"); }},
      {"setComputeUnitBaseAddress",
       [target] { target->setComputeUnitBaseAddress("a", "a_1", "0"); }},
      {"setDeviceTopologyBaseAddress",
       [target] { target->setDeviceTopologyBaseAddress("t", "v"); }},
      {"setDeviceTopologySlr", [target] { target->setDeviceTopologySlr("t", "v"); }},
      {"setDeviceTopologyUsed", [target] { target->setDeviceTopologyUsed("t", "v"); }},
      {"setDeviceTopologySizeKB", [target] { target->setDeviceTopologySizeKB("t", "v"); }},
      {"addComputeUnitActualResource",
       [target] { target->addComputeUnitActualResource("a_1", ActualResourceCollection()); }},
      {"serializeToJson",
       [target] {
         std::ostringstream out;
         target->serializeToJson(out);
       }},
      {"serializeFromJson",
       [target] {
         std::istringstream in("{}");
         target->serializeFromJson(in);
       }},
      {"upsertKernelUtilization", [target] { target->upsertKernelUtilization(KernelUse()); }},
      {"upsertKernel", [target] { target->upsertKernel(pb::kernel()); }},
      {"upsertQrxBin", [target] { target->upsertQrxBin(pb::qrxBin()); }},
      {"upsertQrxBinGeneratedBy",
       [target] { target->upsertQrxBinGeneratedBy(pb::qrxBinGeneratedBy()); }},
      {"upsertQsaClock", [target] { target->upsertQsaClock(pb::Clock()); }},
      {"updateComputeUnit", [target] { target->updateComputeUnit(pb::computeUnit()); }},
      {"upsertConnectivity", [target] { target->upsertConnectivity(pb::Connectivity()); }},
      {"writeFlowReport", [target, report] { target->writeFlowReport(*report); }},
      {"getQrxBinGeneratedBy",
       [target] {
         pb::qrxBinGeneratedBy answer;
         target->getQrxBinGeneratedBy(answer);
       }},
      {"upsertPlatform", [target] { target->upsertPlatform(pb::Platform()); }},
  };
  ASSERT_EQ(rows.size(), 20u);
  for (Row const& row : rows) {
    fake->failWith = std::string("fake failure in ") + row.name;
    EXPECT_EQ(runtimeErrorText(row.call), std::string("fake failure in ") + row.name);
    fake->failWith.clear();
    EXPECT_TRUE(returnsInTime(row.call)) << row.name << " kept the lock after throwing";
  }
  EXPECT_EQ(fake->calls().size(), 40u);
}

TEST_F(StatefulSystemDiagramTest, ReplacementIsPossibleAfterAThrowingOperation) {
  fake->failWith = "fake failure";
  EXPECT_EQ(runtimeErrorText([this] { stateful->upsertPlatform(pb::Platform()); }), "fake failure");
  auto const other = std::make_shared<FakeDiagram>();
  std::shared_ptr<StatefulSystemDiagram> const target = stateful;
  EXPECT_TRUE(returnsInTime([target, other] { target->setSystemDiagramInterface(other); }));
  stateful->computeUnitNames();
  EXPECT_EQ(other->calls(), (Calls{"computeUnitNames()"}));
}

TEST_F(StatefulSystemDiagramTest, RealDiagramThatThrowsLeavesTheLockFree) {
  // A new session's diagram has no user region, so it refuses a kernel.
  auto const session = std::make_shared<StatefulSystemDiagram>();
  pb::kernel kernel;
  kernel.set_name("vadd");
  EXPECT_EQ(runtimeErrorText([&] { session->upsertKernel(kernel); }),
            "Cannot upsert kernel 'vadd': the system diagram has no user region.");
  auto const written = std::make_shared<std::ostringstream>();
  EXPECT_TRUE(returnsInTime([session, written] { session->serializeToJson(*written); }));
  EXPECT_EQ(written->str(),
            "{\n"
            " \"system_diagram_metadata\": {\n"
            "  \"schema_version\": {\n"
            "   \"major\": \"2\",\n"
            "   \"minor\": \"0\",\n"
            "   \"patch\": \"0\"\n"
            "  }\n"
            " }\n"
            "}\n"
            "\n");
}

// ---- One operation at a time -------------------------------------------------------------------

TEST_F(StatefulSystemDiagramTest, OperationWaitsWhileAnotherIsInProgress) {
  std::promise<void> entered;
  std::promise<void> gate;
  std::shared_future<void> const gateOpen = gate.get_future().share();
  std::atomic<bool> first{true};
  fake->onCall = [&] {
    if (!first.exchange(false)) return;
    entered.set_value();
    gateOpen.wait();
  };
  std::thread slow([this] { stateful->upsertPlatform(pb::Platform()); });
  entered.get_future().wait();

  std::atomic<bool> secondReturned{false};
  std::thread second([this, &secondReturned] {
    stateful->computeUnitNames();
    secondReturned = true;
  });
  // Long enough for an unguarded call to reach the fake; a guarded one never does meanwhile.
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  EXPECT_FALSE(secondReturned);
  EXPECT_EQ(fake->calls(), (Calls{"upsertPlatform"}));

  gate.set_value();
  slow.join();
  second.join();
  EXPECT_TRUE(secondReturned);
  EXPECT_EQ(fake->calls(), (Calls{"upsertPlatform", "computeUnitNames()"}));
}

TEST_F(StatefulSystemDiagramTest, ReplacementWaitsForTheOperationInProgress) {
  std::promise<void> entered;
  std::promise<void> gate;
  std::shared_future<void> const gateOpen = gate.get_future().share();
  fake->onCall = [&] {
    entered.set_value();
    gateOpen.wait();
  };
  std::thread slow([this] { stateful->setDeviceTopologyUsed("HBM[0]", "yes"); });
  entered.get_future().wait();

  auto const other = std::make_shared<FakeDiagram>();
  std::atomic<bool> replaced{false};
  std::thread replacing([this, other, &replaced] {
    stateful->setSystemDiagramInterface(other);
    replaced = true;
  });
  std::this_thread::sleep_for(std::chrono::milliseconds(200));
  EXPECT_FALSE(replaced);

  gate.set_value();
  slow.join();
  replacing.join();
  EXPECT_TRUE(replaced);
  stateful->setDeviceTopologyUsed("HBM[1]", "no");
  EXPECT_EQ(fake->calls(), (Calls{"setDeviceTopologyUsed(HBM[0], yes)"}));
  EXPECT_EQ(other->calls(), (Calls{"setDeviceTopologyUsed(HBM[1], no)"}));
}

// ---- Replacing the diagram ---------------------------------------------------------------------

TEST_F(StatefulSystemDiagramTest, ReplacementSendsLaterCallsToTheNewDiagram) {
  stateful->setDeviceTopologySlr("HBM[0]", "SLR0");
  auto const other = std::make_shared<FakeDiagram>();
  stateful->setSystemDiagramInterface(other);
  stateful->setDeviceTopologySlr("HBM[0]", "SLR1");
  EXPECT_EQ(fake->calls(), (Calls{"setDeviceTopologySlr(HBM[0], SLR0)"}));
  EXPECT_EQ(other->calls(), (Calls{"setDeviceTopologySlr(HBM[0], SLR1)"}));
}

TEST_F(StatefulSystemDiagramTest, ReplacementReleasesTheOldDiagramAtOnce) {
  std::weak_ptr<FakeDiagram> const old = fake;
  fake.reset();
  ASSERT_FALSE(old.expired());
  stateful->setSystemDiagramInterface(std::make_shared<FakeDiagram>());
  EXPECT_TRUE(old.expired());
}

TEST_F(StatefulSystemDiagramTest, OldDiagramSharedElsewhereSurvivesTheReplacement) {
  EXPECT_EQ(fake.use_count(), 2);
  stateful->setSystemDiagramInterface(std::make_shared<FakeDiagram>());
  EXPECT_EQ(fake.use_count(), 1);
  fake->setDeviceTopologyUsed("t", "v");
  EXPECT_EQ(fake->calls(), (Calls{"setDeviceTopologyUsed(t, v)"}));
}

TEST_F(StatefulSystemDiagramTest, ReplacingWithTheSameDiagramKeepsIt) {
  stateful->setSystemDiagramInterface(fake);
  stateful->computeUnitNames();
  EXPECT_EQ(fake->calls(), (Calls{"computeUnitNames()"}));
}

TEST_F(StatefulSystemDiagramTest, DestructionReleasesTheDiagram) {
  std::weak_ptr<FakeDiagram> const held = fake;
  fake.reset();
  stateful.reset();
  EXPECT_TRUE(held.expired());
}

TEST_F(StatefulSystemDiagramTest, ConstructionCallsNothingOnTheDiagram) {
  EXPECT_EQ(fake->calls(), Calls{});
}

// ---- The diagram of a new session --------------------------------------------------------------

TEST_F(StatefulSystemDiagramTest, DefaultConstructedHoldsAnEmptyDiagram) {
  StatefulSystemDiagram session;
  EXPECT_EQ(session.computeUnitNames(), Calls{});
  std::ostringstream out;
  session.serializeToJson(out);
  EXPECT_EQ(out.str(),
            "{\n"
            " \"system_diagram_metadata\": {\n"
            "  \"schema_version\": {\n"
            "   \"major\": \"2\",\n"
            "   \"minor\": \"0\",\n"
            "   \"patch\": \"0\"\n"
            "  }\n"
            " }\n"
            "}\n"
            "\n");
}

TEST_F(StatefulSystemDiagramTest, DefaultConstructedDiagramIsReadAndWrittenAsJson) {
  StatefulSystemDiagram session;
  std::istringstream in(R"({"system_diagram_metadata": {"qrxbin": {"user_regions": [
      {"compute_units": [{"name": "vadd_1"}, {"name": "vmul_1"}]}]}}})");
  session.serializeFromJson(in);
  EXPECT_EQ(session.computeUnitNames(), (Calls{"vadd_1", "vmul_1"}));
}

TEST_F(StatefulSystemDiagramTest, EachDefaultConstructedSessionHasADiagramOfItsOwn) {
  StatefulSystemDiagram first;
  StatefulSystemDiagram second;
  std::istringstream in(R"({"system_diagram_metadata": {"qrxbin": {"user_regions": [
      {"compute_units": [{"name": "vadd_1"}]}]}}})");
  first.serializeFromJson(in);
  EXPECT_EQ(first.computeUnitNames(), (Calls{"vadd_1"}));
  EXPECT_EQ(second.computeUnitNames(), Calls{});
}

}  // namespace
