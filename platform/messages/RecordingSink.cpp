#include "platform/messages/RecordingSink.h"

void RecordingSink::show(ComMsgMgrInstance const& message) {
  std::lock_guard<std::mutex> lock(mutex_);
  messages_.push_back(message);
}

std::vector<ComMsgMgrInstance> RecordingSink::messages() const {
  std::lock_guard<std::mutex> lock(mutex_);
  return messages_;
}

std::vector<std::string> RecordingSink::formats() const {
  std::lock_guard<std::mutex> lock(mutex_);
  std::vector<std::string> formats;
  for (auto const& message : messages_) formats.push_back(message.format());
  return formats;
}

std::vector<std::string> RecordingSink::lines() const {
  std::lock_guard<std::mutex> lock(mutex_);
  std::vector<std::string> lines;
  for (auto const& message : messages_) lines.push_back(message.line());
  return lines;
}

void RecordingSink::clear() {
  std::lock_guard<std::mutex> lock(mutex_);
  messages_.clear();
}
