// Hardware function queries on a database made for them (tests/data/repository/hwfcns.xml):
// packed groups, pointers over AXI masters, every function attribute, registers, the return
// value, and arguments without a database index.
#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"
#include "tests/support/Golden.h"
#include "tests/support/Stderr.h"
#include "tests/support/XPathOracle.h"

namespace qd {
namespace {

class QDSRepoHwFcnsTest : public ::testing::Test {
 protected:
  void TearDown() override { Log::reportingLevel = logINFO; }

  qvtest::SilentLibxml silent;
  std::string const file = qvtest::dataFile("repository/hwfcns.xml");
  std::unique_ptr<QDSRepo> repo = std::make_unique<QDSRepo>(file, 0);
  qvtest::XPathOracle oracle{file};
};

// The function element as every query of the family selects it.
std::string fcn(std::string const& name) {
  return "/qd:repository/qd:fcnMap[@qd:fcnName='" + name + "'][1]";
}

constexpr char const* kLogical =
    "[not(@qd:dataPack='true') or (@qd:dataPack='true' and "
    "not(@qd:swRootName=preceding-sibling::qd:arg/@qd:swRootName))]";

// ---- Edge cases ---------------------------------------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, PackedGroupCountsOnceAndIsKnownByItsRoot) {
  EXPECT_EQ(repo->getNumQdHwFcnArgs1("pk"), 7);
  EXPECT_EQ(repo->getNumQdHwFcnArgs("pk"), 5);
  EXPECT_EQ(repo->getIthQdHwFcnArg("pk", 0), "r");
  EXPECT_EQ(repo->getIthQdHwFcnArg("pk", 1), "c");
  EXPECT_EQ(repo->getIthQdHwFcnArg1("pk", 1), "b");
}

TEST_F(QDSRepoHwFcnsTest, PackedArgumentsWithDifferentRootsCountSeparately) {
  EXPECT_EQ(repo->getIthQdHwFcnArg("pk", 4), "r2");
  EXPECT_EQ(repo->getIthQdHwFcnArg("pk", 5), "");
  EXPECT_EQ(repo->getNumQdHwFcnArgs("pk"),
            oracle.integer("count(" + fcn("pk") + "/qd:arg" + kLogical + ")"));
}

TEST_F(QDSRepoHwFcnsTest, IndexMinusOneIsEmptyWithTheNoteOfItsView) {
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArg1("pk", -1), ""); }),
            "INTERNAL: [Morvane 83-1010] Function 'pk' does not have argument index'-1'\n");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArgBusInterfaceRef("pk", -1), ""); }),
      "INTERNAL: [Morvane 83-1012] Function 'pk' does not have argument index'-1'\n");
}

TEST_F(QDSRepoHwFcnsTest, IndexEqualToTheCountIsEmptyWithTheNoteOfItsView) {
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArg1("pk", 7), ""); }),
            "INTERNAL: [Morvane 83-1010] Function 'pk' does not have argument index'7'\n");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArgBusInterfaceRef("pk", 5), ""); }),
      "INTERNAL: [Morvane 83-1012] Function 'pk' does not have argument index'5'\n");
  // The integer readers give -1 there without a note.
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArgBufferDepth("pk", 7), -1); }),
            "");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthKernelArgId("pk", 5), -1); }), "");
}

TEST_F(QDSRepoHwFcnsTest, PointerOfAPlainFunctionReadsItsMaster) {
  EXPECT_EQ(repo->getIthQdHwFcnArgPortInterfaceType1("ptr", 0), "aximm_addr");
  EXPECT_EQ(repo->getIthQdHwFcnArgDataWidth1("ptr", 0), 512);
  EXPECT_EQ(repo->getIthQdHwFcnArgDirection1("ptr", 0), "inout");
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize1("ptr", 0), 1024);
}

TEST_F(QDSRepoHwFcnsTest, PointerOfAnOpenClFunctionKeepsItsOwnWidthAndDirectionOnly) {
  EXPECT_EQ(repo->getIthQdHwFcnArgPortInterfaceType1("ocl", 0), "aximm_addr");
  EXPECT_EQ(repo->getIthQdHwFcnArgDataWidth1("ocl", 0), 64);
  EXPECT_EQ(repo->getIthQdHwFcnArgDirection1("ocl", 0), "in");
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize1("ocl", 0), 1024);
  EXPECT_EQ(repo->getQdHwFcnArgDataWidth1("ocl", "m"), 64);
  EXPECT_EQ(repo->getQdHwFcnArgPortInterfaceType("ocl", "m"), "aximm_addr");
}

TEST_F(QDSRepoHwFcnsTest, DataPackFalseIsPackedByNameButNotInTheLogicalView) {
  EXPECT_TRUE(repo->qdHwFcnArgIsPacked("pk", "d"));
  // d stands in the logical list on its own ...
  EXPECT_EQ(oracle.string(fcn("pk") + "/qd:arg" + kLogical + "[3]/@qd:name"), "d");
  // ... and is then known by its root, since presence is what the packed test reads.
  EXPECT_TRUE(repo->qdHwFcnIthArgIsPacked("pk", 2));
  EXPECT_EQ(repo->getIthQdHwFcnArg("pk", 2), "dr");
}

TEST_F(QDSRepoHwFcnsTest, ArgumentWithoutRootOrHardwareNameAnswersItsNameAndInterface) {
  EXPECT_EQ(repo->getIthQdHwFcnArgSwRootName("pk", 3), "e");
  EXPECT_EQ(repo->getIthQdHwFcnArgSwRootName1("pk", 4), "e");
  EXPECT_EQ(repo->getIthQdHwFcnArgHwName("pk", 3), "s_e");
  EXPECT_EQ(repo->getIthQdHwFcnArgHwName1("pk", 4), "s_e");
  EXPECT_EQ(repo->getQdHwFcnArgHwName("pk", "e"), "s_e");
}

TEST_F(QDSRepoHwFcnsTest, NoControlRegisterIsNoneToOneReaderAndHandshakeToAnother) {
  EXPECT_EQ(repo->getQdHwFcnCtrlRegType("none"), "ap_ctrl_none");
  EXPECT_EQ(repo->getQdHwFcnCtrlProtocol("none"), "ap_ctrl_hs");
  EXPECT_EQ(repo->getQdHwFcnControlProtocol("none"), "ap_ctrl_none");
}

TEST_F(QDSRepoHwFcnsTest, ReturnIndexIsZeroWhateverTheFileSays) {
  EXPECT_EQ(repo->getQdHwFcnReturnIndex("full"), 0);
  EXPECT_EQ(repo->getQdHwFcnReturnIndex("pk"), -1);
  EXPECT_EQ(repo->getQdHwFcnReturnIndex("zz"), -1);
}

// ---- Counts and existence -----------------------------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, FunctionsOfAComponent) {
  EXPECT_EQ(repo->getNumQdHwFcns(), 9);
  EXPECT_EQ(repo->getNumQdHwFcns("acc"), 3);
  EXPECT_EQ(repo->getNumQdHwFcns("zz"), 0);
  EXPECT_EQ(repo->getNumQdHwFcnsForQdComp("acc2"), 6);
  EXPECT_EQ(repo->getNumQdHwFcnsForQdComp("zz"), -1);
  EXPECT_EQ(repo->getIthQdHwFcn(1, "acc"), "ptr");
  EXPECT_EQ(repo->getIthQdHwFcn(3, "acc"), "");
  EXPECT_EQ(repo->getIthQdHwFcn(-1, "acc"), "");
  EXPECT_EQ(repo->getIthQdHwFcnForQdComp("acc2", 4), "ctrlfirst");
  EXPECT_EQ(repo->getIthQdHwFcnForQdComp("zz", 0), "");
  EXPECT_EQ(repo->getIthQdHwFcn(2, "acc"),
            oracle.string("/qd:repository/qd:fcnMap[@qd:componentRef='acc'][3]/@qd:fcnName"));
}

TEST_F(QDSRepoHwFcnsTest, EmptyComponentNameIsNoComponentWithANote) {
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getNumQdHwFcnsForQdComp(""), -1); }),
            "INTERNAL: [Morvane 83-1014]  NULL component type reference \n");
}

TEST_F(QDSRepoHwFcnsTest, InputAndOutputCountsLeaveInoutOut) {
  EXPECT_EQ(repo->getNumQdHwFcnInputArgs("pk"), 5);
  EXPECT_EQ(repo->getNumQdHwFcnOutputArgs("pk"), 1);
  EXPECT_EQ(repo->getNumQdHwFcnInputArgs("zz"), -1);
  EXPECT_EQ(repo->getNumQdHwFcnOutputArgs("zz"), -1);
  EXPECT_EQ(repo->getNumQdHwFcnInputArgs("pk"),
            oracle.integer("count(" + fcn("pk") + "/qd:arg[@qd:direction='in'])"));
}

TEST_F(QDSRepoHwFcnsTest, ArgumentNamesAreNameHardwareNameOrRoot) {
  EXPECT_TRUE(repo->isQdHwFcnArg("pk", "a"));
  EXPECT_TRUE(repo->isQdHwFcnArg("pk", "a_hw"));
  EXPECT_TRUE(repo->isQdHwFcnArg("pk", "r2"));
  EXPECT_FALSE(repo->isQdHwFcnArg("pk", "zz"));
  EXPECT_FALSE(repo->isQdHwFcnArg("zz", "a"));
}

TEST_F(QDSRepoHwFcnsTest, ArgumentsOnAnInterface) {
  EXPECT_EQ(repo->getNumQdHwFcnArgsForBusInterfaceRef("pk", "s_axi"), 3);
  EXPECT_EQ(repo->getNumQdHwFcnArgsForBusInterfaceRef("pk", "zz"), 0);
  EXPECT_EQ(repo->getNumQdHwFcnArgsForBusInterfaceRef("zz", "s_axi"), -1);
  EXPECT_EQ(repo->getIthQdHwFcnArgForBusInterfaceRef("pk", "s_axi", 2), "d");
  EXPECT_EQ(repo->getIthQdHwFcnArgForBusInterfaceRef("pk", "s_axi", 3), "");
  EXPECT_EQ(repo->getIthQdHwFcnArgForBusInterfaceRef("pk", "s_axi", 1),
            oracle.string(fcn("pk") + "/qd:arg[@qd:busInterfaceRef='s_axi'][2]/@qd:name"));
}

TEST_F(QDSRepoHwFcnsTest, AximmInterfacesCountPerMasterReference) {
  // m and n share a master; x has no reference at all, and the expression counts it too.
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("ptr", "aximm"), 3);
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("zz", "aximm"), -1);
}

TEST_F(QDSRepoHwFcnsTest, InterfacesOfATypeCountTheFirstUseOfEachInterface) {
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("pk", "register"), 1);
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("pk", "fifo"), 1);
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("pk", "axis"), 1);
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("pk", "register", "in"), 1);
  // d is the only inout argument, but a on the same interface came first.
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("pk", "register", "inout"), 0);
  // A control register before the arguments takes the interface it shares with them.
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("ctrlfirst", "register"), 1);
  EXPECT_EQ(repo->getNumQdHwFcnBusInterfacesOfType("zz", "register", "in"), -1);
}

// ---- Function kind and attributes ---------------------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, KindsFollowTheType) {
  EXPECT_TRUE(repo->isQdHwHlsFcn("pk"));
  EXPECT_FALSE(repo->isQdHwHlsFcn("ocl"));
  EXPECT_TRUE(repo->isQdHwLibraryFcn("na"));
  EXPECT_TRUE(repo->isQdHwHdlFcn("full"));
  EXPECT_TRUE(repo->isQdHwHlsAdapterFcn("streams"));
  EXPECT_TRUE(repo->isQdHwHlsAdapterFcn("adapt"));
  EXPECT_FALSE(repo->isQdHwHlsAdapterFcn("ocl"));
  EXPECT_TRUE(repo->isQdHwHlsOpenclFcn("adapt"));
  EXPECT_FALSE(repo->isQdHwLibraryFcn("zz"));
  EXPECT_FALSE(repo->isQdHwHdlFcn("zz"));
  EXPECT_EQ(repo->getQdHwFcnTypeString("ocl"), "hls_opencl");
  EXPECT_EQ(repo->getQdHwFcnTypeString("none"), "unspecified");
  EXPECT_EQ(repo->getQdHwFcnTypeString("zz"), "unspecified");
}

TEST_F(QDSRepoHwFcnsTest, FunctionAttributes) {
  EXPECT_EQ(repo->getQdHwFcnFlow("full"), oracle.string(fcn("full") + "/@qd:flow"));
  EXPECT_EQ(repo->getQdHwFcnFlow("full"), "rtl_flow");
  EXPECT_DOUBLE_EQ(repo->getQdHwFcnMinClockPeriod("full"), 2.5);
  EXPECT_DOUBLE_EQ(repo->getQdHwFcnMinClockPeriod("none"), -1.0);
  EXPECT_DOUBLE_EQ(repo->getQdHwFcnMinClockPeriod("zz"), -1.0);
  EXPECT_EQ(repo->getQdHwFcnClockId("full"), 2);
  EXPECT_EQ(repo->getQdHwFcnInitiationInterval("full"), 4);
  EXPECT_EQ(repo->getQdHwFcnHostCpuWordSize("full"), 64);
  EXPECT_EQ(repo->getQdHwFcnClockId("none"), -1);
  EXPECT_EQ(repo->getQdHwFcnClockId("zz"), -1);
  EXPECT_EQ(repo->getQdHwFcnInitiationInterval("full"),
            oracle.integer("number(" + fcn("full") + "/@qd:initiationInterval)"));
}

TEST_F(QDSRepoHwFcnsTest, ComponentClockPeriodIsThatOfItsFirstFunction) {
  EXPECT_DOUBLE_EQ(repo->getQdCompMinClockPeriod("acc"), 3.33);
  EXPECT_DOUBLE_EQ(repo->getQdCompMinClockPeriod("acc2"), -1.0);
  EXPECT_DOUBLE_EQ(repo->getQdCompMinClockPeriod("zz"), -1.0);
}

TEST_F(QDSRepoHwFcnsTest, SequentialAndTemplates) {
  EXPECT_TRUE(repo->isSequentialQdHwFcn("full"));  // present, though empty
  EXPECT_FALSE(repo->isSequentialQdHwFcn("pk"));
  EXPECT_TRUE(repo->isTemplateQdHwFcn("full"));
  EXPECT_EQ(repo->getQdHwFcnTemplateInstantiation("full"), "full<int, 4>");
  EXPECT_FALSE(repo->isTemplateQdHwFcn("na"));
  EXPECT_EQ(repo->getQdHwFcnTemplateInstantiation("na"), "");
  EXPECT_FALSE(repo->isTemplateQdHwFcn("none"));
  EXPECT_FALSE(repo->isTemplateQdHwFcn("zz"));
}

TEST_F(QDSRepoHwFcnsTest, FlagsReadTrueAndWarnForAnUnknownFunction) {
  EXPECT_TRUE(repo->qdHwFcnIsRTL("full"));
  EXPECT_FALSE(repo->qdHwFcnIsMFA("full"));
  EXPECT_TRUE(repo->qdHwFcnIsNoExec("full"));
  EXPECT_TRUE(repo->qdHwFcnIsTemplate("full"));
  EXPECT_FALSE(repo->qdHwFcnIsRTL("pk"));
  EXPECT_EQ(qvtest::stderrOf([&] {
              EXPECT_FALSE(repo->qdHwFcnIsRTL("zz"));
              EXPECT_FALSE(repo->qdHwFcnIsMFA("zz"));
              EXPECT_FALSE(repo->qdHwFcnIsNoExec("zz"));
              EXPECT_FALSE(repo->qdHwFcnIsTemplate("zz"));
            }),
            "WARNING: [Morvane 83-1011] zz is not a hardware function\n"
            "WARNING: [Morvane 83-1011] zz is not a hardware function\n"
            "WARNING: [Morvane 83-1011] zz is not a hardware function\n"
            "WARNING: [Morvane 83-1011] zz is not a hardware function\n");
}

TEST_F(QDSRepoHwFcnsTest, ParameterFileAndResourceId) {
  EXPECT_EQ(repo->getQdHwFcnParamFile("full"), "full.params");
  EXPECT_EQ(repo->getQdHwFcnResourceId("full"), 7);
  EXPECT_EQ(repo->getQdHwFcnParamFile("pk"), "");
  EXPECT_EQ(repo->getQdHwFcnResourceId("pk"), -1);
  EXPECT_EQ(qvtest::stderrOf([&] {
              EXPECT_EQ(repo->getQdHwFcnParamFile("zz"), "");
              EXPECT_EQ(repo->getQdHwFcnResourceId("zz"), -1);
            }),
            "WARNING: [Morvane 83-1011] zz is not a hardware function\n"
            "WARNING: [Morvane 83-1011] zz is not a hardware function\n");
}

TEST_F(QDSRepoHwFcnsTest, InterruptOfAFunctionAndOfAComponent) {
  EXPECT_EQ(repo->getQdHwFcnInterruptName("full"), "irq");
  EXPECT_TRUE(repo->qdHwFcnHasInterrupt("full"));
  EXPECT_EQ(repo->getQdHwFcnInterruptName("pk"), "");
  EXPECT_FALSE(repo->qdHwFcnHasInterrupt("pk"));
  EXPECT_FALSE(repo->qdHwFcnHasInterrupt("zz"));
  EXPECT_TRUE(repo->qdCompInterruptUsedByFcn("acc", "irq"));
  EXPECT_FALSE(repo->qdCompInterruptUsedByFcn("acc2", "irq"));
  EXPECT_EQ(repo->qdCompInterruptUsedByFcn("acc", "irq"),
            oracle.boolean("boolean(/qd:repository/qd:fcnMap[@qd:componentRef='acc']/"
                           "qd:interrupt[@qd:busInterfaceRef='irq'])"));
}

TEST_F(QDSRepoHwFcnsTest, ResourceEstimatesOfFunctionsAndComponents) {
  EXPECT_EQ(repo->getQdHwFcnResourceEstimate("full", "LUT"), 300);
  EXPECT_EQ(repo->getQdHwFcnResourceEstimate("full", "BRAM"), -1);
  EXPECT_EQ(repo->getQdHwFcnResourceEstimate("pk", "LUT"), -1);
  EXPECT_EQ(repo->getQdHwFcnResourceEstimate("zz", "LUT"), -1);
  EXPECT_EQ(repo->getQdCompResourceEstimate("acc", "FF"), 2400);
  EXPECT_EQ(repo->getQdCompResourceEstimate("acc2", "LUT"), -1);
  EXPECT_EQ(repo->getQdCompResourceEstimate("bare", "LUT"), -1);
  EXPECT_EQ(repo->getQdCompResourceEstimate("zz", "LUT"), -1);
  EXPECT_EQ(repo->getQdHwFcnResourceEstimate("full", "DSP"),
            oracle.integer("number(" + fcn("full") + "/qd:resourceEstimates/@qd:DSP)"));
}

// ---- Return value and registers -----------------------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, ReturnValue) {
  EXPECT_EQ(repo->getQdHwFcnReturnHwName("full"), "ap_return");
  EXPECT_EQ(repo->getQdHwFcnReturnBusInterfaceRef("full"), "s_ret");
  EXPECT_EQ(repo->getQdHwFcnReturnOffset("full"), "0x40");
  EXPECT_EQ(repo->getQdHwFcnReturnDataWidth("full"), 48);
  EXPECT_EQ(repo->getQdHwFcnReturnValueWidth("full"), 48);
  EXPECT_EQ(repo->getQdHwFcnReturnHwName("pk"), "");
  EXPECT_EQ(repo->getQdHwFcnReturnBusInterfaceRef("zz"), "");
  EXPECT_EQ(repo->getQdHwFcnReturnDataWidth("pk"), -1);
  EXPECT_EQ(repo->getQdHwFcnReturnValueWidth("zz"), -1);
  EXPECT_EQ(repo->getQdHwFcnReturnHwName("full"),
            oracle.string(fcn("full") + "/qd:returnValue/@qd:hwName"));
}

TEST_F(QDSRepoHwFcnsTest, InterfaceForAHardwareNameOfTheReturnOrAnArgument) {
  EXPECT_EQ(repo->getQdHwFcnBusInterfaceRefForHwName("full", "ap_return"), "s_ret");
  EXPECT_EQ(repo->getQdHwFcnBusInterfaceRefForHwName("full", "v_hw"), "s_axi");
  EXPECT_EQ(repo->getQdHwFcnBusInterfaceRefForHwName("full", "zz"), "");
  EXPECT_EQ(repo->getQdHwFcnBusInterfaceRefForHwName("pk", "c_hw"),
            oracle.string(fcn("pk") + "/qd:arg[@qd:hwName='c_hw'][1]/@qd:busInterfaceRef"));
}

TEST_F(QDSRepoHwFcnsTest, ControlRegister) {
  EXPECT_EQ(repo->getQdHwFcnCtrlReg("full"), "ctrl");
  EXPECT_EQ(repo->getQdHwFcnCtrlRegBusInterfaceRef("full"), "s_axi");
  EXPECT_EQ(repo->getQdHwFcnCtrlRegOffset("full"), "0x0");
  EXPECT_EQ(repo->getQdHwFcnCtrlRegBufferDepth("full"), 4);
  EXPECT_EQ(repo->getQdHwFcnCtrlRegBufferDepth("pk"), -1);
  EXPECT_EQ(repo->getQdHwFcnCtrlRegBufferDepth("none"), -1);
  EXPECT_EQ(repo->getQdHwFcnCtrlRegBufferDepth("zz"), -1);
  EXPECT_EQ(repo->getQdHwFcnCtrlRegOffset("full"),
            oracle.string(fcn("full") + "/qd:ctrlReg/@qd:offset"));
}

TEST_F(QDSRepoHwFcnsTest, MissingControlRegisterSaysWhichAttributeWasAsked) {
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnCtrlReg("none"), ""); }),
            "INTERNAL: [Morvane 83-1005] Function 'none' does not have attribute 'qd:name'\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnCtrlRegOffset("zz"), ""); }),
            "INTERNAL: [Morvane 83-1004] Function 'zz' is not a hardware function\n");
}

TEST_F(QDSRepoHwFcnsTest, LengthRegister) {
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(repo->getQdHwFcnArgLenRegBusInterfaceRef("full"), "s_axi");
  EXPECT_EQ(repo->getQdHwFcnArgLenRegOffset("full"), "0x30");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgLenRegOffset("pk"), ""); }),
            "INTERNAL: [Morvane 83-1007] Function 'pk' does not have attribute 'qd:offset'\n");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgLenRegBusInterfaceRef("zz"), ""); }),
      "INTERNAL: [Morvane 83-1006] Function 'zz' is not a hardware function\n");
}

TEST_F(QDSRepoHwFcnsTest, ControlProtocolsDifferOnlyInTheirDefaults) {
  for (char const* name : {"full", "pk"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(repo->getQdHwFcnCtrlRegType(name), "ap_ctrl_hs");
    EXPECT_EQ(repo->getQdHwFcnCtrlProtocol(name), "ap_ctrl_hs");
    EXPECT_EQ(repo->getQdHwFcnControlProtocol(name), "ap_ctrl_hs");
  }
  // An empty type.
  EXPECT_EQ(repo->getQdHwFcnCtrlRegType("na"), "ap_ctrl_none");
  EXPECT_EQ(repo->getQdHwFcnCtrlProtocol("na"), "ap_ctrl_hs");
  EXPECT_EQ(repo->getQdHwFcnControlProtocol("na"), "ap_ctrl_none");
  // No function.
  EXPECT_EQ(repo->getQdHwFcnCtrlRegType("zz"), "ap_ctrl_none");
  EXPECT_EQ(repo->getQdHwFcnCtrlProtocol("zz"), "ap_ctrl_hs");
  EXPECT_EQ(repo->getQdHwFcnControlProtocol("zz"), "");
  EXPECT_EQ(repo->getQdHwFcnControlProtocol("ctrlfirst"), "ap_ctrl_chain");
}

TEST_F(QDSRepoHwFcnsTest, LatencyEstimatesAreLongLong) {
  EXPECT_EQ(repo->getQdHwFcnWorstCaseLatencyEstimate("full"), 12000000000LL);
  EXPECT_EQ(repo->getQdHwFcnAverageCaseLatencyEstimate("full"), 800);
  EXPECT_EQ(repo->getQdHwFcnWorstCaseLatencyEstimate("pk"), -1);
  EXPECT_EQ(repo->getQdHwFcnAverageCaseLatencyEstimate("zz"), -1);
  EXPECT_TRUE(qdHwFcnHasLatencyEstimates(*repo, "full"));
  EXPECT_FALSE(qdHwFcnHasLatencyEstimates(*repo, "pk"));
}

// ---- Argument attribute readers -----------------------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, ByNameTriesNameThenHardwareNameThenRoot) {
  EXPECT_EQ(repo->getQdHwFcnArgHwName("pk", "a"), "a_hw");
  EXPECT_EQ(repo->getQdHwFcnArgHwName("pk", "c_hw"), "c_hw");
  EXPECT_EQ(repo->getQdHwFcnArgHwName("pk", "r"), "a_hw");
  EXPECT_EQ(repo->getQdHwFcnArgSwRootName("pk", "b"), "r");
  EXPECT_EQ(repo->getQdHwFcnArgSwRootName("pk", "c"), "");
  EXPECT_EQ(repo->getQdHwFcnArgBusInterfaceRef1("pk", "c"), "s_c");
  EXPECT_EQ(repo->getQdHwFcnArgOffset1("pk", "b"), "0x14");
  EXPECT_EQ(repo->getQdHwFcnArgAximmMasterRef("ptr", "o"), "m_axi_other");
  EXPECT_EQ(repo->getQdHwFcnArgBufferDepth("pk", "a"), 2);
  EXPECT_EQ(repo->getQdHwFcnArgBufferDepth("pk", "c"), -1);
  EXPECT_EQ(repo->getQdHwFcnArgMultiBufferDepth("pk", "a"), 3);
  EXPECT_EQ(repo->getKernelArgId("pk", "c"), 1);
  EXPECT_EQ(repo->getQdHwFcnArgOffset1("pk", "b"),
            oracle.string(fcn("pk") + "/qd:arg[@qd:name='b'][1]/@qd:offset"));
}

TEST_F(QDSRepoHwFcnsTest, ByNameOfAnUnknownFunctionOrArgumentSaysSo) {
  Log::reportingLevel = logINTERNAL;
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgSwRootName("zz", "a"), ""); }),
            "INTERNAL: [Morvane 83-1008] Function 'zz' is not a hardware function\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgSwRootName("pk", "zz"), ""); }),
            "INTERNAL: [Morvane 83-1009] Hardware function 'pk' does not have argument 'zz'\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getKernelArgId("pk", "zz"), -1); }), "");
}

TEST_F(QDSRepoHwFcnsTest, ByRawIndex) {
  EXPECT_EQ(repo->getIthQdHwFcnArgSwRootName1("pk", 1), "r");
  EXPECT_EQ(repo->getIthQdHwFcnArgOffset("pk", 1), "0x14");
  EXPECT_EQ(repo->getIthQdHwFcnArgBitmapping("pk", 1), "63:32");
  EXPECT_EQ(repo->getIthQdHwFcnArgBufferDepth("pk", 0), 2);
  EXPECT_EQ(repo->getIthQdHwFcnArgMultiBufferDepth("pk", 0), 3);
  EXPECT_EQ(repo->getIthQdHwFcnArgBitmapping("pk", 3),
            oracle.string(fcn("pk") + "/qd:arg[4]/@qd:bitMapping"));
}

TEST_F(QDSRepoHwFcnsTest, ByLogicalIndex) {
  EXPECT_EQ(repo->getIthQdHwFcnArgHwName("pk", 1), "c_hw");
  EXPECT_EQ(repo->getIthQdHwFcnArgSwRootName("pk", 0), "r");
  EXPECT_EQ(repo->getIthQdHwFcnArgBusInterfaceRef("pk", 1), "s_c");
  EXPECT_EQ(repo->getIthQdHwFcnArgAximmMasterRef("ptr", 1), "m_axi_gmem");
  EXPECT_EQ(repo->getIthKernelArgId("pk", 4), 4);
  EXPECT_EQ(repo->getIthQdHwFcnArgBusInterfaceRef("pk", 4),
            oracle.string(fcn("pk") + "/qd:arg" + kLogical + "[5]/@qd:busInterfaceRef"));
}

TEST_F(QDSRepoHwFcnsTest, PackedHardwareNameIsTheRootOfAPackedRawArgument) {
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedHwName("pk", 0), "r");
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedHwName("pk", 2), "c_hw");
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedHwName("pk", 3), "dr");
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedHwName("pk", 4), "s_e");
}

TEST_F(QDSRepoHwFcnsTest, WidthDirectionArraySizeAndTypeByTheThreeViews) {
  EXPECT_EQ(repo->getIthQdHwFcnArgDataWidth1("pk", 2), 32);
  EXPECT_EQ(repo->getQdHwFcnArgDataWidth1("ptr", "m"), 512);
  EXPECT_EQ(repo->getIthQdHwFcnArgDataWidth("ptr", 2), 256);
  EXPECT_EQ(repo->getIthQdHwFcnArgDirection1("ptr", 1), "out");
  EXPECT_EQ(repo->getIthQdHwFcnArgDirection("ocl", 0), "in");
  EXPECT_EQ(repo->getQdHwFcnArgDirection("ptr", "m"), "inout");
  EXPECT_EQ(repo->getQdHwFcnArgDirection("pk", "d"), "inout");
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize("ptr", 0), 1024);
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize("ptr", 3), 8);
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize("pk", 1), -1);
  EXPECT_EQ(repo->getQdHwFcnArgArraySize("ocl", "m"), 1024);
  EXPECT_EQ(repo->getQdHwFcnArgArraySize("pk", "e"), 64);
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize1("ptr", 3), 8);
  EXPECT_EQ(repo->getIthQdHwFcnArgArraySize1("pk", 2), -1);
  EXPECT_EQ(repo->getIthQdHwFcnArgPortInterfaceType("ptr", 2), "aximm_addr");
  EXPECT_EQ(repo->getIthQdHwFcnArgPortInterfaceType("pk", 3), "bram");
  EXPECT_EQ(repo->getQdHwFcnArgPortInterfaceType("pk", "c"), "axis");
  EXPECT_EQ(repo->getIthQdHwFcnArgDataWidth1("ptr", 3),
            oracle.integer("number(" + fcn("ptr") + "/qd:arg[4]/@qd:dataWidth)"));
}

// ---- Search readers -----------------------------------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, SearchReadersMatchTheLogicalName) {
  EXPECT_EQ(repo->getQdHwFcnArgBusInterfaceRef("pk", "r"), "s_axi");
  EXPECT_EQ(repo->getQdHwFcnArgBusInterfaceRef("pk", "c"), "s_c");
  EXPECT_EQ(repo->getQdHwFcnArgBusInterfaceRef("pk", "a"), "");  // a is known as r
  EXPECT_EQ(repo->getQdHwFcnArgBusInterfaceRef2("pk", "r2"), "s_p");
  EXPECT_EQ(repo->getQdHwFcnArgBusInterfaceRef2("pk", "e"), "s_e");
  EXPECT_EQ(repo->getQdHwFcnArgBusInterfaceRef2("pk", "zz"), "");
  EXPECT_EQ(repo->getQdHwFcnArgDataWidth("pk", "r"), 32);
  EXPECT_EQ(repo->getQdHwFcnArgDataWidth("pk", "a"), -1);
  EXPECT_EQ(repo->getQdHwFcnArgDataWidth("ptr", "o"), 256);
}

TEST_F(QDSRepoHwFcnsTest, OffsetSearchFallsBackToTheName) {
  EXPECT_EQ(repo->getQdHwFcnArgOffset("pk", "r"), "0x10");
  EXPECT_EQ(repo->getQdHwFcnArgOffset("pk", "b"), "0x14");
  EXPECT_EQ(repo->getQdHwFcnArgOffset("pk", "zz"), "");
}

TEST_F(QDSRepoHwFcnsTest, IndexSearchReportsEachIndexedArgumentWithoutOne) {
  EXPECT_EQ(repo->getQdHwFcnArgIndex("pk", "c"), 1);
  EXPECT_EQ(repo->getQdHwFcnArgIndex("pk", "dr"), 2);
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgIndex("pk", "e"), -1); }),
            "ERROR: [Morvane 83-1013] Function pk is missing data base index for argument e\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArgIndex("pk", 4), -1); }),
            "ERROR: [Morvane 83-1013] Function pk is missing data base index for argument r2\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgIndex("pk", "zz"), -1); }), "");
  // A pointer has no index and needs none.
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgIndex("ptr", "m"), -1); }), "");
}

TEST_F(QDSRepoHwFcnsTest, DirectIndexReportsAnIndexedArgumentWithoutOne) {
  EXPECT_EQ(repo->getQdHwFcnArgIndex1("pk", "c"), 1);
  EXPECT_EQ(repo->getIthQdHwFcnArgIndex1("pk", 2), 1);
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgIndex1("pk", "e"), -1); }),
            "ERROR: [Morvane 83-1012] Function pk is missing data base index for argument e\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getIthQdHwFcnArgIndex1("ptr", 3), -1); }),
            "ERROR: [Morvane 83-1012] Function ptr is missing data base index for argument x\n");
  EXPECT_EQ(qvtest::stderrOf([&] { EXPECT_EQ(repo->getQdHwFcnArgIndex1("pk", "zz"), -1); }), "");
}

// ---- Packing ------------------------------------------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, PackedTestsByIndexAreBoundedByTheRawCount) {
  EXPECT_TRUE(repo->qdHwFcnIthArgIsPacked1("pk", 1));
  EXPECT_FALSE(repo->qdHwFcnIthArgIsPacked1("pk", 2));
  EXPECT_FALSE(repo->qdHwFcnIthArgIsPacked1("pk", 7));
  EXPECT_TRUE(repo->qdHwFcnIthArgIsPacked("pk", 4));
  EXPECT_FALSE(repo->qdHwFcnIthArgIsPacked("pk", 6));  // within the raw count, past the logical
  EXPECT_FALSE(repo->qdHwFcnIthArgIsPacked("pk", -1));
}

TEST_F(QDSRepoHwFcnsTest, PackedWidthsChooseThePackWidthForAPackedArgument) {
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedDataWidth("pk", 0), 64);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedDataWidth("pk", 1), 32);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedDataWidth("pk", 2), 16);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedDataWidth("ptr", 0), 512);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedDataWidth("ocl", 0), 64);
  EXPECT_EQ(repo->getQdHwFcnArgPackedDataWidth("pk", "a"), 64);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedDataWidth1("pk", 5), 32);
}

TEST_F(QDSRepoHwFcnsTest, PackedOffsetsAreTheLowBitOfTheMapping) {
  EXPECT_EQ(repo->getQdHwFcnArgPackedOffset("pk", "b"), 32);
  EXPECT_EQ(repo->getQdHwFcnArgPackedOffset("pk", "d"), 4);
  EXPECT_EQ(repo->getQdHwFcnArgPackedOffset("pk", "c"), -1);
  // A root is packed, but the offset expression looks for an argument of that name.
  EXPECT_EQ(repo->getQdHwFcnArgPackedOffset("pk", "r"), -1);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedOffset1("pk", 1), 32);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedOffset1("pk", 2), -1);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedOffset("pk", 4), 0);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedOffset("pk", 2), 4);
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedOffset("pk", 1), -1);
  EXPECT_EQ(repo->getQdHwFcnArgPackedOffset("pk", "b"),
            oracle.integer("number(substring-after(/qd:repository/qd:fcnMap[@qd:fcnName ='pk'][1]"
                           "/qd:arg[@qd:name='b']/@qd:bitMapping, \":\"))"));
  EXPECT_EQ(repo->getIthQdHwFcnArgPackedOffset("pk", 2),
            oracle.integer(std::string("number(substring-after(/qd:repository/qd:fcnMap"
                                       "[@qd:fcnName ='pk'][1]/qd:arg") +
                           kLogical + "[3]/@qd:bitMapping, \":\"))"));
}

TEST_F(QDSRepoHwFcnsTest, BitMappingLowBitIsReadWithoutAPackedTest) {
  EXPECT_EQ(repo->getQdHwFcnArgBitMappingLSB("pk", "b"), 32);
  EXPECT_EQ(repo->getQdHwFcnArgBitMappingLSB("pk", "c"), -1);
  EXPECT_EQ(repo->getIthQdHwFcnArgBitMappingLSB("pk", 2), 4);
  EXPECT_EQ(repo->getIthQdHwFcnArgBitMappingLSB("pk", 1), -1);
}

// ---- Inout arguments and direct connections -----------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, InoutByDirection) {
  EXPECT_TRUE(repo->isQdHwFcnInoutArg("pk", "d"));
  EXPECT_FALSE(repo->isQdHwFcnInoutArg("pk", "c"));
}

TEST_F(QDSRepoHwFcnsTest, InoutBehindAnAdapterIsARegisterWithBothHalves) {
  EXPECT_TRUE(repo->isQdHwFcnInoutArg("adapt", "v"));
  EXPECT_FALSE(repo->isQdHwFcnInoutArg("adapt", "w"));  // no halves
  EXPECT_FALSE(repo->isQdHwFcnInoutArg("adapt", "s"));  // a stream
}

TEST_F(QDSRepoHwFcnsTest, InoutOfAHandshakeFunctionIsAnyRegisterArgument) {
  EXPECT_TRUE(repo->isQdHwFcnInoutArg("full", "v"));
  EXPECT_FALSE(repo->isQdHwFcnInoutArg("full", "zz"));
  EXPECT_FALSE(repo->isQdHwFcnInoutArg("ptr", "x"));        // bram
  EXPECT_FALSE(repo->isQdHwFcnInoutArg("ctrlfirst", "k"));  // ap_ctrl_chain
}

TEST_F(QDSRepoHwFcnsTest, DirectConnectionsNeedStreamsOfWholeBytesOrMemories) {
  EXPECT_TRUE(repo->directQdFuncConnectionPossible("streams", "s32", "streams", "b64"));
  EXPECT_TRUE(repo->directQdFuncConnectionPossible("streams", "s2048", "streams", "s32"));
  EXPECT_TRUE(repo->directQdFuncConnectionPossible("streams", "f33", "streams", "b64"));
  EXPECT_FALSE(repo->directQdFuncConnectionPossible("streams", "s2056", "streams", "b64"));
  EXPECT_FALSE(repo->directQdFuncConnectionPossible("streams", "b64", "streams", "s33"));
  EXPECT_FALSE(repo->directQdFuncConnectionPossible("streams", "r32", "streams", "s32"));
  EXPECT_FALSE(repo->directQdFuncConnectionPossible("streams", "s32", "streams", "zz"));
}

// ---- Base functions -----------------------------------------------------------------------------

TEST_F(QDSRepoHwFcnsTest, FloatAttributeOfAFunction) {
  EXPECT_DOUBLE_EQ(getQdHwFcnFloatAttr(*repo, "pk", "qd:clockPeriod", "t"), 3.33);
  EXPECT_DOUBLE_EQ(getQdHwFcnFloatAttr(*repo, "zz", "qd:clockPeriod", "t"), -1.0);
  EXPECT_DOUBLE_EQ(getQdHwFcnFloatAttr(*repo, "pk", "qd:clockPeriod", "t"),
                   oracle.number("number(" + fcn("pk") + "/@qd:clockPeriod)"));
}

TEST_F(QDSRepoHwFcnsTest, IntegerByNameTriesGoOnPastMinusOne) {
  // c_hw is no qd:name; its width comes from the hardware-name try.
  EXPECT_EQ(getQdHwFcnArgIntAttr(*repo, "pk", "c_hw", "qd:dataWidth", "t"), 32);
  // r is neither a name nor a hardware name; the root try answers with a's width.
  EXPECT_EQ(getQdHwFcnArgIntAttr(*repo, "pk", "r", "qd:dataPackWidth", "t"), 64);
  EXPECT_EQ(getQdHwFcnArgIntAttr(*repo, "pk", "c", "qd:arraySize", "t"), -1);
}

TEST_F(QDSRepoHwFcnsTest, FunctionAttributeOfAnUnknownFunctionIsEmptyWithANote) {
  Log::reportingLevel = logINTERNAL;
  EXPECT_TRUE(repo->isQdHwFcn("pk"));
  EXPECT_FALSE(repo->isQdHwFcn("zz"));
  EXPECT_EQ(getQdHwFcnStrAttr(*repo, "pk", "qd:type", "t"), "hls");
  EXPECT_EQ(
      qvtest::stderrOf([&] { EXPECT_EQ(getQdHwFcnStrAttr(*repo, "zz", "qd:type", "t"), ""); }),
      "INTERNAL: [Morvane 83-1003] Function 'zz' is not a hardware function\n");
}

TEST_F(QDSRepoHwFcnsTest, ArgumentAttributesByIndexInBothViews) {
  EXPECT_EQ(getIthQdHwFcnArgStrAttr(*repo, "pk", 2, "qd:name", "t"), "c");
  EXPECT_EQ(getIthQdHwFcnArgIntAttr(*repo, "pk", 2, "qd:dataWidth", "t"), 32);
  EXPECT_EQ(getIthQdHwFcnArgStrAttr2(*repo, "pk", 2, "qd:name", "t"), "d");
  EXPECT_EQ(getIthQdHwFcnArgIntAttr2(*repo, "pk", 2, "qd:dataWidth", "t"), 8);
  EXPECT_EQ(getIthQdHwFcnArgIntAttr(*repo, "pk", 2, "qd:arraySize", "t"), -1);
  EXPECT_EQ(getIthQdHwFcnArgIntAttr2(*repo, "zz", 0, "qd:dataWidth", "t"), -1);
  EXPECT_EQ(getIthQdHwFcnArgIntAttr2(*repo, "pk", 2, "qd:dataWidth", "t"),
            oracle.integer("number(" + fcn("pk") + "/qd:arg" + kLogical + "[3]/@qd:dataWidth)"));
}

TEST_F(QDSRepoHwFcnsTest, ArgumentAttributeByNameStopsAtTheRootTryEvenIfEmpty) {
  EXPECT_EQ(getQdHwFcnArgStrAttr(*repo, "pk", "c_hw", "qd:offset", "t"), "");
  EXPECT_EQ(getQdHwFcnArgStrAttr(*repo, "pk", "r2", "qd:bitMapping", "t"), "15:0");
  EXPECT_EQ(getQdHwFcnArgStrAttr(*repo, "pk", "a", "qd:swRootName", "t"),
            oracle.string(fcn("pk") + "/qd:arg[@qd:name='a'][1]/@qd:swRootName"));
}

TEST_F(QDSRepoHwFcnsTest, RegisterAttributesThroughTheirBaseReaders) {
  EXPECT_EQ(getQdHwFcnCtrlRegStrAttr(*repo, "pk", "qd:portInterfaceType", "t"), "register");
  EXPECT_EQ(getQdHwFcnArgLenRegStrAttr(*repo, "full", "qd:busInterfaceRef", "t"), "s_axi");
  EXPECT_TRUE(qdHwFcnHasReturnValue(*repo, "full"));
  EXPECT_FALSE(qdHwFcnHasReturnValue(*repo, "pk"));
  EXPECT_FALSE(qdHwFcnHasReturnValue(*repo, "zz"));
}

TEST_F(QDSRepoHwFcnsTest, PointerTestsReadTheMasterReference) {
  EXPECT_TRUE(repo->ithQdHwFcnArgIsAximmMasterPtr1("ptr", 1));
  EXPECT_FALSE(repo->ithQdHwFcnArgIsAximmMasterPtr1("ptr", 3));
  EXPECT_TRUE(repo->ithQdHwFcnArgIsAximmMasterPtr("ptr", 2));
  EXPECT_FALSE(repo->ithQdHwFcnArgIsAximmMasterPtr("pk", 0));
  EXPECT_TRUE(repo->qdHwFcnArgIsAximmMasterPtr("ocl", "m"));
  EXPECT_FALSE(repo->qdHwFcnArgIsAximmMasterPtr("ptr", "x"));
  EXPECT_EQ(repo->getIthQdHwFcnArgAximmMasterRef1("ptr", 2), "m_axi_other");
  EXPECT_EQ(repo->getIthQdHwFcnArgBusInterfaceRef1("ptr", 3), "s_x");
}

TEST_F(QDSRepoHwFcnsTest, ArraysAreArgumentsWithASizeOrPointers) {
  EXPECT_TRUE(repo->isQdHwFcnArrayArg("ptr", "x"));
  EXPECT_TRUE(repo->isQdHwFcnArrayArg("ptr", "o"));  // a pointer, with no qd:arraySize
  EXPECT_FALSE(repo->isQdHwFcnArrayArg("pk", "c"));
}

}  // namespace
}  // namespace qd
