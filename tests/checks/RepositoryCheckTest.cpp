// The repository check, which asks its questions in a child process: a repository that ends the
// process that asks it must not end the check.
#include "checks/RepositoryCheck.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>
#include <vector>

#include "checks/CheckReport.h"
#include "tests/support/TempDir.h"

namespace {

using Lines = std::vector<std::string>;

class RepositoryCheckTest : public ::testing::Test {
 protected:
  std::string file(std::string const& name, std::string const& body) {
    std::ofstream(directory.file(name)) << "<qd:repository xmlns:qd=\"urn:quarrix:qd\">" << body
                                        << "</qd:repository>";
    return directory.file(name);
  }

  static Lines printed(std::string const& path) {
    qvcheck::CheckReport report;
    qvcheck::RepositoryCheck::checkFile(path, report);
    Lines out;
    for (qvcheck::Finding const& finding : report.findings()) {
      out.push_back(qvcheck::CheckReport::line(finding));
    }
    return out;
  }

  qvtest::TempDir directory;
};

TEST_F(RepositoryCheckTest, TheExampleDatabaseHasNoFindings) {
  EXPECT_EQ(printed(QV_EXAMPLES_DIR "/design/link/sys_link/_sysl/.cdb/qd_ip_db.xml"), Lines{});
}

TEST_F(RepositoryCheckTest, AFunctionOnAGenericComponentFailsTheCheck) {
  std::string const path = file("generic.xml",
                                "<qd:component qd:name=\"gen\" qd:type=\"generic\"/>"
                                "<qd:fcnMap qd:fcnName=\"f_gen\" qd:componentRef=\"gen\"/>");
  EXPECT_EQ(printed(path),
            (Lines{path + ": error: checkDatabase fails: not every hardware function maps onto "
                          "an accelerator or the platform (ERROR: [Morvane 83-1020] Function "
                          "'f_gen' does not map to accelerator or platform hardware.  This can "
                          "occur if the hardware function specifier is in error.  Declared "
                          "hardware functions: f_gen) [QV-REPO-CHECK-FAILED]"}));
}

TEST_F(RepositoryCheckTest, TwoReadingsThatDisagreeEndTheChildNotTheCheck) {
  Lines const found = printed(QV_FUZZ_CORPUS_DIR "/../disagreement/two_platforms.xml");
  ASSERT_EQ(found.size(), 1u);
  EXPECT_NE(found[0].find(": error: the file's two readings disagree: Equivalency violation "
                          "found for "),
            std::string::npos)
      << found[0];
  EXPECT_NE(found[0].find("[QV-REPO-DISAGREEMENT]"), std::string::npos) << found[0];
}

TEST_F(RepositoryCheckTest, AFileThatIsNoRepository) {
  std::string const path = directory.file("broken.xml");
  std::ofstream(path) << "<qd:repository";
  Lines const found = printed(path);
  ASSERT_EQ(found.size(), 1u);
  EXPECT_EQ(found[0].substr(0, path.size() + 40),
            path + ": error: does not open as a repository: ");
  EXPECT_NE(found[0].find("[QV-REPO-UNREADABLE]"), std::string::npos) << found[0];
}

}  // namespace
