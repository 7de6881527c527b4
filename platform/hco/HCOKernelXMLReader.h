// The reader of a kernel's own description, "kernel.xml".
#ifndef PLATFORM_HCO_HCOKERNELXMLREADER_H_
#define PLATFORM_HCO_HCOKERNELXMLREADER_H_

#include <string>

#include "platform/mvk/KernelDef.h"

// Reads one "kernel.xml" (format: "Kernel descriptions" in docs/formats.md) into a
// mvk::kernel::KernelDef. Make it on a path, call parse() once, then getKernelDef().
class HCOKernelXMLReader {
 public:
  explicit HCOKernelXMLReader(std::string path);

  // Reads the file. Throws std::runtime_error naming the file, and the line where there is one,
  // for a file that cannot be read, is not well-formed XML, has another root than <kernel>, has
  // an element other than <port> and <arg> under it, or a number that does not read
  // ("<path>:<line>: ..."). On failure the definition stays empty.
  void parse();

  // The definition read by parse(); empty before it.
  mvk::kernel::KernelDef const& getKernelDef() const { return kernelDef; }

 private:
  std::string path;
  mvk::kernel::KernelDef kernelDef;
};

#endif  // PLATFORM_HCO_HCOKERNELXMLREADER_H_
