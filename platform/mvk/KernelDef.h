// What a kernel's own description ("kernel.xml") says of it.
#ifndef PLATFORM_MVK_KERNELDEF_H_
#define PLATFORM_MVK_KERNELDEF_H_

#include <string>
#include <utility>
#include <vector>

#include "platform/mvk/ArgDesc.h"
#include "platform/mvk/PortDesc.h"

namespace mvk {
namespace kernel {

// A kernel's name with its ports and arguments, in the order of its description.
class KernelDef {
 public:
  std::string const& getName() const { return name; }
  std::vector<PortDesc> const& getPorts() const { return ports; }
  std::vector<ArgDesc> const& getArgs() const { return args; }

  void setName(std::string value) { name = std::move(value); }
  void addPort(PortDesc port) { ports.push_back(std::move(port)); }
  void addArg(ArgDesc arg) { args.push_back(std::move(arg)); }

 private:
  std::string name;
  std::vector<PortDesc> ports;
  std::vector<ArgDesc> args;
};

}  // namespace kernel
}  // namespace mvk

#endif  // PLATFORM_MVK_KERNELDEF_H_
