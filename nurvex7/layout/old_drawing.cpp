#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/node_places.h"
#include "nurvex7/layout/run_nodes.h"
#include "nurvex7/model/break_run.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <typeinfo>
#include <utility>

namespace nurvex7 {

namespace {

// A stable sort of the y, which are gathered first: along a level the nodes lie far apart.
void _sort_by_y(std::vector<Node>& level) {
    struct Standing {
        double y;
        std::size_t turn;
    };
    std::vector<Standing> order;
    order.reserve(level.size());
    for_each_on_level(level, [&](const Node& n) {
        order.push_back({n.GetPosition().y, order.size()});
    });
    const auto above = [](const Standing& a, const Standing& b) { return a.y < b.y; };
    if (std::is_sorted(order.begin(), order.end(), above)) {
        return;
    }
    std::stable_sort(order.begin(), order.end(), above);
    std::vector<Node> sorted;
    sorted.reserve(level.size());
    for (const Standing& next : order) {
        sorted.push_back(std::move(level[next.turn]));
    }
    level.swap(sorted);
}

} // namespace

// Brings the drawing of the run before back: every old node on its level, every level in the order
// of the old y, the dummy nodes of old edges with their coordinates.
//
// Reads   nodes, old_info, flags, y
// Writes  level_nodes; level, is_old, was_hidden in cur_info; neighbour lists of old chains
// Needs   old_info, positions relative to the owner
// Leaves  hidden nodes with their level but on no level list; edges across the owner's border
//         where they stood
// Space   owner-relative
void IncLayout::restore_old_levels() {
    run_nodes = make_run_nodes();
    for (int i = 0; i < run_nodes->get_count(); ++i) {
        const RunNodes::Past& past = run_nodes->at(i);
        const NodeInfo& old = past.info;
        if ((past.hidden && !keep_hidden) || !old.is_old) {
            continue;
        }
        const Node& n = nodes[static_cast<std::size_t>(i)];
        lengthen_to_hold(old.level);
        (*cur_info)[n] = old;
        if (!past.hidden && !old.was_hidden) {
            level_nodes[static_cast<std::size_t>(old.level)].push_back(n);
            restore_old_dummy(n);
        }
    }
    for (std::vector<Node>& level : level_nodes) {
        _sort_by_y(level);
    }
    if (holds_real_node_last()) {
        level_nodes.emplace_back();
        cur_levels->resize(level_nodes.size() + 1);
    }
}

void IncLayout::lengthen_to_hold(int level) {
    level_nodes.resize(std::max(level_nodes.size(), static_cast<std::size_t>(level) + 1));
}

// The chains of the old edges that leave a node, from the tail on.
//
// Deliberate: the chain is not joined to the head, and an edge between adjacent levels gets no
// neighbours at all. The lists of old nodes serve only as far as they reach new ones.
void IncLayout::restore_old_dummy(const Node& n) {
    const std::unique_ptr<const RunNodes> alone = run_nodes == nullptr ? make_run_nodes() : nullptr;
    const RunNodes& run = run_nodes != nullptr ? *run_nodes : *alone;
    const int i = run.number_of(structure->FindPlace(n));
    if (i < 0) {
        return;
    }
    const NodeInfo tail = run.at(i).info;
    for (const RunNodes::Link& link : run.children_of(i)) {
        const RunNodes::Past head = run.at_place(link.node);
        const int rise = head.info.level - tail.level;
        // Between adjacent levels no bend has a level to return to.
        if (!head.hidden && std::abs(rise) > 1 && !run.is_new_edge(i, link, head)) {
            restore_chain(n, structure->EdgeAt(link.edge), rise < 0);
        }
    }
}

void IncLayout::restore_chain(const Node& tail, const Edge& edge, bool reversed) {
    const int skipped = reversed ? 4 : 2;
    const BreakRun b(edge, tail.GetOwner());
    const int end = b.get_count() - skipped;
    Node prev = tail;
    for (int i = skipped; i < end; i += 2) {
        const Node dummy = b.at(i);
        const NodeInfo old = old_info[dummy];
        if (old.level < 0) {
            continue; // a bend that no run has put on a level has no place to return to
        }
        lengthen_to_hold(old.level);
        level_nodes[static_cast<std::size_t>(old.level)].push_back(dummy);
        (*cur_info)[dummy] = old;
        (*cur_info)[b.at(i + 1)] = old;
        if (reversed) {
            mark_as_neighbours(dummy, prev, edge);
        } else {
            mark_as_neighbours(prev, dummy, edge);
        }
        prev = dummy;
    }
}

std::unique_ptr<RunNodes> IncLayout::make_run_nodes() const {
    return std::make_unique<RunNodes>(*structure, nodes, old_info);
}

// The nodes as a phase before has left them. A derived layout may have changed the tables since.
RunNodes& IncLayout::take_run_nodes() {
    if (run_nodes == nullptr || typeid(*this) != typeid(IncLayout)) {
        run_nodes = make_run_nodes();
    } else {
        run_nodes->take_notes_back();
        run_nodes->read_flags_again(nodes);
    }
    return *run_nodes;
}

} // namespace nurvex7
