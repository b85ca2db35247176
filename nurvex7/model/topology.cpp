#include "nurvex7/model/topology.h"

#include "nurvex7/model/flags.h"
#include "nurvex7/model/kept_structure.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace nurvex7 {

INodeImpl::~INodeImpl() = default;

bool INodeImpl::has_owner() const {
    return get_owner().get() != nullptr;
}

IEdgeImpl::~IEdgeImpl() = default;

IGraphStorage::~IGraphStorage() = default;

GraphNotes::GraphNotes() = default;

GraphNotes::~GraphNotes() = default;

void GraphNotes::forget() {
    drawn_marks_hold = false;
    structure.reset();
}

namespace {

// Has the next MarkDrawnIn look at everything again.
template <typename T>
void _outdate_marks(const T& changed) {
    if (changed.notes.get() != nullptr) {
        changed.notes->drawn_marks_hold = false;
    }
}

// Has everybody look at everything again.
template <typename T>
void _outdate(const T& changed) {
    if (changed.notes.get() != nullptr) {
        changed.notes->forget();
    }
}

// What is only added can be added to what is known.
template <typename T, typename Added>
void _outdate_by(const T& changed, const Added& added) {
    _outdate_marks(changed);
    if (changed.notes.get() != nullptr && changed.notes->structure != nullptr &&
        !changed.notes->structure->note_added(added)) {
        changed.notes->structure.reset();
    }
}

DefaultNodeImpl* _real_node(const graph_ptr<INodeImpl>& node) {
    return dynamic_cast<DefaultNodeImpl*>(node.get());
}

void _outdate_below(const graph_ptr<INodeImpl>& owner) {
    if (const auto* const known = dynamic_cast<DefaultRootNodeImpl*>(owner.get())) {
        _outdate(*known);
    }
}

// What an owner of any kind holds; null where it holds its nodes in a set of its own making.
graph_ptr<node_impl_vector> _owned_of(const graph_ptr<INodeImpl>& owner) {
    return dynamic_cast<node_impl_vector*>(owner->get_owned().get());
}

// False where the node stands above the new owner, and where no root does: what hangs in the air
// takes nobody in.
bool _may_own(const graph_ptr<INodeImpl>& new_owner, int node_id) {
    graph_ptr<INodeImpl> above = new_owner;
    while (above.get() != nullptr && above != 0) {
        above = owner_above(above);
        if (above.get() != nullptr && above == node_id) {
            return false;
        }
    }
    return above.get() != nullptr;
}

// Most nodes are never asked for their neighbours, and a graph may have millions of nodes: the set
// is made for the first who asks. It is emptied and never replaced, as views of it stay live.
bool _is_to_fill(graph_ptr<node_impl_vector>& cache) {
    if (cache.get() == nullptr) {
        cache = new node_impl_vector;
    }
    return cache->empty();
}

void _forget(const graph_ptr<node_impl_vector>& cache) {
    if (cache.get() != nullptr) {
        cache->clear();
    }
}

template <typename T>
T _take_first(GraphSet<T>& set) {
    T first = set.GetItem(0);
    erase_found(set, first);
    return first;
}

void _unlink_edges_in(DefaultNodeImpl& node) {
    while (!node.edges_in->empty()) {
        node.delete_edge_from(_take_first(*node.edges_in));
    }
}

// The last steps for a node whose inside is gone already. Deliberate: the edges out are merely
// forgotten, so they stay in the sets of their targets with this node as their source.
void _bury(DefaultNodeImpl& node) {
    _outdate(node);
    _unlink_edges_in(node);
    node.owner.reset();
    node.owned->clear();
    node.edges_out->clear();
    node.edges_in->clear();
    _forget(node.parents_cache);
    _forget(node.children_cache);
}

// Deletes everything in a set of owned nodes, each node after its own inside. The open nodes stand
// on a list of their own: owners nest as deep as the caller likes.
void _delete_inside(const graph_ptr<node_impl_vector>& owned) {
    std::vector<graph_ptr<INodeImpl>> open;
    graph_ptr<node_impl_vector> inside = owned;
    for (;;) {
        if (!inside->empty()) {
            graph_ptr<INodeImpl> next = _take_first(*inside);
            if (DefaultNodeImpl* const node = _real_node(next)) {
                inside = node->owned;
                open.push_back(std::move(next));
            }
            continue;
        }
        if (open.empty()) {
            return;
        }
        _bury(*_real_node(open.back()));
        open.pop_back();
        inside = open.empty() ? owned : _real_node(open.back())->owned;
    }
}

} // namespace

// Roots

DefaultRootNodeImpl::DefaultRootNodeImpl() : owned(new node_impl_vector) {}

int DefaultRootNodeImpl::get_id() const {
    return 0;
}

std::string DefaultRootNodeImpl::get_caption() const {
    return std::string();
}

void DefaultRootNodeImpl::set_caption(const std::string&) {}

int DefaultRootNodeImpl::get_tag() const {
    return 0;
}

void DefaultRootNodeImpl::set_tag(const int&) {}

int DefaultRootNodeImpl::get_condition() const {
    return 0;
}

void DefaultRootNodeImpl::set_condition(int) {}

graph_ptr<node_impl_set> DefaultRootNodeImpl::get_parents() {
    return new node_impl_vector;
}

graph_ptr<node_impl_set> DefaultRootNodeImpl::get_children() {
    return new node_impl_vector;
}

graph_ptr<edge_impl_set> DefaultRootNodeImpl::get_edges_in() {
    return new edge_impl_vector;
}

graph_ptr<edge_impl_set> DefaultRootNodeImpl::get_edges_out() {
    return new edge_impl_vector;
}

graph_ptr<IEdgeImpl> DefaultRootNodeImpl::link_to(graph_ptr<INodeImpl>) {
    return graph_ptr<IEdgeImpl>();
}

graph_ptr<INodeImpl> DefaultRootNodeImpl::add_node() {
    graph_ptr<INodeImpl> node(new DefaultNodeImpl(this));
    owned->push_back(node);
    _outdate_by(*this, node);
    return node;
}

void DefaultRootNodeImpl::remove() {
    _outdate(*this);
    _delete_inside(owned);
}

graph_ptr<INodeImpl> DefaultRootNodeImpl::get_owner() const {
    return graph_ptr<INodeImpl>();
}

graph_ptr<node_impl_set> DefaultRootNodeImpl::get_owned() {
    return owned;
}

void DefaultRootNodeImpl::set_owner(graph_ptr<INodeImpl>) {}

// Real nodes

int DefaultNodeImpl::current_id = 1;

DefaultNodeImpl::DefaultNodeImpl(graph_ptr<INodeImpl> owned_by)
    : id(current_id++), edges_out(new edge_impl_vector), edges_in(new edge_impl_vector),
      owner(std::move(owned_by)) {}

int DefaultNodeImpl::get_id() const {
    return id;
}

std::string DefaultNodeImpl::get_caption() const {
    return caption;
}

void DefaultNodeImpl::set_caption(const std::string& text) {
    caption = text;
}

int DefaultNodeImpl::get_tag() const {
    return tag;
}

void DefaultNodeImpl::set_tag(const int& value) {
    tag = value;
}

int DefaultNodeImpl::get_condition() const {
    return condition;
}

void DefaultNodeImpl::set_condition(int flags) {
    if (((condition ^ flags) & (NODE_HIDDEN | NODE_DRAWN)) != 0) {
        _outdate_marks(*this);
    }
    condition = flags;
}

graph_ptr<node_impl_set> DefaultNodeImpl::get_parents() {
    if (_is_to_fill(parents_cache)) {
        get_neighbours(*edges_in, &IEdgeImpl::from, *parents_cache);
    }
    return parents_cache;
}

graph_ptr<node_impl_set> DefaultNodeImpl::get_children() {
    if (_is_to_fill(children_cache)) {
        get_neighbours(*edges_out, &IEdgeImpl::to, *children_cache);
    }
    return children_cache;
}

graph_ptr<edge_impl_set> DefaultNodeImpl::get_edges_in() {
    return edges_in;
}

graph_ptr<edge_impl_set> DefaultNodeImpl::get_edges_out() {
    return edges_out;
}

graph_ptr<IEdgeImpl> DefaultNodeImpl::link_to(graph_ptr<INodeImpl> target) {
    DefaultNodeImpl* const to = _real_node(target);
    if (to == nullptr) {
        return graph_ptr<IEdgeImpl>();
    }
    graph_ptr<IEdgeImpl> edge(new DefaultEdgeImpl(this, target));
    edges_out->push_back(edge);
    _forget(children_cache);
    to->edges_in->push_back(edge);
    _forget(to->parents_cache);
    _outdate_by(*this, edge);
    if (to->notes.get() != notes.get()) {
        _outdate_by(*to, edge);
    }
    return edge;
}

void DefaultNodeImpl::remove() {
    const graph_ptr<INodeImpl> keep(this);
    unlink_owner();
    delete_node();
}

graph_ptr<INodeImpl> DefaultNodeImpl::get_owner() const {
    return owner;
}

bool DefaultNodeImpl::has_owner() const {
    return owner.get() != nullptr;
}

// Deliberate: the new owner itself is not compared with this node, so a node can be made its own
// owner.
void DefaultNodeImpl::set_owner(graph_ptr<INodeImpl> new_owner) {
    if (!_may_own(new_owner, id)) {
        return;
    }
    if (const graph_ptr<node_impl_vector> siblings = _owned_of(new_owner);
        siblings.get() != nullptr) {
        const graph_ptr<INodeImpl> keep(this);
        _outdate(*this);
        unlink_owner();
        owner = new_owner;
        siblings->push_back(keep);
        _outdate_below(owner);
    }
}

void DefaultNodeImpl::unlink_owner() {
    if (owner.get() == nullptr) {
        return;
    }
    _outdate_below(owner);
    if (const graph_ptr<node_impl_vector> siblings = _owned_of(owner); siblings.get() != nullptr) {
        erase_found(*siblings, graph_ptr<INodeImpl>(this));
    }
}

void DefaultNodeImpl::delete_node() {
    const graph_ptr<INodeImpl> keep(this);
    _delete_inside(owned);
    _bury(*this);
}

// Deliberate: the edge leaves the set of its source here and is searched there once more by its own
// removal, which then takes the neighbour of the place where it stood.
void DefaultNodeImpl::delete_edge_from(graph_ptr<IEdgeImpl> edge) {
    if (DefaultNodeImpl* const from = _real_node(edge->from())) {
        erase_found(*from->edges_out, edge);
        _forget(from->children_cache);
        _outdate(*from);
    }
    edge->remove();
}

// Deliberate: works on the node that the edge points at, whichever node it is called on.
void DefaultNodeImpl::delete_edge_to(graph_ptr<IEdgeImpl> edge) {
    if (DefaultNodeImpl* const to = _real_node(edge->to())) {
        erase_found(*to->edges_in, edge);
        _forget(to->parents_cache);
        _outdate(*to);
    }
}

void DefaultNodeImpl::remove_edge(graph_ptr<IEdgeImpl> edge) {
    erase_found(*edges_out, edge);
    _forget(children_cache);
    _outdate(*this);
    delete_edge_to(edge);
}

void DefaultNodeImpl::get_neighbours(edge_impl_vector& edges,
                                     graph_ptr<INodeImpl> (IEdgeImpl::*end)() const,
                                     node_impl_vector& result) {
    for (const graph_ptr<IEdgeImpl>& edge : edges) {
        graph_ptr<INodeImpl> neighbour = (edge.get()->*end)();
        if (neighbour.get() != nullptr) {
            result.push_back(neighbour);
        }
    }
    if (result.GetCount() > 1) {
        result.sort();
        result.drop_repeated();
    }
}

// Edges

int DefaultEdgeImpl::current_id = 0;

DefaultEdgeImpl::DefaultEdgeImpl(graph_ptr<INodeImpl> from_node, graph_ptr<INodeImpl> to_node)
    : source(std::move(from_node)), target(std::move(to_node)), id(current_id++) {}

int DefaultEdgeImpl::get_id() const {
    return id;
}

std::string DefaultEdgeImpl::get_caption() const {
    return caption;
}

void DefaultEdgeImpl::set_caption(const std::string& text) {
    caption = text;
}

int DefaultEdgeImpl::get_tag() const {
    return tag;
}

void DefaultEdgeImpl::set_tag(const int& value) {
    tag = value;
}

int DefaultEdgeImpl::get_condition() const {
    return condition;
}

void DefaultEdgeImpl::set_condition(int flags) {
    if (((condition ^ flags) & EDGE_DRAWN) != 0) {
        _outdate_marks(*this);
    }
    condition = flags;
}

graph_ptr<INodeImpl> DefaultEdgeImpl::from() const {
    return source;
}

graph_ptr<INodeImpl> DefaultEdgeImpl::to() const {
    return target;
}

// The sets at both ends may hold the last counts of this edge.
void DefaultEdgeImpl::remove() {
    const graph_ptr<IEdgeImpl> keep(this);
    if (DefaultNodeImpl* const from_node = _real_node(source)) {
        from_node->remove_edge(keep);
    }
    source.reset();
    target.reset();
}

// Storage

DefaultStorage::DefaultStorage(graph_ptr<INodeImpl> root_node) : root(std::move(root_node)) {}

graph_ptr<INodeImpl> DefaultStorage::get_root() const {
    return root;
}

// What is known below the root leads back to it, and to the store of who asked.
void DefaultStorage::remove_root() {
    _outdate_below(root);
    root.reset();
}

// Steps and walks

void _delete_node(graph_ptr<INodeImpl> node) {
    if (DefaultNodeImpl* const real = _real_node(node)) {
        real->delete_node();
    }
}

void _del_from(DefaultNodeImpl* node, graph_ptr<IEdgeImpl> edge) {
    node->delete_edge_from(std::move(edge));
}

void _del_to(DefaultNodeImpl* node, graph_ptr<IEdgeImpl> edge) {
    node->delete_edge_to(std::move(edge));
}

void _append(const graph_ptr<node_impl_vector>& a, const graph_ptr<node_impl_vector>& b) {
    const int count = b->GetCount();
    for (int i = 0; i < count; ++i) {
        a->push_back(b->GetItem(i));
    }
    a->mark_unsorted();
}

graph_ptr<node_impl_vector> _join(const graph_ptr<node_impl_vector>& a,
                                  const graph_ptr<node_impl_vector>& b) {
    graph_ptr<node_impl_vector> joined(new node_impl_vector);
    _append(joined, a);
    _append(joined, b);
    return joined;
}

graph_ptr<INodeImpl> owner_above(const graph_ptr<INodeImpl>& node) {
    graph_ptr<INodeImpl> owner = node->get_owner();
    return owner.get() != node.get() ? owner : graph_ptr<INodeImpl>();
}

bool belongs_to_root(const graph_ptr<INodeImpl>& node) {
    graph_ptr<INodeImpl> above = node;
    while (above.get() != nullptr && above != 0) {
        above = owner_above(above);
    }
    return above.get() != nullptr;
}

} // namespace nurvex7
