// A JSON document with the line and column of every key and value, read with RapidJSON.
#ifndef CHECKS_JSONDOCUMENT_H_
#define CHECKS_JSONDOCUMENT_H_

#include <memory>
#include <string>
#include <vector>

namespace qvcheck {

struct JsonMember;

// One value. Scalars keep their text the way the library's property-tree reader keeps it, so
// that the checks compare what the import compares: a string its unescaped text, a number its
// text as written ("1.50" stays "1.50"), the literals the words "true", "false" and "null".
struct JsonValue {
  enum class Kind { kNull, kBool, kNumber, kString, kObject, kArray };
  Kind kind = Kind::kNull;
  std::string text;  // scalars only; empty for objects and arrays
  int line = 0;      // of the value's first character, from 1
  int column = 0;
  // Members of an object in file order, duplicates kept; elements of an array with empty keys.
  std::vector<JsonMember> members;

  bool isContainer() const { return kind == Kind::kObject || kind == Kind::kArray; }
  // The first member with `key`, as the property tree's get_child finds it; null when none.
  JsonValue const* find(std::string const& key) const;
  JsonMember const* findMember(std::string const& key) const;
  // "an object", "an array", "a string", "a number", "true", "null", ...
  std::string describe() const;
};

struct JsonMember {
  std::string key;  // empty for an array element
  int line = 0;     // of the key (of the element for arrays)
  int column = 0;
  JsonValue value;
};

// The result of reading one file: a root, or where and why the text is not JSON.
class JsonDocument {
 public:
  // Parses `text` as the library's JSON reader requires it: one value, UTF-8, arrays and objects
  // nested at most 100 deep (diagram/TextConversions.h says why). Never throws for bad input.
  static JsonDocument parse(std::string const& text);

  bool ok() const { return root_ != nullptr; }
  JsonValue const& root() const { return *root_; }
  // When !ok(): the position of the error, from 1, and RapidJSON's reason in words.
  int errorLine() const { return errorLine_; }
  int errorColumn() const { return errorColumn_; }
  std::string const& errorText() const { return errorText_; }
  // True when the text is JSON but nests too deep for the library's reader.
  bool tooDeep() const { return tooDeep_; }

 private:
  std::shared_ptr<JsonValue> root_;
  int errorLine_ = 0;
  int errorColumn_ = 0;
  std::string errorText_;
  bool tooDeep_ = false;
};

// "a.b[3].c" style paths: `base` followed by `.key`, or `[index]`.
std::string joinPath(std::string const& base, std::string const& key);
std::string indexPath(std::string const& base, std::size_t index);

}  // namespace qvcheck

#endif  // CHECKS_JSONDOCUMENT_H_
