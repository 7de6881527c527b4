// Platform descriptions: finding a platform's JSON text, and reading values out of its tree.
#ifndef PLATFORM_MVK_NATIVEOBJECTSERVICE_H_
#define PLATFORM_MVK_NATIVEOBJECTSERVICE_H_

#include <string>
#include <vector>

#include <boost/property_tree/ptree.hpp>

namespace mvk {
namespace platform {

// Callers make one on the spot with its default state; it holds nothing of its own. The only
// state is the process-wide search path, which the host sets once before serving and which
// every service then reads. Safe to use from many threads at once.
//
// A path for getStringValue and getChild is a list of keys joined by '.'. Each key selects the
// first child with that key; an empty key selects the first child with an empty key, which is
// the first element of a JSON array. So "hardwarePlatform.devices..core.name" is the core name
// of the first device. An empty path selects the tree itself. Keys cannot contain '.'.
class NativeObjectService {
 public:
  // The default state, the only one. Provided by us so that `NativeObjectService const service;`
  // compiles.
  NativeObjectService();

  // The description of `platform` as JSON text, exactly as stored (not parsed here). Tried in
  // order, the first readable regular file wins:
  //   1. `platform` itself, as a path (a relative one from the current directory);
  //   2. for each directory of the search path in order: `<dir>/<platform>.json`, then
  //      `<dir>/<platform>/platform.json`.
  // A candidate that is a directory, or that cannot be opened or read, is passed over.
  // Throws std::runtime_error naming the platform and every directory tried, or saying that
  // the search path is empty, when nothing is found; and for an empty `platform`.
  std::string getAsJsonStr(std::string const& platform) const;

  // The text at `path` in `tree`. An object or an array has no text of its own and gives "".
  // Throws boost::property_tree::ptree_bad_path (a std::runtime_error) with the text
  // "No such node (<path>)" when the path is not there.
  std::string getStringValue(boost::property_tree::ptree const& tree,
                             std::string const& path) const;

  // A copy of the subtree at `path` in `tree`; an empty tree when the path is not there.
  boost::property_tree::ptree getChild(boost::property_tree::ptree const& tree,
                                       std::string const& path) const;

  // Replaces the process-wide search path: the directories tried in order by getAsJsonStr.
  // Empty entries name no directory and are dropped; the others are kept as given.
  static void setSearchPath(std::vector<std::string> directories);
  // The search path as set (after dropping empty entries); empty until the host sets it.
  static std::vector<std::string> searchPath();
};

}  // namespace platform
}  // namespace mvk

#endif  // PLATFORM_MVK_NATIVEOBJECTSERVICE_H_
