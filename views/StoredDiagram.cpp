#include "views/StoredDiagram.h"

#include <google/protobuf/util/json_util.h>

#include <stdexcept>
#include <utility>

#include "views/TextFile.h"

namespace qvviews {

StoredDiagram::StoredDiagram(std::shared_ptr<Root> root, std::string name)
    : root_(std::move(root)), name_(std::move(name)) {}

StoredDiagram StoredDiagram::fromFile(std::string const& path) {
  return fromText(TextFile::read(path), path);
}

StoredDiagram StoredDiagram::fromText(std::string const& text, std::string const& name) {
  auto root = std::make_shared<Root>();
  // The options of the library's reader: a key the schema does not know is an error, and enum
  // names must match exactly. A looser reader here would compare files the library refuses.
  google::protobuf::util::JsonParseOptions options;
  options.ignore_unknown_fields = false;
  options.case_insensitive_enum_parsing = false;
  auto const status = google::protobuf::util::JsonStringToMessage(text, root.get(), options);
  if (!status.ok()) {
    throw std::runtime_error(
        name + ": Deserializing failed with error: " + std::string(status.message()) + ".");
  }
  return StoredDiagram(std::move(root), name);
}

}  // namespace qvviews
