#include "rtd/RtdKernelConfigure.h"

#include <boost/algorithm/string/trim.hpp>
#include <boost/filesystem.hpp>
#include <boost/shared_ptr.hpp>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <utility>

#include "host/qd/qdrepo/QDSRepo.h"
#include "platform/hco/HCOKernelXMLReader.h"
#include "platform/hut/HUTFile.h"
#include "platform/messages/ComMsgMgr.h"
#include "platform/messages/ComMsgMgrInstance.h"
#include "platform/ombro/OmbroCommonUtils.h"
#include "platform/scout/Kernel.h"

namespace IPA {
namespace {

namespace fs = boost::filesystem;
using OmbroCommonUtils::Kernel;

std::string const DS = HUTFile::getDirSeparator();
// The catalogue of the kernel tools' messages.
char const* const MESSAGE_LOOKUP_FILE = "mvk";

void trim(std::string& text) {
  boost::algorithm::trim_right(text);
  boost::algorithm::trim_left(text);
}

std::string printedInt(int value) {
  char text[16];
  std::snprintf(text, sizeof text, "%d", value);
  return text;
}

// The database that a kernel directory of the form <root>/int/o/<name>/<name> leads to,
// <root>/sys_link/_sysl/.cdb/qd_ip_db.xml, when it exists and is no directory; "" when the
// directory has another form or the file is not there.
std::string systemCompilerDatabaseFor(Kernel const& kernel) {
  fs::path const directory(kernel.directory);
  fs::path const name(kernel.name);
  if (directory.filename() != name) return "";
  fs::path const parent = directory.parent_path();
  if (parent.empty() || parent.filename() != name) return "";
  fs::path const output = parent.parent_path();
  if (output.empty() || output.filename() != "o") return "";
  fs::path const intermediate = output.parent_path();
  if (intermediate.empty() || intermediate.filename() != "int") return "";
  fs::path const database =
      intermediate.parent_path() / "sys_link" / "_sysl" / ".cdb" / "qd_ip_db.xml";
  fs::file_status const status = fs::status(database);
  if (!fs::exists(status) || fs::is_directory(status)) return "";
  return database.string();
}

}  // namespace

RtdKernelConfigure::RtdKernelConfigure(std::vector<std::string> const& instances,
                                       std::vector<std::string> const& options,
                                       std::vector<std::string> const& sources,
                                       std::string directory, bool isVerbose)
    : kernelInstances(instances),
      kernelOptions(options),
      kernelSources(sources),
      outputDirectory(std::move(directory)),
      verbose(isVerbose) {}

std::shared_ptr<std::vector<Kernel>> RtdKernelConfigure::execute(std::string const& kernelsFile) {
  auto kernels = std::make_shared<std::vector<Kernel>>();
  std::string errorText;
  if (!parseKernelsFile(kernelsFile, *kernels, errorText)) {
    // parseKernelsFile never fills the text, so the message always goes out with an empty
    // argument; the identifier alone tells the user that the kernels file was not read.
    ComMsgMgr::sendMessage(
        ComMsgMgrInstance(MESSAGE_LOOKUP_FILE, "@60-808@%s", kComMsgCriticalWarning, errorText));
    return kernels;
  }
  configureKernels(kernels);
  errorText.clear();
  if (!OmbroCommonUtils::collectKernelInsts(kernelInstances, {}, false, false, *kernels,
                                            errorText)) {
    ComMsgMgr::sendMessage(
        ComMsgMgrInstance(MESSAGE_LOOKUP_FILE, "@60-633@%s", kComMsgCriticalWarning, errorText));
  }
  return kernels;
}

bool RtdKernelConfigure::parseKernelsFile(std::string const& kernelsFile,
                                          std::vector<Kernel>& kernels, std::string& errorText) {
  (void)errorText;
  try {
    // A build without kernels has no kernels file: that is no error and says nothing.
    fs::path const path(kernelsFile);
    if (!fs::exists(path) || !fs::is_regular_file(path)) return true;
    std::ifstream in(kernelsFile);
    if (!in.is_open()) return true;
    std::string line;
    while (in.is_open()) {
      // The end of the file shows as a failed read, like a read error; both end the reading
      // with the same note to the user.
      if (!std::getline(in, line)) {
        in.close();
        ComMsgMgr::sendMessage(
            ComMsgMgrInstance(MESSAGE_LOOKUP_FILE, "@60-839@%s", kComMsgInfo, kernelsFile));
        return true;
      }
      trim(line);
      if (!line.empty() && line[0] == '#') continue;
      std::vector<std::string> fields = OmbroCommonUtils::doSplit(line, ',', false);
      for (std::string& field : fields) trim(field);
      if (fields.empty()) continue;
      Kernel kernel;
      kernel.name = fields[0];
      if (fields.size() >= 2) {
        kernel.type = scout::Kernel::getTypeFromString(fields[1]);
        if (kernel.type == -1) {
          // Kept with an unknown type: configureKernels gives it the default type.
          ComMsgMgr::sendMessage(ComMsgMgrInstance(MESSAGE_LOOKUP_FILE, "@60-842@%s",
                                                   kComMsgCriticalWarning, fields[1]));
        }
      }
      if (fields.size() >= 3) kernel.directory = fields[2];
      kernels.push_back(std::move(kernel));
    }
    return true;
  } catch (fs::filesystem_error const& error) {
    // The reason is not handed on: the caller's message says only that the file was not read.
    std::string const reason = error.what();
    (void)reason;
    return false;
  }
}

void RtdKernelConfigure::configureKernels(std::shared_ptr<std::vector<Kernel>>& kernels) {
  std::string databaseFile;
  for (Kernel& kernel : *kernels) {
    std::string const kernelXmlPath = kernel.directory + DS + "kernel.xml";
    if (kernel.type == -1) kernel.type = 0;
    if (HUTFile(kernelXmlPath).exists()) {
      HCOKernelXMLReader reader(kernelXmlPath);
      reader.parse();
      mvk::kernel::KernelDef const& definition = reader.getKernelDef();
      kernel.ports = definition.getPorts();
      kernel.args = definition.getArgs();
      continue;
    }
    // The first database found serves every kernel; a later kernel that would lead to another
    // one is not looked at.
    if (databaseFile.empty()) databaseFile = systemCompilerDatabaseFor(kernel);
  }
  if (!databaseFile.empty()) readKernelsFromSystemCompilerDB(databaseFile, kernels);
}

void RtdKernelConfigure::readKernelsFromSystemCompilerDB(
    std::string const& databaseFile, std::shared_ptr<std::vector<Kernel>>& kernels) {
  // The two texts below are composed and dropped on purpose, never sent: the database is a
  // fallback, and a database or function that is missing must not reach the user as a warning.
  boost::shared_ptr<qd::QDSRepo> const repo = qd::QDSRepo::createRepo(databaseFile, 0);
  if (!repo) {
    ComMsgMgrInstance(MESSAGE_LOOKUP_FILE, "Failed to read in system compiler database %s",
                      kComMsgCriticalWarning, databaseFile);
    return;
  }
  // Every kernel is looked up, also those that got ports and arguments from their kernel.xml:
  // theirs are then appended behind those, and stand twice.
  for (Kernel& kernel : *kernels) {
    std::string const& name = kernel.name;
    if (!repo->isQdHwFcn(name)) {
      ComMsgMgrInstance(MESSAGE_LOOKUP_FILE,
                        "Could not find function in database file %s for kernel %s", kComMsgWarning,
                        databaseFile, name);
      continue;
    }
    kernel.repoKernel = 1;
    for (int i = 0; i < repo->getNumQdHwFcnArgs1(name); ++i) {
      std::string const argName = repo->getIthQdHwFcnArg1(name, i);
      mvk::kernel::ArgDesc arg;
      arg.name = repo->getIthQdHwFcnArgHwName1(name, i);
      arg.id = printedInt(i);
      arg.port = repo->getIthQdHwFcnArgBusInterfaceRef1(name, i);
      arg.size = printedInt(repo->getIthQdHwFcnArgDataWidth1(name, i));
      arg.offset = repo->getIthQdHwFcnArgOffset(name, i);
      arg.portInterfaceType = repo->getIthQdHwFcnArgPortInterfaceType1(name, i);
      arg.argName = argName;
      kernel.args.push_back(std::move(arg));
    }
    std::string const component = repo->getQdHwFcnQdComponentRef(name);
    for (int j = 0; j < repo->getQdCompNumPorts(component); ++j) {
      mvk::kernel::PortDesc port;
      port.name = repo->getQdCompPortName(component, j);
      port.mode = repo->getQdCompPortMode(component, port.name);
      std::int32_t const width = repo->getQdCompPortDataWidth(component, port.name);
      if (width > 0) port.dataWidth = width;
      port.portType = repo->getQdCompPortType(component, j);
      kernel.ports.push_back(std::move(port));
    }
  }
}

}  // namespace IPA
