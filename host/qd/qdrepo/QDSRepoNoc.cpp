// NoC queries: the platform's qd:nocConnectivity elements and its NoC resource estimates.
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {
namespace {

// The platform as the NoC expressions have always selected it, with a blank before the "=".
std::string nocPlatform(std::string const& platform) {
  return "/qd:repository/qd:component[@qd:name='" + platform + "' and @qd:type ='platform'][1]";
}

std::string nocInstance(std::string const& platform, std::string const& instance) {
  return nocPlatform(platform) + "/qd:nocConnectivity[@qd:instanceRef='" + instance + "'][1]";
}

std::string nocConnection(std::string const& platform, std::string const& instance,
                          std::string const& connection) {
  return nocInstance(platform, instance) + "/qd:busInterface[@qd:name='" + connection + "']";
}

std::string nocSegment(std::string const& platform, std::string const& instance,
                       std::string const& connection, int i) {
  return nocConnection(platform, instance, connection) + "/qd:addressSegment[" +
         std::to_string(static_cast<long long>(i) + 1) + "]";
}

bool endsWith(std::string const& text, std::string const& end) {
  return text.size() >= end.size() && text.compare(text.size() - end.size(), end.size(), end) == 0;
}

bool startsWith(std::string const& text, std::string const& start) {
  return text.compare(0, start.size(), start) == 0;
}

}  // namespace

bool QDSRepo::hasNocData(std::string const& platform, std::string const& instance) {
  return booleanQuery("boolean(" + nocInstance(platform, instance) + ")", "hasNocData");
}

std::vector<std::string> QDSRepo::getNocInstanceSet(std::string const& platform) {
  return stringListQuery(nocPlatform(platform) + "/qd:nocConnectivity/@qd:instanceRef",
                         "getNocInstanceSet");
}

std::vector<std::string> QDSRepo::getNocConnectionSet(std::string const& platform,
                                                      std::string const& instance) {
  return stringListQuery(nocInstance(platform, instance) + "/qd:busInterface/@qd:name",
                         "getNocConnectionSet");
}

std::vector<std::string> QDSRepo::getNocSlaveBusIfSet(std::string const& platform,
                                                      std::string const& instance) {
  return stringListQuery(
      nocInstance(platform, instance) + "/qd:busInterface[@qd:mode='slave']/@qd:name",
      "getNocSlaveBusIfSet");
}

std::vector<std::string> QDSRepo::getNocMasterBusIfSet(std::string const& platform,
                                                       std::string const& instance) {
  return stringListQuery(
      nocInstance(platform, instance) + "/qd:busInterface[@qd:mode='master']/@qd:name",
      "getNocMasterBusIfSet");
}

int QDSRepo::numNocConnectionAddressSegment(std::string const& platform,
                                            std::string const& instance,
                                            std::string const& connection) {
  return intQuery("count(" + nocConnection(platform, instance, connection) + "/qd:addressSegment)",
                  "numNocConnectionAddressSegment");
}

std::string QDSRepo::getNocConnectionBusInterfaceRef(std::string const& platform,
                                                     std::string const& instance,
                                                     std::string const& connection) {
  return stringQuery(nocConnection(platform, instance, connection) + "/@qd:busInterfaceRef",
                     "getNocConnectionBusInterfaceRef");
}

std::string QDSRepo::getNocConnectionMode(std::string const& platform, std::string const& instance,
                                          std::string const& connection) {
  return stringQuery(nocConnection(platform, instance, connection) + "/@qd:mode",
                     "getNocConnectionMode");
}

std::string QDSRepo::getNocConnectionAddressSegmentName(std::string const& platform,
                                                        std::string const& instance,
                                                        std::string const& connection, int i) {
  return stringQuery(nocSegment(platform, instance, connection, i) + "/@qd:name",
                     "getNocConnectionAddressSegmentName");
}

std::string QDSRepo::getNocConnectionAddressSegmentInstanceRef(std::string const& platform,
                                                               std::string const& instance,
                                                               std::string const& connection,
                                                               int i) {
  return stringQuery(nocSegment(platform, instance, connection, i) + "/@qd:instanceRef",
                     "getNocConnectionAddressSegmentInstanceRef");
}

std::string QDSRepo::getNocConnectionAddressSegmentRegion(std::string const& platform,
                                                          std::string const& instance,
                                                          std::string const& connection, int i) {
  return stringQuery(nocSegment(platform, instance, connection, i) + "/@qd:region",
                     "getNocConnectionAddressSegmentRegion");
}

int QDSRepo::getNocConnectionAddressSegmentReadBwUsed(std::string const& platform,
                                                      std::string const& instance,
                                                      std::string const& connection, int i) {
  return intQuery("number(" + nocSegment(platform, instance, connection, i) + "/@qd:readBwUsed)",
                  "getNocConnectionAddressSegmentReadBwUsed");
}

int QDSRepo::getNocConnectionAddressSegmentWriteBwUsed(std::string const& platform,
                                                       std::string const& instance,
                                                       std::string const& connection, int i) {
  return intQuery("number(" + nocSegment(platform, instance, connection, i) + "/@qd:writeBwUsed)",
                  "getNocConnectionAddressSegmentWriteBwUsed");
}

std::string QDSRepo::getNocConnectionAddressSegmentId(std::string const& platform,
                                                      std::string const& instance,
                                                      std::string const& connection, int i) {
  std::string const id = nocSegment(platform, instance, connection, i) + "/@qd:id";
  if (booleanQuery("boolean(" + id + ")", "getNocConnectionAddressSegmentId")) {
    return stringQuery(id, "getNocConnectionAddressSegmentId");
  }
  // Without an id of its own a segment is told apart by its name and the instance it reaches.
  return getNocConnectionAddressSegmentName(platform, instance, connection, i) + "__" +
         getNocConnectionAddressSegmentInstanceRef(platform, instance, connection, i);
}

int QDSRepo::getNocConnectionAddressSegmentInterleave(std::string const& platform,
                                                      std::string const& instance,
                                                      std::string const& connection, int i) {
  std::string const interleave = nocSegment(platform, instance, connection, i) + "/@qd:interleave";
  if (booleanQuery("boolean(" + interleave + ")", "getNocConnectionAddressSegmentInterleave")) {
    return intQuery("number(" + interleave + ")", "getNocConnectionAddressSegmentInterleave");
  }
  // Older files tell the interleave only in the segment's name, right behind its region.
  std::string const region =
      getNocConnectionAddressSegmentRegion(platform, instance, connection, i);
  std::string const name = getNocConnectionAddressSegmentName(platform, instance, connection, i);
  if (name.find(region + "x4") != std::string::npos) return 4;
  if (name.find(region + "x2") != std::string::npos) return 2;
  return 1;
}

bool QDSRepo::getPlatformNocResources(std::string const& platform, int& plNmu, int& plNsu,
                                      int& aieNmu, int& aieNsu, int& hbmNmu) {
  std::string const estimates = nocPlatform(platform) + "/qd:resourceEstimates/@qd:";
  if (!booleanQuery("boolean(" + estimates + "nocPlNmu)", "getPlatformNocResources")) return false;
  plNmu = intQuery("number(" + estimates + "nocPlNmu)", "getPlatformNocResources");
  plNsu = intQuery("number(" + estimates + "nocPlNsu)", "getPlatformNocResources");
  aieNmu = intQuery("number(" + estimates + "nocAieNmu)", "getPlatformNocResources");
  aieNsu = intQuery("number(" + estimates + "nocAieNsu)", "getPlatformNocResources");
  hbmNmu = intQuery("number(" + estimates + "nocHbmNmu)", "getPlatformNocResources");
  return true;
}

bool QDSRepo::getPlatformNocChannelBandwidth(std::string const& platform, int& bandwidth) {
  std::string const estimate = nocPlatform(platform) + "/qd:resourceEstimates/@qd:nocChannelMaxBw";
  // The caller word is the resources query's, as this one has always reported itself.
  if (!booleanQuery("boolean(" + estimate + ")", "getPlatformNocResources")) return false;
  bandwidth = intQuery("number(" + estimate + ")", "getPlatformNocResources");
  return true;
}

noc_resource_t QDSRepo::supportedNocResourceType(std::string const& platform,
                                                 std::string const& port) {
  std::string const reference =
      stringQuery(nocPlatform(platform) + "/qd:busInterface[@qd:name='" + port +
                      "' and @qd:busTypeRef='aximm']/@qd:busInterfaceRef",
                  "isNocResourceTypeSupported");
  if (!endsWith(reference, "_AXI")) return NOC_RESOURCE_NONE;
  if (startsWith(reference, "S")) return NOC_RESOURCE_PL_NMU;
  if (startsWith(reference, "M")) return NOC_RESOURCE_PL_NSU;
  if (startsWith(reference, "HBM")) return NOC_RESOURCE_HBM_NMU;
  return NOC_RESOURCE_NONE;
}

}  // namespace qd
