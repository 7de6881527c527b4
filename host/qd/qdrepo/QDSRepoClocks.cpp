// Platform clock queries.
#include <algorithm>
#include <map>
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
  return intQuery("number(" + availableClocks(platform) + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:id)",
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
      stringQuery(platformMasterClocks(platform) + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name",
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

namespace qd {
namespace {

std::string platformOnly(std::string const& platform) {
  return "/qd:repository/qd:component[@qd:name='" + platform + "' and @qd:type='platform'][1]";
}

// Clocks that open a domain: the first of each qd:clkDomain value. A clock without one opens
// none.
std::string domainOpeners(std::string const& platform) {
  return systemClocks(platform) +
         "/qd:clock[@qd:clkDomain and "
         "not(@qd:clkDomain=preceding-sibling::qd:clock/@qd:clkDomain)]";
}

std::string clocksOfDomain(std::string const& platform, std::string const& domain) {
  return systemClocks(platform) + "/qd:clock[@qd:clkDomain='" + domain + "']";
}

void invalidPlatform(int number, std::string const& platform) {
  Log(logERROR, number) << "Invalid platform component type: '" << platform << "'";
}

std::string resetFilter(std::string const& busInterfaceRef, std::string const& clock) {
  std::string filter;
  if (!busInterfaceRef.empty()) filter = "@qd:busInterfaceRef='" + busInterfaceRef + "' and ";
  return filter + "@qd:busTypeRef='reset' and @qd:mode='master'" + " and @qd:clockRef='" + clock +
         "'";
}

std::string platformInterfaces(std::string const& platform, std::string const& filter) {
  return "/qd:repository/qd:component[@qd:name='" + platform + "'][1]/qd:busInterface[" + filter +
         "]";
}

// Interrupt inputs of the platform that carry `number` (qd:isrId, or the legacy qd:irq).
std::string interruptInputs(std::string const& platform, std::string const& number) {
  return platformOnly(platform) +
         "/qd:busInterface[@qd:busTypeRef='interrupt' and @qd:direction='in' and " + number + "]";
}

}  // namespace

double QDSRepo::getClockPeriodForClockId(int id, std::string const& platform) {
  return getClockFloatAttr(*this, id, platform, "qd:period", "getClockPeriodForClockId");
}

double QDSRepo::getNormalizedClockPeriodForClockId(int id, std::string const& platform) {
  return getClockFloatAttr(*this, id, platform, "qd:normalizedPeriod",
                           "getNormalizedClockPeriodForClockId");
}

std::string QDSRepo::getClockStatusForClockId(int id, std::string const& platform) {
  return getClockStringAttr(*this, id, platform, "qd:status", "getClockStatusForClockId");
}

long QDSRepo::getClockFreqHzForClockId(int id, std::string const& platform) {
  std::string text =
      getClockStringAttr(*this, id, platform, "qd:frequency", "getClockFreqHzForClockId");
  // MHz written with six decimals reads as Hz once the point is gone.
  text.erase(std::remove(text.begin(), text.end(), '.'), text.end());
  return std::stol(text, nullptr, 10);
}

std::string QDSRepo::getClockNameForClockId(int id, std::string const& platform) {
  if (!isAvailableClockId(id, platform)) {
    Log(logWARNING, 1006) << "Invalid clock id " << id << " for platform " << platform;
    return "INVALID_ID";
  }
  return stringQuery(clockAttribute(id, platform, "qd:name"), "getClockNameForClockId");
}

int QDSRepo::getClockIdForClockName(std::string const& platform, std::string const& name) {
  if (!isQdPlatformComp(platform)) {
    Log(logWARNING, 1007) << "Invalid platform component type: '" << platform << "'";
    return -1;
  }
  auto const idOf = [&](std::string const& clock) {
    return intQuery(
        "number(" + systemClocks(platform) + "/qd:clock[@qd:name='" + clock + "']/@qd:id)",
        "getClockIdForClockName");
  };
  int const id = idOf(name);
  if (id >= 0) return id;
  // The name may be the one a platform interface offers the clock under.
  return idOf(stringQuery("/qd:repository/qd:component[@qd:name='" + platform +
                              "'][1]/qd:busInterface[@qd:busInterfaceRef='" + name + "']/@qd:name",
                          "getClockIdForClockName"));
}

std::string QDSRepo::getQdPlatformCpuInstanceRef(std::string const& platform) {
  return stringQuery(systemClocks(platform) + "/qd:clock[@qd:name='CPU']/@qd:instanceRef",
                     "getQdPlatformCpuInstanceRef");
}

namespace {

std::string deviceInfo(std::string const& platform, std::string const& attribute) {
  return "/qd:repository/qd:component[@qd:name='" + platform +
         "'][1]/qd:platformInfo/qd:deviceInfo/@" + attribute;
}

std::string derivedClock(std::string const& function, std::string const& attribute) {
  return "/qd:repository/qd:fcnMap[@qd:fcnName='" + function + "'][1]/qd:derivedClock/@" +
         attribute;
}

}  // namespace

std::string QDSRepo::getArchitectureForPlatform(std::string const& platform) {
  return stringQuery(deviceInfo(platform, "qd:architecture"), "getArchitectureForPlatform");
}

std::string QDSRepo::getDeviceForPlatform(std::string const& platform) {
  return stringQuery(deviceInfo(platform, "qd:device"), "getDeviceForPlatform") + ":" +
         stringQuery(deviceInfo(platform, "qd:package"), "getDeviceForPlatform") + ":" +
         stringQuery(deviceInfo(platform, "qd:speedGrade"), "getDeviceForPlatform");
}

long QDSRepo::getAiePeakFrequency(std::string const& platform) {
  static std::map<std::string, long> const kPeakHz = {
      {"-1LP", 1000000000L}, {"-1MP", 1150000000L},  {"-2LP", 1050000000L},
      {"-2MP", 1250000000L}, {"-2HP", 1300000000L},  {"-3HP", 1300000000L},
      {"-1LQ", 1000000000L}, {"-1LHP", 1000000000L}, {"-1MM", 1150000000L},
  };
  auto const found =
      kPeakHz.find(stringQuery(deviceInfo(platform, "qd:speedGrade"), "getAiePeakFrequency"));
  return found == kPeakHz.end() ? 1000000000L : found->second;
}

std::string QDSRepo::getDerivedClockPort(std::string const& function) {
  return stringQuery(derivedClock(function, "qd:derivedClockName"), "getDerivedClockPort");
}

int QDSRepo::getDerivedClockPeriodMultiplier(std::string const& function) {
  return intQuery("number(" + derivedClock(function, "qd:derivedClockPeriodMultiplier") + ")",
                  "getDerivedClockPeriodMultiplier");
}

int QDSRepo::getDerivedClockPeriodDivisor(std::string const& function) {
  return intQuery("number(" + derivedClock(function, "qd:derivedClockPeriodDivisor") + ")",
                  "getDerivedClockPeriodDivisor");
}

int QDSRepo::getNumClockDomains(std::string const& platform) {
  if (!isQdPlatformComp(platform)) {
    invalidPlatform(1009, platform);
    return -1;
  }
  return intQuery("count(" + domainOpeners(platform) + ")", "getNumClockDomains");
}

std::string QDSRepo::getIthClockDomain(int i, std::string const& platform) {
  if (!isQdPlatformComp(platform)) {
    invalidPlatform(1010, platform);
    return "";
  }
  return stringQuery(domainOpeners(platform) + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:clkDomain",
                     "getIthClockDomain");
}

std::string QDSRepo::getClockDomainForClockId(int id, std::string const& platform) {
  if (!isQdPlatformComp(platform)) {
    invalidPlatform(1011, platform);
    return "";
  }
  return stringQuery(
      systemClocks(platform) + "/qd:clock[@qd:id=" + std::to_string(id) + "]/@qd:clkDomain",
      "getClockDomainForClockId");
}

int QDSRepo::getNumClockIdsForClockDomain(std::string const& platform, std::string const& domain) {
  if (!isQdPlatformComp(platform)) {
    invalidPlatform(1013, platform);
    return -1;
  }
  return intQuery("count(" + clocksOfDomain(platform, domain) + ")",
                  "getNumClockIdsForClockDomain");
}

namespace {

// The index may equal the count: such a call finds nothing and says nothing, which the
// walk of getResetBusInterfaceForClockDomain relies on.
bool domainIndexUsable(QDSRepo& repo, int i, std::string const& platform,
                       std::string const& domain) {
  return repo.isQdPlatformComp(platform) && i >= 0 &&
         i <= repo.getNumClockIdsForClockDomain(platform, domain);
}

void invalidDomainIndex(int number, int i, std::string const& platform, std::string const& domain) {
  Log(logERROR, number) << "Invalid clock id " << i << " for platform '" << platform
                        << "' clkDomain '" << domain << "'";
}

}  // namespace

int QDSRepo::getIthClockIdForClockDomain(int i, std::string const& platform,
                                         std::string const& domain) {
  if (!domainIndexUsable(*this, i, platform, domain)) {
    invalidDomainIndex(1018, i, platform, domain);
    return -1;
  }
  return intQuery(
      "number(" + clocksOfDomain(platform, domain) + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:id)",
      "getIthClockIdForClockDomain");
}

std::string QDSRepo::getIthClockForClockDomain(int i, std::string const& platform,
                                               std::string const& domain) {
  if (!domainIndexUsable(*this, i, platform, domain)) {
    invalidDomainIndex(1014, i, platform, domain);
    return "";
  }
  return stringQuery(clocksOfDomain(platform, domain) + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name",
                     "getIthClockForClockDomain");
}

std::string QDSRepo::getQdResetActiveLevel(std::string const& name, std::string const& reset) {
  std::string const level =
      stringQuery("/qd:repository/qd:component[@qd:name='" + name +
                      "'][1]/qd:busInterface[@qd:name='" + reset + "']/@qd:activeLevel",
                  "getQdResetPolarity");
  if (!level.empty()) return level;
  // The names high-level synthesis gives its resets tell their polarity.
  if (reset == "ap_rst") return "high";
  if (reset == "ap_rst_n" || reset == "aresetn" || reset == "ap_rst_n_2") return "low";
  Log(logCRITICAL_WARNING, 1090) << "Could not determine reset polarity for " << reset
                                 << ", assuming active low";
  return "low";
}

std::string QDSRepo::getQdResetAssociatedClock(std::string const& name, std::string const& reset) {
  return stringQuery("/qd:repository/qd:component[@qd:name='" + name +
                         "'][1]/qd:busInterface[@qd:name='" + reset + "']/@qd:clockRef",
                     "getQdResetAssociatedClock");
}

int QDSRepo::getQdPlatformResetBusInterfaceForClkCount(std::string const& platform,
                                                       std::string const& busInterfaceRef,
                                                       std::string const& clock) {
  return intQuery(
      "count(" + platformInterfaces(platform, resetFilter(busInterfaceRef, clock)) + ")",
      "getQdPlatformResetBusInterfaceForClkCount");
}

std::string QDSRepo::getQdPlatformResetBusInterfaceForClk(std::string const& platform,
                                                          std::string const& busInterfaceRef,
                                                          std::string const& clock, int i) {
  if (!isQdPlatformComp(platform)) return "";
  std::string const resets = platformInterfaces(platform, resetFilter(busInterfaceRef, clock));
  std::string answer;
  if (booleanQuery("boolean(" + resets + ")", "getQdPlatformResetBusInterfaceForClk") &&
      i < getQdPlatformResetBusInterfaceForClkCount(platform, busInterfaceRef, clock)) {
    answer = stringQuery(resets + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name",
                         "getQdPlatformResetBusInterfaceForClk");
  }
  if (!answer.empty()) return answer;
  // No reset on the clock itself: the clock's domain has one.
  std::string const domain =
      getClockDomainForClockId(getClockIdForClockName(platform, clock), platform);
  if (domain.empty()) return answer;
  return getResetBusInterfaceForClockDomain(platform, domain, busInterfaceRef);
}

std::string QDSRepo::getQdPlatformResetBusInterfaceForClkAndSlr(std::string const& platform,
                                                                std::string const& busInterfaceRef,
                                                                std::string const& clock,
                                                                std::string const& slr) {
  return stringQuery(
      platformInterfaces(platform, "@qd:busInterfaceRef='" + busInterfaceRef +
                                       "' and @qd:clockRef='" + clock + "' and @qd:slr='" + slr +
                                       "' and @qd:busTypeRef='reset' and "
                                       "@qd:mode='master'") +
          "/@qd:name",
      "getQdPlatformResetBusInterfaceForClkAndSlr");
}

std::string QDSRepo::getResetBusInterfaceForClockDomain(std::string const& platform,
                                                        std::string const& domain,
                                                        std::string const& busInterfaceRef) {
  std::string const answer = stringQuery(
      platformInterfaces(platform, "@qd:clkDomain='" + domain + "' and @qd:busInterfaceRef='" +
                                       busInterfaceRef + "'") +
          "/@qd:name",
      "getResetBusInterfaceForClockDomain");
  if (!answer.empty()) return answer;
  // The slowest clock of the domain, whose reset every faster clock can safely share. The walk
  // starts at the count itself, one past the last clock: that step finds nothing.
  double slowest = 0.0;
  std::string best;
  for (int i = getNumClockIdsForClockDomain(platform, domain); i >= 0; --i) {
    int const id = getIthClockIdForClockDomain(i, platform, domain);
    double const period = getNormalizedClockPeriodForClockId(id, platform);
    if (period > slowest) {
      slowest = period;
      best = getClockNameForClockId(id, platform);
    }
  }
  return stringQuery(
      platformInterfaces(platform, "@qd:clockRef='" + best + "' and @qd:busInterfaceRef='" +
                                       busInterfaceRef + "'") +
          "/@qd:name",
      "getResetBusInterfaceForClockDomain");
}

bool QDSRepo::hasQdPlatformInterruptSupport(std::string const& platform) {
  return booleanQuery("boolean(" + interruptInputs(platform, "@qd:isrId") + ")",
                      "hasQdPlatformInterruptSupport");
}

std::string QDSRepo::getQdPlatformCompIthInterruptSlavePort(std::string const& platform, int i) {
  std::string const inputs = interruptInputs(platform, "@qd:isrId");
  if (!booleanQuery("boolean(" + inputs + ")", "getQdPlatformCompIthInterruptSlavePort")) return "";
  return stringQuery(inputs + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name",
                     "getQdPlatformCompIthInterruptSlavePort");
}

std::string QDSRepo::getQdPlatformCompIthLegacyInterruptSlavePort(std::string const& platform,
                                                                  int i) {
  // It has always logged under the caller word of the current form.
  std::string const inputs = interruptInputs(platform, "@qd:irq");
  if (!booleanQuery("boolean(" + inputs + ")", "getQdPlatformCompIthInterruptSlavePort")) return "";
  return stringQuery(inputs + "[" + std::to_string(static_cast<long long>(i) + 1) + "]/@qd:name",
                     "getQdPlatformCompIthInterruptSlavePort");
}

int QDSRepo::getQdPlatformCompPortIrq(std::string const& platform, std::string const& port) {
  return intQuery(
      "number(" + platformOnly(platform) + "/qd:busInterface[@qd:name='" + port + "']/@qd:isrId)",
      "getQdPlatformCompPortIrq");
}

int QDSRepo::getQdPlatformResourceCapacity(std::string const& platform,
                                           std::string const& resource) {
  return intQuery("number(" + platformOnly(platform) + "/@qd:" + resource + ")",
                  "getQdPlatformResourceCapacity");
}

}  // namespace qd

namespace qd {
namespace {

long long normalizedLatency(QDSRepo& repo, long long estimate, std::string const& function,
                            std::string const& platform) {
  // No estimate stays no estimate: scaling the -1 would make it look like a number.
  if (estimate < 0) return estimate;
  int clock = repo.getQdHwFcnClockId(function);
  if (clock == -1) clock = repo.getPlatformDefaultClockId(platform);
  if (clock == -1) return estimate;
  double const period = repo.getNormalizedClockPeriodForClockId(clock, platform);
  if (period < 0) return estimate;
  return static_cast<long long>(static_cast<double>(estimate) * period);
}

}  // namespace

long long QDSRepo::getQdHwFcnNormalizedWorstCaseLatencyEstimate(std::string const& function,
                                                                std::string const& platform) {
  return normalizedLatency(*this, getQdHwFcnWorstCaseLatencyEstimate(function), function, platform);
}

long long QDSRepo::getQdHwFcnNormalizedAverageCaseLatencyEstimate(std::string const& function,
                                                                  std::string const& platform) {
  return normalizedLatency(*this, getQdHwFcnAverageCaseLatencyEstimate(function), function,
                           platform);
}

}  // namespace qd
