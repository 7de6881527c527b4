// The strict reader of a kernels file and of the files each kernel's directory holds, as the
// import's kernel configuration (rtd/RtdKernelConfigure) and kernel walk read them.
#ifndef CHECKS_KERNELSCHECK_H_
#define CHECKS_KERNELSCHECK_H_

#include <string>

#include "checks/CheckReport.h"

namespace qvcheck {

// Findings with the codes QV-KERNELS-... of docs/check.md, then those of KernelFilesCheck for
// each kernel's kernel.xml, <name>.design.xml and kernel.json:
//
//   warning  a kernels file named on the command line that does not exist; an unknown type word
//            (CRITICAL WARNING 60-842, the kernel kept as hls); an empty name; a kernel without
//            a directory or whose directory is missing; a kernel without a synthesis report
//            (82-214) or without kernel.json (no clock); a kernel without kernel.xml whose
//            directory does not lead to a system compiler database (no ports or arguments)
//   note     the default kernels file is absent (the design has no kernels from it)
//
// Relative directories are taken from the working directory, as the import takes them.
class KernelsCheck {
 public:
  // `explicitlyNamed`: the file was given on the command line rather than defaulted.
  static void checkFile(std::string const& path, bool explicitlyNamed, CheckReport& report);
};

}  // namespace qvcheck

#endif  // CHECKS_KERNELSCHECK_H_
