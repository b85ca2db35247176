#include "nurvex7/layout/ordinals.h"

#include <algorithm>
#include <utility>

namespace nurvex7 {

Ordinals::Ordinals(const std::vector<std::vector<Node>>& level_nodes, local_store& local_info)
    : levels(level_nodes.size()) {
    NodePlaces places;
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        levels[k].first = static_cast<int>(y.size());
        for (const Node& n : level_nodes[k]) {
            levels[k].order.push_back(places.enter(n));
            y.push_back(n.GetPosition().y);
        }
    }
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        for (const Node& n : level_nodes[k]) {
            LocalNodeInfo& info = local_info[n];
            gather(info.in_neighbours, places, in);
            gather(info.out_neighbours, places, out);
        }
    }
    in.start.push_back(in.places.size());
    out.start.push_back(out.places.size());
}

// The neighbours of the next place. Ports have no place, and no sweep reads them.
void Ordinals::gather(GraphSet<NodeEdgePair>& set, const NodePlaces& places, Neighbours& into) {
    into.start.push_back(into.places.size());
    for (const NodeEdgePair& pair : set) {
        const int place = places.find(pair.node);
        if (place >= 0) {
            into.places.push_back(place);
        }
    }
}

void Ordinals::enumerate(std::size_t k) {
    double ordinal = 0;
    for (const int place : levels[k].order) {
        y[static_cast<std::size_t>(place)] = ordinal;
        ordinal += 1;
    }
    levels[k].touched = true;
}

double Ordinals::key(int place, const Neighbours& neighbours) const {
    const std::size_t first = neighbours.start[static_cast<std::size_t>(place)];
    const std::size_t last = neighbours.start[static_cast<std::size_t>(place) + 1];
    if (first == last) {
        return y[static_cast<std::size_t>(place)];
    }
    double sum = 0;
    for (std::size_t i = first; i < last; ++i) {
        sum += y[static_cast<std::size_t>(neighbours.places[i])];
    }
    return sum / static_cast<double>(last - first);
}

// The keys do not change during a sort, so each is computed once.
void Ordinals::sort(std::size_t k, Order order) {
    const Neighbours& neighbours = order == ORDER_IN ? in : out;
    std::vector<std::pair<double, int>> keyed;
    keyed.reserve(levels[k].order.size());
    for (const int place : levels[k].order) {
        keyed.emplace_back(key(place, neighbours), place);
    }
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    std::transform(keyed.begin(), keyed.end(), levels[k].order.begin(),
                   [](const auto& entry) { return entry.second; });
    enumerate(k);
}

void Ordinals::store(std::vector<std::vector<Node>>& level_nodes) const {
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        if (!levels[k].touched) {
            continue;
        }
        std::vector<Node> sorted;
        sorted.reserve(level_nodes[k].size());
        for (const int place : levels[k].order) {
            sorted.push_back(level_nodes[k][static_cast<std::size_t>(place - levels[k].first)]);
            sorted.back().SetPosition(0.0, y[static_cast<std::size_t>(place)]);
        }
        level_nodes[k].swap(sorted);
    }
}

} // namespace nurvex7
