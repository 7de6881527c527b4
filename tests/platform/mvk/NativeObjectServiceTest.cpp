#include "platform/mvk/NativeObjectService.h"

#include <fstream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <boost/filesystem.hpp>
#include <boost/property_tree/exceptions.hpp>
#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <gtest/gtest.h>

#include "tests/support/TempDir.h"

namespace {

using boost::property_tree::ptree;
using mvk::platform::NativeObjectService;

ptree parse(std::string const& json) {
  std::istringstream in(json);
  ptree tree;
  boost::property_tree::read_json(in, tree);
  return tree;
}

void write(std::string const& path, std::string const& text) {
  boost::filesystem::create_directories(boost::filesystem::path(path).parent_path());
  std::ofstream(path, std::ios::binary) << text;
}

// The message of the std::runtime_error that `call` throws, or "" when it throws nothing.
template <typename Call>
std::string errorOf(Call call) {
  try {
    call();
  } catch (std::runtime_error const& error) {
    return error.what();
  }
  return "";
}

class NativeObjectServiceTest : public ::testing::Test {
 protected:
  void SetUp() override {
    saved_ = NativeObjectService::searchPath();
    NativeObjectService::setSearchPath({});
  }
  void TearDown() override { NativeObjectService::setSearchPath(saved_); }

  // A fresh directory under testing::TempDir(), removed with its contents after each test.
  qvtest::TempDir dir;
  NativeObjectService const service;

 private:
  std::vector<std::string> saved_;
};

// --- getAsJsonStr ---------------------------------------------------------------------------

TEST_F(NativeObjectServiceTest, FileGivenDirectlyIsReturnedAsStored) {
  std::string const path = dir.file("board.json");
  write(path, "{\"name\": \"board\"}\n");
  EXPECT_EQ(service.getAsJsonStr(path), "{\"name\": \"board\"}\n");
}

TEST_F(NativeObjectServiceTest, FileGivenDirectlyWinsOverTheSearchPath) {
  write(dir.file("found/u1.json"), "{\"from\": \"search path\"}");
  write(dir.file("direct.json"), "{\"from\": \"direct\"}");
  NativeObjectService::setSearchPath({dir.file("found")});
  EXPECT_EQ(service.getAsJsonStr(dir.file("direct.json")), "{\"from\": \"direct\"}");
}

TEST_F(NativeObjectServiceTest, EmptyFileGivesEmptyText) {
  write(dir.file("empty.json"), "");
  EXPECT_EQ(service.getAsJsonStr(dir.file("empty.json")), "");
}

TEST_F(NativeObjectServiceTest, FirstDirectoryOfTheSearchPathWins) {
  write(dir.file("a/u1.json"), "{\"from\": \"a\"}");
  write(dir.file("b/u1.json"), "{\"from\": \"b\"}");
  write(dir.file("b/u2.json"), "{\"only\": \"b\"}");
  NativeObjectService::setSearchPath({dir.file("a"), dir.file("b")});
  EXPECT_EQ(service.getAsJsonStr("u1"), "{\"from\": \"a\"}");
  EXPECT_EQ(service.getAsJsonStr("u2"), "{\"only\": \"b\"}");

  NativeObjectService::setSearchPath({dir.file("b"), dir.file("a")});
  EXPECT_EQ(service.getAsJsonStr("u1"), "{\"from\": \"b\"}");
}

TEST_F(NativeObjectServiceTest, PlatformJsonBeforePlatformFolderWithinADirectory) {
  write(dir.file("a/u1.json"), "{\"file\": \"u1.json\"}");
  write(dir.file("a/u1/platform.json"), "{\"file\": \"u1/platform.json\"}");
  NativeObjectService::setSearchPath({dir.file("a")});
  EXPECT_EQ(service.getAsJsonStr("u1"), "{\"file\": \"u1.json\"}");
}

TEST_F(NativeObjectServiceTest, PlatformFolderIsFoundWhenThereIsNoPlatformJson) {
  write(dir.file("a/u1/platform.json"), "{\"file\": \"u1/platform.json\"}");
  NativeObjectService::setSearchPath({dir.file("a")});
  EXPECT_EQ(service.getAsJsonStr("u1"), "{\"file\": \"u1/platform.json\"}");
}

TEST_F(NativeObjectServiceTest, DirectoryOrderComesBeforeTheOrderOfTheTwoNames) {
  // The folder form in the first directory beats the .json form in the second.
  write(dir.file("a/u1/platform.json"), "{\"from\": \"a/u1/platform.json\"}");
  write(dir.file("b/u1.json"), "{\"from\": \"b/u1.json\"}");
  NativeObjectService::setSearchPath({dir.file("a"), dir.file("b")});
  EXPECT_EQ(service.getAsJsonStr("u1"), "{\"from\": \"a/u1/platform.json\"}");
}

TEST_F(NativeObjectServiceTest, DirectoryWithTrailingSlashWorks) {
  write(dir.file("a/u1.json"), "{}");
  NativeObjectService::setSearchPath({dir.file("a") + "/"});
  EXPECT_EQ(service.getAsJsonStr("u1"), "{}");
}

TEST_F(NativeObjectServiceTest, MissingPlatformNamesEveryDirectoryTried) {
  NativeObjectService::setSearchPath({"no/such/dir-a", "/no/such/dir-b"});
  EXPECT_EQ(errorOf([&] { service.getAsJsonStr("u9"); }),
            "Platform \"u9\" not found: it is not a readable file, and no directory of the "
            "platform search path has a readable u9.json or u9/platform.json (tried "
            "no/such/dir-a, /no/such/dir-b).");
}

TEST_F(NativeObjectServiceTest, MissingPlatformInExistingDirectories) {
  write(dir.file("a/other.json"), "{}");
  boost::filesystem::create_directories(dir.file("b"));
  NativeObjectService::setSearchPath({dir.file("a"), dir.file("b")});
  EXPECT_EQ(errorOf([&] { service.getAsJsonStr("u9"); }),
            "Platform \"u9\" not found: it is not a readable file, and no directory of the "
            "platform search path has a readable u9.json or u9/platform.json (tried " +
                dir.file("a") + ", " + dir.file("b") + ").");
}

TEST_F(NativeObjectServiceTest, MissingPlatformWithEmptySearchPath) {
  EXPECT_EQ(errorOf([&] { service.getAsJsonStr("u9"); }),
            "Platform \"u9\" not found: it is not a readable file and the platform search path "
            "is empty.");
}

TEST_F(NativeObjectServiceTest, MissingPlatformThrowsRuntimeError) {
  EXPECT_THROW(service.getAsJsonStr("u9"), std::runtime_error);
}

TEST_F(NativeObjectServiceTest, DirectoryNamedLikeThePlatformJsonIsPassedOver) {
  boost::filesystem::create_directories(dir.file("a/u1.json"));
  write(dir.file("a/u1/platform.json"), "{\"file\": \"u1/platform.json\"}");
  NativeObjectService::setSearchPath({dir.file("a")});
  EXPECT_EQ(service.getAsJsonStr("u1"), "{\"file\": \"u1/platform.json\"}");
}

TEST_F(NativeObjectServiceTest, DirectoriesOnlyNamedLikeThePlatformAreNotFound) {
  boost::filesystem::create_directories(dir.file("a/u1.json"));
  boost::filesystem::create_directories(dir.file("a/u1/platform.json"));
  NativeObjectService::setSearchPath({dir.file("a")});
  EXPECT_EQ(errorOf([&] { service.getAsJsonStr("u1"); }),
            "Platform \"u1\" not found: it is not a readable file, and no directory of the "
            "platform search path has a readable u1.json or u1/platform.json (tried " +
                dir.file("a") + ").");
}

TEST_F(NativeObjectServiceTest, DirectoryGivenDirectlyIsNotAFile) {
  std::string const path = dir.file("folder");
  boost::filesystem::create_directories(path);
  EXPECT_EQ(errorOf([&] { service.getAsJsonStr(path); }),
            "Platform \"" + path +
                "\" not found: it is not a readable file and the platform search path is empty.");
}

TEST_F(NativeObjectServiceTest, EmptyPlatformNameIsRefused) {
  write(dir.file("a/.json"), "{}");
  NativeObjectService::setSearchPath({dir.file("a")});
  EXPECT_EQ(errorOf([&] { service.getAsJsonStr(""); }),
            "No platform given: the platform name is empty.");
}

TEST_F(NativeObjectServiceTest, SearchPathIsKeptWithoutEmptyEntries) {
  EXPECT_EQ(NativeObjectService::searchPath(), std::vector<std::string>{});
  NativeObjectService::setSearchPath({"/x", "", "y/", ""});
  EXPECT_EQ(NativeObjectService::searchPath(), (std::vector<std::string>{"/x", "y/"}));
  NativeObjectService::setSearchPath({});
  EXPECT_EQ(NativeObjectService::searchPath(), std::vector<std::string>{});
}

TEST_F(NativeObjectServiceTest, SearchPathIsSharedByEveryService) {
  write(dir.file("a/u1.json"), "{\"shared\": \"yes\"}");
  NativeObjectService::setSearchPath({dir.file("a")});
  // A service made after, and one made on the spot, both see it.
  EXPECT_EQ(NativeObjectService().getAsJsonStr("u1"), "{\"shared\": \"yes\"}");
  EXPECT_EQ(service.getAsJsonStr("u1"), "{\"shared\": \"yes\"}");
}

// --- getStringValue ---------------------------------------------------------------------------

char const* const kPlatform = R"({
  "hardwarePlatform": {
    "name": "u1",
    "board": {"vendor": "acme", "part": {"number": "X-100"}},
    "devices": [
      {"name": "first", "core": {"name": "core0", "clock": "300"}},
      {"name": "second", "core": {"name": "core1", "clock": "250"}}
    ],
    "tags": ["alpha", "beta"]
  }
})";

TEST_F(NativeObjectServiceTest, StringValueOnNestedPaths) {
  ptree const tree = parse(kPlatform);
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.name"), "u1");
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.board.vendor"), "acme");
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.board.part.number"), "X-100");
}

TEST_F(NativeObjectServiceTest, EmptyPathElementSelectsTheFirstArrayElement) {
  ptree const tree = parse(kPlatform);
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.devices..core.name"), "core0");
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.devices..name"), "first");
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.devices..core.clock"), "300");
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.tags."), "alpha");
}

TEST_F(NativeObjectServiceTest, EmptyPathElementAtTheTopSelectsTheFirstElement) {
  ptree const tree = parse(R"([{"id": "7"}, {"id": "8"}])");
  EXPECT_EQ(service.getStringValue(tree, ".id"), "7");
}

TEST_F(NativeObjectServiceTest, FirstOfTwoEqualKeysIsSelected) {
  ptree tree;
  tree.add("a.b", "one");
  tree.add("a.b", "two");
  ASSERT_EQ(tree.get_child("a").size(), 2U);
  EXPECT_EQ(service.getStringValue(tree, "a.b"), "one");
}

TEST_F(NativeObjectServiceTest, StringValueOfMissingPathThrowsBadPath) {
  ptree const tree = parse(kPlatform);
  EXPECT_THROW(service.getStringValue(tree, "hardwarePlatform.missing"),
               boost::property_tree::ptree_bad_path);
  try {
    service.getStringValue(tree, "hardwarePlatform.devices..core.missing");
    FAIL() << "no exception";
  } catch (boost::property_tree::ptree_bad_path const& error) {
    EXPECT_EQ(std::string(error.what()),
              "No such node (hardwarePlatform.devices..core.missing)");
    EXPECT_EQ(error.path<ptree::path_type>().dump(), "hardwarePlatform.devices..core.missing");
  }
}

TEST_F(NativeObjectServiceTest, StringValueOfMissingPathIsARuntimeError) {
  ptree const tree = parse(kPlatform);
  EXPECT_EQ(errorOf([&] { service.getStringValue(tree, "hardwarePlatform.board.colour"); }),
            "No such node (hardwarePlatform.board.colour)");
}

TEST_F(NativeObjectServiceTest, EmptyElementOnAnObjectWithoutArrayIsMissing) {
  ptree const tree = parse(kPlatform);
  // "board" is an object: it has no child with an empty key.
  EXPECT_EQ(errorOf([&] { service.getStringValue(tree, "hardwarePlatform.board..vendor"); }),
            "No such node (hardwarePlatform.board..vendor)");
  // The walk does not go into the second device when the first lacks the key.
  ptree const devices = parse(R"({"d": [{"x": "1"}, {"y": "2"}]})");
  EXPECT_EQ(errorOf([&] { service.getStringValue(devices, "d..y"); }), "No such node (d..y)");
  // An empty element matches only an empty key, not whatever child comes first.
  ptree const nested = parse(R"({"o": {"x": {"v": "1"}}})");
  EXPECT_EQ(errorOf([&] { service.getStringValue(nested, "o..v"); }), "No such node (o..v)");
  EXPECT_EQ(service.getChild(nested, "o.").size(), 0U);
}

TEST_F(NativeObjectServiceTest, StringValueOfAnObjectOrArrayIsEmpty) {
  ptree const tree = parse(kPlatform);
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.board"), "");
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.devices"), "");
  EXPECT_EQ(service.getStringValue(tree, "hardwarePlatform.devices."), "");
}

TEST_F(NativeObjectServiceTest, EmptyPathSelectsTheTreeItself) {
  ptree leaf;
  leaf.put_value("top");
  EXPECT_EQ(service.getStringValue(leaf, ""), "top");
  EXPECT_EQ(service.getChild(leaf, "").data(), "top");
}

// --- getChild ---------------------------------------------------------------------------------

TEST_F(NativeObjectServiceTest, ChildIsACopyOfTheSubtree) {
  ptree const tree = parse(kPlatform);
  ptree child = service.getChild(tree, "hardwarePlatform.board");
  ASSERT_EQ(child.size(), 2U);
  EXPECT_EQ(child.get<std::string>("vendor"), "acme");
  EXPECT_EQ(child.get<std::string>("part.number"), "X-100");
  // A copy: changing it leaves the tree as it was.
  child.put("vendor", "other");
  EXPECT_EQ(tree.get<std::string>("hardwarePlatform.board.vendor"), "acme");
}

TEST_F(NativeObjectServiceTest, ChildOfFirstArrayElement) {
  ptree const tree = parse(kPlatform);
  ptree const device = service.getChild(tree, "hardwarePlatform.devices.");
  EXPECT_EQ(device.get<std::string>("name"), "first");
  EXPECT_EQ(service.getStringValue(device, "core.name"), "core0");
  EXPECT_EQ(service.getChild(tree, "hardwarePlatform.devices").size(), 2U);
}

TEST_F(NativeObjectServiceTest, ChildOfMissingPathIsEmpty) {
  ptree const tree = parse(kPlatform);
  ptree const child = service.getChild(tree, "hardwarePlatform.missing.deeper");
  EXPECT_EQ(child.size(), 0U);
  EXPECT_EQ(child.data(), "");
  EXPECT_TRUE(child.empty());
  EXPECT_EQ(service.getChild(tree, "hardwarePlatform.board..vendor").size(), 0U);
}

TEST_F(NativeObjectServiceTest, ChildOfALeafHasItsText) {
  ptree const tree = parse(kPlatform);
  ptree const child = service.getChild(tree, "hardwarePlatform.devices..core.clock");
  EXPECT_EQ(child.size(), 0U);
  EXPECT_EQ(child.data(), "300");
}

}  // namespace
