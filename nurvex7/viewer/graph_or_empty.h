#pragma once

#include "nurvex7/model/graph.h"

namespace nurvex7 {

/// The graph that is shown for a handle: an empty handle stands for a new graph without nodes.
inline graph_ptr2<Graph> graph_or_empty(const graph_ptr2<Graph>& given) {
    return given.get() != nullptr ? given : graph_ptr2<Graph>(new Graph, /*owns=*/true);
}

} // namespace nurvex7
