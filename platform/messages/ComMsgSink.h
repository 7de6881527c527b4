// Where ComMsgMgr shows messages.
#ifndef PLATFORM_MESSAGES_COMMSGSINK_H_
#define PLATFORM_MESSAGES_COMMSGSINK_H_

class ComMsgMgrInstance;

// Receives every message sent through ComMsgMgr. Called from any thread that sends a message;
// an implementation guards its own state.
class ComMsgSink {
 public:
  virtual ~ComMsgSink() = default;
  virtual void show(ComMsgMgrInstance const& message) = 0;
};

#endif  // PLATFORM_MESSAGES_COMMSGSINK_H_
