#include "nurvex7/layout/run_edges.h"

#include "nurvex7/foundation/pipeline.h"

#include <cstdlib>

namespace nurvex7 {

namespace {

int _end_of(const RunNodes& of, int place) {
    const int i = of.number_of(place);
    return i >= 0 ? i : ~place;
}

} // namespace

RunEdges::RunEdges(const StructureIndex& answers, const RunNodes& of, const node_store& old,
                   int owner, bool new_runs_to_come, const WayBack* back)
    : index(answers), records(old), owner_id(owner), finds_new_runs(!new_runs_to_come),
      way_back(back) {
    first.reserve(static_cast<std::size_t>(of.get_count()) + 1);
    std::size_t count = 0;
    for (int i = 0; i < of.get_count(); ++i) {
        count += of.children_of(i).size();
    }
    entries.reserve(count);
    for (int i = 0; i < of.get_count(); ++i) {
        first.push_back(entries.size());
        for (const StructureIndex::Link& link : of.children_of(i)) {
            enter(link.edge, i, _end_of(of, link.node)).leaves_tail = true;
        }
    }
    first.push_back(entries.size());
    join_heads(of);
    look_up(of);
    way_back = nullptr;
}

void RunEdges::read_marks(const RunNodes& of, const local_store& marks) {
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
        entries.size(), read, [&](std::size_t i) { marks.edge_info.ask_for_slot(entries[i].id); },
        [&](std::size_t i) { marks.edge_info.ask_for_page(entries[i].id); });
    number_tracks(of.get_count());
}

void RunEdges::read_flags(const RunNodes& of) {
    for (RunEdge& e : entries) {
        read_flags(e, of);
    }
}

RunEdge& RunEdges::enter(int number, int tail, int head) {
    entries.push_back(RunEdge{});
    RunEdge& e = entries.back();
    e.number = number;
    e.tail = tail;
    e.head = head;
    return e;
}

// Mostly both ends of an edge know it. After removals it may be known to one of them alone, and
// what comes from another graph is known to its head.
void RunEdges::join_heads(const RunNodes& of) {
    if (index.IsTwoWay() && index.GetPlaceCount() == index.GetNodes().size()) {
        for (RunEdge& e : entries) {
            e.enters_head = e.head >= 0;
        }
        return;
    }
    for (const RunEdge& e : entries) {
        index.NoteOfEdge(e.number) = number_of(e);
    }
    for (int i = 0; i < of.get_count(); ++i) {
        for (const StructureIndex::Link& link : of.parents_of(i)) {
            int& noted = index.NoteOfEdge(link.edge);
            const auto at = static_cast<std::size_t>(noted);
            if (at >= entries.size() || entries[at].number != link.edge) {
                noted = static_cast<int>(entries.size());
                enter(link.edge, _end_of(of, link.node), i);
            }
            entries[static_cast<std::size_t>(noted)].enters_head = true;
        }
    }
}

void RunEdges::look_up(const RunNodes& of) {
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
            const BreakNodes* const run =
                known != nullptr ? known->known_run_in(owner_id) : nullptr;
            way_back != nullptr ? BreakNodes::PrefetchPlaces(run) : BreakNodes::PrefetchHead(run);
            records.edge_info.ask_for_page(entries[i].id);
        });
}

void RunEdges::complete(RunEdge& e, const RunNodes& of) {
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

void RunEdges::find_run(RunEdge& e) {
    const Edge& edge = edge_of(e);
    e.run = BreakRun::Find(edge, owner_id);
    e.goes_on_inside = e.run == nullptr || !edge.get_impl()->known_vis->has_one_run();
    if (e.run == nullptr) {
        return;
    }
    if (e.is_new || e.crosses_levels) {
        e.run->note = number_of(e); // it has dummy nodes, whose edge is asked for
    }
    if (!records.node_info.is_holding(*e.run)) {
        held.push_back(e.run); // handlers are called, and may drop it
    }
    if (way_back != nullptr && e.is_recorded) {
        take_back(e);
    }
}

// Every bend of a run that was drawn has a record, but for those that have been added since.
void RunEdges::take_back(RunEdge& e) const {
    BreakNodes& run = *e.run;
    if (run.get_own_count() != run.GetCount() || records.node_info.find_all_in(run) == nullptr) {
        return;
    }
    for (int i = 0; i < run.get_own_count(); ++i) {
        run.set_place_at(i, (*way_back)(run.own_place(i)));
    }
    e.is_taken_back = true;
}

void RunEdges::read_flags(RunEdge& e, const RunNodes& of) const {
    const bool none = !of.has_hidden();
    e.tail_hidden = (e.tail < 0 || !none) && is_hidden(e.tail, of);
    e.head_hidden = (e.head < 0 || !none) && is_hidden(e.head, of);
}

// Other phases have numbered the edges since; those on tracks are asked for by number.
void RunEdges::number_tracks(int node_count) {
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
            index.NoteOfEdge(e.number) = number_of(e);
            mark(e.tail);
            mark(e.head);
        }
    }
}

} // namespace nurvex7
