#include "nurvex7/model/visual_store.h"

#include <algorithm>
#include <memory>
#include <typeinfo>
#include <utility>

namespace nurvex7 {

INodeVis::~INodeVis() = default;

IGraphVis::~IGraphVis() = default;

// Nodes

DefaultNodeVis::DefaultNodeVis(graph_ptr<INodeImpl> node, DefaultGraphVis* of_store)
    : node_impl(std::move(node)), store(of_store),
      bend(of_store != nullptr && run_in_store(of_store, *node_impl) != nullptr
               ? static_cast<DummyNodeImpl*>(node_impl.get())
               : nullptr) {}

DefaultNodeVis::~DefaultNodeVis() {
    if (node_impl.get() != nullptr && node_impl->known_vis == this) {
        node_impl->known_vis = nullptr;
    }
}

void DefaultNodeVis::disown() {
    position = get_position();
    bend = nullptr;
    store = nullptr;
}

void DefaultNodeVis::leave_index() {
    indexed = false;
    if (store != nullptr) {
        store->note_place(*node_impl);
    }
}

// Records

namespace {

// What the store makes are default records, whatever the map says of their kind.
DefaultNodeVis* _own_record(const NodeVisInfo& info) {
    return static_cast<DefaultNodeVis*>(info.vis.get());
}

DefaultEdgeVis* _own_record(const EdgeVisInfo& info) {
    return static_cast<DefaultEdgeVis*>(info.vis.get());
}

// Nodes and edges that still remember a record ask for it anew when it is nobody's.
void _disown(const NodeVisInfo& info) {
    if (info.vis.get() != nullptr) {
        _own_record(info)->disown();
    }
}

void _disown(const EdgeVisInfo& info) {
    if (info.vis.get() != nullptr) {
        _own_record(info)->store = nullptr;
    }
}

// What may be remembered. The roots of two graphs share an id, and so may one record: it is that of
// the root that made it.
DefaultNodeVis* _record_for(const NodeVisInfo& info, const graph_ptr<INodeImpl>& node) {
    DefaultNodeVis* const own = _own_record(info);
    return own->node_impl.get() == node.get() ? own : nullptr;
}

DefaultEdgeVis* _record_for(const EdgeVisInfo& info, const graph_ptr<IEdgeImpl>& edge) {
    DefaultEdgeVis* const own = _own_record(info);
    return own->get_edge_impl().get() == edge.get() ? own : nullptr;
}

} // namespace

DefaultGraphVis::DefaultGraphVis()
    : default_layout(GetDefaultLayout()), default_node_painter(GetDefaultNodeHandler()),
      make_list(new node_impl_vector), update_list(new node_impl_vector),
      resize_list(new node_impl_vector) {}

// A record that somebody keeps beyond the store must not be taken for that of a later store.
DefaultGraphVis::~DefaultGraphVis() {
    node_map.for_each([](int, const NodeVisInfo& info) { _disown(info); });
    edge_map.for_each([](int, const EdgeVisInfo& info) { _disown(info); });
    break_nodes.disown_all();
}

graph_ptr<IEdgeVis> DefaultGraphVis::get_edge_vis(graph_ptr<IEdgeImpl> edge) {
    if (edge.get() == nullptr) {
        return graph_ptr<IEdgeVis>();
    }
    if (edge->known_vis != nullptr && edge->known_vis->store == this) {
        return edge->known_vis;
    }
    const EdgeVisInfo* info = edge_map.find(edge->get_id());
    if (info == nullptr) {
        sweep_when_due();
        EdgeVisInfo& made = edge_map[edge->get_id()];
        made.vis = new DefaultEdgeVis(edge, this);
        info = &made;
        edge_index.note(edge->get_id());
    }
    edge->known_vis = _record_for(*info, edge);
    return info->vis;
}

graph_ptr<INodeVis> DefaultGraphVis::get_node_vis(graph_ptr<INodeImpl> node) {
    if (node.get() == nullptr) {
        return graph_ptr<INodeVis>();
    }
    if (DefaultNodeVis* const known = known_vis_in(this, *node)) {
        return known;
    }
    NodeVisInfo& info = record_of(node->get_id());
    if (info.vis.get() == nullptr) {
        info.vis = new DefaultNodeVis(node, this);
        note_place(*node);
    }
    node->known_vis = _record_for(info, node);
    return info.vis;
}

void DefaultGraphVis::remove_edge_vis(graph_ptr<IEdgeImpl> edge) {
    if (edge.get() == nullptr) {
        return;
    }
    if (const EdgeVisInfo* const info = edge_map.find(edge->get_id())) {
        _disown(*info);
        edge_map.erase(edge->get_id());
    }
}

void DefaultGraphVis::remove_node_vis(graph_ptr<INodeImpl> node) {
    if (node.get() == nullptr) {
        return;
    }
    if (const NodeVisInfo* const info = node_map.find(node->get_id())) {
        note_place(*node);
        _disown(*info);
        node_map.erase(node->get_id());
    }
    if (BreakNodes* const run = run_in_store(this, *node)) {
        run->set_place_of(static_cast<const DummyNodeImpl&>(*node), {});
    }
}

void DefaultGraphVis::note_place(INodeImpl& node) {
    if (node.get_id() >= 0) {
        node_index.note(node.get_id());
    } else if (edge_index.is_built()) {
        note_route_of(node);
    }
}

void DefaultGraphVis::note_route_of(INodeImpl& bend) {
    const graph_ptr<edge_impl_set> own_edge = bend.get_edges_out();
    if (own_edge->GetCount() > 0) {
        note_route(own_edge->GetItem(0)->get_id());
    }
}

void DefaultGraphVis::note_route(int edge_id) {
    if (!edge_index.is_built()) {
        return;
    }
    const EdgeVisInfo* const info = edge_map.find(edge_id);
    if (info != nullptr && _own_record(*info)->indexed) {
        _own_record(*info)->indexed = false;
        edge_index.note(edge_id);
    }
}

// Every look at a node comes through here, so a record that is there costs one search.
NodeVisInfo& DefaultGraphVis::record_of(int id) {
    if (NodeVisInfo* const known = node_map.find(id)) {
        return *known;
    }
    sweep_when_due();
    return node_map[id];
}

// Sweeps are so far apart that each record made pays for a look at a few.
void DefaultGraphVis::sweep_when_due() {
    if (node_map.size() + edge_map.size() >= sweep_at && !walks_edges) {
        sweep();
    }
}

namespace {

// A node that nobody but its record holds can never be asked for again. The root can: all roots
// share its record. So can a node that has an owner: a storage of another kind may make its handles
// when they are asked for.
bool _is_out_of_reach(int id, const NodeVisInfo& info) {
    if (id == 0 || info.layout.get() != nullptr || info.painter.get() != nullptr) {
        return false;
    }
    if (info.vis.get() == nullptr) {
        return true;
    }
    const graph_ptr<INodeImpl> node = info.vis->get_node_impl();
    return info.vis->ref_count == 1 && node->ref_count == 2 && node->get_owner().get() == nullptr;
}

} // namespace

// Break nodes come and go with every layout, edges go with their nodes, and an Update looks once
// more at what was removed: nobody removes all these records. Edges first, as they hold nodes.
//
// While a graph grows there is nothing to find: the next sweep is put off until it has doubled.
void DefaultGraphVis::sweep() {
    const std::size_t before = node_map.size() + edge_map.size();
    edge_map.erase_if([&](int, const EdgeVisInfo& info) {
        return static_cast<const DefaultEdgeVis&>(*info.vis).is_out_of_reach(node_map);
    });
    node_map.erase_if(_is_out_of_reach);
    const std::size_t left = node_map.size() + edge_map.size();
    const bool was_worth_it = before - left > left / 16;
    sweep_at = std::max(FIRST_SWEEP, left + (was_worth_it ? left / 8 : left));
}

// Layouts and handlers

// Deliberate: the default is given as it stands, empty or not; only get_default_layout fills it.
graph_ptr2<ILayout> DefaultGraphVis::get_node_layout(graph_ptr<INodeImpl> node) {
    if (node.get() == nullptr) {
        return default_layout;
    }
    const NodeVisInfo& info = record_of(node->get_id());
    return info.layout.get() != nullptr ? info.layout : default_layout;
}

const ILayout* DefaultGraphVis::find_layout(int node_id) const {
    const NodeVisInfo* const info = node_map.find(node_id);
    const bool has_own = info != nullptr && info->layout.get() != nullptr;
    return has_own ? info->layout.get() : default_layout.get();
}

void DefaultGraphVis::set_node_layout(graph_ptr<INodeImpl> node, graph_ptr2<ILayout> layout) {
    if (node.get() != nullptr) {
        record_of(node->get_id()).layout = layout;
    }
}

graph_ptr2<INodeHandler> DefaultGraphVis::get_node_painter(graph_ptr<INodeImpl> node) {
    if (node.get() == nullptr) {
        return default_node_painter;
    }
    const NodeVisInfo& info = record_of(node->get_id());
    return info.painter.get() != nullptr ? info.painter : default_node_painter;
}

void DefaultGraphVis::set_node_painter(graph_ptr<INodeImpl> node,
                                       graph_ptr2<INodeHandler> painter) {
    if (node.get() != nullptr) {
        record_of(node->get_id()).painter = painter;
    }
}

graph_ptr2<ILayout> DefaultGraphVis::get_default_layout() {
    if (default_layout.get() == nullptr) {
        default_layout = GetDefaultLayout();
    }
    return default_layout;
}

void DefaultGraphVis::set_default_layout(graph_ptr2<ILayout> layout) {
    default_layout = layout;
}

graph_ptr2<INodeHandler> DefaultGraphVis::get_default_node_painter() {
    if (default_node_painter.get() == nullptr) {
        default_node_painter = GetDefaultNodeHandler();
    }
    return default_node_painter;
}

void DefaultGraphVis::set_default_node_painter(graph_ptr2<INodeHandler> painter) {
    default_node_painter = painter;
}

graph_ptr2<IEdgeHandler> DefaultGraphVis::get_default_edge_painter() {
    if (default_edge_painter.get() == nullptr) {
        default_edge_painter = GetDefaultEdgeHandler();
    }
    return default_edge_painter;
}

void DefaultGraphVis::set_default_edge_painter(graph_ptr2<IEdgeHandler> painter) {
    default_edge_painter = painter;
}

// Pending layout work

void DefaultGraphVis::add_to_make_list(graph_ptr<INodeImpl> node) {
    make_list->push_back(node);
}

graph_ptr<node_impl_set> DefaultGraphVis::get_make_list() {
    return make_list;
}

// A full layout has replaced all break nodes, and has looked at every record there is: one more
// look at each gives back what the drawing before held. The owner of a removed node is queued as
// null.
void DefaultGraphVis::clear_make_list() {
    const bool held_root =
        std::any_of(make_list->begin(), make_list->end(),
                    [](const graph_ptr<INodeImpl>& n) { return n.get() != nullptr && n == 0; });
    make_list->clear();
    if (held_root && !walks_edges) {
        sweep();
    }
}

void DefaultGraphVis::add_to_update_list(graph_ptr<INodeImpl> node) {
    update_list->push_back(node);
}

graph_ptr<node_impl_set> DefaultGraphVis::get_update_list() {
    return update_list;
}

void DefaultGraphVis::clear_update_list() {
    update_list->clear();
}

void DefaultGraphVis::add_to_resize_list(graph_ptr<INodeImpl> node) {
    resize_list->push_back(node);
}

graph_ptr<node_impl_set> DefaultGraphVis::get_resize_list() {
    return resize_list;
}

void DefaultGraphVis::clear_resize_list() {
    resize_list->clear();
}

} // namespace nurvex7
