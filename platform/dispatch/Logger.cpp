#include "platform/dispatch/Logger.h"

#include <algorithm>
#include <streambuf>

namespace dispatch {
namespace server {
namespace {

// Swallows everything: the own stream of a logger whose host asked for no log.
class NullBuffer : public std::streambuf {
 protected:
  int_type overflow(int_type c) override { return traits_type::not_eof(c); }
  std::streamsize xsputn(char const*, std::streamsize n) override { return n; }
};

NullBuffer& nullBuffer() {
  static NullBuffer buffer;
  return buffer;
}

}  // namespace

Logger::Logger(LogLevel ownLevel) : std::ostream(std::clog.rdbuf()), level(ownLevel) {}

std::mutex& Logger::insertionMutex() {
  static std::mutex mutex;
  return mutex;
}

Logger& Logger::getLogger(LogLevel level) {
  LogLevel const index = std::clamp<LogLevel>(level, 0, kNumLevels - 1);
  return *all()[static_cast<std::size_t>(index)];
}

void Logger::setReportingLevel(LogLevel reportingLevel) {
  std::lock_guard<std::mutex> lock(insertionMutex());
  for (auto& logger : all()) logger->reportingLevel = reportingLevel;
}

void Logger::setEcho(bool echo) {
  std::lock_guard<std::mutex> lock(insertionMutex());
  for (auto& logger : all()) logger->echo = echo;
}

void Logger::setStream(std::ostream* out) {
  std::lock_guard<std::mutex> lock(insertionMutex());
  for (auto& logger : all()) {
    logger->rdbuf(out != nullptr ? out->rdbuf() : &nullBuffer());
    logger->clear();
  }
}

Logger& Logger::operator<<(std::ostream& (*manipulator)(std::ostream&)) {
  std::lock_guard<std::mutex> lock(insertionMutex());
  if (echo) manipulator(std::cout);
  if (level <= reportingLevel) manipulator(*this);
  return *this;
}

std::array<std::unique_ptr<Logger>, Logger::kNumLevels>& Logger::all() {
  static std::array<std::unique_ptr<Logger>, kNumLevels> loggers = [] {
    std::array<std::unique_ptr<Logger>, kNumLevels> made;
    // Not named `level`, which clang's -Wshadow takes for the member of that name.
    for (LogLevel each = 0; each < kNumLevels; ++each) {
      made[static_cast<std::size_t>(each)].reset(new Logger(each));  // private constructor
    }
    return made;
  }();
  return loggers;
}

}  // namespace server
}  // namespace dispatch
