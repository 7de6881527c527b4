#include "platform/messages/StderrSink.h"

#include <cstdio>

#include "platform/messages/ComMsgMgrInstance.h"

void StderrSink::show(ComMsgMgrInstance const& message) {
  std::string const line = message.line() + "\n";
  std::fputs(line.c_str(), stderr);
  std::fflush(stderr);
}
