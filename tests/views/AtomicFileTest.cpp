#include "views/AtomicFile.h"

#include <sys/stat.h>
#include <unistd.h>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"

namespace qvviews {
namespace {

class AtomicFileTest : public ::testing::Test {
 protected:
  std::vector<std::string> entries() const {
    std::vector<std::string> names;
    for (auto const& entry : boost::filesystem::directory_iterator(dir.path())) {
      names.push_back(entry.path().filename().string());
    }
    return names;
  }
  static std::string failure(std::string const& path) {
    try {
      AtomicFile::write(path, "text");
    } catch (std::runtime_error const& error) {
      return error.what();
    }
    return "no exception";
  }

  qvtest::TempDir dir;
};

TEST_F(AtomicFileTest, WritesAndReplacesLeavingOnlyTheFile) {
  std::string const path = dir.file("picture.svg");
  AtomicFile::write(path, "first");
  AtomicFile::write(path, "second, longer");
  EXPECT_EQ(qvtest::readFile(path), "second, longer");
  EXPECT_EQ(entries(), std::vector<std::string>{"picture.svg"});
}

TEST_F(AtomicFileTest, PermissionsFollowTheUmask) {
  mode_t const previous = ::umask(022);
  std::string const path = dir.file("page.html");
  AtomicFile::write(path, "x");
  ::umask(previous);
  struct stat status {};
  ASSERT_EQ(::stat(path.c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0777, 0644u);
}

TEST_F(AtomicFileTest, AMissingDirectoryNamesThePathAndTheReason) {
  std::string const path = dir.file("no/such/dir/x.svg");
  EXPECT_EQ(failure(path), "cannot write '" + path + "': No such file or directory");
}

TEST_F(AtomicFileTest, ADirectoryInTheWayLeavesNothingBehind) {
  std::string const path = dir.file("taken");
  boost::filesystem::create_directory(path);
  EXPECT_EQ(failure(path), "cannot write '" + path + "': Is a directory");
  EXPECT_EQ(entries(), std::vector<std::string>{"taken"});
}

TEST_F(AtomicFileTest, AnUnwritableDirectoryLeavesTheOldFile) {
  if (::geteuid() == 0) GTEST_SKIP() << "root writes into any directory";
  std::string const path = dir.file("x.svg");
  AtomicFile::write(path, "old");
  ASSERT_EQ(::chmod(dir.path().c_str(), 0555), 0);
  std::string const reason = failure(path);
  ::chmod(dir.path().c_str(), 0755);
  EXPECT_EQ(reason, "cannot write '" + path + "': Permission denied");
  EXPECT_EQ(qvtest::readFile(path), "old");
}

}  // namespace
}  // namespace qvviews
