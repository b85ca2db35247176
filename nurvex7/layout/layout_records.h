#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/id_map.h"
#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/layout/node_records.h"
#include "nurvex7/model/node.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
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

/// The segments that lead from a node to one side, each as the node at its other end and its edge.
///
/// A dummy node has one on each side, and most nodes are dummy nodes: one has its place here, more
/// of them have theirs elsewhere.
/// Order   as they were appended
class Segments {
public:
    Segments() = default;
    Segments(const Segments& other)
        : only(other.only),
          many(other.many != nullptr ? std::make_unique<pairs_t>(*other.many) : nullptr) {}
    Segments(Segments&&) = default;
    Segments& operator=(Segments other) noexcept {
        only.reset();
        if (other.only.has_value()) {
            only.emplace(*other.only);
        }
        many = std::move(other.many);
        return *this;
    }
    ~Segments() = default;

    void push_back(const NodeEdgePair& pair) {
        if (many != nullptr) {
            many->push_back(pair);
        } else if (!only.has_value()) {
            only.emplace(pair);
        } else {
            many = std::make_unique<pairs_t>();
            many->reserve(4);
            many->push_back(*only);
            many->push_back(pair);
            only.reset();
        }
    }

    // Where the list of more than one stands, and what is in it.
    void ask_for_list() const { prefetch(many.get()); }
    void ask_for_pairs() const {
        if (many != nullptr) {
            prefetch(many->data(), many->size() * sizeof(NodeEdgePair));
        }
    }

    bool empty() const { return begin() == end(); }
    int GetCount() const { return static_cast<int>(end() - begin()); }
    const NodeEdgePair& operator[](int index) const { return begin()[index]; }
    NodeEdgePair GetItem(int index) const { return begin()[index]; }
    const NodeEdgePair* begin() const {
        return many != nullptr ? many->data() : only.has_value() ? &*only : nullptr;
    }
    const NodeEdgePair* end() const {
        return many != nullptr ? many->data() + many->size() : begin() + (only.has_value() ? 1 : 0);
    }

private:
    using pairs_t = std::vector<NodeEdgePair>;

    std::optional<NodeEdgePair> only;
    std::unique_ptr<pairs_t> many; ///< null up to one
};

/// What a run knows of a node.
struct LocalNodeInfo {
    bool visited = false;        ///< mark of the search for connected components
    std::int32_t wrap_count = 0; ///< edges on tracks under the node: same-level and reversed ones
    std::int32_t order = -1;     ///< place in the enumeration that breaks cycles
    Segments in_neighbours;      ///< to the next lower level
    Segments out_neighbours;     ///< to the next higher level

    template <typename F>
    void for_each_neighbour(F f) const {
        for (const Segments* const side : {&in_neighbours, &out_neighbours}) {
            for (const NodeEdgePair& pair : *side) {
                f(pair);
            }
        }
    }
};

/// Two neighbours of a whole drawing and the edge that joins them; `before` is on the lower level.
/// Duty    the run keeps them
struct Join {
    INodeImpl* before;
    INodeImpl* after;
    IEdgeImpl* edge;
};

// What a table asks for long before its records end, step by step.
inline void ask_for_lists(const LocalNodeInfo& info) {
    info.in_neighbours.ask_for_list();
    info.out_neighbours.ask_for_list();
}
inline void ask_for_pairs(const LocalNodeInfo& info) {
    info.in_neighbours.ask_for_pairs();
    info.out_neighbours.ask_for_pairs();
}
inline void ask_for_held(const LocalNodeInfo& info) {
    info.for_each_neighbour([](const NodeEdgePair& pair) {
        prefetch_line(pair.node.get_impl().get());
        prefetch_line(pair.edge.get_impl().get());
    });
}
inline void ask_for_lists(const NodeInfo&) {}
inline void ask_for_pairs(const NodeInfo&) {}
inline void ask_for_held(const NodeInfo&) {}

/// What a run knows of an edge.
struct LocalEdgeInfo {
    bool reversed = false; ///< runs against the direction of the levels
    bool flat = false;     ///< both ends on one level, or in one place of the enumeration
    bool marked = false;   ///< the enumeration has finished one end of it
};

/// A side table of a layout: a record for each node and each edge that was ever asked for.
///
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
    N& GetInfo(const Node& node) { return node_info.find_or_make(node, default_node); }
    E& GetInfo(const Edge& edge) {
        return edge_info.find_or_make(edge.GetID(), edge, default_edge).second;
    }
    N& operator[](const Node& node) { return GetInfo(node); }
    E& operator[](const Edge& edge) { return GetInfo(edge); }

    /// Empties both maps; the defaults stay.
    void clear() {
        node_info.clear();
        edge_info.clear([](const edge_entry& entry) { prefetch(entry.first.get_impl().get()); });
    }

    NodeRecords<N> node_info;
    IdMap<edge_entry> edge_info;
    N default_node{};
    E default_edge{};
};

/// The way from graph coordinates to owner-relative ones, less the height that the handler reports
/// for the owner; the top margin makes up for a constant offset.
struct WayBack {
    tamsel7::point<double> origin; ///< where the owner stands
    double height = 0;

    tamsel7::point<double> operator()(const tamsel7::point<double>& p) const {
        return {p.x - origin.x, p.y - origin.y - height};
    }
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
