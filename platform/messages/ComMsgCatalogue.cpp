#include "platform/messages/ComMsgCatalogue.h"

#include <sstream>
#include <stdexcept>

namespace platform_messages {

extern const char* const kCatalogueText;  // generated from platform/messages/catalogue

namespace {

std::string trimmed(std::string const& text) {
  auto const first = text.find_first_not_of(" \t\r");
  if (first == std::string::npos) return "";
  auto const last = text.find_last_not_of(" \t\r");
  return text.substr(first, last - first + 1);
}

}  // namespace

ComMsgCatalogue::ComMsgCatalogue(std::string const& text) {
  std::istringstream in(text);
  std::string line;
  int number = 0;
  while (std::getline(in, line)) {
    ++number;
    line = trimmed(line);
    if (line.empty() || line[0] == '#') continue;
    std::istringstream fields(line);
    std::string lookup;
    std::string id;
    fields >> lookup >> id;
    std::string rest;
    std::getline(fields, rest);
    rest = trimmed(rest);
    if (id.empty() || rest.empty()) {
      throw std::invalid_argument("message catalogue line " + std::to_string(number) +
                                  ": expected '<lookup> <id> <text>', got '" + line + "'");
    }
    if (!texts_.emplace(std::make_pair(lookup, id), rest).second) {
      throw std::invalid_argument("message catalogue line " + std::to_string(number) + ": " +
                                  lookup + " " + id + " is given twice");
    }
  }
}

ComMsgCatalogue const& ComMsgCatalogue::builtIn() {
  static ComMsgCatalogue const catalogue(kCatalogueText);
  return catalogue;
}

std::optional<std::string> ComMsgCatalogue::find(std::string const& lookup,
                                                 std::string const& id) const {
  auto const found = texts_.find(std::make_pair(lookup, id));
  if (found == texts_.end()) return std::nullopt;
  return found->second;
}

}  // namespace platform_messages
