// Records the user-facing messages sent while it lives.
#ifndef TESTS_SUPPORT_MESSAGECAPTURE_H_
#define TESTS_SUPPORT_MESSAGECAPTURE_H_

#include <cstdio>
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
  // Everything sent, with lookup name, mask and arguments, oldest first.
  std::vector<ComMsgMgrInstance> messages() const { return sink->messages(); }
  // Each message sent as "<lookup> <format> <mask in hex> [<argument>]...", e.g.
  // "mvk @60-842@%s 0x10000000 [vhdl]", oldest first: identifier, mask and arguments in one text.
  std::vector<std::string> sent() const {
    std::vector<std::string> texts;
    for (ComMsgMgrInstance const& message : sink->messages()) {
      char mask[16];
      std::snprintf(mask, sizeof mask, "0x%x", static_cast<unsigned>(message.mask()));
      std::string text = message.lookup() + " " + message.format() + " " + mask;
      for (std::string const& argument : message.arguments()) text += " [" + argument + "]";
      texts.push_back(text);
    }
    return texts;
  }
  // The shown lines, oldest first.
  std::vector<std::string> lines() const { return sink->lines(); }
  void clear() { sink->clear(); }

 private:
  std::shared_ptr<RecordingSink> sink;
  std::shared_ptr<ComMsgSink> previous;
};

}  // namespace qvtest

#endif  // TESTS_SUPPORT_MESSAGECAPTURE_H_
