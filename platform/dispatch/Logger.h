// The compile server's trace: one logger per level, each an output stream.
#ifndef PLATFORM_DISPATCH_LOGGER_H_
#define PLATFORM_DISPATCH_LOGGER_H_

#include <array>
#include <iostream>
#include <memory>
#include <mutex>
#include <ostream>

namespace dispatch {
namespace server {

// A lower number is the more serious.
using LogLevel = int;
constexpr LogLevel kLogError = 0;      // session table errors
constexpr LogLevel kLogException = 1;  // exceptions caught while serving a request
constexpr LogLevel kLogWarning = 2;
constexpr LogLevel kLogEvent = 3;      // sessions created, forked, removed
constexpr LogLevel kLogDebug = 4;      // entry and exit of request handlers
constexpr LogLevel kLogTrace = 5;

// One Logger exists per level for the whole process; getLogger returns it.
//
// Every value inserted is tested on its own: it goes to std::cout when `echo` is set, and to the
// logger's own stream when `level <= reportingLevel`. So a line made of several insertions is not
// atomic, and lines of two threads may interleave between insertions (never inside one).
// Each line reaches the stream's file or terminal as soon as it ends, whatever ends it: a newline
// inside an inserted text, a newline character, or std::endl.
//
// The host configures all loggers at once with the static setters, before serving requests.
// By default nothing is echoed, the reporting level is kLogException, and the own stream is
// standard error.
class Logger : public std::ostream {
 public:
  static constexpr LogLevel kNumLevels = 6;

  // The logger of `level`; a level outside 0..kNumLevels-1 is clamped into that range.
  static Logger& getLogger(LogLevel level);

  // Applies to every logger.
  static void setReportingLevel(LogLevel reportingLevel);
  static void setEcho(bool echo);
  // Points every logger's own stream at `out`, which must outlive its use; nullptr discards.
  static void setStream(std::ostream* out);

  template <class T>
  Logger& operator<<(T const& value) {
    std::lock_guard<std::mutex> lock(insertionMutex());
    if (echo) echoStream() << value;
    if (level <= reportingLevel) static_cast<std::ostream&>(*this) << value;
    return *this;
  }
  // For std::endl and the other stream manipulators.
  Logger& operator<<(std::ostream& (*manipulator)(std::ostream&));

  Logger(Logger const&) = delete;
  Logger& operator=(Logger const&) = delete;

  // Read directly by callers that test a level before composing a costly text.
  bool echo = false;
  LogLevel reportingLevel = kLogException;
  const LogLevel level;

 private:
  explicit Logger(LogLevel level);
  static std::array<std::unique_ptr<Logger>, kNumLevels>& all();
  // std::cout, through a buffer that flushes at each line's end.
  static std::ostream& echoStream();
  // Guards the state of all loggers' streams: they usually share one buffer.
  static std::mutex& insertionMutex();
};

}  // namespace server
}  // namespace dispatch

#endif  // PLATFORM_DISPATCH_LOGGER_H_
