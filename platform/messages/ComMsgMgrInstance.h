// One user-facing message, composed from the catalogue.
#ifndef PLATFORM_MESSAGES_COMMSGMGRINSTANCE_H_
#define PLATFORM_MESSAGES_COMMSGMGRINSTANCE_H_

#include <cstdint>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

// Masks that give a message its severity.
constexpr std::uint32_t kComMsgInfo = 0x4000000;
constexpr std::uint32_t kComMsgWarning = 0x8000000;
constexpr std::uint32_t kComMsgCriticalWarning = 0x10000000;

// A message composed at construction, ready for ComMsgMgr::sendMessage. Making one shows nothing.
//
// `format` is either an identifier, "@<digits>@" followed by the printf-style conversions of the
// arguments ("@82-179@", "@60-842@%s"), or a plain printf-style text. An identifier takes its
// text from the catalogue under `lookup` and the digits; the text's conversions take the
// arguments in order. Each conversion (%s, %d, %u, %x, ... with any flags and width) is replaced
// by its argument's text as the argument prints on a std::ostream; "%%" gives "%"; a conversion
// without an argument gives nothing. An identifier that the catalogue lacks shows the identifier
// and the arguments formatted by the rest of `format`.
class ComMsgMgrInstance {
 public:
  template <class... Args>
  ComMsgMgrInstance(std::string lookup, std::string format, std::uint32_t mask,
                    Args const&... args)
      : ComMsgMgrInstance(std::move(lookup), std::move(format), mask,
                          std::vector<std::string>{toText(args)...}) {}

  ComMsgMgrInstance(std::string lookup, std::string format, std::uint32_t mask,
                    std::vector<std::string> arguments);

  std::string const& lookup() const { return lookup_; }
  // The identifier with its "@" marks and conversions, or the plain text, as given.
  std::string const& format() const { return format_; }
  // The digits of the identifier ("60-842"), or empty for a plain text.
  std::string const& id() const { return id_; }
  std::uint32_t mask() const { return mask_; }
  std::vector<std::string> const& arguments() const { return arguments_; }
  // The composed text, without severity or identifier.
  std::string const& text() const { return text_; }
  // "INFO", "WARNING" or "CRITICAL WARNING", from the mask; the most severe bit wins and a mask
  // with none of the three bits is "INFO".
  std::string severity() const;
  // The line as shown: "<severity>: [<lookup> <id>] <text>", or "<severity>: [<lookup>] <text>"
  // for a plain text.
  std::string line() const;

  // Replaces the conversions of `format` by `arguments` as described above.
  static std::string substitute(std::string const& format,
                                std::vector<std::string> const& arguments);

 private:
  template <class T>
  static std::string toText(T const& value) {
    std::ostringstream out;
    out << value;
    return out.str();
  }

  std::string lookup_;
  std::string format_;
  std::string id_;
  std::uint32_t mask_;
  std::vector<std::string> arguments_;
  std::string text_;
};

#endif  // PLATFORM_MESSAGES_COMMSGMGRINSTANCE_H_
