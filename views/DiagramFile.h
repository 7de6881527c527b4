// Reading a stored diagram (the JSON form of outerContainer, docs/formats.md) for the pictures.
#ifndef VIEWS_DIAGRAMFILE_H_
#define VIEWS_DIAGRAMFILE_H_

#include <string>

#include "proto/system_diagram.pb.h"

namespace qvviews {

// The one input of the pictures. The reading is as strict as the library's own reader of the
// file (unknown keys and unknown enum names are errors), so that a picture never shows a file
// that the service would refuse; it goes through the generated messages alone.
class DiagramFile {
 public:
  using Diagram = ProfileAnalyzerSystemDiagramSerializable::outerContainer;

  // Reads the file at `path`. Throws std::runtime_error naming the path and the reason:
  // "cannot read '<path>': <reason>" when the file cannot be opened or read, and
  // "'<path>' is not a stored diagram: <reason>" when its text is not one.
  static Diagram read(std::string const& path);

  // The same for a text in memory; `origin` stands for the path in the messages.
  static Diagram parse(std::string const& text, std::string const& origin);
};

}  // namespace qvviews

#endif  // VIEWS_DIAGRAMFILE_H_
