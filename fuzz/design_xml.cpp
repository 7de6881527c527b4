// Fuzz target: a kernel's synthesis report, "<name>.design.xml", as the import reads it.
//
// The bytes are the report of a kernel "k".
// RtdSystemDiagramVisitor::populateKernelEstimatedResources reads it with HCODesignXMLReader and
// walks its modules and resource lists by position, each value under its own guard; a report that
// does not read throws std::runtime_error and ends that import. The kernel section made is then
// written out, as a session would go on.
#include <boost/filesystem.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinKernelBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "fuzz/FuzzSupport.h"
#include "platform/lmx60/lmx_exception.h"
#include "platform/ombro/Kernel.h"
#include "rtd/RtdSystemDiagramVisitor.h"

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  // The report must be "<directory>/k.design.xml": the scratch file is copied beside itself.
  boost::filesystem::path const scratch(qvfuzz::writeScratchFile(data, size));
  boost::filesystem::path const report = scratch.parent_path() / "k.design.xml";
  boost::filesystem::copy_file(scratch, report,
                               boost::filesystem::copy_option::overwrite_if_exists);
  OmbroCommonUtils::Kernel kernel;
  kernel.name = "k";
  kernel.directory = scratch.parent_path().string();

  auto const root = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
  IPA::RtdSystemDiagramVisitor visitor(builder, "unused", "gen", "1.0", "cl", "ts", "a", "b", false,
                                       "kernels.txt", "label", "");
  auto const region =
      std::make_shared<IPA::QrxBinUserRegionBuilder>(*builder.getQrxBinBuilder(), root);
  auto const target = std::make_shared<IPA::QrxBinKernelBuilder>(region);
  try {
    visitor.populateKernelEstimatedResources(target, kernel);
  } catch (std::runtime_error const&) {
    return 0;  // a report that does not read: the import ends, as documented
  } catch (lmx60::lmx_exception const&) {
    return 0;  // a group without a module at its own position: the import ends, as documented
  }
  IPA::ProfileAnalyzerSystemDiagram diagram(root);
  std::ostringstream written;
  diagram.serializeToJson(written);
  return 0;
}
