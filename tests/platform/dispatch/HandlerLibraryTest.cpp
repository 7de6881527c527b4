#include "platform/dispatch/HandlerLibrary.h"

#include <dlfcn.h>

#include <fstream>
#include <stdexcept>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "platform/messages/ComMsgCatalogue.h"
#include "tests/support/TempDir.h"

namespace {

using dispatch::server::HandlerLibrary;

// Loading a real service library is the business of tests/service/LoadLibraryTest.cpp; here are
// the ways loading fails.
class HandlerLibraryTest : public ::testing::Test {
 protected:
  // Runs `call`, expects exactly a std::runtime_error, and returns its text.
  template <class Call>
  static std::string thrown(Call call) {
    try {
      call();
    } catch (std::runtime_error const& error) {
      EXPECT_EQ(typeid(error), typeid(std::runtime_error));
      return error.what();
    } catch (...) {
      ADD_FAILURE() << "an exception of another type";
      return "";
    }
    ADD_FAILURE() << "no exception";
    return "";
  }

  // The file this process loaded libqv_platform.so from, found through an object that lives in
  // it (the built-in catalogue is a static inside the library), or empty if the loader cannot
  // tell.
  static std::string platformLibraryPath() {
    Dl_info info{};
    void const* inside = &platform_messages::ComMsgCatalogue::builtIn();
    if (dladdr(inside, &info) == 0 || info.dli_fname == nullptr) return "";
    return info.dli_fname;
  }

  static bool startsWith(std::string const& text, std::string const& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
  }

  qvtest::TempDir dir;
};

TEST_F(HandlerLibraryTest, MissingFileThrowsNamingThePathAndTheReason) {
  std::string const path = dir.file("libnothing_here.so");
  std::string const text = thrown([&] { HandlerLibrary library(path); });
  std::string const prefix = "cannot load service library '" + path + "': ";
  EXPECT_TRUE(startsWith(text, prefix)) << text;
  // The loader's own reason follows.
  EXPECT_GT(text.size(), prefix.size()) << text;
}

TEST_F(HandlerLibraryTest, FileThatIsNoLibraryThrowsNamingThePath) {
  std::string const path = dir.file("libtext.so");
  std::ofstream(path) << "this is not a shared library\n";
  std::string const text = thrown([&] { HandlerLibrary library(path); });
  std::string const prefix = "cannot load service library '" + path + "': ";
  EXPECT_TRUE(startsWith(text, prefix)) << text;
  EXPECT_GT(text.size(), prefix.size()) << text;
}

TEST_F(HandlerLibraryTest, DirectoryThrowsNamingThePath) {
  std::string const path = dir.path();
  std::string const text = thrown([&] { HandlerLibrary library(path); });
  EXPECT_TRUE(startsWith(text, "cannot load service library '" + path + "': ")) << text;
}

TEST_F(HandlerLibraryTest, LibraryWithoutFactoryThrowsNamingTheSymbol) {
  // The platform library is a shared library that certainly exports no service factory.
  std::string const path = platformLibraryPath();
  if (path.empty()) GTEST_SKIP() << "the loader cannot tell where libqv_platform.so is";
  ASSERT_NE(path.find("libqv_platform"), std::string::npos) << path;

  std::string const text = thrown([&] { HandlerLibrary library(path); });
  std::string const prefix = "service library '" + path + "' has no symbol 'makeHandler': ";
  EXPECT_TRUE(startsWith(text, prefix)) << text;
  EXPECT_GT(text.size(), prefix.size()) << text;
}

}  // namespace
