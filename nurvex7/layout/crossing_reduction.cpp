#include "nurvex7/layout/inc_layout.h"

#include <algorithm>
#include <cstddef>
#include <numeric>

namespace nurvex7 {

// Orders the nodes of each level so that the edges to the next one cross less: the barycentre
// method of Sugiyama, Tagawa and Toda (1981) in three sweeps, always exactly three. Crossings are
// never counted and no order is ever taken back.
//
// Reads   level_nodes, neighbour lists; on entry the y of nodes without neighbours
// Writes  the order along the levels 1 to L-2; y is the ordinal on its level and x is 0
// Needs   place_nodes_on_levels before it
// Leaves  the ports of levels 0 and L-1 where they are: no port ever influences an order
// Space   ordinals, until calculate_initial_y_coords
void IncLayout::barycentric_adjust() {
    if (level_nodes.size() < 2) {
        return;
    }
    enumerate_level_by_y_coord(&level_nodes[1]);
    if (level_nodes.size() < 4) {
        return;
    }
    forward_barycentric_adjust();
    backward_barycentric_adjust();
    forward_barycentric_adjust();
}

namespace {

// Keys do not change during a sort, so each is computed once. The sort is stable: nodes of equal
// key keep their order.
void _sort_by_adjacent_y(std::vector<Node>& level, const NodeByAdjacentYComparator& order) {
    std::vector<double> keys;
    keys.reserve(level.size());
    for (const Node& n : level) {
        keys.push_back(order.key(n));
    }
    std::vector<std::size_t> places(level.size());
    std::iota(places.begin(), places.end(), std::size_t{0});
    std::stable_sort(places.begin(), places.end(),
                     [&](std::size_t a, std::size_t b) { return keys[a] < keys[b]; });
    std::vector<Node> sorted;
    sorted.reserve(level.size());
    for (const std::size_t place : places) {
        sorted.push_back(level[place]);
    }
    level.swap(sorted);
}

} // namespace

void IncLayout::forward_barycentric_adjust() {
    const NodeByAdjacentYComparator order(&local_info, &LocalNodeInfo::in_neighbours);
    for (std::size_t k = 2; k + 1 < level_nodes.size(); ++k) {
        _sort_by_adjacent_y(level_nodes[k], order);
        enumerate_level_by_y_coord(&level_nodes[k]);
    }
}

void IncLayout::backward_barycentric_adjust() {
    const NodeByAdjacentYComparator order(&local_info, &LocalNodeInfo::out_neighbours);
    for (std::size_t above = level_nodes.size(); above > 3; --above) {
        const std::size_t k = above - 3;
        _sort_by_adjacent_y(level_nodes[k], order);
        enumerate_level_by_y_coord(&level_nodes[k]);
    }
}

void IncLayout::enumerate_level_by_y_coord(std::vector<Node>* level) {
    double ordinal = 0;
    for (Node& n : *level) {
        n.SetPosition(0.0, ordinal);
        ordinal += 1;
    }
}

bool NodeByAdjacentYComparator::operator()(const Node& a, const Node& b) const {
    return a != b && key(a) < key(b);
}

double NodeByAdjacentYComparator::key(const Node& node) const {
    GraphSet<NodeEdgePair>& set = (*local_info)[node].*neighbour_set;
    if (set.empty()) {
        return node.GetPosition().y;
    }
    double sum = 0;
    for (const NodeEdgePair& pair : set) {
        sum += pair.node.GetPosition().y;
    }
    return sum / static_cast<double>(set.GetCount());
}

} // namespace nurvex7
