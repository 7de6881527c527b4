// The hardware repository: typed queries over an XML database of components, hardware
// functions and the platform they sit on. See docs/repository.md and, for the file,
// "Hardware repository" in docs/formats.md.
//
// Opening a repository and asking it:
//
//   boost::shared_ptr<qd::QDSRepo> repo(new qd::QDSRepo("qd_ip_db.xml", 0));
//   int n = repo->getNumQdComponents();                  // count(...) over qd:component
//   std::string first = repo->getIthQdComponent(0);      // indices count from 0
//   bool isPlatform = repo->isQdPlatformComp(first);     // XPath, checked against the cache
//
// Every answer comes from XPath over the document. Where a query also has a cached answer (a
// Component built from the same file), the two are compared, and a disagreement ends the
// process (QDREPO_VERIFY): the repository cannot be trusted then. Queries never throw; what they
// cannot answer they answer with -1, -1.0, false, "" or an empty list.
//
// The query families follow in the order of their source files: the core (QDSRepo.cpp),
// components and ports (QDSRepoComponents.cpp), memory objects and SP tags
// (QDSRepoMemObjects.cpp), hardware functions (QDSRepoHwFcns.cpp), platform clocks, resets and
// interrupts (QDSRepoClocks.cpp), NoC (QDSRepoNoc.cpp), kernel pipes (QDSRepoPipes.cpp).
#ifndef HOST_QD_QDREPO_QDSREPO_H_
#define HOST_QD_QDREPO_QDSREPO_H_

#include <boost/shared_ptr.hpp>
#include <cstdlib>
#include <map>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "host/qd/qdrepo/Component.h"
#include "host/qd/qdrepo/QDXPathDoc.h"
#include "service/Export.h"
#include "service/Log.h"

namespace qd {

// What QDREPO_VERIFY throws instead of ending the process, in the fuzz build only (below).
class EquivalencyViolation : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Ends the process when the XPath answer `xpath` and the cached answer `cached` of `query`
// differ, after the line "ERROR: [Morvane 83-9999] Equivalency violation found for <query>
// <xpath>!=<cached>[: <extra>]". Booleans print as 0 and 1.
//
// The fuzz build (QV_BUILD_FUZZ) defines QV_REPOSITORY_DISAGREEMENT_THROWS, and then the same
// line is followed by an EquivalencyViolation instead of the exit: a disagreement is the designed
// end of a bad repository, not a finding, and the fuzz target catches it to go on with the next
// input. Every other build, the product's included, keeps the exit.
template <class T>
void QDREPO_VERIFY(std::string const& query, T const& xpath, T const& cached,
                   std::string const& extra) {
  if (xpath == cached) return;
  {
    Log line(logERROR, 9999);
    line << "Equivalency violation found for " << query << " " << xpath << "!=" << cached;
    if (!extra.empty()) line << ": " << extra;
  }
#ifdef QV_REPOSITORY_DISAGREEMENT_THROWS
  throw EquivalencyViolation("Equivalency violation found for " + query);
#else
  std::exit(-1);
#endif
}

class QV_EXPORT QDSRepo {
 public:
  // Reads `fileName` twice: with libxml2 for XPath, and with Boost's property tree parser for
  // the cache of components. Bit 0 of `flags` runs the interactive query loop on the document
  // first. Throws std::runtime_error (Log ERROR 1019) when the file cannot be opened or is not
  // well-formed XML, and boost::property_tree::ptree_error when it has no qd:repository root.
  // A component that cannot be cached is skipped (Log INTERNAL 9999) and answers from XPath
  // alone. The first repository of a process fills the vocabularies' tables.
  QDSRepo(std::string const& fileName, unsigned int flags);

  // A checked repository, or null: for a file that does not exist (Log ERROR 1017 "Cannot open
  // IP database<file>"), is not well-formed XML (Log ERROR 1019), or holds a function that fails
  // checkQdHwFcn. Logs the dump (toString) at DEBUG. A file without a qd:repository root throws
  // the property tree's exception, as the constructor does.
  static boost::shared_ptr<QDSRepo> createRepo(std::string const& fileName, int flags);

  // ---- Core ----------------------------------------------------------------------------------
  // The document's file name, as given.
  std::string getFileName() const;

  int intQuery(std::string const& expression, std::string const& caller);
  long long longLongQuery(std::string const& expression, std::string const& caller);
  double floatQuery(std::string const& expression, std::string const& caller);
  bool booleanQuery(std::string const& expression, std::string const& caller);
  std::string stringQuery(std::string const& expression, std::string const& caller);
  std::vector<std::string> stringListQuery(std::string const& expression,
                                           std::string const& caller);
  bool queryDocInteractive();

  int getNumQdComponents();
  std::string getIthQdComponent(int i);

  // Checks every hardware function, from the last to the first, without stopping at a
  // failure; true when all pass (and when there are none).
  bool checkDatabase();
  // False, with a Log line, for a name that is no function (INFO 1000) or a function whose
  // component is neither an accelerator nor the platform (ERROR 1020, listing every function).
  bool checkQdHwFcn(std::string const& name);
  // A readable account of the components, the platform's clocks and the hardware functions with
  // their arguments; `prefix` opens every line but the first.
  std::string toString(std::string const& prefix);

  // ---- Components ----------------------------------------------------------------------------
  // False for an empty name (Log INTERNAL 1014 " NULL component type reference ").
  bool isQdComp(std::string const& component);
  bool isQdAcceleratorComp(std::string const& component);
  bool isQdDatamoverComp(std::string const& component);
  bool isQdMonitorComp(std::string const& component);
  bool isQdInterconnectComp(std::string const& component);
  bool isQdSmartConnectComp(std::string const& component);
  // Checked against the cached platform component.
  bool isQdPlatformComp(std::string const& component);
  std::string getQdCompType(std::string const& component);
  // Whether the component names an adapter (qd:adapterCompRef); isQdAdapteeComp is the same
  // test under the other name.
  bool isQdCompWithAdapter(std::string const& component);
  bool isQdAdapteeComp(std::string const& component);
  // The name of the component of type "platform"; "" with Log ERROR 1014 when there is none.
  // Checked against the cache.
  std::string getQdPlatformComp();

  // Ports. A port name is a bus interface's qd:name or qd:port; indices follow the
  // qd:busInterface elements. The answers marked "checked" are compared with the cache.
  // Checked; also true for the qd:busInterfaceRef of a packed interface.
  bool isQdCompPort(std::string const& component, std::string const& port);
  // Checked: an AXI (aximm or axis) interface of that name.
  bool isQdCompAxiPort(std::string const& component, std::string const& port);
  // Checked: a clock interface whose qd:port is `port`.
  bool isQdCompClockPort(std::string const& component, std::string const& port);
  // Checked; -1 for no component.
  int getQdCompNumPorts(std::string const& component);
  // False with Log WARNING 1001 " Index <i> out of range for component <c>".
  bool isValidQdCompPortIndex(std::string const& component, int i);
  // Checked; "" for an index out of range. A component with an adapter counts the interfaces
  // of its descendants too.
  std::string getQdCompPortName(std::string const& component, int i);
  std::string getQdCompPortType(std::string const& component, int i);
  // The type of the interface or physical port `port`: the interface's qd:busTypeRef, else
  // the physical port's qd:portTypeRef; "wire" for a physical port with no interface. "" with
  // Log WARNING 1002 when neither is there. Checked where the physical port answers.
  std::string getQdCompPortType(std::string const& component, std::string const& port);
  // The qd:direction of the interface, else of the physical port; "" with Log WARNING 1003.
  // Checked.
  std::string getQdCompPortDir(std::string const& component, std::string const& port);
  // The qd:mode of the interface; else, for a physical port, "master" for direction "in" and
  // "slave" for any other; "" with Log WARNING 1004. Checked where the cache holds the same
  // fact: an interface's own qd:mode and a physical port's direction.
  std::string getQdCompPortMode(std::string const& component, std::string const& port);
  // Physical ports (qd:port elements) by name.
  bool isQdCompQdPort(std::string const& component, std::string const& port);
  std::string getQdCompQdPortDir(std::string const& component, std::string const& port);
  std::string getQdCompPortStringAttr(std::string const& component, std::string const& port,
                                      std::string const& attribute);
  // An attribute of the interface named `port`; "" when there is none.
  std::string getQdCompBusInterfaceStringAttr(std::string const& component, std::string const& port,
                                              std::string const& attribute);
  // Attributes of the interface named `port`, checked against the same field in the cache.
  std::string getQdCompBusInterfacePort(std::string const& component, std::string const& port);
  std::string getQdCompBusInterfaceInstanceRef(std::string const& component,
                                               std::string const& port);
  std::string getQdCompBusInterfaceComponentRef(std::string const& component,
                                                std::string const& port);
  std::string getQdCompBusInterfaceBusInterfaceRef(std::string const& component,
                                                   std::string const& port);
  // The qd:memport of the interface, checked against its AXI interface in the cache.
  std::string getQdCompBusInterfaceMemObject(std::string const& component, std::string const& port);

  // ---- Memory objects ------------------------------------------------------------------------
  // Attributes of the platform's memory object (a bus interface with qd:memport) `object`,
  // checked against the platform's AXI interface of that name; "" when there is none.
  std::string getMemObjectInstRef(std::string const& platform, std::string const& object);
  std::string getMemObjectSlr(std::string const& platform, std::string const& object);
  std::string getMemObjectMemPort(std::string const& platform, std::string const& object);

  // ---- Hardware functions --------------------------------------------------------------------
  bool isQdHwFcn(std::string const& function);
  int getNumQdHwFcns();
  std::string getIthQdHwFcn(int i);
  std::string getQdHwFcnQdComponentRef(std::string const& function);
  bool isQdHwHlsOpenclFcn(std::string const& function);
  // Whether the function's component is the platform.
  bool isQdPlatformHwFcn(std::string const& function);
  // The control protocol: "ap_ctrl_none" when there is none, "ap_ctrl_hs" for
  // "generic_axi_lite".
  std::string getQdHwFcnCtrlRegType(std::string const& function);
  // qd:returnValue/@qd:offset; "" without a return value.
  std::string getQdHwFcnReturnOffset(std::string const& function);

  // Arguments. Methods ending in 1 count every qd:arg (the raw view); the others count a packed
  // group once, at its first element (the logical view). The two must not be mixed.
  int getNumQdHwFcnArgs1(std::string const& function);
  int getNumQdHwFcnArgs(std::string const& function);
  // True when an argument has the name as its qd:name, qd:hwName or qd:swRootName.
  bool isQdHwFcnArg(std::string const& function, std::string const& argument);
  std::string getIthQdHwFcnArg1(std::string const& function, int i);
  std::string getIthQdHwFcnArgBusInterfaceRef1(std::string const& function, int i);
  // qd:hwName, or the argument's interface when it has none.
  std::string getIthQdHwFcnArgHwName1(std::string const& function, int i);
  std::string getIthQdHwFcnArgAximmMasterRef1(std::string const& function, int i);
  bool ithQdHwFcnArgIsAximmMasterPtr1(std::string const& function, int i);
  bool ithQdHwFcnArgIsAximmMasterPtr(std::string const& function, int i);
  bool qdHwFcnArgIsAximmMasterPtr(std::string const& function, std::string const& argument);
  // "aximm_addr" for an aximm master pointer, else qd:portInterfaceType.
  std::string getIthQdHwFcnArgPortInterfaceType1(std::string const& function, int i);
  std::string getIthQdHwFcnArgOffset(std::string const& function, int i);
  // qd:aximmMasterDataWidth for a pointer of a function that is not OpenCL, else qd:dataWidth.
  int getIthQdHwFcnArgDataWidth(std::string const& function, int i);
  // Presence of qd:dataPack counts, not its value.
  bool qdHwFcnArgIsPacked(std::string const& function, std::string const& argument);
  int getQdHwFcnArgPackedDataWidth(std::string const& function, std::string const& argument);
  int getIthQdHwFcnArgPackedDataWidth1(std::string const& function, int i);
  bool isQdHwFcnArrayArg(std::string const& function, std::string const& argument);
  int getIthQdHwFcnArgArraySize1(std::string const& function, int i);

  // Counts and existence. The forms with a component count that component's functions; the
  // ForQdComp forms answer -1 ("") when it is no component. Past the count: "".
  int getNumQdHwFcns(std::string const& component);
  int getNumQdHwFcnsForQdComp(std::string const& component);
  std::string getIthQdHwFcn(int i, std::string const& component);
  std::string getIthQdHwFcnForQdComp(std::string const& component, int i);
  // Raw counts of the arguments with qd:direction "in", "out" ("inout" counts in neither); -1
  // for no function.
  int getNumQdHwFcnInputArgs(std::string const& function);
  int getNumQdHwFcnOutputArgs(std::string const& function);
  int getNumQdHwFcnArgsForBusInterfaceRef(std::string const& function, std::string const& port);
  // qd:name of the i-th argument on the interface `port`; "" when there is none.
  std::string getIthQdHwFcnArgForBusInterfaceRef(std::string const& function,
                                                 std::string const& port, int i);
  // Distinct interfaces of a port interface type among the arguments; "aximm" counts distinct
  // master references. -1 for no function.
  int getNumQdHwFcnBusInterfacesOfType(std::string const& function, std::string const& type);
  int getNumQdHwFcnBusInterfacesOfType(std::string const& function, std::string const& type,
                                       std::string const& direction);

  // Function kind by qd:type; false for no function. The type text is "unspecified" when absent.
  bool isQdHwLibraryFcn(std::string const& function);
  bool isQdHwHlsFcn(std::string const& function);
  bool isQdHwHdlFcn(std::string const& function);
  // "hls_adapter" or "hls_opencl_adapter".
  bool isQdHwHlsAdapterFcn(std::string const& function);
  std::string getQdHwFcnTypeString(std::string const& function);

  // Function attributes. Numbers answer -1 (-1.0) when absent or for no function.
  std::string getQdHwFcnFlow(std::string const& function);
  double getQdHwFcnMinClockPeriod(std::string const& function);
  // qd:clockPeriod of the component's first function.
  double getQdCompMinClockPeriod(std::string const& component);
  int getQdHwFcnClockId(std::string const& function);
  int getQdHwFcnInitiationInterval(std::string const& function);
  // qd:hostMachine.
  int getQdHwFcnHostCpuWordSize(std::string const& function);
  // Presence of qd:sequential.
  bool isSequentialQdHwFcn(std::string const& function);
  // qd:templateInstantiation, where "__NA__" means none.
  bool isTemplateQdHwFcn(std::string const& function);
  std::string getQdHwFcnTemplateInstantiation(std::string const& function);
  // The flag reads "true"; false with Log WARNING 1011 "<f> is not a hardware function".
  bool qdHwFcnIsRTL(std::string const& function);
  bool qdHwFcnIsMFA(std::string const& function);
  bool qdHwFcnIsNoExec(std::string const& function);
  bool qdHwFcnIsTemplate(std::string const& function);
  // qd:param_file and qd:resource_id; "" and -1 when absent, with WARNING 1011 for no function.
  std::string getQdHwFcnParamFile(std::string const& function);
  int getQdHwFcnResourceId(std::string const& function);
  std::string getQdHwFcnInterruptName(std::string const& function);
  bool qdHwFcnHasInterrupt(std::string const& function);
  // Whether a function of the component raises its interrupt on `port`.
  bool qdCompInterruptUsedByFcn(std::string const& component, std::string const& port);
  // qd:resourceEstimates/@qd:<resource> of the function or component; -1 when absent.
  int getQdHwFcnResourceEstimate(std::string const& function, std::string const& resource);
  int getQdCompResourceEstimate(std::string const& component, std::string const& resource);

  // Return value: "" or -1 without one.
  std::string getQdHwFcnReturnHwName(std::string const& function);
  std::string getQdHwFcnReturnBusInterfaceRef(std::string const& function);
  int getQdHwFcnReturnDataWidth(std::string const& function);
  int getQdHwFcnReturnValueWidth(std::string const& function);
  // 0 when the function has a return value, else -1.
  int getQdHwFcnReturnIndex(std::string const& function);
  // The interface of the return value or of the first argument with that qd:hwName.
  std::string getQdHwFcnBusInterfaceRefForHwName(std::string const& function,
                                                 std::string const& hwName);

  // Control and length registers: "" with Log INTERNAL 1004/1005 (1006/1007) when absent.
  std::string getQdHwFcnCtrlReg(std::string const& function);
  std::string getQdHwFcnCtrlRegBusInterfaceRef(std::string const& function);
  std::string getQdHwFcnCtrlRegOffset(std::string const& function);
  // -1 without a qd:ctrlReg.
  int getQdHwFcnCtrlRegBufferDepth(std::string const& function);
  std::string getQdHwFcnArgLenRegBusInterfaceRef(std::string const& function);
  std::string getQdHwFcnArgLenRegOffset(std::string const& function);
  // The control protocol, "generic_axi_lite" read as "ap_ctrl_hs". CtrlProtocol answers
  // "ap_ctrl_hs" for no function, register or type; ControlProtocol answers "" for no function
  // and "ap_ctrl_none" for no type.
  std::string getQdHwFcnCtrlProtocol(std::string const& function);
  std::string getQdHwFcnControlProtocol(std::string const& function);

  // Latency estimates in cycles; -1 without qd:latencyEstimates.
  long long getQdHwFcnWorstCaseLatencyEstimate(std::string const& function);
  long long getQdHwFcnAverageCaseLatencyEstimate(std::string const& function);

  // Argument attributes by name (any of its three names), by raw index (ending in 1) and by
  // logical index. Hardware names fall back to the interface, root names to the argument's
  // name in the same view.
  std::string getQdHwFcnArgHwName(std::string const& function, std::string const& argument);
  std::string getIthQdHwFcnArgHwName(std::string const& function, int i);
  std::string getQdHwFcnArgSwRootName(std::string const& function, std::string const& argument);
  std::string getIthQdHwFcnArgSwRootName1(std::string const& function, int i);
  std::string getIthQdHwFcnArgSwRootName(std::string const& function, int i);
  std::string getQdHwFcnArgBusInterfaceRef1(std::string const& function,
                                            std::string const& argument);
  std::string getIthQdHwFcnArgBusInterfaceRef(std::string const& function, int i);
  std::string getQdHwFcnArgOffset1(std::string const& function, std::string const& argument);
  std::string getIthQdHwFcnArgBitmapping(std::string const& function, int i);
  std::string getQdHwFcnArgAximmMasterRef(std::string const& function, std::string const& argument);
  std::string getIthQdHwFcnArgAximmMasterRef(std::string const& function, int i);
  int getQdHwFcnArgBufferDepth(std::string const& function, std::string const& argument);
  int getIthQdHwFcnArgBufferDepth(std::string const& function, int i);
  int getQdHwFcnArgMultiBufferDepth(std::string const& function, std::string const& argument);
  int getIthQdHwFcnArgMultiBufferDepth(std::string const& function, int i);
  // qd:id.
  int getKernelArgId(std::string const& function, std::string const& argument);
  int getIthKernelArgId(std::string const& function, int i);

  // The name of a logical argument: a packed group's qd:swRootName, else qd:name.
  std::string getIthQdHwFcnArg(std::string const& function, int i);
  // A packed raw argument's root name, else its hardware name.
  std::string getIthQdHwFcnArgPackedHwName(std::string const& function, int i);

  // The pointer rule: an aximm master pointer of a function that is not OpenCL reads the
  // qd:aximmMaster* width and direction; every pointer reads qd:aximmMasterArraySize and has
  // port type "aximm_addr".
  int getIthQdHwFcnArgDataWidth1(std::string const& function, int i);
  int getQdHwFcnArgDataWidth1(std::string const& function, std::string const& argument);
  std::string getIthQdHwFcnArgDirection1(std::string const& function, int i);
  std::string getIthQdHwFcnArgDirection(std::string const& function, int i);
  std::string getQdHwFcnArgDirection(std::string const& function, std::string const& argument);
  int getIthQdHwFcnArgArraySize(std::string const& function, int i);
  int getQdHwFcnArgArraySize(std::string const& function, std::string const& argument);
  std::string getIthQdHwFcnArgPortInterfaceType(std::string const& function, int i);
  std::string getQdHwFcnArgPortInterfaceType(std::string const& function,
                                             std::string const& argument);

  // Search readers: the first logical argument known by `argument`. Not found: "" or -1, except
  // the offset, which then reads by name, and the index, which is -1 with Log ERROR 1013 for a
  // register, bram or fifo argument without qd:index (ERROR 1012 in the direct form, Index1).
  std::string getQdHwFcnArgBusInterfaceRef(std::string const& function,
                                           std::string const& argument);
  // The same, matching the root name.
  std::string getQdHwFcnArgBusInterfaceRef2(std::string const& function,
                                            std::string const& argument);
  int getQdHwFcnArgDataWidth(std::string const& function, std::string const& argument);
  std::string getQdHwFcnArgOffset(std::string const& function, std::string const& argument);
  int getQdHwFcnArgIndex(std::string const& function, std::string const& argument);
  int getQdHwFcnArgIndex1(std::string const& function, std::string const& argument);
  int getIthQdHwFcnArgIndex(std::string const& function, int i);
  int getIthQdHwFcnArgIndex1(std::string const& function, int i);

  // Packing. Both index forms are bounded by the raw count. Offsets are the low bit of
  // qd:bitMapping ("high:low"); -1 for an argument that is not packed.
  bool qdHwFcnIthArgIsPacked1(std::string const& function, int i);
  bool qdHwFcnIthArgIsPacked(std::string const& function, int i);
  int getIthQdHwFcnArgPackedDataWidth(std::string const& function, int i);
  int getQdHwFcnArgPackedOffset(std::string const& function, std::string const& argument);
  int getIthQdHwFcnArgPackedOffset1(std::string const& function, int i);
  int getIthQdHwFcnArgPackedOffset(std::string const& function, int i);
  // The low bit whether packed or not (the Ith form in the logical view).
  int getQdHwFcnArgBitMappingLSB(std::string const& function, std::string const& argument);
  int getIthQdHwFcnArgBitMappingLSB(std::string const& function, int i);

  // An inout argument: direction "inout", an "_i"/"_o" pair behind an axis_acc_adapter, or a
  // register argument of an ap_ctrl_hs function.
  bool isQdHwFcnInoutArg(std::string const& function, std::string const& argument);
  // Both arguments are axis, bram or fifo, and a stream side is whole bytes of at most 2048 bits.
  bool directQdFuncConnectionPossible(std::string const& functionA, std::string const& argumentA,
                                      std::string const& functionB, std::string const& argumentB);

  // ---- Platform clocks -----------------------------------------------------------------------
  // Master clock interfaces of the platform; checked. -1 or "" for a non-platform.
  int getNumPlatformClocks(std::string const& platform);
  std::string getIthPlatformClock(int i, std::string const& platform);
  // A clock is available when its qd:status is there and is not "reserved".
  bool isAvailableClockId(int id, std::string const& platform);
  int getNumAvailableClocks(std::string const& platform);
  int getIthAvailableClockId(int i, std::string const& platform);
  int getPlatformDefaultClockId(std::string const& platform);
  // -1.0, with Log WARNING 10051, for an unavailable id.
  double getClockFrequencyForClockId(int id, std::string const& platform);
  float getCpuClockFrequency(std::string const& platform);

  // ---- Platform clock domains, resets, interrupts and the device -----------------------------

  // ---- NoC -----------------------------------------------------------------------------------

  // ---- Kernel pipes --------------------------------------------------------------------------

  // ---- State ---------------------------------------------------------------------------------
  // Constant after construction. The component of type "platform" (the last that parsed).
  std::shared_ptr<Component> platformComponent;
  // Every component that parsed, by name; the first of a name stays.
  std::map<std::string, std::shared_ptr<Component>> components;
  boost::shared_ptr<QDXPathDoc> doc;
  unsigned int flags = 0;
};

// ---- File level: components and ports ----
// Kind test over the document: whether `component` has qd:type `type`.
bool isQdCompType(std::string const& component, std::string const& type,
                  boost::shared_ptr<QDXPathDoc> const& doc);
// An attribute of the interface at index `i` of `component`, guarded by isQdComp,
// isValidQdCompPortIndex and the attribute's presence; "" or -1 otherwise.
std::string getQdCompBusInterfaceStringAttrByIndex(QDSRepo& repo, std::string const& component,
                                                   int i, std::string const& attribute,
                                                   std::string const& caller);
// ---- File level: memory objects and SP tags ----
// An attribute of the platform's memory object `object`; "" when the platform, the object or
// the attribute is not there.
std::string getMemObjectStringAttr(QDSRepo& repo, std::string const& platform,
                                   std::string const& object, std::string const& attribute);

// ---- File level: hardware functions ----
// An attribute of a hardware function; "" with Log INTERNAL 1003 when there is no such function.
std::string getQdHwFcnStrAttr(QDSRepo& repo, std::string const& function,
                              std::string const& attribute, std::string const& caller);
// An attribute of the argument at raw index `i`; "" with Log INTERNAL 1010 for an index that
// is negative or not below getNumQdHwFcnArgs1, or no function. The Int form answers -1 there,
// without a message; the forms ending in 2 use the logical view and Log INTERNAL 1012.
std::string getIthQdHwFcnArgStrAttr(QDSRepo& repo, std::string const& function, int i,
                                    std::string const& attribute, std::string const& caller);
int getIthQdHwFcnArgIntAttr(QDSRepo& repo, std::string const& function, int i,
                            std::string const& attribute, std::string const& caller);
std::string getIthQdHwFcnArgStrAttr2(QDSRepo& repo, std::string const& function, int i,
                                     std::string const& attribute, std::string const& caller);
int getIthQdHwFcnArgIntAttr2(QDSRepo& repo, std::string const& function, int i,
                             std::string const& attribute, std::string const& caller);
// An attribute of the argument named `argument`, tried by qd:name, then qd:hwName, then
// qd:swRootName. "" with Log INTERNAL 1008 (no function) or 1009 (no argument); the Int form
// answers -1 there and passes a -1 on to the next name.
std::string getQdHwFcnArgStrAttr(QDSRepo& repo, std::string const& function,
                                 std::string const& argument, std::string const& attribute,
                                 std::string const& caller);
int getQdHwFcnArgIntAttr(QDSRepo& repo, std::string const& function, std::string const& argument,
                         std::string const& attribute, std::string const& caller);
// An attribute of the function's qd:ctrlReg; "" with Log INTERNAL 1004 (no function) or 1005
// (no register).
std::string getQdHwFcnCtrlRegStrAttr(QDSRepo& repo, std::string const& function,
                                     std::string const& attribute, std::string const& caller);
bool qdHwFcnHasReturnValue(QDSRepo& repo, std::string const& function);
// number() of a function attribute; -1.0 for no function.
double getQdHwFcnFloatAttr(QDSRepo& repo, std::string const& function, std::string const& attribute,
                           std::string const& caller);
// An attribute of the function's qd:lengthRegisterOffset; "" with Log INTERNAL 1006 (no
// function) or 1007 (no register).
std::string getQdHwFcnArgLenRegStrAttr(QDSRepo& repo, std::string const& function,
                                       std::string const& attribute, std::string const& caller);
bool qdHwFcnHasLatencyEstimates(QDSRepo& repo, std::string const& function);
// ---- File level: platform clocks, resets and interrupts ----
// An attribute of an available clock; -1.0 or "" with Log WARNING 10051 otherwise.
double getClockFloatAttr(QDSRepo& repo, int id, std::string const& platform,
                         std::string const& attribute, std::string const& caller);
std::string getClockStringAttr(QDSRepo& repo, int id, std::string const& platform,
                               std::string const& attribute, std::string const& caller);

// ---- File level: NoC ----

// ---- File level: kernel pipes ----

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDSREPO_H_
