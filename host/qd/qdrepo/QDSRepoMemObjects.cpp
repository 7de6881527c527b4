// Memory object and SP tag queries.
#include <algorithm>
#include <climits>
#include <sstream>
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {
namespace {

// The platform as every tag and memory object expression selects it.
std::string platformOf(std::string const& platform) {
  return "/qd:repository/qd:component[@qd:name='" + platform + "' and @qd:type='platform'][1]";
}

// The platform as a plain component, for the queries that name the platform's element by name
// alone (their guard has made sure it is the platform).
std::string componentOf(std::string const& platform) {
  return "/qd:repository/qd:component[@qd:name='" + platform + "']";
}

std::string memObject(std::string const& platform, std::string const& object) {
  return platformOf(platform) + "/qd:busInterface[@qd:memport and @qd:name='" + object + "']";
}

std::string ithMemObject(int i, std::string const& platform) {
  return platformOf(platform) + "/qd:busInterface[@qd:memport and @qd:mode='slave'][" +
         std::to_string(static_cast<long long>(i) + 1) + "]";
}

std::string memObjectSegment(std::string const& platform, std::string const& object,
                             std::string const& segment) {
  return memObject(platform, object) + "/qd:addressSegment[@qd:baseName='" + segment + "']";
}

// The interfaces that carry `tag` (a plain tag, or the base of a range) as their qd:sptag.
std::string tagged(std::string const& platform, std::string const& tag) {
  return platformOf(platform) + "/qd:busInterface[@qd:sptag='" + tag + "']";
}

// An attribute of the first interface that carries the base of `tag`.
std::string tagAttribute(QDSRepo& repo, std::string const& platform, std::string const& tag,
                         std::string const& attribute) {
  std::string base;
  int low = 0;
  int high = 0;
  repo.disassembleRangeSpTag(tag, base, low, high);
  return tagged(platform, base) + "[1]/@" + attribute;
}

std::string stringAttr(QDSRepo& repo, std::string const& expression, std::string const& caller) {
  if (!repo.booleanQuery("boolean(" + expression + ")", caller)) return "";
  return repo.stringQuery(expression, caller);
}

int intAttr(QDSRepo& repo, std::string const& expression, std::string const& caller) {
  if (!repo.booleanQuery("boolean(" + expression + ")", caller)) return -1;
  return repo.intQuery("number(" + expression + ")", caller);
}

// The attribute, checked against `field` of the platform's cached AXI interface of that name.
std::string checkedMemObjectAttribute(QDSRepo& repo, std::string const& platform,
                                      std::string const& object, std::string const& attribute,
                                      std::string const& query, std::string AxiBusIntf::*field) {
  std::string const answer = getMemObjectStringAttr(repo, platform, object, attribute);
  if (repo.platformComponent && !object.empty()) {
    auto const& axi = repo.platformComponent->axiInterfaces;
    auto const found = axi.find(object);
    QDREPO_VERIFY(query, answer, found == axi.end() ? std::string() : (*found->second).*field,
                  platform + "/" + object);
  }
  return answer;
}

void addOnce(std::vector<std::string>& list, std::string const& item) {
  if (std::find(list.begin(), list.end(), item) == list.end()) list.push_back(item);
}

}  // namespace

// ---- File level ----------------------------------------------------------------------------

std::string getMemObjectStringAttr(QDSRepo& repo, std::string const& platform,
                                   std::string const& object, std::string const& attribute) {
  return stringAttr(repo, memObject(platform, object) + "/@" + attribute,
                    " getMemObjectStringAttr ");
}

int getMemObjectIntAttr(QDSRepo& repo, std::string const& platform, std::string const& object,
                        std::string const& attribute) {
  return intAttr(repo, memObject(platform, object) + "/@" + attribute, " getMemObjectIntAttr ");
}

std::string getIthMemObjectStringAttr(QDSRepo& repo, int i, std::string const& platform,
                                      std::string const& attribute) {
  return stringAttr(repo, ithMemObject(i, platform) + "/@" + attribute,
                    " getIthMemObjectStringAttr ");
}

int getIthMemObjectIntAttr(QDSRepo& repo, int i, std::string const& platform,
                           std::string const& attribute) {
  return intAttr(repo, ithMemObject(i, platform) + "/@" + attribute, " getIthMemObjectIntAttr ");
}

int getMemObjectSegmentIntAttr(QDSRepo& repo, std::string const& platform,
                               std::string const& object, std::string const& segment,
                               std::string const& attribute) {
  return intAttr(repo, memObjectSegment(platform, object, segment) + "/@" + attribute,
                 " getMemObjectSegmentIntAttr ");
}

std::string getMemObjectSegmentStringAttr(QDSRepo& repo, std::string const& platform,
                                          std::string const& object, std::string const& segment,
                                          std::string const& attribute) {
  return stringAttr(repo, memObjectSegment(platform, object, segment) + "/@" + attribute,
                    " getMemObjectSegmentStringAttr ");
}

// ---- The memory object family ----------------------------------------------------------------

std::string QDSRepo::getMemObjectInstRef(std::string const& platform, std::string const& object) {
  return checkedMemObjectAttribute(*this, platform, object, "qd:instanceRef", "getMemObjectInstRef",
                                   &AxiBusIntf::instanceRef);
}

std::string QDSRepo::getMemObjectSlr(std::string const& platform, std::string const& object) {
  return checkedMemObjectAttribute(*this, platform, object, "qd:slr", "getMemObjectSlr",
                                   &AxiBusIntf::slr);
}

std::string QDSRepo::getMemObjectMemPort(std::string const& platform, std::string const& object) {
  return checkedMemObjectAttribute(*this, platform, object, "qd:memport", "getMemObjectMemPort",
                                   &AxiBusIntf::memport);
}

std::string QDSRepo::getMemObjectAddressSegment(std::string const& platform,
                                                std::string const& object) {
  return getMemObjectStringAttr(*this, platform, object, "qd:addressSegment");
}

std::string QDSRepo::getMemObjectCompRef(std::string const& platform, std::string const& object) {
  return getMemObjectStringAttr(*this, platform, object, "qd:componentRef");
}

std::string QDSRepo::getMemObjectSptag(std::string const& platform, std::string const& object) {
  return getMemObjectStringAttr(*this, platform, object, "qd:sptag");
}

int QDSRepo::getMemObjectDataWidth(std::string const& platform, std::string const& object) {
  return getMemObjectIntAttr(*this, platform, object, "qd:dataWidth");
}

int QDSRepo::getMemObjectPeakMemoryBandwidth(std::string const& platform,
                                             std::string const& object) {
  return getMemObjectIntAttr(*this, platform, object, "qd:peakMemoryBandwidth");
}

int QDSRepo::getMemObjectMaxMasters(std::string const& object, std::string const& platform) {
  std::string const componentRef =
      getMemObjectStringAttr(*this, platform, object, "qd:componentRef");
  std::string const cpu = stringQuery(componentOf(platform) +
                                          "[1]/qd:platformInfo/qd:systemClocks/"
                                          "qd:clock[@qd:name='CPU']/@qd:componentRef",
                                      "getMemObjectMaxMasters");
  if (componentRef == "axi_interconnect" || componentRef == "smartconnect") {
    // An interconnect shares one budget among its tagged ports; it is booked on the first.
    std::string const instance = getMemObjectStringAttr(*this, platform, object, "qd:instanceRef");
    std::string const ports =
        platformOf(platform) + "/qd:busInterface[@qd:sptag and @qd:instanceRef='" + instance + "']";
    std::string const first = stringQuery(ports + "[1]/@qd:name", "getMemObjectMaxMasters");
    if (first != object) return 0;
    return intQuery("count(" + ports + ")", "getMemObjectMaxMasters");
  }
  if (componentRef == "axi_noc" || componentRef == "axi_noc2") return 16;
  if (componentRef == cpu) {
    return getMemObjectStringAttr(*this, platform, object, "qd:memport") == "S_AXI_ACP" ? 8 : 16;
  }
  return getMemObjectIntAttr(*this, platform, object, "qd:maxMasters");
}

std::string QDSRepo::getIthMemObject(int i, std::string const& platform) {
  return getIthMemObjectStringAttr(*this, i, platform, "qd:name");
}

std::string QDSRepo::getIthMemObjectMemport(int i, std::string const& platform) {
  return getIthMemObjectStringAttr(*this, i, platform, "qd:memport");
}

std::string QDSRepo::getIthMemObjectMemoryInstRef(int i, std::string const& platform) {
  return getIthMemObjectStringAttr(*this, i, platform, "qd:memoryInstance");
}

std::string QDSRepo::getIthMemObjectAddressSegment(int i, std::string const& platform) {
  return getIthMemObjectStringAttr(*this, i, platform, "qd:addressSegment");
}

std::string QDSRepo::getIthMemObjectCompRef(int i, std::string const& platform) {
  return getIthMemObjectStringAttr(*this, i, platform, "qd:componentRef");
}

std::string QDSRepo::getIthMemObjectInstRef(int i, std::string const& platform) {
  return getIthMemObjectStringAttr(*this, i, platform, "qd:instanceRef");
}

std::string QDSRepo::getIthMemObjectSptag(int i, std::string const& platform) {
  return getIthMemObjectStringAttr(*this, i, platform, "qd:sptag");
}

std::string QDSRepo::getIthMemObjectSlr(int i, std::string const& platform) {
  return getIthMemObjectStringAttr(*this, i, platform, "qd:slr");
}

int QDSRepo::getIthMemObjectDataWidth(int i, std::string const& platform) {
  return getIthMemObjectIntAttr(*this, i, platform, "qd:dataWidth");
}

int QDSRepo::getIthMemObjectPeakMemoryBandwidth(int i, std::string const& platform) {
  return getIthMemObjectIntAttr(*this, i, platform, "qd:peakMemoryBandwidth");
}

int QDSRepo::getIthMemObjectMaxMasters(int i, std::string const& platform) {
  return getIthMemObjectIntAttr(*this, i, platform, "qd:maxMasters");
}

// ---- Other queries of memory objects ---------------------------------------------------------

int QDSRepo::getNumMemObjects(std::string const& platform) {
  if (!isQdPlatformComp(platform)) return -1;
  return intQuery(
      "count(" + componentOf(platform) + "[1]/qd:busInterface[@qd:memport and @qd:mode='slave'])",
      "getNumMemObjects");
}

bool QDSRepo::isMemObject(std::string const& platform, std::string const& name) {
  if (!isQdPlatformComp(platform)) return false;
  return booleanQuery("boolean(" + memObject(platform, name) + ")", "isMemObject");
}

int QDSRepo::getNumSptagsForMemObject(std::string const& platform, std::string const& memport) {
  if (!isQdPlatformComp(platform)) return -1;
  return intQuery("count(" + platformOf(platform) + "/qd:busInterface[@qd:memport='" + memport +
                      "']/@qd:sptag)",
                  "getNumSptagsForMemObject");
}

std::string QDSRepo::getIthSptagForMemObject(int i, std::string const& platform,
                                             std::string const& memport) {
  if (!isQdPlatformComp(platform)) return "";
  return stringQuery(platformOf(platform) + "/qd:busInterface[@qd:memport='" + memport + "'][" +
                         std::to_string(static_cast<long long>(i) + 1) + "]/@qd:sptag",
                     "getIthSptagForMemObject");
}

std::string QDSRepo::getPortForMemObjectSptag(std::string const& platform,
                                              std::string const& memport, std::string const& tag) {
  if (!isQdPlatformComp(platform) || tag.empty()) return "";
  return stringQuery(platformOf(platform) + "/qd:busInterface[@qd:memport='" + memport +
                         "' and @qd:sptag = '" + tag + "'][1]/@qd:name",
                     "getPortForMemObjectSptag");
}

std::string QDSRepo::getPortForSptag(std::string const& platform, std::string const& tag) {
  if (!isQdPlatformComp(platform)) return "";
  return stringQuery(tagged(platform, tag) + "[1]/@qd:name", "getPortForSptag");
}

std::vector<std::string> QDSRepo::getAllSlrs(std::string const& component) {
  if (!isQdPlatformComp(component)) return {};
  std::vector<std::string> slrs =
      stringListQuery(componentOf(component) + "[1]/qd:busInterface/@qd:slr", "getAllSlrs");
  std::sort(slrs.begin(), slrs.end());
  slrs.erase(std::unique(slrs.begin(), slrs.end()), slrs.end());
  return slrs;
}

std::string QDSRepo::getQdCompPlatformInstanceSlr(std::string const& platform,
                                                  std::string const& port) {
  if (!isQdPlatformComp(platform)) return "";
  return stringQuery(platformOf(platform) +
                         "/qd:busInterface[@qd:instanceRef=../qd:busInterface[@qd:name='" + port +
                         "']/@qd:instanceRef]/@qd:slr",
                     "getQdCompPlatformInstanceSlr");
}

// ---- SP tag text -----------------------------------------------------------------------------

bool QDSRepo::isRangeSpTag(std::string const& tag) {
  std::size_t const open = tag.find('[');
  return open != std::string::npos && tag.find(']', open) != std::string::npos;
}

void QDSRepo::disassembleRangeSpTag(std::string const& tag, std::string& base, int& low,
                                    int& high) {
  std::istringstream stream(tag);
  base.clear();
  std::getline(stream, base, '[');
  std::string lowText;
  std::string highText;
  if (tag.find(':') != std::string::npos) {
    std::getline(stream, lowText, ':');
    std::getline(stream, highText, ']');
  } else {
    std::getline(stream, lowText, ']');
    highText = lowText;
  }
  // A text that is no number extracts as 0, as does an empty one.
  low = 0;
  high = 0;
  std::istringstream(lowText) >> low;
  std::istringstream(highText) >> high;
}

std::string QDSRepo::assembleRangeSpTag(std::string const& base, int low, int high) {
  std::string tag = base + "[" + std::to_string(low);
  if (low != high) tag += ":" + std::to_string(high);
  return tag + "]";
}

std::vector<std::string> QDSRepo::splitSpTag(std::string const& tag) {
  std::string base;
  int low = 0;
  int high = 0;
  disassembleRangeSpTag(tag, base, low, high);
  std::vector<std::string> tags;
  for (int index = low; index <= high; ++index)
    tags.push_back(assembleRangeSpTag(base, index, index));
  return tags;
}

// ---- SP tag queries --------------------------------------------------------------------------

std::string QDSRepo::normalizeSpTag(std::string const& platform, std::string const& tag) {
  if (isRangeSpTag(tag)) return tag;
  if (booleanQuery("boolean(" + tagged(platform, tag) + ")", "normalizeSpTag")) return tag;
  // A per-segment tag of the older form: the segment's index under its interface's tag.
  std::string const memss = platformOf(platform) + "/qd:busInterface[@qd:memport='memss'";
  int const index =
      intQuery("number(" + memss + "]/qd:addressSegment[@qd:sptag='" + tag + "']/@qd:index)",
               "normalizeSpTag");
  std::string const base = stringQuery(
      memss + " and qd:addressSegment[@qd:sptag='" + tag + "']]/@qd:sptag", "normalizeSpTag");
  std::string const remapped = base + "[" + std::to_string(index) + "]";
  Log(logWARNING, 1028)
      << "Per-segment SP Tags are deprecated when in the presences of ranged SP Tags.";
  Log(logWARNING, 1028) << "SP Tag '" << tag << "' is being remapped to '" << remapped << "'.";
  return remapped;
}

bool QDSRepo::isValidSpTag(std::string const& platform, std::string const& tag) {
  if (!isRangeSpTag(tag)) {
    return booleanQuery("boolean(" + tagged(platform, tag) + ")", "isValidSpTag") ||
           booleanQuery("boolean(" + platformOf(platform) +
                            "/qd:busInterface[@qd:memport='memss']/qd:addressSegment[@qd:sptag='" +
                            tag + "'])",
                        "isValidSpTag");
  }
  std::string base;
  int low = 0;
  int high = 0;
  disassembleRangeSpTag(tag, base, low, high);
  return low >= 0 && low <= high && high < getSpTagRangeMax(platform, tag);
}

int QDSRepo::getSpTagRangeMax(std::string const& platform, std::string const& tag) {
  if (!isRangeSpTag(tag)) return -1;
  return intQuery("number(" + tagAttribute(*this, platform, tag, "qd:cardinality") + ")",
                  "getSpTagRangeMax");
}

std::vector<std::string> QDSRepo::getAllSpTags(std::string const& platform) {
  std::string const plain =
      platformOf(platform) + "/qd:busInterface[@qd:sptag and not(@qd:cardinality)]";
  std::string const ranged =
      platformOf(platform) + "/qd:busInterface[@qd:sptag and @qd:cardinality]";
  int const plainCount = intQuery("count(" + plain + "/@qd:sptag)", "getAllSpTags");
  int const rangedCount = intQuery("count(" + ranged + "/@qd:sptag)", "getAllSpTags");
  std::vector<std::string> tags;
  for (int position = 1; position <= plainCount; ++position) {
    std::string const tag =
        stringQuery(plain + "[" + std::to_string(position) + "]/@qd:sptag", "getAllSpTags");
    if (!tag.empty()) addOnce(tags, tag);
  }
  for (int position = 1; position <= rangedCount; ++position) {
    std::string const at = ranged + "[" + std::to_string(position) + "]";
    std::string const base = stringQuery(at + "/@qd:sptag", "getAllSpTags");
    int const cardinality = intQuery("number(" + at + "/@qd:cardinality)", "getAllSpTags");
    if (!base.empty()) addOnce(tags, assembleRangeSpTag(base, 0, cardinality - 1));
  }
  return tags;
}

port_t QDSRepo::getSpTagProtocol(std::string const& platform, std::string const& tag) {
  if (isRangeSpTag(tag)) return PORT_ADDRESSABLE;
  std::string const normal = normalizeSpTag(platform, tag);
  std::string const memport =
      stringQuery(tagAttribute(*this, platform, normal, "qd:memport"), "getSpTagProtocol");
  std::string const busType =
      stringQuery(tagAttribute(*this, platform, normal, "qd:busTypeRef"), "getSpTagProtocol");
  if (memport == "S_AXI_GP" || memport == "M_AXI_GP") return PORT_UNKNOWN;
  if (busType == "aximm") return PORT_ADDRESSABLE;
  if (busType == "axis") return PORT_STREAM;
  return static_cast<port_t>(3);
}

mode_t QDSRepo::getSpTagMode(std::string const& platform, std::string const& tag) {
  std::string const normal = normalizeSpTag(platform, tag);
  return str2mode_t(stringQuery(tagAttribute(*this, platform, normal, "qd:mode"), "getSpTagMode"));
}

std::vector<int> QDSRepo::getSpTagMemorySpace(std::string const& platform, std::string const& tag) {
  if (isRangeSpTag(tag)) return {1};
  std::string const normal = normalizeSpTag(platform, tag);
  std::string const busType =
      stringQuery(tagAttribute(*this, platform, normal, "qd:busTypeRef"), "getSpTagMemorySpace");
  std::string const memport =
      stringQuery(tagAttribute(*this, platform, normal, "qd:memport"), "getSpTagMemorySpace");
  if (busType == "axis") return {};
  // These ports reach the processor's own memory.
  if (memport == "S_AXI_ACP" || memport == "S_AXI_HP" || memport == "S_AXI_HPC") return {0};
  return {1};
}

bool QDSRepo::isSpTagMemory(std::string const& platform, std::string const& tag) {
  return !getSpTagMemorySpace(platform, tag).empty();
}

std::string QDSRepo::getSpTagSwName(std::string const& platform, std::string const& tag) {
  std::string const normal = normalizeSpTag(platform, tag);
  if (isRangeSpTag(normal) && normal.find(':') == std::string::npos) {
    std::string base;
    int low = 0;
    int high = 0;
    disassembleRangeSpTag(normal, base, low, high);
    std::string const segmentTag = tagged(platform, base) + "/qd:addressSegment[@qd:index='" +
                                   std::to_string(low) + "']/@qd:sptag";
    if (booleanQuery("boolean(" + segmentTag + ")", "getSpTagSwName")) {
      return stringQuery(segmentTag, "getSpTagSwName");
    }
  }
  return tag;
}

bool QDSRepo::isSpTagCoherent(std::string const& platform, std::string const& tag) {
  if (isRangeSpTag(tag)) return false;
  std::string const normal = normalizeSpTag(platform, tag);
  return stringQuery(tagAttribute(*this, platform, normal, "qd:cacheCoherent"),
                     "isSpTagCoherent") == "true";
}

int QDSRepo::getSpTagDataWidth(std::string const& platform, std::string const& tag) {
  std::string const normal = normalizeSpTag(platform, tag);
  std::string const width = tagAttribute(*this, platform, normal, "qd:dataWidth");
  if (!booleanQuery("boolean(" + width + ")", "getSpTagDataWidth")) return 0;
  return intQuery("number(" + width + ")", "getSpTagDataWidth");
}

int QDSRepo::getSpTagPeakBw(std::string const& platform, std::string const& tag) {
  std::string const normal = normalizeSpTag(platform, tag);
  std::string const peak = tagAttribute(*this, platform, normal, "qd:peakMemoryBandwidth");
  if (booleanQuery("boolean(" + peak + ")", "getSpTagPeakBw")) {
    return intQuery("number(" + peak + ")", "getSpTagPeakBw");
  }
  std::string const memport =
      stringQuery(tagAttribute(*this, platform, normal, "qd:memport"), "getSpTagPeakBw");
  if (memport == "M_AXI_GP" || memport == "S_AXI_GP") return 600;
  if (memport == "S_AXI_ACP") return 700;
  if (memport == "S_AXI_HP") return 1200;
  if (memport == "S_AXI_HPC") return 3000;
  // The normalised tag normalises to itself, so the width asks without a second warning.
  int const width = getSpTagDataWidth(platform, normal);
  return width > 0 ? width / 8 * 100 : 0;
}

std::vector<std::string> QDSRepo::getMemObjectsFromSpTag(std::string const& platform,
                                                         std::string const& tag) {
  std::string const normal = normalizeSpTag(platform, tag);
  std::vector<std::string> objects;
  if (!isRangeSpTag(normal)) {
    int const count =
        intQuery("count(" + tagged(platform, normal) + "/@qd:name)", "getMemObjectsFromSpTag");
    for (int position = 1; position <= count; ++position) {
      addOnce(objects,
              stringQuery(tagged(platform, normal) + "[" + std::to_string(position) + "]/@qd:name",
                          "getMemObjectsFromSpTag"));
    }
    return objects;
  }
  std::string base;
  int low = 0;
  int high = 0;
  disassembleRangeSpTag(normal, base, low, high);
  // A range stands for the one interface that carries its base: always one entry, read as one
  // string query. No interface of that base gives the entry "", which callers see as an object
  // with no segments (so getSpTagAutoEnable goes on to its warning rather than its hard stop).
  objects.push_back(stringQuery(tagged(platform, base) + "/@qd:name", "getMemObjectsFromSpTag"));
  return objects;
}

namespace {

// What the segment readers share, for a normalised tag on one memory object: for a plain tag
// the interface's own `attribute`, for a range the `attribute` of each index's segment (one
// expression per index), missing ones passed over. `objectTest` opens the test of the object's
// name, as each reader has always written it.
std::vector<std::string> segmentsOfTag(QDSRepo& repo, std::string const& platform,
                                       std::string const& object, std::string const& normal,
                                       std::string const& plainAttribute,
                                       std::string const& rangeAttribute,
                                       std::string const& objectTest, std::string const& caller) {
  std::vector<std::string> values;
  if (!repo.isRangeSpTag(normal)) {
    std::string const expression = platformOf(platform) + "/qd:busInterface[@qd:sptag='" + normal +
                                   "' and @qd:name='" + object + "']/@" + plainAttribute;
    if (repo.booleanQuery("boolean(" + expression + ")", caller)) {
      values.push_back(repo.stringQuery(expression, caller));
    }
    return values;
  }
  std::string base;
  int low = 0;
  int high = 0;
  repo.disassembleRangeSpTag(normal, base, low, high);
  std::string const segments = platformOf(platform) + "/qd:busInterface[" + objectTest + object +
                               "' and @qd:sptag='" + base + "']/qd:addressSegment[@qd:index='";
  std::string const attribute = "']/@" + rangeAttribute;
  for (int index = low; index <= high; ++index) {
    std::string const expression = segments + std::to_string(index) + attribute;
    if (repo.booleanQuery("boolean(" + expression + ")", caller)) {
      values.push_back(repo.stringQuery(expression, caller));
    }
  }
  return values;
}

}  // namespace

std::vector<std::string> QDSRepo::getMemObjectSegmentsForSpTag(std::string const& platform,
                                                               std::string const& object,
                                                               std::string const& tag) {
  // A plain tag names the interface's one qd:addressSegment; a range each segment's qd:baseName.
  return segmentsOfTag(*this, platform, object, normalizeSpTag(platform, tag), "qd:addressSegment",
                       "qd:baseName", "@qd:name = '", "getMemObjectSegmentsForSpTag");
}

std::vector<std::string> QDSRepo::getMemObjectMemInstsForSpTag(std::string const& platform,
                                                               std::string const& object,
                                                               std::string const& tag) {
  return segmentsOfTag(*this, platform, object, normalizeSpTag(platform, tag), "qd:memoryInstance",
                       "qd:memoryInstance", "@qd:name='", "getMemObjectMemInstsForSpTag");
}

std::vector<std::string> QDSRepo::getMemObjectMemInterfaceForSpTag(std::string const& platform,
                                                                   std::string const& object,
                                                                   std::string const& tag) {
  std::string const normal = normalizeSpTag(platform, tag);
  if (isRangeSpTag(normal)) return {};
  std::string const expression = platformOf(platform) + "/qd:busInterface[@qd:sptag='" + normal +
                                 "' and @qd:name='" + object + "']/@qd:memoryInterface";
  if (!booleanQuery("boolean(" + expression + ")", "getMemObjectMemInterfaceForSpTag")) return {};
  return {stringQuery(expression, "getMemObjectMemInterfaceForSpTag")};
}

std::vector<std::string> QDSRepo::getSpTagSlrs(std::string const& platform, std::string const& tag,
                                               bool unique) {
  std::string const normal = normalizeSpTag(platform, tag);
  std::vector<std::string> slrs;
  if (!isRangeSpTag(normal)) {
    std::string const expression = tagged(platform, normal) + "[1]/@qd:slr";
    if (booleanQuery("boolean(" + expression + ")", "getSpTagSlrs")) {
      slrs.push_back(stringQuery(expression, "getSpTagSlrs"));
    }
    return slrs;
  }
  std::string base;
  int low = 0;
  int high = 0;
  disassembleRangeSpTag(normal, base, low, high);
  std::string const segments = tagged(platform, base) + "/qd:addressSegment[@qd:index='";
  for (int index = low; index <= high; ++index) {
    std::string const slr =
        stringQuery(segments + std::to_string(index) + "']/@qd:slr", "getSpTagSlrs");
    if (unique) {
      addOnce(slrs, slr);
    } else {
      slrs.push_back(slr);
    }
  }
  return slrs;
}

std::string QDSRepo::getSpTagAutoEnable(std::string const& platform, std::string const& tag) {
  std::string const normal = normalizeSpTag(platform, tag);
  if (!isRangeSpTag(normal)) {
    std::string const expression = tagged(platform, normal) + "/@qd:auto";
    if (!booleanQuery("boolean(" + expression + ")", "getSpTagAutoEnable")) return "true";
    return stringQuery(expression, "getSpTagAutoEnable");
  }
  std::vector<std::string> const objects = getMemObjectsFromSpTag(platform, normal);
  if (objects.size() != 1) {
    Log(logERROR, 1055) << "sptag " << normal << " doesn't reference a single memory interface";
    std::exit(-1);
  }
  std::vector<std::string> values;
  for (std::string const& segment : getMemObjectSegmentsForSpTag(platform, objects[0], normal)) {
    values.push_back(
        getMemObjectSegmentStringAttr(*this, platform, objects[0], segment, "qd:auto"));
  }
  auto const any = [&values](char const* word) {
    return std::find(values.begin(), values.end(), word) != values.end();
  };
  // One refusing segment refuses the whole range, and a plain yes outranks a preference.
  if (any("false")) return "false";
  if (any("true")) return "true";
  if (any("preferred")) return "preferred";
  Log(logWARNING, 1056) << "auto enable property unrecognized for spTag " << normal;
  return "false";
}

int QDSRepo::getSpTagMaxMasters(std::string const& platform, std::string const& object,
                                std::string const& tag) {
  std::string const normal = normalizeSpTag(platform, tag);
  if (!isRangeSpTag(normal)) return getMemObjectMaxMasters(object, platform);
  int least = INT_MAX;
  for (std::string const& segment : getMemObjectSegmentsForSpTag(platform, object, normal)) {
    least = std::min(least,
                     getMemObjectSegmentIntAttr(*this, platform, object, segment, "qd:maxMasters"));
  }
  return least;
}

}  // namespace qd
