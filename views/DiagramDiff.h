// What changed between two stored system diagrams: the differences a person looks for after a
// run of the tool chain (a clock that closes lower, a compute unit that grew or moved, a
// connection that went elsewhere), written as text for a person or JSON for a script.
//
//   StoredDiagram const before = StoredDiagram::fromFile("old.json");
//   StoredDiagram const after = StoredDiagram::fromFile("new.json");
//   DiagramDiff const diff = DiagramDiff::compare(before, after, /*keepUnchanged=*/false);
//   if (!diff.same()) diff.writeText(std::cout, /*all=*/false);
//
// Entries are matched by their natural keys, never by their position or their stored id, so
// that a reordered or renumbered diagram compares equal: compute units and kernels by name,
// memories by tag, connections by source instance and pin and destination instance or memory
// tag, platform clocks by id, clock pins by compute unit and pin, resources by compute unit and
// design state, SLR use by compute unit and SLR, SLR totals by SLR. docs/qvdiag.md shows the
// text and docs/formats.md the JSON.
#ifndef VIEWS_DIAGRAMDIFF_H_
#define VIEWS_DIAGRAMDIFF_H_

#include <optional>
#include <ostream>
#include <string>
#include <vector>

#include "views/StoredDiagram.h"

namespace qvviews {

class DiagramDiff {
 public:
  enum class Change { kAdded, kRemoved, kChanged, kSame };
  enum class ValueKind {
    kText,       // compared and shown as stored
    kCount,      // a decimal count: shown with separators, with its change and percentage
    kMegahertz,  // a frequency: shown with two decimals, with its percentage
  };

  // One value of an entry. An absent side (an added or removed entry) has no text.
  struct Field {
    std::string name;  // as the text shows it: "base address", "LUT", "achieved"
    std::string id;    // as the JSON names it: "base_address", "lut", "achieved_mhz"
    ValueKind kind = ValueKind::kText;
    std::optional<std::string> before;
    std::optional<std::string> after;
    // For resource counts: what the count is a share of ("SLR0") and that total on each side;
    // empty / absent when the share is not known.
    std::string shareOf;
    std::optional<double> beforeTotal;
    std::optional<double> afterTotal;
  };

  struct Entry {
    Change change = Change::kSame;
    std::string key;  // as the text shows it: "vadd_1", "vadd_1.in1 → DDR[0]"
    // Added and removed entries: the values of the side that has them. Changed entries: the
    // values that differ. Unchanged entries: none.
    std::vector<Field> fields;
    double weight = 0;  // the size of the largest change, for the order within a group
  };

  struct Group {
    std::string id;              // "compute_units"
    std::string title;           // "compute units"
    std::vector<Entry> entries;  // added, removed, changed (largest first), unchanged if kept
    std::size_t unchanged = 0;   // counted whether kept or not
  };

  // Compares `before` with `after`; neither needs to outlive the result. Unchanged entries are
  // only counted unless `keepUnchanged`: a big design has hundreds of thousands of them, and
  // listing them is what --all asks for, not the usual question.
  static DiagramDiff compare(StoredDiagram const& before, StoredDiagram const& after,
                             bool keepUnchanged);

  // Whether nothing at all differs.
  bool same() const;
  // Whether the platform's name or board differs: every other difference is then suspect.
  bool platformChanged() const { return platformChanged_; }
  std::vector<Group> const& groups() const { return groups_; }

  // The text for a person, lines of at most 100 columns for keys and values of usual length.
  // Nothing at all when the diagrams are the same and `all` is false; with `all`, the unchanged
  // entries that compare() kept are listed too, and the counts of unchanged entries shown.
  void writeText(std::ostream& out, bool all) const;
  // The JSON document of docs/formats.md ("Diagram differences"); `beforeName` and
  // `afterName` are recorded in it as the two files.
  void writeJson(std::ostream& out, bool all, std::string const& beforeName,
                 std::string const& afterName) const;

 private:
  std::vector<Group> groups_;
  bool platformChanged_ = false;
  std::string platformBefore_;  // "name (board b)", for the warning line
  std::string platformAfter_;
};

}  // namespace qvviews

#endif  // VIEWS_DIAGRAMDIFF_H_
