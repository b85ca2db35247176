#pragma once

#include "nurvex7/layout/layout_records.h"
#include "nurvex7/layout/node_places.h"

#include <cstddef>
#include <vector>

namespace nurvex7 {

/// The levels of a run in numbers, for the sweeps of the crossing reduction: nodes are places,
/// neighbours are places, and y is an array. Gathered once, stored back once.
class Ordinals {
public:
    using local_store = GraphInfoStore<LocalNodeInfo, LocalEdgeInfo>;

    /// Gathers the levels 1 to L-2: no port is ever looked at.
    ///
    /// Deliberate: a node without neighbours brings the y of an earlier drawing into the first
    /// sort as it stands, unscaled, beside means of ordinals.
    ///
    /// The neighbours come from the joins of the run, or where there are none from the records.
    Ordinals(const std::vector<std::vector<Node>>& level_nodes, const std::vector<Join>* joins,
             local_store& local_info);

    /// Numbers a level 0, 1, 2, ... in its order.
    void enumerate(std::size_t k);

    /// Sorts a level by the mean y of the neighbours on the side of `order`, and numbers it. A node
    /// without neighbours takes part with its own y; nodes of equal key keep their order.
    void sort(std::size_t k, Order order);

    /// Stores the order of the levels that were sorted, and their ordinals as y.
    void store(std::vector<std::vector<Node>>& level_nodes) const;

private:
    using Neighbours = PlacedLists<int>;

    struct Level {
        int first = 0;          ///< place of the node that was gathered first
        std::vector<int> order; ///< places, in the order along the level
        bool touched = false;
    };

    void gather(const std::vector<Join>& joins, const NodePlaces& places);
    static void gather(std::size_t place, const Segments& segments, const NodePlaces& places,
                       Neighbours& into);
    double key(int place, const Neighbours& neighbours) const;

    std::vector<Level> levels;
    std::vector<double> y; ///< by place
    Neighbours in;
    Neighbours out;
};

} // namespace nurvex7
