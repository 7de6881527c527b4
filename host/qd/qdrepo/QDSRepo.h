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
#include <string>
#include <vector>

#include "host/qd/qdrepo/Component.h"
#include "host/qd/qdrepo/EquivalencyViolation.h"
#include "host/qd/qdrepo/QDEnumerations.h"
#include "host/qd/qdrepo/QDXPathDoc.h"
#include "host/qd/qdrepo/oclPipe.h"
#include "host/qd/qdrepo/oclPipeConnection.h"
#include "service/Export.h"
#include "service/Log.h"

namespace qd {

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
  // Checked (an interface of that name or qd:port); then, unchecked, also true for the
  // qd:busInterfaceRef of a packed interface, which the cache does not know.
  bool isQdCompPort(std::string const& component, std::string const& port);
  // Checked: an AXI (aximm or axis) interface of that name.
  bool isQdCompAxiPort(std::string const& component, std::string const& port);
  // Checked: a clock interface whose qd:port is `port`.
  bool isQdCompClockPort(std::string const& component, std::string const& port);
  // Checked; -1 for no component.
  int getQdCompNumPorts(std::string const& component);
  // False with Log WARNING 1001 " Index <i> out of range for component <c>".
  bool isValidQdCompPortIndex(std::string const& component, int i);
  // "" with WARNING 1001 for an index out of range; for an index in range, checked (also when
  // the attribute is missing there). A component with an adapter counts the interfaces of its
  // descendants too.
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
  // Whether the component is an adapter: it names its adaptee (qd:adapteeCompRef).
  bool isQdAdapterComp(std::string const& component);
  // Whether it has an aximm slave interface, the one a host addresses it through.
  bool isAddressableQdComp(std::string const& component);
  // Whether qd:adapterType is "system_compiler_generated_adapter_v2"; false for an unknown
  // component. Such an adapter must be an accelerator, an adapter and no adaptee: otherwise
  // "Assertion failed in "<source>", line <n>" goes to standard output and the process aborts.
  bool isQdCompSCAdapter(std::string const& component);
  // Whether the component element carries `attribute` ("qd:componentRef").
  bool isQdCompStringAttr(std::string const& component, std::string const& attribute);
  // Whether an interface has the name `port` (qd:name only).
  bool isQdCompBusInterface(std::string const& component, std::string const& port);
  // Whether an interface has `port` as its qd:port (the physical port behind it).
  bool isQdCompBusInterfacePort(std::string const& component, std::string const& port);
  // Whether the interface at index `i` carries `attribute`; descendants count on a component
  // with an adapter, as for the by-index readers.
  bool isValidQdCompIthPortAttr(std::string const& component, int i, std::string const& attribute);
  // Whether the interface's qd:return is "true".
  bool isQdCompPortReturnType(std::string const& component, std::string const& port);
  // Kind tests of the port at index `i`, by its bus type (getQdCompPortType by index): "clock",
  // "reset", "interrupt", "register", "aximm" (isQdCompAxiPort), "axilite", "axis", "bram"; fifo
  // for "fifo", "acc_fifo_read" and "acc_fifo_write"; master and slave by its qd:mode. The
  // compound tests are both of their parts. False for an index out of range (Log WARNING 1001).
  bool isQdCompClockPort(std::string const& component, int i);
  bool isQdCompResetPort(std::string const& component, int i);
  bool isQdCompInterruptPort(std::string const& component, int i);
  bool isQdCompRegisterPort(std::string const& component, int i);
  bool isQdCompMasterPort(std::string const& component, int i);
  bool isQdCompSlavePort(std::string const& component, int i);
  bool isQdCompAxiPort(std::string const& component, int i);
  bool isQdCompAxiSlavePort(std::string const& component, int i);
  bool isQdCompAxiMasterPort(std::string const& component, int i);
  bool isQdCompAxilitePort(std::string const& component, int i);
  bool isQdCompAxisPort(std::string const& component, int i);
  bool isQdCompAxisSlavePort(std::string const& component, int i);
  bool isQdCompAxisMasterPort(std::string const& component, int i);
  bool isQdCompBramPort(std::string const& component, int i);
  bool isQdCompFifoPort(std::string const& component, int i);
  // The same tests by port name, through getQdCompPortType and getQdCompPortMode by name (so an
  // unknown name logs their warnings). isQdCompClockPort and isQdCompAxiPort by name are the
  // checked forms above; the compound AXI tests by name build on isQdCompAxiPort by name, which
  // takes aximm and axis.
  bool isQdCompResetPort(std::string const& component, std::string const& port);
  bool isQdCompInterruptPort(std::string const& component, std::string const& port);
  bool isQdCompRegisterPort(std::string const& component, std::string const& port);
  bool isQdCompMasterPort(std::string const& component, std::string const& port);
  bool isQdCompSlavePort(std::string const& component, std::string const& port);
  bool isQdCompAxiSlavePort(std::string const& component, std::string const& port);
  bool isQdCompAxiMasterPort(std::string const& component, std::string const& port);
  bool isQdCompAxilitePort(std::string const& component, std::string const& port);
  bool isQdCompAxisPort(std::string const& component, std::string const& port);
  bool isQdCompAxisSlavePort(std::string const& component, std::string const& port);
  bool isQdCompAxisMasterPort(std::string const& component, std::string const& port);
  bool isQdCompBramPort(std::string const& component, std::string const& port);
  bool isQdCompFifoPort(std::string const& component, std::string const& port);
  // Memory port kinds: whether the interface's qd:memport is "S_AXI_ACP", "M_AXI_GP",
  // "S_AXI_HP", "S_AXI_HPC", "MIG"; is_qdmemport_type asks for any word.
  bool isQdCompAcpPort(std::string const& component, std::string const& port);
  bool isQdCompGpPort(std::string const& component, std::string const& port);
  bool isQdCompHpPort(std::string const& component, std::string const& port);
  bool isQdCompHpcPort(std::string const& component, std::string const& port);
  bool isQdCompMigPort(std::string const& component, std::string const& port);
  bool is_qdmemport_type(std::string const& component, std::string const& port,
                         std::string const& memport);
  // An AXI port of the platform with a qd:memport other than "MIG": a processor's port.
  bool isQdPlatformCompProcessor(std::string const& component, std::string const& port);
  // An axis port of the platform.
  bool isQdCompPlatformAxisPort(std::string const& component, std::string const& port);
  // Whether the interface's qd:cacheCoherent is "true".
  bool isCoherentQdCompPort(std::string const& component, std::string const& port);
  // Whether the port at `i` is one half of an HLS inout argument ("<stem>_i" in, "<stem>_o" out,
  // in a row); false for a component without an adapter.
  bool isQdCompHlsInoutPort(std::string const& component, int i);
  // Whether `port` is the qd:clockRef (qd:resetRef) of an AXI (aximm or axis) interface.
  bool isAxiClockRef(std::string const& component, std::string const& port);
  bool isAxiResetRef(std::string const& component, std::string const& port);
  // An axis port whose qd:hasTlast is "true".
  bool qdCompAxisPortHasTlast(std::string const& component, std::string const& port);
  // Whether the port's interface is packed (qd:dataPack); for an adaptee also when its first
  // function's argument on the port is.
  bool qdCompPortIsPacked(std::string const& component, std::string const& port);
  bool qdCompIthPortIsPacked(std::string const& component, int i);
  // Attributes of the component element; "" when absent. getQdAdapteeCompRef logs with the
  // caller word "getQdAdapterCompRef".
  std::string getQdCompCompRef(std::string const& component);
  std::string getQdAdapterCompRef(std::string const& component);
  std::string getQdAdapteeCompRef(std::string const& component);
  std::string getQdCompStringAttr(std::string const& component, std::string const& attribute);
  // An attribute of the interface `port`, else of the physical port `port`; "".
  std::string getQdCompBusIntfAttr(std::string const& component, std::string const& port,
                                   std::string const& attribute);
  // The qd:regionSize (hexadecimal text) of the first aximm slave interface; 0 when the
  // component is not addressable or the text is no hexadecimal number.
  unsigned int getQdCompRegionSize(std::string const& component);
  // The qd:ctrlReg/@qd:type of the component's first function: "ap_ctrl_none" when there is none,
  // "ap_ctrl_hs" for "generic_axi_lite"; "" with Log INTERNAL 1016 for no component.
  std::string getQdCompControlProtocol(std::string const& component);
  // The number of interfaces with that qd:busTypeRef and qd:mode; -1 for no component.
  int getQdCompNumPorts(std::string const& component, std::string const& type,
                        std::string const& mode);
  // "aie_config" interfaces: their number (-1 for no component), and the qd:connectedInstanceRef
  // of the one at `i` ("" when there is none).
  int getNumAieConfigs(std::string const& component);
  std::string getIthAieConfigPeer(std::string const& component, int i);
  // The qd:port of the interface at `i`; "" out of range (Log WARNING 1001) or absent.
  std::string getIthQdCompBusInterfacePort(std::string const& component, int i);
  // qd:direction and qd:mode of the interface at `i`, read as they stand; "".
  std::string getQdCompPortDir(std::string const& component, int i);
  std::string getQdCompPortMode(std::string const& component, int i);
  // Width of a port: the packed width for a packed port that is no register or data port,
  // else the interface's qd:dataWidth, else that of the first function's argument on it;
  // -1 for no port.
  int getQdCompPortDataWidth(std::string const& component, std::string const& port);
  // The qd:dataPackWidth of the adaptee's function argument on a packed port; -1 with Log ERROR
  // 1016 for a packed port of any other component; -1 for a port that is not packed.
  int getQdCompPortPackedDataWidth(std::string const& component, std::string const& port);
  // The interface's qd:regionSize read as hexadecimal; 0 when absent.
  unsigned int getQdCompPortRegionSize(std::string const& component, std::string const& port);
  // Numbers of the interface `port`; -1 when absent.
  int getQdCompPortNumElements(std::string const& component, std::string const& port);
  int getQdCompPortCapacity(std::string const& component, std::string const& port);
  int getQdCompPortBufferDepth(std::string const& component, std::string const& port);
  int getQdCompPortArraySize(std::string const& component, std::string const& port);
  // Attributes of a physical port (qd:port element), by name or by index among the qd:port
  // elements; "" or -1 when absent.
  int getQdCompPortIntAttr(std::string const& component, std::string const& port,
                           std::string const& attribute);
  int getQdCompPortIntAttrByIndex(std::string const& component, int i,
                                  std::string const& attribute);
  std::string getQdCompPortStringAttrByIndex(std::string const& component, int i,
                                             std::string const& attribute);
  // A number of the interface `port`; -1 when absent.
  int getQdCompBusInterfaceIntAttr(std::string const& component, std::string const& port,
                                   std::string const& attribute);
  // An attribute of the interface that `port` resolves to (resolveQdCompPortToBusInterface), so
  // the name of its physical port serves too; "".
  std::string getQdCompBusInterfaceStrAttr(std::string const& component, std::string const& port,
                                           std::string const& attribute);
  // An attribute of the interface behind the physical port `port`, written as this lookup has
  // always been ("/@'<attribute>'"): XPath cannot evaluate it, so it answers "".
  std::string getQdCompBusInterfacePortAttr(std::string const& component, std::string const& port,
                                            std::string const& attribute);
  // The interface behind the physical port `port`: its qd:name, and its bus type, mode and
  // direction; "" when no interface has that qd:port.
  std::string getQdCompBusInterfacePortName(std::string const& component, std::string const& port);
  std::string getQdCompBusInterfacePortType(std::string const& component, std::string const& port);
  std::string getQdCompBusInterfacePortMode(std::string const& component, std::string const& port);
  std::string getQdCompBusInterfacePortDir(std::string const& component, std::string const& port);
  std::string getQdCompBusInterfaceSptag(std::string const& component, std::string const& port);
  // The qd:busTypeRef of a port of an adapter or an adaptee; "" for any other component.
  std::string getQdBusTypeRef(std::string const& component, std::string const& port);
  // The name of the `i`th aximm (axis) master (slave) interface; "" when there is none.
  std::string getQdCompAxiMasterPortName(std::string const& component, int i);
  std::string getQdCompAxiSlavePortName(std::string const& component, int i);
  std::string getQdCompAxisMasterPortName(std::string const& component, int i);
  std::string getQdCompAxisSlavePortName(std::string const& component, int i);
  // The qd:portInterfaceType of the component's first function's argument on `port`.
  std::string getQdCompAxisPortInterfaceType(std::string const& component, std::string const& port);
  // The qd:slr of an axis port of the platform; "" for any other.
  std::string getQdCompPlatformAxisPortSlr(std::string const& component, std::string const& port);
  // qd:clockRef and qd:resetRef of the interface; the AXI forms answer "" for a port that is no
  // AXI port.
  std::string getQdPortClockRef(std::string const& component, std::string const& port);
  std::string getQdPortResetRef(std::string const& component, std::string const& port);
  std::string getQdCompAxiPortClockPort(std::string const& component, std::string const& port);
  std::string getQdCompAxiPortResetPort(std::string const& component, std::string const& port);
  // The resets of the AXI interfaces on `clock`, each once, in file order.
  std::vector<std::string> getAxiResetRefsForAxiClockRef(std::string const& component,
                                                         std::string const& clock);
  // The clock of the first AXI interface reset by `reset` that names one; the reset of the first
  // on `clock` that names one.
  std::string getAxiClockRefForAxiReset(std::string const& component, std::string const& reset);
  std::string getAxiResetRefForAxiClock(std::string const& component, std::string const& clock);
  // The `i`th clock slave interface of `instance`; "".
  std::string getIthCompClkSlavePortForInst(std::string const& component,
                                            std::string const& instance, int i);
  // The interface of the adaptee's adapter that holds the register `port`, else whose qd:hlsname
  // is `port`; "" for a component that is no adaptee, and with Log ERROR 1014 when neither is
  // there.
  std::string getQdAdapterPort(std::string const& component, std::string const& port);
  // The interface a port name means: the interface whose qd:port it is, else the interface of
  // that name; "" otherwise.
  std::string resolveQdCompPortToBusInterface(std::string const& component,
                                              std::string const& port);
  // Whether two ports can be wired without a data mover: both axis, bram or fifo, an axis side
  // at most 2048 bits wide and a multiple of 8.
  bool directQdPortConnectionPossible(std::string const& componentA, std::string const& portA,
                                      std::string const& componentB, std::string const& portB);
  // Always true.
  bool hasDataMoverForPlatformConn(std::string const& componentA, std::string const& portA,
                                   std::string const& componentB, std::string const& portB);
  // The most channels of that kind a data mover offers (-1: no limit); 0 with Log ERROR 1075 for
  // a pair it has no figure for.
  int getDatamoverMaxNumChannels(datamover_t datamover, channel_t channel);
  // The number of AXI id values the port needs; 0 for no AXI port, -1 with Log ERROR 1015 for a
  // memory port of an unknown kind.
  int getNumQdCompAxiPortIds(std::string const& component, std::string const& port);
  // Ports of an interconnect instance (qd:componentRef "axi_interconnect" or "smartconnect"):
  // the position among the instance's interfaces of the same bus type and mode, the next such
  // interface's name, and the numbers of its masters and slaves of the port's bus type. -1 or ""
  // for a port that is not one.
  int getInterconnectPortIndex(std::string const& component, std::string const& port);
  int getNumMastersForInterconnectPort(std::string const& component, std::string const& port);
  int getNumSlavesForInterconnectPort(std::string const& component, std::string const& port);
  std::string getInterconnectPortFollowingSibling(std::string const& component,
                                                  std::string const& port);

  // ---- Memory objects ------------------------------------------------------------------------
  // Attributes of the platform's memory object (a bus interface with qd:memport) `object`,
  // checked against the platform's AXI interface of that name; "" when there is none.
  std::string getMemObjectInstRef(std::string const& platform, std::string const& object);
  std::string getMemObjectSlr(std::string const& platform, std::string const& object);
  std::string getMemObjectMemPort(std::string const& platform, std::string const& object);

  // SP tags: a plain word names a whole interface, "base[i]" one segment of a ranged tag and
  // "base[lo:hi]" the segments lo to hi. These four read the text alone.
  // A "[" with a "]" somewhere after it; false for "".
  bool isRangeSpTag(std::string const& tag);
  // Base before the first "[", then low and high ("[i]" gives low = high = i). A tag with no
  // bracket is all base, with low and high 0; an index that is no number reads as 0.
  void disassembleRangeSpTag(std::string const& tag, std::string& base, int& low, int& high);
  // "base[low]" when low equals high, else "base[low:high]".
  std::string assembleRangeSpTag(std::string const& base, int low, int high);
  // "base[i]" for every i from low to high; a plain tag gives "tag[0]"; empty when low > high.
  std::vector<std::string> splitSpTag(std::string const& tag);
  // Tag queries over `platform`'s interfaces. Unless told otherwise the tag is normalised first.
  // The canonical form of a tag: ranges and interface tags unchanged; a per-segment tag (on a
  // segment of a "memss" interface) becomes "base[index]" with two WARNING 1028 lines, at
  // every call. An unknown tag takes the same path and becomes "[-1]".
  std::string normalizeSpTag(std::string const& platform, std::string const& tag);
  // Not normalised: an interface or per-segment tag; a range within 0 and getSpTagRangeMax - 1.
  bool isValidSpTag(std::string const& platform, std::string const& tag);
  // Not normalised: the qd:cardinality of the range's base; -1 for no range or no cardinality.
  int getSpTagRangeMax(std::string const& platform, std::string const& tag);
  // Plain tags, then every ranged tag as "base[0:cardinality-1]", each once, in file order.
  std::vector<std::string> getAllSpTags(std::string const& platform);
  // A range is addressable; a GP memport unknown (0); else by bus type: aximm addressable,
  // axis stream, anything else 3.
  port_t getSpTagProtocol(std::string const& platform, std::string const& tag);
  // str2mode_t of the interface's qd:mode; no_mode for an unknown tag.
  mode_t getSpTagMode(std::string const& platform, std::string const& tag);
  // [0] for the processor's memory (ACP, HP, HPC memports), [1] for other memory and ranges,
  // empty for a stream.
  std::vector<int> getSpTagMemorySpace(std::string const& platform, std::string const& tag);
  bool isSpTagMemory(std::string const& platform, std::string const& tag);
  // For "base[i]", the segment's own per-segment tag when it has one; else the tag as given.
  std::string getSpTagSwName(std::string const& platform, std::string const& tag);
  // qd:cacheCoherent is "true"; false for a range (tested before normalising) and when absent.
  bool isSpTagCoherent(std::string const& platform, std::string const& tag);
  // qd:dataWidth of the tag's interface; 0 when absent.
  int getSpTagDataWidth(std::string const& platform, std::string const& tag);
  // qd:peakMemoryBandwidth, else a fixed figure by memport, else width / 8 * 100 (0 for no
  // width).
  int getSpTagPeakBw(std::string const& platform, std::string const& tag);
  // The SLR of the tag's interface, or of each segment of a range: one entry per index (empty
  // ones too), or with `unique` each SLR once in order of first appearance.
  std::vector<std::string> getSpTagSlrs(std::string const& platform, std::string const& tag,
                                        bool unique);
  // "true", "false" or "preferred": a plain tag's qd:auto ("true" when absent); for a range the
  // segments' qd:auto, where one "false" refuses, "true" outranks "preferred", and none known
  // gives "false" with WARNING 1056 (so also for a range whose base no single interface
  // carries: it stands for the object "", which has no segments). A list of objects of another
  // length than one would end the process after ERROR 1055; a range always gives one.
  std::string getSpTagAutoEnable(std::string const& platform, std::string const& tag);
  // getMemObjectMaxMasters for a plain tag; for a range the least qd:maxMasters of its segments
  // (-1 when one lacks it, 2147483647 when there are none).
  int getSpTagMaxMasters(std::string const& platform, std::string const& object,
                         std::string const& tag);
  // Names of the interfaces that carry the tag, each once; for a range always one entry: the
  // name of the interface that carries its base, "" when none or several of different names do.
  std::vector<std::string> getMemObjectsFromSpTag(std::string const& platform,
                                                  std::string const& tag);
  // qd:addressSegment of the object for a plain tag; for a range each index's segment
  // qd:baseName (missing ones passed over, duplicates kept).
  std::vector<std::string> getMemObjectSegmentsForSpTag(std::string const& platform,
                                                        std::string const& object,
                                                        std::string const& tag);
  // The same with qd:memoryInstance.
  std::vector<std::string> getMemObjectMemInstsForSpTag(std::string const& platform,
                                                        std::string const& object,
                                                        std::string const& tag);
  // qd:memoryInterface of the object for a plain tag; empty for a range or when absent.
  std::vector<std::string> getMemObjectMemInterfaceForSpTag(std::string const& platform,
                                                            std::string const& object,
                                                            std::string const& tag);
  // The memory object family: attributes of a memory object by name, or of the i-th memory
  // object in "slave" mode by index; "" or -1 when the platform, the object or the attribute is
  // not there.
  std::string getMemObjectAddressSegment(std::string const& platform, std::string const& object);
  std::string getMemObjectCompRef(std::string const& platform, std::string const& object);
  std::string getMemObjectSptag(std::string const& platform, std::string const& object);
  int getMemObjectDataWidth(std::string const& platform, std::string const& object);
  int getMemObjectPeakMemoryBandwidth(std::string const& platform, std::string const& object);
  // By the object's qd:componentRef: an interconnect's budget (the number of its tagged ports)
  // goes to its first tagged port alone, 0 for the others; a NoC 16; the CPU 8 for an ACP
  // memport, else 16; anything else qd:maxMasters.
  int getMemObjectMaxMasters(std::string const& object, std::string const& platform);
  std::string getIthMemObject(int i, std::string const& platform);
  std::string getIthMemObjectMemport(int i, std::string const& platform);
  std::string getIthMemObjectMemoryInstRef(int i, std::string const& platform);
  std::string getIthMemObjectAddressSegment(int i, std::string const& platform);
  std::string getIthMemObjectCompRef(int i, std::string const& platform);
  std::string getIthMemObjectInstRef(int i, std::string const& platform);
  std::string getIthMemObjectSptag(int i, std::string const& platform);
  std::string getIthMemObjectSlr(int i, std::string const& platform);
  int getIthMemObjectDataWidth(int i, std::string const& platform);
  int getIthMemObjectPeakMemoryBandwidth(int i, std::string const& platform);
  int getIthMemObjectMaxMasters(int i, std::string const& platform);
  // Guarded by isQdPlatformComp: -1, false, "" or an empty list for a non-platform.
  // Memory objects in "slave" mode.
  int getNumMemObjects(std::string const& platform);
  bool isMemObject(std::string const& platform, std::string const& name);
  // SP tags on the interfaces of that qd:memport, and the i-th such interface's tag.
  int getNumSptagsForMemObject(std::string const& platform, std::string const& memport);
  std::string getIthSptagForMemObject(int i, std::string const& platform,
                                      std::string const& memport);
  // The first interface of that memport and tag; "" for an empty tag.
  std::string getPortForMemObjectSptag(std::string const& platform, std::string const& memport,
                                       std::string const& tag);
  std::string getPortForSptag(std::string const& platform, std::string const& tag);
  // Every qd:slr of the platform's interfaces, sorted, each once.
  std::vector<std::string> getAllSlrs(std::string const& component);
  // The qd:slr of the interfaces of the same instance as `port`.
  std::string getQdCompPlatformInstanceSlr(std::string const& platform, std::string const& port);

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
  // Attributes of an available clock; -1.0 or "" with Log WARNING 10051 otherwise.
  double getClockPeriodForClockId(int id, std::string const& platform);
  double getNormalizedClockPeriodForClockId(int id, std::string const& platform);
  std::string getClockStatusForClockId(int id, std::string const& platform);
  // The frequency in Hz: the MHz text (six decimals) without its dots. An unavailable id logs
  // WARNING 10051 and throws std::invalid_argument ("stol"), as does a text that is no number.
  long getClockFreqHzForClockId(int id, std::string const& platform);
  // The clock's qd:name; "INVALID_ID" with Log WARNING 1006 for an unavailable id.
  std::string getClockNameForClockId(int id, std::string const& platform);
  // The id of the clock `name`, else of the clock named by the platform interface whose
  // qd:busInterfaceRef is `name`; -1, with Log WARNING 1007 for a non-platform.
  int getClockIdForClockName(std::string const& platform, std::string const& name);
  // qd:instanceRef of the "CPU" clock.
  std::string getQdPlatformCpuInstanceRef(std::string const& platform);
  // From qd:deviceInfo: qd:architecture, and "<device>:<package>:<speedGrade>".
  std::string getArchitectureForPlatform(std::string const& platform);
  std::string getDeviceForPlatform(std::string const& platform);
  // The AI engines' peak frequency in Hz for the platform's speed grade; 1000000000 for a grade
  // not in the table (and for none).
  long getAiePeakFrequency(std::string const& platform);
  // The function's qd:derivedClock: its clock name ("" without one), multiplier and divisor
  // (-1 without one).
  std::string getDerivedClockPort(std::string const& function);
  int getDerivedClockPeriodMultiplier(std::string const& function);
  int getDerivedClockPeriodDivisor(std::string const& function);
  // Clock domains (qd:clkDomain of the platform's clocks). For a non-platform: Log ERROR 1009,
  // 1010, 1011, 1013 ("Invalid platform component type: '<p>'") and -1 or "".
  int getNumClockDomains(std::string const& platform);
  std::string getIthClockDomain(int i, std::string const& platform);
  std::string getClockDomainForClockId(int id, std::string const& platform);
  int getNumClockIdsForClockDomain(std::string const& platform, std::string const& domain);
  // The `i`th clock of the domain, its id or name. `i` may equal the count (no answer, no
  // message); beyond that, below 0, or for a non-platform: -1 with Log ERROR 1018, "" with Log
  // ERROR 1014.
  int getIthClockIdForClockDomain(int i, std::string const& platform, std::string const& domain);
  std::string getIthClockForClockDomain(int i, std::string const& platform,
                                        std::string const& domain);
  // A reset's qd:activeLevel, else "high" for "ap_rst" and "low" for any other name (with Log
  // CRITICAL WARNING 1090 where the name does not tell).
  std::string getQdResetActiveLevel(std::string const& component, std::string const& reset);
  std::string getQdResetAssociatedClock(std::string const& component, std::string const& reset);
  // Reset masters of the platform on `clock` (and with that qd:busInterfaceRef unless it is
  // empty): their number, and the name of the `i`th, else the domain's reset
  // (getResetBusInterfaceForClockDomain).
  int getQdPlatformResetBusInterfaceForClkCount(std::string const& platform,
                                                std::string const& busInterfaceRef,
                                                std::string const& clock);
  std::string getQdPlatformResetBusInterfaceForClk(std::string const& platform,
                                                   std::string const& busInterfaceRef,
                                                   std::string const& clock, int i);
  std::string getQdPlatformResetBusInterfaceForClkAndSlr(std::string const& platform,
                                                         std::string const& busInterfaceRef,
                                                         std::string const& clock,
                                                         std::string const& slr);
  // The reset of the domain with that qd:busInterfaceRef, else the one on the domain's slowest
  // clock (the greatest normalised period, the later clock on a tie).
  std::string getResetBusInterfaceForClockDomain(std::string const& platform,
                                                 std::string const& domain,
                                                 std::string const& busInterfaceRef);
  // Interrupt inputs of the platform that carry qd:isrId (the legacy form: qd:irq).
  bool hasQdPlatformInterruptSupport(std::string const& platform);
  std::string getQdPlatformCompIthInterruptSlavePort(std::string const& platform, int i);
  std::string getQdPlatformCompIthLegacyInterruptSlavePort(std::string const& platform, int i);
  // The port's qd:isrId; -1.
  int getQdPlatformCompPortIrq(std::string const& platform, std::string const& port);
  // The platform's attribute qd:<resource> ("LUT"); -1.
  int getQdPlatformResourceCapacity(std::string const& platform, std::string const& resource);

  // A latency estimate in periods of the normalised clock: the estimate times the normalised
  // period of the function's clock (qd:clockId, else the platform's default clock), truncated.
  // The raw estimate when neither clock is known or its period is negative; -1 without one.
  long long getQdHwFcnNormalizedWorstCaseLatencyEstimate(std::string const& function,
                                                         std::string const& platform);
  long long getQdHwFcnNormalizedAverageCaseLatencyEstimate(std::string const& function,
                                                           std::string const& platform);

  // ---- NoC -----------------------------------------------------------------------------------
  // The platform's qd:nocConnectivity elements (by qd:instanceRef), their connections
  // (qd:busInterface by qd:name) and the connections' address segments (by index from 0).
  bool hasNocData(std::string const& platform, std::string const& instance);
  std::vector<std::string> getNocInstanceSet(std::string const& platform);
  std::vector<std::string> getNocConnectionSet(std::string const& platform,
                                               std::string const& instance);
  std::vector<std::string> getNocSlaveBusIfSet(std::string const& platform,
                                               std::string const& instance);
  std::vector<std::string> getNocMasterBusIfSet(std::string const& platform,
                                                std::string const& instance);
  int numNocConnectionAddressSegment(std::string const& platform, std::string const& instance,
                                     std::string const& connection);
  // Attributes of a connection or a segment; "" or -1 when absent.
  std::string getNocConnectionBusInterfaceRef(std::string const& platform,
                                              std::string const& instance,
                                              std::string const& connection);
  std::string getNocConnectionMode(std::string const& platform, std::string const& instance,
                                   std::string const& connection);
  std::string getNocConnectionAddressSegmentName(std::string const& platform,
                                                 std::string const& instance,
                                                 std::string const& connection, int i);
  std::string getNocConnectionAddressSegmentInstanceRef(std::string const& platform,
                                                        std::string const& instance,
                                                        std::string const& connection, int i);
  std::string getNocConnectionAddressSegmentRegion(std::string const& platform,
                                                   std::string const& instance,
                                                   std::string const& connection, int i);
  int getNocConnectionAddressSegmentReadBwUsed(std::string const& platform,
                                               std::string const& instance,
                                               std::string const& connection, int i);
  int getNocConnectionAddressSegmentWriteBwUsed(std::string const& platform,
                                                std::string const& instance,
                                                std::string const& connection, int i);
  // qd:id, else "<name>__<instanceRef>".
  std::string getNocConnectionAddressSegmentId(std::string const& platform,
                                               std::string const& instance,
                                               std::string const& connection, int i);
  // qd:interleave, else 4 or 2 when the name holds the region followed by "x4" or "x2", else 1.
  int getNocConnectionAddressSegmentInterleave(std::string const& platform,
                                               std::string const& instance,
                                               std::string const& connection, int i);
  // False, the outputs untouched, when the platform has no qd:nocPlNmu estimate; else the five
  // estimates (-1 for an absent one) and true.
  bool getPlatformNocResources(std::string const& platform, int& plNmu, int& plNsu, int& aieNmu,
                               int& aieNsu, int& hbmNmu);
  // The same for qd:nocChannelMaxBw.
  bool getPlatformNocChannelBandwidth(std::string const& platform, int& bandwidth);
  // What the NoC offers at the aximm interface `port`, by its qd:busInterfaceRef: "S..._AXI"
  // pl_nmu, "M..._AXI" pl_nsu, "HBM..._AXI" hbm_nmu, anything else no_noc_resource.
  noc_resource_t supportedNocResourceType(std::string const& platform, std::string const& port);

  // ---- Kernel pipes --------------------------------------------------------------------------
  // The pipe and connection children of a kernel's qd:fcnMap. For a name that is no hardware
  // function the four kernel queries log WARNING 10120 (counts) or 10121 (records)
  // "<kernel> is not an OpenCL kernel" and go on: counts answer 0, records their defaults.
  int getNumPipesForKernel(std::string const& kernel);
  int getNumPipeConnectionsForKernel(std::string const& kernel);
  // The i-th pipe or connection; a record of defaults past the end.
  boost::shared_ptr<oclPipe> getIthPipeForKernel(int i, std::string const& kernel);
  boost::shared_ptr<oclPipeConnection> getIthPipeConnectionForKernel(int i,
                                                                     std::string const& kernel);
  // A pipe of that name in any kernel; the qd:clockId of the first kernel that has it (-1 when
  // none does).
  bool isKernelPipe(std::string const& pipe);
  int getKernelPipeClockId(std::string const& pipe);
  // A connection of the kernel with the argument as its kernel end (source, else destination).
  bool isArgPipeConnection(std::string const& kernel, std::string const& argument);
  // The same for the argument found on the interface; it looks for a qd:busInterfaceRef
  // element, so in files where that is an attribute (all of ours) it answers false.
  bool isBusIfPipeConnection(std::string const& kernel, std::string const& interface);

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
// isValidQdCompPortIndex and the attribute's presence; "" or -1 otherwise. `caller` names the
// asker in the repository's messages. Exported, as the class is, for callers outside the library.
QV_EXPORT std::string getQdCompBusInterfaceStringAttrByIndex(QDSRepo& repo,
                                                             std::string const& component, int i,
                                                             std::string const& attribute,
                                                             std::string const& caller);
// The Int form of getQdCompBusInterfaceStringAttrByIndex: -1 where that answers "".
QV_EXPORT int getQdCompBusInterfaceIntAttrByIndex(QDSRepo& repo, std::string const& component,
                                                  int i, std::string const& attribute,
                                                  std::string const& caller);
// Whether the port at `i` of a component with an adapter is one half of an HLS inout argument.
bool isQdCompWithAdapterHlsInoutPort(std::string const& component, int i, QDSRepo& repo);
// ---- File level: memory objects and SP tags ----
// An attribute of the platform's memory object `object`; "" when the platform, the object or
// the attribute is not there.
std::string getMemObjectStringAttr(QDSRepo& repo, std::string const& platform,
                                   std::string const& object, std::string const& attribute);
// The same as a number (-1), and by index over the memory objects in "slave" mode.
int getMemObjectIntAttr(QDSRepo& repo, std::string const& platform, std::string const& object,
                        std::string const& attribute);
std::string getIthMemObjectStringAttr(QDSRepo& repo, int i, std::string const& platform,
                                      std::string const& attribute);
int getIthMemObjectIntAttr(QDSRepo& repo, int i, std::string const& platform,
                           std::string const& attribute);
// An attribute of the object's qd:addressSegment whose qd:baseName is `segment`.
int getMemObjectSegmentIntAttr(QDSRepo& repo, std::string const& platform,
                               std::string const& object, std::string const& segment,
                               std::string const& attribute);
std::string getMemObjectSegmentStringAttr(QDSRepo& repo, std::string const& platform,
                                          std::string const& object, std::string const& segment,
                                          std::string const& attribute);

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
