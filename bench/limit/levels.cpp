#include "bench/limit/cycle_order.h"
#include "bench/limit/flat_layout.h"

#include <algorithm>
#include <climits>

namespace limit {

/// Calls f for every other node that the levels lead on to: over an edge that runs forwards its
/// target, over a reversed one its source. Parallel edges lead there as often.
template <typename F>
void FlatLayout::for_each_successor(index_t node, F f) const {
    for (const Adjacency::Link& link : out.of(node)) {
        if (link.node != node && reversed[link.edge] == 0) {
            f(link.node);
        }
    }
    for (const Adjacency::Link& link : in.of(node)) {
        if (link.node != node && reversed[link.edge] != 0) {
            f(link.node);
        }
    }
}

// Longest paths once the edges that close a cycle are known; what runs backwards is then judged
// again, by the levels themselves.
void FlatLayout::find_levels() {
    judge_edges(NumberAgainstCycles(in, out, graph.GetCount()));
    const std::vector<index_t> starts = follow_longest_paths();
    if (starts.size() > 1) {
        for (const index_t start : starts) {
            tighten(start);
        }
    }
    judge_edges(level);
}

void FlatLayout::judge_edges(const std::vector<int>& by) {
    reversed.resize(graph.edges.size());
    flat.resize(graph.edges.size());
    for (index_t edge = 0; edge < count_of(graph.edges); ++edge) {
        const FlatEdge& ends = graph.edges[edge];
        reversed[edge] = by[ends.from] > by[ends.to] ? 1 : 0;
        flat[edge] = by[ends.from] == by[ends.to] ? 1 : 0;
    }
}

/// Takes each node when all edges to it are done with. Gives the nodes that no edge leads to.
std::vector<index_t> FlatLayout::follow_longest_paths() {
    std::vector<int> waiting_for(graph.GetCount(), 0);
    for (index_t edge = 0; edge < count_of(graph.edges); ++edge) {
        const FlatEdge& ends = graph.edges[edge];
        if (ends.from != ends.to) {
            ++waiting_for[reversed[edge] != 0 ? ends.from : ends.to];
        }
    }
    std::vector<index_t> queue;
    for (index_t node = 0; node < graph.GetCount(); ++node) {
        if (waiting_for[node] == 0) {
            queue.push_back(node);
        }
    }
    std::vector<index_t> starts = queue;
    level.assign(graph.GetCount(), 1);
    for (std::size_t i = 0; i < queue.size(); ++i) {
        const index_t node = queue[i];
        for_each_successor(node, [&](index_t successor) {
            level[successor] = std::max(level[successor], level[node] + 1);
            if (--waiting_for[successor] == 0) {
                queue.push_back(successor);
            }
        });
    }
    return starts;
}

/// A start node goes directly before its nearest successor.
void FlatLayout::tighten(index_t start) {
    int nearest = INT_MAX;
    for_each_successor(start,
                       [&](index_t successor) { nearest = std::min(nearest, level[successor]); });
    if (nearest != INT_MAX) {
        level[start] = std::max(level[start], nearest - 1);
    }
}

} // namespace limit
