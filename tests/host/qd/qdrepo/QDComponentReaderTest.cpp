#include "host/qd/qdrepo/QDComponentReader.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "tests/host/qd/qdrepo/ComponentTreeTranscript.h"
#include "tests/host/qd/qdrepo/RandomRepositoryFile.h"
#include "tests/support/TempDir.h"

namespace qd {
namespace {

std::string byReadXml(std::string const& file) {
  return qvtest::ComponentTreeTranscript::byReadXml(file);
}
std::string byComponentReader(std::string const& file) {
  return qvtest::ComponentTreeTranscript::byComponentReader(file);
}

class QDComponentReaderTest : public ::testing::Test {
 protected:
  std::string write(std::string const& name, std::string const& text) {
    std::string const file = dir.file(name);
    std::ofstream(file, std::ios::binary) << text;
    return file;
  }

  qvtest::TempDir dir;
};

TEST_F(QDComponentReaderTest, ReadsTheComponentsAsReadXmlDoes) {
  std::string const file = write("two.xml", R"(<?xml version="1.0"?>
<!-- before the root -->
<qd:repository xmlns:qd="urn:quarrix:qd" qd:version="1">
  <qd:component qd:name="acc" qd:type="accelerator">
    text <!-- inside --> more <![CDATA[ raw <text> ]]>
    <qd:busInterface qd:name="s_axi" qd:busTypeRef="aximm"/>
  </qd:component>
  <qd:fcnMap qd:fcnName="f"><qd:arg qd:name="a"/></qd:fcnMap>
  <qd:component/>
  <qd:componentX qd:name="not one"/>
</qd:repository>
<qd:repository><qd:component qd:name="second root"/></qd:repository>
)");
  std::string const expected = byReadXml(file);
  EXPECT_EQ(byComponentReader(file), expected);
  // The test reads what it should: two components, the second empty, none of the second root.
  EXPECT_NE(expected.find("key [qd:busInterface]"), std::string::npos);
  EXPECT_EQ(expected.find("second root"), std::string::npos);
}

TEST_F(QDComponentReaderTest, RefusesFilesAsReadXmlDoes) {
  std::vector<std::string> const files = {
      write("empty.xml", ""),
      write("no_root.xml", "<?xml version=\"1.0\"?>\n<other/>\n"),
      write("comment_only.xml", "<!-- qd:repository -->\n"),
      write("unclosed.xml", "<qd:repository>\n<qd:component qd:name=\"a\">\n"),
      write("mismatched.xml", "<qd:repository>\n\n<qd:component></qd:components>\n"),
      write("bad_attribute.xml", "<qd:repository>\n<qd:component qd:name=a/>\n</qd:repository>"),
      write("zero.xml", std::string("<qd:repository>\n<qd:compo\0nent/>\n</qd:repository>", 48)),
      dir.file("missing.xml"),
      dir.path(),
  };
  for (std::string const& file : files) {
    std::string const expected = byReadXml(file);
    EXPECT_EQ(expected.rfind("threw ", 0), 0u) << file << ": " << expected;
    EXPECT_EQ(byComponentReader(file), expected) << file;
  }
}

TEST_F(QDComponentReaderTest, RandomFilesAndEveryCutOfOneReadAlike) {
  for (unsigned seed = 1; seed <= 8; ++seed) {
    std::string const file =
        write("random" + std::to_string(seed) + ".xml", qvtest::RandomRepositoryFile(seed).text());
    ASSERT_EQ(byComponentReader(file), byReadXml(file)) << "seed " << seed;
  }
  // Cut short anywhere, a file fails at some line; both readings name the same one.
  std::string const text = qvtest::RandomRepositoryFile(11).text();
  for (std::size_t cut = 0; cut < text.size(); cut += 1 + text.size() / 97) {
    std::string const file = write("cut.xml", text.substr(0, cut));
    ASSERT_EQ(byComponentReader(file), byReadXml(file)) << "cut at " << cut;
  }
}

TEST_F(QDComponentReaderTest, TheShippedRepositoriesReadAlike) {
  for (char const* file :
       {QV_TEST_DATA_DIR "/repository/core.xml", QV_TEST_DATA_DIR "/repository/hwfcns.xml",
        QV_EXAMPLES_DIR "/repository/qd_ip_db.xml",
        QV_EXAMPLES_DIR "/design/link/sys_link/_sysl/.cdb/qd_ip_db.xml"}) {
    std::string const expected = byReadXml(file);
    EXPECT_NE(expected.find("component\n"), std::string::npos) << file;
    EXPECT_EQ(byComponentReader(file), expected) << file;
  }
}

}  // namespace
}  // namespace qd
