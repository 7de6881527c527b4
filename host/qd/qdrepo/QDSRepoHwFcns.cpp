// Hardware function queries.
#include <initializer_list>
#include <string>
#include <string_view>

#include "host/qd/qdrepo/QDEnumerations.h"
#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {

std::string getQdHwFcnStrAttr(QDSRepo& repo, std::string const& function,
                              std::string const& attribute, std::string const& caller) {
  if (!repo.isQdHwFcn(function)) {
    Log(logINTERNAL, 1003) << "Function '" << function << "' is not a hardware function";
    return "";
  }
  return repo.stringQuery(
      "/qd:repository/qd:fcnMap[@qd:fcnName='" + function + "'][1]/@" + attribute, caller);
}

bool QDSRepo::isQdHwFcn(std::string const& function) {
  return booleanQuery("boolean(/qd:repository/qd:fcnMap[@qd:fcnName='" + function + "'])",
                      "isQdHwFcn");
}

int QDSRepo::getNumQdHwFcns() {
  return intQuery("count(/qd:repository/qd:fcnMap)", "getNumQdHwFcns");
}

std::string QDSRepo::getIthQdHwFcn(int i) {
  return stringQuery(
      "/qd:repository/qd:fcnMap[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:fcnName",
      "getIthQdHwFcn");
}

std::string QDSRepo::getQdHwFcnQdComponentRef(std::string const& function) {
  return getQdHwFcnStrAttr(*this, function, "qd:componentRef", "getQdHwFcnQdComponentRef");
}

}  // namespace qd

namespace qd {
namespace {

// A packed group of arguments counts once, at its first element.
constexpr char const* kLogicalArgs =
    "[not(@qd:dataPack='true') or (@qd:dataPack='true' and "
    "not(@qd:swRootName=preceding-sibling::qd:arg/@qd:swRootName))]";

// Joins the pieces of an expression into one text, sized once: the repository builds hundreds of
// thousands of these while it checks and dumps a large database.
std::string join(std::initializer_list<std::string_view> pieces) {
  std::size_t size = 0;
  for (std::string_view piece : pieces) size += piece.size();
  std::string text;
  text.reserve(size);
  for (std::string_view piece : pieces) text.append(piece);
  return text;
}

constexpr std::string_view kFunctionOpen = "/qd:repository/qd:fcnMap[@qd:fcnName='";
constexpr std::string_view kFunctionClose = "'][1]";

std::string function(std::string const& name) {
  return join({kFunctionOpen, name, kFunctionClose});
}

std::string ithRaw(std::string const& name, int i, std::string const& attribute) {
  return join({kFunctionOpen, name, kFunctionClose, "/qd:arg[",
               std::to_string(static_cast<long long>(i) + 1), "]/@", attribute});
}

std::string ithLogical(std::string const& name, int i, std::string const& attribute) {
  return join({kFunctionOpen, name, kFunctionClose, "/qd:arg", kLogicalArgs, "[",
               std::to_string(static_cast<long long>(i) + 1), "]/@", attribute});
}

std::string byName(std::string const& name, std::string const& key, std::string const& argument,
                   std::string const& attribute) {
  return join({kFunctionOpen, name, kFunctionClose, "/qd:arg[@", key, "='", argument, "'][1]/@",
               attribute});
}

std::string byName(std::string_view opening, std::string const& name, std::string_view key,
                   std::string const& argument, std::string_view attribute) {
  return join({opening, kFunctionOpen, name, kFunctionClose, "/qd:arg[@", key, "='", argument,
               "'][1]/@", attribute, ")"});
}

bool rawIndexValid(QDSRepo& repo, std::string const& name, int i) {
  return i >= 0 && repo.isQdHwFcn(name) && i < repo.getNumQdHwFcnArgs1(name);
}

bool logicalIndexValid(QDSRepo& repo, std::string const& name, int i) {
  return i >= 0 && repo.isQdHwFcn(name) && i < repo.getNumQdHwFcnArgs(name);
}

}  // namespace

std::string getIthQdHwFcnArgStrAttr(QDSRepo& repo, std::string const& name, int i,
                                    std::string const& attribute, std::string const& caller) {
  if (!rawIndexValid(repo, name, i)) {
    Log(logINTERNAL, 1010) << "Function '" << name << "' does not have argument index'" << i << "'";
    return "";
  }
  return repo.stringQuery(ithRaw(name, i, attribute), caller);
}

int getIthQdHwFcnArgIntAttr(QDSRepo& repo, std::string const& name, int i,
                            std::string const& attribute, std::string const& caller) {
  if (!rawIndexValid(repo, name, i)) return -1;
  return repo.intQuery(join({"number(", ithRaw(name, i, attribute), ")"}), caller);
}

std::string getIthQdHwFcnArgStrAttr2(QDSRepo& repo, std::string const& name, int i,
                                     std::string const& attribute, std::string const& caller) {
  if (!logicalIndexValid(repo, name, i)) {
    Log(logINTERNAL, 1012) << "Function '" << name << "' does not have argument index'" << i << "'";
    return "";
  }
  return repo.stringQuery(ithLogical(name, i, attribute), caller);
}

int getIthQdHwFcnArgIntAttr2(QDSRepo& repo, std::string const& name, int i,
                             std::string const& attribute, std::string const& caller) {
  if (!logicalIndexValid(repo, name, i)) return -1;
  return repo.intQuery(join({"number(", ithLogical(name, i, attribute), ")"}), caller);
}

std::string getQdHwFcnArgStrAttr(QDSRepo& repo, std::string const& name,
                                 std::string const& argument, std::string const& attribute,
                                 std::string const& caller) {
  if (!repo.isQdHwFcn(name)) {
    Log(logINTERNAL, 1008) << "Function '" << name << "' is not a hardware function";
    return "";
  }
  if (!repo.isQdHwFcnArg(name, argument)) {
    Log(logINTERNAL, 1009) << "Hardware function '" << name << "' does not have argument '"
                           << argument << "'";
    return "";
  }
  for (char const* key : {"qd:name", "qd:hwName"}) {
    std::string const answer = repo.stringQuery(byName(name, key, argument, attribute), caller);
    if (!answer.empty()) return answer;
  }
  return repo.stringQuery(byName(name, "qd:swRootName", argument, attribute), caller);
}

int getQdHwFcnArgIntAttr(QDSRepo& repo, std::string const& name, std::string const& argument,
                         std::string const& attribute, std::string const& caller) {
  if (!repo.isQdHwFcn(name) || !repo.isQdHwFcnArg(name, argument)) return -1;
  for (char const* key : {"qd:name", "qd:hwName"}) {
    int const answer = repo.intQuery(byName("number(", name, key, argument, attribute), caller);
    if (answer != -1) return answer;
  }
  return repo.intQuery(byName("number(", name, "qd:swRootName", argument, attribute), caller);
}

std::string getQdHwFcnCtrlRegStrAttr(QDSRepo& repo, std::string const& name,
                                     std::string const& attribute, std::string const& caller) {
  if (!repo.isQdHwFcn(name)) {
    Log(logINTERNAL, 1004) << "Function '" << name << "' is not a hardware function";
    return "";
  }
  if (!repo.booleanQuery("boolean(" + function(name) + "/qd:ctrlReg)", caller)) {
    Log(logINTERNAL, 1005) << "Function '" << name << "' does not have attribute '" << attribute
                           << "'";
    return "";
  }
  return repo.stringQuery(function(name) + "/qd:ctrlReg/@" + attribute, caller);
}

bool qdHwFcnHasReturnValue(QDSRepo& repo, std::string const& name) {
  return repo.booleanQuery("boolean(" + function(name) + "/qd:returnValue)",
                           "qdHwFcnHasReturnValue");
}

bool QDSRepo::isQdHwHlsOpenclFcn(std::string const& name) {
  if (!isQdHwFcn(name)) return false;
  return booleanQuery(
      "boolean(" + function(name) + "[@qd:type='hls_opencl' or @qd:type='hls_opencl_adapter'])",
      "isQdHwHlsOpenclFcn");
}

bool QDSRepo::isQdPlatformHwFcn(std::string const& name) {
  if (!isQdHwFcn(name)) return false;
  return isQdPlatformComp(getQdHwFcnQdComponentRef(name));
}

std::string QDSRepo::getQdHwFcnCtrlRegType(std::string const& name) {
  std::string const type =
      getQdHwFcnCtrlRegStrAttr(*this, name, "qd:type", "getQdHwFcnCtrlRegType");
  if (type.empty()) return "ap_ctrl_none";
  if (type == "generic_axi_lite") return "ap_ctrl_hs";
  return type;
}

std::string QDSRepo::getQdHwFcnReturnOffset(std::string const& name) {
  if (!isQdHwFcn(name) || !qdHwFcnHasReturnValue(*this, name)) return "";
  return stringQuery(function(name) + "/qd:returnValue/@qd:offset", "getQdHwFcnReturnOffset");
}

int QDSRepo::getNumQdHwFcnArgs1(std::string const& name) {
  if (!isQdHwFcn(name)) return -1;
  return intQuery(join({"count(", kFunctionOpen, name, kFunctionClose, "/qd:arg)"}),
                  "getNumQdHwFcnArgs1");
}

int QDSRepo::getNumQdHwFcnArgs(std::string const& name) {
  if (!isQdHwFcn(name)) return -1;
  return intQuery(
      join({"count(", kFunctionOpen, name, kFunctionClose, "/qd:arg", kLogicalArgs, ")"}),
      "getNumQdHwFcnArgs");
}

bool QDSRepo::isQdHwFcnArg(std::string const& name, std::string const& argument) {
  if (!isQdHwFcn(name)) return false;
  for (char const* key : {"qd:name", "qd:hwName", "qd:swRootName"}) {
    if (booleanQuery(join({"boolean(", kFunctionOpen, name, kFunctionClose, "/qd:arg[@", key, "='",
                           argument, "'])"}),
                     "isQdHwFcnArg")) {
      return true;
    }
  }
  return false;
}

std::string QDSRepo::getIthQdHwFcnArg1(std::string const& name, int i) {
  return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:name", "getIthQdHwFcnArg1");
}

std::string QDSRepo::getIthQdHwFcnArgBusInterfaceRef1(std::string const& name, int i) {
  return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:busInterfaceRef",
                                 "getIthQdHwFcnArgBusInterfaceRef1");
}

std::string QDSRepo::getIthQdHwFcnArgHwName1(std::string const& name, int i) {
  std::string const hwName =
      getIthQdHwFcnArgStrAttr(*this, name, i, "qd:hwName", "getIthQdHwFcnArgHwName1");
  if (!hwName.empty()) return hwName;
  return getIthQdHwFcnArgBusInterfaceRef1(name, i);
}

std::string QDSRepo::getIthQdHwFcnArgAximmMasterRef1(std::string const& name, int i) {
  return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:aximmMasterRef",
                                 "getIthQdHwFcnArgAximmMasterRef1");
}

bool QDSRepo::ithQdHwFcnArgIsAximmMasterPtr1(std::string const& name, int i) {
  return !getIthQdHwFcnArgAximmMasterRef1(name, i).empty();
}

bool QDSRepo::ithQdHwFcnArgIsAximmMasterPtr(std::string const& name, int i) {
  return !getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:aximmMasterRef",
                                   "ithQdHwFcnArgIsAximmMasterPtr")
              .empty();
}

bool QDSRepo::qdHwFcnArgIsAximmMasterPtr(std::string const& name, std::string const& argument) {
  return !getQdHwFcnArgStrAttr(*this, name, argument, "qd:aximmMasterRef",
                               "qdHwFcnArgIsAximmMasterPtr")
              .empty();
}

std::string QDSRepo::getIthQdHwFcnArgPortInterfaceType1(std::string const& name, int i) {
  // A pointer is an address on its master, OpenCL or not.
  if (ithQdHwFcnArgIsAximmMasterPtr1(name, i)) return "aximm_addr";
  return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:portInterfaceType",
                                 "getIthQdHwFcnArgPortInterfaceType1");
}

std::string QDSRepo::getIthQdHwFcnArgOffset(std::string const& name, int i) {
  return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:offset", "getIthQdHwFcnArgOffset");
}

int QDSRepo::getIthQdHwFcnArgDataWidth(std::string const& name, int i) {
  // OpenCL functions escape the pointer rule for the width.
  if (ithQdHwFcnArgIsAximmMasterPtr(name, i) && !isQdHwHlsOpenclFcn(name)) {
    return getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:aximmMasterDataWidth",
                                    "getIthQdHwFcnArgDataWidth");
  }
  return getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:dataWidth", "getIthQdHwFcnArgDataWidth");
}

bool QDSRepo::qdHwFcnArgIsPacked(std::string const& name, std::string const& argument) {
  if (!isQdHwFcnArg(name, argument)) return false;
  // Presence counts, not the value.
  if (booleanQuery(byName("boolean(", name, "qd:name", argument, "qd:dataPack"),
                   "qdHwFcnArgIsPacked")) {
    return true;
  }
  return booleanQuery(byName("boolean(", name, "qd:swRootName", argument, "qd:dataPack"),
                      "qdHwFcnArgIsPacked");
}

int QDSRepo::getQdHwFcnArgPackedDataWidth(std::string const& name, std::string const& argument) {
  int const width =
      getQdHwFcnArgIntAttr(*this, name, argument, "qd:dataWidth", "getQdHwFcnArgDataWidth");
  int const packedWidth = getQdHwFcnArgIntAttr(*this, name, argument, "qd:dataPackWidth",
                                               "getQdHwFcnArgPackedDataWidth");
  return qdHwFcnArgIsPacked(name, argument) ? packedWidth : width;
}

int QDSRepo::getIthQdHwFcnArgPackedDataWidth1(std::string const& name, int i) {
  if (ithQdHwFcnArgIsAximmMasterPtr1(name, i) && !isQdHwHlsOpenclFcn(name)) {
    return getIthQdHwFcnArgIntAttr(*this, name, i, "qd:aximmMasterDataWidth",
                                   "getIthQdHwFcnArgPackedDataWidth1");
  }
  return getQdHwFcnArgPackedDataWidth(name, getIthQdHwFcnArg1(name, i));
}

bool QDSRepo::isQdHwFcnArrayArg(std::string const& name, std::string const& argument) {
  // A pointer over an AXI master counts as an array.
  if (qdHwFcnArgIsAximmMasterPtr(name, argument)) return true;
  return booleanQuery(byName("boolean(", name, "qd:name", argument, "qd:arraySize"),
                      "isQdHwFcnArrayArg");
}

int QDSRepo::getIthQdHwFcnArgArraySize1(std::string const& name, int i) {
  // Pointers read their master's array size, OpenCL or not.
  if (ithQdHwFcnArgIsAximmMasterPtr1(name, i)) {
    return getIthQdHwFcnArgIntAttr(*this, name, i, "qd:aximmMasterArraySize",
                                   "getIthQdHwFcnArgArraySize1");
  }
  std::string const argument = getIthQdHwFcnArg1(name, i);
  if (!isQdHwFcnArrayArg(name, argument)) return -1;
  return getQdHwFcnArgIntAttr(*this, name, argument, "qd:arraySize", "getIthQdHwFcnArgArraySize1");
}

}  // namespace qd

namespace qd {
namespace {

// The first argument of `name` whose `key` is `argument`, as the packing readers spell it: with
// a blank before the "=" of the function's name, as these expressions have always been written.
std::string packedByName(std::string const& name, std::string const& argument) {
  return "/qd:repository/qd:fcnMap[@qd:fcnName ='" + name + "'][1]/qd:arg[@qd:name='" + argument +
         "']";
}

std::string packedLogical(std::string const& name, int i) {
  return "/qd:repository/qd:fcnMap[@qd:fcnName ='" + name + "'][1]/qd:arg" + kLogicalArgs + "[" +
         std::to_string(static_cast<long long>(i) + 1) + "]";
}

// The low bit of a "high:low" bit mapping.
std::string lowBitOf(std::string const& argument) {
  return "number(substring-after(" + argument + "/@qd:bitMapping, \":\"))";
}

bool isIndexedPortType(std::string const& type) {
  return type == "register" || type == "bram" || type == "fifo";
}

int fcnIntAttr(QDSRepo& repo, std::string const& name, std::string const& attribute,
               std::string const& caller) {
  if (!repo.isQdHwFcn(name)) return -1;
  return repo.intQuery("number(" + function(name) + "/@" + attribute + ")", caller);
}

bool fcnTypeIs(QDSRepo& repo, std::string const& name, std::string const& condition,
               std::string const& caller) {
  if (!repo.isQdHwFcn(name)) return false;
  return repo.booleanQuery("boolean(" + function(name) + "[" + condition + "])", caller);
}

// A flag attribute of the function that reads "true"; false, with a warning, for no function.
bool fcnFlag(QDSRepo& repo, std::string const& name, std::string const& attribute,
             std::string const& caller) {
  if (!repo.isQdHwFcn(name)) {
    Log(logWARNING, 1011) << name << " is not a hardware function";
    return false;
  }
  return repo.booleanQuery("boolean(" + function(name) + "[@" + attribute + "='true'])", caller);
}

std::string returnAttribute(QDSRepo& repo, std::string const& name, std::string const& attribute,
                            std::string const& caller) {
  if (!repo.isQdHwFcn(name) || !qdHwFcnHasReturnValue(repo, name)) return "";
  return repo.stringQuery(function(name) + "/qd:returnValue/@" + attribute, caller);
}

int returnIntAttribute(QDSRepo& repo, std::string const& name, std::string const& attribute,
                       std::string const& caller) {
  if (!repo.isQdHwFcn(name) || !qdHwFcnHasReturnValue(repo, name)) return -1;
  return repo.intQuery("number(" + function(name) + "/qd:returnValue/@" + attribute + ")", caller);
}

long long latencyEstimate(QDSRepo& repo, std::string const& name, std::string const& attribute,
                          std::string const& caller) {
  if (!repo.isQdHwFcn(name) || !qdHwFcnHasLatencyEstimates(repo, name)) return -1;
  return repo.longLongQuery("number(" + function(name) + "/qd:latencyEstimates/@" + attribute + ")",
                            caller);
}

std::string normalizedCtrlType(std::string const& type, std::string const& whenEmpty) {
  if (type.empty()) return whenEmpty;
  if (type == "generic_axi_lite") return "ap_ctrl_hs";
  return type;
}

}  // namespace

double getQdHwFcnFloatAttr(QDSRepo& repo, std::string const& name, std::string const& attribute,
                           std::string const& caller) {
  if (!repo.isQdHwFcn(name)) return -1.0;
  return repo.floatQuery("number(" + function(name) + "/@" + attribute + ")", caller);
}

std::string getQdHwFcnArgLenRegStrAttr(QDSRepo& repo, std::string const& name,
                                       std::string const& attribute, std::string const& caller) {
  if (!repo.isQdHwFcn(name)) {
    Log(logINTERNAL, 1006) << "Function '" << name << "' is not a hardware function";
    return "";
  }
  if (!repo.booleanQuery("boolean(" + function(name) + "/qd:lengthRegisterOffset)", caller)) {
    Log(logINTERNAL, 1007) << "Function '" << name << "' does not have attribute '" << attribute
                           << "'";
    return "";
  }
  return repo.stringQuery(function(name) + "/qd:lengthRegisterOffset/@" + attribute, caller);
}

bool qdHwFcnHasLatencyEstimates(QDSRepo& repo, std::string const& name) {
  return repo.booleanQuery("boolean(" + function(name) + "/qd:latencyEstimates)",
                           "qdHwFcnHasLatencyEstimates");
}

// ---- Counts and existence ----------------------------------------------------------------------

int QDSRepo::getNumQdHwFcns(std::string const& component) {
  return intQuery("count(/qd:repository/qd:fcnMap[@qd:componentRef='" + component + "'])",
                  "getNumQdHwFcns");
}

int QDSRepo::getNumQdHwFcnsForQdComp(std::string const& component) {
  if (!isQdComp(component)) return -1;
  return intQuery("count(/qd:repository/qd:fcnMap[@qd:componentRef='" + component + "'])",
                  "getNumQdHwFcnsForQdComp");
}

std::string QDSRepo::getIthQdHwFcn(int i, std::string const& component) {
  if (i < 0 || i >= getNumQdHwFcns(component)) return "";
  return stringQuery("/qd:repository/qd:fcnMap[@qd:componentRef='" + component + "'][" +
                         std::to_string(static_cast<long long>(i) + 1) + "]/@qd:fcnName",
                     "getIthQdHwFcn");
}

std::string QDSRepo::getIthQdHwFcnForQdComp(std::string const& component, int i) {
  if (i < 0 || i >= getNumQdHwFcnsForQdComp(component)) return "";
  return stringQuery("/qd:repository/qd:fcnMap[@qd:componentRef='" + component + "'][" +
                         std::to_string(static_cast<long long>(i) + 1) + "]/@qd:fcnName",
                     "getIthQdHwFcnForQdComp");
}

int QDSRepo::getNumQdHwFcnInputArgs(std::string const& name) {
  if (!isQdHwFcn(name)) return -1;
  return intQuery("count(" + function(name) + "/qd:arg[@qd:direction='in'])",
                  "getNumQdHwFcnInputArgs");
}

int QDSRepo::getNumQdHwFcnOutputArgs(std::string const& name) {
  if (!isQdHwFcn(name)) return -1;
  return intQuery("count(" + function(name) + "/qd:arg[@qd:direction='out'])",
                  "getNumQdHwFcnOutputArgs");
}

int QDSRepo::getNumQdHwFcnArgsForBusInterfaceRef(std::string const& name, std::string const& port) {
  if (!isQdHwFcn(name)) return -1;
  return intQuery("count(" + function(name) + "/qd:arg[@qd:busInterfaceRef='" + port + "'])",
                  "getNumQdHwFcnArgsForBusInterfaceRef");
}

std::string QDSRepo::getIthQdHwFcnArgForBusInterfaceRef(std::string const& name,
                                                        std::string const& port, int i) {
  if (!isQdHwFcn(name)) return "";
  return stringQuery(function(name) + "/qd:arg[@qd:busInterfaceRef='" + port + "'][" +
                         std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name",
                     "getIthQdHwFcnArgForBusInterfaceRef");
}

int QDSRepo::getNumQdHwFcnBusInterfacesOfType(std::string const& name, std::string const& type) {
  if (!isQdHwFcn(name)) return -1;
  if (type == "aximm") {
    // One interface per distinct master reference.
    return intQuery("count(" + function(name) +
                        "/qd:arg[not(@qd:aximmMasterRef=preceding-sibling::qd:arg/"
                        "@qd:aximmMasterRef)])",
                    "getNumQdHwFcnMaximmInterfaces");
  }
  return intQuery("count(" + function(name) + "/qd:arg[@qd:portInterfaceType='" + type +
                      "' and not(@qd:busInterfaceRef=preceding-sibling::*[(self::qd:arg or "
                      "self::qd:ctrlReg or self::qd:returnValue) and @qd:portInterfaceType='" +
                      type + "']/@qd:busInterfaceRef)])",
                  "getNumQdHwFcnBusInterfacesOfType");
}

int QDSRepo::getNumQdHwFcnBusInterfacesOfType(std::string const& name, std::string const& type,
                                              std::string const& direction) {
  if (!isQdHwFcn(name)) return -1;
  return intQuery("count(" + function(name) + "/qd:arg[@qd:portInterfaceType='" + type +
                      "' and @qd:direction='" + direction +
                      "' and not(@qd:busInterfaceRef=preceding-sibling::*[(self::qd:arg or "
                      "self::qd:ctrlReg or self::qd:returnValue) and @qd:portInterfaceType='" +
                      type + "']/@qd:busInterfaceRef)])",
                  "getNumQdHwFcnBusInterfacesOfType");
}

// ---- Function kind -----------------------------------------------------------------------------

bool QDSRepo::isQdHwLibraryFcn(std::string const& name) {
  return fcnTypeIs(*this, name, "@qd:type='hw_library'", "isQdHwLibraryFcn");
}

bool QDSRepo::isQdHwHlsFcn(std::string const& name) {
  return fcnTypeIs(*this, name, "@qd:type='hls'", "isQdHlsFcn");
}

bool QDSRepo::isQdHwHdlFcn(std::string const& name) {
  return fcnTypeIs(*this, name, "@qd:type='hdl'", "isQdHwHdlFcn");
}

bool QDSRepo::isQdHwHlsAdapterFcn(std::string const& name) {
  return fcnTypeIs(*this, name, "@qd:type='hls_adapter' or @qd:type='hls_opencl_adapter'",
                   "isQdHwHlsAdapterFcn");
}

std::string QDSRepo::getQdHwFcnTypeString(std::string const& name) {
  if (!isQdHwFcn(name)) return "unspecified";
  std::string const type = stringQuery(function(name) + "/@qd:type", "getQdHwFcnTypeString");
  return type.empty() ? "unspecified" : type;
}

// ---- Function attributes -----------------------------------------------------------------------

std::string QDSRepo::getQdHwFcnFlow(std::string const& name) {
  return getQdHwFcnStrAttr(*this, name, "qd:flow", "getQdFcnFlow");
}

double QDSRepo::getQdHwFcnMinClockPeriod(std::string const& name) {
  return getQdHwFcnFloatAttr(*this, name, "qd:clockPeriod", "getQdHwFcnMinClockPeriod");
}

double QDSRepo::getQdCompMinClockPeriod(std::string const& component) {
  std::string const first = getIthQdHwFcn(0, component);
  if (first.empty()) return -1.0;
  return getQdHwFcnFloatAttr(*this, first, "qd:clockPeriod", "getQdCompMinClockPeriod");
}

int QDSRepo::getQdHwFcnClockId(std::string const& name) {
  return fcnIntAttr(*this, name, "qd:clockId", "getQdHwFcnClockId");
}

int QDSRepo::getQdHwFcnInitiationInterval(std::string const& name) {
  return fcnIntAttr(*this, name, "qd:initiationInterval", "getQdHwFcnInitiationInterval");
}

int QDSRepo::getQdHwFcnHostCpuWordSize(std::string const& name) {
  return fcnIntAttr(*this, name, "qd:hostMachine", "getQdHwFcnHostCpuWordSize");
}

bool QDSRepo::isSequentialQdHwFcn(std::string const& name) {
  if (!isQdHwFcn(name)) return false;
  return booleanQuery("boolean(" + function(name) + "/@qd:sequential)", "isSequentialQdHwFcn");
}

bool QDSRepo::isTemplateQdHwFcn(std::string const& name) {
  return !getQdHwFcnTemplateInstantiation(name).empty();
}

std::string QDSRepo::getQdHwFcnTemplateInstantiation(std::string const& name) {
  if (!isQdHwFcn(name)) return "";
  std::string const text =
      stringQuery(function(name) + "/@qd:templateInstantiation", "getQdHwFcnTemplateInstantiation");
  // "__NA__" is how a function that is no template says so.
  return text == "__NA__" ? "" : text;
}

bool QDSRepo::qdHwFcnIsRTL(std::string const& name) {
  return fcnFlag(*this, name, "qd:isRTL", "qdHwFcnIsRTL");
}

bool QDSRepo::qdHwFcnIsMFA(std::string const& name) {
  return fcnFlag(*this, name, "qd:isMFA", "qdHwFcnIsMFA");
}

bool QDSRepo::qdHwFcnIsNoExec(std::string const& name) {
  return fcnFlag(*this, name, "qd:noExec", "qdHwFcnIsNoExec");
}

bool QDSRepo::qdHwFcnIsTemplate(std::string const& name) {
  return fcnFlag(*this, name, "qd:isTemplate", "qdHwFcnIsTemplate");
}

std::string QDSRepo::getQdHwFcnParamFile(std::string const& name) {
  if (!isQdHwFcn(name)) {
    Log(logWARNING, 1011) << name << " is not a hardware function";
    return "";
  }
  if (!booleanQuery("boolean(" + function(name) + "/@qd:param_file)", "getQdHwFcnParamFile")) {
    return "";
  }
  return stringQuery(function(name) + "/@qd:param_file", "getQdHwFcnParamFile");
}

int QDSRepo::getQdHwFcnResourceId(std::string const& name) {
  if (!isQdHwFcn(name)) {
    Log(logWARNING, 1011) << name << " is not a hardware function";
    return -1;
  }
  if (!booleanQuery("boolean(" + function(name) + "/@qd:resource_id)", "getQdHwFcnResourceId")) {
    return -1;
  }
  return intQuery("number(" + function(name) + "/@qd:resource_id)", "getQdHwFcnResourceId");
}

std::string QDSRepo::getQdHwFcnInterruptName(std::string const& name) {
  if (!isQdHwFcn(name)) return "";
  return stringQuery(function(name) + "/qd:interrupt/@qd:busInterfaceRef",
                     "getQdHwFcnInterruptName");
}

bool QDSRepo::qdHwFcnHasInterrupt(std::string const& name) {
  if (!isQdHwFcn(name)) return false;
  return booleanQuery("boolean(" + function(name) + "/qd:interrupt/@qd:busInterfaceRef)",
                      "qdHwFcnHasInterrupt");
}

bool QDSRepo::qdCompInterruptUsedByFcn(std::string const& component, std::string const& port) {
  return booleanQuery("boolean(/qd:repository/qd:fcnMap[@qd:componentRef='" + component +
                          "']/qd:interrupt[@qd:busInterfaceRef='" + port + "'])",
                      "qdCompInterruptUsedByFcn");
}

int QDSRepo::getQdHwFcnResourceEstimate(std::string const& name, std::string const& resource) {
  if (!isQdHwFcn(name)) return -1;
  if (!booleanQuery("boolean(" + function(name) + "/qd:resourceEstimates)",
                    "getQdHwFcnResourceEstimate")) {
    return -1;
  }
  return intQuery("number(" + function(name) + "/qd:resourceEstimates/@qd:" + resource + ")",
                  "getQdHwFcnResourceEstimate");
}

int QDSRepo::getQdCompResourceEstimate(std::string const& component, std::string const& resource) {
  if (!isQdComp(component)) return -1;
  std::string const estimates =
      "/qd:repository/qd:component[@qd:name='" + component + "'][1]/qd:resourceEstimates";
  if (!booleanQuery("boolean(" + estimates + ")", "getQdCompResourceEstimate")) return -1;
  return intQuery("number(" + estimates + "/@qd:" + resource + ")", "getQdCompResourceEstimate");
}

// ---- Return value ------------------------------------------------------------------------------

std::string QDSRepo::getQdHwFcnReturnHwName(std::string const& name) {
  return returnAttribute(*this, name, "qd:hwName", "getQdHwFcnReturnHwName");
}

std::string QDSRepo::getQdHwFcnReturnBusInterfaceRef(std::string const& name) {
  return returnAttribute(*this, name, "qd:busInterfaceRef", "getQdHwFcnReturnBusInterfaceRef");
}

int QDSRepo::getQdHwFcnReturnDataWidth(std::string const& name) {
  return returnIntAttribute(*this, name, "qd:dataWidth", "getQdHwFcnReturnDataWidth");
}

int QDSRepo::getQdHwFcnReturnValueWidth(std::string const& name) {
  return returnIntAttribute(*this, name, "qd:dataWidth", "getQdHwFcnReturnValueWidth");
}

int QDSRepo::getQdHwFcnReturnIndex(std::string const& name) {
  // The return value is always the first thing a function hands back; nothing in the file says
  // otherwise.
  if (!isQdHwFcn(name) || !qdHwFcnHasReturnValue(*this, name)) return -1;
  return 0;
}

std::string QDSRepo::getQdHwFcnBusInterfaceRefForHwName(std::string const& name,
                                                        std::string const& hwName) {
  if (hwName == getQdHwFcnReturnHwName(name)) return getQdHwFcnReturnBusInterfaceRef(name);
  return stringQuery(function(name) + "/qd:arg[@qd:hwName='" + hwName + "'][1]/@qd:busInterfaceRef",
                     "getQdHwFcnBusInterfaceRefForHwName");
}

// ---- Control and length register ---------------------------------------------------------------

std::string QDSRepo::getQdHwFcnCtrlReg(std::string const& name) {
  return getQdHwFcnCtrlRegStrAttr(*this, name, "qd:name", "getQdHwFcnCtrlReg");
}

std::string QDSRepo::getQdHwFcnCtrlRegBusInterfaceRef(std::string const& name) {
  return getQdHwFcnCtrlRegStrAttr(*this, name, "qd:busInterfaceRef",
                                  "getQdHwFcnCtrlRegBusInterfaceRef");
}

std::string QDSRepo::getQdHwFcnCtrlRegOffset(std::string const& name) {
  return getQdHwFcnCtrlRegStrAttr(*this, name, "qd:offset", "getQdHwFcnCtrlRegOffset");
}

int QDSRepo::getQdHwFcnCtrlRegBufferDepth(std::string const& name) {
  if (!isQdHwFcn(name)) return -1;
  if (!booleanQuery("boolean(" + function(name) + "/qd:ctrlReg)", "getQdHwFcnCtrlRegBufferDepth")) {
    return -1;
  }
  return intQuery("number(" + function(name) + "/qd:ctrlReg/@qd:bufferDepth)",
                  "getQdHwFcnCtrlRegBufferDepth");
}

std::string QDSRepo::getQdHwFcnArgLenRegBusInterfaceRef(std::string const& name) {
  return getQdHwFcnArgLenRegStrAttr(*this, name, "qd:busInterfaceRef",
                                    "getQdHwFcnArgLenRegBusInterfaceRef");
}

std::string QDSRepo::getQdHwFcnArgLenRegOffset(std::string const& name) {
  return getQdHwFcnArgLenRegStrAttr(*this, name, "qd:offset", "getQdHwFcnArgLenRegOffset");
}

std::string QDSRepo::getQdHwFcnCtrlProtocol(std::string const& name) {
  return normalizedCtrlType(
      getQdHwFcnCtrlRegStrAttr(*this, name, "qd:type", "getQdHwFcnCtrlProtocol"), "ap_ctrl_hs");
}

std::string QDSRepo::getQdHwFcnControlProtocol(std::string const& name) {
  if (!isQdHwFcn(name)) return "";
  return normalizedCtrlType(
      stringQuery(function(name) + "/qd:ctrlReg/@qd:type", "getQdHwFcnControlProtocol"),
      "ap_ctrl_none");
}

// ---- Latency -----------------------------------------------------------------------------------

long long QDSRepo::getQdHwFcnWorstCaseLatencyEstimate(std::string const& name) {
  return latencyEstimate(*this, name, "qd:worst-case", "getQdHwFcnWorstCaseLatencyEstimate");
}

long long QDSRepo::getQdHwFcnAverageCaseLatencyEstimate(std::string const& name) {
  return latencyEstimate(*this, name, "qd:average-case", "getQdHwFcnAverageCaseLatencyEstimate");
}

// ---- Argument attributes by name, raw index and logical index ----------------------------------

std::string QDSRepo::getQdHwFcnArgHwName(std::string const& name, std::string const& argument) {
  std::string const hwName =
      getQdHwFcnArgStrAttr(*this, name, argument, "qd:hwName", "getQdHwFcnArgHwName");
  return hwName.empty() ? getQdHwFcnArgBusInterfaceRef1(name, argument) : hwName;
}

std::string QDSRepo::getIthQdHwFcnArgHwName(std::string const& name, int i) {
  std::string const hwName =
      getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:hwName", "getIthQdHwFcnArgHwName");
  return hwName.empty() ? getIthQdHwFcnArgBusInterfaceRef(name, i) : hwName;
}

std::string QDSRepo::getQdHwFcnArgSwRootName(std::string const& name, std::string const& argument) {
  return getQdHwFcnArgStrAttr(*this, name, argument, "qd:swRootName", "getQdHwFcnArgSwRootName");
}

std::string QDSRepo::getIthQdHwFcnArgSwRootName1(std::string const& name, int i) {
  std::string const root =
      getIthQdHwFcnArgStrAttr(*this, name, i, "qd:swRootName", "getIthQdHwFcnArgSwRootName1");
  return root.empty() ? getIthQdHwFcnArg1(name, i) : root;
}

std::string QDSRepo::getIthQdHwFcnArgSwRootName(std::string const& name, int i) {
  std::string const root =
      getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:swRootName", "getIthQdHwFcnArgSwRootName");
  return root.empty() ? getIthQdHwFcnArg(name, i) : root;
}

std::string QDSRepo::getQdHwFcnArgBusInterfaceRef1(std::string const& name,
                                                   std::string const& argument) {
  return getQdHwFcnArgStrAttr(*this, name, argument, "qd:busInterfaceRef",
                              "getQdHwFcnArgBusInterfaceRef1");
}

std::string QDSRepo::getIthQdHwFcnArgBusInterfaceRef(std::string const& name, int i) {
  return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:busInterfaceRef",
                                  "getIthQdHwFcnArgBusInterfaceRef");
}

std::string QDSRepo::getQdHwFcnArgOffset1(std::string const& name, std::string const& argument) {
  return getQdHwFcnArgStrAttr(*this, name, argument, "qd:offset", "getQdHwFcnArgOffset1");
}

std::string QDSRepo::getIthQdHwFcnArgBitmapping(std::string const& name, int i) {
  return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:bitMapping", "getIthQdHwFcnArgBitmapping");
}

std::string QDSRepo::getQdHwFcnArgAximmMasterRef(std::string const& name,
                                                 std::string const& argument) {
  return getQdHwFcnArgStrAttr(*this, name, argument, "qd:aximmMasterRef",
                              "getQdHwFcnArgAximmMasterRef");
}

std::string QDSRepo::getIthQdHwFcnArgAximmMasterRef(std::string const& name, int i) {
  return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:aximmMasterRef",
                                  "getIthQdHwFcnArgAximmMasterRef");
}

int QDSRepo::getQdHwFcnArgBufferDepth(std::string const& name, std::string const& argument) {
  return getQdHwFcnArgIntAttr(*this, name, argument, "qd:bufferDepth", "getQdHwFcnArgBufferDepth");
}

int QDSRepo::getIthQdHwFcnArgBufferDepth(std::string const& name, int i) {
  return getIthQdHwFcnArgIntAttr(*this, name, i, "qd:bufferDepth", "getIthQdHwFcnArgBufferDepth");
}

int QDSRepo::getQdHwFcnArgMultiBufferDepth(std::string const& name, std::string const& argument) {
  return getQdHwFcnArgIntAttr(*this, name, argument, "qd:multibufferDepth",
                              "getQdHwFcnArgMultiBufferDepth");
}

int QDSRepo::getIthQdHwFcnArgMultiBufferDepth(std::string const& name, int i) {
  return getIthQdHwFcnArgIntAttr(*this, name, i, "qd:multibufferDepth",
                                 "getIthQdHwFcnArgMultiBufferDepth");
}

int QDSRepo::getKernelArgId(std::string const& name, std::string const& argument) {
  return getQdHwFcnArgIntAttr(*this, name, argument, "qd:id", "getKernelArgId");
}

int QDSRepo::getIthKernelArgId(std::string const& name, int i) {
  return getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:id", "getIthKernelArgId");
}

// ---- Names of the logical view -----------------------------------------------------------------

std::string QDSRepo::getIthQdHwFcnArg(std::string const& name, int i) {
  if (!isQdHwFcn(name)) return "";
  // A packed group is known by its root name.
  if (qdHwFcnIthArgIsPacked(name, i)) {
    return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:swRootName", "getIthQdHwFcnArg");
  }
  return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:name", "getIthQdHwFcnArg");
}

std::string QDSRepo::getIthQdHwFcnArgPackedHwName(std::string const& name, int i) {
  if (qdHwFcnIthArgIsPacked1(name, i)) {
    return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:swRootName", "getIthQdHwFcnArgPackedHwName");
  }
  return getIthQdHwFcnArgHwName1(name, i);
}

// ---- Width, direction, array size and port type, by the pointer rule ---------------------------

int QDSRepo::getIthQdHwFcnArgDataWidth1(std::string const& name, int i) {
  // OpenCL functions escape the pointer rule for the width.
  if (ithQdHwFcnArgIsAximmMasterPtr1(name, i) && !isQdHwHlsOpenclFcn(name)) {
    return getIthQdHwFcnArgIntAttr(*this, name, i, "qd:aximmMasterDataWidth",
                                   "getIthQdHwFcnArgDataWidth1");
  }
  return getIthQdHwFcnArgIntAttr(*this, name, i, "qd:dataWidth", "getIthQdHwFcnArgDataWidth1");
}

int QDSRepo::getQdHwFcnArgDataWidth1(std::string const& name, std::string const& argument) {
  if (qdHwFcnArgIsAximmMasterPtr(name, argument) && !isQdHwHlsOpenclFcn(name)) {
    return getQdHwFcnArgIntAttr(*this, name, argument, "qd:aximmMasterDataWidth",
                                "getQdHwFcnArgDataWidth1");
  }
  return getQdHwFcnArgIntAttr(*this, name, argument, "qd:dataWidth", "getQdHwFcnArgDataWidth1");
}

std::string QDSRepo::getIthQdHwFcnArgDirection1(std::string const& name, int i) {
  if (ithQdHwFcnArgIsAximmMasterPtr1(name, i) && !isQdHwHlsOpenclFcn(name)) {
    return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:aximmMasterDirection",
                                   "getIthQdHwFcnArgDirection1");
  }
  return getIthQdHwFcnArgStrAttr(*this, name, i, "qd:direction", "getIthQdHwFcnArgDirection1");
}

std::string QDSRepo::getIthQdHwFcnArgDirection(std::string const& name, int i) {
  if (ithQdHwFcnArgIsAximmMasterPtr(name, i) && !isQdHwHlsOpenclFcn(name)) {
    return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:aximmMasterDirection",
                                    "getIthQdHwFcnArgDirection");
  }
  return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:direction", "getIthQdHwFcnArgDirection");
}

std::string QDSRepo::getQdHwFcnArgDirection(std::string const& name, std::string const& argument) {
  if (qdHwFcnArgIsAximmMasterPtr(name, argument) && !isQdHwHlsOpenclFcn(name)) {
    return getQdHwFcnArgStrAttr(*this, name, argument, "qd:aximmMasterDirection",
                                "getQdHwFcnArgDirection");
  }
  return getQdHwFcnArgStrAttr(*this, name, argument, "qd:direction", "getQdHwFcnArgDirection");
}

int QDSRepo::getIthQdHwFcnArgArraySize(std::string const& name, int i) {
  // Pointers read their master's array size, OpenCL or not.
  if (ithQdHwFcnArgIsAximmMasterPtr(name, i)) {
    return getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:aximmMasterArraySize",
                                    "getIthQdHwFcnArgArraySize");
  }
  return getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:arraySize", "getIthQdHwFcnArgArraySize");
}

int QDSRepo::getQdHwFcnArgArraySize(std::string const& name, std::string const& argument) {
  if (qdHwFcnArgIsAximmMasterPtr(name, argument)) {
    return getQdHwFcnArgIntAttr(*this, name, argument, "qd:aximmMasterArraySize",
                                "getQdHwFcnArgArraySize");
  }
  return getQdHwFcnArgIntAttr(*this, name, argument, "qd:arraySize", "getQdHwFcnArgArraySize");
}

std::string QDSRepo::getIthQdHwFcnArgPortInterfaceType(std::string const& name, int i) {
  if (ithQdHwFcnArgIsAximmMasterPtr(name, i)) return "aximm_addr";
  return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:portInterfaceType",
                                  "getIthQdHwFcnArgPortInterfaceType");
}

std::string QDSRepo::getQdHwFcnArgPortInterfaceType(std::string const& name,
                                                    std::string const& argument) {
  if (qdHwFcnArgIsAximmMasterPtr(name, argument)) return "aximm_addr";
  return getQdHwFcnArgStrAttr(*this, name, argument, "qd:portInterfaceType",
                              "getQdHwFcnArgPortInterfaceType");
}

// ---- Search readers: walk the logical list for a name -------------------------------------------
// Each step asks for the count again: the list is short, and a caller may hold any of the
// names, so nothing is worth keeping between steps.

std::string QDSRepo::getQdHwFcnArgBusInterfaceRef(std::string const& name,
                                                  std::string const& argument) {
  for (int i = 0; i < getNumQdHwFcnArgs(name); ++i) {
    if (getIthQdHwFcnArg(name, i) == argument) {
      return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:busInterfaceRef",
                                      "getQdHwFcnArgBusInterfaceRef");
    }
  }
  return "";
}

std::string QDSRepo::getQdHwFcnArgBusInterfaceRef2(std::string const& name,
                                                   std::string const& argument) {
  for (int i = 0; i < getNumQdHwFcnArgs(name); ++i) {
    if (getIthQdHwFcnArgSwRootName(name, i) == argument) {
      return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:busInterfaceRef",
                                      "getQdHwFcnArgBusInterfaceRef2");
    }
  }
  return "";
}

int QDSRepo::getQdHwFcnArgDataWidth(std::string const& name, std::string const& argument) {
  for (int i = 0; i < getNumQdHwFcnArgs(name); ++i) {
    if (getIthQdHwFcnArg(name, i) == argument) return getIthQdHwFcnArgDataWidth(name, i);
  }
  return -1;
}

std::string QDSRepo::getQdHwFcnArgOffset(std::string const& name, std::string const& argument) {
  for (int i = 0; i < getNumQdHwFcnArgs(name); ++i) {
    if (getIthQdHwFcnArg(name, i) == argument) {
      return getIthQdHwFcnArgStrAttr2(*this, name, i, "qd:offset", "getQdHwFcnArgOffset2");
    }
  }
  return getQdHwFcnArgOffset1(name, argument);
}

int QDSRepo::getQdHwFcnArgIndex(std::string const& name, std::string const& argument) {
  for (int i = 0; i < getNumQdHwFcnArgs(name); ++i) {
    if (getIthQdHwFcnArg(name, i) != argument) continue;
    int const index = getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:index", "getQdHwFcnArgIndex2");
    if (index >= 0) return index;
    if (isIndexedPortType(getIthQdHwFcnArgPortInterfaceType(name, i))) {
      Log(logERROR, 1013) << "Function " << name << " is missing data base index for argument "
                          << argument;
    }
  }
  return -1;
}

int QDSRepo::getQdHwFcnArgIndex1(std::string const& name, std::string const& argument) {
  if (!isQdHwFcnArg(name, argument)) return -1;
  int const index = getQdHwFcnArgIntAttr(*this, name, argument, "qd:index", "getQdHwFcnArgIndex1");
  if (index >= 0) return index;
  if (isIndexedPortType(getQdHwFcnArgPortInterfaceType(name, argument))) {
    Log(logERROR, 1012) << "Function " << name << " is missing data base index for argument "
                        << argument;
  }
  return -1;
}

int QDSRepo::getIthQdHwFcnArgIndex(std::string const& name, int i) {
  return getQdHwFcnArgIndex(name, getIthQdHwFcnArg(name, i));
}

int QDSRepo::getIthQdHwFcnArgIndex1(std::string const& name, int i) {
  return getQdHwFcnArgIndex1(name, getIthQdHwFcnArg1(name, i));
}

// ---- Packing -----------------------------------------------------------------------------------

bool QDSRepo::qdHwFcnIthArgIsPacked1(std::string const& name, int i) {
  if (!rawIndexValid(*this, name, i)) return false;
  return booleanQuery("boolean(" + ithRaw(name, i, "qd:dataPack") + ")", "qdHwFcnIthArgIsPacked1");
}

bool QDSRepo::qdHwFcnIthArgIsPacked(std::string const& name, int i) {
  // Bounded by the raw count, as both forms always have been.
  if (!rawIndexValid(*this, name, i)) return false;
  return booleanQuery("boolean(" + ithLogical(name, i, "qd:dataPack") + ")",
                      "qdHwFcnIthArgIsPacked");
}

int QDSRepo::getIthQdHwFcnArgPackedDataWidth(std::string const& name, int i) {
  if (ithQdHwFcnArgIsAximmMasterPtr(name, i) && !isQdHwHlsOpenclFcn(name)) {
    return getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:aximmMasterDataWidth",
                                    "getIthQdHwFcnArgPackedDataWidth");
  }
  int const width =
      getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:dataWidth", "getIthQdHwFcnArgPackedDataWidth");
  int const packedWidth = getIthQdHwFcnArgIntAttr2(*this, name, i, "qd:dataPackWidth",
                                                   "getIthQdHwFcnArgPackedDataWidth");
  return qdHwFcnIthArgIsPacked(name, i) ? packedWidth : width;
}

int QDSRepo::getQdHwFcnArgPackedOffset(std::string const& name, std::string const& argument) {
  if (!qdHwFcnArgIsPacked(name, argument)) return -1;
  return intQuery(lowBitOf(packedByName(name, argument)), "getQdHwFcnArgPackedOffset");
}

int QDSRepo::getIthQdHwFcnArgPackedOffset1(std::string const& name, int i) {
  if (!qdHwFcnIthArgIsPacked1(name, i)) return -1;
  return getQdHwFcnArgPackedOffset(name, getIthQdHwFcnArg1(name, i));
}

int QDSRepo::getIthQdHwFcnArgPackedOffset(std::string const& name, int i) {
  if (!qdHwFcnIthArgIsPacked(name, i)) return -1;
  return intQuery(lowBitOf(packedLogical(name, i)), "getIthQdHwFcnArgPacketOffset2");
}

int QDSRepo::getQdHwFcnArgBitMappingLSB(std::string const& name, std::string const& argument) {
  return intQuery(lowBitOf(packedByName(name, argument)), "getQdHwFcnArgBitMappingLSB");
}

int QDSRepo::getIthQdHwFcnArgBitMappingLSB(std::string const& name, int i) {
  return intQuery(lowBitOf(packedLogical(name, i)), "getIthQdHwFcnArgBitMappingLSB");
}

// ---- Inout arguments and direct connections ----------------------------------------------------

bool QDSRepo::isQdHwFcnInoutArg(std::string const& name, std::string const& argument) {
  if (getQdHwFcnArgDirection(name, argument) == "inout") return true;
  std::string const protocol = getQdHwFcnCtrlProtocol(name);
  std::string const type = getQdHwFcnArgPortInterfaceType(name, argument);
  bool const registerLike = type == "register" || type == "axilite";
  if (protocol == "axis_acc_adapter") {
    // The adapter splits an inout argument into an input and an output of the same stem.
    if (!registerLike) return false;
    return isQdHwFcnArg(name, argument + "_i") && isQdHwFcnArg(name, argument + "_o");
  }
  if (protocol == "ap_ctrl_hs" && registerLike) return isQdHwFcnArg(name, argument);
  return false;
}

bool QDSRepo::directQdFuncConnectionPossible(std::string const& nameA, std::string const& argumentA,
                                             std::string const& nameB,
                                             std::string const& argumentB) {
  if (!isQdHwFcnArg(nameA, argumentA) || !isQdHwFcnArg(nameB, argumentB)) return false;
  port_t const typeA = str2port_t(getQdHwFcnArgPortInterfaceType(nameA, argumentA));
  port_t const typeB = str2port_t(getQdHwFcnArgPortInterfaceType(nameB, argumentB));
  int const widthA = getQdHwFcnArgDataWidth1(nameA, argumentA);
  int const widthB = getQdHwFcnArgDataWidth1(nameB, argumentB);
  // A stream carries whole bytes, at most 2048 bits of them.
  auto const streamFits = [](port_t type, int width) {
    return type != PORT_AXIS || (width <= 0x800 && width % 8 == 0);
  };
  if (!streamFits(typeA, widthA) || !streamFits(typeB, widthB)) return false;
  auto const direct = [](port_t type) {
    return type == PORT_AXIS || type == PORT_BRAM || type == PORT_FIFO;
  };
  return direct(typeA) && direct(typeB);
}

}  // namespace qd
