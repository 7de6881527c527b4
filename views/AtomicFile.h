// Writing an output file whole or not at all.
#ifndef VIEWS_ATOMICFILE_H_
#define VIEWS_ATOMICFILE_H_

#include <string>

namespace qvviews {

// A picture that is half written would open as a broken page or an SVG that ends in the middle,
// and a reader watching the file could catch it so. The content goes to a temporary file in the
// same directory first, which is then renamed over `path` in one step.
class AtomicFile {
 public:
  // Writes `content` to `path`, replacing any file there. Throws std::runtime_error
  // "cannot write '<path>': <reason>" when the directory is missing or not writable, the disk
  // is full, or the rename fails; the temporary file is removed then, and a file that was at
  // `path` stays as it was.
  static void write(std::string const& path, std::string const& content);
};

}  // namespace qvviews

#endif  // VIEWS_ATOMICFILE_H_
