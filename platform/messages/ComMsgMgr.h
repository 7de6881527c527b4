// The message manager: shows user-facing messages.
#ifndef PLATFORM_MESSAGES_COMMSGMGR_H_
#define PLATFORM_MESSAGES_COMMSGMGR_H_

#include <memory>

#include "platform/messages/ComMsgMgrInstance.h"
#include "platform/messages/ComMsgSink.h"

// Shows composed messages through the process's sink: a StderrSink unless the host installs
// another. Safe to call from any thread.
class ComMsgMgr {
 public:
  static void sendMessage(ComMsgMgrInstance const& message);

  // Installs `sink` for all later messages and returns the one it replaces; nullptr brings the
  // standard error sink back.
  static std::shared_ptr<ComMsgSink> setSink(std::shared_ptr<ComMsgSink> sink);
};

#endif  // PLATFORM_MESSAGES_COMMSGMGR_H_
