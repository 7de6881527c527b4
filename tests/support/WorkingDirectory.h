// Runs a test in another working directory.
#ifndef TESTS_SUPPORT_WORKINGDIRECTORY_H_
#define TESTS_SUPPORT_WORKINGDIRECTORY_H_

#include <boost/filesystem.hpp>
#include <string>

namespace qvtest {

// Makes `directory` the process's working directory for its lifetime and then goes back. The
// example design's kernels file names its kernel directories relative to examples/design, as a
// tool chain's server would see them from its own working directory.
class WorkingDirectory {
 public:
  explicit WorkingDirectory(std::string const& directory)
      : previous(boost::filesystem::current_path()) {
    boost::filesystem::current_path(directory);
  }
  ~WorkingDirectory() {
    boost::system::error_code ignored;
    boost::filesystem::current_path(previous, ignored);
  }
  WorkingDirectory(WorkingDirectory const&) = delete;
  WorkingDirectory& operator=(WorkingDirectory const&) = delete;

 private:
  boost::filesystem::path previous;
};

}  // namespace qvtest

#endif  // TESTS_SUPPORT_WORKINGDIRECTORY_H_
