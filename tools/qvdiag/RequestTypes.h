// The sixteen requests of the diagram service, by name: making them from JSON, wrapping them in
// a dispatch.Request, and printing messages as JSON.
#ifndef TOOLS_QVDIAG_REQUESTTYPES_H_
#define TOOLS_QVDIAG_REQUESTTYPES_H_

#include <google/protobuf/message.h>

#include <memory>
#include <string>
#include <vector>

#include "proto/dispatch.pb.h"

namespace qvdiag {

// Knows the request messages of the service "dispatch.system_diagram_server" by their short
// names ("MakeInitialSystemDiagram", "UpsertQsaClock", ...), as a person types them.
// Stateless; safe from any thread.
class RequestTypes {
 public:
  static constexpr char const* kServiceName = "dispatch.system_diagram_server";

  // The sixteen short names, in the order in which the service tests them.
  static std::vector<std::string> const& names();
  static bool isKnown(std::string const& name);

  // A new message of type `name` filled from `json`, the protobuf JSON form of that message
  // (field names as in the .proto file or in lowerCamelCase; unknown fields are refused).
  // Throws UsageError naming the type for an unknown name and for JSON that does not fit.
  static std::unique_ptr<google::protobuf::Message> fromJson(std::string const& name,
                                                             std::string const& json);

  // The requests of a JSON array whose entries are {"type": NAME, "payload": {...}}, in order;
  // a missing payload is {}. Throws UsageError naming `source` and the entry (counted from 1)
  // for anything else.
  static std::vector<std::unique_ptr<google::protobuf::Message>> listFromJson(
      std::string const& json, std::string const& source);

  // The same for the contents of the file at `path`; `source` in the texts is the path. Throws
  // UsageError naming the path when it cannot be read.
  static std::unique_ptr<google::protobuf::Message> fromJsonFile(std::string const& name,
                                                                 std::string const& path);
  static std::vector<std::unique_ptr<google::protobuf::Message>> listFromJsonFile(
      std::string const& path);

  // The version of the protocol, from the protocol definition's file option.
  static dispatch::Version serviceVersion();

  // A request of the diagram service for `sessionUuid`, with the protocol's version and
  // `payload` packed into its Any.
  static dispatch::Request request(std::string const& sessionUuid,
                                   google::protobuf::Message const& payload);

  // `message` in protobuf JSON, indented, field names as in the .proto files, enums as numbers
  // and a payload printed with its own fields. Throws std::runtime_error when a payload's type
  // is unknown to this program.
  static std::string toJson(google::protobuf::Message const& message);
};

}  // namespace qvdiag

#endif  // TOOLS_QVDIAG_REQUESTTYPES_H_
