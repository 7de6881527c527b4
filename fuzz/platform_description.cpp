// Fuzz target: the platform description, as the import walks it.
//
// The bytes are the platform's JSON file. The platform service fetches it by path
// (NativeObjectService::getAsJsonStr), and the import walks it together with the example
// design's run-time data file (RtdSystemDiagramVisitor::visitWithPlatformText: the same walk as
// visit, without the process-wide cache of platform texts, which would keep one entry per input).
// The diagram made is then written and given its flow report, as a session would go on.
#include <boost/property_tree/exceptions.hpp>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "fuzz/FuzzSupport.h"
#include "platform/mvk/NativeObjectService.h"
#include "rtd/RtdSystemDiagramVisitor.h"
#include "rtd/RtdTreeBuilder.h"

namespace {

// The example design, read once: the walk does not change the tree.
IPA::RtdTree& designTree() {
  static std::shared_ptr<IPA::RtdTree> const tree = [] {
    std::istringstream in(qvfuzz::readFile(qvfuzz::exampleFile("design/vector_pipeline.rtd.json")));
    IPA::RtdTreeBuilder reader;
    reader.deSerialize(in);
    return reader.build();
  }();
  return *tree;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  designTree();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::string const path = qvfuzz::writeScratchFile(data, size);
  std::string const text = mvk::platform::NativeObjectService().getAsJsonStr(path);

  auto const root = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
  IPA::RtdSystemDiagramVisitor import(builder, path, "qvcc", "2026.2", "5120",
                                      "Sat Nov 21 12:00:00 2026", "detail a", "detail b", true,
                                      "kernels.xml", "vadd.qrxbin", "");
  try {
    import.visitWithPlatformText(designTree(), text);
  } catch (boost::property_tree::ptree_error const&) {
    // Not JSON (json_parser_error), or the first device has no core name or type
    // (ptree_bad_path): the documented refusals. Every other gap only warns.
    return 0;
  }
  IPA::ProfileAnalyzerSystemDiagram diagram(root);
  std::ostringstream written;
  diagram.serializeToJson(written);
  std::ofstream report("/dev/null");
  try {
    diagram.writeFlowReport(report);
  } catch (std::exception const&) {
    // Clock numbers that are no numbers: the report documents stoi's and stof's exceptions.
  }
  return 0;
}
