// The checks and the import side by side: for many generated inputs, whatever the import refuses
// has an error finding, whatever it drops has a finding that names it, and the platform keys it
// misses are the ones the check names, with the same message ids in the same order.
#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <fstream>
#include <functional>
#include <memory>
#include <regex>
#include <set>
#include <sstream>
#include <string>
#include <vector>

#include "checks/CheckReport.h"
#include "checks/PlatformCheck.h"
#include "checks/RtdCheck.h"
#include "checks/StoredDiagramCheck.h"
#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/TextConversions.h"
#include "rtd/RtdSystemDiagramVisitor.h"
#include "rtd/RtdTreeBuilder.h"
#include "tests/support/MessageCapture.h"

namespace {

using boost::property_tree::ptree;

std::string readFile(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  std::ostringstream text;
  text << in.rdbuf();
  return text.str();
}

std::vector<std::string> rtdSeeds() {
  std::string const corpus = QV_FUZZ_CORPUS_DIR "/rtd_file/";
  return {readFile(corpus + "vector_pipeline.rtd.json"),
          readFile(corpus + "vector_pipeline.post_impl.rtd.json"),
          readFile(corpus + "small_after_implementation.rtd.json")};
}

// Variations of `text` made by rewriting the first occurrence of each pattern: the values that
// decide what the import keeps, and cuts through the text.
std::vector<std::string> variations(std::string const& text) {
  std::vector<std::string> out;
  struct Rewrite {
    char const* from;
    std::vector<char const*> to;
  };
  Rewrite const rewrites[] = {
      {"\"m_count\": \"", {"\"m_count\": \"0", "\"m_count\": \"x", "\"m_count\": \"-",
                           "\"m_count\": \" 9", "\"m_count\": \"99999999999"}},
      {"\"m_count\"", {"\"m_cnt\"", "\"M_count\""}},
      {"\"m_mem_data\"", {"\"m_memdata\""}},
      {"\"m_ip_data\"", {"\"ip_data\""}},
      {"\"m_connection\"", {"\"m_connections\""}},
      {"\"schema_version\"", {"\"schema\""}},
      {"\"major\": \"1\"", {"\"major\": \"0\"", "\"major\": \"01\"", "\"major\": \"2\"",
                            "\"major\": 1", "\"majr\": \"1\""}},
      {"\"minor\": \"0\"", {"\"minor\": \"1\"", "\"minor\": 0"}},
      {"\"patch\": \"0\"", {"\"patch\": \"00\"", "\"ptch\": \"0\""}},
      {"\"mem_data_index\": \"", {"\"mem_data_index\": \"9", "\"mem_data_index\": \"x"}},
      {"\"m_ip_layout_index\": \"", {"\"m_ip_layout_index\": \"9"}},
      {"MEM_STREAMING_CONNECTION", {"MEM_DDR4"}},
      {"\"m_name\": \"", {"\"m_name\": \"x"}},
      {"\"m_type\"", {"\"m_tpye\""}},
  };
  for (Rewrite const& rewrite : rewrites) {
    std::string const from = rewrite.from;
    // Each occurrence up to the third, so that every section's count is reached.
    std::string::size_type at = 0;
    for (int n = 0; n < 3; ++n) {
      at = text.find(from, at);
      if (at == std::string::npos) break;
      for (char const* to : rewrite.to) {
        std::string changed = text;
        changed.replace(at, from.size(), to);
        out.push_back(changed);
      }
      at += from.size();
    }
  }
  // Whole counts replaced: zero, nothing, and one more than the list has.
  std::regex const count("\"m_count\": \"([0-9]+)\"");
  for (auto match = std::sregex_iterator(text.begin(), text.end(), count);
       match != std::sregex_iterator(); ++match) {
    for (std::string const& to :
         {std::string("0"), std::string(), std::to_string(std::stoul((*match)[1]) + 1)}) {
      std::string changed = text;
      changed.replace(static_cast<std::size_t>(match->position(1)),
                      static_cast<std::size_t>(match->length(1)), to);
      out.push_back(changed);
    }
  }
  // Cuts: every text that ends early is not JSON.
  for (std::size_t cut : {std::size_t{1}, text.size() / 3, text.size() / 2, text.size() - 3}) {
    out.push_back(text.substr(0, cut));
  }
  out.push_back(text + "x");
  out.push_back("[" + text + "]");
  return out;
}

struct ImportResult {
  bool refused = false;
  std::string why;
  std::set<std::string> droppedSections;  // sections whose list has entries but were left out
};

ImportResult importRtd(std::string const& text) {
  ImportResult result;
  std::istringstream in(text);
  IPA::RtdTreeBuilder builder;
  try {
    builder.deSerialize(in);
  } catch (std::exception const& error) {
    result.refused = true;
    result.why = error.what();
    return result;
  }
  std::shared_ptr<IPA::RtdTree> const tree = builder.build();
  if (!tree->schemaVersion->isSupported(*tree->schemaVersion)) {
    result.refused = true;
    result.why = "unsupported version";
    return result;
  }
  // What the file has in each list, read with the library's reader, against what was kept.
  ptree json;
  std::istringstream again(text);
  IPA::readJsonTree(again, json);
  auto const hasEntries = [&json](char const* list) {
    auto const found = json.get_child_optional(list);
    return found && !found->empty();
  };
  if (!tree->memTopology && hasEntries("mem_topology.m_mem_data")) {
    result.droppedSections.insert("mem_topology");
  }
  if (!tree->ipLayout && hasEntries("ip_layout.m_ip_data")) {
    result.droppedSections.insert("ip_layout");
  }
  if (!tree->connectivity && hasEntries("connectivity.m_connection")) {
    result.droppedSections.insert("connectivity");
  }
  return result;
}

TEST(ImportAgreementTest, EveryRtdFileTheImportRefusesHasAnErrorAndNoOtherHas) {
  int refused = 0, dropped = 0, total = 0;
  for (std::string const& seed : rtdSeeds()) {
    for (std::string const& text : variations(seed)) {
      ++total;
      ImportResult const imported = importRtd(text);
      qvcheck::CheckReport report;
      qvcheck::RtdCheck::checkText("f.rtd.json", text, report);
      bool const hasError = report.count(qvcheck::Severity::kError) > 0;
      std::ostringstream printed;
      report.writeText(printed);
      EXPECT_EQ(hasError, imported.refused)
          << "import: " << (imported.refused ? imported.why : "accepted") << "\nfindings:\n"
          << printed.str() << "\ninput (first 300 bytes):\n" << text.substr(0, 300);
      if (imported.refused) {
        ++refused;
        continue;
      }
      for (std::string const& section : imported.droppedSections) {
        ++dropped;
        bool named = false;
        for (qvcheck::Finding const& finding : report.findings()) {
          named = named || finding.keyPath == section + ".m_count";
        }
        EXPECT_TRUE(named) << section << " is dropped by the import but no finding names it:\n"
                           << printed.str();
      }
    }
  }
  // The variations reach both sides of each question.
  EXPECT_GT(refused, 20);
  EXPECT_GE(dropped, 8);
  EXPECT_GT(total - refused, 20);
}

// The import of a minimal rtd file on `platform`: the morvane message ids it sends, in order;
// "fails" when it stops.
std::vector<std::string> importMessages(std::string const& platform) {
  std::string const rtd = R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"},
    "mem_topology": {"m_count": "0"}, "ip_layout": {"m_count": "0"},
    "connectivity": {"m_count": "0"}})";
  qvtest::MessageCapture messages;
  auto const root = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
  IPA::RtdSystemDiagramVisitor visitor(builder, "no-such-platform", "gen", "1", "cl", "ts", "a",
                                       "b", false, "/nonexistent/kernels.txt", "label", "");
  std::istringstream in(rtd);
  IPA::RtdTreeBuilder reader;
  reader.deSerialize(in);
  std::vector<std::string> ids;
  try {
    visitor.visitWithPlatformText(*reader.build(), platform);
  } catch (std::exception const&) {
    ids.push_back("fails");
    return ids;
  }
  std::regex const id("@(82-[0-9]+)@");
  for (std::string const& format : messages.formats()) {
    std::smatch match;
    if (std::regex_search(format, match, id)) ids.push_back(match[1]);
  }
  return ids;
}

// The same from the check's findings: the ids its effects name, in order; "fails" for an error.
std::vector<std::string> checkMessages(std::string const& platform) {
  qvcheck::CheckReport report;
  qvcheck::PlatformCheck::checkText("p.json", platform, report);
  std::vector<std::string> ids;
  if (report.count(qvcheck::Severity::kError) > 0) {
    ids.push_back("fails");
    return ids;
  }
  std::regex const id("WARNING (82-[0-9]+)");
  for (qvcheck::Finding const& finding : report.findings()) {
    std::smatch match;
    if (std::regex_search(finding.effect, match, id)) ids.push_back(match[1]);
  }
  return ids;
}

// Every node of `tree` down to `depth` levels, as the paths to erase it by.
void collectPaths(ptree const& tree, std::string const& prefix, int depth,
                  std::vector<std::string>& paths) {
  if (depth == 0) return;
  std::set<std::string> seen;
  for (auto const& child : tree) {
    if (child.first.empty() || !seen.insert(child.first).second) continue;
    std::string const path = prefix.empty() ? child.first : prefix + "." + child.first;
    paths.push_back(path);
    collectPaths(child.second, path, depth - 1, paths);
  }
}

TEST(ImportAgreementTest, ThePlatformKeysTheImportMissesAreTheOnesTheCheckNames) {
  std::string const example =
      readFile(QV_EXAMPLES_DIR "/platforms/qv_accel_h2_gen3x16.json");
  ASSERT_EQ(importMessages(example), std::vector<std::string>{});
  ASSERT_EQ(checkMessages(example), std::vector<std::string>{});
  ptree const tree = IPA::makePropertyTree(example);
  std::vector<std::string> paths;
  collectPaths(tree, "", 3, paths);
  // The first device's core, which the generic walk does not reach through the array.
  for (char const* key : {"name", "type", "instPath", "availableResources.uramCount",
                          "availableResources.lutCount", "availableResources.registerCount",
                          "availableResources.bramCount", "availableResources.dspCount"}) {
    paths.push_back(std::string("core.") + key);
  }
  int withMessages = 0, failing = 0;
  for (std::string const& path : paths) {
    ptree changed = tree;
    if (path.compare(0, 5, "core.") == 0) {
      ptree& core = changed.get_child("hardwarePlatform.devices").begin()->second.get_child("core");
      std::string const rest = path.substr(5);
      std::string::size_type const dot = rest.rfind('.');
      ptree& parent = dot == std::string::npos ? core : core.get_child(rest.substr(0, dot));
      parent.erase(dot == std::string::npos ? rest : rest.substr(dot + 1));
    } else {
      std::string::size_type const dot = path.rfind('.');
      ptree& parent = dot == std::string::npos ? changed : changed.get_child(path.substr(0, dot));
      parent.erase(dot == std::string::npos ? path : path.substr(dot + 1));
    }
    std::ostringstream text;
    boost::property_tree::write_json(text, changed);
    std::vector<std::string> const imported = importMessages(text.str());
    EXPECT_EQ(checkMessages(text.str()), imported) << "without " << path;
    if (!imported.empty()) ++withMessages;
    if (!imported.empty() && imported.front() == "fails") ++failing;
  }
  EXPECT_GT(withMessages, 15);
  EXPECT_GE(failing, 2);
}

TEST(ImportAgreementTest, EveryStoredDiagramTheReaderRefusesHasAnErrorAndNoOtherHas) {
  std::string const corpus = QV_FUZZ_CORPUS_DIR "/stored_diagram/";
  int refused = 0, total = 0;
  for (char const* seed : {"base.json", "upsert_kernel.json", "upsert_qsa_clock.json"}) {
    std::string const text = readFile(corpus + seed);
    std::vector<std::string> inputs = {text};
    struct Rewrite {
      char const* from;
      char const* to;
    };
    Rewrite const rewrites[] = {
        {"\"name\"", "\"nmae\""},          {"\"qsa\"", "\"QSA\""},
        {"\"schema_version\"", "\"schemaVersion\""},  // the JSON name: accepted
        {"\"MEM_", "\"MEMORY_"},           {"\"CLOCK_", "\"Clock_"},
        {"\"major\": \"2\"", "\"major\": \"two\""}, {"\"id\": ", "\"id\": ["},
        {"\"major\": \"2\"", "\"major\": 2"},
    };
    for (Rewrite const& rewrite : rewrites) {
      std::string::size_type const at = text.find(rewrite.from);
      if (at == std::string::npos) continue;
      std::string changed = text;
      changed.replace(at, std::string(rewrite.from).size(), rewrite.to);
      inputs.push_back(changed);
    }
    inputs.push_back(text.substr(0, text.size() / 2));
    for (std::string const& input : inputs) {
      ++total;
      bool readerRefuses = false;
      std::string why;
      try {
        IPA::ProfileAnalyzerSystemDiagram diagram(
            std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>());
        std::istringstream in(input);
        diagram.serializeFromJson(in);
      } catch (std::exception const& error) {
        readerRefuses = true;
        why = error.what();
      }
      qvcheck::CheckReport report;
      qvcheck::StoredDiagramCheck::checkText("d.json", input, report);
      std::ostringstream printed;
      report.writeText(printed);
      EXPECT_EQ(report.count(qvcheck::Severity::kError) > 0, readerRefuses)
          << (readerRefuses ? why : "accepted") << "\n" << printed.str();
      if (readerRefuses) ++refused;
    }
  }
  EXPECT_GT(refused, 10);
  EXPECT_GT(total - refused, 3);
}

}  // namespace
