// Points the server's loggers at a string for the length of a test.
#ifndef TESTS_SUPPORT_LOGGERCAPTURE_H_
#define TESTS_SUPPORT_LOGGERCAPTURE_H_

#include <iostream>
#include <sstream>
#include <string>

#include "platform/dispatch/Logger.h"

namespace qvtest {

// Captures what the loggers of level 0 to `reportingLevel` write; restores the defaults
// (standard error, reporting level 1, no echo) when destroyed.
class LoggerCapture {
 public:
  explicit LoggerCapture(dispatch::server::LogLevel reportingLevel) {
    dispatch::server::Logger::setStream(&text_);
    dispatch::server::Logger::setReportingLevel(reportingLevel);
    dispatch::server::Logger::setEcho(false);
  }
  ~LoggerCapture() {
    dispatch::server::Logger::setStream(&std::clog);
    dispatch::server::Logger::setReportingLevel(dispatch::server::kLogException);
  }
  LoggerCapture(LoggerCapture const&) = delete;
  LoggerCapture& operator=(LoggerCapture const&) = delete;

  std::string text() const { return text_.str(); }
  void clear() { text_.str(""); }

 private:
  std::ostringstream text_;
};

}  // namespace qvtest

#endif  // TESTS_SUPPORT_LOGGERCAPTURE_H_
