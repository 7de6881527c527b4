#include "rtd/RtdJsonDocument.h"

#include <algorithm>
#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "rtd/RtdJsonStreamSource.h"

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

  // A value always starts empty (newValue), so to assign it is to append to it. The parser reads
  // from an input iterator (RtdJsonStreamSource), so strings and numbers come a character at a
  // time. They all go to the end of the texts, a key too: it is taken off again when its member's
  // value starts (newTree).
  void on_null() {
    newValue();
    document.appendText("null", 4);
    endValue();
  }
  void on_boolean(bool b) {
    newValue();
    if (b) {
      document.appendText("true", 4);
    } else {
      document.appendText("false", 5);
    }
    endValue();
  }
  void on_begin_number() { newValue(); }
  void on_digit(char d) { document.appendText(d); }
  void on_end_number() { endValue(); }
  void on_begin_string() { newValue(); }
  void on_code_unit(char c) { document.appendText(c); }
  void on_end_string() { endValue(); }
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
    // The node's last child so far, while it is an array's or an object's.
    std::uint32_t lastChild = RtdJsonDocument::kNone;
  };

  // Ends the value being read: a node's text is the end of the texts from where the node was
  // made (values are read one at a time, and a node's text starts when it is made).
  void endValue() {
    Layer const& layer = stack.back();
    if (layer.kind == Kind::kKey) return;
    RtdJsonDocument::Record& record = document.record(layer.node);
    record.dataLength = static_cast<std::uint32_t>(document.textSize - record.dataOffset);
  }

  // Appends a child to the node of `parent`, the layer on top of the stack.
  std::uint32_t addChild(Layer& parent, std::uint32_t key) {
    std::uint32_t const index = document.addRecord();
    RtdJsonDocument::Record& child = document.record(index);
    child.key = key;
    child.dataOffset = static_cast<std::uint32_t>(document.textSize);
    RtdJsonDocument::Record& owner = document.record(parent.node);
    if (parent.lastChild == RtdJsonDocument::kNone) {
      owner.firstChild = index;
    } else {
      document.record(parent.lastChild).next = index;
    }
    parent.lastChild = index;
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
        std::uint32_t const child = addChild(layer, 0);
        stack.push_back({Kind::kLeaf, child});
        return child;
      }
      case Kind::kKey: {
        // The key read last is the end of the texts; it is kept among the keys instead.
        keyBuffer.assign(document.texts.get() + keyStart, document.textSize - keyStart);
        document.textSize = keyStart;
        std::uint32_t const child = addChild(layer, internKey(keyBuffer));
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

  // Starts a value: a new node, or the key of an object's next member.
  void newValue() {
    if (stack.empty()) {
      newTree();
      return;
    }
    Layer& layer = stack.back();
    switch (layer.kind) {
      case Kind::kLeaf:
        stack.pop_back();
        newValue();
        return;
      case Kind::kObject:
        layer.kind = Kind::kKey;
        keyStart = document.textSize;
        return;
      default:
        newTree();
    }
  }

  RtdJsonDocument& document;
  std::unordered_map<std::string, std::uint32_t> keyIndex;
  std::string keyBuffer;
  // Where the key being read starts in the texts.
  std::size_t keyStart = 0;
  std::vector<Layer> stack;
};

RtdJsonDocument::RtdJsonDocument(std::istream& in, std::size_t chunkSize) {
  RtdJsonStreamSource source(in, chunkSize);
  // Room for every text at once, so that it does not grow (and copy itself) while the file is
  // read: the texts are never longer than the part of the file read so far. A bound; only what is
  // written is ever touched. A stream that does not tell its length grows the texts as it goes.
  std::uint64_t const bound =
      source.announcedLength() < RtdJsonStreamSource::kLengthLimit ? source.announcedLength() : 0;
  growTexts(std::max<std::size_t>(static_cast<std::size_t>(bound), 64));
  addRecord();
  RtdJsonDocumentBuilder callbacks(*this);
  namespace detail = boost::property_tree::json_parser::detail;
  detail::encoding<char> encoding;
  try {
    detail::read_json_internal(source.begin(), source.end(), encoding, callbacks, std::string());
  } catch (boost::property_tree::json_parser_error const&) {
    // The parser's error, or the source's own; a deeper or longer text is refused for that.
    source.finishAfterFailure();
    throw;
  }
}

void RtdJsonDocument::growTexts(std::size_t needed) {
  if (needed <= textCapacity) return;
  std::size_t const capacity = std::max(needed, 2 * textCapacity);
  // Not value-initialised: a page of it is fetched only when a text is written to it.
  std::unique_ptr<char[]> grown(new char[capacity]);
  std::copy(texts.get(), texts.get() + textSize, grown.get());
  texts = std::move(grown);
  textCapacity = capacity;
}

std::uint32_t RtdJsonDocument::addRecord() {
  // Default-initialised: the records are written one by one below, not all at once here.
  if ((recordCount & (kBlock - 1)) == 0) {
    blocks.push_back(std::unique_ptr<Record[]>(new Record[kBlock]));
  }
  record(recordCount) = Record{0, 0, 0, kNone, kNone, 0};
  return recordCount++;
}

RtdJsonDocument::Node RtdJsonDocument::root() const { return Node(this, 0); }

std::uint32_t RtdJsonDocument::Node::find(std::string const& path) const {
  std::uint32_t node = index_;
  std::string::size_type start = 0;
  while (true) {
    std::string::size_type const dot = path.find('.', start);
    std::string::size_type const length =
        dot == std::string::npos ? path.size() - start : dot - start;
    std::uint32_t child = document_->record(node).firstChild;
    while (child != kNone) {
      std::string const& key = document_->keys[document_->record(child).key];
      if (key.size() == length && key.compare(0, length, path, start, length) == 0) break;
      child = document_->record(child).next;
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
  return found == kNone ? fallback : std::string(Node(document_, found).data());
}

}  // namespace IPA
