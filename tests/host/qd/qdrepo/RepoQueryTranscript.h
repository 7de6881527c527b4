// Everything a repository says when it is opened and asked every query: the answers, the Log
// lines in between, and how the process ended. Two transcripts of one file, with the name index
// of QDXPathDoc on and off, must be equal text; the differential test and the fuzz target
// repository_queries compare them.
#ifndef TESTS_HOST_QD_QDREPO_REPOQUERYTRANSCRIPT_H_
#define TESTS_HOST_QD_QDREPO_REPOQUERYTRANSCRIPT_H_

#include <cstddef>
#include <string>
#include <vector>

namespace qvtest {

class RepoQueryTranscript {
 public:
  struct Question {
    std::string query;  // a name of qvdiag repo --list-queries
    std::vector<std::string> arguments;
  };

  // Every query of RepoQueries::all(), `forms` times, with arguments drawn (from `seed`) from
  // the attribute values of the file at `path` that suit each parameter (component names for
  // "component", SP tags and ranges over them for "tag", ...) and from texts no file is expected
  // to hold: "", an unknown name, names with quotes that break the expression they are spliced
  // into. `leaveOutAborting` leaves out isQdCompSCAdapter, whose assertions abort the process on
  // a broken adapter, for a caller that cannot survive that. A file libxml2 cannot read gives
  // the outside texts alone.
  static std::vector<Question> questions(std::string const& path, unsigned seed, int forms,
                                         bool leaveOutAborting);

  // Opens `path` with createRepo and asks each question in a child process with its standard
  // output and error captured, and the Log level at INTERNAL so that every
  // line shows. When a child ends before the last question (a disagreement of the two readings
  // of the file ends it by design, an assertion aborts it), the next child opens the file with
  // the constructor and goes on with the question after the one that ended it. The transcript
  // holds each question, its lines and its answer (or the exception it threw), and a line with
  // the way each child ended.
  static std::string forked(std::string const& path, std::vector<Question> const& questions,
                            bool nameIndex);

  // The same in this process, for a build in which a disagreement of the two readings throws
  // (QV_REPOSITORY_DISAGREEMENT_THROWS): no question may end the process. Standard input, output
  // and error are redirected while it runs and the Log level and the index setting are restored
  // afterwards.
  static std::string inProcess(std::string const& path, std::vector<Question> const& questions,
                               bool nameIndex);

  // The first line where two transcripts differ, with its number, or "" when they are equal.
  static std::string firstDifference(std::string const& expected, std::string const& actual);
};

}  // namespace qvtest

#endif  // TESTS_HOST_QD_QDREPO_REPOQUERYTRANSCRIPT_H_
