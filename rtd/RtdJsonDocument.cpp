#include "rtd/RtdJsonDocument.h"

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <stdexcept>
#include <unordered_map>
#include <utility>

namespace IPA {

// The parser's callbacks. They follow boost's standard_callbacks step for step (the same stack
// of layers, the same moments at which a child is added and a key is taken), so that the
// document holds the tree that read_json would build; only the nodes go into one array.
class RtdJsonDocumentBuilder {
 public:
  using char_type = char;

  explicit RtdJsonDocumentBuilder(RtdJsonDocument& target) : document(target) {
    document.keys.emplace_back();
    keyIndex.emplace(std::string(), 0);
  }

  void on_null() { newValue() = "null"; }
  void on_boolean(bool b) { newValue() = b ? "true" : "false"; }
  template <typename Range>
  void on_number(Range codeUnits) {
    newValue().assign(codeUnits.begin(), codeUnits.end());
  }
  void on_begin_number() { newValue(); }
  void on_digit(char d) { currentValue() += d; }
  void on_end_number() {}
  void on_begin_string() { newValue(); }
  template <typename Range>
  void on_code_units(Range codeUnits) {
    currentValue().append(codeUnits.begin(), codeUnits.end());
  }
  void on_code_unit(char c) { currentValue() += c; }
  void on_end_string() {}
  void on_begin_array() {
    newTree();
    stack.back().kind = Kind::kArray;
  }
  void on_end_array() {
    if (stack.back().kind == Kind::kLeaf) stack.pop_back();
    stack.pop_back();
  }
  void on_begin_object() {
    newTree();
    stack.back().kind = Kind::kObject;
  }
  void on_end_object() {
    if (stack.back().kind == Kind::kLeaf) stack.pop_back();
    stack.pop_back();
  }

 private:
  enum class Kind { kArray, kObject, kKey, kLeaf };
  struct Layer {
    Kind kind;
    std::uint32_t node;
  };

  std::string& currentValue() {
    Layer const& layer = stack.back();
    if (layer.kind == Kind::kKey) return keyBuffer;
    return document.records[layer.node].data;
  }

  std::uint32_t addChild(std::uint32_t parent, std::uint32_t key) {
    auto const index = static_cast<std::uint32_t>(document.records.size());
    document.records.emplace_back();
    document.records.back().key = key;
    RtdJsonDocument::Record& owner = document.records[parent];
    if (owner.lastChild == RtdJsonDocument::kNone) {
      owner.firstChild = index;
    } else {
      document.records[owner.lastChild].next = index;
    }
    owner.lastChild = index;
    ++owner.children;
    return index;
  }

  std::uint32_t internKey(std::string const& key) {
    auto const found = keyIndex.find(key);
    if (found != keyIndex.end()) return found->second;
    auto const index = static_cast<std::uint32_t>(document.keys.size());
    document.keys.push_back(key);
    keyIndex.emplace(key, index);
    return index;
  }

  std::uint32_t newTree() {
    if (stack.empty()) {
      stack.push_back({Kind::kLeaf, 0});
      return 0;
    }
    Layer& layer = stack.back();
    switch (layer.kind) {
      case Kind::kArray: {
        std::uint32_t const child = addChild(layer.node, 0);
        stack.push_back({Kind::kLeaf, child});
        return child;
      }
      case Kind::kKey: {
        std::uint32_t const child = addChild(layer.node, internKey(keyBuffer));
        layer.kind = Kind::kObject;
        stack.push_back({Kind::kLeaf, child});
        return child;
      }
      case Kind::kLeaf:
        stack.pop_back();
        return newTree();
      case Kind::kObject:
      default:
        // The parser always reads a key (newValue) before an object's member.
        throw std::logic_error("RtdJsonDocument: a member without a key");
    }
  }

  std::string& newValue() {
    if (stack.empty()) return document.records[newTree()].data;
    Layer& layer = stack.back();
    switch (layer.kind) {
      case Kind::kLeaf:
        stack.pop_back();
        return newValue();
      case Kind::kObject:
        layer.kind = Kind::kKey;
        keyBuffer.clear();
        return keyBuffer;
      default:
        return document.records[newTree()].data;
    }
  }

  RtdJsonDocument& document;
  std::unordered_map<std::string, std::uint32_t> keyIndex;
  std::string keyBuffer;
  std::vector<Layer> stack;
};

RtdJsonDocument::RtdJsonDocument(std::string const& text) {
  // The root, and room for the nodes: a file has about one node per ten bytes.
  records.reserve(text.size() / 10 + 1);
  records.emplace_back();
  RtdJsonDocumentBuilder callbacks(*this);
  namespace detail = boost::property_tree::json_parser::detail;
  detail::encoding<char> encoding;
  detail::read_json_internal(text.begin(), text.end(), encoding, callbacks, std::string());
}

RtdJsonDocument::Node RtdJsonDocument::root() const { return Node(this, 0); }

std::uint32_t RtdJsonDocument::Node::find(std::string const& path) const {
  std::uint32_t node = index_;
  std::string::size_type start = 0;
  while (true) {
    std::string::size_type const dot = path.find('.', start);
    std::string::size_type const length =
        dot == std::string::npos ? path.size() - start : dot - start;
    std::uint32_t child = document_->records[node].firstChild;
    while (child != kNone) {
      std::string const& key = document_->keys[document_->records[child].key];
      if (key.size() == length && key.compare(0, length, path, start, length) == 0) break;
      child = document_->records[child].next;
    }
    if (child == kNone) return kNone;
    node = child;
    if (dot == std::string::npos) return node;
    start = dot + 1;
  }
}

RtdJsonDocument::Node RtdJsonDocument::Node::get_child(std::string const& path) const {
  std::uint32_t const found = find(path);
  if (found == kNone) {
    throw boost::property_tree::ptree_bad_path("No such node",
                                               boost::property_tree::ptree::path_type(path));
  }
  return Node(document_, found);
}

template <>
std::string RtdJsonDocument::Node::get<std::string>(std::string const& path,
                                                    std::string const& fallback) const {
  std::uint32_t const found = find(path);
  return found == kNone ? fallback : document_->records[found].data;
}

}  // namespace IPA
