#include "nurvex7/model/break_nodes.h"

#include <algorithm>
#include <utility>

namespace nurvex7 {

IEdgeVis::~IEdgeVis() = default;

graph_ptr<node_impl_set> IEdgeVis::find_break_nodes_in(int owner_id) {
    return get_break_nodes_in(owner_id);
}

namespace {
bool _stands_before(const std::pair<int, graph_ptr<node_impl_vector>>& entry, int owner_id) {
    return entry.first < owner_id;
}
} // namespace

DefaultEdgeVis::DefaultEdgeVis(graph_ptr<IEdgeImpl> edge, DefaultGraphVis* of_store)
    : store(of_store), edge_impl(std::move(edge)) {}

DefaultEdgeVis::~DefaultEdgeVis() {
    if (edge_impl.get() != nullptr && edge_impl->known_vis == this) {
        edge_impl->known_vis = nullptr;
    }
}

graph_ptr<IEdgeImpl> DefaultEdgeVis::get_edge_impl() const {
    return edge_impl;
}

namespace {
// A removed node has no owner, unless somebody who has kept it gives it one; he holds it then.
bool _is_gone(const graph_ptr<INodeImpl>& end) {
    return end.get() == nullptr || (!end->has_owner() && end != 0);
}

bool _is_held_by_its_run_alone(const INodeImpl& bend, const IdMap<NodeVisInfo>& records) {
    const BreakNode* const home = static_cast<const DummyNodeImpl&>(bend).home;
    const NodeVisInfo* const record = records.find(bend.get_id());
    const bool recorded = record != nullptr && record->vis.get() != nullptr;
    return bend.ref_count == (recorded ? 2 : 1) && (home == nullptr || home->vis.ref_count == 0) &&
           (!recorded || record->vis->ref_count == 1);
}
} // namespace

// A route that was asked for before its ends went is still hit.
bool DefaultEdgeVis::is_out_of_reach(const IdMap<NodeVisInfo>& records) const {
    if (ref_count != 1 || break_nodes_cache.get() != nullptr || !_is_gone(edge_impl->from()) ||
        !_is_gone(edge_impl->to())) {
        return false;
    }
    int own_bends = 0;
    for (const run_entry& entry : break_nodes_by_owner) {
        if (entry.second->ref_count != 1) {
            return false;
        }
        for (const graph_ptr<INodeImpl>& bend : *entry.second) {
            if (!_is_held_by_its_run_alone(*bend, records)) {
                return false;
            }
            ++own_bends;
        }
    }
    const bool has_set = edge_set.get() != nullptr;
    return edge_impl->ref_count == (has_set ? 2 : 1) &&
           (!has_set || edge_set->ref_count == 1 + own_bends);
}

// The cache hands itself out, so it is dropped for a new one and never emptied: who still walks the
// old route keeps it whole.
void DefaultEdgeVis::remove_break_nodes() {
    break_nodes_by_owner.clear();
    forget_route();
}

void DefaultEdgeVis::forget_route() {
    break_nodes_cache.reset();
    if (indexed && store != nullptr) {
        store->note_route(edge_impl->get_id());
    }
}

graph_ptr<node_impl_set> DefaultEdgeVis::get_break_nodes_in(int owner_id) {
    return find_or_make_run(owner_id);
}

graph_ptr<node_impl_set> DefaultEdgeVis::find_break_nodes_in(int owner_id) {
    return find_run(owner_id);
}

void DefaultEdgeVis::add_break_nodes_in(int owner_id, int count) {
    if (count < 1) {
        return;
    }
    if (edge_set.get() == nullptr) {
        edge_set = new edge_impl_vector;
        edge_set->push_back(edge_impl);
    }
    const graph_ptr<node_impl_vector> run = find_or_make_run(owner_id);
    if (store != nullptr) {
        BreakNodes::Make(store->break_nodes, store, edge_set, static_cast<std::size_t>(count),
                         *run);
    } else {
        for (int i = 0; i < count; ++i) {
            run->push_back(new DummyNodeImpl(edge_set));
        }
    }
    forget_route();
}

void DefaultEdgeVis::remove_break_nodes_in(int owner_id) {
    std::erase_if(break_nodes_by_owner,
                  [&](const run_entry& entry) { return entry.first == owner_id; });
    forget_route();
}

graph_ptr<node_impl_vector> DefaultEdgeVis::find_run(int owner_id) const {
    return known_run_in(owner_id);
}

node_impl_vector* DefaultEdgeVis::known_run_in(int owner_id) const {
    const auto place = std::lower_bound(break_nodes_by_owner.begin(), break_nodes_by_owner.end(),
                                        owner_id, _stands_before);
    const bool found = place != break_nodes_by_owner.end() && place->first == owner_id;
    return found ? place->second.get() : nullptr;
}

const graph_ptr<node_impl_vector>& DefaultEdgeVis::find_or_make_run(int owner_id) {
    const auto place = std::lower_bound(break_nodes_by_owner.begin(), break_nodes_by_owner.end(),
                                        owner_id, _stands_before);
    if (place != break_nodes_by_owner.end() && place->first == owner_id) {
        return place->second;
    }
    return break_nodes_by_owner.emplace(place, owner_id, new node_impl_vector)->second;
}

// Outward through the owners of the source, as far as the outermost that holds a run; then inward
// through those of the target, which stop below that one: the common owner counts once.
graph_ptr<node_impl_set> DefaultEdgeVis::get_break_nodes() {
    if (break_nodes_cache.get() != nullptr) {
        return break_nodes_cache;
    }
    const graph_ptr<INodeImpl> from = edge_impl->from();
    const graph_ptr<INodeImpl> to = edge_impl->to();
    if (from.get() == nullptr || to.get() == nullptr) {
        return new node_impl_vector; // a removed edge leads nowhere
    }
    const graph_ptr<node_impl_vector> route(new node_impl_vector);
    const graph_ptr<INodeImpl> outermost = append_outward_runs(from, route);
    append_inward_runs(to, outermost, route);
    break_nodes_cache = route;
    return route;
}

// Gives the outermost owner that holds a run, or the direct owner where none does.
graph_ptr<INodeImpl>
DefaultEdgeVis::append_outward_runs(const graph_ptr<INodeImpl>& from,
                                    const graph_ptr<node_impl_vector>& route) const {
    graph_ptr<INodeImpl> owner = owner_above(from);
    graph_ptr<INodeImpl> outermost = owner;
    for (; owner.get() != nullptr; owner = owner_above(owner)) {
        const graph_ptr<node_impl_vector> run = find_run(owner->get_id());
        if (run.get() != nullptr) {
            _append(route, run);
            outermost = owner;
        }
    }
    return outermost;
}

// Nothing stops the walk where the source was deleted and has no owner any more.
void DefaultEdgeVis::append_inward_runs(const graph_ptr<INodeImpl>& to,
                                        const graph_ptr<INodeImpl>& outermost,
                                        const graph_ptr<node_impl_vector>& route) const {
    std::vector<graph_ptr<node_impl_vector>> innermost_first;
    for (graph_ptr<INodeImpl> owner = owner_above(to); owner.get() != nullptr;
         owner = owner_above(owner)) {
        if (outermost.get() != nullptr && owner == outermost) {
            break;
        }
        const graph_ptr<node_impl_vector> run = find_run(owner->get_id());
        if (run.get() != nullptr) {
            innermost_first.push_back(run);
        }
    }
    for (auto run = innermost_first.rbegin(); run != innermost_first.rend(); ++run) {
        _append(route, *run);
    }
}

} // namespace nurvex7
