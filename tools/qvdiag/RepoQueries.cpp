#include "tools/qvdiag/RepoQueries.h"

#include <libxml/xpath.h>

#include <functional>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <type_traits>
#include <utility>

#include "host/qd/qdrepo/QDEnumerations.h"
#include "host/qd/qdrepo/QDSRepo.h"
#include "tools/qvdiag/UsageError.h"

namespace qvdiag {
namespace {

using Arguments = std::vector<std::string>;
using Call = std::function<std::string(qd::QDSRepo&, Arguments const&)>;

// An answer as the command line shows it.
template <class T>
std::string text(T const& value) {
  if constexpr (std::is_same_v<T, bool>) {
    return value ? "true" : "false";
  } else if constexpr (std::is_same_v<T, std::string>) {
    return "\"" + value + "\"";
  } else if constexpr (std::is_same_v<T, std::vector<std::string>>) {
    std::string joined;
    for (std::string const& item : value) joined += (joined.empty() ? "" : " ") + text(item);
    return joined.empty() ? "(none)" : joined;
  } else if constexpr (std::is_same_v<T, std::vector<int>>) {
    std::string joined;
    for (int item : value) joined += (joined.empty() ? "" : " ") + std::to_string(item);
    return joined.empty() ? "(none)" : joined;
  } else if constexpr (std::is_same_v<T, boost::shared_ptr<qd::oclPipe>>) {
    return "name " + text(value->name) + " depth " + text(value->depth) + " width " +
           text(value->width) + " linkage " + text(value->linkage);
  } else if constexpr (std::is_same_v<T, boost::shared_ptr<qd::oclPipeConnection>>) {
    return "srcInst " + text(value->srcInst) + " srcPort " + text(value->srcPort) + " dstInst " +
           text(value->dstInst) + " dstPort " + text(value->dstPort) + " srcType " +
           text(value->srcType) + " dstType " + text(value->dstType);
  } else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
    // A vocabulary's value prints as its number: the word tables do not always agree with it.
    return std::to_string(static_cast<long long>(value));
  } else {
    static_assert(std::is_floating_point_v<T>, "a query answers a number, a truth or text");
    std::ostringstream out;
    out << value;
    return out.str();
  }
}

int integer(std::string const& argument, std::string const& name) {
  std::size_t used = 0;
  int value = 0;
  try {
    value = std::stoi(argument, &used);
  } catch (std::exception const&) {
    used = 0;
  }
  if (used == 0 || used != argument.size()) {
    throw UsageError(name + ": '" + argument + "' is not an integer");
  }
  return value;
}

// How one parameter of a query reads from its command-line text.
template <class T>
struct Argument;
template <>
struct Argument<std::string> {
  static constexpr bool isInteger = false;
  static std::string read(std::string const& text, std::string const&) { return text; }
};
template <>
struct Argument<int> {
  static constexpr bool isInteger = true;
  static int read(std::string const& text, std::string const& query) {
    return integer(text, query);
  }
};

template <>
struct Argument<bool> {
  static constexpr bool isInteger = false;
  static bool read(std::string const& text, std::string const& query) {
    if (text == "true" || text == "1") return true;
    if (text == "false" || text == "0") return false;
    throw UsageError(query + ": '" + text + "' is not true or false");
  }
};
template <>
struct Argument<qd::datamover_t> {
  static constexpr bool isInteger = false;
  // A word the vocabulary does not know reads as its default, as in a repository file.
  static qd::datamover_t read(std::string const& text, std::string const&) {
    return qd::str2datamover_t(text);
  }
};
template <>
struct Argument<qd::channel_t> {
  static constexpr bool isInteger = false;
  static qd::channel_t read(std::string const& text, std::string const&) {
    return qd::str2channel_t(text);
  }
};

struct Entry {
  RepoQueries::Query query;
  std::vector<bool> integers;  // which parameters take an integer
  Call call;
};

template <class Method, class... Params, std::size_t... I>
std::string invoke(qd::QDSRepo& repo, Method method, Arguments const& arguments,
                   std::string const& name, std::index_sequence<I...>) {
  return text((repo.*method)(Argument<std::decay_t<Params>>::read(arguments[I], name)...));
}

// The table's entry for `method` under `name`, its parameters named as the usage shows them
// ("component", "i", ...); their number must be the method's.
template <class Ret, class... Params>
Entry query(char const* name, std::vector<std::string> const& parameters,
            Ret (qd::QDSRepo::*method)(Params...)) {
  if (parameters.size() != sizeof...(Params)) {
    throw std::logic_error(std::string("qvdiag repo: wrong parameter list for ") + name);
  }
  std::string const word = name;
  Call call = [method, word](qd::QDSRepo& repo, Arguments const& arguments) {
    return invoke<decltype(method), Params...>(repo, method, arguments, word,
                                               std::index_sequence_for<Params...>{});
  };
  return Entry{{name, parameters}, {Argument<std::decay_t<Params>>::isInteger...}, call};
}

template <class Function, class... Params, std::size_t... I>
std::string invokeFree(qd::QDSRepo& repo, Function function, Arguments const& arguments,
                       std::string const& name, std::index_sequence<I...>) {
  return text(function(repo, Argument<std::decay_t<Params>>::read(arguments[I], name)...));
}

// The entry for a file-level query that takes the repository as its first parameter; the
// parameters listed are the ones after it.
template <class Ret, class... Params>
Entry fileLevelQuery(char const* name, std::vector<std::string> const& parameters,
                     Ret (*function)(qd::QDSRepo&, Params...)) {
  if (parameters.size() != sizeof...(Params)) {
    throw std::logic_error(std::string("qvdiag repo: wrong parameter list for ") + name);
  }
  std::string const word = name;
  Call call = [function, word](qd::QDSRepo& repo, Arguments const& arguments) {
    return invokeFree<decltype(function), Params...>(repo, function, arguments, word,
                                                     std::index_sequence_for<Params...>{});
  };
  return Entry{{name, parameters}, {Argument<std::decay_t<Params>>::isInteger...}, call};
}

// The entry for a str2X conversion: a word in, the vocabulary's value out, as its number. The
// repository opened for the query has filled the tables, so a word reads as a file's would.
template <class Enum>
Entry wordToValue(char const* name, Enum (*convert)(std::string)) {
  Call call = [convert](qd::QDSRepo&, Arguments const& arguments) {
    return text(convert(arguments[0]));
  };
  return Entry{{name, {"word"}}, {false}, call};
}

// The entry for an X2str conversion: a value in, by its number, and its word out. `largest` is
// the vocabulary's largest value. An enumeration like these holds only the numbers that fit in
// the bits of its largest value, so a number beyond them is refused here: it is no value of the
// type. Any number it holds goes to the conversion, which throws std::out_of_range for one past
// the end of its word table.
template <class Enum>
Entry valueToWord(char const* name, std::string (*convert)(Enum), Enum largest) {
  long long holds = 0;
  while (holds < static_cast<long long>(largest)) holds = holds * 2 + 1;
  std::string const word = name;
  std::string const type = word.substr(0, word.size() - std::string("2str").size());
  Call call = [convert, holds, word, type](qd::QDSRepo&, Arguments const& arguments) {
    int const value = integer(arguments[0], word);
    if (value < 0 || value > holds) {
      throw UsageError(word + ": " + std::to_string(value) + " is out of the range of " + type +
                       ", 0 to " + std::to_string(holds));
    }
    return text(convert(static_cast<Enum>(value)));
  };
  return Entry{{name, {"value"}}, {true}, call};
}

// An entry for a method that also answers through reference parameters: `call` asks it with
// the command-line arguments and prints what it answers, out values included.
Entry withOutputs(char const* name, std::vector<std::string> const& parameters, Call call) {
  return Entry{{name, parameters}, std::vector<bool>(parameters.size(), false), std::move(call)};
}

std::string disassembleRangeSpTag(qd::QDSRepo& repo, Arguments const& arguments) {
  std::string base;
  int low = 0;
  int high = 0;
  repo.disassembleRangeSpTag(arguments[0], base, low, high);
  return "base " + text(base) + " low " + text(low) + " high " + text(high);
}

std::string getPlatformNocResources(qd::QDSRepo& repo, Arguments const& arguments) {
  // Untouched outputs show as -1, which is also what an absent estimate reads as.
  int plNmu = -1, plNsu = -1, aieNmu = -1, aieNsu = -1, hbmNmu = -1;
  bool const found =
      repo.getPlatformNocResources(arguments[0], plNmu, plNsu, aieNmu, aieNsu, hbmNmu);
  return text(found) + " plNmu " + text(plNmu) + " plNsu " + text(plNsu) + " aieNmu " +
         text(aieNmu) + " aieNsu " + text(aieNsu) + " hbmNmu " + text(hbmNmu);
}

std::string getPlatformNocChannelBandwidth(qd::QDSRepo& repo, Arguments const& arguments) {
  int bandwidth = -1;
  bool const found = repo.getPlatformNocChannelBandwidth(arguments[0], bandwidth);
  return text(found) + " bandwidth " + text(bandwidth);
}

std::vector<Entry> const& allEntries() {
  using R = qd::QDSRepo;
  // An overloaded method is listed once per form, the forms with an index first: ask() takes
  // the first form whose index parameters read as integers.
  static std::vector<Entry> const kEntries = {
      // Core
      query("getNumQdComponents", {}, &R::getNumQdComponents),
      query("getIthQdComponent", {"i"}, &R::getIthQdComponent),
      query("checkDatabase", {}, &R::checkDatabase),
      query("checkQdHwFcn", {"function"}, &R::checkQdHwFcn),
      // Vocabularies: a word to its value, and a value to its word
      wordToValue("str2comp_t", &qd::str2comp_t),
      wordToValue("str2port_t", &qd::str2port_t),
      wordToValue("str2datamover_t", &qd::str2datamover_t),
      wordToValue("str2channel_t", &qd::str2channel_t),
      wordToValue("str2cpu_t", &qd::str2cpu_t),
      wordToValue("str2device_t", &qd::str2device_t),
      wordToValue("str2mode_t", &qd::str2mode_t),
      wordToValue("str2dir_t", &qd::str2dir_t),
      wordToValue("str2monitor_t", &qd::str2monitor_t),
      wordToValue("str2memport_t", &qd::str2memport_t),
      wordToValue("str2linkage_t", &qd::str2linkage_t),
      wordToValue("str2noc_resource_t", &qd::str2noc_resource_t),
      valueToWord("comp_t2str", &qd::comp_t2str, qd::COMP_PIPE),
      valueToWord("port_t2str", &qd::port_t2str, qd::PORT_MEMOBJECT),
      valueToWord("datamover_t2str", &qd::datamover_t2str, qd::DATAMOVER_FAST_DMA),
      valueToWord("channel_t2str", &qd::channel_t2str, qd::CHANNEL_MM2MM),
      valueToWord("cpu_t2str", &qd::cpu_t2str, qd::CPU_POWER8),
      valueToWord("mode_t2str", &qd::mode_t2str, qd::MODE_NO_MODE),
      valueToWord("dir_t2str", &qd::dir_t2str, qd::DIR_NO_DIR),
      valueToWord("monitor_t2str", &qd::monitor_t2str, qd::MONITOR_TRACE),
      valueToWord("memport_t2str", &qd::memport_t2str, qd::MEMPORT_MIG),
      valueToWord("linkage_t2str", &qd::linkage_t2str, qd::LINKAGE_EXTERNAL),
      valueToWord("noc_resource_t2str", &qd::noc_resource_t2str, qd::NOC_RESOURCE_HBM_NMU),
      // Components
      query("isQdComp", {"component"}, &R::isQdComp),
      query("isQdAcceleratorComp", {"component"}, &R::isQdAcceleratorComp),
      query("isQdDatamoverComp", {"component"}, &R::isQdDatamoverComp),
      query("isQdMonitorComp", {"component"}, &R::isQdMonitorComp),
      query("isQdInterconnectComp", {"component"}, &R::isQdInterconnectComp),
      query("isQdSmartConnectComp", {"component"}, &R::isQdSmartConnectComp),
      query("isQdPlatformComp", {"component"}, &R::isQdPlatformComp),
      query("getQdCompType", {"component"}, &R::getQdCompType),
      query("isQdCompWithAdapter", {"component"}, &R::isQdCompWithAdapter),
      query("isQdAdapteeComp", {"component"}, &R::isQdAdapteeComp),
      query("getQdPlatformComp", {}, &R::getQdPlatformComp),
      query("isQdCompPort", {"component", "port"}, &R::isQdCompPort),
      query("isQdCompAxiPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompAxiPort)),
      query("isQdCompAxiPort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(&R::isQdCompAxiPort)),
      query("isQdCompClockPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompClockPort)),
      query(
          "isQdCompClockPort", {"component", "port"},
          static_cast<bool (R::*)(std::string const&, std::string const&)>(&R::isQdCompClockPort)),
      query("getQdCompNumPorts", {"component"},
            static_cast<int (R::*)(std::string const&)>(&R::getQdCompNumPorts)),
      query("getQdCompNumPorts", {"component", "type", "mode"},
            static_cast<int (R::*)(std::string const&, std::string const&, std::string const&)>(
                &R::getQdCompNumPorts)),
      query("isValidQdCompPortIndex", {"component", "i"}, &R::isValidQdCompPortIndex),
      query("getQdCompPortName", {"component", "i"}, &R::getQdCompPortName),
      query("getQdCompPortType", {"component", "i"},
            static_cast<std::string (R::*)(std::string const&, int)>(&R::getQdCompPortType)),
      query("getQdCompPortType", {"component", "port"},
            static_cast<std::string (R::*)(std::string const&, std::string const&)>(
                &R::getQdCompPortType)),
      query("getQdCompPortDir", {"component", "i"},
            static_cast<std::string (R::*)(std::string const&, int)>(&R::getQdCompPortDir)),
      query("getQdCompPortDir", {"component", "port"},
            static_cast<std::string (R::*)(std::string const&, std::string const&)>(
                &R::getQdCompPortDir)),
      query("getQdCompPortMode", {"component", "i"},
            static_cast<std::string (R::*)(std::string const&, int)>(&R::getQdCompPortMode)),
      query("getQdCompPortMode", {"component", "port"},
            static_cast<std::string (R::*)(std::string const&, std::string const&)>(
                &R::getQdCompPortMode)),
      query("isQdCompQdPort", {"component", "port"}, &R::isQdCompQdPort),
      query("getQdCompQdPortDir", {"component", "port"}, &R::getQdCompQdPortDir),
      query("getQdCompPortStringAttr", {"component", "port", "attribute"},
            &R::getQdCompPortStringAttr),
      query("getQdCompBusInterfaceStringAttr", {"component", "port", "attribute"},
            &R::getQdCompBusInterfaceStringAttr),
      fileLevelQuery("getQdCompBusInterfaceStringAttrByIndex",
                     {"component", "i", "attribute", "caller"},
                     &qd::getQdCompBusInterfaceStringAttrByIndex),
      fileLevelQuery("getQdCompBusInterfaceIntAttrByIndex",
                     {"component", "i", "attribute", "caller"},
                     &qd::getQdCompBusInterfaceIntAttrByIndex),
      query("getQdCompBusInterfacePort", {"component", "port"}, &R::getQdCompBusInterfacePort),
      query("getQdCompBusInterfaceInstanceRef", {"component", "port"},
            &R::getQdCompBusInterfaceInstanceRef),
      query("getQdCompBusInterfaceComponentRef", {"component", "port"},
            &R::getQdCompBusInterfaceComponentRef),
      query("getQdCompBusInterfaceBusInterfaceRef", {"component", "port"},
            &R::getQdCompBusInterfaceBusInterfaceRef),
      query("getQdCompBusInterfaceMemObject", {"component", "port"},
            &R::getQdCompBusInterfaceMemObject),
      query("isQdAdapterComp", {"component"}, &R::isQdAdapterComp),
      query("isAddressableQdComp", {"component"}, &R::isAddressableQdComp),
      query("isQdCompSCAdapter", {"component"}, &R::isQdCompSCAdapter),
      query("isQdCompStringAttr", {"component", "attribute"}, &R::isQdCompStringAttr),
      query("isQdCompBusInterface", {"component", "port"}, &R::isQdCompBusInterface),
      query("isQdCompBusInterfacePort", {"component", "port"}, &R::isQdCompBusInterfacePort),
      query("isValidQdCompIthPortAttr", {"component", "i", "attribute"},
            &R::isValidQdCompIthPortAttr),
      query("isQdCompPortReturnType", {"component", "port"}, &R::isQdCompPortReturnType),
      query("isQdCompResetPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompResetPort)),
      query(
          "isQdCompResetPort", {"component", "port"},
          static_cast<bool (R::*)(std::string const&, std::string const&)>(&R::isQdCompResetPort)),
      query("isQdCompInterruptPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompInterruptPort)),
      query("isQdCompInterruptPort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(
                &R::isQdCompInterruptPort)),
      query("isQdCompRegisterPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompRegisterPort)),
      query("isQdCompRegisterPort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(
                &R::isQdCompRegisterPort)),
      query("isQdCompMasterPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompMasterPort)),
      query(
          "isQdCompMasterPort", {"component", "port"},
          static_cast<bool (R::*)(std::string const&, std::string const&)>(&R::isQdCompMasterPort)),
      query("isQdCompSlavePort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompSlavePort)),
      query(
          "isQdCompSlavePort", {"component", "port"},
          static_cast<bool (R::*)(std::string const&, std::string const&)>(&R::isQdCompSlavePort)),
      query("isQdCompAxiSlavePort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompAxiSlavePort)),
      query("isQdCompAxiSlavePort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(
                &R::isQdCompAxiSlavePort)),
      query("isQdCompAxiMasterPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompAxiMasterPort)),
      query("isQdCompAxiMasterPort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(
                &R::isQdCompAxiMasterPort)),
      query("isQdCompAxilitePort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompAxilitePort)),
      query("isQdCompAxilitePort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(
                &R::isQdCompAxilitePort)),
      query("isQdCompAxisPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompAxisPort)),
      query("isQdCompAxisPort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(&R::isQdCompAxisPort)),
      query("isQdCompAxisSlavePort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompAxisSlavePort)),
      query("isQdCompAxisSlavePort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(
                &R::isQdCompAxisSlavePort)),
      query("isQdCompAxisMasterPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompAxisMasterPort)),
      query("isQdCompAxisMasterPort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(
                &R::isQdCompAxisMasterPort)),
      query("isQdCompBramPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompBramPort)),
      query("isQdCompBramPort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(&R::isQdCompBramPort)),
      query("isQdCompFifoPort", {"component", "i"},
            static_cast<bool (R::*)(std::string const&, int)>(&R::isQdCompFifoPort)),
      query("isQdCompFifoPort", {"component", "port"},
            static_cast<bool (R::*)(std::string const&, std::string const&)>(&R::isQdCompFifoPort)),
      query("isQdCompAcpPort", {"component", "port"}, &R::isQdCompAcpPort),
      query("isQdCompGpPort", {"component", "port"}, &R::isQdCompGpPort),
      query("isQdCompHpPort", {"component", "port"}, &R::isQdCompHpPort),
      query("isQdCompHpcPort", {"component", "port"}, &R::isQdCompHpcPort),
      query("isQdCompMigPort", {"component", "port"}, &R::isQdCompMigPort),
      query("is_qdmemport_type", {"component", "port", "memport"}, &R::is_qdmemport_type),
      query("isQdPlatformCompProcessor", {"component", "port"}, &R::isQdPlatformCompProcessor),
      query("isQdCompPlatformAxisPort", {"component", "port"}, &R::isQdCompPlatformAxisPort),
      query("isCoherentQdCompPort", {"component", "port"}, &R::isCoherentQdCompPort),
      query("isQdCompHlsInoutPort", {"component", "i"}, &R::isQdCompHlsInoutPort),
      query("isAxiClockRef", {"component", "port"}, &R::isAxiClockRef),
      query("isAxiResetRef", {"component", "port"}, &R::isAxiResetRef),
      query("qdCompAxisPortHasTlast", {"component", "port"}, &R::qdCompAxisPortHasTlast),
      query("qdCompPortIsPacked", {"component", "port"}, &R::qdCompPortIsPacked),
      query("qdCompIthPortIsPacked", {"component", "i"}, &R::qdCompIthPortIsPacked),
      query("getQdCompCompRef", {"component"}, &R::getQdCompCompRef),
      query("getQdAdapterCompRef", {"component"}, &R::getQdAdapterCompRef),
      query("getQdAdapteeCompRef", {"component"}, &R::getQdAdapteeCompRef),
      query("getQdCompStringAttr", {"component", "attribute"}, &R::getQdCompStringAttr),
      query("getQdCompBusIntfAttr", {"component", "port", "attribute"}, &R::getQdCompBusIntfAttr),
      query("getQdCompRegionSize", {"component"}, &R::getQdCompRegionSize),
      query("getQdCompControlProtocol", {"component"}, &R::getQdCompControlProtocol),
      query("getNumAieConfigs", {"component"}, &R::getNumAieConfigs),
      query("getIthAieConfigPeer", {"component", "i"}, &R::getIthAieConfigPeer),
      query("getIthQdCompBusInterfacePort", {"component", "i"}, &R::getIthQdCompBusInterfacePort),
      query("getQdCompPortDataWidth", {"component", "port"}, &R::getQdCompPortDataWidth),
      query("getQdCompPortPackedDataWidth", {"component", "port"},
            &R::getQdCompPortPackedDataWidth),
      query("getQdCompPortRegionSize", {"component", "port"}, &R::getQdCompPortRegionSize),
      query("getQdCompPortNumElements", {"component", "port"}, &R::getQdCompPortNumElements),
      query("getQdCompPortCapacity", {"component", "port"}, &R::getQdCompPortCapacity),
      query("getQdCompPortBufferDepth", {"component", "port"}, &R::getQdCompPortBufferDepth),
      query("getQdCompPortArraySize", {"component", "port"}, &R::getQdCompPortArraySize),
      query("getQdCompPortIntAttr", {"component", "port", "attribute"}, &R::getQdCompPortIntAttr),
      query("getQdCompPortIntAttrByIndex", {"component", "i", "attribute"},
            &R::getQdCompPortIntAttrByIndex),
      query("getQdCompPortStringAttrByIndex", {"component", "i", "attribute"},
            &R::getQdCompPortStringAttrByIndex),
      query("getQdCompBusInterfaceIntAttr", {"component", "port", "attribute"},
            &R::getQdCompBusInterfaceIntAttr),
      query("getQdCompBusInterfaceStrAttr", {"component", "port", "attribute"},
            &R::getQdCompBusInterfaceStrAttr),
      query("getQdCompBusInterfacePortAttr", {"component", "port", "attribute"},
            &R::getQdCompBusInterfacePortAttr),
      query("getQdCompBusInterfacePortName", {"component", "port"},
            &R::getQdCompBusInterfacePortName),
      query("getQdCompBusInterfacePortType", {"component", "port"},
            &R::getQdCompBusInterfacePortType),
      query("getQdCompBusInterfacePortMode", {"component", "port"},
            &R::getQdCompBusInterfacePortMode),
      query("getQdCompBusInterfacePortDir", {"component", "port"},
            &R::getQdCompBusInterfacePortDir),
      query("getQdCompBusInterfaceSptag", {"component", "port"}, &R::getQdCompBusInterfaceSptag),
      query("getQdBusTypeRef", {"component", "port"}, &R::getQdBusTypeRef),
      query("getQdCompAxiMasterPortName", {"component", "i"}, &R::getQdCompAxiMasterPortName),
      query("getQdCompAxiSlavePortName", {"component", "i"}, &R::getQdCompAxiSlavePortName),
      query("getQdCompAxisMasterPortName", {"component", "i"}, &R::getQdCompAxisMasterPortName),
      query("getQdCompAxisSlavePortName", {"component", "i"}, &R::getQdCompAxisSlavePortName),
      query("getQdCompAxisPortInterfaceType", {"component", "port"},
            &R::getQdCompAxisPortInterfaceType),
      query("getQdCompPlatformAxisPortSlr", {"component", "port"},
            &R::getQdCompPlatformAxisPortSlr),
      query("getQdPortClockRef", {"component", "port"}, &R::getQdPortClockRef),
      query("getQdPortResetRef", {"component", "port"}, &R::getQdPortResetRef),
      query("getQdCompAxiPortClockPort", {"component", "port"}, &R::getQdCompAxiPortClockPort),
      query("getQdCompAxiPortResetPort", {"component", "port"}, &R::getQdCompAxiPortResetPort),
      query("getAxiResetRefsForAxiClockRef", {"component", "clock"},
            &R::getAxiResetRefsForAxiClockRef),
      query("getAxiClockRefForAxiReset", {"component", "reset"}, &R::getAxiClockRefForAxiReset),
      query("getAxiResetRefForAxiClock", {"component", "clock"}, &R::getAxiResetRefForAxiClock),
      query("getIthCompClkSlavePortForInst", {"component", "instance", "i"},
            &R::getIthCompClkSlavePortForInst),
      query("getQdAdapterPort", {"component", "port"}, &R::getQdAdapterPort),
      query("resolveQdCompPortToBusInterface", {"component", "port"},
            &R::resolveQdCompPortToBusInterface),
      query("directQdPortConnectionPossible", {"componentA", "portA", "componentB", "portB"},
            &R::directQdPortConnectionPossible),
      query("hasDataMoverForPlatformConn", {"componentA", "portA", "componentB", "portB"},
            &R::hasDataMoverForPlatformConn),
      query("getDatamoverMaxNumChannels", {"datamover", "channel"}, &R::getDatamoverMaxNumChannels),
      query("getNumQdCompAxiPortIds", {"component", "port"}, &R::getNumQdCompAxiPortIds),
      query("getInterconnectPortIndex", {"component", "port"}, &R::getInterconnectPortIndex),
      query("getNumMastersForInterconnectPort", {"component", "port"},
            &R::getNumMastersForInterconnectPort),
      query("getNumSlavesForInterconnectPort", {"component", "port"},
            &R::getNumSlavesForInterconnectPort),
      query("getInterconnectPortFollowingSibling", {"component", "port"},
            &R::getInterconnectPortFollowingSibling),
      // Memory objects
      query("getMemObjectInstRef", {"platform", "object"}, &R::getMemObjectInstRef),
      query("getMemObjectSlr", {"platform", "object"}, &R::getMemObjectSlr),
      query("getMemObjectMemPort", {"platform", "object"}, &R::getMemObjectMemPort),
      query("isRangeSpTag", {"tag"}, &R::isRangeSpTag),
      withOutputs("disassembleRangeSpTag", {"tag"}, disassembleRangeSpTag),
      query("assembleRangeSpTag", {"base", "low", "high"}, &R::assembleRangeSpTag),
      query("splitSpTag", {"tag"}, &R::splitSpTag),
      query("normalizeSpTag", {"platform", "tag"}, &R::normalizeSpTag),
      query("isValidSpTag", {"platform", "tag"}, &R::isValidSpTag),
      query("getSpTagRangeMax", {"platform", "tag"}, &R::getSpTagRangeMax),
      query("getAllSpTags", {"platform"}, &R::getAllSpTags),
      query("getSpTagProtocol", {"platform", "tag"}, &R::getSpTagProtocol),
      query("getSpTagMode", {"platform", "tag"}, &R::getSpTagMode),
      query("getSpTagMemorySpace", {"platform", "tag"}, &R::getSpTagMemorySpace),
      query("isSpTagMemory", {"platform", "tag"}, &R::isSpTagMemory),
      query("getSpTagSwName", {"platform", "tag"}, &R::getSpTagSwName),
      query("isSpTagCoherent", {"platform", "tag"}, &R::isSpTagCoherent),
      query("getSpTagDataWidth", {"platform", "tag"}, &R::getSpTagDataWidth),
      query("getSpTagPeakBw", {"platform", "tag"}, &R::getSpTagPeakBw),
      query("getSpTagSlrs", {"platform", "tag", "unique"}, &R::getSpTagSlrs),
      query("getSpTagAutoEnable", {"platform", "tag"}, &R::getSpTagAutoEnable),
      query("getSpTagMaxMasters", {"platform", "object", "tag"}, &R::getSpTagMaxMasters),
      query("getMemObjectsFromSpTag", {"platform", "tag"}, &R::getMemObjectsFromSpTag),
      query("getMemObjectSegmentsForSpTag", {"platform", "object", "tag"},
            &R::getMemObjectSegmentsForSpTag),
      query("getMemObjectMemInstsForSpTag", {"platform", "object", "tag"},
            &R::getMemObjectMemInstsForSpTag),
      query("getMemObjectMemInterfaceForSpTag", {"platform", "object", "tag"},
            &R::getMemObjectMemInterfaceForSpTag),
      query("getMemObjectAddressSegment", {"platform", "object"}, &R::getMemObjectAddressSegment),
      query("getMemObjectCompRef", {"platform", "object"}, &R::getMemObjectCompRef),
      query("getMemObjectSptag", {"platform", "object"}, &R::getMemObjectSptag),
      query("getMemObjectDataWidth", {"platform", "object"}, &R::getMemObjectDataWidth),
      query("getMemObjectPeakMemoryBandwidth", {"platform", "object"},
            &R::getMemObjectPeakMemoryBandwidth),
      query("getMemObjectMaxMasters", {"object", "platform"}, &R::getMemObjectMaxMasters),
      query("getIthMemObject", {"i", "platform"}, &R::getIthMemObject),
      query("getIthMemObjectMemport", {"i", "platform"}, &R::getIthMemObjectMemport),
      query("getIthMemObjectMemoryInstRef", {"i", "platform"}, &R::getIthMemObjectMemoryInstRef),
      query("getIthMemObjectAddressSegment", {"i", "platform"}, &R::getIthMemObjectAddressSegment),
      query("getIthMemObjectCompRef", {"i", "platform"}, &R::getIthMemObjectCompRef),
      query("getIthMemObjectInstRef", {"i", "platform"}, &R::getIthMemObjectInstRef),
      query("getIthMemObjectSptag", {"i", "platform"}, &R::getIthMemObjectSptag),
      query("getIthMemObjectSlr", {"i", "platform"}, &R::getIthMemObjectSlr),
      query("getIthMemObjectDataWidth", {"i", "platform"}, &R::getIthMemObjectDataWidth),
      query("getIthMemObjectPeakMemoryBandwidth", {"i", "platform"},
            &R::getIthMemObjectPeakMemoryBandwidth),
      query("getIthMemObjectMaxMasters", {"i", "platform"}, &R::getIthMemObjectMaxMasters),
      query("getNumMemObjects", {"platform"}, &R::getNumMemObjects),
      query("isMemObject", {"platform", "object"}, &R::isMemObject),
      query("getNumSptagsForMemObject", {"platform", "memport"}, &R::getNumSptagsForMemObject),
      query("getIthSptagForMemObject", {"i", "platform", "memport"}, &R::getIthSptagForMemObject),
      query("getPortForMemObjectSptag", {"platform", "memport", "tag"},
            &R::getPortForMemObjectSptag),
      query("getPortForSptag", {"platform", "tag"}, &R::getPortForSptag),
      query("getAllSlrs", {"component"}, &R::getAllSlrs),
      query("getQdCompPlatformInstanceSlr", {"platform", "port"}, &R::getQdCompPlatformInstanceSlr),
      // Hardware functions
      query("isQdHwFcn", {"function"}, &R::isQdHwFcn),
      query("getNumQdHwFcns", {}, static_cast<int (R::*)()>(&R::getNumQdHwFcns)),
      query("getIthQdHwFcn", {"i"}, static_cast<std::string (R::*)(int)>(&R::getIthQdHwFcn)),
      query("getQdHwFcnQdComponentRef", {"function"}, &R::getQdHwFcnQdComponentRef),
      query("isQdHwHlsOpenclFcn", {"function"}, &R::isQdHwHlsOpenclFcn),
      query("isQdPlatformHwFcn", {"function"}, &R::isQdPlatformHwFcn),
      query("getQdHwFcnCtrlRegType", {"function"}, &R::getQdHwFcnCtrlRegType),
      query("getQdHwFcnReturnOffset", {"function"}, &R::getQdHwFcnReturnOffset),
      query("getNumQdHwFcnArgs1", {"function"}, &R::getNumQdHwFcnArgs1),
      query("getNumQdHwFcnArgs", {"function"}, &R::getNumQdHwFcnArgs),
      query("isQdHwFcnArg", {"function", "argument"}, &R::isQdHwFcnArg),
      query("getIthQdHwFcnArg1", {"function", "i"}, &R::getIthQdHwFcnArg1),
      query("getIthQdHwFcnArgBusInterfaceRef1", {"function", "i"},
            &R::getIthQdHwFcnArgBusInterfaceRef1),
      query("getIthQdHwFcnArgHwName1", {"function", "i"}, &R::getIthQdHwFcnArgHwName1),
      query("getIthQdHwFcnArgAximmMasterRef1", {"function", "i"},
            &R::getIthQdHwFcnArgAximmMasterRef1),
      query("ithQdHwFcnArgIsAximmMasterPtr1", {"function", "i"},
            &R::ithQdHwFcnArgIsAximmMasterPtr1),
      query("ithQdHwFcnArgIsAximmMasterPtr", {"function", "i"}, &R::ithQdHwFcnArgIsAximmMasterPtr),
      query("qdHwFcnArgIsAximmMasterPtr", {"function", "argument"}, &R::qdHwFcnArgIsAximmMasterPtr),
      query("getIthQdHwFcnArgPortInterfaceType1", {"function", "i"},
            &R::getIthQdHwFcnArgPortInterfaceType1),
      query("getIthQdHwFcnArgOffset", {"function", "i"}, &R::getIthQdHwFcnArgOffset),
      query("getIthQdHwFcnArgDataWidth", {"function", "i"}, &R::getIthQdHwFcnArgDataWidth),
      query("qdHwFcnArgIsPacked", {"function", "argument"}, &R::qdHwFcnArgIsPacked),
      query("getQdHwFcnArgPackedDataWidth", {"function", "argument"},
            &R::getQdHwFcnArgPackedDataWidth),
      query("getIthQdHwFcnArgPackedDataWidth1", {"function", "i"},
            &R::getIthQdHwFcnArgPackedDataWidth1),
      query("isQdHwFcnArrayArg", {"function", "argument"}, &R::isQdHwFcnArrayArg),
      query("getIthQdHwFcnArgArraySize1", {"function", "i"}, &R::getIthQdHwFcnArgArraySize1),
      query("getNumQdHwFcns", {"component"},
            static_cast<int (R::*)(std::string const&)>(&R::getNumQdHwFcns)),
      query("getNumQdHwFcnsForQdComp", {"component"}, &R::getNumQdHwFcnsForQdComp),
      query("getIthQdHwFcn", {"i", "component"},
            static_cast<std::string (R::*)(int, std::string const&)>(&R::getIthQdHwFcn)),
      query("getIthQdHwFcnForQdComp", {"component", "i"}, &R::getIthQdHwFcnForQdComp),
      query("getNumQdHwFcnInputArgs", {"function"}, &R::getNumQdHwFcnInputArgs),
      query("getNumQdHwFcnOutputArgs", {"function"}, &R::getNumQdHwFcnOutputArgs),
      query("getNumQdHwFcnArgsForBusInterfaceRef", {"function", "port"},
            &R::getNumQdHwFcnArgsForBusInterfaceRef),
      query("getIthQdHwFcnArgForBusInterfaceRef", {"function", "port", "i"},
            &R::getIthQdHwFcnArgForBusInterfaceRef),
      query("getNumQdHwFcnBusInterfacesOfType", {"function", "type"},
            static_cast<int (R::*)(std::string const&, std::string const&)>(
                &R::getNumQdHwFcnBusInterfacesOfType)),
      query("getNumQdHwFcnBusInterfacesOfType", {"function", "type", "direction"},
            static_cast<int (R::*)(std::string const&, std::string const&, std::string const&)>(
                &R::getNumQdHwFcnBusInterfacesOfType)),
      query("isQdHwLibraryFcn", {"function"}, &R::isQdHwLibraryFcn),
      query("isQdHwHlsFcn", {"function"}, &R::isQdHwHlsFcn),
      query("isQdHwHdlFcn", {"function"}, &R::isQdHwHdlFcn),
      query("isQdHwHlsAdapterFcn", {"function"}, &R::isQdHwHlsAdapterFcn),
      query("getQdHwFcnTypeString", {"function"}, &R::getQdHwFcnTypeString),
      query("getQdHwFcnFlow", {"function"}, &R::getQdHwFcnFlow),
      query("getQdHwFcnMinClockPeriod", {"function"}, &R::getQdHwFcnMinClockPeriod),
      query("getQdCompMinClockPeriod", {"component"}, &R::getQdCompMinClockPeriod),
      query("getQdHwFcnClockId", {"function"}, &R::getQdHwFcnClockId),
      query("getQdHwFcnInitiationInterval", {"function"}, &R::getQdHwFcnInitiationInterval),
      query("getQdHwFcnHostCpuWordSize", {"function"}, &R::getQdHwFcnHostCpuWordSize),
      query("isSequentialQdHwFcn", {"function"}, &R::isSequentialQdHwFcn),
      query("isTemplateQdHwFcn", {"function"}, &R::isTemplateQdHwFcn),
      query("getQdHwFcnTemplateInstantiation", {"function"}, &R::getQdHwFcnTemplateInstantiation),
      query("qdHwFcnIsRTL", {"function"}, &R::qdHwFcnIsRTL),
      query("qdHwFcnIsMFA", {"function"}, &R::qdHwFcnIsMFA),
      query("qdHwFcnIsNoExec", {"function"}, &R::qdHwFcnIsNoExec),
      query("qdHwFcnIsTemplate", {"function"}, &R::qdHwFcnIsTemplate),
      query("getQdHwFcnParamFile", {"function"}, &R::getQdHwFcnParamFile),
      query("getQdHwFcnResourceId", {"function"}, &R::getQdHwFcnResourceId),
      query("getQdHwFcnInterruptName", {"function"}, &R::getQdHwFcnInterruptName),
      query("qdHwFcnHasInterrupt", {"function"}, &R::qdHwFcnHasInterrupt),
      query("qdCompInterruptUsedByFcn", {"component", "port"}, &R::qdCompInterruptUsedByFcn),
      query("getQdHwFcnResourceEstimate", {"function", "resource"}, &R::getQdHwFcnResourceEstimate),
      query("getQdCompResourceEstimate", {"component", "resource"}, &R::getQdCompResourceEstimate),
      query("getQdHwFcnReturnHwName", {"function"}, &R::getQdHwFcnReturnHwName),
      query("getQdHwFcnReturnBusInterfaceRef", {"function"}, &R::getQdHwFcnReturnBusInterfaceRef),
      query("getQdHwFcnReturnDataWidth", {"function"}, &R::getQdHwFcnReturnDataWidth),
      query("getQdHwFcnReturnValueWidth", {"function"}, &R::getQdHwFcnReturnValueWidth),
      query("getQdHwFcnReturnIndex", {"function"}, &R::getQdHwFcnReturnIndex),
      query("getQdHwFcnBusInterfaceRefForHwName", {"function", "hwName"},
            &R::getQdHwFcnBusInterfaceRefForHwName),
      query("getQdHwFcnCtrlReg", {"function"}, &R::getQdHwFcnCtrlReg),
      query("getQdHwFcnCtrlRegBusInterfaceRef", {"function"}, &R::getQdHwFcnCtrlRegBusInterfaceRef),
      query("getQdHwFcnCtrlRegOffset", {"function"}, &R::getQdHwFcnCtrlRegOffset),
      query("getQdHwFcnCtrlRegBufferDepth", {"function"}, &R::getQdHwFcnCtrlRegBufferDepth),
      query("getQdHwFcnArgLenRegBusInterfaceRef", {"function"},
            &R::getQdHwFcnArgLenRegBusInterfaceRef),
      query("getQdHwFcnArgLenRegOffset", {"function"}, &R::getQdHwFcnArgLenRegOffset),
      query("getQdHwFcnCtrlProtocol", {"function"}, &R::getQdHwFcnCtrlProtocol),
      query("getQdHwFcnControlProtocol", {"function"}, &R::getQdHwFcnControlProtocol),
      query("getQdHwFcnWorstCaseLatencyEstimate", {"function"},
            &R::getQdHwFcnWorstCaseLatencyEstimate),
      query("getQdHwFcnAverageCaseLatencyEstimate", {"function"},
            &R::getQdHwFcnAverageCaseLatencyEstimate),
      query("getQdHwFcnArgHwName", {"function", "argument"}, &R::getQdHwFcnArgHwName),
      query("getIthQdHwFcnArgHwName", {"function", "i"}, &R::getIthQdHwFcnArgHwName),
      query("getQdHwFcnArgSwRootName", {"function", "argument"}, &R::getQdHwFcnArgSwRootName),
      query("getIthQdHwFcnArgSwRootName1", {"function", "i"}, &R::getIthQdHwFcnArgSwRootName1),
      query("getIthQdHwFcnArgSwRootName", {"function", "i"}, &R::getIthQdHwFcnArgSwRootName),
      query("getQdHwFcnArgBusInterfaceRef1", {"function", "argument"},
            &R::getQdHwFcnArgBusInterfaceRef1),
      query("getIthQdHwFcnArgBusInterfaceRef", {"function", "i"},
            &R::getIthQdHwFcnArgBusInterfaceRef),
      query("getQdHwFcnArgOffset1", {"function", "argument"}, &R::getQdHwFcnArgOffset1),
      query("getIthQdHwFcnArgBitmapping", {"function", "i"}, &R::getIthQdHwFcnArgBitmapping),
      query("getQdHwFcnArgAximmMasterRef", {"function", "argument"},
            &R::getQdHwFcnArgAximmMasterRef),
      query("getIthQdHwFcnArgAximmMasterRef", {"function", "i"},
            &R::getIthQdHwFcnArgAximmMasterRef),
      query("getQdHwFcnArgBufferDepth", {"function", "argument"}, &R::getQdHwFcnArgBufferDepth),
      query("getIthQdHwFcnArgBufferDepth", {"function", "i"}, &R::getIthQdHwFcnArgBufferDepth),
      query("getQdHwFcnArgMultiBufferDepth", {"function", "argument"},
            &R::getQdHwFcnArgMultiBufferDepth),
      query("getIthQdHwFcnArgMultiBufferDepth", {"function", "i"},
            &R::getIthQdHwFcnArgMultiBufferDepth),
      query("getKernelArgId", {"function", "argument"}, &R::getKernelArgId),
      query("getIthKernelArgId", {"function", "i"}, &R::getIthKernelArgId),
      query("getIthQdHwFcnArg", {"function", "i"}, &R::getIthQdHwFcnArg),
      query("getIthQdHwFcnArgPackedHwName", {"function", "i"}, &R::getIthQdHwFcnArgPackedHwName),
      query("getIthQdHwFcnArgDataWidth1", {"function", "i"}, &R::getIthQdHwFcnArgDataWidth1),
      query("getQdHwFcnArgDataWidth1", {"function", "argument"}, &R::getQdHwFcnArgDataWidth1),
      query("getIthQdHwFcnArgDirection1", {"function", "i"}, &R::getIthQdHwFcnArgDirection1),
      query("getIthQdHwFcnArgDirection", {"function", "i"}, &R::getIthQdHwFcnArgDirection),
      query("getQdHwFcnArgDirection", {"function", "argument"}, &R::getQdHwFcnArgDirection),
      query("getIthQdHwFcnArgArraySize", {"function", "i"}, &R::getIthQdHwFcnArgArraySize),
      query("getQdHwFcnArgArraySize", {"function", "argument"}, &R::getQdHwFcnArgArraySize),
      query("getIthQdHwFcnArgPortInterfaceType", {"function", "i"},
            &R::getIthQdHwFcnArgPortInterfaceType),
      query("getQdHwFcnArgPortInterfaceType", {"function", "argument"},
            &R::getQdHwFcnArgPortInterfaceType),
      query("getQdHwFcnArgBusInterfaceRef", {"function", "argument"},
            &R::getQdHwFcnArgBusInterfaceRef),
      query("getQdHwFcnArgBusInterfaceRef2", {"function", "argument"},
            &R::getQdHwFcnArgBusInterfaceRef2),
      query("getQdHwFcnArgDataWidth", {"function", "argument"}, &R::getQdHwFcnArgDataWidth),
      query("getQdHwFcnArgOffset", {"function", "argument"}, &R::getQdHwFcnArgOffset),
      query("getQdHwFcnArgIndex", {"function", "argument"}, &R::getQdHwFcnArgIndex),
      query("getQdHwFcnArgIndex1", {"function", "argument"}, &R::getQdHwFcnArgIndex1),
      query("getIthQdHwFcnArgIndex", {"function", "i"}, &R::getIthQdHwFcnArgIndex),
      query("getIthQdHwFcnArgIndex1", {"function", "i"}, &R::getIthQdHwFcnArgIndex1),
      query("qdHwFcnIthArgIsPacked1", {"function", "i"}, &R::qdHwFcnIthArgIsPacked1),
      query("qdHwFcnIthArgIsPacked", {"function", "i"}, &R::qdHwFcnIthArgIsPacked),
      query("getIthQdHwFcnArgPackedDataWidth", {"function", "i"},
            &R::getIthQdHwFcnArgPackedDataWidth),
      query("getQdHwFcnArgPackedOffset", {"function", "argument"}, &R::getQdHwFcnArgPackedOffset),
      query("getIthQdHwFcnArgPackedOffset1", {"function", "i"}, &R::getIthQdHwFcnArgPackedOffset1),
      query("getIthQdHwFcnArgPackedOffset", {"function", "i"}, &R::getIthQdHwFcnArgPackedOffset),
      query("getQdHwFcnArgBitMappingLSB", {"function", "argument"}, &R::getQdHwFcnArgBitMappingLSB),
      query("getIthQdHwFcnArgBitMappingLSB", {"function", "i"}, &R::getIthQdHwFcnArgBitMappingLSB),
      query("isQdHwFcnInoutArg", {"function", "argument"}, &R::isQdHwFcnInoutArg),
      query("directQdFuncConnectionPossible", {"functionA", "argumentA", "functionB", "argumentB"},
            &R::directQdFuncConnectionPossible),
      // Platform clocks, clock domains, resets, interrupts and the device
      query("getNumPlatformClocks", {"platform"}, &R::getNumPlatformClocks),
      query("getIthPlatformClock", {"i", "platform"}, &R::getIthPlatformClock),
      query("isAvailableClockId", {"id", "platform"}, &R::isAvailableClockId),
      query("getNumAvailableClocks", {"platform"}, &R::getNumAvailableClocks),
      query("getIthAvailableClockId", {"i", "platform"}, &R::getIthAvailableClockId),
      query("getPlatformDefaultClockId", {"platform"}, &R::getPlatformDefaultClockId),
      query("getClockFrequencyForClockId", {"id", "platform"}, &R::getClockFrequencyForClockId),
      query("getCpuClockFrequency", {"platform"}, &R::getCpuClockFrequency),
      query("getClockPeriodForClockId", {"id", "platform"}, &R::getClockPeriodForClockId),
      query("getNormalizedClockPeriodForClockId", {"id", "platform"},
            &R::getNormalizedClockPeriodForClockId),
      query("getClockStatusForClockId", {"id", "platform"}, &R::getClockStatusForClockId),
      query("getClockFreqHzForClockId", {"id", "platform"}, &R::getClockFreqHzForClockId),
      query("getClockNameForClockId", {"id", "platform"}, &R::getClockNameForClockId),
      query("getClockIdForClockName", {"platform", "name"}, &R::getClockIdForClockName),
      query("getQdPlatformCpuInstanceRef", {"platform"}, &R::getQdPlatformCpuInstanceRef),
      query("getArchitectureForPlatform", {"platform"}, &R::getArchitectureForPlatform),
      query("getDeviceForPlatform", {"platform"}, &R::getDeviceForPlatform),
      query("getAiePeakFrequency", {"platform"}, &R::getAiePeakFrequency),
      query("getDerivedClockPort", {"function"}, &R::getDerivedClockPort),
      query("getDerivedClockPeriodMultiplier", {"function"}, &R::getDerivedClockPeriodMultiplier),
      query("getDerivedClockPeriodDivisor", {"function"}, &R::getDerivedClockPeriodDivisor),
      query("getNumClockDomains", {"platform"}, &R::getNumClockDomains),
      query("getIthClockDomain", {"i", "platform"}, &R::getIthClockDomain),
      query("getClockDomainForClockId", {"id", "platform"}, &R::getClockDomainForClockId),
      query("getNumClockIdsForClockDomain", {"platform", "domain"},
            &R::getNumClockIdsForClockDomain),
      query("getIthClockIdForClockDomain", {"i", "platform", "domain"},
            &R::getIthClockIdForClockDomain),
      query("getIthClockForClockDomain", {"i", "platform", "domain"},
            &R::getIthClockForClockDomain),
      query("getQdResetActiveLevel", {"component", "reset"}, &R::getQdResetActiveLevel),
      query("getQdResetAssociatedClock", {"component", "reset"}, &R::getQdResetAssociatedClock),
      query("getQdPlatformResetBusInterfaceForClkCount", {"platform", "busInterfaceRef", "clock"},
            &R::getQdPlatformResetBusInterfaceForClkCount),
      query("getQdPlatformResetBusInterfaceForClk", {"platform", "busInterfaceRef", "clock", "i"},
            &R::getQdPlatformResetBusInterfaceForClk),
      query("getQdPlatformResetBusInterfaceForClkAndSlr",
            {"platform", "busInterfaceRef", "clock", "slr"},
            &R::getQdPlatformResetBusInterfaceForClkAndSlr),
      query("getResetBusInterfaceForClockDomain", {"platform", "domain", "busInterfaceRef"},
            &R::getResetBusInterfaceForClockDomain),
      query("hasQdPlatformInterruptSupport", {"platform"}, &R::hasQdPlatformInterruptSupport),
      query("getQdPlatformCompIthInterruptSlavePort", {"platform", "i"},
            &R::getQdPlatformCompIthInterruptSlavePort),
      query("getQdPlatformCompIthLegacyInterruptSlavePort", {"platform", "i"},
            &R::getQdPlatformCompIthLegacyInterruptSlavePort),
      query("getQdPlatformCompPortIrq", {"platform", "port"}, &R::getQdPlatformCompPortIrq),
      query("getQdPlatformResourceCapacity", {"platform", "resource"},
            &R::getQdPlatformResourceCapacity),
      query("getQdHwFcnNormalizedWorstCaseLatencyEstimate", {"function", "platform"},
            &R::getQdHwFcnNormalizedWorstCaseLatencyEstimate),
      query("getQdHwFcnNormalizedAverageCaseLatencyEstimate", {"function", "platform"},
            &R::getQdHwFcnNormalizedAverageCaseLatencyEstimate),
      // NoC
      query("hasNocData", {"platform", "instance"}, &R::hasNocData),
      query("getNocInstanceSet", {"platform"}, &R::getNocInstanceSet),
      query("getNocConnectionSet", {"platform", "instance"}, &R::getNocConnectionSet),
      query("getNocSlaveBusIfSet", {"platform", "instance"}, &R::getNocSlaveBusIfSet),
      query("getNocMasterBusIfSet", {"platform", "instance"}, &R::getNocMasterBusIfSet),
      query("numNocConnectionAddressSegment", {"platform", "instance", "connection"},
            &R::numNocConnectionAddressSegment),
      query("getNocConnectionBusInterfaceRef", {"platform", "instance", "connection"},
            &R::getNocConnectionBusInterfaceRef),
      query("getNocConnectionMode", {"platform", "instance", "connection"},
            &R::getNocConnectionMode),
      query("getNocConnectionAddressSegmentName", {"platform", "instance", "connection", "i"},
            &R::getNocConnectionAddressSegmentName),
      query("getNocConnectionAddressSegmentInstanceRef",
            {"platform", "instance", "connection", "i"},
            &R::getNocConnectionAddressSegmentInstanceRef),
      query("getNocConnectionAddressSegmentRegion", {"platform", "instance", "connection", "i"},
            &R::getNocConnectionAddressSegmentRegion),
      query("getNocConnectionAddressSegmentReadBwUsed", {"platform", "instance", "connection", "i"},
            &R::getNocConnectionAddressSegmentReadBwUsed),
      query("getNocConnectionAddressSegmentWriteBwUsed",
            {"platform", "instance", "connection", "i"},
            &R::getNocConnectionAddressSegmentWriteBwUsed),
      query("getNocConnectionAddressSegmentId", {"platform", "instance", "connection", "i"},
            &R::getNocConnectionAddressSegmentId),
      query("getNocConnectionAddressSegmentInterleave", {"platform", "instance", "connection", "i"},
            &R::getNocConnectionAddressSegmentInterleave),
      withOutputs("getPlatformNocResources", {"platform"}, getPlatformNocResources),
      withOutputs("getPlatformNocChannelBandwidth", {"platform"}, getPlatformNocChannelBandwidth),
      query("supportedNocResourceType", {"platform", "port"}, &R::supportedNocResourceType),
      // Kernel pipes
      query("getNumPipesForKernel", {"kernel"}, &R::getNumPipesForKernel),
      query("getNumPipeConnectionsForKernel", {"kernel"}, &R::getNumPipeConnectionsForKernel),
      query("getIthPipeForKernel", {"i", "kernel"}, &R::getIthPipeForKernel),
      query("getIthPipeConnectionForKernel", {"i", "kernel"}, &R::getIthPipeConnectionForKernel),
      query("isKernelPipe", {"pipe"}, &R::isKernelPipe),
      query("getKernelPipeClockId", {"pipe"}, &R::getKernelPipeClockId),
      query("isArgPipeConnection", {"kernel", "argument"}, &R::isArgPipeConnection),
      query("isBusIfPipeConnection", {"kernel", "interface"}, &R::isBusIfPipeConnection),
  };
  return kEntries;
}

// Whether `arguments` can be given to `entry`: as many, and integers where it takes one.
bool fits(Entry const& entry, Arguments const& arguments) {
  if (arguments.size() != entry.query.parameters.size()) return false;
  for (std::size_t k = 0; k < arguments.size(); ++k) {
    if (!entry.integers[k]) continue;
    try {
      integer(arguments[k], entry.query.name);
    } catch (UsageError const&) {
      return false;
    }
  }
  return true;
}

std::string usage(RepoQueries::Query const& query) {
  std::string text = query.name;
  for (std::string const& parameter : query.parameters) text += " " + parameter;
  return text;
}

}  // namespace

std::vector<RepoQueries::Query> const& RepoQueries::all() {
  static std::vector<Query> const kQueries = [] {
    std::vector<Query> made;
    for (Entry const& entry : allEntries()) made.push_back(entry.query);
    return made;
  }();
  return kQueries;
}

std::string RepoQueries::ask(qd::QDSRepo& repo, std::string const& name,
                             std::vector<std::string> const& arguments) {
  std::vector<Entry const*> forms;
  for (Entry const& entry : allEntries()) {
    if (entry.query.name == name) forms.push_back(&entry);
  }
  if (forms.empty()) {
    throw UsageError("unknown query '" + name + "'; qvdiag repo --list-queries shows them");
  }
  if (forms.size() == 1) {
    Entry const& entry = *forms.front();
    if (arguments.size() != entry.query.parameters.size()) {
      throw UsageError(name + " takes " + std::to_string(entry.query.parameters.size()) +
                       " argument(s): " + usage(entry.query));
    }
    return entry.call(repo, arguments);
  }
  std::string choices;
  for (Entry const* entry : forms) {
    if (fits(*entry, arguments)) return entry->call(repo, arguments);
    choices += (choices.empty() ? "" : " | ") + usage(entry->query);
  }
  throw UsageError(name + " takes one of: " + choices);
}

std::string RepoQueries::evaluate(qd::QDSRepo& repo, std::string const& expression) {
  std::unique_ptr<xmlXPathObject, void (*)(xmlXPathObjectPtr)> result(
      xmlXPathEvalExpression(reinterpret_cast<xmlChar const*>(expression.c_str()),
                             repo.doc->xpathContext),
      xmlXPathFreeObject);
  if (!result) throw UsageError("the expression '" + expression + "' does not evaluate");
  switch (result->type) {
    case XPATH_NUMBER:
      return "number " + text(result->floatval);
    case XPATH_BOOLEAN:
      return "boolean " + text(result->boolval != 0);
    case XPATH_STRING:
      return "string " + text(std::string(reinterpret_cast<char const*>(result->stringval)));
    case XPATH_NODESET: {
      // The node texts as the repository reads them.
      std::vector<std::string> const values = repo.stringListQuery(expression, "qvdiag");
      std::string answer = "node-set " + std::to_string(values.size());
      for (std::string const& value : values) answer += "\n" + text(value);
      return answer;
    }
    default:
      return "other (XPath type " + std::to_string(static_cast<int>(result->type)) + ")";
  }
}

}  // namespace qvdiag
