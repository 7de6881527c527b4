// The whole text of an input file, with the reason when it cannot be had.
#ifndef VIEWS_TEXTFILE_H_
#define VIEWS_TEXTFILE_H_

#include <string>

namespace qvviews {

class TextFile {
 public:
  // The content of the file at `path`. Throws std::runtime_error
  // "cannot read '<path>': <reason>", the reason being the system's text for the error
  // ("No such file or directory", "Permission denied", "Is a directory").
  static std::string read(std::string const& path);
};

}  // namespace qvviews

#endif  // VIEWS_TEXTFILE_H_
