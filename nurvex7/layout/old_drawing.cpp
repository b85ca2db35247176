#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/node_places.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/model/break_run.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <utility>

namespace nurvex7 {

namespace {

// A stable sort by y, of the nodes of a level and of where they stand.
void _sort_by_y(std::vector<Node>& level, std::vector<Standing>& standings) {
    struct Turn {
        double y;
        std::size_t at;
    };
    std::vector<Turn> order;
    order.reserve(level.size());
    for (const Standing& standing : standings) {
        order.push_back({standing.y, order.size()});
    }
    const auto above = [](const Turn& a, const Turn& b) { return a.y < b.y; };
    if (std::is_sorted(order.begin(), order.end(), above)) {
        return;
    }
    std::stable_sort(order.begin(), order.end(), above);
    std::vector<Node> sorted;
    std::vector<Standing> sorted_standings;
    sorted.reserve(level.size());
    sorted_standings.reserve(level.size());
    for (const Turn& next : order) {
        sorted.push_back(std::move(level[next.at]));
        sorted_standings.push_back(standings[next.at]);
    }
    level.swap(sorted);
    standings.swap(sorted_standings);
}

} // namespace

// Brings the drawing of the run before back: every old node on its level, every level in the order
// of the old y, the dummy nodes of old edges with their coordinates.
//
// Reads   nodes, old_info, flags, y
// Writes  level_nodes; level, is_old, was_hidden in cur_info; neighbour lists of old chains, where
//         a phase may read them
// Needs   old_info, positions relative to the owner
// Leaves  hidden nodes with their level but on no level list; edges across the owner's border
//         where they stood
// Space   owner-relative
void IncLayout::restore_old_levels() {
    run_nodes = make_run_nodes();
    run_edges = make_run_edges(*run_nodes, /*new_runs_to_come=*/true);
    const auto restore = [&](std::size_t i) {
        const RunNodes::Past& past = run_nodes->at(static_cast<int>(i));
        const NodeInfo& old = past.info;
        if ((past.hidden && !keep_hidden) || !old.is_old) {
            return;
        }
        const Node& n = nodes[i];
        lengthen_to_hold(old.level);
        info_of(static_cast<int>(i)) = old;
        if (!past.hidden && !old.was_hidden) {
            const tamsel7::size<double> size = n.GetSize();
            const LocalNodeInfo* const tracks = local_info.node_info.find(n);
            Standing standing;
            standing.y = n.GetPosition().y;
            standing.width = size.width;
            standing.number = static_cast<int>(i);
            if (tracks == nullptr || tracks->wrap_count < 1) {
                standing.room = size.height;
            }
            restore_on_level(old.level, n, standing);
            restore_old_dummies(n, static_cast<int>(i));
        }
    };
    const auto ask_for_chains = [&](std::size_t i, auto ask) {
        for (const RunEdge& e : run_edges->out_of(static_cast<int>(i))) {
            if (e.crosses_levels && e.run != nullptr) {
                ask(*e.run);
            }
        }
    };
    for_each_ahead(
        nodes.size(), restore,
        [&](std::size_t i) { ask_for_chains(i, [](BreakNodes& run) { prefetch(&run); }); },
        [&](std::size_t i) { ask_for_chains(i, [](BreakNodes& run) { run.PrefetchAll(); }); });
    take_standings();
    for (std::size_t k = 0; k < standings.size(); ++k) {
        _sort_by_y(level_nodes[k], standings[k]);
    }
    if (holds_real_node_last()) {
        level_nodes.emplace_back();
        cur_levels->resize(level_nodes.size() + 1);
    }
}

void IncLayout::restore_on_level(int level, const Node& node, const Standing& standing) {
    const auto k = static_cast<std::size_t>(level);
    if (standings.size() < level_nodes.size()) {
        standings.resize(level_nodes.size());
    }
    standings[k].push_back(standing);
    level_nodes[k].push_back(node);
}

void IncLayout::lengthen_to_hold(int level) {
    level_nodes.resize(std::max(level_nodes.size(), static_cast<std::size_t>(level) + 1));
}

// The chains of the old edges that leave a node, from the tail on.
//
// Deliberate: the chain is not joined to the head, and an edge between adjacent levels gets no
// neighbours at all. The lists of old nodes serve only as far as they reach new ones.
void IncLayout::restore_old_dummy(const Node& n) {
    if (run_edges == nullptr) {
        take_run_edges();
    }
    const int i = run_nodes->number_of(structure->FindPlace(n));
    if (i >= 0) {
        restore_old_dummies(n, i);
    }
}

// Of the node with a number.
void IncLayout::restore_old_dummies(const Node& n, int i) {
    for (const RunEdge& e : run_edges->out_of(i)) {
        // Between adjacent levels no bend has a level to return to.
        if (e.crosses_levels && !e.is_new && !run_edges->is_hidden(e.head, *run_nodes)) {
            restore_chain(n, e);
        }
    }
}

void IncLayout::restore_chain(const Node& tail, const RunEdge& e) {
    const BreakRun b = run_edges->run_of(e);
    const bool reversed = e.runs_back;
    const int skipped = reversed ? 4 : 2;
    const int end = b.get_count() - skipped;
    const bool joined = joins_old_chains();
    Standing standing;
    standing.is_dummy = true;
    standing.number = run_edges->number_of(e);
    Node prev = tail;
    for (int i = skipped; i < end; i += 2) {
        const NodeInfo old = record_of(old_info, b, i);
        if (old.level < 0) {
            continue; // a bend that no run has put on a level has no place to return to
        }
        const Node dummy = b.at(i);
        lengthen_to_hold(old.level);
        standing.y = b.get_position(i).y;
        restore_on_level(old.level, dummy, standing);
        record_of(*cur_info, b, i) = old;
        record_of(*cur_info, b, i + 1) = old;
        if (joined) {
            const Edge& edge = run_edges->edge_of(e);
            reversed ? mark_as_neighbours(dummy, prev, edge)
                     : mark_as_neighbours(prev, dummy, edge);
            prev = dummy;
        }
    }
}

} // namespace nurvex7
