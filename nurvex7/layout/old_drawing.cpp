#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/model/break_run.h"
#include "nurvex7/model/folding.h"

#include <algorithm>
#include <cstddef>

namespace nurvex7 {

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
    for (const Node& n : nodes) {
        const NodeInfo old = old_info[n];
        if (passed_over(n) || !old.is_old) {
            continue;
        }
        lengthen_to_hold(old.level);
        (*cur_info)[n] = old;
        if (!IsFlagSet(n, NODE_HIDDEN) && !old.was_hidden) {
            level_nodes[static_cast<std::size_t>(old.level)].push_back(n);
            restore_old_dummy(n);
        }
    }
    for (std::vector<Node>& level : level_nodes) {
        std::stable_sort(level.begin(), level.end(), NodeByYComparator());
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
    const int level = old_info[n].level;
    const Node owner = n.GetOwner();
    for (const NodeEdgePair& pair : children_of(n)) {
        const int head_level = old_info[pair.node].level;
        if (IsFlagSet(pair.node, NODE_HIDDEN) || is_new_edge(n, pair) || head_level == level) {
            continue;
        }
        const bool reversed = head_level < level;
        const int skipped = reversed ? 4 : 2;
        const BreakRun b(pair.edge, owner);
        const int end = b.get_count() - skipped;
        Node prev = n;
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
                mark_as_neighbours(dummy, prev, pair.edge);
            } else {
                mark_as_neighbours(prev, dummy, pair.edge);
            }
            prev = dummy;
        }
    }
}

} // namespace nurvex7
