#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/flags.h"
#include "nurvex7/model/graph.h"

namespace nurvex7 {

/// Sets or clears the bits of a mask in the condition word.
NURVEX7_API void SetFlag(Node node, int mask, bool on);
NURVEX7_API void SetFlag(Edge edge, int mask, bool on);
/// True where any bit of the mask is set.
NURVEX7_API bool IsFlagSet(const Node& node, int mask);
NURVEX7_API bool IsFlagSet(const Edge& edge, int mask);

NURVEX7_API void Hide(Node node);
/// Shows a node, and marks it new where it was hidden.
NURVEX7_API void Show(Node node);
NURVEX7_API void Select(Node node);
NURVEX7_API void Unselect(Node node);
/// Clears the mark of a node that came back from hidden.
NURVEX7_API void MarkOld(Node node);

/// Hides the direct neighbours of a node in one direction, over the whole graph and one step far.
/// Clears every new mark first.
///
/// Queues  UpdateLayout of the node's owner. Neighbours in other clusters are hidden too, but their
///         owners are not queued.
/// Deliberate: a fold where there is nothing to fold still clears the marks and queues; an unfold
/// there does nothing at all.
NURVEX7_API void Fold(Node node, FoldDirection direction);
/// Shows the direct neighbours of a node in one direction; those that were hidden count as new.
NURVEX7_API void Unfold(Node node, FoldDirection direction);

/// Computes the drawn marks of the whole graph: a node is drawn where neither it nor any owner is
/// hidden, an edge where both of its ends are drawn.
NURVEX7_API void MarkDrawnIn(graph_ptr2<Graph> graph);

/// Marks one subtree: drawn where `visible` is true and no node on the way is hidden. Takes the
/// mark off all edges that touch what is not drawn. Gives 0, for use in walks.
NURVEX7_API int _mark_node_drawn(Node node, bool visible);
NURVEX7_API void _mark_edge_drawn(Edge edge);
NURVEX7_API void _mark_edge_nondrawn(Edge edge);

} // namespace nurvex7
