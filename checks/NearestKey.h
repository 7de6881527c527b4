// "Did you mean": the known key closest to a key that a reader does not know.
#ifndef CHECKS_NEARESTKEY_H_
#define CHECKS_NEARESTKEY_H_

#include <string>
#include <vector>

namespace qvcheck {

// The key of `known` nearest to `key` by edit distance, where swapping two neighbouring
// characters counts as one edit ("m_tpye" is one edit from "m_type") and a change of case as
// none ("lut" is "LUT"); empty when none is near enough to be a likely misspelling: at most two
// edits, and fewer than half of the key's characters.
std::string nearestKey(std::string const& key, std::vector<std::string> const& known);

// ": did you mean X?" text for a finding, or "" when there is no near key.
std::string didYouMean(std::string const& key, std::vector<std::string> const& known);

}  // namespace qvcheck

#endif  // CHECKS_NEARESTKEY_H_
