// The three section builders share one algorithm; each row runs it through one of them.
#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <string>
#include <utility>

#include "diagram/TextConversions.h"
#include "rtd/RtdConnectivityBuilder.h"
#include "rtd/RtdIpLayoutBuilder.h"
#include "rtd/RtdMemTopologyBuilder.h"
#include "rtd/RtdSectionBuilder.h"

namespace {

class RtdSectionBuilderTest : public ::testing::Test {
 protected:
  enum class Section { memTopology, ipLayout, connectivity };

  // "null", "<n> entries", or "missing <path>" for a refused tree.
  static std::string outcomeOf(Section section, std::string const& json) {
    boost::property_tree::ptree const tree = IPA::makePropertyTree(json);
    try {
      switch (section) {
        case Section::memTopology: {
          auto built = IPA::RtdMemTopologyBuilder(tree).build();
          if (built == nullptr) return "null";
          return std::to_string(built->getMemDataCollection()->getMemData().size()) + " entries";
        }
        case Section::ipLayout: {
          auto built = IPA::RtdIpLayoutBuilder(tree).build();
          if (built == nullptr) return "null";
          return std::to_string(built->getIpDataCollection()->getIpData().size()) + " entries";
        }
        case Section::connectivity: {
          auto built = IPA::RtdConnectivityBuilder(tree).build();
          if (built == nullptr) return "null";
          return std::to_string(built->getConnectionCollection()->getConnections().size()) +
                 " entries";
        }
      }
    } catch (boost::property_tree::ptree_bad_path const& e) {
      return "missing " + e.path<boost::property_tree::ptree::path_type>().dump();
    }
    return "unknown section";
  }
};

TEST_F(RtdSectionBuilderTest, EachBuilderReadsItsOwnPaths) {
  struct Row {
    char const* desc;
    Section section;
    char const* json;
    char const* outcome;
  };
  Row const rows[] = {
      {"memories: two entries", Section::memTopology,
       R"({"mem_topology": {"m_count": "2", "m_mem_data": [{}, {}]}})", "2 entries"},
      {"memories: zero count", Section::memTopology, R"({"mem_topology": {"m_count": "0"}})",
       "null"},
      {"memories: no count", Section::memTopology, R"({"mem_topology": {"m_mem_data": []}})",
       "missing mem_topology.m_count"},
      {"memories: no list", Section::memTopology, R"({"mem_topology": {"m_count": "1"}})",
       "missing mem_topology.m_mem_data"},
      {"memories: another section's list is not read", Section::memTopology,
       R"({"mem_topology": {"m_count": "1"}, "ip_layout": {"m_count": "1", "m_ip_data": [{}]}})",
       "missing mem_topology.m_mem_data"},

      {"IPs: one entry", Section::ipLayout, R"({"ip_layout": {"m_count": "1", "m_ip_data": [{}]}})",
       "1 entries"},
      {"IPs: zero count", Section::ipLayout, R"({"ip_layout": {"m_count": "0"}})", "null"},
      {"IPs: no count", Section::ipLayout, R"({"ip_layout": {}})", "missing ip_layout.m_count"},
      {"IPs: no section", Section::ipLayout, R"({"mem_topology": {"m_count": "1"}})",
       "missing ip_layout.m_count"},
      {"IPs: no list", Section::ipLayout, R"({"ip_layout": {"m_count": "3"}})",
       "missing ip_layout.m_ip_data"},

      {"connections: three entries", Section::connectivity,
       R"({"connectivity": {"m_count": "1", "m_connection": [{}, {}, {}]}})", "3 entries"},
      {"connections: a count of letters", Section::connectivity,
       R"({"connectivity": {"m_count": "many"}})", "null"},
      {"connections: no count", Section::connectivity, R"({"connectivity": "3"})",
       "missing connectivity.m_count"},
      {"connections: no list", Section::connectivity, R"({"connectivity": {"m_count": "1"}})",
       "missing connectivity.m_connection"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(outcomeOf(row.section, row.json), row.outcome);
  }
}

// A stand-in for a collection builder that shows whether and how the list was asked for.
struct RecordingCollectionBuilder {
  RecordingCollectionBuilder(boost::property_tree::ptree const& parsed, std::string listPath)
      : tree(parsed), path(std::move(listPath)) {}
  std::shared_ptr<std::string> build() const {
    ++calls;
    return std::make_shared<std::string>(path + " of a tree with " + std::to_string(tree.size()) +
                                         " keys");
  }
  static int calls;
  boost::property_tree::ptree const& tree;
  std::string path;
};
int RecordingCollectionBuilder::calls = 0;

struct WrappedList {
  explicit WrappedList(std::shared_ptr<std::string> list) : text(*list) {}
  std::string text;
};

TEST_F(RtdSectionBuilderTest, AClosedGateNeverAsksForTheList) {
  RecordingCollectionBuilder::calls = 0;
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"s": {"n": "0"}})");

  auto built = IPA::buildRtdSection<WrappedList, RecordingCollectionBuilder>(tree, "s.n", "s.l");

  EXPECT_EQ(built, nullptr);
  EXPECT_EQ(RecordingCollectionBuilder::calls, 0);
}

TEST_F(RtdSectionBuilderTest, AnOpenGateWrapsWhatTheCollectionBuilderMadeFromTheListPath) {
  RecordingCollectionBuilder::calls = 0;
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"s": {"n": "9"}, "t": "1"})");

  auto built = IPA::buildRtdSection<WrappedList, RecordingCollectionBuilder>(tree, "s.n", "s.l");

  ASSERT_NE(built, nullptr);
  EXPECT_EQ(built->text, "s.l of a tree with 2 keys");
  EXPECT_EQ(RecordingCollectionBuilder::calls, 1);
}

}  // namespace
