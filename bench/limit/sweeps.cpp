#include "bench/limit/flat_layout.h"

#include <algorithm>

namespace limit {

// The barycentre method in three sweeps. Only the first level is numbered beforehand: a place of
// another level without neighbours counts as 0 until its level has been sorted once.
void FlatLayout::reduce_crossings() {
    const std::size_t last = level_nodes.size() - 2;
    double ordinal = 0;
    for (const index_t place : level_nodes[1]) {
        y[place] = ordinal++;
    }
    const auto sweep_forwards = [&] {
        for (std::size_t k = 2; k <= last; ++k) {
            sort_level(level_nodes[k], in_neighbours);
        }
    };
    sweep_forwards();
    for (std::size_t k = last - 1; k >= 1 && last > 1; --k) {
        sort_level(level_nodes[k], out_neighbours);
    }
    sweep_forwards();
}

/// By the mean place of the neighbours, and numbers the level.
void FlatLayout::sort_level(places_t& places, const neighbours_t& neighbours) {
    keys.clear();
    for (index_t i = 0; i < count_of(places); ++i) {
        const places_t& around = neighbours[places[i]];
        double key = y[places[i]];
        if (!around.empty()) {
            key = 0;
            for (const index_t neighbour : around) {
                key += y[neighbour];
            }
            key /= static_cast<double>(around.size());
        }
        keys.emplace_back(key, i);
    }
    std::stable_sort(keys.begin(), keys.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    sorted.clear();
    for (const auto& [key, i] : keys) {
        sorted.push_back(places[i]);
    }
    places.swap(sorted);
    for (index_t i = 0; i < count_of(places); ++i) {
        y[places[i]] = i;
    }
}

/// Room for the tracks of the edges that go about a node is kept under it.
double FlatLayout::room_of(index_t place) const {
    if (is_dummy(place)) {
        return EDGE_WIDTH;
    }
    return graph.heights[place] + wrap_count[place] * (EDGE_GAP + EDGE_WIDTH);
}

void FlatLayout::stack_levels() {
    for (const places_t& places : level_nodes) {
        double cursor = 0;
        for (const index_t place : places) {
            cursor += gap_at(place) / 2;
            y[place] = cursor;
            cursor += room_of(place) + gap_at(place) / 2;
        }
    }
}

} // namespace limit
