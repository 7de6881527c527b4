#include "platform/mvk/NativeObjectService.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <mutex>
#include <optional>
#include <shared_mutex>
#include <stdexcept>
#include <utility>

#include <boost/filesystem/operations.hpp>
#include <boost/filesystem/path.hpp>
#include <boost/property_tree/exceptions.hpp>

namespace mvk {
namespace platform {

namespace {

using boost::property_tree::ptree;

std::shared_mutex& searchPathMutex() {
  static std::shared_mutex mutex;
  return mutex;
}

std::vector<std::string>& searchPathDirectories() {  // guarded by searchPathMutex()
  static std::vector<std::string> directories;
  return directories;
}

// The whole content of `path` when it is a regular file (symbolic links followed) that opens for
// reading; nothing otherwise, so that the caller goes on to its next candidate.
std::optional<std::string> readRegularFile(boost::filesystem::path const& path) {
  boost::system::error_code error;
  if (!boost::filesystem::is_regular_file(path, error) || error) return std::nullopt;
  std::ifstream in(path.string(), std::ios::in | std::ios::binary);
  if (!in.is_open()) return std::nullopt;
  return std::string(std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>());
}

// The node at `path` in `tree`, or null. Our own walk rather than ptree::get_child, which has no
// rule for an empty key.
ptree const* find(ptree const& tree, std::string const& path) {
  if (path.empty()) return &tree;
  ptree const* node = &tree;
  std::string::size_type begin = 0;
  while (true) {
    std::string::size_type const end = path.find('.', begin);
    std::string const key =
        path.substr(begin, end == std::string::npos ? std::string::npos : end - begin);
    auto const child = std::find_if(node->begin(), node->end(),
                                    [&key](ptree::value_type const& entry) {
                                      return entry.first == key;
                                    });
    if (child == node->end()) return nullptr;
    node = &child->second;
    if (end == std::string::npos) return node;
    begin = end + 1;
  }
}

}  // namespace

NativeObjectService::NativeObjectService() = default;

std::string NativeObjectService::getAsJsonStr(std::string const& platform) const {
  if (platform.empty()) throw std::runtime_error("No platform given: the platform name is empty.");
  if (auto text = readRegularFile(platform)) return std::move(*text);

  std::vector<std::string> const directories = searchPath();
  for (std::string const& directory : directories) {
    boost::filesystem::path const base(directory);
    if (auto text = readRegularFile(base / (platform + ".json"))) return std::move(*text);
    if (auto text = readRegularFile(base / platform / "platform.json")) return std::move(*text);
  }

  std::string message = "Platform \"" + platform + "\" not found: it is not a readable file";
  if (directories.empty()) {
    message += " and the platform search path is empty.";
  } else {
    message += ", and no directory of the platform search path has a readable " + platform +
               ".json or " + platform + "/platform.json (tried ";
    for (std::size_t i = 0; i < directories.size(); ++i) {
      if (i > 0) message += ", ";
      message += directories[i];
    }
    message += ").";
  }
  throw std::runtime_error(message);
}

std::string NativeObjectService::getStringValue(ptree const& tree, std::string const& path) const {
  ptree const* const node = find(tree, path);
  // ptree_bad_path adds " (<path>)" to the text itself, as ptree::get_child does.
  if (node == nullptr) {
    throw boost::property_tree::ptree_bad_path("No such node", ptree::path_type(path, '.'));
  }
  return node->data();
}

ptree NativeObjectService::getChild(ptree const& tree, std::string const& path) const {
  ptree const* const node = find(tree, path);
  return node == nullptr ? ptree() : *node;
}

void NativeObjectService::setSearchPath(std::vector<std::string> directories) {
  directories.erase(std::remove(directories.begin(), directories.end(), std::string()),
                    directories.end());
  std::unique_lock<std::shared_mutex> lock(searchPathMutex());
  searchPathDirectories() = std::move(directories);
}

std::vector<std::string> NativeObjectService::searchPath() {
  std::shared_lock<std::shared_mutex> lock(searchPathMutex());
  return searchPathDirectories();
}

}  // namespace platform
}  // namespace mvk
