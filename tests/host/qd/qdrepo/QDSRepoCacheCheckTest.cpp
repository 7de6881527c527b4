// The queries that also ask the cached components: each asked of a component the cache holds and
// of a twin it skipped (the same interfaces, plus one physical port it cannot read), so that the
// check against the cache is seen to be made on the value it belongs to. Both must give the same
// answer and the same lines on standard error, and the cached side must not end the process.
#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"

namespace qd {
namespace {

// `name`'s interfaces: a clock behind a physical port, AXI master and stream, a packed group and
// an unpacked one that both name an interface of an inner component, and physical ports.
std::string accelerator(std::string const& name, bool unreadable) {
  return "<qd:component qd:name=\"" + name + "\" qd:type=\"accelerator\">"
         "<qd:busInterface qd:name=\"ap_clk\" qd:busTypeRef=\"clock\" qd:direction=\"in\""
         " qd:port=\"clk_pin\"/>"
         "<qd:busInterface qd:name=\"m_axi\" qd:busTypeRef=\"aximm\" qd:mode=\"master\""
         " qd:clockRef=\"ap_clk\" qd:memport=\"MIG\" qd:direction=\"out\"/>"
         "<qd:busInterface qd:name=\"s_in\" qd:busTypeRef=\"axis\" qd:mode=\"slave\""
         " qd:clockRef=\"ap_clk\" qd:direction=\"in\" qd:dataWidth=\"64\"/>"
         "<qd:busInterface qd:name=\"grp\" qd:busTypeRef=\"bram\" qd:busInterfaceRef=\"inner\""
         " qd:dataPack=\"true\" qd:instanceRef=\"i0\" qd:componentRef=\"core\"/>"
         "<qd:busInterface qd:name=\"grp2\" qd:busTypeRef=\"bram\" qd:busInterfaceRef=\"inner2\"/>"
         "<qd:port qd:name=\"clk_pin\" qd:direction=\"in\" qd:portTypeRef=\"clk_wire\"/>"
         "<qd:port qd:name=\"din\" qd:direction=\"in\"/>"
         "<qd:port qd:name=\"dout\" qd:direction=\"out\"/>" +
         std::string(unreadable ? "<qd:port qd:name=\"no_direction\"/>" : "") +
         "</qd:component>"
         "<qd:fcnMap qd:fcnName=\"f_" + name + "\" qd:componentRef=\"" + name + "\">"
         "<qd:arg qd:name=\"a\" qd:busInterfaceRef=\"inner\" qd:dataWidth=\"48\"/></qd:fcnMap>";
}

// A platform with two master clocks, a slave clock and three memory objects.
std::string platform(bool unreadable) {
  return std::string(
             "<qd:component qd:name=\"plat\" qd:type=\"platform\"><qd:platformInfo>"
             "<qd:systemClocks qd:defaultClock=\"0\">"
             "<qd:clock qd:name=\"clk_a\" qd:id=\"0\" qd:frequency=\"300.000000\""
             " qd:status=\"fixed\"/>"
             "</qd:systemClocks></qd:platformInfo>"
             "<qd:busInterface qd:name=\"clk_a\" qd:busTypeRef=\"clock\" qd:mode=\"master\"/>"
             "<qd:busInterface qd:name=\"clk_in\" qd:busTypeRef=\"clock\" qd:mode=\"slave\"/>"
             "<qd:busInterface qd:name=\"clk_b\" qd:busTypeRef=\"clock\" qd:mode=\"master\"/>"
             "<qd:busInterface qd:name=\"DDR0\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
             " qd:clockRef=\"clk_a\" qd:memport=\"MIG\" qd:slr=\"SLR0\" qd:instanceRef=\"ddr_0\""
             " qd:sptag=\"DDR\"/>"
             "<qd:busInterface qd:name=\"HBM\" qd:busTypeRef=\"aximm\" qd:mode=\"slave\""
             " qd:clockRef=\"clk_a\" qd:memport=\"memss\" qd:slr=\"SLR1\" qd:sptag=\"HBM\""
             " qd:cardinality=\"2\">"
             "<qd:addressSegment qd:baseName=\"HBM_S0\" qd:index=\"0\" qd:auto=\"preferred\"/>"
             "<qd:addressSegment qd:baseName=\"HBM_S1\" qd:index=\"1\" qd:auto=\"true\"/>"
             "</qd:busInterface>") +
         (unreadable ? "<qd:port qd:name=\"no_direction\"/>" : "") + "</qd:component>";
}

std::string repositoryText(bool platformUnreadable) {
  return "<qd:repository xmlns:qd=\"urn:quarrix:qd\">" + platform(platformUnreadable) +
         accelerator("cached", false) + accelerator("skipped", true) + "</qd:repository>";
}

class QDSRepoCacheCheckTest : public ::testing::Test {
 protected:
  void SetUp() override {
    std::ofstream(dir.file("cached.xml")) << repositoryText(false);
    std::ofstream(dir.file("skipped.xml")) << repositoryText(true);
    qvtest::stderrOf([&] {
      repo = std::make_unique<QDSRepo>(dir.file("cached.xml"), 0);
      platformSkipped = std::make_unique<QDSRepo>(dir.file("skipped.xml"), 0);
    });
    ASSERT_EQ(repo->components.count("cached"), 1u);
    ASSERT_EQ(repo->components.count("skipped"), 0u);
    ASSERT_TRUE(repo->platformComponent);
    ASSERT_FALSE(platformSkipped->platformComponent);
  }

  qvtest::SilentLibxml silent;
  qvtest::TempDir dir;
  std::unique_ptr<QDSRepo> repo;
  std::unique_ptr<QDSRepo> platformSkipped;
};

template <class T>
std::string text(T const& value) {
  return std::to_string(value);
}
std::string text(std::string const& value) { return "\"" + value + "\""; }
std::string text(bool value) { return value ? "true" : "false"; }

// A query of a component, its answer written out, and what it writes to standard error.
struct ComponentRow {
  char const* desc;
  std::function<std::string(QDSRepo&, std::string const&)> ask;
  std::string answer;
  std::string log;  // with <c> for the component's name
};

std::string named(std::string log, std::string const& component) {
  for (auto at = log.find("<c>"); at != std::string::npos; at = log.find("<c>")) {
    log.replace(at, 3, component);
  }
  return log;
}

#define ASK(call) [](QDSRepo& r, std::string const& c) { return text(call); }

TEST_F(QDSRepoCacheCheckTest, EveryComponentQueryAnswersAlikeWithAndWithoutACachedObject) {
  std::vector<ComponentRow> const rows = {
      {"clock port by its physical port", ASK(r.isQdCompClockPort(c, "clk_pin")), "true", ""},
      {"clock port by the interface name", ASK(r.isQdCompClockPort(c, "ap_clk")), "false", ""},
      {"number of ports", ASK(r.getQdCompNumPorts(c)), "5", ""},
      {"port name by index", ASK(r.getQdCompPortName(c, 3)), "\"grp\"", ""},
      {"port type by index", ASK(r.getQdCompPortType(c, 2)), "\"axis\"", ""},
      {"port by interface name", ASK(r.isQdCompPort(c, "m_axi")), "true", ""},
      {"port by the physical port of an interface", ASK(r.isQdCompPort(c, "clk_pin")), "true",
       ""},
      {"packed group's inner name", ASK(r.isQdCompPort(c, "inner")), "true", ""},
      {"unpacked group's inner name", ASK(r.isQdCompPort(c, "inner2")), "false", ""},
      {"no such port", ASK(r.isQdCompPort(c, "nope")), "false", ""},
      {"AXI port, memory mapped", ASK(r.isQdCompAxiPort(c, "m_axi")), "true", ""},
      {"AXI port, stream", ASK(r.isQdCompAxiPort(c, "s_in")), "true", ""},
      {"clock is no AXI port", ASK(r.isQdCompAxiPort(c, "ap_clk")), "false", ""},
      {"memory object of an interface", ASK(r.getQdCompBusInterfaceMemObject(c, "m_axi")),
       "\"MIG\"", ""},
      {"physical port of an interface", ASK(r.getQdCompBusInterfacePort(c, "ap_clk")),
       "\"clk_pin\"", ""},
      {"instance of an interface", ASK(r.getQdCompBusInterfaceInstanceRef(c, "grp")), "\"i0\"",
       ""},
      {"component of an interface", ASK(r.getQdCompBusInterfaceComponentRef(c, "grp")),
       "\"core\"", ""},
      {"inner interface of a group", ASK(r.getQdCompBusInterfaceBusInterfaceRef(c, "grp2")),
       "\"inner2\"", ""},
      {"type of an interface", ASK(r.getQdCompPortType(c, "m_axi")), "\"aximm\"", ""},
      {"type through an interface's physical port", ASK(r.getQdCompPortType(c, "clk_pin")),
       "\"clk_wire\"", ""},
      {"type of a bare physical port", ASK(r.getQdCompPortType(c, "din")), "\"wire\"", ""},
      {"type of a packed group's inner name", ASK(r.getQdCompPortType(c, "inner")), "\"\"", ""},
      {"type of no port", ASK(r.getQdCompPortType(c, "nope")), "\"\"",
       "WARNING: [Morvane 83-1002] Component type '<c>' has no port 'nope' type definition\n"},
      {"direction of an interface", ASK(r.getQdCompPortDir(c, "s_in")), "\"in\"", ""},
      {"direction of a physical port", ASK(r.getQdCompPortDir(c, "dout")), "\"out\"", ""},
      {"direction of a packed group's inner name", ASK(r.getQdCompPortDir(c, "inner")), "\"\"",
       "WARNING: [Morvane 83-1003] Component type '<c>' has no port 'inner' direction "
       "definition\n"},
      {"mode of an interface", ASK(r.getQdCompPortMode(c, "m_axi")), "\"master\"", ""},
      {"mode of an input physical port", ASK(r.getQdCompPortMode(c, "din")), "\"master\"", ""},
      {"width of an interface", ASK(r.getQdCompPortDataWidth(c, "s_in")), "64", ""},
      {"width of a packed group's inner name, from its function",
       ASK(r.getQdCompPortDataWidth(c, "inner")), "48", ""},
      {"width of an unpacked group's inner name", ASK(r.getQdCompPortDataWidth(c, "inner2")),
       "-1", ""},
  };
  for (ComponentRow const& row : rows) {
    for (std::string const component : {"cached", "skipped"}) {
      std::string answer;
      std::string const log = qvtest::stderrOf([&] { answer = row.ask(*repo, component); });
      EXPECT_EQ(answer, row.answer) << row.desc << ", " << component;
      EXPECT_EQ(log, named(row.log, component)) << row.desc << ", " << component;
    }
  }
}

// A query of the platform, asked where the cache holds it and where it skipped it.
struct PlatformRow {
  char const* desc;
  std::function<std::string(QDSRepo&)> ask;
  std::string answer;
};

#define ASK_PLATFORM(call) [](QDSRepo& r) { return text(call); }

TEST_F(QDSRepoCacheCheckTest, EveryPlatformQueryAnswersAlikeWithAndWithoutACachedPlatform) {
  std::vector<PlatformRow> const rows = {
      {"the platform is one", ASK_PLATFORM(r.isQdPlatformComp("plat")), "true"},
      {"an accelerator is no platform", ASK_PLATFORM(r.isQdPlatformComp("cached")), "false"},
      {"the platform's name", ASK_PLATFORM(r.getQdPlatformComp()), "\"plat\""},
      {"master clocks", ASK_PLATFORM(r.getNumPlatformClocks("plat")), "2"},
      {"first master clock", ASK_PLATFORM(r.getIthPlatformClock(0, "plat")), "\"clk_a\""},
      {"second master clock, past a slave", ASK_PLATFORM(r.getIthPlatformClock(1, "plat")),
       "\"clk_b\""},
      {"no third master clock", ASK_PLATFORM(r.getIthPlatformClock(2, "plat")), "\"\""},
      {"instance of a memory object", ASK_PLATFORM(r.getMemObjectInstRef("plat", "DDR0")),
       "\"ddr_0\""},
      {"SLR of a memory object", ASK_PLATFORM(r.getMemObjectSlr("plat", "HBM")), "\"SLR1\""},
      {"memport of a memory object", ASK_PLATFORM(r.getMemObjectMemPort("plat", "HBM")),
       "\"memss\""},
      {"no memory object", ASK_PLATFORM(r.getMemObjectSlr("plat", "nope")), "\"\""},
      {"no memory object named", ASK_PLATFORM(r.getMemObjectSlr("plat", "")), "\"\""},
  };
  for (PlatformRow const& row : rows) {
    for (QDSRepo* each : {repo.get(), platformSkipped.get()}) {
      char const* const which = each == repo.get() ? "cached" : "skipped";
      std::string answer;
      std::string const log = qvtest::stderrOf([&] { answer = row.ask(*each); });
      EXPECT_EQ(answer, row.answer) << row.desc << ", " << which;
      EXPECT_EQ(log, "") << row.desc << ", " << which;
    }
  }
}

TEST_F(QDSRepoCacheCheckTest, PackedInnerNameIsAPortOnEitherKindOfComponentUnpackedIsNot) {
  for (std::string const component : {"cached", "skipped"}) {
    EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_TRUE(repo->isQdCompPort(component, "inner")); }), "")
        << component;
    EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_FALSE(repo->isQdCompPort(component, "inner2")); }),
              "")
        << component;
  }
}

TEST_F(QDSRepoCacheCheckTest, CacheIsStillComparedWhereAnInterfaceOrItsPortIsNamed) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  // A cached object that differs from the document: forge one and see the check fire.
  repo->components["cached"]->busInterfaces.erase("m_axi");
  EXPECT_EXIT(repo->isQdCompPort("cached", "m_axi"), ::testing::ExitedWithCode(255),
              "^ERROR: \\[Morvane 83-9999\\] Equivalency violation found for isQdCompPort "
              "1!=0: cached/m_axi\n$");
}

TEST_F(QDSRepoCacheCheckTest, IndexOutOfRangeWarnsAndAnswersNothingOnEitherKindOfComponent) {
  for (std::string const component : {"cached", "skipped"}) {
    for (int const index : {5, 6, -1}) {
      std::string const warning = "WARNING: [Morvane 83-1001]  Index " + std::to_string(index) +
                                  " out of range for component " + component + "\n";
      std::string name = "unset";
      std::string type = "unset";
      EXPECT_EQ(qvtest::stderrOf([&] {
                  name = repo->getQdCompPortName(component, index);
                  type = repo->getQdCompPortType(component, index);
                }),
                warning + warning)
          << component << " " << index;
      EXPECT_EQ(name, "") << component << " " << index;
      EXPECT_EQ(type, "") << component << " " << index;
    }
  }
}

TEST_F(QDSRepoCacheCheckTest, IndexInRangeIsComparedAlsoWhereXPathFindsNoAttribute) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  // An adapter counts nested interfaces too; the one at index 1 has no name, while the cache
  // sees the second interface of the component itself there.
  std::ofstream(dir.file("adapter.xml"))
      << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">"
         "<qd:component qd:name=\"adp\" qd:type=\"accelerator\" qd:adapterCompRef=\"x\">"
         "<qd:busInterface qd:name=\"outer\" qd:busTypeRef=\"bram\">"
         "<qd:busInterface qd:busTypeRef=\"bram\"/></qd:busInterface>"
         "<qd:busInterface qd:name=\"second\" qd:busTypeRef=\"bram\"/>"
         "</qd:component></qd:repository>";
  std::unique_ptr<QDSRepo> adapter;
  qvtest::stderrOf([&] { adapter = std::make_unique<QDSRepo>(dir.file("adapter.xml"), 0); });
  ASSERT_EQ(adapter->components.count("adp"), 1u);
  EXPECT_EQ(adapter->getQdCompPortName("adp", 0), "outer");
  EXPECT_EXIT(adapter->getQdCompPortName("adp", 1), ::testing::ExitedWithCode(255),
              "^ERROR: \\[Morvane 83-9999\\] Equivalency violation found for getQdCompPortName "
              "!=second: adp\n$");
}

TEST_F(QDSRepoCacheCheckTest, RangeOfAPlatformAnswersAlikeWithAndWithoutACachedPlatform) {
  for (QDSRepo* each : {repo.get(), platformSkipped.get()}) {
    EXPECT_EQ(each->getMemObjectsFromSpTag("plat", "HBM[0:1]"), std::vector<std::string>{"HBM"});
    EXPECT_EQ(each->getMemObjectsFromSpTag("plat", "NONE[0:1]"), std::vector<std::string>{""});
    EXPECT_EQ(each->getSpTagAutoEnable("plat", "HBM[0:1]"), "true");
    EXPECT_EQ(each->getSpTagAutoEnable("plat", "HBM[0]"), "preferred");
    std::string answer;
    EXPECT_EQ(qvtest::stderrOf([&] { answer = each->getSpTagAutoEnable("plat", "NONE[0:1]"); }),
              "WARNING: [Morvane 83-1056] auto enable property unrecognized for spTag "
              "NONE[0:1]\n");
    EXPECT_EQ(answer, "false");
  }
}

}  // namespace
}  // namespace qd
