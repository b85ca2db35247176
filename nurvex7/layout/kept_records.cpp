// What an Update or a Resize meets of most edges is what the run before has drawn. The records of
// their bends are not written anew: their dummy nodes stand on their levels by the old ones, and
// when the edge is placed, the old records become those of this run, all of a run of bends at once.
// Where something comes in between, they are written as for any other edge.

#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/placing.h"
#include "nurvex7/layout/run_edges.h"
#include "nurvex7/model/break_run.h"

namespace nurvex7 {

// The records that the run before has left of the bends of an edge, where it has drawn it and this
// run can take them over; null where not.
const NodeInfo* IncLayout::records_to_keep(const RunEdge& e) const {
    if (!keeps_records || !e.is_recorded || e.is_new || e.run == nullptr ||
        e.run->get_own_count() != e.run->GetCount()) {
        return nullptr;
    }
    return old_info.node_info.find_all_in(*e.run);
}

bool IncLayout::stands_in_column(int level) const {
    return level >= 1 && static_cast<std::size_t>(level) + 1 < level_nodes.size();
}

// The dummy nodes of an edge, each with its partner: one at the left side of the column, one at the
// right.
void IncLayout::place_kept_chain(const Placing& placing, const RunEdge& e) {
    const NodeInfo* const records = old_info.node_info.find_all_in(*e.run);
    const BreakRun b = placing.edges.run_of(e);
    const int skipped = e.runs_back ? 4 : 2;
    for (int i = skipped; i < e.run->get_own_count() - skipped; i += 2) {
        const int level = records[i].level;
        if (!stands_in_column(level)) {
            continue;
        }
        const Level column = cur_levels->get(static_cast<std::size_t>(level));
        const double y = b.get_position(i).y - placing.y_shift;
        b.set_position(i, e.reversed ? column.x_end : column.x_start, y);
        b.set_position(i + 1, e.reversed ? column.x_start : column.x_end, y);
    }
}

// What is drawn, and was, is marked by what the run before has noted of it.
void IncLayout::take_records_over(RunEdges& edges, const RunEdge& e) {
    const bool chain_stands = e.is_kept || !e.crosses_levels;
    if (chain_stands && e.leaves_tail && records_to_keep(e) != nullptr &&
        !edges.is_hidden(e.tail, *run_nodes) && !edges.is_hidden(e.head, *run_nodes) &&
        cur_info->node_info.take_over(*e.run, edges.edge_of(e).get_vis(), old_info.node_info)) {
        edges.set_kept(e, false);
        edges.set_marked(e);
    }
}

// Where the old records cannot serve after all: what has been restored by them is written down.
void IncLayout::write_kept_records() {
    if (run_edges == nullptr) {
        return;
    }
    for (const RunEdge& e : run_edges->all()) {
        if (e.is_kept) {
            write_kept_records(e, /*is_placed=*/false);
        }
    }
}

// The bends before the first dummy node get their records when a dummy node is placed.
void IncLayout::write_kept_records(const RunEdge& e, bool is_placed) {
    const NodeInfo* const records = old_info.node_info.find_all_in(*e.run);
    const BreakRun b = run_edges->run_of(e);
    const int skipped = e.runs_back ? 4 : 2;
    for (int i = skipped; i < e.run->get_own_count() - skipped; i += 2) {
        if (records[i].level < 0) {
            continue;
        }
        const NodeInfo old = records[i];
        record_of(*cur_info, b, i) = old;
        record_of(*cur_info, b, i + 1) = old;
        for (int front = 0; is_placed && stands_in_column(old.level) && front < skipped; ++front) {
            record_of(*cur_info, b, front);
        }
    }
    run_edges->set_kept(e, false);
}

} // namespace nurvex7
