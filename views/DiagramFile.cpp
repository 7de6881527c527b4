#include "views/DiagramFile.h"

#include <google/protobuf/util/json_util.h>

#include <stdexcept>

#include "views/TextFile.h"

namespace qvviews {

DiagramFile::Diagram DiagramFile::read(std::string const& path) {
  return parse(TextFile::read(path), path);
}

DiagramFile::Diagram DiagramFile::parse(std::string const& text, std::string const& origin) {
  google::protobuf::util::JsonParseOptions options;
  options.ignore_unknown_fields = false;
  options.case_insensitive_enum_parsing = false;
  Diagram diagram;
  auto const status = google::protobuf::util::JsonStringToMessage(text, &diagram, options);
  if (!status.ok()) {
    throw std::runtime_error("'" + origin +
                             "' is not a stored diagram: " + std::string(status.message()));
  }
  // "{}" and other objects without the root's one key parse as an empty message; every file the
  // library writes has the key, so a file without it is some other JSON document.
  if (!diagram.has_system_diagram_metadata()) {
    throw std::runtime_error("'" + origin +
                             "' is not a stored diagram: it has no system_diagram_metadata");
  }
  return diagram;
}

}  // namespace qvviews
