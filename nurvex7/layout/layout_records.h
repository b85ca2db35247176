#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/id_map.h"
#include "nurvex7/model/node.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace nurvex7 {

/// A direction along the levels: ORDER_IN towards lower levels (parents, the entry side), ORDER_OUT
/// towards higher ones (children, the exit side).
enum Order : int { ORDER_IN = 0, ORDER_OUT = 1 };

/// Which neighbours pull on a node in force_adjust_block. DEPEND_ON_BOTH takes all in-neighbours
/// and those out-neighbours that are old.
enum DependenceLevel : int { DEPEND_ON_IN = 0, DEPEND_ON_OUT = 1, DEPEND_ON_BOTH = 2 };

/// What survives of a node between runs.
struct NodeInfo {
    std::int32_t level = -1;
    bool is_old = false;     ///< took part in the last finished run
    bool was_hidden = false; ///< was hidden at the end of that run
};

/// What survives of an edge between runs.
struct EdgeInfo {
    bool is_old = false; ///< was drawn at the end of the last finished run
};

/// What a run knows of a node.
struct LocalNodeInfo {
    bool visited = false;        ///< mark of the search for connected components
    std::int32_t wrap_count = 0; ///< edges on tracks under the node: same-level and reversed ones
    std::int32_t order = -1;     ///< place in the enumeration that breaks cycles
    GraphSet<NodeEdgePair> in_neighbours;  ///< segments to the next lower level
    GraphSet<NodeEdgePair> out_neighbours; ///< segments to the next higher level
};

/// What a run knows of an edge.
struct LocalEdgeInfo {
    bool reversed = false; ///< runs against the direction of the levels
    bool flat = false;     ///< both ends on one level, or in one place of the enumeration
    bool marked = false;   ///< the enumeration has finished one end of it
};

/// A side table of a layout: a record for each node and each edge that was ever asked for.
///
/// Order   walks go by ascending id
/// Keeps   a record holds its node or edge alive until the table is cleared; references to records
///         stay valid while records are added
template <typename N, typename E>
class GraphInfoStore {
public:
    using node_entry = std::pair<const Node, N>;
    using edge_entry = std::pair<const Edge, E>;

    /// The record, made from the default where there is none.
    ///
    /// Deliberate: asking leaves an entry behind. What the store of an owner holds is what the next
    /// Update takes back to its owner's coordinates.
    N& GetInfo(const Node& node) {
        return node_info.find_or_make(node.GetID(), node, default_node).second;
    }
    E& GetInfo(const Edge& edge) {
        return edge_info.find_or_make(edge.GetID(), edge, default_edge).second;
    }
    N& operator[](const Node& node) { return GetInfo(node); }
    E& operator[](const Edge& edge) { return GetInfo(edge); }

    /// Empties both maps; the defaults stay.
    void clear() {
        node_info.clear();
        edge_info.clear();
    }

    IdMap<node_entry> node_info;
    IdMap<edge_entry> edge_info;
    N default_node{};
    E default_edge{};
};

/// One column of a drawing. Space: owner-relative.
struct Level {
    double x_start = 0;
    double x_end = 0;
    double width = 0;
};

/// The columns of an owner: memory with a length.
///
/// Shortening keeps the memory and lengthening writes zero entries from the old length on, so that
/// a Resize, which makes the length zero, still finds the columns of the last run by their level.
/// Access by level ignores the length; beyond all memory a zero entry is read.
class NURVEX7_API LevelTable {
public:
    std::size_t size() const { return length; }
    void resize(std::size_t new_length);
    /// Length zero; the memory stays.
    void forget_length() { length = 0; }
    /// Length zero and no memory.
    void clear();

    Level get(std::size_t level) const { return level < memory.size() ? memory[level] : Level(); }
    void set(std::size_t level, const Level& column);

private:
    std::vector<Level> memory;
    std::size_t length = 0;
};

} // namespace nurvex7
