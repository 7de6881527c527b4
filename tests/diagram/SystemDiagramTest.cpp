// What a session owns: its diagram, read from and written to files, copied through its JSON text,
// and its kernel use, which a copy leaves alone. Files live in a directory of their own per test.
#include "diagram/SystemDiagram.h"

#include <algorithm>
#include <chrono>
#include <fstream>
#include <functional>
#include <future>
#include <iterator>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>
#include <thread>
#include <unordered_map>
#include <vector>

#include <boost/filesystem.hpp>
#include <google/protobuf/text_format.h>
#include <google/protobuf/util/message_differencer.h>
#include <gtest/gtest.h>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"
#include "tests/support/Messages.h"
#include "tests/support/Calls.h"

namespace {

using qvtest::parse;
using qvtest::sameMessage;
using qvtest::runtimeErrorText;
using qvtest::returnsInTime;

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
namespace server = dispatch::system_diagram_server;
using Container = IPA::ProfileAnalyzerSystemDiagram::Container;
using IPA::ActualResourceCollection;
using IPA::SystemDiagram;
using KernelUse = std::unordered_map<std::string, ActualResourceCollection>;

// "<unit>{<state>=<lut>/<reg>/<bram>/<uram>/<dsp> ...}" per compute unit, sorted, since the maps
// have no order.
std::string describe(KernelUse const& kernelUse) {
  std::vector<std::string> units;
  for (auto const& unit : kernelUse) {
    std::vector<std::string> states;
    for (auto const& entry : unit.second.resources) {
      auto const& r = entry.second;
      states.push_back(entry.first + "=" + r.lut + "/" + r.reg + "/" + r.bram + "/" + r.uram + "/" +
                       r.dsp);
    }
    std::sort(states.begin(), states.end());
    std::string text;
    for (std::string const& state : states) text += (text.empty() ? "" : " ") + state;
    units.push_back(unit.first + "{" + text + "}");
  }
  std::sort(units.begin(), units.end());
  std::string text;
  for (std::string const& unit : units) text += (text.empty() ? "" : " ") + unit;
  return text;
}

// How many files this process has open, or -1 where the system does not tell.
long openFileCount() {
  boost::system::error_code error;
  boost::filesystem::directory_iterator entries("/proc/self/fd", error);
  if (error) return -1;
  return std::distance(entries, boost::filesystem::directory_iterator());
}

char const kFreshDocument[] =
    "{\n"
    " \"system_diagram_metadata\": {\n"
    "  \"schema_version\": {\n"
    "   \"major\": \"2\",\n"
    "   \"minor\": \"0\",\n"
    "   \"patch\": \"0\"\n"
    "  }\n"
    " }\n"
    "}\n"
    "\n";

// What a diagram that holds only qrxbin.generated_by { name: "qvcc" } writes.
char const kGeneratedByDocument[] =
    "{\n"
    " \"system_diagram_metadata\": {\n"
    "  \"schema_version\": {\n"
    "   \"major\": \"2\",\n"
    "   \"minor\": \"0\",\n"
    "   \"patch\": \"0\"\n"
    "  },\n"
    "  \"qrxbin\": {\n"
    "   \"user_regions\": [],\n"
    "   \"generated_by\": {\n"
    "    \"name\": \"qvcc\",\n"
    "    \"version\": \"\",\n"
    "    \"change_list\": \"\",\n"
    "    \"timestamp\": \"\",\n"
    "    \"detail_a\": \"\",\n"
    "    \"detail_b\": \"\",\n"
    "    \"label\": \"\",\n"
    "    \"note\": \"\",\n"
    "    \"label_copy\": \"\",\n"
    "    \"flag\": false\n"
    "   }\n"
    "  }\n"
    " }\n"
    "}\n"
    "\n";

class SystemDiagramTest : public ::testing::Test {
 protected:
  // Records the operations that reach it, keeps their messages, writes `textToWrite` as its JSON
  // and keeps the JSON text it is given.
  class FakeDiagram : public IPA::SystemDiagramInterface {
   public:
    std::vector<std::string> computeUnitNames() override {
      record("computeUnitNames");
      return {};
    }
    std::string kernelNameFromComputeUnitName(std::string const&) const override {
      record("kernelNameFromComputeUnitName");
      return "";
    }
    void setComputeUnitBaseAddress(std::string const&, std::string const&,
                                   std::string const&) override {
      record("setComputeUnitBaseAddress");
    }
    void setDeviceTopologyBaseAddress(std::string const&, std::string const&) override {
      record("setDeviceTopologyBaseAddress");
    }
    void setDeviceTopologySlr(std::string const&, std::string const&) override {
      record("setDeviceTopologySlr");
    }
    void setDeviceTopologyUsed(std::string const&, std::string const&) override {
      record("setDeviceTopologyUsed");
    }
    void setDeviceTopologySizeKB(std::string const&, std::string const&) override {
      record("setDeviceTopologySizeKB");
    }
    void addComputeUnitActualResource(std::string const&,
                                      ActualResourceCollection const&) override {
      record("addComputeUnitActualResource");
    }
    void serializeToJson(std::ostream& out) const override {
      record("serializeToJson");
      out << textToWrite;
    }
    void serializeFromJson(std::istream& in) override {
      record("serializeFromJson");
      textRead.assign(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
    }
    void upsertKernelUtilization(KernelUse const&) override { record("upsertKernelUtilization"); }
    void upsertKernel(pb::kernel const& message) override {
      record("upsertKernel");
      kernel.CopyFrom(message);
    }
    void upsertQrxBin(pb::qrxBin const& message) override {
      record("upsertQrxBin");
      qrxBin.CopyFrom(message);
    }
    void upsertQrxBinGeneratedBy(pb::qrxBinGeneratedBy const& message) override {
      record("upsertQrxBinGeneratedBy");
      generatedBy.CopyFrom(message);
    }
    void upsertQsaClock(pb::Clock const& message) override {
      record("upsertQsaClock");
      clock.CopyFrom(message);
    }
    void updateComputeUnit(pb::computeUnit const& message) override {
      record("updateComputeUnit");
      computeUnit.CopyFrom(message);
    }
    void upsertConnectivity(pb::Connectivity const& message) override {
      record("upsertConnectivity");
      connectivity.CopyFrom(message);
    }
    void writeFlowReport(std::ofstream&) override { record("writeFlowReport"); }
    void getQrxBinGeneratedBy(pb::qrxBinGeneratedBy& answer) override {
      record("getQrxBinGeneratedBy");
      answer.CopyFrom(generatedByToGive);
    }
    void upsertPlatform(pb::Platform const& message) override {
      record("upsertPlatform");
      platform.CopyFrom(message);
    }

    // Shared by the fakes of one test, so that the order across two diagrams shows.
    std::shared_ptr<std::vector<std::string>> calls = std::make_shared<std::vector<std::string>>();
    std::string name;  // prefixed to each recorded call
    std::string textToWrite;
    std::string textRead;
    pb::qrxBinGeneratedBy generatedByToGive;

    pb::kernel kernel;
    pb::qrxBin qrxBin;
    pb::qrxBinGeneratedBy generatedBy;
    pb::Clock clock;
    pb::computeUnit computeUnit;
    pb::Connectivity connectivity;
    pb::Platform platform;

   private:
    void record(std::string const& call) const { calls->push_back(name + call); }
  };

  // Points `diagram` at a ProfileAnalyzerSystemDiagram on `container`, so the test sees the tree.
  static void useContainer(SystemDiagram& diagram, std::shared_ptr<Container> const& container) {
    diagram.systemDiagram.setSystemDiagramInterface(
        std::make_shared<IPA::ProfileAnalyzerSystemDiagram>(container));
  }

  static std::string written(SystemDiagram const& diagram) {
    std::ostringstream out;
    diagram.systemDiagram.serializeToJson(out);
    return out.str();
  }

  static void load(SystemDiagram& diagram, std::string const& json) {
    std::istringstream in(json);
    diagram.systemDiagram.serializeFromJson(in);
  }

  static void writeFile(std::string const& path, std::string const& text) {
    std::ofstream(path, std::ios::binary) << text;
  }

  // One report for one compute unit, as a client sends it.
  static server::UpsertKernelUse report(std::string const& state, std::string const& unit,
                                        std::string const& lut) {
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
    counts->set_dsp("5");
    return message;
  }

  qvtest::TempDir dir;
};

// ---- Edge cases --------------------------------------------------------------------------------

TEST_F(SystemDiagramTest, ReadingAMissingFileThrowsAndLeavesTheDiagramAsItWas) {
  SystemDiagram diagram;
  load(diagram, R"({"system_diagram_metadata": {"qrxbin": {"generated_by": {"name": "qvcc"}}}})");
  std::string const path = dir.file("missing.json");
  EXPECT_EQ(runtimeErrorText([&] { diagram.readSystemDiagram(path); }),
            "Could not open " + path + " for reading.");
  EXPECT_EQ(written(diagram), kGeneratedByDocument);
}

TEST_F(SystemDiagramTest, FreshSessionIsWrittenAsTheVersionStampAloneAndReadsBack) {
  SystemDiagram fresh;
  std::string const path = dir.file("fresh.json");
  fresh.serializeCurrentSystemDiagram(path);
  EXPECT_EQ(qvtest::readFile(path), kFreshDocument);

  SystemDiagram reader;
  load(reader, R"({"system_diagram_metadata": {"qsa": {"vendor": "stale"}}})");
  reader.readSystemDiagram(path);
  EXPECT_EQ(written(reader), kFreshDocument);
}

TEST_F(SystemDiagramTest, WrittenDiagramReadsBackEqualWithNamesForEnumerations) {
  auto const source = std::make_shared<Container>(parse<Container>(R"(
    system_diagram_metadata {
      qsa {
        device_topology { tag: "HBM[0]" type: MEM_HBM }
        clocks { name: "ext_clk" id: -1 frequency: -1 status: CLOCK_SCALABLE }
      }
      qrxbin { user_regions { compute_units { name: "vadd_1"
        actual_resources { lut: "30" design_state: DESIGN_STATE_ROUTED } } } }
    })"));
  SystemDiagram writer;
  useContainer(writer, source);
  std::string const path = dir.file("diagram.json");
  writer.serializeCurrentSystemDiagram(path);

  std::string const text = qvtest::readFile(path);
  for (char const* line :
       {"     \"type\": \"MEM_HBM\"\n", "     \"status\": \"CLOCK_SCALABLE\"\n",
        "       \"design_state\": \"DESIGN_STATE_ROUTED\"\n", "     \"orig_name\": \"\",\n",
        "     \"id\": -1,\n", "     \"frequency\": -1,\n", "     \"sp_tag\": \"\",\n",
        "       \"reg\": \"\",\n"}) {
    EXPECT_NE(text.find(line), std::string::npos) << line << "in\n" << text;
  }

  auto const target = std::make_shared<Container>();
  SystemDiagram reader;
  useContainer(reader, target);
  reader.readSystemDiagram(path);
  EXPECT_TRUE(google::protobuf::util::MessageDifferencer::Equals(*source, *target));
  EXPECT_TRUE(sameMessage(*source, *target));
}

TEST_F(SystemDiagramTest, FileWithOneUnknownKeyIsRefusedAndTheDiagramStaysAsItWas) {
  std::string const path = dir.file("unknown.json");
  writeFile(path, R"({"system_diagram_metadata": {"qrxbin": {"generated_by": {"name": "x"}},
                      "owner": "someone"}})");
  SystemDiagram diagram;
  load(diagram, R"({"system_diagram_metadata": {"qrxbin": {"generated_by": {"name": "qvcc"}}}})");
  std::string const error = runtimeErrorText([&] { diagram.readSystemDiagram(path); });
  EXPECT_EQ(error.rfind("Deserializing failed with error: ", 0), 0u) << error;
  EXPECT_EQ(error.back(), '.') << error;
  EXPECT_NE(error.find("owner"), std::string::npos) << error;
  EXPECT_EQ(written(diagram), kGeneratedByDocument);
}

TEST_F(SystemDiagramTest, AssignmentLeavesTheTargetsKernelUseAsItWas) {
  SystemDiagram source;
  load(source, R"({"system_diagram_metadata": {"qrxbin": {"generated_by": {"name": "qvcc"}}}})");
  source.kernelUse.mergeFrom(report("Routed", "vmul_1", "77"));
  SystemDiagram target;
  target.kernelUse.mergeFrom(report("Synthesized", "vadd_1", "10"));
  target.kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));

  target = source;

  EXPECT_EQ(describe(target.kernelUse.snapshot()),
            "vadd_1{Routed=30/2/3/4/5 Synthesized=10/2/3/4/5}");
  EXPECT_EQ(describe(source.kernelUse.snapshot()), "vmul_1{Routed=77/2/3/4/5}");
  EXPECT_EQ(written(target), kGeneratedByDocument);
}

// ---- Reading and writing files -----------------------------------------------------------------

TEST_F(SystemDiagramTest, ReadingAnEmptyPathNamesItInTheError) {
  SystemDiagram diagram;
  EXPECT_EQ(runtimeErrorText([&] { diagram.readSystemDiagram(""); }),
            "Could not open  for reading.");
}

TEST_F(SystemDiagramTest, WritingIntoAMissingDirectoryThrowsAndCreatesNothing) {
  SystemDiagram diagram;
  std::string const path = dir.file("no-such-directory/diagram.json");
  EXPECT_EQ(runtimeErrorText([&] { diagram.serializeCurrentSystemDiagram(path); }),
            "Could not open " + path + " for writing.");
  EXPECT_FALSE(boost::filesystem::exists(dir.file("no-such-directory")));
}

TEST_F(SystemDiagramTest, WritingTruncatesALongerFile) {
  std::string const path = dir.file("long.json");
  writeFile(path, std::string(10000, 'x'));
  SystemDiagram fresh;
  fresh.serializeCurrentSystemDiagram(path);
  EXPECT_EQ(qvtest::readFile(path), kFreshDocument);
}

TEST_F(SystemDiagramTest, WritingStampsTheSchemaVersionIntoTheDiagram) {
  auto const container = std::make_shared<Container>(parse<Container>(R"(
    system_diagram_metadata { schema_version { major: "1" minor: "0" patch: "0" } })"));
  SystemDiagram diagram;
  useContainer(diagram, container);
  diagram.serializeCurrentSystemDiagram(dir.file("stamped.json"));
  EXPECT_TRUE(sameMessage(parse<Container>(R"(
    system_diagram_metadata { schema_version { major: "2" minor: "0" patch: "0" } })"),
                          *container));
}

TEST_F(SystemDiagramTest, ReadingReplacesTheWholeDiagram) {
  std::string const path = dir.file("replacement.json");
  writeFile(path, R"({"system_diagram_metadata": {"qrxbin": {"generated_by": {"name": "qvcc"}}}})");
  SystemDiagram diagram;
  load(diagram, R"({"system_diagram_metadata": {"qsa": {"vendor": "acme"},
                     "qrxbin": {"generated_by": {"name": "old", "version": "1"}}}})");
  diagram.readSystemDiagram(path);
  EXPECT_EQ(written(diagram), kGeneratedByDocument);
}

TEST_F(SystemDiagramTest, ReadingLeavesTheKernelUseAsItWas) {
  std::string const path = dir.file("fresh.json");
  writeFile(path, kFreshDocument);
  SystemDiagram diagram;
  diagram.kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  diagram.readSystemDiagram(path);
  EXPECT_EQ(describe(diagram.kernelUse.snapshot()), "vadd_1{Routed=30/2/3/4/5}");
}

TEST_F(SystemDiagramTest, FilesAreClosedAfterReadingWritingAndARefusedRead) {
  long const before = openFileCount();
  if (before < 0) GTEST_SKIP() << "no /proc/self/fd here";
  SystemDiagram diagram;
  std::string const good = dir.file("good.json");
  std::string const bad = dir.file("bad.json");
  writeFile(bad, R"({"not_a_key": 1})");
  diagram.serializeCurrentSystemDiagram(good);
  diagram.readSystemDiagram(good);
  EXPECT_THROW(diagram.readSystemDiagram(bad), std::runtime_error);
  EXPECT_EQ(openFileCount(), before);
}

// ---- Copying -----------------------------------------------------------------------------------

TEST_F(SystemDiagramTest, CopyConstructionCopiesTheDiagramAndStampsTheSource) {
  auto const container = std::make_shared<Container>(
      parse<Container>(R"(system_diagram_metadata { qrxbin { generated_by { name: "qvcc" } } })"));
  SystemDiagram source;
  useContainer(source, container);
  source.kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));

  SystemDiagram const copy(source);

  EXPECT_EQ(written(copy), kGeneratedByDocument);
  EXPECT_TRUE(sameMessage(parse<Container>(R"(
    system_diagram_metadata {
      schema_version { major: "2" minor: "0" patch: "0" }
      qrxbin { generated_by { name: "qvcc" } }
    })"),
                          *container));
  // The source's kernel use stays with the source.
  EXPECT_EQ(describe(copy.kernelUse.snapshot()), "");
}

TEST_F(SystemDiagramTest, CopyIsDeepAndLaterChangesStayOnTheirSide) {
  SystemDiagram source;
  load(source, R"({"system_diagram_metadata": {"qrxbin": {"generated_by": {"name": "qvcc"}}}})");
  SystemDiagram copy(source);
  load(source, "{}");
  EXPECT_EQ(written(copy), kGeneratedByDocument);
  EXPECT_EQ(written(source), kFreshDocument);
}

TEST_F(SystemDiagramTest, AssignmentReplacesTheTargetsDiagramAndStampsTheSource) {
  auto const container = std::make_shared<Container>(
      parse<Container>(R"(system_diagram_metadata { qrxbin { generated_by { name: "qvcc" } } })"));
  SystemDiagram source;
  useContainer(source, container);
  SystemDiagram target;
  load(target, R"({"system_diagram_metadata": {"qsa": {"vendor": "acme"}}})");
  target = source;
  EXPECT_EQ(written(target), kGeneratedByDocument);
  EXPECT_TRUE(sameMessage(parse<Container>(R"(
    system_diagram_metadata {
      schema_version { major: "2" minor: "0" patch: "0" }
      qrxbin { generated_by { name: "qvcc" } }
    })"),
                          *container));
}

TEST_F(SystemDiagramTest, AssignmentFromAFreshSessionEmptiesTheTarget) {
  SystemDiagram source;
  SystemDiagram target;
  load(target, R"({"system_diagram_metadata": {"qsa": {"vendor": "acme"}}})");
  target = source;
  EXPECT_EQ(written(target), kFreshDocument);
}

TEST_F(SystemDiagramTest, AssignmentPassesTheSourcesTextToTheTargetsReaderAndNothingElse) {
  auto const sourceFake = std::make_shared<FakeDiagram>();
  auto const targetFake = std::make_shared<FakeDiagram>();
  targetFake->calls = sourceFake->calls;
  sourceFake->name = "source.";
  targetFake->name = "target.";
  sourceFake->textToWrite = "the source's text\n";
  SystemDiagram source;
  source.systemDiagram.setSystemDiagramInterface(sourceFake);
  SystemDiagram target;
  target.systemDiagram.setSystemDiagramInterface(targetFake);

  target = source;

  EXPECT_EQ(*sourceFake->calls,
            (std::vector<std::string>{"source.serializeToJson", "target.serializeFromJson"}));
  EXPECT_EQ(targetFake->textRead, "the source's text\n");
}

TEST_F(SystemDiagramTest, AssignmentReturnsTheTarget) {
  SystemDiagram source;
  SystemDiagram target;
  EXPECT_EQ(&(target = source), &target);
}

TEST_F(SystemDiagramTest, SelfAssignmentKeepsTheDiagramAndTheKernelUse) {
  auto const diagram = std::make_shared<SystemDiagram>();
  load(*diagram, R"({"system_diagram_metadata": {"qrxbin": {"generated_by": {"name": "qvcc"}}}})");
  diagram->kernelUse.mergeFrom(report("Routed", "vadd_1", "30"));
  // Writer and reader take the one lock one after the other; holding both would hang here.
  EXPECT_TRUE(returnsInTime([diagram] {
    SystemDiagram const& alias = *diagram;
    *diagram = alias;
  }));
  EXPECT_EQ(written(*diagram), kGeneratedByDocument);
  EXPECT_EQ(describe(diagram->kernelUse.snapshot()), "vadd_1{Routed=30/2/3/4/5}");
}

// ---- Forwarding --------------------------------------------------------------------------------

TEST_F(SystemDiagramTest, UpsertOperationsReachTheSessionsDiagramWithTheirMessages) {
  auto const fake = std::make_shared<FakeDiagram>();
  SystemDiagram diagram;
  diagram.systemDiagram.setSystemDiagramInterface(fake);
  auto const kernel = parse<pb::kernel>(R"(name: "vadd" description: "d")");
  auto const qrxBin = parse<pb::qrxBin>(R"(user_regions { name: "ulp" })");
  auto const generatedBy = parse<pb::qrxBinGeneratedBy>(R"(name: "qvcc" flag: true)");
  auto const clock = parse<pb::Clock>(R"(name: "ext_clk" id: -1 status: CLOCK_FIXED)");
  auto const computeUnit = parse<pb::computeUnit>(R"(name: "vadd_1" reset_pins: "ap_rst_n")");
  auto const connectivity = parse<pb::Connectivity>(R"(id: "3" source { type: "memory" })");
  auto const platform = parse<pb::Platform>(R"(name: "u2" properties: "p")");

  diagram.upsertKernel(kernel);
  diagram.upsertQrxBin(qrxBin);
  diagram.upsertQrxBinGeneratedBy(generatedBy);
  diagram.upsertQsaClock(clock);
  diagram.updateComputeUnit(computeUnit);
  diagram.upsertConnectivity(connectivity);
  diagram.upsertPlatform(platform);

  EXPECT_EQ(*fake->calls,
            (std::vector<std::string>{"upsertKernel", "upsertQrxBin", "upsertQrxBinGeneratedBy",
                                      "upsertQsaClock", "updateComputeUnit", "upsertConnectivity",
                                      "upsertPlatform"}));
  EXPECT_TRUE(sameMessage(kernel, fake->kernel));
  EXPECT_TRUE(sameMessage(qrxBin, fake->qrxBin));
  EXPECT_TRUE(sameMessage(generatedBy, fake->generatedBy));
  EXPECT_TRUE(sameMessage(clock, fake->clock));
  EXPECT_TRUE(sameMessage(computeUnit, fake->computeUnit));
  EXPECT_TRUE(sameMessage(connectivity, fake->connectivity));
  EXPECT_TRUE(sameMessage(platform, fake->platform));
}

TEST_F(SystemDiagramTest, GetQrxBinGeneratedByFillsTheCallersMessageFromTheSessionsDiagram) {
  auto const fake = std::make_shared<FakeDiagram>();
  fake->generatedByToGive = parse<pb::qrxBinGeneratedBy>(R"(name: "qvcc" version: "2026.2")");
  SystemDiagram diagram;
  diagram.systemDiagram.setSystemDiagramInterface(fake);
  pb::qrxBinGeneratedBy answer;
  diagram.getQrxBinGeneratedBy(answer);
  EXPECT_TRUE(
      sameMessage(parse<pb::qrxBinGeneratedBy>(R"(name: "qvcc" version: "2026.2")"), answer));
  EXPECT_EQ(*fake->calls, std::vector<std::string>{"getQrxBinGeneratedBy"});
}

TEST_F(SystemDiagramTest, ErrorOfTheSessionsDiagramPassesThroughAnUpsert) {
  // A fresh session has no user region to put a kernel in.
  SystemDiagram diagram;
  EXPECT_EQ(runtimeErrorText([&] { diagram.upsertKernel(parse<pb::kernel>(R"(name: "vadd")")); }),
            "Cannot upsert kernel 'vadd': the system diagram has no user region.");
  EXPECT_EQ(written(diagram), kFreshDocument);
}

}  // namespace
