#include "nurvex7/layout/level_graph.h"

#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/model/folding.h"

#include <algorithm>
#include <climits>
#include <functional>

namespace nurvex7 {

LevelGraph::LevelGraph(const StructureIndex& answers, const std::vector<Node>& list,
                       node_store& levels, local_store& run, bool without_hidden, bool waits)
    : index(answers), level_table(levels), local_table(run), listed(list),
      hidden_are_passed_over(without_hidden), records_wait(waits) {
    members.reserve(list.size());
    listed_numbers.reserve(list.size());
    for (const Node& node : list) {
        const int place = index.FindPlace(node);
        if (place >= 0) {
            listed_numbers.push_back(enter_place(place));
        } else {
            uncovered[node.GetID()] = enter(node, -1);
        }
    }
    for (int i = 0; i < get_count(); ++i) {
        add_links(index.ChildLinks(at(i).index_place), children);
        add_links(index.ParentLinks(at(i).index_place), parents);
    }
    if (records_wait) {
        waiting_levels.assign(members.size(), level_table.default_node);
        level_asked.assign(members.size(), 0);
        waiting_orders.assign(members.size(), local_table.default_node.order);
        waiting_marks.assign(edges.size(), local_table.default_edge);
    }
}

LevelGraph::~LevelGraph() = default;

void LevelGraph::store_records() {
    for (std::size_t i = 0; i < level_asked.size(); ++i) {
        if (level_asked[i] != 0) {
            level_table[*members[i].node] = waiting_levels[i];
        }
    }
    const LocalEdgeInfo& unsaid = local_table.default_edge;
    for (std::size_t e = 0; e < waiting_marks.size(); ++e) {
        const LocalEdgeInfo& mark = waiting_marks[e];
        if (mark.reversed != unsaid.reversed || mark.flat != unsaid.flat) {
            local_table[index.EdgeAt(edges[e].index_number)] = mark;
        }
    }
}

LevelEnumeration& LevelGraph::get_enumeration() {
    if (enumeration == nullptr) {
        enumeration = std::make_unique<LevelEnumeration>(*this);
    }
    return *enumeration;
}

int LevelGraph::enter(const Node& node, int index_place) {
    const bool hidden = hidden_are_passed_over && IsFlagSet(node, NODE_HIDDEN);
    members.push_back(Member{&node, index_place});
    out_of_it.push_back(hidden ? 1 : 0);
    return get_count() - 1;
}

int LevelGraph::enter_place(int index_place) {
    int& note = index.NoteOfPlace(index_place);
    if (note < get_count() && at(note).index_place == index_place) {
        return note;
    }
    const Node& node = index.NodeAt(index_place);
    const bool covered = static_cast<std::size_t>(index_place) < index.GetNodes().size();
    const int* const known = covered ? nullptr : uncovered.find(node.GetID());
    note = known != nullptr ? *known : enter(node, index_place);
    if (!covered) {
        uncovered[node.GetID()] = note;
    }
    return note;
}

int LevelGraph::enter_edge(int index_number) {
    int& note = index.NoteOfEdge(index_number);
    const auto noted = static_cast<std::size_t>(note);
    if (noted >= edges.size() || edges[noted].index_number != index_number) {
        note = get_edge_count();
        edges.push_back(EdgeMember{index_number});
    }
    return note;
}

void LevelGraph::add_links(std::span<const Link> answer, Side& side) {
    for (const Link& link : answer) {
        side.links.push_back(Link{enter_place(link.node), enter_edge(link.edge)});
    }
    side.start.push_back(side.links.size());
}

int LevelGraph::number_of(const Node& node) const {
    const int place = index.FindPlace(node);
    return place >= 0 ? index.NoteOfPlace(place) : *uncovered.find(node.GetID());
}

std::vector<int> LevelGraph::numbers_of(const std::vector<Node>& list) const {
    if (&list == &listed && listed_numbers.size() == list.size()) {
        return listed_numbers;
    }
    std::vector<int> numbers;
    numbers.reserve(list.size());
    for (const Node& node : list) {
        numbers.push_back(number_of(node));
    }
    return numbers;
}

NodeInfo& LevelGraph::level_in_table(int i) {
    Member& member = at(i);
    if (member.level == nullptr) {
        member.level = &level_table[*member.node];
    }
    return *member.level;
}

LocalNodeInfo& LevelGraph::local_record(int i) {
    Member& member = at(i);
    if (member.local == nullptr) {
        member.local = &local_table[*member.node];
    }
    return *member.local;
}

LocalEdgeInfo& LevelGraph::mark_in_table(int e) {
    EdgeMember& member = edges[static_cast<std::size_t>(e)];
    if (member.record == nullptr) {
        member.record = &local_table[index.EdgeAt(member.index_number)];
    }
    return *member.record;
}

void LevelGraph::ask_for_handle(int e) const {
    prefetch(&index.EdgeAt(edges[static_cast<std::size_t>(e)].index_number));
}

void LevelGraph::ask_for_edge(int e) const {
    prefetch(index.EdgeAt(edges[static_cast<std::size_t>(e)].index_number).get_impl().get());
}

void LevelGraph::ask_for_record(int e) const {
    const EdgeMember& member = edges[static_cast<std::size_t>(e)];
    if (member.record == nullptr) {
        local_table.edge_info.ask_for_slot(index.EdgeAt(member.index_number).GetID());
    }
}

void LevelGraph::mark_edges_of(int i) {
    for (const std::span<const Link> answer : {parents_of(i), children_of(i)}) {
        for (const Link& link : answer) {
            edge_record(link.edge).marked = true;
        }
    }
}

bool LevelGraph::is_visited(int i) {
    Member& member = at(i);
    if (member.visit == Visit::UNKNOWN && !records_wait) {
        member.visit = local_record(i).visited ? Visit::YES : Visit::NO;
    }
    return member.visit == Visit::YES;
}

void LevelGraph::mark_visited(int i, bool visited) {
    at(i).visit = visited ? Visit::YES : Visit::NO;
    if (!records_wait) {
        local_record(i).visited = visited;
    }
}

// Enumeration

LevelEnumeration::LevelEnumeration(LevelGraph& of)
    : graph(of), members(static_cast<std::size_t>(of.get_count())),
      edges(static_cast<std::size_t>(of.get_edge_count())) {}

void LevelEnumeration::number_all(const std::vector<int>& component,
                                  const std::function<void()>& step) {
    count_step = &step;
    nodes = &component;
    left = static_cast<int>(component.size());
    front = 0;
    back = left - 1;
    sweeping = false;
    for (int turn = 0; turn < left; ++turn) {
        at(node_at(turn)) = Member();
        at(node_at(turn)).turn = turn;
    }
    const auto ask_for_edges = [&](std::size_t turn, auto ask) {
        if (graph.has_records_at_hand()) {
            return;
        }
        const int i = component[turn];
        for (const std::span<const Link> answer : {graph.parents_of(i), graph.children_of(i)}) {
            for (const Link& link : answer) {
                ask(link.edge);
            }
        }
    };
    for_each_ahead(
        component.size(),
        [&](std::size_t turn) {
            collect(component[turn]);
            step();
        },
        [&](std::size_t t) { ask_for_edges(t, [&](int e) { graph.ask_for_handle(e); }); },
        [&](std::size_t t) { ask_for_edges(t, [&](int e) { graph.ask_for_edge(e); }); },
        [&](std::size_t t) { ask_for_edges(t, [&](int e) { graph.ask_for_record(e); }); });
    first_sweep();
    open_all();
    while (left > 0) {
        if (ready.empty()) {
            // Only here is a cycle cut: the node with the largest surplus of unfinished outgoing
            // over unfinished incoming neighbours, the first of its kind, goes first.
            sweep_at = INT_MAX;
            finish(take_best(), front++);
        } else {
            sweep();
        }
        ready.swap(ready_next);
    }
    for (const int i : component) {
        graph.set_order(i, at(i).order);
        graph.mark_edges_of(i);
    }
}

void LevelEnumeration::collect(int i) {
    at(i).in = collect_side(i, graph.parents_of(i), &EdgeEnds::head);
    at(i).out = collect_side(i, graph.children_of(i), &EdgeEnds::tail);
}

// The first edge to a neighbour stands for it, whatever becomes of the others.
int LevelEnumeration::collect_side(int i, std::span<const Link> answer, int EdgeEnds::*end) {
    int unfinished = 0;
    int last = -1;
    for (const Link& link : answer) {
        if (link.node == i) {
            continue;
        }
        EdgeEnds& ends = ends_of(link.edge);
        if (!ends.known) {
            ends.known = true;
            ends.marked = graph.edge_record(link.edge).marked;
        }
        if (link.node != last && !graph.passed_over(link.node)) {
            ends.*end = i;
            unfinished += ends.marked ? 0 : 1;
        }
        last = link.node;
    }
    return unfinished;
}

// Deliberate: all sources share the number 0. They cannot be joined to each other.
void LevelEnumeration::first_sweep() {
    const auto none = [this](std::span<const Link> answer) {
        return std::all_of(answer.begin(), answer.end(),
                           [this](const Link& link) { return graph.passed_over(link.node); });
    };
    for (const int i : *nodes) {
        if (none(graph.parents_of(i))) {
            front = 1;
            finish(i, 0);
        } else if (none(graph.children_of(i))) {
            finish(i, back--);
        }
    }
}

void LevelEnumeration::open_all() {
    sweeping = true;
    sweep_at = -1;
    ready.clear();
    ready_next.clear();
    candidates.clear();
    for (const int i : *nodes) {
        Member& member = at(i);
        if (member.order == -1) {
            candidates.emplace_back(surplus_of(member), member.turn);
            if (member.in == 0 || member.out == 0) {
                member.is_ready = true;
                ready.push_back(member.turn); // in rising turn, so it is a heap
            }
        }
    }
    std::make_heap(candidates.begin(), candidates.end(), std::greater<>());
}

void LevelEnumeration::sweep() {
    while (!ready.empty()) {
        std::pop_heap(ready.begin(), ready.end(), std::greater<>());
        sweep_at = ready.back();
        ready.pop_back();
        const int i = node_at(sweep_at);
        finish(i, at(i).in == 0 ? front++ : back--);
    }
}

int LevelEnumeration::take_best() {
    for (;;) {
        const auto [surplus, turn] = candidates.front();
        std::pop_heap(candidates.begin(), candidates.end(), std::greater<>());
        candidates.pop_back();
        const int i = node_at(turn);
        if (at(i).order == -1 && surplus_of(at(i)) == surplus) {
            return i;
        }
    }
}

void LevelEnumeration::finish(int i, int number) {
    at(i).order = number;
    --left;
    (*count_step)();
    for (const std::span<const Link> answer : {graph.parents_of(i), graph.children_of(i)}) {
        for (const Link& link : answer) {
            EdgeEnds& ends = ends_of(link.edge);
            if (link.node != i && !ends.marked) {
                ends.marked = true;
                lose_neighbour(ends.head, &Member::in);
                lose_neighbour(ends.tail, &Member::out);
            }
        }
    }
}

void LevelEnumeration::lose_neighbour(int i, int Member::*side) {
    if (i >= 0 && is_open(i)) {
        --(at(i).*side);
        if (sweeping) {
            offer(i);
        }
    }
}

// Puts a node whose neighbours have become fewer in line again.
void LevelEnumeration::offer(int i) {
    Member& member = at(i);
    candidates.emplace_back(surplus_of(member), member.turn);
    std::push_heap(candidates.begin(), candidates.end(), std::greater<>());
    if (!member.is_ready && (member.in == 0 || member.out == 0)) {
        member.is_ready = true;
        std::vector<int>& line = member.turn > sweep_at ? ready : ready_next;
        line.push_back(member.turn);
        std::push_heap(line.begin(), line.end(), std::greater<>());
    }
}

} // namespace nurvex7
