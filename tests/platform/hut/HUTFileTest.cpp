#include "platform/hut/HUTFile.h"

#include <fstream>
#include <string>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

#include "tests/support/TempDir.h"

namespace {

class HUTFileTest : public ::testing::Test {
 protected:
  // A fresh directory under testing::TempDir(), removed with its contents after each test.
  qvtest::TempDir dir;
};

TEST_F(HUTFileTest, ExistingFileExists) {
  std::string const path = dir.file("present.txt");
  std::ofstream(path) << "content\n";
  EXPECT_TRUE(HUTFile(path).exists());
}

TEST_F(HUTFileTest, EmptyFileExists) {
  std::string const path = dir.file("empty.txt");
  std::ofstream{path};
  EXPECT_TRUE(HUTFile(path).exists());
}

TEST_F(HUTFileTest, DirectoryExists) {
  EXPECT_TRUE(HUTFile(dir.path()).exists());
  boost::filesystem::create_directory(dir.file("sub"));
  EXPECT_TRUE(HUTFile(dir.file("sub")).exists());
  EXPECT_TRUE(HUTFile(dir.file("sub") + "/").exists());
}

TEST_F(HUTFileTest, MissingPathDoesNotExist) {
  EXPECT_FALSE(HUTFile(dir.file("absent.txt")).exists());
  EXPECT_FALSE(HUTFile(dir.file("absent/deeper.txt")).exists());
}

TEST_F(HUTFileTest, PathBelowAFileDoesNotExist) {
  std::string const path = dir.file("plain.txt");
  std::ofstream(path) << "content\n";
  EXPECT_FALSE(HUTFile(path + "/child").exists());
}

TEST_F(HUTFileTest, EmptyPathDoesNotExist) { EXPECT_FALSE(HUTFile("").exists()); }

TEST_F(HUTFileTest, RemovedFileNoLongerExists) {
  std::string const path = dir.file("brief.txt");
  std::ofstream(path) << "content\n";
  HUTFile const file(path);
  ASSERT_TRUE(file.exists());
  boost::filesystem::remove(path);
  // Asked again each time, not remembered.
  EXPECT_FALSE(file.exists());
}

TEST_F(HUTFileTest, SymbolicLinkToAFileExists) {
  std::string const target = dir.file("target.txt");
  std::ofstream(target) << "content\n";
  boost::filesystem::create_symlink(target, dir.file("link"));
  EXPECT_TRUE(HUTFile(dir.file("link")).exists());
}

TEST_F(HUTFileTest, PathIsKeptAsGiven) {
  EXPECT_EQ(HUTFile("some/relative/../path").path(), "some/relative/../path");
  EXPECT_EQ(HUTFile("").path(), "");
}

TEST_F(HUTFileTest, DirSeparatorIsASlash) { EXPECT_EQ(HUTFile::getDirSeparator(), "/"); }

}  // namespace
