#include "tools/qvdiag/ServiceHost.h"

#include <unistd.h>

#include <boost/filesystem.hpp>
#include <cerrno>
#include <cstring>
#include <iostream>
#include <stdexcept>

#include "platform/dispatch/HandlerLibrary.h"
#include "platform/hut/HUTEnv.h"
#include "platform/mvk/NativeObjectService.h"

namespace qvdiag {
namespace {

constexpr char const* kLibraryName = "libqv_system_diagram.so";

void restoreDefaults() {
  dispatch::server::Logger::setStream(&std::clog);
  dispatch::server::Logger::setReportingLevel(dispatch::server::kLogException);
  mvk::platform::NativeObjectService::setSearchPath({});
  HUTEnv::clearFixedTimeStamp();
}

}  // namespace

ServiceHost::ServiceHost(Settings const& settings)
    : libraryPath_(settings.libraryPath.empty() ? defaultLibraryPath() : settings.libraryPath) {
  if (!settings.logFile.empty()) {
    logFile_.open(settings.logFile, std::ios::out | std::ios::app);
    if (!logFile_) {
      throw std::runtime_error("cannot open the log file '" + settings.logFile +
                               "' for writing: " + std::strerror(errno));
    }
  }
  dispatch::server::Logger::setStream(&traceStream());
  dispatch::server::Logger::setReportingLevel(settings.logLevel);
  mvk::platform::NativeObjectService::setSearchPath(settings.platformPath);
  if (!settings.timestamp.empty()) HUTEnv::setFixedTimeStamp(settings.timestamp);
  try {
    dispatch::server::HandlerLibrary library(libraryPath_);
    library.makeHandler(connections_);
  } catch (...) {
    restoreDefaults();
    throw;
  }
}

ServiceHost::~ServiceHost() { restoreDefaults(); }

std::ostream& ServiceHost::traceStream() {
  if (logFile_.is_open()) return logFile_;
  return std::clog;
}

std::string ServiceHost::defaultLibraryPath() {
  boost::system::error_code error;
  boost::filesystem::path const executable =
      boost::filesystem::read_symlink("/proc/self/exe", error);
  if (error) return kLibraryName;  // left to the dynamic loader's search
  boost::filesystem::path const beside = executable.parent_path() / kLibraryName;
  boost::filesystem::path const installed =
      executable.parent_path().parent_path() / "lib" / kLibraryName;
  if (!boost::filesystem::exists(beside) && boost::filesystem::exists(installed)) {
    return installed.string();
  }
  return beside.string();
}

}  // namespace qvdiag
