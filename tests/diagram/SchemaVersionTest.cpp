#include "diagram/SchemaVersion.h"

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "diagram/ActualResourcesSchema.h"
#include "diagram/RtdSchemaVersion.h"

namespace {

class SchemaVersionTest : public ::testing::Test {
 protected:
  // A version found in a file, and whether the library reads such a file. Both readers of a
  // versioned document pass the object itself, so each row is checked as `v.isSupported(v)`.
  struct FoundRow {
    char const* desc;
    char const* major;
    char const* minor;
    char const* patch;
    bool accepted;
  };

  static std::vector<FoundRow> const& foundVersions() {
    static std::vector<FoundRow> const rows = {
        {"1.0.0 is the version this library reads", "1", "0", "0", true},
        {"2.0.0: a greater major version is accepted", "2", "0", "0", true},
        {"9.0.0: a greater major version is accepted", "9", "0", "0", true},
        {"10.0.0: \"10\" sorts above \"1\" as text", "10", "0", "0", true},
        {"1.0.1: the patch level must be equal", "1", "0", "1", false},
        {"1.1.0: minor versions are not ordered, only equal passes", "1", "1", "0", false},
        {"2.1.0: a greater major version does not excuse another minor", "2", "1", "0", false},
        {"2.0.1: a greater major version does not excuse another patch", "2", "0", "1", false},
        {"0.0.0: a smaller major version is refused", "0", "0", "0", false},
        {"01.0.0: \"01\" sorts below \"1\" as text", "01", "0", "0", false},
        {"1.0 with an empty patch: empty is not \"0\"", "1", "0", "", false},
        {"1 with an empty minor: empty is not \"0\"", "1", "", "0", false},
        {"an empty major sorts below \"1\"", "", "0", "0", false},
        {"1.00.0: the minor is compared as text, \"00\" is not \"0\"", "1", "00", "0", false},
        {"1.0.00: the patch is compared as text, \"00\" is not \"0\"", "1", "0", "00", false},
        {"a leading blank on the major sorts below \"1\"", " 1", "0", "0", false},
        {"a trailing blank on the minor is not \"0\"", "1", "0 ", "0", false},
    };
    return rows;
  }
};

TEST_F(SchemaVersionTest, RtdSchemaVersionAcceptsAndRefusesTheFoundVersions) {
  for (auto const& row : foundVersions()) {
    SCOPED_TRACE(row.desc);
    IPA::RtdSchemaVersion version(row.major, row.minor, row.patch);

    EXPECT_EQ(version.isSupported(version), row.accepted);
  }
}

TEST_F(SchemaVersionTest, ActualResourcesSchemaAcceptsAndRefusesTheFoundVersions) {
  for (auto const& row : foundVersions()) {
    SCOPED_TRACE(row.desc);
    IPA::ActualResourcesSchema version(row.major, row.minor, row.patch);

    EXPECT_EQ(version.isSupported(version), row.accepted);
  }
}

TEST_F(SchemaVersionTest, RtdSchemaVersionSupportsOneZeroZero) {
  IPA::RtdSchemaVersion version("7", "8", "9");

  EXPECT_EQ(version.supportedVersion(), "1.0.0");
}

TEST_F(SchemaVersionTest, ActualResourcesSchemaSupportsOneZeroZero) {
  IPA::ActualResourcesSchema version("7", "8", "9");

  EXPECT_EQ(version.supportedVersion(), "1.0.0");
}

TEST_F(SchemaVersionTest, SupportedVersionJoinsTheSupportedTextsWithDots) {
  IPA::SchemaVersion version("1", "0", "0", "3", "14", "159");

  EXPECT_EQ(version.supportedVersion(), "3.14.159");
}

TEST_F(SchemaVersionTest, SupportedVersionKeepsEmptyTexts) {
  IPA::SchemaVersion version("1", "0", "0", "", "", "");

  EXPECT_EQ(version.supportedVersion(), "..");
}

TEST_F(SchemaVersionTest, SupportedVersionIsReachedThroughTheBase) {
  std::unique_ptr<IPA::SchemaVersion> rtd = std::make_unique<IPA::RtdSchemaVersion>("2", "0", "0");
  std::unique_ptr<IPA::SchemaVersion> actual =
      std::make_unique<IPA::ActualResourcesSchema>("0", "0", "0");

  EXPECT_EQ(rtd->supportedVersion(), "1.0.0");
  EXPECT_EQ(actual->supportedVersion(), "1.0.0");
  EXPECT_TRUE(rtd->isSupported(*rtd));
  EXPECT_FALSE(actual->isSupported(*actual));
}

TEST_F(SchemaVersionTest, AccessorsReturnTheFoundTexts) {
  IPA::RtdSchemaVersion version("10", "3", "patch-a");

  EXPECT_EQ(version.getMajor(), "10");
  EXPECT_EQ(version.getMinor(), "3");
  EXPECT_EQ(version.getPatch(), "patch-a");
}

TEST_F(SchemaVersionTest, AccessorsReturnTheFoundTextsNotTheSupportedOnes) {
  IPA::SchemaVersion version("4", "5", "6", "1", "0", "0");

  EXPECT_EQ(version.getMajor(), "4");
  EXPECT_EQ(version.getMinor(), "5");
  EXPECT_EQ(version.getPatch(), "6");
}

TEST_F(SchemaVersionTest, AccessorsOfActualResourcesSchemaReturnTheFoundTexts) {
  IPA::ActualResourcesSchema version("", " 0", "0\n");

  EXPECT_EQ(version.getMajor(), "");
  EXPECT_EQ(version.getMinor(), " 0");
  EXPECT_EQ(version.getPatch(), "0\n");
}

TEST_F(SchemaVersionTest, ComparesTheFoundVersionOfThePassedObject) {
  // `judge` found 9.9.9 itself but supports 2.1.0; `file` found 2.1.0 but supports 7.7.7.
  IPA::SchemaVersion judge("9", "9", "9", "2", "1", "0");
  IPA::SchemaVersion file("2", "1", "0", "7", "7", "7");

  EXPECT_TRUE(judge.isSupported(file));
  // The other way round the found version of `judge` is measured against what `file` supports.
  EXPECT_FALSE(file.isSupported(judge));
  // And neither passes against itself: their own found and supported texts do not fit.
  EXPECT_FALSE(judge.isSupported(judge));
  EXPECT_FALSE(file.isSupported(file));
}

TEST_F(SchemaVersionTest, UsesTheSupportedTextsOfTheObjectAsked) {
  IPA::RtdSchemaVersion found("2", "1", "0");
  IPA::SchemaVersion wider("0", "0", "0", "2", "1", "0");

  EXPECT_TRUE(wider.isSupported(found));
  EXPECT_FALSE(found.isSupported(found));
}

TEST_F(SchemaVersionTest, AnRtdVersionJudgesAnotherDocumentsVersionByItsOwnSupport) {
  IPA::RtdSchemaVersion rtd("0", "0", "0");
  IPA::ActualResourcesSchema actual("3", "0", "0");

  EXPECT_TRUE(rtd.isSupported(actual));
  EXPECT_FALSE(actual.isSupported(rtd));
}

TEST_F(SchemaVersionTest, NeverThrowsAlsoForEmptyTexts) {
  IPA::SchemaVersion empty("", "", "", "", "", "");

  // An all-empty version fits an all-empty support: the major is not smaller, and minor and
  // patch are equal.
  bool supported = false;
  EXPECT_NO_THROW(supported = empty.isSupported(empty));
  EXPECT_TRUE(supported);
  EXPECT_NO_THROW(empty.supportedVersion());
}

}  // namespace
