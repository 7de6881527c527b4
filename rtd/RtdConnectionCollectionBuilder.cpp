#include "rtd/RtdConnectionCollectionBuilder.h"

#include <utility>

#include "rtd/RtdJsonDocument.h"
#include "rtd/RtdTextField.h"

namespace IPA {

namespace {

// In the order of the file format's table: the first match wins.
RtdTextField<RtdConnection> const connectionFields[] = {
    {&RtdConnection::argIndexId, &RtdConnection::argIndex},
    {&RtdConnection::argNameId, &RtdConnection::argName},
    {&RtdConnection::modeId, &RtdConnection::mode},
    {&RtdConnection::ipLayoutIndexId, &RtdConnection::ipLayoutIndex},
    {&RtdConnection::memDataIndexId, &RtdConnection::memDataIndex},
};

}  // namespace

template <class Tree>
std::vector<RtdConnection> readRtdConnections(Tree const& tree, std::string const& listPath) {
  std::vector<RtdConnection> connections;
  auto const& list = tree.get_child(listPath);
  connections.reserve(list.size());
  for (auto const& child : list) {
    RtdConnection entry;
    for (auto const& member : child.second) {
      // An unknown member is no error: files carry more than this library reads.
      assignRtdTextField(entry, connectionFields, member.first, member.second.data());
    }
    connections.push_back(std::move(entry));
  }
  return connections;
}

template std::vector<RtdConnection> readRtdConnections(boost::property_tree::ptree const&, std::string const&);
template std::vector<RtdConnection> readRtdConnections(RtdJsonDocument::Node const&, std::string const&);

std::shared_ptr<RtdConnectionCollection> RtdConnectionCollectionBuilder::build() {
  return std::make_shared<RtdConnectionCollection>(readRtdConnections(tree, path));
}

}  // namespace IPA
