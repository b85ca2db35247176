#pragma once

#include "nurvex7/export.h"
#include "nurvex7/model/flags.h"
#include "nurvex7/model/node.h"

#include <cstddef>
#include <vector>

namespace nurvex7 {

/// Applies f to a node and everything inside it, and gives f back with the state that it gathered.
///
/// Order   owners before what they own, or after it with `post_order`; siblings in set order, with
///         the count read afresh at each step. `include_self` false leaves out the top node only.
///         A node that was made its own owner is not met a second time inside itself.
template <typename F>
F ForEachNodeIn(const Node& top, F f, bool post_order, bool include_self) {
    struct Frame {
        Node node;
        NodeSet owned;
        int next;
    };
    const auto visit = [&](const Node& node, std::size_t depth) {
        if (depth > 0 || include_self) {
            f(node);
        }
    };
    std::vector<Frame> open;
    const auto enter = [&](const Node& node) {
        if (!post_order) {
            visit(node, open.size());
        }
        open.push_back(Frame{node, node.GetOwned(), 0});
    };
    enter(top);
    while (!open.empty()) {
        Frame& frame = open.back();
        if (frame.next < frame.owned.GetCount()) {
            const Node inner = frame.owned.GetItem(frame.next++);
            if (inner.get_impl().get() != frame.node.get_impl().get()) {
                enter(inner);
            }
            continue;
        }
        const Node done = frame.node;
        open.pop_back();
        if (post_order) {
            visit(done, open.size());
        }
    }
    return f;
}

/// Runs an edge function on every outgoing edge of the node that it is applied to.
template <typename F>
class ProcessOutgoingEdges {
public:
    explicit ProcessOutgoingEdges(F edge_function) : f(edge_function) {}
    void operator()(const Node& node) {
        EdgeSet edges = node.GetEdgesOut();
        for (int i = 0; i < edges.GetCount(); ++i) {
            f(edges.GetItem(i));
        }
    }

private:
    F f;
};

/// The neighbours of a node beside it in its owner, with everything inside the node folded into it:
/// one pair for each edge that leads from the node or its inside to the sibling or its inside.
///
/// They read structure only: hidden nodes count. A self-edge of the node gives a pair with the node
/// itself. Edges that stay inside the node, or that leave its owner, are not reported. The root and
/// break nodes have no neighbours. Edges whose far end was removed or belongs to no root are passed
/// over, by all four of these queries.
/// Order   by sibling id, then by edge id
NURVEX7_API graph_ptr2<IGraphSet<NodeEdgePair>> GetChildrenEx(Node node);
NURVEX7_API graph_ptr2<IGraphSet<NodeEdgePair>> GetParentsEx(Node node);

/// The edges from a node or its inside that cross the border of its owner, or end on the owner.
///
/// The node of a pair is the owner where the edge ends on the owner itself, else the root.
/// Order   by that node's id, then by edge id
NURVEX7_API graph_ptr2<IGraphSet<NodeEdgePair>> GetEdgesOutEx(Node node);
NURVEX7_API graph_ptr2<IGraphSet<NodeEdgePair>> GetEdgesInEx(Node node);

/// The number of distinct nodes in a set that is sorted as the queries above sort; on an unsorted
/// set, the number of runs.
NURVEX7_API int CalcDegreeEx(graph_ptr2<IGraphSet<NodeEdgePair>> set);

/// True where a break node lies on its edge, or a real node is an end of the edge.
/// Duty    the node is not the root
NURVEX7_API bool NodeOnEdge(Node node, Edge edge);
/// True where an edge leads from a to b. Directed.
NURVEX7_API bool ExistEdgeBetweenNodes(Node a, Node b);
/// Distinct neighbours over the whole graph, not edges and not per cluster.
NURVEX7_API int InDegree(Node node);
NURVEX7_API int OutDegree(Node node);
/// The root above a node; for a break node, above the source of its edge.
NURVEX7_API Node GetRoot(Node node);
NURVEX7_API bool IsRoot(const Node& node);
/// A strict order that puts owners before what they own and real nodes before break nodes and the
/// root; unrelated nodes go by id.
NURVEX7_API bool NodeByOwnershipComparator(Node a, Node b);
/// The rectangle of a top left corner and a size.
NURVEX7_API tamsel7::rectangle<double> MakeDRect(tamsel7::point<double> corner,
                                                 tamsel7::size<double> extent);

/// Applied to a node of the inside of `base` (or `base` itself): collects its edges to siblings of
/// `base`. `edge_end` is the far end of an edge, `node_edges` the edges of the direction.
class NURVEX7_API GetNodeEdgeEx {
public:
    void operator()(const Node& node);

    graph_ptr2<GraphSet<NodeEdgePair>> result;
    Node base;
    Node (Edge::*edge_end)() const;
    EdgeSet (Node::*node_edges)() const;
};

/// Applied to an edge: keeps it where it leaves the owner of `base`, or ends on that owner.
class NURVEX7_API CheckEdge {
public:
    void operator()(const Edge& edge);

    Node (Edge::*edge_end)() const;
    Node owner;
    graph_ptr2<GraphSet<NodeEdgePair>> result;
};

/// Applied to a node of the inside of `base` (or `base` itself): collects its edges that cross the
/// border of the owner of `base`.
class NURVEX7_API GetInOutEx {
public:
    void operator()(const Node& node);

    graph_ptr2<GraphSet<NodeEdgePair>> result;
    Node base;
    Node (Edge::*edge_end)() const;
    EdgeSet (Node::*node_edges)() const;
};

} // namespace nurvex7
