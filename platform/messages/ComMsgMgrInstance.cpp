#include "platform/messages/ComMsgMgrInstance.h"

#include <cstring>

#include "platform/messages/ComMsgCatalogue.h"

namespace {

bool isConversion(char c) { return std::strchr("diouxXeEfFgGaAcsp", c) != nullptr; }
bool isModifier(char c) { return std::strchr("-+ #0123456789.*hlLqjzt", c) != nullptr; }

}  // namespace

ComMsgMgrInstance::ComMsgMgrInstance(std::string lookup, std::string format, std::uint32_t mask,
                                     std::vector<std::string> arguments)
    : lookup_(std::move(lookup)),
      format_(std::move(format)),
      mask_(mask),
      arguments_(std::move(arguments)) {
  std::string rest = format_;
  if (format_.size() > 1 && format_[0] == '@') {
    auto const close = format_.find('@', 1);
    // "@@" has no digits between its marks, so it is plain text, not an empty identifier.
    if (close != std::string::npos && close > 1) {
      id_ = format_.substr(1, close - 1);
      rest = format_.substr(close + 1);
    }
  }
  if (id_.empty()) {
    text_ = substitute(rest, arguments_);
    return;
  }
  auto const catalogued = platform_messages::ComMsgCatalogue::builtIn().find(lookup_, id_);
  if (catalogued) {
    text_ = substitute(*catalogued, arguments_);
    return;
  }
  text_ = "(no catalogue text for " + lookup_ + " " + id_ + ")";
  std::string const shown = substitute(rest, arguments_);
  if (!shown.empty()) text_ += " " + shown;
}

std::string ComMsgMgrInstance::substitute(std::string const& format,
                                          std::vector<std::string> const& arguments) {
  std::string out;
  std::size_t next = 0;
  for (std::size_t i = 0; i < format.size(); ++i) {
    if (format[i] != '%') {
      out += format[i];
      continue;
    }
    if (i + 1 < format.size() && format[i + 1] == '%') {
      out += '%';
      ++i;
      continue;
    }
    std::size_t j = i + 1;
    while (j < format.size() && isModifier(format[j])) ++j;
    if (j >= format.size() || !isConversion(format[j])) {
      out += format[i];  // a lone '%' is text
      continue;
    }
    if (next < arguments.size()) out += arguments[next];
    ++next;
    i = j;
  }
  return out;
}

std::string ComMsgMgrInstance::severity() const {
  if ((mask_ & kComMsgCriticalWarning) != 0) return "CRITICAL WARNING";
  if ((mask_ & kComMsgWarning) != 0) return "WARNING";
  return "INFO";
}

std::string ComMsgMgrInstance::line() const {
  std::string const tag = id_.empty() ? lookup_ : lookup_ + " " + id_;
  return severity() + ": [" + tag + "] " + text_;
}
