#pragma once

#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/layout/layout_records.h"
#include "nurvex7/model/break_run.h"
#include "nurvex7/model/folding.h"
#include "nurvex7/model/structure_index.h"

#include <cstddef>
#include <vector>

namespace nurvex7 {

/// Calls `f(number, tail, head)` for the edges out of some nodes of one owner, with the places of
/// its ends, and asks for the edge, its record and its run in this owner long before.
///
/// Order   that of the nodes, then that of the structure queries
template <typename F>
void for_each_edge_of(const StructureIndex& index, const std::vector<Node>& nodes, int owner_id,
                      F f) {
    struct Met {
        int number;
        int tail;
        int head;
    };
    std::vector<Met> met;
    for (const Node& n : nodes) {
        const int tail = index.FindPlace(n);
        for (const StructureIndex::Link& link : index.ChildLinks(tail)) {
            met.push_back({link.edge, tail, link.node});
        }
    }
    const auto edge_at = [&](std::size_t i) {
        return index.EdgeAt(met[i].number).get_impl().get();
    };
    for_each_ahead(
        met.size(), [&](std::size_t i) { f(met[i].number, met[i].tail, met[i].head); },
        [&](std::size_t i) { prefetch(&index.EdgeAt(met[i].number)); },
        [&](std::size_t i) { prefetch(edge_at(i)); },
        [&](std::size_t i) {
            prefetch(edge_at(i)->known_vis);
            prefetch(index.NodeAt(met[i].head).get_impl().get());
        },
        [&](std::size_t i) {
            const DefaultEdgeVis* const known = edge_at(i)->known_vis;
            const BreakNodes* const run =
                known != nullptr ? known->known_run_in(owner_id) : nullptr;
            BreakNodes::Prefetch(run);
        });
}

/// The edges of a run while their bends are placed.
///
/// An edge is met from both of its ends, for its bends and again for its tracks: what that needs of
/// it is looked up once.
/// Duty    the structure, the runs and the flags stand still while this is in use
class PlacedEdges {
public:
    using local_store = GraphInfoStore<LocalNodeInfo, LocalEdgeInfo>;

    struct Placed {
        int number; ///< in the index
        bool reversed;
        bool flat;
        bool tail_hidden;
        bool head_hidden;
        bool goes_on_inside; ///< it may have bends in an owner below as well
        BreakRun run;
    };

    /// Of the owner of some nodes, which are given all.
    PlacedEdges(const StructureIndex& answers, const local_store& marks,
                const std::vector<Node>& nodes)
        : index(answers), local_info(marks),
          owner_id(nodes.empty() ? 0 : nodes.front().GetOwner().GetID()) {
        // Other phases have numbered the nodes since: from here on the index is asked for each.
        for (const Node& n : nodes) {
            n.get_impl()->place = index.FindPlace(n);
        }
        for_each_edge_of(index, nodes, owner_id, [this](int number, int tail, int head) {
            find_or_enter(number, tail, head);
        });
    }

    /// The place of a node in the index.
    int place_of(const Node& node) const { return index.FindPlace(node); }

    /// Calls `f(edge, placed)` for the edges out of a node, or into it, whose other end is shown.
    ///
    /// Order   that of the structure queries
    template <typename F>
    void for_each_out(int place, F f) {
        for (const StructureIndex::Link& link : index.ChildLinks(place)) {
            const Placed& placed = find_or_enter(link.edge, place, link.node);
            if (!placed.head_hidden) {
                f(index.EdgeAt(link.edge), placed);
            }
        }
    }
    template <typename F>
    void for_each_in(int place, F f) {
        for (const StructureIndex::Link& link : index.ParentLinks(place)) {
            const Placed& placed = find_or_enter(link.edge, link.node, place);
            if (!placed.tail_hidden) {
                f(index.EdgeAt(link.edge), placed);
            }
        }
    }

    // What is asked for long before the edges of a node are looked at: first the edges, then their
    // runs.
    void ask_for_edges(int place) const {
        for_each_link(place,
                      [&](int number) { prefetch(edges.data() + index.NoteOfEdge(number)); });
    }
    void ask_for_runs(int place) const {
        for_each_link(place, [&](int number) {
            const auto noted = static_cast<std::size_t>(index.NoteOfEdge(number));
            if (noted < edges.size()) {
                BreakNodes::Prefetch(edges[noted].run.get_nodes());
            }
        });
    }

    /// Null for an edge that has not been met.
    const Placed* find(const Edge& edge) const {
        const int number = index.FindEdgeNumber(edge);
        if (number < 0) {
            return nullptr;
        }
        const auto noted = static_cast<std::size_t>(index.NoteOfEdge(number));
        return noted < edges.size() && edges[noted].number == number ? &edges[noted] : nullptr;
    }

private:
    template <typename F>
    void for_each_link(int place, F f) const {
        for (const StructureIndex::Link& link : index.ChildLinks(place)) {
            f(link.edge);
        }
        for (const StructureIndex::Link& link : index.ParentLinks(place)) {
            f(link.edge);
        }
    }
    const Placed& find_or_enter(int number, int tail, int head) {
        int& note = index.NoteOfEdge(number);
        const auto noted = static_cast<std::size_t>(note);
        if (noted < edges.size() && edges[noted].number == number) {
            return edges[noted];
        }
        note = static_cast<int>(edges.size());
        const Edge& edge = index.EdgeAt(number);
        const local_store::edge_entry* const known = local_info.edge_info.find(edge.GetID());
        const LocalEdgeInfo& marks = known != nullptr ? known->second : local_info.default_edge;
        edge.get_impl()->place = number; // an index of an inner owner may have numbered it since
        BreakRun run(edge, owner_id);
        run.hold(); // handlers are called while the edges are placed
        edges.push_back({number, marks.reversed, marks.flat, is_hidden(tail), is_hidden(head),
                         run.get_nodes() == nullptr || !has_one_run(edge), run});
        return edges.back();
    }
    bool is_hidden(int place) const { return IsFlagSet(index.NodeAt(place), NODE_HIDDEN); }
    static bool has_one_run(const Edge& edge) {
        const DefaultEdgeVis* const known = edge.get_impl()->known_vis;
        return known != nullptr && known->has_one_run();
    }

    const StructureIndex& index;
    const local_store& local_info;
    int owner_id;
    std::vector<Placed> edges;
};

} // namespace nurvex7
