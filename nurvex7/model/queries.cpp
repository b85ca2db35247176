#include "nurvex7/model/queries.h"

#include <algorithm>
#include <cstddef>
#include <tuple>

namespace nurvex7 {

namespace {

using pair_set = GraphSet<NodeEdgePair>;
using edge_end_t = Node (Edge::*)() const;
using node_edges_t = EdgeSet (Node::*)() const;

/// What a pair sorts by, and where it stood.
struct SortKey {
    int node_id;
    int edge_id;
    int place;

    bool operator<(const SortKey& other) const {
        return std::tie(node_id, edge_id) < std::tie(other.node_id, other.edge_id);
    }
};

// Handles count and refuse to be assigned between equal ids, so the keys are sorted instead of the
// pairs, and each pair is copied once.
void sort_pairs(pair_set& set) {
    if (set.is_sorted()) {
        return;
    }
    std::vector<SortKey> keys;
    keys.reserve(static_cast<std::size_t>(set.GetCount()));
    for (const NodeEdgePair& pair : set) {
        keys.push_back({pair.node.GetID(), pair.edge.GetID(), static_cast<int>(keys.size())});
    }
    if (!std::is_sorted(keys.begin(), keys.end())) {
        std::sort(keys.begin(), keys.end());
        const std::vector<NodeEdgePair> items = set.take_items();
        set.reserve(items.size());
        for (const SortKey& key : keys) {
            set.push_back(items[static_cast<std::size_t>(key.place)]);
        }
    }
    set.mark_sorted();
}

/// The frame that the four queries share: the inside of the node, deepest first, under a functor.
template <typename Functor>
graph_ptr2<IGraphSet<NodeEdgePair>> collect(const Node& node, edge_end_t edge_end,
                                            node_edges_t node_edges) {
    graph_ptr2<pair_set> result(new pair_set, /*owns=*/true);
    // Deliberate: what hangs in the air, inside a node that owns itself, has no neighbours.
    if (!node.IsDummy() && belongs_to_root(node.get_impl())) {
        ForEachNodeIn(node, Functor{result, node, edge_end, node_edges}, true, true);
        sort_pairs(*result);
    }
    return result;
}

/// The node itself, or what is above it, that stands directly in an owner; null where the walk
/// upward ends without having met that owner.
graph_ptr<INodeImpl> lift_into(graph_ptr<INodeImpl> node, int owner_id) {
    graph_ptr<INodeImpl> owner = owner_above(node);
    while (owner.get() != nullptr && owner->get_id() != owner_id && owner->get_id() != 0) {
        node = owner;
        owner = owner_above(node);
    }
    const bool beside = owner.get() != nullptr && owner->get_id() == owner_id;
    return beside ? node : graph_ptr<INodeImpl>();
}

bool lies_inside(const Node& node, const Node& owner) {
    graph_ptr<INodeImpl> above = owner_above(node.get_impl());
    while (above.get() != nullptr && above != owner.get_impl()) {
        above = owner_above(above);
    }
    return above.get() != nullptr;
}

bool is_end(const Node& node, const Node& end) {
    return end.get_impl().get() != nullptr && end == node;
}

} // namespace

void GetNodeEdgeEx::operator()(const Node& node) {
    const int owner_id = base.GetOwner().GetID();
    EdgeSet edges = (node.*node_edges)();
    for (int i = 0; i < edges.GetCount(); ++i) {
        const Edge edge = edges.GetItem(i);
        const Node far_end = (edge.*edge_end)();
        if (far_end.get_impl().get() == nullptr) {
            continue;
        }
        if (far_end == base && node == base) {
            result->push_back({far_end, edge});
            continue;
        }
        const graph_ptr<INodeImpl> sibling = lift_into(far_end.get_impl(), owner_id);
        if (sibling.get() != nullptr && sibling != base.get_impl()) {
            result->push_back({Node(far_end.get_vis(), sibling), edge});
        }
    }
}

void CheckEdge::operator()(const Edge& edge) {
    const Node far_end = (edge.*edge_end)();
    if (far_end.get_impl().get() == nullptr) {
        return;
    }
    if (far_end == owner) {
        result->push_back({far_end, edge});
        return;
    }
    graph_ptr<INodeImpl> above = far_end.get_impl();
    while (above->get_id() != 0) {
        above = owner_above(above);
        if (above.get() == nullptr || above == owner.get_impl()) {
            return; // what belongs to nothing is no neighbour, and the inside is no crossing
        }
    }
    result->push_back({Node(far_end.get_vis(), above), edge});
}

void GetInOutEx::operator()(const Node& node) {
    CheckEdge check{edge_end, base.GetOwner(), result};
    EdgeSet edges = (node.*node_edges)();
    for (int i = 0; i < edges.GetCount(); ++i) {
        check(edges.GetItem(i));
    }
}

graph_ptr2<IGraphSet<NodeEdgePair>> GetChildrenEx(Node node) {
    return collect<GetNodeEdgeEx>(node, &Edge::To, &Node::GetEdgesOut);
}

graph_ptr2<IGraphSet<NodeEdgePair>> GetParentsEx(Node node) {
    return collect<GetNodeEdgeEx>(node, &Edge::From, &Node::GetEdgesIn);
}

graph_ptr2<IGraphSet<NodeEdgePair>> GetEdgesOutEx(Node node) {
    return collect<GetInOutEx>(node, &Edge::To, &Node::GetEdgesOut);
}

graph_ptr2<IGraphSet<NodeEdgePair>> GetEdgesInEx(Node node) {
    return collect<GetInOutEx>(node, &Edge::From, &Node::GetEdgesIn);
}

int CalcDegreeEx(graph_ptr2<IGraphSet<NodeEdgePair>> set) {
    int degree = 0;
    int current_id = 0;
    for (int i = 0; i < set->GetCount(); ++i) {
        const int id = set->GetItem(i).node.GetID();
        if (degree == 0 || id != current_id) {
            ++degree;
            current_id = id;
        }
    }
    return degree;
}

bool NodeOnEdge(Node node, Edge edge) {
    if (node.IsDummy()) {
        EdgeSet own_edge = node.GetEdgesOut();
        if (own_edge.GetCount() > 0 && own_edge.GetItem(0) == edge) {
            return true;
        }
    }
    return is_end(node, edge.From()) || is_end(node, edge.To());
}

bool ExistEdgeBetweenNodes(Node a, Node b) {
    EdgeSet edges = a.GetEdgesOut();
    for (int i = 0; i < edges.GetCount(); ++i) {
        if (is_end(b, edges.GetItem(i).To())) {
            return true;
        }
    }
    return false;
}

int InDegree(Node node) {
    return node.GetParents().GetCount();
}

int OutDegree(Node node) {
    return node.GetChildren().GetCount();
}

// A walk that does not reach a root, from a removed node say, answers with where it ended.
Node GetRoot(Node node) {
    graph_ptr<INodeImpl> top = node.get_impl();
    if (!IsRoot(node) && node.IsDummy()) {
        EdgeSet own_edge = node.GetEdgesOut();
        const graph_ptr<INodeImpl> source = own_edge.GetCount() > 0
                                                ? own_edge.GetItem(0).From().get_impl()
                                                : graph_ptr<INodeImpl>();
        top = source.get() != nullptr ? source : top;
    }
    for (auto above = owner_above(top); above.get() != nullptr; above = owner_above(top)) {
        top = above;
    }
    return Node(node.get_vis(), top);
}

bool IsRoot(const Node& node) {
    return node.GetID() == 0;
}

bool NodeByOwnershipComparator(Node a, Node b) {
    if (a.IsDummy() || b.IsDummy()) {
        return a.IsDummy() && b.IsDummy() ? a < b : b.IsDummy();
    }
    if (lies_inside(b, a)) {
        return true;
    }
    return !lies_inside(a, b) && a < b;
}

tamsel7::rectangle<double> MakeDRect(tamsel7::point<double> corner, tamsel7::size<double> extent) {
    return {corner.x, corner.y, corner.x + extent.width, corner.y + extent.height};
}

} // namespace nurvex7
