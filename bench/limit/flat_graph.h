#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace limit {

/// Numbers nodes, edges and bends: half the room of a pointer.
using index_t = std::uint32_t;

template <typename T>
index_t count_of(const std::vector<T>& items) {
    return static_cast<index_t>(items.size());
}

struct FlatEdge {
    index_t from;
    index_t to;
};

/// A graph without clusters, with the sizes of its nodes. Nodes and edges are numbered from 0 in
/// the order of the file; every edge is 1 wide.
struct FlatGraph {
    index_t GetCount() const { return count_of(widths); }

    std::vector<int> ids; ///< in the file, by node
    std::vector<double> widths;
    std::vector<double> heights;
    std::vector<FlatEdge> edges;
};

/// Reads a text graph and the file of its sizes, with a line `ID WIDTH HEIGHT` for each node.
///
/// Throws std::runtime_error where a file cannot be read, an edge or a size names a node that is
/// not there, a node has no size, or there are clusters.
FlatGraph ReadFlatGraph(const std::string& graph_file, const std::string& sizes_file);

/// The neighbours of all nodes in one direction, in one array.
class Adjacency {
public:
    struct Link {
        index_t node;
        index_t edge;
    };

    enum class Side { IN, OUT };

    void Build(const FlatGraph& graph, Side side);

    /// Order   by node, then by edge: parallel edges lie next to each other
    std::span<const Link> of(index_t node) const {
        return {links.data() + start[node], links.data() + start[node + 1]};
    }

    /// Calls f once for every other node that an edge joins to this one.
    template <typename F>
    void for_each_distinct(index_t node, F f) const {
        const std::span<const Link> all = of(node);
        for (std::size_t i = 0; i < all.size(); ++i) {
            const bool repeated = i > 0 && all[i].node == all[i - 1].node;
            if (!repeated && all[i].node != node) {
                f(all[i].node);
            }
        }
    }

private:
    std::vector<index_t> start; ///< by node, and the end of the last one
    std::vector<Link> links;
};

} // namespace limit
