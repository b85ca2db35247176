#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/break_run.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>

namespace nurvex7 {

// Fills the levels: every new node on its own, and on each level that an edge crosses a dummy node
// of it, so that everything after works on segments between adjacent levels.
//
// Reads   level in cur_info; reversed, flat of edges; old_info
// Writes  level_nodes, the level table, break nodes of new edges, neighbour lists, wrap_count
// Needs   levels for all nodes; in an Update the old drawing restored
// Leaves  real nodes on levels 1 to L-2; new nodes behind the old ones of their level
// Space   none
void IncLayout::place_nodes_on_levels() {
    shift_old_levels();
    place_new_nodes();
    if (holds_real_node_last()) {
        level_nodes.emplace_back();
        cur_levels->resize(cur_levels->size() + 1);
    }
}

// The last level is the exit level: it has to stay free of real nodes.
bool IncLayout::holds_real_node_last() const {
    return !level_nodes.empty() && std::any_of(level_nodes.back().begin(), level_nodes.back().end(),
                                               [](Node n) { return !n.IsDummy(); });
}

// The chains of all edges that enter or leave the owner at this node: from the entry level up to
// the node, or from the node on to the exit level. The list of an entering edge begins with the
// dummy node on level 0, that of a leaving edge ends with the one on the last level; the bends
// beside the node itself get no level.
void IncLayout::insert_dummy_nodes_inout(const Node& node, Order order) {
    const bool in = order == ORDER_IN;
    const int own = (*cur_info)[node].level;
    const int k = in ? own : static_cast<int>(level_nodes.size()) - own - 1;
    const Node owner = node.GetOwner();
    for (const StructureIndex::Pair& pair : in ? edges_in_of(node) : edges_out_of(node)) {
        Edge e = pair.edge;
        e.RemoveBreakNodesIn(owner);
        e.AddBreakNodesIn(owner, 2 * k + 1);
        if (k < 1) {
            continue; // no border level on that side yet, as when a level was opened before the
                      // first
        }
        NodeSet b = e.GetBreakNodesIn(owner);
        const int n = b.GetCount();
        const auto join = [&](const Node& before, const Node& after) {
            mark_as_neighbours(before, after, e);
            if (collects_joins) {
                record_neighbours(before, after, e); // the ports are asked for theirs
            }
        };
        int level = in ? 0 : own + 1;
        Node prev = b.GetItem(in ? 0 : 2);
        put_dummy_on_level(prev, level);
        if (in) {
            join(b.GetItem(n - 3), node);
        } else {
            join(node, prev);
        }
        const int end = in ? n - 2 : n;
        for (int i = in ? 1 : 3; i < end; i += 2) {
            (*cur_info)[b.GetItem(i)].level = in ? level + 1 : level;
            const Node next = b.GetItem(i + 1);
            put_dummy_on_level(next, level + 1);
            join(prev, next);
            prev = next;
            ++level;
        }
    }
}

// The levels of the owner's own nodes are all there. Only the head of an edge into another graph,
// which nobody lifts with the others, can stand further out.
void IncLayout::put_dummy_on_level(const Node& dummy, int level) {
    lengthen_to_hold(level);
    (*cur_info)[dummy].level = level;
    level_nodes[static_cast<std::size_t>(level)].push_back(dummy);
}

// The chain of an edge between two owned nodes. The list runs from the tail to the head, also where
// that is downwards. On each level crossed stand two consecutive bends, left and right; one of them
// is on the level, its partner is placed with it.
void IncLayout::insert_dummy_nodes_between(const Node& from, const Node& to, const Edge& edge) {
    const int level = (*cur_info)[to].level;
    insert_bends(Crossing{from, to, edge, from.GetOwner().GetID(), (*cur_info)[from].level, level});
}

// The head lies anywhere in the memory, and need not be looked at.
void IncLayout::insert_bends(const Crossing& crossing) {
    const auto& [from, to, edge, owner_id, from_level, to_level] = crossing;
    const int d = to_level - from_level;
    if (d == 0) {
        BreakRun::Renew(edge, owner_id, 6);
        count_wrap(from, to);
        return;
    }
    if (d == 1) {
        mark_as_neighbours(from, to, edge);
        BreakRun::Renew(edge, owner_id, 4);
        return;
    }
    if (d == -1) {
        mark_as_neighbours(to, from, edge);
        count_wrap(from, to);
        BreakRun::Renew(edge, owner_id, 8);
        return;
    }
    // A reversed edge has four bends more: it turns around both of its end nodes.
    const bool reversed = is_marked_reversed(edge);
    const int length = 2 * std::abs(d) + (reversed ? 6 : 2);
    const int skipped = reversed ? 4 : 2;
    if (reversed) {
        count_wrap(from, to);
    }
    insert_chain(crossing, BreakRun::Renew(edge, owner_id, length), skipped, d > 0 ? 1 : -1);
}

// Where nobody looks at the marks, asking leaves none behind.
bool IncLayout::is_marked_reversed(const Edge& edge) {
    if (!collects_joins) {
        return local_info[edge].reversed;
    }
    const local_store::edge_entry* const known =
        local_info.edge_info.empty() ? nullptr : local_info.edge_info.find(edge.GetID());
    return (known != nullptr ? known->second : local_info.default_edge).reversed;
}

void IncLayout::insert_chain(const Crossing& crossing, const BreakRun& b, int skipped, int sign) {
    const Edge& edge = crossing.edge;
    // Towards a node of another graph, which has no level, a chain goes on to the ports.
    const bool meets_ports = collects_joins && crossing.to_level < 0;
    const auto join = [&](const Node& before, const Node& after) {
        const Node& lower = sign > 0 ? before : after;
        const Node& higher = sign > 0 ? after : before;
        mark_as_neighbours(lower, higher, edge);
        if (meets_ports) {
            record_neighbours(lower, higher, edge);
        }
    };
    const int end = b.get_count() - skipped;
    int level = crossing.from_level + sign;
    Node prev = crossing.from;
    for (int i = skipped; i < end; i += 2) {
        const Node dummy = b.at(i);
        lengthen_to_hold(level);
        record_of(*cur_info, b, i).level = level;
        record_of(*cur_info, b, i + 1).level = level;
        level_nodes[static_cast<std::size_t>(level)].push_back(dummy);
        join(prev, dummy);
        prev = dummy;
        level += sign;
    }
    join(prev, crossing.to);
}

// A track runs under both ends of an edge, under a loop's node once.
void IncLayout::count_wrap(const Node& from, const Node& to) {
    ++local_info[from].wrap_count;
    if (to != from) {
        ++local_info[to].wrap_count;
    }
}

} // namespace nurvex7
