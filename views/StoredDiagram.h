// A stored system diagram read from its JSON file into the generated schema messages: the one
// reader of diagrams for everything qvdiag shows of them (pictures, differences, the report as
// data, the build's summary). It reads exactly what the library's own reader accepts (unknown
// keys and unknown enum names are errors), so that nothing is shown of a file the service would
// refuse, and knows nothing of the library's classes.
#ifndef VIEWS_STOREDDIAGRAM_H_
#define VIEWS_STOREDDIAGRAM_H_

#include <memory>
#include <string>

#include "proto/system_diagram.pb.h"

namespace qvviews {

class StoredDiagram {
 public:
  using Root = ProfileAnalyzerSystemDiagramSerializable::outerContainer;

  // Reads the file at `path`. Throws std::runtime_error naming `path` as given and the reason:
  // "cannot read 'PATH': <system reason>" (as every input of the views), or
  // "PATH: Deserializing failed with error: <parser's reason>." (the library's own words, so
  // that a user sees the same complaint from every tool).
  static StoredDiagram fromFile(std::string const& path);

  // Reads `text`; `name` stands for the file in error texts, as `path` above.
  static StoredDiagram fromText(std::string const& text, std::string const& name);

  // The root of the tree; lives as long as this object.
  Root const& root() const { return *root_; }
  std::string const& name() const { return name_; }

 private:
  StoredDiagram(std::shared_ptr<Root> root, std::string name);

  std::shared_ptr<Root> root_;  // shared, so that copies of a big diagram stay cheap
  std::string name_;
};

}  // namespace qvviews

#endif  // VIEWS_STOREDDIAGRAM_H_
