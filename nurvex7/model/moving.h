#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/node.h"

namespace nurvex7 {

/// Moves one node by a vector.
NURVEX7_API void _shift(Node node, const tamsel7::point<double>& by);
/// Moves the break nodes that the edges of the pairs have inside `owner`.
NURVEX7_API void _break_nodes_shift(graph_ptr2<IGraphSet<NodeEdgePair>> pairs,
                                    const tamsel7::point<double>& by, Node owner);
/// Moves one node and the break nodes of its edges inside its owner. The edges from siblings are
/// left to those siblings, so that shifting all nodes of a cluster moves each edge once. Gives 0.
NURVEX7_API int ShiftWithEdges(Node node, tamsel7::point<double> by);
/// ShiftWithEdges by minus the position of the owner: from graph to owner-relative. Gives 0.
NURVEX7_API int UnshiftWithEdges(Node node);
/// ShiftWithEdges by `by` plus the position of the owner. Gives 0.
NURVEX7_API int _shift_position(Node node, tamsel7::point<double> by);

/// Moves a node and makes what it owns, at every depth, absolute: owner-relative to graph.
///
/// Deliberate: with a shift that is not zero the inside gets it twice, once from the owner's new
/// position and once by itself. Layouts shift by zero.
NURVEX7_API void ShiftPosition(Node node, tamsel7::point<double> by);
NURVEX7_API void ShiftPosition(Node node, double x, double y);
/// Takes what a node owns, at every depth, from graph to owner-relative. The node stays.
NURVEX7_API void UnshiftPosition(Node node);

/// Puts a node at a point with the first and last bend of its edges: the cheap move of a drag.
/// What the node owns stays behind. Space: graph.
NURVEX7_API void MoveNode(Node node, double x, double y);

} // namespace nurvex7
