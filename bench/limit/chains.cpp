#include "bench/limit/flat_layout.h"

#include <algorithm>

namespace limit {

// Puts every node on its level, and a dummy on each level that an edge passes; counts the bends of
// each edge. Both follow from the nodes in their order, and from the edges of each by their target:
// the order along a level is what breaks ties in the sweeps.
void FlatLayout::place_on_levels() {
    const index_t count = graph.GetCount();
    const int highest = count > 0 ? *std::max_element(level.begin(), level.end()) : 0;
    level_nodes.resize(static_cast<std::size_t>(highest) + 2);
    wrap_count.assign(count, 0);
    in_neighbours.resize(count);
    out_neighbours.resize(count);
    first_bend.resize(graph.edges.size());
    bend_count.resize(graph.edges.size());
    index_t bend = 0;
    for (index_t node = 0; node < count; ++node) {
        level_nodes[static_cast<std::size_t>(level[node])].push_back(node);
        for (const Adjacency::Link& link : out.of(node)) {
            first_bend[link.edge] = bend;
            add_edge(link.edge);
            bend += bend_count[link.edge];
        }
    }
    bends.resize(bend);
    x.assign(count + dummies.size(), 0);
    y.assign(count + dummies.size(), 0);
}

void FlatLayout::add_edge(index_t edge) {
    const FlatEdge& ends = graph.edges[edge];
    const int span = level[ends.to] - level[ends.from];
    if (span <= 0) {
        wrap(ends);
    }
    if (span == 0) {
        bend_count[edge] = 6;
    } else if (span == 1) {
        bend_count[edge] = 4;
        join(ends.from, ends.to);
    } else if (span == -1) {
        bend_count[edge] = 8;
        join(ends.to, ends.from);
    } else {
        add_chain(edge);
    }
}

/// Two bends beside each end of an edge and two on each level between them; an edge that runs
/// backwards turns about both of its ends, which takes four more.
void FlatLayout::add_chain(index_t edge) {
    const FlatEdge& ends = graph.edges[edge];
    const int span = level[ends.to] - level[ends.from];
    const int step = span > 0 ? 1 : -1;
    index_t bend = first_bend[edge] + (span > 0 ? 2 : 4);
    index_t previous = ends.from;
    const auto lead_to = [&](index_t place) {
        step > 0 ? join(previous, place) : join(place, previous);
        previous = place;
    };
    for (int at = level[ends.from] + step; at != level[ends.to]; at += step, bend += 2) {
        lead_to(add_dummy(edge, bend, at));
    }
    lead_to(ends.to);
    bend_count[edge] = bend + (span > 0 ? 2 : 4) - first_bend[edge];
}

index_t FlatLayout::add_dummy(index_t edge, index_t bend, int at_level) {
    const index_t place = graph.GetCount() + count_of(dummies);
    dummies.push_back({bend, edge});
    in_neighbours.emplace_back();
    out_neighbours.emplace_back();
    level_nodes[static_cast<std::size_t>(at_level)].push_back(place);
    return place;
}

void FlatLayout::join(index_t lower, index_t upper) {
    out_neighbours[lower].push_back(upper);
    in_neighbours[upper].push_back(lower);
}

/// The edge takes a track under each of its ends.
void FlatLayout::wrap(const FlatEdge& ends) {
    ++wrap_count[ends.from];
    if (ends.to != ends.from) {
        ++wrap_count[ends.to];
    }
}

} // namespace limit
