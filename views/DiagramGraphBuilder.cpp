#include "views/DiagramGraphBuilder.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <map>
#include <set>
#include <tuple>
#include <unordered_map>
#include <utility>

namespace qvviews {
namespace {

namespace pb = ProfileAnalyzerSystemDiagramSerializable;
using Node = DiagramGraph::Node;
using Edge = DiagramGraph::Edge;
using Amount = DiagramGraph::Amount;
using NodeKind = DiagramGraph::NodeKind;
using EdgeKind = DiagramGraph::EdgeKind;

constexpr char const* kResourceNames[] = {"LUT", "REG", "BRAM", "DSP", "URAM"};
constexpr int kResources = 5;

// A text that is a whole number or a decimal, as the diagram keeps counts; false otherwise.
bool toNumber(std::string const& text, double& value) {
  if (text.empty()) return false;
  char const* begin = text.c_str();
  char* end = nullptr;
  errno = 0;
  double const parsed = std::strtod(begin, &end);
  if (end != begin + text.size() || errno != 0) return false;
  value = parsed;
  return true;
}

double percentOf(std::string const& used, std::string const& available) {
  double part = 0;
  double whole = 0;
  if (!toNumber(used, part) || !toNumber(available, whole) || !(whole > 0)) return -1;
  return part / whole * 100.0;
}

std::string memoryTypeName(pb::MemoryType type) {
  switch (type) {
    case pb::MEM_DDR3: return "DDR3";
    case pb::MEM_DDR4: return "DDR4";
    case pb::MEM_DRAM: return "DRAM";
    case pb::MEM_HBM: return "HBM";
    case pb::MEM_BRAM: return "BRAM";
    case pb::MEM_URAM: return "URAM";
    case pb::MEM_STREAMING: return "STREAMING";
    case pb::MEM_STREAMING_CONNECTION: return "STREAMING_CONNECTION";
    default: return "memory";
  }
}

std::string stateName(int state) {
  switch (state) {
    case pb::DESIGN_STATE_SYNTHESIZED: return "Synthesized";
    case pb::DESIGN_STATE_FULLY_PLACED: return "Fully Placed";
    case pb::DESIGN_STATE_ROUTED: return "Routed";
    default: return "Unknown state";
  }
}

// The five counts of a resource message, in kResourceNames order.
template <typename Resources>
std::vector<std::string> countsOf(Resources const& resources) {
  return {resources.lut(), resources.reg(), resources.bram(), resources.dsp(), resources.uram()};
}

// "HBM[8]", "HBM[9]", ... as "HBM[8..31]"; runs of three or more become a range. Tags that do
// not all read "<prefix>[<number>]" with one prefix are named by the first and a count.
std::string groupTag(std::vector<std::string> const& tags) {
  std::string prefix;
  std::vector<long> numbers;
  bool regular = true;
  for (std::string const& tag : tags) {
    std::size_t const open = tag.rfind('[');
    if (open == std::string::npos || tag.size() < open + 3 || tag.back() != ']') {
      regular = false;
      break;
    }
    std::string const digits = tag.substr(open + 1, tag.size() - open - 2);
    if (digits.size() > 9 || digits.find_first_not_of("0123456789") != std::string::npos) {
      regular = false;
      break;
    }
    if (numbers.empty()) prefix = tag.substr(0, open);
    if (tag.compare(0, open, prefix) != 0 || open != prefix.size()) {
      regular = false;
      break;
    }
    numbers.push_back(std::stol(digits));
  }
  if (!regular) return tags.front() + " +" + std::to_string(tags.size() - 1);
  std::sort(numbers.begin(), numbers.end());
  numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
  std::string text = prefix + "[";
  for (std::size_t i = 0; i < numbers.size();) {
    std::size_t j = i;
    while (j + 1 < numbers.size() && numbers[j + 1] == numbers[j] + 1) ++j;
    if (i != 0) text += ",";
    if (j - i >= 2) {
      text += std::to_string(numbers[i]) + ".." + std::to_string(numbers[j]);
    } else {
      for (std::size_t k = i; k <= j; ++k) text += (k == i ? "" : ",") + std::to_string(numbers[k]);
    }
    i = j + 1;
  }
  return text + "]";
}

// Ids must stay unique even when two memories share a tag or two compute units a name: the
// second gets its position appended.
std::string uniqueId(std::string const& wanted, std::string const& position,
                     std::set<std::string>& taken) {
  std::string id = wanted;
  if (taken.count(id) != 0) id = wanted + "#" + position;
  for (int extra = 2; taken.count(id) != 0; ++extra) {
    id = wanted + "#" + position + "." + std::to_string(extra);
  }
  taken.insert(id);
  return id;
}

class Build {
 public:
  Build(pb::outerContainer const& diagram, DiagramGraphBuilder::Options const& options)
      : qsa_(diagram.system_diagram_metadata().qsa()),
        qrxbin_(diagram.system_diagram_metadata().qrxbin()),
        options_(options) {}

  DiagramGraph run() {
    title();
    platformClocks();
    slrAvailability();
    memories();
    for (pb::userRegion const& region : qrxbin_.user_regions()) kernelsAndComputeUnits(region);
    int regionIndex = 0;
    for (pb::userRegion const& region : qrxbin_.user_regions()) {
      connections(region, regionIndex++);
    }
    placeComputeUnits();
    resources();
    if (options_.foldUnusedBanks) foldUnusedBanks();
    clusters();
    assemble();
    return std::move(graph_);
  }

 private:
  struct ComputeUnit {
    Node node;
    pb::computeUnit const* message;
    std::vector<std::size_t> memories;  // indices into memories_, one per connection
  };
  struct Memory {
    Node node;
    std::string diagramId;  // deviceTopology.id
    bool connected = false;
  };

  void title() {
    std::string platform = qsa_.name();
    if (platform.empty()) platform = qrxbin_.platform().name();
    std::string const& label = qrxbin_.generated_by().label();
    if (platform.empty() && label.empty()) {
      graph_.title = "system diagram";
    } else if (label.empty()) {
      graph_.title = platform;
    } else if (platform.empty()) {
      graph_.title = label;
    } else {
      graph_.title = label + " on " + platform;
    }
  }

  void platformClocks() {
    for (pb::Clock const& clock : qsa_.clocks()) {
      platformClocks_.emplace(std::to_string(clock.id()), &clock);
    }
  }

  // What each SLR offers: the first user region that lists it decides.
  void slrAvailability() {
    for (pb::userRegion const& region : qrxbin_.user_regions()) {
      for (pb::bySlr const& slr : region.available_resources().by_slr()) {
        if (slr.slr().empty() || available_.count(slr.slr()) != 0) continue;
        std::vector<std::string> counts = {slr.lut(), slr.reg(), slr.bram(), slr.dsp(),
                                           slr.uram()};
        available_.emplace(slr.slr(), counts);
        platformSlrs_.push_back(slr.slr());
      }
    }
  }

  void memories() {
    for (pb::deviceTopology const& bank : qsa_.device_topology()) {
      // A streaming connection is recorded as a memory entry, but it is the link between two
      // compute units, which the stream edge draws.
      if (bank.type() == pb::MEM_STREAMING_CONNECTION) continue;
      Memory memory;
      memory.diagramId = bank.id();
      Node& node = memory.node;
      node.kind = NodeKind::kMemory;
      node.name = bank.tag().empty() ? "#" + bank.id() : bank.tag();
      node.id = uniqueId("mem:" + node.name, bank.id(), ids_);
      node.memoryType = memoryTypeName(bank.type());
      node.memorySlr = bank.slr();
      node.baseAddress = bank.base_address();
      node.sizeKb = bank.size_kb();
      node.used = bank.used() == "yes";
      node.tags.push_back(bank.tag());
      memoryById_.emplace(bank.id(), memories_.size());
      memories_.push_back(std::move(memory));
    }
  }

  void kernelsAndComputeUnits(pb::userRegion const& region) {
    for (pb::kernel const& kernel : region.kernels()) {
      if (kernelByName_.count(kernel.name()) != 0) continue;
      Node node;
      node.kind = NodeKind::kKernel;
      node.name = kernel.name();
      node.id = uniqueId("kernel:" + kernel.name(), "", ids_);
      for (pb::clockRef const& clock : kernel.clock_refs()) {
        DiagramGraph::Clock entry;
        entry.pin = clock.name();
        entry.requested = clock.requested_frequency();
        node.clocks.push_back(entry);
      }
      kernelByName_.emplace(kernel.name(), kernels_.size());
      kernels_.push_back(std::move(node));
    }
    std::unordered_map<std::string, std::size_t>& byId = computeUnitByRegionId_.emplace_back();
    for (pb::computeUnit const& unit : region.compute_units()) {
      ComputeUnit entry;
      entry.message = &unit;
      Node& node = entry.node;
      node.kind = NodeKind::kComputeUnit;
      node.name = unit.name();
      node.id = uniqueId("cu:" + unit.name(), unit.id(), ids_);
      node.kernel = unit.kernel_name();
      node.baseAddress = unit.base_address();
      for (pb::clockRef const& clock : unit.clock_refs()) node.clocks.push_back(clockOf(clock));
      byId.emplace(unit.id(), computeUnits_.size());
      computeUnitByName_.emplace(unit.name(), computeUnits_.size());
      // A compute unit of a kernel that the diagram does not describe still shows its kernel.
      if (kernelByName_.count(unit.kernel_name()) == 0) {
        Node kernel;
        kernel.kind = NodeKind::kKernel;
        kernel.name = unit.kernel_name();
        kernel.id = uniqueId("kernel:" + unit.kernel_name(), "", ids_);
        kernelByName_.emplace(unit.kernel_name(), kernels_.size());
        kernels_.push_back(std::move(kernel));
      }
      ++kernels_[kernelByName_.at(unit.kernel_name())].computeUnits;
      computeUnits_.push_back(std::move(entry));
    }
  }

  // A compute unit's clock with the platform's values where its own are 0, as the flow report
  // reads them.
  DiagramGraph::Clock clockOf(pb::clockRef const& clock) const {
    DiagramGraph::Clock entry;
    entry.pin = clock.name();
    entry.clockId = clock.clock_id();
    entry.requested = clock.requested_frequency();
    entry.achieved = clock.achieved_frequency();
    auto const platform = platformClocks_.find(clock.clock_id());
    if (platform == platformClocks_.end()) return entry;
    pb::Clock const& source = *platform->second;
    entry.platformClock = source.name();
    if (source.frequency() > 0) entry.platform = source.frequency();
    if (entry.requested == 0 && source.requested_frequency() > 0) {
      entry.requested = source.requested_frequency();
    }
    if (entry.achieved == 0 && source.achieved_frequency() > 0) {
      entry.achieved = source.achieved_frequency();
    }
    return entry;
  }

  // The compute unit at one end of a connection, or -1.
  long computeUnitAt(pb::Node const& end, int region) const {
    std::string name;
    if (!end.instance().empty()) {
      name = end.instance();
    } else if (!options_.ipLayout.empty()) {
      name = options_.ipLayout.computeUnitAt(end.id());
      if (name.empty()) return -1;
    } else {
      auto const& byId = computeUnitByRegionId_[static_cast<std::size_t>(region)];
      auto const found = byId.find(end.id());
      return found == byId.end() ? -1 : static_cast<long>(found->second);
    }
    auto const found = computeUnitByName_.find(name);
    return found == computeUnitByName_.end() ? -1 : static_cast<long>(found->second);
  }

  static std::string portOf(pb::Node const& end) {
    if (!end.pin().empty()) return end.pin();
    return end.arg_name();
  }

  void connections(pb::userRegion const& region, int regionIndex) {
    for (pb::Connectivity const& connection : region.connectivity()) {
      std::string const& from = connection.source().type();
      std::string const& to = connection.destination().type();
      if (from.empty() && to.empty()) {
        ++danglingStreams_;
        continue;
      }
      if (from != "compute_unit" || (to != "memory" && to != "compute_unit")) continue;
      long const source = computeUnitAt(connection.source(), regionIndex);
      if (to == "memory") {
        auto const memory = memoryById_.find(connection.destination().id());
        if (source < 0 || memory == memoryById_.end()) {
          ++unresolved_;
          continue;
        }
        addMemoryEdge(static_cast<std::size_t>(source), memory->second,
                      portOf(connection.source()));
        continue;
      }
      long const destination = computeUnitAt(connection.destination(), regionIndex);
      if (source < 0 || destination < 0) {
        ++unresolved_;
        continue;
      }
      std::string const sourcePort = portOf(connection.source());
      std::string const destinationPort = portOf(connection.destination());
      // The import records a stream from the run-time data, and the tool chain often tells the
      // same stream again by instance and pin: draw it once.
      auto const key = std::make_tuple(source, sourcePort, destination, destinationPort);
      if (!streamsSeen_.insert(key).second) continue;
      Edge edge;
      edge.kind = EdgeKind::kStream;
      edge.from = computeUnits_[static_cast<std::size_t>(source)].node.id;
      edge.to = computeUnits_[static_cast<std::size_t>(destination)].node.id;
      edge.arguments.push_back(sourcePort + " -> " + destinationPort);
      streams_.push_back(std::move(edge));
    }
  }

  void addMemoryEdge(std::size_t unit, std::size_t memory, std::string const& argument) {
    memories_[memory].connected = true;
    computeUnits_[unit].memories.push_back(memory);
    auto const key = std::make_pair(unit, memory);
    auto const known = memoryEdgeByEnds_.find(key);
    if (known != memoryEdgeByEnds_.end()) {
      std::vector<std::string>& arguments = memoryEdges_[known->second].arguments;
      if (std::find(arguments.begin(), arguments.end(), argument) == arguments.end()) {
        arguments.push_back(argument);
      }
      return;
    }
    Edge edge;
    edge.kind = EdgeKind::kMemory;
    edge.from = computeUnits_[unit].node.id;
    edge.to = memories_[memory].node.id;
    edge.arguments.push_back(argument);
    memoryEdgeByEnds_.emplace(key, memoryEdges_.size());
    memoryEdges_.push_back(std::move(edge));
  }

  void placeComputeUnits() {
    for (ComputeUnit& unit : computeUnits_) {
      for (pb::slrResources const& use : unit.message->slr_resources()) {
        if (use.slr().empty()) continue;
        unit.node.slr = use.slr();
        unit.node.slrFrom = "resources";
        break;
      }
      if (!unit.node.slr.empty()) continue;
      // The SLR that most of its connections lead to; the first one met among equals.
      std::vector<std::pair<std::string, int>> votes;
      for (std::size_t memory : unit.memories) {
        std::string const& slr = memories_[memory].node.memorySlr;
        if (slr.empty()) continue;
        auto found = std::find_if(votes.begin(), votes.end(),
                                  [&slr](auto const& vote) { return vote.first == slr; });
        if (found == votes.end()) {
          votes.emplace_back(slr, 1);
        } else {
          ++found->second;
        }
      }
      if (!votes.empty()) {
        auto const best = std::max_element(
            votes.begin(), votes.end(),
            [](auto const& a, auto const& b) { return a.second < b.second; });
        unit.node.slr = best->first;
        unit.node.slrFrom = "memories";
        continue;
      }
      if (platformSlrs_.size() == 1) {
        unit.node.slr = platformSlrs_.front();
        unit.node.slrFrom = "only SLR";
      }
    }
  }

  std::vector<Amount> amountsOf(std::vector<std::string> const& used,
                                std::string const& slr) const {
    auto const offered = available_.find(slr);
    std::vector<Amount> amounts;
    for (int i = 0; i < kResources; ++i) {
      Amount amount;
      amount.resource = kResourceNames[i];
      amount.used = used[static_cast<std::size_t>(i)];
      if (offered != available_.end()) amount.available = offered->second[static_cast<std::size_t>(i)];
      amount.percent = percentOf(amount.used, amount.available);
      amounts.push_back(std::move(amount));
    }
    return amounts;
  }

  void resources() {
    for (ComputeUnit& unit : computeUnits_) {
      std::vector<pb::actualResources const*> states;
      for (pb::actualResources const& entry : unit.message->actual_resources()) {
        states.push_back(&entry);
      }
      // In the order of an implementation run, so that the last is the latest state reached.
      std::stable_sort(states.begin(), states.end(), [](auto const* a, auto const* b) {
        return a->design_state() < b->design_state();
      });
      for (pb::actualResources const* entry : states) {
        DiagramGraph::StateResources state;
        state.state = stateName(entry->design_state());
        state.amounts = amountsOf(countsOf(*entry), unit.node.slr);
        unit.node.resources.push_back(std::move(state));
      }
    }
  }

  void foldUnusedBanks() {
    // Groups by type and SLR, in the order in which each group's first bank comes.
    std::vector<std::pair<std::string, std::vector<std::size_t>>> groups;
    for (std::size_t i = 0; i < memories_.size(); ++i) {
      Memory const& memory = memories_[i];
      if (memory.node.used || memory.connected) continue;
      std::string const key = memory.node.memoryType + "\n" + memory.node.memorySlr;
      auto found = std::find_if(groups.begin(), groups.end(),
                                [&key](auto const& group) { return group.first == key; });
      if (found == groups.end()) {
        groups.emplace_back(key, std::vector<std::size_t>{i});
      } else {
        found->second.push_back(i);
      }
    }
    std::vector<bool> folded(memories_.size(), false);
    std::map<std::size_t, Node> groupAt;  // the group node, at its first bank's place
    for (auto const& [key, members] : groups) {
      if (members.size() < 2) continue;
      Node group;
      group.kind = NodeKind::kMemoryGroup;
      Node const& first = memories_[members.front()].node;
      group.memoryType = first.memoryType;
      group.memorySlr = first.memorySlr;
      group.banks = static_cast<int>(members.size());
      double total = 0;
      bool sized = true;
      for (std::size_t member : members) {
        Node const& bank = memories_[member].node;
        group.tags.push_back(bank.name);
        double size = 0;
        sized = sized && toNumber(bank.sizeKb, size);
        total += size;
        folded[member] = true;
        ids_.erase(bank.id);
      }
      if (sized) group.sizeKb = std::to_string(static_cast<long long>(total));
      group.name = groupTag(group.tags);
      group.id = uniqueId("mem:" + group.name, "unused", ids_);
      groupAt.emplace(members.front(), std::move(group));
    }
    std::vector<Memory> kept;
    for (std::size_t i = 0; i < memories_.size(); ++i) {
      auto const group = groupAt.find(i);
      if (group != groupAt.end()) {
        Memory memory;
        memory.node = group->second;
        kept.push_back(std::move(memory));
      }
      if (!folded[i]) kept.push_back(std::move(memories_[i]));
    }
    memories_ = std::move(kept);
  }

  void clusters() {
    std::vector<std::string> names = platformSlrs_;
    std::set<std::string> others;
    bool unplaced = false;
    auto const note = [&names, &others](std::string const& slr) {
      if (std::find(names.begin(), names.end(), slr) == names.end()) others.insert(slr);
    };
    for (ComputeUnit const& unit : computeUnits_) {
      if (unit.node.slr.empty()) {
        unplaced = true;
      } else {
        note(unit.node.slr);
      }
    }
    for (Memory const& memory : memories_) {
      if (!memory.node.memorySlr.empty()) note(memory.node.memorySlr);
    }
    names.insert(names.end(), others.begin(), others.end());

    for (std::string const& name : names) {
      DiagramGraph::Cluster cluster;
      cluster.name = name;
      cluster.id = "slr:" + name;
      std::vector<double> sums(kResources, 0);
      std::vector<bool> known(kResources, false);
      bool holds = false;
      for (ComputeUnit& unit : computeUnits_) {
        if (unit.node.slr != name) continue;
        holds = true;
        unit.node.cluster = cluster.id;
        ++cluster.computeUnits;
        if (unit.node.resources.empty()) continue;
        std::vector<Amount> const& latest = unit.node.resources.back().amounts;
        for (int i = 0; i < kResources; ++i) {
          double value = 0;
          if (!toNumber(latest[static_cast<std::size_t>(i)].used, value)) continue;
          sums[static_cast<std::size_t>(i)] += value;
          known[static_cast<std::size_t>(i)] = true;
        }
      }
      for (Memory& memory : memories_) {
        if (memory.node.memorySlr != name) continue;
        holds = true;
        memory.node.cluster = cluster.id;
      }
      // An SLR that holds nothing would be an empty box, which Graphviz does not draw anyway.
      if (!holds) continue;
      std::vector<std::string> used;
      for (int i = 0; i < kResources; ++i) {
        used.push_back(known[static_cast<std::size_t>(i)]
                           ? std::to_string(static_cast<long long>(sums[static_cast<std::size_t>(i)]))
                           : std::string());
      }
      cluster.use = amountsOf(used, name);
      for (Amount const& amount : cluster.use) {
        cluster.fullness = std::max(cluster.fullness, amount.percent);
      }
      graph_.clusters.push_back(std::move(cluster));
    }
    if (!unplaced) return;
    DiagramGraph::Cluster cluster;
    cluster.name = "unplaced";
    cluster.id = "slr:unplaced";
    for (ComputeUnit& unit : computeUnits_) {
      if (!unit.node.slr.empty()) continue;
      unit.node.cluster = cluster.id;
      ++cluster.computeUnits;
    }
    graph_.clusters.push_back(std::move(cluster));
  }

  void assemble() {
    for (Node& kernel : kernels_) graph_.nodes.push_back(std::move(kernel));
    for (ComputeUnit& unit : computeUnits_) {
      Edge edge;
      edge.kind = EdgeKind::kInstance;
      edge.from = graph_.nodes[kernelByName_.at(unit.node.kernel)].id;
      edge.to = unit.node.id;
      edge.id = "edge:" + edge.from + "->" + edge.to;
      graph_.edges.push_back(std::move(edge));
    }
    for (ComputeUnit& unit : computeUnits_) graph_.nodes.push_back(std::move(unit.node));
    for (Memory& memory : memories_) graph_.nodes.push_back(std::move(memory.node));
    for (Edge& edge : memoryEdges_) {
      edge.id = "edge:" + edge.from + "->" + edge.to;
      graph_.edges.push_back(std::move(edge));
    }
    std::set<std::string> streamIds;
    for (Edge& edge : streams_) {
      edge.id = uniqueId("edge:" + edge.from + "->" + edge.to, edge.arguments.front(), streamIds);
      graph_.edges.push_back(std::move(edge));
    }
    if (unresolved_ == 1) {
      graph_.notes.push_back("1 connection names no compute unit or memory of this diagram.");
    } else if (unresolved_ > 1) {
      graph_.notes.push_back(std::to_string(unresolved_) +
                             " connections name no compute unit or memory of this diagram.");
    }
    if (danglingStreams_ == 1) {
      graph_.notes.push_back("1 streaming connection has no ends.");
    } else if (danglingStreams_ > 1) {
      graph_.notes.push_back(std::to_string(danglingStreams_) +
                             " streaming connections have no ends.");
    }
    if (!graph_.nodes.empty()) return;
    Node empty;
    empty.kind = NodeKind::kNote;
    empty.id = "note:empty";
    empty.name = "This diagram has no kernels, compute units or memories.";
    graph_.nodes.push_back(std::move(empty));
  }

  pb::Qsa const& qsa_;
  pb::qrxBin const& qrxbin_;
  DiagramGraphBuilder::Options const& options_;

  DiagramGraph graph_;
  std::set<std::string> ids_;
  std::unordered_map<std::string, pb::Clock const*> platformClocks_;
  std::map<std::string, std::vector<std::string>> available_;
  std::vector<std::string> platformSlrs_;
  std::vector<Memory> memories_;
  std::unordered_map<std::string, std::size_t> memoryById_;
  std::vector<Node> kernels_;
  std::unordered_map<std::string, std::size_t> kernelByName_;
  std::vector<ComputeUnit> computeUnits_;
  std::unordered_map<std::string, std::size_t> computeUnitByName_;
  std::vector<std::unordered_map<std::string, std::size_t>> computeUnitByRegionId_;
  std::vector<Edge> memoryEdges_;
  std::map<std::pair<std::size_t, std::size_t>, std::size_t> memoryEdgeByEnds_;
  std::vector<Edge> streams_;
  std::set<std::tuple<long, std::string, long, std::string>> streamsSeen_;
  int unresolved_ = 0;
  int danglingStreams_ = 0;
};

}  // namespace

DiagramGraph DiagramGraphBuilder::build(pb::outerContainer const& diagram) const {
  return Build(diagram, options_).run();
}

}  // namespace qvviews
