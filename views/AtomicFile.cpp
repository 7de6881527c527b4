#include "views/AtomicFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <random>
#include <stdexcept>

namespace qvviews {
namespace {

std::runtime_error cannotWrite(std::string const& path, int error) {
  return std::runtime_error("cannot write '" + path + "': " + std::strerror(error));
}

}  // namespace

void AtomicFile::write(std::string const& path, std::string const& content) {
  // Beside the target, so that the rename stays within one file system. open() with mode 0666
  // lets the umask decide the permissions, as for any other output (mkstemp would make it 0600).
  static std::atomic<unsigned> counter{0};
  std::random_device random;
  std::string temporary;
  int fd = -1;
  for (int attempt = 0; attempt < 100 && fd < 0; ++attempt) {
    char suffix[64];
    std::snprintf(suffix, sizeof suffix, ".tmp-%ld-%u-%08x", static_cast<long>(::getpid()),
                  counter++, random());
    temporary = path + suffix;
    fd = ::open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0 && errno != EEXIST) throw cannotWrite(path, errno);
  }
  if (fd < 0) throw cannotWrite(path, EEXIST);

  auto const fail = [&](int error) {
    ::close(fd);
    ::unlink(temporary.c_str());
    return cannotWrite(path, error);
  };
  char const* data = content.data();
  std::size_t left = content.size();
  while (left > 0) {
    ssize_t const written = ::write(fd, data, left);
    if (written < 0) {
      if (errno == EINTR) continue;
      throw fail(errno);
    }
    data += written;
    left -= static_cast<std::size_t>(written);
  }
  if (::close(fd) != 0) {
    int const error = errno;
    ::unlink(temporary.c_str());
    throw cannotWrite(path, error);
  }
  if (std::rename(temporary.c_str(), path.c_str()) != 0) {
    int const error = errno;
    ::unlink(temporary.c_str());
    throw cannotWrite(path, error);
  }
}

}  // namespace qvviews
