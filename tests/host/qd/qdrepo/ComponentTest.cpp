#include "host/qd/qdrepo/Component.h"

#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <sstream>
#include <stdexcept>
#include <string>

#include "service/Log.h"

namespace qd {
namespace {

class ComponentTest : public ::testing::Test {
 protected:
  // The component element of `xml`, a qd:component with its namespace declared.
  static boost::property_tree::ptree element(std::string const& body,
                                             std::string const& attributes) {
    std::istringstream in("<qd:component xmlns:qd=\"urn:quarrix:qd\" " + attributes + ">" + body +
                          "</qd:component>");
    boost::property_tree::ptree tree;
    boost::property_tree::read_xml(in, tree);
    return tree.get_child("qd:component");
  }

  static Component make(std::string const& body, std::string const& attributes =
                                                     "qd:name=\"comp\" qd:type=\"accelerator\"") {
    return Component(element(body, attributes));
  }

  // What building the component wrote to standard error with INTERNAL lines shown, and the
  // text of the exception it threw ("" when it threw none).
  static std::pair<std::string, std::string> failureOf(std::string const& body) {
    std::int32_t const saved = Log::reportingLevel;
    Log::reportingLevel = logINTERNAL;
    testing::internal::CaptureStderr();
    std::string thrown;
    try {
      make(body);
    } catch (std::runtime_error const& error) {
      thrown = error.what();
    }
    std::string const logged = testing::internal::GetCapturedStderr();
    Log::reportingLevel = saved;
    return {logged, thrown};
  }

  static std::string const kPlatformInfo;
};

std::string const ComponentTest::kPlatformInfo =
    "<qd:platformInfo><qd:systemClocks qd:defaultClock=\"1\">"
    "<qd:clock qd:name=\"clk_a\" qd:id=\"0\" qd:frequency=\"100.000000\" qd:status=\"fixed\"/>"
    "<qd:clock qd:name=\"clk_b\" qd:id=\"1\" qd:frequency=\"100.5\" qd:status=\"scalable\"/>"
    "<qd:clock qd:name=\"clk_a\" qd:id=\"7\" qd:frequency=\"1.000000\" qd:status=\"fixed\"/>"
    "<qd:clock qd:name=\"clk_c\" qd:frequency=\"250.000000\" qd:status=\"reserved\"/>"
    "</qd:systemClocks></qd:platformInfo>";

TEST_F(ComponentTest, ComponentWithoutInterfacesHasEmptyContainers) {
  Component const component = make("");
  EXPECT_EQ(component.Name(), "comp");
  EXPECT_EQ(component.Type(), "accelerator");
  EXPECT_TRUE(component.clocks.empty());
  EXPECT_TRUE(component.busInterfaces.empty());
  EXPECT_TRUE(component.ports.empty());
  EXPECT_EQ(component.busInterfaceList.size(), 0u);
  EXPECT_TRUE(component.systemClocks.empty());
  EXPECT_EQ(component.defaultClock, 0);
}

TEST_F(ComponentTest, TypeDefaultsToEmpty) { EXPECT_EQ(make("", "qd:name=\"bare\"").Type(), ""); }

TEST_F(ComponentTest, MissingNameThrowsOutOfTheConstructor) {
  EXPECT_THROW(make("", "qd:type=\"accelerator\""), boost::property_tree::ptree_bad_path);
}

TEST_F(ComponentTest, ModeDecidesMasterAnyWordButSlaveIsAMaster) {
  Component const component = make(
      "<qd:busInterface qd:name=\"none\" qd:busTypeRef=\"bram\"/>"
      "<qd:busInterface qd:name=\"monitor\" qd:busTypeRef=\"bram\" qd:mode=\"monitor\"/>"
      "<qd:busInterface qd:name=\"master\" qd:busTypeRef=\"bram\" qd:mode=\"master\"/>"
      "<qd:busInterface qd:name=\"slave\" qd:busTypeRef=\"bram\" qd:mode=\"slave\"/>");
  EXPECT_FALSE(component.busInterfaces.at("none")->isMaster);
  EXPECT_TRUE(component.busInterfaces.at("monitor")->isMaster);
  EXPECT_TRUE(component.busInterfaces.at("master")->isMaster);
  EXPECT_FALSE(component.busInterfaces.at("slave")->isMaster);
  EXPECT_EQ(BusIntf::masterStr, "master");
  EXPECT_EQ(BusIntf::slaveStr, "slave");
}

TEST_F(ComponentTest, BusInterfaceReadsItsOptionalAttributes) {
  Component const component = make(
      "<qd:busInterface qd:name=\"s\" qd:busTypeRef=\"fifo\" qd:componentRef=\"c\" "
      "qd:instanceRef=\"i\" qd:busInterfaceRef=\"b\" qd:direction=\"out\" qd:port=\"p\"/>"
      "<qd:busInterface qd:name=\"t\" qd:busTypeRef=\"fifo\"/>");
  BusIntf const& full = *component.busInterfaces.at("s");
  EXPECT_EQ(full.busTypeRef, "fifo");
  EXPECT_EQ(full.componentRef, "c");
  EXPECT_EQ(full.instanceRef, "i");
  EXPECT_EQ(full.busInterfaceRef, "b");
  EXPECT_EQ(full.direction, "out");
  EXPECT_EQ(full.port, "p");
  BusIntf const& bare = *component.busInterfaces.at("t");
  EXPECT_EQ(
      bare.componentRef + bare.instanceRef + bare.busInterfaceRef + bare.direction + bare.port, "");
}

TEST_F(ComponentTest, AxiDataWidthIsZeroUnlessWhollyDecimal) {
  Component const component = make(
      "<qd:busInterface qd:name=\"clk\" qd:busTypeRef=\"clock\"/>"
      "<qd:busInterface qd:name=\"a\" qd:busTypeRef=\"axis\" qd:clockRef=\"clk\" "
      "qd:dataWidth=\"32b\"/>"
      "<qd:busInterface qd:name=\"b\" qd:busTypeRef=\"axis\" qd:clockRef=\"clk\" "
      "qd:dataWidth=\"64\" qd:memport=\"M_AXI_GP\" qd:slr=\"SLR1\" qd:sptag=\"HBM\"/>"
      "<qd:busInterface qd:name=\"c\" qd:busTypeRef=\"aximm\" qd:clockRef=\"clk\"/>");
  EXPECT_EQ(component.axiInterfaces.at("a")->dataWidth, 0);
  AxiBusIntf const& b = *component.axiInterfaces.at("b");
  EXPECT_EQ(b.dataWidth, 64);
  EXPECT_EQ(b.memport, "M_AXI_GP");
  EXPECT_EQ(b.slr, "SLR1");
  EXPECT_EQ(component.axiInterfaces.at("c")->dataWidth, 0);
  EXPECT_EQ(component.axiList.size(), 3u);
}

TEST_F(ComponentTest, AxiInterfaceFindsAClockThatStandsLaterInTheFile) {
  Component const component = make(
      "<qd:busInterface qd:name=\"m\" qd:busTypeRef=\"aximm\" qd:clockRef=\"ap_clk\"/>"
      "<qd:busInterface qd:name=\"ap_clk\" qd:busTypeRef=\"clock\"/>");
  EXPECT_EQ(component.axiInterfaces.at("m")->clock, component.clocks.at("ap_clk"));
  // The association hooks keep nothing.
  EXPECT_TRUE(component.clocks.at("ap_clk")->axiInterfaces.empty());
  EXPECT_TRUE(component.clocks.at("ap_clk")->resets.empty());
}

TEST_F(ComponentTest, ResetNamingNoClockIsKept) {
  Component const component =
      make("<qd:busInterface qd:name=\"rst\" qd:busTypeRef=\"reset\" qd:clockRef=\"gone\"/>");
  ASSERT_EQ(component.resetList.size(), 1u);
  EXPECT_EQ(component.resets.at("rst")->clock, nullptr);
  EXPECT_EQ(component.busInterfaceList.at(0), component.resets.at("rst"));
}

TEST_F(ComponentTest, ResetDoesNotKeepEvenAClockThatExists) {
  Component const component = make(
      "<qd:busInterface qd:name=\"clk\" qd:busTypeRef=\"clock\"/>"
      "<qd:busInterface qd:name=\"rst\" qd:busTypeRef=\"reset\" qd:clockRef=\"clk\"/>");
  EXPECT_EQ(component.resets.at("rst")->clock, nullptr);
}

TEST_F(ComponentTest, ResetWithoutClockRefFailsTheComponentAfterTheWholeWalk) {
  auto const [logged, thrown] = failureOf(
      "<qd:busInterface qd:name=\"rst\" qd:busTypeRef=\"reset\"/>"
      "<qd:busInterface qd:name=\"m\" qd:busTypeRef=\"aximm\"/>");
  EXPECT_EQ(logged,
            "INTERNAL: [Morvane 83-9999] Failed to parse data base reset intf entry comp/rst: "
            "No such node (<xmlattr>.qd:clockRef)\n"
            "INTERNAL: [Morvane 83-9999] Failed to parse data base axi intf entry comp/m: "
            "No such node (<xmlattr>.qd:clockRef)\n");
  EXPECT_EQ(thrown, "Failed to parse data file for comp");
}

TEST_F(ComponentTest, FailedEntriesAreHiddenAtTheDefaultLogLevel) {
  testing::internal::CaptureStderr();
  EXPECT_THROW(make("<qd:busInterface qd:name=\"rst\" qd:busTypeRef=\"reset\"/>"),
               std::runtime_error);
  EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

TEST_F(ComponentTest, BadPortThrowsOutOfTheConstructor) {
  EXPECT_THROW(make("<qd:port qd:name=\"p\"/>"), boost::property_tree::ptree_bad_path);
}

TEST_F(ComponentTest, PortsInFileOrderFirstOfANameInTheMap) {
  Component const component = make(
      "<qd:port qd:name=\"p\" qd:direction=\"in\"/><qd:other/>"
      "<qd:port qd:name=\"q\" qd:direction=\"out\"/>"
      "<qd:port qd:name=\"p\" qd:direction=\"out\"/>");
  ASSERT_EQ(component.portList.size(), 3u);
  EXPECT_EQ(component.portList[2]->direction, "out");
  EXPECT_EQ(component.ports.size(), 2u);
  EXPECT_EQ(component.ports.at("p")->direction, "in");
}

TEST_F(ComponentTest, IndexedListFollowsTheElementsAndTheLastKindWrittenWins) {
  Component const component = make(
      "<qd:busInterface qd:name=\"shared\" qd:busTypeRef=\"clock\"/>"
      "<qd:port qd:name=\"p\" qd:direction=\"in\"/>"
      "<qd:busInterface qd:name=\"irq\" qd:busTypeRef=\"interrupt\"/>"
      "<qd:busInterface qd:name=\"shared\" qd:busTypeRef=\"bram\"/>"
      "<qd:busInterface qd:name=\"m\" qd:busTypeRef=\"aximm\" qd:clockRef=\"shared\"/>");
  ASSERT_EQ(component.busInterfaceList.size(), 4u);
  // Both indices of "shared" hold the plain interface, written last; the map kept the clock,
  // inserted first.
  EXPECT_EQ(component.busInterfaceList[0], component.busInterfaceList[2]);
  EXPECT_EQ(component.busInterfaceList[0]->busTypeRef, "bram");
  EXPECT_EQ(component.busInterfaces.at("shared"), component.clocks.at("shared"));
  EXPECT_EQ(component.busInterfaceList[1], component.interrupts.at("irq"));
  EXPECT_EQ(component.busInterfaceList[3], component.axiInterfaces.at("m"));
  EXPECT_EQ(component.busInterfaces.size(), 3u);
}

TEST_F(ComponentTest, DuplicateClockNamesGoToTheListBothTimes) {
  Component const component = make(
      "<qd:busInterface qd:name=\"clk\" qd:busTypeRef=\"clock\" qd:direction=\"in\"/>"
      "<qd:busInterface qd:name=\"clk\" qd:busTypeRef=\"clock\" qd:direction=\"out\"/>");
  ASSERT_EQ(component.clockList.size(), 2u);
  EXPECT_EQ(component.clocks.at("clk")->direction, "in");
  // Each writes every index of its name; the second is written last.
  EXPECT_EQ(component.busInterfaceList[0], component.clockList[1]);
  EXPECT_EQ(component.busInterfaceList[1], component.clockList[1]);
}

TEST_F(ComponentTest, PlatformClocksCarryTheirSystemClock) {
  Component const component =
      make(kPlatformInfo +
               "<qd:busInterface qd:name=\"clk_a\" qd:busTypeRef=\"clock\"/>"
               "<qd:busInterface qd:name=\"clk_b\" qd:busTypeRef=\"clock\"/>"
               "<qd:busInterface qd:name=\"clk_c\" qd:busTypeRef=\"clock\"/>"
               "<qd:busInterface qd:name=\"clk_x\" qd:busTypeRef=\"clock\"/>",
           "qd:name=\"plat\" qd:type=\"platform\"");
  EXPECT_EQ(component.defaultClock, 1);
  ClockIntf const& a = *component.clocks.at("clk_a");
  EXPECT_EQ(a.systemClockId, 0);  // the first clk_a of the platform stays
  EXPECT_TRUE(a.isFixed);
  EXPECT_TRUE(a.isFixedRate);
  EXPECT_EQ(a.frequencyHz, 100000000);
  ClockIntf const& b = *component.clocks.at("clk_b");
  EXPECT_EQ(b.systemClockId, 1);
  EXPECT_FALSE(b.isFixed);
  EXPECT_EQ(b.frequencyHz, 1005);                              // one decimal: taken at face value
  EXPECT_EQ(component.clocks.at("clk_c")->systemClockId, -1);  // an absent id
  EXPECT_EQ(component.clocks.at("clk_c")->frequencyHz, 250000000);
  ClockIntf const& x = *component.clocks.at("clk_x");
  EXPECT_EQ(x.systemClockId, -1);
  EXPECT_EQ(x.frequencyHz, 0);
  ASSERT_EQ(component.systemClocks.size(), 3u);
  EXPECT_EQ(component.systemClocks[2], component.clocks.at("clk_c"));
}

TEST_F(ComponentTest, PlatformWithoutPlatformInfoThrows) {
  EXPECT_THROW(make("", "qd:name=\"plat\" qd:type=\"platform\""),
               boost::property_tree::ptree_bad_path);
}

TEST_F(ComponentTest, UnreadableFrequencyThrowsStol) {
  try {
    make(
        "<qd:platformInfo><qd:systemClocks qd:defaultClock=\"0\"><qd:clock qd:name=\"c\" "
        "qd:frequency=\"fast\" qd:status=\"fixed\"/></qd:systemClocks></qd:platformInfo>",
        "qd:name=\"plat\" qd:type=\"platform\"");
    FAIL() << "built";
  } catch (std::invalid_argument const& error) {
    EXPECT_EQ(std::string(error.what()), "stol");
  }
}

TEST_F(ComponentTest, NonPlatformIgnoresPlatformInfo) {
  Component const component =
      make(kPlatformInfo + "<qd:busInterface qd:name=\"clk_a\" qd:busTypeRef=\"clock\"/>");
  EXPECT_EQ(component.clocks.at("clk_a")->systemClockId, -1);
  EXPECT_EQ(component.defaultClock, 0);
}

}  // namespace
}  // namespace qd
