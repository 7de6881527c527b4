// One port of a kernel, as a kernel description gives it.
#ifndef PLATFORM_MVK_PORTDESC_H_
#define PLATFORM_MVK_PORTDESC_H_

#include <cstdint>
#include <string>

namespace mvk {
namespace kernel {

// A plain record; every text may be empty. The fields stand in the order in which kernel
// descriptions list them (see "kernel.xml" in docs/formats.md).
struct PortDesc {
  // The port's name ("m_axi_gmem", "s_axi_control").
  std::string name;
  // "master" or "slave".
  std::string mode;
  // A text that the tool chain attaches to the port; the diagram carries it unread.
  std::string detailA;
  // The data width in bits; 0 when not given.
  std::int32_t dataWidth = 0;
  // The kind of port ("addressable", "stream", ...).
  std::string portType;
  // A second text that the tool chain attaches to the port.
  std::string detailB;
};

}  // namespace kernel
}  // namespace mvk

#endif  // PLATFORM_MVK_PORTDESC_H_
