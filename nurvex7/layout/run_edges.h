#pragma once

#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/layout/layout_records.h"
#include "nurvex7/layout/run_nodes.h"
#include "nurvex7/model/break_run.h"
#include "nurvex7/model/structure_index.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>
#include <vector>

namespace nurvex7 {

/// An edge of a run in numbers. An end is the number of a node of the run, or ~place of any other.
struct RunEdge {
    int number; ///< in the index
    int id;
    int tail;
    int head;
    int track = -1;                 ///< of the tracks under its ends; -1 where it has none
    bool leaves_tail : 1;           ///< the tail knows it
    bool enters_head : 1;           ///< the head does
    bool is_recorded : 1;           ///< the run before has left a record that it was drawn
    bool is_new : 1;                ///< the run before has not drawn it, not as it has to be drawn
    bool crosses_levels : 1;        ///< in the run before a level lay between its ends
    bool runs_back : 1;             ///< in the run before it went to a lower level
    bool tail_hidden : 1;           ///< now
    bool head_hidden : 1;           ///< now
    bool reversed : 1;              ///< by its marks
    bool flat : 1;                  ///< likewise
    bool goes_on_inside : 1 = true; ///< it may have bends in an owner below as well
    BreakNodes* run = nullptr;      ///< null where it has none, or has to be asked for it
};

/// The edges between the nodes of a run, in numbers, with their bends.
///
/// All phases come past all edges, which lie all over the memory, and so do their runs. So each is
/// looked up once, and the phases after that walk over numbers.
///
/// Order   those out of a node stand together, in the order of the structure queries; the nodes in
///         theirs. Behind them stand the edges that only their heads know of
/// Duty    the structure and the records of the run before stand still while this is in use; runs
///         are made only of edges that the run before has not drawn
class RunEdges {
public:
    using node_store = GraphInfoStore<NodeInfo, EdgeInfo>;
    using local_store = GraphInfoStore<LocalNodeInfo, LocalEdgeInfo>;

    /// The y of the tracks under the ends of an edge, once they have been laid.
    struct Tracks {
        double under_tail = 0;
        double under_head = 0;
    };

    /// Looks everything up but for the marks, and for the runs of new edges where those are still
    /// to come.
    RunEdges(const StructureIndex& answers, const RunNodes& of, const node_store& old, int owner,
             bool new_runs_to_come)
        : index(answers), records(old), owner_id(owner), finds_new_runs(!new_runs_to_come) {
        first.reserve(static_cast<std::size_t>(of.get_count()) + 1);
        for (int i = 0; i < of.get_count(); ++i) {
            first.push_back(entries.size());
            for (const StructureIndex::Link& link : of.children_of(i)) {
                enter(link.edge, i, end_of(of, link.node)).leaves_tail = true;
            }
        }
        first.push_back(entries.size());
        join_heads(of);
        look_up(of);
    }

    /// To be called for an edge that has been given a run.
    void find_new_run(const RunEdge& e) {
        find_run(entries[static_cast<std::size_t>(&e - entries.data())]);
    }

    /// Reads the flags of the ends and the marks of the edges again.
    void read_marks(const RunNodes& of, const local_store& marks) {
        const auto read = [&](std::size_t i) {
            RunEdge& e = entries[i];
            const local_store::edge_entry* const known =
                marks.edge_info.empty() ? nullptr : marks.edge_info.find(e.id);
            const LocalEdgeInfo& mark = known != nullptr ? known->second : marks.default_edge;
            e.reversed = mark.reversed;
            e.flat = mark.flat;
            read_flags(e, of);
        };
        for_each_ahead(
            entries.size(), read,
            [&](std::size_t i) { marks.edge_info.ask_for_slot(entries[i].id); },
            [&](std::size_t i) { marks.edge_info.ask_for_page(entries[i].id); });
        number_tracks(of.get_count());
    }
    /// The flags alone.
    void read_flags(const RunNodes& of) {
        for (RunEdge& e : entries) {
            read_flags(e, of);
        }
    }
    const Node& node_at(int end, const RunNodes& of) const {
        return index.NodeAt(end >= 0 ? of.place_of(end) : ~end);
    }
    bool is_hidden(int end, const RunNodes& of) const { return past_of(end, of).hidden; }

    std::span<const RunEdge> all() const { return entries; }
    /// Those out of a node.
    std::span<const RunEdge> out_of(int i) const {
        const auto node = static_cast<std::size_t>(i);
        return std::span(entries).subspan(first[node], first[node + 1] - first[node]);
    }
    /// Those that are drawn in this run. Duty: the flags have been read
    static bool is_drawn(const RunEdge& e) {
        return e.leaves_tail && !e.tail_hidden && !e.head_hidden;
    }
    const Edge& edge_of(const RunEdge& e) const { return index.EdgeAt(e.number); }
    /// Enters an empty run where it has none.
    BreakRun run_of(const RunEdge& e) const {
        return e.run != nullptr ? BreakRun(edge_of(e), *e.run) : BreakRun(edge_of(e), owner_id);
    }
    static void ask_for_run(const RunEdge& e) { BreakNodes::Prefetch(e.run); }

    /// Of the edge of a run; null for a run of no edge in here.
    const RunEdge* find(const BreakNodes* run) const {
        const auto noted = static_cast<std::size_t>(run != nullptr ? run->note : -1);
        return noted < entries.size() && entries[noted].run == run ? &entries[noted] : nullptr;
    }

    // Duty: the marks have been read, and the edge is flat or reversed.
    Tracks& tracks_of(const RunEdge& e) { return tracks[static_cast<std::size_t>(e.track)]; }
    const Tracks& tracks_of(const RunEdge& e) const {
        return tracks[static_cast<std::size_t>(e.track)];
    }
    /// Calls `out(entry)` for the edges on tracks under their tail, then `in(entry)` for those
    /// under their head, whose other ends are shown. Duty: the marks have been read
    ///
    /// Order   that of the structure queries
    template <typename F, typename G>
    void for_each_track(const RunNodes& of, int i, F out, G in) const {
        if (tracked[static_cast<std::size_t>(i)] == 0) {
            return;
        }
        for (const RunEdge& e : out_of(i)) {
            if (e.track >= 0 && !e.head_hidden) {
                out(e);
            }
        }
        for (const StructureIndex::Link& link : of.parents_of(i)) {
            const auto noted = static_cast<std::size_t>(index.NoteOfEdge(link.edge));
            const RunEdge* const e = noted < entries.size() ? &entries[noted] : nullptr;
            if (e != nullptr && e->number == link.edge && e->reversed && !e->tail_hidden) {
                in(*e);
            }
        }
    }

private:
    static int end_of(const RunNodes& of, int place) {
        const int i = of.number_of(place);
        return i >= 0 ? i : ~place;
    }

    RunEdge& enter(int number, int tail, int head) {
        index.NoteOfEdge(number) = static_cast<int>(entries.size());
        entries.push_back(RunEdge{});
        RunEdge& e = entries.back();
        e.number = number;
        e.tail = tail;
        e.head = head;
        return e;
    }

    // Mostly both ends of an edge know it. After removals it may be known to one of them alone.
    void join_heads(const RunNodes& of) {
        for (int i = 0; i < of.get_count(); ++i) {
            for (const StructureIndex::Link& link : of.parents_of(i)) {
                const auto noted = static_cast<std::size_t>(index.NoteOfEdge(link.edge));
                const bool known = noted < entries.size() && entries[noted].number == link.edge;
                RunEdge& e = known ? entries[noted] : enter(link.edge, end_of(of, link.node), i);
                e.enters_head = true;
            }
        }
    }

    void look_up(const RunNodes& of) {
        const auto impl_at = [&](std::size_t i) {
            return index.EdgeAt(entries[i].number).get_impl().get();
        };
        for_each_ahead(
            entries.size(), [&](std::size_t i) { complete(entries[i], of); },
            [&](std::size_t i) { prefetch(&index.EdgeAt(entries[i].number)); },
            [&](std::size_t i) { prefetch(impl_at(i)); },
            [&](std::size_t i) {
                entries[i].id = impl_at(i)->get_id();
                prefetch(impl_at(i)->known_vis);
                records.edge_info.ask_for_slot(entries[i].id);
            },
            [&](std::size_t i) {
                const DefaultEdgeVis* const known = impl_at(i)->known_vis;
                BreakNodes::Prefetch(known != nullptr ? known->known_run_in(owner_id) : nullptr);
                records.edge_info.ask_for_page(entries[i].id);
            });
    }

    void complete(RunEdge& e, const RunNodes& of) {
        const node_store::edge_entry* const found = records.edge_info.find(e.id);
        e.is_recorded = found != nullptr && found->second.is_old;
        const bool drawn = e.is_recorded || (found == nullptr && records.default_edge.is_old);
        const int from = past_of(e.tail, of).info.level;
        const int to = past_of(e.head, of).info.level;
        // An edge that was recorded while an end of it had no level yet never got a chain.
        e.is_new = !drawn || from < 0 || to < 0;
        e.crosses_levels = std::abs(to - from) > 1;
        e.runs_back = to < from;
        if (!e.is_new || finds_new_runs) {
            find_run(e);
        }
    }
    RunNodes::Past past_of(int end, const RunNodes& of) const {
        return end >= 0 ? of.at(end) : of.at_place(~end);
    }

    void find_run(RunEdge& e) {
        const Edge& edge = edge_of(e);
        e.run = BreakRun::Find(edge, owner_id);
        e.goes_on_inside = e.run == nullptr || !edge.get_impl()->known_vis->has_one_run();
        if (e.run == nullptr) {
            return;
        }
        e.run->note = static_cast<int>(&e - entries.data());
        if (!records.node_info.is_holding(*e.run)) {
            held.push_back(e.run); // handlers are called, and may drop it
        }
    }

    void read_flags(RunEdge& e, const RunNodes& of) const {
        e.tail_hidden = is_hidden(e.tail, of);
        e.head_hidden = is_hidden(e.head, of);
    }

    // Other phases have numbered the edges since; those on tracks are asked for by number.
    void number_tracks(int node_count) {
        tracks.clear();
        tracked.assign(static_cast<std::size_t>(node_count), 0);
        const auto mark = [&](int end) {
            if (end >= 0) {
                tracked[static_cast<std::size_t>(end)] = 1;
            }
        };
        for (RunEdge& e : entries) {
            e.track = -1;
            if (e.flat || e.reversed) {
                e.track = static_cast<int>(tracks.size());
                tracks.emplace_back();
                index.NoteOfEdge(e.number) = static_cast<int>(&e - entries.data());
                mark(e.tail);
                mark(e.head);
            }
        }
    }

    const StructureIndex& index;
    const node_store& records;
    int owner_id;
    bool finds_new_runs;
    std::vector<RunEdge> entries;
    std::vector<std::size_t> first; ///< of the entries out of each node
    std::vector<Tracks> tracks;
    std::vector<char> tracked;               ///< by node, 1 where tracks may run under it
    std::vector<graph_ptr<BreakNodes>> held; ///< runs that the records do not keep
};

} // namespace nurvex7
