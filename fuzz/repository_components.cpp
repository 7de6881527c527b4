// Fuzz target: the components of a hardware repository file, read as property trees.
//
// The bytes are the file. The repository reads its components with QDComponentReader, which
// runs Boost's XML parser and makes trees of the qd:component elements alone; the target holds
// it against what it replaces, read_xml of the whole file and the qd:component children of its
// qd:repository tree. Both must give the same trees in the same order, or throw the same
// exception with the same text; any difference aborts.
#include <boost/property_tree/xml_parser.hpp>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <sstream>
#include <string>
#include <typeinfo>

#include "fuzz/FuzzSupport.h"
#include "host/qd/qdrepo/QDComponentReader.h"

namespace {

using boost::property_tree::ptree;

void tell(ptree const& tree, std::ostringstream* out) {
  *out << "data [" << tree.data() << "] {";
  for (auto const& [key, child] : tree) {
    *out << "key [" << key << "] ";
    tell(child, out);
  }
  *out << "}";
}

std::string byReadXml(std::string const& file) {
  std::ostringstream out;
  try {
    ptree tree;
    boost::property_tree::xml_parser::read_xml(file, tree, 0, std::locale());
    for (auto const& [key, child] : tree.get_child("qd:repository")) {
      if (key != "qd:component") continue;
      out << "component ";
      tell(child, &out);
      out << "\n";
    }
  } catch (std::exception const& error) {
    out << "threw " << typeid(error).name() << ": " << error.what() << "\n";
  }
  return out.str();
}

std::string byComponentReader(std::string const& file) {
  std::ostringstream out;
  try {
    qd::QDComponentReader::read(file, std::locale(), [&out](ptree const& component) {
      out << "component ";
      tell(component, &out);
      out << "\n";
    });
  } catch (std::exception const& error) {
    out << "threw " << typeid(error).name() << ": " << error.what() << "\n";
  }
  return out.str();
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const path = qvfuzz::writeScratchFile(data, size);
  std::string const expected = byReadXml(path);
  std::string const read = byComponentReader(path);
  if (read != expected) {
    std::fprintf(stderr, "read_xml:\n%s\nthe component reader:\n%s\n", expected.c_str(),
                 read.c_str());
    std::abort();
  }
  return 0;
}
