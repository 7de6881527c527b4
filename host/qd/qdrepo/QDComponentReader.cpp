#include "host/qd/qdrepo/QDComponentReader.h"

#include <algorithm>
#include <boost/property_tree/detail/rapidxml.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <fstream>
#include <iterator>
#include <vector>

namespace qd {

void QDComponentReader::read(std::string const& fileName, std::locale const& locale,
                             Visit const& visit) {
  namespace xml = boost::property_tree::xml_parser;
  namespace rapidxml = boost::property_tree::detail::rapidxml;
  using boost::property_tree::ptree;

  // From here to the parse, read_xml's steps one for one, so that a file that cannot be opened
  // or read fails the same way.
  std::ifstream stream(fileName.c_str());
  if (!stream) BOOST_PROPERTY_TREE_THROW(xml::xml_parser_error("cannot open file", fileName, 0));
  stream.imbue(locale);
  stream.unsetf(std::ios::skipws);
  std::vector<char> text(std::istreambuf_iterator<char>(stream.rdbuf()),
                         std::istreambuf_iterator<char>());
  if (!stream.good()) BOOST_PROPERTY_TREE_THROW(xml::xml_parser_error("read error", fileName, 0));
  text.push_back(0);

  rapidxml::xml_document<char> document;
  try {
    // read_xml's flags for 0: comments kept, whitespace as it is.
    document.parse<rapidxml::parse_comment_nodes>(&text.front());
  } catch (rapidxml::parse_error& error) {
    long const line = static_cast<long>(std::count(&text.front(), error.where<char>(), '\n') + 1);
    BOOST_PROPERTY_TREE_THROW(xml::xml_parser_error(error.what(), fileName, line));
  }

  // Keys are the names up to their first zero, as read_xml makes them.
  auto const key = [](rapidxml::xml_node<char> const* node) { return std::string(node->name()); };
  rapidxml::xml_node<char>* repository = nullptr;
  for (rapidxml::xml_node<char>* node = document.first_node(); node != nullptr;
       node = node->next_sibling()) {
    if (node->type() == rapidxml::node_element && key(node) == "qd:repository") {
      repository = node;
      break;
    }
  }
  // The exception get_child gives when the tree has no such child.
  if (repository == nullptr) ptree().get_child("qd:repository");

  for (rapidxml::xml_node<char>* node = repository->first_node(); node != nullptr;
       node = node->next_sibling()) {
    if (node->type() != rapidxml::node_element || key(node) != "qd:component") continue;
    ptree holder;
    xml::read_xml_node(node, holder, 0);
    visit(holder.front().second);
  }
}

}  // namespace qd
