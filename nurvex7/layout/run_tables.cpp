// What the phases of a run look up once and share: its nodes and edges in numbers, and where the
// nodes of the levels stand. Each is made when a phase first asks for it and dropped with the run.

#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/node_places.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/model/break_run.h"

#include <cstddef>
#include <memory>
#include <span>
#include <typeinfo>
#include <vector>

namespace nurvex7 {

// A phase of a derived layout can do anything to what the phases share, unless it says what it
// does; so can one of this class that runs a second time after a second Init.
bool IncLayout::knows_all_phases() const {
    return (typeid(*this) == typeid(IncLayout) || shares_tables) && inits == 1;
}

void IncLayout::level_changed(std::size_t level) {
    if (level < standings.size()) {
        standings[level].clear();
    }
}

// The phases of this class read the neighbours of new nodes, and of what stands on the first and
// the last level, which no old chain comes to; those of a derived layout may read any.
bool IncLayout::joins_old_chains() const {
    return joins_chains || !knows_all_phases();
}

// Phases of a derived layout may look at what is left for later, even those that say that they
// change none of it.
bool IncLayout::leaves_for_later() const {
    return typeid(*this) == typeid(IncLayout) && !joins_old_chains();
}

// What a Resize may ask of the run before it, the tracks and the marks, stays. The neighbour lists
// of a whole drawing are large, and nobody reads them after it.
void IncLayout::let_go_of_neighbours() {
    if (joins_old_chains()) {
        return;
    }
    decltype(local_info.node_info) tracks;
    local_info.node_info.get_map().for_each_unordered([&](int, local_store::node_entry& e) {
        if (e.second.wrap_count > 0) {
            tracks.find_or_make(e.first, local_info.default_node).wrap_count = e.second.wrap_count;
        }
    });
    decltype(local_info.edge_info) marks;
    local_info.edge_info.for_each_unordered([&](int id, local_store::edge_entry& e) {
        if (e.second.reversed || e.second.flat) {
            marks.find_or_make(id, e.first, e.second);
        }
    });
    local_info.clear();
    local_info.node_info.swap(tracks);
    local_info.edge_info.swap(marks);
}

std::unique_ptr<RunNodes> IncLayout::make_run_nodes() const {
    return std::make_unique<RunNodes>(*structure, nodes, old_info);
}

// The nodes as a phase before has left them, unless a phase that this class does not know may have
// changed the tables.
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

std::unique_ptr<RunEdges> IncLayout::make_run_edges(const RunNodes& of, bool new_runs_to_come,
                                                    const WayBack* back) const {
    const int owner_id = nodes.empty() ? 0 : nodes.front().GetOwner().GetID();
    return std::make_unique<RunEdges>(*structure, of, old_info, owner_id, new_runs_to_come, back);
}

// Likewise the edges, and with them the nodes.
RunEdges& IncLayout::take_run_edges(bool new_runs_to_come) {
    const RunNodes& of = take_run_nodes();
    if (run_edges == nullptr || !knows_all_phases()) {
        run_edges = make_run_edges(of, new_runs_to_come);
    }
    return *run_edges;
}

void IncLayout::drop_run() {
    run_edges.reset();
    run_nodes.reset();
    standings.clear();
    returning.clear();
    std::vector<Join>().swap(joins);
    collects_joins = false;
    keeps_records = false;
    knows_who_is_shown = false;
}

Standing IncLayout::standing_of(const Node& node) {
    Standing at;
    at.y = node.GetPosition().y;
    at.is_dummy = node.IsDummy();
    at.width = at.is_dummy ? 0 : node.GetSize().width;
    return at;
}

// Where the nodes of the levels stand. Those that are known stand first on their levels, unless a
// phase that this class does not know may have moved them.
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

} // namespace nurvex7
