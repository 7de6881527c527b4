// Fuzz target: the run-time data file, as the import and the update after implementation read it.
//
// The bytes are the file. They go through the reader (RtdTreeBuilder::deSerialize and build), then
// the import's walk (RtdSystemDiagramVisitor::visit, on the example platform so that everything
// after the version check runs), then the update after implementation on the diagram just made
// (RtdTreeSlrBaseAddressVisitor), then the dump of the tree (RtdTestVisitor) and the writer of the
// diagram. What the reader and the walk document as the refusal of a bad file is caught; anything
// else, or a crash, a leak or undefined behaviour, is a finding.
#include <boost/property_tree/exceptions.hpp>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <sstream>
#include <stdexcept>
#include <string>

#include "diagram/ProfileAnalyzerSystemDiagram.h"
#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "fuzz/FuzzSupport.h"
#include "rtd/RtdSystemDiagramVisitor.h"
#include "rtd/RtdTestVisitor.h"
#include "rtd/RtdTreeBuilder.h"
#include "rtd/RtdTreeSlrBaseAddressVisitor.h"

namespace {

// The platform is always the example one, given by its path: the import keeps one text per
// platform name for the life of the process, so one name keeps that cache at one entry.
std::string const& platformPath() {
  static std::string const path = qvfuzz::exampleFile("platforms/qv_accel_h2_gen3x16.json");
  return path;
}

}  // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***) {
  qvfuzz::quiet();
  return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size) {
  std::istringstream in(std::string(reinterpret_cast<char const*>(data), size));
  IPA::RtdTreeBuilder reader;
  try {
    reader.deSerialize(in);
  } catch (boost::property_tree::ptree_error const&) {
    // Not JSON (json_parser_error), or a version member, a count or a list missing
    // (ptree_bad_path): the documented refusals.
    return 0;
  }
  std::shared_ptr<IPA::RtdTree> const tree = reader.build();

  auto const root = std::make_shared<ProfileAnalyzerSystemDiagramSerializable::outerContainer>();
  IPA::ProfileAnalyzerSystemDiagramBuilder builder(root);
  IPA::RtdSystemDiagramVisitor import(builder, platformPath(), "qvcc", "2026.2", "5120",
                                      "Sat Nov 21 12:00:00 2026", "detail a", "detail b", true,
                                      "kernels.xml", "vadd.qrxbin", "");
  try {
    import.visit(*tree);
  } catch (std::runtime_error const&) {
    // An unsupported schema version; the platform itself is good, so nothing else may refuse.
    return 0;
  }
  IPA::ProfileAnalyzerSystemDiagram diagram(root);

  IPA::RtdTreeSlrBaseAddressVisitor update(diagram);
  update.visit(*tree);

  std::ostringstream dump;
  IPA::RtdTestVisitor printer(dump);
  try {
    printer.visit(*tree);
  } catch (std::invalid_argument const&) {
    // A section the reader left out (its count zero or unreadable) has no dump.
  }

  std::ostringstream written;
  diagram.serializeToJson(written);
  return 0;
}
