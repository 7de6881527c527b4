// Walks a run-time data tree and fills a new diagram from it and from the platform description.
#ifndef RTD_RTDSYSTEMDIAGRAMVISITOR_H_
#define RTD_RTDSYSTEMDIAGRAMVISITOR_H_

#include <boost/property_tree/ptree.hpp>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

#include "diagram/ProfileAnalyzerSystemDiagramBuilder.h"
#include "diagram/QrxBinAvailableResourceBuilder.h"
#include "diagram/QrxBinGeneratedByBuilder.h"
#include "diagram/QrxBinKernelBuilder.h"
#include "diagram/QrxBinUserRegionBuilder.h"
#include "diagram/QsaBuilder.h"
#include "platform/ombro/Kernel.h"
#include "rtd/RtdConnection.h"
#include "rtd/RtdMemData.h"
#include "rtd/RtdTree.h"
#include "rtd/RtdTreeVisitor.h"

namespace IPA {

// The import of one run-time data file: a stack object made for one visit and dropped with it.
// It joins three sources that the tree alone does not have: the platform description (asked of
// mvk::platform::NativeObjectService by name, once per name and process), the kernels file, and
// the strings of the request, which it copies into the diagram unread.
//
// Problems in optional parts of the platform description do not stop the import: each guarded
// read sends a WARNING of the "morvane" catalogue and leaves its field empty. Everything that is
// not guarded (an unsupported schema version, a platform that cannot be found or does not parse,
// a first device without a core name or type) leaves visit as an exception, and the diagram
// under construction is then to be thrown away by the caller.
class RtdSystemDiagramVisitor : public RtdTreeVisitor {
 public:
  // `builder` must outlive the visitor; every string is copied.
  RtdSystemDiagramVisitor(ProfileAnalyzerSystemDiagramBuilder& builder, std::string platform,
                          std::string generatedName, std::string generatedVersion,
                          std::string generatedChangeList, std::string generatedTimestamp,
                          std::string generatedDetailA, std::string generatedDetailB,
                          bool generatedFlag, std::string kernelsFile, std::string binaryLabel,
                          std::string binaryNote);

  // Fills the diagram in this order, which is also the order of its repeated fields and of the
  // first failure: the schema version check, the platform section, the memories, the tool run
  // that generated the binary, the user region, its compute units, its connections, the kernels,
  // the region's resource totals and its resources per SLR.
  void visit(RtdTree& tree) override;
  // The same walk with the platform's JSON text given by the caller instead of fetched through
  // the process-wide cache: for a caller that holds the text already and must not leave one
  // cache entry behind per text, like the fuzz target of platform descriptions. The schema
  // version is still checked first, and bad JSON throws json_parser_error as in visit.
  void visitWithPlatformText(RtdTree& tree, std::string const& platformText);

  // Returns when the tree's version is supported; otherwise throws std::runtime_error
  // "Unsupported rtd file schema.  The supported schema is: <x.y.z>.  The version found is
  // <major>.<minor>.<patch>.\n". Runs before anything is asked of the platform.
  void checkRtdSchemaVersion(RtdTree const& tree) const;

  // The JSON text of the platform. Fetched from the platform service on the first call for a
  // given platform name in this process and kept for the life of the library: later imports
  // with the same name get the same text, even if the platform changed underneath, good or bad.
  // The cache has no lock; see docs/architecture.md.
  std::string platformValues() const;
  // The platform's text, parsed afresh on each call. Throws json_parser_error for bad JSON.
  boost::property_tree::ptree platformPropertyTree() const;

  // "compute_unit" when `memoryIndex` names an entry of `memData` whose type is
  // "MEM_STREAMING_CONNECTION" (one half of a link between two compute units), "memory" for any
  // other entry and for an index beyond the list.
  static std::string connectionTypeForMemoryIndex(std::vector<RtdMemData> const& memData,
                                                  unsigned long memoryIndex);

  // Fills `slrTags` from the address segments of "hardwarePlatform.busInterfaces": the tag
  // "<spTag>[<index>]" of every segment with a non-empty "slr" and an "index" of 0 or more, to
  // that SLR; a later segment with the same tag wins. Other segments add nothing.
  void makeSlrTagCollection(std::unordered_map<std::string, std::string>& slrTags,
                            boost::property_tree::ptree const& platformTree) const;

  // The top level of `qsa`: vendor, board id, name, versions, description and design intents,
  // seven reads each guarded by its own message. Returns the section's builder.
  std::shared_ptr<QsaBuilder> generateAndPopulateQsaBuilder(
      boost::property_tree::ptree const& platformTree);
  // `qsa.generated_by`: four guarded reads.
  void populateQsaGeneratedByBuilder(std::shared_ptr<QsaBuilder> qsaBuilder,
                                     boost::property_tree::ptree const& platformTree);
  // `qsa.board`: four guarded reads.
  void populateQsaBoardBuilder(std::shared_ptr<QsaBuilder> qsaBuilder,
                               boost::property_tree::ptree const& platformTree);
  // `qsa.available_resources` from the resource records: a resource word in any member's value,
  // then its number in a later member "count", possibly in a later record; a later count for
  // the same word wins. Sets all five fields, empty for a word that never got a count.
  void populateQsaAvailableResourcesBuilder(std::shared_ptr<QsaBuilder> qsaBuilder,
                                            boost::property_tree::ptree const& platformTree);
  // `qsa.clocks` from "hardwarePlatform.systemClocks"; records of the same name merge into one
  // clock, the later record winning field by field (a missing member writes its default).
  void populateQsaSystemClocks(std::shared_ptr<QsaBuilder> qsaBuilder,
                               boost::property_tree::ptree const& platformTree);

  // `qrxbin.generated_by` from the request's strings: eight statements, each guarded by its own
  // message (the last sets label_copy, label and note together).
  void populateQrxBinGeneratedByBuider(std::shared_ptr<QrxBinGeneratedByBuilder> generatedBy);

  // `kernels` of the user region: one kernel per kernel of the kernels file (read through
  // RtdKernelConfigure), in its order, with its arguments and ports, its estimate and its clock.
  // Nothing when the kernels file gives no kernel.
  void populateKernelInfo(std::shared_ptr<QrxBinUserRegionBuilder> userRegion);
  // The kernel's estimate from "<directory>/<name>.design.xml": "@82-214@%s" with the path when
  // the report is not there. Every resource record writes its own position's value of each list
  // (the first record its first values, the second its second), each of the five under its own
  // guard ("@82-159@" LUT, "@82-157@" BRAM, "@82-3568@" URAM, "@82-158@" DSP, "@82-160@"
  // registers); the last value that reads wins. A report that does not read ends the import
  // (std::runtime_error), and so does a module group without a module at its own position
  // (lmx60::lmx_exception from GetModule).
  void populateKernelEstimatedResources(std::shared_ptr<QrxBinKernelBuilder> kernelBuilder,
                                        OmbroCommonUtils::Kernel const& kernel);
  // One clock of the kernel from "<directory>/kernel.json": its "ClockInfo.ClockName" and the
  // frequency in MHz of its "ClockInfo.ClockPeriod" in ns. A missing file, or one that is not
  // JSON, adds nothing and says nothing; a file without those keys, or with a period that is not
  // a number, ends the import (boost::property_tree::ptree_bad_path or ptree_bad_data naming
  // the file).
  void populateKernelClockRefs(std::shared_ptr<QrxBinKernelBuilder> kernelBuilder,
                               OmbroCommonUtils::Kernel const& kernel);

  // The user region's totals from the first device's core, read in the order uram, lut, reg,
  // bram, dsp (uram is set after bram). The first read that throws ends the block with one
  // message; what was set before stays.
  void populateUserRegionAvailableResources(
      boost::property_tree::ptree const& platformTree,
      std::shared_ptr<QrxBinAvailableResourceBuilder> availableResources);

 private:
  // Steps 2 to 12 of visit, from the platform's text.
  void populateFromPlatformText(RtdTree const& tree, std::string const& platformText);
  // One compute unit per IP entry whose name has a colon, numbered by a counter of compute
  // units only.
  void populateComputeUnits(RtdTree const& tree,
                            std::shared_ptr<QrxBinUserRegionBuilder> const& userRegion);
  // The connection loop: memory connections at once, numbered in file order; streaming halves
  // gathered and then paired, numbered after them.
  void populateConnections(RtdTree const& tree, std::vector<RtdMemData> const& memData,
                           std::shared_ptr<QrxBinUserRegionBuilder> const& userRegion);

  ProfileAnalyzerSystemDiagramBuilder& builder;
  std::string platform;
  std::string generatedName;
  std::string generatedVersion;
  std::string generatedChangeList;
  std::string generatedTimestamp;
  std::string generatedDetailA;
  std::string generatedDetailB;
  bool generatedFlag;
  std::string kernelsFile;
  std::string binaryLabel;
  std::string binaryNote;
};

}  // namespace IPA

#endif  // RTD_RTDSYSTEMDIAGRAMVISITOR_H_
