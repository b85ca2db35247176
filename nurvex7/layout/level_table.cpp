#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/layout/standing.h"
#include "nurvex7/model/break_run.h"
#include "nurvex7/model/folding.h"

#include <algorithm>
#include <climits>
#include <cstddef>
#include <memory>
#include <span>

namespace nurvex7 {

void LevelTable::resize(std::size_t new_length) {
    if (new_length > length) {
        memory.resize(std::max(memory.size(), new_length));
        std::fill(memory.begin() + static_cast<std::ptrdiff_t>(length),
                  memory.begin() + static_cast<std::ptrdiff_t>(new_length), Level());
    }
    length = new_length;
}

void LevelTable::clear() {
    memory.clear();
    length = 0;
}

void LevelTable::set(std::size_t level, const Level& column) {
    if (level >= memory.size()) {
        memory.resize(level + 1);
    }
    memory[level] = column;
}

// Closes a run: records what has been drawn, for the next Update or Resize.
//
// Reads   nodes, flags, break nodes
// Writes  is_old, was_hidden of nodes, dummy nodes and edges in cur_info
// Needs   the finished drawing
// Leaves  the marks of hidden ends' edges off
// Space   none
//
// Deliberate: edges that cross the border of the owner are never marked, nor their dummy nodes. An
// Update does not bring them back: they keep their places in the graph at the first one, less what
// the owner is reckoned to be high, and go along with each shift of the owner after that.
void IncLayout::mark_old() {
    RunEdges& edges = take_run_edges();
    if (!knows_who_is_shown) {
        run_nodes->read_flags_again(nodes);
    }
    edges.read_flags(*run_nodes);
    for (int i = 0; i < run_nodes->get_count(); ++i) {
        const bool hidden = run_nodes->at(i).hidden;
        if (keep_hidden || !hidden) {
            NodeInfo& info = info_of(i);
            info.was_hidden = hidden;
            info.is_old = true;
        }
    }
    const bool kept = keep_edge_records(edges);
    std::vector<const RunEdge*> unmarked;
    for (const RunEdge& e : edges.all()) {
        if (e.is_kept) {
            write_kept_records(e, /*is_placed=*/true);
        }
        if (RunEdges::is_drawn(e) && (!e.is_marked || !kept || !e.is_recorded)) {
            unmarked.push_back(&e);
        }
    }
    const auto mark = [&](std::size_t i) {
        const RunEdge& e = *unmarked[i];
        if (!kept || !e.is_recorded) {
            (*cur_info)[edges.edge_of(e)].is_old = true;
        }
        if (!e.is_marked) {
            mark_bends_old(edges.run_of(e));
        }
    };
    const auto ask_for_edge = [&](std::size_t i, auto ask) {
        if (!kept || !unmarked[i]->is_recorded) {
            ask(edges.edge_of(*unmarked[i]));
        }
    };
    for_each_ahead(
        unmarked.size(), mark,
        [&](std::size_t i) { ask_for_edge(i, [](const Edge& e) { prefetch(&e); }); },
        [&](std::size_t i) {
            RunEdges::ask_for_run(*unmarked[i]);
            ask_for_edge(i, [](const Edge& e) { prefetch(e.get_impl().get()); });
            cur_info->edge_info.ask_for_slot(unmarked[i]->id);
        },
        [&](std::size_t i) { cur_info->edge_info.ask_for_page(unmarked[i]->id); });
}

// Most edges were drawn by the run before, and their records say already what they are to say: the
// table of that run goes on, less those that are not drawn any more. False where it holds others
// too, of edges that are gone, or where a phase has made records of its own.
bool IncLayout::keep_edge_records(const RunEdges& edges) {
    if (!knows_all_phases() || !cur_info->edge_info.empty()) {
        return false;
    }
    std::size_t drawn = 0;
    for (const RunEdge& e : edges.all()) {
        if (!e.is_recorded) {
            continue;
        }
        if (RunEdges::is_drawn(e)) {
            ++drawn;
        } else {
            old_info.edge_info.erase(e.id);
        }
    }
    if (old_info.edge_info.size() != drawn) {
        return false;
    }
    cur_info->edge_info.swap(old_info.edge_info);
    return true;
}

void IncLayout::mark_bends_old(const BreakRun& bends) {
    const auto mark = [](NodeInfo& bend) {
        bend.is_old = true;
        bend.was_hidden = false;
    };
    if (BreakNodes* const run = bends.get_nodes()) {
        cur_info->node_info.for_each_in(*run, bends.get_vis(), cur_info->default_node, mark);
        return;
    }
    for (int i = 0; i < bends.get_count(); ++i) {
        mark((*cur_info)[bends.at(i)]);
    }
}

void IncLayout::make_epilogue() {
    mark_old();
}

void IncLayout::update_epilogue() {
    mark_old();
}

void IncLayout::resize_epilogue() {
    mark_old();
}

// A node that comes back from hidden is as new as one just added, but for its level.
bool IncLayout::_is_new(const Node& node) {
    const NodeInfo* const found = old_info.node_info.find(node);
    const NodeInfo& old = found != nullptr ? *found : old_info.default_node;
    return !old.is_old || old.was_hidden;
}

// Records that a stands before b on the edge; a is on the lower level.
void IncLayout::mark_as_neighbours(const Node& a, const Node& b, const Edge& edge) {
    if (collects_joins) {
        joins.push_back({a.get_impl().get(), b.get_impl().get(), edge.get_impl().get()});
    } else {
        record_neighbours(a, b, edge);
    }
}

void IncLayout::record_neighbours(const Node& a, const Node& b, const Edge& edge) {
    local_info[a].out_neighbours.push_back(NodeEdgePair{b, edge});
    local_info[b].in_neighbours.push_back(NodeEdgePair{a, edge});
}

// Brings level_nodes and the level table to their length and makes all levels positive: a new node
// may have gone before the old first level.
void IncLayout::shift_old_levels() {
    take_run_nodes();
    int lo = INT_MAX;
    int hi = INT_MIN;
    for (int i = 0; i < run_nodes->get_count(); ++i) {
        if (!passed_over(nodes[static_cast<std::size_t>(i)])) {
            const int level = info_of(i).level;
            lo = std::min(lo, level);
            hi = std::max(hi, level);
        }
    }
    if (hi < lo) {
        lo = 1; // nothing to place: an entry and an exit level
        hi = 0;
    }
    if (lo < 1 || level_nodes.size() > static_cast<std::size_t>(hi + 2)) {
        write_kept_records(); // which are shifted too, or stand on a level that goes
        standings.clear();
    }
    if (lo >= 1) {
        cur_levels->resize(static_cast<std::size_t>(hi + 2));
        level_nodes.resize(static_cast<std::size_t>(hi + 2));
        standings.resize(std::min(standings.size(), level_nodes.size()));
        return;
    }
    const int k = 1 - lo;
    shift_level_table(k, hi - lo + 3);
    if (!level_nodes.empty()) {
        level_nodes.resize(level_nodes.size() + static_cast<std::size_t>(k));
        for (std::size_t i = level_nodes.size() - 1; i >= static_cast<std::size_t>(k); --i) {
            level_nodes[i] = level_nodes[i - static_cast<std::size_t>(k)];
        }
    }
    cur_info->node_info.for_each([k](NodeInfo& info) { info.level += k; });
    // New nodes at the other end too: as far as the nodes that will be placed need it, no further.
    for (const Node& n : nodes) {
        if (!IsFlagSet(n, NODE_HIDDEN) && _is_new(n)) {
            lengthen_to_hold((*cur_info)[n].level);
        }
    }
}

// Deliberate: the x ranges are not carried along: they belong to other levels now, so all columns
// of this run are placed afresh.
void IncLayout::shift_level_table(int k, int longest) {
    const std::size_t length = cur_levels->size() + static_cast<std::size_t>(k);
    cur_levels->forget_length();
    cur_levels->resize(length);
    if (length > static_cast<std::size_t>(longest)) {
        cur_levels->resize(static_cast<std::size_t>(longest));
    }
}

// Puts every new node on its level and has the dummy chains of all new edges built, also of those
// between old nodes. New nodes stand behind the old ones of their level.
void IncLayout::place_new_nodes() {
    RunEdges& edges = take_run_edges(/*new_runs_to_come=*/true);
    run_nodes->read_flags_again(nodes); // handlers have been asked since the levels were restored
    std::vector<int> touched;           // the nodes that are new, and those with a new edge
    for (int i = 0; i < run_nodes->get_count(); ++i) {
        const std::span<const RunEdge> out = edges.out_of(i);
        if (run_nodes->at(i).is_new() ||
            std::any_of(out.begin(), out.end(), [](const RunEdge& e) { return e.is_new; })) {
            touched.push_back(i);
        }
    }
    const auto ask_edges = [&](std::size_t turn, auto ask) {
        for (const RunEdge& e : edges.out_of(touched[turn])) {
            if (e.is_new) {
                ask(edges.edge_of(e));
            }
        }
    };
    for_each_ahead(
        touched.size(),
        [&](std::size_t turn) {
            place_if_new(edges, touched[turn]);
            count_steps(1);
        },
        [&](std::size_t turn) { ask_edges(turn, [](const Edge& edge) { prefetch(&edge); }); },
        [&](std::size_t turn) {
            ask_edges(turn, [](const Edge& edge) { prefetch(edge.get_impl().get()); });
        },
        [&](std::size_t turn) {
            ask_edges(turn, [](const Edge& edge) { prefetch(edge.get_impl()->known_vis); });
        });
}

// One node, if it is new, and the edges out of it that are new.
void IncLayout::place_if_new(RunEdges& edges, int i) {
    const RunNodes::Past& past = run_nodes->at(i);
    if (past.hidden) {
        return;
    }
    const Node& n = nodes[static_cast<std::size_t>(i)];
    if (past.is_new()) {
        level_nodes[static_cast<std::size_t>(info_of(i).level)].push_back(n);
        insert_dummy_nodes_inout(n, ORDER_IN);
        insert_dummy_nodes_inout(n, ORDER_OUT);
    }
    if (n.IsDummy()) {
        return; // a handler has removed it since, and its edges with it
    }
    const int owner_id = n.GetOwner().GetID();
    for (const RunEdge& e : edges.out_of(i)) {
        if (e.is_new && !edges.is_hidden(e.head, *run_nodes)) {
            const Node& to = edges.node_at(e.head, *run_nodes);
            const int to_level = e.head >= 0 ? info_of(e.head).level : (*cur_info)[to].level;
            insert_bends(Crossing{n, to, edges.edge_of(e), owner_id, info_of(i).level, to_level});
            edges.find_new_run(edges.number_of(e));
        }
    }
}

} // namespace nurvex7
