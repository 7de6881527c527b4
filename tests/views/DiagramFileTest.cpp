#include "views/DiagramFile.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"

namespace qvviews {
namespace {

class DiagramFileTest : public ::testing::Test {
 protected:
  std::string write(std::string const& name, std::string const& text) {
    std::string const path = dir.file(name);
    std::ofstream(path) << text;
    return path;
  }
  static std::string failure(std::string const& path) {
    try {
      DiagramFile::read(path);
    } catch (std::runtime_error const& error) {
      return error.what();
    }
    return "no exception";
  }

  qvtest::TempDir dir;
};

TEST_F(DiagramFileTest, ReadsTheStoredDiagramOfTheExample) {
  DiagramFile::Diagram const diagram =
      DiagramFile::read(qvtest::dataFile("golden/qvdiag_build/system_diagram.json"));
  EXPECT_EQ(diagram.system_diagram_metadata().qsa().name(), "qv_accel_h2_gen3x16");
  EXPECT_EQ(diagram.system_diagram_metadata().qrxbin().user_regions(0).compute_units_size(), 6);
}

TEST_F(DiagramFileTest, MissingFileNamesThePathAndTheReason) {
  std::string const path = dir.file("absent.json");
  EXPECT_EQ(failure(path), "cannot read '" + path + "': No such file or directory");
}

TEST_F(DiagramFileTest, ADirectoryIsNoFile) {
  EXPECT_EQ(failure(dir.path()), "cannot read '" + dir.path() + "': Is a directory");
}

TEST_F(DiagramFileTest, OtherJsonIsNotAStoredDiagram) {
  std::string const rtd = qvtest::exampleFile("design/vector_pipeline.rtd.json");
  EXPECT_EQ(failure(rtd).rfind("'" + rtd + "' is not a stored diagram: ", 0), 0u) << failure(rtd);
  std::string const empty = write("empty.json", "{}");
  EXPECT_EQ(failure(empty),
            "'" + empty + "' is not a stored diagram: it has no system_diagram_metadata");
  std::string const text = write("text.json", "not json");
  EXPECT_EQ(failure(text).rfind("'" + text + "' is not a stored diagram: ", 0), 0u);
  std::string const badEnum =
      write("enum.json", "{\"system_diagram_metadata\": {\"qsa\": {\"device_topology\": "
                         "[{\"type\": \"MEM_FLASH\"}]}}}");
  EXPECT_EQ(failure(badEnum).rfind("'" + badEnum + "' is not a stored diagram: ", 0), 0u);
}

TEST_F(DiagramFileTest, DeepNestingIsRefusedNotOverflowed) {
  std::string const deep = write("deep.json", std::string(200000, '['));
  EXPECT_EQ(failure(deep).rfind("'" + deep + "' is not a stored diagram: ", 0), 0u);
}

}  // namespace
}  // namespace qvviews
