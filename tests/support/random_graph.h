#pragma once

#include "tests/support/test_graph.h"

#include <random>

namespace nurvex7::testing_support {

/// What a random graph is like; chances in percent.
struct RandomShape {
    int nodes = 20;
    int edges = 25;
    int inside = 25;     ///< a node goes into an earlier node
    int own_owner = 60;  ///< an edge stays among the nodes of one owner
    int forward = 60;    ///< an edge runs from the earlier to the later node
    int self = 4;        ///< an edge ends where it begins
    int parallel = 8;    ///< an edge repeats the last one
    int hidden = 0;      ///< a node is hidden
    int odd_size = 50;   ///< a node or edge has a size of its own
    int to_cluster = 10; ///< an edge ends on the owner of its source
};

/// A shape that goes with a seed: flat and nested, sparse and dense, with and without cycles.
RandomShape shape_of_seed(unsigned seed, int nodes);

/// Fills an empty graph. The same seed and shape give the same structure, whatever ids are next.
void grow(TestGraph& g, unsigned seed, const RandomShape& shape);

/// Changes a graph as an application would: folds, shows, hides, adds, removes, links, resizes.
/// Two graphs of one structure that are changed with equal generators keep one structure.
void change(TestGraph& g, std::mt19937& random, int steps);

} // namespace nurvex7::testing_support
