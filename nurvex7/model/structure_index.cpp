#include "nurvex7/model/structure_index.h"

#include "nurvex7/foundation/pipeline.h"
#include "nurvex7/model/queries.h"

#include <algorithm>
#include <limits>
#include <tuple>
#include <typeinfo>

namespace nurvex7 {

/// What lies above the nodes outside the index, found once for both directions.
class StructureIndex::Surroundings {
public:
    static constexpr int NOWHERE = std::numeric_limits<int>::min();

    /// What is above a node outside, as places; NOWHERE where it belongs to no root.
    struct Above {
        int top_level = NOWHERE;
        int root = NOWHERE;
    };

    explicit Surroundings(StructureIndex& of) : index(of) {}

    Above find_above(graph_ptr<INodeImpl> node);

private:
    int add(const graph_ptr<INodeImpl>& node);
    int find_root(const graph_ptr<INodeImpl>& root);

    StructureIndex& index;
    std::vector<int> foreign_roots;
    IdMap<Above> known_above; ///< by id of the nodes outside
};

StructureIndex::Surroundings::Above
StructureIndex::Surroundings::find_above(graph_ptr<INodeImpl> node) {
    std::vector<graph_ptr<INodeImpl>> path;
    Above above;
    for (; node.get() != nullptr; node = owner_above(node)) {
        if (node->get_id() == 0) {
            above.root = find_root(node);
            above.top_level = path.empty() ? above.root : add(path.back());
            break;
        }
        if (const Above* const known = known_above.find(node->get_id())) {
            above = *known;
            break;
        }
        path.push_back(node);
    }
    for (const auto& passed : path) {
        known_above[passed->get_id()] = above;
    }
    return above;
}

int StructureIndex::Surroundings::add(const graph_ptr<INodeImpl>& node) {
    index.outside.push_back(Node(index.nodes.front().get_vis(), node));
    return static_cast<int>(index.GetPlaceCount()) - 1;
}

int StructureIndex::Surroundings::find_root(const graph_ptr<INodeImpl>& root) {
    for (const int known : foreign_roots) {
        if (index.NodeAt(known).get_impl().get() == root.get()) {
            return known;
        }
    }
    foreign_roots.push_back(add(root));
    return foreign_roots.back();
}

/// Lifts the edges of one direction, and gathers the answers of its two queries.
///
/// An edge with the near end u and the far end v climbs from both ends to w, the innermost node
/// that is or owns both. The node below w on the side of u has the one on the side of v for its
/// sibling. All that the near end passes below that is left by the edge for good: there the answer
/// names the root. Where v is w, the edge ends on the owner itself.
class StructureIndex::Lifting {
public:
    Lifting(StructureIndex& of, Surroundings& around,
            graph_ptr<INodeImpl> (IEdgeImpl::*edge_end)() const);

    void lift_edges(bool out);
    void lift_edge(int near_end, const graph_ptr<IEdgeImpl>& at_work,
                   const graph_ptr<INodeImpl>& far_end);
    void merge_siblings_into(Relation& relation) { merge_into(relation, siblings); }
    void merge_crossings_into(Relation& relation) { merge_into(relation, crossings); }
    Relation take_siblings() { return sorted_relation(siblings); }
    Relation take_crossings() { return sorted_relation(crossings); }
    void add_sibling_runs() const { add_runs(siblings); }
    void add_crossing_runs() const { add_runs(crossings); }

private:
    struct Answer {
        int base; ///< place of the node whose answer this is
        int node_id;
        int edge_id;
        Link link;

        bool operator<(const Answer& other) const {
            return std::tie(node_id, edge_id) < std::tie(other.node_id, other.edge_id);
        }
    };

    void lift(int near_end, const graph_ptr<INodeImpl>& far_end);
    void lift_inside(int near_end, int far_end);
    void lift_outside(int near_end, const Surroundings::Above& far_end);
    void add(std::vector<Answer>& answers, int base, int node);
    Relation sorted_relation(std::vector<Answer>& answers) const;
    void merge_into(Relation& relation, std::vector<Answer>& answers) const;
    Answer answer_of(int base, const Link& link) const {
        return {base, index.NodeAt(link.node).GetID(), index.EdgeAt(link.edge).GetID(), link};
    }
    void add_runs(const std::vector<Answer>& answers) const;

    StructureIndex& index;
    Surroundings& surroundings;
    graph_ptr<INodeImpl> (IEdgeImpl::*far_end_of)() const;
    int edge = 0;    ///< number of the edge at work
    int edge_id = 0; ///< and its id
    std::vector<Answer> siblings;
    std::vector<Answer> crossings;
    bool top_is_root;
    int own_root;
};

StructureIndex::Lifting::Lifting(StructureIndex& of, Surroundings& around,
                                 graph_ptr<INodeImpl> (IEdgeImpl::*edge_end)() const)
    : index(of), surroundings(around), far_end_of(edge_end), top_is_root(IsRoot(of.nodes.front())),
      own_root(top_is_root ? 0 : around.find_above(of.nodes.front().get_impl()).root) {}

void StructureIndex::Lifting::lift_edges(bool out) {
    if (own_root == Surroundings::NOWHERE) {
        return;
    }
    const auto lift_all = [&](std::size_t place) {
        INodeImpl& near_end = *index.nodes[place].get_impl();
        const graph_ptr<edge_impl_set> own_edges =
            out ? near_end.get_edges_out() : near_end.get_edges_in();
        const int count = own_edges->GetCount();
        for (int i = 0; i < count; ++i) {
            const graph_ptr<IEdgeImpl> at_work = own_edges->GetItem(i);
            const graph_ptr<INodeImpl> far_end = ((*at_work).*far_end_of)();
            if (far_end.get() != nullptr) {
                lift_edge(static_cast<int>(place), at_work, far_end);
            }
        }
    };
    // Nodes and edges of other kinds are not asked for.
    const auto edges_at = [&](std::size_t place) -> edge_impl_vector* {
        INodeImpl& node = *index.nodes[place].get_impl();
        if (typeid(node) != typeid(DefaultNodeImpl)) {
            return nullptr;
        }
        const auto& real = static_cast<const DefaultNodeImpl&>(node);
        return (out ? real.edges_out : real.edges_in).get();
    };
    const auto for_each_edge = [&](std::size_t place, auto ask) {
        edge_impl_vector* const edges = edges_at(place);
        for (int i = 0; edges != nullptr && i < edges->GetCount(); ++i) {
            ask((*edges)[i]);
        }
    };
    for_each_ahead(
        index.nodes.size(), [&](std::size_t place) { place > 0 ? lift_all(place) : void(); },
        [&](std::size_t place) { prefetch(index.nodes[place].get_impl().get()); },
        [&](std::size_t place) { prefetch(edges_at(place)); },
        [&](std::size_t place) {
            edge_impl_vector* const edges = edges_at(place);
            if (edges != nullptr && edges->GetCount() > 0) {
                prefetch(&(*edges)[0]);
            }
        },
        [&](std::size_t place) {
            for_each_edge(place, [](const graph_ptr<IEdgeImpl>& e) { prefetch(e.get()); });
        },
        [&](std::size_t place) {
            for_each_edge(place, [&](const graph_ptr<IEdgeImpl>& e) {
                const IEdgeImpl& edge = *e;
                if (typeid(edge) == typeid(DefaultEdgeImpl)) {
                    const auto& real = static_cast<const DefaultEdgeImpl&>(edge);
                    prefetch((out ? real.target : real.source).get());
                }
            });
        });
}

void StructureIndex::Lifting::lift_edge(int near_end, const graph_ptr<IEdgeImpl>& at_work,
                                        const graph_ptr<INodeImpl>& far_end) {
    edge = index.number_of(at_work);
    edge_id = at_work->get_id();
    lift(near_end, far_end);
}

void StructureIndex::Lifting::lift(int near_end, const graph_ptr<INodeImpl>& far_end) {
    const int place = index.find_place(far_end);
    if (place == near_end) {
        add(siblings, place, place);
    } else if (place >= 0) {
        lift_inside(near_end, place);
    } else {
        const Surroundings::Above above = surroundings.find_above(far_end);
        if (above.root != Surroundings::NOWHERE) {
            lift_outside(near_end, above);
        } else {
            index.note_removed(far_end);
        }
    }
}

void StructureIndex::Lifting::lift_inside(int near_end, int far_end) {
    const auto owner_of = [&](int place) {
        return index.owner_place[static_cast<std::size_t>(place)];
    };
    const auto depth_of = [&](int place) { return index.depth[static_cast<std::size_t>(place)]; };
    int below_near = -1; // the last node that each side has left
    int below_far = -1;
    while (near_end != far_end) {
        if (depth_of(near_end) < depth_of(far_end)) {
            below_far = far_end;
            far_end = owner_of(far_end);
            continue;
        }
        if (below_near >= 0) {
            add(crossings, below_near, own_root);
        }
        below_near = near_end;
        near_end = owner_of(near_end);
    }
    if (below_near >= 0 && below_far >= 0) {
        add(siblings, below_near, below_far);
    } else if (below_near >= 0) {
        add(crossings, below_near, near_end);
    }
}

void StructureIndex::Lifting::lift_outside(int near_end, const Surroundings::Above& far_end) {
    int owner = index.owner_place[static_cast<std::size_t>(near_end)];
    while (owner > 0) {
        add(crossings, near_end, far_end.root);
        near_end = owner;
        owner = index.owner_place[static_cast<std::size_t>(owner)];
    }
    // All roots have one id. An edge into another graph therefore joins two top-level nodes like
    // siblings.
    if (top_is_root) {
        add(siblings, near_end, far_end.top_level);
    } else {
        add(crossings, near_end, far_end.root);
    }
}

void StructureIndex::Lifting::add(std::vector<Answer>& answers, int base, int node) {
    answers.push_back({base, index.NodeAt(node).GetID(), edge_id, Link{node, edge}});
}

// A counting sort by base, then a small sort in each answer.
StructureIndex::Relation
StructureIndex::Lifting::sorted_relation(std::vector<Answer>& answers) const {
    Relation relation;
    relation.start.assign(index.nodes.size() + 1, 0);
    for (const Answer& a : answers) {
        ++relation.start[static_cast<std::size_t>(a.base) + 1];
    }
    for (std::size_t p = 1; p < relation.start.size(); ++p) {
        relation.start[p] += relation.start[p - 1];
    }
    std::vector<std::uint32_t> next(relation.start.begin(), relation.start.end() - 1);
    std::vector<Answer> by_base(answers.size());
    for (const Answer& a : answers) {
        by_base[next[static_cast<std::size_t>(a.base)]++] = a;
    }
    std::vector<Answer>().swap(answers);
    relation.links.reserve(by_base.size());
    for (std::size_t p = 0; p < index.nodes.size(); ++p) {
        const auto first = by_base.begin() + static_cast<std::ptrdiff_t>(relation.start[p]);
        const auto last = by_base.begin() + static_cast<std::ptrdiff_t>(relation.start[p + 1]);
        std::sort(first, last);
        std::for_each(first, last, [&](const Answer& a) { relation.links.push_back(a.link); });
    }
    return relation;
}

// The answers of a few nodes become longer. Those of the others are copied, stretch by stretch.
void StructureIndex::Lifting::merge_into(Relation& relation, std::vector<Answer>& answers) const {
    if (answers.empty()) {
        return;
    }
    const auto by_base = [](const Answer& a, const Answer& b) {
        return a.base != b.base ? a.base < b.base : a < b;
    };
    std::sort(answers.begin(), answers.end(), by_base);
    std::vector<Link> merged;
    merged.reserve(relation.links.size() + answers.size());
    std::size_t copied = 0;
    const auto copy_up_to = [&](std::size_t end) {
        merged.insert(merged.end(), relation.links.begin() + static_cast<std::ptrdiff_t>(copied),
                      relation.links.begin() + static_cast<std::ptrdiff_t>(end));
        copied = end;
    };
    for (const Answer& a : answers) {
        const auto base = static_cast<std::size_t>(a.base);
        std::size_t at = std::max<std::size_t>(copied, relation.start[base]);
        while (at < relation.start[base + 1] && answer_of(a.base, relation.links[at]) < a) {
            ++at;
        }
        copy_up_to(at);
        merged.push_back(a.link);
    }
    copy_up_to(relation.links.size());
    relation.links.swap(merged);
    auto next = answers.begin();
    std::uint32_t more = 0;
    for (std::size_t p = 0; p < relation.start.size(); ++p) {
        for (; next != answers.end() && static_cast<std::size_t>(next->base) < p; ++next) {
            ++more;
        }
        relation.start[p] += more;
    }
}

void StructureIndex::Lifting::add_runs(const std::vector<Answer>& answers) const {
    for (const Answer& a : answers) {
        const auto base = static_cast<std::size_t>(a.base);
        index.runs.push_back({a.link.edge, index.owner_place[base]});
    }
}

StructureIndex::StructureIndex(const Node& owner) {
    collect_nodes(owner);
    number_for_later();
    Surroundings surroundings(*this);
    Lifting out(*this, surroundings, &IEdgeImpl::to);
    out.lift_edges(/*out=*/true);
    children = out.take_siblings();
    edges_out = out.take_crossings();
    // After removals the edges in of a node and the edges out of its neighbours may differ, so each
    // direction is lifted from its own sets.
    Lifting in(*this, surroundings, &IEdgeImpl::from);
    in.lift_edges(/*out=*/false);
    parents = in.take_siblings();
    edges_in = in.take_crossings();
    place_notes.assign(GetPlaceCount(), 0);
    edge_notes.assign(edges.size(), 0);
    two_way = is_known_to_both_ends();
}

// An edge stands in one answer of either direction at most.
bool StructureIndex::is_known_to_both_ends() const {
    std::vector<char> from_tail(edges.size(), 0);
    for (const Link& link : children.links) {
        from_tail[static_cast<std::size_t>(link.edge)] = 1;
    }
    return children.links.size() == parents.links.size() &&
           std::all_of(parents.links.begin(), parents.links.end(), [&](const Link& link) {
               return from_tail[static_cast<std::size_t>(link.edge)] != 0;
           });
}

// Deliberate: the siblings behind the edges in are left out, as ShiftWithEdges does not ask for
// parents.
StructureIndex::StructureIndex(const Node& owner, OnlyRuns) {
    collect_nodes(owner);
    Surroundings surroundings(*this);
    Lifting out(*this, surroundings, &IEdgeImpl::to);
    out.lift_edges(/*out=*/true);
    out.add_sibling_runs();
    out.add_crossing_runs();
    Lifting in(*this, surroundings, &IEdgeImpl::from);
    in.lift_edges(/*out=*/false);
    in.add_crossing_runs();
}

/// What is being added, and which of its edges both ends stand for.
struct StructureIndex::Newcomers {
    std::size_t first_node;
    std::size_t first_edge;
    std::size_t end_of_told = 0; ///< the edges up to here were told of by the nodes they join
    // By number from the first on: whether a new node has met the edge at that end.
    std::vector<char> met_at_tail = {};
    std::vector<char> met_at_head = {};

    void meet(std::vector<char>& met, int edge) const {
        const std::size_t i = static_cast<std::size_t>(edge) - first_edge;
        met.resize(std::max(met.size(), i + 1), 0);
        met[i] = 1;
    }
    /// An old node tells of every edge that it loses. One that it knows without having told of it,
    /// or that only the other end knows, was never its own.
    bool stands_for(int place, std::size_t edge, const std::vector<char>& met) const {
        const std::size_t i = edge - first_edge;
        return static_cast<std::size_t>(place) < first_node ? edge < end_of_told
                                                            : i < met.size() && met[i] != 0;
    }
};

bool StructureIndex::Add(const std::vector<graph_ptr<INodeImpl>>& new_nodes,
                         const std::vector<graph_ptr<IEdgeImpl>>& new_edges) {
    Newcomers added{.first_node = nodes.size(), .first_edge = edges.size()};
    for (const graph_ptr<INodeImpl>& node : new_nodes) {
        ForEachNodeIn(
            Node(nodes.front().get_vis(), node), [this](const Node& n) { enter_new(n); }, false,
            true);
    }
    for (const graph_ptr<IEdgeImpl>& edge : new_edges) {
        number_of(edge);
    }
    added.end_of_told = edges.size();
    if (!all_tell) {
        return false;
    }
    meet_new_edges(added);
    return all_tell && lift_new_edges(added);
}

void StructureIndex::meet_new_edges(Newcomers& added) {
    const auto meet_all = [&](const graph_ptr<edge_impl_set>& own, std::vector<char>& met) {
        for (int i = 0; i < own->GetCount(); ++i) {
            const int number = number_of(own->GetItem(i));
            const bool is_new = static_cast<std::size_t>(number) >= added.first_edge;
            all_tell = all_tell && is_new; // an old edge has no business at a new node
            is_new ? added.meet(met, number) : void();
        }
    };
    for (std::size_t place = added.first_node; place < nodes.size(); ++place) {
        INodeImpl& node = *nodes[place].get_impl();
        meet_all(node.get_edges_out(), added.met_at_tail);
        meet_all(node.get_edges_in(), added.met_at_head);
    }
}

int StructureIndex::place_above(const Node& node) const {
    const graph_ptr<INodeImpl> owner = node.get_impl()->get_owner();
    return owner.get() != nullptr ? find_place(owner) : -1;
}

void StructureIndex::enter_new(const Node& node) {
    INodeImpl& impl = *node.get_impl();
    const int above = place_above(node);
    all_tell = all_tell && above >= 0 && typeid(impl) == typeid(DefaultNodeImpl);
    if (!all_tell) {
        return;
    }
    enter(node, above);
    place_of[impl.get_id()] = impl.place;
    place_notes.push_back(0);
    for (Relation* const relation : {&children, &parents, &edges_out, &edges_in}) {
        relation->start.push_back(relation->start.back());
    }
    const auto& top = static_cast<const DefaultRootNodeImpl&>(*nodes.front().get_impl());
    tell_notes(static_cast<DefaultRootNodeImpl&>(impl), top.notes);
}

// A new node has had nobody to tell of what was removed beside it, so an edge may be known to one
// of its ends alone. Such an edge is not lifted: it takes a look at everything to see where it
// counts.
bool StructureIndex::lift_new_edges(const Newcomers& added) {
    Surroundings surroundings(*this);
    Lifting out(*this, surroundings, &IEdgeImpl::to);
    Lifting in(*this, surroundings, &IEdgeImpl::from);
    for (std::size_t number = added.first_edge; number < edges.size(); ++number) {
        const graph_ptr<IEdgeImpl> edge = edges[number].get_impl();
        const IEdgeImpl& of_a_kind = *edge;
        const graph_ptr<INodeImpl> from = edge->from();
        const graph_ptr<INodeImpl> to = edge->to();
        if (typeid(of_a_kind) != typeid(DefaultEdgeImpl) || from.get() == nullptr ||
            to.get() == nullptr) {
            return false;
        }
        const int tail = find_place(from);
        const int head = find_place(to);
        if (tail < 0 || head < 0 || !added.stands_for(tail, number, added.met_at_tail) ||
            !added.stands_for(head, number, added.met_at_head)) {
            return false;
        }
        out.lift_edge(tail, edge, to);
        in.lift_edge(head, edge, from);
    }
    edge_notes.resize(edges.size(), 0);
    out.merge_siblings_into(children);
    out.merge_crossings_into(edges_out);
    in.merge_siblings_into(parents);
    in.merge_crossings_into(edges_in);
    return true;
}

// A node that was deleted without having been taken from its owner's set is still walked past, but
// nobody owns it.
void StructureIndex::collect_nodes(const Node& owner) {
    const auto enter_inside = [this](const Node& node) {
        const INodeImpl& of_a_kind = *node.get_impl();
        const int above = place_above(node);
        all_tell = all_tell && above >= 0 && typeid(of_a_kind) == typeid(DefaultNodeImpl);
        if (above >= 0) {
            enter(node, above);
        }
    };
    enter(owner, -1);
    ForEachNodeIn(owner, enter_inside, false, false);
}

void StructureIndex::enter(const Node& node, int above) {
    node.get_impl()->place = static_cast<int>(nodes.size());
    nodes.push_back(node);
    owner_place.push_back(above);
    depth.push_back(above < 0 ? 0 : depth[static_cast<std::size_t>(above)] + 1);
}

void StructureIndex::note_removed(const graph_ptr<INodeImpl>& far_end) {
    const INodeImpl& of_a_kind = *far_end;
    all_tell = all_tell && typeid(of_a_kind) == typeid(DefaultNodeImpl) && !far_end->has_owner();
    removed.push_back(Node(nodes.front().get_vis(), far_end));
}

// Whoever numbers the nodes next overwrites the notes on them.
void StructureIndex::number_for_later() {
    for (std::size_t i = 0; i < nodes.size(); ++i) {
        place_of[nodes[i].GetID()] = static_cast<int>(i);
    }
}

// The note on the node says where it is, unless somebody else has numbered the node since.
int StructureIndex::find_place(const graph_ptr<INodeImpl>& node) const {
    const auto stands_at = [&](int place) {
        const auto i = static_cast<std::size_t>(place);
        return i < nodes.size() && nodes[i].get_impl().get() == node.get();
    };
    if (stands_at(node->place)) {
        return node->place;
    }
    const int* const place = place_of.find(node->get_id());
    return place != nullptr && stands_at(*place) ? *place : -1;
}

// Nobody else numbers edges while the index is made, so the note alone tells whether an edge has
// its number.
int StructureIndex::number_of(const graph_ptr<IEdgeImpl>& edge) {
    const auto noted = static_cast<std::size_t>(edge->place);
    if (noted >= edges.size() || edges[noted].get_impl().get() != edge.get()) {
        const IEdgeImpl& of_a_kind = *edge;
        all_tell = all_tell && typeid(of_a_kind) == typeid(DefaultEdgeImpl);
        edge->place = static_cast<int>(edges.size());
        edges.push_back(Edge(nodes.front().get_vis(), edge));
    }
    return edge->place;
}

bool StructureIndex::Covers(const Node& node) const {
    return node.get_impl().get() != nullptr && find_place(node.get_impl()) >= 0;
}

bool StructureIndex::IsFlat() const {
    return std::all_of(depth.begin(), depth.end(), [](int owners) { return owners <= 1; });
}

StructureIndex::Pairs StructureIndex::answer(const Relation& relation, const Node& node) const {
    if (relation.links.empty()) {
        return Pairs(*this, {});
    }
    return Pairs(*this, links_of(relation, find_place(node.get_impl())));
}

std::span<const StructureIndex::Link> StructureIndex::links_of(const Relation& relation,
                                                               int place) {
    if (place <= 0 || static_cast<std::size_t>(place) + 1 >= relation.start.size()) {
        return {};
    }
    const std::size_t first = relation.start[static_cast<std::size_t>(place)];
    const std::size_t last = relation.start[static_cast<std::size_t>(place) + 1];
    return std::span(relation.links).subspan(first, last - first);
}

StructureIndex::Pairs StructureIndex::Children(const Node& node) const {
    return answer(children, node);
}

StructureIndex::Pairs StructureIndex::Parents(const Node& node) const {
    return answer(parents, node);
}

StructureIndex::Pairs StructureIndex::EdgesOut(const Node& node) const {
    return answer(edges_out, node);
}

StructureIndex::Pairs StructureIndex::EdgesIn(const Node& node) const {
    return answer(edges_in, node);
}

} // namespace nurvex7
