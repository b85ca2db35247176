// How runs nest: who is served before whom, and what one run takes over from the one before.

#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/queries.h"

#include <utility>

namespace nurvex7 {

// The answers of the structure queries live as long as the outermost run: the structure stands
// still while layouts run, and every run inside asks about a part of the same nest.
IncLayout::KeptAnswers::KeptAnswers(IncLayout& l, const Node& owner) : layout(l) {
    if (layout.structure == nullptr || !layout.structure->Covers(owner)) {
        replaced = true;
        before = std::exchange(layout.structure, std::make_unique<StructureIndex>(owner));
    }
}

IncLayout::KeptAnswers::~KeptAnswers() {
    if (replaced) {
        layout.structure = std::move(before);
    }
}

bool IncLayout::take_size_of_leaf(Node& owner) {
    if (owner.GetOwned().GetCount() != 0) {
        return false;
    }
    // A graph whose default handler was taken away measures nothing: sizes stay.
    const graph_ptr2<INodeHandler> handler = owner.GetHandler();
    if (handler.get() != nullptr) {
        owner.SetSize(handler->GetSize(owner));
    }
    return true;
}

// Serves everything inside an owner before the owner itself, innermost first, by the layout that
// each node answers to. Nests can be thousands of owners deep, so the walk keeps its own stack:
// nodes that answer to this object are served one by one, each finding its inside done already; a
// node with a layout of its own is handed to it whole.
void IncLayout::serve_inside(const Node& owner, void (*serve)(Node)) {
    const Node* const inside_done = std::exchange(served, nullptr);
    if (inside_done != nullptr && *inside_done == owner) {
        return;
    }
    struct Frame {
        Node node;
        NodeSet owned;
        int next;
    };
    std::vector<Frame> open;
    open.push_back(Frame{owner, owner.GetOwned(), 0});
    while (!open.empty()) {
        Frame& frame = open.back();
        if (frame.next < frame.owned.GetCount()) {
            const Node inner = frame.owned.GetItem(frame.next++);
            const graph_ptr2<ILayout> layout = inner.GetLayout();
            if (layout.get() != this) {
                serve(inner);
            } else {
                open.push_back(Frame{inner, inner.GetOwned(), 0});
            }
            continue;
        }
        const Node done = frame.node;
        open.pop_back();
        if (!open.empty()) {
            served = &done;
            serve(done);
            served = nullptr;
        }
    }
}

void IncLayout::start_run(const Node& owner) {
    nodes.clear();
    NodeSet owned = owner.GetOwned();
    nodes.reserve(static_cast<std::size_t>(owned.GetCount()));
    for (int i = 0; i < owned.GetCount(); ++i) {
        nodes.push_back(owned.GetItem(i));
    }
    level_nodes.clear();
}

// The store of the owner becomes the view on the past, and is filled anew by the run.
void IncLayout::remember_old_drawing(const Node& owner) {
    cur_info = &cluster_info[owner];
    old_info.default_node = cur_info->default_node;
    old_info.default_edge = cur_info->default_edge;
    old_info.node_info = std::move(cur_info->node_info);
    old_info.edge_info = std::move(cur_info->edge_info);
    cur_info->clear();
    // A node that met a Resize before it ever had a level comes out of it as old, on no level. It
    // has nothing to be restored to, so it counts as new.
    old_info.node_info.for_each([&](int, node_store::node_entry& entry) {
        if (entry.second.level < 0) {
            entry.second = old_info.default_node;
        }
    });
}

// From graph coordinates to owner-relative ones, less the height that the handler reports for the
// owner; the top margin makes up for a constant offset.
void IncLayout::take_old_drawing_back(const Node& owner) {
    const graph_ptr2<INodeHandler> handler = owner.GetHandler();
    const tamsel7::size<double> size =
        handler.get() != nullptr ? handler->GetSize(owner) : tamsel7::size<double>();
    const tamsel7::point<double> pos = owner.GetPosition();
    old_info.node_info.for_each([&](int, node_store::node_entry& entry) {
        Node node = entry.first;
        const tamsel7::point<double> p = node.GetPosition();
        node.SetPosition(p.x - pos.x, p.y - pos.y - size.height);
    });
}

std::span<const NodeEdgePair> IncLayout::children_of(const Node& node) {
    return structure->Children(node);
}

std::span<const NodeEdgePair> IncLayout::parents_of(const Node& node) {
    return structure->Parents(node);
}

std::span<const NodeEdgePair> IncLayout::edges_out_of(const Node& node) {
    return structure->EdgesOut(node);
}

std::span<const NodeEdgePair> IncLayout::edges_in_of(const Node& node) {
    return structure->EdgesIn(node);
}

} // namespace nurvex7
