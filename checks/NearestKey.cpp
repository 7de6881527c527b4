#include "checks/NearestKey.h"

#include <algorithm>
#include <cctype>
#include <cstddef>

namespace qvcheck {

namespace {

char folded(char c) { return static_cast<char>(std::tolower(static_cast<unsigned char>(c))); }

// Optimal string alignment distance: insertions, deletions, substitutions and transpositions of
// neighbours, case ignored.
std::size_t distance(std::string const& a, std::string const& b) {
  std::size_t const n = a.size();
  std::size_t const m = b.size();
  std::vector<std::vector<std::size_t>> d(n + 1, std::vector<std::size_t>(m + 1));
  for (std::size_t i = 0; i <= n; ++i) d[i][0] = i;
  for (std::size_t j = 0; j <= m; ++j) d[0][j] = j;
  for (std::size_t i = 1; i <= n; ++i) {
    for (std::size_t j = 1; j <= m; ++j) {
      std::size_t const cost = folded(a[i - 1]) == folded(b[j - 1]) ? 0 : 1;
      d[i][j] = std::min({d[i - 1][j] + 1, d[i][j - 1] + 1, d[i - 1][j - 1] + cost});
      if (i > 1 && j > 1 && folded(a[i - 1]) == folded(b[j - 2]) &&
          folded(a[i - 2]) == folded(b[j - 1])) {
        d[i][j] = std::min(d[i][j], d[i - 2][j - 2] + 1);
      }
    }
  }
  return d[n][m];
}

}  // namespace

std::string nearestKey(std::string const& key, std::vector<std::string> const& known) {
  // Long keys are not misspellings of short ones; comparing them would only cost time.
  if (key.size() > 64) return std::string();
  std::string best;
  std::size_t bestDistance = 3;
  for (std::string const& candidate : known) {
    std::size_t const d = distance(key, candidate);
    if (d < bestDistance && d * 2 < std::max<std::size_t>(key.size(), 2)) {
      best = candidate;
      bestDistance = d;
    }
  }
  return best;
}

std::string didYouMean(std::string const& key, std::vector<std::string> const& known) {
  std::string const near = nearestKey(key, known);
  return near.empty() ? std::string() : " (did you mean " + near + "?)";
}

}  // namespace qvcheck
