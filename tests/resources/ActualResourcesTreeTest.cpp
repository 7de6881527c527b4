// An actual resources document read into a tree of strings: what the reader keeps, and what it
// refuses.
#include "resources/ActualResourcesTree.h"

#include <gtest/gtest.h>

#include <boost/property_tree/json_parser.hpp>
#include <boost/property_tree/ptree.hpp>
#include <sstream>
#include <string>
#include <vector>

namespace {

using boost::property_tree::ptree;
using IPA::ActualResourcesTree;

class ActualResourcesTreeTest : public ::testing::Test {
 protected:
  static ActualResourcesTree read(std::string const& text) {
    std::istringstream in(text);
    return ActualResourcesTree(in);
  }

  // The keys of the children of `node`, in order.
  static std::vector<std::string> keysOf(ptree const& node) {
    std::vector<std::string> keys;
    for (auto const& child : node) keys.push_back(child.first);
    return keys;
  }
};

TEST_F(ActualResourcesTreeTest, ReadsTheWholeDocument) {
  ActualResourcesTree tree = read(R"({
    "schema_version": {"major": "1", "minor": "0", "patch": "0"},
    "design_state": "Routed",
    "kernels": [
      {"name": "vadd",
       "compute_units": [
         {"cu_name": "vadd_1",
          "actual_resources": {"LUT": "1200", "REG": "2100", "BRAM": "2", "URAM": "0",
                               "DSP": "3"}}]}]})");
  ptree const& document = tree.propertyTree();
  EXPECT_EQ(document.get<std::string>("schema_version.major"), "1");
  EXPECT_EQ(document.get<std::string>("schema_version.minor"), "0");
  EXPECT_EQ(document.get<std::string>("schema_version.patch"), "0");
  EXPECT_EQ(document.get<std::string>("design_state"), "Routed");
  ptree const& kernel = document.get_child("kernels").begin()->second;
  EXPECT_EQ(kernel.get<std::string>("name"), "vadd");
  ptree const& unit = kernel.get_child("compute_units").begin()->second;
  EXPECT_EQ(unit.get<std::string>("cu_name"), "vadd_1");
  EXPECT_EQ(unit.get<std::string>("actual_resources.LUT"), "1200");
  EXPECT_EQ(unit.get<std::string>("actual_resources.REG"), "2100");
  EXPECT_EQ(unit.get<std::string>("actual_resources.BRAM"), "2");
  EXPECT_EQ(unit.get<std::string>("actual_resources.URAM"), "0");
  EXPECT_EQ(unit.get<std::string>("actual_resources.DSP"), "3");
}

TEST_F(ActualResourcesTreeTest, InvalidJsonThrowsTheParserError) {
  std::istringstream in(R"({"design_state": "Routed", "kernels": [)");
  EXPECT_THROW(ActualResourcesTree tree(in), boost::property_tree::json_parser_error);
}

// A fuzzing finding: a document of 200,000 "[" overflowed the stack of the parser.
TEST_F(ActualResourcesTreeTest, NestingTooDeepThrowsTheParserErrorInsteadOfEndingTheProcess) {
  std::istringstream in(std::string(200000, '['));
  EXPECT_THROW(ActualResourcesTree tree(in), boost::property_tree::json_parser_error);
}

TEST_F(ActualResourcesTreeTest, EmptyStreamThrowsTheParserError) {
  std::istringstream in("");
  EXPECT_THROW(ActualResourcesTree tree(in), boost::property_tree::json_parser_error);
}

TEST_F(ActualResourcesTreeTest, CountsWithAndWithoutQuotesAreBothKeptAsText) {
  ActualResourcesTree tree = read(R"({"quoted": "12", "bare": 12, "fraction": 3.50})");
  EXPECT_EQ(tree.propertyTree().get<std::string>("quoted"), "12");
  EXPECT_EQ(tree.propertyTree().get<std::string>("bare"), "12");
  // Kept as written, not as a number would print.
  EXPECT_EQ(tree.propertyTree().get<std::string>("fraction"), "3.50");
}

TEST_F(ActualResourcesTreeTest, KeysStayInFileOrderAsWritten) {
  ActualResourcesTree tree = read(R"({"kernels": [], "design_state": "Routed", "Kernels": [],
                                      "unknown": {"x": "1"}})");
  EXPECT_EQ(keysOf(tree.propertyTree()),
            (std::vector<std::string>{"kernels", "design_state", "Kernels", "unknown"}));
}

TEST_F(ActualResourcesTreeTest, ArrayEntriesAreChildrenWithEmptyKeysInFileOrder) {
  ActualResourcesTree tree = read(R"({"kernels": [{"name": "b"}, {"name": "a"}]})");
  ptree const& kernels = tree.propertyTree().get_child("kernels");
  EXPECT_EQ(keysOf(kernels), (std::vector<std::string>{"", ""}));
  std::vector<std::string> names;
  for (auto const& kernel : kernels) names.push_back(kernel.second.get<std::string>("name"));
  EXPECT_EQ(names, (std::vector<std::string>{"b", "a"}));
}

TEST_F(ActualResourcesTreeTest, PropertyTreeIsOneAndTheSameTreeEveryTime) {
  ActualResourcesTree tree = read(R"({"design_state": "Routed"})");
  ActualResourcesTree const& constTree = tree;
  EXPECT_EQ(&tree.propertyTree(), &tree.propertyTree());
  EXPECT_EQ(&tree.propertyTree(), &constTree.propertyTree());
  tree.propertyTree().put("design_state", "Synthesized");
  EXPECT_EQ(constTree.propertyTree().get<std::string>("design_state"), "Synthesized");
}

TEST_F(ActualResourcesTreeTest, DocumentWithoutVersionIsReadWithoutComplaint) {
  ActualResourcesTree tree = read(R"({"kernels": []})");
  EXPECT_EQ(tree.propertyTree().count("schema_version"), 0u);
}

}  // namespace
