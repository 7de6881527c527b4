// The flow report as data: the seven sections of the text that the library writes
// (docs/flow-report.md), read back by their fixed layout into blocks of "Key: value" lines and
// tables, and written as JSON with numbers as numbers.
//
// The values are taken from the library's own text, not computed again from the diagram, so the
// JSON holds exactly what a person reads in the report; docs/flow-report.md says why.
//
//   FlowReportData const data = FlowReportData::fromText(reportText);
//   data.writeJson(std::cout);
#ifndef VIEWS_FLOWREPORTDATA_H_
#define VIEWS_FLOWREPORTDATA_H_

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace qvviews {

class FlowReportData {
 public:
  // A run of "Key: value" lines, or a table; `group` is the sub-heading it stands under
  // ("Compute Unit to IP"), `label` the line just above a table ("PL", "Compute Unit: vadd_1").
  struct Item {
    std::string group;
    std::string label;
    bool isTable = false;
    std::vector<std::pair<std::string, std::string>> values;  // a block's lines, in order
    std::vector<std::string> columns;                         // a table's header cells
    std::vector<std::vector<std::string>> rows;               // a table's other lines
  };

  struct Section {
    int number = 0;
    std::string title;     // without its number: "Clock Summary"
    bool written = false;  // sections 6 and 7 are left out when they have no table
    std::vector<Item> items;
  };

  // Reads a report. Throws std::runtime_error naming the line ("line 7: ...") when the text does
  // not have the report's layout.
  static FlowReportData fromText(std::string const& text);

  std::string const& version() const { return version_; }
  std::string const& copyright() const { return copyright_; }
  std::string const& created() const { return created_; }
  std::vector<Section> const& sections() const { return sections_; }

  // The JSON document of docs/flow-report.md ("The report as JSON").
  void writeJson(std::ostream& out) const;

 private:
  std::string version_;
  std::string copyright_;
  std::string created_;
  std::vector<Section> sections_;  // always seven, in order
};

}  // namespace qvviews

#endif  // VIEWS_FLOWREPORTDATA_H_
