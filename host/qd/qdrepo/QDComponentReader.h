// The components of a repository file as property trees, read the way
// boost::property_tree::read_xml reads the whole file.
#ifndef HOST_QD_QDREPO_QDCOMPONENTREADER_H_
#define HOST_QD_QDREPO_QDCOMPONENTREADER_H_

#include <boost/property_tree/ptree.hpp>
#include <functional>
#include <locale>
#include <string>

namespace qd {

// The repository's cached components are made from property trees of the qd:component
// elements. read_xml would make a tree of the whole file first, and in a large database nearly
// all of it is hardware functions' arguments, which the cache never reads: for the largest
// databases that tree cost more than parsing the file with libxml2 four times over.
//
// This runs boost's own parser (the rapidxml that read_xml runs, with the same flags) over the
// file and makes trees of the components alone, each exactly the tree read_xml would hold for
// that element (read_xml_node makes it). So the file is accepted and refused as before, with
// the same exceptions and texts, and each component sees the same tree.
class QDComponentReader {
 public:
  using Visit = std::function<void(boost::property_tree::ptree const& component)>;

  // Reads `fileName` and calls `visit` for every qd:component child of the file's first
  // qd:repository element, in document order, after the whole file has been parsed. Throws
  // what read_xml(fileName, tree, 0, locale) throws (xml_parser_error: "cannot open file",
  // "read error", or the parser's message with its line), and, when the file has no
  // qd:repository element at its top, what tree.get_child("qd:repository") throws
  // (ptree_bad_path), before any call of `visit`.
  static void read(std::string const& fileName, std::locale const& locale, Visit const& visit);
};

}  // namespace qd

#endif  // HOST_QD_QDREPO_QDCOMPONENTREADER_H_
