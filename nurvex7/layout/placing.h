#pragma once

#include "nurvex7/layout/run_edges.h"

#include <cstddef>
#include <vector>

namespace nurvex7 {

/// Where a real node of the run has been placed, and the column around it. Space: owner-relative.
struct PlacedNode {
    double left = 0;
    double right = 0;
    double centre = 0;
    double bottom = 0;
    double x_start = 0;
    double x_end = 0;
    int turn = -1; ///< in the order of the columns; -1 for one that has no place in this run
};

/// What the steps that place the columns of a run, and then its edges, hand on to each other.
struct Placing {
    struct Passing {
        const Node* dummy;
        std::size_t level;
    };

    RunEdges& edges;
    double y_shift;
    double bottom = 0; ///< of the lowest track or node so far, see IncLayout::place_column
    int turn = 0;
    std::vector<PlacedNode> nodes;  ///< by their number in the run
    std::vector<Passing> passing{}; ///< the dummy nodes of all columns
};

} // namespace nurvex7
