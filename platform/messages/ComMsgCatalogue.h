// The texts of the user-facing messages, by lookup name and identifier.
#ifndef PLATFORM_MESSAGES_COMMSGCATALOGUE_H_
#define PLATFORM_MESSAGES_COMMSGCATALOGUE_H_

#include <map>
#include <optional>
#include <string>
#include <utility>

namespace platform_messages {

// A catalogue parsed from text in the form of platform/messages/catalogue: one message a line,
// "<lookup> <identifier digits> <text>", with "#" comment lines and empty lines skipped.
class ComMsgCatalogue {
 public:
  // Parses `text`. Throws std::invalid_argument naming the line number for a line without a
  // text or an identifier that is given twice.
  explicit ComMsgCatalogue(std::string const& text);

  // The catalogue compiled into the platform, parsed once.
  static ComMsgCatalogue const& builtIn();

  // The text of `lookup` and `id` (digits such as "82-179"), if the catalogue has it.
  std::optional<std::string> find(std::string const& lookup, std::string const& id) const;

  std::size_t size() const { return texts_.size(); }
  // Every entry: (lookup, id) to text, in order.
  std::map<std::pair<std::string, std::string>, std::string> const& entries() const {
    return texts_;
  }

 private:
  std::map<std::pair<std::string, std::string>, std::string> texts_;
};

}  // namespace platform_messages

#endif  // PLATFORM_MESSAGES_COMMSGCATALOGUE_H_
