#include "platform/messages/ComMsgMgr.h"

#include <mutex>
#include <utility>

#include "platform/messages/StderrSink.h"

namespace {

std::mutex& sinkMutex() {
  static std::mutex mutex;
  return mutex;
}

std::shared_ptr<ComMsgSink>& currentSink() {  // guarded by sinkMutex()
  static std::shared_ptr<ComMsgSink> sink = std::make_shared<StderrSink>();
  return sink;
}

}  // namespace

void ComMsgMgr::sendMessage(ComMsgMgrInstance const& message) {
  std::shared_ptr<ComMsgSink> sink;
  {
    std::lock_guard<std::mutex> lock(sinkMutex());
    sink = currentSink();
  }
  sink->show(message);
}

std::shared_ptr<ComMsgSink> ComMsgMgr::setSink(std::shared_ptr<ComMsgSink> sink) {
  if (!sink) sink = std::make_shared<StderrSink>();
  std::lock_guard<std::mutex> lock(sinkMutex());
  std::swap(currentSink(), sink);
  return sink;
}
