#include "nurvex7/model/visual_store.h"

#include <algorithm>
#include <climits>
#include <utility>
#include <vector>

namespace nurvex7 {

IEdgeVis::~IEdgeVis() = default;

graph_ptr<node_impl_set> IEdgeVis::find_break_nodes_in(int owner_id) {
    return get_break_nodes_in(owner_id);
}

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

// A break node is held by its run, and by its record where it has one.
int _holds_of_record(const INodeImpl& bend, const IdMap<NodeVisInfo>& records) {
    const NodeVisInfo* const record = records.find(bend.get_id());
    if (record == nullptr || record->vis.get() == nullptr) {
        return 0;
    }
    constexpr int MORE_THAN_THERE_ARE = INT_MAX / 2;
    return record->vis->ref_count == 1 ? 1 : MORE_THAN_THERE_ARE;
}
} // namespace

// A route that was asked for before its ends went is still hit.
bool DefaultEdgeVis::is_out_of_reach(const IdMap<NodeVisInfo>& records) const {
    if (ref_count != 1 || break_nodes_cache.get() != nullptr || !_is_gone(edge_impl->from()) ||
        !_is_gone(edge_impl->to())) {
        return false;
    }
    int own_holds = 1;
    const auto is_held_once = [&](const Run& run) {
        own_holds += run.nodes->count_edge_holds();
        return run.nodes->is_held_once(
            [&](const INodeImpl& bend) { return _holds_of_record(bend, records); });
    };
    if (first_run.nodes.get() != nullptr && !is_held_once(first_run)) {
        return false;
    }
    return std::all_of(further_runs.begin(), further_runs.end(), is_held_once) &&
           edge_impl->ref_count == own_holds;
}

// The cache hands itself out, so it is dropped for a new one and never emptied: who still walks the
// old route keeps it whole.
void DefaultEdgeVis::remove_break_nodes() {
    first_run.nodes.reset();
    further_runs.clear();
    forget_route();
}

void DefaultEdgeVis::forget_route() {
    break_nodes_cache.reset();
    if (indexed && store != nullptr) {
        store->note_route(edge_impl->get_id());
    }
}

graph_ptr<node_impl_set> DefaultEdgeVis::get_break_nodes_in(int owner_id) {
    return &run_in(owner_id);
}

graph_ptr<node_impl_set> DefaultEdgeVis::find_break_nodes_in(int owner_id) {
    return known_run_in(owner_id);
}

void DefaultEdgeVis::add_break_nodes_in(int owner_id, int count) {
    if (count < 1) {
        return;
    }
    BreakNodes* known = known_run_in(owner_id);
    if (known != nullptr && known->GetCount() == 0 && known->ref_count == 1) {
        remove_break_nodes_in(owner_id); // entered by somebody who did not keep it
        known = nullptr;
    }
    if (known != nullptr) {
        known->append(count);
    } else {
        make_run(owner_id, count);
    }
    forget_route();
}

void DefaultEdgeVis::remove_break_nodes_in(int owner_id) {
    if (first_run.owner_id != owner_id) {
        std::erase_if(further_runs, [&](const Run& run) { return run.owner_id == owner_id; });
    } else if (further_runs.empty()) {
        first_run.nodes.reset();
    } else {
        first_run = further_runs.back();
        further_runs.pop_back();
    }
    forget_route();
}

BreakNodes* DefaultEdgeVis::further_run_in(int owner_id) const {
    const auto found = std::find_if(further_runs.begin(), further_runs.end(),
                                    [&](const Run& run) { return run.owner_id == owner_id; });
    return found != further_runs.end() ? found->nodes.get() : nullptr;
}

const graph_ptr<BreakNodes>& DefaultEdgeVis::make_run(int owner_id, int count) {
    Run& made = first_run.nodes.get() == nullptr ? first_run : further_runs.emplace_back();
    made = Run{owner_id, BreakNodes::Make(edge_impl, store, count)};
    return made.nodes;
}

void DefaultEdgeVis::mark_indexed() {
    indexed = true;
    if (first_run.nodes.get() != nullptr) {
        first_run.nodes->mark_indexed();
    }
    for (const Run& run : further_runs) {
        run.nodes->mark_indexed();
    }
}

namespace {
void _append_run(node_impl_vector& route, BreakNodes& run) {
    for (int i = 0; i < run.GetCount(); ++i) {
        route.push_back(&run.at(i));
    }
}
} // namespace

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
        if (BreakNodes* const run = known_run_in(owner->get_id())) {
            _append_run(*route, *run);
            outermost = owner;
        }
    }
    return outermost;
}

// Nothing stops the walk where the source was deleted and has no owner any more.
void DefaultEdgeVis::append_inward_runs(const graph_ptr<INodeImpl>& to,
                                        const graph_ptr<INodeImpl>& outermost,
                                        const graph_ptr<node_impl_vector>& route) const {
    std::vector<BreakNodes*> innermost_first;
    for (graph_ptr<INodeImpl> owner = owner_above(to); owner.get() != nullptr;
         owner = owner_above(owner)) {
        if (outermost.get() != nullptr && owner == outermost) {
            break;
        }
        if (BreakNodes* const run = known_run_in(owner->get_id())) {
            innermost_first.push_back(run);
        }
    }
    for (auto run = innermost_first.rbegin(); run != innermost_first.rend(); ++run) {
        _append_run(*route, **run);
    }
}

} // namespace nurvex7
