// The version check of an actual resources document: which versions pass, the text of a refusal,
// and which missing key is named.
#include "resources/ActualResourcesSchemaValidationVisitor.h"

#include <gtest/gtest.h>

#include <boost/property_tree/exceptions.hpp>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "resources/ActualResourceTreeVisitor.h"
#include "resources/ActualResourcesTree.h"
#include "tests/support/Calls.h"

namespace {

using IPA::ActualResourcesSchemaValidationVisitor;
using IPA::ActualResourcesTree;
using qvtest::runtimeErrorText;

class ActualResourcesSchemaValidationVisitorTest : public ::testing::Test {
 protected:
  static ActualResourcesTree read(std::string const& text) {
    std::istringstream in(text);
    return ActualResourcesTree(in);
  }

  // A document holding only the version, each part written between quotes.
  static ActualResourcesTree withVersion(std::string const& major, std::string const& minor,
                                         std::string const& patch) {
    return read(R"({"schema_version": {"major": ")" + major + R"(", "minor": ")" + minor +
                R"(", "patch": ")" + patch + R"("}, "kernels": []})");
  }

  // The text of the runtime error that validating `tree` throws, or "<no exception>".
  std::string refusal(ActualResourcesTree tree) {
    return runtimeErrorText([&] { visitor.visit(tree); });
  }

  // The text of the missing-key error that validating `tree` throws, or "<no exception>".
  std::string missingKey(ActualResourcesTree tree) {
    try {
      visitor.visit(tree);
    } catch (boost::property_tree::ptree_bad_path const& error) {
      return error.what();
    }
    return "<no exception>";
  }

  ActualResourcesSchemaValidationVisitor visitor;
};

TEST_F(ActualResourcesSchemaValidationVisitorTest, VersionOneZeroZeroPasses) {
  ActualResourcesTree tree = withVersion("1", "0", "0");
  EXPECT_NO_THROW(visitor.visit(tree));
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, VersionTwoZeroZeroPasses) {
  ActualResourcesTree tree = withVersion("2", "0", "0");
  EXPECT_NO_THROW(visitor.visit(tree));
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, GreaterMajorVersionsPassComparedAsText) {
  for (char const* major : {"9", "10", "1a"}) {
    ActualResourcesTree tree = withVersion(major, "0", "0");
    EXPECT_NO_THROW(visitor.visit(tree)) << major;
  }
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, VersionWrittenWithoutQuotesPasses) {
  ActualResourcesTree tree = read(R"({"schema_version": {"major": 1, "minor": 0, "patch": 0}})");
  EXPECT_NO_THROW(visitor.visit(tree));
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, VersionOneZeroOneIsRefusedWithTheFoundVersion) {
  EXPECT_EQ(refusal(withVersion("1", "0", "1")),
            "Unsupported actual resources schema. The supported version is: 1.0.0.  The version "
            "found is: 1.0.1.");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, VersionOneOneZeroIsRefused) {
  EXPECT_EQ(refusal(withVersion("1", "1", "0")),
            "Unsupported actual resources schema. The supported version is: 1.0.0.  The version "
            "found is: 1.1.0.");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, GreaterMajorVersionWithAnotherMinorIsRefused) {
  EXPECT_EQ(refusal(withVersion("2", "1", "0")),
            "Unsupported actual resources schema. The supported version is: 1.0.0.  The version "
            "found is: 2.1.0.");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, VersionZeroZeroZeroIsRefused) {
  EXPECT_EQ(refusal(withVersion("0", "0", "0")),
            "Unsupported actual resources schema. The supported version is: 1.0.0.  The version "
            "found is: 0.0.0.");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, MajorVersionWithALeadingZeroIsRefused) {
  EXPECT_EQ(refusal(withVersion("01", "0", "0")),
            "Unsupported actual resources schema. The supported version is: 1.0.0.  The version "
            "found is: 01.0.0.");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, EmptyPatchLevelIsRefused) {
  EXPECT_EQ(refusal(withVersion("1", "0", "")),
            "Unsupported actual resources schema. The supported version is: 1.0.0.  The version "
            "found is: 1.0..");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, DocumentWithoutVersionNamesThePatchLevel) {
  EXPECT_EQ(missingKey(read(R"({"design_state": "Routed", "kernels": []})")),
            "No such node (schema_version.patch)");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, EmptyVersionObjectNamesThePatchLevel) {
  EXPECT_EQ(missingKey(read(R"({"schema_version": {}})")), "No such node (schema_version.patch)");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, MissingMinorVersionIsNamed) {
  EXPECT_EQ(missingKey(read(R"({"schema_version": {"major": "1", "patch": "0"}})")),
            "No such node (schema_version.minor)");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, MissingMajorVersionAloneIsNamed) {
  EXPECT_EQ(missingKey(read(R"({"schema_version": {"minor": "0", "patch": "0"}})")),
            "No such node (schema_version.major)");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, MissingMinorAndMajorNameTheMinorFirst) {
  EXPECT_EQ(missingKey(read(R"({"schema_version": {"patch": "0"}})")),
            "No such node (schema_version.minor)");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, VersionKeysAreComparedExactly) {
  EXPECT_EQ(missingKey(read(R"({"Schema_Version": {"major": "1", "minor": "0", "patch": "0"}})")),
            "No such node (schema_version.patch)");
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, NothingButTheVersionIsChecked) {
  ActualResourcesTree tree = read(R"({
    "schema_version": {"major": "1", "minor": "0", "patch": "0"},
    "kernels": [{"compute_units": [{"actual_resources": {}}]}, {}],
    "design_state": "Not A State"})");
  EXPECT_NO_THROW(visitor.visit(tree));
}

TEST_F(ActualResourcesSchemaValidationVisitorTest, CanBeOwnedAndUsedThroughTheBase) {
  std::unique_ptr<IPA::ActualResourceTreeVisitor> base =
      std::make_unique<ActualResourcesSchemaValidationVisitor>();
  ActualResourcesTree tree = withVersion("1", "0", "1");
  EXPECT_THROW(base->visit(tree), std::runtime_error);
}

}  // namespace
