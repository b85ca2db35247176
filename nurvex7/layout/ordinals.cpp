#include "nurvex7/layout/ordinals.h"

#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/layout/y_order.h"

#include <algorithm>

namespace nurvex7 {

Ordinals::Ordinals(const std::vector<std::vector<Node>>& level_nodes,
                   const std::vector<Join>* joins, local_store& local_info)
    : levels(level_nodes.size()) {
    NodePlaces places;
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        levels[k].first = static_cast<int>(y.size());
        for_each_on_level(level_nodes[k], [&](const Node& n) {
            levels[k].order.push_back(places.enter(n));
            y.push_back(n.GetPosition().y);
        });
    }
    if (joins != nullptr) {
        gather(*joins, places);
    } else {
        places.for_each_record(local_info.node_info.get_map(), y.size(),
                               [&](std::size_t place, const LocalNodeInfo& info) {
                                   gather(place, info.in_neighbours, places, in);
                                   gather(place, info.out_neighbours, places, out);
                               });
    }
    in.close(y.size());
    out.close(y.size());
}

// Ports have no place, and no sweep reads them.
void Ordinals::gather(const std::vector<Join>& joins, const NodePlaces& places) {
    const auto add = [&](std::size_t i) {
        const int before = places.find(joins[i].before);
        const int after = places.find(joins[i].after);
        if (before >= 0 && after >= 0) {
            out.add(static_cast<std::size_t>(before), after);
            in.add(static_cast<std::size_t>(after), before);
        }
    };
    for_each_ahead(joins.size(), add, [&](std::size_t i) {
        prefetch_line(joins[i].before);
        prefetch_line(joins[i].after);
    });
}

void Ordinals::gather(std::size_t place, const Segments& segments, const NodePlaces& places,
                      Neighbours& into) {
    for (const NodeEdgePair& pair : segments) {
        const int neighbour = places.find(pair.node);
        if (neighbour >= 0) {
            into.add(place, neighbour);
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
    const std::span<const int> around = neighbours.of(static_cast<std::size_t>(place));
    if (around.empty()) {
        return y[static_cast<std::size_t>(place)];
    }
    double sum = 0;
    for (const int neighbour : around) {
        sum += y[static_cast<std::size_t>(neighbour)];
    }
    return sum / static_cast<double>(around.size());
}

// The keys do not change during a sort, so each is computed once.
void Ordinals::sort(std::size_t k, Order order) {
    const Neighbours& neighbours = order == ORDER_IN ? in : out;
    std::vector<Turn> turns;
    turns.reserve(levels[k].order.size());
    for (const int place : levels[k].order) {
        turns.push_back({key(place, neighbours), static_cast<std::size_t>(place)});
    }
    sort_by_y(turns);
    std::transform(turns.begin(), turns.end(), levels[k].order.begin(),
                   [](const Turn& turn) { return static_cast<int>(turn.at); });
    enumerate(k);
}

void Ordinals::store(std::vector<std::vector<Node>>& level_nodes) const {
    for (std::size_t k = 1; k + 1 < level_nodes.size(); ++k) {
        if (!levels[k].touched) {
            continue;
        }
        std::vector<Node> sorted;
        sorted.reserve(level_nodes[k].size());
        const std::vector<int>& order = levels[k].order;
        const auto node_at = [&](std::size_t i) -> const Node& {
            return level_nodes[k][static_cast<std::size_t>(order[i] - levels[k].first)];
        };
        const auto store_next = [&](std::size_t i) {
            sorted.push_back(node_at(i));
            sorted.back().SetPosition(0.0, y[static_cast<std::size_t>(order[i])]);
        };
        for_each_ahead(
            order.size(), store_next,
            [&](std::size_t i) { prefetch_line(node_at(i).get_impl().get()); },
            [&](std::size_t i) { prefetch_line(place_address(*node_at(i).get_impl())); });
        level_nodes[k].swap(sorted);
    }
}

} // namespace nurvex7
