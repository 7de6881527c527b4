// Closes a file stream when a scope ends, without throwing.
#ifndef DIAGRAM_FSTREAMFINALIZER_H_
#define DIAGRAM_FSTREAMFINALIZER_H_

#include <ios>

namespace IPA {

// Armed on a std::ifstream or std::ofstream that the caller owns and that outlives this object.
// On destruction, if the file is still open, closes it; a failed close sets the stream's fail
// bit and is otherwise not reported. Never throws, even for a stream with exceptions enabled.
template <class FileStream>
class FStreamFinalizer {
 public:
  explicit FStreamFinalizer(FileStream& stream) : stream_(stream) {}
  ~FStreamFinalizer() {
    try {
      if (stream_.is_open()) stream_.close();
    } catch (std::ios_base::failure const&) {
      // close() already set the fail bit; throwing from here would end the program during
      // unwinding.
    }
  }

  FStreamFinalizer(FStreamFinalizer const&) = delete;
  FStreamFinalizer& operator=(FStreamFinalizer const&) = delete;

 private:
  FileStream& stream_;
};

}  // namespace IPA

#endif  // DIAGRAM_FSTREAMFINALIZER_H_
