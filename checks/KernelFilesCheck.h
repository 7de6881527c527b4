// The strict readers of the three files in a kernel's directory: kernel.xml,
// <name>.design.xml and kernel.json (docs/formats.md, the sections after "The kernels file").
#ifndef CHECKS_KERNELFILESCHECK_H_
#define CHECKS_KERNELFILESCHECK_H_

#include <string>

#include "checks/CheckReport.h"

namespace qvcheck {

// Findings with the codes QV-KERNELXML-..., QV-DESIGNXML-... and QV-KERNELJSON-... of
// docs/check.md. Each function reads one existing file and never throws for a bad one.
class KernelFilesCheck {
 public:
  // kernel.xml: errors for what ends the import (not well-formed, another root, an element
  // other than <port> and <arg>, a dataWidth or addressKind out of its range); a warning for an
  // attribute the reader does not know.
  static void checkKernelXml(std::string const& path, CheckReport& report);

  // <name>.design.xml: errors for what ends the import (not well-formed, another root, an
  // element out of its place, a count that is no unsigned number, a group without the module
  // at its own position); a warning for each estimate a record lacks, with its message id.
  static void checkDesignXml(std::string const& path, CheckReport& report);

  // kernel.json: a warning when it is not JSON (the kernel gets no clock); errors when
  // ClockInfo.ClockName or ClockInfo.ClockPeriod is missing or the period is no number; a
  // warning for a period of zero (an infinite frequency).
  static void checkKernelJson(std::string const& path, CheckReport& report);
};

}  // namespace qvcheck

#endif  // CHECKS_KERNELFILESCHECK_H_
