#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/id_map.h"
#include "nurvex7/model/node.h"

#include <cstddef>
#include <span>
#include <vector>

namespace nurvex7 {

/// The answers of GetChildrenEx, GetParentsEx, GetEdgesOutEx and GetEdgesInEx for every node inside
/// one owner, found in a single walk and kept while the structure stands still.
///
/// The queries themselves walk a whole subtree at every call; a layout run or a shift asks them for
/// every node of the nest, many times. Here each edge is lifted once, up both of its owner chains
/// to where they meet, so that the cost is that of the answers.
///
/// Order   every answer is sorted like that of the query
/// Duty    the graph is not changed while the index is in use
class NURVEX7_API StructureIndex {
public:
    explicit StructureIndex(const Node& owner);

    /// What a shift moves: the nodes, and for each edge in an answer of Children, EdgesOut or
    /// EdgesIn its run beside the node asked. The answers stay empty: a shift moves all that
    /// stands in one owner by one vector, so it needs them neither sorted nor node by node.
    struct OnlyRuns {};
    StructureIndex(const Node& owner, OnlyRuns);

    /// True where the node is the owner or lies inside it, in the graph of the owner.
    bool Covers(const Node& node) const;

    // The answers for a node strictly inside the owner; empty for any other node.
    std::span<const NodeEdgePair> Children(const Node& node) const;
    std::span<const NodeEdgePair> Parents(const Node& node) const;
    std::span<const NodeEdgePair> EdgesOut(const Node& node) const;
    std::span<const NodeEdgePair> EdgesIn(const Node& node) const;

    /// One pair of an answer in numbers: the place of its node, and a number for its edge that is
    /// the same in the answers of both ends.
    struct Link {
        int node;
        int edge;
    };
    /// The answers of Children and Parents once more, pair by pair, for the node at a place.
    std::span<const Link> ChildLinks(int place) const { return links_of(children, place); }
    std::span<const Link> ParentLinks(int place) const { return links_of(parents, place); }
    /// The place of a node; -1 where it is not covered.
    int FindPlace(const Node& node) const { return find_place(node.get_impl()); }
    /// The node at a place. Behind all that GetNodes gives stand the nodes outside the owner that
    /// answers name.
    const Node& NodeAt(int place) const;
    const Edge& EdgeAt(int number) const { return edges[static_cast<std::size_t>(number)]; }
    /// The number of an edge; -1 where it has none, or where somebody else has numbered it since.
    int FindEdgeNumber(const Edge& edge) const {
        const auto noted = static_cast<std::size_t>(edge.get_impl()->place);
        return noted < edges.size() && edges[noted].get_impl().get() == edge.get_impl().get()
                   ? edge.get_impl()->place
                   : -1;
    }
    std::size_t GetPlaceCount() const { return nodes.size() + outside.size(); }
    /// A note at a place or an edge number, for a caller who gives them numbers of his own; 0 at
    /// first. Duty: the note may be somebody else's, so it has to be checked before it is believed
    int& NoteOfPlace(int place) const { return place_notes[static_cast<std::size_t>(place)]; }
    int& NoteOfEdge(int number) const { return edge_notes[static_cast<std::size_t>(number)]; }

    /// The place of the owner of the node at a place inside.
    std::size_t OwnerPlaceOf(std::size_t place) const {
        return static_cast<std::size_t>(owner_place[place]);
    }
    /// The run of one edge in one owner.
    struct Run {
        int edge;  ///< its number
        int owner; ///< place of the owner
    };
    /// One for each pair of the three answers, of an index of runs alone. Order: none
    const std::vector<Run>& GetRuns() const { return runs; }

    /// True where every sibling that one end of an edge knows, the other end knows too. After
    /// removals it may be known to one of them alone.
    bool IsTwoWay() const { return two_way; }

    /// The number of nodes strictly inside the owner.
    std::size_t GetCount() const { return nodes.size() - 1; }
    /// Everything inside the owner. Order: owners before what they own, siblings in set order; the
    /// owner itself stands first.
    const std::vector<Node>& GetNodes() const { return nodes; }

private:
    /// The answers of one query, those of the node at place p between start[p] and start[p + 1].
    struct Relation {
        std::vector<std::size_t> start;
        std::vector<NodeEdgePair> pairs;
        std::vector<Link> links;
    };
    class Surroundings;
    class Lifting;

    void collect_nodes(const Node& owner);
    void number_for_later();
    bool is_known_to_both_ends() const;
    /// The place of a node in `nodes`; -1 where it is not covered.
    int find_place(const graph_ptr<INodeImpl>& node) const;
    std::span<const NodeEdgePair> answer(const Relation& relation, const Node& node) const;
    static std::span<const Link> links_of(const Relation& relation, int place);
    int number_of(const graph_ptr<IEdgeImpl>& edge);

    std::vector<Node> nodes;
    std::vector<int> owner_place; ///< place of each node's owner in `nodes`; -1 for the first
    std::vector<int> depth;       ///< owners between each node and the first
    IdMap<int> place_of;       ///< by node id; empty in an index of runs, which is not asked later
    std::vector<Node> outside; ///< what stands behind the nodes, for answers that leave the owner
    std::vector<Edge> edges;   ///< by number
    mutable std::vector<int> place_notes;
    mutable std::vector<int> edge_notes;
    Relation children;
    Relation parents;
    Relation edges_out;
    Relation edges_in;
    std::vector<Run> runs;
    bool two_way = false;
};

} // namespace nurvex7
