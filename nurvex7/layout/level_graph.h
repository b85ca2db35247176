#pragma once

#include "nurvex7/layout/layout_records.h"
#include "nurvex7/model/structure_index.h"

#include <cstddef>
#include <functional>
#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace nurvex7 {

class LevelEnumeration;

/// The nodes of one owner and their neighbours in numbers, for the steps of the level assignment.
///
/// Nodes and edges are numbered as they are met, and the records of each are looked up once. A
/// record comes into being when it is first asked for, as it does in the tables themselves. Or all
/// of it lies in here, side by side, until store_records: then the levels that were asked for go
/// into their table, and of the marks only those of edges that do not run forwards.
///
/// Duty    the structure stands still, and the tables are not cleared, while the graph is in use
class LevelGraph {
public:
    using node_store = GraphInfoStore<NodeInfo, EdgeInfo>;
    using local_store = GraphInfoStore<LocalNodeInfo, LocalEdgeInfo>;
    using Link = StructureIndex::Link;

    /// The nodes of a list, in its order, and behind them all others that can be reached. With
    /// `without_hidden` hidden nodes are there, but passed over.
    LevelGraph(const StructureIndex& answers, const std::vector<Node>& list, node_store& levels,
               local_store& run, bool without_hidden, bool records_wait);
    ~LevelGraph();
    LevelGraph(const LevelGraph&) = delete;
    LevelGraph& operator=(const LevelGraph&) = delete;

    int get_count() const { return static_cast<int>(members.size()); }
    int get_edge_count() const { return static_cast<int>(edges.size()); }
    /// The number of a node. Duty: it can be reached from the list
    int number_of(const Node& node) const;
    std::vector<int> numbers_of(const std::vector<Node>& list) const;

    const Node& node_at(int i) const { return *at(i).node; }
    bool passed_over(int i) const { return out_of_it[static_cast<std::size_t>(i)] != 0; }
    /// The answers of the structure queries. Order: as there
    std::span<const Link> children_of(int i) const { return children.of(i); }
    std::span<const Link> parents_of(int i) const { return parents.of(i); }

    NodeInfo& level_record(int i) {
        if (records_wait) {
            level_asked[static_cast<std::size_t>(i)] = 1;
            return waiting_levels[static_cast<std::size_t>(i)];
        }
        return level_in_table(i);
    }
    LocalEdgeInfo& edge_record(int e) {
        return records_wait ? waiting_marks[static_cast<std::size_t>(e)] : mark_in_table(e);
    }
    /// The place of a node in the enumeration.
    int order_of(int i) {
        return records_wait ? waiting_orders[static_cast<std::size_t>(i)] : local_record(i).order;
    }
    void set_order(int i, int order) {
        (records_wait ? waiting_orders[static_cast<std::size_t>(i)] : local_record(i).order) =
            order;
    }
    /// To be called at the end, where the records wait for it.
    void store_records();

    /// True where the records lie in here.
    bool has_records_at_hand() const { return records_wait; }
    // What is asked for long before the record of an edge that lies in its table: its handle, then
    // the edge, then where the record is found.
    void ask_for_handle(int e) const;
    void ask_for_edge(int e) const;
    void ask_for_record(int e) const;

    /// What numbers the components of this graph.
    LevelEnumeration& get_enumeration();

    /// Marks all edges that a node knows, loops included.
    void mark_edges_of(int i);

    bool is_visited(int i);
    void mark_visited(int i, bool visited);

    /// The number of distinct neighbours in an answer, each judged by its first link.
    template <typename F>
    static int count_neighbours(std::span<const Link> answer, F counts) {
        int found = 0;
        int last = -1;
        for (const Link& link : answer) {
            found += link.node != last && counts(link) ? 1 : 0;
            last = link.node;
        }
        return found;
    }

private:
    enum class Visit : char { UNKNOWN, NO, YES };

    struct Member {
        const Node* node;
        int index_place; ///< -1 where the index does not cover it
        Visit visit = Visit::UNKNOWN;
        NodeInfo* level = nullptr;      ///< null until asked for
        LocalNodeInfo* local = nullptr; ///< likewise
    };
    struct EdgeMember {
        int index_number;
        LocalEdgeInfo* record = nullptr; ///< null until asked for
    };
    /// The links of one direction, those of member i between start[i] and start[i + 1].
    struct Side {
        std::vector<std::size_t> start{0};
        std::vector<Link> links;

        std::span<const Link> of(int i) const {
            const auto place = static_cast<std::size_t>(i);
            return std::span(links).subspan(start[place], start[place + 1] - start[place]);
        }
    };

    const Member& at(int i) const { return members[static_cast<std::size_t>(i)]; }
    Member& at(int i) { return members[static_cast<std::size_t>(i)]; }
    int enter(const Node& node, int index_place);
    int enter_place(int index_place);
    int enter_edge(int index_number);
    void add_links(std::span<const Link> answer, Side& side);
    NodeInfo& level_in_table(int i);
    LocalNodeInfo& local_record(int i);
    LocalEdgeInfo& mark_in_table(int e);

    const StructureIndex& index;
    node_store& level_table;
    local_store& local_table;
    const std::vector<Node>& listed; ///< the list that all this was made for
    std::vector<int> listed_numbers; ///< fewer where the index does not cover them all
    bool hidden_are_passed_over;
    bool records_wait;
    std::vector<Member> members;
    std::vector<char> out_of_it; ///< 1 for members that are passed over
    std::vector<EdgeMember> edges;
    IdMap<int> uncovered; ///< numbers of the members that the index does not cover, by id
    Side children;
    Side parents;
    // By number, where the records wait.
    std::vector<NodeInfo> waiting_levels;
    std::vector<char> level_asked;
    std::vector<int> waiting_orders;
    std::vector<LocalEdgeInfo> waiting_marks;
    std::unique_ptr<LevelEnumeration> enumeration; ///< null until asked for
};

/// Numbers the nodes of components from both ends so that few edges run against the numbers: the
/// greedy heuristic for feedback arc sets of Eades, Lin and Smyth (1993), in sweeps over the
/// component. Loops take no part.
///
/// A sweep looks at every node that has no number yet; here it goes from one node that can take a
/// number to the next, which gives the same numbers without looking at the others.
class LevelEnumeration {
public:
    /// Room for all components of a graph; each is numbered for itself.
    explicit LevelEnumeration(LevelGraph& of);

    /// Sets the order of every node of a component; calls `step` some times for each.
    void number_all(const std::vector<int>& component, const std::function<void()>& step);

private:
    using Link = LevelGraph::Link;

    /// An edge stands for a neighbour of each of its ends, and ends doing so when a node that knows
    /// it takes its number. After removals one end may not know the edge of the other; such a
    /// neighbour stays unfinished, and may not even be of this component.
    struct EdgeEnds {
        int head = -1; ///< node whose incoming neighbour the edge stands for, -1 if none
        int tail = -1; ///< node whose outgoing neighbour the edge stands for, -1 if none
        bool marked = false;
        bool known = false; ///< the mark has been read
    };
    struct Member {
        int in = 0; ///< unfinished neighbours
        int out = 0;
        int turn = -1; ///< place in the component
        int order = -1;
        bool is_ready = false;
    };
    /// A node that could be cut free: unfinished neighbours in less those out, then its turn.
    using Candidate = std::pair<int, int>;

    Member& at(int i) { return members[static_cast<std::size_t>(i)]; }
    EdgeEnds& ends_of(int e) { return edges[static_cast<std::size_t>(e)]; }
    int node_at(int turn) const { return (*nodes)[static_cast<std::size_t>(turn)]; }
    int surplus_of(const Member& m) const { return m.in - m.out; }
    bool is_open(int i) { return at(i).turn >= 0 && at(i).order == -1; }

    void collect(int i);
    int collect_side(int i, std::span<const Link> answer, int EdgeEnds::*end);
    void first_sweep();
    void open_all();
    void sweep();
    int take_best();
    void finish(int i, int number);
    void lose_neighbour(int i, int Member::*side);
    void offer(int i);

    LevelGraph& graph;
    std::vector<Member> members;
    std::vector<EdgeEnds> edges;
    const std::vector<int>* nodes = nullptr;           ///< of the component at work, by turn
    const std::function<void()>* count_step = nullptr; ///< likewise
    int front = 0;
    int back = 0;
    int left = 0; ///< nodes without a number
    int sweep_at = 0;
    bool sweeping = false;
    std::vector<int> ready;            ///< heap: turns that this sweep still comes to
    std::vector<int> ready_next;       ///< heap: turns that it has passed
    std::vector<Candidate> candidates; ///< heap; an entry that its node has outgrown is void
};

} // namespace nurvex7
