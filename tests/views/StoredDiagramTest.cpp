#include "views/StoredDiagram.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>
#include <string>

#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"

namespace qvviews {
namespace {

class StoredDiagramTest : public ::testing::Test {
 protected:
  std::string write(std::string const& name, std::string const& text) {
    std::string const path = dir.file(name);
    std::ofstream(path) << text;
    return path;
  }
  static std::string failure(std::string const& path) {
    try {
      StoredDiagram::fromFile(path);
    } catch (std::runtime_error const& error) {
      return error.what();
    }
    return "no exception";
  }

  qvtest::TempDir dir;
};

TEST_F(StoredDiagramTest, ReadsTheStoredDiagramOfTheExample) {
  std::string const path = qvtest::dataFile("golden/qvdiag_build/system_diagram.json");
  StoredDiagram const diagram = StoredDiagram::fromFile(path);
  EXPECT_EQ(diagram.root().system_diagram_metadata().qsa().name(), "qv_accel_h2_gen3x16");
  EXPECT_EQ(
      diagram.root().system_diagram_metadata().qrxbin().user_regions(0).compute_units_size(), 6);
  EXPECT_EQ(diagram.name(), path);
}

TEST_F(StoredDiagramTest, MissingFileNamesThePathAndTheReason) {
  std::string const path = dir.file("absent.json");
  EXPECT_EQ(failure(path), "cannot read '" + path + "': No such file or directory");
}

TEST_F(StoredDiagramTest, ADirectoryIsNoFile) {
  EXPECT_EQ(failure(dir.path()), "cannot read '" + dir.path() + "': Is a directory");
}

TEST_F(StoredDiagramTest, OtherJsonIsRefusedInTheLibrarysWords) {
  std::string const rtd = qvtest::exampleFile("design/vector_pipeline.rtd.json");
  EXPECT_EQ(failure(rtd).rfind(rtd + ": Deserializing failed with error: ", 0), 0u)
      << failure(rtd);
  std::string const text = write("text.json", "not json");
  EXPECT_EQ(failure(text).rfind(text + ": Deserializing failed with error: ", 0), 0u);
  std::string const badEnum =
      write("enum.json", "{\"system_diagram_metadata\": {\"qsa\": {\"device_topology\": "
                         "[{\"type\": \"MEM_FLASH\"}]}}}");
  EXPECT_EQ(failure(badEnum).rfind(badEnum + ": Deserializing failed with error: ", 0), 0u);
}

TEST_F(StoredDiagramTest, AnEmptyObjectIsAnEmptyDiagramAsTheLibraryReadsIt) {
  StoredDiagram const diagram = StoredDiagram::fromFile(write("empty.json", "{}"));
  EXPECT_FALSE(diagram.root().has_system_diagram_metadata());
}

TEST_F(StoredDiagramTest, DeepNestingIsRefusedNotOverflowed) {
  std::string const deep = write("deep.json", std::string(200000, '['));
  EXPECT_EQ(failure(deep).rfind(deep + ": Deserializing failed with error: ", 0), 0u);
}

}  // namespace
}  // namespace qvviews
