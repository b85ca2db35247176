#pragma once

#include "nurvex7/layout/layout_records.h"
#include "nurvex7/layout/run_nodes.h"
#include "nurvex7/model/break_run.h"
#include "nurvex7/model/structure_index.h"

#include <cstddef>
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
    bool is_taken_back : 1;         ///< its bends have come back to where their owner is
    bool is_kept : 1;               ///< its dummy nodes stand on their levels, their records wait
    bool is_marked : 1;             ///< the records of its bends have been taken over
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
/// Duty    the structure stands still while this is in use, and so do the records of the run before
///         while edges are looked up; runs are made only of edges that it has not drawn
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
    /// to come. The bends of what the run before has drawn go a way back, where one is given.
    RunEdges(const StructureIndex& answers, const RunNodes& of, const node_store& old, int owner,
             bool new_runs_to_come, const WayBack* back);

    /// To be called for an edge that has been given a run.
    void find_new_run(int i) { find_run(entries[static_cast<std::size_t>(i)]); }

    /// Reads the flags of the ends and the marks of the edges again, and numbers the tracks anew.
    void read_marks(const RunNodes& of, const local_store& marks);
    /// The flags alone.
    void read_flags(const RunNodes& of);
    const Node& node_at(int end, const RunNodes& of) const {
        return index.NodeAt(end >= 0 ? of.place_of(end) : ~end);
    }
    bool is_hidden(int end, const RunNodes& of) const { return past_of(end, of).hidden; }

    std::span<const RunEdge> all() const { return entries; }
    /// The place of an edge in all().
    int number_of(const RunEdge& e) const { return static_cast<int>(&e - entries.data()); }
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

    /// Notes whether the records of its dummy nodes wait for the end of the run, where they are
    /// taken over from the run before as they are.
    void set_kept(const RunEdge& e, bool kept) { entry_of(e).is_kept = kept; }
    void set_marked(const RunEdge& e) { entry_of(e).is_marked = true; }

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
    RunEdge& entry_of(const RunEdge& e) { return entries[static_cast<std::size_t>(number_of(e))]; }
    RunEdge& enter(int number, int tail, int head);
    void join_heads(const RunNodes& of);
    void look_up(const RunNodes& of);
    void complete(RunEdge& e, const RunNodes& of);
    void find_run(RunEdge& e);
    void take_back(RunEdge& e) const;
    void read_flags(RunEdge& e, const RunNodes& of) const;
    void number_tracks(int node_count);
    RunNodes::Past past_of(int end, const RunNodes& of) const {
        return end >= 0 ? of.at(end) : of.at_place(~end);
    }

    const StructureIndex& index;
    const node_store& records;
    int owner_id;
    bool finds_new_runs;
    const WayBack* way_back; ///< null after the runs have been looked up
    std::vector<RunEdge> entries;
    std::vector<std::size_t> first; ///< of the entries out of each node
    std::vector<Tracks> tracks;
    std::vector<char> tracked;               ///< by node, 1 where tracks may run under it
    std::vector<graph_ptr<BreakNodes>> held; ///< runs that the records do not keep
};

} // namespace nurvex7
