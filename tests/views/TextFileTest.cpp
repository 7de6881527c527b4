#include "views/TextFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "tests/support/TempDir.h"

namespace qvviews {
namespace {

std::string failure(std::string const& path) {
  try {
    TextFile::read(path);
  } catch (std::runtime_error const& error) {
    return error.what();
  }
  return "no exception";
}

TEST(TextFileTest, ReadsEveryByte) {
  qvtest::TempDir dir;
  std::string const path = dir.file("a.json");
  std::ofstream(path, std::ios::binary) << std::string("{\0}\n", 4);
  EXPECT_EQ(TextFile::read(path), std::string("{\0}\n", 4));
}

TEST(TextFileTest, MissingFilesAndDirectoriesAreNamedWithTheReason) {
  qvtest::TempDir dir;
  EXPECT_EQ(failure(dir.file("absent")),
            "cannot read '" + dir.file("absent") + "': No such file or directory");
  EXPECT_EQ(failure(dir.path()), "cannot read '" + dir.path() + "': Is a directory");
}

}  // namespace
}  // namespace qvviews
