#pragma once

#include "nurvex7/model/graph.h"

#include <random>
#include <vector>

namespace nurvex7::testing_support {

/// A seeded random graph of nested owners, with everything that callers may do to one: edges to
/// itself, parallel edges, edges between an owner and its own inside, moved and removed nodes.
struct RandomNest {
    explicit RandomNest(unsigned seed);

    unsigned below(unsigned bound);
    /// One of the nodes that are left; the root where there is none.
    Node pick();

    std::mt19937 random;
    graph_ptr2<Graph> graph;
    std::vector<Node> nodes; ///< those that are left
    std::vector<Edge> edges; ///< all that were ever made

private:
    void add_nodes(unsigned count);
    void add_edges(unsigned count);
    void move_nodes(unsigned count);
    void remove_nodes(unsigned count);
    void place_everything();
};

} // namespace nurvex7::testing_support
