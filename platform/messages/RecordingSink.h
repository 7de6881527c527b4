// A message sink that keeps what it is shown, for tests and for hosts that report messages
// themselves.
#ifndef PLATFORM_MESSAGES_RECORDINGSINK_H_
#define PLATFORM_MESSAGES_RECORDINGSINK_H_

#include <mutex>
#include <string>
#include <vector>

#include "platform/messages/ComMsgMgrInstance.h"
#include "platform/messages/ComMsgSink.h"

class RecordingSink : public ComMsgSink {
 public:
  void show(ComMsgMgrInstance const& message) override;

  // Copies of everything shown so far, oldest first.
  std::vector<ComMsgMgrInstance> messages() const;
  // The format of each message as sent ("@82-179@", "@60-842@%s" or a plain text), oldest first.
  std::vector<std::string> formats() const;
  // The shown line of each message, oldest first.
  std::vector<std::string> lines() const;
  void clear();

 private:
  mutable std::mutex mutex_;  // guards messages_
  std::vector<ComMsgMgrInstance> messages_;
};

#endif  // PLATFORM_MESSAGES_RECORDINGSINK_H_
