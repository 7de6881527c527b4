// One argument of a kernel, as a kernel description gives it.
#ifndef PLATFORM_MVK_ARGDESC_H_
#define PLATFORM_MVK_ARGDESC_H_

#include <cstdint>
#include <string>

namespace mvk {
namespace kernel {

// A plain record; every field may be empty. The fields stand in the order in which kernel
// descriptions list them (see "kernel.xml" in docs/formats.md, where each has the attribute of
// its name).
struct ArgDesc {
  // The argument's name in the hardware (the register or interface it lands on).
  std::string name;
  // How the host addresses the argument: 0 for a scalar, 1 for a pointer to global memory, other
  // values as the kernel's tool chain defines them.
  std::uint32_t addressKind = 0;
  // The argument's position among the kernel's arguments, as text ("0", "1", ...).
  std::string id;
  // The kernel port through which the argument is reached.
  std::string port;
  // The argument's size or data width, as text.
  std::string size;
  // The argument's offset in the control register space, as text ("0x10").
  std::string offset;
  // Two texts that the tool chain attaches to the argument; the diagram carries them unread.
  std::string detailA;
  std::string detailB;
  // The kind of interface the argument uses ("aximm", "axis", "register", ...).
  std::string portInterfaceType;
  // The argument's C type as written in the kernel's source ("int*", "unsigned int").
  std::string type;
  // The argument's name in the kernel's source.
  std::string argName;
  // The size of the argument on the host side, as text.
  std::string hostSize;
};

}  // namespace kernel
}  // namespace mvk

#endif  // PLATFORM_MVK_ARGDESC_H_
