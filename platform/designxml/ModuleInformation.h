// A group of modules in a high-level synthesis report.
#ifndef PLATFORM_DESIGNXML_MODULEINFORMATION_H_
#define PLATFORM_DESIGNXML_MODULEINFORMATION_H_

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "platform/designxml/Module.h"
#include "platform/lmx60/lmx_exception.h"

namespace DesignXML {

// The modules of one <moduleInformation> element, in document order.
class ModuleInformation {
 public:
  std::size_t NumModules() const { return modules.size(); }

  // The module at `index`; throws lmx60::lmx_exception when the group has no such module.
  Module const& GetModule(unsigned long index) const {
    if (index >= modules.size()) {
      throw lmx60::lmx_exception("module index " + std::to_string(index) + " is beyond the " +
                                 std::to_string(modules.size()) + " modules of the group");
    }
    return modules[index];
  }

  void AppendModule(Module module) { modules.push_back(std::move(module)); }

 private:
  std::vector<Module> modules;
};

}  // namespace DesignXML

#endif  // PLATFORM_DESIGNXML_MODULEINFORMATION_H_
