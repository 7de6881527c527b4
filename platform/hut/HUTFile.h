// A path on the host's file system.
#ifndef PLATFORM_HUT_HUTFILE_H_
#define PLATFORM_HUT_HUTFILE_H_

#include <string>
#include <utility>

class HUTFile {
 public:
  explicit HUTFile(std::string path) : path_(std::move(path)) {}

  // Whether something exists at the path (a file, a directory or anything else). A path that
  // cannot be examined, or an empty one, does not exist.
  bool exists() const;

  std::string const& path() const { return path_; }

  // The separator between directory names: "/".
  static std::string getDirSeparator();

 private:
  std::string path_;
};

#endif  // PLATFORM_HUT_HUTFILE_H_
