// The stored diagrams the views' tests draw and compare: the example's, as qvdiag build writes
// it (reviewed golden file), and a fresh session's, which has nothing in it.
#ifndef TESTS_SUPPORT_STOREDDIAGRAMS_H_
#define TESTS_SUPPORT_STOREDDIAGRAMS_H_

#include "tests/support/Golden.h"
#include "views/StoredDiagram.h"

namespace qvviews {

inline StoredDiagram::Root exampleDiagram() {
  return StoredDiagram::fromFile(qvtest::dataFile("golden/qvdiag_build/system_diagram.json"))
      .root();
}

inline StoredDiagram::Root freshDiagram() {
  return StoredDiagram::fromFile(qvtest::dataFile("golden/fresh_session.json")).root();
}

}  // namespace qvviews

#endif  // TESTS_SUPPORT_STOREDDIAGRAMS_H_
