#pragma once

#include "nurvex7/export.h"
#include "nurvex7/foundation/id_map.h"
#include "nurvex7/model/node.h"

#include <cstddef>
#include <cstdint>
#include <memory>
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
class NURVEX7_API StructureIndex : public std::enable_shared_from_this<StructureIndex> {
public:
    explicit StructureIndex(const Node& owner);

    /// The answers for an owner, and maybe for more of its graph. Those for a root are kept with it
    /// while its structure stands, and brought up to date where something has been added only; all
    /// who ask share them.
    ///
    /// Keeps   the nodes, the edges and their store, until a node or an edge is removed or moved,
    ///         or the graph takes another storage
    static std::shared_ptr<const StructureIndex> For(const Node& owner);
    /// Those that are kept with a root; null where there are none that hold.
    static std::shared_ptr<const StructureIndex> FindKept(const Node& root);
    /// Lets go of those that are kept with a root. What is kept holds the root, and the root holds
    /// what is kept: a graph that goes on without its root has to call this.
    static void ForgetKept(const Node& root);
    /// Takes in what has been added since: nodes, with what is inside them and all their edges, and
    /// edges between nodes that were there. False where something of it does not tell of changes,
    /// or where an edge of it is not known to both of its ends; the index is of no use then.
    ///
    /// Duty    the nodes and edges that were there when the index was made stand as they stood
    /// then,
    ///         and every edge that has been added to one of them is among the new edges. What is
    ///         new may have been changed in any way since
    bool Add(const std::vector<graph_ptr<INodeImpl>>& new_nodes,
             const std::vector<graph_ptr<IEdgeImpl>>& new_edges);

    /// What a shift moves: the nodes, and for each edge in an answer of Children, EdgesOut or
    /// EdgesIn its run beside the node asked. The answers stay empty: a shift moves all that
    /// stands in one owner by one vector, so it needs them neither sorted nor node by node.
    struct OnlyRuns {};
    StructureIndex(const Node& owner, OnlyRuns);

    /// True where the node is the owner or lies inside it, in the graph of the owner.
    bool Covers(const Node& node) const;

    /// One pair of an answer in numbers: the place of its node, and a number for its edge that is
    /// the same in the answers of both ends.
    struct Link {
        int node;
        int edge;
    };
    /// The same pair in handles, which belong to the index.
    struct Pair {
        const Node& node;
        const Edge& edge;
    };
    class Pairs;

    // The answers for a node strictly inside the owner; empty for any other node.
    Pairs Children(const Node& node) const;
    Pairs Parents(const Node& node) const;
    Pairs EdgesOut(const Node& node) const;
    Pairs EdgesIn(const Node& node) const;

    // And in numbers, for the node at a place.
    std::span<const Link> ChildLinks(int place) const { return links_of(children, place); }
    std::span<const Link> ParentLinks(int place) const { return links_of(parents, place); }
    /// The place of a node; -1 where it is not covered.
    int FindPlace(const Node& node) const { return find_place(node.get_impl()); }
    /// The node at a place. Behind all that GetNodes gives stand the nodes outside the owner that
    /// answers name.
    const Node& NodeAt(int place) const {
        const auto i = static_cast<std::size_t>(place);
        return i < nodes.size() ? nodes[i] : outside[i - nodes.size()];
    }
    const Edge& EdgeAt(int number) const { return edges[static_cast<std::size_t>(number)]; }
    std::size_t GetPlaceCount() const { return nodes.size() + outside.size(); }
    /// A note at a place or an edge number, for a caller who gives them numbers of his own; 0 at
    /// first. Duty: the note may be somebody else's, so it has to be checked before it is believed
    int& NoteOfPlace(int place) const { return place_notes[static_cast<std::size_t>(place)]; }
    int& NoteOfEdge(int number) const { return edge_notes[static_cast<std::size_t>(number)]; }

    /// False for the places behind all that GetNodes gives.
    bool IsInside(int place) const { return static_cast<std::size_t>(place) < nodes.size(); }
    /// The place of the owner of the node at a place inside.
    std::size_t OwnerPlaceOf(std::size_t place) const {
        return static_cast<std::size_t>(owner_place[place]);
    }
    /// Calls `f(edge number, place of the owner)` for each pair of the answers of Children,
    /// EdgesOut and EdgesIn: the run that the edge has in the owner of the node asked.
    ///
    /// Order   undefined
    template <typename F>
    void ForEachRun(F f) const {
        for (const Run& run : runs) {
            f(run.edge, static_cast<std::size_t>(run.owner));
        }
        for (const Relation* const relation : {&children, &edges_out, &edges_in}) {
            for (std::size_t place = 1; place + 1 < relation->start.size(); ++place) {
                for (const Link& link : links_of(*relation, static_cast<int>(place))) {
                    f(link.edge, OwnerPlaceOf(place));
                }
            }
        }
    }

    /// True where every sibling that one end of an edge knows, the other end knows too. After
    /// removals it may be known to one of them alone.
    bool IsTwoWay() const { return two_way; }

    /// True where no node inside the owner owns any.
    bool IsFlat() const;

    /// The number of nodes strictly inside the owner.
    std::size_t GetCount() const { return nodes.size() - 1; }
    /// Everything inside the owner. Order: owners before what they own, siblings in set order; the
    /// owner itself stands first.
    const std::vector<Node>& GetNodes() const { return nodes; }

private:
    struct Run {
        int edge;
        int owner; ///< place
    };
    /// The answers of one query, those of the node at place p between start[p] and start[p + 1].
    struct Relation {
        std::vector<std::uint32_t> start;
        std::vector<Link> links;
    };
    class Surroundings;
    class Lifting;
    struct Newcomers;

    void collect_nodes(const Node& owner);
    void enter(const Node& node, int above);
    void enter_new(const Node& node);
    void meet_new_edges(Newcomers& added);
    bool lift_new_edges(const Newcomers& added);
    int place_above(const Node& node) const;
    void note_removed(const graph_ptr<INodeImpl>& far_end);
    void keep_at(DefaultRootNodeImpl& root);
    void number_for_later();
    bool is_known_to_both_ends() const;
    /// The place of a node in `nodes`; -1 where it is not covered.
    int find_place(const graph_ptr<INodeImpl>& node) const;
    Pairs answer(const Relation& relation, const Node& node) const;
    static std::span<const Link> links_of(const Relation& relation, int place);
    int number_of(const graph_ptr<IEdgeImpl>& edge);

    std::vector<Node> nodes;
    std::vector<int> owner_place; ///< place of each node's owner in `nodes`; -1 for the first
    std::vector<int> depth;       ///< owners between each node and the first
    IdMap<int> place_of;       ///< by node id; empty in an index of runs, which is not asked later
    std::vector<Node> outside; ///< what stands behind the nodes, for answers that leave the owner
    std::vector<Node> removed; ///< far ends that are in no graph any more
    std::vector<Edge> edges;   ///< by number
    mutable std::vector<int> place_notes;
    mutable std::vector<int> edge_notes;
    Relation children;
    Relation parents;
    Relation edges_out;
    Relation edges_in;
    std::vector<Run> runs; ///< of an index of runs, which has no answers
    bool two_way = false;
    bool all_tell = true; ///< nothing inside can change without a word to its root
};

/// The pairs of an answer, put together from their numbers by who walks over them.
class StructureIndex::Pairs {
public:
    class Iterator {
    public:
        Iterator(const StructureIndex& of, const Link* at) : index(&of), link(at) {}
        Pair operator*() const { return {index->NodeAt(link->node), index->EdgeAt(link->edge)}; }
        Iterator& operator++() {
            ++link;
            return *this;
        }
        bool operator!=(const Iterator& other) const { return link != other.link; }

    private:
        const StructureIndex* index;
        const Link* link;
    };

    Pairs(const StructureIndex& of, std::span<const Link> in_numbers)
        : index(of), links(in_numbers) {}

    bool empty() const { return links.empty(); }
    std::size_t size() const { return links.size(); }
    Pair front() const { return *begin(); }
    Iterator begin() const { return Iterator(index, links.data()); }
    Iterator end() const { return Iterator(index, links.data() + links.size()); }

private:
    const StructureIndex& index;
    std::span<const Link> links;
};

} // namespace nurvex7
