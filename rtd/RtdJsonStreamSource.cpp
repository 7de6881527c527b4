#include "rtd/RtdJsonStreamSource.h"

#include <ios>
#include <istream>
#include <stdexcept>

namespace IPA {

RtdJsonStreamSource::RtdJsonStreamSource(std::istream& in, std::size_t size,
                                         std::uint64_t lengthLimit)
    : buffer(in.rdbuf()),
      chunkSize(size == 0 ? 1 : size),
      limit(lengthLimit),
      chunk(new char[chunkSize]) {
  if (buffer == nullptr) {
    ended = true;
    return;
  }
  // A file or a string knows its length; a pipe does not, and is only read.
  std::streamoff const here = buffer->pubseekoff(0, std::ios::cur, std::ios::in);
  if (here < 0) return;
  std::streamoff const end = buffer->pubseekoff(0, std::ios::end, std::ios::in);
  // A stream that cannot go back is read from wherever it stands, as readJsonText reads it.
  if (buffer->pubseekoff(here, std::ios::beg, std::ios::in) == here && end > here) {
    announced = static_cast<std::uint64_t>(end - here);
  }
}

void RtdJsonStreamSource::take(std::size_t count) {
  try {
    nesting.scan(chunk.get(), chunk.get() + count);
  } catch (...) {
    refused = true;
    throw;
  }
  length += count;
  if (length >= limit) {
    refused = true;
    // Too deep further on is the stronger reason.
    drain();
    throw std::length_error("A run-time data file of 4 GiB or more cannot be read.");
  }
}

bool RtdJsonStreamSource::refill(char const*& cur, char const*& last) {
  if (ended || refused) return false;
  std::streamsize const count = buffer->sgetn(chunk.get(), static_cast<std::streamsize>(chunkSize));
  if (count <= 0) {
    ended = true;
    return false;
  }
  take(static_cast<std::size_t>(count));
  cur = chunk.get();
  last = cur + count;
  return true;
}

void RtdJsonStreamSource::drain() {
  while (!ended) {
    std::streamsize const count =
        buffer->sgetn(chunk.get(), static_cast<std::streamsize>(chunkSize));
    if (count <= 0) {
      ended = true;
      break;
    }
    nesting.scan(chunk.get(), chunk.get() + count);
    length += static_cast<std::uint64_t>(count);
  }
}

void RtdJsonStreamSource::finishAfterFailure() {
  if (refused) return;
  refused = true;
  drain();
  if (length >= limit) {
    throw std::length_error("A run-time data file of 4 GiB or more cannot be read.");
  }
}

}  // namespace IPA
