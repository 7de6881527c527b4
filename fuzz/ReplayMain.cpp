// The main of a fuzz target built without libFuzzer (any compiler): runs every file named on the
// command line, and every file in every directory named, once through the target, in name order.
// The plain and sanitizer builds run the seed corpora this way, so the targets keep compiling and
// the seeds keep passing without clang.
#include <algorithm>
#include <boost/filesystem.hpp>
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

#include "fuzz/FuzzSupport.h"

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size);

int main(int argc, char** argv) {
  LLVMFuzzerInitialize(&argc, &argv);
  std::vector<std::string> files;
  for (int i = 1; i < argc; ++i) {
    boost::filesystem::path const path(argv[i]);
    if (boost::filesystem::is_directory(path)) {
      for (auto const& entry : boost::filesystem::directory_iterator(path)) {
        if (boost::filesystem::is_regular_file(entry.path()))
          files.push_back(entry.path().string());
      }
    } else {
      files.push_back(path.string());
    }
  }
  std::sort(files.begin(), files.end());
  if (files.empty()) {
    std::cerr << "usage: " << argv[0] << " FILE_OR_DIRECTORY...: nothing to run\n";
    return 2;
  }
  for (std::string const& file : files) {
    std::string const input = qvfuzz::readFile(file);
    LLVMFuzzerTestOneInput(reinterpret_cast<std::uint8_t const*>(input.data()), input.size());
  }
  std::cout << "ran " << files.size() << " inputs\n";
  return 0;
}
