// Repository files made up from a seed, for tests that compare two ways of answering the same
// file rather than expected answers.
#ifndef TESTS_HOST_QD_QDREPO_RANDOMREPOSITORYFILE_H_
#define TESTS_HOST_QD_QDREPO_RANDOMREPOSITORYFILE_H_

#include <string>

namespace qvtest {

// The text of a repository file: a platform or two (clocks, device, memories with plain and
// ranged SP tags and per-segment tags, NoC connectivity, resource estimates), components of
// every type with every kind of bus interface, adapters, and hardware functions with arguments
// (packed groups, pointers over AXI masters), control and length registers, return values,
// interrupts, derived clocks, estimates, OpenCL pipes and connections. Every element and
// attribute the repository reads appears, each attribute left out now and then; names are drawn
// from small pools, so they repeat across elements and within a kind, and some hold quotes
// (written as XML entities). The same seed gives the same text.
class RandomRepositoryFile {
 public:
  explicit RandomRepositoryFile(unsigned seed);

  std::string const& text() const { return text_; }

 private:
  std::string text_;
};

}  // namespace qvtest

#endif  // TESTS_HOST_QD_QDREPO_RANDOMREPOSITORYFILE_H_
