// The IP list of a run-time data file, for naming the compute unit ends of imported connections.
#ifndef VIEWS_IPLAYOUT_H_
#define VIEWS_IPLAYOUT_H_

#include <string>
#include <vector>

namespace qvviews {

// The import numbers a compute unit by counting compute units, but gives a connection's compute
// unit end as the position of its IP in the run-time data file's "ip_layout.m_ip_data", plain IP
// blocks included (docs/import.md, "Numbering"). The two agree only while no plain IP block
// stands before a compute unit, so whoever joins them needs the file's list: this class holds
// it. Read from the file that made the diagram.
class IpLayout {
 public:
  // An empty layout: no position names a compute unit.
  IpLayout() = default;

  // The "m_name" texts of "ip_layout.m_ip_data" of the run-time data file at `path`, in file
  // order; an entry without a name holds an empty text. A file without an IP layout gives an
  // empty one. Throws std::runtime_error naming the path: "cannot read '<path>': <reason>", or
  // "'<path>' is not a run-time data file: <reason>" for text that is not JSON or whose
  // "ip_layout.m_ip_data" is not a list of objects.
  static IpLayout read(std::string const& path);
  static IpLayout parse(std::string const& text, std::string const& origin);

  explicit IpLayout(std::vector<std::string> names) : names_(std::move(names)) {}

  // The compute unit name at the position given as decimal text, as the import takes it from
  // "m_name": the part after the first colon, up to any second one. Empty when the text is not
  // a position of the list, or when the IP there is no compute unit (a name without a colon).
  std::string computeUnitAt(std::string const& position) const;

  bool empty() const { return names_.empty(); }
  std::vector<std::string> const& names() const { return names_; }

 private:
  std::vector<std::string> names_;
};

}  // namespace qvviews

#endif  // VIEWS_IPLAYOUT_H_
