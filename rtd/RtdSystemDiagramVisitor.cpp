#include "rtd/RtdSystemDiagramVisitor.h"

#include <boost/property_tree/json_parser.hpp>
#include <cstdint>
#include <map>
#include <sstream>
#include <stdexcept>
#include <unordered_map>
#include <utility>

#include "diagram/ComputeUnitBuilder.h"
#include "diagram/ConnectivityBuilder.h"
#include "diagram/ConnectivityNodeBuilder.h"
#include "diagram/EstimatedResourcesBuilder.h"
#include "diagram/KernelArgumentBuilder.h"
#include "diagram/KernelClockRefBuilder.h"
#include "diagram/KernelPortBuilder.h"
#include "diagram/QsaAvailableResourceBuilder.h"
#include "diagram/QsaBoardBuilder.h"
#include "diagram/QsaDeviceTopologyBuilder.h"
#include "diagram/QsaGeneratedByBuilder.h"
#include "diagram/TextConversions.h"
#include "platform/hco/HCODesignXMLReader.h"
#include "platform/hut/HUTFile.h"
#include "platform/messages/ComMsgMgr.h"
#include "platform/messages/ComMsgMgrInstance.h"
#include "platform/mvk/NativeObjectService.h"
#include "rtd/KernelConnection.h"
#include "rtd/KernelConnections.h"
#include "rtd/RtdKernelConfigure.h"
#include "rtd/RtdKernelConnectionVisitor.h"
#include "rtd/UserRegionAvailableResourcesSlrPopulator.h"

namespace IPA {
namespace {

using boost::property_tree::ptree;
namespace Serializable = ProfileAnalyzerSystemDiagramSerializable;

// Every problem of the import that does not stop it is a warning of this catalogue.
void warn(char const* identifier) {
  ComMsgMgr::sendMessage(ComMsgMgrInstance("morvane", identifier, kComMsgWarning));
}

// Runs one statement; if it throws anything, the statement's message is sent instead and the
// import goes on with the field as it was.
template <class Statement>
void guarded(char const* identifier, Statement&& statement) {
  try {
    statement();
  } catch (...) {
    warn(identifier);
  }
}

Serializable::ClockStatus clockStatus(std::string const& word) {
  if (word == "reserved") return Serializable::CLOCK_RESERVED;
  if (word == "fixed") return Serializable::CLOCK_FIXED;
  if (word == "scalable") return Serializable::CLOCK_SCALABLE;
  if (word == "changeable") return Serializable::CLOCK_SCALABLE;
  return Serializable::CLOCK_STATUS_UNSET;
}

}  // namespace

RtdSystemDiagramVisitor::RtdSystemDiagramVisitor(
    ProfileAnalyzerSystemDiagramBuilder& diagramBuilder, std::string platformName, std::string name,
    std::string version, std::string changeList, std::string timestamp, std::string detailA,
    std::string detailB, bool flag, std::string kernels, std::string label, std::string note)
    : builder(diagramBuilder),
      platform(std::move(platformName)),
      generatedName(std::move(name)),
      generatedVersion(std::move(version)),
      generatedChangeList(std::move(changeList)),
      generatedTimestamp(std::move(timestamp)),
      generatedDetailA(std::move(detailA)),
      generatedDetailB(std::move(detailB)),
      generatedFlag(flag),
      kernelsFile(std::move(kernels)),
      binaryLabel(std::move(label)),
      binaryNote(std::move(note)) {}

void RtdSystemDiagramVisitor::visit(RtdTree& tree) {
  // 1. Nothing is asked of the platform for a file of the wrong version.
  checkRtdSchemaVersion(tree);
  populateFromPlatformText(tree, platformValues());
}

void RtdSystemDiagramVisitor::visitWithPlatformText(RtdTree& tree,
                                                    std::string const& platformText) {
  checkRtdSchemaVersion(tree);
  populateFromPlatformText(tree, platformText);
}

void RtdSystemDiagramVisitor::populateFromPlatformText(RtdTree const& tree,
                                                       std::string const& platformText) {
  // 2. and 3. The platform section.
  ptree const platformTree = makePropertyTree(platformText);
  std::shared_ptr<QsaBuilder> const qsaBuilder = generateAndPopulateQsaBuilder(platformTree);
  populateQsaGeneratedByBuilder(qsaBuilder, platformTree);
  populateQsaBoardBuilder(qsaBuilder, platformTree);
  populateQsaAvailableResourcesBuilder(qsaBuilder, platformTree);
  populateQsaSystemClocks(qsaBuilder, platformTree);

  // 4. and 5. The memories, each with the SLR of its address segment. A memory whose tag has no
  // segment gets an empty SLR (operator[] adds the empty entry on the way).
  std::unordered_map<std::string, std::string> slrTags;
  makeSlrTagCollection(slrTags, platformTree);
  std::vector<RtdMemData> memData;
  if (tree.memTopology) memData = tree.memTopology->getMemDataCollection()->getMemData();
  for (std::size_t i = 0; i < memData.size(); ++i) {
    RtdMemData const& memory = memData[i];
    std::string const& slr = slrTags[memory.spTag];
    QsaDeviceTopologyBuilder topology(*qsaBuilder, builder.getRoot());
    topology.setId(integerToText(i));
    topology.setType(QsaDeviceTopologyBuilder::memoryType(memory.type));
    topology.setUsed(memory.used == "1" ? "yes" : "no");
    topology.setSizeKb(memory.sizeKB);
    topology.setBaseAddress(memory.baseAddress);
    topology.setTag(memory.tag);
    topology.setSpTag(memory.spTag);
    topology.setSlr(slr);
  }

  // 6. The tool run that generated the binary.
  populateQrxBinGeneratedByBuider(
      std::make_shared<QrxBinGeneratedByBuilder>(*builder.getQrxBinBuilder(), builder.getRoot()));

  // 7. The one user region: the core of the platform's first device. A core without a name or
  // type ends the import; only the instance path is optional.
  mvk::platform::NativeObjectService const service;
  auto const userRegion =
      std::make_shared<QrxBinUserRegionBuilder>(*builder.getQrxBinBuilder(), builder.getRoot());
  userRegion->setName(service.getStringValue(platformTree, "hardwarePlatform.devices..core.name"));
  userRegion->setType(service.getStringValue(platformTree, "hardwarePlatform.devices..core.type"));
  try {
    userRegion->setInstPath(
        service.getStringValue(platformTree, "hardwarePlatform.devices..core.instPath"));
  } catch (std::exception const&) {
    warn("@82-164@");
  }

  // 8. and 9. Compute units, then connections.
  populateComputeUnits(tree, userRegion);
  if (tree.connectivity) populateConnections(tree, memData, userRegion);

  // 10. The kernels, from the kernels file, whether or not the tree had an IP layout or
  // connections.
  populateKernelInfo(userRegion);

  // 11. and 12. The user region's resources: the totals, then per SLR from a fresh platform tree.
  auto const availableResources = std::make_shared<QrxBinAvailableResourceBuilder>(
      *builder.getQrxBinBuilder(), builder.getRoot(), userRegion);
  populateUserRegionAvailableResources(platformTree, availableResources);
  UserRegionAvailableResourcesSlrPopulator populator(makePropertyTree(platformText));
  populator.populateUserRegionAvailableResourcesSlr(availableResources);
}

void RtdSystemDiagramVisitor::checkRtdSchemaVersion(RtdTree const& tree) const {
  RtdSchemaVersion const& version = *tree.schemaVersion;
  if (version.isSupported(version)) return;
  std::ostringstream text;
  text << "Unsupported rtd file schema.  The supported schema is: " << version.supportedVersion()
       << ".  "
       << "The version found is " << version.getMajor() << "." << version.getMinor() << "."
       << version.getPatch() << ".\n";
  throw std::runtime_error(text.str());
}

std::string RtdSystemDiagramVisitor::platformValues() const {
  // One text per platform name for the life of the library: the platform service reads files,
  // and a compile server imports the same platform many times. Never evicted, and without a
  // lock (imports of two sessions at once may race here; see docs/architecture.md).
  static std::map<std::string, std::string> platformCache;
  auto found = platformCache.find(platform);
  if (found == platformCache.end()) {
    std::string text = mvk::platform::NativeObjectService().getAsJsonStr(platform);
    found = platformCache.emplace(platform, std::move(text)).first;
  }
  return found->second;
}

ptree RtdSystemDiagramVisitor::platformPropertyTree() const {
  return makePropertyTree(platformValues());
}

std::string RtdSystemDiagramVisitor::connectionTypeForMemoryIndex(
    std::vector<RtdMemData> const& memData, unsigned long memoryIndex) {
  if (memoryIndex >= memData.size()) return KernelConnection::memoryIdName;
  if (memData[memoryIndex].type == "MEM_STREAMING_CONNECTION") {
    return KernelConnection::computeUnitIdName;
  }
  return KernelConnection::memoryIdName;
}

void RtdSystemDiagramVisitor::makeSlrTagCollection(
    std::unordered_map<std::string, std::string>& slrTags, ptree const& platformTree) const {
  ptree const busInterfaces =
      mvk::platform::NativeObjectService().getChild(platformTree, "hardwarePlatform.busInterfaces");
  for (auto const& busInterface : busInterfaces) {
    // The name is read for symmetry with the tag but identifies nothing here.
    std::string const name = busInterface.second.get<std::string>("name", "");
    (void)name;
    std::string const spTag = busInterface.second.get<std::string>("spTag", "");
    auto const segments = busInterface.second.get_child_optional("addressSegments");
    if (spTag.empty() || !segments) continue;
    for (auto const& segment : *segments) {
      std::string const slr = segment.second.get<std::string>("slr", "");
      int const index = segment.second.get<int>("index", -1);
      if (slr.empty() || index < 0) continue;
      // The same form as "m_spTag" in a run-time data file, e.g. "HBM[12]".
      slrTags[spTag + "[" + integerToText(index) + "]"] = slr;
    }
  }
}

std::shared_ptr<QsaBuilder> RtdSystemDiagramVisitor::generateAndPopulateQsaBuilder(
    ptree const& platformTree) {
  std::shared_ptr<QsaBuilder> const qsa = builder.getQsaBuilder();
  mvk::platform::NativeObjectService const service;
  guarded("@82-182@", [&] { qsa->setVendor(platformTree.get_child("vendor").data()); });
  guarded("@82-171@", [&] {
    qsa->setBoardId(service.getStringValue(platformTree, "hardwarePlatform.boardId"));
  });
  guarded("@82-178@", [&] { qsa->setName(platformTree.get_child("name").data()); });
  guarded("@82-176@", [&] {
    qsa->setVersionMajor(service.getStringValue(platformTree, "hardwarePlatform.versionMajor"));
  });
  guarded("@82-177@", [&] {
    qsa->setVersionMinor(service.getStringValue(platformTree, "hardwarePlatform.versionMinor"));
  });
  guarded("@82-166@", [&] { qsa->setDescription(platformTree.get_child("description").data()); });
  // One statement for all intents: a failure inside keeps the intents already appended.
  guarded("@82-2053@", [&] {
    ptree const intents = service.getChild(platformTree, "hardwarePlatform.designIntent");
    for (auto const& intent : intents) {
      // "1" or "true" (white space behind allowed); anything else, "yes" included, is false.
      if (intent.second.get<bool>("value", false)) qsa->addDesignIntent(intent.first);
    }
  });
  return qsa;
}

void RtdSystemDiagramVisitor::populateQsaGeneratedByBuilder(std::shared_ptr<QsaBuilder> qsaBuilder,
                                                            ptree const& platformTree) {
  QsaGeneratedByBuilder generatedBy(*qsaBuilder, builder.getRoot());
  mvk::platform::NativeObjectService const service;
  guarded("@82-173@", [&] {
    generatedBy.setName(service.getStringValue(platformTree, "hardwarePlatform.generatedName"));
  });
  guarded("@82-175@", [&] {
    generatedBy.setVersion(
        service.getStringValue(platformTree, "hardwarePlatform.generatedVersion"));
  });
  guarded("@82-172@", [&] {
    generatedBy.setChangeList(
        service.getStringValue(platformTree, "hardwarePlatform.generatedChangeList"));
  });
  guarded("@82-174@", [&] {
    generatedBy.setTimestamp(
        service.getStringValue(platformTree, "hardwarePlatform.generatedTimestamp"));
  });
}

void RtdSystemDiagramVisitor::populateQsaBoardBuilder(std::shared_ptr<QsaBuilder> qsaBuilder,
                                                      ptree const& platformTree) {
  QsaBoardBuilder board(*qsaBuilder, builder.getRoot());
  mvk::platform::NativeObjectService const service;
  guarded("@82-168@", [&] {
    board.setName(service.getStringValue(platformTree, "hardwarePlatform.board.name"));
  });
  guarded("@82-170@", [&] {
    board.setVendor(service.getStringValue(platformTree, "hardwarePlatform.board.vendor"));
  });
  guarded("@82-169@", [&] {
    board.setPart(service.getStringValue(platformTree, "hardwarePlatform.board.part"));
  });
  guarded("@82-167@", [&] {
    board.setBoardPart(service.getStringValue(platformTree, "hardwarePlatform.board.boardPart"));
  });
}

void RtdSystemDiagramVisitor::populateQsaAvailableResourcesBuilder(
    std::shared_ptr<QsaBuilder> qsaBuilder, ptree const& platformTree) {
  using Populator = UserRegionAvailableResourcesSlrPopulator;
  QsaAvailableResourceBuilder resources(*qsaBuilder, builder.getRoot());
  std::unordered_map<std::string, std::string> counts;
  // The word waits for its count, across the end of a record if need be.
  std::string pending;
  ptree const records =
      mvk::platform::NativeObjectService().getChild(platformTree, "hardwarePlatform.resources");
  for (auto const& record : records) {
    for (auto const& member : record.second) {
      std::string const& value = member.second.data();
      if (value == Populator::bramId || value == Populator::uramId || value == Populator::dspId ||
          value == Populator::lutId || value == Populator::regId) {
        pending = value;
      } else if (member.first == "count" && !pending.empty()) {
        counts[pending] = value;
        pending.clear();
      }
    }
  }
  resources.setBram(counts[Populator::bramId]);
  resources.setUram(counts[Populator::uramId]);
  resources.setDsp(counts[Populator::dspId]);
  resources.setLut(counts[Populator::lutId]);
  resources.setReg(counts[Populator::regId]);
}

void RtdSystemDiagramVisitor::populateQsaSystemClocks(std::shared_ptr<QsaBuilder> qsaBuilder,
                                                      ptree const& platformTree) {
  ptree const records =
      mvk::platform::NativeObjectService().getChild(platformTree, "hardwarePlatform.systemClocks");
  for (auto const& record : records) {
    ptree const& fields = record.second;
    std::string const name = fields.get<std::string>("name", "");
    if (name.empty()) continue;
    Serializable::Clock* clock = nullptr;
    for (auto& existing : *qsaBuilder->message()->mutable_clocks()) {
      if (existing.name() == name) {
        clock = &existing;
        break;
      }
    }
    if (clock == nullptr) {
      clock = qsaBuilder->addClock();
      clock->set_name(name);
    }
    // A number must be the whole text (white space behind it aside), else the default stands.
    clock->set_orig_name(fields.get<std::string>("origName", ""));
    clock->set_id(fields.get<std::int32_t>("id", -1));
    clock->set_frequency(fields.get<double>("frequency", -1.0));
    clock->set_period(fields.get<double>("period", -1.0));
    clock->set_status(clockStatus(fields.get<std::string>("status", "")));
  }
}

void RtdSystemDiagramVisitor::populateQrxBinGeneratedByBuider(
    std::shared_ptr<QrxBinGeneratedByBuilder> generatedBy) {
  // "@82-179@" serves both the name and the second detail.
  guarded("@82-179@", [&] { generatedBy->setName(generatedName); });
  guarded("@82-183@", [&] { generatedBy->setVersion(generatedVersion); });
  guarded("@82-165@", [&] { generatedBy->setChangeList(generatedChangeList); });
  guarded("@82-181@", [&] { generatedBy->setTimestamp(generatedTimestamp); });
  guarded("@82-180@", [&] { generatedBy->setDetailA(generatedDetailA); });
  guarded("@82-179@", [&] { generatedBy->setDetailB(generatedDetailB); });
  guarded("@82-3588@", [&] { generatedBy->setFlag(generatedFlag); });
  guarded("@82-222@", [&] {
    generatedBy->setLabelCopy(binaryLabel);
    generatedBy->setLabel(binaryLabel);
    generatedBy->setNote(binaryNote);
  });
}

void RtdSystemDiagramVisitor::populateKernelInfo(
    std::shared_ptr<QrxBinUserRegionBuilder> userRegion) {
  std::vector<std::string> const noInstances;
  std::vector<std::string> const noOptions;
  std::vector<std::string> const noSources;
  RtdKernelConfigure configure(noInstances, noOptions, noSources, "", false);
  std::shared_ptr<std::vector<OmbroCommonUtils::Kernel>> const kernels =
      configure.execute(kernelsFile);
  for (OmbroCommonUtils::Kernel const& kernel : *kernels) {
    auto const kernelBuilder = std::make_shared<QrxBinKernelBuilder>(userRegion);
    kernelBuilder->setName(kernel.name);
    std::vector<mvk::kernel::ArgDesc> const args = kernel.args;
    for (mvk::kernel::ArgDesc const& arg : args) {
      KernelArgumentBuilder argument(kernelBuilder);
      argument.setName(arg.name);
      argument.setId(arg.id);
      argument.setAddressKind(integerToText(arg.addressKind));
      argument.setPort(arg.port);
      argument.setSize(arg.size);
      argument.setOffset(arg.offset);
      argument.setDetailA(arg.detailA);
      argument.setDetailB(arg.detailB);
      argument.setPortInterfaceType(arg.portInterfaceType);
    }
    std::vector<mvk::kernel::PortDesc> const ports = kernel.ports;
    for (mvk::kernel::PortDesc const& portDesc : ports) {
      KernelPortBuilder port(kernelBuilder);
      port.setDetailB(portDesc.detailB);
      // A negative width reads as a large unsigned number: the width is unsigned in the diagram.
      port.setDataWidth(integerToText(static_cast<std::uint32_t>(portDesc.dataWidth)));
      port.setMode(portDesc.mode);
      port.setName(portDesc.name);
      port.setPortType(portDesc.portType);
      port.setDetailA(portDesc.detailA);
    }
    populateKernelEstimatedResources(kernelBuilder, kernel);
    populateKernelClockRefs(kernelBuilder, kernel);
  }
}

void RtdSystemDiagramVisitor::populateKernelEstimatedResources(
    std::shared_ptr<QrxBinKernelBuilder> kernelBuilder, OmbroCommonUtils::Kernel const& kernel) {
  std::string const path =
      kernel.directory + HUTFile::getDirSeparator() + kernel.name + ".design.xml";
  if (!HUTFile(path).exists()) {
    ComMsgMgr::sendMessage(ComMsgMgrInstance("morvane", "@82-214@%s", kComMsgWarning, path));
    return;
  }
  HCODesignXMLReader reader(path);
  reader.parse();
  DesignXML::Profile const& profile = reader.getProfile();
  std::vector<DesignXML::ModuleInformation> informations;
  reader.getModuleInformation(profile, informations);
  for (unsigned long m = 0; m < informations.size(); ++m) {
    // The position among the groups also picks the module inside the group: the reports this
    // reads have one module per group, at the group's own position.
    DesignXML::Module const& module = informations[m].GetModule(m);
    std::vector<DesignXML::AreaEstimates> estimates;
    reader.getAreaEstimates(module, estimates);
    for (DesignXML::AreaEstimates const& estimate : estimates) {
      EstimatedResourcesBuilder resources(kernelBuilder);
      std::vector<DesignXML::Resources> records;
      reader.getResources(estimate, records);
      for (std::size_t r = 0; r < records.size(); ++r) {
        // The position of the record also picks the value in each of its lists, so a later
        // record that lists fewer values fails here and keeps the earlier record's numbers.
        DesignXML::Resources const& record = records[r];
        auto const value = [r](lmx60::List<std::uint32_t> const& list) {
          return integerToText(list.get(r));
        };
        try {
          resources.setLut(value(record.LUT));
        } catch (std::exception const&) {
          warn("@82-159@");
        }
        try {
          resources.setBram(value(record.BRAM));
        } catch (std::exception const&) {
          warn("@82-157@");
        }
        try {
          resources.setUram(value(record.URAM));
        } catch (std::exception const&) {
          warn("@82-3568@");
        }
        try {
          resources.setDsp(value(record.DSP));
        } catch (std::exception const&) {
          warn("@82-158@");
        }
        try {
          resources.setReg(value(record.FF));
        } catch (std::exception const&) {
          warn("@82-160@");
        }
      }
    }
  }
}

void RtdSystemDiagramVisitor::populateKernelClockRefs(
    std::shared_ptr<QrxBinKernelBuilder> kernelBuilder, OmbroCommonUtils::Kernel const& kernel) {
  std::string const path = kernel.directory + HUTFile::getDirSeparator() + "kernel.json";
  if (!HUTFile(path).exists()) return;
  ptree clockInfo;
  try {
    boost::property_tree::read_json(path, clockInfo);
  } catch (boost::property_tree::json_parser::json_parser_error const&) {
    // A kernel.json that does not parse is taken as absent, unlike one without the clock keys
    // below, which ends the import: the tools that write it write either nothing usable or the
    // whole record.
    return;
  }
  std::string clockName;
  double period = 0.0;
  try {
    clockName = clockInfo.get_child("ClockInfo.ClockName").get_value<std::string>();
    period = clockInfo.get_child("ClockInfo.ClockPeriod").get_value<double>();
  } catch (boost::property_tree::ptree_bad_path const& error) {
    // Same exception, with the file named so that the failed import says where to look.
    throw boost::property_tree::ptree_bad_path(path + ": No such node",
                                               error.path<ptree::path_type>());
  } catch (boost::property_tree::ptree_bad_data const& error) {
    throw boost::property_tree::ptree_bad_data(path + ": ClockInfo.ClockPeriod is not a number",
                                               error.data<std::string>());
  }
  auto const clockRef = std::make_shared<KernelClockRefBuilder>(kernelBuilder);
  clockRef->setName(clockName);
  // MHz from a period in ns; a period of 0 gives +infinity, which is stored as it is.
  clockRef->setRequestedFrequency((1.0 / period) * 1000.0);
}

void RtdSystemDiagramVisitor::populateUserRegionAvailableResources(
    ptree const& platformTree, std::shared_ptr<QrxBinAvailableResourceBuilder> availableResources) {
  std::string const counts = "hardwarePlatform.devices..core.availableResources.";
  mvk::platform::NativeObjectService const service;
  try {
    std::string const uram = service.getStringValue(platformTree, counts + "uramCount");
    availableResources->setLut(service.getStringValue(platformTree, counts + "lutCount"));
    availableResources->setReg(service.getStringValue(platformTree, counts + "registerCount"));
    availableResources->setBram(service.getStringValue(platformTree, counts + "bramCount"));
    availableResources->setUram(uram);
    availableResources->setDsp(service.getStringValue(platformTree, counts + "dspCount"));
  } catch (std::exception const&) {
    warn("@82-163@");
  }
}

void RtdSystemDiagramVisitor::populateComputeUnits(
    RtdTree const& tree, std::shared_ptr<QrxBinUserRegionBuilder> const& userRegion) {
  if (!tree.ipLayout) return;
  std::vector<RtdIpData> const& ipData = tree.ipLayout->getIpDataCollection()->getIpData();
  // Counts compute units only, so an id is not the IP's position that connections refer to.
  unsigned long computeUnitId = 0;
  for (auto const& ip : ipData) {
    std::vector<std::string> const parts = splitKeepingEmpty(ip.name, ':');
    // A name without a colon is an IP block, not a compute unit.
    if (parts.size() < 2) continue;
    auto const computeUnit = userRegion->addComputeUnit();
    computeUnit->setId(integerToText(computeUnitId));
    computeUnit->setKernelName(parts[0]);
    computeUnit->setName(parts[1]);
    ++computeUnitId;
    for (auto const& clock : ip.clocks) {
      Serializable::clockRef* const clockRef = computeUnit->addClockRef();
      clockRef->set_name(clock.portName);
      clockRef->set_clock_id(clock.refClockId);
    }
  }
}

void RtdSystemDiagramVisitor::populateConnections(
    RtdTree const& tree, std::vector<RtdMemData> const& memData,
    std::shared_ptr<QrxBinUserRegionBuilder> const& userRegion) {
  // Read in place: the tree does not change while it is walked, and a copy of a large design's
  // connections would cost as much as reading them.
  std::vector<RtdConnection> const& connections =
      tree.connectivity->getConnectionCollection()->getConnections();
  KernelConnections streams;
  std::int32_t connectionId = 0;
  for (auto const& connection : connections) {
    auto const memoryIndex = textToInteger<unsigned long>(connection.memDataIndex);
    std::string const type = connectionTypeForMemoryIndex(memData, memoryIndex);
    if (type == KernelConnection::computeUnitIdName) {
      // Half of a link between two compute units: gathered under the memory index's text until
      // the whole file has been read; it takes no number yet.
      streams.addKernelConnection(connection.memDataIndex, connection.ipLayoutIndex,
                                  connection.argIndex, connection.argName, connection.mode);
      continue;
    }
    auto const connectivity = userRegion->addConnectivity();
    connectivity->setId(integerToText(connectionId));
    ++connectionId;
    auto const source = connectivity->source();
    // The IP's position in the file, not the compute unit's id; see docs/diagram-operations.md.
    source->setId(connection.ipLayoutIndex);
    source->setArgName(connection.argName);
    source->setMode(connection.mode);
    source->setArgIndex(connection.argIndex);
    source->setType(KernelConnection::computeUnitIdName);
    auto const destination = connectivity->destination();
    destination->setId(connection.memDataIndex);
    destination->setType(type);
  }
  RtdKernelConnectionVisitor(userRegion, connectionId).visit(streams);
}

}  // namespace IPA
