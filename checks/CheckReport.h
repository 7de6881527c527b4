// The findings of one run of the strict readers, and the two forms they are shown in.
#ifndef CHECKS_CHECKREPORT_H_
#define CHECKS_CHECKREPORT_H_

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

#include "checks/Finding.h"

namespace qvcheck {

// Collects findings in the order the readers report them, which is file order within a file
// and the order of the inputs on the command line across files.
//
// The text form is a compiler's:
//
//   vector_pipeline.rtd.json:12:5: warning: ip_layout.m_ip_data[3]: m_tpye is not a key of an
//       IP entry (did you mean m_type?); the import skips it [QV-RTD-UNKNOWN-KEY]
//   check: 0 errors, 1 warning, 0 notes in 2 files
//
// (one line per finding; wrapped here). The JSON form is documented in docs/check.md.
class CheckReport {
 public:
  void add(Finding finding);
  // Records that `file` was read, for the summary's count of files.
  void addFile(std::string const& file);

  std::vector<Finding> const& findings() const { return findings_; }
  std::size_t count(Severity severity) const;
  std::size_t fileCount() const { return files_.size(); }

  // One line per finding, then the summary line.
  void writeText(std::ostream& out) const;
  // One JSON document: the findings and the counts.
  void writeJson(std::ostream& out) const;

  // 0 without errors (and, when `strict`, without warnings), else 1.
  int exitCode(bool strict) const;

  // The one line of a finding, without a line break.
  static std::string line(Finding const& finding);

 private:
  std::vector<Finding> findings_;
  std::vector<std::string> files_;
};

}  // namespace qvcheck

#endif  // CHECKS_CHECKREPORT_H_
