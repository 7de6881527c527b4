// A fresh directory for one test, removed with everything in it afterwards.
#ifndef TESTS_SUPPORT_TEMPDIR_H_
#define TESTS_SUPPORT_TEMPDIR_H_

#include <string>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

namespace qvtest {

class TempDir {
 public:
  TempDir()
      : path_(boost::filesystem::path(::testing::TempDir()) /
              boost::filesystem::unique_path("qv-%%%%-%%%%-%%%%")) {
    boost::filesystem::create_directories(path_);
  }
  ~TempDir() {
    boost::system::error_code ignored;
    boost::filesystem::remove_all(path_, ignored);
  }
  TempDir(TempDir const&) = delete;
  TempDir& operator=(TempDir const&) = delete;

  // The path of `name` inside the directory.
  std::string file(std::string const& name) const { return (path_ / name).string(); }
  std::string path() const { return path_.string(); }

 private:
  boost::filesystem::path path_;
};

}  // namespace qvtest

#endif  // TESTS_SUPPORT_TEMPDIR_H_
