#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/graph_ptr.h"
#include "nurvex7/foundation/graph_ptr2.h"
#include "nurvex7/foundation/graph_set.h"
#include "nurvex7/layout/ilayout.h"
#include "nurvex7/model/topology.h"
#include "nurvex7/model/visual_store.h"
#include "nurvex7/platform/tamsel7/geometry.h"
#include "nurvex7/presentation/iedge_handler.h"
#include "nurvex7/presentation/inode_handler.h"

#include <string>

namespace nurvex7 {

/// A node as callers hold it: a small value of the graph's visual store and the node itself. It
/// keeps both alive, but not the Graph.
///
/// Nodes compare by id.
/// Duty    the handle is not null (GetOwner of the root gives a null one) and the node has not been
///         removed, unless an operation says that it bears that
class NURVEX7_API Node {
public:
    Node(graph_ptr<IGraphVis> store, graph_ptr<INodeImpl> node);
    Node(const Node&) = default;
    ~Node() = default;

    /// Deliberate: a node of the same id is not assigned, so that the handle keeps its own store
    /// and node; the roots of two graphs share the id 0. Both ids are read: neither may be null.
    Node& operator=(const Node& other);

    bool operator!=(const Node& other) const { return GetID() != other.GetID(); }
    bool operator==(const Node& other) const { return GetID() == other.GetID(); }
    bool operator<(const Node& other) const { return GetID() < other.GetID(); }

    /// 0 for the root, positive for real nodes, negative for break nodes.
    int GetID() const { return impl->get_id(); }
    std::string GetCaption() const { return impl->get_caption(); }
    void SetCaption(const std::string& text) { impl->set_caption(text); }
    /// A number that is the caller's own; 0 at creation.
    int GetTag() const { return impl->get_tag(); }
    void SetTag(const int& value) { impl->set_tag(value); }
    /// The flag word, see flags.h. The root's stays 0.
    int GetCondition() const { return impl->get_condition(); }
    void SetCondition(int flags) { impl->set_condition(flags); }

    /// Distinct sources of the edges in. Order: ascending id.
    NodeSet GetParents() const;
    /// Distinct targets of the edges out. Order: ascending id.
    NodeSet GetChildren() const;
    /// What this node owns directly, as a live view. Order: as added, or by id after a removal.
    NodeSet GetOwned() const;
    EdgeSet GetEdgesIn() const;
    EdgeSet GetEdgesOut() const;
    /// The owner; a null handle for the root and for break nodes.
    Node GetOwner() const;

    /// A new node owned by this one. Queues no layout.
    Node AddNode();
    /// A new edge from this node to another. Parallel edges and edges to itself are legal.
    /// Duty    the target is a real node. On the root the edge comes back null.
    Edge LinkTo(Node target);
    /// Moves this node under another owner. A move under one of its own descendants is refused
    /// without a word.
    /// Duty    the owner is not this node itself
    void SetOwner(Node owner);
    /// True for break nodes, for the root and for removed nodes: what has no owner.
    bool IsDummy() const { return !impl->has_owner(); }
    /// Removes this node with all that it owns; on the root, only what it owns.
    void Remove();

    /// Space   graph
    tamsel7::size<double> GetSize() const {
        const DefaultNodeVis* const known = known_vis_in(vis.get(), *impl);
        return known != nullptr ? known->get_size() : vis->get_node_vis(impl)->get_size();
    }
    void SetSize(const tamsel7::size<double>& value);
    /// Top left corner. Space: graph; owner-relative inside a layout run.
    tamsel7::point<double> GetPosition() const { return place_in_store(*vis, impl); }
    void SetPosition(const tamsel7::point<double>& value) { set_place_in_store(*vis, impl, value); }
    void SetPosition(double x, double y) { SetPosition(tamsel7::point<double>{x, y}); }

    /// The node's own layout, or the graph's default.
    graph_ptr2<ILayout> GetLayout() const;
    void SetLayout(graph_ptr2<ILayout> layout);
    /// The node's own handler, or the graph's default.
    graph_ptr2<INodeHandler> GetHandler() const;
    void SetHandler(graph_ptr2<INodeHandler> handler);

    /// Lay out what this node owns from nothing. Queues.
    void MakeLayout();
    /// Lay out what this node owns again, keeping what stands. Queues.
    void UpdateLayout();
    /// Sizes inside this node have changed. Queues.
    void ResizeSelf();
    /// ResizeSelf on this node and on everything inside it, owners first. Queues.
    void ResizeAll();

    const graph_ptr<IGraphVis>& get_vis() const { return vis; }
    const graph_ptr<INodeImpl>& get_impl() const { return impl; }

private:
    graph_ptr<IGraphVis> vis;
    graph_ptr<INodeImpl> impl;
};

/// An edge as callers hold it: a small value of the graph's visual store and the edge itself.
///
/// Edges compare by id; edge ids are a range of their own.
class NURVEX7_API Edge {
public:
    Edge(graph_ptr<IGraphVis> store, graph_ptr<IEdgeImpl> edge);

    bool operator!=(const Edge& other) const { return GetID() != other.GetID(); }
    bool operator==(const Edge& other) const { return GetID() == other.GetID(); }
    bool operator<(const Edge& other) const { return GetID() < other.GetID(); }

    int GetID() const { return impl->get_id(); }
    std::string GetCaption() const { return impl->get_caption(); }
    void SetCaption(const std::string& text) { impl->set_caption(text); }
    int GetTag() const { return impl->get_tag(); }
    void SetTag(const int& value) { impl->set_tag(value); }
    int GetCondition() const { return impl->get_condition(); }
    void SetCondition(int flags) { impl->set_condition(flags); }

    /// The ends; null handles once the edge is removed.
    Node From() const;
    Node To() const;

    /// There are no handlers per edge: always the graph's default.
    graph_ptr2<IEdgeHandler> GetHandler() const;

    /// The whole route. Order: from the source to the target.
    NodeSet GetBreakNodes() const;
    /// The run of the route inside one owner, as a live view. Order: from the tail to the head.
    NodeSet GetBreakNodesIn(const Node& owner) const;
    /// The same run where there is one, or null: asking enters none.
    graph_ptr<node_impl_set> FindBreakNodesIn(const Node& owner) const;
    /// Appends break nodes to the run inside an owner. A count below 1 changes nothing.
    void AddBreakNodesIn(const Node& owner, int count);
    void RemoveBreakNodesIn(const Node& owner);
    void RemoveBreakNodes();

    /// Takes the edge out of the graph, its visual record with it.
    void Remove();

    const graph_ptr<IGraphVis>& get_vis() const { return vis; }
    const graph_ptr<IEdgeImpl>& get_impl() const { return impl; }

private:
    graph_ptr<IGraphVis> vis;
    graph_ptr<IEdgeImpl> impl;
};

/// A neighbour and the edge that leads to it.
///
/// Order   by node id, between equal node ids by edge id
struct NURVEX7_API NodeEdgePair {
    Node node;
    Edge edge;

    bool operator<(const NodeEdgePair& other) const {
        const int a = node.GetID();
        const int b = other.node.GetID();
        return a != b ? a < b : edge.GetID() < other.edge.GetID();
    }
};

/// Nodes by index, as a live view: what is added to or removed from the set behind it shows at
/// once, so that a walk over a set that changes reads GetCount afresh at each step.
class NURVEX7_API NodeSet : public IGraphSet<Node> {
public:
    NodeSet(graph_ptr<IGraphVis> store, graph_ptr<node_impl_set> set);
    NodeSet(const NodeSet&) = default;
    NodeSet& operator=(const NodeSet&) = default;
    ~NodeSet() override;

    int GetCount() const override { return inner->GetCount(); }
    Node GetItem(int index) override { return Node(vis, inner->GetItem(index)); }

private:
    graph_ptr<node_impl_set> inner;
    graph_ptr<IGraphVis> vis;
};

/// Edges by index, as a live view like NodeSet.
class NURVEX7_API EdgeSet : public IGraphSet<Edge> {
public:
    EdgeSet(graph_ptr<IGraphVis> store, graph_ptr<edge_impl_set> set);
    EdgeSet(const EdgeSet&) = default;
    EdgeSet& operator=(const EdgeSet&) = default;
    ~EdgeSet() override;

    int GetCount() const override { return inner->GetCount(); }
    Edge GetItem(int index) override { return Edge(vis, inner->GetItem(index)); }

private:
    graph_ptr<edge_impl_set> inner;
    graph_ptr<IGraphVis> vis;
};

/// Make of the node's layout, at once and past the queue.
NURVEX7_API void _make_layout(Node node);
/// Update of the node's layout, at once and past the queue.
NURVEX7_API void _update_layout(Node node);
/// ResizeAll as a function, for walks.
NURVEX7_API void _apply_resize_all(Node node);
/// RemoveBreakNodes as a function, for walks.
NURVEX7_API void _remove_break_nodes(Edge edge);

} // namespace nurvex7
