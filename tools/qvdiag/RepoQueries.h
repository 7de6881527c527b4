// The hardware repository's queries by name, for qvdiag repo --query.
#ifndef TOOLS_QVDIAG_REPOQUERIES_H_
#define TOOLS_QVDIAG_REPOQUERIES_H_

#include <string>
#include <vector>

namespace qd {
class QDSRepo;
}

namespace qvdiag {

// Calls a QDSRepo query from its name and its arguments as typed on a command line, and gives
// the answer as text: numbers as they print, booleans as "true" or "false", strings in double
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
  // of arguments, or an index that is not an integer, naming the query and its parameters.
  static std::string ask(qd::QDSRepo& repo, std::string const& name,
                         std::vector<std::string> const& arguments);

  // `expression` evaluated on the repository's document, with its type: "number 4",
  // "boolean true", "string \"x\"", or "node-set 2" and then each node's text on a line of its
  // own. Throws UsageError quoting an expression that does not evaluate.
  static std::string evaluate(qd::QDSRepo& repo, std::string const& expression);
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_REPOQUERIES_H_
