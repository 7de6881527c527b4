// The graph model of a stored diagram: what a picture of it shows, before any layout.
#ifndef VIEWS_DIAGRAMGRAPH_H_
#define VIEWS_DIAGRAMGRAPH_H_

#include <cstddef>
#include <string>
#include <vector>

namespace qvviews {

// Nodes, edges and clusters with every text a picture needs, made by DiagramGraphBuilder and
// read by DotWriter and HtmlPage. A plain value: copy it, compare it, keep it as long as needed.
//
// Every node and cluster has a stable id, which the DOT text, the SVG and the HTML page keep:
//   cu:<name>       a compute unit             kernel:<name>   a kernel
//   mem:<tag>       a memory bank, or a group of unused banks under a tag such as HBM[8..31]
//   slr:<name>      the cluster of one SLR     slr:unplaced    compute units of unknown SLR
//   note:empty      the one node of a diagram with nothing to draw
class DiagramGraph {
 public:
  enum class NodeKind { kKernel, kComputeUnit, kMemory, kMemoryGroup, kNote };
  enum class EdgeKind {
    kInstance,  // kernel to one of its compute units
    kStream,    // compute unit to compute unit, a streaming connection
    kMemory,    // compute unit to a memory, for one or more of its arguments
  };

  // One clock pin. Frequencies in MHz; 0 where the diagram gives none.
  struct Clock {
    std::string pin;
    std::string clockId;        // the platform clock's id, as stored; may be empty
    std::string platformClock;  // that clock's name; empty when no platform clock has the id
    double requested = 0;
    double achieved = 0;
    double platform = 0;  // the platform clock's own frequency
  };

  // One resource of one design state, beside what the compute unit's SLR offers of it.
  struct Amount {
    std::string resource;   // "LUT", "REG", "BRAM", "DSP" or "URAM"
    std::string used;       // as stored
    std::string available;  // the SLR's, as stored; empty when not known
    double percent = -1;    // used / available * 100; -1 when it cannot be computed
  };

  struct StateResources {
    std::string state;  // "Synthesized", "Fully Placed", "Routed", or "Unknown state"
    std::vector<Amount> amounts;  // LUT, REG, BRAM, DSP, URAM
  };

  struct Node {
    NodeKind kind = NodeKind::kNote;
    std::string id;
    std::string name;     // compute unit or kernel name, memory tag, group tag, or a note's text
    std::string cluster;  // id of the cluster that holds it; empty for none

    // Compute units.
    std::string kernel;
    std::string baseAddress;  // also a single memory's
    std::string slr;          // empty when unplaced
    std::string slrFrom;      // how the SLR was found: "resources", "memories", "only SLR"
    std::vector<Clock> clocks;  // also a kernel's, with the requested frequency only
    std::vector<StateResources> resources;  // design states in flow order: the last is the latest

    // Memories and groups of unused banks.
    std::string memoryType;  // "DDR4", "HBM", ...; "memory" for an unknown type
    std::string memorySlr;   // may be empty
    std::string sizeKb;      // a group's: the total of its banks, when every size is a number
    bool used = false;
    int banks = 1;  // banks folded into this node
    std::vector<std::string> tags;  // a group's banks

    // Kernels: how many compute units they have.
    int computeUnits = 0;
  };

  struct Edge {
    EdgeKind kind = EdgeKind::kInstance;
    std::string id;    // "edge:<from>-><to>"
    std::string from;  // node ids
    std::string to;
    // A memory edge's argument names; a stream's one "<source port> -> <destination port>".
    std::vector<std::string> arguments;
  };

  struct Cluster {
    std::string id;
    std::string name;  // "SLR0", or "unplaced"
    int computeUnits = 0;
    // The latest design state of its compute units, summed, against what the SLR offers.
    std::vector<Amount> use;
    double fullness = -1;  // the largest percent of `use`; -1 when none is known
  };

  std::string title;                // platform and binary
  std::vector<std::string> notes;   // what the picture could not show, one sentence each
  std::vector<Node> nodes;          // kernels, compute units, then memories, in diagram order
  std::vector<Edge> edges;          // instance edges, then memory edges, then streams
  std::vector<Cluster> clusters;    // SLRs in platform order, then others by name, unplaced last

  // The node or cluster with that id, or nullptr.
  Node const* node(std::string const& id) const;
  Cluster const* cluster(std::string const& id) const;

  std::size_t count(NodeKind kind) const;
  std::size_t count(EdgeKind kind) const;
};

}  // namespace qvviews

#endif  // VIEWS_DIAGRAMGRAPH_H_
