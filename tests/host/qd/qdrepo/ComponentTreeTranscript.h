// What reading a repository file's components gives, as text: every component's property tree
// in order, or the exception that ended the reading. The component reader and read_xml of the
// whole file must give the same; the differential test and the fuzz target
// repository_components compare them.
#ifndef TESTS_HOST_QD_QDREPO_COMPONENTTREETRANSCRIPT_H_
#define TESTS_HOST_QD_QDREPO_COMPONENTTREETRANSCRIPT_H_

#include <string>

namespace qvtest {

class ComponentTreeTranscript {
 public:
  // read_xml(path, tree, 0, std::locale()) and the qd:component children of
  // tree.get_child("qd:repository"), as QDSRepo's constructor used to read them.
  static std::string byReadXml(std::string const& path);
  // qd::QDComponentReader::read(path, std::locale(), ...).
  static std::string byComponentReader(std::string const& path);
};

}  // namespace qvtest

#endif  // TESTS_HOST_QD_QDREPO_COMPONENTTREETRANSCRIPT_H_
