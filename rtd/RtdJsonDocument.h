// A run-time data file parsed into a compact tree that reads like boost's property tree.
#ifndef RTD_RTDJSONDOCUMENT_H_
#define RTD_RTDJSONDOCUMENT_H_

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "rtd/RtdJsonStreamSource.h"

namespace IPA {

// The JSON of a run-time data file, as boost::property_tree::read_json would read it, kept in
// one array of nodes instead of a property tree.
//
// Why: a large design's file has some ten nodes per connection, and a property tree allocates
// each node, its list of children and its key on its own; building and freeing a million of those
// costs more than everything else the import does, and more than linearly with the size. The
// document parses with the same parser (boost's), so it accepts and refuses exactly what
// read_json does, with the same json_parser_error texts, and it holds the same tree: the same
// keys in the same order (array elements with the empty key), numbers, true, false and null as
// their text, an object's or an array's own text empty.
//
// The file is never held as one text: the parser reads the stream a piece at a time through
// RtdJsonStreamSource, which also runs the depth check of the library's readers on each piece, so
// that a large design's file costs a small buffer and is parsed while it is still in the cache.
//
// Node offers the part of the property tree's interface that the rtd builders use, with the same
// meanings (see RtdSectionBuilder.h and the builders): a path is split at '.', and each step
// takes the first child with that key. The document must outlive its nodes.
class RtdJsonDocument {
 public:
  class Node;

  // Parses the rest of `in`, as readJsonText (TextConversions.h) and then read_json of the
  // text would: throws boost::property_tree::json_parser_error on bad JSON (no file name in the
  // text) or on a text that nests too deep, and std::length_error on one of 4 GiB or more. The
  // stream is read a piece of `chunkSize` bytes at a time (RtdJsonStreamSource), never whole;
  // other sizes than the default are for tests.
  explicit RtdJsonDocument(std::istream& in, std::size_t chunkSize = RtdJsonStreamSource::kChunk);

  Node root() const;

 private:
  friend class Node;
  friend class RtdJsonDocumentBuilder;
  // Records are small and hold no memory of their own: the texts of all values are one text,
  // `texts`. A large design's document is then a few large blocks, which matters as much as the
  // count of allocations: memory freed in large blocks goes back to the system, and fetching it
  // again page by page costs more than filling it.
  // No initialisers: a block is not written when it is allocated, only each record when it is
  // added (addRecord). The last child of a node, needed only while the node is read, is kept by
  // the builder, not here.
  struct Record {
    std::uint32_t dataOffset;  // into texts
    std::uint32_t dataLength;
    std::uint32_t key;  // into keys
    std::uint32_t firstChild;
    std::uint32_t next;
    std::uint32_t children;
  };
  static constexpr std::uint32_t kNone = 0xffffffffu;

  // Every key once (the names repeat on every entry of a list); 0 is the empty key.
  std::vector<std::string> keys;
  // The records in blocks of kBlock, each small enough for the heap: a block the size of a large
  // design's document would be mapped for the one import and unmapped after it, and the next
  // import would fetch every page of it from the system again.
  static constexpr std::uint32_t kBlockBits = 12;
  static constexpr std::uint32_t kBlock = 1u << kBlockBits;
  Record& record(std::uint32_t index) { return blocks[index >> kBlockBits][index & (kBlock - 1)]; }
  Record const& record(std::uint32_t index) const {
    return blocks[index >> kBlockBits][index & (kBlock - 1)];
  }
  std::uint32_t addRecord();

  std::vector<std::unique_ptr<Record[]>> blocks;
  std::uint32_t recordCount = 0;

  // The texts, one after the other: a buffer of which only what is written is ever touched, so
  // that it can be sized for the whole file at once (the values' texts are never longer than
  // the file) without costing a page more than it holds. The parser hands over strings a
  // character at a time, and appendText is all each one costs.
  void appendText(char c) {
    if (textSize == textCapacity) growTexts(textSize + 1);
    texts[textSize++] = c;
  }
  void appendText(char const* text, std::size_t length) {
    if (textCapacity - textSize < length) growTexts(textSize + length);
    for (std::size_t i = 0; i < length; ++i) texts[textSize++] = text[i];
  }
  void growTexts(std::size_t needed);

  std::unique_ptr<char[]> texts;
  std::size_t textSize = 0;
  std::size_t textCapacity = 0;
};

class RtdJsonDocument::Node {
 public:
  // One child with its key, as the property tree's value_type shows it.
  struct Member;
  class const_iterator;

  Node(RtdJsonDocument const* document, std::uint32_t index) : document_(document), index_(index) {}

  // The node's own text: a string's, a number's, "true", "false" or "null"; empty for an object
  // or an array.
  std::string_view data() const {
    Record const& record = document_->record(index_);
    return std::string_view(document_->texts.get() + record.dataOffset, record.dataLength);
  }
  std::size_t size() const { return document_->record(index_).children; }
  const_iterator begin() const;
  const_iterator end() const;

  // The node at `path`; throws boost::property_tree::ptree_bad_path("No such node", path) when a
  // step finds no child, as the property tree does.
  Node get_child(std::string const& path) const;

  // The text at `path`, or `fallback` when there is no node there.
  template <class T>
  T get(std::string const& path, T const& fallback) const;

 private:
  // kNone when a step finds no child.
  std::uint32_t find(std::string const& path) const;

  RtdJsonDocument const* document_;
  std::uint32_t index_;
};

struct RtdJsonDocument::Node::Member {
  std::string const& first;
  Node second;
};

class RtdJsonDocument::Node::const_iterator {
 public:
  const_iterator(RtdJsonDocument const* document, std::uint32_t index)
      : document_(document), index_(index) {}
  Member operator*() const {
    return Member{document_->keys[document_->record(index_).key], Node(document_, index_)};
  }
  const_iterator& operator++() {
    index_ = document_->record(index_).next;
    return *this;
  }
  bool operator!=(const_iterator const& other) const { return index_ != other.index_; }
  bool operator==(const_iterator const& other) const { return index_ == other.index_; }

 private:
  RtdJsonDocument const* document_;
  std::uint32_t index_;
};

inline RtdJsonDocument::Node::const_iterator RtdJsonDocument::Node::begin() const {
  return {document_, document_->record(index_).firstChild};
}
inline RtdJsonDocument::Node::const_iterator RtdJsonDocument::Node::end() const {
  return {document_, kNone};
}

template <>
std::string RtdJsonDocument::Node::get<std::string>(std::string const& path,
                                                    std::string const& fallback) const;

}  // namespace IPA

#endif  // RTD_RTDJSONDOCUMENT_H_
