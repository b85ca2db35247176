#include "nurvex7/model/folding.h"

#include "nurvex7/model/kept_structure.h"
#include "nurvex7/model/queries.h"

#include <typeinfo>
#include <vector>

namespace nurvex7 {

namespace {

int with_mask(int flags, int mask, bool on) {
    return on ? flags | mask : flags & ~mask;
}

NodeSet neighbours(const Node& node, FoldDirection direction) {
    return direction == FOLD_CHILDREN ? node.GetChildren() : node.GetParents();
}

/// The mark of what came back belongs to the last fold alone.
void clear_new_marks(const Node& node) {
    ForEachNodeIn(GetRoot(node), MarkOld, true, true);
}

void apply_to_each(NodeSet nodes, void (*apply)(Node)) {
    for (int i = 0; i < nodes.GetCount(); ++i) {
        apply(nodes.GetItem(i));
    }
}

void apply_to_each(EdgeSet edges, void (*apply)(Edge)) {
    for (int i = 0; i < edges.GetCount(); ++i) {
        apply(edges.GetItem(i));
    }
}

/// Gives whether what the node owns may still be drawn.
bool mark_one_node(const Node& node, bool visible) {
    const bool drawn = visible && !IsFlagSet(node, NODE_HIDDEN);
    SetFlag(node, NODE_DRAWN, drawn);
    if (!drawn) {
        apply_to_each(node.GetEdgesIn(), _mark_edge_nondrawn);
        apply_to_each(node.GetEdgesOut(), _mark_edge_nondrawn);
    }
    return drawn;
}

} // namespace

void SetFlag(Node node, int mask, bool on) {
    node.SetCondition(with_mask(node.GetCondition(), mask, on));
}

void SetFlag(Edge edge, int mask, bool on) {
    edge.SetCondition(with_mask(edge.GetCondition(), mask, on));
}

bool IsFlagSet(const Node& node, int mask) {
    return (node.GetCondition() & mask) != 0;
}

bool IsFlagSet(const Edge& edge, int mask) {
    return (edge.GetCondition() & mask) != 0;
}

void Hide(Node node) {
    SetFlag(node, NODE_HIDDEN, true);
}

void Show(Node node) {
    if (IsFlagSet(node, NODE_HIDDEN)) {
        SetFlag(node, NODE_NEW, true);
    }
    SetFlag(node, NODE_HIDDEN, false);
}

void Select(Node node) {
    SetFlag(node, NODE_SELECTED, true);
}

void Unselect(Node node) {
    SetFlag(node, NODE_SELECTED, false);
}

void MarkOld(Node node) {
    SetFlag(node, NODE_NEW, false);
}

// Deliberate: nothing is asked about the neighbours first. A fold of nothing clears the marks and
// queues an update all the same; Unfold has the test that is missing here.
void Fold(Node node, FoldDirection direction) {
    if (node.IsDummy()) {
        return;
    }
    const NodeSet hidden = neighbours(node, direction);
    clear_new_marks(node);
    apply_to_each(hidden, Hide);
    node.GetOwner().UpdateLayout();
}

void Unfold(Node node, FoldDirection direction) {
    if (node.IsDummy()) {
        return;
    }
    const NodeSet shown = neighbours(node, direction);
    if (shown.GetCount() == 0) {
        return;
    }
    clear_new_marks(node);
    apply_to_each(shown, Show);
    node.GetOwner().UpdateLayout();
}

namespace {

/// Has everything that the marks below a root were computed from, or written to, tell of changes.
class MarkWatch {
public:
    explicit MarkWatch(DefaultRootNodeImpl& top)
        : root(top), notes(top.notes.get() != nullptr ? top.notes.get() : new GraphNotes) {}

    /// The marks hold from here on, unless there is a node or an edge of another kind: it may
    /// change and not tell.
    void Begin() {
        std::vector<DefaultRootNodeImpl*> open{&root};
        bool all_tell = true;
        while (all_tell && !open.empty()) {
            DefaultRootNodeImpl& next = *open.back();
            open.pop_back();
            tell_notes(next, notes);
            all_tell = watch_edges(next) && watch_owned(next, open);
        }
        notes->drawn_marks_hold = all_tell;
    }

private:
    bool watch_edges(DefaultRootNodeImpl& owner) {
        if (&owner == &root) {
            return true;
        }
        const auto& node = static_cast<DefaultNodeImpl&>(owner);
        // The marks of a drawn node do not reach back along its edges in.
        return watch_set(*node.edges_out) &&
               ((node.condition & NODE_DRAWN) != 0 || watch_set(*node.edges_in));
    }

    bool watch_set(edge_impl_vector& edges) {
        for (const graph_ptr<IEdgeImpl>& edge : edges) {
            const IEdgeImpl& of_a_kind = *edge;
            if (typeid(of_a_kind) != typeid(DefaultEdgeImpl)) {
                return false;
            }
            tell_notes(static_cast<DefaultEdgeImpl&>(*edge), notes);
        }
        return true;
    }

    static bool watch_owned(DefaultRootNodeImpl& owner, std::vector<DefaultRootNodeImpl*>& open) {
        for (const graph_ptr<INodeImpl>& owned : *owner.owned) {
            const INodeImpl& of_a_kind = *owned;
            if (typeid(of_a_kind) != typeid(DefaultNodeImpl)) {
                return false;
            }
            if (owned.get() != &owner) {
                open.push_back(static_cast<DefaultNodeImpl*>(owned.get()));
            }
        }
        return true;
    }

    DefaultRootNodeImpl& root;
    graph_ptr<GraphNotes> notes;
};

} // namespace

// All edges on first, then the nodes, which take edges off again: the other way round an edge from
// a drawn node to a hidden one would come back.
void MarkDrawnIn(graph_ptr2<Graph> graph) {
    const Node root = graph->GetRoot();
    DefaultRootNodeImpl* const top = telling_root(root.get_impl());
    if (top != nullptr && top->notes.get() != nullptr && top->notes->drawn_marks_hold) {
        return; // every mark stands as it was written
    }
    ForEachNodeIn(root, ProcessOutgoingEdges<void (*)(Edge)>(_mark_edge_drawn), false, false);
    _mark_node_drawn(root, true);
    if (top != nullptr) {
        MarkWatch(*top).Begin();
    }
}

int _mark_node_drawn(Node node, bool visible) {
    struct Pending {
        Node node;
        bool visible;
    };
    std::vector<Pending> pending{{node, visible}};
    while (!pending.empty()) {
        const Pending next = pending.back();
        pending.pop_back();
        const bool drawn = mark_one_node(next.node, next.visible);
        NodeSet owned = next.node.GetOwned();
        for (int i = 0; i < owned.GetCount(); ++i) {
            const Node inner = owned.GetItem(i);
            if (inner != next.node) {
                pending.push_back({inner, drawn});
            }
        }
    }
    return 0;
}

void _mark_edge_drawn(Edge edge) {
    SetFlag(edge, EDGE_DRAWN, true);
}

void _mark_edge_nondrawn(Edge edge) {
    SetFlag(edge, EDGE_DRAWN, false);
}

} // namespace nurvex7
