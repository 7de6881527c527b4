// Helpers of the kernel tools: splitting the lines of the kernels file, and giving kernels their
// instances.
#ifndef PLATFORM_OMBRO_OMBROCOMMONUTILS_H_
#define PLATFORM_OMBRO_OMBROCOMMONUTILS_H_

#include <string>
#include <utility>
#include <vector>

#include "platform/ombro/Kernel.h"

namespace OmbroCommonUtils {

// The fields of `line` between the `separator`s, in order, untrimmed. An empty line has no
// field at all; otherwise there is one field more than there are separators ("a,,b" gives "a",
// "" and "b"; "a," gives "a" and ""). With `skipEmpty` the empty fields are left out.
std::vector<std::string> doSplit(std::string const& line, char separator, bool skipEmpty);

// Gives kernels of `kernels` their instances (compute units). Each text of `instanceLists` is
// an instance list, "<kernel>:<instance>[,<instance>...]"; each pair of `instancePairs` is one
// kernel name and one instance name. Instance lists come first, then pairs, each in order; a
// kernel's new instances are appended to `instances`, with the text that named each (for a
// pair: "<kernel>:<instance>") appended to `instanceOrigins` beside it. With
// `replaceInstances`, a kernel named at least once loses the instances it had before. With
// `defaultInstance`, every kernel that has no instance afterwards gets one, "<kernel>_1", with
// an empty origin.
//
// Returns false and sets `errorText` (naming the instance list) for a text not of that form, an
// empty kernel or instance name, a kernel that `kernels` does not have, or an instance named
// twice for one kernel; `kernels` is then left as it came. Empty lists succeed and change
// nothing unless `defaultInstance` is set.
bool collectKernelInsts(std::vector<std::string> const& instanceLists,
                        std::vector<std::pair<std::string, std::string>> const& instancePairs,
                        bool replaceInstances, bool defaultInstance, std::vector<Kernel>& kernels,
                        std::string& errorText);

}  // namespace OmbroCommonUtils

#endif  // PLATFORM_OMBRO_OMBROCOMMONUTILS_H_
