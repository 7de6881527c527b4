#include "platform/hut/HUTEnv.h"

#include <ctime>
#include <mutex>
#include <optional>

namespace {

std::mutex& stampMutex() {
  static std::mutex mutex;
  return mutex;
}

std::optional<std::string>& fixedStamp() {  // guarded by stampMutex()
  static std::optional<std::string> stamp;
  return stamp;
}

}  // namespace

std::string HUTEnv::getFullProductStr() { return std::string("qv_system_diagram ") + QV_VERSION; }

char const* HUTEnv::getCopyRight() {
  return "Copyright 2026 The qv_system_diagram authors. All rights reserved.";
}

void HUTEnv::getTimeStamp(std::string& stamp) {
  {
    std::lock_guard<std::mutex> lock(stampMutex());
    if (fixedStamp()) {
      stamp = *fixedStamp();
      return;
    }
  }
  std::time_t const now = std::time(nullptr);
  std::tm local{};
  localtime_r(&now, &local);
  char text[64];
  std::size_t const length = std::strftime(text, sizeof text, "%a %b %e %H:%M:%S %Y", &local);
  stamp.assign(text, length);
}

void HUTEnv::setFixedTimeStamp(std::string const& stamp) {
  std::lock_guard<std::mutex> lock(stampMutex());
  fixedStamp() = stamp;
}

void HUTEnv::clearFixedTimeStamp() {
  std::lock_guard<std::mutex> lock(stampMutex());
  fixedStamp().reset();
}
