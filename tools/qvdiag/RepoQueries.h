// The hardware repository's queries by name, for qvdiag repo --query.
#ifndef TOOLS_QVDIAG_REPOQUERIES_H_
#define TOOLS_QVDIAG_REPOQUERIES_H_

#include <string>
#include <vector>

namespace qd {
class QDSRepo;
}

namespace qvdiag {

// Calls a query of the hardware repository from its name and its arguments as typed on a
// command line: a QDSRepo method, a vocabulary conversion of QDEnumerations.h (str2X takes a
// word, X2str a value by its number), or one of the file-level readers that take the repository.
// Gives the answer as text: numbers as they print, booleans as "true" or "false", strings in double
// quotes (so that an empty answer shows), lists as their quoted strings separated by blanks, or
// "(none)" when empty.
class RepoQueries {
 public:
  struct Query {
    std::string name;
    std::vector<std::string> parameters;  // "component", "i", ... as the usage shows them
  };

  // Every query that can be asked, in the order of the repository's families.
  static std::vector<Query> const& all();

  // The answer of `name` with `arguments`. Throws UsageError for an unknown name, a wrong number
  // of arguments, an index or value that is not an integer, or a value that its vocabulary's
  // type cannot hold, naming the query and its parameters. What the query itself throws passes
  // through: std::out_of_range from an X2str asked for a value past the end of its word table.
  static std::string ask(qd::QDSRepo& repo, std::string const& name,
                         std::vector<std::string> const& arguments);

  // `expression` evaluated on the repository's document, with its type: "number 4",
  // "boolean true", "string \"x\"", or "node-set 2" and then each node's text on a line of its
  // own. Throws UsageError quoting an expression that does not evaluate.
  static std::string evaluate(qd::QDSRepo& repo, std::string const& expression);
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_REPOQUERIES_H_
