// What qvdiag's two hosts share: the settings a compile server gives the library, the loaded
// library and the ConnectionMgr that serves it.
#ifndef TOOLS_QVDIAG_SERVICEHOST_H_
#define TOOLS_QVDIAG_SERVICEHOST_H_

#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include "platform/dispatch/ConnectionMgr.h"
#include "platform/dispatch/Logger.h"

namespace qvdiag {

// Configures the process as a compile server does before it serves (platform search path,
// report time stamp, service trace), loads libqv_system_diagram.so with dlopen, calls its
// makeHandler and keeps the handler on a ConnectionMgr of its own.
//
// The settings are process-wide (the library reads them from the platform), so one ServiceHost
// exists at a time. The destructor points the service trace back at standard error.
class ServiceHost {
 public:
  struct Settings {
    // The library to load; empty means defaultLibraryPath().
    std::string libraryPath;
    // Directories searched for platform descriptions, in order.
    std::vector<std::string> platformPath;
    // A fixed time stamp for reports; empty means the clock.
    std::string timestamp;
    // The file that receives the service trace, appended to; empty means standard error.
    std::string logFile;
    // Lines of this level and more serious ones are written (0 errors ... 5 trace).
    dispatch::server::LogLevel logLevel = dispatch::server::kLogException;
  };

  // Applies `settings` and loads the library. Throws std::runtime_error naming the file when
  // the log file cannot be opened or the library cannot be loaded; nothing is left applied then.
  explicit ServiceHost(Settings const& settings);
  ~ServiceHost();
  ServiceHost(ServiceHost const&) = delete;
  ServiceHost& operator=(ServiceHost const&) = delete;

  dispatch::server::ConnectionMgr& connections() { return connections_; }
  std::string const& libraryPath() const { return libraryPath_; }
  // The stream that receives the service trace: the log file or standard error.
  std::ostream& traceStream();

  // libqv_system_diagram.so beside the running executable, else in ../lib from it; the first
  // of the two that exists, or the first when neither does (so that the error names it).
  static std::string defaultLibraryPath();

 private:
  std::string libraryPath_;
  std::ofstream logFile_;
  dispatch::server::ConnectionMgr connections_;
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_SERVICEHOST_H_
