#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/node_places.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/layout/y_order.h"
#include "nurvex7/model/break_run.h"

#include <algorithm>
#include <cstddef>
#include <memory>
#include <optional>
#include <utility>

namespace nurvex7 {

namespace {

void _ask_for_places_and_notes(const BreakNodes& run) {
    const auto count = static_cast<std::size_t>(run.get_own_count());
    prefetch(&run, sizeof(BreakNodes) +
                       count * (sizeof(BreakNodes::point) + 2 * (BreakNodes::NOTE_SIZE + 1)));
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
    keeps_records = leaves_for_later() && !run_nodes->has_repeated();
    const std::optional<WayBack> nodes_back = look_up_edges();
    const std::vector<std::vector<Node>> before = take_levels_apart();
    const auto ask_for_chains = [&](std::size_t i, auto ask) {
        for (const RunEdge& e : run_edges->out_of(static_cast<int>(i))) {
            if (e.crosses_levels && e.run != nullptr) {
                ask(*e.run);
            }
        }
    };
    const auto restore = [&](std::size_t i) {
        const int number = static_cast<int>(i);
        if (nodes_back.has_value() && run_nodes->at(number).is_recorded) {
            nodes[i].SetPosition((*nodes_back)(nodes[i].GetPosition()));
        }
        restore_old_node(nodes[i], number);
    };
    for_each_ahead(
        nodes.size(), restore,
        [&](std::size_t i) {
            prefetch(nodes[i].get_impl().get());
            ask_for_chains(i, [](BreakNodes& run) { prefetch(&run); });
        },
        [&](std::size_t i) {
            prefetch(nodes[i].get_impl()->known_vis);
            ask_for_chains(i, _ask_for_places_and_notes);
        });
    fill_levels();
    if (holds_real_node_last()) {
        level_nodes.emplace_back();
        cur_levels->resize(level_nodes.size() + 1);
    }
}

// The node with a number, and the chains of the edges that leave it.
void IncLayout::restore_old_node(const Node& n, int i) {
    const RunNodes::Past& past = run_nodes->at(i);
    const NodeInfo& old = past.info;
    if ((past.hidden && !keep_hidden) || !old.is_old) {
        return;
    }
    lengthen_to_hold(old.level);
    info_of(i) = old;
    if (past.hidden || old.was_hidden) {
        return;
    }
    const tamsel7::size<double> size = n.GetSize();
    const LocalNodeInfo* const tracks = local_info.node_info.find(n);
    Standing standing;
    standing.y = n.GetPosition().y;
    standing.width = size.width;
    standing.number = i;
    if (tracks == nullptr || tracks->wrap_count < 1) {
        standing.room = size.height;
    }
    restore_on_level(old.level, standing, *n.get_vis(), *n.get_impl());
    restore_old_dummies(n, i);
}

// Looks up the edges of the run, and brings what the run before has drawn back to where its owner
// is, in passing where each thing comes by once. Gives the way back of the nodes, where they still
// have to go it.
std::optional<WayBack> IncLayout::look_up_edges() {
    const std::optional<WayBack> back = std::exchange(way_back, std::nullopt);
    const bool in_passing = back.has_value() && keeps_records && structure->IsTwoWay();
    if (back.has_value() && !in_passing) {
        take_bends_back(*back);
    }
    run_edges =
        make_run_edges(*run_nodes, /*new_runs_to_come=*/true, in_passing ? &*back : nullptr);
    if (in_passing) {
        take_other_bends_back(*back);
    }
    const bool has_all_nodes =
        keeps_records && old_info.node_info.get_count_by_id() == run_nodes->get_recorded_count();
    if (back.has_value() && !has_all_nodes) {
        take_nodes_back(*back);
    }
    return has_all_nodes ? back : std::nullopt;
}

void IncLayout::restore_on_level(int level, const Standing& standing, IGraphVis& vis,
                                 INodeImpl& impl) {
    lengthen_to_hold(level);
    const auto k = static_cast<std::size_t>(level);
    if (returning.size() <= k) {
        returning.resize(k + 1);
    }
    returning[k].push_back({standing, &vis, &impl});
}

// What stands on the levels already, as after a second Init, is sorted together with what comes
// back. Gives the levels as they were.
std::vector<std::vector<Node>> IncLayout::take_levels_apart() {
    std::vector<std::vector<Node>> before = std::exchange(level_nodes, {});
    level_nodes.resize(before.size());
    standings.clear();
    for (std::size_t k = 0; k < before.size(); ++k) {
        for (const Node& n : before[k]) {
            restore_on_level(static_cast<int>(k), standing_of(n), *n.get_vis(), *n.get_impl());
        }
    }
    return before;
}

// Puts everything back, each level in the order of its y.
void IncLayout::fill_levels() {
    standings.resize(level_nodes.size());
    returning.resize(level_nodes.size());
    std::vector<Turn> turns;
    for (std::size_t k = 0; k < returning.size(); ++k) {
        turns.clear();
        for (const Returning& node : returning[k]) {
            turns.push_back({node.standing.y, turns.size()});
        }
        sort_by_y(turns);
        fill_level(k, turns);
    }
    returning.clear();
    release_levels(last_levels);
}

// There are as many handles as nodes and dummy nodes: each is made once, or stays from the run
// before.
void IncLayout::fill_level(std::size_t k, const std::vector<Turn>& turns) {
    const std::vector<Returning>& from = returning[k];
    standings[k].reserve(turns.size());
    for (const Turn& turn : turns) {
        standings[k].push_back(from[turn.at].standing);
    }
    if (stands_as_before(k, turns)) {
        level_nodes[k].swap(last_levels[k]);
        return;
    }
    level_nodes[k].reserve(turns.size());
    for_each_ahead(
        turns.size(),
        [&](std::size_t i) {
            const Returning& node = from[turns[i].at];
            level_nodes[k].emplace_back(node.vis, node.impl);
        },
        [&](std::size_t i) { prefetch_line(from[turns[i].at].impl); });
}

bool IncLayout::stands_as_before(std::size_t k, const std::vector<Turn>& turns) const {
    const auto is_same = [&](const Turn& turn, const Node& before) {
        const Returning& now = returning[k][turn.at];
        return now.impl == before.get_impl().get() && now.vis == before.get_vis().get();
    };
    return k < last_levels.size() && std::equal(turns.begin(), turns.end(), last_levels[k].begin(),
                                                last_levels[k].end(), is_same);
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
        for (std::size_t k = 0; k < returning.size(); ++k) {
            for (const Returning& dummy : returning[k]) {
                level_nodes[k].emplace_back(dummy.vis, dummy.impl);
            }
        }
        returning.clear();
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
    const NodeInfo* const kept = records_to_keep(e);
    run_edges->set_kept(e, kept != nullptr);
    Standing standing;
    standing.is_dummy = true;
    standing.goes_with_edge = kept != nullptr;
    standing.number = run_edges->number_of(e);
    Node prev = tail;
    for (int i = skipped; i < end; i += 2) {
        const NodeInfo old = kept != nullptr ? kept[i] : record_of(old_info, b, i);
        if (old.level < 0) {
            continue; // a bend that no run has put on a level has no place to return to
        }
        standing.y = b.get_position(i).y;
        restore_on_level(old.level, standing, *b.get_vis(), b.impl_at(i));
        if (kept != nullptr) {
            continue;
        }
        record_of(*cur_info, b, i) = old;
        record_of(*cur_info, b, i + 1) = old;
        if (joined) {
            const Node dummy = b.at(i);
            const Edge& edge = run_edges->edge_of(e);
            reversed ? mark_as_neighbours(dummy, prev, edge)
                     : mark_as_neighbours(prev, dummy, edge);
            prev = dummy;
        }
    }
}

} // namespace nurvex7
