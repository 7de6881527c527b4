#include "platform/dispatch/Logger.h"

#include <algorithm>
#include <cstring>
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

// Passes everything on to another buffer and makes it hand each complete line on to its file or
// terminal as soon as the line ends, whatever ends it ("\n" inside a text, a char, std::endl).
// A person watching the log with tail -f sees a failure when it happens, and a server that is
// killed has lost nothing it logged. It keeps no put area of its own, so nothing waits here.
class LineFlushingBuffer : public std::streambuf {
 public:
  void setTarget(std::streambuf* target) { target_ = target; }

 protected:
  int_type overflow(int_type c) override {
    if (traits_type::eq_int_type(c, traits_type::eof())) return traits_type::not_eof(c);
    char const ch = traits_type::to_char_type(c);
    if (traits_type::eq_int_type(target_->sputc(ch), traits_type::eof())) {
      return traits_type::eof();
    }
    if (ch == '\n' && target_->pubsync() == -1) return traits_type::eof();
    return c;
  }
  std::streamsize xsputn(char const* text, std::streamsize n) override {
    std::streamsize const written = target_->sputn(text, n);
    if (written > 0 && std::memchr(text, '\n', static_cast<std::size_t>(written)) != nullptr &&
        target_->pubsync() == -1) {
      return 0;
    }
    return written;
  }
  int sync() override { return target_->pubsync(); }

 private:
  std::streambuf* target_ = std::clog.rdbuf();
};

// Every logger's own stream writes through this one buffer; the host points it at its log.
LineFlushingBuffer& ownLines() {
  static LineFlushingBuffer buffer;
  return buffer;
}

// The echo, through the same kind of buffer over whatever std::cout writes to at the time.
std::ostream& echoLines() {
  static LineFlushingBuffer buffer;
  static std::ostream stream(&buffer);
  buffer.setTarget(std::cout.rdbuf());
  return stream;
}

}  // namespace

Logger::Logger(LogLevel ownLevel) : std::ostream(&ownLines()), level(ownLevel) {}

std::ostream& Logger::echoStream() { return echoLines(); }

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
  ownLines().setTarget(out != nullptr ? out->rdbuf() : &nullBuffer());
  for (auto& logger : all()) logger->clear();
}

Logger& Logger::operator<<(std::ostream& (*manipulator)(std::ostream&)) {
  std::lock_guard<std::mutex> lock(insertionMutex());
  if (echo) manipulator(echoStream());
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
