#include "tests/host/qd/qdrepo/ComponentTreeTranscript.h"

#include <boost/property_tree/ptree.hpp>
#include <boost/property_tree/xml_parser.hpp>
#include <exception>
#include <locale>
#include <sstream>
#include <typeinfo>

#include "host/qd/qdrepo/QDComponentReader.h"

namespace qvtest {
namespace {

using boost::property_tree::ptree;

// A tree as text: every key, its data and its children, indented by depth, so that two trees
// read alike exactly when they are equal.
void tell(ptree const& tree, int depth, std::ostringstream* out) {
  std::string const indent(static_cast<std::size_t>(depth) * 2, ' ');
  *out << indent << "data [" << tree.data() << "]\n";
  for (auto const& [key, child] : tree) {
    *out << indent << "key [" << key << "]\n";
    tell(child, depth + 1, out);
  }
}

void threw(std::exception const& error, std::ostringstream* out) {
  *out << "threw " << typeid(error).name() << ": " << error.what() << "\n";
}

}  // namespace

std::string ComponentTreeTranscript::byReadXml(std::string const& path) {
  std::ostringstream out;
  try {
    ptree tree;
    boost::property_tree::xml_parser::read_xml(path, tree, 0, std::locale());
    for (auto const& [key, child] : tree.get_child("qd:repository")) {
      if (key != "qd:component") continue;
      out << "component\n";
      tell(child, 1, &out);
    }
  } catch (std::exception const& error) {
    threw(error, &out);
  }
  return out.str();
}

std::string ComponentTreeTranscript::byComponentReader(std::string const& path) {
  std::ostringstream out;
  try {
    qd::QDComponentReader::read(path, std::locale(), [&out](ptree const& component) {
      out << "component\n";
      tell(component, 1, &out);
    });
  } catch (std::exception const& error) {
    threw(error, &out);
  }
  return out.str();
}

}  // namespace qvtest
