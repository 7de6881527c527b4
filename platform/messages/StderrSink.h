// The default message sink: one line a message on standard error.
#ifndef PLATFORM_MESSAGES_STDERRSINK_H_
#define PLATFORM_MESSAGES_STDERRSINK_H_

#include "platform/messages/ComMsgSink.h"

// Writes ComMsgMgrInstance::line() and a newline to standard error, in one write, so that lines
// of two threads never mix.
class StderrSink : public ComMsgSink {
 public:
  void show(ComMsgMgrInstance const& message) override;
};

#endif  // PLATFORM_MESSAGES_STDERRSINK_H_
