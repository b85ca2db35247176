// How runs nest: who is served before whom, and what one run takes over from the one before.

#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/level_graph.h"
#include "nurvex7/layout/ordinals.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <functional>
#include <typeinfo>
#include <utility>
#include <vector>

namespace nurvex7 {

// The answers of the structure queries are held for the outermost run: the structure stands still
// while layouts run, and every run inside asks about a part of the same nest.
IncLayout::KeptAnswers::KeptAnswers(IncLayout& l, const Node& owner) : layout(l) {
    if (layout.structure == nullptr || !layout.structure->Covers(owner)) {
        replaced = true;
        before = std::exchange(layout.structure, StructureIndex::For(owner));
        layout.forget_removed_owners();
    }
}

IncLayout::KeptAnswers::~KeptAnswers() {
    if (replaced) {
        layout.structure = std::move(before);
    }
}

// A removed owner owns nothing, so nobody asks for its tables again. No run is at work on one: an
// outer run of this object points at its own owner only after its inside has been served. All
// tables are looked at only when an eighth more have come, for a layout can serve many owners, and
// a Resize concerns one of them.
void IncLayout::forget_removed_owners() {
    if (cluster_info.size() < forget_at) {
        return;
    }
    const auto is_removed = [](const auto& entry) {
        return !IsRoot(entry.first) && entry.first.IsDummy();
    };
    std::erase_if(cluster_info, is_removed);
    std::erase_if(cluster_levels, is_removed);
    forget_at = cluster_info.size() + cluster_info.size() / 8 + 16;
}

namespace {

/// Names the owner whose inside has been served, for the length of its call.
class ServedMark {
public:
    ServedMark(int& mark, int id) : marked(mark) { marked = id; }
    ~ServedMark() { marked = IncLayout::NOBODY; }
    ServedMark(const ServedMark&) = delete;
    ServedMark& operator=(const ServedMark&) = delete;

private:
    int& marked;
};

} // namespace

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
// each node answers to. A node with a layout of its own is handed to it whole.
//
// Nests can be thousands of owners deep, so nodes that answer to this object are not served from
// within the call of their owner: the walk keeps its own stack, and each node finds its inside done
// when its turn comes. A derived layout may have put something before Make or Update that has to
// hear of an owner before its inside; it is called from within, unless it says that it has not.
void IncLayout::serve_inside(const Node& owner, void (*serve)(Node)) {
    if (std::exchange(served_id, NOBODY) == owner.GetID()) {
        return;
    }
    const bool is_plain = typeid(*this) == typeid(IncLayout);
    const bool from_outside = serves_nests_flat || is_plain;
    struct Frame {
        Node node;
        NodeSet owned;
        int next;
    };
    std::vector<Frame> open;
    open.push_back(Frame{owner, owner.GetOwned(), 0});
    while (!open.empty()) {
        count_steps(1);
        Frame& frame = open.back();
        if (frame.next < frame.owned.GetCount()) {
            const auto next = static_cast<std::size_t>(frame.next);
            ask_for_known(next + 12);
            if (next + 6 < nodes.size()) {
                prefetch(nodes[next + 6].get_impl()->known_vis);
            }
            Node inner = frame.owned.GetItem(frame.next++);
            const bool own_layout = inner.GetLayout().get() != this;
            if (inner.get_impl().get() == frame.node.get_impl().get()) {
                continue; // a node that owns itself has no inside to go into
            }
            if (is_plain && !own_layout && take_size_of_leaf(inner)) {
                continue; // all that any run does with it
            }
            if (own_layout || !from_outside) {
                serve(inner);
                continue;
            }
            open.push_back(Frame{inner, inner.GetOwned(), 0});
            continue;
        }
        const Node done = frame.node;
        open.pop_back();
        if (!open.empty()) {
            const ServedMark mark(served_id, done.GetID());
            serve(done);
        }
    }
}

void IncLayout::start_run(const Node& owner) {
    NodeSet owned = owner.GetOwned();
    const auto count = static_cast<std::size_t>(owned.GetCount());
    nodes.reserve(count);
    // Mostly it is the list of the run before, whose handles can stay.
    std::size_t taken = 0;
    for (std::size_t i = 0; i < count; ++i) {
        ask_for_known(i + 8);
        const Node inner = owned.GetItem(static_cast<int>(i));
        if (inner.IsDummy()) {
            continue; // it was deleted and still stands here
        }
        if (taken < nodes.size() && (nodes[taken].get_impl().get() != inner.get_impl().get() ||
                                     nodes[taken].get_vis().get() != inner.get_vis().get())) {
            nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(taken), nodes.end());
        }
        if (taken == nodes.size()) {
            nodes.push_back(inner);
        }
        ++taken;
    }
    nodes.erase(nodes.begin() + static_cast<std::ptrdiff_t>(taken), nodes.end());
    release_levels(last_levels);
    if (leaves_for_later()) {
        last_levels.swap(level_nodes);
    }
    release_levels(level_nodes);
    // What a run that was cut short by an exception has left.
    drop_run();
    level_graph.reset();
    ordinals.reset();
}

// What an owner owns is mostly what it owned in the run before, so that tells where to find it.
void IncLayout::ask_for_known(std::size_t i) const {
    if (i < nodes.size()) {
        prefetch(nodes[i].get_impl().get(), sizeof(DefaultNodeImpl));
    }
}

// The handles lie side by side, what they hold lies all over the memory.
void IncLayout::release_levels(std::vector<std::vector<Node>>& levels) {
    for (std::vector<Node>& level : levels) {
        const std::size_t count = level.size();
        for_each_ahead(
            count, [&](std::size_t) { level.pop_back(); },
            [&](std::size_t i) { prefetch_line(level[count - 1 - i].get_impl().get()); });
    }
    levels.clear();
}

// The store of the owner becomes the view on the past, and is filled anew by the run.
void IncLayout::remember_old_drawing(const Node& owner) {
    cur_info = &cluster_info[owner];
    old_info.default_node = cur_info->default_node;
    old_info.default_edge = cur_info->default_edge;
    old_info.edge_info = std::move(cur_info->edge_info);
    cur_info->edge_info.clear();
    if (std::exchange(remembered_id, owner.GetID()) == owner.GetID()) {
        // What it remembered the last time is of this owner, and so will be what is entered now.
        old_info.node_info.swap(cur_info->node_info);
        cur_info->node_info.start_again();
    } else {
        old_info.node_info = std::move(cur_info->node_info);
        cur_info->node_info.clear();
    }
    // A node that met a Resize before it ever had a level comes out of it as old, on no level. It
    // has nothing to be restored to, so it counts as new. Break nodes count with their edge.
    old_info.node_info.for_each_by_id([&](NodeInfo& info) {
        if (info.level < 0) {
            info = old_info.default_node;
        }
    });
}

// From graph coordinates to owner-relative ones. The restoring comes past most of it, and does it
// in passing where nobody can look at it before.
void IncLayout::take_old_drawing_back(const Node& owner) {
    const graph_ptr2<INodeHandler> handler = owner.GetHandler();
    const tamsel7::size<double> size =
        handler.get() != nullptr ? handler->GetSize(owner) : tamsel7::size<double>();
    way_back = WayBack{owner.GetPosition(), size.height};
    if (!leaves_for_later()) {
        take_nodes_back(*way_back);
        take_bends_back(*way_back);
        way_back.reset();
    }
}

void IncLayout::take_nodes_back(const WayBack& back) {
    old_info.node_info.for_each_node_by_id(
        [&](Node node) { node.SetPosition(back(node.GetPosition())); });
}

void IncLayout::take_bends_back(const WayBack& back) {
    old_info.node_info.for_each_bend_in_run(
        [&](BreakNodes& run, int i) { run.set_place_at(i, back(run.own_place(i))); });
}

// Those that have not come back when the edges were looked up: what is removed now, hidden, or
// across the border of the owner.
void IncLayout::take_other_bends_back(const WayBack& back) {
    std::vector<const BreakNodes*> done;
    for (const RunEdge& e : run_edges->all()) {
        if (e.is_taken_back) {
            done.push_back(e.run);
        }
    }
    if (done.size() == old_info.node_info.get_piece_count()) {
        return;
    }
    std::sort(done.begin(), done.end(), std::less<>());
    old_info.node_info.for_each_bend_in_run([&](BreakNodes& run, int i) {
        if (!std::binary_search(done.begin(), done.end(), &run, std::less<>())) {
            run.set_place_at(i, back(run.own_place(i)));
        }
    });
}

StructureIndex::Pairs IncLayout::children_of(const Node& node) {
    return structure->Children(node);
}

StructureIndex::Pairs IncLayout::parents_of(const Node& node) {
    return structure->Parents(node);
}

StructureIndex::Pairs IncLayout::edges_out_of(const Node& node) {
    return structure->EdgesOut(node);
}

StructureIndex::Pairs IncLayout::edges_in_of(const Node& node) {
    return structure->EdgesIn(node);
}

} // namespace nurvex7
