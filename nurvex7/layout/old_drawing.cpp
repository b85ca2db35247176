#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/node_places.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/model/break_run.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <memory>
#include <span>
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
// Writes  level_nodes; level, is_old, was_hidden in cur_info; neighbour lists of old chains
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
            Standing standing = standing_of(n);
            standing.room = _get_height(n);
            standing.number = static_cast<int>(i);
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

Standing IncLayout::standing_of(const Node& node) {
    Standing at;
    at.y = node.GetPosition().y;
    at.is_dummy = node.IsDummy();
    at.width = at.is_dummy ? 0 : node.GetSize().width;
    return at;
}

// Where the nodes of the levels stand. Those that are known stand first on their levels, unless
// phases have moved some that are not known here.
std::vector<std::vector<Standing>>& IncLayout::take_standings() {
    if (!knows_all_phases()) {
        standings.clear();
    }
    standings.resize(level_nodes.size());
    const RunNodes& of = take_run_nodes();
    for (std::size_t k = 0; k < level_nodes.size(); ++k) {
        std::vector<Standing>& known = standings[k];
        const auto rest = std::span(level_nodes[k]).subspan(known.size());
        known.reserve(level_nodes[k].size());
        for_each_on_level(rest, [&](const Node& n) {
            known.push_back(standing_of(n));
            if (!known.back().is_dummy) {
                known.back().number = of.number_of(structure->FindPlace(n));
            }
        });
    }
    return standings;
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
            restore_chain(n, run_edges->edge_of(e), run_edges->run_of(e), e.runs_back);
        }
    }
}

void IncLayout::restore_chain(const Node& tail, const Edge& edge, const BreakRun& b,
                              bool reversed) {
    const int skipped = reversed ? 4 : 2;
    const int end = b.get_count() - skipped;
    const bool joined = joins_old_chains();
    Standing standing;
    standing.room = edge.GetHandler()->GetWidth(edge);
    standing.is_dummy = true;
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
            reversed ? mark_as_neighbours(dummy, prev, edge)
                     : mark_as_neighbours(prev, dummy, edge);
            prev = dummy;
        }
    }
}

// The phases of this class read the neighbours of new nodes only; those of a derived layout may
// read any.
bool IncLayout::joins_old_chains() const {
    return joins_chains || !knows_all_phases();
}

std::unique_ptr<RunNodes> IncLayout::make_run_nodes() const {
    return std::make_unique<RunNodes>(*structure, nodes, old_info);
}

// The nodes as a phase before has left them, unless one may have changed the tables that is not
// known here.
RunNodes& IncLayout::take_run_nodes() {
    if (run_nodes == nullptr || !knows_all_phases()) {
        run_nodes = make_run_nodes();
    }
    return *run_nodes;
}

// The record of a node in this run, by its number. Duty: run_nodes is there
NodeInfo& IncLayout::info_of(int node) {
    NodeInfo*& known = run_nodes->record(node);
    if (known == nullptr) {
        known = &(*cur_info)[nodes[static_cast<std::size_t>(node)]];
    }
    return *known;
}

// The record of a bend, by its place in the list of its edge.
NodeInfo& IncLayout::record_of(node_store& table, const BreakRun& b, int i) {
    BreakNodes* const run = b.get_nodes();
    return run != nullptr && i < run->get_own_count()
               ? table.node_info.find_or_make(*run, i, b.get_vis(), table.default_node)
               : table[b.at(i)];
}

std::unique_ptr<RunEdges> IncLayout::make_run_edges(const RunNodes& of,
                                                    bool new_runs_to_come) const {
    const int owner_id = nodes.empty() ? 0 : nodes.front().GetOwner().GetID();
    return std::make_unique<RunEdges>(*structure, of, old_info, owner_id, new_runs_to_come);
}

// Likewise the edges, and with them the nodes, with their flags as they are now.
RunEdges& IncLayout::take_run_edges(bool new_runs_to_come) {
    RunNodes& of = take_run_nodes();
    of.read_flags_again(nodes);
    if (run_edges == nullptr || !knows_all_phases()) {
        run_edges = make_run_edges(of, new_runs_to_come);
    }
    return *run_edges;
}

void IncLayout::drop_run() {
    run_edges.reset();
    run_nodes.reset();
    standings.clear();
}

} // namespace nurvex7
