// Fills one end of a connection.
#ifndef DIAGRAM_CONNECTIVITYNODEBUILDER_H_
#define DIAGRAM_CONNECTIVITYNODEBUILDER_H_

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "diagram/ConnectivityBuilder.h"
#include "proto/system_diagram.pb.h"

namespace IPA {

// Fills one `Node`. Making it creates that end (`source` or `destination`) if absent; the entry
// belongs to the parent message, and the shared parent builder keeps the tree alive for as long as
// this builder lives.
class ConnectivityNodeBuilder {
 public:
  enum class End { kSource, kDestination };

  ConnectivityNodeBuilder(std::shared_ptr<ConnectivityBuilder> parentBuilder, End end)
      : parent(std::move(parentBuilder)),
        entry(end == End::kSource ? parent->message()->mutable_source()
                                  : parent->message()->mutable_destination()) {}

  ProfileAnalyzerSystemDiagramSerializable::Node* message() const { return entry; }
  std::shared_ptr<ConnectivityBuilder> const& getParent() const { return parent; }

  void setType(std::string const& value) { entry->set_type(value); }
  void setId(std::string const& value) { entry->set_id(value); }
  void setArgIndex(std::string const& value) { entry->set_arg_index(value); }
  void setArgName(std::string const& value) { entry->set_arg_name(value); }
  void setMode(std::string const& value) { entry->set_mode(value); }
  void setInstance(std::string const& value) { entry->set_instance(value); }
  void setPin(std::string const& value) { entry->set_pin(value); }

 private:
  std::shared_ptr<ConnectivityBuilder> parent;
  ProfileAnalyzerSystemDiagramSerializable::Node* entry;
};

}  // namespace IPA

#endif  // DIAGRAM_CONNECTIVITYNODEBUILDER_H_
