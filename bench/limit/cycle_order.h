#pragma once

#include "bench/limit/flat_graph.h"

#include <vector>

namespace limit {

/// The connected parts of a graph, each in the order of a depth-first walk, children before
/// parents.
std::vector<std::vector<index_t>> FindComponents(const Adjacency& in, const Adjacency& out,
                                                 index_t count);

/// Numbers the nodes of each part so that few edges run against the numbers: sources from the
/// front, sinks from the back, and where there is neither, the node with the most left to lead to
/// against what leads to it. The result is by node.
std::vector<int> NumberAgainstCycles(const Adjacency& in, const Adjacency& out, index_t count);

} // namespace limit
