// Kernel pipe queries: the pipe and connection children of an OpenCL kernel's qd:fcnMap. Those
// two elements and their attributes are written without a namespace, so the expressions name
// them bare.
#include <string>

#include "host/qd/qdrepo/QDSRepo.h"

namespace qd {
namespace {

std::string kernelMap(std::string const& kernel) {
  return "/qd:repository/qd:fcnMap[@qd:fcnName='" + kernel + "']";
}

// A warning, not a refusal: the query goes on and finds nothing for a name that is no function.
void warnIfNoKernel(QDSRepo& repo, std::string const& kernel, int number) {
  if (!repo.isQdHwFcn(kernel)) Log(logWARNING, number) << kernel << " is not an OpenCL kernel";
}

}  // namespace

int QDSRepo::getNumPipesForKernel(std::string const& kernel) {
  warnIfNoKernel(*this, kernel, 10120);
  return intQuery("count(" + kernelMap(kernel) + "/pipe)", "getNumPipesForKernel ");
}

int QDSRepo::getNumPipeConnectionsForKernel(std::string const& kernel) {
  warnIfNoKernel(*this, kernel, 10120);
  return intQuery("count(" + kernelMap(kernel) + "/connection)", "getNumPipeConnectionsForKernel ");
}

boost::shared_ptr<oclPipe> QDSRepo::getIthPipeForKernel(int i, std::string const& kernel) {
  warnIfNoKernel(*this, kernel, 10121);
  std::string const pipe = kernelMap(kernel) + "/pipe[" + std::to_string(static_cast<long long>(i) + 1) + "]/@";
  auto const read = [&](char const* attribute) {
    return stringQuery(pipe + attribute, "getIthPipeForKernel ");
  };
  boost::shared_ptr<oclPipe> record(new oclPipe());
  record->name = read("name");
  record->depth = oclPipe::numberOf(read("depth"));
  record->width = oclPipe::numberOf(read("width"));
  record->linkage = oclPipe::linkageOf(read("linkage"));
  return record;
}

boost::shared_ptr<oclPipeConnection> QDSRepo::getIthPipeConnectionForKernel(
    int i, std::string const& kernel) {
  warnIfNoKernel(*this, kernel, 10121);
  std::string const connection = kernelMap(kernel) + "/connection[" + std::to_string(static_cast<long long>(i) + 1) + "]/@";
  auto const read = [&](char const* attribute) {
    return stringQuery(connection + attribute, "getIthPipeConnectionForKernel ");
  };
  boost::shared_ptr<oclPipeConnection> record(new oclPipeConnection());
  record->srcInst = read("srcInst");
  record->srcPort = read("srcPort");
  record->dstInst = read("dstInst");
  record->dstPort = read("dstPort");
  record->srcType = oclPipeConnection::endTypeOf(read("srcType"));
  record->dstType = oclPipeConnection::endTypeOf(read("dstType"));
  return record;
}

bool QDSRepo::isKernelPipe(std::string const& pipe) {
  return booleanQuery("boolean(/qd:repository/qd:fcnMap/pipe[@name='" + pipe + "'])",
                      "isKernelPipe");
}

int QDSRepo::getKernelPipeClockId(std::string const& pipe) {
  if (!isKernelPipe(pipe)) return -1;
  return intQuery("number(/qd:repository/qd:fcnMap[pipe/@name='" + pipe + "'][1]/@qd:clockId)",
                  "getKernelPipeClockId ");
}

bool QDSRepo::isArgPipeConnection(std::string const& kernel, std::string const& argument) {
  return booleanQuery("boolean(" + kernelMap(kernel) +
                          "/connection[@srcType='kernel' and @srcPort='" + argument + "'])",
                      "isArgPipeConnection") ||
         booleanQuery("boolean(" + kernelMap(kernel) +
                          "/connection[@dstType='kernel' and @dstPort='" + argument + "'])",
                      "isArgPipeConnection");
}

bool QDSRepo::isBusIfPipeConnection(std::string const& kernel, std::string const& interface) {
  // The argument is looked up in any function, by a qd:busInterfaceRef child element (no "@"):
  // kept as this lookup has always been written, although the files carry an attribute there.
  std::string const argument =
      "/qd:repository/qd:fcnMap/qd:arg[qd:busInterfaceRef='" + interface + "'][1]/@qd:name";
  if (!booleanQuery("boolean(" + argument + ")", "isBusIfPipeConnection")) return false;
  return isArgPipeConnection(kernel, stringQuery(argument, "isBusIfPipeConnection"));
}

}  // namespace qd
