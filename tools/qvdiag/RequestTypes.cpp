#include "tools/qvdiag/RequestTypes.h"

#include <google/protobuf/descriptor.h>
#include <google/protobuf/struct.pb.h>
#include <google/protobuf/util/json_util.h>

#include <algorithm>
#include <fstream>
#include <sstream>

#include "proto/system_diagram_server.pb.h"
#include "tools/qvdiag/UsageError.h"

namespace qvdiag {
namespace {

namespace wire = dispatch::system_diagram_server;

std::string joined(std::vector<std::string> const& words) {
  std::string text;
  for (std::string const& word : words) {
    if (!text.empty()) text += ", ";
    text += word;
  }
  return text;
}

std::string readText(std::string const& path, char const* what) {
  std::ifstream in(path);
  if (!in) throw UsageError(std::string("cannot read the ") + what + " '" + path + "'");
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

}  // namespace

std::vector<std::string> const& RequestTypes::names() {
  static std::vector<std::string> const kNames = {
      "UtilizationDuringBrenloRun",
      "AfterRunningBrenlo",
      "MakeInitialSystemDiagram",
      "ReadSystemDiagram",
      "WriteSystemDiagram",
      "UpsertKernelUse",
      "UpsertKernel",
      "UpsertQrxBin",
      "UpsertQrxBinGeneratedBy",
      "UpsertQsaClock",
      "GetQrxBinGeneratedBy",
      "UpdateSystemDiagramAfterBrenloRuns",
      "UpdateComputeUnit",
      "UpsertConnectivity",
      "WriteFlowReport",
      "UpsertPlatform",
  };
  return kNames;
}

bool RequestTypes::isKnown(std::string const& name) {
  auto const& all = names();
  return std::find(all.begin(), all.end(), name) != all.end();
}

std::unique_ptr<google::protobuf::Message> RequestTypes::fromJson(std::string const& name,
                                                                  std::string const& json) {
  if (!isKnown(name)) {
    throw UsageError("unknown request type '" + name +
                     "'; the request types are: " + joined(names()));
  }
  // Every request message is generated into this program, so the generated pool has them all.
  std::string const fullName = std::string(kServiceName) + "." + name;
  google::protobuf::Descriptor const* descriptor =
      google::protobuf::DescriptorPool::generated_pool()->FindMessageTypeByName(fullName);
  google::protobuf::Message const* prototype =
      descriptor == nullptr
          ? nullptr
          : google::protobuf::MessageFactory::generated_factory()->GetPrototype(descriptor);
  if (prototype == nullptr) {
    throw std::logic_error("request type '" + fullName + "' is not compiled into qvdiag");
  }
  std::unique_ptr<google::protobuf::Message> message(prototype->New());
  google::protobuf::util::JsonParseOptions options;
  options.ignore_unknown_fields = false;
  auto const status = google::protobuf::util::JsonStringToMessage(json, message.get(), options);
  if (!status.ok()) {
    throw UsageError("the payload is not a valid " + name +
                     " in JSON: " + std::string(status.message()));
  }
  return message;
}

std::vector<std::unique_ptr<google::protobuf::Message>> RequestTypes::listFromJson(
    std::string const& json, std::string const& source) {
  google::protobuf::Value document;
  auto const status = google::protobuf::util::JsonStringToMessage(json, &document);
  if (!status.ok()) {
    throw UsageError(source + ": not JSON: " + std::string(status.message()));
  }
  if (!document.has_list_value()) {
    throw UsageError(source + ": expected an array of {\"type\": ..., \"payload\": {...}}");
  }
  std::vector<std::unique_ptr<google::protobuf::Message>> requests;
  int entry = 0;
  for (google::protobuf::Value const& value : document.list_value().values()) {
    std::string const where = source + ": entry " + std::to_string(++entry);
    auto const& fields = value.struct_value().fields();
    auto const type = fields.find("type");
    if (!value.has_struct_value() || type == fields.end() || !type->second.has_string_value()) {
      throw UsageError(where + ": expected {\"type\": NAME, \"payload\": {...}}");
    }
    std::string payload = "{}";
    auto const given = fields.find("payload");
    if (given != fields.end()) {
      payload.clear();  // the printer appends
      google::protobuf::util::MessageToJsonString(given->second, &payload);
    }
    try {
      requests.push_back(fromJson(type->second.string_value(), payload));
    } catch (UsageError const& error) {
      throw UsageError(where + ": " + error.what());
    }
  }
  return requests;
}

std::unique_ptr<google::protobuf::Message> RequestTypes::fromJsonFile(std::string const& name,
                                                                      std::string const& path) {
  return fromJson(name, readText(path, "payload file"));
}

std::vector<std::unique_ptr<google::protobuf::Message>> RequestTypes::listFromJsonFile(
    std::string const& path) {
  return listFromJson(readText(path, "request file"), path);
}

dispatch::Version RequestTypes::serviceVersion() {
  std::string const text =
      wire::Version::descriptor()->file()->options().GetExtension(wire::file_version);
  dispatch::Version version;
  unsigned parts[3] = {0, 0, 0};
  std::size_t start = 0;
  for (unsigned& part : parts) {
    if (start > text.size()) break;
    std::size_t const dot = std::min(text.find('.', start), text.size());
    part = static_cast<unsigned>(std::stoul(text.substr(start, dot - start)));
    start = dot + 1;
  }
  version.set_major(parts[0]);
  version.set_minor(parts[1]);
  version.set_patch(parts[2]);
  return version;
}

dispatch::Request RequestTypes::request(std::string const& sessionUuid,
                                        google::protobuf::Message const& payload) {
  dispatch::Request made;
  made.set_service(kServiceName);
  made.set_session_uuid(sessionUuid);
  *made.mutable_version() = serviceVersion();
  made.mutable_payload()->PackFrom(payload);
  return made;
}

std::string RequestTypes::toJson(google::protobuf::Message const& message) {
  google::protobuf::util::JsonPrintOptions options;
  options.add_whitespace = true;
  options.preserve_proto_field_names = true;
  options.always_print_enums_as_ints = true;
  std::string json;
  auto const status = google::protobuf::util::MessageToJsonString(message, &json, options);
  if (!status.ok()) {
    throw std::runtime_error("cannot print a " + message.GetTypeName() +
                             " as JSON: " + std::string(status.message()));
  }
  return json;
}

}  // namespace qvdiag
