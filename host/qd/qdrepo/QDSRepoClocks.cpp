// Platform clock queries.
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {
namespace {

std::string systemClocks(std::string const& platform) {
  return "/qd:repository/qd:component[@qd:name='" + platform +
         "'][1]/qd:platformInfo/qd:systemClocks";
}

// A clock with no status is not available either.
std::string availableClocks(std::string const& platform) {
  return systemClocks(platform) + "/qd:clock[@qd:status != 'reserved']";
}

bool clockIdUsable(QDSRepo& repo, int id, std::string const& platform) {
  if (repo.isQdPlatformComp(platform) && repo.isAvailableClockId(id, platform)) return true;
  Log(logWARNING, 10051) << "Invalid clock id " << id << " for platform " << platform;
  return false;
}

std::string clockAttribute(int id, std::string const& platform, std::string const& attribute) {
  return systemClocks(platform) + "/qd:clock[@qd:id='" + std::to_string(id) + "']/@" + attribute;
}

}  // namespace

double getClockFloatAttr(QDSRepo& repo, int id, std::string const& platform,
                         std::string const& attribute, std::string const& caller) {
  if (!clockIdUsable(repo, id, platform)) return -1.0;
  return repo.floatQuery("number(" + clockAttribute(id, platform, attribute) + ")", caller);
}

std::string getClockStringAttr(QDSRepo& repo, int id, std::string const& platform,
                               std::string const& attribute, std::string const& caller) {
  if (!clockIdUsable(repo, id, platform)) return "";
  return repo.stringQuery(clockAttribute(id, platform, attribute), caller);
}

bool QDSRepo::isAvailableClockId(int id, std::string const& platform) {
  return booleanQuery(
      "boolean(" + availableClocks(platform) + "[@qd:id='" + std::to_string(id) + "'])",
      "isAvailableClockId");
}

int QDSRepo::getNumAvailableClocks(std::string const& platform) {
  if (!isQdPlatformComp(platform)) return -1;
  return intQuery("count(" + availableClocks(platform) + ")", "getNumAvailableClocks");
}

int QDSRepo::getIthAvailableClockId(int i, std::string const& platform) {
  if (i < 0 || i >= getNumAvailableClocks(platform)) return -1;
  return intQuery("number(" + availableClocks(platform) + "[" + std::to_string(i + 1) + "]/@qd:id)",
                  "getIthAvailableClockId");
}

int QDSRepo::getPlatformDefaultClockId(std::string const& platform) {
  if (!isQdPlatformComp(platform)) return -1;
  return intQuery("number(" + systemClocks(platform) + "/@qd:defaultClock)",
                  "getPlatformDefaultClockId");
}

double QDSRepo::getClockFrequencyForClockId(int id, std::string const& platform) {
  return getClockFloatAttr(*this, id, platform, "qd:frequency", "getClockFrequencyForClockId");
}

float QDSRepo::getCpuClockFrequency(std::string const& platform) {
  if (!isQdPlatformComp(platform)) return -1.0f;
  return static_cast<float>(
      floatQuery("number(" + systemClocks(platform) + "/qd:clock[@qd:name='CPU']/@qd:frequency)",
                 "getCpuClockFrequency"));
}

}  // namespace qd

namespace qd {
namespace {

std::string platformMasterClocks(std::string const& platform) {
  return "/qd:repository/qd:component[@qd:name='" + platform +
         "'][1]/qd:busInterface[@qd:busTypeRef='clock' and @qd:mode='master']";
}

}  // namespace

int QDSRepo::getNumPlatformClocks(std::string const& platform) {
  if (!isQdPlatformComp(platform)) return -1;
  int const answer =
      intQuery("count(" + platformMasterClocks(platform) + ")", "getNumPlatformClocks");
  if (platformComponent) {
    int masters = 0;
    for (auto const& clock : platformComponent->clockList) masters += clock->isMaster ? 1 : 0;
    QDREPO_VERIFY("getNumPlatformClocks", answer, masters, "");
  }
  return answer;
}

std::string QDSRepo::getIthPlatformClock(int i, std::string const& platform) {
  if (!isQdPlatformComp(platform)) return "";
  std::string const answer =
      stringQuery(platformMasterClocks(platform) + "[" + std::to_string(i + 1) + "]/@qd:name",
                  "getIthPlatformClock");
  if (platformComponent) {
    std::string cached;
    int index = 0;
    for (auto const& clock : platformComponent->clockList) {
      if (!clock->isMaster) continue;
      if (index++ == i) cached = clock->name;
    }
    QDREPO_VERIFY("getIthPlatformClock", answer, cached, "");
  }
  return answer;
}

}  // namespace qd
