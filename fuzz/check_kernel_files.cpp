// Fuzz target: the strict readers of a kernel's files (checks/KernelFilesCheck): the same bytes
// as kernel.xml, as a synthesis report and as kernel.json, and the kernels file's check
// (checks/KernelsCheck) on them too.
//
// The checks read from a path, so the bytes go to a scratch file first. They must not crash,
// leak or run into undefined behaviour. Each reader is also held against the library's: when
// HCOKernelXMLReader or HCODesignXMLReader refuses the file, its check must have an error.
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "checks/CheckReport.h"
#include "checks/KernelFilesCheck.h"
#include "checks/KernelsCheck.h"
#include "fuzz/FuzzSupport.h"
#include "platform/hco/HCODesignXMLReader.h"
#include "platform/hco/HCOKernelXMLReader.h"

namespace {

template <class Reader>
void agree(std::string const& path, qvcheck::CheckReport const& report, char const* what) {
  try {
    Reader reader(path);
    reader.parse();
  } catch (std::exception const& error) {
    if (report.count(qvcheck::Severity::kError) > 0) return;
    std::fprintf(stderr, "the library refuses this %s (%s) but the check has no error\n", what,
                 error.what());
    std::abort();
  }
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const path = qvfuzz::writeScratchFile(data, size);
  qvcheck::CheckReport kernelXml;
  qvcheck::KernelFilesCheck::checkKernelXml(path, kernelXml);
  agree<HCOKernelXMLReader>(path, kernelXml, "kernel.xml");
  qvcheck::CheckReport designXml;
  qvcheck::KernelFilesCheck::checkDesignXml(path, designXml);
  agree<HCODesignXMLReader>(path, designXml, "synthesis report");
  qvcheck::CheckReport rest;
  qvcheck::KernelFilesCheck::checkKernelJson(path, rest);
  qvcheck::KernelsCheck::checkFile(path, true, rest);
  return 0;
}
