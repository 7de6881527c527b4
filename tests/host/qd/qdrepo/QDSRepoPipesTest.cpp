// Kernel pipe queries over the example's OpenCL kernels: counts, the pipe and connection records,
// the pipe lookups across kernels, and the connection tests of arguments and interfaces.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tests/support/Stderr.h"
#include "tests/support/TempDir.h"
#include "tests/support/XPathOracle.h"

namespace qd {
namespace {

class QDSRepoPipesTest : public ::testing::Test {
 protected:
  void SetUp() override {
    qvtest::stderrOf([&] { repo = std::make_unique<QDSRepo>(example, 0); });
  }

  qvtest::SilentLibxml silent;
  std::string const example = std::string(QV_EXAMPLES_DIR) + "/repository/qd_ip_db.xml";
  qvtest::XPathOracle oracle{example};
  std::unique_ptr<QDSRepo> repo;
};

TEST_F(QDSRepoPipesTest, KernelWithTwoPipesCountsTwoAndTheSecondIsTheSecondInTheFile) {
  EXPECT_EQ(repo->getNumPipesForKernel("mmult"), 2);
  EXPECT_EQ(oracle.integer("count(/qd:repository/qd:fcnMap[@qd:fcnName='mmult']/pipe)"), 2);
  auto const pipe = repo->getIthPipeForKernel(1, "mmult");
  ASSERT_TRUE(pipe);
  EXPECT_EQ(pipe->name, "p_ba");
  EXPECT_EQ(pipe->name,
            oracle.string("/qd:repository/qd:fcnMap[@qd:fcnName='mmult']/pipe[2]/@name"));
  EXPECT_EQ(pipe->linkage, LINKAGE_EXTERNAL);
}

TEST_F(QDSRepoPipesTest, PipeRecordReadsEveryAttribute) {
  auto const pipe = repo->getIthPipeForKernel(0, "mmult");
  EXPECT_EQ(pipe->name, "p_ab");
  EXPECT_EQ(pipe->depth, 16);
  EXPECT_EQ(pipe->width, 32);
  EXPECT_EQ(pipe->linkage, LINKAGE_INTERNAL);
}

TEST_F(QDSRepoPipesTest, WidthOrDepthThatIsNoNumberReadsAsFarAsItsDigitsGo) {
  auto const pipe = repo->getIthPipeForKernel(1, "mmult");
  EXPECT_EQ(pipe->width, 8);  // "8x"
  EXPECT_EQ(pipe->depth, 0);  // "deep"
}

TEST_F(QDSRepoPipesTest, PipePastTheEndIsARecordOfDefaults) {
  std::string err;
  boost::shared_ptr<oclPipe> pipe;
  err = qvtest::stderrOf([&] { pipe = repo->getIthPipeForKernel(2, "mmult"); });
  EXPECT_EQ(err, "");
  ASSERT_TRUE(pipe);
  EXPECT_EQ(pipe->name, "");
  EXPECT_EQ(pipe->depth, 0);
  EXPECT_EQ(pipe->width, 0);
  EXPECT_EQ(pipe->linkage, LINKAGE_NO_LINKAGE);
}

TEST_F(QDSRepoPipesTest, LinkageOfAnyOtherWordIsNoLinkage) {
  auto const pipe = repo->getIthPipeForKernel(1, "stream_adapter");
  EXPECT_EQ(pipe->name, "p_late");
  EXPECT_EQ(oracle.string("/qd:repository/qd:fcnMap[@qd:fcnName='stream_adapter']/pipe[2]/"
                          "@linkage"),
            "shared");
  EXPECT_EQ(pipe->linkage, LINKAGE_NO_LINKAGE);
  EXPECT_EQ(oclPipe::linkageOf("no_linkage"), LINKAGE_NO_LINKAGE);
  EXPECT_EQ(oclPipe::linkageOf("Internal"), LINKAGE_NO_LINKAGE);
}

TEST_F(QDSRepoPipesTest, ConnectionsAreCountedAndReadInFileOrder) {
  EXPECT_EQ(repo->getNumPipeConnectionsForKernel("mmult"), 4);
  EXPECT_EQ(repo->getNumPipeConnectionsForKernel("mmult"),
            oracle.integer("count(/qd:repository/qd:fcnMap[@qd:fcnName='mmult']/connection)"));
  EXPECT_EQ(repo->getNumPipeConnectionsForKernel("vadd"), 0);
  auto const connection = repo->getIthPipeConnectionForKernel(1, "mmult");
  EXPECT_EQ(connection->srcInst, "mmult");
  EXPECT_EQ(connection->srcPort, "a");
  EXPECT_EQ(connection->dstInst, "p_ab");
  EXPECT_EQ(connection->dstPort, "in");
  EXPECT_EQ(connection->srcType, COMP_KERNEL);
  EXPECT_EQ(connection->dstType, COMP_PIPE);
  EXPECT_EQ(connection->dstInst,
            oracle.string("/qd:repository/qd:fcnMap[@qd:fcnName='mmult']/connection[2]/"
                          "@dstInst"));
}

TEST_F(QDSRepoPipesTest, ConnectionTypeOtherThanKernelOrPipeLeavesZero) {
  auto const connection = repo->getIthPipeConnectionForKernel(3, "mmult");
  EXPECT_EQ(connection->srcInst, "ext");
  EXPECT_EQ(connection->srcType, COMP_GENERIC);  // "accelerator"
  EXPECT_EQ(connection->dstType, COMP_GENERIC);  // absent
  auto const past = repo->getIthPipeConnectionForKernel(4, "mmult");
  EXPECT_EQ(past->srcInst, "");
  EXPECT_EQ(past->dstPort, "");
  EXPECT_EQ(past->srcType, COMP_GENERIC);
}

TEST_F(QDSRepoPipesTest, KernelNameThatIsNoFunctionCountsZeroWithWarning10120) {
  int count = -1;
  EXPECT_EQ(qvtest::stderrOf([&] { count = repo->getNumPipesForKernel("nope"); }),
            "WARNING: [Morvane 83-10120] nope is not an OpenCL kernel\n");
  EXPECT_EQ(count, 0);
  EXPECT_EQ(qvtest::stderrOf([&] { count = repo->getNumPipeConnectionsForKernel("nope"); }),
            "WARNING: [Morvane 83-10120] nope is not an OpenCL kernel\n");
  EXPECT_EQ(count, 0);
}

TEST_F(QDSRepoPipesTest, RecordsOfANameThatIsNoFunctionWarn10121AndAreDefaults) {
  boost::shared_ptr<oclPipe> pipe;
  EXPECT_EQ(qvtest::stderrOf([&] { pipe = repo->getIthPipeForKernel(0, "nope"); }),
            "WARNING: [Morvane 83-10121] nope is not an OpenCL kernel\n");
  ASSERT_TRUE(pipe);
  EXPECT_EQ(pipe->name, "");
  boost::shared_ptr<oclPipeConnection> connection;
  EXPECT_EQ(qvtest::stderrOf([&] { connection = repo->getIthPipeConnectionForKernel(0, "nope"); }),
            "WARNING: [Morvane 83-10121] nope is not an OpenCL kernel\n");
  ASSERT_TRUE(connection);
  EXPECT_EQ(connection->srcType, COMP_GENERIC);
}

TEST_F(QDSRepoPipesTest, AFunctionThatIsNoOpenclKernelPassesTheTest) {
  // Only existence is tested: vadd is an "hls" function.
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getNumPipesForKernel("vadd"), 0); }), "");
}

TEST_F(QDSRepoPipesTest, IsKernelPipeForAPipeOfAnyKernelAndTheClockOfTheFirstKernelThatHasIt) {
  EXPECT_TRUE(repo->isKernelPipe("p_late"));
  EXPECT_TRUE(oracle.boolean("boolean(/qd:repository/qd:fcnMap/pipe[@name='p_late'])"));
  EXPECT_TRUE(repo->isKernelPipe("p_ab"));
  EXPECT_FALSE(repo->isKernelPipe("mmult_1"));
  // p_ab is on mmult (clock 1) and on stream_adapter after it (no clock).
  EXPECT_EQ(repo->getKernelPipeClockId("p_ab"), 1);
  EXPECT_EQ(repo->getKernelPipeClockId("p_ab"),
            oracle.integer("number(/qd:repository/qd:fcnMap[pipe/@name='p_ab'][1]/@qd:clockId)"));
  EXPECT_EQ(repo->getKernelPipeClockId("p_late"), -1);  // its kernel has no clock
  EXPECT_EQ(repo->getKernelPipeClockId("nope"), -1);
}

TEST_F(QDSRepoPipesTest, ArgumentIsAPipeConnectionAsTheKernelEndOfEitherSide) {
  EXPECT_TRUE(repo->isArgPipeConnection("mmult", "a"));  // source
  EXPECT_TRUE(repo->isArgPipeConnection("mmult", "b"));  // destination
  EXPECT_TRUE(
      oracle.boolean("boolean(/qd:repository/qd:fcnMap[@qd:fcnName='mmult']/"
                     "connection[@dstType='kernel' and @dstPort='b'])"));
  EXPECT_FALSE(repo->isArgPipeConnection("mmult", "dim"));   // its end is an "accelerator"
  EXPECT_FALSE(repo->isArgPipeConnection("mmult", "p_ab"));  // a pipe end
  EXPECT_FALSE(repo->isArgPipeConnection("vadd", "a"));
}

TEST_F(QDSRepoPipesTest, BusInterfaceTestLooksForAnElementSoAttributeFilesAnswerFalse) {
  // s_axi_control carries the argument "a" of mmult, as an attribute.
  EXPECT_FALSE(repo->isBusIfPipeConnection("mmult", "s_axi_control"));
  EXPECT_FALSE(
      oracle.boolean("boolean(/qd:repository/qd:fcnMap/qd:arg[qd:busInterfaceRef="
                     "'s_axi_control'][1]/@qd:name)"));
}

TEST_F(QDSRepoPipesTest, BusInterfaceTestFindsAnArgumentWrittenWithTheElement) {
  qvtest::TempDir dir;
  std::ofstream(dir.file("element.xml"))
      << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">"
         "<qd:fcnMap qd:fcnName=\"k\"><qd:arg qd:name=\"x\"><qd:busInterfaceRef>m_axi"
         "</qd:busInterfaceRef></qd:arg>"
         "<connection srcInst=\"k\" srcPort=\"x\" srcType=\"kernel\" dstInst=\"p\" dstPort=\"in\""
         " dstType=\"pipe\"/></qd:fcnMap></qd:repository>";
  std::unique_ptr<QDSRepo> element;
  qvtest::stderrOf([&] { element = std::make_unique<QDSRepo>(dir.file("element.xml"), 0); });
  EXPECT_TRUE(element->isBusIfPipeConnection("k", "m_axi"));
  EXPECT_FALSE(element->isBusIfPipeConnection("k", "s_axi"));
}

TEST(OclPipeTest, NumbersReadAsAStreamDoes) {
  EXPECT_EQ(oclPipe::numberOf("16"), 16);
  EXPECT_EQ(oclPipe::numberOf(" 4"), 4);
  EXPECT_EQ(oclPipe::numberOf("-3"), -3);
  EXPECT_EQ(oclPipe::numberOf(""), 0);
  EXPECT_EQ(oclPipe::numberOf("x1"), 0);
  EXPECT_EQ(oclPipe::numberOf("99999999999"), 0);
}

TEST(OclPipeConnectionTest, OnlyKernelAndPipeAreEnds) {
  EXPECT_EQ(oclPipeConnection::endTypeOf("kernel"), COMP_KERNEL);
  EXPECT_EQ(oclPipeConnection::endTypeOf("pipe"), COMP_PIPE);
  EXPECT_EQ(oclPipeConnection::endTypeOf("platform"), COMP_GENERIC);
  EXPECT_EQ(oclPipeConnection::endTypeOf(""), COMP_GENERIC);
  oclPipeConnection const fresh;
  EXPECT_EQ(fresh.srcType, COMP_GENERIC);
  EXPECT_EQ(fresh.dstInst, "");
}

}  // namespace
}  // namespace qd
