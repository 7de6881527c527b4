// Fuzz target: the hardware repository file, answered with QDXPathDoc's name index and without
// it, which must say exactly the same.
//
// The bytes are the file. It is opened with createRepo and asked every query of qvdiag repo
// --list-queries with arguments drawn from the file's own attribute values and from names no
// file should hold (tests/host/qd/qdrepo/RepoQueryTranscript.h), once with the index switched
// off and once with it on; the two transcripts (answers, exceptions and every Log line, at every
// level) must be equal, else the target aborts with the first line where they differ.
//
// In the fuzz build a disagreement of the repository's two readings throws (see
// repository_file.cpp), so both runs stay in this process and the fuzzer sees their coverage.
// isQdCompSCAdapter, whose assertions abort on a broken adapter by design, is left out there.
// The replay of the seeds in the ordinary build, where a disagreement ends the process, runs
// each transcript in child processes instead and asks isQdCompSCAdapter too.
#include <stdlib.h>
#include <unistd.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <vector>

#include "fuzz/FuzzSupport.h"
#include "tests/host/qd/qdrepo/RepoQueryTranscript.h"

namespace {

using qvtest::RepoQueryTranscript;

// Two argument lists per query reach every kind of entry of a small file and keep an input of
// the example's size to a fraction of a second under the sanitizers.
constexpr int kForms = 2;

#ifdef QV_REPOSITORY_DISAGREEMENT_THROWS
constexpr bool kInProcess = true;
#else
constexpr bool kInProcess = false;
#endif

// A file of its own for the input, removed when the process ends; each call replaces it.
std::string ownFile(std::uint8_t const* data, std::size_t size) {
  static std::string const path = [] {
    std::string directory =
        (std::filesystem::temp_directory_path() / "qv-repository-queries-XXXXXX").string();
    if (mkdtemp(directory.data()) == nullptr) throw std::runtime_error("cannot make " + directory);
    static std::string const kept = directory;
    static pid_t const owner = getpid();
    // Children exit through here too, and must leave the file to the next child.
    std::atexit([] {
      if (getpid() != owner) return;
      std::error_code ignored;
      std::filesystem::remove_all(kept, ignored);
    });
    return directory + "/input.xml";
  }();
  std::ofstream out(path, std::ios::binary | std::ios::trunc);
  out.write(reinterpret_cast<char const*>(data), static_cast<std::streamsize>(size));
  out.close();
  if (!out) throw std::runtime_error("cannot write " + path);
  return path;
}

std::string transcript(std::string const& path,
                       std::vector<RepoQueryTranscript::Question> const& questions,
                       bool nameIndex) {
  if (kInProcess) return RepoQueryTranscript::inProcess(path, questions, nameIndex);
  return RepoQueryTranscript::forked(path, questions, nameIndex);
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  // In the replay a child that ends by exit() runs the process's exit handlers, which remove
  // the shared scratch directory (FuzzSupport); the file lives in a directory of its own there.
  std::string const path = kInProcess ? qvfuzz::writeScratchFile(data, size) : ownFile(data, size);
  // The questions depend on the file alone, so that an input replays the same way.
  std::vector<RepoQueryTranscript::Question> const questions =
      RepoQueryTranscript::questions(path, static_cast<unsigned>(size), kForms, kInProcess);
  std::string const plain = transcript(path, questions, false);
  std::string const indexed = transcript(path, questions, true);
  std::string const difference = RepoQueryTranscript::firstDifference(plain, indexed);
  if (!difference.empty()) {
    std::fprintf(stderr, "the name index changed what the repository says, at %s\n",
                 difference.c_str());
    std::abort();
  }
  return 0;
}
