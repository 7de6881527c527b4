#include <gtest/gtest.h>

#include <memory>
#include <sstream>
#include <string>
#include <type_traits>

#include "rtd/RtdTree.h"
#include "rtd/RtdTreeBuilder.h"
#include "rtd/RtdTreeVisitor.h"

namespace {

// Nothing can be made of the interface itself, nor deleted through it.
static_assert(std::is_abstract<IPA::RtdTreeVisitor>::value, "visit must stay pure");
static_assert(!std::is_destructible<IPA::RtdTreeVisitor>::value,
              "the destructor must not be public");

class RtdTreeVisitorTest : public ::testing::Test {
 protected:
  // Notes what it was shown, the way the library's visitors read a tree: each section may be
  // missing.
  class NotingVisitor : public IPA::RtdTreeVisitor {
   public:
    void visit(IPA::RtdTree& tree) override {
      seen = "version " + tree.schemaVersion->getMajor() + "." + tree.schemaVersion->getMinor() +
             "." + tree.schemaVersion->getPatch();
      seen +=
          tree.memTopology == nullptr
              ? ", no memories"
              : ", memories " +
                    std::to_string(tree.memTopology->getMemDataCollection()->getMemData().size());
      seen +=
          tree.ipLayout == nullptr
              ? ", no IPs"
              : ", IPs " + std::to_string(tree.ipLayout->getIpDataCollection()->getIpData().size());
      seen += tree.connectivity == nullptr ? ", no connections" : ", connections";
    }
    std::string seen;
  };
};

TEST_F(RtdTreeVisitorTest, TheCallerHandsTheTreeToVisit) {
  std::istringstream in(R"({"schema_version": {"major": "1", "minor": "0", "patch": "2"},
      "mem_topology": {"m_count": "2", "m_mem_data": [{}, {}]},
      "ip_layout": {"m_count": "0"}, "connectivity": {"m_count": "0"}})");
  IPA::RtdTreeBuilder builder;
  builder.deSerialize(in);
  auto tree = builder.build();
  NotingVisitor visitor;
  IPA::RtdTreeVisitor& asInterface = visitor;

  asInterface.visit(*tree);

  EXPECT_EQ(visitor.seen, "version 1.0.2, memories 2, no IPs, no connections");
}

}  // namespace
