// The text of a run-time data file, read from its stream a piece at a time for the JSON parser.
#ifndef RTD_RTDJSONSTREAMSOURCE_H_
#define RTD_RTDJSONSTREAMSOURCE_H_

#include <cstddef>
#include <cstdint>
#include <iosfwd>
#include <iterator>
#include <memory>
#include <streambuf>

#include "diagram/JsonNestingCheck.h"

namespace IPA {

// Hands boost's JSON parser the rest of a stream one character at a time, through a buffer of
// kChunk bytes that is refilled as the parser reaches its end, and checks the depth of every
// piece as it is read (JsonNestingCheck).
//
// Why: a large design's file is some ten megabytes. Read whole, its text is a block that the heap
// maps for the one import and unmaps after it, and it is walked three times (read, depth check,
// parse) at a size no cache holds. A piece at a time, the parser reads what was just read, and the
// memory is one small buffer.
//
// The result is that of reading the whole text first (readJsonText, TextConversions.h) and then
// parsing it: a text nested too deep anywhere is refused for that, even where the parser would
// have stopped earlier, and a text of lengthLimit bytes or more is refused as too long unless it
// is too deep; only then does the parser's own error count. So when the parser throws, call
// finishAfterFailure before passing its error on.
//
// The parser sees an input iterator (each character once, none kept), so it hands over strings
// and numbers a character at a time and never holds a position into the buffer across a refill.
class RtdJsonStreamSource {
 public:
  static constexpr std::size_t kChunk = 64 * 1024;
  // Positions in a parsed document are 32 bits wide.
  static constexpr std::uint64_t kLengthLimit = 0xffffffffu;

  class Iterator;
  struct End {};

  // Reads `in` from where it stands, as readJsonText does (its buffer, whatever the stream's
  // state). `chunkSize` and `lengthLimit` other than the defaults are for tests.
  explicit RtdJsonStreamSource(std::istream& in, std::size_t chunkSize = kChunk,
                               std::uint64_t lengthLimit = kLengthLimit);

  Iterator begin();
  End end() const { return {}; }

  // The bytes the stream says it holds beyond where it stood, or 0 if it cannot tell: a bound
  // for the texts of a document, so that they need not grow while it is read.
  std::uint64_t announcedLength() const { return announced; }

  // After the parser threw: reads the rest of the stream, and throws the depth check's error if
  // the rest nests too deep, or std::length_error if the whole text is too long; returns (and
  // the parser's error stands) otherwise, or when the error was this source's own.
  void finishAfterFailure();

 private:
  // Reads the next piece into [cur, last); false at the end of the stream.
  bool refill(char const*& cur, char const*& last);
  // Reads the rest, checking it, without handing it out.
  void drain();
  // Checks and counts a piece just read.
  void take(std::size_t count);

  std::streambuf* buffer;
  std::size_t const chunkSize;
  std::uint64_t const limit;
  std::uint64_t announced = 0;
  std::unique_ptr<char[]> chunk;
  std::uint64_t length = 0;
  JsonNestingCheck nesting;
  bool ended = false;
  // This source has thrown an error of its own; nothing is read after it.
  bool refused = false;
};

// The parser keeps one iterator and reads through it alone (the copies it makes are made before it
// reads), so the iterator holds the place in the buffer itself.
class RtdJsonStreamSource::Iterator {
 public:
  using iterator_category = std::input_iterator_tag;
  using value_type = char;
  using difference_type = std::ptrdiff_t;
  using pointer = char const*;
  using reference = char const&;

  Iterator() = default;
  explicit Iterator(RtdJsonStreamSource* source) : source_(source) {}

  // Only where the parser has just been told that there is more.
  char operator*() const { return *cur_; }
  Iterator& operator++() {
    ++cur_;
    return *this;
  }
  // Refills the buffer when it is used up: the parser asks before every character it reads.
  bool atEnd() const { return cur_ == last_ && !source_->refill(cur_, last_); }

  friend bool operator==(Iterator const& it, End) { return it.atEnd(); }
  friend bool operator!=(Iterator const& it, End) { return !it.atEnd(); }
  friend bool operator==(End, Iterator const& it) { return it.atEnd(); }
  friend bool operator!=(End, Iterator const& it) { return !it.atEnd(); }

 private:
  RtdJsonStreamSource* source_ = nullptr;
  // The part of the buffer not read yet; moved on by the comparison that refills it.
  mutable char const* cur_ = nullptr;
  mutable char const* last_ = nullptr;
};

inline RtdJsonStreamSource::Iterator RtdJsonStreamSource::begin() { return Iterator(this); }

}  // namespace IPA

#endif  // RTD_RTDJSONSTREAMSOURCE_H_
