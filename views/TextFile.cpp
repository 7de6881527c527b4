#include "views/TextFile.h"

#include <sys/stat.h>

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace qvviews {
namespace {

std::runtime_error cannotRead(std::string const& path, int error) {
  return std::runtime_error("cannot read '" + path + "': " + std::strerror(error));
}

}  // namespace

std::string TextFile::read(std::string const& path) {
  // An ifstream opens a directory without complaint and then reads nothing.
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) throw cannotRead(path, errno);
  if (S_ISDIR(status.st_mode)) throw cannotRead(path, EISDIR);
  std::ifstream in(path, std::ios::binary);
  if (!in) throw cannotRead(path, errno);
  std::ostringstream text;
  text << in.rdbuf();
  if (in.bad()) throw cannotRead(path, errno);
  return text.str();
}

}  // namespace qvviews
