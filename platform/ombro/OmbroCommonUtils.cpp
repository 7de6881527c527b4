#include "platform/ombro/OmbroCommonUtils.h"

#include <algorithm>
#include <map>

namespace OmbroCommonUtils {

std::vector<std::string> doSplit(std::string const& line, char separator, bool skipEmpty) {
  std::vector<std::string> fields;
  if (line.empty()) return fields;
  std::string::size_type start = 0;
  while (true) {
    auto const end = line.find(separator, start);
    std::string field =
        line.substr(start, end == std::string::npos ? std::string::npos : end - start);
    if (!skipEmpty || !field.empty()) fields.push_back(std::move(field));
    if (end == std::string::npos) break;
    start = end + 1;
  }
  return fields;
}

namespace {

struct Assignment {
  std::string kernel;
  std::string instance;
  std::string origin;
};

std::string formError(std::string const& origin) {
  return "kernel instance list '" + origin +
         "' is not of the form <kernel>:<instance>[,<instance>...]";
}

}  // namespace

bool collectKernelInsts(std::vector<std::string> const& instanceLists,
                        std::vector<std::pair<std::string, std::string>> const& instancePairs,
                        bool replaceInstances, bool defaultInstance, std::vector<Kernel>& kernels,
                        std::string& errorText) {
  // Everything is checked before anything changes, so that a failure leaves the kernels alone.
  std::vector<Assignment> assignments;
  for (std::string const& origin : instanceLists) {
    auto const colon = origin.find(':');
    if (colon == std::string::npos || colon == 0) {
      errorText = formError(origin);
      return false;
    }
    std::string const kernel = origin.substr(0, colon);
    std::string const list = origin.substr(colon + 1);
    std::vector<std::string> const instances = doSplit(list, ',', false);
    if (instances.empty()) {
      errorText = formError(origin);
      return false;
    }
    for (std::string const& instance : instances) {
      if (instance.empty()) {
        errorText = formError(origin);
        return false;
      }
      assignments.push_back({kernel, instance, origin});
    }
  }
  for (auto const& pair : instancePairs) {
    std::string const origin = pair.first + ":" + pair.second;
    if (pair.first.empty() || pair.second.empty()) {
      errorText = "kernel instance pair '" + origin + "' has an empty kernel or instance name";
      return false;
    }
    assignments.push_back({pair.first, pair.second, origin});
  }

  std::vector<Kernel> changed = kernels;
  std::map<std::string, Kernel*> byName;
  for (Kernel& kernel : changed) byName.emplace(kernel.name, &kernel);
  if (replaceInstances) {
    for (Assignment const& assignment : assignments) {
      auto const found = byName.find(assignment.kernel);
      if (found == byName.end()) continue;
      found->second->instances.clear();
      found->second->instanceOrigins.clear();
    }
  }
  for (Assignment const& assignment : assignments) {
    auto const found = byName.find(assignment.kernel);
    if (found == byName.end()) {
      errorText = "kernel instance list '" + assignment.origin + "' names the kernel '" +
                  assignment.kernel + "', which is not among the kernels";
      return false;
    }
    Kernel& kernel = *found->second;
    if (std::find(kernel.instances.begin(), kernel.instances.end(), assignment.instance) !=
        kernel.instances.end()) {
      errorText = "kernel instance list '" + assignment.origin + "' names the instance '" +
                  assignment.instance + "' of kernel '" + assignment.kernel + "' a second time";
      return false;
    }
    kernel.instances.push_back(assignment.instance);
    kernel.instanceOrigins.push_back(assignment.origin);
  }
  if (defaultInstance) {
    for (Kernel& kernel : changed) {
      if (!kernel.instances.empty()) continue;
      kernel.instances.push_back(kernel.name + "_1");
      kernel.instanceOrigins.push_back("");
    }
  }
  kernels = std::move(changed);
  return true;
}

}  // namespace OmbroCommonUtils
