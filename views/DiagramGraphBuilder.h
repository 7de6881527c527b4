// Turns a stored diagram into the graph model that the pictures draw.
#ifndef VIEWS_DIAGRAMGRAPHBUILDER_H_
#define VIEWS_DIAGRAMGRAPHBUILDER_H_

#include "proto/system_diagram.pb.h"
#include "views/DiagramGraph.h"
#include "views/IpLayout.h"

namespace qvviews {

// Reads one stored diagram and nothing else (but the optional IP layout of the run-time data
// file that made it) and decides what a picture of it shows:
//
// - one node per kernel, and one per compute unit with an edge from its kernel; a compute unit
//   carries its base address, its clocks (requested, achieved, and the platform clock's
//   frequency) and its resources per design state as shares of its SLR;
// - one node per memory of the platform, but unused banks without connections, two or more of
//   one type on one SLR, fold into one node with their count: 32 HBM channels of which 8 are in
//   use draw as 9 nodes;
// - compute units in one cluster per SLR, the SLR taken from the compute unit's resource use per
//   SLR, else from the SLRs of the memories it is connected to, else from the platform when it
//   has one SLR only; "unplaced" otherwise. Memories stand in the cluster of their SLR;
// - a memory edge per compute unit and memory, naming the arguments on it, and a stream edge per
//   streaming connection; other connections (IP blocks, clocks, resets) are not drawn.
//
// What cannot be drawn (connection ends that name no compute unit or memory of the diagram,
// streams without ends) is counted in the model's notes, so that the picture says so.
class DiagramGraphBuilder {
 public:
  struct Options {
    // The layout of the run-time data file that made the diagram. Without one, the compute unit
    // end of an imported connection is taken as a compute unit's id, which holds only while no
    // plain IP block stands before a compute unit in that file (IpLayout). An end that carries
    // an instance name is found by that name in any case.
    IpLayout ipLayout;
    bool foldUnusedBanks = true;
  };

  DiagramGraphBuilder() = default;
  explicit DiagramGraphBuilder(Options options) : options_(std::move(options)) {}

  // The model of `diagram`, which is left untouched. Never throws for any content of the
  // diagram: texts that should be numbers and are not leave the value unknown.
  DiagramGraph build(ProfileAnalyzerSystemDiagramSerializable::outerContainer const& diagram) const;

 private:
  Options options_;
};

}  // namespace qvviews

#endif  // VIEWS_DIAGRAMGRAPHBUILDER_H_
