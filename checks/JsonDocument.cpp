#include "checks/JsonDocument.h"

#include <rapidjson/error/en.h>
#include <rapidjson/reader.h>

#include <cstddef>
#include <cstring>
#include <map>

namespace qvcheck {

namespace {

// The deepest nesting the library's JSON reader takes (diagram/TextConversions.h).
constexpr int kMaxNesting = 100;

// A RapidJSON input stream over a text in memory that counts lines and columns, and remembers
// where the token it is reading began. RapidJSON tells its handler about a value only once the
// value has been read, so the position of a key or a value is that of the token's first
// character, which this stream notes as it hands the character over.
class LineCountingStream {
 public:
  using Ch = char;

  // A UTF-8 byte order mark is passed over, as the library's reader passes it over.
  explicit LineCountingStream(std::string const& text) : text_(text) {
    if (text_.compare(0, 3, "\xEF\xBB\xBF") == 0) position_ = 3;
  }

  Ch Peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }

  Ch Take() {
    if (position_ >= text_.size()) return '\0';
    char const c = text_[position_++];
    noteToken(c);
    if (c == '\n') {
      ++line_;
      column_ = 1;
    } else {
      ++column_;
    }
    return c;
  }

  std::size_t Tell() const { return position_; }

  // The stream is read only; RapidJSON asks for these of any stream type.
  Ch* PutBegin() { return nullptr; }
  void Put(Ch) {}
  void Flush() {}
  std::size_t PutEnd(Ch*) { return 0; }

  int tokenLine() const { return tokenLine_; }
  int tokenColumn() const { return tokenColumn_; }
  std::size_t tokenOffset() const { return tokenOffset_; }

 private:
  // Called with each character before the position moves past it.
  void noteToken(char c) {
    if (inString_) {
      if (escaped_) {
        escaped_ = false;
      } else if (c == '\\') {
        escaped_ = true;
      } else if (c == '"') {
        inString_ = false;
      }
      return;
    }
    bool const separator = c == ' ' || c == '\t' || c == '\n' || c == '\r' || c == ',' ||
                           c == ':' || c == '}' || c == ']';
    if (separator) {
      atBoundary_ = true;
      return;
    }
    if (c == '"') inString_ = true;
    // '{', '[' and '"' always start a token; a number or a literal when it follows a separator.
    if (c == '"' || c == '{' || c == '[' || atBoundary_) {
      tokenLine_ = line_;
      tokenColumn_ = column_;
      tokenOffset_ = position_ - 1;
    }
    atBoundary_ = c == '{' || c == '[';
  }

  std::string const& text_;
  std::size_t position_ = 0;
  int line_ = 1;
  int column_ = 1;
  int tokenLine_ = 1;
  int tokenColumn_ = 1;
  std::size_t tokenOffset_ = 0;
  bool inString_ = false;
  bool escaped_ = false;
  bool atBoundary_ = true;
};

// Builds the tree of JsonValue from RapidJSON's events.
class TreeBuilder : public rapidjson::BaseReaderHandler<rapidjson::UTF8<>, TreeBuilder> {
 public:
  // `numbers`: the texts of numbers that were replaced in the text being parsed, by offset.
  TreeBuilder(LineCountingStream const& stream, std::map<std::size_t, std::string> const& numbers)
      : stream_(stream), numbers_(numbers) {}

  bool Null() { return scalar(JsonValue::Kind::kNull, "null"); }
  bool Bool(bool b) { return scalar(JsonValue::Kind::kBool, b ? "true" : "false"); }
  bool RawNumber(char const* text, rapidjson::SizeType length, bool) {
    auto const replaced = numbers_.find(stream_.tokenOffset());
    if (replaced != numbers_.end()) return scalar(JsonValue::Kind::kNumber, replaced->second);
    return scalar(JsonValue::Kind::kNumber, std::string(text, length));
  }
  bool String(char const* text, rapidjson::SizeType length, bool) {
    return scalar(JsonValue::Kind::kString, std::string(text, length));
  }
  bool Key(char const* text, rapidjson::SizeType length, bool) {
    pendingKey_.assign(text, length);
    keyLine_ = stream_.tokenLine();
    keyColumn_ = stream_.tokenColumn();
    return true;
  }
  bool StartObject() { return open(JsonValue::Kind::kObject); }
  bool EndObject(rapidjson::SizeType) { return close(); }
  bool StartArray() { return open(JsonValue::Kind::kArray); }
  bool EndArray(rapidjson::SizeType) { return close(); }

  std::shared_ptr<JsonValue> root() const { return root_; }
  bool tooDeep() const { return tooDeep_; }
  int deepLine() const { return deepLine_; }
  int deepColumn() const { return deepColumn_; }

 private:
  // The new value, in its parent or as the root, at the token's position.
  JsonValue& place(JsonValue::Kind kind) {
    JsonValue* value = nullptr;
    if (open_.empty()) {
      root_ = std::make_shared<JsonValue>();
      value = root_.get();
    } else {
      JsonValue& parent = *open_.back();
      JsonMember member;
      bool const inObject = parent.kind == JsonValue::Kind::kObject;
      member.key = inObject ? pendingKey_ : std::string();
      member.line = inObject ? keyLine_ : stream_.tokenLine();
      member.column = inObject ? keyColumn_ : stream_.tokenColumn();
      parent.members.push_back(std::move(member));
      value = &parent.members.back().value;
    }
    value->kind = kind;
    value->line = stream_.tokenLine();
    value->column = stream_.tokenColumn();
    return *value;
  }

  bool scalar(JsonValue::Kind kind, std::string text) {
    place(kind).text = std::move(text);
    return true;
  }

  bool open(JsonValue::Kind kind) {
    if (static_cast<int>(open_.size()) + 1 > kMaxNesting) {
      tooDeep_ = true;
      deepLine_ = stream_.tokenLine();
      deepColumn_ = stream_.tokenColumn();
      return false;
    }
    // The parent's list of members does not change while this value is open, so the pointer
    // stays valid until close().
    open_.push_back(&place(kind));
    return true;
  }

  bool close() {
    open_.pop_back();
    return true;
  }

  LineCountingStream const& stream_;
  std::map<std::size_t, std::string> const& numbers_;
  std::shared_ptr<JsonValue> root_;
  std::vector<JsonValue*> open_;
  std::string pendingKey_;
  int keyLine_ = 0;
  int keyColumn_ = 0;
  bool tooDeep_ = false;
  int deepLine_ = 0;
  int deepColumn_ = 0;
};

void positionOf(std::string const& text, std::size_t offset, int& line, int& column) {
  line = 1;
  column = 1;
  for (std::size_t i = 0; i < offset && i < text.size(); ++i) {
    if (text[i] == '\n') {
      ++line;
      column = 1;
    } else {
      ++column;
    }
  }
}

}  // namespace

JsonValue const* JsonValue::find(std::string const& key) const {
  JsonMember const* member = findMember(key);
  return member == nullptr ? nullptr : &member->value;
}

JsonMember const* JsonValue::findMember(std::string const& key) const {
  for (JsonMember const& member : members) {
    if (member.key == key) return &member;
  }
  return nullptr;
}

std::string JsonValue::describe() const {
  switch (kind) {
    case Kind::kObject:
      return "an object";
    case Kind::kArray:
      return "an array";
    case Kind::kString:
      return "the string \"" + text + "\"";
    case Kind::kNumber:
      return "the number " + text;
    case Kind::kBool:
    case Kind::kNull:
      break;
  }
  return text;
}

JsonDocument JsonDocument::parse(std::string const& text) {
  JsonDocument document;
  // RapidJSON converts each number while it reads it, and refuses one too large for a double
  // (1e999) although it would hand over the text alone; the library's reader keeps numbers as
  // text and takes any size. Such a number is replaced by a 0 and blanks of the same length,
  // which keep every position, and the parse starts again; the tree gets the number as written.
  std::string parsed = text;
  std::map<std::size_t, std::string> numbers;
  while (true) {
    LineCountingStream stream(parsed);
    TreeBuilder builder(stream, numbers);
    rapidjson::Reader reader;
    // Numbers stay text, as the library's reader keeps them; text that is not UTF-8 is refused,
    // as it is there.
    constexpr unsigned kFlags = rapidjson::kParseNumbersAsStringsFlag |
                                rapidjson::kParseValidateEncodingFlag;
    rapidjson::ParseResult const result = reader.Parse<kFlags>(stream, builder);
    if (builder.tooDeep()) {
      document.tooDeep_ = true;
      document.errorLine_ = builder.deepLine();
      document.errorColumn_ = builder.deepColumn();
      document.errorText_ = "arrays and objects nest deeper than 100 levels";
      return document;
    }
    if (result.IsError() && result.Code() == rapidjson::kParseErrorNumberTooBig &&
        numbers.count(result.Offset()) == 0) {
      std::size_t end = result.Offset();
      while (end < parsed.size() && std::strchr("0123456789+-.eE", parsed[end]) != nullptr &&
             parsed[end] != '\0') {
        ++end;
      }
      numbers[result.Offset()] = parsed.substr(result.Offset(), end - result.Offset());
      parsed.replace(result.Offset(), end - result.Offset(),
                     "0" + std::string(end - result.Offset() - 1, ' '));
      continue;
    }
    if (result.IsError()) {
      positionOf(text, result.Offset(), document.errorLine_, document.errorColumn_);
      document.errorText_ = rapidjson::GetParseError_En(result.Code());
      // RapidJSON's texts end with a full stop; ours are embedded in a sentence.
      if (!document.errorText_.empty() && document.errorText_.back() == '.') {
        document.errorText_.pop_back();
      }
      return document;
    }
    document.root_ = builder.root();
    return document;
  }
}

std::string joinPath(std::string const& base, std::string const& key) {
  return base.empty() ? key : base + "." + key;
}

std::string indexPath(std::string const& base, std::size_t index) {
  return base + "[" + std::to_string(index) + "]";
}

}  // namespace qvcheck
