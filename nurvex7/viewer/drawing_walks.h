#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/graph.h"

#include <vector>

namespace tamsel7 {
class IPainter;
}

namespace nurvex7 {

/// Draws the node that it is applied to, through its handler; what the node owns is left alone.
class NURVEX7_API DrawNode {
public:
    DrawNode(tamsel7::IPainter* on, double at_scale) : painter(on), scale(at_scale) {}
    void operator()(const Node& node) const;

private:
    tamsel7::IPainter* painter;
    double scale;
};

/// Draws the edge that it is applied to, through its handler.
class NURVEX7_API DrawEdge {
public:
    DrawEdge(tamsel7::IPainter* on, double at_scale) : painter(on), scale(at_scale) {}
    void operator()(const Edge& edge) const;

private:
    tamsel7::IPainter* painter;
    double scale;
};

/// Applied to nodes: gathers the edges that meet their rectangles.
///
/// Order   that of the nodes, and within a node that of the hit test; repeated ones stay
class NURVEX7_API CollectEdgesInNodes {
public:
    explicit CollectEdgesInNodes(graph_ptr2<Graph> of_graph) : graph(of_graph) {}
    void operator()(const Node& node);

    std::vector<Edge> edges;
    graph_ptr2<Graph> graph;
};

/// Brings nodes into the order in which they are painted: what is owned after its owners, whatever
/// their ids; then by id; the root and break nodes last.
///
/// NodeByOwnershipComparator answers for two nodes at a time. Where a node was moved under an owner
/// of a higher id, it contradicts itself over three (the owned one before a stranger by id, the
/// stranger before the owner by id, the owner before the owned one), and no algorithm may sort by
/// it. The order here is the comparator's wherever that is one; else owners are drawn forward to
/// just before the first node that they own.
NURVEX7_API void sort_by_ownership(std::vector<Node>& nodes);

} // namespace nurvex7
