#include "views/IpLayout.h"

#include <google/protobuf/struct.pb.h>
#include <google/protobuf/util/json_util.h>

#include <stdexcept>

#include "views/TextFile.h"

namespace qvviews {

IpLayout IpLayout::read(std::string const& path) { return parse(TextFile::read(path), path); }

IpLayout IpLayout::parse(std::string const& text, std::string const& origin) {
  auto const refuse = [&origin](std::string const& reason) {
    return std::runtime_error("'" + origin + "' is not a run-time data file: " + reason);
  };
  // The generic JSON message keeps this layer free of the import's own reader; protobuf's
  // parser refuses nesting past 100 levels by itself.
  google::protobuf::Struct root;
  auto const status = google::protobuf::util::JsonStringToMessage(text, &root);
  if (!status.ok()) throw refuse(std::string(status.message()));

  auto const layout = root.fields().find("ip_layout");
  if (layout == root.fields().end()) return IpLayout();
  if (!layout->second.has_struct_value()) throw refuse("ip_layout is not an object");
  auto const& layoutFields = layout->second.struct_value().fields();
  auto const data = layoutFields.find("m_ip_data");
  if (data == layoutFields.end()) return IpLayout();
  if (!data->second.has_list_value()) throw refuse("ip_layout.m_ip_data is not a list");

  std::vector<std::string> names;
  int position = 0;
  for (google::protobuf::Value const& entry : data->second.list_value().values()) {
    if (!entry.has_struct_value()) {
      throw refuse("ip_layout.m_ip_data[" + std::to_string(position) + "] is not an object");
    }
    auto const& fields = entry.struct_value().fields();
    auto const name = fields.find("m_name");
    names.push_back(name != fields.end() && name->second.kind_case() ==
                                                  google::protobuf::Value::kStringValue
                        ? name->second.string_value()
                        : std::string());
    ++position;
  }
  return IpLayout(std::move(names));
}

std::string IpLayout::computeUnitAt(std::string const& position) const {
  if (position.empty() || position.size() > 9) return "";
  std::size_t index = 0;
  for (char c : position) {
    if (c < '0' || c > '9') return "";
    index = index * 10 + static_cast<std::size_t>(c - '0');
  }
  if (index >= names_.size()) return "";
  std::string const& name = names_[index];
  std::size_t const colon = name.find(':');
  if (colon == std::string::npos) return "";
  std::size_t const second = name.find(':', colon + 1);
  return name.substr(colon + 1, second == std::string::npos ? std::string::npos
                                                            : second - colon - 1);
}

}  // namespace qvviews
