#include "service/Log.h"

#include <cstdio>

std::int32_t Log::reportingLevel = logINFO;
std::int32_t Log::subsystemID = 83;
std::string Log::subsystemName = "Morvane";

Log::Log(TLogLevel level, int number) : level_(level) {
  // The prefix is written whatever the threshold: the decision is the destructor's.
  line_ << toString(level) << ": [" << subsystemName << " " << subsystemID << "-" << number
        << "] ";
}

Log::~Log() {
  if (level_ < reportingLevel) return;
  line_ << std::endl;
  std::fputs(line_.str().c_str(), stderr);
  std::fflush(stderr);
}

std::string Log::toString(TLogLevel level) {
  switch (level) {
    case logINTERNAL:
      return "INTERNAL";
    case logDEBUG:
      return "DEBUG";
    case logINFO:
      return "INFO";
    case logWARNING:
      return "WARNING";
    case logCRITICAL_WARNING:
      return "CRITICAL WARNING";
    case logERROR:
      return "ERROR";
  }
  return "UNKNOWN";
}
