// Fuzz target: the hardware repository file (qd_ip_db.xml), as the repository reads and answers it.
//
// The bytes are the file. The repository is made from its path (the constructor reads it twice,
// with libxml2 and with Boost's property tree parser), checked (checkDatabase), dumped
// (toString), and asked a fixed mix of queries over the first components, ports and hardware
// functions it lists. Queries never throw and answer sentinels; the constructor throws
// std::runtime_error for a file libxml2 refuses and the property tree's errors for one without a
// qd:repository root, or one that its parser refuses.
//
// Excluded, because they end the process by design and so cannot be told from a crash:
//   - QDREPO_VERIFY, the comparison of an XPath answer with its cached twin, calls exit(-1) when
//     the two readings of the file disagree, and many inputs make them disagree (two platform
//     components, a mode that is neither master nor slave, ...). The fuzz build compiles it to
//     throw qd::EquivalencyViolation instead (QV_REPOSITORY_DISAGREEMENT_THROWS, set by
//     QV_BUILD_FUZZ alone), which ends the input here. Built without it, as the plain build's
//     replay of the seeds is, the example files agree and nothing exits.
//   - isQdCompSCAdapter, whose assertions abort on a generated adapter that is not an
//     accelerator adapter: the designed answer to a broken database. No other query calls it,
//     and this mix does not ask it.
#include <algorithm>
#include <boost/property_tree/exceptions.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/FuzzSupport.h"
#include "host/qd/qdrepo/QDSRepo.h"

namespace {

// Every query is several XPath evaluations over the whole document, and under the sanitizers an
// evaluation costs tens of microseconds: two of each kind reach every kind of entry of a small
// file and keep an input of the example's size well under a second, so that the fuzzer makes
// progress. A larger file only makes toString and checkDatabase longer.
constexpr int kLimit = 2;

int bounded(int count) { return std::min(std::max(count, 0), kLimit); }

void askComponent(qd::QDSRepo& repo, std::string const& component) {
  repo.isQdComp(component);
  repo.isQdAcceleratorComp(component);
  repo.isQdDatamoverComp(component);
  repo.isQdMonitorComp(component);
  repo.isQdInterconnectComp(component);
  repo.isQdSmartConnectComp(component);
  repo.isQdPlatformComp(component);
  repo.getQdCompType(component);
  repo.isQdCompWithAdapter(component);
  repo.isQdAdapteeComp(component);
  repo.getQdCompMinClockPeriod(component);
  repo.getQdCompResourceEstimate(component, "LUT");
  repo.getNumQdHwFcns(component);
  repo.getNumQdHwFcnsForQdComp(component);
  repo.getIthQdHwFcn(0, component);
  repo.getIthQdHwFcnForQdComp(component, 0);

  int const ports = repo.getQdCompNumPorts(component);
  // One index past the end and one before the start, as callers do get them wrong.
  repo.isValidQdCompPortIndex(component, ports);
  repo.getQdCompPortName(component, -1);
  for (int i = 0; i < bounded(ports); ++i) {
    std::string const port = repo.getQdCompPortName(component, i);
    repo.getQdCompPortType(component, i);
    repo.isQdCompPort(component, port);
    repo.isQdCompAxiPort(component, port);
    repo.isQdCompClockPort(component, port);
    repo.getQdCompPortType(component, port);
    repo.getQdCompPortDir(component, port);
    repo.getQdCompPortMode(component, port);
    repo.isQdCompQdPort(component, port);
    repo.getQdCompQdPortDir(component, port);
    repo.getQdCompBusInterfacePort(component, port);
    repo.getQdCompBusInterfaceInstanceRef(component, port);
    repo.getQdCompBusInterfaceComponentRef(component, port);
    repo.getQdCompBusInterfaceBusInterfaceRef(component, port);
    repo.getQdCompBusInterfaceMemObject(component, port);
    repo.qdCompInterruptUsedByFcn(component, port);
    repo.getMemObjectInstRef(component, port);
    repo.getMemObjectSlr(component, port);
    repo.getMemObjectMemPort(component, port);
  }
}

void askPlatform(qd::QDSRepo& repo, std::string const& platform) {
  int const clocks = repo.getNumPlatformClocks(platform);
  for (int i = 0; i < bounded(clocks); ++i) repo.getIthPlatformClock(i, platform);
  int const available = repo.getNumAvailableClocks(platform);
  for (int i = 0; i < bounded(available); ++i) {
    int const id = repo.getIthAvailableClockId(i, platform);
    repo.isAvailableClockId(id, platform);
    repo.getClockFrequencyForClockId(id, platform);
  }
  repo.getClockFrequencyForClockId(-1, platform);
  repo.getPlatformDefaultClockId(platform);
  repo.getCpuClockFrequency(platform);
  std::vector<std::string> const tags = repo.getAllSpTags(platform);
  for (std::size_t i = 0; i < std::min<std::size_t>(tags.size(), kLimit); ++i) {
    // A range is read one index at a time, by design: a cardinality of millions is a slow
    // answer, not a finding.
    std::string base;
    int low = 0;
    int high = 0;
    repo.disassembleRangeSpTag(tags[i], base, low, high);
    if (static_cast<long long>(high) - low > 64) continue;
    // A range always stands for one memory object, so the auto enable never stops here.
    for (std::string const& object : repo.getMemObjectsFromSpTag(platform, tags[i])) {
      repo.getMemObjectSegmentsForSpTag(platform, object, tags[i]);
    }
    repo.getSpTagAutoEnable(platform, tags[i]);
  }
}

void askArgument(qd::QDSRepo& repo, std::string const& function, int i) {
  // The raw view.
  std::string const raw = repo.getIthQdHwFcnArg1(function, i);
  repo.getIthQdHwFcnArgBusInterfaceRef1(function, i);
  repo.getIthQdHwFcnArgHwName1(function, i);
  repo.getIthQdHwFcnArgAximmMasterRef1(function, i);
  repo.ithQdHwFcnArgIsAximmMasterPtr1(function, i);
  repo.getIthQdHwFcnArgPortInterfaceType1(function, i);
  repo.getIthQdHwFcnArgPackedDataWidth1(function, i);
  repo.getIthQdHwFcnArgArraySize1(function, i);
  repo.getIthQdHwFcnArgSwRootName1(function, i);
  repo.getIthQdHwFcnArgDataWidth1(function, i);
  repo.getIthQdHwFcnArgDirection1(function, i);
  repo.qdHwFcnIthArgIsPacked1(function, i);
  repo.getIthQdHwFcnArgPackedOffset1(function, i);
  repo.getIthQdHwFcnArgIndex1(function, i);
  // The logical view.
  std::string const logical = repo.getIthQdHwFcnArg(function, i);
  repo.ithQdHwFcnArgIsAximmMasterPtr(function, i);
  repo.getIthQdHwFcnArgOffset(function, i);
  repo.getIthQdHwFcnArgDataWidth(function, i);
  repo.getIthQdHwFcnArgHwName(function, i);
  repo.getIthQdHwFcnArgSwRootName(function, i);
  repo.getIthQdHwFcnArgBusInterfaceRef(function, i);
  repo.getIthQdHwFcnArgBitmapping(function, i);
  repo.getIthQdHwFcnArgAximmMasterRef(function, i);
  repo.getIthQdHwFcnArgBufferDepth(function, i);
  repo.getIthQdHwFcnArgMultiBufferDepth(function, i);
  repo.getIthKernelArgId(function, i);
  repo.getIthQdHwFcnArgPackedHwName(function, i);
  repo.getIthQdHwFcnArgDirection(function, i);
  repo.getIthQdHwFcnArgArraySize(function, i);
  repo.getIthQdHwFcnArgPortInterfaceType(function, i);
  repo.getIthQdHwFcnArgIndex(function, i);
  repo.qdHwFcnIthArgIsPacked(function, i);
  repo.getIthQdHwFcnArgPackedDataWidth(function, i);
  repo.getIthQdHwFcnArgPackedOffset(function, i);
  repo.getIthQdHwFcnArgBitMappingLSB(function, i);
  // By name, under the name of each view (once when the two views agree).
  std::vector<std::string> argumentNames{raw};
  if (logical != raw) argumentNames.push_back(logical);
  for (std::string const& argument : argumentNames) {
    repo.isQdHwFcnArg(function, argument);
    repo.qdHwFcnArgIsAximmMasterPtr(function, argument);
    repo.qdHwFcnArgIsPacked(function, argument);
    repo.getQdHwFcnArgPackedDataWidth(function, argument);
    repo.isQdHwFcnArrayArg(function, argument);
    repo.getQdHwFcnArgHwName(function, argument);
    repo.getQdHwFcnArgSwRootName(function, argument);
    repo.getQdHwFcnArgBusInterfaceRef1(function, argument);
    repo.getQdHwFcnArgOffset1(function, argument);
    repo.getQdHwFcnArgAximmMasterRef(function, argument);
    repo.getQdHwFcnArgBufferDepth(function, argument);
    repo.getQdHwFcnArgMultiBufferDepth(function, argument);
    repo.getKernelArgId(function, argument);
    repo.getQdHwFcnArgDataWidth1(function, argument);
    repo.getQdHwFcnArgDirection(function, argument);
    repo.getQdHwFcnArgArraySize(function, argument);
    repo.getQdHwFcnArgPortInterfaceType(function, argument);
    repo.getQdHwFcnArgBusInterfaceRef(function, argument);
    repo.getQdHwFcnArgBusInterfaceRef2(function, argument);
    repo.getQdHwFcnArgDataWidth(function, argument);
    repo.getQdHwFcnArgOffset(function, argument);
    repo.getQdHwFcnArgIndex(function, argument);
    repo.getQdHwFcnArgIndex1(function, argument);
    repo.getQdHwFcnArgPackedOffset(function, argument);
    repo.getQdHwFcnArgBitMappingLSB(function, argument);
    repo.isQdHwFcnInoutArg(function, argument);
  }
}

// `edges`: also ask the argument queries one index before the first and one past the last.
void askFunction(qd::QDSRepo& repo, std::string const& function, bool edges) {
  repo.isQdHwFcn(function);
  repo.checkQdHwFcn(function);
  repo.getQdHwFcnQdComponentRef(function);
  repo.isQdHwHlsOpenclFcn(function);
  repo.isQdPlatformHwFcn(function);
  repo.getQdHwFcnCtrlRegType(function);
  repo.getQdHwFcnReturnOffset(function);
  repo.getNumQdHwFcnInputArgs(function);
  repo.getNumQdHwFcnOutputArgs(function);
  repo.isQdHwLibraryFcn(function);
  repo.isQdHwHlsFcn(function);
  repo.isQdHwHdlFcn(function);
  repo.isQdHwHlsAdapterFcn(function);
  repo.getQdHwFcnTypeString(function);
  repo.getQdHwFcnFlow(function);
  repo.getQdHwFcnMinClockPeriod(function);
  repo.getQdHwFcnClockId(function);
  repo.getQdHwFcnInitiationInterval(function);
  repo.getQdHwFcnHostCpuWordSize(function);
  repo.isSequentialQdHwFcn(function);
  repo.isTemplateQdHwFcn(function);
  repo.getQdHwFcnTemplateInstantiation(function);
  repo.qdHwFcnIsRTL(function);
  repo.qdHwFcnIsMFA(function);
  repo.qdHwFcnIsNoExec(function);
  repo.qdHwFcnIsTemplate(function);
  repo.getQdHwFcnParamFile(function);
  repo.getQdHwFcnResourceId(function);
  repo.getQdHwFcnInterruptName(function);
  repo.qdHwFcnHasInterrupt(function);
  repo.getQdHwFcnResourceEstimate(function, "LUT");
  repo.getQdHwFcnReturnHwName(function);
  repo.getQdHwFcnReturnBusInterfaceRef(function);
  repo.getQdHwFcnReturnDataWidth(function);
  repo.getQdHwFcnReturnValueWidth(function);
  repo.getQdHwFcnReturnIndex(function);
  repo.getQdHwFcnCtrlReg(function);
  repo.getQdHwFcnCtrlRegBusInterfaceRef(function);
  repo.getQdHwFcnCtrlRegOffset(function);
  repo.getQdHwFcnCtrlRegBufferDepth(function);
  repo.getQdHwFcnArgLenRegBusInterfaceRef(function);
  repo.getQdHwFcnArgLenRegOffset(function);
  repo.getQdHwFcnCtrlProtocol(function);
  repo.getQdHwFcnControlProtocol(function);
  repo.getQdHwFcnWorstCaseLatencyEstimate(function);
  repo.getQdHwFcnAverageCaseLatencyEstimate(function);
  for (char const* type : {"aximm", "axis", "bram", "fifo", "register"}) {
    repo.getNumQdHwFcnBusInterfacesOfType(function, type);
    repo.getNumQdHwFcnBusInterfacesOfType(function, type, "in");
  }

  int const raw = repo.getNumQdHwFcnArgs1(function);
  int const logical = repo.getNumQdHwFcnArgs(function);
  int const count = bounded(std::max(raw, logical));
  for (int i = 0; i < count; ++i) askArgument(repo, function, i);
  if (edges) {
    askArgument(repo, function, -1);
    askArgument(repo, function, std::max(raw, logical));
  }

  std::string const port = repo.getIthQdHwFcnArgBusInterfaceRef1(function, 0);
  int const onPort = repo.getNumQdHwFcnArgsForBusInterfaceRef(function, port);
  for (int i = 0; i < bounded(onPort); ++i) {
    repo.getIthQdHwFcnArgForBusInterfaceRef(function, port, i);
  }
  repo.getQdHwFcnBusInterfaceRefForHwName(function, repo.getIthQdHwFcnArgHwName1(function, 0));
}

void ask(qd::QDSRepo& repo) {
  repo.getFileName();
  repo.checkDatabase();
  repo.toString("DEBUG: ");

  std::string const platform = repo.getQdPlatformComp();
  askPlatform(repo, platform);
  int const components = repo.getNumQdComponents();
  for (int i = 0; i < bounded(components); ++i) askComponent(repo, repo.getIthQdComponent(i));
  // Names callers make up: empty, unknown, and one with a quote, which breaks the expression
  // the name is spliced into.
  for (char const* name : {"", "it's"}) askComponent(repo, name);

  int const functions = repo.getNumQdHwFcns();
  std::vector<std::string> names;
  for (int i = 0; i < bounded(functions); ++i) names.push_back(repo.getIthQdHwFcn(i));
  for (std::size_t i = 0; i < names.size(); ++i) askFunction(repo, names[i], i == 0);
  for (char const* name : {"", "it's"}) askFunction(repo, name, false);
  if (names.size() >= 2) {
    repo.directQdFuncConnectionPossible(names[0], repo.getIthQdHwFcnArg(names[0], 0), names[1],
                                        repo.getIthQdHwFcnArg(names[1], 0));
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const path = qvfuzz::writeScratchFile(data, size);
  std::unique_ptr<qd::QDSRepo> repo;
  try {
    repo = std::make_unique<qd::QDSRepo>(path, 0);
  } catch (boost::property_tree::ptree_error const&) {
    return 0;  // no qd:repository root, or a file the property tree's XML parser refuses
  } catch (std::runtime_error const&) {
    return 0;  // a file that libxml2 refuses
  }
  try {
    ask(*repo);
  } catch (qd::EquivalencyViolation const&) {
    // The two readings of the file disagree: the designed end of this repository (see above).
  }
  return 0;
}
