// Turns the kernels file of a build into kernel records with their ports and arguments.
#ifndef RTD_RTDKERNELCONFIGURE_H_
#define RTD_RTDKERNELCONFIGURE_H_

#include <memory>
#include <string>
#include <vector>

#include "platform/ombro/Kernel.h"

namespace IPA {

// A short-lived object: make it, call execute once, drop it. Kernel information comes from
// three places, in this order: the kernels file gives each kernel's name, type and directory;
// the kernel's own "kernel.xml" in that directory gives its ports and arguments; and for
// kernels without one, the system compiler database "sys_link/_sysl/.cdb/qd_ip_db.xml" found by
// climbing from such a kernel's directory gives them instead. The formats are in
// docs/formats.md ("The kernels file", "Kernel descriptions").
//
// Problems of the kernels file are messages of the "mvk" catalogue, not failures; a
// "kernel.xml" that does not read, and exceptions of the repository, leave execute as
// exceptions.
class RtdKernelConfigure {
 public:
  // All references must outlive the object. Only `kernelInstances` is read: it goes to
  // OmbroCommonUtils::collectKernelInsts. The other four are carried for callers that pass the
  // rest of a link's kernel options along, and are never read.
  RtdKernelConfigure(std::vector<std::string> const& kernelInstances,
                     std::vector<std::string> const& kernelOptions,
                     std::vector<std::string> const& kernelSources, std::string outputDirectory,
                     bool verbose);

  // The kernels of `kernelsFile` in file order, each with its ports and arguments and the
  // instances of the instance list. Never null. A missing kernels file gives an empty list and
  // no message. Sends "@60-808@%s" (CRITICAL WARNING) and returns the records read so far when
  // the file's status cannot be taken, and "@60-633@%s" (CRITICAL WARNING) when the instances
  // cannot be collected; the list is returned either way.
  std::shared_ptr<std::vector<OmbroCommonUtils::Kernel>> execute(std::string const& kernelsFile);

  // Appends one record per kernel line of `kernelsFile` ("<name>[,<type>[,<directory>]]",
  // trimmed; lines starting with "#" are comments). True also for a file that is missing, not a
  // regular file or cannot be opened (nothing appended). Once the file has been read to its end
  // (or a read fails) sends "@60-839@%s" (INFO) with the path. A type word that
  // scout::Kernel::getTypeFromString does not know sends "@60-842@%s" (CRITICAL WARNING) with the
  // word, and the record keeps type -1. False only when the file's status cannot be taken
  // (a boost::filesystem::filesystem_error); `errorText` is never written.
  bool parseKernelsFile(std::string const& kernelsFile,
                        std::vector<OmbroCommonUtils::Kernel>& kernels, std::string& errorText);

  // Gives every kernel its ports and arguments: from "<directory>/kernel.xml" where that exists
  // (replacing what the record had), else from the system compiler database that the first
  // kernel directory of the form ".../int/o/<name>/<name>" leads to. A type of -1 becomes 0.
  void configureKernels(std::shared_ptr<std::vector<OmbroCommonUtils::Kernel>>& kernels);

  // Appends to every kernel that `databaseFile` describes as a hardware function its
  // arguments and its component's ports, and sets its repoKernel to 1; also to kernels that
  // already have a "kernel.xml". A database that cannot be read, and a kernel that it does not
  // describe, change nothing and are not reported.
  void readKernelsFromSystemCompilerDB(
      std::string const& databaseFile,
      std::shared_ptr<std::vector<OmbroCommonUtils::Kernel>>& kernels);

  // Names that the tool chain's kernel tools share with this unit; nothing here reads them.
  static constexpr char const* HBM_MEMORY_SUBSYSTEM = "hbm_memory_subsystem";
  static constexpr char const* loadPlatformWorkerId = "PlatformWorker";
  static constexpr char const* initMessageManagerWorkerId = "MessageManagerWorker";
  static constexpr char const* loadBuildConfigWorkerId = "BuildConfigWorker";
  static constexpr char const* loadClBinaryWorkerId = "ClBinaryWorker";
  static constexpr char const* loadGuidanceClientWorkerId = "GuidanceClientWorker";
  static constexpr char const* connectToDispatchServiceWorkerId = "DispatchServiceWorker";

 private:
  // Only the instances are read; the rest is carried for callers that pass a link's kernel
  // options along, which is what the attribute tells the compiler.
  std::vector<std::string> const& kernelInstances;
  [[maybe_unused]] std::vector<std::string> const& kernelOptions;
  [[maybe_unused]] std::vector<std::string> const& kernelSources;
  std::string outputDirectory;
  [[maybe_unused]] bool verbose;
};

}  // namespace IPA

#endif  // RTD_RTDKERNELCONFIGURE_H_
