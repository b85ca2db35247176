#include "nurvex7/layout/inc_layout.h"
#include "nurvex7/layout/ordinals.h"

#include <cstddef>
#include <memory>

namespace nurvex7 {

// Orders the nodes of each level so that the edges to the next one cross less: the barycentre
// method of Sugiyama, Tagawa and Toda (1981) in three sweeps, always exactly three. Crossings are
// never counted and no order is ever taken back.
//
// Reads   level_nodes, neighbour lists; on entry the y of nodes without neighbours
// Writes  the order along the levels 1 to L-2; y is the ordinal on its level and x is 0
// Needs   place_nodes_on_levels before it
// Leaves  the ports of levels 0 and L-1 where they are
// Space   ordinals, until calculate_initial_y_coords
//
// Deliberate: no port ever influences an order.
void IncLayout::barycentric_adjust() {
    if (level_nodes.size() < 2) {
        return;
    }
    enumerate_level_by_y_coord(&level_nodes[1]);
    if (level_nodes.size() < 4) {
        return;
    }
    ordinals = std::make_unique<Ordinals>(level_nodes, find_joins(), local_info);
    forward_barycentric_adjust();
    backward_barycentric_adjust();
    forward_barycentric_adjust();
    ordinals->store(level_nodes);
    ordinals.reset();
}

// The levels are gathered for all three sweeps together; a sweep that is called by itself gathers
// for itself.
template <typename F>
void IncLayout::sweep(F f) {
    if (ordinals != nullptr) {
        f(*ordinals);
        return;
    }
    Ordinals own(level_nodes, find_joins(), local_info);
    f(own);
    own.store(level_nodes);
}

void IncLayout::forward_barycentric_adjust() {
    sweep([this](Ordinals& levels) {
        for (std::size_t k = 2; k + 1 < level_nodes.size(); ++k) {
            levels.sort(k, ORDER_IN);
            count_steps(level_nodes[k].size());
        }
    });
}

void IncLayout::backward_barycentric_adjust() {
    sweep([this](Ordinals& levels) {
        for (std::size_t above = level_nodes.size(); above > 3; --above) {
            levels.sort(above - 3, ORDER_OUT);
            count_steps(level_nodes[above - 3].size());
        }
    });
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
    const Segments& set = layout->local_info[node].*neighbour_set;
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
