// Hardware function queries.
#include <sstream>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {

std::string getQdHwFcnStrAttr(QDSRepo& repo, std::string const& function,
                              std::string const& attribute, std::string const& caller) {
  if (!repo.isQdHwFcn(function)) {
    Log(logINTERNAL, 1003) << "Function '" << function << "' is not a hardware function";
    return "";
  }
  std::ostringstream expression;
  expression << "/qd:repository/qd:fcnMap[@qd:fcnName='" << function << "'][1]/@" << attribute;
  return repo.stringQuery(expression.str(), caller);
}

bool QDSRepo::isQdHwFcn(std::string const& function) {
  std::ostringstream expression;
  expression << "boolean(/qd:repository/qd:fcnMap[@qd:fcnName='" << function << "'])";
  return booleanQuery(expression.str(), "isQdHwFcn");
}

int QDSRepo::getNumQdHwFcns() {
  return intQuery("count(/qd:repository/qd:fcnMap)", "getNumQdHwFcns");
}

std::string QDSRepo::getIthQdHwFcn(int i) {
  std::ostringstream expression;
  expression << "/qd:repository/qd:fcnMap[" << i + 1 << "]/@qd:fcnName";
  return stringQuery(expression.str(), "getIthQdHwFcn");
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

std::string function(std::string const& name) {
  return "/qd:repository/qd:fcnMap[@qd:fcnName='" + name + "'][1]";
}

std::string ithRaw(std::string const& name, int i, std::string const& attribute) {
  return function(name) + "/qd:arg[" + std::to_string(i + 1) + "]/@" + attribute;
}

std::string ithLogical(std::string const& name, int i, std::string const& attribute) {
  return function(name) + "/qd:arg" + kLogicalArgs + "[" + std::to_string(i + 1) + "]/@" +
         attribute;
}

std::string byName(std::string const& name, std::string const& key, std::string const& argument,
                   std::string const& attribute) {
  return function(name) + "/qd:arg[@" + key + "='" + argument + "'][1]/@" + attribute;
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
  return repo.intQuery("number(" + ithRaw(name, i, attribute) + ")", caller);
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
  return repo.intQuery("number(" + ithLogical(name, i, attribute) + ")", caller);
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
    int const answer =
        repo.intQuery("number(" + byName(name, key, argument, attribute) + ")", caller);
    if (answer != -1) return answer;
  }
  return repo.intQuery("number(" + byName(name, "qd:swRootName", argument, attribute) + ")",
                       caller);
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
  return intQuery("count(" + function(name) + "/qd:arg)", "getNumQdHwFcnArgs1");
}

int QDSRepo::getNumQdHwFcnArgs(std::string const& name) {
  if (!isQdHwFcn(name)) return -1;
  return intQuery("count(" + function(name) + "/qd:arg" + kLogicalArgs + ")", "getNumQdHwFcnArgs");
}

bool QDSRepo::isQdHwFcnArg(std::string const& name, std::string const& argument) {
  if (!isQdHwFcn(name)) return false;
  for (char const* key : {"qd:name", "qd:hwName", "qd:swRootName"}) {
    if (booleanQuery("boolean(" + function(name) + "/qd:arg[@" + key + "='" + argument + "'])",
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
  if (booleanQuery("boolean(" + byName(name, "qd:name", argument, "qd:dataPack") + ")",
                   "qdHwFcnArgIsPacked")) {
    return true;
  }
  return booleanQuery("boolean(" + byName(name, "qd:swRootName", argument, "qd:dataPack") + ")",
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
  return booleanQuery("boolean(" + byName(name, "qd:name", argument, "qd:arraySize") + ")",
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
