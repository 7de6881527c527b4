// FStreamFinalizer closes the files that the diagram reads and writes on every path out of a
// scope, exceptions included, and must never throw while doing so.
#include "diagram/FStreamFinalizer.h"

#include <fstream>
#include <ios>
#include <stdexcept>
#include <string>

#include <boost/filesystem.hpp>
#include <gtest/gtest.h>

#include "tests/support/Golden.h"
#include "tests/support/TempDir.h"

namespace {

using IPA::FStreamFinalizer;

class FStreamFinalizerTest : public ::testing::Test {
 protected:
  qvtest::TempDir dir;
};

TEST_F(FStreamFinalizerTest, ClosesAnOpenOfstreamAtScopeEndAndItsTextReachesTheFile) {
  std::string const path = dir.file("out.txt");
  std::ofstream out(path, std::ios::binary);
  ASSERT_TRUE(out.is_open());
  {
    FStreamFinalizer<std::ofstream> finalizer(out);
    out << "written";
    EXPECT_TRUE(out.is_open());
  }
  EXPECT_FALSE(out.is_open());
  EXPECT_TRUE(out.good());
  // Closing flushed the buffer: the text is on disk while the stream object still lives.
  EXPECT_EQ(qvtest::readFile(path), "written");
}

TEST_F(FStreamFinalizerTest, ClosesAnOpenIfstreamAtScopeEnd) {
  std::string const path = dir.file("in.txt");
  std::ofstream(path, std::ios::binary) << "abc";
  std::ifstream in(path, std::ios::binary);
  ASSERT_TRUE(in.is_open());
  {
    FStreamFinalizer<std::ifstream> finalizer(in);
    char first = 0;
    in.get(first);
    EXPECT_EQ(first, 'a');
  }
  EXPECT_FALSE(in.is_open());
  EXPECT_TRUE(in.good());
}

TEST_F(FStreamFinalizerTest, ClosesTheFileWhenAnExceptionLeavesTheScope) {
  std::string const path = dir.file("thrown.txt");
  std::ofstream out(path, std::ios::binary);
  try {
    FStreamFinalizer<std::ofstream> finalizer(out);
    out << "before the throw";
    throw std::runtime_error("leaving");
  } catch (std::runtime_error const&) {
  }
  EXPECT_FALSE(out.is_open());
  EXPECT_EQ(qvtest::readFile(path), "before the throw");
}

TEST_F(FStreamFinalizerTest, LeavesAStreamThatNeverOpenedAsItWas) {
  // Closing a stream that is not open would set its fail bit: the finalizer must not try.
  std::ofstream out;
  { FStreamFinalizer<std::ofstream> finalizer(out); }
  EXPECT_FALSE(out.is_open());
  EXPECT_TRUE(out.good());
}

TEST_F(FStreamFinalizerTest, LeavesAStreamClosedByItsOwnerAsItWas) {
  std::ofstream out(dir.file("closed.txt"), std::ios::binary);
  {
    FStreamFinalizer<std::ofstream> finalizer(out);
    out.close();
    ASSERT_TRUE(out.good());
  }
  EXPECT_TRUE(out.good());
}

TEST_F(FStreamFinalizerTest, LeavesTheStateOfAFailedOpenAsItWas) {
  std::ifstream in(dir.file("missing.txt"), std::ios::binary);
  ASSERT_FALSE(in.is_open());
  std::ios::iostate const before = in.rdstate();
  { FStreamFinalizer<std::ifstream> finalizer(in); }
  EXPECT_EQ(in.rdstate(), before);
}

TEST_F(FStreamFinalizerTest, DoesNotThrowForAClosedStreamWithExceptionsEnabled) {
  std::ifstream in;
  in.exceptions(std::ios::failbit | std::ios::badbit);
  EXPECT_NO_THROW({ FStreamFinalizer<std::ifstream> finalizer(in); });
  EXPECT_TRUE(in.good());
}

TEST_F(FStreamFinalizerTest, ClosesAnOpenStreamWithExceptionsEnabledWithoutThrowing) {
  std::string const path = dir.file("exceptions.txt");
  std::ofstream out(path, std::ios::binary);
  out.exceptions(std::ios::failbit | std::ios::badbit);
  EXPECT_NO_THROW({
    FStreamFinalizer<std::ofstream> finalizer(out);
    out << "kept";
  });
  EXPECT_FALSE(out.is_open());
  EXPECT_EQ(qvtest::readFile(path), "kept");
}

TEST_F(FStreamFinalizerTest, FailedCloseWithExceptionsEnabledSetsTheFailBitAndDoesNotThrow) {
  // /dev/full accepts the open and refuses every write, so the flush inside close() fails.
  if (!boost::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full on this system";
  std::ofstream out("/dev/full", std::ios::binary);
  ASSERT_TRUE(out.is_open());
  out.exceptions(std::ios::failbit | std::ios::badbit);
  EXPECT_NO_THROW({
    FStreamFinalizer<std::ofstream> finalizer(out);
    out << "a few bytes that stay in the buffer until close";
  });
  EXPECT_TRUE(out.fail());
  EXPECT_FALSE(out.is_open());
}

TEST_F(FStreamFinalizerTest, FailedCloseWithoutExceptionsSetsTheFailBit) {
  if (!boost::filesystem::exists("/dev/full")) GTEST_SKIP() << "no /dev/full on this system";
  std::ofstream out("/dev/full", std::ios::binary);
  ASSERT_TRUE(out.is_open());
  {
    FStreamFinalizer<std::ofstream> finalizer(out);
    out << "buffered";
    ASSERT_TRUE(out.good());
  }
  EXPECT_TRUE(out.fail());
  EXPECT_FALSE(out.is_open());
}

}  // namespace
