// Records the user-facing messages sent while it lives.
#ifndef TESTS_SUPPORT_MESSAGECAPTURE_H_
#define TESTS_SUPPORT_MESSAGECAPTURE_H_

#include <memory>
#include <string>
#include <vector>

#include "platform/messages/ComMsgMgr.h"
#include "platform/messages/RecordingSink.h"

namespace qvtest {

// Installs a RecordingSink for its lifetime and puts the previous sink back afterwards.
class MessageCapture {
 public:
  MessageCapture() : sink(std::make_shared<RecordingSink>()), previous(ComMsgMgr::setSink(sink)) {}
  ~MessageCapture() { ComMsgMgr::setSink(previous); }
  MessageCapture(MessageCapture const&) = delete;
  MessageCapture& operator=(MessageCapture const&) = delete;

  // The identifiers as sent ("@82-179@", "@82-214@%s"), oldest first.
  std::vector<std::string> formats() const { return sink->formats(); }
  // The shown lines, oldest first.
  std::vector<std::string> lines() const { return sink->lines(); }
  void clear() { sink->clear(); }

 private:
  std::shared_ptr<RecordingSink> sink;
  std::shared_ptr<ComMsgSink> previous;
};

}  // namespace qvtest

#endif  // TESTS_SUPPORT_MESSAGECAPTURE_H_
