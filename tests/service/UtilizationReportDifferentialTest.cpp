// A report file handed to UtilizationDuringBrenloRun publishes its compute units together, once
// per file. These tests hold that the session's diagram and the answer are exactly those of one
// UpsertKernelUse request per compute unit report, in file order, stopping at the first refused
// one: random stored diagrams (compute units repeated within and across user regions, some
// without a name, some already holding resources) and random report files (keys in any order,
// names missing or empty, unknown state words), compared byte for byte as written.
#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <fstream>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "platform/dispatch/ConnectionMgr.h"
#include "proto/system_diagram_server.pb.h"
#include "service/SystemDiagramHandler.h"
#include "tests/support/Golden.h"
#include "tests/support/Requests.h"
#include "tests/support/TempDir.h"

namespace {

namespace wire = dispatch::system_diagram_server;
using qvtest::requestFor;

std::vector<std::string> const kUnitNames = {"vadd_1", "vadd_2", "k:cu_3", "mmul_1"};
std::vector<std::string> const kStates = {"Synthesized", "Fully Placed", "Routed", "Placed"};
std::vector<std::string> const kKernelNames = {"vadd", "mmul"};

class Generator {
 public:
  explicit Generator(unsigned seed) : random(seed) {}

  int below(int bound) { return std::uniform_int_distribution<int>(0, bound - 1)(random); }
  bool chance(int percent) { return below(100) < percent; }
  // One of `words`, or now and then the empty word, which the requests refuse.
  std::string pick(std::vector<std::string> const& words) {
    if (chance(2)) return "";
    return words[static_cast<std::size_t>(below(static_cast<int>(words.size())))];
  }

  // A stored diagram with one to three user regions of up to six compute units each.
  std::string diagram() {
    std::ostringstream out;
    out << R"({"system_diagram_metadata": {"qrxbin": {"user_regions": [)";
    int const regions = 1 + below(3);
    for (int r = 0; r < regions; ++r) {
      out << (r ? ", " : "") << R"({"name": "ur)" << r << R"(", "compute_units": [)";
      int const units = below(7);
      for (int u = 0; u < units; ++u) {
        out << (u ? ", " : "") << R"({"id": ")" << u << R"(", "name": ")" << (chance(10) ? "" : pick(kUnitNames))
            << R"(")";
        if (chance(30)) {
          out << R"(, "actual_resources": [{"lut": "7", "design_state": "DESIGN_STATE_ROUTED"}])";
        }
        out << "}";
      }
      out << "]}";
    }
    out << "]}}}\n";
    return out.str();
  }

  // A report file whose members come in a shuffled order, some missing, some given twice.
  std::string report() {
    std::vector<std::string> top;
    if (!chance(3)) top.push_back(R"("design_state": ")" + pick(kStates) + R"(")");
    if (chance(10)) top.push_back(R"("design_state": ")" + pick(kStates) + R"(")");
    std::string kernels = R"("kernels": [)";
    int const kernelCount = below(4);
    for (int k = 0; k < kernelCount; ++k) {
      std::vector<std::string> members;
      if (!chance(3)) members.push_back(R"("name": ")" + pick(kKernelNames) + R"(")");
      std::string units = R"("compute_units": [)";
      int const unitCount = below(5);
      for (int u = 0; u < unitCount; ++u) {
        std::vector<std::string> unitMembers;
        if (!chance(3)) unitMembers.push_back(R"("cu_name": ")" + pick(kUnitNames) + R"(")");
        int const reports = chance(15) ? 2 : (chance(10) ? 0 : 1);
        for (int i = 0; i < reports; ++i) {
          unitMembers.push_back(R"("actual_resources": {"LUT": ")" + std::to_string(below(1000)) +
                                R"(", "REG": ")" + std::to_string(below(1000)) +
                                R"(", "BRAM": "1", "URAM": "0", "DSP": ")" +
                                std::to_string(below(9)) + R"("})");
        }
        if (chance(10)) shuffle(unitMembers);
        units += (u ? ", {" : "{") + join(unitMembers) + "}";
      }
      members.push_back(units + "]");
      if (chance(10)) shuffle(members);
      kernels += (k ? ", {" : "{") + join(members) + "}";
    }
    top.push_back(kernels + "]");
    shuffle(top);
    return "{" + join(top) + "}\n";
  }

 private:
  void shuffle(std::vector<std::string>& items) { std::shuffle(items.begin(), items.end(), random); }
  static std::string join(std::vector<std::string> const& items) {
    std::string text;
    for (auto const& item : items) text += (text.empty() ? "" : ", ") + item;
    return text;
  }

  std::mt19937 random;
};

// The compute unit reports of one file as UpsertKernelUse messages, in file order: the walk keeps
// the last design state, kernel name and compute unit name it passed.
std::vector<wire::UpsertKernelUse> reportsOf(std::string const& path) {
  boost::property_tree::ptree report;
  boost::property_tree::read_json(path, report);
  std::vector<wire::UpsertKernelUse> messages;
  std::string state, kernelName, unitName;
  for (auto const& top : report) {
    if (top.first == "design_state") state = top.second.data();
    if (top.first != "kernels") continue;
    for (auto const& kernel : top.second) {
      for (auto const& member : kernel.second) {
        if (member.first == "name") kernelName = member.second.data();
        if (member.first != "compute_units") continue;
        for (auto const& unit : member.second) {
          for (auto const& field : unit.second) {
            if (field.first == "cu_name") unitName = field.second.data();
            if (field.first != "actual_resources") continue;
            wire::UpsertKernelUse message;
            message.set_usekind(4);
            message.set_designstate(state);
            auto* const use = message.add_kerneluses();
            use->set_kernelname(kernelName);
            auto* const unitUse = use->add_computeunituses();
            unitUse->set_computeunitname(unitName);
            auto* const counts = unitUse->mutable_actualresources();
            counts->set_lut(field.second.get<std::string>("LUT", ""));
            counts->set_reg(field.second.get<std::string>("REG", ""));
            counts->set_bram(field.second.get<std::string>("BRAM", ""));
            counts->set_uram(field.second.get<std::string>("URAM", ""));
            counts->set_dsp(field.second.get<std::string>("DSP", ""));
            messages.push_back(message);
          }
        }
      }
    }
  }
  return messages;
}

class UtilizationReportDifferentialTest : public ::testing::Test {
 protected:
  UtilizationReportDifferentialTest() : handler(connections) {}

  dispatch::Response send(google::protobuf::Message const& message, std::string const& uuid) {
    dispatch::Response response;
    connections.dispatch(requestFor(uuid, message), response);
    return response;
  }

  void createSession(std::string const& uuid, std::string const& diagramPath) {
    dispatch::Session session;
    session.set_uuid(uuid);
    connections.createSession(session);
    wire::ReadSystemDiagram read;
    read.set_path(diagramPath);
    ASSERT_STATUS(send(read, uuid), 200);
  }

  std::string written(std::string const& uuid) {
    wire::WriteSystemDiagram write;
    write.set_path(dir.file(uuid + "-written.json"));
    EXPECT_STATUS(send(write, uuid), 200);
    return qvtest::readFile(write.path());
  }

  std::string writeFile(std::string const& name, std::string const& text) {
    std::string const path = dir.file(name);
    std::ofstream(path, std::ios::binary) << text;
    return path;
  }

  dispatch::server::ConnectionMgr connections;
  IPA::SystemDiagramHandler handler;
  qvtest::TempDir dir;
};

TEST_F(UtilizationReportDifferentialTest, FilesLeaveTheDiagramOfOneRequestPerComputeUnitReport) {
  int refused = 0;
  int published = 0;
  for (unsigned seed = 1; seed <= 300; ++seed) {
    SCOPED_TRACE("seed " + std::to_string(seed));
    Generator generate(seed);
    std::string const tag = std::to_string(seed);
    std::string const diagramPath = writeFile("diagram-" + tag + ".json", generate.diagram());
    createSession("files-" + tag, diagramPath);
    createSession("requests-" + tag, diagramPath);

    // Two runs of files into the same sessions, so that later reports meet earlier ones.
    for (int run = 0; run < 2; ++run) {
      wire::UtilizationDuringBrenloRun files;
      int const count = 1 + generate.below(3);
      for (int f = 0; f < count; ++f) {
        files.add_utilizationfiles(writeFile(
            "report-" + tag + "-" + std::to_string(run) + "-" + std::to_string(f) + ".json",
            generate.report()));
      }
      int const filesStatus = send(files, "files-" + tag).status().code();

      int requestsStatus = 200;
      for (auto const& path : files.utilizationfiles()) {
        for (auto const& message : reportsOf(path)) {
          requestsStatus = send(message, "requests-" + tag).status().code();
          if (requestsStatus != 200) break;
          ++published;
        }
        if (requestsStatus != 200) break;
      }
      EXPECT_EQ(filesStatus, requestsStatus);
      if (filesStatus != 200) ++refused;
      ASSERT_EQ(written("files-" + tag), written("requests-" + tag));
    }
  }
  // The inputs reach both ends of the walk: refused entries and many accepted ones.
  EXPECT_GT(refused, 30);
  EXPECT_GT(published, 500) << refused << " refused";
}

}  // namespace
