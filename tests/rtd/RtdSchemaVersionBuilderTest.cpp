#include "rtd/RtdSchemaVersionBuilder.h"

#include <memory>
#include <string>
#include <vector>

#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/ptree.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "diagram/RtdSchemaVersion.h"
#include "diagram/TextConversions.h"

namespace {

using ::testing::HasSubstr;

class RtdSchemaVersionBuilderTest : public ::testing::Test {
 protected:
  static std::shared_ptr<IPA::RtdSchemaVersion> buildFrom(std::string const& json) {
    boost::property_tree::ptree const tree = IPA::makePropertyTree(json);
    return IPA::RtdSchemaVersionBuilder(tree).build();
  }

  // The path that a failed build names; "" if it did not fail as expected.
  static std::string missingPathOf(std::string const& json) {
    try {
      buildFrom(json);
    } catch (boost::property_tree::ptree_bad_path const& e) {
      return e.path<boost::property_tree::ptree::path_type>().dump();
    }
    return "";
  }
};

TEST_F(RtdSchemaVersionBuilderTest, ReadsTheThreeKeys) {
  auto version = buildFrom(R"({"schema_version": {"major": "3", "minor": "4", "patch": "5"}})");

  ASSERT_NE(version, nullptr);
  EXPECT_EQ(version->getMajor(), "3");
  EXPECT_EQ(version->getMinor(), "4");
  EXPECT_EQ(version->getPatch(), "5");
}

TEST_F(RtdSchemaVersionBuilderTest, KeyOrderInTheFileDoesNotMatter) {
  auto version = buildFrom(R"({"schema_version": {"patch": "5", "major": "3", "minor": "4"}})");

  EXPECT_EQ(version->getMajor(), "3");
  EXPECT_EQ(version->getMinor(), "4");
  EXPECT_EQ(version->getPatch(), "5");
}

TEST_F(RtdSchemaVersionBuilderTest, BuildsAVersionThatSupportsOneZeroZero) {
  auto version = buildFrom(R"({"schema_version": {"major": "1", "minor": "0", "patch": "0"}})");

  EXPECT_EQ(version->supportedVersion(), "1.0.0");
  EXPECT_TRUE(version->isSupported(*version));
}

TEST_F(RtdSchemaVersionBuilderTest, TakesAnyTextWithoutCheckingIt) {
  // Whether the version is read is decided later, when the tree is visited; the builder refuses
  // nothing.
  auto version = buildFrom(R"({"schema_version": {"major": "0", "minor": "x", "patch": ""}})");

  EXPECT_EQ(version->getMajor(), "0");
  EXPECT_EQ(version->getMinor(), "x");
  EXPECT_EQ(version->getPatch(), "");
  EXPECT_FALSE(version->isSupported(*version));
}

TEST_F(RtdSchemaVersionBuilderTest, NumbersInTheJsonAreReadAsTheirText) {
  auto version = buildFrom(R"({"schema_version": {"major": 1, "minor": 0, "patch": 0}})");

  EXPECT_EQ(version->getMajor(), "1");
  EXPECT_EQ(version->getMinor(), "0");
  EXPECT_EQ(version->getPatch(), "0");
  EXPECT_TRUE(version->isSupported(*version));
}

TEST_F(RtdSchemaVersionBuilderTest, ANumberKeepsItsDigitsAsWritten) {
  auto version = buildFrom(R"({"schema_version": {"major": 10, "minor": 0, "patch": 0}})");

  EXPECT_EQ(version->getMajor(), "10");
  EXPECT_TRUE(version->isSupported(*version));
}

TEST_F(RtdSchemaVersionBuilderTest, ExtraMembersAreIgnored) {
  auto version = buildFrom(
      R"({"schema_version": {"major": "1", "minor": "0", "patch": "0", "build": "77"},
          "mem_topology": {"m_count": "0"}})");

  EXPECT_EQ(version->getMajor(), "1");
  EXPECT_EQ(version->getMinor(), "0");
  EXPECT_EQ(version->getPatch(), "0");
}

TEST_F(RtdSchemaVersionBuilderTest, MissingKeysNameThePathReadFirst) {
  // The patch level is read first, then the minor, then the major version: a file that misses
  // several keys names the first of them in that order.
  struct Row {
    char const* desc;
    char const* json;
    char const* path;
  };
  Row const rows[] = {
      {"no schema_version at all", R"({"other": "1"})", "schema_version.patch"},
      {"an empty object", R"({})", "schema_version.patch"},
      {"all three members missing", R"({"schema_version": {}})", "schema_version.patch"},
      {"only the patch level missing", R"({"schema_version": {"major": "1", "minor": "0"}})",
       "schema_version.patch"},
      {"only the minor missing", R"({"schema_version": {"major": "1", "patch": "0"}})",
       "schema_version.minor"},
      {"only the major missing", R"({"schema_version": {"minor": "0", "patch": "0"}})",
       "schema_version.major"},
      {"minor and major missing: minor first", R"({"schema_version": {"patch": "0"}})",
       "schema_version.minor"},
      {"patch and major missing: patch first", R"({"schema_version": {"minor": "0"}})",
       "schema_version.patch"},
      {"keys cased otherwise do not count", R"({"schema_version": {"Major": "1", "minor": "0",
         "patch": "0"}})",
       "schema_version.major"},
  };
  for (auto const& row : rows) {
    SCOPED_TRACE(row.desc);
    EXPECT_EQ(missingPathOf(row.json), row.path);
  }
}

TEST_F(RtdSchemaVersionBuilderTest, AMissingKeyThrowsPtreeBadPathNamingItInItsText) {
  boost::property_tree::ptree const tree = IPA::makePropertyTree(R"({"schema_version": {}})");
  IPA::RtdSchemaVersionBuilder builder(tree);

  try {
    builder.build();
    FAIL() << "build() returned for a file without a version";
  } catch (boost::property_tree::ptree_bad_path const& e) {
    EXPECT_THAT(e.what(), HasSubstr("schema_version.patch"));
  }
}

TEST_F(RtdSchemaVersionBuilderTest, AMissingMajorThrowsPtreeBadPath) {
  boost::property_tree::ptree const tree =
      IPA::makePropertyTree(R"({"schema_version": {"minor": "0", "patch": "0"}})");

  EXPECT_THROW(IPA::RtdSchemaVersionBuilder(tree).build(), boost::property_tree::ptree_bad_path);
}

}  // namespace
