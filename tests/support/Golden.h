// Comparison of a test's output with a golden file in tests/data/golden.
#ifndef TESTS_SUPPORT_GOLDEN_H_
#define TESTS_SUPPORT_GOLDEN_H_

#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

namespace qvtest {

inline std::string readFile(std::string const& path) {
  std::ifstream in(path, std::ios::binary);
  std::stringstream text;
  text << in.rdbuf();
  return text.str();
}

inline std::string dataFile(std::string const& relative) {
  return std::string(QV_TEST_DATA_DIR) + "/" + relative;
}

// A file of the shipped sample design in examples/.
inline std::string exampleFile(std::string const& relative) {
  return std::string(QV_EXAMPLES_DIR) + "/" + relative;
}

// Passes when `actual` equals tests/data/golden/<name> byte for byte. scripts/regen-golden sets
// QV_UPDATE_GOLDEN to write `actual` there instead, and then shows the difference for review.
inline ::testing::AssertionResult MatchesGolden(std::string const& actual,
                                                std::string const& name) {
  std::string const path = dataFile("golden/" + name);
  if (std::getenv("QV_UPDATE_GOLDEN") != nullptr) {
    std::ofstream(path, std::ios::binary) << actual;
    return ::testing::AssertionSuccess();
  }
  std::ifstream probe(path);
  if (!probe) return ::testing::AssertionFailure() << "no golden file " << path;
  std::string const expected = readFile(path);
  if (actual == expected) return ::testing::AssertionSuccess();
  return ::testing::AssertionFailure() << "differs from " << path << "\n--- expected\n"
                                       << expected << "--- actual\n"
                                       << actual;
}

}  // namespace qvtest

#define EXPECT_GOLDEN(actual, name) EXPECT_TRUE(::qvtest::MatchesGolden((actual), (name)))

#endif  // TESTS_SUPPORT_GOLDEN_H_
